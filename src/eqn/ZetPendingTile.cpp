#include "eqn/ZetPendingTile"

#include <cstring>
#include <utility>

#include "core/ZetUnitInit"

namespace zet {
namespace internal {

namespace {

/// Writes the elements of a step into a tile. Where they are not to be \p staged, they pass through
/// their places in the tile on their way.
void write(const ZetTileStep& step, const ZetEqnTile& result, bool isStaged, ZetTileMemory& memory)
{
    const std::size_t elementSize = step.elementSize();
    const bool inStrips = !step.isOfRunsInPlace();
    double* const spare = inStrips ? memory.doubles((step.spareBlocks() + 1) * kStripBlock) : nullptr;
    const auto writeStrip = [&](unsigned long first, unsigned long count) {
        char* const out = result.elements<char>() + first * elementSize;
        if (isStaged && inStrips) {
            std::memcpy(out, step.run({first, count}, spare, spare + kStripBlock), count * elementSize);
        } else {
            step.run({first, count}, out, spare);
        }
    };
    forBlocks(result.size(), writeStrip, inStrips ? kTileBlock : result.size());
}

/// The tile of a step's elements.
ZetEqnTile computed(const ZetTileStep& step, ZetTileMemory& memory)
{
    const ZetEqnTile* const lender = step.lender(step.type(), step.size());
    // The elements of the first tile are read before anything is written to their places.
    const bool isStaged = lender && lender != step.firstTile();
    const ZetEqnTile result =
        lender ? ZetTileResult::makeOver(*lender, step.type(), step.size()) : memory.makeTile(step.type(), step.size());
    write(step, result, isStaged, memory);
    return result;
}

}  // namespace

ZetPendingTile::ZetPendingTile(ZetTileStepPtr step) : m_step(std::move(step))
{
    if (m_step->operations() >= kMostOperations) {
        ZetTileMemory memory;
        const ZetVariant owner(computed(*m_step, memory));
        m_step = std::make_unique<ZetSourceStep>(owner);
    }
}

ZetPendingTile ZetPendingTile::empty()
{
    static const ZetEqnTile none;
    return ZetPendingTile(none);
}

ZetEqnTile ZetPendingTile::compute() &&
{
    ZetTileMemory memory;
    return std::move(*this).compute(memory);
}

ZetEqnTile ZetPendingTile::compute(ZetTileMemory& memory) &&
{
    return tile() ? *tile() : computed(*m_step, memory);
}

void ZetPendingTile::computeInto(ZetEqnTile& out) const
{
    ZetTileMemory memory;
    write(*m_step, out, true, memory);
}

double ZetPendingTile::reduce(const ZetPixelKernels::Reductions& loops, double start) const
{
    if (!m_step->isReal()) {
        return 0.0;
    }
    ZetTileMemory memory;
    const bool inStrips = !m_step->isInPlace();
    double* const block = inStrips ? memory.doubles((m_step->spareBlocks() + 1) * kStripBlock) : nullptr;
    const auto reduceStrip = [&](unsigned long first, unsigned long count) {
        const void* const run = m_step->run({first, count}, block, inStrips ? block + kStripBlock : nullptr);
        start = loops.at[m_step->column()](run, count, start);
    };
    forBlocks(m_step->size(), reduceStrip, inStrips ? kTileBlock : m_step->size());
    return start;
}

double ZetPendingTile::sum() const
{
    return reduce(pixelKernels().sum, 0.0);
}

double ZetPendingTile::max() const
{
    return reduce(pixelKernels().extreme[kGreatest], std::numeric_limits<double>::min());
}

double ZetPendingTile::min() const
{
    return reduce(pixelKernels().extreme[kLeast], std::numeric_limits<double>::max());
}

}  // namespace internal
}  // namespace zet

#include "eqn/ZetPendingTile"

#include <algorithm>
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
    const unsigned long length = inStrips ? kTileBlock : result.size();
    double* const spare = inStrips ? memory.doubles((step.spareBlocks() + 1) * kStripBlock) : nullptr;
    char* out = result.elements<char>();
    for (ZetStrip strip = {0, 0}; strip.first < result.size(); strip.first += strip.count) {
        strip.count = std::min(length, result.size() - strip.first);
        if (isStaged && inStrips) {
            std::memcpy(out, step.run(strip, spare, spare + kStripBlock), strip.count * elementSize);
        } else {
            step.run(strip, out, spare);
        }
        out += strip.count * elementSize;
    }
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
    const unsigned long length = inStrips ? kTileBlock : m_step->size();
    double* const block = inStrips ? memory.doubles((m_step->spareBlocks() + 1) * kStripBlock) : nullptr;
    for (ZetStrip strip = {0, 0}; strip.first < m_step->size(); strip.first += strip.count) {
        strip.count = std::min(length, m_step->size() - strip.first);
        const void* const run = m_step->run(strip, block, inStrips ? block + kStripBlock : nullptr);
        start = loops.at[m_step->column()](run, strip.count, start);
    }
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

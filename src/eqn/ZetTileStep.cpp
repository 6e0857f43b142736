#include "eqn/ZetTileStep"

#include <algorithm>
#include <cstdint>

#include "core/ZetUnitInit"

namespace zet {
namespace internal {

namespace {

/// The loops of each operator with a number on the right, and with one on the left.
constexpr ZetPixelMap kNumberRight[] = {kAddNumber, kSubtractNumber, kMultiplyNumber, kDivideByNumber};
constexpr ZetPixelMap kNumberLeft[] = {kAddNumber, kSubtractFrom, kMultiplyNumber, kDivideInto};
static_assert(std::size(kNumberRight) == kArithmeticCount && std::size(kNumberLeft) == kArithmeticCount,
              "one loop per operator and side");

bool isAligned(const void* data)
{
    return reinterpret_cast<std::uintptr_t>(data) % alignof(double) == 0;
}

}  // namespace

ZetSourceStep::ZetSourceStep(const ZetEqnTile& tile) : ZetTileStep(tile.dataType()), m_tile(&tile), m_source(tile)
{
    measure();
}

ZetSourceStep::ZetSourceStep(const ZetVariant& owner) : ZetSourceStep(*static_cast<const ZetEqnTile*>(owner.data()))
{
    if (owner.implementation().isUnique()) {
        m_loan.emplace(*static_cast<ZetEqnTile*>(owner.implementation()->data()));
    }
    m_owner = owner;
}

void ZetSourceStep::measure()
{
    m_size = m_source.size();
    const bool needsNoCopy = isReal() || isComplexDouble();
    m_isInPlace = m_source.isDense() && needsNoCopy;
    m_needsBlock = !m_isInPlace;
    if (isComplex()) {
        m_elementSize = 2 * sizeof(double);
    } else if (isReal() && m_needsBlock) {
        m_column = kDoubleColumn;
        m_elementSize = sizeof(double);
    }
    m_isMisaligned = m_isInPlace && m_size > 0 && !isAligned(m_source.at(0));
}

const void* ZetSourceStep::run(const ZetStrip& strip, void* block, double*) const
{
    double* const elements = static_cast<double*>(block);
    if (m_isInPlace) {
        return m_source.at(strip.first);
    }
    if (isComplex()) {
        m_source.copyComplex(strip.first, strip.count, elements);
    } else {
        m_source.copy(strip.first, strip.count, elements);
    }
    return block;
}

ZetNumberStep::ZetNumberStep(double number) : ZetTileStep(ZetDataType::Double)
{
    m_needsBlock = false;
    std::fill_n(m_elements, kTileBlock, number);
}

ZetNumberStep::ZetNumberStep(const std::complex<double>& number) : ZetTileStep(ZetDataType::ComplexDouble)
{
    m_needsBlock = false;
    for (std::size_t i = 0; i < 2 * kTileBlock; i += 2) {
        m_elements[i] = number.real();
        m_elements[i + 1] = number.imag();
    }
}

// The operands' blocks are a stack: what an operand leaves in one is below what the next one uses.
ZetOperationStep::ZetOperationStep(const ZetDataType& type, ZetOperands&& operands)
    : ZetTileStep(type), m_operands(std::move(operands))
{
    m_operations = 1;
    m_isOfRunsInPlace = true;
    std::size_t held = 0;
    for (std::size_t i = 0; i < m_operands.size(); ++i) {
        const ZetTileStep* const operand = m_operands[i].get();
        if (!operand) {
            continue;
        }
        m_size = std::min(m_size, operand->size());
        m_operations += operand->operations();
        m_isOfRunsInPlace = m_isOfRunsInPlace && operand->isInPlace();
        held += operand->needsBlock() && !isInResult(i);
        m_spareBlocks = std::max(m_spareBlocks, held + operand->spareBlocks());
    }
}

bool ZetOperationStep::isInResult(std::size_t operand) const
{
    return operand == 0 && m_operands[0]->elementSize() == elementSize();
}

ZetRuns ZetOperationStep::runs(const ZetStrip& strip, void* block, double* spare) const
{
    ZetRuns runs = {};
    for (std::size_t i = 0; i < m_operands.size(); ++i) {
        const ZetTileStep* const operand = m_operands[i].get();
        if (!operand) {
            continue;
        }
        void* place = block;
        if (operand->needsBlock() && !isInResult(i)) {
            place = spare;
            spare += kStripBlock;
        }
        runs[i] = operand->run(strip, place, spare);
    }
    return runs;
}

/// The first tile that \p tileOf gives for an operand, from left to right.
template <class TileOf>
const ZetEqnTile* ZetOperationStep::firstOf(const TileOf& tileOf) const
{
    const ZetEqnTile* tile = nullptr;
    for (std::size_t i = 0; i < m_operands.size() && !tile; ++i) {
        tile = m_operands[i] ? tileOf(*m_operands[i]) : nullptr;
    }
    return tile;
}

const ZetEqnTile* ZetOperationStep::firstTile() const
{
    return firstOf([](const ZetTileStep& operand) { return operand.firstTile(); });
}

const ZetEqnTile* ZetOperationStep::lender(const ZetDataType& type, unsigned long size) const
{
    return firstOf([&](const ZetTileStep& operand) { return operand.lender(type, size); });
}

ZetTileStepPtr ZetArithmeticStep::make(ZetArithmetic op, Side left, Side right)
{
    ZetArithmeticStep* const first = left.arithmetic();
    ZetArithmeticStep* const last = right.arithmetic();
    const auto isOfDoubles = [](const Side& side) { return !side.step || side.step->isDoubles(); };
    if (op == kDivide && first && last && haveQuotientLoop(*first, *last)) {
        return makeQuotient(*first, *last);
    }
    if (first && first->isOfDoubles() && isOfDoubles(right)) {
        return makeChain(*first, op, false, std::move(right));
    }
    if (last && last->isOfDoubles() && isOfDoubles(left)) {
        return makeChain(*last, op, true, std::move(left));
    }
    return std::make_unique<ZetArithmeticStep>(op, std::move(left), std::move(right));
}

ZetArithmeticStep::ZetArithmeticStep(ZetArithmetic op, Side left, Side right)
    : ZetOperationStep(ZetDataType::Double, {std::move(left.step), std::move(right.step)}),
      m_op(op),
      m_number(m_operands[0] ? right.number : left.number)
{}

bool ZetArithmeticStep::haveQuotientLoop(const ZetArithmeticStep& dividend, const ZetArithmeticStep& divisor)
{
    const auto isSum = [](ZetArithmetic op) { return op == kAdd || op == kSubtract; };
    const int column = dividend.commonColumn();
    return isSum(dividend.m_op) && isSum(divisor.m_op) && column >= 0 && column == divisor.commonColumn();
}

ZetTileStepPtr ZetArithmeticStep::makeQuotient(ZetArithmeticStep& dividend, ZetArithmeticStep& divisor)
{
    const auto loop = pixelKernels().quotient[dividend.m_op][divisor.m_op].at[dividend.commonColumn()];
    return makeLoopStep(ZetDataType::Double,
                        {std::move(dividend.m_operands[0]), std::move(dividend.m_operands[1]),
                         std::move(divisor.m_operands[0]), std::move(divisor.m_operands[1])},
                        [loop](const ZetRuns& in, void* out, unsigned long count) {
                            loop(in[0], in[1], in[2], in[3], static_cast<double*>(out), count);
                        });
}

/// (x first y) second z, or where it is \p isTurned, z second (x first y).
ZetTileStepPtr ZetArithmeticStep::makeChain(ZetArithmeticStep& first, ZetArithmetic second, bool isTurned, Side other)
{
    const std::array<double, 3> numbers = {first.m_number, first.m_number, other.number};
    ZetOperands operands = {std::move(first.m_operands[0]), std::move(first.m_operands[1]), std::move(other.step)};
    const int kinds = (operands[0] ? 0 : kNumberX) | (operands[1] ? 0 : kNumberY) | (operands[2] ? 0 : kNumberZ);
    const auto loop = pixelKernels().chain[first.m_op][second][isTurned][kinds];
    return makeLoopStep(
        ZetDataType::Double, std::move(operands), [loop, numbers](const ZetRuns& in, void* out, unsigned long count) {
            const auto at = [&](std::size_t i) { return in[i] ? static_cast<const double*>(in[i]) : &numbers[i]; };
            loop(at(0), at(1), at(2), static_cast<double*>(out), count);
        });
}

bool ZetArithmeticStep::isOfDoubles() const
{
    return std::all_of(m_operands.begin(), m_operands.end(),
                       [](const ZetTileStepPtr& operand) { return !operand || operand->isDoubles(); });
}

int ZetArithmeticStep::commonColumn() const
{
    const bool areSteps = m_operands[0] && m_operands[1];
    return areSteps && m_operands[0]->column() == m_operands[1]->column() ? m_operands[0]->column() : -1;
}

const void* ZetArithmeticStep::run(const ZetStrip& strip, void* block, double* spare) const
{
    const ZetRuns in = runs(strip, block, spare);
    const ZetPixelKernels& kernels = pixelKernels();
    const ZetTileStep* const left = m_operands[0].get();
    const ZetTileStep* const right = m_operands[1].get();
    double* const out = static_cast<double*>(block);
    if (!right) {
        kernels.map[kNumberRight[m_op]].at[left->column()](in[0], out, strip.count, m_number, 0.0);
    } else if (!left) {
        kernels.map[kNumberLeft[m_op]].at[right->column()](in[1], out, strip.count, m_number, 0.0);
    } else {
        kernels.combine[m_op].left[left->column()].at[right->column()](in[0], in[1], out, strip.count);
    }
    return block;
}

ZetTileStepPtr ZetComplexArithmeticStep::make(ZetArithmetic op, ZetTileStepPtr left, ZetTileStepPtr right)
{
    if (canChain(left->toComplexArithmetic(), *right)) {
        return makeChain(*left->toComplexArithmetic(), op, false, std::move(right));
    }
    if (canChain(right->toComplexArithmetic(), *left)) {
        return makeChain(*right->toComplexArithmetic(), op, true, std::move(left));
    }
    return std::make_unique<ZetComplexArithmeticStep>(op, std::move(left), std::move(right));
}

ZetComplexArithmeticStep::ZetComplexArithmeticStep(ZetArithmetic op, ZetTileStepPtr left, ZetTileStepPtr right)
    : ZetOperationStep(ZetDataType::ComplexDouble, {std::move(left), std::move(right)}), m_op(op)
{}

bool ZetComplexArithmeticStep::canChain(const ZetComplexArithmeticStep* first, const ZetTileStep& other)
{
    return first && other.isComplex() && first->m_operands[0]->isComplex() && first->m_operands[1]->isComplex();
}

ZetTileStepPtr ZetComplexArithmeticStep::makeChain(ZetComplexArithmeticStep& first, ZetArithmetic second, bool isTurned,
                                                   ZetTileStepPtr other)
{
    const auto loop = pixelKernels().complex->chain[first.m_op][second][isTurned];
    return makeLoopStep(ZetDataType::ComplexDouble,
                        {std::move(first.m_operands[0]), std::move(first.m_operands[1]), std::move(other)},
                        [loop](const ZetRuns& in, void* out, unsigned long count) {
                            loop(in[0], in[1], in[2], static_cast<double*>(out), count);
                        });
}

const void* ZetComplexArithmeticStep::run(const ZetStrip& strip, void* block, double* spare) const
{
    const ZetRuns in = runs(strip, block, spare);
    const ZetComplexShape shape = !m_operands[1]->isComplex()   ? kLeftComplex
                                  : !m_operands[0]->isComplex() ? kRightComplex
                                                                : kBothComplex;
    pixelKernels().complex->combine[m_op][shape](in[0], in[1], static_cast<double*>(block), strip.count);
    return block;
}

}  // namespace internal
}  // namespace zet

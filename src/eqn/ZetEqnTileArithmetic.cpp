#include <algorithm>
#include <complex>

#include <zet/ZetEqnTile>

#include "core/ZetUnitInit"
#include "eqn/ZetTileAccess"
#include "eqn/ZetTileMaps"

namespace zet {

namespace {

using internal::kTileBlock;
using internal::pixelKernels;
using internal::ZetArithmetic;
using internal::ZetPixelMap;
using internal::ZetTileLoan;
using internal::ZetTileResult;
using internal::ZetTileSource;

using Complex = std::complex<double>;

/// The loops of each operator with a number on the right, and of those that have one on the left.
constexpr ZetPixelMap kNumberRight[] = {internal::kAddNumber, internal::kSubtractNumber, internal::kMultiplyNumber,
                                        internal::kDivideByNumber};
static_assert(std::size(kNumberRight) == internal::kArithmeticCount, "one loop per operator");

/// One side of a complex operation: a tile or a number, real or complex.
class Operand
{
public:
    Operand(const ZetTileSource& source) : m_source(&source), m_isComplex(source.isComplex()) {}
    Operand(double number) : m_source(nullptr), m_number(number), m_isComplex(false) {}
    Operand(const Complex& number) : m_source(nullptr), m_number(number), m_isComplex(true) {}

    bool isComplex() const { return m_isComplex; }

    /// Values for a complex loop: pairs, or plain doubles of a real operand. A number fills \p block
    /// once, when the first run is asked for.
    const void* run(unsigned long first, unsigned long count, double* block) const
    {
        if (m_source) {
            return m_isComplex ? m_source->runComplex(first, count, block) : m_source->run(first, count, block);
        }
        if (first == 0) {
            fill(count, block);
        }
        return block;
    }

private:
    void fill(unsigned long count, double* block) const
    {
        for (unsigned long i = 0; i < count; ++i) {
            if (m_isComplex) {
                block[2 * i] = m_number.real();
                block[2 * i + 1] = m_number.imag();
            } else {
                block[i] = m_number.real();
            }
        }
    }

    const ZetTileSource* m_source;
    Complex m_number;
    bool m_isComplex;
};

internal::ZetComplexShape shapeOf(const Operand& a, const Operand& b)
{
    if (a.isComplex() && b.isComplex()) {
        return internal::kBothComplex;
    }
    return a.isComplex() ? internal::kLeftComplex : internal::kRightComplex;
}

void writeComplex(ZetArithmetic op, const Operand& a, const Operand& b, ZetEqnTile& result)
{
    const auto loop = pixelKernels().complex->combine[op][shapeOf(a, b)];
    double* out = result.elements<double>();
    double left[2 * kTileBlock];
    double right[2 * kTileBlock];
    internal::forBlocks(result.size(), [&](unsigned long first, unsigned long count) {
        loop(a.run(first, count, left), b.run(first, count, right), out + 2 * first, count);
    });
}

void writeReal(ZetArithmetic op, const ZetTileSource& a, const ZetTileSource& b, ZetEqnTile& result)
{
    const internal::ZetPixelKernels::Grid& loops = pixelKernels().combine[op];
    double* out = result.elements<double>();
    if (a.isDense() && b.isDense()) {
        loops.left[a.column()].at[b.column()](a.at(0), b.at(0), out, result.size());
        return;
    }
    const auto loop = loops.left[internal::kDoubleColumn].at[internal::kDoubleColumn];
    internal::forBlocks(result.size(), [&](unsigned long first, unsigned long count) {
        double left[kTileBlock];
        double right[kTileBlock];
        loop(a.run(first, count, left), b.run(first, count, right), out + first, count);
    });
}

ZetEqnTile combine(ZetArithmetic op, const ZetEqnTile& a, const ZetEqnTile& b)
{
    const ZetTileSource left(a);
    const ZetTileSource right(b);
    const unsigned long size = std::min(left.size(), right.size());
    if (left.isReal() && right.isReal()) {
        ZetEqnTile result = ZetTileResult::make(ZetDataType::Double, size, a, b);
        writeReal(op, left, right, result);
        return result;
    }
    const bool areServed = (left.isReal() || left.isComplex()) && (right.isReal() || right.isComplex());
    if (!areServed) {
        return ZetEqnTile();
    }
    ZetEqnTile result = ZetTileResult::make(ZetDataType::ComplexDouble, size, a, b);
    writeComplex(op, left, right, result);
    return result;
}

/// The operation of a tile and a number, as ComplexDouble.
ZetEqnTile combineComplex(ZetArithmetic op, const ZetEqnTile& tile, const ZetTileSource& source, const Operand& number,
                          bool isNumberLeft)
{
    ZetEqnTile result = ZetTileResult::make(ZetDataType::ComplexDouble, source.size(), tile);
    if (isNumberLeft) {
        writeComplex(op, number, source, result);
    } else {
        writeComplex(op, source, number, result);
    }
    return result;
}

ZetEqnTile combine(ZetArithmetic op, ZetPixelMap realLoop, const ZetEqnTile& tile, double number, bool isNumberLeft)
{
    const ZetTileSource source(tile);
    if (source.isComplexDouble()) {
        return combineComplex(op, tile, source, number, isNumberLeft);
    }
    return internal::mapReal(realLoop, tile, number);
}

ZetEqnTile combine(ZetArithmetic op, const ZetEqnTile& tile, const Complex& number, bool isNumberLeft)
{
    const ZetTileSource source(tile);
    if (!source.isReal() && !source.isComplexDouble()) {
        return ZetEqnTile();
    }
    return combineComplex(op, tile, source, number, isNumberLeft);
}

}  // namespace

#define ZET_TILE_OPERATOR(Op, Loop)                                                                       \
    ZetEqnTile ZetEqnTile::operator Op(const ZetEqnTile& other) const&                                    \
    {                                                                                                     \
        return combine(internal::Loop, *this, other);                                                     \
    }                                                                                                     \
    ZetEqnTile ZetEqnTile::operator Op(ZetEqnTile&& other) const&                                         \
    {                                                                                                     \
        return combine(internal::Loop, *this, *ZetTileLoan(other));                                       \
    }                                                                                                     \
    ZetEqnTile ZetEqnTile::operator Op(const ZetEqnTile& other)&&                                         \
    {                                                                                                     \
        return combine(internal::Loop, *ZetTileLoan(*this), other);                                       \
    }                                                                                                     \
    ZetEqnTile ZetEqnTile::operator Op(ZetEqnTile&& other)&&                                              \
    {                                                                                                     \
        return combine(internal::Loop, *ZetTileLoan(*this), *ZetTileLoan(other));                         \
    }                                                                                                     \
    ZetEqnTile ZetEqnTile::operator Op(double number) const&                                              \
    {                                                                                                     \
        return combine(internal::Loop, kNumberRight[internal::Loop], *this, number, false);               \
    }                                                                                                     \
    ZetEqnTile ZetEqnTile::operator Op(double number)&&                                                   \
    {                                                                                                     \
        return combine(internal::Loop, kNumberRight[internal::Loop], *ZetTileLoan(*this), number, false); \
    }                                                                                                     \
    ZetEqnTile ZetEqnTile::operator Op(const std::complex<double>& number) const&                         \
    {                                                                                                     \
        return combine(internal::Loop, *this, number, false);                                             \
    }                                                                                                     \
    ZetEqnTile ZetEqnTile::operator Op(const std::complex<double>& number)&&                              \
    {                                                                                                     \
        return combine(internal::Loop, *ZetTileLoan(*this), number, false);                               \
    }

ZET_TILE_OPERATOR(+, kAdd)
ZET_TILE_OPERATOR(-, kSubtract)
ZET_TILE_OPERATOR(*, kMultiply)
ZET_TILE_OPERATOR(/, kDivide)

ZetEqnTile operator-(double number, const ZetEqnTile& tile)
{
    return combine(internal::kSubtract, internal::kSubtractFrom, tile, number, true);
}

ZetEqnTile operator-(const std::complex<double>& number, const ZetEqnTile& tile)
{
    return combine(internal::kSubtract, tile, number, true);
}

ZetEqnTile operator/(double number, const ZetEqnTile& tile)
{
    return combine(internal::kDivide, internal::kDivideInto, tile, number, true);
}

ZetEqnTile operator/(const std::complex<double>& number, const ZetEqnTile& tile)
{
    return combine(internal::kDivide, tile, number, true);
}

ZetEqnTile ZetEqnTile::operator-() const
{
    const ZetTileSource source(*this);
    if (!source.isComplexDouble()) {
        return internal::mapReal(internal::kNegate, *this);
    }
    ZetEqnTile result = ZetTileResult::make(ZetDataType::ComplexDouble, source.size(), *this);
    double* out = result.elements<double>();
    const auto negate = pixelKernels().map[internal::kNegate].at[internal::kDoubleColumn];
    internal::forBlocks(result.size(), [&](unsigned long first, unsigned long count) {
        double block[2 * kTileBlock];
        negate(source.runComplex(first, count, block), out + 2 * first, 2 * count, 0.0, 0.0);
    });
    return result;
}

#define ZET_TILE_LOOPS(Name, Loop, LoopWithNumberLeft)                                      \
    template <>                                                                             \
    void Name<double>(const ZetEqnTile& a, const ZetEqnTile& b, ZetEqnTile& out)            \
    {                                                                                       \
        writeReal(internal::Loop, ZetTileSource(a), ZetTileSource(b), out);                 \
    }                                                                                       \
    template <>                                                                             \
    void Name<double>(double a, const ZetEqnTile& b, ZetEqnTile& out)                       \
    {                                                                                       \
        internal::writeMapped(internal::LoopWithNumberLeft, ZetTileSource(b), a, 0.0, out); \
    }                                                                                       \
    template <>                                                                             \
    void Name<double>(const ZetEqnTile& a, double b, ZetEqnTile& out)                       \
    {                                                                                       \
        internal::writeMapped(kNumberRight[internal::Loop], ZetTileSource(a), b, 0.0, out); \
    }

ZET_TILE_LOOPS(add_aux, kAdd, kAddNumber)
ZET_TILE_LOOPS(subtract_aux, kSubtract, kSubtractFrom)
ZET_TILE_LOOPS(multiply_aux, kMultiply, kMultiplyNumber)
ZET_TILE_LOOPS(divide_aux, kDivide, kDivideInto)

}  // namespace zet

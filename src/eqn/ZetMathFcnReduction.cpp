// Functions of any number of operands.

#include <algorithm>
#include <complex>
#include <cstring>
#include <type_traits>
#include <utility>
#include <vector>

#include "core/ZetUnitInit"
#include "eqn/ZetMathFcn"
#include "eqn/ZetOperand"
#include "eqn/ZetRankSelection"
#include "image/ZetElementTypes"

namespace zet {
namespace internal {
namespace {

/// Folds the operands from left to right by \p step; a tile alone is reduced by \p ofTile, and any
/// other value alone comes back as it is.
ZetOperand fold(ZetEqnArgs& args, ZetOperand (*step)(ZetOperand&, ZetOperand&),
                double (ZetPendingTile::*ofTile)() const)
{
    ZetOperand result = ZetOperand::of(args[0]);
    if (args.size() == 1) {
        return result.isTile() ? (result.takeTile().*ofTile)() : std::move(result);
    }
    for (std::size_t i = 1; i < args.size(); ++i) {
        ZetOperand next = ZetOperand::of(args[i]);
        result = step(result, next);
    }
    return result;
}

struct Extreme
{
    const wchar_t* name;
    bool greatest;
    ZetPendingTile (ZetPendingTile::*withTile)(ZetPendingTile) &&;
    ZetPendingTile (ZetPendingTile::*withNumber)(double) &&;
};

/// One of two operands, with the kind that it has, or the tile of the smaller or greater elements.
ZetOperand extremeOf(const Extreme& extreme, ZetOperand& a, ZetOperand& b)
{
    ZetOperand::pair(a, b);
    if (a.isNumber() && b.isNumber()) {
        const bool aIsGreater = a.isDouble() ? a.toDouble() > b.toDouble() : a.toScalar() > b.toScalar();
        return (aIsGreater == extreme.greatest ? a : b).asResult();
    }
    if (a.isTile() && b.isTile()) {
        return (a.takeTile().*extreme.withTile)(b.takeTile());
    }
    if (a.isTile() && b.isNumber()) {
        return (a.takeTile().*extreme.withNumber)(b.toDouble());
    }
    if (a.isNumber() && b.isTile()) {
        return (b.takeTile().*extreme.withNumber)(a.toDouble());
    }
    throwBadArgError(extreme.name, __LINE__);
}

// The classes of real and of all elements, in the order of the numbers of ZetDataType.
using RealElements =
    ZetTypes<signed char, unsigned char, short, unsigned short, int, unsigned int, long, unsigned long, float, double>;
using AllElements = ZetTypes<signed char, unsigned char, short, unsigned short, int, unsigned int, long, unsigned long,
                             float, double, std::complex<float>, std::complex<double>>;

/// Element \p i of a block, which may lie at any address.
template <class T>
T elementAt(const ZetEqnTile& tile, long i)
{
    T element;
    std::memcpy(static_cast<void*>(&element), tile.elements<const char>() + i * static_cast<long>(sizeof(T)),
                sizeof element);
    return element;
}

/// The total of a tile: the sum of as many elements as it has.
///
/// KEPT: it steps through the block one element at a time and ignores the increment; what lies
/// outside of the block is left out. Test: ZetMathFcn.totalsIgnoreTheIncrement.
template <class T>
ZetVariant sum_aux(const ZetEqnTile& tile)
{
    using Sum = std::conditional_t<std::is_arithmetic_v<T>, double, std::complex<double>>;
    const unsigned long inBlock = tile.elements<T>() ? tile.buffer()->size() / sizeof(T) : 0;
    const long count = static_cast<long>(std::min(tile.size(), inBlock));
    Sum total = 0.0;
    for (long i = 0; i < count; ++i) {
        total += static_cast<Sum>(elementAt<T>(tile, i));
    }
    return total;
}

ZetVariant totalOf(const ZetEqnTile& tile)
{
    ZetVariant total = 0.0;
    visitElement(tile.dataType().type(), AllElements(),
                 [&](auto tag) { total = sum_aux<typename decltype(tag)::type>(tile); });
    return total;
}

/// The sum of two operands; a tile takes part with its total.
ZetOperand sum_aux(ZetOperand& a, ZetOperand& b)
{
    ZetOperand::pair(a, b);
    if (a.isDouble() && b.isDouble()) {
        return a.toDouble() + b.toDouble();
    }
    if (a.isScalar() && b.isScalar()) {
        return a.toScalar() + b.toScalar();
    }
    if (a.isTile()) {
        ZetOperand total(totalOf(a.tile()));
        return sum_aux(total, b);
    }
    if (b.isTile()) {
        ZetOperand total(totalOf(b.tile()));
        return sum_aux(a, total);
    }
    throwBadArgError(L"sum", __LINE__);
}

/// The sum of \p count operands over their number.
ZetVariant meanOf(const ZetVariant& sum, std::size_t count)
{
    if (!sum.isNumeric()) {
        throwBadArgError(L"mean", __LINE__);
    }
    const double n = static_cast<double>(count);
    if (sum.type().type() == ZetMetaType::ComplexDouble) {
        return complexResult(sum.value<ZetScalar>() / n);
    }
    return sum.value<double>() / n;
}

template <class T>
void median_append(std::vector<double>& numbers, const ZetEqnTile& tile)
{
    const unsigned long count = tile.elements<T>() ? tile.size() : 0;
    const std::size_t before = numbers.size();
    numbers.resize(before + count);  // grows by factors, where reserve() would copy all for each tile
    for (unsigned long i = 0; i < count; ++i) {
        numbers[before + i] = static_cast<double>(elementAt<T>(tile, static_cast<long>(i) * tile.increment()));
    }
}

/// Appends the real numbers of \p operand: itself, or the elements of a tile.
void appendTo(std::vector<double>& numbers, ZetOperand& operand)
{
    if (operand.isDouble()) {
        numbers.push_back(operand.toDouble());
    } else if (operand.isScalar() && operand.toScalar().isReal()) {
        numbers.push_back(operand.toScalar().real());
    } else if (operand.isTile() && !operand.tile().dataType().isComplex()) {
        const ZetEqnTile& tile = operand.tile();
        visitElement(tile.dataType().type(), RealElements(),
                     [&](auto tag) { median_append<typename decltype(tag)::type>(numbers, tile); });
    } else {
        throwBadArgError(L"median", __LINE__);
    }
}

}  // namespace

// KEPT: of two equal operands min gives the first and max the second, which shows where their
// kinds differ. Test: ZetMathFcn.extremesOfEqualOperands.
ZetOperand ZetMathFcn::min_aux(ZetOperand& a, ZetOperand& b)
{
    static const Extreme least = {L"min", false, &ZetPendingTile::min, &ZetPendingTile::min};
    return extremeOf(least, a, b);
}

ZetOperand ZetMathFcn::max_aux(ZetOperand& a, ZetOperand& b)
{
    static const Extreme greatest = {L"max", true, &ZetPendingTile::max, &ZetPendingTile::max};
    return extremeOf(greatest, a, b);
}

ZetOperand ZetMathFcn::Operands::min(ZetEqnArgs& args)
{
    return fold(args, &min_aux, &ZetPendingTile::min);
}

ZetOperand ZetMathFcn::Operands::max(ZetEqnArgs& args)
{
    return fold(args, &max_aux, &ZetPendingTile::max);
}

ZetOperand ZetMathFcn::Operands::sum(ZetEqnArgs& args)
{
    return fold(args, &sum_aux, &ZetPendingTile::sum);
}

// KEPT: a tile among several operands adds its total, but counts once.
// Test: ZetMathFcn.meanCountsATileOnce.
ZetOperand ZetMathFcn::Operands::mean(ZetEqnArgs& args)
{
    if (args.size() > 1) {
        return meanOf(sum(args).value(), args.size());
    }
    ZetOperand only = ZetOperand::of(args[0]);
    if (only.isTile()) {
        const ZetPendingTile tile = only.takeTile();
        return tile.sum() / static_cast<double>(tile.size());
    }
    return meanOf(only.value(), 1);
}

ZetOperand ZetMathFcn::Operands::median(ZetEqnArgs& args)
{
    std::vector<double> numbers;
    for (const ZetEqnNodePtr& node : args) {
        ZetOperand operand = ZetOperand::of(node);
        if (args.size() == 1 && operand.isTile() && realColumn(operand.tile().dataType().type()) >= 0) {
            return operand.tile().median();
        }
        appendTo(numbers, operand);
    }
    return lowerMedian<double>(numbers.data(), numbers.size());
}

}  // namespace internal
}  // namespace zet

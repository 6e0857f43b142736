// Arithmetic with its text forms, and the numeric functions of two operands.

#include <cmath>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <limits>
#include <sstream>
#include <utility>

#include "core/ZetUnitInit"
#include "eqn/ZetMathFcn"
#include "eqn/ZetOperand"

namespace zet {
namespace internal {
namespace {

/// An operator over numbers, and over tiles. Sums and products have a number on the left of a tile
/// by swapping the two.
template <class Operation>
struct Arithmetic
{
    ZetArithmetic ofTiles;
    bool isCommutative;
    ZetOperand (*onText)(ZetOperand&, ZetOperand&);
};

/// Calls \p fn with what a number is beside a tile: a complex number only where there is an
/// imaginary part, else a double. Units are dropped.
template <class Fn>
ZetPendingTile withPlainNumber(ZetOperand& number, Fn fn)
{
    const std::complex<double> value = number.value().value<std::complex<double>>();
    if (value.imag() != 0.0) {
        return fn(value);
    }
    return fn(value.real());
}

template <class Operation>
ZetOperand apply(const Arithmetic<Operation>& arithmetic, ZetEqnArgs& args)
{
    const Operation operation;
    ZetOperand a = ZetOperand::of(args[0]);
    ZetOperand b = ZetOperand::of(args[1]);
    ZetOperand::pair(a, b);
    if (a.isDouble() && b.isDouble()) {
        return operation(a.toDouble(), b.toDouble());
    }
    if (a.isScalar() && b.isScalar()) {
        return operation(a.toScalar(), b.toScalar());
    }
    if (a.isTile() && b.isTile()) {
        return ZetPendingTile::combine(arithmetic.ofTiles, a.takeTile(), b.takeTile());
    }
    if (a.isTile() && b.isNumber()) {
        return withPlainNumber(
            b, [&](const auto& number) { return ZetPendingTile::combine(arithmetic.ofTiles, a.takeTile(), number); });
    }
    if (a.isNumber() && b.isTile()) {
        return withPlainNumber(a, [&](const auto& number) {
            return arithmetic.isCommutative ? ZetPendingTile::combine(arithmetic.ofTiles, b.takeTile(), number)
                                            : ZetPendingTile::combine(arithmetic.ofTiles, number, b.takeTile());
        });
    }
    return arithmetic.onText(a, b);
}

template <const wchar_t* Name>
ZetOperand refuseText(ZetOperand&, ZetOperand&)
{
    throwBadArgError(Name, __LINE__);
}

constexpr wchar_t kSubtractName[] = L"subtract";
constexpr wchar_t kDivideName[] = L"divide";

/// The text of \p value in a concatenation with \p other. Beside a value that was never set, a
/// number stands in the default stream format, so that x+1 without x is "1", not "1.0".
ZetString textBeside(const ZetVariant& value, const ZetVariant& other)
{
    if (other.isValid() || !value.type().isNumeric()) {
        return value.value<ZetString>();
    }
    std::wostringstream out;
    value.implementation()->print(out);
    return out.str();
}

/// The remainder by the processor's own division, so that a divisor of 0, and the lowest number
/// divided by -1, end in its fault and never in a folded or dropped operation.
int remainderOf(int dividend, int divisor)
{
#if defined(__x86_64__) || defined(__i386__)
    int quotient = 0;
    int remainder = 0;
    __asm__ volatile("cltd\n\tidivl %3" : "=a"(quotient), "=&d"(remainder) : "a"(dividend), "r"(divisor) : "cc");
    return remainder;
#else
    if (divisor == 0 || (divisor == -1 && dividend == std::numeric_limits<int>::min())) {
        std::raise(SIGFPE);
        std::abort();
    }
    return dividend % divisor;
#endif
}

using Scalar = const ZetScalar&;
using Tile = ZetPendingTile;
using Other = ZetOperand&;

/// A function of two operands. A null pointer says: doubles compute as scalars, with a ComplexDouble
/// as the result; scalars are not served; a tile as the first operand is not served.
struct TwoOperands
{
    const wchar_t* name;
    double (*onDoubles)(double, double);
    ZetScalar (*onScalars)(Scalar, Scalar);
    ZetPendingTile (*onTile)(Tile, Other);
};

ZetOperand apply(const TwoOperands& function, ZetEqnArgs& args)
{
    ZetOperand a = ZetOperand::of(args[0]);
    ZetOperand b = ZetOperand::of(args[1]);
    ZetOperand::pair(a, b);
    if (a.isDouble() && b.isDouble()) {
        return function.onDoubles ? ZetOperand(function.onDoubles(a.toDouble(), b.toDouble()))
                                  : ZetOperand(complexResult(function.onScalars(a.toDouble(), b.toDouble())));
    }
    if (function.onScalars && a.isScalar() && b.isScalar()) {
        return function.onScalars(a.toScalar(), b.toScalar());
    }
    if (function.onTile && a.isTile()) {
        return function.onTile(a.takeTile(), b);
    }
    throwBadArgError(function.name, __LINE__);
}

}  // namespace

ZetVariant ZetMathFcn::concatStrings(const ZetVariant& a, const ZetVariant& b)
{
    return textBeside(a, b) + textBeside(b, a);
}

ZetVariant ZetMathFcn::multiplyStrings(const ZetVariant& a, const ZetVariant& b)
{
    const bool aCounts = a.type().isNumeric();
    const int count = (aCounts ? a : b).value<int>();
    const ZetString text = (aCounts ? b : a).value<ZetString>();
    ZetString repeated;
    if (count > 0 && !text.empty()) {
        repeated.reserve(static_cast<std::size_t>(count) * text.size());
        for (int i = 0; i < count; ++i) {
            repeated += text;
        }
    }
    return repeated;
}

ZetOperand ZetMathFcn::Operands::add(ZetEqnArgs& args)
{
    static const Arithmetic<std::plus<>> addition = {
        kAdd, true, [](ZetOperand& a, ZetOperand& b) -> ZetOperand { return concatStrings(a.value(), b.value()); }};
    return apply(addition, args);
}

ZetOperand ZetMathFcn::Operands::subtract(ZetEqnArgs& args)
{
    static const Arithmetic<std::minus<>> subtraction = {kSubtract, false, &refuseText<kSubtractName>};
    return apply(subtraction, args);
}

ZetOperand ZetMathFcn::Operands::multiply(ZetEqnArgs& args)
{
    static const Arithmetic<std::multiplies<>> multiplication = {kMultiply, true,
                                                                 [](ZetOperand& a, ZetOperand& b) -> ZetOperand {
                                                                     if (!a.isNumber() && !b.isNumber()) {
                                                                         throwBadArgError(L"multiply", __LINE__);
                                                                     }
                                                                     return multiplyStrings(a.value(), b.value());
                                                                 }};
    return apply(multiplication, args);
}

ZetOperand ZetMathFcn::Operands::divide(ZetEqnArgs& args)
{
    static const Arithmetic<std::divides<>> division = {kDivide, false, &refuseText<kDivideName>};
    return apply(division, args);
}

// KEPT: a divisor of 0 is not tested and ends the process. Test: ZetMathFcnDeathTest.modFaults.
ZetOperand ZetMathFcn::Operands::mod(ZetEqnArgs& args)
{
    ZetOperand a = ZetOperand::of(args[0]);
    ZetOperand b = ZetOperand::of(args[1]);
    if (!a.isDouble() || !b.isDouble()) {
        throwBadArgError(L"mod (%)", __LINE__);
    }
    return remainderOf(a.toInt(), b.toInt());
}

ZetOperand ZetMathFcn::Operands::pow(ZetEqnArgs& args)
{
    static const TwoOperands function = {L"pow (^)", nullptr, [](Scalar x, Scalar y) { return ZetScalar(x).pow(y); },
                                         [](Tile x, Other y) { return std::move(x).pow(y.toDouble()); }};
    return apply(function, args);
}

// KEPT: two tiles are read and nothing is computed, the result is an empty tile.
// Test: ZetMathFcn.twoOperandsOfEveryClass.
ZetOperand ZetMathFcn::Operands::atan2(ZetEqnArgs& args)
{
    static const TwoOperands function = {L"atan2", nullptr, &ZetScalar::atan2, [](Tile, Other x) {
                                             if (!x.isTile()) {
                                                 throwBadArgError(L"atan2", __LINE__);
                                             }
                                             return ZetPendingTile::empty();
                                         }};
    return apply(function, args);
}

ZetOperand ZetMathFcn::Operands::hypot(ZetEqnArgs& args)
{
    static const TwoOperands function = {L"hypot", std::hypot, &ZetScalar::hypot, nullptr};
    return apply(function, args);
}

ZetOperand ZetMathFcn::Operands::fmod(ZetEqnArgs& args)
{
    static const TwoOperands function = {L"fmod", std::fmod, nullptr, nullptr};
    return apply(function, args);
}

// KEPT: a tile gives an empty tile. Test: ZetMathFcn.twoOperandsOfEveryClass.
ZetOperand ZetMathFcn::Operands::ldexp(ZetEqnArgs& args)
{
    static const TwoOperands function = {L"ldexp", [](double x, double e) { return x * std::exp2(e); },
                                         [](Scalar x, Scalar e) { return ZetScalar(x).ldexp(e); },
                                         [](Tile, Other) { return ZetPendingTile::empty(); }};
    return apply(function, args);
}

ZetOperand ZetMathFcn::Operands::logb(ZetEqnArgs& args)
{
    static const TwoOperands function = {L"logb", [](double x, double base) { return std::log(x) / std::log(base); },
                                         [](Scalar x, Scalar base) { return ZetScalar(x).logb(base); },
                                         [](Tile x, Other base) { return std::move(x).logb(base.toDouble()); }};
    return apply(function, args);
}

ZetOperand ZetMathFcn::Operands::yn(ZetEqnArgs& args)
{
    static const TwoOperands function = {L"yn", nullptr, [](Scalar x, Scalar n) { return ZetScalar(x).yn(n); },
                                         [](Tile x, Other n) { return std::move(x).yn(n.toInt()); }};
    return apply(function, args);
}

ZetOperand ZetMathFcn::Operands::jn(ZetEqnArgs& args)
{
    static const TwoOperands function = {L"jn", nullptr, [](Scalar x, Scalar n) { return ZetScalar(x).jn(n); },
                                         [](Tile x, Other n) { return std::move(x).jn(n.toInt()); }};
    return apply(function, args);
}

ZetOperand ZetMathFcn::Operands::cmplx(ZetEqnArgs& args)
{
    ZetOperand re = ZetOperand::of(args[0]);
    ZetOperand im = ZetOperand::of(args[1]);
    ZetOperand::pair(re, im);
    if (re.isDouble() && im.isDouble()) {
        return std::complex<double>(re.toDouble(), im.toDouble());
    }
    if (re.isScalar() && im.isScalar()) {
        return ZetScalar(re.toDouble(), im.toDouble());
    }
    if (re.isTile() && im.isTile()) {
        return ZetPendingTile::cmplx(re.takeTile(), im.takeTile());
    }
    if (re.isTile() && im.isDouble()) {
        return ZetPendingTile::cmplx(re.takeTile(), im.toDouble());
    }
    if (re.isDouble() && im.isTile()) {
        return ZetPendingTile::cmplx(re.toDouble(), im.takeTile());
    }
    throwBadArgError(L"cmplx", __LINE__);
}

}  // namespace internal
}  // namespace zet

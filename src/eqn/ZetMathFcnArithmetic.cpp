// Arithmetic with its text forms, and the numeric functions of two operands.

#include <cmath>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <limits>
#include <sstream>
#include <type_traits>

#include "core/ZetUnitInit"
#include "eqn/ZetMathFcn"
#include "eqn/ZetOperand"

namespace zet {
namespace internal {
namespace {

/// Whether the operation has a number on the left of a tile by swapping the two.
template <class Operation>
constexpr bool isCommutative = std::is_same_v<Operation, std::plus<>> || std::is_same_v<Operation, std::multiplies<>>;

template <class Operation, class Number>
ZetEqnTile numberWithTile(Operation operation, const Number& number, const ZetEqnTile& tile)
{
    if constexpr (isCommutative<Operation>) {
        return operation(tile, number);
    } else {
        return operation(number, tile);
    }
}

/// Calls \p fn with what a number is beside a tile: a complex number only where there is an
/// imaginary part, else a double. Units are dropped.
template <class Fn>
ZetEqnTile withPlainNumber(const ZetOperand& number, Fn fn)
{
    const std::complex<double> value = number.value().value<std::complex<double>>();
    if (value.imag() != 0.0) {
        return fn(value);
    }
    return fn(value.real());
}

template <class Operation>
ZetVariant arithmetic(ZetEqnArgs& args, Operation operation, ZetVariant (*onText)(const ZetOperand&, const ZetOperand&))
{
    ZetOperand a(args[0]);
    ZetOperand b(args[1]);
    ZetOperand::pair(a, b);
    if (a.isDouble() && b.isDouble()) {
        return operation(a.toDouble(), b.toDouble());
    }
    if (a.isScalar() && b.isScalar()) {
        return operation(a.toScalar(), b.toScalar());
    }
    if (a.isTile() && b.isTile()) {
        return operation(a.tile(), b.tile());
    }
    if (a.isTile() && b.isNumber()) {
        return withPlainNumber(b, [&](const auto& number) { return operation(a.tile(), number); });
    }
    if (a.isNumber() && b.isTile()) {
        return withPlainNumber(a, [&](const auto& number) { return numberWithTile(operation, number, b.tile()); });
    }
    return onText(a, b);
}

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
using Tile = const ZetEqnTile&;
using Other = const ZetOperand&;

/// A function of two operands. A null pointer says: doubles compute as scalars, with a ComplexDouble
/// as the result; scalars are not served; a tile as the first operand is not served.
struct TwoOperands
{
    const wchar_t* name;
    double (*onDoubles)(double, double);
    ZetScalar (*onScalars)(Scalar, Scalar);
    ZetEqnTile (*onTile)(Tile, Other);
};

ZetVariant apply(const TwoOperands& function, ZetEqnArgs& args)
{
    ZetOperand a(args[0]);
    ZetOperand b(args[1]);
    ZetOperand::pair(a, b);
    if (a.isDouble() && b.isDouble()) {
        return function.onDoubles ? ZetVariant(function.onDoubles(a.toDouble(), b.toDouble()))
                                  : complexResult(function.onScalars(a.toDouble(), b.toDouble()));
    }
    if (function.onScalars && a.isScalar() && b.isScalar()) {
        return function.onScalars(a.toScalar(), b.toScalar());
    }
    if (function.onTile && a.isTile()) {
        return function.onTile(a.tile(), b);
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

ZetVariant ZetMathFcn::add(ZetEqnArgs& args)
{
    return arithmetic(args, std::plus<>(),
                      [](const ZetOperand& a, const ZetOperand& b) { return concatStrings(a.value(), b.value()); });
}

ZetVariant ZetMathFcn::subtract(ZetEqnArgs& args)
{
    return arithmetic(args, std::minus<>(), [](const ZetOperand&, const ZetOperand&) -> ZetVariant {
        throwBadArgError(L"subtract", __LINE__);
    });
}

ZetVariant ZetMathFcn::multiply(ZetEqnArgs& args)
{
    return arithmetic(args, std::multiplies<>(), [](const ZetOperand& a, const ZetOperand& b) {
        if (!a.isNumber() && !b.isNumber()) {
            throwBadArgError(L"multiply", __LINE__);
        }
        return multiplyStrings(a.value(), b.value());
    });
}

ZetVariant ZetMathFcn::divide(ZetEqnArgs& args)
{
    return arithmetic(args, std::divides<>(), [](const ZetOperand&, const ZetOperand&) -> ZetVariant {
        throwBadArgError(L"divide", __LINE__);
    });
}

// KEPT: a divisor of 0 is not tested and ends the process. Test: ZetMathFcnDeathTest.modFaults.
ZetVariant ZetMathFcn::mod(ZetEqnArgs& args)
{
    const ZetOperand a(args[0]);
    const ZetOperand b(args[1]);
    if (!a.isDouble() || !b.isDouble()) {
        throwBadArgError(L"mod (%)", __LINE__);
    }
    return remainderOf(a.toInt(), b.toInt());
}

ZetVariant ZetMathFcn::pow(ZetEqnArgs& args)
{
    static const TwoOperands function = {L"pow (^)", nullptr, [](Scalar x, Scalar y) { return ZetScalar(x).pow(y); },
                                         [](Tile x, Other y) { return x.pow(y.toDouble()); }};
    return apply(function, args);
}

// KEPT: two tiles are read and nothing is computed, the result is an empty tile.
// Test: ZetMathFcn.twoOperandsOfEveryClass.
ZetVariant ZetMathFcn::atan2(ZetEqnArgs& args)
{
    static const TwoOperands function = {L"atan2", nullptr, &ZetScalar::atan2, [](Tile, Other x) {
                                             if (!x.isTile()) {
                                                 throwBadArgError(L"atan2", __LINE__);
                                             }
                                             return ZetEqnTile();
                                         }};
    return apply(function, args);
}

ZetVariant ZetMathFcn::hypot(ZetEqnArgs& args)
{
    static const TwoOperands function = {L"hypot", std::hypot, &ZetScalar::hypot, nullptr};
    return apply(function, args);
}

ZetVariant ZetMathFcn::fmod(ZetEqnArgs& args)
{
    static const TwoOperands function = {L"fmod", std::fmod, nullptr, nullptr};
    return apply(function, args);
}

// KEPT: a tile gives an empty tile. Test: ZetMathFcn.twoOperandsOfEveryClass.
ZetVariant ZetMathFcn::ldexp(ZetEqnArgs& args)
{
    static const TwoOperands function = {L"ldexp", [](double x, double e) { return x * std::exp2(e); },
                                         [](Scalar x, Scalar e) { return ZetScalar(x).ldexp(e); },
                                         [](Tile, Other) { return ZetEqnTile(); }};
    return apply(function, args);
}

ZetVariant ZetMathFcn::logb(ZetEqnArgs& args)
{
    static const TwoOperands function = {L"logb", [](double x, double base) { return std::log(x) / std::log(base); },
                                         [](Scalar x, Scalar base) { return ZetScalar(x).logb(base); },
                                         [](Tile x, Other base) { return x.logb(base.toDouble()); }};
    return apply(function, args);
}

ZetVariant ZetMathFcn::yn(ZetEqnArgs& args)
{
    static const TwoOperands function = {L"yn", nullptr, [](Scalar x, Scalar n) { return ZetScalar(x).yn(n); },
                                         [](Tile x, Other n) { return x.yn(n.toInt()); }};
    return apply(function, args);
}

ZetVariant ZetMathFcn::jn(ZetEqnArgs& args)
{
    static const TwoOperands function = {L"jn", nullptr, [](Scalar x, Scalar n) { return ZetScalar(x).jn(n); },
                                         [](Tile x, Other n) { return x.jn(n.toInt()); }};
    return apply(function, args);
}

ZetVariant ZetMathFcn::cmplx(ZetEqnArgs& args)
{
    ZetOperand re(args[0]);
    ZetOperand im(args[1]);
    ZetOperand::pair(re, im);
    if (re.isDouble() && im.isDouble()) {
        return std::complex<double>(re.toDouble(), im.toDouble());
    }
    if (re.isScalar() && im.isScalar()) {
        return ZetScalar(re.toDouble(), im.toDouble());
    }
    if (re.isTile() && im.isTile()) {
        return ZetEqnTile::cmplx(re.tile(), im.tile());
    }
    if (re.isTile() && im.isDouble()) {
        return ZetEqnTile::cmplx(re.tile(), im.toDouble());
    }
    if (re.isDouble() && im.isTile()) {
        return ZetEqnTile::cmplx(re.toDouble(), im.tile());
    }
    throwBadArgError(L"cmplx", __LINE__);
}

}  // namespace internal
}  // namespace zet

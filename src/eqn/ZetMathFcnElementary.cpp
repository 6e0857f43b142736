// Functions of one number: elementary functions, parts of complex numbers, rounding, signs.

#include <cmath>

#include "core/ZetUnitInit"
#include "eqn/ZetMathFcn"
#include "eqn/ZetOperand"

namespace zet {
namespace internal {
namespace {

struct OneOperand
{
    const wchar_t* name;
    double (*onDouble)(double);  // null: through the scalar, with a ComplexDouble as the result
    ZetScalar& (ZetScalar::*onScalar)();
    ZetPendingTile (ZetPendingTile::*onTile)() &&;
};

ZetOperand apply(const OneOperand& function, ZetOperand&& x)
{
    if (x.isDouble() && function.onDouble) {
        return function.onDouble(x.toDouble());
    }
    if (x.isDouble()) {
        return complexResult((ZetScalar(x.toDouble()).*function.onScalar)());
    }
    if (x.isScalar()) {
        return (x.toScalar().*function.onScalar)();
    }
    if (x.isTile()) {
        return (x.takeTile().*function.onTile)();
    }
    throwBadArgError(function.name, __LINE__);
}

constexpr double (*throughScalar)(double) = nullptr;

}  // namespace

#define ZET_ONE_OPERAND(Name, OnDouble)                                                                    \
    ZetOperand ZetMathFcn::Operands::Name(ZetEqnArgs& args)                                                \
    {                                                                                                      \
        static const OneOperand function = {L"" #Name, OnDouble, &ZetScalar::Name, &ZetPendingTile::Name}; \
        return apply(function, ZetOperand::of(args[0]));                                                   \
    }

// A double stays a double: log(-1) is a NaN, and floor(2.5) the Double 2.
ZET_ONE_OPERAND(sin, std::sin)
ZET_ONE_OPERAND(asin, std::asin)
ZET_ONE_OPERAND(sinh, std::sinh)
ZET_ONE_OPERAND(cos, std::cos)
ZET_ONE_OPERAND(acos, std::acos)
ZET_ONE_OPERAND(cosh, std::cosh)
ZET_ONE_OPERAND(tan, std::tan)
ZET_ONE_OPERAND(atan, std::atan)
ZET_ONE_OPERAND(tanh, std::tanh)
ZET_ONE_OPERAND(exp, std::exp)
ZET_ONE_OPERAND(log, std::log)
ZET_ONE_OPERAND(log10, std::log10)
ZET_ONE_OPERAND(ceil, std::ceil)
ZET_ONE_OPERAND(floor, std::floor)
ZET_ONE_OPERAND(abs, std::fabs)

// KEPT: a double comes out as a complex number, also where the imaginary part is 0: sqrt(4) is
// (2,0), and round(2.5) is (3,0). Test: ZetMathFcn.resultsOfEveryOperandClass.
ZET_ONE_OPERAND(arg, throughScalar)
ZET_ONE_OPERAND(norm, throughScalar)
ZET_ONE_OPERAND(conj, throughScalar)
ZET_ONE_OPERAND(sinc, throughScalar)
ZET_ONE_OPERAND(sqrt, throughScalar)
ZET_ONE_OPERAND(trunc, throughScalar)
ZET_ONE_OPERAND(round, throughScalar)
ZET_ONE_OPERAND(y0, throughScalar)
ZET_ONE_OPERAND(y1, throughScalar)
ZET_ONE_OPERAND(j0, throughScalar)
ZET_ONE_OPERAND(j1, throughScalar)
ZET_ONE_OPERAND(factorial, throughScalar)

#undef ZET_ONE_OPERAND

namespace {

/// One part of a number, by \p part: a ComplexDouble for a double, a Double without the units for
/// a scalar.
ZetOperand partOf(const wchar_t* name, double (ZetScalar::*part)() const, ZetPendingTile (ZetPendingTile::*onTile)() &&,
                  ZetOperand&& x)
{
    if (x.isDouble()) {
        return complexResult((ZetScalar(x.toDouble()).*part)());
    }
    if (x.isScalar()) {
        return (x.toScalar().*part)();
    }
    if (x.isTile()) {
        return (x.takeTile().*onTile)();
    }
    throwBadArgError(name, __LINE__);
}

ZetOperand negated(ZetOperand&& x)
{
    if (x.isDouble()) {
        return -x.toDouble();
    }
    if (x.isScalar()) {
        const ZetScalar scalar = x.toScalar();
        return ZetScalar(-scalar.real(), -scalar.imag(), scalar.units());
    }
    if (x.isTile()) {
        return -x.takeTile();
    }
    throwBadArgError(L"unaryminus (-)", __LINE__);
}

}  // namespace

ZetOperand ZetMathFcn::Operands::real(ZetEqnArgs& args)
{
    return partOf(L"real", &ZetScalar::real, &ZetPendingTile::real, ZetOperand::of(args[0]));
}

ZetOperand ZetMathFcn::Operands::imag(ZetEqnArgs& args)
{
    return partOf(L"imag", &ZetScalar::imag, &ZetPendingTile::imag, ZetOperand::of(args[0]));
}

ZetOperand ZetMathFcn::Operands::unaryminus(ZetEqnArgs& args)
{
    return negated(ZetOperand::of(args[0]));
}

ZetOperand ZetMathFcn::Operands::unaryplus(ZetEqnArgs& args)
{
    return ZetOperand::of(args[0]);
}

}  // namespace internal
}  // namespace zet

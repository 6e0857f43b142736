// Comparison, logic and choice.

#include <utility>

#include "core/ZetUnitInit"
#include "eqn/ZetMathFcn"
#include "eqn/ZetOperand"

namespace zet {
namespace internal {
namespace {

bool areEqual(ZetEqnArgs& args)
{
    ZetOperand b = ZetOperand::of(args[1]);
    const ZetVariant& right = b.value();
    return ZetOperand::of(args[0]).value() == right;
}

struct Ordering
{
    const wchar_t* name;
    bool (*ofDoubles)(double, double);
    bool (*ofScalars)(const ZetScalar&, const ZetScalar&);
};

ZetOperand compare(const Ordering& ordering, ZetEqnArgs& args)
{
    ZetOperand a = ZetOperand::of(args[0]);
    ZetOperand b = ZetOperand::of(args[1]);
    ZetOperand::pair(a, b);
    if (a.isDouble() && b.isDouble()) {
        return ordering.ofDoubles(a.toDouble(), b.toDouble());
    }
    if (a.isScalar() && b.isScalar()) {
        return ordering.ofScalars(a.toScalar(), b.toScalar());
    }
    throwBadArgError(ordering.name, __LINE__);
}

bool truthOf(const wchar_t* name, ZetOperand&& operand)
{
    if (!operand.value().isValid()) {
        throwBadArgError(name, __LINE__);
    }
    return operand.value().value<bool>();
}

}  // namespace

// KEPT: the right side is evaluated first, and the left side's kind decides how the two compare:
// (1<2)==5 is true, 5==(1<2) is not. Test: ZetMathFcn.equalityLeadsFromTheLeft.
ZetOperand ZetMathFcn::Operands::equals(ZetEqnArgs& args)
{
    return areEqual(args);
}

ZetOperand ZetMathFcn::Operands::notequals(ZetEqnArgs& args)
{
    return !areEqual(args);
}

#define ZET_ORDERING(Name, OfDoubles, OfScalars)                                                             \
    ZetOperand ZetMathFcn::Operands::Name(ZetEqnArgs& args)                                                  \
    {                                                                                                        \
        static const Ordering ordering = {L"" #Name, [](double a, double b) { return OfDoubles; },           \
                                          [](const ZetScalar& a, const ZetScalar& b) { return OfScalars; }}; \
        return compare(ordering, args);                                                                      \
    }

ZET_ORDERING(lessthan, a < b, a < b)
ZET_ORDERING(lessthanequals, a <= b, a < b || a == b)
ZET_ORDERING(greaterthan, a > b, a > b)
ZET_ORDERING(greaterthanequals, a >= b, a > b || a == b)

#undef ZET_ORDERING

ZetOperand ZetMathFcn::Operands::logicalnot(ZetEqnArgs& args)
{
    return !truthOf(L"logicalnot (!)", ZetOperand::of(args[0]));
}

// KEPT: there is no short circuit, the right side is always evaluated.
// Test: ZetMathFcn.logicEvaluatesBothSides.
ZetOperand ZetMathFcn::Operands::logicalor(ZetEqnArgs& args)
{
    ZetOperand a = ZetOperand::of(args[0]);
    ZetOperand b = ZetOperand::of(args[1]);
    const bool left = truthOf(L"logicalor (||)", std::move(a));
    return truthOf(L"logicalor (||)", std::move(b)) || left;
}

ZetOperand ZetMathFcn::Operands::logicaland(ZetEqnArgs& args)
{
    ZetOperand a = ZetOperand::of(args[0]);
    ZetOperand b = ZetOperand::of(args[1]);
    const bool left = truthOf(L"logicaland (&&)", std::move(a));
    return truthOf(L"logicaland (&&)", std::move(b)) && left;
}

ZetOperand ZetMathFcn::Operands::ternary(ZetEqnArgs& args)
{
    const bool first = truthOf(L"ternary (? :)", ZetOperand::of(args[0]));
    return ZetOperand::of(args[first ? 1 : 2]);
}

// KEPT: the selector counts itself, so select(1,a,b) is a, and select(0,a,b) is the selector.
// Test: ZetMathFcn.selectCountsTheSelector.
ZetOperand ZetMathFcn::Operands::select(ZetEqnArgs& args)
{
    ZetOperand selector = ZetOperand::of(args[0]);
    if (!selector.value().isNumeric()) {
        throwBadArgError(L"select", __LINE__);
    }
    const unsigned int chosen = selector.value().value<unsigned int>();
    if (chosen >= args.size()) {
        throwBadArgError(L"select", __LINE__);
    }
    return chosen == 0 ? std::move(selector) : ZetOperand::of(args[chosen]);
}

}  // namespace internal
}  // namespace zet

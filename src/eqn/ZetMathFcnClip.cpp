// Limits: clipping, and bringing values back to an element type.

#include <algorithm>

#include <zet/ZetDataType>

#include "core/ZetTotalCasts"
#include "core/ZetUnitInit"
#include "eqn/ZetMathFcn"
#include "eqn/ZetOperand"

namespace zet {
namespace internal {
namespace {

struct Limit
{
    const wchar_t* name;
    bool (*passes)(double x, double limit);
    ZetScalar& (ZetScalar::*onScalar)(const ZetScalar&);
    ZetPendingTile (ZetPendingTile::*onTile)(double) &&;
};

ZetOperand limit(const Limit& function, ZetEqnArgs& args)
{
    ZetOperand x = ZetOperand::of(args[0]);
    ZetOperand m = ZetOperand::of(args[1]);
    ZetOperand::pair(x, m);
    if (x.isScalar()) {
        return (x.toScalar().*function.onScalar)(m.toScalar());
    }
    if (x.isTile()) {
        return (x.takeTile().*function.onTile)(m.toDouble());
    }
    if (x.isDouble()) {
        return (function.passes(x.toDouble(), m.toDouble()) ? m : x).asResult();
    }
    throwBadArgError(function.name, __LINE__);
}

/// \p x clipped, and rounded for an integer type, as an element of a tile would be. The limits are
/// not rounded.
double roundclipped(double x, const ZetDataType& type, double lo, double hi)
{
    if (lo >= x) {
        return lo;
    }
    if (x >= hi) {
        return hi;
    }
    if (!type.isInteger()) {
        return x;
    }
    return type.isSigned() && x < 0.0 ? x - 0.5 : x + 0.5;
}

/// \p x in the kind that holds numbers of the real type \p type.
ZetVariant cutTo(const ZetDataType& type, double x)
{
    switch (type.type()) {
        case ZetDataType::Float:
        case ZetDataType::Double:
            return x;
        case ZetDataType::U32:
            return truncateToUInt32(x);
        case ZetDataType::I64:
            return truncateToInt64(x);
        case ZetDataType::U64:
            return truncateToUInt64(x);
        default:
            return truncateToInt32(x);
    }
}

}  // namespace

ZetOperand ZetMathFcn::Operands::clipmin(ZetEqnArgs& args)
{
    static const Limit function = {L"clipmin", [](double x, double m) { return m > x; }, &ZetScalar::clipmin,
                                   &ZetPendingTile::clipmin};
    return limit(function, args);
}

ZetOperand ZetMathFcn::Operands::clipmax(ZetEqnArgs& args)
{
    static const Limit function = {L"clipmax", [](double x, double m) { return x > m; }, &ZetScalar::clipmax,
                                   &ZetPendingTile::clipmax};
    return limit(function, args);
}

// KEPT: swapped limits are put in order, but a plain number outside of them gets the limit of the
// other side: clip(0,10,1) is 10. Test: ZetMathFcn.clipWithSwappedLimits.
ZetOperand ZetMathFcn::Operands::clip(ZetEqnArgs& args)
{
    ZetOperand x = ZetOperand::of(args[0]);
    ZetOperand lo = ZetOperand::of(args[1]);
    ZetOperand hi = ZetOperand::of(args[2]);
    ZetOperand::pair(lo, hi);
    if (!lo.hasClassOf(hi)) {
        throwBadArgError(L"clip", __LINE__);
    }
    if (x.isScalar()) {
        return x.toScalar().clip(lo.toScalar(), hi.toScalar());
    }
    const auto [least, greatest] = std::minmax({lo.toDouble(), hi.toDouble()});
    if (x.isTile()) {
        return x.takeTile().clip(least, greatest);
    }
    if (!x.isDouble()) {
        throwBadArgError(L"clip", __LINE__);
    }
    const double number = x.toDouble();
    return (number < least ? lo : number > greatest ? hi : x).asResult();
}

ZetOperand ZetMathFcn::Operands::roundclip(ZetEqnArgs& args)
{
    ZetOperand x = ZetOperand::of(args[0]);
    ZetOperand t = ZetOperand::of(args[1]);
    ZetOperand lo = ZetOperand::of(args[2]);
    ZetOperand hi = ZetOperand::of(args[3]);
    ZetDataType type;
    const bool valid = t.value().convertTo(&type) && lo.value().isNumeric() && hi.value().isNumeric();
    if (valid && x.isTile()) {
        return x.takeTile().roundclip(type, lo.toDouble(), hi.toDouble());
    }
    if (valid && x.isDouble() && type.type() <= ZetDataType::Double) {
        return cutTo(type, roundclipped(x.toDouble(), type, lo.toDouble(), hi.toDouble()));
    }
    throwBadArgError(L"roundclip", __LINE__);
}

}  // namespace internal
}  // namespace zet

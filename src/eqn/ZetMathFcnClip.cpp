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
    ZetEqnTile (ZetEqnTile::*onTile)(double) const;
};

ZetVariant limit(const Limit& function, ZetEqnArgs& args)
{
    ZetOperand x(args[0]);
    ZetOperand m(args[1]);
    ZetOperand::pair(x, m);
    if (x.isScalar()) {
        return (x.toScalar().*function.onScalar)(m.toScalar());
    }
    if (x.isTile()) {
        return (x.tile().*function.onTile)(m.toDouble());
    }
    if (x.isDouble()) {
        return function.passes(x.toDouble(), m.toDouble()) ? m.value() : x.value();
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

ZetVariant ZetMathFcn::clipmin(ZetEqnArgs& args)
{
    static const Limit function = {L"clipmin", [](double x, double m) { return m > x; }, &ZetScalar::clipmin,
                                   &ZetEqnTile::clipmin};
    return limit(function, args);
}

ZetVariant ZetMathFcn::clipmax(ZetEqnArgs& args)
{
    static const Limit function = {L"clipmax", [](double x, double m) { return x > m; }, &ZetScalar::clipmax,
                                   &ZetEqnTile::clipmax};
    return limit(function, args);
}

// KEPT: swapped limits are put in order, but a plain number outside of them gets the limit of the
// other side: clip(0,10,1) is 10. Test: ZetMathFcn.clipWithSwappedLimits.
ZetVariant ZetMathFcn::clip(ZetEqnArgs& args)
{
    ZetOperand x(args[0]);
    ZetOperand lo(args[1]);
    ZetOperand hi(args[2]);
    ZetOperand::pair(lo, hi);
    if (!lo.hasClassOf(hi)) {
        throwBadArgError(L"clip", __LINE__);
    }
    if (x.isScalar()) {
        return x.toScalar().clip(lo.toScalar(), hi.toScalar());
    }
    const auto [least, greatest] = std::minmax({lo.toDouble(), hi.toDouble()});
    if (x.isTile()) {
        return x.tile().clip(least, greatest);
    }
    if (!x.isDouble()) {
        throwBadArgError(L"clip", __LINE__);
    }
    const double number = x.toDouble();
    return number < least ? lo.value() : number > greatest ? hi.value() : x.value();
}

ZetVariant ZetMathFcn::roundclip(ZetEqnArgs& args)
{
    ZetOperand x(args[0]);
    const ZetOperand t(args[1]);
    const ZetOperand lo(args[2]);
    const ZetOperand hi(args[3]);
    ZetDataType type;
    const bool valid = t.value().convertTo(&type) && lo.value().isNumeric() && hi.value().isNumeric();
    if (valid && x.isTile()) {
        return x.tile().roundclip(type, lo.toDouble(), hi.toDouble());
    }
    if (valid && x.isDouble() && type.type() <= ZetDataType::Double) {
        return cutTo(type, roundclipped(x.toDouble(), type, lo.toDouble(), hi.toDouble()));
    }
    throwBadArgError(L"roundclip", __LINE__);
}

}  // namespace internal
}  // namespace zet

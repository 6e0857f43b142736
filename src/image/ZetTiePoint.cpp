#include <zet/ZetTiePoint>

#include <algorithm>
#include <iterator>

#include <zet/ZetTiePointMetaObj>

#include "core/ZetUnitInit"
#include "image/ZetTupleText"

namespace zet {

ZetMetaPropertiesPtr ZetTiePointMetaObj::staticProperties()
{
    static constexpr Row rows[] = {
        ZET_ROW(uv, L"UV", 0),
        ZET_ROW(xy, L"XY", 0),
    };
    return fill(L"ZetTiePoint", rows);
}

ZetMetaObjectConstPtr ZetTiePoint::metaObject() const
{
    return new ZetTiePointMetaObj(this);
}

ZetString ZetTiePoint::className() const
{
    return L"ZetTiePoint";
}

bool ZetTiePoint::operator<(const ZetTiePoint& other) const
{
    const double own[] = {m_uv.x(), m_uv.y(), m_xy.x(), m_xy.y()};
    const double theirs[] = {other.m_uv.x(), other.m_uv.y(), other.m_xy.x(), other.m_xy.y()};
    const auto [a, b] = std::mismatch(std::begin(own), std::end(own), std::begin(theirs));
    return a != std::end(own) && *a < *b;
}

std::wostream& operator<<(std::wostream& out, const ZetTiePoint& point)
{
    return internal::writeTuple(out, point.uv(), point.xy());
}

std::wistream& operator>>(std::wistream& in, ZetTiePoint& point)
{
    ZetCoord2D<double> uv;
    ZetCoord2D<double> xy;
    if (internal::readTuple(in, uv, xy)) {
        point = ZetTiePoint(uv, xy);
    }
    return in;
}

}  // namespace zet

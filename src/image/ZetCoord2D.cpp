#include <zet/ZetCoord2D>

#include <zet/ZetCoord2DMetaObj>

#include "core/ZetTotalCasts"
#include "core/ZetUnitInit"
#include "image/ZetTupleText"
#include "reflect/ZetElementMetaObj"

namespace zet {

ZetMetaObjectPtr internal::coord2DMetaObj(const void* object, unsigned long elementId)
{
    return elementMetaObj<ZetCoord2DMetaObj, ZetCoord2D>(object, elementId);
}

std::wostream& operator<<(std::wostream& out, const ZetCoord2D<int>& point)
{
    return internal::writeTuple(out, point.x(), point.y());
}

std::wostream& operator<<(std::wostream& out, const ZetCoord2D<double>& point)
{
    return internal::writeTuple(out, point.x(), point.y());
}

std::wistream& operator>>(std::wistream& in, ZetCoord2D<int>& point)
{
    const auto [x, y] = internal::readNumbers<2>(in);
    point = ZetCoord2D<int>(internal::truncateToInt32(x), internal::truncateToInt32(y));
    return in;
}

std::wistream& operator>>(std::wistream& in, ZetCoord2D<double>& point)
{
    const auto [x, y] = internal::readNumbers<2>(in);
    point = ZetCoord2D<double>(x, y);
    return in;
}

}  // namespace zet

#include <zet/ZetCoord3D>

#include <zet/ZetCoord3DMetaObj>

#include "core/ZetTotalCasts"
#include "core/ZetUnitInit"
#include "image/ZetTupleText"
#include "reflect/ZetElementMetaObj"

namespace zet {

ZetMetaObjectPtr internal::coord3DMetaObj(const void* object, unsigned long elementId)
{
    return elementMetaObj<ZetCoord3DMetaObj, ZetCoord3D>(object, elementId);
}

std::wostream& operator<<(std::wostream& out, const ZetCoord3D<int>& point)
{
    return internal::writeTuple(out, point.x(), point.y(), point.z());
}

std::wostream& operator<<(std::wostream& out, const ZetCoord3D<double>& point)
{
    return internal::writeTuple(out, point.x(), point.y(), point.z());
}

std::wistream& operator>>(std::wistream& in, ZetCoord3D<int>& point)
{
    const auto [x, y, z] = internal::readNumbers<3>(in);
    point = ZetCoord3D<int>(internal::truncateToInt32(x), internal::truncateToInt32(y), internal::truncateToInt32(z));
    return in;
}

std::wistream& operator>>(std::wistream& in, ZetCoord3D<double>& point)
{
    const auto [x, y, z] = internal::readNumbers<3>(in);
    point = ZetCoord3D<double>(x, y, z);
    return in;
}

}  // namespace zet

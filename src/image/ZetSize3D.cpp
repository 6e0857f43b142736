#include <zet/ZetSize3D>

#include <sstream>

#include <zet/ZetSize3DMetaObj>

#include "core/ZetTotalCasts"
#include "core/ZetUnitInit"
#include "image/ZetTupleText"
#include "reflect/ZetElementMetaObj"

namespace zet {

ZetMetaObjectPtr internal::size3DMetaObj(const void* object, unsigned long elementId)
{
    return elementMetaObj<ZetSize3DMetaObj, ZetSize3D>(object, elementId);
}

ZetString internal::textOfSize(const ZetSize3D<unsigned int>& size)
{
    std::wostringstream out;
    out << size;
    return out.str();
}

std::wostream& operator<<(std::wostream& out, const ZetSize3D<unsigned int>& size)
{
    return internal::writeTuple(out, size.width(), size.height(), size.depth());
}

std::wistream& operator>>(std::wistream& in, ZetSize3D<unsigned int>& size)
{
    using internal::truncateToUInt32;
    const auto [width, height, depth] = internal::readNumbers<3>(in);
    size = ZetSize3D<unsigned int>(truncateToUInt32(width), truncateToUInt32(height), truncateToUInt32(depth));
    return in;
}

}  // namespace zet

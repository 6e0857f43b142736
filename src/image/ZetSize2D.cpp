#include <zet/ZetSize2D>

#include <zet/ZetSize2DMetaObj>

#include "core/ZetTotalCasts"
#include "core/ZetUnitInit"
#include "image/ZetTupleText"
#include "reflect/ZetElementMetaObj"

namespace zet {

ZetMetaObjectPtr internal::size2DMetaObj(const void* object, unsigned long elementId)
{
    return elementMetaObj<ZetSize2DMetaObj, ZetSize2D>(object, elementId);
}

std::wostream& operator<<(std::wostream& out, const ZetSize2D<unsigned int>& size)
{
    return internal::writeTuple(out, size.width(), size.height());
}

std::wistream& operator>>(std::wistream& in, ZetSize2D<unsigned int>& size)
{
    const auto [width, height] = internal::readNumbers<2>(in);
    size = ZetSize2D<unsigned int>(internal::truncateToUInt32(width), internal::truncateToUInt32(height));
    return in;
}

}  // namespace zet

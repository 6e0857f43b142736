#include "raster/ElementTypes"

#include <gdal_version.h>

#include <iterator>

#include <zet/ZetString>

namespace tools {

namespace {

using zet::ZetDataType;

// In the order of the element types.
constexpr GdalElement kElements[] = {
#if GDAL_VERSION_NUM >= GDAL_COMPUTE_VERSION(3, 7, 0)
    {GDT_Int8, false},
#else
    {GDT_Byte, true},
#endif
    {GDT_Byte, false},    {GDT_Int16, false},    {GDT_UInt16, false},   {GDT_Int32, false},
    {GDT_UInt32, false},  {GDT_Int64, false},    {GDT_UInt64, false},   {GDT_Float32, false},
    {GDT_Float64, false}, {GDT_CFloat32, false}, {GDT_CFloat64, false},
};
static_assert(std::size(kElements) == ZetDataType::Invalid, "one row per element type");

}  // namespace

GdalElement toGdal(ZetDataType::Type type)
{
    return kElements[type];
}

ZetDataType::Type fromGdal(const GdalElement& element)
{
    if (element.type == GDT_CInt16 || element.type == GDT_CInt32) {
        return ZetDataType::ComplexDouble;
    }
    for (int i = 0; i < ZetDataType::Invalid; ++i) {
        const GdalElement& row = kElements[i];
        if (row.type == element.type && row.signedByte == element.signedByte) {
            return static_cast<ZetDataType::Type>(i);
        }
    }
    return ZetDataType::Invalid;
}

bool isSignedByte(GDALRasterBand& band)
{
    const char* pixelType = band.GetMetadataItem("PIXELTYPE", "IMAGE_STRUCTURE");
    return band.GetRasterDataType() == GDT_Byte && pixelType && std::string(pixelType) == "SIGNEDBYTE";
}

std::string nameOf(ZetDataType::Type type)
{
    return zet::toMultibyte(ZetDataType(type).toString());
}

}  // namespace tools

#include "raster/InputRaster"

#include "raster/Failure"
#include "raster/GdalErrors"

namespace tools {

GDALDatasetUniquePtr openRaster(const std::string& file)
{
    const GdalErrors errors;
    GDALDatasetUniquePtr dataset(
        GDALDataset::Open(file.c_str(), GDAL_OF_RASTER | GDAL_OF_READONLY | GDAL_OF_VERBOSE_ERROR));
    if (!dataset) {
        throw Failure("Cannot open '" + file + "': " + errors.text());
    }
    return dataset;
}

GDALDataset& RasterFiles::open(const std::string& file)
{
    GDALDatasetUniquePtr& dataset = m_files[file];
    if (!dataset) {
        dataset = openRaster(file);
    }
    return *dataset;
}

}  // namespace tools

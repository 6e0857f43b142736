#include "raster/tests/Rasters"

#include <cpl_string.h>
#include <stdlib.h>

#include <algorithm>
#include <cstdlib>

namespace tools::test {

namespace fs = std::filesystem;

RasterTest::RasterTest()
{
    GDALAllRegister();
    std::string folder = (fs::temp_directory_path() / "zet-test-XXXXXX").string();
    m_folder = mkdtemp(folder.data());
}

RasterTest::~RasterTest()
{
    fs::remove_all(m_folder);
}

std::vector<std::string> RasterTest::names() const
{
    std::vector<std::string> result;
    for (const fs::directory_entry& entry : fs::directory_iterator(m_folder)) {
        result.push_back(entry.path().filename().string());
    }
    std::sort(result.begin(), result.end());
    return result;
}

std::string RasterTest::make(const std::string& name, const RasterPlan& plan) const
{
    CPLStringList options;
    for (const auto& [key, value] : plan.creation) {
        options.SetNameValue(key.c_str(), value.c_str());
    }
    GDALDriver* driver = GetGDALDriverManager()->GetDriverByName("GTiff");
    const int count = std::max(1, static_cast<int>(plan.bands.size()));
    const GDALDatasetUniquePtr dataset(
        driver->Create(path(name).c_str(), plan.width, plan.height, count, plan.type, options.List()));
    for (int i = 1; i <= count; ++i) {
        GDALRasterBand& band = *dataset->GetRasterBand(i);
        if (plan.noData) {
            band.SetNoDataValue(*plan.noData);
        }
        if (!plan.bands.empty()) {
            Complexes pixels = plan.bands[static_cast<std::size_t>(i - 1)];
            EXPECT_EQ(band.RasterIO(GF_Write, 0, 0, plan.width, plan.height, pixels.data(), plan.width, plan.height,
                                    GDT_CFloat64, 0, 0, nullptr),
                      CE_None);
        }
    }
    return path(name);
}

std::string RasterTest::makeRow(const std::string& name, GDALDataType type, const Numbers& values,
                                const std::optional<double>& noData) const
{
    RasterPlan plan{static_cast<int>(values.size()), 1, type};
    plan.bands = {toComplex(values)};
    plan.noData = noData;
    return make(name, plan);
}

GDALDatasetUniquePtr RasterTest::open(const std::string& file)
{
    GDALDatasetUniquePtr dataset(GDALDataset::Open(file.c_str(), GDAL_OF_RASTER));
    EXPECT_TRUE(dataset) << file;
    return dataset;
}

Complexes RasterTest::readComplex(const std::string& file, int band)
{
    const GDALDatasetUniquePtr dataset = open(file);
    if (!dataset) {
        return Complexes();
    }
    const int width = dataset->GetRasterXSize();
    const int height = dataset->GetRasterYSize();
    Complexes pixels(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
    EXPECT_EQ(dataset->GetRasterBand(band)->RasterIO(GF_Read, 0, 0, width, height, pixels.data(), width, height,
                                                     GDT_CFloat64, 0, 0, nullptr),
              CE_None);
    return pixels;
}

Numbers RasterTest::read(const std::string& file, int band)
{
    Numbers result;
    for (const std::complex<double>& pixel : readComplex(file, band)) {
        result.push_back(pixel.real());
    }
    return result;
}

void RasterTest::followPage() const
{
    const std::string command =
        "cd '" + path("") + "' && sh " TOOLS_TRANSCRIPT_RUNNER " " TOOLS_PROGRAM " " TOOLS_PAGE_TRANSCRIPT;
    EXPECT_EQ(std::system(command.c_str()), 0);
}

Complexes toComplex(const Numbers& values)
{
    return Complexes(values.begin(), values.end());
}

}  // namespace tools::test

#include "raster/OutputRaster"

#include <cpl_error.h>
#include <cpl_string.h>

#include <filesystem>

#include "raster/ElementTypes"
#include "raster/Failure"

namespace tools {

namespace {

bool canWriteInPieces(GDALDriver& driver)
{
    return driver.GetMetadataItem(GDAL_DCAP_RASTER) && driver.GetMetadataItem(GDAL_DCAP_CREATE);
}

bool servesExtension(GDALDriver& driver, const std::string& extension)
{
    const char* served = driver.GetMetadataItem(GDAL_DMD_EXTENSIONS);
    return served && CPLStringList(CSLTokenizeString(served)).FindString(extension.c_str()) >= 0;
}

GDALDriver& driverByName(const std::string& name)
{
    GDALDriver* driver = GetGDALDriverManager()->GetDriverByName(name.c_str());
    if (!driver) {
        throw Failure("GDAL has no driver '" + name + "'.");
    }
    if (!canWriteInPieces(*driver)) {
        throw Failure("GDAL's driver '" + name + "' cannot write a raster piece by piece; GTiff can.");
    }
    return *driver;
}

GDALDriver& driverByExtension(const std::string& file)
{
    std::string extension = std::filesystem::path(file).extension().string();
    extension.erase(0, extension.empty() ? 0 : 1);
    GDALDriverManager& manager = *GetGDALDriverManager();
    for (int i = 0; i < manager.GetDriverCount(); ++i) {
        GDALDriver& driver = *manager.GetDriver(i);
        if (canWriteInPieces(driver) && servesExtension(driver, extension)) {
            return driver;
        }
    }
    throw Failure("No driver of GDAL that can write piece by piece serves the extension of '" + file +
                  "'; name one with -f.");
}

/// The creation options of the user, which GDAL would only warn of when the driver does not know them.
CPLStringList askedOptions(const OutputPlace& place, GDALDriver& driver)
{
    CPLStringList list;
    for (const std::string& option : place.creationOptions) {
        const std::size_t equals = option.find('=');
        if (equals == std::string::npos) {
            throw Failure("'" + option + "' is not a creation option such as COMPRESS=DEFLATE.");
        }
        list.SetNameValue(option.substr(0, equals).c_str(), option.substr(equals + 1).c_str());
    }
    if (!GDALValidateCreationOptions(&driver, list.List())) {
        throw Failure("Cannot write '" + place.file + "': " + CPLGetLastErrorMsg());
    }
    return list;
}

/// Storage like that of the model where the format is one that leaves the choice.
CPLStringList creationOptions(const OutputPlace& place, GDALDriver& driver, GDALRasterBand& model, bool signedByte)
{
    CPLStringList list;
    if (EQUAL(driver.GetDescription(), "GTiff")) {
        int width = 0;
        int height = 0;
        model.GetBlockSize(&width, &height);
        list.SetNameValue("BIGTIFF", "IF_SAFER");
        if (width < model.GetXSize() && width % 16 == 0 && height % 16 == 0) {
            list.SetNameValue("TILED", "YES");
            list.SetNameValue("BLOCKXSIZE", std::to_string(width).c_str());
            list.SetNameValue("BLOCKYSIZE", std::to_string(height).c_str());
        }
    }
    if (signedByte) {
        list.SetNameValue("PIXELTYPE", "SIGNEDBYTE");
    }
    const CPLStringList asked = askedOptions(place, driver);
    list.Assign(CSLMerge(list.StealList(), asked.List()));
    return list;
}

void copyGeoreference(GDALDataset& from, GDALDataset& to)
{
    double transform[6];
    if (from.GetGeoTransform(transform) == CE_None) {
        to.SetGeoTransform(transform);
    }
    if (const OGRSpatialReference* reference = from.GetSpatialRef()) {
        to.SetSpatialRef(reference);
    }
    if (from.GetGCPCount() > 0) {
        to.SetGCPs(from.GetGCPCount(), from.GetGCPs(), from.GetGCPSpatialRef());
    }
    if (char** rational = from.GetMetadata("RPC")) {
        to.SetMetadata(rational, "RPC");
    }
}

}  // namespace

OutputRaster::OutputRaster(const OutputPlace& place, GDALRasterBand& model, int bands, zet::ZetDataType::Type type)
    : m_name(place.file), m_type(type), m_staging(place.file)
{
    create(place, model, bands);
    copyGeoreference(*model.GetDataset(), *m_dataset);
}

void OutputRaster::create(const OutputPlace& place, GDALRasterBand& model, int bands)
{
    GDALDriver& driver = place.driver.empty() ? driverByExtension(place.file) : driverByName(place.driver);
    const GdalElement element = toGdal(m_type);
    const CPLStringList list = creationOptions(place, driver, model, element.signedByte);
    m_dataset.reset(
        driver.Create(m_staging.path().c_str(), model.GetXSize(), model.GetYSize(), bands, element.type, list.List()));
    if (!m_dataset) {
        refuse();
    }
    if (fromGdal({band(1).GetRasterDataType(), isSignedByte(band(1))}) != m_type) {
        throw Failure("GDAL's driver '" + std::string(driver.GetDescription()) + "' cannot hold the element type " +
                      nameOf(m_type) + ".");
    }
}

void OutputRaster::write(int band, const Window& window, void* pixels, zet::ZetDataType::Type type)
{
    const CPLErr status =
        m_dataset->GetRasterBand(band)->RasterIO(GF_Write, window.x, window.y, window.width, window.height, pixels,
                                                 window.width, window.height, toGdal(type).type, 0, 0, nullptr);
    if (status != CE_None) {
        refuse();
    }
}

void OutputRaster::close()
{
    m_dataset.reset();
    if (m_errors.any()) {
        refuse();
    }
    if (!std::filesystem::exists(m_staging.path())) {
        throw Failure("Cannot write '" + m_name + "': the driver gives its files other names.");
    }
}

void OutputRaster::refuse() const
{
    throw Failure("Cannot write '" + m_name + "': " + m_errors.text());
}

}  // namespace tools

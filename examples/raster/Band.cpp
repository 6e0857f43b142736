#include "raster/Band"

#include "raster/ElementTypes"
#include "raster/Failure"
#include "raster/GdalErrors"

namespace tools {

Band::Band(const BandChoice& choice, RasterFiles& files)
    : m_choice(choice),
      m_dataset(files.open(choice.file)),
      m_band(nullptr),
      m_type(zet::ZetDataType::Invalid),
      m_hasNoData(false),
      m_signedByte(false)
{
    const int count = m_dataset.GetRasterCount();
    if (choice.band > count) {
        throw Failure("'" + choice.file + "' has no band " + std::to_string(choice.band) + "; it has " +
                      std::to_string(count) + ".");
    }
    m_band = m_dataset.GetRasterBand(choice.band);
    m_signedByte = isSignedByte(*m_band);
    m_type = fromGdal({m_band->GetRasterDataType(), m_signedByte});
    if (m_type == zet::ZetDataType::Invalid) {
        throw Failure("The pixels of " + place() + " have no element type that can be computed with.");
    }
    // GDAL's own mask takes signed bytes for unsigned ones.
    int noDataOfSignedByte = 0;
    m_band->GetNoDataValue(&noDataOfSignedByte);
    m_hasNoData = m_signedByte ? noDataOfSignedByte != 0 : (m_band->GetMaskFlags() & (GMF_ALL_VALID | GMF_ALPHA)) == 0;
}

std::string Band::place() const
{
    return "'" + m_choice.file + "', band " + std::to_string(m_choice.band);
}

void Band::reserve(std::size_t pixels)
{
    m_memory.resize(pixels * static_cast<std::size_t>(zet::ZetDataType(m_type).size()));
    m_mask.resize(m_hasNoData ? pixels : 0);
    m_buffer = new zet::ZetBuffer(m_memory.size(), m_memory.data(), false);
}

zet::ZetEqnTile Band::read(const Window& window, Validity& valid)
{
    transfer(*m_band, window, m_memory.data(), toGdal(m_type).type, "pixels");
    if (m_hasNoData) {
        clearNoData(window, valid);
    }
    return zet::ZetEqnTile(m_buffer, m_type, window.pixels());
}

void Band::clearNoData(const Window& window, Validity& valid)
{
    if (m_signedByte) {
        const double noData = m_band->GetNoDataValue();
        const signed char* pixels = reinterpret_cast<const signed char*>(m_memory.data());
        for (std::size_t i = 0; i < window.pixels(); ++i) {
            valid[i] = static_cast<unsigned char>(valid[i] && pixels[i] != noData);
        }
        return;
    }
    transfer(*m_band->GetMaskBand(), window, m_mask.data(), GDT_Byte, "mask");
    for (std::size_t i = 0; i < window.pixels(); ++i) {
        valid[i] = static_cast<unsigned char>(valid[i] && m_mask[i]);
    }
}

void Band::transfer(GDALRasterBand& from, const Window& window, void* to, GDALDataType type, const char* what) const
{
    const GdalErrors errors;
    if (from.RasterIO(GF_Read, window.x, window.y, window.width, window.height, to, window.width, window.height, type,
                      0, 0, nullptr) != CE_None) {
        throw Failure("Cannot read the " + std::string(what) + " of " + place() + ": " + errors.text());
    }
}

}  // namespace tools

#include "Raster"

#include <zet/ZetColorModel>
#include <zet/ZetDataLayout>
#include <zet/ZetDataType>
#include <zet/ZetImageSize>

#include "ColourModel"
#include "RasterReader"

namespace describe {

namespace {

using zet::ZetVariant;

zet::ZetImageSize sizeOf(GDALDataset& dataset)
{
    return zet::ZetImageSize(static_cast<unsigned int>(dataset.GetRasterXSize()),
                             static_cast<unsigned int>(dataset.GetRasterYSize()),
                             static_cast<unsigned int>(dataset.GetRasterCount()));
}

/// The element type that all bands have; Invalid when they differ or there are none.
zet::ZetDataType commonType(GDALDataset& dataset)
{
    zet::ZetDataType common(zet::ZetDataType::Invalid);
    bool first = true;
    for (GDALRasterBand* band : dataset.GetBands()) {
        const zet::ZetDataType type = elementTypeOf(*band);
        if (!first && type != common) {
            return zet::ZetDataType(zet::ZetDataType::Invalid);
        }
        common = type;
        first = false;
    }
    return common;
}

struct LayoutRow
{
    const char* interleave;
    zet::ZetDataLayout::Type layout;
};

constexpr LayoutRow layoutRows[] = {
    {"PIXEL", zet::ZetDataLayout::PixelInterleaved},
    {"LINE", zet::ZetDataLayout::LineInterleaved},
    {"BAND", zet::ZetDataLayout::BandInterleaved},
};

zet::ZetDataLayout layoutOf(GDALDataset& dataset)
{
    const char* interleave = dataset.GetMetadataItem("INTERLEAVE", "IMAGE_STRUCTURE");
    for (const LayoutRow& row : layoutRows) {
        if (interleave && EQUAL(row.interleave, interleave)) {
            return row.layout;
        }
    }
    return zet::ZetDataLayout();
}

/// The grid of the storage blocks.
class TilesReader : public RasterReader
{
public:
    using RasterReader::RasterReader;

protected:
    void addFields(zet::ZetMetaDataSet& set) const override
    {
        const zet::ZetTileGrid grid = raster()->grid();
        addField(set, L"tile_size", grid.tileSize(), L"columns, rows and bands of a block");
        addField(set, L"across", grid.tilesAcross(), L"blocks side by side");
        addField(set, L"down", grid.tilesDown(), L"blocks below each other");
        addField(set, L"count", grid.tileCount(), L"blocks in all");
    }
};

class RootReader : public RasterReader
{
public:
    using RasterReader::RasterReader;

protected:
    void addFields(zet::ZetMetaDataSet& set) const override
    {
        addField(set, L"driver", wideText(dataset().GetDriver()->GetDescription()), L"GDAL's driver");
        addField(set, L"size", sizeOf(dataset()), L"columns, rows and bands");
        const zet::ZetDataType type = commonType(dataset());
        if (type.type() != zet::ZetDataType::Invalid) {
            addField(set, L"element_type", type, L"of all bands");
            addField(set, L"bits", type.logicalBitDepth(), L"in use in an element");
        }
        if (dataset().GetRasterCount() > 0) {
            const zet::ZetColorModel model = colourModelOf(dataset());
            addField(set, L"color_model", zet::ZetVariantList{model, model.numBands()}, L"and its number of bands");
        }
        const zet::ZetDataLayout layout = layoutOf(dataset());
        if (layout.type() != zet::ZetDataLayout::Invalid) {
            addField(set, L"layout", layout, L"order of the samples in the file");
        }
        if (const char* compression = dataset().GetMetadataItem("COMPRESSION", "IMAGE_STRUCTURE")) {
            addField(set, L"compression", wideText(compression), L"of the samples in the file");
        }
    }

    void addSubsets(zet::ZetMetaDataSet& set) const override
    {
        if (dataset().GetRasterCount() > 0) {
            addPart<BandsReader>(set, "bands", L"by their numbers");
            addPart<TilesReader>(set, "tiles", L"the blocks of the file");
        }
        if (GeoreferenceReader::hasAny(dataset())) {
            addPart<GeoreferenceReader>(set, "georeference", L"place on the ground");
        }
        if (DomainsReader::hasAny(dataset())) {
            addPart<DomainsReader>(set, "domains", L"stored with the file", &dataset());
        }
    }
};

}  // namespace

zet::ZetTileGrid Raster::grid() const
{
    const zet::ZetImageSize image = sizeOf(dataset);
    int width = 0;
    int height = 0;
    if (dataset.GetRasterCount() > 0) {
        dataset.GetRasterBand(1)->GetBlockSize(&width, &height);
    }
    if (width <= 0 || height <= 0) {
        return zet::ZetTileGrid();
    }
    return zet::ZetTileGrid(
        image, zet::ZetImageSize(static_cast<unsigned int>(width), static_cast<unsigned int>(height), image.depth()));
}

zet::ZetMetaDataSet describeRaster(const RasterPtr& raster, const zet::ZetString& name)
{
    const char* kind = raster->dataset.GetDriver()->GetMetadataItem(GDAL_DMD_LONGNAME);
    return zet::ZetMetaDataSet(name, wideText(kind ? kind : ""), new RootReader(raster, "the raster"));
}

}  // namespace describe

#include "ColourModel"

#include <vector>

namespace describe {

namespace {

using zet::ZetColorModel;

struct ModelRow
{
    ZetColorModel::Type model;
    std::vector<GDALColorInterp> bands;
};

const std::vector<ModelRow>& modelRows()
{
    static const std::vector<ModelRow> rows = {
        {ZetColorModel::GrayScale, {GCI_GrayIndex}},
        {ZetColorModel::Alpha, {GCI_AlphaBand}},
        {ZetColorModel::RGB, {GCI_RedBand, GCI_GreenBand, GCI_BlueBand}},
        {ZetColorModel::HSI, {GCI_HueBand, GCI_SaturationBand, GCI_LightnessBand}},
        {ZetColorModel::YCbCr, {GCI_YCbCr_YBand, GCI_YCbCr_CbBand, GCI_YCbCr_CrBand}},
        {ZetColorModel::CMYK, {GCI_CyanBand, GCI_MagentaBand, GCI_YellowBand, GCI_BlackBand}},
    };
    return rows;
}

/// The interpretations of the bands, without alpha bands beside others.
std::vector<GDALColorInterp> interpretationsOf(GDALDataset& dataset)
{
    std::vector<GDALColorInterp> colours;
    for (GDALRasterBand* band : dataset.GetBands()) {
        if (band->GetColorInterpretation() != GCI_AlphaBand || dataset.GetRasterCount() == 1) {
            colours.push_back(band->GetColorInterpretation());
        }
    }
    return colours;
}

}  // namespace

ZetColorModel colourModelOf(GDALDataset& dataset)
{
    const std::vector<GDALColorInterp> colours = interpretationsOf(dataset);
    for (const ModelRow& row : modelRows()) {
        if (row.bands == colours) {
            return ZetColorModel(row.model);
        }
    }
    ZetColorModel model(ZetColorModel::Invalid);
    model.setType(colours.size() == 1 ? ZetColorModel::Other : ZetColorModel::MultiSpectral,
                  static_cast<unsigned int>(colours.size()));
    return model;
}

}  // namespace describe

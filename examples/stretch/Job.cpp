#include "Job"

#include <filesystem>
#include <optional>

#include "Curves"
#include "Plot"
#include "Report"
#include "Source"
#include "raster/Failure"
#include "raster/Interrupt"
#include "raster/OutputRaster"
#include "raster/TextFile"
#include "raster/Tool"
#include "support/Table"

namespace stretch {

using tools::Failure;

namespace {

constexpr std::pair<double, double> kPercentiles = {2, 98};

/// Whether the tables come from a file.
bool readsTables(const Options& options)
{
    const bool reads = !options.lut().empty() && std::filesystem::exists(options.lut());
    if (reads && options.percentiles()) {
        throw Failure("The tables of '" + options.lut() + "' leave nothing to do for --percentiles.");
    }
    return reads;
}

void writePixels(Source& source, const Curves& curves, tools::OutputRaster& raster)
{
    for (std::size_t band = 0; band < source.bandCount(); ++band) {
        GDALRasterBand& out = raster.band(static_cast<int>(band) + 1);
        out.SetColorInterpretation(source.raster(band).GetColorInterpretation());
        if (source.hasGaps()) {
            out.SetNoDataValue(0);
        }
    }
    std::vector<unsigned char> pixels;
    source.read(
        [&](std::size_t band, const tools::Window& window, const std::vector<int>& bins, const tools::Validity& valid) {
            curves.apply(band, bins, valid, pixels);
            raster.write(static_cast<int>(band) + 1, window, pixels.data(), curves.type());
        });
    raster.close();
}

/// A file that the job writes beside the raster, if it is asked for.
std::optional<tools::Staging>& stage(std::optional<tools::Staging>& staging, const std::string& file)
{
    if (!file.empty()) {
        staging.emplace(file);
    }
    return staging;
}

std::string titleOf(const Options& options, bool reads)
{
    const std::string name = std::filesystem::path(options.input()).filename().string();
    if (reads) {
        return name + ", by the tables of " + std::filesystem::path(options.lut()).filename().string();
    }
    const auto [low, high] = options.percentiles().value_or(kPercentiles);
    return name + ", stretched between its percentiles " + tools::numberText(low, 4) + " and " +
           tools::numberText(high, 4);
}

}  // namespace

void runJob(const Options& options)
{
    const bool reads = readsTables(options);
    Source source(options.input());
    if (!options.lut().empty() && !source.isExact()) {
        throw Failure("A file of lookup tables serves bands of one type of up to 16 bits only.");
    }
    const Curves curves = reads ? Curves(source, options.lut())
                                : Curves(source, options.percentiles().value_or(kPercentiles), options.type());

    tools::OutputRaster raster(options.output(), source.raster(0), static_cast<int>(source.bandCount()), curves.type());
    writePixels(source, curves, raster);
    std::optional<tools::Staging> lut;
    if (stage(lut, reads ? std::string() : options.lut())) {
        tools::writeText(*lut, options.lut(), curves.text());
    }
    std::optional<tools::Staging> picture;
    if (stage(picture, options.plot())) {
        plot(source, curves, titleOf(options, reads)).savePng(picture->path(), options.plot());
    }
    tools::throwIfInterrupted();
    tools::print(report(source, curves));
    raster.commit();
    for (std::optional<tools::Staging>* staging : {&lut, &picture}) {
        if (*staging) {
            (*staging)->commit();
        }
    }
}

}  // namespace stretch

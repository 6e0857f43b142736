#include "Job"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

#include "Equation"
#include "EquationText"
#include "OutputFormat"
#include "Progress"
#include "QuickLook"
#include "raster/Band"
#include "raster/ElementTypes"
#include "raster/Failure"
#include "raster/Interrupt"
#include "raster/OutputRaster"
#include "raster/Staging"
#include "raster/WindowWalk"

namespace bandmath {

using tools::Band;
using tools::Failure;
using tools::nameOf;
using tools::OutputRaster;
using tools::RasterFiles;
using tools::Staging;
using tools::throwIfInterrupted;
using tools::Validity;
using tools::Window;
using tools::WindowWalk;

namespace {

std::string sizeOf(const Band& band)
{
    return std::to_string(band.width()) + " x " + std::to_string(band.height());
}

std::vector<Band> openBands(const Options& options, RasterFiles& files)
{
    std::vector<Band> bands;
    const std::vector<BandChoice> choices = options.bands();
    bands.reserve(choices.size());
    for (const BandChoice& choice : choices) {
        bands.emplace_back(choice, files);
        const Band& first = bands.front();
        const Band& band = bands.back();
        if (band.width() != first.width() || band.height() != first.height()) {
            throw Failure("The sizes differ: " + first.place() + " is " + sizeOf(first) + ", " + band.place() + " is " +
                          sizeOf(band) + ".");
        }
    }
    return bands;
}

WindowWalk walkOver(const Options& options, const Band& model)
{
    int blockWidth = 0;
    int blockHeight = 0;
    model.blockSize(blockWidth, blockHeight);
    const Window image{0, 0, model.width(), model.height()};
    return options.whole() ? WindowWalk(image.width, image.height, image.width, image.height, image.pixels())
                           : WindowWalk(image.width, image.height, blockWidth, blockHeight, options.windowPixels());
}

/// A reduction over one window is not the reduction over the image, and one over no-data neither.
void checkReduction(const Equation& equation, const std::vector<Band>& bands, bool inOneWindow)
{
    const std::string function = reduction(equation.text());
    if (function.empty()) {
        return;
    }
    if (!inOneWindow) {
        throw Failure(
            "'" + function +
            "' makes one number of a band, but the image is computed window by window: add --whole to compute "
            "it at once.");
    }
    for (const Band& band : bands) {
        if (band.hasNoData()) {
            std::fprintf(stderr, "bandmath: warning: '%s' counts the no-data pixels of '%s' like all others.\n",
                         function.c_str(), band.name().c_str());
        }
    }
}

/// Most operations tell that they do not serve an element type by an empty result. A few give
/// pixels or a number all the same, and must not be let near such a band.
void checkTypes(const Equation& equation, const std::vector<Band>& bands)
{
    for (const Band& band : bands) {
        const zet::ZetDataType type(band.elementType());
        const bool served = type.type() != zet::ZetDataType::I64 && type.type() != zet::ZetDataType::U64;
        const bool partly = type.type() == zet::ZetDataType::ComplexDouble;
        if ((served && !type.isComplex()) || columnOf(equation.text(), band.name()) == 0) {
            continue;
        }
        const std::string function = functionOfAnything(equation.text(), partly ? band.name() : std::string());
        if (!function.empty()) {
            throw Failure("'" + function + "' does not serve the element type " + nameOf(type.type()) + " of '" +
                          band.name() + "' (" + band.place() + ").");
        }
    }
}

/// What is written, from the first window on: until then it is not known what the equation gives.
struct Outputs
{
    Outputs(const Options& options, const zet::ZetEqnTile& first, const std::vector<Band>& bands)
        : format(options, first.dataType().type(),
                 std::any_of(bands.begin(), bands.end(), [](const Band& b) { return b.hasNoData(); })),
          raster({options.output(), options.driver(), options.creationOptions()}, bands.front().raster(), 1,
                 format.type()),
          tally()
    {
        format.declareNoData(raster.band(1));
        if (!options.picture().empty()) {
            picture = std::make_unique<Staging>(options.picture());
            quickLook = std::make_unique<QuickLook>(options, bands.front().width(), bands.front().height());
        }
    }

    void take(const Window& window, const zet::ZetEqnTile& computed, Validity& valid)
    {
        const zet::ZetEqnTile pixels = format.finish(computed, valid, tally);
        raster.write(1, window, pixels.buffer()->data(), pixels.dataType().type());
        if (quickLook) {
            quickLook->add(window, pixels, valid);
        }
    }

    void finish(const Options& options, const Equation& equation)
    {
        raster.close();
        if (quickLook) {
            quickLook->draw(equation.text()).savePng(picture->path(), options.picture());
        }
        throwIfInterrupted();
        raster.commit();
        if (picture) {
            picture->commit();
        }
    }

    OutputFormat format;
    OutputRaster raster;
    OutputFormat::Tally tally;
    std::unique_ptr<Staging> picture;
    std::unique_ptr<QuickLook> quickLook;
};

void report(const Options& options, const Outputs& outputs, const Band& model)
{
    const OutputFormat::Tally& tally = outputs.tally;
    const Statistics& statistics = tally.statistics;
    std::printf("%s: %s, %s\n", options.output().c_str(), sizeOf(model).c_str(), nameOf(outputs.format.type()).c_str());
    std::printf("count    %zu\n", statistics.count());
    if (statistics.count() > 0) {
        std::printf("minimum  %.10g\nmaximum  %.10g\nmean     %.10g\n", statistics.minimum(), statistics.maximum(),
                    statistics.mean());
    }
    if (tally.noData > 0) {
        std::printf("no data  %zu\n", tally.noData);
    }
    if (tally.noValue > 0) {
        std::printf("no value %zu\n", tally.noValue);
    }
    if (!options.picture().empty()) {
        std::printf("picture  %s\n", options.picture().c_str());
    }
    if (tally.collisions > 0) {
        std::fprintf(stderr, "bandmath: warning: %zu valid pixels equal the no-data value; choose another with -n.\n",
                     tally.collisions);
    }
    if (tally.noValue > 0 && !outputs.format.hasNoData() && zet::ZetDataType(outputs.format.type()).isInteger()) {
        std::fprintf(stderr,
                     "bandmath: warning: pixels without a value (NaN) were written as the least value; give a no-data "
                     "value with -n to tell them apart.\n");
    }
}

}  // namespace

void runJob(const Options& options)
{
    Equation equation(options.equation());
    RasterFiles files;
    std::vector<Band> bands = openBands(options, files);
    equation.requireBands(bands);

    checkTypes(equation, bands);

    const Band& model = bands.front();
    const std::size_t total = Window{0, 0, model.width(), model.height()}.pixels();
    WindowWalk walk = walkOver(options, model);
    checkReduction(equation, bands, walk.largest() == total);
    for (Band& band : bands) {
        band.reserve(walk.largest());
    }

    std::unique_ptr<Outputs> outputs;
    Validity valid;
    Window window;
    {
        Progress progress(total, options.quiet());
        while (walk.next(window)) {
            throwIfInterrupted();
            valid.assign(window.pixels(), 1);
            for (Band& band : bands) {
                equation.bind(band.name(), band.read(window, valid));
            }
            const zet::ZetEqnTile computed = equation.evaluate(window.pixels(), bands);
            if (!outputs) {
                outputs = std::make_unique<Outputs>(options, computed, bands);
            }
            outputs->take(window, computed, valid);
            progress.advance(window.pixels());
        }
    }
    outputs->finish(options, equation);
    report(options, *outputs, model);
}

}  // namespace bandmath

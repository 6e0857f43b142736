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
#include "raster/Tool"
#include "raster/WindowWalk"
#include "support/Table"

namespace bandmath {

using tools::Band;
using tools::Failure;
using tools::nameOf;
using tools::numberText;
using tools::OutputRaster;
using tools::RasterFiles;
using tools::Staging;
using tools::throwIfInterrupted;
using tools::Validity;
using tools::Window;
using tools::WindowWalk;

namespace {

/// How many digits of a statistic are told.
constexpr int kDigits = 10;

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

    /// Finishes the files; nothing is seen of them before commit().
    void close(const Options& options, const Equation& equation)
    {
        raster.close();
        if (quickLook) {
            quickLook->draw(equation.text()).savePng(picture->path(), options.picture());
        }
    }

    void commit()
    {
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

std::string report(const Options& options, const Outputs& outputs, const Band& model)
{
    const OutputFormat::Tally& tally = outputs.tally;
    const Statistics& statistics = tally.statistics;
    std::string text = options.output() + ": " + sizeOf(model) + ", " + nameOf(outputs.format.type()) + "\n";
    const auto add = [&text](const char* name, const std::string& value) { text += name + value + "\n"; };
    add("count    ", std::to_string(statistics.count()));
    if (statistics.count() > 0) {
        add("minimum  ", numberText(statistics.minimum(), kDigits));
        add("maximum  ", numberText(statistics.maximum(), kDigits));
        add("mean     ", numberText(statistics.mean(), kDigits));
    }
    if (tally.noData > 0) {
        add("no data  ", std::to_string(tally.noData));
    }
    if (tally.noValue > 0) {
        add("no value ", std::to_string(tally.noValue));
    }
    if (!options.picture().empty()) {
        add("picture  ", options.picture());
    }
    return text;
}

void warn(const Outputs& outputs)
{
    const OutputFormat::Tally& tally = outputs.tally;
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
    outputs->close(options, equation);
    throwIfInterrupted();
    tools::print(report(options, *outputs, model));
    warn(*outputs);
    outputs->commit();
}

}  // namespace bandmath

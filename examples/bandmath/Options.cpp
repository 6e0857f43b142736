#include "Options"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <sstream>

#include "Failure"

namespace bandmath {

namespace {

/// An option that does not stand on the command line as it should.
[[noreturn]] void refuse(const std::string& text)
{
    throw Failure(text + " See bandmath --help.");
}

double toNumber(const std::string& text)
{
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0') {
        refuse("'" + text + "' is not a number.");
    }
    return value;
}

double toFinite(const std::string& text)
{
    const double value = toNumber(text);
    if (!std::isfinite(value)) {
        refuse("'" + text + "' is not a finite number.");
    }
    return value;
}

int toCount(const std::string& text, int least)
{
    const double value = toNumber(text);
    if (!(value >= least && value <= 1e9 && value == std::floor(value))) {
        refuse("'" + text + "' is not a whole number of " + std::to_string(least) + " or more.");
    }
    return static_cast<int>(value);
}

/// "LO,HI" with LO below HI.
std::pair<double, double> toRange(const std::string& text)
{
    const std::size_t comma = text.find(',');
    if (comma == std::string::npos) {
        refuse("'" + text + "' is not a range such as 0,1.");
    }
    const std::pair<double, double> range(toFinite(text.substr(0, comma)), toFinite(text.substr(comma + 1)));
    if (!(range.first < range.second)) {
        refuse("The range '" + text + "' does not rise.");
    }
    return range;
}

std::pair<double, double> toPercentiles(const std::string& text)
{
    const std::pair<double, double> range = toRange(text);
    if (range.first < 0 || range.second > 100) {
        refuse("The percentiles '" + text + "' are not between 0 and 100.");
    }
    return range;
}

Colour toColour(const std::string& text)
{
    if (text.size() != 6 || text.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos) {
        refuse("'" + text + "' is not a colour of six hexadecimal digits.");
    }
    return colourOf(static_cast<unsigned>(std::stoul(text, nullptr, 16)));
}

bool isIdentifier(const std::string& text)
{
    constexpr const char* kLetters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_";
    constexpr const char* kDigits = "0123456789";
    return !text.empty() && std::string(kDigits).find(text[0]) == std::string::npos &&
           text.find_first_not_of(std::string(kLetters) + kDigits) == std::string::npos;
}

/// "NAME=FILE:BAND". File names may hold colons themselves: only digits behind the last one count.
BandChoice toBand(const std::string& text)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals + 1 == text.size()) {
        refuse("'" + text + "' is not a band such as red=image.tif:1.");
    }
    BandChoice choice{text.substr(0, equals), text.substr(equals + 1), 1};
    if (!isIdentifier(choice.name)) {
        refuse("'" + choice.name + "' cannot be the name of a variable.");
    }
    const std::size_t colon = choice.file.rfind(':');
    if (colon != std::string::npos && colon + 1 < choice.file.size() &&
        choice.file.find_first_not_of("0123456789", colon + 1) == std::string::npos) {
        choice.band = toCount(choice.file.substr(colon + 1), 1);
        choice.file.resize(colon);
    }
    return choice;
}

void addBand(Options& options, const std::string& text)
{
    const BandChoice choice = toBand(text);
    for (const BandChoice& other : options.bands) {
        if (other.name == choice.name) {
            refuse("The variable '" + choice.name + "' has two bands.");
        }
    }
    options.bands.push_back(choice);
}

std::string toRamp(const std::string& text)
{
    if (!ColourRamp::isKnown(text)) {
        refuse("There is no colour ramp '" + text + "'; there are " + ColourRamp::names() + ".");
    }
    return text;
}

struct Row
{
    char letter;           // 0: none
    const char* name;      // behind "--"
    const char* argument;  // null: a switch
    void (*apply)(Options&, const std::string&);
    const char* help;
};

using Text = const std::string&;

const Row kRows[] = {
    {'e', "equation", "TEXT", [](Options& o, Text t) { o.equation = t; },
     "the equation, such as \"(nir-red)/(nir+red)\""},
    {'b', "band", "NAME=FILE:BAND", addBand, "the band that a variable stands for; without :BAND, band 1"},
    {'o', "output", "FILE", [](Options& o, Text t) { o.output = t; }, "the raster to write"},
    {'f', "format", "DRIVER", [](Options& o, Text t) { o.driver = t; },
     "GDAL's driver to write with; default by FILE's extension"},
    {0, "co", "NAME=VALUE", [](Options& o, Text t) { o.creationOptions.push_back(t); },
     "a creation option for the driver"},
    {'t', "type", "TYPE", [](Options& o, Text t) { o.elementType = t; },
     "element type to write: I8 U8 I16 U16 I32 U32 Float Double\nComplexFloat ComplexDouble; default what the equation "
     "gives"},
    {0, "min", "VALUE", [](Options& o, Text t) { o.minimum = toFinite(t); },
     "least value to write; default the type's own limit"},
    {0, "max", "VALUE", [](Options& o, Text t) { o.maximum = toFinite(t); },
     "greatest value to write; default the type's own limit"},
    {'n', "no-data", "VALUE", [](Options& o, Text t) { o.noData = toNumber(t); },
     "value of pixels without data; default, if a band has such\npixels: nan, or the end of an integer type's range"},
    {'p', "picture", "FILE.png", [](Options& o, Text t) { o.picture = t; }, "a PNG to look at"},
    {0, "ramp", "NAME", [](Options& o, Text t) { o.ramp = toRamp(t); },
     "colours of the picture: grey, vegetation or dusk"},
    {0, "stretch", "LO,HI", [](Options& o, Text t) { o.stretch = toRange(t); },
     "the values at the two ends of the colours"},
    {0, "percentiles", "LO,HI", [](Options& o, Text t) { o.percentiles = toPercentiles(t); },
     "the same as percentiles of the picture; default 2,98"},
    {0, "background", "RRGGBB", [](Options& o, Text t) { o.background = toColour(t); },
     "colour of pixels without a value; default transparent"},
    {0, "picture-size", "PIXELS", [](Options& o, Text t) { o.pictureSize = toCount(t, 16); },
     "longer side of the picture at most; default 1024"},
    {0, "legend", nullptr, [](Options& o, Text) { o.legend = true; },
     "put the colours, their values and the equation below it"},
    {0, "window", "PIXELS", [](Options& o, Text t) { o.windowPixels = static_cast<std::size_t>(toCount(t, 1)); },
     "pixels computed at a time; default 65536"},
    {0, "whole", nullptr, [](Options& o, Text) { o.whole = true; },
     "compute the whole image at once, for equations that\nreduce a band to a number, such as a-mean(a)"},
    {'q', "quiet", nullptr, [](Options& o, Text) { o.quiet = true; }, "no progress"},
    {'h', "help", nullptr, [](Options& o, Text) { o.help = true; }, "this text"},
};

const Row& rowOf(const std::string& option)
{
    for (const Row& row : kRows) {
        if (option == std::string("--") + row.name || (row.letter != 0 && option == std::string{'-', row.letter})) {
            return row;
        }
    }
    refuse("There is no option '" + option + "'.");
}

void requireAll(const Options& options)
{
    if (options.equation.empty()) {
        refuse("There is no equation: give -e.");
    }
    if (options.bands.empty()) {
        refuse("There is no band: give -b.");
    }
    if (options.output.empty()) {
        refuse("There is no output: give -o.");
    }
    if (options.picture == options.output) {
        refuse("The picture and the output are one file, '" + options.output + "'.");
    }
    if (options.minimum && options.maximum && !(*options.minimum <= *options.maximum)) {
        refuse("--min is greater than --max.");
    }
}

}  // namespace

Options parseOptions(const std::vector<std::string>& arguments)
{
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string name = arguments[i];
        std::optional<std::string> value;
        const std::size_t equals = name.find('=');
        if (name.rfind("--", 0) == 0 && equals != std::string::npos) {
            value = name.substr(equals + 1);
            name.resize(equals);
        }
        const Row& row = rowOf(name);
        if (row.argument && !value) {
            if (++i == arguments.size()) {
                refuse("The option '" + name + "' needs a value.");
            }
            value = arguments[i];
        } else if (!row.argument && value) {
            refuse("The option '" + name + "' takes no value.");
        }
        row.apply(options, value.value_or(""));
    }
    if (!options.help) {
        requireAll(options);
    }
    return options;
}

std::string helpText()
{
    constexpr std::size_t kColumn = 28;
    std::ostringstream out;
    out << "bandmath: computes an equation over the bands of raster images, pixel by pixel.\n\n"
           "usage: bandmath -e EQUATION -b NAME=FILE:BAND [-b ...] -o FILE [options]\n\n"
           "  bandmath -e \"(2*g-r-b)/(r+g+b)\" -b r=earth.jpg:1 -b g=earth.jpg:2 -b b=earth.jpg:3 -o green.tif\n\n"
           "options:\n";
    for (const Row& row : kRows) {
        std::string left = row.letter ? std::string("  -") + row.letter + ", --" : "      --";
        left += row.name;
        left += row.argument ? std::string(" ") + row.argument : "";
        out << left
            << (left.size() < kColumn ? std::string(kColumn - left.size(), ' ') : "\n" + std::string(kColumn, ' '));
        for (const char* c = row.help; *c; ++c) {
            out << *c << (*c == '\n' ? std::string(kColumn, ' ') : "");
        }
        out << '\n';
    }
    out << "\n"
           "A pixel that is no-data in any band, named in the equation or not, is no-data in the output,\n"
           "and so is one that has no value (NaN). Stored values are taken as they are: scale and offset\n"
           "are not applied, and an alpha band is a band like any other. Complex whole numbers are read\n"
           "as ComplexDouble. The georeference is that of the first band. Line ends in the equation count\n"
           "as blanks. The statistics of a complex result are those of its modulus.\n"
           "Exit code: 0, 1 after a failure, 130 when interrupted; a failure leaves no output behind.\n";
    return out.str();
}

}  // namespace bandmath

#include "Options"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include <zet/ZetDataType>
#include <zet/ZetEnum>
#include <zet/ZetEnumValidator>
#include <zet/ZetMetaObjectImpl>
#include <zet/ZetNumValidator>

#include "raster/Failure"
#include "raster/Staging"
#include "raster/TextFile"
#include "support/CommandLine"
#include "support/TextValidator"

namespace bandmath {

using tools::colourOf;
using tools::Failure;

namespace {

using zet::ZetString;
using zet::ZetValidator;

double toFinite(const std::string& text)
{
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0' || !std::isfinite(value)) {
        throw Failure("'" + text + "' is not a finite number.");
    }
    return value;
}

/// "LO,HI" with LO below HI.
std::pair<double, double> toRange(const std::string& text)
{
    const std::size_t comma = text.find(',');
    if (comma == std::string::npos) {
        throw Failure("'" + text + "' is not a range such as 0,1.");
    }
    const std::pair<double, double> range(toFinite(text.substr(0, comma)), toFinite(text.substr(comma + 1)));
    if (!(range.first < range.second)) {
        throw Failure("The range '" + text + "' does not rise.");
    }
    return range;
}

std::pair<double, double> toPercentiles(const std::string& text)
{
    const std::pair<double, double> range = toRange(text);
    if (range.first < 0 || range.second > 100) {
        throw Failure("The percentiles '" + text + "' are not between 0 and 100.");
    }
    return range;
}

Colour toColour(const std::string& text)
{
    if (text.size() != 6 || text.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos) {
        throw Failure("'" + text + "' is not a colour of six hexadecimal digits.");
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

int toBandNumber(const std::string& digits)
{
    const double number = std::strtod(digits.c_str(), nullptr);
    if (!(number >= 1 && number <= 1e9)) {
        throw Failure("'" + digits + "' is not a whole number of 1 or more.");
    }
    return static_cast<int>(number);
}

/// "NAME=FILE:BAND". File names may hold colons themselves: only digits behind the last one count.
BandChoice toBand(const std::string& text)
{
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos || equals + 1 == text.size()) {
        throw Failure("'" + text + "' is not a band such as red=image.tif:1.");
    }
    BandChoice choice{text.substr(0, equals), text.substr(equals + 1), 1};
    if (!isIdentifier(choice.name)) {
        throw Failure("'" + choice.name + "' cannot be the name of a variable.");
    }
    const std::size_t colon = choice.file.rfind(':');
    if (colon != std::string::npos && colon + 1 < choice.file.size() &&
        choice.file.find_first_not_of("0123456789", colon + 1) == std::string::npos) {
        choice.band = toBandNumber(choice.file.substr(colon + 1));
        choice.file.resize(colon);
    }
    return choice;
}

void checkRamp(const std::string& name)
{
    if (!ColourRamp::isKnown(name)) {
        throw Failure("There is no colour ramp '" + name + "'; there are " + ColourRamp::names() + ".");
    }
}

/// Accepts the texts that \p read, of narrow text, takes.
template <auto read>
ZetValidator* readBy()
{
    return new tools::TextValidator([](const ZetString& text) { read(zet::toMultibyte(text)); });
}

ZetValidator* finite()
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    return new zet::ZetNumValidator<double>(10, -infinity, infinity);
}

ZetValidator* countFrom(int least)
{
    return new zet::ZetNumValidator<int>(5, least, 1000000000);
}

const wchar_t* const kDescription =
    L"Computes an equation over the pixels of raster images.\n"
    L"bandmath -e \"nir-red\" -b nir=a.tif:4 -b red=a.tif:3 -o out.tif\n"
    L"A pixel that is no-data in any band, named in the equation or not, is no-data in the output, and so is one that "
    L"has no value (NaN). Stored values are taken as they are: scale and offset are not applied, and an alpha band is "
    L"a band like any other. Complex whole numbers are read as ComplexDouble. The georeference is that of the first "
    L"band. Line ends in the equation count as blanks. The statistics of a complex result are those of its modulus.\n"
    L"The exit code is 0, 1 after a failure and 130 when interrupted; a failure leaves no output behind.";

const tools::Layout kLayout = {{}, {{L"equation", L"equation_file"}}};

/// What is wrong with options that are right one by one; empty for nothing.
std::string contradiction(const Options& options)
{
    const std::vector<BandChoice> bands = options.bands();
    for (auto band = bands.begin(); band != bands.end(); ++band) {
        if (std::any_of(bands.begin(), band, [&](const BandChoice& other) { return other.name == band->name; })) {
            return "The variable '" + band->name + "' has two bands.";
        }
    }
    if (options.output().empty()) {
        return "The output has no name.";
    }
    if (!options.picture().empty() && tools::placeOf(options.picture()) == tools::placeOf(options.output())) {
        return "The picture and the output are one file, '" + options.output() + "'.";
    }
    if (options.minimum() && options.maximum() && *options.minimum() > *options.maximum()) {
        return "--min is greater than --max.";
    }
    return std::string();
}

}  // namespace

class OptionsMetaObj : public zet::ZetMetaObjectImpl<OptionsMetaObj, Options>
{
public:
    using ZetMetaObjectImpl::ZetMetaObjectImpl;
    ZET_PROPERTY(ZetString, equation)
    ZET_PROPERTY(ZetString, equation_file)
    ZET_PROPERTY(zet::ZetStrList, band)
    ZET_PROPERTY(ZetString, output)
    ZET_PROPERTY(ZetString, format)
    ZET_PROPERTY(zet::ZetStrList, co)
    ZET_PROPERTY(ZetString, type)
    TOOLS_OPTIONAL_PROPERTY(double, min)
    TOOLS_OPTIONAL_PROPERTY(double, max)
    TOOLS_OPTIONAL_PROPERTY(double, no_data)
    ZET_PROPERTY(ZetString, picture)
    ZET_PROPERTY(ZetString, ramp)
    ZET_PROPERTY(ZetString, stretch)
    ZET_PROPERTY(ZetString, percentiles)
    ZET_PROPERTY(ZetString, background)
    ZET_PROPERTY(int, picture_size)
    ZET_PROPERTY(bool, legend)
    ZET_PROPERTY(int, window)
    ZET_PROPERTY(bool, whole)
    ZET_PROPERTY(bool, quiet)

    static zet::ZetMetaPropertiesPtr staticProperties();
};

zet::ZetMetaPropertiesPtr OptionsMetaObj::staticProperties()
{
    using zet::ZetMetaFlag;
    static constexpr Row rows[] = {
        ZET_OPTION(equation, L'e', 0, L"the equation, such as \"(nir-red)/(nir+red)\""),
        ZET_OPTION(equation_file, L'E', ZetMetaFlag::InFileName, L"a file that holds the equation"),
        ZET_OPTION(band, L'b', ZetMetaFlag::Required,
                   L"NAME=FILE:BAND, the band that a variable stands for; without :BAND, band 1"),
        ZET_OPTION(output, L'o', ZetMetaFlag::Required | ZetMetaFlag::OutFileName, L"the raster to write"),
        ZET_OPTION(format, L'f', 0, L"GDAL's driver to write with; default by the output's extension"),
        ZET_OPTION(co, 0, 0, L"NAME=VALUE, a creation option for the driver"),
        ZET_OPTION(
            type, L't', 0,
            L"element type to write: I8 U8 I16 U16 I32 U32 Float Double ComplexFloat ComplexDouble; default what "
            L"the equation gives"),
        ZET_OPTION(min, 0, 0, L"least value to write; default the type's own limit"),
        ZET_OPTION(max, 0, 0, L"greatest value to write; default the type's own limit"),
        ZET_OPTION(no_data, L'n', 0,
                   L"value of pixels without data; default, if a band has such pixels: nan, or the end of an integer "
                   L"type's range"),
        ZET_OPTION(picture, L'p', ZetMetaFlag::OutFileName, L"a PNG to look at"),
        ZET_OPTION(ramp, 0, 0, L"colours of the picture: grey, vegetation or dusk"),
        ZET_OPTION(stretch, 0, 0, L"LO,HI, the values at the two ends of the colours"),
        ZET_OPTION(percentiles, 0, 0, L"LO,HI, the same as percentiles of the picture; default 2,98"),
        ZET_OPTION(background, 0, 0, L"RRGGBB, the colour of pixels without a value; default transparent"),
        ZET_OPTION(picture_size, 0, 0, L"longer side of the picture at most, in pixels; default 1024"),
        ZET_OPTION(legend, 0, 0, L"put the colours, their values and the equation below the picture"),
        ZET_OPTION(window, 0, 0, L"pixels computed at a time; default 65536"),
        ZET_OPTION(whole, 0, 0,
                   L"compute the whole image at once, for equations that reduce a band to a number, such as a-mean(a)"),
        ZET_OPTION(quiet, L'q', 0, L"no progress"),
    };
    zet::ZetMetaPropertiesPtr properties = fill(L"Options", rows);
    const auto judge = [&](const wchar_t* name, ZetValidator* validator) {
        properties->property(name, false)->setValidator(validator);
    };
    judge(L"band", readBy<toBand>());
    judge(L"type", new zet::ZetEnumValidator(zet::ZetDataType::enumerator()));
    judge(L"min", finite());
    judge(L"max", finite());
    judge(L"ramp", readBy<checkRamp>());
    judge(L"stretch", readBy<toRange>());
    judge(L"percentiles", readBy<toPercentiles>());
    judge(L"background", readBy<toColour>());
    judge(L"picture_size", countFrom(16));
    judge(L"window", countFrom(1));
    return properties;
}

zet::ZetMetaObjectConstPtr Options::metaObject() const
{
    return new OptionsMetaObj(this);
}

std::vector<BandChoice> Options::bands() const
{
    std::vector<BandChoice> bands;
    for (const ZetString& text : m_band) {
        bands.push_back(toBand(zet::toMultibyte(text)));
    }
    return bands;
}

std::vector<std::string> Options::creationOptions() const
{
    std::vector<std::string> options;
    for (const ZetString& text : m_co) {
        options.push_back(zet::toMultibyte(text));
    }
    return options;
}

std::optional<std::pair<double, double>> Options::stretch() const
{
    return m_stretch.empty() ? std::nullopt : std::optional(toRange(zet::toMultibyte(m_stretch)));
}

std::pair<double, double> Options::percentiles() const
{
    return toPercentiles(zet::toMultibyte(m_percentiles));
}

std::optional<Colour> Options::background() const
{
    return m_background.empty() ? std::nullopt : std::optional(toColour(zet::toMultibyte(m_background)));
}

Options parseOptions(const std::vector<std::string>& words)
{
    Options options;
    tools::CommandLine commandLine(options, kDescription, kLayout);
    commandLine.parse(words);
    try {
        if (!options.m_equation_file.empty()) {
            options.m_equation = tools::readText(zet::toMultibyte(options.m_equation_file));
        }
    } catch (const Failure& failure) {
        commandLine.fail(zet::toWide(failure.what()), __LINE__);
    }
    const std::string text = contradiction(options);
    if (!text.empty()) {
        commandLine.fail(zet::toWide(text), __LINE__);
    }
    return options;
}

}  // namespace bandmath

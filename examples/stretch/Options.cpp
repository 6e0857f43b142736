#include "Options"

#include <cmath>
#include <filesystem>
#include <set>

#include <zet/ZetEnum>
#include <zet/ZetEnumValidator>
#include <zet/ZetMetaObjectImpl>

#include "raster/Failure"
#include "raster/Staging"
#include "support/CommandLine"
#include "support/TextValidator"

namespace stretch {

namespace {

using tools::Failure;
using zet::ZetDataType;
using zet::ZetString;

const wchar_t* const kDescription =
    L"Spreads the values of each band of a raster image over the whole range of the output: the lower percentile "
    L"becomes its lowest value and the upper one its highest, with a straight line between them. Prints what the bands "
    L"hold: count, range, mean, variance, median, most frequent value and entropy in bits.\n"
    L"stretch scene.tif out.tif --plot scene.png\n"
    L"Pixels without data, and values that are no number, do not count; they become 0, which is kept free for them. "
    L"Bands of more than 16 bits are taken in 65536 steps between their lowest and highest value. A band of opacity "
    L"keeps its range.\n"
    L"A file of lookup tables lists values or break points, one table for all bands or one for each. Values outside of "
    L"a table become what its end does.\n"
    L"The exit code is 0, 1 after a failure and 130 when interrupted; a failure leaves no output behind.";

/// The two numbers of "LO,HI", rising between 0 and 100.
std::pair<double, double> toPercentiles(const ZetString& text)
{
    const zet::ZetStrList parts(text, L",");
    double low = 0;
    double high = 0;
    const bool areNumbers =
        parts.size() == 2 && zet::ZetVariant(parts[0]).convertTo(&low) && zet::ZetVariant(parts[1]).convertTo(&high);
    if (!areNumbers || !(0 <= low && low < high && high <= 100)) {
        throw Failure("'" + zet::toMultibyte(text) + "' are no percentiles such as 2,98.");
    }
    return {low, high};
}

zet::ZetEnum outputTypes()
{
    zet::ZetEnum names;
    for (const ZetDataType::Type type : {ZetDataType::U8, ZetDataType::U16}) {
        names.insert(zet::ZetEnum::Item({type, ZetDataType(type).toString()}));
    }
    return names;
}

/// What is wrong with options that are right one by one; empty for nothing.
std::string contradiction(const Options& options)
{
    if (options.output().file.empty()) {
        return "The output has no name.";
    }
    std::set<std::filesystem::path> places = {tools::placeOf(options.output().file)};
    for (const std::string& file : {options.lut(), options.plot()}) {
        if (!file.empty() && !places.insert(tools::placeOf(file)).second) {
            return "Two outputs are one file, '" + file + "'.";
        }
    }
    return std::string();
}

}  // namespace

class OptionsMetaObj : public zet::ZetMetaObjectImpl<OptionsMetaObj, Options>
{
public:
    using ZetMetaObjectImpl::ZetMetaObjectImpl;
    ZET_PROPERTY(ZetString, input)
    ZET_PROPERTY(ZetString, output)
    ZET_PROPERTY(ZetString, format)
    ZET_PROPERTY(zet::ZetStrList, co)
    ZET_PROPERTY(ZetString, percentiles)
    ZET_PROPERTY(ZetString, type)
    ZET_PROPERTY(ZetString, lut)
    ZET_PROPERTY(ZetString, plot)

    static zet::ZetMetaPropertiesPtr staticProperties()
    {
        using zet::ZetMetaFlag;
        static constexpr Row rows[] = {
            ZET_OPTION(input, 0, ZetMetaFlag::Required | ZetMetaFlag::InFileName, L"the raster to read"),
            ZET_OPTION(output, 0, ZetMetaFlag::Required | ZetMetaFlag::OutFileName, L"the raster to write"),
            ZET_OPTION(format, L'f', 0, L"GDAL's driver to write with; default by the output's extension"),
            ZET_OPTION(co, 0, 0, L"NAME=VALUE, a creation option for the driver"),
            ZET_OPTION(percentiles, L'p', 0, L"LO,HI, the percentiles that become the two ends; default 2,98"),
            ZET_OPTION(type, L't', 0, L"element type to write: U8 or U16; default U8"),
            ZET_OPTION(lut, L'l', 0,
                       L"a file of lookup tables: one that exists is applied, and gives the element type; else the "
                       L"tables that are made are written to it"),
            ZET_OPTION(plot, 0, ZetMetaFlag::OutFileName,
                       L"a PNG of each band's histogram before and after, with the curve between them"),
        };
        const zet::ZetMetaPropertiesPtr properties = fill(L"Options", rows);
        properties->property(L"percentiles", false)->setValidator(new tools::TextValidator([](const ZetString& text) {
            toPercentiles(text);
        }));
        properties->property(L"type", false)->setValidator(new zet::ZetEnumValidator(outputTypes()));
        return properties;
    }
};

zet::ZetMetaObjectConstPtr Options::metaObject() const
{
    return new OptionsMetaObj(this);
}

tools::OutputPlace Options::output() const
{
    tools::OutputPlace place{zet::toMultibyte(m_output), zet::toMultibyte(m_format), {}};
    for (const ZetString& option : m_co) {
        place.creationOptions.push_back(zet::toMultibyte(option));
    }
    return place;
}

std::optional<std::pair<double, double>> Options::percentiles() const
{
    return m_percentiles.empty() ? std::nullopt : std::optional(toPercentiles(m_percentiles));
}

Options parseOptions(const std::vector<std::string>& words)
{
    Options options;
    tools::CommandLine commandLine(options, kDescription, {{L"input", L"output"}, {}});
    commandLine.parse(words);
    const std::string text = contradiction(options);
    if (!text.empty()) {
        commandLine.fail(zet::toWide(text), __LINE__);
    }
    return options;
}

}  // namespace stretch

#include "Request"

#include <limits>
#include <vector>

#include <zet/ZetClParser>
#include <zet/ZetClSwitchArg>
#include <zet/ZetClUnlabeledArg>
#include <zet/ZetClValueArg>
#include <zet/ZetStrList>

#include "Failure"

namespace describe {

namespace {

using bandmath::Failure;

constexpr long kLeast = std::numeric_limits<int>::min();
constexpr long kGreatest = std::numeric_limits<int>::max();
constexpr long kGreatestUnsigned = std::numeric_limits<unsigned int>::max();

struct OptionRow
{
    const wchar_t* name;
    wchar_t flag;
    const wchar_t* help;
};

constexpr OptionRow optionRows[] = {
    {L"file", 0, L"the raster to describe: any file that GDAL opens"},
    {L"get", L'g', L"print one value, or one part, instead of all, such as georeference.corners.upper_left"},
    {L"cell", L'c', L"print the region of the storage block of that number, counted from 0 row by row"},
    {L"region", L'r', L"x,y,width,height of a region: print the numbers of the storage blocks that it touches"},
    {L"trace", L't', L"tell on the error stream what GDAL was asked for"},
};

constexpr const wchar_t* kDescription =
    L"Describes a raster image: its size, element type, colour model and layout, its bands, what is stored "
    L"with it, where on the ground it lies, and the blocks that it is stored in. GDAL is asked for a part when "
    L"that is first needed.";

std::string narrow(const zet::ZetString& text)
{
    return zet::toMultibyte(text);
}

/// The argument of a property: a required one is the word without an option.
zet::ZetClArgPtr argumentOf(const zet::ZetMetaProperty& property)
{
    if (property.flags().isSet(zet::ZetMetaFlag::Required)) {
        return new zet::ZetClUnlabeledArg(property, zet::ZetString());
    }
    if (property.type() == zet::ZetMetaType::Bool) {
        return new zet::ZetClSwitchArg(property, false);
    }
    return new zet::ZetClValueArg(property, zet::ZetString());
}

/// Sets the properties of \p target from the command line.
void parseInto(zet::ZetObject& target, zet::ZetClParser& parser, int argc, const char* const* argv)
{
    const zet::ZetMetaObjectPtr meta = target.metaObject();
    const zet::ZetMetaPropertiesConstPtr properties = meta->properties();
    std::vector<zet::ZetClArgPtr> arguments;
    for (const zet::ZetMetaPropertyConstPtr& property : *properties) {
        arguments.push_back(argumentOf(*property));
        parser.add(arguments.back());
    }
    parser.parse(argc, argv);
    for (const zet::ZetClArgPtr& argument : arguments) {
        if (argument->alreadySet() && meta->setPropertyValue(argument->property().name(), argument->value()) != 0) {
            throw Failure("'" + narrow(argument->value().value<zet::ZetString>()) + "' does not suit --" +
                          narrow(argument->property().name()) + ": " + narrow(argument->property().description()) +
                          ".");
        }
    }
}

/// The whole number from \p least to \p greatest that the text is, and nothing else.
std::optional<long> wholeIn(const zet::ZetString& text, long least, long greatest)
{
    const zet::ZetString word = zet::trim(text);
    long number = 0;
    const bool whole = zet::ZetVariant(word).convertTo(&number) && std::to_wstring(number) == word;
    return whole && number >= least && number <= greatest ? std::optional<long>(number) : std::nullopt;
}

}  // namespace

zet::ZetMetaObjectConstPtr Request::metaObject() const
{
    return new RequestMetaObj(this);
}

int RequestMetaObj::set_cell(const zet::ZetVariant& value)
{
    const std::optional<long> number = wholeIn(value.value<zet::ZetString>(), 0, kGreatestUnsigned);
    if (!number) {
        return 1;
    }
    m_object->m_cell = static_cast<unsigned int>(*number);
    return 0;
}

int RequestMetaObj::set_region(const zet::ZetVariant& value)
{
    const zet::ZetStrList parts(value.value<zet::ZetString>(), L",");
    if (parts.size() != 4) {
        return 1;
    }
    const std::optional<long> x = wholeIn(parts[0], kLeast, kGreatest);
    const std::optional<long> y = wholeIn(parts[1], kLeast, kGreatest);
    const std::optional<long> width = wholeIn(parts[2], 0, kGreatestUnsigned);
    const std::optional<long> height = wholeIn(parts[3], 0, kGreatestUnsigned);
    if (!x || !y || !width || !height) {
        return 1;
    }
    const zet::ZetImageSize size(static_cast<unsigned int>(*width), static_cast<unsigned int>(*height), 1);
    m_object->m_region = zet::ZetROI(zet::ZetCoord3D<int>(static_cast<int>(*x), static_cast<int>(*y), 0), size);
    return 0;
}

int RequestMetaObj::get_region(zet::ZetVariant& value) const
{
    const zet::ZetROI region = m_object->m_region.value_or(zet::ZetROI());
    const auto text = [](auto number) { return zet::ZetString(std::to_wstring(number)); };
    value = zet::ZetStrList{text(region.origin().x()), text(region.origin().y()), text(region.size().width()),
                            text(region.size().height())};
    return 0;
}

zet::ZetMetaPropertiesPtr RequestMetaObj::staticProperties()
{
    static constexpr Row rows[] = {
        ZET_ROW(file, L"File", zet::ZetMetaFlag::Required),
        ZET_ROW(get, L"Get", 0),
        ZET_ROW(cell, L"Cell", 0),
        ZET_ROW(region, L"Region", 0),
        ZET_ROW(trace, L"Trace", 0),
    };
    const zet::ZetMetaPropertiesPtr properties = fill(L"Request", rows);
    for (const OptionRow& row : optionRows) {
        const zet::ZetMetaPropertyPtr property = properties->property(row.name, false);
        property->setCommandFlag(row.flag);
        property->setDescription(row.help);
    }
    return properties;
}

Request parseRequest(int argc, const char* const* argv)
{
    Request request;
    zet::ZetClParser parser(kDescription, L"1.0", L' ', true);
    parseInto(request, parser, argc, argv);
    const int questions = !request.get().empty() + request.cell().has_value() + request.region().has_value();
    if (questions > 1) {
        throw Failure("One question at a time: give one of --get, --cell and --region.");
    }
    return request;
}

}  // namespace describe

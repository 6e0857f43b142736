#include "Request"

#include <limits>

#include <zet/ZetMetaObjectImpl>

#include "raster/Failure"
#include "support/CommandLine"
#include "support/TextValidator"

namespace describe {

namespace {

using zet::ZetString;

constexpr long kLeast = std::numeric_limits<int>::min();
constexpr long kGreatest = std::numeric_limits<int>::max();
constexpr long kGreatestUnsigned = std::numeric_limits<unsigned int>::max();

const wchar_t* const kDescription =
    L"Describes a raster image: its size, element type, colour model and layout, its bands, what is stored with it, "
    L"where on the ground it lies, and the blocks that it is stored in. GDAL is asked for a part when that is first "
    L"needed.\n"
    L"The exit code is 0, and 1 after a failure.";

/// The whole number from \p least to \p greatest that the text is, and nothing else.
std::optional<long> wholeIn(const ZetString& text, long least, long greatest)
{
    const ZetString word = zet::trim(text);
    long number = 0;
    const bool whole = zet::ZetVariant(word).convertTo(&number) && std::to_wstring(number) == word;
    return whole && number >= least && number <= greatest ? std::optional<long>(number) : std::nullopt;
}

/// The region of "x,y,width,height".
zet::ZetROI toRegion(const ZetString& text)
{
    const zet::ZetStrList parts(text, L",");
    if (parts.size() == 4) {
        const std::optional<long> x = wholeIn(parts[0], kLeast, kGreatest);
        const std::optional<long> y = wholeIn(parts[1], kLeast, kGreatest);
        const std::optional<long> width = wholeIn(parts[2], 0, kGreatestUnsigned);
        const std::optional<long> height = wholeIn(parts[3], 0, kGreatestUnsigned);
        if (x && y && width && height) {
            return zet::ZetROI(
                zet::ZetCoord3D<int>(static_cast<int>(*x), static_cast<int>(*y), 0),
                zet::ZetImageSize(static_cast<unsigned int>(*width), static_cast<unsigned int>(*height), 1));
        }
    }
    throw tools::Failure("'" + zet::toMultibyte(text) + "' is not a region such as 0,0,640,480.");
}

}  // namespace

class RequestMetaObj : public zet::ZetMetaObjectImpl<RequestMetaObj, Request>
{
public:
    using ZetMetaObjectImpl::ZetMetaObjectImpl;
    ZET_PROPERTY(ZetString, file)
    ZET_PROPERTY(ZetString, get)
    TOOLS_OPTIONAL_PROPERTY(unsigned int, cell)
    ZET_PROPERTY(ZetString, region)
    ZET_PROPERTY(bool, trace)

    static zet::ZetMetaPropertiesPtr staticProperties();
};

zet::ZetMetaPropertiesPtr RequestMetaObj::staticProperties()
{
    using zet::ZetMetaFlag;
    static constexpr Row rows[] = {
        ZET_OPTION(file, 0, ZetMetaFlag::Required | ZetMetaFlag::InFileName, L"the raster, any that GDAL opens"),
        ZET_OPTION(get, L'g', 0,
                   L"print one value, or one part, instead of all, such as georeference.corners.upper_left"),
        ZET_OPTION(cell, L'c', 0, L"print the region of the storage block of that number, counted from 0 row by row"),
        ZET_OPTION(region, L'r', 0,
                   L"x,y,width,height of a region: print the numbers of the storage blocks that it touches"),
        ZET_OPTION(trace, L't', 0, L"tell on the error stream what GDAL was asked for"),
    };
    const zet::ZetMetaPropertiesPtr properties = fill(L"Request", rows);
    properties->property(L"region", false)->setValidator(new tools::TextValidator([](const ZetString& text) {
        toRegion(text);
    }));
    return properties;
}

zet::ZetMetaObjectConstPtr Request::metaObject() const
{
    return new RequestMetaObj(this);
}

std::optional<zet::ZetROI> Request::region() const
{
    return m_region.empty() ? std::nullopt : std::optional(toRegion(m_region));
}

Request parseRequest(const std::vector<std::string>& words)
{
    Request request;
    tools::CommandLine commandLine(request, kDescription, {{L"file"}, {}});
    commandLine.parse(words);
    const int questions = !request.get().empty() + request.cell().has_value() + request.region().has_value();
    if (questions > 1) {
        commandLine.fail(L"One question at a time: give one of --get, --cell and --region.", __LINE__);
    }
    return request;
}

}  // namespace describe

#include <zet/ZetColorModel>

#include <zet/ZetEnum>
#include <zet/ZetStrList>
#include <zet/ZetVariant>

#include "core/ZetUnitInit"
#include "reflect/ZetEnumTable"

namespace zet {

namespace {

/// A model's name and the bands that it implies, 0 where their number is free.
struct Model
{
    const wchar_t* key;
    unsigned int bands;
};

// clang-format off
constexpr Model kModels[] = {
    {L"GrayScale",            1},  // 0
    {L"MultiSpectral",        0},  // 1
    {L"RGB",                  3},  // 2
    {L"sRGB",                 3},  // 3
    {L"RIMM_RGB",             3},  // 4
    {L"ROMM_RGB",             3},  // 5
    {L"ERIMM_RGB",            3},  // 6
    {L"HSI",                  3},  // 7
    {L"HSV",                  3},  // 8
    {L"YCbCr",                3},  // 9
    {L"CMYK",                 4},  // 10
    {L"YIQ",                  3},  // 11
    {L"YUV",                  3},  // 12
    {L"CIELAB",               3},  // 13
    {L"CIELUV",               3},  // 14
    {L"CIEXYZ",               3},  // 15
    {L"Alpha",                1},  // 16
    {L"PremultipliedAlpha",   1},  // 17
    {L"Other",                0},  // 18
};
// clang-format on
static_assert(std::size(kModels) == ZetColorModel::Invalid, "one row per model");
static_assert(kModels[ZetColorModel::MultiSpectral].bands == 0 && kModels[ZetColorModel::Other].bands == 0,
              "the free models imply no bands");

ZetVariant bandsOf(const Model& model)
{
    return model.bands > 0 ? ZetVariant(model.bands) : ZetVariant();
}

bool isModel(ZetColorModel::Type type)
{
    return internal::enumInRange(type, ZetColorModel::Invalid) != ZetColorModel::Invalid;
}

bool isFree(ZetColorModel::Type type)
{
    return type == ZetColorModel::MultiSpectral || type == ZetColorModel::Other;
}

ZetString noModelText(ZetColorModel::Type type)
{
    return L"Passed invalid color model type [" + std::to_wstring(static_cast<int>(type)) + L"]. ";
}

ZetTextMsg success()
{
    return ZetTextMsg(ZetString(), ZetTextMsg::Error);
}

}  // namespace

ZetColorModel::ZetColorModel(Type type) : m_type(type), m_numBands(0)
{
    setType(type);
}

ZetColorModel::ZetColorModel(const ZetString& name) : ZetColorModel(fromString(name)) {}

ZetString ZetColorModel::className() const
{
    return L"ZetColorModel";
}

ZetString ZetColorModel::name() const
{
    return toString();
}

ZetTextMsg ZetColorModel::setType(Type type)
{
    if (!isModel(type)) {
        return fail(noModelText(type), __LINE__);
    }
    if (isFree(type)) {
        return fail(
            L"Passed invalid color model type MultiSpectral or Other. "
            L"Please use the alternate setType method.",
            __LINE__);
    }
    if (enumerator().toString(type).empty()) {
        return fail(L"Passed an invalid (out-of-range) enumeration type.", __LINE__);
    }
    const ZetVariant bands = enumerator().data(type);
    m_type = type;
    m_numBands = bands.isValid() ? bands.value<unsigned int>() : 0;
    return success();
}

ZetTextMsg ZetColorModel::setType(Type type, unsigned int bands)
{
    if (isFree(type)) {
        if (bands == 0) {
            return fail(L"Passed invalid number of image bands (less than 1).", __LINE__);
        }
        m_type = type;
        m_numBands = bands;
        return success();
    }
    const unsigned int before = m_numBands;
    const ZetTextMsg message = setType(type);
    if (!message.text().empty() || m_numBands == bands) {
        return message;
    }
    m_numBands = before;
    return fail(L"Passed type (" + name() + L") but with an invalid number of bands (" + std::to_wstring(bands) + L").",
                __LINE__);
}

const ZetString& ZetColorModel::toString() const
{
    return enumerator().toString(m_type);
}

ZetColorModel::Type ZetColorModel::fromString(const ZetString& name)
{
    return static_cast<Type>(internal::enumFromString(enumerator(), name, Invalid));
}

bool ZetColorModel::isValid(const ZetString& name)
{
    return fromString(name) != Invalid;
}

const ZetStrList& ZetColorModel::allKeys()
{
    return enumerator().allKeys();
}

const ZetEnum& ZetColorModel::enumerator()
{
    static const ZetEnum table = internal::makeEnum(kModels, bandsOf);
    return table;
}

/// Makes the model invalid, its bands left as they are, and gives the message of it.
ZetTextMsg ZetColorModel::fail(const ZetString& text, int line)
{
    m_type = Invalid;
    return ZetTextMsg(text, L"ZetColorModel", line, ZetTextMsg::Error);
}

std::wostream& operator<<(std::wostream& out, const ZetColorModel& model)
{
    out << L"(" << model.name() << L"," << model.numBands() << L"," << model.bands().size();
    const wchar_t* separator = L":";
    for (const unsigned int band : model.bands()) {
        out << separator << band;
        separator = L",";
    }
    return out << L")";
}

std::wistream& operator>>(std::wistream& in, ZetColorModel& model)
{
    ZetColorModel read(ZetColorModel::Invalid);
    ZetString name;
    unsigned int count = 0;
    wchar_t mark = 0;
    in >> mark;
    getline(in, name, L',');
    in >> read.m_numBands >> mark >> count >> mark;
    read.m_type = ZetColorModel::fromString(name);
    for (unsigned int band = 0; count > 0 && in >> band >> mark; --count) {
        read.m_bands.push_back(band);
    }
    if (!read.m_bands.empty()) {
        in >> mark;
    }
    model = read;
    return in;
}

}  // namespace zet

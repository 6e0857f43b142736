#include <zet/ZetColorModel>

#include <limits>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include <zet/ZetEnum>
#include <zet/ZetStrList>
#include <zet/ZetVariant>

#include "support/ZetScopedLocale"

namespace zet {
namespace {

struct ModelRow
{
    int number;
    const wchar_t* name;
    unsigned int bands;  // 0: any
};

// clang-format off
const ModelRow kModels[] = {
    { 0, L"GrayScale",            1},
    { 1, L"MultiSpectral",        0},
    { 2, L"RGB",                  3},
    { 3, L"sRGB",                 3},
    { 4, L"RIMM_RGB",             3},
    { 5, L"ROMM_RGB",             3},
    { 6, L"ERIMM_RGB",            3},
    { 7, L"HSI",                  3},
    { 8, L"HSV",                  3},
    { 9, L"YCbCr",                3},
    {10, L"CMYK",                 4},
    {11, L"YIQ",                  3},
    {12, L"YUV",                  3},
    {13, L"CIELAB",               3},
    {14, L"CIELUV",               3},
    {15, L"CIEXYZ",               3},
    {16, L"Alpha",                1},
    {17, L"PremultipliedAlpha",   1},
    {18, L"Other",                0},
};
// clang-format on

ZetColorModel::Type typeOf(int number)
{
    return static_cast<ZetColorModel::Type>(number);
}

TEST(ZetColorModel, table)
{
    std::size_t i = 0;
    ASSERT_EQ(ZetColorModel::allKeys().size(), std::size(kModels));
    ASSERT_EQ(ZetColorModel::enumerator().items().size(), std::size(kModels));
    for (const ModelRow& row : kModels) {
        EXPECT_EQ(ZetColorModel::allKeys()[i++], row.name);
        EXPECT_EQ(ZetColorModel::fromString(row.name), row.number);
        EXPECT_TRUE(ZetColorModel::isValid(row.name));
        EXPECT_EQ(ZetColorModel::enumerator().toString(row.number), row.name);
        const ZetVariant data = ZetColorModel::enumerator().data(row.number);
        EXPECT_EQ(data.isValid(), row.bands > 0) << row.number;
        if (data.isValid()) {
            EXPECT_EQ(data.typeName(), L"UInt");
            EXPECT_EQ(data.value<unsigned int>(), row.bands);
        }
    }
    for (const wchar_t* unknown : {L"", L"rgb", L"RGB ", L"Invalid"}) {
        EXPECT_EQ(ZetColorModel::fromString(unknown), ZetColorModel::Invalid);
        EXPECT_FALSE(ZetColorModel::isValid(unknown));
    }
}

TEST(ZetColorModel, construction)
{
    for (const ModelRow& row : kModels) {
        const ZetColorModel byNumber(typeOf(row.number));
        const ZetColorModel byName{ZetString(row.name)};
        EXPECT_EQ(byNumber, byName);
        EXPECT_EQ(byNumber.type(), row.bands > 0 ? row.number : 19) << row.number;
        EXPECT_EQ(byNumber.name(), row.bands > 0 ? row.name : L"");
        EXPECT_EQ(byNumber.toString(), byNumber.name());
        EXPECT_EQ(byNumber.numBands(), row.bands);
        EXPECT_TRUE(byNumber.bands().empty());
    }
    for (const int number : {19, 20, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        const ZetColorModel model(typeOf(number));
        EXPECT_EQ(model.type(), ZetColorModel::Invalid);
        EXPECT_EQ(model.name(), L"");
        EXPECT_EQ(model.numBands(), 0u);
    }
    EXPECT_EQ(ZetColorModel(L"no model"), ZetColorModel(ZetColorModel::Invalid));
    EXPECT_EQ(ZetColorModel(), ZetColorModel(ZetColorModel::GrayScale));
    EXPECT_EQ(ZetColorModel().className(), L"ZetColorModel");
    EXPECT_FALSE(ZetColorModel().isMetaObject());
}

struct SetRow
{
    int number;
    const wchar_t* text;  // empty: success
};

const wchar_t* const kFree =
    L"Passed invalid color model type MultiSpectral or Other. Please use the alternate setType method.";

const SetRow kSet[] = {
    {0, L""},
    {10, L""},
    {17, L""},
    {1, kFree},
    {18, kFree},
    {19, L"Passed invalid color model type [19]. "},
    {2000, L"Passed invalid color model type [2000]. "},
    {-1, L"Passed invalid color model type [-1]. "},
};

void expectMessage(const ZetTextMsg& message, const ZetString& text)
{
    EXPECT_EQ(message.text(), text);
    EXPECT_EQ(message.file(), text.empty() ? ZetTextMsg::unknown() : ZetString(L"ZetColorModel"));
    EXPECT_EQ(message.kind(), ZetTextMsg::Error);
}

TEST(ZetColorModel, setType)
{
    for (const SetRow& row : kSet) {
        SCOPED_TRACE(row.number);
        ZetColorModel model;
        model.setType(ZetColorModel::MultiSpectral, 7);
        expectMessage(model.setType(typeOf(row.number)), row.text);
        if (*row.text) {
            // the bands stay as they were
            EXPECT_EQ(model.type(), ZetColorModel::Invalid);
            EXPECT_EQ(model.numBands(), 7u);
        } else {
            EXPECT_EQ(model, ZetColorModel(typeOf(row.number)));
        }
    }
}

struct SetBandsRow
{
    int number;
    unsigned int bands;
    const wchar_t* text;
};

const wchar_t* const kTooFew = L"Passed invalid number of image bands (less than 1).";

const SetBandsRow kSetBands[] = {
    {10, 4, L""},
    {0, 1, L""},
    {1, 7, L""},
    {18, 1, L""},
    {1, 4294967295u, L""},
    {1, 0, kTooFew},
    {18, 0, kTooFew},
    {10, 3, L"Passed type (CMYK) but with an invalid number of bands (3)."},
    {2, 0, L"Passed type (RGB) but with an invalid number of bands (0)."},
    {16, 4294967295u, L"Passed type (Alpha) but with an invalid number of bands (4294967295)."},
    {19, 3, L"Passed invalid color model type [19]. "},
    {-7, 0, L"Passed invalid color model type [-7]. "},
};

TEST(ZetColorModel, setTypeWithBands)
{
    for (const SetBandsRow& row : kSetBands) {
        SCOPED_TRACE(row.number);
        ZetColorModel model;
        model.setType(ZetColorModel::Other, 9);
        expectMessage(model.setType(typeOf(row.number), row.bands), row.text);
        EXPECT_EQ(model.type(), *row.text ? 19 : row.number);
        EXPECT_EQ(model.numBands(), *row.text ? 9u : row.bands);
    }
}

ZetString textOf(const ZetColorModel& model)
{
    std::wostringstream out;
    out << model;
    return out.str();
}

ZetColorModel modelOf(ZetColorModel::Type type, unsigned int bands)
{
    ZetColorModel model;
    model.setType(type, bands);
    return model;
}

struct TextRow
{
    const wchar_t* text;
    const wchar_t* written;  // what the model read writes
    const wchar_t* rest;     // what stays unread of "text rest"
    bool fails;
};

const TextRow kTexts[] = {
    {L"(RGB,3,0)", L"(RGB,3,0)", L"~rest", false},
    {L"(GrayScale,1,0)", L"(GrayScale,1,0)", L"~rest", false},
    // the free models keep their bands
    {L"(MultiSpectral,7,0)", L"(MultiSpectral,7,0)", L"~rest", false},
    {L"(Other,1,0)", L"(Other,1,0)", L"~rest", false},
    {L"(,7,0)", L"(,7,0)", L"~rest", false},
    // with numbers behind the colon, one character more goes
    {L"(RGB,3,1:9)", L"(RGB,3,1:9)", L"rest", false},
    {L"(RGB,3,3:9,8,4294967295)", L"(RGB,3,3:9,8,4294967295)", L"rest", false},
    // nothing is checked
    {L"(RGB,5,0)", L"(RGB,5,0)", L"~rest", false},
    {L"(rgb,3,0)", L"(,3,0)", L"~rest", false},
    {L" [RGB,3;0]", L"(RGB,3,0)", L"~rest", false},
    {L"( RGB,3,0)", L"(,3,0)", L"~rest", false},
    // what is cut short leaves what was read
    {L"(RGB,x", L"(RGB,0,0)", L"", true},
    {L"(RGB,3,2:9,x", L"(RGB,3,1:9)", L"", true},
};

TEST(ZetColorModel, text)
{
    const test::ZetScopedLocale plainNumbers("C");
    for (const TextRow& row : kTexts) {
        SCOPED_TRACE(testing::PrintToString(ZetString(row.text)));
        std::wistringstream in(ZetString(row.text) + L"~rest");
        ZetColorModel model = modelOf(ZetColorModel::CMYK, 4);
        in >> model;
        EXPECT_EQ(textOf(model), row.written);
        EXPECT_EQ(in.fail(), row.fails);
        if (!row.fails) {
            ZetString rest;
            in >> rest;
            EXPECT_EQ(rest, row.rest);
        }
    }
}

TEST(ZetColorModel, textAtTheEndOfAStream)
{
    ZetColorModel model;
    std::wistringstream plain(L"(HSV,3,0)");
    plain >> model;
    EXPECT_FALSE(plain.fail());

    // numbers are read, and the character behind them is missed
    std::wistringstream numbered(L"(HSV,3,2:5,6)");
    numbered >> model;
    EXPECT_TRUE(numbered.fail());
    EXPECT_EQ(model.bands(), (std::vector<unsigned int>{5, 6}));
    EXPECT_EQ(textOf(model), L"(HSV,3,2:5,6)");

    // a count without its numbers takes no memory for them
    std::wistringstream promised(L"(HSV,3,4294967295:5");
    promised >> model;
    EXPECT_TRUE(promised.fail());
    EXPECT_LE(model.bands().size(), 1u);

    std::wistringstream nothing(L"");
    nothing >> model;
    EXPECT_TRUE(nothing.fail());
    EXPECT_EQ(textOf(model), L"(,0,0)");
}

TEST(ZetColorModel, everyModelReadsBack)
{
    std::vector<ZetColorModel> models;
    for (const ModelRow& row : kModels) {
        models.push_back(modelOf(typeOf(row.number), row.bands > 0 ? row.bands : 12));
    }
    models.push_back(ZetColorModel(ZetColorModel::Invalid));
    for (const ZetColorModel& model : models) {
        std::wistringstream in(textOf(model));
        ZetColorModel read = modelOf(ZetColorModel::CMYK, 4);
        in >> read;
        EXPECT_FALSE(in.fail());
        EXPECT_EQ(read, model);
    }
}

TEST(ZetColorModel, equality)
{
    EXPECT_EQ(modelOf(ZetColorModel::Other, 2), modelOf(ZetColorModel::Other, 2));
    EXPECT_NE(modelOf(ZetColorModel::Other, 2), modelOf(ZetColorModel::Other, 3));
    EXPECT_NE(ZetColorModel(ZetColorModel::RGB), ZetColorModel(ZetColorModel::sRGB));
    // the numbers behind the colon count, in copies too
    ZetColorModel numbered;
    std::wistringstream(L"(RGB,3,1:9).") >> numbered;
    EXPECT_NE(numbered, ZetColorModel(ZetColorModel::RGB));
    ZetColorModel copy(ZetColorModel::HSV);
    copy = numbered;
    EXPECT_EQ(copy, numbered);
    EXPECT_EQ(copy.bands().size(), 1u);
}

}  // namespace
}  // namespace zet

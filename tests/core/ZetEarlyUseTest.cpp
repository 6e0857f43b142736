#include <exception>
#include <iterator>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include <zet/ZetCoreFunctions>
#include <zet/ZetDataType>
#include <zet/ZetEnum>
#include <zet/ZetEqnParser>
#include <zet/ZetEqnTile>
#include <zet/ZetKeyedObject>
#include <zet/ZetMathConst>
#include <zet/ZetMetaProperties>
#include <zet/ZetMetaType>
#include <zet/ZetROI>
#include <zet/ZetScalar>
#include <zet/ZetUnits>
#include <zet/ZetVariant>
#include <zet/ZetVersion>

#include "support/ZetPrint"

// A caller's static initialiser may run before those of the library and use all of it: each step
// below does so, and what it gave is compared when the tests run.
namespace zet {
namespace {

ZetString evaluated(const wchar_t* text)
{
    ZetEqnParser parser;
    if (!parser.parse(text)) {
        return L"not parsed";
    }
    return parser.evaluate().value<ZetString>();
}

ZetString unitsOf(const wchar_t* text)
{
    ZetUnits units;
    units.fromString(text);
    return units;
}

ZetString propertiesOf(const ZetObject& object)
{
    return object.metaObject()->properties()->propertyNames(true);
}

template <class T>
ZetString written(const T& value)
{
    std::wostringstream out;
    out << value;
    return out.str();
}

/// Of the pixels 3 and 4: half of their factorials within 6, so 3 and 6.
ZetString sumOfPixels()
{
    ZetEqnTile tile;
    tile.initialize(ZetDataType::U8, 2);
    tile.elements<unsigned char>()[0] = 3;
    tile.elements<unsigned char>()[1] = 4;
    const ZetEqnTile few = (tile.factorial() / 2.0).roundclip(ZetDataType::I16, 0.0, 6.0);
    return written(few.sum());
}

struct Step
{
    const char* what;
    ZetString (*give)();
    const wchar_t* expected;
};

// What a step tests is its first use in the process, so each stands for a table of the library.
const Step* steps(std::size_t& count)
{
    static const Step all[] = {
        {"key counter", [] { return written(ZetKeyedObject(L"early").key()); }, L"1"},
        {"kinds", [] { return ZetMetaType(L"ZetScalar").toString(); }, L"ZetScalar"},
        {"conversions", [] { return ZetVariant(5).value<ZetString>(); }, L"5"},
        {"text of variants", [] { return written(ZetVariant(7)); }, L"Int,7"},
        {"enumerations", [] { return ZetDataType::enumerator().toString(ZetDataType::fromString(L"U16")); }, L"U16"},
        {"units", [] { return unitsOf(L"km/s^2"); }, L"km/s^2"},
        {"constants", [] { return written(ZetMathConst(ZetMathConst::SpeedOfLight).value().units()); }, L"m/s"},
        {"functions of equations", [] { return evaluated(L"floor(abs(-4.5)) < 5"); }, L"true"},
        {"loops over pixels", sumOfPixels, L"9"},
        {"properties", [] { return propertiesOf(ZetVersion()); }, L"(major,minor,build)"},
        {"properties of regions", [] { return propertiesOf(ZetROI()); }, L"(origin,size)"},
    };
    count = std::size(all);
    return all;
}

struct EarlyUse
{
    EarlyUse()
    {
        std::size_t count = 0;
        const Step* all = steps(count);
        for (std::size_t i = 0; i < count; ++i) {
            try {
                given.push_back(all[i].give());
            } catch (const ZetTextMsg& message) {
                given.push_back(L"threw " + message.text());
            } catch (const std::exception& failure) {
                given.push_back(L"threw " + toWide(failure.what()));
            }
        }
    }

    std::vector<ZetString> given;
};

// After the object that looks at a fresh process, before every other one.
__attribute__((init_priority(102))) const EarlyUse s_earlyUse;

TEST(ZetEarlyUse, givesWhatLaterUseGives)
{
    std::size_t count = 0;
    const Step* all = steps(count);
    ASSERT_EQ(s_earlyUse.given.size(), count);
    for (std::size_t i = 0; i < count; ++i) {
        EXPECT_EQ(s_earlyUse.given[i], all[i].expected) << all[i].what;
        if (i > 0) {
            EXPECT_EQ(all[i].give(), all[i].expected) << all[i].what << ", later";
        }
    }
}

TEST(ZetEarlyUse, shiftsNoNumber)
{
    const wchar_t* names[] = {L"ZetDataTypeInfo", L"ZetHistogram_p",   L"ZetMetaProperty", L"ZetObjectProxy",
                              L"ZetVariant",      L"ZetMetaDataField", L"ZetMetaDataSet"};
    int number = 1024;
    for (const wchar_t* name : names) {
        EXPECT_EQ(ZetMetaType::fromString(name), number) << toMultibyte(name);
        ++number;
    }
}

}  // namespace
}  // namespace zet

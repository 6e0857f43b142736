#include <zet/ZetVersion>

#include <limits>
#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetMetaProperties>
#include <zet/ZetVariant>

#include "support/ZetPrint"

namespace zet {
namespace {

ZetVersion readFrom(const wchar_t* text)
{
    std::wistringstream in(text);
    ZetVersion version(9, 9, 9);
    in >> version;
    return version;
}

TEST(ZetVersion, keepsItsParts)
{
    const ZetVersion zero;
    EXPECT_EQ(zero.major(), 0);
    EXPECT_EQ(zero.minor(), 0);
    EXPECT_EQ(zero.build(), 0);
    ZetVersion version(2, 5, 7);
    EXPECT_EQ(version.major(), 2);
    EXPECT_EQ(version.minor(), 5);
    EXPECT_EQ(version.build(), 7);
    version.setMajor(3);
    version.setMinor(4);
    version.setBuild(5);
    const ZetVersion copy = version;
    EXPECT_EQ(static_cast<ZetString>(copy), L"3.4.5");
    EXPECT_EQ(version.className(), L"ZetVersion");
}

TEST(ZetVersion, writesItsText)
{
    struct Row
    {
        ZetVersion version;
        const wchar_t* separator;
        bool omitBuild;
        const wchar_t* text;
    };
    const Row rows[] = {
        {ZetVersion(2, 5, 0), L".", false, L"2.5"},
        {ZetVersion(2, 5, 7), L".", false, L"2.5.7"},
        {ZetVersion(2, 5, 7), L"-", true, L"2-5"},
        {ZetVersion(2, 5, 7), L"-", false, L"2-5-7"},
        {ZetVersion(2, 5, 0), L".", true, L"2.5"},
        {ZetVersion(0, 0, 0), L".", false, L"0.0"},
        {ZetVersion(2, 5, 7), L"", false, L"257"},
        {ZetVersion(2, 5, 7), L" \u00b7 ", false, L"2 \u00b7 5 \u00b7 7"},
        // signs are printed
        {ZetVersion(-1, -2, -3), L".", false, L"-1.-2.-3"},
        {ZetVersion(std::numeric_limits<int>::min(), std::numeric_limits<int>::max(), -1), L".", false,
         L"-2147483648.2147483647.-1"},
        // a separator prints whole, whatever its length
        {ZetVersion(1, 2, 3), L"-a separator of more than forty characters-", false,
         L"1-a separator of more than forty characters-2-a separator of more than forty characters-3"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.version.toString(row.separator, row.omitBuild), row.text);
    }
    std::wostringstream out;
    out << ZetVersion(2, 5, 7);
    EXPECT_EQ(out.str(), L"2.5.7");
    EXPECT_EQ(static_cast<ZetString>(ZetVersion(2, 5, 7)), L"2.5.7");
}

TEST(ZetVersion, readsItsText)
{
    struct Row
    {
        const wchar_t* text;
        int major;
        int minor;
        int build;
    };
    const Row rows[] = {
        {L"2.5.7", 2, 5, 7},
        {L"3.1", 3, 1, 0},
        {L"4", 4, 0, 0},
        {L"2.5.0", 2, 5, 0},
        // further items are ignored
        {L"1.2.3.4", 1, 2, 3},
        // one word
        {L"  1.2 3", 1, 2, 0},
        // an item that is no number
        {L"a.2b.", 0, 2, 0},
        {L".1.2", 0, 1, 2},
        // negative parts go through the unsigned number
        {L"-1.-2.-3", -1, -2, -3},
        {L"-1", -1, 0, 0},
        {L"4294967297.0.0", 1, 0, 0},
        // brackets around the whole are dropped
        {L"(1.2.3)", 1, 2, 3},
        {L"", 0, 0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(toMultibyte(row.text));
        const ZetVersion version = readFrom(row.text);
        EXPECT_EQ(version.major(), row.major);
        EXPECT_EQ(version.minor(), row.minor);
        EXPECT_EQ(version.build(), row.build);
    }
}

TEST(ZetVersion, propertiesReachTheFields)
{
    ZetVersion version(2, 5, 7);
    EXPECT_TRUE(version.isMetaObject());
    const ZetMetaObjectPtr meta = version.metaObject();
    ASSERT_TRUE(meta);
    meta->properties();
    ZetVariant value;
    EXPECT_EQ(meta->getPropertyValue(L"minor", value), 0);
    EXPECT_EQ(value.type().type(), ZetMetaType::Int);
    EXPECT_EQ(value.value<int>(), 5);
    EXPECT_EQ(meta->setPropertyValue(L"major", ZetVariant(3)), 0);
    EXPECT_EQ(meta->setPropertyValue(L"minor", ZetVariant(L"4")), 0);
    EXPECT_EQ(meta->setPropertyValue(L"build", ZetVariant(6.9)), 0);
    EXPECT_EQ(static_cast<ZetString>(version), L"3.4.6");
    // what does not convert arrives as zero
    EXPECT_EQ(meta->setPropertyValue(L"build", ZetVariant(L"x")), 0);
    EXPECT_EQ(version.build(), 0);
    EXPECT_EQ(meta->setPropertyValue(L"patch", ZetVariant(1)), 1);
    EXPECT_EQ(meta->getPropertyValue(L"patch", value), 1);
}

}  // namespace
}  // namespace zet

#include <zet/ZetBreakPoint>

#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include <zet/ZetMetaProperties>
#include <zet/ZetVariant>

#include "support/ZetScopedLocale"

namespace zet {
namespace {

TEST(ZetBreakPoint, holdsItsFields)
{
    ZetBreakPoint point;
    EXPECT_EQ(point.className(), L"ZetBreakPoint");
    EXPECT_EQ(point, ZetBreakPoint(0, 0.0, 0));
    point.setIn(-1);
    point.setOut(2.5);
    point.setBand(3);
    EXPECT_EQ(point.in(), -1);
    EXPECT_EQ(point.out(), 2.5);
    EXPECT_EQ(point.band(), 3u);
    EXPECT_EQ(point, ZetBreakPoint(-1, 2.5, 3));
    EXPECT_NE(point, ZetBreakPoint(1, 2.5, 3));
    EXPECT_NE(point, ZetBreakPoint(-1, 2.0, 3));
    EXPECT_NE(point, ZetBreakPoint(-1, 2.5, 0));
}

TEST(ZetBreakPoint, order)
{
    // by band, then input, then output
    const std::vector<ZetBreakPoint> sorted = {{9, -1, 0}, {9, 0, 0},   {10, -5, 0},
                                               {-7, 9, 1}, {-6, -9, 1}, {-9, -9, 2}};
    for (std::size_t a = 0; a < sorted.size(); ++a) {
        for (std::size_t b = 0; b < sorted.size(); ++b) {
            EXPECT_EQ(sorted[a] < sorted[b], a < b) << a << " " << b;
        }
    }
}

TEST(ZetBreakPoint, writes)
{
    const test::ZetScopedLocale plainNumbers("C");
    EXPECT_EQ(ZetBreakPoint(-1, 2.5, 3).toString(), L"(-1,2.5,3)");
    EXPECT_EQ(ZetBreakPoint(1, 3.0, 4294967295u).toString(), L"(1,3,4294967295)");
    EXPECT_EQ(ZetBreakPoint(1, 1e20 / 3.0, 0).toString(), L"(1,3.33333e+19,0)");
    std::wostringstream out;
    out << ZetBreakPoint(1, 2.0, 3);
    EXPECT_EQ(out.str(), L"(1,2,3)");
}

struct ReadRow
{
    const wchar_t* text;
    long used;  // 0: not read
    ZetBreakPoint point;
};

const ZetBreakPoint kBefore(7, 7.0, 7);

const ReadRow kRead[] = {
    {L"(-1,2.5,3)", 10, {-1, 2.5, 3}},
    {L"(-1,2.5,3) and more", 10, {-1, 2.5, 3}},
    // any characters in the places of the punctuation, blanks anywhere
    {L"[1;2;3]", 7, {1, 2.0, 3}},
    {L" x 1 x 2e1 x 3 x", 16, {1, 20.0, 3}},
    // the input is a whole number, so a point counts as the punctuation behind it
    {L"(1.9,2,3)", 7, {1, 9.0, 2}},
    {L"", 0, kBefore},
    {L"(1,2,3", 0, kBefore},
    {L"(1,2", 0, kBefore},
    {L"(x,2,3)", 0, kBefore},
    {L"(1,x,3)", 0, kBefore},
    {L"(1,2,x)", 0, kBefore},
    {L"(2147483648,2,3)", 0, kBefore},
    {L"(1,2,4294967296)", 0, kBefore},
};

TEST(ZetBreakPoint, reads)
{
    const test::ZetScopedLocale plainNumbers("C");
    for (const ReadRow& row : kRead) {
        SCOPED_TRACE(testing::PrintToString(ZetString(row.text)));
        ZetBreakPoint point = kBefore;
        EXPECT_EQ(point.fromString(row.text), row.used);
        EXPECT_EQ(point, row.point);

        point = kBefore;
        std::wistringstream in{ZetString(row.text)};
        in >> point;
        EXPECT_EQ(in.fail(), row.used == 0);
        EXPECT_EQ(point, row.point);
    }
}

TEST(ZetBreakPoint, properties)
{
    ZetBreakPoint point;
    const ZetMetaObjectPtr meta = point.metaObject();
    meta->properties();
    EXPECT_EQ(meta->setPropertyValue(L"in", ZetVariant(1)), 0);
    EXPECT_EQ(meta->setPropertyValue(L"out", ZetVariant(2)), 0);
    EXPECT_EQ(meta->setPropertyValue(L"band", ZetVariant(3)), 0);
    EXPECT_EQ(point, ZetBreakPoint(1, 2.0, 3));
    ZetVariant value;
    EXPECT_EQ(meta->getPropertyValue(L"out", value), 0);
    EXPECT_EQ(value.value<double>(), 2.0);
}

}  // namespace
}  // namespace zet

#include <zet/ZetBreakPointLut>

#include <cmath>
#include <cstring>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "support/ZetCollectingHandler"
#include "support/ZetNoMemory"
#include "support/ZetScopedLocale"

namespace zet {
namespace {

using Type = ZetDataType;
using Points = std::vector<ZetBreakPoint>;

ZetBreakPointLut lutOf(Type::Type output, const Points& points)
{
    ZetBreakPointLut lut{ZetDataType(output)};
    for (const ZetBreakPoint& point : points) {
        lut.add(point);
    }
    return lut;
}

template <class T>
std::vector<T> entriesOf(const ZetLutDescPtr& table)
{
    if (!table || !table->buffer()) {
        ADD_FAILURE() << "no table";
        return std::vector<T>();
    }
    std::vector<T> entries(table->buffer()->size() / sizeof(T));
    std::memcpy(entries.data(), table->buffer()->data(), entries.size() * sizeof(T));
    return entries;
}

TEST(ZetBreakPointLut, withoutPointsIsARamp)
{
    ZetBreakPointLut lut = lutOf(Type::U8, {});
    EXPECT_EQ(lut.className(), L"ZetBreakPointLut");
    const ZetLutDescPtr table = lut.lut(Type::U8);
    const std::vector<unsigned char> entries = entriesOf<unsigned char>(table);
    ASSERT_EQ(entries.size(), 256u);
    for (int i = 0; i < 256; ++i) {
        EXPECT_EQ(entries[static_cast<std::size_t>(i)], i);
    }
    EXPECT_EQ(table->numEntriesPerBand(), 256u);
    EXPECT_EQ(table->numBands(), 1u);
    EXPECT_EQ(table->minIndex(), 0);
    EXPECT_TRUE(table->reuseLutDataForAllBands());
    EXPECT_EQ(table->dataType(), ZetDataType(Type::U8));

    // the same table from its two points; the last one gives the last entry
    const ZetLutDescPtr same = lutOf(Type::U8, {{0, 0, 0}, {255, 255, 0}}).lut(Type::U8);
    EXPECT_EQ(*same, *table);

    // from the lowest input and output to the greatest
    const std::vector<short> flipped = entriesOf<short>(lutOf(Type::I16, {}).lut(Type::I8));
    ASSERT_EQ(flipped.size(), 256u);
    EXPECT_EQ(flipped.front(), -32768);
    EXPECT_EQ(flipped.back(), 32767);
    EXPECT_EQ(flipped[128], 128);  // -32768 + 128 * 65535 / 255
}

TEST(ZetBreakPointLut, depthsAreRanges)
{
    const ZetLutDescPtr table = lutOf(Type::U8, {}).lut(ZetDataType(Type::U16, 4));
    EXPECT_EQ(entriesOf<unsigned char>(table),
              (std::vector<unsigned char>{0, 17, 34, 51, 68, 85, 102, 119, 136, 153, 170, 187, 204, 221, 238, 255}));
    ZetBreakPointLut shallow{ZetDataType(Type::U8, 2)};
    EXPECT_EQ(entriesOf<unsigned char>(shallow.lut(ZetDataType(Type::I8, 2))),
              (std::vector<unsigned char>{0, 1, 2, 3}));
    EXPECT_EQ(shallow.lut(ZetDataType(Type::I8, 2))->minIndex(), -2);
}

TEST(ZetBreakPointLut, fixedRangeOfTypesThatAreNoIntegers)
{
    for (const Type::Type input : {Type::Float, Type::Double, Type::ComplexFloat, Type::ComplexDouble}) {
        const ZetLutDescPtr table = lutOf(Type::Double, {}).lut(input);
        const std::vector<double> entries = entriesOf<double>(table);
        ASSERT_EQ(entries.size(), 65536u);
        EXPECT_EQ(table->minIndex(), -32768);
        EXPECT_EQ(entries.front(), -32768.0);
        EXPECT_EQ(entries[32768], 0.0);
        EXPECT_EQ(entries.back(), 32767.0);
    }
}

struct CurveRow
{
    const char* what;
    Points points;
    std::vector<int> entries;  // for the inputs 0 to 7, into I16
};

const CurveRow kCurves[] = {
    {"a line", {{0, 0, 0}, {7, 14, 0}}, {0, 2, 4, 6, 8, 10, 12, 14}},
    {"constant outside the points", {{2, 10, 0}, {4, 20, 0}}, {10, 10, 10, 15, 20, 20, 20, 20}},
    {"points in any order", {{4, 20, 0}, {2, 10, 0}}, {10, 10, 10, 15, 20, 20, 20, 20}},
    {"falling", {{0, 8, 0}, {4, 0, 0}}, {8, 6, 4, 2, 0, 0, 0, 0}},
    {"level", {{1, 5, 0}, {6, 5, 0}}, {5, 5, 5, 5, 5, 5, 5, 5}},
    // of two points with one input the later in order gives the value there
    {"a step", {{0, 0, 0}, {4, 0, 0}, {4, 9, 0}, {7, 9, 0}}, {0, 0, 0, 0, 9, 9, 9, 9}},
    {"a step at the last input", {{0, 1, 0}, {7, 1, 0}, {7, 4, 0}}, {1, 1, 1, 1, 1, 1, 1, 4}},
    {"a step at the first input", {{0, 1, 0}, {0, 4, 0}, {7, 4, 0}}, {4, 4, 4, 4, 4, 4, 4, 4}},
    {"the same point twice", {{3, 6, 0}, {3, 6, 0}}, {6, 6, 6, 6, 6, 6, 6, 6}},
    // halves go away from zero
    {"halves", {{0, -2, 0}, {4, 0, 0}, {7, 1.5, 0}}, {-2, -2, -1, -1, 0, 1, 1, 2}},
    {"two and a half", {{0, 2.5, 0}, {3, 2.5, 0}, {4, -2.5, 0}, {7, -2.5, 0}}, {3, 3, 3, 3, -3, -3, -3, -3}},
};

TEST(ZetBreakPointLut, curves)
{
    for (const CurveRow& row : kCurves) {
        SCOPED_TRACE(row.what);
        const std::vector<short> entries = entriesOf<short>(lutOf(Type::I16, row.points).lut(ZetDataType(Type::U8, 3)));
        EXPECT_EQ(std::vector<int>(entries.begin(), entries.end()), row.entries);
    }
}

template <class T>
void expectHalves(Type::Type output, const std::vector<T>& expected)
{
    const Points points = {{0, 2.5, 0}, {1, 0.5, 0}, {2, 1.25, 0}, {3, 0.0, 0}};
    EXPECT_EQ(entriesOf<T>(lutOf(output, points).lut(ZetDataType(Type::U8, 2))), expected);
}

TEST(ZetBreakPointLut, outputTypes)
{
    expectHalves<signed char>(Type::I8, {3, 1, 1, 0});
    expectHalves<unsigned char>(Type::U8, {3, 1, 1, 0});
    expectHalves<short>(Type::I16, {3, 1, 1, 0});
    expectHalves<unsigned short>(Type::U16, {3, 1, 1, 0});
    expectHalves<int>(Type::I32, {3, 1, 1, 0});
    expectHalves<unsigned int>(Type::U32, {3, 1, 1, 0});
    expectHalves<float>(Type::Float, {2.5f, 0.5f, 1.25f, 0.0f});
    expectHalves<double>(Type::Double, {2.5, 0.5, 1.25, 0.0});
    // fractions are kept
    EXPECT_EQ(entriesOf<float>(lutOf(Type::Float, {{0, 0.0, 0}, {2, 1.0, 0}}).lut(ZetDataType(Type::U8, 2))),
              (std::vector<float>{0.0f, 0.5f, 1.0f, 1.0f}));
    // the whole of 32 bits
    EXPECT_EQ(entriesOf<unsigned int>(lutOf(Type::U32, {}).lut(ZetDataType(Type::U8, 1))),
              (std::vector<unsigned int>{0, 4294967295u}));
    EXPECT_EQ(entriesOf<int>(lutOf(Type::I32, {}).lut(ZetDataType(Type::U8, 1))),
              (std::vector<int>{-2147483647 - 1, 2147483647}));
}

TEST(ZetBreakPointLut, agreesWithALineDrawnValueByValue)
{
    std::mt19937 random(11);
    for (int round = 0; round < 30; ++round) {
        Points points;
        for (int in = 0; in < 255; in += 1 + static_cast<int>(random() % 60)) {
            points.push_back({in, static_cast<double>(random() % 65536), 0});
        }
        points.push_back({255, 77.0, 0});
        const std::vector<unsigned short> values = entriesOf<unsigned short>(lutOf(Type::U16, points).lut(Type::U8));
        ASSERT_EQ(values.size(), 256u);
        for (std::size_t i = 0; i + 1 < points.size(); ++i) {
            for (int x = points[i].in(); x < points[i + 1].in(); ++x) {
                const double slope = (points[i + 1].out() - points[i].out()) / (points[i + 1].in() - points[i].in());
                const double line = x * slope + (points[i].out() - points[i].in() * slope);
                EXPECT_EQ(values[static_cast<std::size_t>(x)], std::floor(line + 0.5)) << x;
            }
        }
    }
}

TEST(ZetBreakPointLut, bands)
{
    ZetBreakPointLut lut = lutOf(Type::U8, {{0, 1, 1}, {0, 0, 0}, {3, 6, 0}, {3, 4, 1}});
    const ZetLutDescPtr table = lut.lut(ZetDataType(Type::U8, 2));
    EXPECT_EQ(entriesOf<unsigned char>(table), (std::vector<unsigned char>{0, 2, 4, 6, 1, 2, 3, 4}));
    EXPECT_EQ(table->numBands(), 2u);
    EXPECT_EQ(table->numEntriesPerBand(), 4u);
    EXPECT_FALSE(table->reuseLutDataForAllBands());
}

// Each band costs what its own points do: this is done at once.
TEST(ZetBreakPointLut, manyBandsInAnyOrder)
{
    constexpr unsigned int kBands = 50000;
    ZetBreakPointLut lut{ZetDataType(Type::U16)};
    for (unsigned int i = 0; i < kBands; ++i) {
        const unsigned int band = i * 7919u % kBands;
        lut.add({1, static_cast<double>(band % 1000), band});
        lut.add({0, static_cast<double>(band % 999), band});
    }
    const std::vector<unsigned short> entries = entriesOf<unsigned short>(lut.lut(ZetDataType(Type::U8, 1)));
    ASSERT_EQ(entries.size(), 2 * kBands);
    for (unsigned int band = 0; band < kBands; ++band) {
        ASSERT_EQ(entries[2 * band], band % 999);
        ASSERT_EQ(entries[2 * band + 1], band % 1000);
    }
}

struct FailureRow
{
    Type::Type output;
    ZetDataType input;
    Points points;
    std::vector<const wchar_t*> texts;
};

TEST(ZetBreakPointLut, failures)
{
    const test::ZetScopedLocale plainNumbers("C");
    const FailureRow rows[] = {
        {Type::U8, Type::Invalid, {}, {L"Input data type () is not valid."}},
        {Type::Invalid, Type::Invalid, {}, {L"Input data type () is not valid."}},
        {Type::Invalid, Type::U8, {}, {L"Output data type () is not valid."}},
        {Type::U8,
         Type::I8,
         {{-129, 0, 0}, {300, 0, 0}},
         {L"Minimum input value (-129) for all bands is smaller than minimum (-128) for bit depth."}},
        {Type::U8,
         Type::U8,
         {{0, -1, 1}, {300, 0, 0}},
         {L"Maximum input value (300) for all bands is larger than maximum (255) for bit depth."}},
        {Type::U8,
         Type::U8,
         {{0, -0.5, 1}, {255, 256, 1}},
         {L"Minimum output value (-0.5) for all bands is smaller than minimum (0) for bit depth."}},
        {Type::U8,
         Type::U8,
         {{0, 0, 1}, {255, 255.25, 1}},
         {L"Maximum output value (255.25) for all bands is larger than maximum (255) for bit depth."}},
        // the fixed range of a type that is no integer holds for the output too
        {Type::Float,
         Type::U8,
         {{0, 0, 0}, {255, 1e6 / 3.0, 0}},
         {L"Maximum output value (333333) for all bands is larger than maximum (32767) for bit depth."}},
        {Type::U8, Type::U8, {{0, 0, 1}, {255, 255, 2}}, {L"Band numbers must start at zero and cannot be negative."}},
        {Type::U8,
         Type::U8,
         {{0, 0, 0}, {255, 9, 0}, {0, 0, 2}, {255, 9, 2}},
         {L"Band 1 does not have at least two break points."}},
        {Type::U8, Type::U8, {{0, 0, 0}}, {L"Band 0 does not have at least two break points."}},
        {Type::ComplexFloat, Type::U8, {{0, 0, 0}}, {L"Band 0 does not have at least two break points."}},
        {Type::ComplexFloat, Type::U8, {}, {L"Invalid data type"}},
        {Type::ComplexDouble, Type::U8, {{0, 0, 0}, {9, 9, 0}}, {L"Invalid data type"}},
        // a limit of 2^63 or 2^64 cut to 64 bits is the lowest number
        {Type::I64,
         Type::U8,
         {{0, 0, 0}, {9, 9, 0}},
         {L"Maximum output value (9) for all bands is larger than maximum (-9223372036854775808) for bit depth."}},
        {Type::U8,
         Type::U64,
         {{0, 0, 0}, {9, 9, 0}},
         {L"Maximum input value (9) for all bands is larger than maximum (-9223372036854775808) for bit depth."}},
        {ZetDataType::U8,
         Type::I64,
         {},
         {L"Maximum input value (0) for all bands is larger than maximum (-9223372036854775808) for bit depth."}},
        // the greatest input of 32 bits does not fit a point
        {Type::U8,
         Type::U32,
         {},
         {L"Minimum input value (-1) for all bands is smaller than minimum (0) for bit depth."}},
        // too many entries
        {Type::U8, Type::U32, {{0, 0, 0}, {9, 9, 0}}, {L"Could not allocate 4294967296 for LUT data."}},
        {Type::U16, Type::I32, {{0, 0, 0}, {9, 9, 1}}, {L"Could not allocate 17179869184 for LUT data."}},
        {Type::U8,
         ZetDataType(Type::I64, 40),
         {{0, 0, 0}, {9, 9, 0}},
         {L"Could not allocate 1099511627776 for LUT data."}},
        // more bytes than 64 bits tell
        {Type::Double,
         ZetDataType(Type::U32, 31),
         {{0, 0, 0}, {9, 9, 4294967295u}},
         {L"Could not allocate 18446744073709551615 for LUT data."}},
    };
    for (const FailureRow& row : rows) {
        SCOPED_TRACE(testing::PrintToString(ZetString(row.texts[0])));
        ZetBreakPointLut lut = lutOf(row.output, row.points);
        ZetLutDescPtr table = new ZetLutDesc;
        const std::vector<ZetTextMsg> posted = test::postedBy([&] { table = lut.lut(row.input); });
        EXPECT_FALSE(table.booleanTest());
        ASSERT_EQ(posted.size(), row.texts.size());
        EXPECT_EQ(posted[0].text(), row.texts[0]);
        EXPECT_EQ(posted[0].file(), L"ZetBreakPointLut");
        EXPECT_EQ(posted[0].kind(), ZetTextMsg::Error);
        EXPECT_EQ(lut.breakPoints(), row.points);
        EXPECT_EQ(lut.outputDataType().type(), row.output);

        EXPECT_EQ(test::thrownBy([&] { lut.lut(row.input); }).text(), row.texts[0]);
        EXPECT_EQ(lut.breakPoints(), row.points);
    }
}

TEST(ZetBreakPointLut, memoryThatCannotBeHad)
{
    ZetBreakPointLut lut = lutOf(Type::U16, {{0, 0, 0}, {255, 255, 0}});
    ZetLutDescPtr table = new ZetLutDesc;
    std::vector<ZetTextMsg> posted;
    {
        const test::ZetNoMemory none;
        EXPECT_EQ(test::thrownBy([&] { lut.lut(Type::U8); }).text(), L"Cannot allocate '512' bytes for buffer.");
        posted = test::postedBy([&] { table = lut.lut(Type::U8); });
    }
    EXPECT_FALSE(table.booleanTest());
    ASSERT_EQ(posted.size(), 2u);
    EXPECT_EQ(posted[0].text(), L"Cannot allocate '512' bytes for buffer.");
    EXPECT_EQ(posted[1].text(), L"Could not allocate 512 for LUT data.");
    EXPECT_EQ(posted[1].file(), L"ZetBreakPointLut");
    EXPECT_TRUE(lut.lut(Type::U8).booleanTest());
}

// Outputs that are no numbers pass the ranges, and have a place in the order.
TEST(ZetBreakPointLut, outputsThatAreNoNumbers)
{
    const double nan = std::nan("");
    Points points;
    for (int i = 0; i < 200; ++i) {
        points.push_back({i % 2, i % 3 == 0 ? nan : static_cast<double>(i % 7), 0});
    }
    ZetBreakPointLut lut = lutOf(Type::Double, points);
    Points sorted;
    lut.get(sorted, 0);
    ASSERT_EQ(sorted.size(), points.size());
    for (std::size_t i = 1; i < sorted.size(); ++i) {
        const ZetBreakPoint& a = sorted[i - 1];
        const ZetBreakPoint& b = sorted[i];
        EXPECT_TRUE(a.in() < b.in() || a.out() <= b.out() || std::isnan(b.out())) << i;
    }
    const std::vector<double> entries = entriesOf<double>(lut.lut(ZetDataType(Type::U8, 2)));
    ASSERT_EQ(entries.size(), 4u);
    EXPECT_TRUE(std::isnan(entries[0]));
    EXPECT_TRUE(std::isnan(entries[3]));
    // cut through 64 bits, a NaN is the lowest number, whose low bytes are 0
    lut.setOutputDataType(Type::U8);
    EXPECT_EQ(entriesOf<unsigned char>(lut.lut(ZetDataType(Type::U8, 2)))[3], 0);
}

TEST(ZetBreakPointLut, keepsItsTable)
{
    ZetBreakPointLut lut = lutOf(Type::U8, {{0, 0, 0}, {255, 255, 0}});
    const ZetLutDescPtr table = lut.lut(Type::U8);
    EXPECT_EQ(lut.lut(Type::U8), table);
    EXPECT_EQ(lut.inputDataType(), ZetDataType(Type::U8));

    // another depth is another type
    const ZetLutDescPtr shallow = lutOf(Type::U8, {}).lut(ZetDataType(Type::U8, 7));
    EXPECT_EQ(shallow->numEntriesPerBand(), 128u);
    ZetBreakPointLut ramp = lutOf(Type::U8, {});
    const ZetLutDescPtr deep = ramp.lut(Type::U8);
    EXPECT_NE(ramp.lut(ZetDataType(Type::U8, 7)), deep);
    EXPECT_NE(ramp.lut(Type::U8), deep);

    // a point, another output type and an assignment let the table go; what was handed out stays
    lut.add({128, 0, 0});
    const ZetLutDescPtr bent = lut.lut(Type::U8);
    EXPECT_NE(bent, table);
    EXPECT_EQ(entriesOf<unsigned char>(bent)[64], 0);
    EXPECT_EQ(entriesOf<unsigned char>(table)[64], 64);
    lut.setOutputDataType(Type::U8);
    lut.setOutputDataType(Type::Invalid);
    EXPECT_EQ(lut.lut(Type::U8), bent);
    lut.setOutputDataType(Type::U16);
    EXPECT_EQ(lut.lut(Type::U8)->dataType().type(), Type::U16);

    // a failed request for another type
    const ZetLutDescPtr kept = lut.lut(Type::U8);
    EXPECT_EQ(test::postedBy([&] { lut.lut(Type::Invalid); }).size(), 1u);
    EXPECT_EQ(lut.lut(Type::U8), kept);
    EXPECT_EQ(test::postedBy([&] { lut.lut(Type::I8); }).size(), 1u);
    EXPECT_NE(lut.lut(Type::U8), kept);
}

TEST(ZetBreakPointLut, inputTypeIsStoredBeforeTheTests)
{
    ZetBreakPointLut lut = lutOf(Type::U8, {{0, 0, 0}, {300, 255, 0}});
    EXPECT_EQ(test::postedBy([&] { lut.lut(Type::U8); }).size(), 1u);
    EXPECT_EQ(lut.inputDataType(), ZetDataType(Type::U8));
    EXPECT_EQ(test::postedBy([&] { lut.lut(Type::Invalid); }).size(), 1u);
    EXPECT_EQ(lut.inputDataType(), ZetDataType(Type::U8));
    // adding a point drops the table alone
    lut.add({1, 1, 0});
    EXPECT_EQ(lut.inputDataType(), ZetDataType(Type::U8));
    lut.clear();
    EXPECT_EQ(lut.inputDataType(), ZetDataType());
    EXPECT_EQ(lut.outputDataType(), ZetDataType(Type::U8));
    EXPECT_TRUE(lut.breakPoints().empty());
}

TEST(ZetBreakPointLut, getSortsOneBand)
{
    const ZetBreakPointLut lut = lutOf(Type::U8, {{9, 1, 1}, {5, 2, 0}, {5, 1, 0}, {2, 9, 0}});
    Points points = {{1, 1, 1}};
    lut.get(points, 0);
    EXPECT_EQ(points, (Points{{2, 9, 0}, {5, 1, 0}, {5, 2, 0}}));
    lut.get(points, 1);
    EXPECT_EQ(points, (Points{{9, 1, 1}}));
    lut.get(points, 2);
    EXPECT_TRUE(points.empty());
    // the points themselves stay in their order
    EXPECT_EQ(lut.breakPoints()[0], ZetBreakPoint(9, 1, 1));
}

TEST(ZetBreakPointLut, getWithoutPoints)
{
    ZetBreakPointLut lut = lutOf(Type::I16, {});
    Points points = {{1, 1, 1}};
    lut.get(points, 3);
    EXPECT_TRUE(points.empty());
    lut.lut(Type::I8);
    lut.get(points, 3);
    EXPECT_EQ(points, (Points{{-128, -32768, 3}, {127, 32767, 3}}));
    // the table is gone, and the ends with it
    lut.setOutputDataType(Type::U8);
    lut.get(points, 3);
    EXPECT_TRUE(points.empty());
}

TEST(ZetBreakPointLut, copies)
{
    ZetBreakPointLut lut = lutOf(Type::U8, {});
    const ZetLutDescPtr table = lut.lut(Type::U8);
    ZetBreakPointLut copy(lut);
    EXPECT_EQ(copy.inputDataType(), ZetDataType());
    EXPECT_EQ(copy.outputDataType(), ZetDataType(Type::U8));
    EXPECT_NE(copy.lut(Type::U8), table);
    EXPECT_EQ(*copy.lut(Type::U8), *table);

    copy = lutOf(Type::U16, {{0, 0, 0}, {1, 1, 0}});
    EXPECT_EQ(copy.inputDataType(), ZetDataType());
    EXPECT_EQ(copy.outputDataType(), ZetDataType(Type::U16));
    EXPECT_EQ(copy.breakPoints().size(), 2u);
    EXPECT_EQ(copy.lut(Type::U8)->dataType().type(), Type::U16);
    copy = *&copy;
    EXPECT_EQ(copy.breakPoints().size(), 2u);
    EXPECT_EQ(copy.inputDataType(), ZetDataType());
}

}  // namespace
}  // namespace zet

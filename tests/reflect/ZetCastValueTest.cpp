// The conversions between the built-in kinds, cell by cell: whether each counts as a success, and
// what it writes.

#include <limits>
#include <set>

#include <gtest/gtest.h>

#include <zet/ZetObjectProxy>

#include "support/ZetConversionTargets"
#include "support/ZetScopedLocale"

namespace zet {
namespace {

using namespace test;

const double kInf = std::numeric_limits<double>::infinity();
const double kNaN = std::numeric_limits<double>::quiet_NaN();

struct ConversionRow
{
    Number source;
    // One mark for each target but 12 and 21: '1' succeeds, '.' writes the default and fails.
    const char* marks;
};

// clang-format off
//                   0         1   1        2    2      2
//                   0         0   3        0    2      6
const ConversionRow kConversions[] = {
    {kBool,         "1111111..11." "......." "1" "...." ".."},
    {kInt,          "11111111111." "......." "1" "1111" ".."},
    {kUInt,         "11111111111." "......." "1" "1111" ".."},
    {kChar,         "11111111111." "......." "1" "...." ".."},
    {kInt64,        "11111111111." "......." "1" "...." ".."},
    {kUInt64,       "11111111111." "......." "1" "...." ".."},
    {kDouble,       "11111111111." "......." "1" "...." ".."},
    {kComplex,      "11111111111." "......." "1" "...." ".."},
    {kI64Rational,  "11111111111." "......." "1" "...." ".."},
    {kU64Rational,  "11111111111." "......." "1" "...." ".."},
    {kScalar,       "11111111111." "......." "1" "...." ".."},
    {kStrList,      "1.........11" "......." "." "...." "1."},
    {kBuffer,       "1.1.1.....1." "1......" "." "...." ".."},
    {kI32Coord,     "1.........1." ".11...." "." "...." ".."},
    {kDblCoord,     "1.........1." ".11...." "." "...." ".."},
    {kDblCoord2D,   "1.........1." "...1..." "." "...." ".."},
    {kU32Size,      "1.........1." "....11." "." "...." ".."},
    {kImageSize,    "1.........1." "....11." "." "...." ".."},
    {kUnits,        "1.........1." "......1" "." "...." ".."},
    {kROI,          "1.........1." "......." "." "...." ".."},
    {kDataType,     "111111.1111." "......." "." "1..." ".."},
    {kLayout,       "111111.1111." "......." "." ".1.." ".."},
    {kColor,        "111111.1111." "......." "." "..1." ".."},
    {kByteOrder,    "111111.1111." "......." "." "...1" ".."},
    {kList,         "............" "......." "." "...." "1."},
    {kMap,          "............" "......." "." "...." ".1"},
    {kInvalid,      "............" "......." "." "...." ".."},
    // with a text that suits the target
    {kString,       "111111111111" ".111111" "1" "1111" "11"},
};
// clang-format on

/// The mark of a cell; ' ' where only the kind itself arrives.
char mark(const ConversionRow& row, int number)
{
    if (number == kTile || number == kROI) {
        return row.source == number ? '1' : ' ';
    }
    return row.marks[number - (number > kTile) - (number > kROI)];
}

/// A value of the kind; of text, one that the target takes.
ZetVariant sample(Number source, int number)
{
    static const wchar_t* const texts[] = {
        L"yes",       L"5",
        L"5",         L"5",
        L"5",         L"5.5",
        L"(5,6)",     L"(5,6)",
        L"(5,6)",     L"A",
        L"text",      L"(a,b)",
        L"",          L"",
        L"(1,2,3)",   L"(1,2,3)",
        L"(1,2)",     L"(1,2,3)",
        L"(1,2,3)",   L"m",
        L"5 m",       L"",
        L"(U16,12)",  L"LineInterleaved",
        L"(RGB,3,0)", L"LittleEndian",
        L"text",      L"text",
    };
    switch (source) {
        case kBool:
            return ZetVariant(true);
        case kInt:
            return ZetVariant(5);
        case kUInt:
            return ZetVariant(5u);
        case kInt64:
            return ZetVariant(5l);
        case kUInt64:
            return ZetVariant(5ul);
        case kDouble:
            return ZetVariant(5.5);
        case kComplex:
            return ZetVariant(std::complex<double>(5.5, 6.5));
        case kI64Rational:
            return ZetVariant(ZetRational<long>(5, 6));
        case kU64Rational:
            return ZetVariant(ZetRational<unsigned long>(5, 6));
        case kChar:
            return ZetVariant(L'A');
        case kString:
            return ZetVariant(texts[number]);
        case kStrList:
            return ZetVariant(ZetStrList{L"a", L"b"});
        case kTile:
            return ZetVariant(makeTile(3));
        case kBuffer:
            return ZetVariant(makeBuffer("abc"));
        case kI32Coord:
            return ZetVariant(ZetCoord3D<int>(1, 2, 3));
        case kDblCoord:
            return ZetVariant(ZetCoord3D<double>(1.5, 2.5, 3.5));
        case kDblCoord2D:
            return ZetVariant(ZetCoord2D<double>(1.5, 2.5));
        case kU32Size:
            return ZetVariant(ZetSize3D<unsigned int>(1, 2, 3));
        case kImageSize:
            return ZetVariant(ZetImageSize(1, 2, 3));
        case kUnits:
            return ZetVariant(makeUnits(L"m"));
        case kScalar:
            return ZetVariant(ZetScalar(5.5, makeUnits(L"m")));
        case kROI:
            return ZetVariant(ZetROI(ZetCoord3D<int>(1, 2, 3), ZetImageSize(4, 5, 6)));
        case kDataType:
            return ZetVariant(ZetDataType(ZetDataType::U16, 12));
        case kLayout:
            return ZetVariant(ZetDataLayout(ZetDataLayout::LineInterleaved));
        case kColor:
            return ZetVariant(ZetColorModel(ZetColorModel::RGB));
        case kByteOrder:
            return ZetVariant(ZetByteOrder(ZetByteOrder::LittleEndian));
        case kList:
            return ZetVariant(ZetVariantList{ZetVariant(1)});
        case kMap:
            return ZetVariant(ZetVariantMap{{L"a", ZetVariant(1)}});
        case kInvalid:
            break;
    }
    return ZetVariant();
}

TEST(ZetCastValue, everyCell)
{
    const test::ZetScopedLocale plainNumbers("C");
    ASSERT_EQ(targets().size(), 28u);
    std::set<int> sources;
    for (const ConversionRow& row : kConversions) {
        ASSERT_EQ(std::string(row.marks).size(), 26u) << row.source;
        sources.insert(row.source);
        for (int number = 0; number < 28; ++number) {
            const ZetVariant source = sample(row.source, number);
            ASSERT_EQ(source.type().type(), row.source);
            const Target& into = targets()[static_cast<std::size_t>(number)];
            const Outcome outcome = into.convert(source);
            SCOPED_TRACE(testing::Message() << "from " << row.source << " to " << number);
            switch (mark(row, number)) {
                case '1':
                    EXPECT_TRUE(outcome.success);
                    // the two values of a bool do not tell which one was written
                    EXPECT_TRUE(number == kBool || outcome.left != into.untouched);
                    break;
                case '.':
                    EXPECT_EQ(outcome, (Outcome{false, into.defaultValue}));
                    break;
                default:
                    EXPECT_EQ(outcome, (Outcome{false, into.untouched}));
            }
        }
    }
    EXPECT_EQ(sources.size(), 28u) << "every kind but the tile, which converts to nothing";
}

TEST(ZetCastValue, tileConvertsToItsOwnKindOnly)
{
    const test::ZetScopedLocale plainNumbers("C");
    for (int number = 0; number < 28; ++number) {
        const Target& into = targets()[static_cast<std::size_t>(number)];
        const Outcome outcome = into.convert(ZetVariant(makeTile(3)));
        const Outcome expected = number == kTile ? Outcome{true, L"tile 3"} : Outcome{false, into.untouched};
        EXPECT_EQ(outcome, expected) << number;
    }
}

TEST(ZetCastValue, customAndUnknownTargetsAreLeftAlone)
{
    ZetObjectProxy proxy;
    proxy.setObject(ZetObject());
    float small = 1.5f;
    for (const ConversionRow& row : kConversions) {
        const ZetVariant source = sample(row.source, kBool);
        EXPECT_FALSE(source.convertTo(&proxy));
        EXPECT_FALSE(source.convertTo(&small));
    }
    EXPECT_EQ(proxy.type(), L"ZetObject");
    EXPECT_EQ(small, 1.5f);
}

/// Checks what one source gives in every target, in the order 0 to 10 and 20.
void expectNumbers(const ZetVariant& source, const std::vector<const wchar_t*>& values)
{
    const Number order[] = {kBool,    kInt,         kUInt,        kInt64, kUInt64, kDouble,
                            kComplex, kI64Rational, kU64Rational, kChar,  kString, kScalar};
    ASSERT_EQ(values.size(), std::size(order));
    for (std::size_t i = 0; i < values.size(); ++i) {
        expectValues({{source, order[i], values[i]}});
    }
}

TEST(ZetCastValue, boolGivesZeroOrOne)
{
    expectValues({
        {true, kInt, L"1"},
        {false, kInt, L"0"},
        {true, kUInt, L"1"},
        {true, kInt64, L"1"},
        {true, kUInt64, L"1"},
        {true, kDouble, L"1"},
        {false, kDouble, L"0"},
        {true, kComplex, L"(1,0)"},
        {true, kChar, L"1"},
        {true, kString, L"'true'"},
        {false, kString, L"'false'"},
        {true, kScalar, L"(1,0) ''"},
        {false, kBool, L"0"},
    });
}

TEST(ZetCastValue, integersAreCutOrExtended)
{
    const test::ZetScopedLocale plainNumbers("C");
    expectNumbers(ZetVariant(-5), {L"1", L"-5", L"4294967291", L"-5", L"18446744073709551611", L"-5", L"(-5,0)",
                                   L"-5/1", L"18446744073709551611/1", L"-5", L"'-5'", L"(-5,0) ''"});
    expectNumbers(ZetVariant(4294967295u),
                  {L"1", L"-1", L"4294967295", L"4294967295", L"4294967295", L"4294967295", L"(4294967295,0)",
                   L"4294967295/1", L"4294967295/1", L"-1", L"'4294967295'", L"(4294967295,0) ''"});
    expectNumbers(
        ZetVariant(-4294967297l),
        {L"1", L"-1", L"4294967295", L"-4294967297", L"18446744069414584319", L"-4294967297", L"(-4294967297,0)",
         L"-4294967297/1", L"18446744069414584319/1", L"-1", L"'-4294967297'", L"(-4294967297,0) ''"});
    expectNumbers(ZetVariant(18446744073709551615ul),
                  {L"1", L"-1", L"4294967295", L"-1", L"18446744073709551615", L"1.8446744073709552e+19",
                   L"(1.8446744073709552e+19,0)", L"-1/1", L"18446744073709551615/1", L"-1", L"'18446744073709551615'",
                   L"(1.8446744073709552e+19,0) ''"});
    expectNumbers(ZetVariant(L'A'),
                  {L"1", L"65", L"65", L"65", L"65", L"65", L"(65,0)", L"65/1", L"65/1", L"65", L"'A'", L"(65,0) ''"});
    // a character is a signed 32-bit number; the whole of a long number decides whether it is zero
    expectValues({
        {ZetVariant(static_cast<wchar_t>(-1)), kUInt64, L"18446744073709551615"},
        {ZetVariant(4294967296l), kBool, L"1"},
        {ZetVariant(4294967296l), kInt, L"0"},
        {ZetVariant(0), kBool, L"0"},
        {ZetVariant(0u), kBool, L"0"},
        {ZetVariant(L'\0'), kBool, L"0"},
    });
}

TEST(ZetCastValue, shortIntegersMakeEnumerations)
{
    expectValues({
        {ZetVariant(2), kDataType, L"2/16"},
        {ZetVariant(11u), kDataType, L"11/128"},
        {ZetVariant(12), kDataType, L"12/0"},
        {ZetVariant(-5), kDataType, L"12/0"},
        {ZetVariant(4000000000u), kDataType, L"12/0"},
        {ZetVariant(2), kLayout, L"2"},
        {ZetVariant(4u), kLayout, L"4"},
        {ZetVariant(100), kLayout, L"4"},
        {ZetVariant(2u), kColor, L"2:3"},
        {ZetVariant(16), kColor, L"16:1"},
        {ZetVariant(1), kColor, L"19:0"},
        {ZetVariant(100), kColor, L"19:0"},
        {ZetVariant(1), kByteOrder, L"1"},
        {ZetVariant(0u), kByteOrder, L"0"},
        {ZetVariant(-1), kByteOrder, L"2"},
    });
}

TEST(ZetCastValue, doublesAreCutAsTheProcessorDoes)
{
    const test::ZetScopedLocale plainNumbers("C");
    expectNumbers(ZetVariant(-2.75),
                  {L"1", L"-2", L"4294967294", L"-2", L"18446744073709551614", L"-2.75", L"(-2.75,0)", L"-11/4",
                   L"18446744073709551605/4", L"-2", L"'-2.75'", L"(-2.75,0) ''"});
    expectValues({
        {0.0, kBool, L"0"},
        {-0.0, kBool, L"0"},
        {kNaN, kBool, L"1"},
        {1e-300, kBool, L"1"},
        // 32 bits; out of range gives the lowest
        {2147483647.9, kInt, L"2147483647"},
        {2147483648.0, kInt, L"-2147483648"},
        {-2147483648.9, kInt, L"-2147483648"},
        {-2147483649.0, kInt, L"-2147483648"},
        {1e10, kInt, L"-2147483648"},
        {kNaN, kInt, L"-2147483648"},
        {kInf, kInt, L"-2147483648"},
        {65.9, kChar, L"65"},
        {1e10, kChar, L"-2147483648"},
        // the low 32 bits of 64
        {4294967295.5, kUInt, L"4294967295"},
        {1e10, kUInt, L"1410065408"},
        {-1.5, kUInt, L"4294967295"},
        {1e300, kUInt, L"0"},
        {kNaN, kUInt, L"0"},
        // 64 bits
        {1e10, kInt64, L"10000000000"},
        {-9.2e18, kInt64, L"-9200000000000000000"},
        {9223372036854775808.0, kInt64, L"-9223372036854775808"},
        {-1e300, kInt64, L"-9223372036854775808"},
        {kNaN, kInt64, L"-9223372036854775808"},
        // the whole unsigned range
        {9.5e18, kUInt64, L"9500000000000000000"},
        {9223372036854775808.0, kUInt64, L"9223372036854775808"},
        {18446744073709549568.0, kUInt64, L"18446744073709549568"},
        {18446744073709551616.0, kUInt64, L"0"},
        {1e300, kUInt64, L"0"},
        {-1e300, kUInt64, L"9223372036854775808"},
        {kNaN, kUInt64, L"9223372036854775808"},
        {-1.0, kUInt64, L"18446744073709551615"},
        // the best fraction with a denominator below 65535
        {0.5, kI64Rational, L"1/2"},
        {-0.25, kI64Rational, L"-1/4"},
        {3.0, kU64Rational, L"3/1"},
        {0.1, kI64Rational, L"1/10"},
        {kNaN, kI64Rational, L"0/1"},
        {kInf, kI64Rational, L"1/0"},
        {-kInf, kI64Rational, L"-1/0"},
    });
}

TEST(ZetCastValue, complexNumbersUseTheirRealPart)
{
    const test::ZetScopedLocale plainNumbers("C");
    const std::complex<double> number(-2.75, 3.0);
    expectNumbers(number, {L"1", L"-2", L"4294967294", L"-2", L"18446744073709551614", L"-2.75", L"(-2.75,3)", L"-11/4",
                           L"18446744073709551605/4", L"-2", L"'(-2.75,3)'", L"(-2.75,3) ''"});
    expectValues({
        {std::complex<double>(0, 1), kBool, L"1"},
        {std::complex<double>(1, 0), kBool, L"1"},
        {std::complex<double>(0, 0), kBool, L"0"},
        {std::complex<double>(0, 1), kInt, L"0"},
        {std::complex<double>(0, 1), kDouble, L"0"},
        // the real part tells the precision
        {std::complex<double>(33.33, 0.1), kString, L"'(33.329999999999998,0.10000000000000001)'"},
        {std::complex<double>(0.1, 33.33), kString, L"'(0.1,33.33)'"},
        {std::complex<double>(3, 0), kString, L"'(3,0)'"},
    });
}

TEST(ZetCastValue, rationalsGoThroughTheirQuotient)
{
    const test::ZetScopedLocale plainNumbers("C");
    expectNumbers(ZetRational<long>(-7, 2),
                  {L"1", L"-3", L"4294967293", L"-3", L"18446744073709551613", L"-3.5", L"(-3.5,0)", L"-7/2",
                   L"18446744073709551609/2", L"-3", L"'(-7,2)'", L"(-3.5,0) ''"});
    expectNumbers(ZetRational<unsigned long>(18446744073709551615ul, 1),
                  {L"1", L"-2147483648", L"0", L"-9223372036854775808", L"0", L"1.8446744073709552e+19",
                   L"(1.8446744073709552e+19,0)", L"-1/1", L"18446744073709551615/1", L"-2147483648",
                   L"'(18446744073709551615,1)'", L"(1.8446744073709552e+19,0) ''"});
    expectValues({
        {ZetRational<long>(0, 5), kBool, L"0"},
        {ZetRational<long>(1, 0), kBool, L"1"},
        {ZetRational<long>(0, 0), kBool, L"1"},
        {ZetRational<long>(1, 0), kDouble, L"inf"},
        {ZetRational<long>(-1, 0), kInt, L"-2147483648"},
        {ZetRational<unsigned long>(7, 2), kInt, L"3"},
        // as they are, unreduced
        {ZetRational<long>(2, 4), kU64Rational, L"2/4"},
        {ZetRational<unsigned long>(2, 4), kI64Rational, L"2/4"},
        {ZetRational<long>(2, 4), kString, L"'(2,4)'"},
    });
}

TEST(ZetCastValue, scalarsDropTheirUnits)
{
    const test::ZetScopedLocale plainNumbers("C");
    expectNumbers(ZetScalar(-2.75, makeUnits(L"m")),
                  {L"1", L"-2", L"4294967294", L"-2", L"18446744073709551614", L"-2.75", L"(-2.75,0)", L"-11/4",
                   L"18446744073709551605/4", L"-2", L"'-2.75 m'", L"(-2.75,0) 'm'"});
    expectValues({
        {ZetScalar(1.0, 2.0), kComplex, L"(1,2)"},
        {ZetScalar(1.0, 2.0), kDouble, L"1"},
        {ZetScalar(1.0, 2.0), kString, L"'(1,2)'"},
        {ZetScalar(0.0, 1.0), kBool, L"1"},
        {ZetScalar(), kBool, L"0"},
        {ZetScalar(5.0), kString, L"'5'"},
    });
}

TEST(ZetCastValue, listsOfTexts)
{
    expectValues({
        {ZetStrList{L"a", L"b"}, kBool, L"1"},
        {ZetStrList(), kBool, L"0"},
        {ZetStrList{L""}, kBool, L"1"},
        {ZetStrList{L"a", L"b"}, kString, L"'(a,b)'"},
        {ZetStrList(), kString, L"''"},
        {ZetStrList{L"a", L"b"}, kStrList, L"[a|b]"},
        {ZetStrList{L"a", L"5"}, kList, L"[ZetString a|ZetString 5]"},
        {ZetStrList(), kList, L"[]"},
    });
}

TEST(ZetCastValue, buffersAreTheirAddress)
{
    const ZetBufferPtr buffer = makeBuffer("abc");
    const auto address = reinterpret_cast<unsigned long>(buffer.get());
    unsigned int low = 0;
    unsigned long whole = 0;
    ZetString text;
    EXPECT_TRUE(ZetVariant(buffer).convertTo(&low));
    EXPECT_TRUE(ZetVariant(buffer).convertTo(&whole));
    EXPECT_TRUE(ZetVariant(buffer).convertTo(&text));
    EXPECT_EQ(low, address & 0xffffffffu);
    EXPECT_EQ(whole, address);
    char expected[32];
    std::snprintf(expected, sizeof(expected), "0x%08lx", address);
    EXPECT_EQ(text, toWide(expected));
    expectValues({
        {buffer, kBool, L"1"},
        {buffer, kBuffer, L"buffer 3"},
        {ZetBufferPtr(), kBool, L"0"},
        {ZetBufferPtr(), kUInt, L"0"},
        {ZetBufferPtr(), kUInt64, L"0"},
        {ZetBufferPtr(), kString, L"'0x00000000'"},
    });
}

TEST(ZetCastValue, geometry)
{
    const test::ZetScopedLocale plainNumbers("C");
    expectValues({
        {ZetCoord3D<int>(0, 0, 1), kBool, L"1"},
        {ZetCoord3D<int>(), kBool, L"0"},
        {ZetCoord3D<int>(1, -2, 3), kString, L"'(1,-2,3)'"},
        {ZetCoord3D<int>(1, -2, 3), kI32Coord, L"1 -2 3"},
        {ZetCoord3D<int>(1, -2, 3), kDblCoord, L"1 -2 3"},
        {ZetCoord3D<double>(0.0, -0.0, 0.5), kBool, L"1"},
        {ZetCoord3D<double>(0.0, -0.0, 0.0), kBool, L"0"},
        {ZetCoord3D<double>(1.9, -2.9, 3e10), kString, L"'(1.9,-2.9,3e+10)'"},
        {ZetCoord3D<double>(1.9, -2.9, 3e10), kI32Coord, L"1 -2 -2147483648"},
        {ZetCoord3D<double>(1.9, -2.9, 3e10), kDblCoord, L"1.8999999999999999 -2.8999999999999999 30000000000"},
        {ZetCoord2D<double>(0.5, 0), kBool, L"1"},
        {ZetCoord2D<double>(), kBool, L"0"},
        {ZetCoord2D<double>(0.5, 1234567), kString, L"'(0.5,1.23457e+06)'"},
        {ZetCoord2D<double>(0.5, 2), kDblCoord2D, L"0.5 2"},
        {ZetSize3D<unsigned int>(4, 5, 6), kBool, L"1"},
        {ZetSize3D<unsigned int>(4, 0, 6), kBool, L"0"},
        {ZetSize3D<unsigned int>(4, 5, 4294967295u), kString, L"'(4,5,4294967295)'"},
        {ZetSize3D<unsigned int>(4, 5, 6), kU32Size, L"4 5 6"},
        {ZetSize3D<unsigned int>(4, 5, 6), kImageSize, L"4 5 6"},
        {ZetImageSize(4, 5, 6), kBool, L"1"},
        {ZetImageSize(4, 5, 0), kBool, L"0"},
        {ZetImageSize(4, 5, 6), kString, L"'(4,5,6)'"},
        {ZetImageSize(4, 5, 6), kU32Size, L"4 5 6"},
        {ZetImageSize(4, 5, 6), kImageSize, L"4 5 6"},
        {ZetROI(ZetCoord3D<int>(1, 2, 3), ZetImageSize(4, 5, 6)), kBool, L"1"},
        {ZetROI(ZetCoord3D<int>(1, 2, 3), ZetImageSize(4, 0, 6)), kBool, L"0"},
        {ZetROI(ZetCoord3D<int>(1, 2, 3), ZetImageSize(4, 5, 6)), kString, L"'((1,2,3),(4,5,6))'"},
        {ZetROI(ZetCoord3D<int>(1, 2, 3), ZetImageSize(4, 5, 6)), kROI, L"1 2 3 + 4 5 6"},
    });
}

TEST(ZetCastValue, units)
{
    expectValues({
        {makeUnits(L"m/s"), kBool, L"1"},
        {ZetUnits(), kBool, L"0"},
        {makeUnits(L"m"), kString, L"'m'"},
        {ZetUnits(), kString, L"''"},
        {makeUnits(L"m"), kUnits, L"'m'"},
    });
}

TEST(ZetCastValue, enumerations)
{
    const ZetDataType type(ZetDataType::U16, 12);
    expectValues({
        {type, kBool, L"1"},
        {type, kInt, L"3"},
        {type, kUInt, L"3"},
        {type, kInt64, L"3"},
        {type, kUInt64, L"3"},
        {type, kDouble, L"3"},
        {type, kI64Rational, L"3/1"},
        {type, kU64Rational, L"3/1"},
        {type, kChar, L"3"},
        {type, kString, L"'U16'"},
        {type, kDataType, L"3/12"},
        {ZetDataType(ZetDataType::I8), kBool, L"1"},
        {ZetDataType(ZetDataType::Invalid), kBool, L"0"},
        {ZetDataType(ZetDataType::Invalid), kInt, L"12"},
        {ZetDataType(ZetDataType::Invalid), kString, L"''"},
        {ZetDataLayout(ZetDataLayout::PixelInterleaved), kBool, L"1"},
        {ZetDataLayout(ZetDataLayout::LineInterleaved), kDouble, L"2"},
        {ZetDataLayout(ZetDataLayout::LineInterleaved), kString, L"'LineInterleaved'"},
        {ZetDataLayout(ZetDataLayout::Invalid), kBool, L"0"},
        {ZetDataLayout(ZetDataLayout::Invalid), kUInt, L"4"},
        {ZetColorModel(ZetColorModel::GrayScale), kBool, L"1"},
        {ZetColorModel(ZetColorModel::CMYK), kInt64, L"10"},
        {ZetColorModel(ZetColorModel::CMYK), kString, L"'CMYK'"},
        {ZetColorModel(ZetColorModel::CMYK), kColor, L"10:4"},
        {ZetColorModel(ZetColorModel::Invalid), kBool, L"0"},
        {ZetColorModel(ZetColorModel::Invalid), kI64Rational, L"19/1"},
        {ZetByteOrder(ZetByteOrder::LittleEndian), kBool, L"1"},
        {ZetByteOrder(ZetByteOrder::BigEndian), kUInt64, L"1"},
        {ZetByteOrder(ZetByteOrder::BigEndian), kString, L"'BigEndian'"},
        {ZetByteOrder(ZetByteOrder::Invalid), kBool, L"0"},
        {ZetByteOrder(ZetByteOrder::Invalid), kInt, L"2"},
    });
}

TEST(ZetCastValue, containers)
{
    expectValues({
        {ZetVariantList{ZetVariant(1), ZetVariant(L"x")}, kList, L"[Int 1|ZetString x]"},
        {ZetVariantMap{{L"a", ZetVariant(1)}, {L"b", ZetVariant(true)}}, kMap, L"{a=Int 1|b=Bool true}"},
    });
}

}  // namespace
}  // namespace zet

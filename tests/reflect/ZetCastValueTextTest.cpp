// The conversions to and from text.

#include <limits>

#include <gtest/gtest.h>

#include <zet/ZetTextMsg>

#include "support/ZetCollectingHandler"
#include "support/ZetConversionTargets"
#include "support/ZetScopedLocale"

namespace zet {
namespace {

using namespace test;

const double kInf = std::numeric_limits<double>::infinity();
const double kNaN = std::numeric_limits<double>::quiet_NaN();

struct DoubleRow
{
    double value;
    const wchar_t* text;
};

TEST(ZetCastValueText, textOfDoubles)
{
    const test::ZetScopedLocale plainNumbers("C");
    const DoubleRow rows[] = {
        // at most one decimal, at a size that six digits show
        {3.0, L"3.0"},
        {2.5, L"2.5"},
        {0.0, L"0.0"},
        {0.1, L"0.1"},
        {-3.0, L"-3.0"},
        {-0.5, L"-0.5"},
        {-0.1, L"-0.1"},
        {12345.6, L"12345.6"},
        {99999.0, L"99999.0"},
        {-99999.0, L"-99999.0"},
        {99999.9, L"99999.9"},
        // otherwise fifteen digits behind those of the whole part
        {100000.0, L"100000"},
        {-100000.0, L"-100000"},
        {100000.5, L"100000.5"},
        {123456.0, L"123456"},
        {0.25, L"0.25"},
        {0.05, L"0.05"},
        {3.14159, L"3.14159"},
        {12345.67, L"12345.670000000000073"},
        {1234.56, L"1234.559999999999945"},
        {33.33, L"33.329999999999998"},
        {0.1 + 0.2, L"0.3"},
        {1.0 / 3.0, L"0.3333333333333333"},
        {1e-5, L"1e-05"},
        {1e10, L"10000000000"},
        // one digit less for every negative value
        {-33.33, L"-33.329999999999998"},
        {-1.0 / 3.0, L"-0.333333333333333"},
        {-0.25, L"-0.25"},
        {-0.0, L"-0"},
        // what no int holds has the eleven characters of the lowest one
        {1e20, L"100000000000000000000"},
        {-1e20, L"-100000000000000000000"},
        {2147483648.5, L"2147483648.5"},
        {1e300, L"1.0000000000000000525047603e+300"},
        {kInf, L"inf"},
        {-kInf, L"-inf"},
        {kNaN, L"nan"},
    };
    for (const DoubleRow& row : rows) {
        ZetString text = L"before";
        EXPECT_TRUE(ZetVariant(row.value).convertTo(&text));
        EXPECT_EQ(text, row.text) << row.value;
    }
}

struct ParseRow
{
    const wchar_t* text;
    Outcome asInt;
    Outcome asUInt;
    Outcome asInt64;
    Outcome asUInt64;
    Outcome asDouble;
    Outcome asComplex;
};

template <class T>
Outcome parsed(const wchar_t* text)
{
    T out{};
    const bool success = ZetVariant(text).convertTo(&out);
    return {success, dump(out)};
}

TEST(ZetCastValueText, fourParsersOfNumbers)
{
    const test::ZetScopedLocale plainNumbers("C");
    const Outcome none = {false, L"0"};
    const Outcome noComplex = {false, L"(0,0)"};
    const ParseRow rows[] = {
        // whole texts for Int, UInt and Double; a prefix is enough for the 64-bit kinds
        {L"12", {true, L"12"}, {true, L"12"}, {true, L"12"}, {true, L"12"}, {true, L"12"}, {true, L"(12,0)"}},
        {L"12abc", {false, L"12"}, {false, L"12"}, {true, L"12"}, {true, L"12"}, {false, L"12"}, {true, L"(12,0)"}},
        {L"12 ", {false, L"12"}, {false, L"12"}, {true, L"12"}, {true, L"12"}, {false, L"12"}, {true, L"(12,0)"}},
        {L" 12", {true, L"12"}, {true, L"12"}, {true, L"12"}, {true, L"12"}, {true, L"12"}, {true, L"(12,0)"}},
        {L"+7", {true, L"7"}, {true, L"7"}, {true, L"7"}, {true, L"7"}, {true, L"7"}, {true, L"(7,0)"}},
        {L"1,234", {false, L"1"}, {false, L"1"}, {true, L"1"}, {true, L"1"}, {false, L"1"}, {true, L"(1,0)"}},
        {L"abc", none, none, none, none, none, noComplex},
        // nothing is a whole text
        {L"", {true, L"0"}, {true, L"0"}, none, none, {true, L"0"}, noComplex},
        {L" ", {false, L"0"}, {false, L"0"}, none, none, {false, L"0"}, noComplex},
        // signs wrap
        {L"-5",
         {true, L"-5"},
         {true, L"4294967291"},
         {true, L"-5"},
         {true, L"18446744073709551611"},
         {true, L"-5"},
         {true, L"(-5,0)"}},
        // what 64 bits hold is cut to 32; what they do not hold saturates, and fails only as a stream
        {L"99999999999",
         {true, L"1215752191"},
         {true, L"1215752191"},
         {true, L"99999999999"},
         {true, L"99999999999"},
         {true, L"99999999999"},
         {true, L"(99999999999,0)"}},
        {L"99999999999999999999",
         {true, L"-1"},
         {true, L"4294967295"},
         {false, L"9223372036854775807"},
         {false, L"18446744073709551615"},
         {true, L"1e+20"},
         {true, L"(1e+20,0)"}},
        // real numbers, and what only one parser knows
        {L"1.5", {false, L"1"}, {false, L"1"}, {true, L"1"}, {true, L"1"}, {true, L"1.5"}, {true, L"(1.5,0)"}},
        {L"1e5", {false, L"1"}, {false, L"1"}, {true, L"1"}, {true, L"1"}, {true, L"100000"}, {true, L"(100000,0)"}},
        {L"0x10", {false, L"0"}, {false, L"0"}, {true, L"0"}, {true, L"0"}, {true, L"16"}, {true, L"(0,0)"}},
        {L"inf", none, none, none, none, {true, L"inf"}, noComplex},
        {L"1e400", {false, L"1"}, {false, L"1"}, {true, L"1"}, {true, L"1"}, {true, L"inf"}, noComplex},
        {L"(3)", none, none, none, none, none, {true, L"(3,0)"}},
        {L"(1,2)", none, none, none, none, none, {true, L"(1,2)"}},
        {L" ( 1 , 2 ) x", none, none, none, none, none, {true, L"(1,2)"}},
        {L"(1,2", none, none, none, none, none, noComplex},
    };
    for (const ParseRow& row : rows) {
        SCOPED_TRACE("'" + toMultibyte(row.text) + "'");
        EXPECT_EQ(parsed<int>(row.text), row.asInt);
        EXPECT_EQ(parsed<unsigned int>(row.text), row.asUInt);
        EXPECT_EQ(parsed<long>(row.text), row.asInt64);
        EXPECT_EQ(parsed<unsigned long>(row.text), row.asUInt64);
        EXPECT_EQ(parsed<double>(row.text), row.asDouble);
        EXPECT_EQ(parsed<std::complex<double>>(row.text), row.asComplex);
    }
}

TEST(ZetCastValueText, textIsTrueByAFewWords)
{
    for (const wchar_t* text : {L"1", L"t", L"y", L"true", L"yes", L"on", L"T", L"Y", L"TRUE", L"YES", L"On", L"oN"}) {
        expectValues({{ZetVariant(text), kBool, L"1"}});
    }
    for (const wchar_t* text : {L"", L" yes", L"yes ", L"0", L"2", L"tru", L"ok", L"false", L"1.0"}) {
        expectValues({{ZetVariant(text), kBool, L"0"}});
    }
}

struct TextRow
{
    const wchar_t* text;
    Number target;
    bool success;
    const wchar_t* left;
};

TEST(ZetCastValueText, textIsReadByTheClasses)
{
    const test::ZetScopedLocale plainNumbers("C");
    const TextRow rows[] = {
        // any three characters stand around the numbers of a rational
        {L"(1,2)", kI64Rational, true, L"1/2"},
        {L"x1y2z", kI64Rational, true, L"1/2"},
        {L"(-1,2)rest", kI64Rational, true, L"-1/2"},
        {L"(3,4)", kU64Rational, true, L"3/4"},
        {L"  xyz", kChar, true, L"120"},
        {L"a text", kString, true, L"'a text'"},
        {L"(a,b)", kStrList, true, L"[a|b]"},
        {L"a,,b", kStrList, true, L"[a||b]"},
        {L"", kStrList, true, L"[]"},
        {L"0x10", kBuffer, false, L"null"},
        {L"(1.9,2,3)", kI32Coord, true, L"1 2 3"},
        {L"[1;2;3]", kI32Coord, true, L"1 2 3"},
        {L"(1,2", kI32Coord, false, L"0 0 0"},
        {L"(1.5,2,3)", kDblCoord, true, L"1.5 2 3"},
        {L"(1,2,3", kDblCoord, false, L"0 0 0"},
        {L"(1.5,2)", kDblCoord2D, true, L"1.5 2"},
        {L"(4,5,6)", kU32Size, true, L"4 5 6"},
        {L"", kU32Size, false, L"0 0 0"},
        {L"(4,5,6)", kImageSize, true, L"4 5 6"},
        {L"m", kUnits, true, L"'m'"},
        {L"5 m", kScalar, true, L"(5,0) 'm'"},
        {L"(1,2) m", kScalar, true, L"(1,2) 'm'"},
        {L"5", kScalar, true, L"(5,0) ''"},
        {L"(U16,12)", kDataType, true, L"3/12"},
        {L"(Bogus,12)", kDataType, true, L"12/0"},
        {L"LineInterleaved x", kLayout, true, L"2"},
        {L"Bogus", kLayout, true, L"4"},
        {L"(RGB,3,0)", kColor, true, L"2:3"},
        {L"BigEndian", kByteOrder, true, L"1"},
        {L"bigendian", kByteOrder, true, L"2"},
        {L"any, text", kList, true, L"[ZetString any, text]"},
        {L"", kList, true, L"[ZetString ]"},
        {L"{a:Int,1}", kMap, true, L"{}"},
        {L"", kMap, true, L"{}"},
        {L"((1,2,3),(4,5,6))", kROI, false, L"7 7 7 + 7 7 7"},
        {L"tile", kTile, false, L"tile 5"},
    };
    for (const TextRow& row : rows) {
        const Outcome outcome = targets()[static_cast<std::size_t>(row.target)].convert(ZetVariant(row.text));
        EXPECT_EQ(outcome, (Outcome{row.success, row.left})) << toMultibyte(row.text) << " to " << row.target;
    }
    // failures whose value is not told
    for (const TextRow& row : {TextRow{L"1,2", kI64Rational, false, L""}, TextRow{L"", kI64Rational, false, L""},
                               TextRow{L"(1,2", kU64Rational, false, L""}, TextRow{L"", kChar, false, L""},
                               TextRow{L" ", kChar, false, L""}, TextRow{L"", kLayout, false, L""},
                               TextRow{L"U16", kDataType, false, L""}, TextRow{L"", kScalar, false, L""}}) {
        EXPECT_FALSE(targets()[static_cast<std::size_t>(row.target)].convert(ZetVariant(row.text)).success)
            << toMultibyte(row.text) << " to " << row.target;
    }
}

// Conversions throw nothing of their own, but what the units of a text throw passes through them.
TEST(ZetCastValueText, badUnitsThrow)
{
    const test::ZetScopedLocale plainNumbers("C");
    const std::pair<const wchar_t*, Number> rows[] = {
        {L"furlong", kUnits}, {L"m^0", kUnits}, {L"5 furlong", kScalar}, {L"(1,2) m (", kScalar}};
    for (const auto& [text, number] : rows) {
        const Target& into = targets()[static_cast<std::size_t>(number)];
        EXPECT_EQ(thrownBy([&, text = text] { into.convert(ZetVariant(text)); }).file(), L"ZetUnits");
    }
    ZetUnits units = makeUnits(L"s");
    ZetScalar scalar(7.0, units);
    EXPECT_THROW(ZetVariant(L"5 furlong").convertTo(&scalar), ZetTextMsg);
    EXPECT_EQ(dump(scalar), L"(7,0) 's'");
    EXPECT_THROW(ZetVariant(L"5 furlong").value<ZetScalar>(), ZetTextMsg);
    EXPECT_THROW(static_cast<void>(ZetVariant(scalar) == ZetVariant(L"5 furlong")), ZetTextMsg);
}

}  // namespace
}  // namespace zet

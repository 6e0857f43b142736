#include <zet/ZetCommonLutHeader>

#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetTokenizer>

#include "support/ZetCollectingHandler"
#include "support/ZetScopedLocale"

namespace zet {
namespace {

using test::postedBy;
using test::thrownBy;
using test::ZetScopedLocale;

void dumpList(std::wostream& out, const std::vector<int>& values)
{
    for (const int value : values) {
        out << L' ' << value;
    }
}

/// All fields of a header in one line.
ZetString dump(const ZetCommonLutHeader& header)
{
    std::wostringstream out;
    out << header.channels << (header.channelsGiven ? L" given " : L" ") << header.type << L' '
        << header.dataType.toString() << (header.dataTypeGiven ? L" given " : L" ") << header.lowestZeroOffset << L";";
    dumpList(out, header.lengths);
    out << L";";
    dumpList(out, header.zeroOffsets);
    return out.str();
}

int parse(const ZetString& text, ZetCommonLutHeader& header)
{
    std::wistringstream in(text);
    ZetTokenizer tokenizer(in, L"{}=$", L"#", L"", L"", L" \t\r\n");
    return parseLutHeader(tokenizer, header);
}

struct GoodRow
{
    const wchar_t* text;
    const wchar_t* dump;
};

const GoodRow kGood[] = {
    {L"{type=l channels=2 length=3 4 zeroOffset=-5 0 dataType=U8}", L"2 given l U8 given -5; 3 4; -5 0"},
    {L"{\n    type= l\n    channels= 1\n    length= 3\n    zeroOffset= 0\n    dataType = I16\n}\n",
     L"1 given l I16 given 0; 3; 0"},
    // comments, and keywords in any case
    {L"# a\n{ # b\nTYPE = l CHANNELS = 1 Length = 3 ZEROoffset = 1 datatype = Float }",
     L"1 given l Float given 1; 3; 1"},
    // the type is compared later, and as it is
    {L"{type=L channels=1 length=3}", L"1 given L  0; 3; 0"},
    // tables and channels are one thing
    {L"{type=l tables=2 length=3 3}", L"2 l  0; 3 3; 0 0"},
    {L"{type=l tables=2 channels=2 length=3 3}", L"2 given l  0; 3 3; 0 0"},
    {L"{type=l tables=2 channels=0 length=3 3}", L"2 given l  0; 3 3; 0 0"},
    {L"{type=l channels=0}", L"0 given l  0;;"},
    {L"{type=l channels=0 channels=1 length=3}", L"1 given l  0; 3; 0"},
    // the end of the input ends the header
    {L"{type=l channels=1 length=3", L"1 given l  0; 3; 0"},
    {L"{type=l length=3 channels=1", L"1 given l  0; 3; 0"},
    // the lowest zero offset is that of those given
    {L"{type=l channels=2 length=3 3 zeroOffset=7 5}", L"2 given l  5; 3 3; 7 5"},
    {L"{type=l channels=3 length=1 1 1 zeroOffset=+7 -5 +2}", L"3 given l  -5; 1 1 1; 7 -5 2"},
    // numbers are what stands at the start of a text, the first of a list may be any
    {L"{type=l channels=2.9 length=x 3x}", L"2 given l  0; 0 3; 0 0"},
    {L"{type=l channels=1 length=-3}", L"1 given l  0; -3; 0"},
    {L"{type=l channels=4294967297 length=4294967299}", L"1 given l  0; 3; 0"},
    // any token is a value
    {L"{type== channels=1 length=}", L"1 given =  0; 0; 0"},
    {L"{type=} channels=1 length=$", L"1 given }  0; 0; 0"},
    // names of data types: the keys, and short names in any case
    {L"{type=l channels=0 dataType=ComplexDouble}", L"0 given l ComplexDouble given 0;;"},
    {L"{type=l channels=0 dataType=U64}", L"0 given l U64 given 0;;"},
    {L"{type=l channels=0 dataType=u64}", L"0 given l  given 0;;"},
    {L"{type=l channels=0 dataType=float}", L"0 given l Float given 0;;"},
    {L"{type=l channels=0 dataType=DOUBLE}", L"0 given l Double given 0;;"},
    {L"{type=l channels=0 dataType=u8}", L"0 given l U8 given 0;;"},
    {L"{type=l channels=0 dataType=i8}", L"0 given l I8 given 0;;"},
    {L"{type=l channels=0 dataType=u16}", L"0 given l U16 given 0;;"},
    {L"{type=l channels=0 dataType=i16}", L"0 given l I16 given 0;;"},
    {L"{type=l channels=0 dataType=u32}", L"0 given l U32 given 0;;"},
    {L"{type=l channels=0 dataType=i32}", L"0 given l I32 given 0;;"},
    {L"{type=l channels=0 dataType=nonsense}", L"0 given l  given 0;;"},
    // the last one counts
    {L"{type=l channels=0 dataType=U8 dataType=U16}", L"0 given l U16 given 0;;"},
};

TEST(ZetCommonLutHeader, goodHeaders)
{
    const ZetScopedLocale plain("C");
    for (const GoodRow& row : kGood) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(row.text)));
        ZetCommonLutHeader header;
        // what was there before is forgotten
        header.channels = 9;
        header.type = L"x";
        header.lengths = {7};
        header.zeroOffsets = {7, 7};
        header.lowestZeroOffset = -77;
        header.dataType = ZetDataType::I8;
        header.dataTypeGiven = header.channelsGiven = true;
        EXPECT_EQ(parse(row.text, header), 0);
        EXPECT_EQ(dump(header), row.dump);
    }
}

struct BadRow
{
    const wchar_t* text;
    const wchar_t* message;
};

const BadRow kBad[] = {
    {L"", L"Unable to find the begin-of-header token '{'."},
    {L"type=l {", L"Unable to find the begin-of-header token '{'."},
    {L"\"\" {", L"Unable to find the begin-of-header token '{'."},
    {L"{type", L"Failed parsing for '='. Previous token: 'type'."},
    {L"{type l", L"Failed parsing for '='. Previous token: 'type'."},
    {L"{nonsense }", L"Failed parsing for '='. Previous token: 'nonsense'."},
    {L"{type=", L"Missing value for keyword 'type'."},
    {L"{tYpe= # l", L"Missing value for keyword 'tYpe'."},
    {L"{length=\"\"", L"Missing value for keyword 'length'."},
    {L"{zeroOffset=", L"Missing value for keyword 'zeroOffset'."},
    {L"{nonsense=", L"Missing value for keyword 'nonsense'."},
    {L"{nonsense=1", L"Unknown header section token 'nonsense'."},
    {L"{channel=1", L"Unknown header section token 'channel'."},

    {L"{tables=1 tables=1", L"Multiple 'tables' keyword definitions"},
    {L"{tables=1 tables=0", L"Multiple 'tables' keyword definitions"},
    {L"{tables=0", L"Invalid value, 0, for keyword 'tables'"},
    {L"{Tables=-3", L"Invalid value, -3, for keyword 'tables'"},
    {L"{tables=x", L"Invalid value, 0, for keyword 'tables'"},
    {L"{type=l Type=l", L"Multiple 'type' keyword definitions"},
    {L"{channels=1 channels=1", L"Multiple 'channels' keyword definitions"},
    {L"{channels=1 channels=-1", L"Multiple 'channels' keyword definitions"},
    {L"{channels=-1", L"Invalid value, -1, for keyword 'channels'"},
    {L"{channels=99999999999999999999", L"Invalid value, -1, for keyword 'channels'"},
    {L"{length=1 2 length=3", L"Multiple 'length' keyword definitions"},
    {L"{zeroOffset=1 zeroOffset=1", L"Multiple 'zeroOffset' keyword definitions"},
    // a token that begins no value is the next keyword
    {L"{length=3 3 nonsense = 1", L"Unknown header section token 'nonsense'."},
    {L"{length=3 -3 type=l", L"Failed parsing for '='. Previous token: '-3'."},
    {L"{length=3 -3 = 1", L"Unknown header section token '-3'."},
    {L"{zeroOffset=3 -3 +3 .3 = 1", L"Unknown header section token '.3'."},
    // one value only for the others
    {L"{channels=1 2", L"Failed parsing for '='. Previous token: '2'."},

    // the keywords together
    {L"{}", L"Missing required 'channel' keyword"},
    {L"{type=l length=1}", L"Missing required 'channel' keyword"},
    {L"{tables=2 channels=3", L"Number of tables, 2, does not equal number of channels, 3"},
    {L"{tables=2 channels=3 type=l length=1 2 3", L"Number of tables, 2, does not equal number of channels, 3"},
    {L"{channels=1 length=3}", L"Missing required 'type' keyword"},
    {L"{channels=1}", L"Missing required 'type' keyword"},
    {L"{channels=1 type=l}", L"Missing required 'length' keyword"},
    {L"{channels=1 type=l length=3 3}", L"Expected 1 length value(s); got 2 length value(s)"},
    {L"{channels=3 type=l length=3 3}", L"Expected 3 length value(s); got 2 length value(s)"},
    {L"{channels=0 type=l length=3}", L"Expected 0 length value(s); got 1 length value(s)"},
    {L"{channels=1 type=b length=3 zeroOffset=0}", L"ZeroOffset keyword is only valid when type is 'l'"},
    {L"{channels=1 type=L length=3 zeroOffset=0 0}", L"ZeroOffset keyword is only valid when type is 'l'"},
    {L"{channels=2 type=l length=3 3 zeroOffset=0}", L"Expected 2 zero offset value(s); got 1 value(s)"},
    {L"{channels=0 type=l zeroOffset=0}", L"Expected 0 zero offset value(s); got 1 value(s)"},
};

TEST(ZetCommonLutHeader, badHeaders)
{
    const ZetScopedLocale plain("C");
    for (const BadRow& row : kBad) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(row.text)));
        ZetCommonLutHeader header;
        EXPECT_EQ(thrownBy([&] { parse(row.text, header); }).text(), row.message);
        int status = 0;
        const auto posted = postedBy([&] { status = parse(row.text, header); });
        EXPECT_EQ(status, 1);
        ASSERT_EQ(posted.size(), 1u);
        EXPECT_EQ(posted[0].text(), row.message);
        EXPECT_EQ(posted[0].file(), L"ZetLutIO");
        EXPECT_EQ(posted[0].kind(), ZetTextMsg::Error);
    }
}

// A literal that does not end: the tokenizer tells it, and the header what it lacks then.
TEST(ZetCommonLutHeader, failureOfTheTokenizer)
{
    ZetCommonLutHeader header;
    int status = 0;
    const auto posted = postedBy([&] { status = parse(L"{type=\"l", header); });
    EXPECT_EQ(status, 1);
    ASSERT_EQ(posted.size(), 2u);
    EXPECT_EQ(posted[0].text(), L"Failed to find closing literal delimiter (\") at line 1.");
    EXPECT_EQ(posted[0].file(), L"ZetTokenizer");
    EXPECT_EQ(posted[1].text(), L"Missing value for keyword 'type'.");
    EXPECT_EQ(thrownBy([&] { parse(L"{type=\"l", header); }), posted[0]);
}

// The lists are as long as the file says with its values, not with its counts.
TEST(ZetCommonLutHeader, countsAskForNoMemory)
{
    ZetCommonLutHeader header;
    const auto posted = postedBy([&] { parse(L"{type=l channels=2147483647 length=1}", header); });
    ASSERT_EQ(posted.size(), 1u);
    EXPECT_EQ(header.lengths.capacity(), 1u);
    EXPECT_TRUE(header.zeroOffsets.empty());
}

}  // namespace
}  // namespace zet

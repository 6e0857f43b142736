#include <zet/ZetLutIO>

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include <zet/ZetBreakPointLut>

#include "lut/ZetNumberText"
#include "support/ZetCollectingHandler"
#include "support/ZetFullBuffer"
#include "support/ZetNoMemory"
#include "support/ZetScopedLocale"

namespace zet {
namespace {

using test::postedBy;
using test::thrownBy;
using test::ZetCollectingHandler;
using test::ZetNoMemory;
using test::ZetScopedLocale;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

template <class T>
ZetLutDesc tableOf(const std::vector<T>& values, ZetDataType::Type type, unsigned int entries, long minIndex,
                   unsigned int bands, bool reuse = false)
{
    const ZetBufferPtr buffer = new ZetBuffer(values.size() * sizeof(T), true);
    std::memcpy(buffer->data(), values.data(), buffer->size());
    return ZetLutDesc(buffer, type, entries, minIndex, bands, reuse);
}

/// The bytes of a table as elements.
template <class T>
std::vector<T> valuesOf(const ZetLutDesc& table)
{
    const T* const values = static_cast<const T*>(table.buffer()->data());
    return std::vector<T>(values, values + table.buffer()->size() / sizeof(T));
}

ZetString written(const ZetLutDesc& table)
{
    std::wostringstream out;
    EXPECT_TRUE(ZetLutIO::writeCommon(table, out));
    return out.str();
}

std::unique_ptr<ZetLutDesc> readFrom(const ZetString& text)
{
    std::wistringstream in(text);
    return std::unique_ptr<ZetLutDesc>(ZetLutIO::readCommon(in));
}

/// A table in one line: the fields, then the values as doubles, bands divided by "|" where they are told.
ZetString dump(const ZetLutDesc* table)
{
    if (!table) {
        return L"null";
    }
    std::wostringstream out;
    out << table->dataType().toString() << L' ' << table->numEntriesPerBand() << L' ' << table->minIndex() << L' '
        << table->numBands() << (table->reuseLutDataForAllBands() ? L" reuse" : L"") << L':';
    const auto values = [&](auto element) {
        for (const auto value : valuesOf<decltype(element)>(*table)) {
            out << L' ' << static_cast<double>(value);
        }
    };
    if (table->buffer()) {
        switch (table->dataType().type()) {
            case ZetDataType::I8:
                values(std::int8_t());
                break;
            case ZetDataType::U8:
                values(std::uint8_t());
                break;
            case ZetDataType::I16:
                values(std::int16_t());
                break;
            case ZetDataType::U16:
                values(std::uint16_t());
                break;
            case ZetDataType::I32:
                values(std::int32_t());
                break;
            case ZetDataType::U32:
                values(std::uint32_t());
                break;
            case ZetDataType::Float:
                values(float());
                break;
            case ZetDataType::Double:
                values(double());
                break;
            default:
                out << L" bytes";
                break;
        }
    }
    return out.str();
}

// --- Writing ---

TEST(ZetLutIO, writesTheFormat)
{
    const ZetScopedLocale plain("C");
    EXPECT_EQ(ZetLutIO().className(), L"ZetLutIO");
    EXPECT_FALSE(ZetLutIO().isMetaObject());
    EXPECT_EQ(written(tableOf<std::uint8_t>({0, 128, 255, 0, 64, 255}, ZetDataType::U8, 3, 0, 2)),
              L"{\n"
              L"    type= l\n"
              L"    channels= 2\n"
              L"    length= 3 3\n"
              L"    zeroOffset= 0 0\n"
              L"    dataType = U8\n"
              L"}\n"
              L"0\n128\n255\n$\n"
              L"0\n64\n255\n$\n");
    EXPECT_EQ(written(ZetLutDesc()), L"{\n    type= l\n    channels= 0\n}\n");
    // bands without entries
    EXPECT_EQ(written(ZetLutDesc(ZetBufferPtr(), ZetDataType::U8, 0, -7, 2, false)),
              L"{\n    type= l\n    channels= 2\n    length= 0 0\n    zeroOffset= -7 -7\n    dataType = U8\n}\n$\n$\n");
}

/// What stands behind the header of a table of one band.
template <class T>
ZetString writtenValues(const std::vector<T>& values, ZetDataType::Type type)
{
    const ZetString text = written(tableOf(values, type, static_cast<unsigned int>(values.size()), 0, 1));
    return text.substr(text.find(L'}') + 2);
}

TEST(ZetLutIO, writesEachType)
{
    const ZetScopedLocale plain("C");
    EXPECT_EQ(writtenValues<std::int8_t>({-128, -1, 0, 65, 127}, ZetDataType::I8), L"-128\n-1\n0\n65\n127\n$\n");
    EXPECT_EQ(writtenValues<std::uint8_t>({0, 10, 65, 255}, ZetDataType::U8), L"0\n10\n65\n255\n$\n");
    EXPECT_EQ(writtenValues<std::int16_t>({-32768, 32767}, ZetDataType::I16), L"-32768\n32767\n$\n");
    EXPECT_EQ(writtenValues<std::uint16_t>({0, 65535}, ZetDataType::U16), L"0\n65535\n$\n");
    EXPECT_EQ(writtenValues<std::int32_t>({-2147483647 - 1, 2147483647}, ZetDataType::I32),
              L"-2147483648\n2147483647\n$\n");
    EXPECT_EQ(writtenValues<std::uint32_t>({4294967295u}, ZetDataType::U32), L"4294967295\n$\n");
    // as many digits as tell every value apart
    EXPECT_EQ(writtenValues<float>({0.1f, 1.0f / 3, 16777216.0f, 1e-20f, -0.0f}, ZetDataType::Float),
              L"0.100000001\n0.333333343\n16777216\n9.99999968e-21\n-0\n$\n");
    EXPECT_EQ(writtenValues<double>({0.1, 1.0 / 3, 1e300, 5e-324, 123456789012345678.0}, ZetDataType::Double),
              L"0.10000000000000001\n0.33333333333333331\n1.0000000000000001e+300\n4.9406564584124654e-324\n"
              L"1.2345678901234568e+17\n$\n");
    EXPECT_EQ(writtenValues<double>({kInfinity, -kInfinity, std::nan("")}, ZetDataType::Double),
              L"inf\n-inf\nnan\n$\n");
}

TEST(ZetLutIO, bandsFollowOneAnother)
{
    const ZetScopedLocale plain("C");
    // more values than are gathered before they go to the stream; the flag plays no part
    std::vector<std::uint16_t> values;
    ZetString expected;
    for (int i = 0; i < 3 * 5000; ++i) {
        values.push_back(static_cast<std::uint16_t>(i * 13));
        expected += std::to_wstring(values.back()) + L"\n" + (i % 5000 == 4999 ? L"$\n" : L"");
    }
    const ZetString text = written(tableOf(values, ZetDataType::U16, 5000, 0, 3, true));
    EXPECT_TRUE(text.substr(text.find(L'}') + 2) == expected);
}

TEST(ZetLutIO, numbersAreWrittenAsTheStreamDoes)
{
    const auto header = [](const ZetString& text) { return text.substr(text.find(L'}') + 2); };
    const ZetLutDesc table = tableOf<std::int16_t>({-1, 1000, 30000}, ZetDataType::I16, 3, 0, 1);
    {
        const ZetScopedLocale plain("C");
        std::wostringstream out;
        out << std::hex << std::showbase << std::showpos;
        ZetLutIO::writeCommon(table, out);
        EXPECT_EQ(header(out.str()), L"0xffff\n0x3e8\n0x7530\n$\n");
    }
    const ZetScopedLocale german("de_DE.UTF-8");
    ASSERT_TRUE(german.isSet());
    EXPECT_EQ(header(written(table)), L"-1\n1.000\n30.000\n$\n");
    EXPECT_EQ(header(written(tableOf<double>({0.5}, ZetDataType::Double, 1, 0, 1))), L"0,5\n$\n");
}

TEST(ZetLutIO, precisionIsRestored)
{
    const ZetScopedLocale plain("C");
    std::wostringstream out;
    out.precision(3);
    EXPECT_TRUE(ZetLutIO::writeCommon(tableOf<float>({1.0f / 3}, ZetDataType::Float, 1, 0, 1), out));
    EXPECT_TRUE(ZetLutIO::writeCommon(tableOf<double>({1.0 / 3}, ZetDataType::Double, 1, 0, 1), out));
    EXPECT_EQ(out.precision(), 3);
    out.str(L"");
    out << std::fixed;
    EXPECT_TRUE(ZetLutIO::writeCommon(tableOf<float>({0.5f}, ZetDataType::Float, 1, 0, 1), out));
    EXPECT_NE(out.str().find(L"\n0.500000000\n$"), ZetString::npos);
}

TEST(ZetLutIO, streamThatCannotTakeAll)
{
    const ZetLutDesc table = tableOf(std::vector<float>(3000, 0.1f), ZetDataType::Float, 3000, 0, 1);
    const std::size_t length = written(table).size();
    // in the header, in the first values, behind them, and just before the end
    for (const std::size_t room : {std::size_t{0}, std::size_t{40}, std::size_t{100}, length / 2, length - 1}) {
        SCOPED_TRACE(room);
        test::ZetFullBuffer buffer(room);
        std::wostream out(&buffer);
        out.precision(3);
        ZetLutIO::writeCommon(table, out);
        EXPECT_TRUE(out.bad());
        EXPECT_EQ(out.precision(), 3);

        test::ZetFullBuffer again(room);
        std::wostream throwing(&again);
        throwing.precision(3);
        throwing.exceptions(std::ios_base::badbit);
        EXPECT_THROW(ZetLutIO::writeCommon(table, throwing), std::ios_base::failure);
        EXPECT_EQ(throwing.precision(), 3);
    }
}

TEST(ZetLutIO, typesThatAreNotWritten)
{
    const ZetScopedLocale plain("C");
    for (const ZetDataType::Type type : {ZetDataType::I64, ZetDataType::U64, ZetDataType::ComplexFloat,
                                         ZetDataType::ComplexDouble, ZetDataType::Invalid}) {
        const ZetLutDesc table = tableOf<double>({1, 2, 3, 4}, type, 1, 0, 2);
        std::wostringstream out;
        bool isWritten = true;
        const auto posted = postedBy([&] { isWritten = ZetLutIO::writeCommon(table, out); });
        EXPECT_FALSE(isWritten);
        ASSERT_EQ(posted.size(), 1u);
        EXPECT_EQ(posted[0].text(), L"Invalid data type.");
        EXPECT_EQ(posted[0].file(), L"ZetLutIO");
        EXPECT_EQ(out.str(), L"{\n    type= l\n    channels= 2\n    length= 1 1\n    zeroOffset= 0 0\n    dataType = " +
                                 ZetDataType(type).toString() + L"\n}\n");
        EXPECT_EQ(thrownBy([&] { ZetLutIO::writeCommon(table, out); }).text(), L"Invalid data type.");
    }
}

TEST(ZetLutIO, dataThatAreMissing)
{
    const ZetScopedLocale plain("C");
    std::wostringstream out;
    const auto posted = postedBy([&] {
        EXPECT_FALSE(ZetLutIO::writeCommon(ZetLutDesc(ZetBufferPtr(), ZetDataType::U8, 1, 0, 1, false), out));
        const ZetBufferPtr empty = new ZetBuffer(4, false);
        EXPECT_FALSE(ZetLutIO::writeCommon(ZetLutDesc(empty, ZetDataType::U8, 1, 0, 1, false), out));
        out.str(L"");
        EXPECT_FALSE(ZetLutIO::writeCommon(tableOf<std::uint16_t>({1, 2, 3}, ZetDataType::U16, 2, 0, 2), out));
    });
    ASSERT_EQ(posted.size(), 3u);
    EXPECT_EQ(posted[0].text(), L"Missing data of band 0.");
    EXPECT_EQ(posted[1].text(), L"Missing data of band 0.");
    EXPECT_EQ(posted[2].text(), L"Missing data of band 1.");
    EXPECT_NE(out.str().find(L"}\n1\n2\n$\n"), ZetString::npos);
    EXPECT_EQ(thrownBy([&] {
                  ZetLutIO::writeCommon(ZetLutDesc(ZetBufferPtr(), ZetDataType::U8, 0xffffffffu, 0, 0xffu, false), out);
              }).text(),
              L"Missing data of band 0.");
}

// --- Full tables ---

struct ReadRow
{
    const wchar_t* text;
    const wchar_t* table;
};

const ReadRow kRead[] = {
    {L"{type=l channels=1 length=3 dataType=U8} 10 20 30 $", L"U8 3 0 1: 10 20 30"},
    {L"{type=l channels=2 length=2 2 dataType=I16} 1 -2 $ # next\n3 4$", L"I16 2 0 2: 1 -2 3 4"},
    {L"{type=l channels=0}", L" 0 0 0 reuse:"},
    {L"{type=l channels=0} any thing", L" 0 0 0 reuse:"},
    // short names and keys of types
    {L"{type=l channels=1 length=1 dataType=u16} 7 $", L"U16 1 0 1: 7"},
    {L"{type=l channels=1 length=1 dataType=U16} 7 $", L"U16 1 0 1: 7"},
    // bands that start elsewhere repeat their ends
    {L"{type=l channels=2 length=3 3 zeroOffset=-5 0 dataType=U8} 1 2 3 $ 4 5 6 $",
     L"U8 8 -5 2: 1 2 3 3 3 3 3 3 4 4 4 4 4 4 5 6"},
    {L"{type=l channels=3 length=1 2 5 zeroOffset=7 9 6 dataType=I8} 1$ 2 3$ 4 5 6 7 8$",
     L"I8 5 6 3: 1 1 1 1 1 2 2 2 2 3 4 5 6 7 8"},
    // whole numbers are cut toward zero through 32 bits, and wrap
    {L"{type=l channels=1 length=6 dataType=U8} 300 -1 2.9 -2.9 256 1e9 $", L"U8 6 0 1: 44 255 2 254 0 0"},
    {L"{type=l channels=1 length=4 dataType=I8} 200 -129 1e10 nan $", L"I8 4 0 1: -56 127 0 0"},
    {L"{type=l channels=1 length=3 dataType=I16} 40000 65536 -40000 $", L"I16 3 0 1: -25536 0 25536"},
    {L"{type=l channels=1 length=3 dataType=U16} 65537 -2 1.99 $", L"U16 3 0 1: 1 65534 1"},
    {L"{type=l channels=1 length=4 dataType=I32} 2147483647.9 2147483648 -1e300 nan $",
     L"I32 4 0 1: 2.14748e+09 -2.14748e+09 -2.14748e+09 -2.14748e+09"},
    {L"{type=l channels=1 length=4 dataType=U32} 4294967295 4294967297 -1 1e300 $",
     L"U32 4 0 1: 4.29497e+09 1 4.29497e+09 0"},
    {L"{type=l channels=1 length=3 dataType=Float} 0.1 -2.5 1e300 $", L"Float 3 0 1: 0.1 -2.5 inf"},
    // any text is a value
    {L"{type=l channels=1 length=4 dataType=I16} abc 12x = { $", L"I16 4 0 1: 0 12 0 0"},
    {L"{type=l channels=1 length=2 dataType=I16} \"5\" } $", L"I16 2 0 1: 5 0"},
    // without a type, the smallest that holds the values
    {L"{type=l channels=1 length=2} 0 255 $", L"U8 2 0 1: 0 255"},
    {L"{type=l channels=1 length=2} 256 0 $", L"U16 2 0 1: 256 0"},
    {L"{type=l channels=1 length=2} 70000 0 $", L"U32 2 0 1: 70000 0"},
    {L"{type=l channels=1 length=3} 0 -1 127 $", L"I8 3 0 1: 0 -1 127"},
    {L"{type=l channels=1 length=2} -1 128 $", L"I16 2 0 1: -1 128"},
    {L"{type=l channels=1 length=2} -1 40000 $", L"I32 2 0 1: -1 40000"},
    {L"{type=l channels=1 length=2} 0.5 1.5 $", L"U8 2 0 1: 0 1"},
    {L"{type=l channels=1 length=2} -1e30 1 $", L"Float 2 0 1: -1e+30 1"},
    // nothing is looked for behind the last band
    {L"{type=l channels=1 length=1} 1 $ 2 $ {", L"U8 1 0 1: 1"},
};

TEST(ZetLutIO, readsTables)
{
    const ZetScopedLocale plain("C");
    for (const ReadRow& row : kRead) {
        EXPECT_EQ(dump(readFrom(row.text).get()), row.table) << ::testing::PrintToString(std::wstring(row.text));
    }
}

TEST(ZetLutIO, lastBandDecidesTheType)
{
    const ZetScopedLocale plain("C");
    EXPECT_EQ(dump(readFrom(L"{type=l channels=2 length=2 2} 300 -1 $ 1 2 $").get()), L"U8 2 0 2: 44 255 1 2");
    EXPECT_EQ(dump(readFrom(L"{type=l channels=2 length=2 2} 1 2 $ 300 -1 $").get()), L"I16 2 0 2: 1 2 300 -1");
}

TEST(ZetLutIO, tableOfADoubleFile)
{
    const ZetScopedLocale plain("C");
    const ZetString text = L"{type=l channels=2 length=2 1 zeroOffset=5 6 dataType=Double} 0.1 1e300 $ -3 $";
    const auto table = readFrom(text);
    EXPECT_EQ(dump(table.get()), L"Double 5 2 1: 0.1 1e+300 -3 -3");
    EXPECT_TRUE(table->buffer()->ownsMemory());
    EXPECT_TRUE(table->buffer()->isExternal());
    EXPECT_EQ(valuesOf<double>(*table), (std::vector<double>{0.1, 1e300, -3, -3}));
    EXPECT_EQ(dump(readFrom(L"{type=l channels=1 length=1 zeroOffset=-1 dataType=double} 2 $").get()),
              L"Double 4294967295 1 1: 2");
    // also where the values make it a double
    EXPECT_EQ(dump(readFrom(L"{type=l channels=1 length=2} -1 1e300 $").get()), L"Double 0 1 1: -1 1e+300");
    // what it tells of itself is not there to be written
    const auto posted = postedBy([&] {
        std::wostringstream out;
        EXPECT_FALSE(ZetLutIO::writeCommon(*table, out));
    });
    ASSERT_EQ(posted.size(), 1u);
    EXPECT_EQ(posted[0].text(), L"Missing data of band 0.");
}

TEST(ZetLutIO, whatIsWrittenReadsBack)
{
    const ZetScopedLocale plain("C");
    std::mt19937 random(7);
    std::vector<std::uint8_t> bytes(3 * 256 * 4);
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(random());
    }
    for (const ZetDataType::Type type :
         {ZetDataType::I8, ZetDataType::U8, ZetDataType::I16, ZetDataType::U16, ZetDataType::I32, ZetDataType::U32}) {
        const auto size = static_cast<std::size_t>(ZetDataType(type).size());
        const ZetLutDesc table =
            tableOf(std::vector<std::uint8_t>(bytes.begin(), bytes.begin() + static_cast<long>(3 * 256 * size)), type,
                    256, -128, 3);
        const auto again = readFrom(written(table));
        ASSERT_TRUE(again);
        EXPECT_TRUE(*again == table) << type;
    }
    std::vector<float> floats;
    for (int i = 0; i < 1000; ++i) {
        floats.push_back(std::ldexp(static_cast<float>(random()), static_cast<int>(random() % 200) - 120));
    }
    const ZetLutDesc table = tableOf(floats, ZetDataType::Float, 500, 3, 2);
    EXPECT_TRUE(*readFrom(written(table)) == table);
}

TEST(ZetLutIO, streamStandsBehindTheLastSection)
{
    std::wistringstream in(L"{type=l channels=1 length=1} 7 $rest");
    const std::unique_ptr<ZetLutDesc> table(ZetLutIO::readCommon(in));
    std::wstring rest;
    in >> rest;
    EXPECT_EQ(rest, L"rest");
    // so that files may follow one another
    const ZetString two = L"{type=l channels=1 length=1} 7 $\n{type=l channels=1 length=1} 8 $";
    std::wistringstream files(two);
    EXPECT_EQ(dump(std::unique_ptr<ZetLutDesc>(ZetLutIO::readCommon(files)).get()), L"U8 1 0 1: 7");
    EXPECT_EQ(dump(std::unique_ptr<ZetLutDesc>(ZetLutIO::readCommon(files)).get()), L"U8 1 0 1: 8");
    EXPECT_TRUE(files.good());
}

TEST(ZetLutIO, quotesInFiles)
{
    const ZetScopedLocale plain("C");
    // quoted or not, "{", "}", "=" and "$" are the same
    EXPECT_EQ(dump(readFrom(L"\"{\" \"type\" \"=\" \"l\" channels=1 length=1 \"}\" 7 \"$\"").get()), L"U8 1 0 1: 7");
    // an empty literal ends the header
    EXPECT_EQ(dump(readFrom(L"{type=l channels=1 length=1 \"\" 7 $").get()), L"U8 1 0 1: 7");
    EXPECT_EQ(thrownBy([] { readFrom(L"{type=l channels=1 \"\" length=1} 7 $"); }).text(),
              L"Missing required 'length' keyword");
}

// --- Break points ---

/// The table that break points make, read by the rules of tables.
ZetString pointTable(const ZetString& text)
{
    const auto table = readFrom(text);
    if (!table) {
        return L"null";
    }
    // the ends and some places between
    const ZetString all = dump(table.get());
    return all.substr(0, all.find(L':'));
}

TEST(ZetLutIO, readsBreakPoints)
{
    const ZetScopedLocale plain("C");
    const auto table = readFrom(L"{type=b channels=2 length=2 3}\n0 0\n255 255 $ # first\n0 255 128 0 255 100 $\n");
    ASSERT_TRUE(table);
    ZetBreakPointLut points(ZetDataType::U8);
    points.add(ZetBreakPoint(0, 0, 0));
    points.add(ZetBreakPoint(255, 255, 0));
    points.add(ZetBreakPoint(0, 255, 1));
    points.add(ZetBreakPoint(128, 0, 1));
    points.add(ZetBreakPoint(255, 100, 1));
    EXPECT_TRUE(*table == *points.lut(ZetDataType::U8));
    EXPECT_EQ(table->numBands(), 2u);
    EXPECT_FALSE(table->reuseLutDataForAllBands());

    // the types: of the header, or the smallest; a float type is that of the input too
    EXPECT_EQ(pointTable(L"{type=b channels=1 length=2} 0 0 255 255 $"), L"U8 256 0 1 reuse");
    EXPECT_EQ(pointTable(L"{type=b channels=1 length=2} 0 0 256 255 $"), L"U8 65536 0 1 reuse");
    EXPECT_EQ(pointTable(L"{type=b channels=1 length=2} -1 0 100 256 $"), L"U16 256 -128 1 reuse");
    EXPECT_EQ(pointTable(L"{type=b channels=1 length=2} -1 -0.5 100 256 $"), L"I16 256 -128 1 reuse");
    EXPECT_EQ(pointTable(L"{type=b channels=1 length=2 dataType=U16} 0 0 255 255 $"), L"U16 256 0 1 reuse");
    EXPECT_EQ(pointTable(L"{type=b channels=1 length=2 dataType=float} 0 0 255 255 $"), L"Float 65536 -32768 1 reuse");
    EXPECT_EQ(pointTable(L"{type=b channels=1 length=2 dataType=Double} 0 0 255 255 $"),
              L"Double 65536 -32768 1 reuse");
    // without bands, the ramp of one-byte types
    EXPECT_EQ(pointTable(L"{type=b channels=0}"), L"U8 256 0 1 reuse");

    // inputs are whole numbers as a stream reads them
    EXPECT_EQ(dump(readFrom(L"{type=b channels=1 length=2 dataType=U8} abc 7 255.9 7 $").get()).substr(0, 24),
              L"U8 256 0 1 reuse: 7 7 7 ");
    // one beyond 32 bits is the greatest, and U32 has too many values
    const auto posted = postedBy([] { readFrom(L"{type=b channels=1 length=2} 0 0 99999999999 255 $"); });
    ASSERT_EQ(posted.size(), 1u);
    EXPECT_EQ(posted[0].text(), L"Could not allocate 4294967296 for LUT data.");
    EXPECT_EQ(posted[0].file(), L"ZetBreakPointLut");
}

TEST(ZetLutIO, rangeOfBreakPoints)
{
    const ZetScopedLocale plain("C");
    // falling outputs: none of them counts as the highest, so the type is U8 and the first does not fit
    const ZetString falling = L"{type=b channels=1 length=3} 0 1000 1 500 2 0 $";
    const wchar_t* const message =
        L"Maximum output value (1000) for all bands is larger than maximum (255) for bit depth.";
    EXPECT_EQ(thrownBy([&] { readFrom(falling); }).text(), message);
    std::unique_ptr<ZetLutDesc> table;
    const auto posted = postedBy([&] { table = readFrom(falling); });
    EXPECT_FALSE(table);
    ASSERT_EQ(posted.size(), 1u);
    EXPECT_EQ(posted[0].text(), message);
    EXPECT_EQ(posted[0].file(), L"ZetBreakPointLut");

    // the latest that is no new lowest is the highest, in spite of a higher one before
    EXPECT_EQ(thrownBy([&] { readFrom(L"{type=b channels=1 length=4} 0 0 1 1000 2 500 3 9 $"); }).text(), message);
    EXPECT_EQ(pointTable(L"{type=b channels=1 length=4} 0 0 1 500 2 9 3 1000 $"), L"U16 256 0 1 reuse");
    // the range goes on from band to band
    EXPECT_EQ(pointTable(L"{type=b channels=2 length=2 2} 0 0 1 1 $ 0 1000 1 1000 $"), L"U16 256 0 2");
    // falling inputs alike
    EXPECT_EQ(thrownBy([&] { readFrom(L"{type=b channels=1 length=2} 300 0 0 1 $"); }).text(),
              L"Maximum input value (300) for all bands is larger than maximum (255) for bit depth.");
}

// --- Failures ---

const ReadRow kFailures[] = {
    {L"{type=x channels=0}", L"Invalid type value, x Valid types are 'l' for LUT and 'b' for breakpoint"},
    {L"{type=L channels=1 length=1} 1 $", L"Invalid type value, L Valid types are 'l' for LUT and 'b' for breakpoint"},
    {L"nothing", L"Unable to find the begin-of-header token '{'."},

    {L"{type=l channels=2 length=3 0} 1 2 3 $ $", L"Invalid value, 0, for keyword 'length'"},
    {L"{type=l channels=1 length=-3} $", L"Invalid value, -3, for keyword 'length'"},
    {L"{type=l channels=1 length=x} $", L"Invalid value, 0, for keyword 'length'"},
    {L"{type=l channels=1 length=2}", L"Missing lut out value"},
    {L"{type=l channels=1 length=2} $", L"Missing lut out value"},
    {L"{type=l channels=1 length=2} \"\" 1 $", L"Missing lut out value"},
    {L"{type=l channels=1 length=2} 1", L"Missing lut value"},
    {L"{type=l channels=1 length=2} 1 $", L"Missing lut value"},
    {L"{type=l channels=1 length=2} 1 \"$\" 2", L"Missing lut value"},
    {L"{type=l channels=2 length=1 1} 1 $ $", L"Missing lut out value"},
    {L"{type=l channels=1 length=2} 10 20 30 $", L"Failed to find expected end of data section symbol, $"},
    {L"{type=l channels=1 length=2} 10 20", L"Failed to find expected end of data section symbol, $"},
    // a length alone asks for nothing
    {L"{type=l channels=1 length=2147483647 dataType=Double} 1 2 3 $", L"Missing lut value"},
    {L"{type=l channels=1 length=1 dataType=nonsense} 1 $", L"Invalid data type."},
    {L"{type=l channels=1 length=1 dataType=I64} 1 $", L"Invalid data type."},
    {L"{type=l channels=1 length=1 dataType=U64} 1 $", L"Invalid data type."},
    {L"{type=l channels=1 length=1 dataType=ComplexFloat} 1 $", L"Invalid data type."},
    {L"{type=l channels=1 length=1 dataType=ComplexDouble} 1 $", L"Invalid data type."},
    {L"{type=l channels=1 length=1} 1e300 $", L"Invalid data type."},
    {L"{type=l channels=1 length=2} -1 3e9 $", L"Invalid data type."},
    // 2^32 entries a band
    {L"{type=l channels=2 length=1 1 zeroOffset=-2147483648 2147483647 dataType=U16} 1 $ 2 $",
     L"Could not allocate 17179869184 for LUT data."},

    {L"{type=b channels=1 length=2}", L"Missing 'in' breakpoint value"},
    {L"{type=b channels=1 length=2} $", L"Missing 'in' breakpoint value"},
    {L"{type=b channels=1 length=2} 0 0 $", L"Missing 'in' breakpoint value"},
    {L"{type=b channels=1 length=2} 0", L"Missing 'out' breakpoint value"},
    {L"{type=b channels=1 length=2} 0 $", L"Missing 'out' breakpoint value"},
    {L"{type=b channels=1 length=2} 0 0 1 1", L"Failed to find expected end of data section symbol, $"},
    {L"{type=b channels=1 length=2} 0 0 1 1 2 2 $", L"Failed to find expected end of data section symbol, $"},
    {L"{type=b channels=1 length=2} 0 0 1 1 $ 2", L"Found unexpected token, 2, at end of data section"},
    {L"{type=b channels=1 length=2} 0 0 1 1 $ $", L"Found unexpected token, $, at end of data section"},
    // a length below 1 is never reached
    {L"{type=b channels=1 length=0} 0 0 1 1 $", L"Missing 'in' breakpoint value"},
    {L"{type=b channels=1 length=-1} $", L"Missing 'in' breakpoint value"},
    {L"{type=b channels=1 length=2 dataType=nonsense} 0 0 1 1 $", L"Output data type () is not valid."},
    {L"{type=b channels=1 length=1} 0 0 $", L"Band 0 does not have at least two break points."},
    {L"{type=b channels=1 length=2 dataType=ComplexFloat} 0 0 1 1 $", L"Invalid data type"},
    // the greatest value of the type, as a double, is one more than 64 bits hold
    {L"{type=b channels=1 length=2 dataType=I64} 0 0 1 1 $",
     L"Maximum output value (1) for all bands is larger than maximum (-9223372036854775808) for bit depth."},
    {L"{type=b channels=1 length=2 zeroOffset=0} 0 0 1 1 $", L"ZeroOffset keyword is only valid when type is 'l'"},
};

TEST(ZetLutIO, failures)
{
    const ZetScopedLocale plain("C");
    for (const ReadRow& row : kFailures) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(row.text)));
        EXPECT_EQ(thrownBy([&] { readFrom(row.text); }).text(), row.table);
        std::unique_ptr<ZetLutDesc> table;
        const auto posted = postedBy([&] { table = readFrom(row.text); });
        EXPECT_FALSE(table);
        ASSERT_EQ(posted.size(), 1u);
        EXPECT_EQ(posted[0].text(), row.table);
    }
}

TEST(ZetLutIO, streamThatFailed)
{
    std::wistringstream in;
    in.setstate(std::ios_base::failbit);
    EXPECT_EQ(thrownBy([&] { ZetLutIO::readCommon(in); }).text(), L"Invalid input stream for the tokenizer.");
    const ZetCollectingHandler posted;
    EXPECT_EQ(ZetLutIO::readCommon(in), nullptr);
    EXPECT_EQ(posted.texts(), (std::vector<ZetString>{L"Invalid input stream for the tokenizer.",
                                                      L"Invalid input stream for the tokenizer.",
                                                      L"Unable to find the begin-of-header token '{'."}));
}

TEST(ZetLutIO, memoryThatCannotBeHad)
{
    const ZetScopedLocale plain("C");
    const ZetNoMemory none;
    const ZetString one = L"{type=l channels=2 length=3 3 dataType=U16} 1 2 3 $ 4 5 6 $";
    EXPECT_EQ(thrownBy([&] { readFrom(one); }).text(), L"Cannot allocate '12' bytes for buffer.");
    const ZetString two = L"{type=l channels=1 length=2 dataType=Double} 1 2 $";
    EXPECT_EQ(thrownBy([&] { readFrom(two); }).text(), L"Could not allocate 16 for LUT data.");
    const ZetCollectingHandler posted;
    EXPECT_FALSE(readFrom(one));
    EXPECT_FALSE(readFrom(two));
    EXPECT_EQ(posted.texts(),
              (std::vector<ZetString>{L"Cannot allocate '12' bytes for buffer.", L"Could not allocate 12 for LUT data.",
                                      L"Could not allocate 16 for LUT data."}));
}

// --- Numbers ---

TEST(ZetLutIO, numbersAreThoseOfAtof)
{
    std::mt19937_64 random(11);
    std::vector<ZetString> texts = {L"",
                                    L"-",
                                    L"--1",
                                    L"+5",
                                    L"0",
                                    L"-0",
                                    L"007",
                                    L"1.5",
                                    L"1,5",
                                    L"1e3",
                                    L"12x",
                                    L"x12",
                                    L" 12",
                                    L"0x1",
                                    L"inf",
                                    L"nan",
                                    L"1.",
                                    L".5",
                                    L"-.5",
                                    L"1 2",
                                    L"\x661\x662",
                                    L"-x",
                                    L"99999999999999999999",
                                    L"999999999999999",
                                    L"9007199254740993",
                                    L"-999999999999999",
                                    L"1000000000000000"};
    for (int i = 0; i < 2000; ++i) {
        texts.push_back(std::to_wstring(static_cast<long>(random()) >> (random() % 64)));
    }
    for (const char* locale : {"C", "de_DE.UTF-8"}) {
        const ZetScopedLocale scoped(locale);
        ASSERT_TRUE(scoped.isSet());
        for (const ZetString& text : texts) {
            const double expected = zet::atof(text);
            const double number = internal::toDouble(text);
            EXPECT_EQ(std::memcmp(&number, &expected, sizeof number), 0) << ::testing::PrintToString(text);
        }
    }
}

}  // namespace
}  // namespace zet

#include <zet/ZetDataType>

#include <cmath>
#include <limits>
#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetDataTypeInfo>
#include <zet/ZetEnum>
#include <zet/ZetStrList>
#include <zet/ZetVariant>

namespace zet {
namespace {

struct TypeRow
{
    int number;
    const wchar_t* key;
    int size;
    double min;
    double max;
    bool isSigned;
    bool isInteger;
    bool isFloat;
    bool isComplex;
};

const double kTwo63 = std::pow(2.0, 63);
const double kTwo64 = std::pow(2.0, 64);

const TypeRow kTypes[] = {
    //                                                       signed integer float complex
    {0, L"I8", 1, -128, 127, true, true, false, false},
    {1, L"U8", 1, 0, 255, false, true, false, false},
    {2, L"I16", 2, -32768, 32767, true, true, false, false},
    {3, L"U16", 2, 0, 65535, false, true, false, false},
    {4, L"I32", 4, -2147483648.0, 2147483647.0, true, true, false, false},
    {5, L"U32", 4, 0, 4294967295.0, false, true, false, false},
    {6, L"I64", 8, -kTwo63, kTwo63, true, true, false, false},
    {7, L"U64", 8, 0, kTwo64, false, true, false, false},
    {8, L"Float", 4, -3.4028234663852886e38, 3.4028234663852886e38, true, false, true, false},
    {9, L"Double", 8, -1.7976931348623157e308, 1.7976931348623157e308, true, false, true, false},
    {10, L"ComplexFloat", 8, -3.4028234663852886e38, 3.4028234663852886e38, true, false, false, true},
    {11, L"ComplexDouble", 16, -1.7976931348623157e308, 1.7976931348623157e308, true, false, false, true},
    {12, L"", 0, 0, 0, true, false, false, false},
};

ZetDataType typeOf(int number)
{
    return static_cast<ZetDataType::Type>(number);
}

TEST(ZetDataType, table)
{
    for (const TypeRow& row : kTypes) {
        SCOPED_TRACE(row.number);
        const ZetDataType type = typeOf(row.number);
        EXPECT_EQ(type.type(), row.number);
        EXPECT_EQ(type.toString(), row.key);
        EXPECT_EQ(type.size(), row.size);
        EXPECT_EQ(type.logicalBitDepth(), static_cast<unsigned int>(row.size) * 8);
        EXPECT_EQ(type.physicalMinValue(), row.min);
        EXPECT_EQ(type.physicalMaxValue(), row.max);
        EXPECT_EQ(type.isSigned(), row.isSigned);
        EXPECT_EQ(type.isInteger(), row.isInteger);
        EXPECT_EQ(type.isFloat(), row.isFloat);
        EXPECT_EQ(type.isComplex(), row.isComplex);
        EXPECT_EQ(ZetDataType(ZetString(row.key)), type);
        EXPECT_EQ(ZetDataType::fromString(row.key), row.number);
        EXPECT_EQ(ZetDataType::isValid(row.key), row.number < 12);
    }
    EXPECT_EQ(ZetDataType::allKeys().size(), 12u);
    EXPECT_EQ(ZetDataType::enumerator().items().size(), 12u);
    EXPECT_EQ(ZetDataType().className(), L"ZetDataType");
}

TEST(ZetDataType, everyItemCarriesItsInfo)
{
    for (int i = 0; i < 12; ++i) {
        const ZetVariant data = ZetDataType::enumerator().data(i);
        EXPECT_EQ(data.typeName(), L"ZetDataTypeInfo");
        const ZetDataTypeInfo info = data.value<ZetDataTypeInfo>();
        EXPECT_EQ(info, ZetDataTypeInfo(kTypes[i].size, kTypes[i].min, kTypes[i].max)) << i;
    }
    EXPECT_FALSE(ZetDataType::enumerator().data(12).isValid());
}

TEST(ZetDataType, invalidNumbersAndKeys)
{
    for (const int number : {12, 13, 1000, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        const ZetDataType type(static_cast<ZetDataType::Type>(number), 8);
        EXPECT_EQ(type.type(), ZetDataType::Invalid) << number;
        EXPECT_EQ(type.logicalBitDepth(), 0u) << number;
    }
    for (const wchar_t* key : {L"u16", L"", L"U16 ", L"Invalid"}) {
        EXPECT_EQ(ZetDataType(ZetString(key)), ZetDataType()) << ZetString(key).size();
        EXPECT_FALSE(ZetDataType::isValid(key));
    }
    EXPECT_EQ(ZetDataType().logicalMinValue(), 0.0);
    EXPECT_EQ(ZetDataType().logicalMaxValue(), 0.0);
}

struct DepthRow
{
    ZetDataType::Type type;
    unsigned int given;
    unsigned int depth;
    double min;
    double max;
};

const DepthRow kDepths[] = {
    // a depth within the type is kept
    {ZetDataType::U16, 12, 12, 0, 4095},
    {ZetDataType::U16, 16, 16, 0, 65535},
    {ZetDataType::U8, 1, 1, 0, 1},
    {ZetDataType::I8, 1, 1, -1, 0},
    {ZetDataType::I16, 12, 12, -2048, 2047},
    {ZetDataType::I32, 32, 32, -2147483648.0, 2147483647.0},
    {ZetDataType::U64, 63, 63, 0, kTwo63},
    // 0 and what is too much give the full depth
    {ZetDataType::U16, 0, 16, 0, 65535},
    {ZetDataType::U16, 17, 16, 0, 65535},
    {ZetDataType::U64, 0, 64, 0, kTwo64},
    {ZetDataType::I64, 65, 64, -kTwo63, kTwo63},
    // so does any depth of a type that is no integer
    {ZetDataType::Float, 12, 32, -3.4028234663852886e38, 3.4028234663852886e38},
    {ZetDataType::ComplexDouble, 64, 128, -1.7976931348623157e308, 1.7976931348623157e308},
};

TEST(ZetDataType, logicalBitDepth)
{
    for (const DepthRow& row : kDepths) {
        SCOPED_TRACE(testing::Message() << "type " << row.type << " given " << row.given);
        ZetDataType type(row.type, row.given);
        EXPECT_EQ(type.logicalBitDepth(), row.depth);
        EXPECT_EQ(type.logicalMinValue(), row.min);
        EXPECT_EQ(type.logicalMaxValue(), row.max);
        type.setLogicalBitDepth(3);
        type.setLogicalBitDepth(row.given);
        EXPECT_EQ(type.logicalBitDepth(), row.depth);
    }
}

TEST(ZetDataType, equalityLooksAtTheDepth)
{
    EXPECT_NE(ZetDataType(ZetDataType::U16, 12), ZetDataType(ZetDataType::U16));
    EXPECT_EQ(ZetDataType(ZetDataType::U16, 16), ZetDataType(ZetDataType::U16));
    EXPECT_NE(ZetDataType(ZetDataType::U16), ZetDataType(ZetDataType::I16));
}

TEST(ZetDataType, fromBitDepth)
{
    struct Row
    {
        unsigned int bits;
        ZetDataType::Type withSign;
        ZetDataType::Type withoutSign;
        unsigned int depth;
    };
    const Row rows[] = {
        {0, ZetDataType::I8, ZetDataType::U8, 8},     {1, ZetDataType::I8, ZetDataType::U8, 1},
        {8, ZetDataType::I8, ZetDataType::U8, 8},     {9, ZetDataType::I16, ZetDataType::U16, 9},
        {16, ZetDataType::I16, ZetDataType::U16, 16}, {17, ZetDataType::I32, ZetDataType::U32, 17},
        {32, ZetDataType::I32, ZetDataType::U32, 32}, {33, ZetDataType::I64, ZetDataType::U64, 33},
        {64, ZetDataType::I64, ZetDataType::U64, 64}, {65, ZetDataType::I64, ZetDataType::U64, 64},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.bits);
        EXPECT_EQ(ZetDataType::fromBitDepth(row.bits, true), ZetDataType(row.withSign, row.depth));
        EXPECT_EQ(ZetDataType::fromBitDepth(row.bits, false), ZetDataType(row.withoutSign, row.depth));
    }
}

TEST(ZetDataType, fromMinMax)
{
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    struct Row
    {
        double min;
        double max;
        ZetDataType::Type type;
    };
    const Row rows[] = {
        // from 0
        {0, 255, ZetDataType::U8},
        {-0.0, 0, ZetDataType::U8},
        {0, 255.5, ZetDataType::U16},
        {0, 65535, ZetDataType::U16},
        {0, 65536, ZetDataType::U32},
        {0, 4294967295.0, ZetDataType::U32},
        {0, 4294967296.0, ZetDataType::U64},
        {0, 1e300, ZetDataType::U64},
        {0, 1.7976931348623157e308, ZetDataType::U64},
        {0, inf, ZetDataType::Double},
        {5, nan, ZetDataType::Double},
        // from below 0
        {-128, 127, ZetDataType::I8},
        {-128, 128, ZetDataType::I16},
        {-129, 0, ZetDataType::I16},
        {-32768, 32767, ZetDataType::I16},
        {-32769, 0, ZetDataType::I32},
        {-2147483648.0, 2147483647.0, ZetDataType::I32},
        {-2147483649.0, 0, ZetDataType::I64},
        {-kTwo63, kTwo63, ZetDataType::I64},
        {-1, kTwo64, ZetDataType::Float},
        {-1, 1e30, ZetDataType::Float},
        {-1, 3.4028234663852886e38, ZetDataType::Float},
        {-1, 1e300, ZetDataType::Double},
        {-1e39, 0, ZetDataType::Double},
        {-inf, 0, ZetDataType::Double},
        {nan, 0, ZetDataType::Double},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ZetDataType::fromMinMax(row.min, row.max), ZetDataType(row.type)) << row.min << " " << row.max;
    }
}

TEST(ZetDataType, leastCommon)
{
    // a mark for each pair of types: '.' is the one with the greater number
    const char* const widened[] = {
        //  lo: I8  U8  I16 U16 I32 U32 I64 U64 F   D   CF  CD
        "............",  // hi I8
        "2...........",  // U8: I16
        "............",  // I16
        "4.4.........",  // U16: I32
        "............",  // I32
        "9.9.9.......",  // U32: Double
        "............",  // I64
        "............",  // U64
        "....99......",  // Float: Double
        "............",  // Double
        "....11...1..",  // ComplexFloat: ComplexDouble
        "............",  // ComplexDouble
    };
    for (int hi = 0; hi < 12; ++hi) {
        for (int lo = 0; lo <= hi; ++lo) {
            const char mark = widened[hi][lo];
            const int expected = mark == '.' ? hi : mark == '1' ? 11 : mark - '0';
            EXPECT_EQ(ZetDataType::leastCommon(typeOf(hi), typeOf(lo)).type(), expected) << hi << " " << lo;
            EXPECT_EQ(ZetDataType::leastCommon(typeOf(lo), typeOf(hi)).type(), expected) << lo << " " << hi;
        }
    }
}

TEST(ZetDataType, leastCommonDepth)
{
    const ZetDataType u16of12(ZetDataType::U16, 12);
    EXPECT_EQ(ZetDataType::leastCommon(u16of12, ZetDataType(ZetDataType::U16, 10)), u16of12);
    EXPECT_EQ(ZetDataType::leastCommon(u16of12, ZetDataType::U8), u16of12);
    EXPECT_EQ(ZetDataType::leastCommon(u16of12, ZetDataType::I8), ZetDataType(ZetDataType::I32, 12));
    EXPECT_EQ(ZetDataType::leastCommon(ZetDataType::U32, ZetDataType(ZetDataType::I32, 20)), ZetDataType::Double);
    EXPECT_EQ(ZetDataType::leastCommon(ZetDataType(), ZetDataType::U8), ZetDataType());
}

TEST(ZetDataType, text)
{
    std::wostringstream out;
    out << ZetDataType(ZetDataType::U16) << ZetDataType(ZetDataType::U16, 12) << ZetDataType(ZetDataType::ComplexDouble)
        << ZetDataType();
    EXPECT_EQ(out.str(), L"(U16,16)(U16,12)(ComplexDouble,128)(,0)");

    struct Row
    {
        const wchar_t* text;
        ZetDataType read;
        bool good;
    };
    const ZetDataType before(ZetDataType::I8, 5);
    const Row rows[] = {
        {L"(U16,16)", ZetDataType::U16, true},
        {L"  (U16,12)rest", ZetDataType(ZetDataType::U16, 12), true},
        {L"xU16,12y", ZetDataType(ZetDataType::U16, 12), true},
        {L"(U16,99)", ZetDataType::U16, true},
        {L"(Float,1)", ZetDataType::Float, true},
        // an unknown key
        {L"(u16,16)", ZetDataType(), true},
        {L"(,16)", ZetDataType(), true},
        // a stream that fails leaves the target
        {L"(U16,16", before, false},
        {L"(U16)", before, false},
        {L"(U16,x)", before, false},
        {L"", before, false},
    };
    for (const Row& row : rows) {
        std::wistringstream in(row.text);
        ZetDataType type(before);
        in >> type;
        EXPECT_EQ(type, row.read) << ZetString(row.text).size();
        EXPECT_EQ(!in.fail(), row.good);
    }
}

TEST(ZetDataTypeInfo, hasNoTextForm)
{
    const ZetDataTypeInfo info(2, 0, 65535);
    EXPECT_EQ(info.className(), L"ZetDataTypeInfo");
    std::wostringstream out;
    out << info;
    EXPECT_TRUE(out.fail());
    EXPECT_EQ(out.str(), L"");
    std::wistringstream in(L"text");
    ZetDataTypeInfo read(info);
    in >> read;
    EXPECT_TRUE(in.fail());
    EXPECT_EQ(read, info);
    EXPECT_NE(info, ZetDataTypeInfo(2, 0, 65534));
    EXPECT_NE(info, ZetDataTypeInfo(2, -1, 65535));
    EXPECT_NE(info, ZetDataTypeInfo(4, 0, 65535));
}

TEST(ZetDataTypeInfo, travelsInVariants)
{
    const ZetMetaType kind = ZetMetaType::of<ZetDataTypeInfo>();
    EXPECT_EQ(kind.type(), 1024);
    const ZetDataTypeInfo info(2, 0, 65535);
    const ZetVariant variant(kind, &info);
    EXPECT_EQ(variant.type(), kind);
    EXPECT_EQ(variant.value<ZetDataTypeInfo>(), info);
    EXPECT_TRUE(variant == ZetVariant(kind, &info));
    const ZetVariantIFPtr clone(variant.implementation()->clone());
    EXPECT_EQ(clone->className(), L"ZetDataTypeInfo");
    EXPECT_TRUE(clone->isEqual(variant.implementation().get()));

    // no text either way, and no other kind
    ZetString text;
    EXPECT_FALSE(variant.convertTo(&text));
    EXPECT_EQ(text, L"");
    int number = 7;
    EXPECT_FALSE(variant.convertTo(&number));
    EXPECT_EQ(number, 7);
    EXPECT_EQ(ZetVariant(L"(2,0,65535)").value<ZetDataTypeInfo>(), ZetDataTypeInfo());
}

}  // namespace
}  // namespace zet

// The text form of variants and of their containers.

#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetVariantImpl>

#include "support/ZetKindSamples"
#include "support/ZetScopedLocale"

namespace zet {
namespace {

using test::dump;
using test::makeTile;
using test::makeUnits;

struct PrintRow
{
    ZetVariant variant;
    const wchar_t* text;
    bool fails;
};

TEST(ZetVariantStream, prints)
{
    const test::ZetScopedLocale plainNumbers("C");
    const PrintRow rows[] = {
        {ZetVariant(), L", ", false},
        {true, L"Bool,1", false},
        {false, L"Bool,0", false},
        {-5, L"Int,-5", false},
        {5u, L"UInt,5", false},
        {-5l, L"Int64,-5", false},
        {5ul, L"UInt64,5", false},
        {3.0, L"Double,3", false},
        {12345.678, L"Double,12345.7", false},
        {std::complex<double>(1, 2), L"ComplexDouble,(1,2)", false},
        {ZetRational<long>(-1, 2), L"ZetI64Rational,(-1,2)", false},
        {ZetRational<unsigned long>(1, 2), L"ZetU64Rational,(1,2)", false},
        {L'A', L"ZetChar,A", false},
        {L"two words", L"ZetString,two words", false},
        {L"", L"ZetString,", false},
        {ZetStrList{L"a", L"b"}, L"ZetStrList,(a,b)", false},
        {ZetStrList(), L"ZetStrList,", false},
        {makeTile(1), L"ZetEqnTile,", true},
        {ZetBufferPtr(), L"ZetBufferPtr,0x00000000", false},
        {ZetCoord3D<int>(1, 2, 3), L"ZetI32Coord,(1,2,3)", false},
        {ZetCoord3D<double>(1.5, 2, 3), L"ZetDblCoord,(1.5,2,3)", false},
        {ZetCoord2D<double>(1.5, 2), L"ZetDblCoord2D,(1.5,2)", false},
        {ZetSize3D<unsigned int>(1, 2, 3), L"ZetU32Size,(1,2,3)", false},
        {ZetImageSize(1, 2, 3), L"ZetImageSize,(1,2,3)", false},
        {makeUnits(L"m"), L"ZetUnits,m", false},
        {ZetScalar(5.0, makeUnits(L"m")), L"ZetScalar,5 m", false},
        {ZetScalar(5.0), L"ZetScalar,5", false},
        {ZetROI(ZetCoord3D<int>(1, 2, 3), ZetImageSize(4, 5, 6)), L"ZetROI,((1,2,3),(4,5,6))", false},
        {ZetDataType(ZetDataType::U16, 12), L"ZetDataType,(U16,12)", false},
        {ZetDataLayout(ZetDataLayout::LineInterleaved), L"ZetDataLayout,LineInterleaved", false},
        {ZetColorModel(ZetColorModel::RGB), L"ZetColorModel,(RGB,3,0)", false},
        {ZetByteOrder(ZetByteOrder::BigEndian), L"ZetByteOrder,BigEndian", false},
        {ZetVariantList{ZetVariant(1), ZetVariant(true)}, L"ZetVariantList,[Int,1,Bool,1]", false},
        {ZetVariantList(), L"ZetVariantList,[]", false},
        {ZetVariantMap{{L"b", ZetVariant(1)}, {L"a", ZetVariant()}}, L"ZetVariantMap,{a:, ,b:Int,1}", false},
        {ZetVariantMap(), L"ZetVariantMap,{}", false},
    };
    for (const PrintRow& row : rows) {
        std::wostringstream out;
        out << row.variant;
        EXPECT_EQ(out.str(), row.text);
        EXPECT_EQ(out.fail(), row.fails) << toMultibyte(row.text);
    }
}

struct ReadRow
{
    const wchar_t* text;
    const wchar_t* variant;
    bool fails;
    const wchar_t* rest;
};

TEST(ZetVariantStream, reads)
{
    const test::ZetScopedLocale plainNumbers("C");
    const ReadRow rows[] = {
        {L"Int,7 rest", L"Int 7", false, L" rest"},
        {L" \t\r\nInt \n,7,x", L"Int 7", false, L",x"},
        {L"Bool,1", L"Bool true", false, L""},
        {L"UInt,7", L"UInt 7", false, L""},
        {L"Int64,-7", L"Int64 -7", false, L""},
        {L"UInt64,7", L"UInt64 7", false, L""},
        {L"Double,1.5", L"Double 1.5", false, L""},
        {L"Double,1.5,Double,2", L"Double 1.5", false, L",Double,2"},
        {L"ComplexDouble,(1,2)", L"ComplexDouble (1,2)", false, L""},
        {L"ZetI64Rational,(1,2)", L"ZetI64Rational (1,2)", false, L""},
        {L"ZetU64Rational,(1,2)", L"ZetU64Rational (1,2)", false, L""},
        {L"ZetChar, A", L"ZetChar A", false, L""},
        {L"ZetString,one", L"ZetString one", false, L""},
        {L"ZetString,two words", L"ZetString two", false, L" words"},
        {L"ZetString,  \"two words\" rest", L"ZetString two words", false, L" rest"},
        {L"ZetString,\"no \\\" escapes\"", L"ZetString no \\", false, L" escapes\""},
        {L"ZetString,\"\"x", L"ZetString ", false, L"x"},
        {L"ZetStrList,(a,b)", L"ZetStrList (a,b)", false, L""},
        {L"ZetStrList,a,b\nnext", L"ZetStrList (a,b)", false, L"next"},
        {L"ZetI32Coord,(1,2,3)", L"ZetI32Coord (1,2,3)", false, L""},
        {L"ZetDblCoord,(1.5,2,3)", L"ZetDblCoord (1.5,2,3)", false, L""},
        {L"ZetDblCoord2D,(1.5,2)", L"ZetDblCoord2D (1.5,2)", false, L""},
        {L"ZetU32Size,(1,2,3)", L"ZetU32Size (1,2,3)", false, L""},
        {L"ZetImageSize,(1,2,3)", L"ZetImageSize (1,2,3)", false, L""},
        {L"ZetUnits,m", L"ZetUnits m", false, L""},
        {L"ZetScalar,5 m", L"ZetScalar 5 m", false, L""},
        {L"ZetScalar,5", L"ZetScalar 5", false, L""},
        {L"ZetROI,((1,2,3),(4,5,6))", L"ZetROI ((1,2,3),(4,5,6))", false, L""},
        {L"ZetDataType,(U16,12)", L"ZetDataType U16", false, L""},
        {L"ZetDataLayout,LineInterleaved", L"ZetDataLayout LineInterleaved", false, L""},
        {L"ZetColorModel,(RGB,3,0)", L"ZetColorModel RGB", false, L""},
        {L"ZetByteOrder,BigEndian", L"ZetByteOrder BigEndian", false, L""},
        {L"ZetBufferPtr,0x1234", L"ZetBufferPtr 0x00000000", false, L"0x1234"},
        // an unknown name means text
        {L"Bogus,abc", L"ZetString abc", false, L""},
        {L"int,abc def", L"ZetString abc", false, L" def"},
        {L",abc", L"ZetString abc", false, L""},
        {L"no comma at all", L"ZetString ", true, L""},
        {L", ", L"ZetString ", true, L""},
        {L"", L"ZetString ", true, L""},
        // a known name without a prototype stops the reader
        {L"ZetVariant,abc", L" ", false, L"abc"},
        // kinds without a text form, and text that does not suit
        {L"ZetEqnTile,x", L"ZetEqnTile ", true, L"x"},
        {L"Int,x", L"Int 0", true, L"x"},
        {L"ZetDblCoord2D,(1.5,2", L"ZetDblCoord2D (0,0)", true, L""},
    };
    for (const ReadRow& row : rows) {
        SCOPED_TRACE(toMultibyte(row.text));
        std::wistringstream in(row.text);
        ZetVariant variant;
        in >> variant;
        EXPECT_EQ(dump(variant), row.variant);
        EXPECT_EQ(in.fail(), row.fails);
        in.clear();
        std::wstring rest;
        std::getline(in, rest, L'\0');
        EXPECT_EQ(rest, row.rest);
    }
}

TEST(ZetVariantStream, aWordIsReadBackOfWhatWasWritten)
{
    std::wistringstream in(L"ZetString,\"two words\"");
    ZetVariant variant;
    in >> variant;
    EXPECT_EQ(variant.value<ZetString>(), L"two words");
    std::wstringstream stream;
    stream << variant;
    EXPECT_EQ(stream.str(), L"ZetString,two words");
    stream >> variant;
    EXPECT_EQ(variant.value<ZetString>(), L"two");
}

TEST(ZetVariantStream, thePlainImplementationOfTextReadsAWord)
{
    ZetVariantImpl<ZetString> plain;
    std::wistringstream in(L" \"two words\"");
    plain.read(in);
    EXPECT_EQ(*static_cast<const ZetString*>(plain.data()), L"\"two");
}

TEST(ZetVariant, readingTheSameKindReachesCopies)
{
    ZetVariant variant(5);
    const ZetVariant copy(variant);
    std::wistringstream in(L"Int,7 UInt,8 Bogus,word");
    in >> variant;
    EXPECT_EQ(copy.value<int>(), 7);
    EXPECT_EQ(copy.implementation().get(), variant.implementation().get());
    // another kind leaves them alone
    in >> variant;
    EXPECT_EQ(variant.value<int>(), 8);
    EXPECT_EQ(variant.typeName(), L"UInt");
    EXPECT_EQ(copy.value<int>(), 7);
    in >> variant;
    EXPECT_EQ(variant.value<ZetString>(), L"word");
    EXPECT_EQ(copy.value<int>(), 7);
}

TEST(ZetVariantStream, anUnknownKindDoesNotReachCopies)
{
    ZetVariant variant;
    const ZetVariant copy(variant);
    std::wistringstream in(L",text");
    in >> variant;
    EXPECT_EQ(variant.value<ZetString>(), L"text");
    EXPECT_FALSE(copy.isValid());
}

TEST(ZetVariantStream, aKindWithoutPrototypeLeavesTheVariant)
{
    ZetVariant variant(5);
    std::wistringstream in(L"ZetVariant,7");
    in >> variant;
    EXPECT_EQ(variant.typeName(), L"Int");
    EXPECT_EQ(variant.value<int>(), 5);
    std::wstring rest;
    in >> rest;
    EXPECT_EQ(rest, L"7");
}

TEST(ZetVariantStream, printsContainersOfThemselves)
{
    const test::ZetScopedLocale plainNumbers("C");
    std::wostringstream out;
    out << ZetVariantList{ZetVariant(1.5), ZetVariant(L"x"), ZetVariant()} << ZetVariantList()
        << ZetVariantMap{{L"k", ZetVariant(1.5)}, {L"a", ZetVariant(L"x")}} << ZetVariantMap();
    EXPECT_EQ(out.str(), L"[Double,1.5,ZetString,x,, ][]{a:ZetString,x,k:Double,1.5}{}");
}

TEST(ZetVariantStream, readsLists)
{
    const test::ZetScopedLocale plainNumbers("C");
    const ReadRow rows[] = {
        {L"[Double,1,Double,2]", L"[Double 1.0|Double 2.0]", false, L""},
        {L"  [ Int,1,Bogus,word ] rest", L"[Int 1|ZetString word]", false, L" rest"},
        {L"[]x", L"[]", false, L"x"},
        // half the number of parts, cut down
        {L"[Int,1,Int]", L"[Int 1]", false, L""},
        {L"[Int]", L"[]", false, L""},
        {L"[Int,1", L"[Int 1]", false, L""},
        // the rest stays, the character put back
        {L" Int,1]", L"[]", false, L"Int,1]"},
        {L"{Int,1}", L"[]", false, L"{Int,1}"},
        {L"", L"[]", true, L""},
        // a value with a comma shifts the pairs, and a bracket ends the list
        {L"[ZetI32Coord,(1,2,3)]", L"[ZetI32Coord (0,0,0)|ZetString 3)]", false, L""},
        {L"[ZetString,a]b]", L"[ZetString a]", false, L"b]"},
        {L"[ZetString,two words]", L"[ZetString two]", false, L""},
    };
    for (const ReadRow& row : rows) {
        SCOPED_TRACE(toMultibyte(row.text));
        std::wistringstream in(row.text);
        ZetVariantList list(5, ZetVariant(1));
        in >> list;
        EXPECT_EQ(dump(list), row.variant);
        EXPECT_EQ(in.fail(), row.fails);
        in.clear();
        std::wstring rest;
        std::getline(in, rest, L'\0');
        EXPECT_EQ(rest, row.rest);
    }
}

TEST(ZetVariantStream, readsMaps)
{
    const test::ZetScopedLocale plainNumbers("C");
    const ReadRow rows[] = {
        {L"{a:Double,1.5}", L"{a=Double 1.5}", false, L""},
        {L" {b:Int,1,a:Bool,1} rest", L"{a=Bool true|b=Int 1}", false, L" rest"},
        {L"{a:Int,1,a:Int,2}", L"{a=Int 2}", false, L""},
        {L"{}x", L"{}", false, L"x"},
        {L"{a:Int,1, b : Int,2}", L"{a=Int 1|b =Int 2}", false, L""},
        {L"{a:Bogus,word}", L"{a=ZetString word}", false, L""},
        // what stands behind a second colon is lost
        {L"{a:ZetString,x:y}", L"{a=ZetString x}", false, L""},
        // the rest stays, the character put back
        {L" a:Int,1}", L"{}", false, L"a:Int,1}"},
        {L"[a:Int,1]", L"{}", false, L"[a:Int,1]"},
        {L"", L"{}", true, L""},
        // pieces that are missing count as empty
        {L"{a:Int}", L"{a=Int 0}", false, L""},
        {L"{a,1}", L"{a,1=ZetString }", false, L""},
        {L"{a:Int,1", L"{a=Int 1}", false, L""},
    };
    for (const ReadRow& row : rows) {
        SCOPED_TRACE(toMultibyte(row.text));
        std::wistringstream in(row.text);
        ZetVariantMap map = {{L"old", ZetVariant(1)}};
        in >> map;
        EXPECT_EQ(dump(map), row.variant);
        EXPECT_EQ(in.fail(), row.fails);
        in.clear();
        std::wstring rest;
        std::getline(in, rest, L'\0');
        EXPECT_EQ(rest, row.rest);
    }
}

TEST(ZetVariantStream, readsContainersInVariants)
{
    std::wistringstream in(L"ZetVariantList,[Int,1,Bool,0] ZetVariantMap,{k:Int,5}");
    ZetVariant list;
    ZetVariant map;
    in >> list >> map;
    EXPECT_EQ(dump(list.value<ZetVariantList>()), L"[Int 1|Bool false]");
    EXPECT_EQ(dump(map.value<ZetVariantMap>()), L"{k=Int 5}");
}

}  // namespace
}  // namespace zet

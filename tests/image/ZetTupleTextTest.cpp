#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetCoord2D>
#include <zet/ZetCoord3D>
#include <zet/ZetImageSize>
#include <zet/ZetROI>
#include <zet/ZetSize2D>
#include <zet/ZetSize3D>
#include <zet/ZetTiePoint>

#include "support/ZetScopedLocale"

// The text forms of coordinates, sizes, regions and tie points, as one table.
namespace zet {
namespace {

using Point = ZetCoord2D<double>;
using Size = ZetSize3D<unsigned int>;

const ZetROI kRegion(ZetCoord3D<int>(7, 7, 7), ZetImageSize(7, 7, 7));
const ZetTiePoint kTie(Point(7, 7), Point(7, 7));

template <class T>
ZetString textOf(const T& value)
{
    std::wostringstream out;
    out << value;
    return out.str();
}

/// Reads \p text and "~" over \p before, and gives the text of the result, what remained, and "!" if
/// the stream failed.
template <class T>
ZetString readOver(const T& before, const ZetString& text)
{
    std::wistringstream in(text + L"~");
    T value = before;
    in >> value;
    if (in.fail()) {
        return textOf(value) + L" !";
    }
    ZetString rest;
    std::getline(in, rest);
    return textOf(value) + L" " + rest;
}

/// The same at the end of the stream.
template <class T>
ZetString readAtEnd(const T& before, const ZetString& text)
{
    std::wistringstream in(text);
    T value = before;
    in >> value;
    return textOf(value) + (in.fail() ? L" !" : L"");
}

TEST(ZetTupleText, writes)
{
    const test::ZetScopedLocale plainNumbers("C");
    EXPECT_EQ(textOf(ZetCoord2D<int>(-1, 2)), L"(-1,2)");
    EXPECT_EQ(textOf(Point(0.5, -2)), L"(0.5,-2)");
    EXPECT_EQ(textOf(Point(1e20, 1.0 / 3.0)), L"(1e+20,0.333333)");
    EXPECT_EQ(textOf(ZetCoord3D<int>(1, -2, 3)), L"(1,-2,3)");
    EXPECT_EQ(textOf(ZetCoord3D<double>(1, 2.25, -0.0)), L"(1,2.25,-0)");
    EXPECT_EQ(textOf(ZetSize2D<unsigned int>(1, 4294967295u)), L"(1,4294967295)");
    EXPECT_EQ(textOf(Size(1, 2, 3)), L"(1,2,3)");
    EXPECT_EQ(textOf(ZetImageSize(1, 2, 3)), L"(1,2,3)");
    EXPECT_EQ(textOf(kRegion), L"((7,7,7),(7,7,7))");
    EXPECT_EQ(textOf(ZetTiePoint(Point(1, 2), Point(-3.5, 4))), L"((1,2),(-3.5,4))");

    std::wostringstream out;
    out.precision(3);
    out << Point(3.14159, 1);
    EXPECT_EQ(out.str(), L"(3.14,1)");
}

struct ReadRow
{
    const wchar_t* text;
    const wchar_t* result;  // read over (7,7)
};

const ReadRow kPlane[] = {
    {L"(1,2)", L"(1,2) ~"},
    {L"(-1.5,2e3)", L"(-1.5,2000) ~"},
    // any characters in the places of the punctuation, blanks anywhere
    {L"[1;2]", L"(1,2) ~"},
    {L" x 1 x 2 x ", L"(1,2)  ~"},
    // a digit in the place of the bracket is lost
    {L"11,2)", L"(1,2) ~"},
    // a failed stream leaves the origin
    {L"(x,2)", L"(0,0) !"},
    {L"(1,x)", L"(0,0) !"},
    {L"(1 2)", L"(0,0) !"},
    {L"(1e999,2)", L"(0,0) !"},
    {L"", L"(0,0) !"},
};

TEST(ZetTupleText, readsPointsOfThePlane)
{
    const test::ZetScopedLocale plainNumbers("C");
    for (const ReadRow& row : kPlane) {
        EXPECT_EQ(readOver(Point(7, 7), row.text), row.result) << testing::PrintToString(ZetString(row.text));
    }
    EXPECT_EQ(readAtEnd(Point(7, 7), L"(1,2)"), L"(1,2)");
    EXPECT_EQ(readAtEnd(Point(7, 7), L"(1,2"), L"(0,0) !");
    EXPECT_EQ(readOver(ZetCoord2D<int>(7, 7), L"(1.9,-2.9)"), L"(1,-2) ~");
    EXPECT_EQ(readAtEnd(ZetCoord2D<int>(7, 7), L"(1,2"), L"(0,0) !");
    EXPECT_EQ(readOver(ZetSize2D<unsigned int>(7, 7), L"(1.9,2)"), L"(1,2) ~");
    EXPECT_EQ(readAtEnd(ZetSize2D<unsigned int>(7, 7), L"(1,2"), L"(0,0) !");
}

TEST(ZetTupleText, readsPointsOfSpace)
{
    const test::ZetScopedLocale plainNumbers("C");
    const ZetCoord3D<int> whole(7, 7, 7);
    EXPECT_EQ(readOver(whole, L"(1,2,3)"), L"(1,2,3) ~");
    EXPECT_EQ(readOver(whole, L"[1;2;3]"), L"(1,2,3) ~");
    // real numbers are read and cut
    EXPECT_EQ(readOver(whole, L"(1.9,-1.9,0.5e1)"), L"(1,-1,5) ~");
    // out of range: the lowest number
    EXPECT_EQ(readOver(whole, L"(2147483647,-2147483648,2147483648)"), L"(2147483647,-2147483648,-2147483648) ~");
    EXPECT_EQ(readOver(whole, L"(1e300,-1e300,0)"), L"(-2147483648,-2147483648,0) ~");
    EXPECT_EQ(readAtEnd(whole, L"(1,2"), L"(0,0,0) !");
    EXPECT_EQ(readAtEnd(whole, L"(1,2,3"), L"(0,0,0) !");
    EXPECT_EQ(readAtEnd(whole, L"(1,2,3)"), L"(1,2,3)");
    EXPECT_EQ(readOver(ZetCoord3D<double>(7, 7, 7), L"(1.9,-0,0.5e1)"), L"(1.9,-0,5) ~");
    EXPECT_EQ(readAtEnd(ZetCoord3D<double>(7, 7, 7), L"(1,2,3"), L"(0,0,0) !");
}

TEST(ZetTupleText, readsSizes)
{
    const test::ZetScopedLocale plainNumbers("C");
    const Size size(7, 7, 7);
    EXPECT_EQ(readOver(size, L"(1,2,3)"), L"(1,2,3) ~");
    // cut to 64 bits, of which the low 32 count
    EXPECT_EQ(readOver(size, L"(4294967295.9,4294967296,-1)"), L"(4294967295,0,4294967295) ~");
    EXPECT_EQ(readOver(size, L"(1e300,4294967301,0)"), L"(0,5,0) ~");
    EXPECT_EQ(readAtEnd(size, L"(1,2,3"), L"(0,0,0) !");
    EXPECT_EQ(readOver(ZetImageSize(7, 7, 7), L"{640 480"), L"(0,0,0) !");
    EXPECT_EQ(readOver(ZetImageSize(7, 7, 7), L"{640x480x3}"), L"(640,480,3) ~");
}

TEST(ZetTupleText, readsRegions)
{
    const test::ZetScopedLocale plainNumbers("C");
    EXPECT_EQ(readOver(kRegion, L"((1,2,3),(4,5,6))"), L"((1,2,3),(4,5,6)) ~");
    EXPECT_EQ(readOver(kRegion, L" [ (1;2;3) + (4x5x6) ] "), L"((1,2,3),(4,5,6))  ~");
    EXPECT_EQ(readAtEnd(kRegion, L"((1,2,3),(4,5,6))"), L"((1,2,3),(4,5,6))");
    for (const wchar_t* text : {L"", L"((1,2,3)", L"((1,2,3),(4,5,6)", L"((1,2,3),(4,5,x))", L"((x"}) {
        EXPECT_EQ(readAtEnd(kRegion, text), L"((0,0,0),(0,0,0)) !");
    }
}

TEST(ZetTupleText, readsTiePoints)
{
    const test::ZetScopedLocale plainNumbers("C");
    EXPECT_EQ(readOver(kTie, L"((1,2),(3.5,4))"), L"((1,2),(3.5,4)) ~");
    EXPECT_EQ(readOver(kTie, L"<<1 , 2> = <3.5 , 4>>"), L"((1,2),(3.5,4)) ~");
    EXPECT_EQ(readAtEnd(kTie, L"((1,2),(3.5,4))"), L"((1,2),(3.5,4))");
    // the target is kept
    for (const wchar_t* text : {L"", L"((1,2)", L"((1,2),(3,4)", L"((1,2),(3,x))", L"((x"}) {
        EXPECT_EQ(readAtEnd(kTie, text), L"((7,7),(7,7)) !");
    }
}

}  // namespace
}  // namespace zet

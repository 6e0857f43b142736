#include <gtest/gtest.h>

#include "support/ZetFunctionCalls"

namespace zet {
namespace test {
namespace {

TEST(ZetMathFcn, oneOperandOfAReduction)
{
    expectCalls({
        {L"min", {L"1"}, L"1"},
        {L"min", {L"Int 1"}, L"Int 1"},
        {L"max", {L"'a'"}, L"'a'"},
        {L"sum", {L"unset"}, L"unset"},
        {L"sum", {L"Scalar 3 m"}, L"Scalar 3 m"},
        // a tile's own reductions, by its increment
        {L"min", {L"U8[4 1 2]"}, L"1"},
        {L"max", {L"U8[4 1 2]"}, L"4"},
        {L"max", {L"I8[-1 -2]"}, L"2.22507386e-308"},
        {L"sum", {L"U8[4 1 2]"}, L"7"},
        {L"sum", {L"U8/2[4 1 2 9]"}, L"6"},
        {L"sum", {L"ComplexDouble[(1,2)]"}, L"0"},
        {L"sum", {L"I64[4]"}, L"0"},
        {L"sum", {L"empty"}, L"0"},
    });
}

TEST(ZetMathFcn, extremes)
{
    expectCalls({
        {L"min", {L"3", L"1", L"2"}, L"1"},
        {L"max", {L"3", L"1", L"2"}, L"3"},
        {L"min", {L"Int 3", L"1.5", L"Bool 1"}, L"Bool 1"},
        {L"max", {L"Int 3", L"1.5"}, L"Int 3"},
        {L"min", {L"Scalar 1 km", L"Scalar 2 m"}, L"Scalar 2 m"},
        {L"max", {L"Scalar 1 km", L"Scalar 2 m"}, L"Scalar 1 km"},
        {L"max", {L"(1,0)", L"2"}, L"2"},
        {L"max", {L"(3,0)", L"2"}, L"(3,0)"},
        {L"min", {L"(1,1)", L"2"}, L"!Complex values are not valid for '>'"},
        {L"max", {L"Scalar 1 m", L"Scalar 1 kg"}, L"!Cannot convert physical units from 'm' to 'kg'"},
        // tiles
        {L"min", {L"U8[1 4]", L"I16[2 3]"}, L"Double[1 3]"},
        {L"max", {L"U8[1 4 7]", L"I16[2 3]"}, L"Double[2 4]"},
        {L"min", {L"U8[1 4]", L"2"}, L"Double[1 2]"},
        {L"min", {L"2", L"U8[1 4]"}, L"Double[1 2]"},
        {L"max", {L"U8[1 4]", L"Scalar 2 m"}, L"Double[2 4]"},
        {L"max", {L"(2,5)", L"U8[1 4]"}, L"Double[2 4]"},
        {L"max", {L"3", L"U8[1 4]", L"2"}, L"Double[3 4]"},
        {L"min", {L"U8[1 4]", L"0"}, L"Double[0 0]"},
        {L"min", {L"I64[1]", L"2"}, L"empty"},
        // NaN is neither greater nor smaller
        {L"min", {L"nan", L"1"}, L"nan"},
        {L"min", {L"1", L"nan"}, L"1"},
        {L"max", {L"nan", L"1"}, L"1"},
        {L"max", {L"1", L"nan"}, L"nan"},
        {L"min", {L"1", L"'a'"}, L"!"},
        {L"max", {L"unset", L"1"}, L"!"},
        {L"max", {L"U8[1]", L"'1'"}, L"!"},
    });
}

TEST(ZetMathFcn, extremesOfEqualOperands)
{
    expectCalls({
        {L"max", {L"Int 1", L"1"}, L"1"},
        {L"max", {L"1", L"Int 1"}, L"Int 1"},
        {L"min", {L"Int 1", L"1"}, L"Int 1"},
        {L"min", {L"1", L"Int 1"}, L"1"},
        {L"max", {L"Scalar 1 km", L"Scalar 1000 m"}, L"Scalar 1000 m"},
    });
}

TEST(ZetMathFcn, sum)
{
    expectCalls({
        {L"sum", {L"1", L"2", L"3.5"}, L"6.5"},
        {L"sum", {L"Int 1", L"Bool 1"}, L"2"},
        {L"sum", {L"Scalar 1 km", L"Scalar 1 m"}, L"Scalar 1.001 km"},
        {L"sum", {L"1", L"(1,2)"}, L"Scalar (2,2)"},
        {L"sum", {L"1", L"Scalar 1 m"}, L"!Cannot convert physical units from '' to 'm'"},
        // the totals of tiles, of every element type
        {L"sum", {L"I8[-1 2]", L"1"}, L"2"},
        {L"sum", {L"1", L"U8[200 100]"}, L"301"},
        {L"sum", {L"I16[-1 2]", L"U16[65535 1]"}, L"65537"},
        {L"sum", {L"I32[-1 2]", L"U32[4294967295]"}, L"4.2949673e+09"},
        {L"sum", {L"I64[-1 3]", L"0"}, L"2"},
        {L"sum", {L"U64[1 3]", L"0"}, L"4"},
        {L"sum", {L"Float[0.5 0.25]", L"0"}, L"0.75"},
        {L"sum", {L"Double[0.5 0.25]", L"0"}, L"0.75"},
        {L"sum", {L"ComplexFloat[(1,2) (3,4)]", L"0"}, L"Scalar (4,6)"},
        {L"sum", {L"ComplexDouble[(1,2) (3,4)]", L"U8[1]"}, L"Scalar (5,6)"},
        {L"sum", {L"empty", L"1"}, L"1"},
        {L"sum", {L"1", L"'a'"}, L"!"},
        {L"sum", {L"U8[1]", L"'a'"}, L"!"},
        {L"sum", {L"unset", L"unset"}, L"!"},
    });
}

TEST(ZetMathFcn, totalsIgnoreTheIncrement)
{
    expectCalls({
        {L"sum", {L"U8/2[4 1 2 9]"}, L"6"},
        {L"sum", {L"U8/2[4 1 2 9]", L"0"}, L"5"},
        {L"mean", {L"U8/2[4 1 2 9]", L"0"}, L"2.5"},
    });

    // A tile whose elements all stand at one place has a block smaller than its size.
    ZetEqnTile one = makeTile(L"U8[7]");
    const ZetVariant repeated = ZetEqnTile(one.buffer(), one.dataType(), 5, 0);
    EXPECT_EQ(resultText(L"sum", constants({repeated})), L"35");
    EXPECT_EQ(resultText(L"sum", constants({repeated, ZetVariant(0.0)})), L"7");
}

TEST(ZetMathFcn, median)
{
    expectCalls({
        {L"median", {L"1", L"2", L"3", L"4"}, L"2"},
        {L"median", {L"3", L"1", L"2"}, L"2"},
        {L"median", {L"7"}, L"7"},
        {L"median", {L"Int 7", L"Bool 1", L"Scalar 3 m"}, L"3"},
        {L"median", {L"(5,0)", L"1", L"9"}, L"5"},
        {L"median", {L"U8[9 1]", L"5", L"Float/2[7 0 3 0]"}, L"5"},
        {L"median", {L"I64[-9 1 5]"}, L"1"},
        {L"median", {L"U64[9 1 5]"}, L"5"},
        {L"median", {L"empty"}, L"0"},
        {L"median", {L"nan", L"1", L"2"}, L"2"},
        {L"median", {L"nan", L"nan", L"2"}, L"nan"},
        {L"median", {L"0", L"-0"}, L"-0"},
        {L"median", {L"(5,1)", L"1"}, L"!"},
        {L"median", {L"ComplexFloat[(1,2)]"}, L"!"},
        {L"median", {L"1", L"ComplexDouble[(1,0)]"}, L"!"},
        {L"median", {L"'1'"}, L"!"},
        {L"median", {L"unset"}, L"!"},
    });
    const ZetVariant imaginaryNaN = std::complex<double>(5.0, std::nan(""));
    EXPECT_EQ(resultText(L"median", constants({imaginaryNaN})), L"!");
}

TEST(ZetMathFcn, aTileWithoutItsBlockAddsNothing)
{
    for (const ZetDataType::Type type : {ZetDataType::U8, ZetDataType::I64, ZetDataType::Double}) {
        const ZetVariant blockless = ZetEqnTile(new ZetBuffer(64, false), type, 5);
        EXPECT_EQ(resultText(L"median", constants({blockless, ZetVariant(3.0)})), L"3");
        EXPECT_EQ(resultText(L"median", constants({blockless})), L"0");
        EXPECT_EQ(resultText(L"sum", constants({blockless, ZetVariant(3.0)})), L"3");
    }
}

TEST(ZetMathFcn, mean)
{
    expectCalls({
        {L"mean", {L"1", L"2", L"3"}, L"2"},
        {L"mean", {L"Int 7"}, L"7"},
        {L"mean", {L"U8[1 4]"}, L"2.5"},
        {L"mean", {L"U8/2[4 1 2 9]"}, L"3"},
        {L"mean", {L"ComplexDouble[(1,2) (3,4)]"}, L"0"},
        {L"mean", {L"empty"}, L"nan"},
        {L"mean", {L"(1,2)"}, L"(1,2)"},
        // a sum of scalars is read as a double
        {L"mean", {L"(1,2)", L"3"}, L"2"},
        {L"mean", {L"Scalar 1 m", L"Scalar 3 m"}, L"2"},
        // what is no number; a text that reads as one is numeric
        {L"mean", {L"'a'"}, L"!"},
        {L"mean", {L"'5'"}, L"5"},
        {L"mean", {L"unset"}, L"!"},
        {L"mean", {L"1", L"'a'"}, L"!Invalid argument passed to 'sum' function."},
    });
}

TEST(ZetMathFcn, meanCountsATileOnce)
{
    expectCalls({
        {L"mean", {L"U8[1 4]", L"U8[5]"}, L"5"},
        {L"mean", {L"U8[1 4]", L"1"}, L"3"},
    });
}

}  // namespace
}  // namespace test
}  // namespace zet

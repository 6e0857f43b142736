#include <csignal>
#include <limits>

#include <gtest/gtest.h>

#include "support/ZetFunctionCalls"

namespace zet {
namespace test {
namespace {

const std::vector<std::wstring> kOperands = {
    L"2.5", L"Int 3", L"Scalar 3 m", L"(1,2)", L"U8[1 4]", L"ComplexDouble[(1,2)]", L"I64[1 4]", L"'ab'", L"unset",
};

// With each of the operands above on the right.
const std::vector<SweepRow> kArithmetic = {
    {L"add",
     L"2.5",
     {L"5", L"5.5", L"!Cannot convert physical units from '' to 'm'", L"Scalar (3.5,2)", L"Double[3.5 6.5]",
      L"ComplexDouble[(3.5,2)]", L"empty", L"'2.5ab'", L"'2.5'"}},
    {L"add",
     L"Int 3",
     {L"5.5", L"6", L"!Cannot convert physical units from '' to 'm'", L"Scalar (4,2)", L"Double[4 7]",
      L"ComplexDouble[(4,2)]", L"empty", L"'3ab'", L"'3'"}},
    {L"add",
     L"Scalar 3 m",
     {L"!Cannot convert physical units from 'm' to ''", L"!Cannot convert physical units from 'm' to ''", L"Scalar 6 m",
      L"!Cannot convert physical units from 'm' to ''", L"Double[4 7]", L"ComplexDouble[(4,2)]", L"empty", L"'3 mab'",
      L"'3 m'"}},
    {L"add",
     L"(1,2)",
     {L"Scalar (3.5,2)", L"Scalar (4,2)", L"!Cannot convert physical units from '' to 'm'", L"Scalar (2,4)",
      L"ComplexDouble[(2,2) (5,2)]", L"ComplexDouble[(2,4)]", L"empty", L"'(1,2)ab'", L"'(1,2)'"}},
    {L"add",
     L"U8[1 4]",
     {L"Double[3.5 6.5]", L"Double[4 7]", L"Double[4 7]", L"ComplexDouble[(2,2) (5,2)]", L"Double[2 8]",
      L"ComplexDouble[(2,2)]", L"empty", L"'ab'", L"''"}},
    {L"add",
     L"ComplexDouble[(1,2)]",
     {L"ComplexDouble[(3.5,2)]", L"ComplexDouble[(4,2)]", L"ComplexDouble[(4,2)]", L"ComplexDouble[(2,4)]",
      L"ComplexDouble[(2,2)]", L"ComplexDouble[(2,4)]", L"empty", L"'ab'", L"''"}},
    {L"add", L"I64[1 4]", {L"empty", L"empty", L"empty", L"empty", L"empty", L"empty", L"empty", L"'ab'", L"''"}},
    {L"add", L"'ab'", {L"'ab2.5'", L"'ab3'", L"'ab3 m'", L"'ab(1,2)'", L"'ab'", L"'ab'", L"'ab'", L"'abab'", L"'ab'"}},
    {L"add", L"unset", {L"'2.5'", L"'3'", L"'3 m'", L"'(1,2)'", L"''", L"''", L"''", L"'ab'", L"''"}},
    {L"subtract",
     L"2.5",
     {L"0", L"-0.5", L"!Cannot convert physical units from '' to 'm'", L"Scalar (1.5,-2)", L"Double[1.5 -1.5]",
      L"ComplexDouble[(1.5,-2)]", L"empty", L"!", L"!"}},
    {L"subtract",
     L"Int 3",
     {L"0.5", L"0", L"!Cannot convert physical units from '' to 'm'", L"Scalar (2,-2)", L"Double[2 -1]",
      L"ComplexDouble[(2,-2)]", L"empty", L"!", L"!"}},
    {L"subtract",
     L"Scalar 3 m",
     {L"!Cannot convert physical units from 'm' to ''", L"!Cannot convert physical units from 'm' to ''", L"Scalar 0 m",
      L"!Cannot convert physical units from 'm' to ''", L"Double[2 -1]", L"ComplexDouble[(2,-2)]", L"empty", L"!",
      L"!"}},
    {L"subtract",
     L"(1,2)",
     {L"Scalar (-1.5,2)", L"Scalar (-2,2)", L"!Cannot convert physical units from '' to 'm'", L"Scalar 0",
      L"ComplexDouble[(0,2) (-3,2)]", L"ComplexDouble[(0,0)]", L"empty", L"!", L"!"}},
    {L"subtract",
     L"U8[1 4]",
     {L"Double[-1.5 1.5]", L"Double[-2 1]", L"Double[-2 1]", L"ComplexDouble[(0,-2) (3,-2)]", L"Double[0 0]",
      L"ComplexDouble[(0,-2)]", L"empty", L"!", L"!"}},
    {L"subtract",
     L"ComplexDouble[(1,2)]",
     {L"ComplexDouble[(-1.5,2)]", L"ComplexDouble[(-2,2)]", L"ComplexDouble[(-2,2)]", L"ComplexDouble[(0,0)]",
      L"ComplexDouble[(0,2)]", L"ComplexDouble[(0,0)]", L"empty", L"!", L"!"}},
    {L"subtract", L"I64[1 4]", {L"empty", L"empty", L"empty", L"empty", L"empty", L"empty", L"empty", L"!", L"!"}},
    {L"subtract", L"'ab'", {L"!", L"!", L"!", L"!", L"!", L"!", L"!", L"!", L"!"}},
    {L"subtract", L"unset", {L"!", L"!", L"!", L"!", L"!", L"!", L"!", L"!", L"!"}},
    {L"multiply",
     L"2.5",
     {L"6.25", L"7.5", L"Scalar 7.5 m", L"Scalar (2.5,5)", L"Double[2.5 10]", L"ComplexDouble[(2.5,5)]", L"empty",
      L"'abab'", L"''"}},
    {L"multiply",
     L"Int 3",
     {L"7.5", L"9", L"Scalar 9 m", L"Scalar (3,6)", L"Double[3 12]", L"ComplexDouble[(3,6)]", L"empty", L"'ababab'",
      L"''"}},
    {L"multiply",
     L"Scalar 3 m",
     {L"Scalar 7.5 m", L"Scalar 9 m", L"Scalar 9 m^2", L"Scalar (3,6) m", L"Double[3 12]", L"ComplexDouble[(3,6)]",
      L"empty", L"'ababab'", L"''"}},
    {L"multiply",
     L"(1,2)",
     {L"Scalar (2.5,5)", L"Scalar (3,6)", L"Scalar (3,6) m", L"Scalar (-3,4)", L"ComplexDouble[(1,2) (4,8)]",
      L"ComplexDouble[(-3,4)]", L"empty", L"'ab'", L"''"}},
    {L"multiply",
     L"U8[1 4]",
     {L"Double[2.5 10]", L"Double[3 12]", L"Double[3 12]", L"ComplexDouble[(1,2) (4,8)]", L"Double[1 16]",
      L"ComplexDouble[(1,2)]", L"empty", L"!", L"!"}},
    {L"multiply",
     L"ComplexDouble[(1,2)]",
     {L"ComplexDouble[(2.5,5)]", L"ComplexDouble[(3,6)]", L"ComplexDouble[(3,6)]", L"ComplexDouble[(-3,4)]",
      L"ComplexDouble[(1,2)]", L"ComplexDouble[(-3,4)]", L"empty", L"!", L"!"}},
    {L"multiply", L"I64[1 4]", {L"empty", L"empty", L"empty", L"empty", L"empty", L"empty", L"empty", L"!", L"!"}},
    {L"multiply", L"'ab'", {L"'abab'", L"'ababab'", L"'ababab'", L"'ab'", L"!", L"!", L"!", L"!", L"!"}},
    {L"multiply", L"unset", {L"''", L"''", L"''", L"''", L"!", L"!", L"!", L"!", L"!"}},
    {L"divide",
     L"2.5",
     {L"1", L"0.833333333", L"Scalar 0.833333333 m^-1", L"Scalar (0.5,-1)", L"Double[2.5 0.625]",
      L"ComplexDouble[(0.5,-1)]", L"empty", L"!", L"!"}},
    {L"divide",
     L"Int 3",
     {L"1.2", L"1", L"Scalar 1 m^-1", L"Scalar (0.6,-1.2)", L"Double[3 0.75]", L"ComplexDouble[(0.6,-1.2)]", L"empty",
      L"!", L"!"}},
    {L"divide",
     L"Scalar 3 m",
     {L"Scalar 1.2 m", L"Scalar 1 m", L"Scalar 1", L"Scalar (0.6,-1.2) m", L"Double[3 0.75]",
      L"ComplexDouble[(0.6,-1.2)]", L"empty", L"!", L"!"}},
    {L"divide",
     L"(1,2)",
     {L"Scalar (0.4,0.8)", L"Scalar (0.333333333,0.666666667)", L"Scalar (0.333333333,0.666666667) m^-1", L"Scalar 1",
      L"ComplexDouble[(1,2) (0.25,0.5)]", L"ComplexDouble[(1,0)]", L"empty", L"!", L"!"}},
    {L"divide",
     L"U8[1 4]",
     {L"Double[0.4 1.6]", L"Double[0.333333333 1.33333333]", L"Double[0.333333333 1.33333333]",
      L"ComplexDouble[(0.2,-0.4) (0.8,-1.6)]", L"Double[1 1]", L"ComplexDouble[(0.2,-0.4)]", L"empty", L"!", L"!"}},
    {L"divide",
     L"ComplexDouble[(1,2)]",
     {L"ComplexDouble[(0.4,0.8)]", L"ComplexDouble[(0.333333333,0.666666667)]",
      L"ComplexDouble[(0.333333333,0.666666667)]", L"ComplexDouble[(1,0)]", L"ComplexDouble[(1,2)]",
      L"ComplexDouble[(1,0)]", L"empty", L"!", L"!"}},
    {L"divide", L"I64[1 4]", {L"empty", L"empty", L"empty", L"empty", L"empty", L"empty", L"empty", L"!", L"!"}},
    {L"divide", L"'ab'", {L"!", L"!", L"!", L"!", L"!", L"!", L"!", L"!", L"!"}},
    {L"divide", L"unset", {L"!", L"!", L"!", L"!", L"!", L"!", L"!", L"!", L"!"}},
};

TEST(ZetMathFcn, arithmeticOfEveryPair)
{
    expectSweeps(kOperands, kArithmetic);
}

TEST(ZetMathFcn, arithmeticOfQuantities)
{
    expectCalls({
        // the left side's units win
        {L"add", {L"Scalar 1 km", L"Scalar 1 m"}, L"Scalar 1.001 km"},
        {L"subtract", {L"Scalar 1 m", L"Scalar 1 km"}, L"Scalar -999 m"},
        {L"divide", {L"Scalar 3 m", L"Scalar 3 km"}, L"Scalar 0.001"},
        {L"divide", {L"Scalar 3 m", L"0"}, L"!Cannot divide by zero"},
        {L"divide", {L"1", L"0"}, L"inf"},
        {L"divide", {L"U8[1 0]", L"0"}, L"Double[inf nan]"},
        // a complex number without an imaginary part meets a tile as a double, on either side
        {L"add", {L"U8[1 4]", L"(2,0)"}, L"Double[3 6]"},
        {L"subtract", {L"(2,0)", L"U8[1 4]"}, L"Double[1 -2]"},
        {L"divide", {L"(2,0)", L"U8[1 4]"}, L"Double[2 0.5]"},
        {L"multiply", {L"Scalar (2,1) m", L"U8[1 4]"}, L"ComplexDouble[(2,1) (8,4)]"},
        // the number stays on its side
        {L"subtract", {L"10", L"U8[1 4]"}, L"Double[9 6]"},
        {L"divide", {L"10", L"U8[1 4]"}, L"Double[10 2.5]"},
        // tiles: the smaller size, increments, types without a form
        {L"add", {L"U8[200]", L"U8[100 1]"}, L"Double[300]"},
        {L"multiply", {L"I16/2[1 9 2 9]", L"Float[10 20 30]"}, L"Double[10 40]"},
        {L"add", {L"ComplexFloat[(1,1)]", L"U8[1]"}, L"ComplexDouble[(2,1)]"},
        {L"add", {L"ComplexFloat[(1,1)]", L"1"}, L"empty"},
        {L"add", {L"empty", L"1"}, L"empty"},
    });
}

TEST(ZetMathFcn, textJoins)
{
    expectCalls({
        // beside a value that was never set, a number stands in the default stream format
        {L"add", {L"unset", L"1"}, L"'1'"},
        {L"add", {L"1", L"unset"}, L"'1'"},
        {L"add", {L"unset", L"0.1"}, L"'0.1'"},
        {L"add", {L"unset", L"12345678"}, L"'1.23457e+07'"},
        {L"add", {L"unset", L"Bool 1"}, L"'1'"},
        // beside a text it is the text of the value
        {L"add", {L"'a'", L"1"}, L"'a1.0'"},
        {L"add", {L"1", L"'a'"}, L"'1.0a'"},
        {L"add", {L"''", L"12345.67"}, L"'12345.670000000000073'"},
        {L"add", {L"''", L"Bool 1"}, L"'true'"},
        {L"add", {L"'2 m'", L"'3 m'"}, L"'2 m3 m'"},
        {L"add", {L"unset", L"unset"}, L"''"},
    });
}

TEST(ZetMathFcn, textRepeats)
{
    expectCalls({
        {L"multiply", {L"3", L"'ab'"}, L"'ababab'"},
        {L"multiply", {L"'ab'", L"3"}, L"'ababab'"},
        {L"multiply", {L"2.9", L"'ab'"}, L"'abab'"},
        {L"multiply", {L"0", L"'ab'"}, L"''"},
        {L"multiply", {L"-1", L"'ab'"}, L"''"},
        {L"multiply", {L"nan", L"'ab'"}, L"''"},
        {L"multiply", {L"Scalar 2 m", L"'ab'"}, L"'abab'"},
        {L"multiply", {L"2000000000", L"''"}, L"''"},
        {L"multiply", {L"'2'", L"'ab'"}, L"!"},
    });
}

// Which pairs of classes a function serves. The operands stand for the classes Double, Scalar and
// Tile, and for the values that are of none: a string, and nothing.
const wchar_t* const kClasses[] = {L"2", L"Scalar 1", L"U8[1 4]", L"'ab'", L"unset"};

struct PairRow
{
    const wchar_t* name;
    const char* served[5];  // a row for each class on the left: 1 is served, . is refused
};

const PairRow kPairs[] = {
    {L"add", {"11111", "11111", "11111", "11111", "11111"}},
    {L"subtract", {"111..", "111..", "111..", ".....", "....."}},
    {L"multiply", {"11111", "11111", "111..", "11...", "11..."}},
    {L"divide", {"111..", "111..", "111..", ".....", "....."}},
    {L"mod", {"1....", ".....", ".....", ".....", "....."}},
    {L"pow", {"11...", "11...", "11111", ".....", "....."}},
    {L"atan2", {"11...", "11...", "..1..", ".....", "....."}},
    {L"hypot", {"11...", "11...", ".....", ".....", "....."}},
    {L"fmod", {"1....", ".....", ".....", ".....", "....."}},
    {L"ldexp", {"11...", "11...", "11111", ".....", "....."}},
    {L"logb", {"11...", "11...", "11111", ".....", "....."}},
    {L"yn", {"11...", "11...", "11111", ".....", "....."}},
    {L"jn", {"11...", "11...", "11111", ".....", "....."}},
    {L"cmplx", {"111..", "11...", "1.1..", ".....", "....."}},
    {L"equals", {"11111", "11111", "11111", "11111", "11111"}},
    {L"notequals", {"11111", "11111", "11111", "11111", "11111"}},
    {L"lessthan", {"11...", "11...", ".....", ".....", "....."}},
    {L"lessthanequals", {"11...", "11...", ".....", ".....", "....."}},
    {L"greaterthan", {"11...", "11...", ".....", ".....", "....."}},
    {L"greaterthanequals", {"11...", "11...", ".....", ".....", "....."}},
    {L"logicalor", {"1111.", "1111.", "1111.", "1111.", "....."}},
    {L"logicaland", {"1111.", "1111.", "1111.", "1111.", "....."}},
    {L"clipmin", {"11111", "11111", "11111", ".....", "....."}},
    {L"clipmax", {"11111", "11111", "11111", ".....", "....."}},
    {L"min", {"111..", "111..", "111..", ".....", "....."}},
    {L"max", {"111..", "111..", "111..", ".....", "....."}},
    {L"sum", {"111..", "111..", "111..", ".....", "....."}},
    {L"median", {"111..", "111..", "111..", ".....", "....."}},
};

TEST(ZetMathFcn, whichPairsAreServed)
{
    for (const PairRow& row : kPairs) {
        for (std::size_t left = 0; left < std::size(kClasses); ++left) {
            for (std::size_t right = 0; right < std::size(kClasses); ++right) {
                const std::wstring result = callText(row.name, {kClasses[left], kClasses[right]});
                const bool served = row.served[left][right] == '1';
                const auto where = testing::PrintToString(std::wstring(row.name) + L"(" + kClasses[left] + L", " +
                                                          kClasses[right] + L") = " + result);
                EXPECT_TRUE(served ? result[0] != L'!' : result == L"!") << where;
            }
        }
    }
}

TEST(ZetMathFcn, twoOperandsOfEveryClass)
{
    expectCalls({
        // the result of two doubles is a ComplexDouble where they compute as scalars
        {L"pow", {L"2", L"10"}, L"(1024,0)"},
        {L"pow", {L"-8", L"0.333333333333333"}, L"(nan,0)"},
        {L"pow", {L"Scalar 3 m", L"2"}, L"Scalar 9 m^2"},
        {L"pow", {L"(0,1)", L"(0,1)"}, L"Scalar 0.207879576"},
        {L"pow", {L"2", L"Scalar 1 m"}, L"!Values must be unit-less for 'pow'"},
        {L"pow", {L"I32[2 -3]", L"2"}, L"Double[4 9]"},
        {L"pow", {L"I32[4 9]", L"0.5"}, L"Double[2 3]"},
        {L"pow", {L"I32[4 9]", L"Scalar 2 m"}, L"Double[16 81]"},
        {L"pow", {L"I32[4 9]", L"'2'"}, L"Double[16 81]"},
        {L"pow", {L"ComplexDouble[(2,0)]", L"2"}, L"ComplexDouble[(4,0)]"},
        {L"pow", {L"U64[1]", L"2"}, L"empty"},
        {L"atan2", {L"1", L"2"}, L"(0.463647609,0)"},
        {L"atan2", {L"Scalar 1 m", L"Scalar 2 m"}, L"Scalar 0.463647609 rad"},
        {L"atan2", {L"Scalar 1 m", L"2"}, L"!Cannot convert physical units from 'm' to ''"},
        {L"atan2", {L"U8[1]", L"U8[2]"}, L"empty"},
        {L"hypot", {L"3", L"4"}, L"5"},
        {L"hypot", {L"Scalar 3 m", L"Scalar 0.004 km"}, L"Scalar 5 m"},
        {L"hypot", {L"(1,2)", L"3"}, L"!Complex values are not valid for 'hypot'"},
        {L"fmod", {L"7.5", L"2"}, L"1.5"},
        {L"fmod", {L"-7.5", L"2"}, L"-1.5"},
        {L"fmod", {L"1", L"0"}, L"nan"},
        {L"ldexp", {L"3", L"4"}, L"48"},
        {L"ldexp", {L"3", L"-0.5"}, L"2.12132034"},
        {L"ldexp", {L"Scalar 3 m", L"4"}, L"Scalar 48 m"},
        {L"ldexp", {L"U8[1]", L"4"}, L"empty"},
        {L"logb", {L"8", L"2"}, L"3"},
        {L"logb", {L"-8", L"2"}, L"nan"},
        {L"logb", {L"Scalar 8", L"2"}, L"Scalar 3"},
        {L"logb", {L"Scalar 8 m", L"2"}, L"!Values must be unit-less for 'log'"},
        {L"logb", {L"U8[1 8]", L"2"}, L"Double[0 3]"},
        {L"yn", {L"3", L"2"}, L"(-0.160400393,0)"},
        {L"yn", {L"Scalar 3", L"2.9"}, L"Scalar -0.160400393"},
        {L"yn", {L"U8[1 4]", L"2.9"}, L"Double[-1.65068261 0.215903595]"},
        {L"yn", {L"0", L"1"}, L"!Invalid argument for 'yn'"},
        {L"jn", {L"3", L"2"}, L"(0.486091261,0)"},
        {L"jn", {L"Scalar 3", L"2"}, L"Scalar 0.486091261"},
        {L"jn", {L"U8[1 4]", L"Scalar 2 m"}, L"Double[0.114903485 0.364128146]"},
        {L"jn", {L"3", L"-1"}, L"!Invalid argument for 'jn'"},
        {L"cmplx", {L"1", L"2"}, L"(1,2)"},
        {L"cmplx", {L"Int 1", L"Bool 1"}, L"(1,1)"},
        {L"cmplx", {L"Scalar 1 m", L"2"}, L"Scalar (1,2)"},
        {L"cmplx", {L"(1,5)", L"Scalar (2,6) m"}, L"Scalar (1,2)"},
        {L"cmplx", {L"U8[1 4]", L"I16[5 6]"}, L"ComplexDouble[(1,5) (4,6)]"},
        {L"cmplx", {L"U8[1 4]", L"3"}, L"ComplexDouble[(1,3) (4,3)]"},
        {L"cmplx", {L"3", L"U8[1 4]"}, L"ComplexDouble[(3,1) (3,4)]"},
        {L"cmplx", {L"U8[1]", L"I64[1]"}, L"empty"},
    });
}

TEST(ZetMathFcn, modIsOfIntegers)
{
    expectCalls({
        {L"mod", {L"7", L"3"}, L"Int 1"},
        {L"mod", {L"-7", L"3"}, L"Int -1"},
        {L"mod", {L"7", L"-3"}, L"Int 1"},
        {L"mod", {L"7.9", L"3"}, L"Int 1"},
        {L"mod", {L"7", L"3.9"}, L"Int 1"},
        {L"mod", {L"Int64 4294967303", L"Bool 1"}, L"Int 0"},
        {L"mod", {L"Int64 4294967303", L"5"}, L"Int 2"},
        {L"mod", {L"1e300", L"10"}, L"Int -8"},
        {L"mod", {L"-2147483648", L"1"}, L"Int 0"},
        {L"mod", {L"-2147483647", L"-1"}, L"Int 0"},
    });
}

/// A call in a child process, where the fault ends it: any handler that a checker put there goes.
void modWithTheDefaultHandler(const wchar_t* dividend, const wchar_t* divisor)
{
    std::signal(SIGFPE, SIG_DFL);
    callText(L"mod", {dividend, divisor});
}

TEST(ZetMathFcnDeathTest, modFaults)
{
    EXPECT_EXIT(modWithTheDefaultHandler(L"7", L"0"), testing::KilledBySignal(SIGFPE), "");
    EXPECT_EXIT(modWithTheDefaultHandler(L"7", L"0.9"), testing::KilledBySignal(SIGFPE), "");
    EXPECT_EXIT(modWithTheDefaultHandler(L"0", L"0"), testing::KilledBySignal(SIGFPE), "");
    EXPECT_EXIT(modWithTheDefaultHandler(L"-2147483648", L"-1"), testing::KilledBySignal(SIGFPE), "");
    EXPECT_EXIT(modWithTheDefaultHandler(L"nan", L"-1"), testing::KilledBySignal(SIGFPE), "");
}

}  // namespace
}  // namespace test
}  // namespace zet

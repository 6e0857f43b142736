#include <gtest/gtest.h>

#include "support/ZetFunctionCalls"

namespace zet {
namespace test {
namespace {

TEST(ZetMathFcn, clipminAndClipmax)
{
    expectCalls({
        {L"clipmin", {L"1", L"2"}, L"2"},
        {L"clipmin", {L"3", L"2"}, L"3"},
        {L"clipmax", {L"1", L"2"}, L"1"},
        {L"clipmax", {L"3", L"2"}, L"2"},
        // the value taken keeps its kind; of equal ones it is x
        {L"clipmin", {L"1", L"Int 2"}, L"Int 2"},
        {L"clipmax", {L"Bool 1", L"2"}, L"Bool 1"},
        {L"clipmin", {L"Int 2", L"2"}, L"Int 2"},
        {L"clipmax", {L"Int 2", L"2"}, L"Int 2"},
        {L"clipmin", {L"nan", L"2"}, L"nan"},
        {L"clipmin", {L"2", L"nan"}, L"2"},
        {L"clipmax", {L"nan", L"2"}, L"nan"},
        // scalars come out in the units of the limit
        {L"clipmin", {L"Scalar 1 m", L"Scalar 1 km"}, L"Scalar 1 km"},
        {L"clipmin", {L"Scalar 2000 m", L"Scalar 1 km"}, L"Scalar 2 km"},
        {L"clipmax", {L"Scalar 2000 m", L"Scalar 1 km"}, L"Scalar 1 km"},
        {L"clipmax", {L"(1,0)", L"2"}, L"Scalar 1"},
        {L"clipmax", {L"3", L"(2,0)"}, L"Scalar 2"},
        {L"clipmin", {L"Scalar 1 m", L"2"}, L"!Cannot convert physical units from '' to 'm'"},
        // tiles take any limit as a double
        {L"clipmin", {L"U8[1 4]", L"2"}, L"Double[2 4]"},
        {L"clipmax", {L"U8[1 4]", L"Scalar 2 m"}, L"Double[1 2]"},
        {L"clipmax", {L"ComplexDouble[(1,2)]", L"2"}, L"empty"},
        {L"clipmin", {L"Double[nan -0]", L"-1"}, L"Double[nan -0]"},
    });
}

// KEPT forms: x alone decides how a limit that is no number is read.
TEST(ZetMathFcn, limitsOfNoClass)
{
    expectCalls({
        {L"clipmin", {L"Scalar 1 m", L"'2 m'"}, L"Scalar 2 m"},
        {L"clipmin", {L"1", L"'2'"}, L"'2'"},
        {L"clipmin", {L"-1", L"unset"}, L"unset"},
        {L"clipmin", {L"1", L"unset"}, L"1"},
        {L"clip", {L"Scalar 5 m", L"'1 m'", L"'2 m'"}, L"Scalar 2 m"},
        {L"clip", {L"5", L"'1'", L"'2'"}, L"'2'"},
        {L"clip", {L"5", L"'1'", L"2"}, L"!"},
        {L"clip", {L"5", L"unset", L"2"}, L"!"},
        {L"clipmin", {L"'a'", L"1"}, L"!"},
        {L"clipmax", {L"unset", L"1"}, L"!"},
    });
}

TEST(ZetMathFcn, clip)
{
    expectCalls({
        {L"clip", {L"5", L"1", L"10"}, L"5"},
        {L"clip", {L"0", L"1", L"10"}, L"1"},
        {L"clip", {L"11", L"1", L"10"}, L"10"},
        {L"clip", {L"Int 5", L"1", L"10"}, L"Int 5"},
        {L"clip", {L"0", L"Int 1", L"10"}, L"Int 1"},
        {L"clip", {L"1", L"Int 1", L"10"}, L"1"},
        {L"clip", {L"nan", L"1", L"10"}, L"nan"},
        {L"clip", {L"0", L"1", L"Scalar 10"}, L"1"},
        {L"clip", {L"11", L"1", L"Scalar 10 m"}, L"Scalar 10 m"},
        {L"clip", {L"Scalar 5 m", L"Scalar 1 km", L"Scalar 2 km"}, L"Scalar 1 km"},
        {L"clip", {L"Scalar 1500 m", L"Scalar 1 km", L"Scalar 2 km"}, L"Scalar 1.5 km"},
        {L"clip", {L"(5,0)", L"1", L"2"}, L"Scalar 2"},
        {L"clip", {L"Scalar 5 m", L"1", L"2"}, L"!Cannot convert physical units from 'm' to ''"},
        {L"clip", {L"U8[0 5 11]", L"1", L"10"}, L"Double[1 5 10]"},
        {L"clip", {L"Float[0 0.5 nan]", L"0", L"0.25"}, L"Double[0 0.25 nan]"},
        {L"clip", {L"ComplexDouble[(1,2)]", L"0", L"1"}, L"empty"},
        {L"clip", {L"'a'", L"1", L"10"}, L"!"},
        {L"clip", {L"unset", L"1", L"10"}, L"!"},
        {L"clip", {L"5", L"U8[1]", L"10"}, L"!"},
    });
}

TEST(ZetMathFcn, clipWithSwappedLimits)
{
    expectCalls({
        {L"clip", {L"0", L"10", L"1"}, L"10"},
        {L"clip", {L"11", L"10", L"1"}, L"1"},
        {L"clip", {L"5", L"10", L"1"}, L"5"},
        {L"clip", {L"U8[0 5 11]", L"10", L"1"}, L"Double[1 5 10]"},
        {L"clip", {L"Scalar 5", L"10", L"1"}, L"!Invalid argument for 'clip'"},
    });
}

TEST(ZetMathFcn, roundclip)
{
    expectCalls({
        // the kind that holds each type
        {L"roundclip", {L"2.5", L"Type I8", L"0", L"100"}, L"Int 3"},
        {L"roundclip", {L"2.5", L"Type U8", L"0", L"100"}, L"Int 3"},
        {L"roundclip", {L"2.5", L"Type I16", L"0", L"100"}, L"Int 3"},
        {L"roundclip", {L"2.5", L"Type U16", L"0", L"100"}, L"Int 3"},
        {L"roundclip", {L"2.5", L"Type I32", L"0", L"100"}, L"Int 3"},
        {L"roundclip", {L"2.5", L"Type U32", L"0", L"100"}, L"UInt 3"},
        {L"roundclip", {L"2.5", L"Type I64", L"0", L"100"}, L"Int64 3"},
        {L"roundclip", {L"2.5", L"Type U64", L"0", L"100"}, L"UInt64 3"},
        {L"roundclip", {L"2.5", L"Type Float", L"0", L"100"}, L"2.5"},
        {L"roundclip", {L"2.5", L"Type Double", L"0", L"100"}, L"2.5"},
        {L"roundclip", {L"2.5", L"Type ComplexFloat", L"0", L"100"}, L"!"},
        {L"roundclip", {L"2.5", L"Type ComplexDouble", L"0", L"100"}, L"!"},
        {L"roundclip", {L"2.5", L"Type none", L"0", L"100"}, L"!"},
        // half away from zero for signed types, up for unsigned ones
        {L"roundclip", {L"-2.5", L"Type I16", L"-100", L"100"}, L"Int -3"},
        {L"roundclip", {L"-2.4", L"Type I16", L"-100", L"100"}, L"Int -2"},
        {L"roundclip", {L"-2.5", L"Type U16", L"-100", L"100"}, L"Int -2"},
        {L"roundclip", {L"-3.7", L"Type U32", L"-100", L"100"}, L"UInt 4294967293"},
        {L"roundclip", {L"0.49999999999999994", L"Type I32", L"0", L"1"}, L"Int 1"},
        // limits are cut, not rounded; a value that equals one is that limit
        {L"roundclip", {L"0", L"Type U8", L"0.9", L"10"}, L"Int 0"},
        {L"roundclip", {L"20", L"Type U8", L"0", L"10.9"}, L"Int 10"},
        {L"roundclip", {L"10.9", L"Type U8", L"0", L"10.9"}, L"Int 10"},
        {L"roundclip", {L"10.8", L"Type U8", L"0", L"10.9"}, L"Int 11"},
        {L"roundclip", {L"20", L"Type Float", L"0", L"10.9"}, L"10.9"},
        {L"roundclip", {L"5", L"Type U8", L"10", L"1"}, L"Int 10"},
        {L"roundclip", {L"15", L"Type U8", L"10", L"1"}, L"Int 1"},
        // the kind holds more than the type
        {L"roundclip", {L"300", L"Type U8", L"0", L"1000"}, L"Int 300"},
        {L"roundclip", {L"1e10", L"Type I32", L"0", L"1e11"}, L"Int -2147483648"},
        {L"roundclip", {L"1e10", L"Type U32", L"0", L"1e11"}, L"UInt 1410065408"},
        {L"roundclip", {L"1e18", L"Type I64", L"0", L"1e19"}, L"Int64 1000000000000000000"},
        {L"roundclip", {L"1e19", L"Type U64", L"0", L"1e20"}, L"UInt64 10000000000000000000"},
        // NaN passes both limits, and the processor's cut decides
        {L"roundclip", {L"nan", L"Type U8", L"0", L"255"}, L"Int -2147483648"},
        {L"roundclip", {L"nan", L"Type U32", L"0", L"255"}, L"UInt 0"},
        {L"roundclip", {L"nan", L"Type I64", L"0", L"255"}, L"Int64 -9223372036854775808"},
        {L"roundclip", {L"nan", L"Type U64", L"0", L"255"}, L"UInt64 9223372036854775808"},
        {L"roundclip", {L"nan", L"Type Double", L"0", L"255"}, L"nan"},
        // limits of any numeric kind; other kinds of x
        {L"roundclip", {L"Int 7", L"Type U8", L"Int 0", L"Scalar 5 m"}, L"Int 5"},
        {L"roundclip", {L"7", L"Type U8", L"'1'", L"'5'"}, L"Int 5"},
        {L"roundclip", {L"7", L"Type U8", L"unset", L"5"}, L"!"},
        {L"roundclip", {L"7", L"Type U8", L"0", L"'a'"}, L"!"},
        {L"roundclip", {L"7", L"Type U8", L"0", L"U8[1]"}, L"!"},
        {L"roundclip", {L"(7,0)", L"Type U8", L"0", L"5"}, L"!"},
        {L"roundclip", {L"Scalar 7 m", L"Type U8", L"0", L"5"}, L"!"},
        {L"roundclip", {L"'7'", L"Type U8", L"0", L"5"}, L"!"},
        {L"roundclip", {L"unset", L"Type U8", L"0", L"5"}, L"!"},
        // tiles
        {L"roundclip", {L"Double[-3.2 100.5 300]", L"Type U8", L"0", L"255"}, L"U8[0 101 255]"},
        {L"roundclip", {L"Double[-2.5 2.5]", L"Type I16", L"-10", L"10"}, L"I16[-3 3]"},
        {L"roundclip", {L"Double[0.25 2]", L"Type Float", L"0", L"1"}, L"Float[0.25 1]"},
    });
}

TEST(ZetMathFcn, roundclipTakesWhatConvertsToAType)
{
    expectCalls({
        {L"roundclip", {L"2.5", L"Int 5", L"0", L"9"}, L"UInt 3"},
        {L"roundclip", {L"2.5", L"UInt 6", L"0", L"9"}, L"Int64 3"},
        {L"roundclip", {L"2.5", L"'(U64,64)'", L"0", L"9"}, L"UInt64 3"},
        // a double is no number of a type
        {L"roundclip", {L"2.5", L"1", L"0", L"9"}, L"!"},
        {L"roundclip", {L"2.5", L"Int64 1", L"0", L"9"}, L"!"},
        {L"roundclip", {L"2.5", L"'nonsense'", L"0", L"9"}, L"!"},
        {L"roundclip", {L"2.5", L"unset", L"0", L"9"}, L"!"},
        {L"roundclip", {L"U8[1]", L"1", L"0", L"9"}, L"!"},
        {L"roundclip", {L"Float[1.5]", L"Int 1", L"0", L"9"}, L"U8[2]"},
    });
}

}  // namespace
}  // namespace test
}  // namespace zet

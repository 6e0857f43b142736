#include <limits>

#include <gtest/gtest.h>

#include "support/ZetFunctionCalls"

namespace zet {
namespace test {
namespace {

const std::vector<std::wstring> kOperands = {
    L"0.5",        L"Int 2",      L"Bool 1",  L"Scalar 0.5",
    L"Scalar 3 m", L"(0.5,0.25)", L"U8[1 4]", L"ComplexDouble[(0.5,0.25)]",
    L"I64[1 4]",
};

// What sine, logarithm, gamma and Bessel functions give was computed with exact series.
const std::vector<SweepRow> kOneOperand = {
    {L"sin",
     {L"0.479425539", L"0.909297427", L"0.841470985", L"Scalar 0.479425539",
      L"!Cannot convert physical units from 'rad' to 'm'", L"Scalar (0.494485781,0.221688164)",
      L"Double[0.841470985 -0.756802495]", L"ComplexDouble[(0.494485781,0.221688164)]", L"empty"}},
    {L"asin",
     {L"0.523598776", L"nan", L"1.57079633", L"Scalar 0.523598776 rad", L"!Values must be unit-less for 'asin'",
      L"Scalar (0.501608853,0.281396056) rad", L"Double[1.57079633 nan]", L"ComplexDouble[(0.501608853,0.281396056)]",
      L"empty"}},
    {L"sinh",
     {L"0.521095305", L"3.62686041", L"1.17520119", L"Scalar 0.521095305",
      L"!Cannot convert physical units from 'rad' to 'm'", L"Scalar (0.504895714,0.278979128)",
      L"Double[1.17520119 27.2899172]", L"ComplexDouble[(0.504895714,0.278979128)]", L"empty"}},
    {L"cos",
     {L"0.877582562", L"-0.416146837", L"0.540302306", L"Scalar 0.877582562",
      L"!Cannot convert physical units from 'rad' to 'm'", L"Scalar (0.905150151,-0.121108796)",
      L"Double[0.540302306 -0.653643621]", L"ComplexDouble[(0.905150151,-0.121108796)]", L"empty"}},
    {L"acos",
     {L"1.04719755", L"nan", L"0", L"Scalar 1.04719755 rad", L"!Values must be unit-less for 'acos'",
      L"Scalar (1.06918747,-0.281396056) rad", L"Double[0 nan]", L"ComplexDouble[(1.06918747,-0.281396056)]",
      L"empty"}},
    {L"cosh",
     {L"1.12762597", L"3.76219569", L"1.54308063", L"Scalar 1.12762597",
      L"!Cannot convert physical units from 'rad' to 'm'", L"Scalar (1.0925708,0.128921042)",
      L"Double[1.54308063 27.3082328]", L"ComplexDouble[(1.0925708,0.128921042)]", L"empty"}},
    {L"tan",
     {L"0.54630249", L"-2.18503986", L"1.55740772", L"Scalar 0.54630249",
      L"!Cannot convert physical units from 'rad' to 'm'", L"Scalar (0.504500703,0.312420693)",
      L"Double[1.55740772 1.15782128]", L"ComplexDouble[(0.504500703,0.312420693)]", L"empty"}},
    {L"atan",
     {L"0.463647609", L"1.10714872", L"0.785398163", L"Scalar 0.463647609 rad", L"!Values must be unit-less for 'atan'",
      L"Scalar (0.48425449,0.200586618) rad", L"Double[0.785398163 1.32581766]",
      L"ComplexDouble[(0.48425449,0.200586618)]", L"empty"}},
    {L"tanh",
     {L"0.462117157", L"0.96402758", L"0.761594156", L"Scalar 0.462117157",
      L"!Cannot convert physical units from 'rad' to 'm'", L"Scalar (0.485487281,0.19805545)",
      L"Double[0.761594156 0.9993293]", L"ComplexDouble[(0.485487281,0.19805545)]", L"empty"}},
    {L"exp",
     {L"1.64872127", L"7.3890561", L"2.71828183", L"Scalar 1.64872127", L"!Values must be unit-less for 'exp'",
      L"Scalar (1.59746652,0.40790017)", L"Double[2.71828183 54.59815]", L"ComplexDouble[(1.59746652,0.40790017)]",
      L"empty"}},
    {L"log",
     {L"-0.693147181", L"0.693147181", L"0", L"Scalar -0.693147181", L"!Values must be unit-less for 'log'",
      L"Scalar (-0.581575405,0.463647609)", L"Double[0 1.38629436]", L"ComplexDouble[(-0.581575405,0.463647609)]",
      L"empty"}},
    {L"log10",
     {L"-0.301029996", L"0.301029996", L"0", L"Scalar -0.301029996", L"!Values must be unit-less for 'log10'",
      L"Scalar (-0.252574989,0.201359598)", L"Double[0 0.602059991]", L"ComplexDouble[(-0.252574989,0.201359598)]",
      L"empty"}},
    {L"ceil",
     {L"1", L"2", L"1", L"Scalar 1", L"Scalar 3 m", L"!Complex values are not valid for 'ceil'", L"Double[1 4]",
      L"empty", L"empty"}},
    {L"floor",
     {L"0", L"2", L"1", L"Scalar 0", L"Scalar 3 m", L"!Complex values are not valid for 'floor'", L"Double[1 4]",
      L"empty", L"empty"}},
    {L"abs",
     {L"0.5", L"2", L"1", L"Scalar 0.5", L"Scalar 3 m", L"Scalar 0.559016994", L"Double[1 4]",
      L"ComplexDouble[(0.559016994,0)]", L"empty"}},
    {L"arg",
     {L"(0,0)", L"(0,0)", L"(0,0)", L"Scalar 0 rad", L"Scalar 0 rad", L"Scalar 0.463647609 rad", L"Double[0 0]",
      L"Double[0.463647609]", L"empty"}},
    {L"norm",
     {L"(0.25,0)", L"(4,0)", L"(1,0)", L"Scalar 0.25", L"Scalar 9 m^2", L"Scalar 0.3125", L"Double[1 16]",
      L"Double[0.3125]", L"empty"}},
    {L"conj",
     {L"(0.5,0)", L"(2,0)", L"(1,0)", L"Scalar 0.5", L"Scalar 3 m", L"Scalar (0.5,-0.25)",
      L"ComplexDouble[(1,0) (4,0)]", L"ComplexDouble[(0.5,-0.25)]", L"empty"}},
    {L"sinc",
     {L"(0.958851077,0)", L"(0.454648713,0)", L"(0.841470985,0)", L"Scalar 0.958851077",
      L"!Cannot convert physical units from 'rad' to 'm'", L"Scalar (0.968527781,-0.0408875621)",
      L"Double[0.841470985 -0.189200624]", L"ComplexDouble[(0.968527781,-0.0408875621)]", L"empty"}},
    {L"sqrt",
     {L"(0.707106781,0)", L"(1.41421356,0)", L"(1,0)", L"Scalar 0.707106781", L"Scalar 1.73205081 m^0.5",
      L"Scalar (0.727673345,0.171780375)", L"Double[1 2]", L"ComplexDouble[(0.727673345,0.171780375)]", L"empty"}},
    {L"trunc",
     {L"(0,0)", L"(2,0)", L"(1,0)", L"Scalar 0", L"Scalar 3 m", L"!Complex values are not valid for 'trunc'",
      L"Double[1 4]", L"empty", L"empty"}},
    {L"round",
     {L"(1,0)", L"(2,0)", L"(1,0)", L"Scalar 1", L"Scalar 3 m", L"Scalar 1", L"Double[1 4]", L"empty", L"empty"}},
    {L"y0",
     {L"(-0.444518734,0)", L"(0.510375673,0)", L"(0.0882569642,0)", L"Scalar -0.444518734",
      L"!Values must be unit-less for 'y0'", L"!Complex values are not valid for 'y0'",
      L"Double[0.0882569642 -0.0169407393]", L"empty", L"empty"}},
    {L"y1",
     {L"(-1.47147239,0)", L"(-0.107032432,0)", L"(-0.781212821,0)", L"Scalar -1.47147239",
      L"!Values must be unit-less for 'y1'", L"!Complex values are not valid for 'y1'",
      L"Double[-0.781212821 0.397925711]", L"empty", L"empty"}},
    {L"j0",
     {L"(0.938469807,0)", L"(0.223890779,0)", L"(0.765197687,0)", L"Scalar 0.938469807",
      L"!Values must be unit-less for 'j0'", L"!Complex values are not valid for 'j0'",
      L"Double[0.765197687 -0.39714981]", L"empty", L"empty"}},
    {L"j1",
     {L"(0.242268458,0)", L"(0.576724808,0)", L"(0.440050586,0)", L"Scalar 0.242268458",
      L"!Values must be unit-less for 'j1'", L"!Complex values are not valid for 'j1'",
      L"Double[0.440050586 -0.066043328]", L"empty", L"empty"}},
    {L"factorial",
     {L"(1,0)", L"(2,0)", L"(1,0)", L"Scalar 1", L"!Values must be unit-less for 'factorial'",
      L"!Complex values are not valid for 'factorial'", L"Double[1 24]", L"empty", L"empty"}},
    {L"real", {L"(0.5,0)", L"(2,0)", L"(1,0)", L"0.5", L"3", L"0.5", L"Double[1 4]", L"Double[0.5]", L"empty"}},
    {L"imag", {L"(0,0)", L"(0,0)", L"(0,0)", L"0", L"0", L"0.25", L"Double[0 0]", L"Double[0.25]", L"empty"}},
    {L"unaryminus",
     {L"-0.5", L"-2", L"-1", L"Scalar -0.5", L"Scalar -3 m", L"Scalar (-0.5,-0.25)", L"Double[-1 -4]",
      L"ComplexDouble[(-0.5,-0.25)]", L"empty"}},
    {L"unaryplus",
     {L"0.5", L"Int 2", L"Bool 1", L"Scalar 0.5", L"Scalar 3 m", L"(0.5,0.25)", L"U8[1 4]",
      L"ComplexDouble[(0.5,0.25)]", L"I64[1 4]"}},
    {L"logicalnot",
     {L"Bool 0", L"Bool 0", L"Bool 0", L"Bool 0", L"Bool 0", L"Bool 0", L"Bool 1", L"Bool 1", L"Bool 1"}},
};

TEST(ZetMathFcn, resultsOfEveryOperandClass)
{
    expectSweeps(kOperands, kOneOperand);
}

TEST(ZetMathFcn, oneOperandOfNoClassFails)
{
    for (const SweepRow& row : kOneOperand) {
        const std::wstring name = row.name;
        if (name == L"unaryplus" || name == L"logicalnot") {
            continue;
        }
        expectCalls({{row.name, {L"'abc'"}, L"!"}, {row.name, {L"unset"}, L"!"}, {row.name, {L"'1'"}, L"!"}});
    }
    expectCalls({
        {L"unaryplus", {L"'abc'"}, L"'abc'"},
        {L"unaryplus", {L"unset"}, L"unset"},
        {L"logicalnot", {L"'abc'"}, L"Bool 1"},
        {L"logicalnot", {L"'yes'"}, L"Bool 0"},
        {L"logicalnot", {L"unset"}, L"!"},
    });
}

TEST(ZetMathFcn, everyRealKindIsADouble)
{
    expectCalls({
        {L"unaryminus", {L"UInt 7"}, L"-7"},
        {L"unaryminus", {L"Int64 -7"}, L"7"},
        {L"unaryminus", {L"UInt64 7"}, L"-7"},
        {L"unaryminus", {L"Char A"}, L"-65"},
        {L"unaryminus", {L"I64Rational -1/2"}, L"0.5"},
        {L"unaryminus", {L"U64Rational 1/2"}, L"-0.5"},
        {L"sqrt", {L"UInt64 9"}, L"(3,0)"},
    });
}

TEST(ZetMathFcn, whereADoubleTurnsComplex)
{
    expectCalls({
        // through the scalar: the result may leave the real axis
        {L"sqrt", {L"-4"}, L"(0,2)"},
        {L"sqrt", {L"4"}, L"(2,0)"},
        {L"arg", {L"-1"}, L"(3.14159265,0)"},
        {L"round", {L"2.5"}, L"(3,0)"},
        {L"round", {L"-2.5"}, L"(-3,0)"},
        {L"round", {L"0"}, L"(-0,0)"},
        {L"trunc", {L"-2.9"}, L"(-2,0)"},
        // an imaginary part that compares equal to 0 is 0
        {L"conj", {L"5"}, L"(5,0)"},
        {L"factorial", {L"5"}, L"(120,0)"},
        {L"factorial", {L"21"}, L"(1.4197454e+19,0)"},
        // the double itself: out of the domain is NaN
        {L"floor", {L"2.5"}, L"2"},
        {L"ceil", {L"-2.5"}, L"-2"},
        {L"log", {L"-1"}, L"nan"},
        {L"log10", {L"-1"}, L"nan"},
        {L"asin", {L"2"}, L"nan"},
        {L"log", {L"0"}, L"-inf"},
        {L"abs", {L"-3"}, L"3"},
        // a complex operand is a scalar, whatever its imaginary part
        {L"log", {L"(-1,0)"}, L"Scalar nan"},
        {L"floor", {L"(2.5,0)"}, L"Scalar 2"},
        {L"floor", {L"(2.5,1)"}, L"!Complex values are not valid for 'floor'"},
    });
}

TEST(ZetMathFcn, scalarFailuresPassThrough)
{
    expectCalls({
        {L"factorial", {L"-1"}, L"!Invalid argument for 'factorial'"},
        {L"factorial", {L"170.5"}, L"!Invalid argument for 'factorial'"},
        {L"y0", {L"0"}, L"!Invalid argument for 'y0'"},
        {L"j1", {L"-1"}, L"!Invalid argument for 'j1'"},
        {L"sin", {L"Scalar 90 deg"}, L"Scalar 1"},
    });
}

TEST(ZetMathFcn, partsDropTheUnits)
{
    expectCalls({
        {L"real", {L"Scalar (3,4) m"}, L"3"},
        {L"imag", {L"Scalar (3,4) m"}, L"4"},
        {L"real", {L"Float[1.5]"}, L"Double[1.5]"},
        {L"imag", {L"Float[1.5]"}, L"Double[0]"},
    });
}

TEST(ZetMathFcn, nanThroughEveryRounding)
{
    expectCalls({
        {L"floor", {L"nan"}, L"nan"},
        {L"ceil", {L"nan"}, L"nan"},
        {L"trunc", {L"nan"}, L"(nan,0)"},
        {L"round", {L"nan"}, L"(nan,0)"},
        {L"floor", {L"Double[nan]"}, L"Double[nan]"},
        {L"abs", {L"nan"}, L"nan"},
        {L"unaryminus", {L"nan"}, L"nan"},
        {L"unaryminus", {L"0"}, L"-0"},
        {L"unaryminus", {L"(0,0)"}, L"Scalar -0"},
        {L"sinc", {L"Double[nan]"}, L"Double[1]"},
    });
}

}  // namespace
}  // namespace test
}  // namespace zet

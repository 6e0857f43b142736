#include <gtest/gtest.h>

#include "support/ZetFunctionCalls"

namespace zet {
namespace test {
namespace {

TEST(ZetMathFcn, equalityLeadsFromTheLeft)
{
    expectCalls({
        {L"equals", {L"Bool 1", L"5"}, L"Bool 1"},
        {L"equals", {L"5", L"Bool 1"}, L"Bool 0"},
        {L"equals", {L"1", L"'1'"}, L"Bool 1"},
        {L"equals", {L"'1'", L"1"}, L"Bool 0"},
        {L"equals", {L"'1.0'", L"1"}, L"Bool 1"},
        {L"equals", {L"Int 3", L"3.9"}, L"Bool 1"},
        {L"equals", {L"3.9", L"Int 3"}, L"Bool 0"},
        // doubles within 2^-23
        {L"equals", {L"1", L"1.0000001"}, L"Bool 1"},
        {L"equals", {L"1", L"1.00000012"}, L"Bool 0"},
        {L"equals", {L"0", L"1.1920928955078125e-07"}, L"Bool 1"},
        {L"equals", {L"0", L"1.1920928955078128e-07"}, L"Bool 0"},
        {L"equals", {L"nan", L"nan"}, L"Bool 0"},
        // nothing equals only nothing
        {L"equals", {L"unset", L"unset"}, L"Bool 1"},
        {L"equals", {L"unset", L"0"}, L"Bool 0"},
        {L"equals", {L"0", L"unset"}, L"Bool 0"},
        {L"equals", {L"'abc'", L"'abc'"}, L"Bool 1"},
        {L"equals", {L"U8[1 4]", L"U8[1 4]"}, L"Bool 1"},
        {L"equals", {L"U8[1 4]", L"U8[1 5]"}, L"Bool 0"},
        {L"equals", {L"U8[1 4]", L"1"}, L"Bool 0"},
        {L"equals", {L"Scalar 1 km", L"Scalar 1000 m"}, L"Bool 1"},
        {L"equals", {L"Scalar 1 m", L"Scalar 1 kg"}, L"!Cannot convert physical units from 'kg' to 'm'"},
        {L"notequals", {L"Bool 1", L"5"}, L"Bool 0"},
        {L"notequals", {L"5", L"Bool 1"}, L"Bool 1"},
        {L"notequals", {L"unset", L"unset"}, L"Bool 0"},
    });
}

TEST(ZetMathFcn, orderOfNumbers)
{
    const wchar_t* const names[] = {L"lessthan", L"lessthanequals", L"greaterthan", L"greaterthanequals"};
    struct Row
    {
        const wchar_t* a;
        const wchar_t* b;
        const char* results;  // of the four
    };
    const Row rows[] = {
        {L"1", L"2", "1100"},
        {L"2", L"1", "0011"},
        {L"2", L"2", "0101"},
        {L"Int 1", L"1.5", "1100"},
        {L"Bool 1", L"0.5", "0011"},
        {L"nan", L"1", "0000"},
        {L"1", L"nan", "0000"},
        {L"nan", L"nan", "0000"},
        {L"Scalar 1 m", L"Scalar 1 km", "1100"},
        {L"Scalar 1 km", L"Scalar 1000 m", "0101"},
        {L"(2,0)", L"1", "0011"},
        {L"1", L"(2,0)", "1100"},
        // within 4 representable values, two scalars are equal as well
        {L"Scalar 1", L"Scalar 1.0000000000000004", "1101"},
        {L"1", L"1.0000000000000004", "1100"},
    };
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < 4; ++i) {
            expectCalls({{names[i], {row.a, row.b}, row.results[i] == '1' ? L"Bool 1" : L"Bool 0"}});
        }
    }
}

TEST(ZetMathFcn, orderFailures)
{
    expectCalls({
        {L"lessthan", {L"U8[1]", L"2"}, L"!"},
        {L"lessthan", {L"1", L"U8[1]"}, L"!"},
        {L"greaterthanequals", {L"'a'", L"'b'"}, L"!"},
        {L"lessthan", {L"(1,2)", L"1"}, L"!Complex values are not valid for '<'"},
        {L"lessthanequals", {L"(1,2)", L"(1,2)"}, L"!Complex values are not valid for '<'"},
        {L"greaterthanequals", {L"1", L"(1,2)"}, L"!Complex values are not valid for '>'"},
        {L"lessthan", {L"Scalar 1 m", L"Scalar 1 kg"}, L"!Cannot convert physical units from 'm' to 'kg'"},
    });
    EXPECT_EQ(refusal(L"lessthan"), L"Invalid argument passed to 'lessthan' function.");
}

TEST(ZetMathFcn, logicOfTruths)
{
    expectCalls({
        {L"logicalor", {L"0", L"0"}, L"Bool 0"},
        {L"logicalor", {L"0", L"2"}, L"Bool 1"},
        {L"logicalor", {L"2", L"0"}, L"Bool 1"},
        {L"logicaland", {L"2", L"0"}, L"Bool 0"},
        {L"logicaland", {L"0", L"2"}, L"Bool 0"},
        {L"logicaland", {L"2", L"2"}, L"Bool 1"},
        {L"logicaland", {L"'yes'", L"'T'"}, L"Bool 1"},
        {L"logicaland", {L"'yes'", L"'maybe'"}, L"Bool 0"},
        {L"logicaland", {L"(0,1)", L"Scalar 1 m"}, L"Bool 1"},
        {L"logicalor", {L"nan", L"0"}, L"Bool 1"},
        {L"logicalor", {L"U8[1]", L"0"}, L"Bool 0"},
        {L"logicalor", {L"1", L"unset"}, L"!"},
        {L"logicaland", {L"unset", L"0"}, L"!"},
        {L"logicalnot", {L"0"}, L"Bool 1"},
        {L"logicalnot", {L"nan"}, L"Bool 0"},
    });
}

TEST(ZetMathFcn, ternaryReturnsTheBranchAsItIs)
{
    expectCalls({
        {L"ternary", {L"1", L"Int 2", L"3"}, L"Int 2"},
        {L"ternary", {L"0", L"2", L"'x'"}, L"'x'"},
        {L"ternary", {L"'on'", L"unset", L"3"}, L"unset"},
        {L"ternary", {L"U8[1]", L"2", L"3"}, L"3"},
        {L"ternary", {L"unset", L"2", L"3"}, L"!"},
    });
}

TEST(ZetMathFcn, selectCountsTheSelector)
{
    expectCalls({
        {L"select", {L"1", L"'a'", L"'b'"}, L"'a'"},
        {L"select", {L"2", L"'a'", L"'b'"}, L"'b'"},
        {L"select", {L"0", L"'a'", L"'b'"}, L"0"},
        {L"select", {L"0.9", L"'a'", L"'b'"}, L"0.9"},
        {L"select", {L"1.9", L"'a'", L"'b'"}, L"'a'"},
        {L"select", {L"3", L"'a'", L"'b'"}, L"!"},
        {L"select", {L"-1", L"'a'", L"'b'"}, L"!"},
        {L"select", {L"0"}, L"0"},
        {L"select", {L"1"}, L"!"},
        {L"select", {L"Bool 1", L"'a'"}, L"'a'"},
        {L"select", {L"Scalar 1 m", L"'a'"}, L"'a'"},
        {L"select", {L"(1,7)", L"'a'"}, L"'a'"},
        // a text that reads as a number is numeric
        {L"select", {L"'1'", L"'a'"}, L"'a'"},
        {L"select", {L"'x'", L"'a'"}, L"!"},
        {L"select", {L"unset", L"'a'"}, L"!"},
        {L"select", {L"U8[1]", L"'a'"}, L"!"},
    });
}

}  // namespace
}  // namespace test
}  // namespace zet

#include "EquationText"

#include <gtest/gtest.h>

#include <clocale>
#include <string>

#include "support/EquationFailure"

namespace {

using namespace bandmath;

TEST(EquationText, onOneLine)
{
    EXPECT_EQ(onOneLine("a+\nb\r\n+c\t"), "a+ b  +c\t");
}

TEST(EquationText, definitions)
{
    struct Row
    {
        const char* text;
        std::set<std::string> names;
    };
    const Row rows[] = {
        {"a+b", {}},
        {"x+y; y=2*a; a=3", {"y", "a"}},
        {";a=1;b_2 = 2", {"a", "b_2"}},
        // what is compared is not defined, and what is quoted is no text of the equation
        {"x;y=a==b", {"y"}},
        {"[1,2;a==b,3]", {}},
        {"roundclip(x,\";q=1\",0,1);p=1", {"p"}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(definitions(row.text), row.names) << row.text;
    }
}

TEST(EquationText, reduction)
{
    const char* const rows[][2] = {
        {"a+b", ""},
        {"a-mean(a)", "mean"},
        {"a/SUM (a)", "sum"},
        {"median(a,b)", "median"},
        // "min" and "max" fold several arguments pixel by pixel
        {"min(a,b)", ""},
        {"max(a,0)-min(a)", "min"},
        {"max((a,b))", "max"},
        {"max(f(a,b))", "max"},
        {"max(f(a,b),c)", ""},
        // names that only contain such a word, variables of that name, and quoted text
        {"summit(a)+mean+sum", ""},
        {"f(a,\"sum(x)\")", ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(reduction(row[0]), row[1]) << row[0];
    }
}

TEST(EquationText, functionOfAnything)
{
    EXPECT_EQ(functionOfAnything("a+1"), "");
    EXPECT_EQ(functionOfAnything("a + RoundClip (b, 1, 2, 3)"), "roundclip");
    EXPECT_EQ(functionOfAnything("max(b,0)+sum(a)"), "max");
    EXPECT_EQ(functionOfAnything("max(b,0)+sum(a)", "a"), "sum");
    EXPECT_EQ(functionOfAnything("max(ab,0)+sum(a+1)", "a"), "");
    EXPECT_EQ(functionOfAnything("max( a ,0)", "a"), "max");
    // functions have no case, variables do
    EXPECT_EQ(functionOfAnything("MAX(A,0)", "a"), "");
    EXPECT_EQ(functionOfAnything("MAX(A,0)", "A"), "max");
}

TEST(EquationText, columnOf)
{
    EXPECT_EQ(columnOf("red+nir", "nir"), 7);
    EXPECT_EQ(columnOf("nir2+nir", "nir"), 8);
    EXPECT_EQ(columnOf("\"nir\"+nir", "nir"), 9);
    EXPECT_EQ(columnOf("red", "nir"), 0);
}

TEST(EquationFailure, withCaret)
{
    std::setlocale(LC_CTYPE, "C.UTF-8");
    struct Row
    {
        const wchar_t* text;
        long column;
        const wchar_t* shown;
    };
    const Row rows[] = {
        {L"1+", 2, L"  1+\n   ^"},
        {L"a=1", 2, L"  a=1\n   ^"},
        {L"abc", 1, L"  abc\n  ^"},
        // a tab counts to the next multiple of 8 and is shown as blanks
        {L"abc\t#", 9, L"  abc     #\n          ^"},
        {L"\t\t#", 17, L"                  #\n                  ^"},
        // the bytes of one character count each, but stand in one place, or in two
        {L"\"\u00e4\"#", 5, L"  \"\u00e4\"#\n     ^"},
        {L"\"\u65e5\u672c\"+#", 10, L"  \"\u65e5\u672c\"+#\n         ^"},
        {L"\"\u65e5\"\t#", 9, L"  \"\u65e5\"    #\n          ^"},
        // the first byte of a character stands for it
        {L"1+\u00e4", 3, L"  1+\u00e4\n    ^"},
        // the end of the text may be told as column 0, and there may be none
        {L"", 0, L"  \n  ^"},
        {L"ab", 0, L"  ab\n  ^"},
        {L"ab", 9, L"  ab\n   ^"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(tools::withCaret(row.text, row.column), row.shown) << row.column;
    }
}

}  // namespace

#include "eqn/ZetFlexScanner"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <sstream>
#include <stdexcept>

#include "support/ZetScannerOracle"

namespace zet {
namespace internal {
namespace {

using test::ScannedToken;

std::vector<ScannedToken> scan(const std::string& text)
{
    std::istringstream in(text);
    ZetFlexScanner scanner(&in);
    ZetGrammarValue slot = {};
    scanner.yylval = &slot;
    std::vector<ScannedToken> tokens;
    while (const int number = scanner.yylex()) {
        const std::unique_ptr<std::string> owned(slot.text);
        tokens.push_back({number, *owned, scanner.column});
    }
    return tokens;
}

// Named tokens as NAME[text], single characters as they are.
std::string shown(const std::vector<ScannedToken>& tokens)
{
    std::string line;
    for (const ScannedToken& token : tokens) {
        line += line.empty() ? "" : " ";
        line += token.number < 128 ? std::string(1, static_cast<char>(token.number))
                                   : test::tokenName(token.number) + ("[" + token.text + "]");
    }
    return line;
}

TEST(ZetFlexScanner, everyRuleHasItsNumber)
{
    struct Row
    {
        const char* text;
        int number;
    };
    const Row rows[] = {
        {">>", 264},
        {"<<", 265},
        {"&&", 259},
        {"||", 258},
        {"<=", 263},
        {">=", 262},
        {"==", 261},
        {"!=", 260},
        {".*", 267},
        {"./", 266},
        {".^", 271},
        {".'", 270},
        {".", 46},
        {"{", 123},
        {"}", 125},
        {"(", 40},
        {")", 41},
        {"[", 91},
        {"]", 93},
        {"<", 60},
        {">", 62},
        {"-", 45},
        {"+", 43},
        {"*", 42},
        {"/", 47},
        {"%", 37},
        {"?", 63},
        {":", 58},
        {";", 59},
        {",", 44},
        {"'", 39},
        {"&", 38},
        {"~", 126},
        {"^", 94},
        {"|", 124},
        {"!", 33},
        {"=", 61},
        // literals and names
        {"12", 274},
        {"1.5", 273},
        {"1e5", 277},
        {"0x1F", 276},
        {"2 kg", 275},
        {"\"a\"", 278},
        {"a", 272},
        // nothing else has a place
        {"#", 279},
        {"$", 279},
        {"@", 279},
        {"\\", 279},
        {"`", 279},
        {"\"", 279},
        {"\x7f", 279},
        {"\x01", 279},
    };
    for (const Row& row : rows) {
        const std::vector<ScannedToken> tokens = scan(row.text);
        ASSERT_EQ(tokens.size(), 1u) << row.text;
        EXPECT_EQ(tokens[0].number, row.number) << row.text;
        EXPECT_EQ(tokens[0].text, row.text);
        EXPECT_EQ(tokens[0].column, static_cast<int>(tokens[0].text.size())) << row.text;
    }
}

TEST(ZetFlexScanner, tokens)
{
    struct Row
    {
        const char* text;
        const char* tokens;
    };
    const Row rows[] = {
        {"", ""},
        {" \t\r\n\v\f ", ""},
        {"a.b", "ID[a] . ID[b]"},
        {"_1a", "ID[_1a]"},
        {"1a", "UVAL[1a]"},
        {"1_a", "UVAL[1_a]"},
        // longest match among operators
        {"<>", "< >"},
        {"===", "EQ[==] ="},
        {"&&&", "AND[&&] &"},
        {"|||", "OR[||] |"},
        {"...", ". . ."},
        {"a!==6", "ID[a] NE[!=] = IVAL[6]"},
        {">>>=", "RIGHT[>>] GE[>=]"},
        {"<<=", "LEFT[<<] ="},
        // numbers
        {"017", "IVAL[017]"},
        {"2.", "FVAL[2.]"},
        {".5", "FVAL[.5]"},
        {"2.e3", "EVAL[2.e3]"},
        {".5E-3", "EVAL[.5E-3]"},
        {"1e5e5", "UVAL[1e5e] IVAL[5]"},
        {"1..2", "FVAL[1.] FVAL[.2]"},
        {"1.2.3", "FVAL[1.2] FVAL[.3]"},
        {"0x12", "HVAL[0x12]"},
        {"0X1f", "HVAL[0X1f]"},
        {"0xAB", "HVAL[0xAB]"},
        {"0x1e+5", "HVAL[0x1e] + IVAL[5]"},
        // a name behind a number is a unit
        {"2x", "UVAL[2x]"},
        {"2 x", "UVAL[2 x]"},
        {"2 (x)", "UVAL[2 (x)]"},
        {"2 kg", "UVAL[2 kg]"},
        {"2 (x+1)", "IVAL[2] ( ID[x] + IVAL[1] )"},
        {"2 m*x", "UVAL[2 m*x]"},
        {"2 m*3", "UVAL[2 m] * IVAL[3]"},
        {"0x", "UVAL[0x]"},
        {"0xg", "UVAL[0xg]"},
        {"0x12G", "UVAL[0x12G]"},
        {"0xAB*m", "UVAL[0xAB*m]"},
        {"1e", "UVAL[1e]"},
        {"1e+x", "UVAL[1e] + ID[x]"},
        {"1e+5x", "UVAL[1e+5x]"},
        {"2e5", "EVAL[2e5]"},
        {"2e", "UVAL[2e]"},
        // exponents of units have no sign
        {"1 m^2", "UVAL[1 m^2]"},
        {"1 m^.5", "UVAL[1 m^.5]"},
        {"1 m^0x10", "UVAL[1 m^0x10]"},
        {"1 m^1e3", "UVAL[1 m^1e3]"},
        {"1 m^2^3", "UVAL[1 m^2^3]"},
        {"1 m^-2", "UVAL[1 m] ^ - IVAL[2]"},
        {"1 m^2e", "UVAL[1 m^2] ID[e]"},
        {"1 m2", "UVAL[1 m] IVAL[2]"},
        // two levels of parentheses, the outer one around all
        {"1 (m/s)*kg", "UVAL[1 (m/s)*kg]"},
        {"1 ((m/s)*kg)", "UVAL[1 ((m/s)*kg)]"},
        {"1 ((m/s)*kg)*s", "UVAL[1 ((m/s)*kg)] * ID[s]"},
        {"1 s*((m))", "UVAL[1 s] * ( ( ID[m] ) )"},
        {"1 s*(m)", "UVAL[1 s*(m)]"},
        {"1 (((m)))", "IVAL[1] ( ( ( ID[m] ) ) )"},
        {"1 (m)^2", "UVAL[1 (m)] ^ IVAL[2]"},
        {"1 (m^2)", "UVAL[1 (m^2)]"},
        {"1 (m", "IVAL[1] ( ID[m]"},
        // blanks stand between number and unit only
        {"3 m / s", "UVAL[3 m] / ID[s]"},
        {"3   m", "UVAL[3   m]"},
        {"3\tm", "IVAL[3] ID[m]"},
        {"3\nm", "IVAL[3] ID[m]"},
        {"3 ( m)", "IVAL[3] ( ID[m] )"},
        {"1 + 2", "IVAL[1] + IVAL[2]"},
        // a point belongs to the number on its left
        {"2.*3", "FVAL[2.] * IVAL[3]"},
        {"2 .*3", "IVAL[2] ALT_MULT[.*] IVAL[3]"},
        {"a.*b", "ID[a] ALT_MULT[.*] ID[b]"},
        {"a./b", "ID[a] ALT_DIV[./] ID[b]"},
        {"a.^b", "ID[a] ALT_EXP[.^] ID[b]"},
        {"a.'", "ID[a] ALT_TRANS[.']"},
        // strings have no escapes
        {"\"\"", "SVAL[\"\"]"},
        {"\"a\nb\"", "SVAL[\"a\nb\"]"},
        {"\"a\\\"b\"", "SVAL[\"a\\\"] ID[b] SYNTAX_ERROR[\"]"},
        {"\"ab", "SYNTAX_ERROR[\"] ID[ab]"},
        // each alone
        {"##", "SYNTAX_ERROR[#] SYNTAX_ERROR[#]"},
        {"a$b", "ID[a] SYNTAX_ERROR[$] ID[b]"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(shown(scan(row.text)), row.tokens) << row.text;
    }
}

TEST(ZetFlexScanner, columns)
{
    struct Row
    {
        const char* text;
        int column;
    };
    // of the last token
    const Row rows[] = {
        {"a", 1},          {"abc", 3},          {"a b", 3},    {"abc\td", 9},   {"\ta", 9},
        {"1234567\ta", 9}, {"12345678\ta", 17}, {"abc\nd", 1}, {"abc\n\td", 9}, {"\"a\nbc\"", 3},
        {"\"a\tb\"", 10},  {"2   kg", 6},       {"a\rb", 3},   {"a\vb", 3},     {"a\fb", 3},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(scan(row.text).back().column, row.column) << row.text;
    }
}

TEST(ZetFlexScanner, columnMovesOverTrailingWhiteSpace)
{
    struct Row
    {
        const char* text;
        int column;
    };
    const Row rows[] = {{"", 0}, {"a", 1}, {"a  ", 3}, {"abc\t", 8}, {"abc\t ", 9}, {"a\n", 0}, {"a\n  ", 2}};
    for (const Row& row : rows) {
        std::istringstream in(row.text);
        ZetFlexScanner scanner(&in);
        EXPECT_EQ(scanner.column, 0);
        ZetGrammarValue slot = {};
        scanner.yylval = &slot;
        while (scanner.yylex() != 0) {
            delete slot.text;
            slot.text = nullptr;
        }
        EXPECT_EQ(scanner.column, row.column) << row.text;
        EXPECT_EQ(slot.text, nullptr) << "the text of white space has no reader";
    }
}

TEST(ZetFlexScanner, otherBytesAreErrorTokens)
{
    for (int byte = 128; byte < 256; ++byte) {
        const std::string text = {'a', static_cast<char>(byte), 'b'};
        const std::vector<ScannedToken> tokens = scan(text);
        ASSERT_EQ(tokens.size(), 3u) << byte;
        EXPECT_EQ(tokens[1].number, 279) << byte;
        EXPECT_EQ(tokens[2].column, 3) << byte;
    }
    EXPECT_EQ(shown(scan("\"\xc3\xa4\"")), "SVAL[\"\xc3\xa4\"]");
    EXPECT_EQ(scan(std::string(1, '\0')).at(0).number, 279);
}

TEST(ZetFlexScanner, tokensAcrossTheBufferOfOneRead)
{
    for (std::size_t before = 16370; before < 16400; ++before) {
        const std::vector<ScannedToken> tokens = scan(std::string(before, ' ') + "12.5e10 (m^2/s)*(x");
        ASSERT_EQ(tokens.size(), 4u) << before;
        EXPECT_EQ(tokens[0].text, "12.5e10 (m^2/s)") << before;
        EXPECT_EQ(tokens[0].column, static_cast<int>(before) + 15);
    }
    const std::string longText = '"' + std::string(100000, 'x') + '"';
    EXPECT_EQ(scan(longText).at(0).text, longText);
    EXPECT_EQ(scan(std::string(50000, 'y')).at(0).text, std::string(50000, 'y'));
}

TEST(ZetFlexScanner, faultsAreThrown)
{
    struct Open : ZetFlexScanner
    {
        using ZetFlexScanner::LexerError;
        using ZetFlexScanner::ZetFlexScanner;
    };
    std::istringstream in;
    Open scanner(&in);
    EXPECT_EQ(scanner.yywrap(), 1);
    try {
        scanner.LexerError("flex scanner jammed");
        FAIL();
    } catch (const std::logic_error& fault) {
        EXPECT_STREQ(fault.what(), "flex scanner jammed");
    }
}

// All texts of up to \p length characters of \p alphabet.
template <class Check>
void forAllTexts(const std::string& alphabet, std::size_t length, const Check& check)
{
    std::vector<std::string> texts = {""};
    for (std::size_t i = 0; i < length; ++i) {
        std::vector<std::string> longer;
        for (const std::string& text : texts) {
            for (const char c : alphabet) {
                longer.push_back(text + c);
                check(longer.back());
            }
        }
        texts.swap(longer);
    }
}

void expectAsTheOracle(const std::string& text)
{
    const std::vector<ScannedToken> expected = test::scanByTheForms(text);
    const std::vector<ScannedToken> actual = scan(text);
    ASSERT_EQ(actual, expected) << "text '" << text << "': " << shown(actual) << " for " << shown(expected);
}

TEST(ZetFlexScanner, allShortTextsAsTheForms)
{
    std::string ascii;
    for (char c = 1; c < 127; ++c) {
        ascii += c;
    }
    forAllTexts(ascii, 2, expectAsTheOracle);
    forAllTexts("0x.e^(* )m", 4, expectAsTheOracle);
    forAllTexts("1e+ (a)/", 5, expectAsTheOracle);
}

TEST(ZetFlexScanner, randomTextsAsTheForms)
{
    std::mt19937 random(20);
    const std::string alphabets[] = {"1.e+ ^(*/)mx0", "2 (m/s)*k^3", "ab_1 \t\n\"'.!=<>&|", "9(((m*s)))^"};
    for (const std::string& alphabet : alphabets) {
        for (int i = 0; i < 5000; ++i) {
            std::string text(1 + random() % 24, ' ');
            for (char& c : text) {
                c = alphabet[random() % alphabet.size()];
            }
            expectAsTheOracle(text);
        }
    }
}

}  // namespace
}  // namespace internal
}  // namespace zet

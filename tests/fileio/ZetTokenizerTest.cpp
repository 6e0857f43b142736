#include <zet/ZetTokenizer>

#include <climits>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <vector>

#include <gtest/gtest.h>

#include <zet/ZetStrList>

#include "support/ZetCollectingHandler"
#include "support/ZetScopedLocale"
#include "support/ZetScratchFolder"
#include "support/ZetTokenizerOracle"

namespace zet {
namespace {

using test::postedBy;
using test::thrownBy;
using test::ZetCollectingHandler;
using test::ZetOneWayBuffer;
using test::ZetScopedLocale;
using test::ZetScratchFolder;

using Characters = test::ZetTokenCharacters;

const Characters kPlain = {L"{}=$", L"#", L"", L"", L" \t\r\n"};
const Characters kSlashes = {L"/*;", L"//", L"/*", L"*/", L" \t"};

ZetTokenizer tokenizerOf(std::wistream& stream, const Characters& s)
{
    return ZetTokenizer(stream, s.delimiters, s.line, s.begin, s.end, s.whitespace);
}

/// The tokens up to the first false, each behind the first letter of its type; then the type of the last
/// call if it was a literal, which only an empty one leaves.
ZetString dump(ZetTokenizer& tokenizer)
{
    ZetStrList all;
    ZetString token;
    ZetTokenizer::TokenType type = ZetTokenizer::Word;
    while (tokenizer.nextToken(token, type)) {
        all.append(L"wld"[type] + (L":" + token));
        type = ZetTokenizer::Word;
    }
    EXPECT_EQ(token, L"");
    if (type == ZetTokenizer::Literal) {
        all.append(L"l:");
    }
    return all.toString(L" ");
}

ZetString dump(const ZetString& text, const Characters& setup)
{
    std::wistringstream stream(text);
    ZetTokenizer tokenizer = tokenizerOf(stream, setup);
    return dump(tokenizer);
}

TEST(ZetTokenizer, numbersOfTheTypes)
{
    EXPECT_EQ(ZetTokenizer::Word, 0);
    EXPECT_EQ(ZetTokenizer::Literal, 1);
    EXPECT_EQ(ZetTokenizer::Delimiter, 2);
    std::wistringstream stream;
    const ZetTokenizer tokenizer = tokenizerOf(stream, kPlain);
    EXPECT_EQ(tokenizer.className(), L"ZetTokenizer");
    EXPECT_EQ(tokenizer.lineNumber(), 1);
    EXPECT_EQ(tokenizer.status().text(), L"");
    EXPECT_EQ(tokenizer.status().file(), ZetTextMsg::unknown());
    EXPECT_FALSE(tokenizer.isMetaObject());
}

struct TokenRow
{
    const Characters& setup;
    const wchar_t* text;
    const wchar_t* tokens;
};

const Characters kOneCharacterBlock = {L";", L"#", L"<", L">", L" "};
const Characters kNothing = {L"", L"", L"", L"", L""};
const Characters kNoWhitespace = {L"=", L"", L"", L"", L""};
const Characters kSharedFirst = {L"", L"-!", L"-<", L">-", L" "};
const Characters kOneEndTwo = {L"", L"", L"(", L"*)", L" "};
const Characters kWide = {L"\x2260", L"\x20ac", L"\xab", L"\xbb", L"\x2003"};

const TokenRow kTokens[] = {
    // words, delimiters and what separates them
    {kPlain, L"", L""},
    {kPlain, L"  \t\r\n ", L""},
    {kPlain, L"a", L"w:a"},
    {kPlain, L"{ type = l }", L"d:{ w:type d:= w:l d:}"},
    {kPlain, L"{type=l}$", L"d:{ w:type d:= w:l d:} d:$"},
    {kPlain, L"==", L"d:= d:="},
    {kPlain, L"1.5e-3\n\n-7", L"w:1.5e-3 w:-7"},
    {kPlain, L"caf\xe9 \x4e2d\x6587\U0001f600", L"w:caf\xe9 w:\x4e2d\x6587\U0001f600"},
    // a tab is whitespace only where the set says so; newline and carriage return always are
    {kNothing, L"a b\tc\nd\re", L"w:a b\tc w:d w:e"},
    {kNoWhitespace, L"a=b\n\rc", L"w:a d:= w:b w:c"},
    // literals
    {kPlain, L"\"a b\"", L"l:a b"},
    {kPlain, L"a\"b\"c", L"w:a l:b w:c"},
    {kPlain, L"\"{=#\"", L"l:{=#"},
    {kPlain, L"\"$\"", L"l:$"},
    {kPlain, L"\"a\nb\"", L"l:a\nb"},
    // the character behind a backslash takes its place
    {kPlain, L"\"a\\\"b\"", L"l:a\"b"},
    {kPlain, L"\"a\\nb\"", L"l:anb"},
    {kPlain, L"\"\\a\"", L"l:a"},
    // two backslashes make one that escapes nothing: the quote behind it closes
    {kPlain, L"\"a\\\\\"b", L"l:a\\ w:b"},
    {kPlain, L"\"\\\\\\\\\"", L"l:\\\\"},
    {kPlain, L"\"\\\\\\\"\" x", L"l:\\\" w:x"},
    // outside of literals a backslash is a character
    {kPlain, L"a\\\"b\"", L"w:a\\ l:b"},
    // line comments
    {kPlain, L"# all of it", L""},
    {kPlain, L"# one\na # two\n# three", L"w:a"},
    {kPlain, L"a#b\nc", L"w:a w:c"},
    {kPlain, L"# a \"quote\na", L"w:a"},
    {kPlain, L"# carriage\ra\nb", L"w:b"},
    {kSlashes, L"a//b\nc", L"w:a w:c"},
    {kSlashes, L"a // b", L"w:a"},
    // only the first of two characters: no comment
    {kSlashes, L"a/b", L"w:a d:/ w:b"},
    {kSlashes, L"a/", L"w:a d:/"},
    {kSlashes, L"/", L"d:/"},
    {kSharedFirst, L"a-b -", L"w:a-b w:-"},
    {kSharedFirst, L"a-!b\nc-<d-!>-e", L"w:a w:c w:e"},
    // block comments: no nesting, no literals in them, no whitespace needed
    {kSlashes, L"a/* b */c", L"w:a w:c"},
    {kSlashes, L"/**/a/***/b", L"w:a w:b"},
    {kSlashes, L"/* /* */ a */", L"w:a d:* d:/"},
    {kSlashes, L"/* \" */ a", L"w:a"},
    {kSlashes, L"/*/ a */ b", L"w:b"},
    {kSlashes, L"/* // */ b", L"w:b"},
    {kSlashes, L"// /*\nb", L"w:b"},
    {kSlashes, L"a */ b", L"w:a d:* d:/ w:b"},
    {kOneCharacterBlock, L"a<b>c>d", L"w:a w:c>d"},
    {kOneCharacterBlock, L"a<b#c>d#e>f\ng", L"w:a w:d w:g"},
    {kOneEndTwo, L"a(b)*c*)d*)e", L"w:a w:d*)e"},
    // characters beyond ASCII in each part
    {kWide,
     L"a\x2260"
     L"b\x2003"
     L"c\xab"
     L"d\xbb"
     L"e\x20ac"
     L"f\ng",
     L"w:a d:\x2260 w:b w:c w:e w:g"},
};

TEST(ZetTokenizer, tokens)
{
    for (const TokenRow& row : kTokens) {
        EXPECT_EQ(dump(row.text, row.setup), row.tokens) << ::testing::PrintToString(std::wstring(row.text));
    }
}

TEST(ZetTokenizer, shortFormThrowsTheTypeAway)
{
    std::wistringstream stream(L"a \"b\" =");
    ZetTokenizer tokenizer = tokenizerOf(stream, kPlain);
    ZetString token;
    for (const wchar_t* expected : {L"a", L"b", L"="}) {
        EXPECT_TRUE(tokenizer.nextToken(token));
        EXPECT_EQ(token, expected);
    }
    EXPECT_FALSE(tokenizer.nextToken(token));
    EXPECT_EQ(token, L"");
}

TEST(ZetTokenizer, emptyLiteralIsNoToken)
{
    std::wistringstream stream(L"\"\" a");
    ZetTokenizer tokenizer = tokenizerOf(stream, kPlain);
    ZetString token = L"before";
    ZetTokenizer::TokenType type = ZetTokenizer::Word;
    EXPECT_FALSE(tokenizer.nextToken(token, type));
    EXPECT_EQ(token, L"");
    EXPECT_EQ(type, ZetTokenizer::Literal);
    EXPECT_EQ(tokenizer.status().text(), L"");
    EXPECT_TRUE(tokenizer.nextToken(token, type));
    EXPECT_EQ(token, L"a");
    EXPECT_EQ(type, ZetTokenizer::Word);
}

TEST(ZetTokenizer, endOfInputKeepsTheType)
{
    std::wistringstream stream(L"# nothing");
    ZetTokenizer tokenizer = tokenizerOf(stream, kPlain);
    ZetString token;
    ZetTokenizer::TokenType type = ZetTokenizer::Delimiter;
    EXPECT_FALSE(tokenizer.nextToken(token, type));
    EXPECT_EQ(type, ZetTokenizer::Delimiter);
    EXPECT_EQ(tokenizer.status().text(), L"");
}

// --- Lines ---

/// The line after each token.
std::vector<int> linesOf(const ZetString& text, const Characters& setup)
{
    std::wistringstream stream(text);
    ZetTokenizer tokenizer = tokenizerOf(stream, setup);
    std::vector<int> lines;
    ZetString token;
    while (tokenizer.nextToken(token)) {
        lines.push_back(tokenizer.lineNumber());
    }
    lines.push_back(tokenizer.lineNumber());
    return lines;
}

TEST(ZetTokenizer, lineNumbers)
{
    using Lines = std::vector<int>;
    EXPECT_EQ(linesOf(L"a\nb c\n\nd", kPlain), (Lines{1, 2, 2, 4, 4}));
    EXPECT_EQ(linesOf(L"a\n", kPlain), (Lines{1, 2}));
    EXPECT_EQ(linesOf(L"# x\na # y\n# z\n", kPlain), (Lines{2, 4}));
    EXPECT_EQ(linesOf(L"\"a\nb\" c", kPlain), (Lines{2, 2, 2}));
    EXPECT_EQ(linesOf(L"\"a\\\nb\" c", kPlain), (Lines{2, 2, 2}));
    EXPECT_EQ(linesOf(L"/*\n\n*/a/*\n*/b", kSlashes), (Lines{3, 4, 4}));
    EXPECT_EQ(linesOf(L"a\r\nb\rc", kPlain), (Lines{1, 2, 2, 2}));
    // looking ahead counts nothing
    EXPECT_EQ(linesOf(L"/\n/\n//\n", kSlashes), (Lines{1, 2, 4}));
}

TEST(ZetTokenizer, lineNumberCanBeSet)
{
    std::wistringstream stream(L"a\nb \"c");
    ZetTokenizer tokenizer = tokenizerOf(stream, kPlain);
    tokenizer.setLineNumber(40);
    ZetString token;
    tokenizer.nextToken(token);
    EXPECT_EQ(tokenizer.lineNumber(), 40);
    tokenizer.nextToken(token);
    EXPECT_EQ(tokenizer.lineNumber(), 41);
    EXPECT_EQ(thrownBy([&] { tokenizer.nextToken(token); }).text(),
              L"Failed to find closing literal delimiter (\") at line 41.");
}

TEST(ZetTokenizer, lineNumberWraps)
{
    std::wistringstream stream(L"\na");
    ZetTokenizer tokenizer = tokenizerOf(stream, kPlain);
    tokenizer.setLineNumber(INT_MAX);
    ZetString token;
    EXPECT_TRUE(tokenizer.nextToken(token));
    EXPECT_EQ(tokenizer.lineNumber(), INT_MIN);
}

// --- Raw data ---

TEST(ZetTokenizer, nextData)
{
    std::wistringstream stream(L"a# \"x\n$\n{$rest\n");
    ZetTokenizer tokenizer = tokenizerOf(stream, kPlain);
    ZetString token;
    ZetString data = L"before";
    EXPECT_TRUE(tokenizer.nextToken(token));
    EXPECT_TRUE(tokenizer.nextData(data, L'$'));
    EXPECT_EQ(data, L"# \"x\n");
    EXPECT_EQ(tokenizer.lineNumber(), 2);
    EXPECT_TRUE(tokenizer.nextData(data, L'\n'));
    EXPECT_EQ(data, L"");
    EXPECT_EQ(tokenizer.lineNumber(), 3);
    EXPECT_TRUE(tokenizer.nextToken(token));
    EXPECT_EQ(token, L"{");
    EXPECT_TRUE(tokenizer.nextToken(token));
    EXPECT_EQ(token, L"$");
    EXPECT_FALSE(tokenizer.nextData(data, L'$'));
    EXPECT_EQ(data, L"rest\n");
    EXPECT_EQ(tokenizer.lineNumber(), 4);
    EXPECT_FALSE(tokenizer.nextData(data, L'$'));
    EXPECT_EQ(data, L"");
    EXPECT_EQ(tokenizer.status().text(), L"");
}

// --- Rules of the characters ---

struct RuleRow
{
    Characters setup;
    const wchar_t* message;
};

const RuleRow kRules[] = {
    // 1 to 3, the line comment
    {{L"", L"###", L"", L"", L""}, L"Line comment identifier, '###', exceeds maximum length of 2"},
    {{L"", L"\"", L"", L"", L""}, L"Line comment identifier, '\"' may not include literal token identifier '\"'"},
    {{L"", L"#\"", L"", L"", L""}, L"Line comment identifier, '#\"' may not include literal token identifier '\"'"},
    {{L"", L"# ", L"", L"", L" "}, L"Line comment identifier may not include whitespace ZetCharacters"},
    {{L"", L"\n", L"", L"", L""}, L"Line comment identifier may not include whitespace ZetCharacters"},
    // 4, the lengths of the block comment
    {{L"", L"", L"/*", L"", L""}, L"Block comment begin, '/*', and block comment end, '', failed length test"},
    {{L"", L"", L"", L"*/", L""}, L"Block comment begin, '', and block comment end, '*/', failed length test"},
    {{L"", L"", L"<!-", L"->", L""}, L"Block comment begin, '<!-', and block comment end, '->', failed length test"},
    {{L"", L"", L"<!", L"-->", L""}, L"Block comment begin, '<!', and block comment end, '-->', failed length test"},
    // 5 and 6
    {{L"", L"", L"/\"", L"*/", L""}, L"Invalid character, '\"', in block comment begin identifier"},
    {{L"", L"", L"/*", L"\"", L""}, L"Invalid  ZetCharacter, '\"', in block comment end identifier"},
    // 7 and 8, character by character of the whitespace
    {{L"", L"", L"/ ", L"*/", L" "}, L"White space found in block comment begin identifier"},
    {{L"", L"", L"/*", L" /", L" "}, L"White  space found in block comment end identifier"},
    {{L"", L"", L"/\t", L" /", L" \t"}, L"White  space found in block comment end identifier"},
    {{L"", L"", L"/\t", L" /", L"\t "}, L"White space found in block comment begin identifier"},
    {{L"", L"", L"/ ", L" /", L" "}, L"White space found in block comment begin identifier"},
    {{L"", L"", L"\r", L"\n", L""}, L"White  space found in block comment end identifier"},
    // 9 to 11
    {{L"", L"#", L"#", L"!", L""}, L"Block begin comment and line comment  identifiers must differ"},
    {{L"", L"//", L"//", L"!", L""}, L"Block begin comment and line comment  identifiers must differ"},
    {{L"", L"/", L"/*", L"*/", L""},
     L"The line comment ZetCharacter '/' must differ from each ZetCharacter in the block comment begin identifier "
     L"'/*'"},
    {{L"", L"*", L"/*", L"*/", L""},
     L"The line comment ZetCharacter '*' must differ from each ZetCharacter in the block comment begin identifier "
     L"'/*'"},
    {{L"", L"//", L"/", L"*/", L""},
     L"The block comment begin ZetCharacter '/' must differ from each ZetCharacter in the line comment identifier "
     L"'//'"},
    {{L"", L"-/", L"/", L"*/", L""},
     L"The block comment begin ZetCharacter '/' must differ from each ZetCharacter in the line comment identifier "
     L"'-/'"},
    // 12, naming the first of the whitespace
    {{L"=\t ", L"", L"", L"", L" \t"}, L"' ' cannot be listed as both whitespace and as a delimiter"},
    {{L"=\t ", L"", L"", L"", L"\t "}, L"'\t' cannot be listed as both whitespace and as a delimiter"},
    {{L"\n", L"", L"", L"", L""}, L"'\n' cannot be listed as both whitespace and as a delimiter"},
    {{L"\r\n", L"", L"", L"", L""}, L"'\n' cannot be listed as both whitespace and as a delimiter"},
    {{L"\r", L"", L"", L"", L""}, L"'\r' cannot be listed as both whitespace and as a delimiter"},
    // 13 and 14
    {{L"", L"", L"", L"", L"\""}, L"Literal ZetCharacter, '\"', cannot be listed as a whitespace"},
    {{L"\"", L"", L"", L"", L""}, L"Literal ZetCharacter, '\"', cannot be listed as a delimiter"},

    // of two broken rules, the first in the order
    {{L"", L"##\"", L"", L"", L""}, L"Line comment identifier, '##\"', exceeds maximum length of 2"},
    {{L"", L"\" ", L"", L"", L" "}, L"Line comment identifier, '\" ' may not include literal token identifier '\"'"},
    {{L"", L" ", L"///", L"", L" "}, L"Line comment identifier may not include whitespace ZetCharacters"},
    {{L"", L"", L"\"//", L"*/", L""}, L"Block comment begin, '\"//', and block comment end, '*/', failed length test"},
    {{L"", L"", L"\"", L"\"", L""}, L"Invalid character, '\"', in block comment begin identifier"},
    {{L"", L"", L"/ ", L"\"", L" "}, L"Invalid  ZetCharacter, '\"', in block comment end identifier"},
    {{L" ", L"#", L"#", L"*/", L" "}, L"Block begin comment and line comment  identifiers must differ"},
    {{L"\" ", L"", L"", L"", L" "}, L"' ' cannot be listed as both whitespace and as a delimiter"},
    {{L"\"", L"", L"", L"", L"\""}, L"'\"' cannot be listed as both whitespace and as a delimiter"},

    // what is allowed
    {{L"", L"", L"", L"", L""}, L""},
    {{L"{}=$", L"#", L"", L"", L" \t\r\n"}, L""},
    {{L"/*", L"//", L"/*", L"*/", L" "}, L""},
    {{L"", L"*/", L"/*", L"*/", L" "}, L""},
    {{L"", L"/#", L"/*", L"*/", L" "}, L""},
    {{L"#", L"#", L"", L"", L" "}, L""},
    {{L"  ", L"", L"", L"", L""}, L""},
};

TEST(ZetTokenizer, rulesOfTheCharacters)
{
    for (const RuleRow& row : kRules) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(row.message)));
        std::wistringstream stream(L"a");
        const ZetCollectingHandler posted;
        const ZetTokenizer tokenizer = tokenizerOf(stream, row.setup);
        EXPECT_EQ(tokenizer.status().text(), row.message);
        if (*row.message == 0) {
            EXPECT_TRUE(posted.messages().empty());
            continue;
        }
        ASSERT_EQ(posted.messages().size(), 1u);
        EXPECT_EQ(posted.messages()[0], tokenizer.status());
        EXPECT_EQ(tokenizer.status().file(), L"ZetTokenizer");
        EXPECT_EQ(tokenizer.status().kind(), ZetTextMsg::Error);
        EXPECT_GT(tokenizer.status().line(), 0);
    }
}

TEST(ZetTokenizer, brokenRulesThrowUnderTheDefaultHandler)
{
    for (const RuleRow& row : kRules) {
        if (*row.message != 0) {
            std::wistringstream stream(L"a");
            EXPECT_EQ(thrownBy([&] { tokenizerOf(stream, row.setup); }).text(), row.message);
        }
    }
}

TEST(ZetTokenizer, failedStream)
{
    std::wistringstream stream(L"a");
    stream.setstate(std::ios_base::failbit);
    EXPECT_EQ(thrownBy([&] { tokenizerOf(stream, kPlain); }).text(), L"Invalid input stream for the tokenizer.");
    std::wistream none(nullptr);
    EXPECT_EQ(thrownBy([&] { tokenizerOf(none, kPlain); }).text(), L"Invalid input stream for the tokenizer.");

    const ZetCollectingHandler posted;
    // the characters are not looked at
    ZetTokenizer tokenizer = tokenizerOf(stream, {L" ", L"", L"", L"", L" "});
    EXPECT_EQ(tokenizer.status().text(), L"Invalid input stream for the tokenizer.");
    ZetString token = L"before";
    EXPECT_FALSE(tokenizer.nextToken(token));
    EXPECT_EQ(token, L"");
    EXPECT_EQ(posted.texts(), std::vector<ZetString>(2, L"Invalid input stream for the tokenizer."));
}

/// A stream that is good and has no buffer.
class StreamWithoutBuffer : public std::wistringstream
{
public:
    StreamWithoutBuffer() { std::wios::set_rdbuf(nullptr); }
};

TEST(ZetTokenizer, streamWithoutBuffer)
{
    StreamWithoutBuffer stream;
    const wchar_t* const message = L"Failed to retrieve stream buffer for tokenizer.";
    EXPECT_EQ(thrownBy([&] { tokenizerOf(stream, kPlain); }).text(), message);

    const ZetCollectingHandler posted;
    ZetTokenizer tokenizer = tokenizerOf(stream, kPlain);
    EXPECT_EQ(tokenizer.status().text(), message);
    ZetString token;
    EXPECT_FALSE(tokenizer.nextToken(token));
    EXPECT_FALSE(tokenizer.nextData(token, L'a'));
    EXPECT_EQ(posted.texts(), std::vector<ZetString>(2, message));
}

TEST(ZetTokenizer, eachCallWithBadCharactersPostsAgain)
{
    std::wistringstream stream(L"  \na\nb");
    const ZetCollectingHandler posted;
    ZetTokenizer tokenizer = tokenizerOf(stream, {L"\"", L"", L"", L"", L" "});
    ZetString token;
    // the first pass is over the whitespace, the second takes a word that nobody sees
    EXPECT_FALSE(tokenizer.nextToken(token));
    EXPECT_EQ(tokenizer.lineNumber(), 2);
    EXPECT_FALSE(tokenizer.nextToken(token));
    EXPECT_EQ(token, L"");
    EXPECT_TRUE(tokenizer.nextData(token, L'\n'));
    EXPECT_EQ(token, L"");
    EXPECT_EQ(posted.messages().size(), 3u);
    EXPECT_EQ(posted.messages()[2], tokenizer.status());
}

// --- Failures of the input ---

struct FailureRow
{
    const Characters& setup;
    const wchar_t* text;
    const wchar_t* tokens;
    const wchar_t* message;
};

const FailureRow kFailures[] = {
    {kPlain, L"a \"b", L"w:a l:", L"Failed to find closing literal delimiter (\") at line 1."},
    {kPlain, L"\n\n\"b\n\n", L"l:", L"Failed to find closing literal delimiter (\") at line 3."},
    {kPlain, L"\"", L"l:", L"Failed to find closing literal delimiter (\") at line 1."},
    {kPlain, L"\"a\\\"", L"l:", L"Failed to find closing literal delimiter (\") at line 1."},
    {kPlain, L"\"a\\", L"l:", L"Failed to find closing literal delimiter (\") at line 1."},
    {kSlashes, L"a\n/* b\n\n", L"w:a", L"Failed to find closing block comment delimiter at line 2."},
    {kSlashes, L"/*", L"", L"Failed to find closing block comment delimiter at line 1."},
    {kSlashes, L"/*/", L"", L"Failed to find closing block comment delimiter at line 1."},
    {kSlashes, L"/* *", L"", L"Failed to find closing block comment delimiter at line 1."},
    {kOneCharacterBlock, L";<", L"d:;", L"Failed to find closing block comment delimiter at line 1."},
};

TEST(ZetTokenizer, unclosedLiteralsAndComments)
{
    for (const FailureRow& row : kFailures) {
        SCOPED_TRACE(::testing::PrintToString(std::wstring(row.text)));
        std::wistringstream stream(row.text);
        const ZetCollectingHandler posted;
        ZetTokenizer tokenizer = tokenizerOf(stream, row.setup);
        EXPECT_EQ(dump(tokenizer), row.tokens);
        EXPECT_EQ(posted.texts(), std::vector<ZetString>{row.message});
        EXPECT_EQ(tokenizer.status(), posted.messages().at(0));
        EXPECT_EQ(tokenizer.status().file(), L"ZetTokenizer");
        // and again at every later call
        ZetString token;
        EXPECT_FALSE(tokenizer.nextToken(token));
        EXPECT_EQ(posted.texts(), std::vector<ZetString>(2, row.message));
    }
}

TEST(ZetTokenizer, unclosedLiteralsAndCommentsThrowUnderTheDefaultHandler)
{
    for (const FailureRow& row : kFailures) {
        std::wistringstream stream(row.text);
        ZetTokenizer tokenizer = tokenizerOf(stream, row.setup);
        EXPECT_EQ(thrownBy([&] { dump(tokenizer); }).text(), row.message);
        ZetString token = L"before";
        EXPECT_EQ(thrownBy([&] { tokenizer.nextToken(token); }).text(), row.message);
        EXPECT_EQ(token, L"");
    }
}

TEST(ZetTokenizer, statusStaysWhenMoreInputComes)
{
    std::wstringstream stream(L"\"a", std::ios_base::in | std::ios_base::out | std::ios_base::ate);
    const ZetCollectingHandler posted;
    ZetTokenizer tokenizer = tokenizerOf(stream, kPlain);
    ZetString token;
    EXPECT_FALSE(tokenizer.nextToken(token));
    stream.clear();
    stream << L" b c";
    EXPECT_FALSE(tokenizer.nextToken(token));
    EXPECT_FALSE(tokenizer.nextToken(token));
    EXPECT_EQ(posted.messages().size(), 3u);
    // one pass each: the blank and the word were taken
    ZetString data;
    EXPECT_FALSE(tokenizer.nextData(data, L'$'));
    EXPECT_EQ(data, L" c");
}

// --- The stream ---

TEST(ZetTokenizer, streamStandsBehindWhatWasTaken)
{
    std::wistringstream stream(L"{ a/b $rest");
    ZetTokenizer tokenizer = tokenizerOf(stream, {L"{$/", L"//", L"", L"", L" "});
    ZetString token;
    EXPECT_TRUE(tokenizer.nextToken(token));
    EXPECT_EQ(stream.tellg(), 1);
    EXPECT_TRUE(tokenizer.nextToken(token));
    EXPECT_EQ(token, L"a");
    EXPECT_EQ(stream.tellg(), 3);
    for (const wchar_t* expected : {L"/", L"b", L"$"}) {
        EXPECT_TRUE(tokenizer.nextToken(token));
        EXPECT_EQ(token, expected);
    }
    std::wstring rest;
    stream >> rest;
    EXPECT_EQ(rest, L"rest");
}

TEST(ZetTokenizer, lookingAtTheLastCharacterLeavesTheStreamGood)
{
    std::wistringstream stream(L"a/");
    ZetTokenizer tokenizer = tokenizerOf(stream, kSlashes);
    ZetString token;
    EXPECT_TRUE(tokenizer.nextToken(token));
    EXPECT_EQ(token, L"a");
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(stream.peek(), L'/');
    EXPECT_TRUE(tokenizer.nextToken(token));
    EXPECT_EQ(token, L"/");
    EXPECT_TRUE(stream.good());
    EXPECT_FALSE(tokenizer.nextToken(token));
    EXPECT_EQ(stream.rdstate(), std::ios_base::eofbit);
    EXPECT_FALSE(tokenizer.nextToken(token));
    EXPECT_EQ(stream.rdstate(), std::ios_base::eofbit | std::ios_base::failbit);
}

TEST(ZetTokenizer, readingGoesOnWhenAStreamIsFilledAgain)
{
    std::wstringstream stream(L"a", std::ios_base::in | std::ios_base::out | std::ios_base::ate);
    ZetTokenizer tokenizer = tokenizerOf(stream, kPlain);
    EXPECT_EQ(dump(tokenizer), L"w:a");
    stream.clear();
    stream << L"\nb";
    EXPECT_EQ(dump(tokenizer), L"w:b");
    EXPECT_EQ(tokenizer.lineNumber(), 2);
}

TEST(ZetTokenizer, streamsThatTakeNothingBack)
{
    for (const TokenRow& row : kTokens) {
        ZetOneWayBuffer buffer(row.text);
        std::wistream stream(&buffer);
        ZetTokenizer tokenizer = tokenizerOf(stream, row.setup);
        EXPECT_EQ(dump(tokenizer), row.tokens) << ::testing::PrintToString(std::wstring(row.text));
    }
    ZetOneWayBuffer buffer(L"a/b\n/$");
    std::wistream stream(&buffer);
    ZetTokenizer tokenizer = tokenizerOf(stream, kSlashes);
    ZetString text;
    EXPECT_TRUE(tokenizer.nextToken(text));
    EXPECT_TRUE(tokenizer.nextData(text, L'\n'));
    EXPECT_EQ(text, L"/b");
    EXPECT_TRUE(tokenizer.nextData(text, L'$'));
    EXPECT_EQ(text, L"/");
}

/// Throws in place of the character behind the text.
class ThrowingBuffer : public ZetOneWayBuffer
{
public:
    using ZetOneWayBuffer::ZetOneWayBuffer;

protected:
    int_type underflow() override
    {
        const int_type c = ZetOneWayBuffer::underflow();
        if (c == traits_type::eof()) {
            throw std::runtime_error("no more");
        }
        return c;
    }
};

TEST(ZetTokenizer, bufferThatThrowsEndsTheInput)
{
    for (const wchar_t* text : {L"ab", L"ab/"}) {
        ThrowingBuffer buffer(text);
        std::wistream stream(&buffer);
        ZetTokenizer tokenizer = tokenizerOf(stream, kSlashes);
        EXPECT_EQ(dump(tokenizer), text[2] ? L"w:ab d:/" : L"w:ab");
        EXPECT_TRUE(stream.bad());
        EXPECT_EQ(tokenizer.status().text(), L"");
    }
}

/// Tokens of a file on disk, through a file stream under a locale.
ZetString dumpFile(const std::filesystem::path& file, const char* locale, const Characters& setup)
{
    const ZetScopedLocale scoped(locale);
    EXPECT_TRUE(scoped.isSet()) << locale;
    std::wifstream stream(file);
    ZetTokenizer tokenizer = tokenizerOf(stream, setup);
    return dump(tokenizer);
}

TEST(ZetTokenizer, looksAheadAcrossTheBlocksOfAFile)
{
    const ZetScratchFolder folder;
    // every second character is one that must be looked behind, at even and at odd places
    for (const char* start : {"", "x"}) {
        std::string text = start;
        ZetString expected = *start ? L"w:x d:/ w:." : L"d:/ w:.";
        for (int i = 0; i < 30000; ++i) {
            text += "/.";
            expected += i == 0 ? L"" : L" d:/ w:.";
        }
        const auto file = folder.write("slashes", text + "/* \xe2\x82\xac */");
        EXPECT_TRUE(dumpFile(file, "C.UTF-8", kSlashes) == expected);
    }
    const auto file = folder.write("slashes", std::string(30001, '/'));
    const Characters blocks = {L"/", L"", L"/*", L"*/", L""};
    for (const char* locale : {"C", "C.UTF-8"}) {
        EXPECT_EQ(dumpFile(file, locale, blocks).size(), 30001u * 4 - 1) << locale;
    }
    // the end of a comment, at every place of a block
    for (const int blanks : {8186, 8187, 8188, 8189, 8190, 8191, 8192}) {
        const auto comment = folder.write("comment", "/*" + std::string(static_cast<std::size_t>(blanks), '*') + "/a");
        EXPECT_EQ(dumpFile(comment, "C.UTF-8", kSlashes), L"w:a") << blanks;
    }
}

TEST(ZetTokenizer, bytesThatDoNotFitTheLocaleEndTheInput)
{
    const ZetScratchFolder folder;
    EXPECT_EQ(dumpFile(folder.write("bytes", "\xff a"), "C.UTF-8", kPlain), L"");
    EXPECT_EQ(dumpFile(folder.write("bytes", "caf\xc3\xa9 = \xff a"), "C.UTF-8", kPlain), L"w:caf\xe9 d:=");
}

// --- Peeking at files ---

/// The bytes of wide text as they lie in memory.
std::string wideBytes(const std::wstring& text)
{
    return std::string(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t));
}

bool findToken(ZetString& token, ZetTokenizer::TokenType& type, const std::filesystem::path& file, int byteCount,
               const Characters& s = kPlain)
{
    return ZetTokenizer::findToken(token, type, file.wstring(), byteCount, s.delimiters, s.line, s.begin, s.end,
                                   s.whitespace);
}

TEST(ZetTokenizer, findTokenTakesBytesAsWide)
{
    const ZetScratchFolder folder;
    ZetString token;
    ZetTokenizer::TokenType type = ZetTokenizer::Delimiter;
    const auto wide = folder.write("wide", wideBytes(L"# x\n CMF 1"));
    EXPECT_TRUE(findToken(token, type, wide, 40));
    EXPECT_EQ(token, L"CMF");
    EXPECT_EQ(type, ZetTokenizer::Word);

    // fewer bytes than the file has: the token ends where they do
    EXPECT_TRUE(findToken(token, type, wide, 24));
    EXPECT_EQ(token, L"C");
    // a piece of a character is one
    EXPECT_TRUE(findToken(token, type, wide, 25));
    EXPECT_EQ(token, L"CM");
    EXPECT_FALSE(findToken(token, type, wide, 20));
    EXPECT_EQ(token, L"");
    EXPECT_EQ(type, ZetTokenizer::Word);

    // more than the file has: bytes of 10 behind it, four to a character
    const auto brace = folder.write("brace", wideBytes(L"{"));
    EXPECT_TRUE(findToken(token, type, brace, 100));
    EXPECT_EQ(token, L"{");
    EXPECT_EQ(type, ZetTokenizer::Delimiter);
    EXPECT_TRUE(findToken(token, type, folder.write("ab", wideBytes(L"ab")), 17));
    EXPECT_EQ(token, (ZetString{L'a', L'b', wchar_t(0x0a0a0a0a), wchar_t(0x0a0a0a0a), L'\n'}).substr(0, 4));
    EXPECT_TRUE(findToken(token, type, folder.write("empty", ""), 4));
    EXPECT_EQ(token, ZetString(1, wchar_t(0x0a0a0a0a)));
    EXPECT_FALSE(findToken(token, type, folder.write("empty", ""), 1));

    // narrow text is taken four bytes at a time
    EXPECT_TRUE(findToken(token, type, folder.write("narrow", "{abc"), 4));
    EXPECT_EQ(token, ZetString(1, wchar_t(0x6362617b)));

    // a zero character ends the text
    EXPECT_TRUE(findToken(token, type, folder.write("zero", wideBytes(std::wstring(L"a\0b", 3))), 12));
    EXPECT_EQ(token, L"a");

    // nothing to look at
    token = L"before";
    EXPECT_FALSE(findToken(token, type, wide, 0));
    EXPECT_EQ(token, L"");
    EXPECT_FALSE(findToken(token, type, wide, -5));
}

TEST(ZetTokenizer, findTokenOfALiteral)
{
    const ZetScratchFolder folder;
    ZetString token;
    ZetTokenizer::TokenType type = ZetTokenizer::Word;
    const auto file = folder.write("file", wideBytes(L"\"a b\""));
    EXPECT_TRUE(findToken(token, type, file, 20));
    EXPECT_EQ(token, L"a b");
    EXPECT_EQ(type, ZetTokenizer::Literal);

    // the literal does not end within the bytes: what was posted is told, what was thrown is not
    EXPECT_FALSE(findToken(token, type, file, 16));
    EXPECT_EQ(token, L"");
    const ZetCollectingHandler posted;
    EXPECT_FALSE(findToken(token, type, file, 16));
    EXPECT_EQ(posted.texts(), std::vector<ZetString>{L"Failed to find closing literal delimiter (\") at line 1."});
}

TEST(ZetTokenizer, findTokenWithBadCharacters)
{
    const ZetScratchFolder folder;
    const auto file = folder.write("file", wideBytes(L"a"));
    ZetString token = L"before";
    ZetTokenizer::TokenType type = ZetTokenizer::Literal;
    const Characters bad = {L" ", L"", L"", L"", L" "};
    EXPECT_FALSE(findToken(token, type, file, 4, bad));
    EXPECT_EQ(token, L"");
    EXPECT_EQ(type, ZetTokenizer::Word);
    const ZetCollectingHandler posted;
    EXPECT_FALSE(findToken(token, type, file, 4, bad));
    EXPECT_EQ(posted.texts(), std::vector<ZetString>{L"' ' cannot be listed as both whitespace and as a delimiter"});
}

TEST(ZetTokenizer, findTokenOfAFileThatIsNotThere)
{
    const ZetScratchFolder folder;
    const auto file = folder / "none";
    const ZetString message = L"Cannot open file for read-only access: " + file.wstring();
    ZetString token = L"before";
    ZetTokenizer::TokenType type = ZetTokenizer::Literal;
    EXPECT_EQ(thrownBy([&] { findToken(token, type, file, 4); }).text(), message);
    bool found = true;
    const auto posted = postedBy([&] { found = findToken(token, type, file, 4); });
    EXPECT_FALSE(found);
    ASSERT_EQ(posted.size(), 1u);
    EXPECT_EQ(posted[0].text(), message);
    EXPECT_EQ(posted[0].file(), L"ZetTokenizer");
    EXPECT_EQ(token, L"before");
    EXPECT_EQ(type, ZetTokenizer::Literal);
}

TEST(ZetTokenizer, findTokenPassesOnWhatOpeningThrows)
{
    const ZetScopedLocale scoped("C");
    ZetString token;
    ZetTokenizer::TokenType type = ZetTokenizer::Word;
    EXPECT_THROW(ZetTokenizer::findToken(token, type, L"/\x20ac", 4, L"", L"", L"", L"", L""), std::length_error);
}

}  // namespace
}  // namespace zet

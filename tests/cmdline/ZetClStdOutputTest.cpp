#include <zet/ZetClStdOutput>

#include <sstream>

#include <gtest/gtest.h>

#include "support/ZetCommandLine"

namespace zet {
namespace {

using test::multiSwitchArg;
using test::multiUnlabeledArg;
using test::multiValueArg;
using test::switchArg;
using test::unlabeledArg;
using test::valueArg;

std::wstring many(std::size_t count, wchar_t c)
{
    return std::wstring(count, c);
}

std::wstring printed(const ZetString& text, int maxWidth, int indent, int offset)
{
    std::wostringstream out;
    ZetClStdOutput().spacePrint(out, text, maxWidth, indent, offset);
    return out.str();
}

// ---- lines ---------------------------------------------------------------------------------------

struct SpaceRow
{
    std::wstring text;
    int maxWidth;
    int indent;
    int offset;
    std::wstring out;
};

TEST(ZetClStdOutput, spacePrint)
{
    const SpaceRow rows[] = {
        {L"abc", 75, 3, 3, L"   abc\n"},
        // a text that just fits, and one that does not
        {many(72, L'x'), 75, 3, 3, L"   " + many(72, L'x') + L"\n"},
        {many(73, L'x'), 75, 3, 3, L"   " + many(72, L'x') + L"\n      x\n"},
        {many(70, L'x'), 75, 5, 0, L"     " + many(70, L'x') + L"\n"},
        {many(71, L'x'), 75, 5, 0, L"     " + many(70, L'x') + L"\n     x\n"},
        // the second line and those behind it have the offset once, and as much less room
        {many(20, L'x'), 10, 2, 3, L"  xxxxxxxx\n     xxxxx\n     xxxxx\n     xx\n"},
        // a line ends in front of its last break
        {L"aaa bbb ccc", 8, 0, 0, L"aaa bbb\nccc\n"},
        {L"aaa bbb ccc", 7, 0, 0, L"aaa bbb\nccc\n"},
        {L"aaa bbb ccc", 6, 0, 0, L"aaa\nbbb\nccc\n"},
        // a comma and a bar begin the next line; only blanks are dropped
        {L"abc,de", 4, 0, 0, L"abc\n,de\n"},
        {L"abc|de", 4, 0, 0, L"abc\n|de\n"},
        {L"abc, |de", 5, 0, 0, L"abc, \n|de\n"},
        {L"ab     cd", 4, 0, 0, L"ab  \ncd\n"},
        {L"abcd ", 4, 0, 0, L"abcd\n"},
        {L"     abcd", 4, 0, 0, L"    \nabcd\n"},
        // a rest that is exactly as long as the room is broken all the same
        {L"aaaa bb cc", 5, 0, 0, L"aaaa\nbb\ncc\n"},
        {L"aaaa bbbbb", 5, 0, 0, L"aaaa\nbbbbb\n"},
        // a break at the very begin is none
        {L",abcdef", 4, 0, 0, L",abc\ndef\n"},
        // a newline ends its line, and the line's end follows
        {L"ab\ncdefgh", 5, 0, 0, L"ab\n\ncdefg\nh\n"},
        {L"ab\ncd\nef", 5, 1, 1, L" ab\n\n  cd\n\n  ef\n"},
        {L"\nabcdef", 5, 0, 0, L"\n\nabcde\nf\n"},
        {L"abcdef\n", 5, 0, 0, L"abcde\nf\n\n"},
        // where the text fits it is printed as it is
        {L"ab\ncd", 5, 0, 2, L"ab\ncd\n"},
        {L"", 5, 2, 2, L"  \n"},
        // without a limit nothing wraps
        {many(100, L'x'), 0, 2, 2, L"  " + many(100, L'x') + L"\n"},
        {many(100, L'x'), -1, 0, 2, many(100, L'x') + L"\n"},
        // without room each line takes one character
        {L"a bc", 3, 3, 0, L"   a\n   b\n   c\n"},
        {L"abcd", 5, 3, 3, L"   ab\n      c\n      d\n"},
        {L"ab", 1, 4, -2, L"    a\n  b\n"},
        {L"a\nb", 1, 2, 0, L"  a\n  \n\n  b\n"},
        {L"", 3, 5, 0, L""},
        // fewer blanks than none
        {L"abcdef", 2, -1, 0, L"abc\ndef\n"},
    };
    for (const SpaceRow& row : rows) {
        EXPECT_EQ(printed(row.text, row.maxWidth, row.indent, row.offset), row.out)
            << row.text << " in " << row.maxWidth << ", " << row.indent << ", " << row.offset;
    }
}

/// The same by the rules, one character at a time.
std::wstring bySteps(const std::wstring& s, int maxWidth, int indent, int offset)
{
    const int len = static_cast<int>(s.size());
    const auto at = [&](int place) { return place < len ? s[static_cast<std::size_t>(place)] : L'x'; };
    std::wstring out;
    if (len + indent <= maxWidth || maxWidth <= 0) {
        return many(static_cast<std::size_t>(indent), L' ') + s + L"\n";
    }
    int allowed = maxWidth - indent;
    for (int start = 0; start < len;) {
        const int room = allowed < 1 ? 1 : allowed;
        int n = room < len - start ? room : len - start;
        if (n == room) {
            while (n >= 0 && at(start + n) != L' ' && at(start + n) != L',' && at(start + n) != L'|') {
                --n;
            }
        }
        if (n <= 0) {
            n = room;
        }
        for (int i = 0; i < n; ++i) {
            if (at(start + i) == L'\n') {
                n = i + 1;
            }
        }
        out += many(static_cast<std::size_t>(indent), L' ');
        if (start == 0) {
            indent += offset;
            allowed -= offset;
        }
        for (int i = 0; i < n; ++i) {
            out += at(start + i);
        }
        out += L"\n";
        while (at(start + n) == L' ' && start < len) {
            ++start;
        }
        start += n;
    }
    return out;
}

TEST(ZetClStdOutput, spacePrintOfAllShortTexts)
{
    const std::wstring letters = L"a ,\n";
    std::vector<std::wstring> texts = {L""};
    for (std::size_t i = 0; texts[i].size() < 6; ++i) {
        for (const wchar_t letter : letters) {
            texts.push_back(texts[i] + letter);
        }
    }
    for (const std::wstring& text : texts) {
        for (int maxWidth = 1; maxWidth <= 6; ++maxWidth) {
            for (int indent = 0; indent <= 2; ++indent) {
                for (int offset = 0; offset <= 2; offset += 2) {
                    ASSERT_EQ(printed(text, maxWidth, indent, offset), bySteps(text, maxWidth, indent, offset))
                        << text << " in " << maxWidth << ", " << indent << ", " << offset;
                }
            }
        }
    }
}

// ---- usage ---------------------------------------------------------------------------------------

/// A parser whose program has a name, whatever else its command line should have had.
std::unique_ptr<ZetClParser> named(const ZetString& name, const std::vector<ZetClArgPtr>& args = {})
{
    std::unique_ptr<ZetClParser> parser = test::parserOf(args);
    std::vector<ZetString> words = {name};
    try {
        parser->parse(words);
    } catch (const ZetTextMsg&) {
    }
    return parser;
}

std::wstring shortUsage(const ZetClParserIF& parser)
{
    std::wostringstream out;
    ZetClStdOutput().shortUsage(parser, out);
    return out.str();
}

std::wstring longUsage(const ZetClParserIF& parser)
{
    std::wostringstream out;
    ZetClStdOutput().longUsage(parser, out);
    return out.str();
}

TEST(ZetClStdOutput, shortUsage)
{
    EXPECT_EQ(ZetClStdOutput().className(), L"ZetClStdOutput");
    EXPECT_EQ(shortUsage(*named(L"prog")), L"   prog \n");
    EXPECT_EQ(shortUsage(*named(L"prog", {switchArg(L'a', L"all"), multiSwitchArg(L'v', L"verbose"),
                                          valueArg(0, L"file"), multiValueArg(L'm', L"many"),
                                          unlabeledArg(L"in", ZetMetaFlag::Required), multiUnlabeledArg(L"rest")})),
              L"   prog  [-m=<ZetString>] ...  [--file=<ZetString>] [-v] ...  [-a]\n"
              L"         <ZetString> <ZetString> ...\n");
}

TEST(ZetClStdOutput, groupsComeFirst)
{
    const auto parser = named(L"prog", {switchArg(L'q', L"quiet")});
    parser->xorAdd(valueArg(L'e', L"equation"), unlabeledArg(L"file"));
    parser->xorAdd({switchArg(L'a', L"all")});
    EXPECT_EQ(shortUsage(*parser), L"   prog  {-e=<ZetString>|<ZetString>} {-a} [-q]\n");
    EXPECT_EQ(longUsage(*parser),
              L"   -e=<ZetString>,  --equation=<ZetString>\n"
              L"     (OR required) tells equation\n"
              L"         -- OR --\n"
              L"   <ZetString>\n"
              L"     (OR required) tells file\n"
              L"\n"
              L"\n"
              L"   -a,  --all\n"
              L"     (OR required) tells all\n"
              L"\n"
              L"\n"
              L"   -q,  --quiet\n"
              L"     tells quiet\n"
              L"\n"
              L"\n"
              L"   A test.\n");
}

std::vector<ZetClArgPtr> tenSwitches()
{
    std::vector<ZetClArgPtr> args;
    for (wchar_t c = L'a'; c <= L'j'; ++c) {
        args.push_back(switchArg(c, ZetString(1, c)));
    }
    return args;
}

TEST(ZetClStdOutput, wrappedShortUsage)
{
    // later lines stand two columns behind the name
    EXPECT_EQ(
        shortUsage(*named(many(34, L'p'), tenSwitches())),
        L"   " + many(34, L'p') + L"  [-j] [-i] [-h] [-g] [-f] [-e] [-d]\n" + many(39, L' ') + L"[-c] [-b] [-a]\n");
    // but at most 37 columns behind the first one
    EXPECT_EQ(
        shortUsage(*named(many(35, L'p'), tenSwitches())),
        L"   " + many(35, L'p') + L"  [-j] [-i] [-h] [-g] [-f] [-e] [-d]\n" + many(40, L' ') + L"[-c] [-b] [-a]\n");
    EXPECT_EQ(
        shortUsage(*named(many(40, L'p'), tenSwitches())),
        L"   " + many(40, L'p') + L"  [-j] [-i] [-h] [-g] [-f] [-e]\n" + many(40, L' ') + L"[-d] [-c] [-b] [-a]\n");
    // a name that fills its line
    EXPECT_EQ(shortUsage(*named(many(80, L'p'), {switchArg(L'a', L"all")})),
              L"   " + many(72, L'p') + L"\n" + many(40, L' ') + many(8, L'p') + L"  [-a]\n");
    // bars of a group begin lines
    const auto parser = named(L"prog");
    parser->xorAdd(valueArg(0, many(30, L'n')), valueArg(0, many(20, L'm')));
    EXPECT_EQ(shortUsage(*parser),
              L"   prog  {--" + many(30, L'n') + L"=<ZetString>\n         |--" + many(20, L'm') + L"=<ZetString>}\n");
}

TEST(ZetClStdOutput, wrappedLongUsage)
{
    // a long name without a break: later lines stand 6 columns in and have room for 69
    EXPECT_EQ(longUsage(*named(L"prog", {switchArg(0, many(142, L'n'))})),
              L"   --" + many(70, L'n') + L"\n      " + many(69, L'n') + L"\n      nnn\n" + L"     tells\n     " +
                  many(70, L'n') + L"\n     " + many(70, L'n') + L"\n     nn\n\n\n   A test.\n");
    // between flag and name
    EXPECT_EQ(longUsage(*named(L"prog", {new ZetClValueArg(ZetMetaProperty(L'f', many(60, L'n'), L"d"), L"")})),
              L"   -f=<ZetString>, \n      --" + many(60, L'n') + L"=<ZetSt\n      ring>\n     d\n\n\n   A test.\n");
}

TEST(ZetClStdOutput, descriptions)
{
    const auto described = [](const ZetString& text) {
        const ZetMetaProperty property(0, L"all", text, ZetMetaType::Bool);
        return longUsage(*named(L"prog", {new ZetClSwitchArg(property, false)}));
    };
    const std::wstring before = L"   --all\n";
    const std::wstring after = L"\n\n   A test.\n";
    EXPECT_EQ(described(many(70, L'd')), before + L"     " + many(70, L'd') + L"\n" + after);
    EXPECT_EQ(described(many(71, L'd')), before + L"     " + many(70, L'd') + L"\n     d\n" + after);
    // a newline where the text fits, and where it wraps
    EXPECT_EQ(described(L"one\ntwo"), before + L"     one\ntwo\n" + after);
    EXPECT_EQ(described(L"one\n" + many(70, L'd')), before + L"     one\n\n     " + many(70, L'd') + L"\n" + after);
    EXPECT_EQ(described(L""), before + L"     \n" + after);

    ZetClParser longer(many(73, L'd') + L" end", L"1", L'=', false);
    EXPECT_EQ(longUsage(longer), L"\n   " + many(72, L'd') + L"\n   d end\n");
    EXPECT_EQ(longUsage(ZetClParser(L"", L"1", L'=', false)), L"\n   \n");
}

}  // namespace
}  // namespace zet

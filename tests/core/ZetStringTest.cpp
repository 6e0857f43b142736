#include <zet/ZetString>

#include <unistd.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/ZetPrint"
#include "support/ZetScopedLocale"

namespace zet {
namespace {

using test::ZetScopedLocale;

bool hasLocale(const char* name)
{
    return ZetScopedLocale(name).isSet();
}

// The locale with UTF-8 that every machine of the platform has.
constexpr const char* kUtf8 = "C.UTF-8";

TEST(ZetString, isAStandardWideString)
{
    static_assert(std::is_base_of_v<std::wstring, ZetString>);
    static_assert(sizeof(ZetString) == sizeof(std::wstring));
    static_assert(!std::is_polymorphic_v<ZetString>);
    static_assert(sizeof(wchar_t) == 4);
    const std::wstring standard = L"abc";
    EXPECT_EQ(ZetString(standard), standard);
    EXPECT_EQ(ZetString(L"abcdef", 2), L"ab");
    EXPECT_EQ(ZetString(standard, 1), L"bc");
    EXPECT_EQ(ZetString(standard, 1, 1), L"b");
    EXPECT_EQ(ZetString(3, L'x'), L"xxx");
    EXPECT_EQ(ZetString(standard.begin(), standard.end()), standard);
    EXPECT_EQ((ZetString{L'a', L'b'}), L"ab");
    EXPECT_EQ(ZetString(), L"");
}

TEST(ZetString, takesNarrowText)
{
    EXPECT_EQ(ZetString("abc"), L"abc");
    EXPECT_EQ(ZetString(std::string("abc")), L"abc");
    EXPECT_EQ(ZetString(""), L"");
    EXPECT_EQ(ZetString(static_cast<const char*>(nullptr)), L"");
    ZetString text = L"old";
    text = "new";
    EXPECT_EQ(text, L"new");
    text = std::string("newer");
    EXPECT_EQ(text, L"newer");
    text = L"wide";
    EXPECT_EQ(text, L"wide");
    text = L'w';
    EXPECT_EQ(text, L"w");
}

TEST(ZetString, assignOfAnEmptyNarrowTextChangesNothing)
{
    ZetString text = L"abc";
    text._assign_("");
    EXPECT_EQ(text, L"abc");
    text._assign_(nullptr);
    EXPECT_EQ(text, L"abc");
    text = "";
    EXPECT_EQ(text, L"abc");
    text = std::string();
    EXPECT_EQ(text, L"abc");
    text = L"";
    EXPECT_EQ(text, L"");
    text._assign_("xyz");
    EXPECT_EQ(text, L"xyz");
}

TEST(ZetString, changesTheCaseOfAsciiLettersOnly)
{
    struct Row
    {
        const wchar_t* text;
        const wchar_t* upper;
        const wchar_t* lower;
    };
    const Row rows[] = {
        {L"", L"", L""},
        {L"abcxyz", L"ABCXYZ", L"abcxyz"},
        {L"ABCXYZ", L"ABCXYZ", L"abcxyz"},
        // the neighbours of the letters
        {L"`{@[", L"`{@[", L"`{@["},
        {L"a1 B2", L"A1 B2", L"a1 b2"},
        {L"\u00e4\u00c4\u00df\u03b1", L"\u00e4\u00c4\u00df\u03b1", L"\u00e4\u00c4\u00df\u03b1"},
    };
    for (const char* locale : {"C", kUtf8}) {
        const ZetScopedLocale scope(locale);
        for (const Row& row : rows) {
            ZetString upper = row.text;
            upper.toUpper();
            EXPECT_EQ(upper, row.upper);
            ZetString lower = row.text;
            lower.toLower();
            EXPECT_EQ(lower, row.lower);
            EXPECT_EQ(toLower(ZetString(row.text)), row.lower);
        }
    }
}

TEST(ZetString, trimsFourCharacters)
{
    struct Row
    {
        const wchar_t* text;
        const wchar_t* trimmed;
    };
    const Row rows[] = {
        {L"abc", L"abc"},
        {L" abc ", L"abc"},
        {L"\n\t\r abc\n\t\r ", L"abc"},
        {L" a b ", L"a b"},
        {L"", L""},
        // no other white space
        {L"\vabc\f", L"\vabc\f"},
        {L"\u00a0abc", L"\u00a0abc"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(trim(row.text), row.trimmed);
    }
}

TEST(ZetString, trimOfBlanksKeepsThem)
{
    for (const wchar_t* text : {L" ", L"   ", L"\n\t\r "}) {
        EXPECT_EQ(trim(text), text);
    }
}

TEST(ZetString, findsSubstrings)
{
    struct Row
    {
        const wchar_t* a;
        const wchar_t* b;
        bool exact;
        bool folded;
    };
    const Row rows[] = {
        {L"abcdef", L"cd", true, true},
        {L"abcdef", L"CD", false, true},
        {L"ABCDEF", L"cd", false, true},
        {L"abc", L"", true, true},
        {L"", L"a", false, false},
        {L"abc", L"abcd", false, false},
        {L"\u00e4", L"\u00c4", false, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(containsSubstring(row.a, row.b, true), row.exact);
        EXPECT_EQ(containsSubstring(row.a, row.b, false), row.folded);
    }
}

TEST(ZetString, isEqualFoldsByTheLocale)
{
    struct Row
    {
        const wchar_t* a;
        const wchar_t* b;
        bool inC;
        bool inUtf8;
    };
    const Row rows[] = {
        {L"", L"", true, true},
        {L"abc", L"ABC", true, true},
        {L"abc", L"abd", false, false},
        {L"xbc", L"abc", false, false},
        {L"abc", L"abcd", false, false},
        {L"\u00e4b", L"\u00c4B", false, true},
        {L"\u03b1", L"\u0391", false, true},
    };
    for (const Row& row : rows) {
        {
            const ZetScopedLocale scope("C");
            EXPECT_EQ(isEqual(row.a, row.b), row.inC);
        }
        const ZetScopedLocale scope(kUtf8);
        ASSERT_TRUE(scope.isSet());
        EXPECT_EQ(isEqual(row.a, row.b), row.inUtf8);
        EXPECT_EQ(isEqual(row.b, row.a), row.inUtf8);
    }
}

TEST(ZetString, comparesForSorting)
{
    struct Row
    {
        const wchar_t* a;
        const wchar_t* b;
        bool sensitive;
        bool insensitive;
    };
    const Row rows[] = {
        {L"a", L"b", true, true},
        {L"b", L"a", false, false},
        {L"a", L"a", false, false},
        {L"B", L"a", true, false},
        {L"a", L"B", false, true},
        {L"A", L"a", true, false},
        {L"a", L"ab", true, true},
        {L"", L"a", true, true},
        // '_' lies between the upper and the lower letters
        {L"_", L"A", false, true},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(caseSensitiveCompare(row.a, row.b), row.sensitive);
        EXPECT_EQ(caseInsensitiveCompare(row.a, row.b), row.insensitive);
    }
}

TEST(ZetString, readsLines)
{
    std::wistringstream in(L"one\ntwo;three\n\nlast");
    ZetString line = L"old";
    EXPECT_TRUE(getline(in, line));
    EXPECT_EQ(line, L"one");
    EXPECT_TRUE(getline(in, line, L';'));
    EXPECT_EQ(line, L"two");
    EXPECT_TRUE(getline(in, line));
    EXPECT_EQ(line, L"three");
    EXPECT_TRUE(getline(in, line));
    EXPECT_EQ(line, L"");
    EXPECT_EQ(&getline(in, line), &in);
    EXPECT_EQ(line, L"last");
    EXPECT_FALSE(getline(in, line));
}

TEST(ZetString, widensByTheLocale)
{
    EXPECT_EQ(toWide("abc"), L"abc");
    EXPECT_EQ(toWide(""), L"");
    EXPECT_EQ(toWide(static_cast<const char*>(nullptr)), L"");
    EXPECT_EQ(toWide(std::string("abc")), L"abc");
    EXPECT_EQ(toWide(std::string()), L"");
    const ZetScopedLocale scope(kUtf8);
    ASSERT_TRUE(scope.isSet());
    EXPECT_EQ(toWide("\xc3\xa4\xe2\x82\xac\xf0\x9f\x8c\x8d"), L"\u00e4\u20ac\U0001f30d");
    EXPECT_EQ(ZetString("\xc3\xa4"), L"\u00e4");
}

TEST(ZetString, bytesThatTheLocaleForbidsAreALengthError)
{
    const ZetScopedLocale scope(kUtf8);
    ASSERT_TRUE(scope.isSet());
    EXPECT_THROW(toWide("ok \xff"), std::length_error);
    EXPECT_THROW(toWide("\xc3"), std::length_error);
    EXPECT_THROW(ZetString("\xff"), std::length_error);
    ZetString kept = L"kept";
    EXPECT_THROW(kept._assign_("\xff"), std::length_error);
    EXPECT_EQ(kept, L"kept");
}

TEST(ZetString, narrowsByTheLocale)
{
    EXPECT_EQ(toMultibyte(L"abc"), "abc");
    EXPECT_EQ(toMultibyte(L""), "");
    {
        const ZetScopedLocale scope(kUtf8);
        ASSERT_TRUE(scope.isSet());
        EXPECT_EQ(toMultibyte(L"\u00e4\u20ac\U0001f30d"), "\xc3\xa4\xe2\x82\xac\xf0\x9f\x8c\x8d");
    }
    const ZetScopedLocale scope("C");
    EXPECT_THROW(toMultibyte(L"a\u00e4"), std::length_error);
}

TEST(ZetString, toUTF8KeepsTheLowByte)
{
    EXPECT_EQ(toUTF8(L""), "");
    if (!hasLocale("en_US")) {
        EXPECT_THROW(toUTF8(L"abc"), std::runtime_error);
        return;
    }
    EXPECT_EQ(toUTF8(L"abc 123"), "abc 123");
    EXPECT_EQ(toUTF8(L"\u00e4"), "\xe4");
    // U+20AC and U+1F341 lose their high bits
    EXPECT_EQ(toUTF8(L"\u20ac"), "\xac");
    EXPECT_EQ(toUTF8(L"\U0001f341!"), "A!");
}

TEST(ZetString, formats)
{
    wchar_t wide[512];
    EXPECT_EQ(sprintf(wide, L"%d %ls %.2f", 7, L"seven", 0.0), 12);
    EXPECT_EQ(ZetString(wide, 7), L"7 seven");
    char narrow[32];
    EXPECT_EQ(sprintf(narrow, "%d %s", 7, "seven"), 7);
    EXPECT_STREQ(narrow, "7 seven");
}

TEST(ZetString, wideFormattedTextEndsAt511Characters)
{
    wchar_t wide[600];
    for (const int length : {1, 511, 512, 513, 599}) {
        SCOPED_TRACE(length);
        const ZetString text(static_cast<std::size_t>(length), L'x');
        const int result = sprintf(wide, L"%ls", text.c_str());
        if (length <= 511) {
            EXPECT_EQ(result, length);
            EXPECT_EQ(ZetString(wide), text);
        } else {
            EXPECT_LT(result, 0);
            EXPECT_LE(std::wcslen(wide), 511u);
        }
    }
}

TEST(ZetString, narrowFormattedTextHasNoLimit)
{
    char narrow[2001];
    EXPECT_EQ(sprintf(narrow, "%s", std::string(2000, 'x').c_str()), 2000);
    EXPECT_EQ(std::string(narrow), std::string(2000, 'x'));
}

int formatWide(wchar_t* dst, const wchar_t* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const int length = vsprintf(dst, format, arguments);
    va_end(arguments);
    return length;
}

int formatNarrow(char* dst, const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const int length = vsprintf(dst, format, arguments);
    va_end(arguments);
    return length;
}

TEST(ZetString, formatsArgumentLists)
{
    wchar_t wide[32];
    EXPECT_EQ(formatWide(wide, L"%d-%c", 42, 'x'), 4);
    EXPECT_EQ(ZetString(wide), L"42-x");
    char narrow[32];
    EXPECT_EQ(formatNarrow(narrow, "%d-%c", 42, 'x'), 4);
    EXPECT_STREQ(narrow, "42-x");
}

/// Makes \p text the standard input of this process.
void feed(const std::string& text)
{
    int ends[2];
    if (pipe(ends) != 0 || write(ends[1], text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
        std::abort();
    }
    close(ends[1]);
    dup2(ends[0], STDIN_FILENO);
}

[[noreturn]] void exitWith(bool good)
{
    std::exit(good ? 0 : 1);
}

TEST(ZetString, scansStandardInputAsNarrowText)
{
    const auto child = [] {
        feed("12 abc 7");
        int number = 0;
        char word[16] = {};
        int last = 0;
        const int count = scanf("%d %15s %d", &number, word, &last);
        exitWith(count == 3 && number == 12 && std::string(word) == "abc" && last == 7 && scanf("%d", &last) == EOF);
    };
    EXPECT_EXIT(child(), ::testing::ExitedWithCode(0), "");
}

TEST(ZetString, scansStandardInputAsWideText)
{
    const auto child = [] {
        feed("12 abc 7");
        int number = 0;
        wchar_t word[16] = {};
        int last = 0;
        const int count = scanf(L"%d %15ls %d", &number, word, &last);
        exitWith(count == 3 && number == 12 && ZetString(word) == L"abc" && last == 7 && scanf(L"%d", &last) == EOF);
    };
    EXPECT_EXIT(child(), ::testing::ExitedWithCode(0), "");
}

int scanWide(const wchar_t* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const int count = vscanf(format, arguments);
    va_end(arguments);
    return count;
}

int scanNarrow(const char* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const int count = vscanf(format, arguments);
    va_end(arguments);
    return count;
}

TEST(ZetString, scansIntoArgumentLists)
{
    const auto wide = [] {
        feed("5 6");
        int a = 0;
        int b = 0;
        exitWith(scanWide(L"%d %d", &a, &b) == 2 && a == 5 && b == 6);
    };
    EXPECT_EXIT(wide(), ::testing::ExitedWithCode(0), "");
    const auto narrow = [] {
        feed("5 x");
        int a = 0;
        int b = 0;
        exitWith(scanNarrow("%d %d", &a, &b) == 1 && a == 5 && b == 0);
    };
    EXPECT_EXIT(narrow(), ::testing::ExitedWithCode(0), "");
}

TEST(ZetString, appendsText)
{
    wchar_t wide[8] = L"abc";
    EXPECT_EQ(strcat(wide, L"de"), wide);
    EXPECT_EQ(ZetString(wide), L"abcde");
    char narrow[8] = "abc";
    EXPECT_EQ(strcat(narrow, "de"), narrow);
    EXPECT_STREQ(narrow, "abcde");
}

TEST(ZetString, readsDoubles)
{
    const ZetScopedLocale scope("C");
    struct Row
    {
        const wchar_t* text;
        double value;
        std::size_t used;
    };
    const Row rows[] = {
        {L"3.5", 3.5, 3},        {L"  -2e3x", -2000.0, 6}, {L"0x1p4", 16.0, 5}, {L"inf", HUGE_VAL, 3},
        {L"1e999", HUGE_VAL, 5}, {L"x", 0.0, 0},           {L"", 0.0, 0},
    };
    for (const Row& row : rows) {
        const std::string narrow = toMultibyte(row.text);
        SCOPED_TRACE(narrow);
        wchar_t* wideEnd = nullptr;
        EXPECT_EQ(strtod(row.text, &wideEnd), row.value);
        EXPECT_EQ(wideEnd, row.text + row.used);
        char* end = nullptr;
        EXPECT_EQ(strtod(narrow.c_str(), &end), row.value);
        EXPECT_EQ(end, narrow.c_str() + row.used);
        EXPECT_EQ(strtod(std::wstring(row.text)), row.value);
        EXPECT_EQ(strtod(narrow), row.value);
        EXPECT_EQ(atof(row.text), row.value);
        EXPECT_EQ(atof(narrow.c_str()), row.value);
        EXPECT_EQ(atof(std::wstring(row.text)), row.value);
        EXPECT_EQ(atof(narrow), row.value);
    }
    EXPECT_TRUE(std::isnan(strtod(std::wstring(L"nan"))));
    EXPECT_EQ(strtod(L"1.5", nullptr), 1.5);
}

TEST(ZetString, readsIntegers)
{
    constexpr long kMost = std::numeric_limits<long>::max();
    constexpr unsigned long kMostUnsigned = std::numeric_limits<unsigned long>::max();
    struct Row
    {
        const wchar_t* text;
        int base;
        long value;
        unsigned long unsignedValue;
        std::size_t used;
    };
    const Row rows[] = {
        {L"42", 10, 42, 42, 2},
        {L" +7.9", 10, 7, 7, 3},
        {L"-3", 10, -3, kMostUnsigned - 2, 2},
        {L"ff", 16, 255, 255, 2},
        {L"0x1F", 0, 31, 31, 4},
        {L"017", 0, 15, 15, 3},
        {L"129", 2, 1, 1, 1},
        {L"9223372036854775808", 10, kMost, 9223372036854775808ul, 19},
        {L"99999999999999999999", 10, kMost, kMostUnsigned, 20},
        {L"abc", 10, 0, 0, 0},
        {L"", 10, 0, 0, 0},
    };
    for (const Row& row : rows) {
        const std::string narrow = toMultibyte(row.text);
        SCOPED_TRACE(narrow);
        wchar_t* wideEnd = nullptr;
        char* end = nullptr;
        EXPECT_EQ(strtol(row.text, &wideEnd, row.base), row.value);
        EXPECT_EQ(wideEnd, row.text + row.used);
        EXPECT_EQ(strtol(narrow.c_str(), &end, row.base), row.value);
        EXPECT_EQ(end, narrow.c_str() + row.used);
        EXPECT_EQ(strtol(std::wstring(row.text), row.base), row.value);
        EXPECT_EQ(strtol(narrow, row.base), row.value);
        EXPECT_EQ(strtoul(row.text, &wideEnd, row.base), row.unsignedValue);
        EXPECT_EQ(wideEnd, row.text + row.used);
        EXPECT_EQ(strtoul(narrow.c_str(), &end, row.base), row.unsignedValue);
        EXPECT_EQ(end, narrow.c_str() + row.used);
        EXPECT_EQ(strtoul(std::wstring(row.text), row.base), row.unsignedValue);
        EXPECT_EQ(strtoul(narrow, row.base), row.unsignedValue);
        if (row.base == 10) {
            EXPECT_EQ(atol(row.text), row.value);
            EXPECT_EQ(atol(narrow.c_str()), row.value);
            EXPECT_EQ(atol(std::wstring(row.text)), row.value);
            EXPECT_EQ(atol(narrow), row.value);
            // the wide forms of atoi and atol are one function
            EXPECT_EQ(atoi(row.text), row.value);
            EXPECT_EQ(atoi(std::wstring(row.text)), row.value);
        }
    }
    static_assert(std::is_same_v<decltype(atoi(L"1")), long>);
    static_assert(std::is_same_v<decltype(atoi("1")), int>);
    EXPECT_EQ(atoi("-12x"), -12);
    EXPECT_EQ(atoi(std::string("34 5")), 34);
    EXPECT_EQ(atoi(L"4294967296"), 4294967296);
}

}  // namespace
}  // namespace zet

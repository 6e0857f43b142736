// The language of unit texts told a second time, step by step with a call for each level, against the
// parser, which keeps its levels on a stack of its own.

#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include <zet/ZetTextMsg>
#include <zet/ZetUnits>

#include "support/ZetPrint"
#include "support/ZetScopedLocale"

namespace zet {
namespace {

constexpr std::size_t npos = ZetString::npos;

struct Failure
{
    ZetString text;
};

/// The units built so far, and the steps that read them.
struct Reader
{
    ZetUnits units;

    static ZetString trimmedAtBlanks(const ZetString& text)
    {
        return !text.empty() && (text.front() == L' ' || text.back() == L' ') ? trim(text) : text;
    }

    double multiply(const ZetUnits& other) { return ZetUnits::multFactor(units, other, &units); }

    double tokenize(const ZetString& text, double e)
    {
        double factor = 1.0;
        std::size_t pos = text.find_first_not_of(L"\t ");
        while (pos != npos) {
            const std::size_t before = pos;
            factor *= parseParens(text, pos, e);
            if (pos != before) {
                continue;
            }
            std::size_t end = text.find_first_of(L"\t */", pos);
            std::size_t next = npos;
            bool slash = false;
            if (end == npos) {
                end = text.size();
            } else {
                next = text.find_first_not_of(L"\t ", end + 1);
                const std::size_t n = next == npos ? text.size() - end : next - end;
                std::size_t c = end;
                if (n != 1) {
                    while (c < text.size() && text[c] == L' ') {
                        ++c;
                    }
                }
                slash = c < text.size() && text[c] == L'/';
            }
            if (pos < end) {
                factor *= parseToken(text.substr(pos, end - pos), e);
            }
            pos = next;
            if (slash) {
                e = -e;
            }
        }
        return factor;
    }

    double parseParens(const ZetString& text, std::size_t& pos, double e)
    {
        if (text[pos] != L'(') {
            return 1.0;
        }
        int depth = 1;
        std::size_t i = pos + 1;
        for (; i < text.size() && depth != 0; ++i) {
            depth += text[i] == L'(' ? 1 : text[i] == L')' ? -1 : 0;
        }
        if (depth != 0) {
            throw Failure{L"Unmatched open or close parentheses: " + text};
        }
        const ZetString inner = trimmedAtBlanks(text.substr(pos + 1, i - pos - 2));
        double result = 1.0;
        if (units.numCategories() == 0) {
            result = tokenize(inner, e);
        } else {
            Reader scratch;
            result = scratch.tokenize(inner, e);
            result *= multiply(scratch.units);
        }
        pos = i < text.size() ? i : npos;
        return result;
    }

    /// Of the names it knows four, no two of which make a third when they stand together.
    double parseToken(const ZetString& token, double e)
    {
        const std::size_t caret = token.find(L'^');
        const ZetString name = token.substr(0, caret);
        double x = e;
        if (caret != npos) {
            const ZetString number = token.substr(caret + 1);
            x = std::wcstod(number.c_str(), nullptr) * e;
            if (x == 0.0) {
                throw Failure{L"Invalid exponent: " + number};
            }
        }
        ZetUnits scratch;
        double scale = 1.0;
        if (name == L"K") {
            scratch.insert({ZetUnits::Unit::Kelvin, x});
        } else if (name == L"in") {
            scratch.insert({ZetUnits::Unit::Inch, x});
        } else if (name == L"ft") {
            scratch.insert({ZetUnits::Unit::Foot, x});
        } else if (name == L"mJ") {
            scratch.insert({ZetUnits::Unit::Meter, 2.0 * x});
            scratch.insert({ZetUnits::Unit::Kilogram, x});
            scratch.insert({ZetUnits::Unit::Second, -2.0 * x});
            scale = x == 1.0 ? 0.001 : std::pow(0.001, x);
        } else {
            throw Failure{L"Invalid/unknown units: " + name};
        }
        return multiply(scratch) * scale;
    }
};

/// What a text gives: its scale, the message of its failure, and the units built.
struct Outcome
{
    double scale = 0.0;
    ZetString message;
    ZetUnits units;
};

Outcome expected(const ZetString& text)
{
    Reader reader;
    Outcome outcome;
    try {
        outcome.scale = reader.tokenize(Reader::trimmedAtBlanks(text), 1.0);
    } catch (const Failure& failure) {
        outcome.message = failure.text;
    }
    outcome.units = reader.units;
    return outcome;
}

Outcome given(const ZetString& text)
{
    Outcome outcome;
    try {
        outcome.scale = outcome.units.fromString(text);
    } catch (const ZetTextMsg& message) {
        outcome.message = message.text();
    }
    return outcome;
}

bool agree(const Outcome& a, const Outcome& b)
{
    const double reach = 1e-13 * std::fabs(a.scale);
    return std::fabs(a.scale - b.scale) <= reach && a.message == b.message && a.units == b.units;
}

void expectAgreement(const ZetString& text)
{
    const Outcome told = expected(text);
    const Outcome read = given(text);
    ASSERT_TRUE(agree(told, read)) << "'" << toMultibyte(text) << "': " << read.scale << ", '"
                                   << toMultibyte(read.message) << "', " << toMultibyte(ZetString(read.units))
                                   << " instead of " << told.scale << ", '" << toMultibyte(told.message) << "', "
                                   << toMultibyte(ZetString(told.units));
}

// Of each kind of piece one: names, white space, separators, brackets and exponents.
const wchar_t* const kPieces[] = {L"K", L"in", L" ", L"\t", L"/", L"*", L"(", L")", L"^2", L"\r"};

TEST(ZetUnitsGrammar, allShortTexts)
{
    const test::ZetScopedLocale plainNumbers("C");
    constexpr std::size_t count = std::size(kPieces);
    for (std::size_t length = 0, texts = 1; length <= 5; ++length, texts *= count) {
        for (std::size_t number = 0; number < texts; ++number) {
            ZetString text;
            for (std::size_t i = 0, rest = number; i < length; ++i, rest /= count) {
                text += kPieces[rest % count];
            }
            expectAgreement(text);
            if (HasFatalFailure()) {
                return;
            }
        }
    }
}

TEST(ZetUnitsGrammar, longerTexts)
{
    const test::ZetScopedLocale plainNumbers("C");
    const wchar_t* const pieces[] = {L"K",   L"in",  L"ft",   L"mJ", L" ",  L" ",   L"  ", L"\t",
                                     L"/",   L" / ", L"*",    L"(",  L"(",  L")",   L")",  L"^2",
                                     L"^-1", L"^0",  L"^0.5", L"^x", L" K", L" in", L" ft"};
    std::mt19937 random(20);
    for (int i = 0; i < 30000; ++i) {
        ZetString text;
        for (unsigned long left = 1 + random() % 14; left > 0; --left) {
            text += pieces[random() % std::size(pieces)];
        }
        expectAgreement(text);
        if (HasFatalFailure()) {
            return;
        }
    }
}

}  // namespace
}  // namespace zet

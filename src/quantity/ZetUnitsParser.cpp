#include "quantity/ZetUnitsParser"

#include <cmath>

#include <zet/ZetTextMsg>

#include "core/ZetUnitInit"
#include "quantity/ZetUnitLists"
#include "quantity/ZetUnits_p"

namespace zet {
namespace internal {

namespace {

constexpr std::size_t npos = std::wstring_view::npos;

bool isWhite(wchar_t c)
{
    return c == L'\t' || c == L' ';
}

bool isSeparator(wchar_t c)
{
    return isWhite(c) || c == L'*' || c == L'/';
}

/// The first position from \p pos on whose character is none that \p isOne finds; npos if there is none.
template <class Predicate>
std::size_t findNot(std::wstring_view text, std::size_t pos, Predicate isOne)
{
    while (pos < text.size() && isOne(text[pos])) {
        ++pos;
    }
    return pos < text.size() ? pos : npos;
}

[[noreturn]] void throwError(const ZetString& text, int line)
{
    throw ZetTextMsg(text, L"ZetUnits", line, ZetTextMsg::Error);
}

/// The trimmed text, if a blank stands at either end; no other character there is looked for.
std::wstring_view withoutEndBlanks(std::wstring_view text)
{
    if (text.empty() || (text.front() != L' ' && text.back() != L' ')) {
        return text;
    }
    constexpr std::wstring_view trimmed = L"\n\t\r ";
    const std::size_t first = text.find_first_not_of(trimmed);
    return first == npos ? text : text.substr(first, text.find_last_not_of(trimmed) + 1 - first);
}

/// For each "(" the position of its ")", npos if it has none.
std::vector<std::size_t> findPartners(std::wstring_view text)
{
    std::vector<std::size_t> partners;
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'(') {
            partners.resize(text.size(), npos);
            open.push_back(i);
        } else if (text[i] == L')' && !open.empty()) {
            partners[open.back()] = i;
            open.pop_back();
        }
    }
    return partners;
}

bool isDigit(wchar_t c)
{
    return c >= L'0' && c <= L'9';
}

/// Whether \p c is a letter that no number goes on with, unless that is the 0 of a hexadecimal one.
bool endsNumber(wchar_t c)
{
    const wchar_t lower = c | 0x20;
    return lower >= L'a' && lower <= L'z' && lower != L'e';
}

/// The number that \p text begins with, as strtod() reads it. Plain whole numbers, which exponents mostly
/// are, are read here.
double numberIn(std::wstring_view text)
{
    constexpr std::size_t exactDigits = 15;
    const bool isNegative = !text.empty() && text.front() == L'-';
    const std::wstring_view number = text.substr(isNegative ? 1 : 0);
    double value = 0.0;
    std::size_t count = 0;
    for (; count < number.size() && isDigit(number[count]); ++count) {
        value = 10.0 * value + (number[count] - L'0');
    }
    const bool isExact = count > 0 && count <= exactDigits;
    if (isExact && (count == number.size() || (number.front() != L'0' && endsNumber(number[count])))) {
        return isNegative ? -value : value;
    }
    return strtod(std::wstring(text));
}

ZetUnits::List factorsOf(const ZetUnits& units)
{
    const int count = units.numCategories();
    return count > 0 ? ZetUnits::List(&units[0], &units[0] + count) : ZetUnits::List();
}

}  // namespace

ZetUnitsParser::ZetUnitsParser(const ZetString& text) : m_text(withoutEndBlanks(text)), m_partners(findPartners(m_text))
{}

double ZetUnitsParser::parseInto(ZetUnits::List& units)
{
    openLevel(m_text, 1.0, &units, nullptr);
    return tokenize();
}

double ZetUnitsParser::tokenize()
{
    for (;;) {
        const Level& level = m_levels.back();
        if (level.pos != npos) {
            if (level.text[level.pos] == L'(') {
                parseParens();
            } else {
                parseFactor();
            }
            continue;
        }
        const double factor = closeLevel();
        if (m_levels.empty()) {
            return factor;
        }
        m_levels.back().factor *= factor;
    }
}

void ZetUnitsParser::openLevel(std::wstring_view text, double exponent, ZetUnits::List* units,
                               std::unique_ptr<ZetUnits::List> scratch)
{
    m_levels.push_back({text, findNot(text, 0, isWhite), exponent, 1.0, units, std::move(scratch)});
}

/// Ends the top level and gives its scale, with that of multiplying it into the level below.
double ZetUnitsParser::closeLevel()
{
    const Level closed = std::move(m_levels.back());
    m_levels.pop_back();
    if (!closed.scratch) {
        return closed.factor;
    }
    return multiplyInto(*m_levels.back().units, *closed.scratch) * closed.factor;
}

/// Opens a level for the parentheses at the position, and puts the position behind them.
void ZetUnitsParser::parseParens()
{
    Level& level = m_levels.back();
    const std::size_t begin = static_cast<std::size_t>(level.text.data() - m_text.data());
    const std::size_t partner = m_partners[begin + level.pos];
    if (partner == npos) {
        throwError(L"Unmatched open or close parentheses: " + ZetString(std::wstring(level.text)), __LINE__);
    }
    const std::size_t end = partner - begin;
    const std::wstring_view inner = level.text.substr(level.pos + 1, end - level.pos - 1);
    level.pos = end + 1 < level.text.size() ? end + 1 : npos;

    std::unique_ptr<ZetUnits::List> scratch;
    if (!level.units->empty()) {
        scratch = std::make_unique<ZetUnits::List>();
    }
    ZetUnits::List* units = scratch ? scratch.get() : level.units;
    openLevel(withoutEndBlanks(inner), level.exponent, units, std::move(scratch));
}

/// Reads the token at the position, if any, and what separates it from the next.
void ZetUnitsParser::parseFactor()
{
    Level& level = m_levels.back();
    const std::wstring_view text = level.text;
    std::size_t end = findNot(text, level.pos, [](wchar_t c) { return !isSeparator(c); });
    std::size_t next = npos;
    bool slash = false;
    if (end == npos) {
        end = text.size();
    } else {
        next = findNot(text, end + 1, isWhite);
        const std::size_t gap = (next == npos ? text.size() : next) - end;
        // KEPT: behind two or more characters the slash is looked for past the blanks, and seen
        // again when it is the next position itself. Test: ZetUnits.parsing.
        const std::size_t seen = gap != 1 ? text.find_first_not_of(L' ', end) : end;
        slash = seen != npos && text[seen] == L'/';
    }
    if (level.pos < end) {
        level.factor *= parseToken(text.substr(level.pos, end - level.pos), level);
    }
    level.pos = next;
    if (slash) {
        level.exponent = -level.exponent;
    }
}

double ZetUnitsParser::parseToken(std::wstring_view token, const Level& level)
{
    const std::size_t caret = token.find(L'^');
    const std::wstring_view name = token.substr(0, caret);
    double exponent = level.exponent;
    if (caret != npos) {
        const std::wstring_view number = token.substr(caret + 1);
        exponent *= numberIn(number);
        if (exponent == 0.0) {
            throwError(L"Invalid exponent: " + ZetString(std::wstring(number)), __LINE__);
        }
    }

    const ZetUnits::Unit unit = ZetUnits_p::fromString(name);
    if (unit != ZetUnits::Unit::Unitless || name == L"unitless") {
        return multiplyInto(*level.units, ZetUnits::UnitExp{unit, exponent});
    }
    const ZetUnits_p::Fundamental& derived = ZetUnits_p::toFundamentalUnits(name);
    if (derived.expression.empty()) {
        throwError(L"Invalid/unknown units: " + ZetString(std::wstring(name)), __LINE__);
    }
    ZetUnits scratch;
    double scale = scratch.fromString(derived.expression);
    if (exponent != 1.0) {
        scratch.pow(exponent);
    }
    scale *= exponent != 1.0 ? std::pow(derived.factor, exponent) : derived.factor;
    return multiplyInto(*level.units, factorsOf(scratch)) * scale;
}

}  // namespace internal
}  // namespace zet

#include "quantity/ZetUnitsParser"

#include <cmath>

#include <zet/ZetTextMsg>

#include "core/ZetUnitInit"
#include "quantity/ZetUnits_p"

namespace zet {
namespace internal {

namespace {

constexpr std::size_t npos = std::wstring_view::npos;
constexpr std::wstring_view whiteSpace = L"\t ";
constexpr std::wstring_view separators = L"\t */";

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
    for (std::size_t i = text.find_first_of(L"()"); i != npos; i = text.find_first_of(L"()", i + 1)) {
        if (text[i] == L'(') {
            partners.resize(text.size(), npos);
            open.push_back(i);
        } else if (!open.empty()) {
            partners[open.back()] = i;
            open.pop_back();
        }
    }
    return partners;
}

}  // namespace

ZetUnitsParser::ZetUnitsParser(const ZetString& text) : m_text(withoutEndBlanks(text)), m_partners(findPartners(m_text))
{}

double ZetUnitsParser::parseInto(ZetUnits& units)
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

void ZetUnitsParser::openLevel(std::wstring_view text, double exponent, ZetUnits* units,
                               std::unique_ptr<ZetUnits> scratch)
{
    m_levels.push_back({text, text.find_first_not_of(whiteSpace), exponent, 1.0, units, std::move(scratch)});
}

/// Ends the top level and gives its scale, with that of multiplying it into the level below.
double ZetUnitsParser::closeLevel()
{
    const Level closed = std::move(m_levels.back());
    m_levels.pop_back();
    if (!closed.scratch) {
        return closed.factor;
    }
    ZetUnits* units = m_levels.back().units;
    return ZetUnits::multFactor(*units, *closed.scratch, units) * closed.factor;
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

    std::unique_ptr<ZetUnits> scratch;
    if (level.units->numCategories() > 0) {
        scratch = std::make_unique<ZetUnits>();
    }
    ZetUnits* units = scratch ? scratch.get() : level.units;
    openLevel(withoutEndBlanks(inner), level.exponent, units, std::move(scratch));
}

/// Reads the token at the position, if any, and what separates it from the next.
void ZetUnitsParser::parseFactor()
{
    Level& level = m_levels.back();
    const std::wstring_view text = level.text;
    std::size_t end = text.find_first_of(separators, level.pos);
    std::size_t next = npos;
    bool slash = false;
    if (end == npos) {
        end = text.size();
    } else {
        next = text.find_first_not_of(whiteSpace, end + 1);
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
    const ZetString name(std::wstring(token.substr(0, caret)));
    double exponent = level.exponent;
    if (caret != npos) {
        const ZetString number(std::wstring(token.substr(caret + 1)));
        exponent *= strtod(number);
        if (exponent == 0.0) {
            throwError(L"Invalid exponent: " + number, __LINE__);
        }
    }

    ZetUnits scratch;
    double scale = 1.0;
    const ZetUnits::Unit unit = ZetUnits_p::fromString(name);
    if (unit != ZetUnits::Unit::Unitless || name == L"unitless") {
        scratch.insert({unit, exponent});
    } else {
        const ZetUnits_p::Fundamental& derived = ZetUnits_p::toFundamentalUnits(name);
        if (derived.expression.empty()) {
            throwError(L"Invalid/unknown units: " + name, __LINE__);
        }
        scale = scratch.fromString(derived.expression);
        if (exponent != 1.0) {
            scratch.pow(exponent);
        }
        scale *= exponent != 1.0 ? std::pow(derived.factor, exponent) : derived.factor;
    }
    return ZetUnits::multFactor(*level.units, scratch, level.units) * scale;
}

}  // namespace internal
}  // namespace zet

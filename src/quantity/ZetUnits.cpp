#include <zet/ZetUnits>

#include <algorithm>
#include <cmath>
#include <sstream>

#include <zet/ZetEnum>
#include <zet/ZetTextMsg>

#include "core/ZetUnitInit"
#include "quantity/ZetUnitsCache"
#include "quantity/ZetUnitsParser"
#include "quantity/ZetUnits_p"

namespace zet {
namespace {

using internal::ZetUnitsCache;
using UnitExp = ZetUnits::UnitExp;
using List = ZetUnits::List;

/// The index of the entry of \p category, searched from the end; -1 if there is none.
int indexIn(const List& list, ZetUnits::Category category)
{
    int index = static_cast<int>(list.size()) - 1;
    while (index >= 0 && ZetUnits_p::toCategory(list[static_cast<std::size_t>(index)].unit) != category) {
        --index;
    }
    return index;
}

/// Puts \p factor in the place of the one of its category, or adds it in the order of units.
/// Returns  its category; 0 when nothing changed.
int insertInto(List& list, const UnitExp& factor)
{
    const ZetUnits::Category category = ZetUnits_p::toCategory(factor.unit);
    if (factor.exp == 0.0 || category == ZetUnits::Unitless) {
        return ZetUnits::Unitless;
    }
    const int index = indexIn(list, category);
    if (index >= 0) {
        list[static_cast<std::size_t>(index)] = factor;
    } else {
        const auto place = std::find_if(list.begin(), list.end(),
                                        [&factor](const UnitExp& entry) { return entry.unit > factor.unit; });
        list.insert(place, factor);
    }
    return category;
}

void removeFrom(List& list, ZetUnits::Category category)
{
    const int index = indexIn(list, category);
    if (index >= 0) {
        list.erase(list.begin() + index);
    }
}

/// What a number in \p from, a unit with an exponent, is multiplied by to be one in \p to.
double rescale(double factor, const UnitExp& from, ZetUnits::Unit to)
{
    if (from.unit == to) {
        return factor;
    }
    double base = ZetUnits_p::toBaseUnits(from.unit) * ZetUnits_p::fromBaseUnits(to);
    if (std::fabs(from.exp) != 1.0) {
        base = std::pow(base, std::fabs(from.exp));
    }
    if (base == 1.0) {
        return factor;
    }
    return from.exp >= 0.0 ? factor * base : factor / base;
}

}  // namespace

ZetString ZetUnits::className() const
{
    return L"ZetUnits";
}

double ZetUnits::fromString(const ZetString& text)
{
    internal::UnitsFactor result{};
    if (!ZetUnitsCache::instance().parsed(text, result)) {
        m_units = nullptr;
        result.factor = internal::ZetUnitsParser(text).parseInto(*this);
        result.units = m_units;
        ZetUnitsCache::instance().setParsed(text, result);
    }
    m_units = result.units;
    return result.factor;
}

double ZetUnits::fromString(const ZetString& text, ZetTextMsg& message)
{
    try {
        const double scale = fromString(text);
        message.clear();
        return scale;
    } catch (const ZetTextMsg& caught) {
        message.setText(L"Error parsing physical units: " + text + L"\n" + caught.text(), L"ZetUnits", __LINE__,
                        ZetTextMsg::Error);
        return 0.0;
    }
}

bool ZetUnits::isValid(const ZetString& text)
{
    ZetUnits scratch;
    ZetTextMsg message(ZetString(), ZetTextMsg::Error);
    return scratch.fromString(text, message) != 0.0 && message.text().empty();
}

int ZetUnits::insert(const UnitExp& factor)
{
    List list = entries();
    const int category = insertInto(list, factor);
    if (category != Unitless) {
        store(list);
    }
    return category;
}

void ZetUnits::remove(Category category)
{
    if (catIndex(category) >= 0) {
        List list = entries();
        removeFrom(list, category);
        store(list);
    }
}

void ZetUnits::pow(double exponent)
{
    if (!m_units) {
        return;
    }
    ZetUnitsCache& cache = ZetUnitsCache::instance();
    const List* power = cache.power(m_units, exponent);
    if (!power) {
        List list = *m_units;
        for (UnitExp& entry : list) {
            entry.exp *= exponent;
        }
        power = cache.findCached(list);
        cache.setPower(m_units, exponent, power);
    }
    m_units = power;
}

int ZetUnits::catIndex(Category category) const
{
    return indexIn(entries(), category);
}

ZetUnits::operator ZetString() const
{
    if (const ZetString* text = ZetUnitsCache::instance().knownText(m_units)) {
        return *text;
    }
    std::wostringstream scratch;
    return toString(scratch);
}

ZetUnits::Category ZetUnits::category(Unit unit)
{
    return ZetUnits_p::toCategory(unit);
}

const ZetEnum& ZetUnits::enumerator(Category category)
{
    return ZetUnits_p::enumList(category);
}

double ZetUnits::addFactor(const ZetUnits& a, const ZetUnits& b)
{
    if (a.numCategories() != b.numCategories()) {
        return 0.0;
    }
    double factor = 1.0;
    for (const UnitExp& entry : b.entries()) {
        const int index = a.catIndex(category(entry.unit));
        if (index < 0 || a[index].exp != entry.exp) {
            return 0.0;
        }
        factor = rescale(factor, entry, a[index].unit);
        if (factor == 0.0) {
            return factor;
        }
    }
    return factor;
}

double ZetUnits::multFactor(const ZetUnits& a, const ZetUnits& b, ZetUnits* result)
{
    if (!a.m_units || !b.m_units) {
        *result = a.m_units ? a : b;
        return 1.0;
    }
    List product = b.entries();
    double factor = 1.0;
    for (const UnitExp& entry : a.entries()) {
        const int index = b.catIndex(category(entry.unit));
        if (index < 0) {
            insertInto(product, entry);
            continue;
        }
        const UnitExp& other = b[index];
        factor = rescale(factor, other, entry.unit);
        const double sum = other.exp + entry.exp;
        if (sum != 0.0) {
            insertInto(product, {entry.unit, sum});
        } else {
            removeFrom(product, category(entry.unit));
        }
    }
    result->store(product);
    return factor;
}

double ZetUnits::divFactor(const ZetUnits& a, const ZetUnits& b, ZetUnits* result)
{
    List quotient;
    for (const UnitExp& entry : b.entries()) {
        insertInto(quotient, {entry.unit, -entry.exp});
    }
    double factor = 1.0;
    for (const UnitExp& entry : a.entries()) {
        const int index = b.catIndex(category(entry.unit));
        if (index < 0) {
            insertInto(quotient, entry);
            continue;
        }
        const UnitExp& other = b[index];
        factor = rescale(factor, {other.unit, -other.exp}, entry.unit);
        if (entry.exp == other.exp) {
            removeFrom(quotient, category(entry.unit));
        } else {
            insertInto(quotient, {entry.unit, entry.exp - other.exp});
        }
    }
    result->store(quotient);
    return factor;
}

const ZetUnits::List& ZetUnits::entries() const
{
    static const List none;
    return m_units ? *m_units : none;
}

void ZetUnits::store(const List& list)
{
    m_units = list.empty() ? nullptr : ZetUnitsCache::instance().findCached(list);
}

ZetString ZetUnits::toString(std::wostringstream& scratch) const
{
    return ZetUnitsCache::instance().text(m_units, [this, &scratch] {
        displayHalf(scratch, true);
        displayHalf(scratch, false);
        return ZetString(scratch.str());
    });
}

void ZetUnits::displayHalf(std::wostream& out, bool numerator) const
{
    const List& list = entries();
    const auto above = [](const UnitExp& entry) { return entry.exp > 0.0; };
    const auto below = [](const UnitExp& entry) { return entry.exp < 0.0; };
    const bool fraction = !numerator && std::any_of(list.begin(), list.end(), above);
    const bool parentheses = fraction && std::count_if(list.begin(), list.end(), below) > 1;

    const wchar_t* separator = parentheses ? L"/(" : fraction ? L"/" : L"";
    for (const UnitExp& entry : list) {
        if (numerator ? !above(entry) : !below(entry)) {
            continue;
        }
        out << separator << ZetUnits_p::toString(entry.unit);
        separator = L"*";
        const double exponent = fraction ? -entry.exp : entry.exp;
        if (exponent != 1.0) {
            out << L"^" << exponent;
        }
    }
    if (parentheses) {
        out << L")";
    }
}

std::wostream& operator<<(std::wostream& out, const ZetUnits& units)
{
    if (const ZetString* text = ZetUnitsCache::instance().knownText(units.m_units)) {
        return out << *text;
    }
    std::wostringstream scratch;
    scratch.copyfmt(out);
    // The stream's width is for the whole text, not for its first piece.
    scratch.width(0);
    return out << units.toString(scratch);
}

std::wistream& operator>>(std::wistream& in, ZetUnits& units)
{
    ZetString line;
    getline(in, line);
    units.fromString(line);
    return in;
}

}  // namespace zet

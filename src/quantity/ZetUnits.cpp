#include <zet/ZetUnits>

#include <algorithm>
#include <sstream>

#include <zet/ZetEnum>
#include <zet/ZetTextMsg>

#include "core/ZetUnitInit"
#include "quantity/ZetUnitLists"
#include "quantity/ZetUnitsCache"
#include "quantity/ZetUnitsParser"
#include "quantity/ZetUnits_p"

namespace zet {

using internal::ZetUnitsCache;

ZetString ZetUnits::className() const
{
    return L"ZetUnits";
}

double ZetUnits::fromString(const ZetString& text)
{
    internal::UnitsFactor result{};
    if (!ZetUnitsCache::instance().parsed(text, result)) {
        List list;
        try {
            result.factor = internal::ZetUnitsParser(text).parseInto(list);
        } catch (...) {
            store(list);
            throw;
        }
        store(list);
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
    const int category = internal::insertInto(list, factor);
    if (category != Unitless) {
        store(list);
    }
    return category;
}

void ZetUnits::remove(Category category)
{
    if (catIndex(category) >= 0) {
        List list = entries();
        internal::removeFrom(list, category);
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
    return internal::indexIn(entries(), category);
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
        factor = internal::rescale(factor, entry, a[index].unit);
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
    List product = a.entries();
    const double factor = internal::multiplyInto(product, b.entries());
    result->store(product);
    return factor;
}

double ZetUnits::divFactor(const ZetUnits& a, const ZetUnits& b, ZetUnits* result)
{
    List quotient;
    for (const UnitExp& entry : b.entries()) {
        internal::insertInto(quotient, {entry.unit, -entry.exp});
    }
    double factor = 1.0;
    for (const UnitExp& entry : a.entries()) {
        const int index = b.catIndex(category(entry.unit));
        if (index < 0) {
            internal::insertInto(quotient, entry);
            continue;
        }
        const UnitExp& other = b[index];
        factor = internal::rescale(factor, {other.unit, -other.exp}, entry.unit);
        if (entry.exp == other.exp) {
            internal::removeFrom(quotient, category(entry.unit));
        } else {
            internal::insertInto(quotient, {entry.unit, entry.exp - other.exp});
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

#include "quantity/ZetUnits_p"

#include <array>

#include <zet/ZetEnum>

#include "core/ZetUnitInit"

namespace zet {
namespace {

using Unit = ZetUnits::Unit;
using Category = ZetUnits::Category;

struct UnitRow
{
    Unit unit;
    Category category;
    const wchar_t* symbol;
    double toBase;
    double fromBase;
};

// clang-format off
constexpr UnitRow unitRows[] = {
    // unit              category               symbol       to base                from base
    {Unit::Unitless,     ZetUnits::Unitless,    L"unitless", 1.0,                   1.0},
    {Unit::Meter,        ZetUnits::Length,      L"m",        1.0,                   1.0},
    {Unit::Centimeter,   ZetUnits::Length,      L"cm",       0.01,                  100.0},
    {Unit::Millimeter,   ZetUnits::Length,      L"mm",       0.001,                 1000.0},
    {Unit::Micrometer,   ZetUnits::Length,      L"um",       1e-6,                  1e6},
    {Unit::Nanometer,    ZetUnits::Length,      L"nm",       1e-9,                  1e9},
    {Unit::Kilometer,    ZetUnits::Length,      L"km",       1000.0,                0.001},
    {Unit::Inch,         ZetUnits::Length,      L"in",       0.0254,                39.37007874015748},
    {Unit::Foot,         ZetUnits::Length,      L"ft",       0.3048,                3.280839895013123},
    {Unit::Mile,         ZetUnits::Length,      L"mi",       1609.344,              0.0006213711922373339},
    {Unit::NauticalMile, ZetUnits::Length,      L"nmi",      1852.0,                0.0005399568034557236},
    {Unit::Kilogram,     ZetUnits::Mass,        L"kg",       1.0,                   1.0},
    {Unit::Gram,         ZetUnits::Mass,        L"g",        0.001,                 1000.0},
    {Unit::Milligram,    ZetUnits::Mass,        L"mg",       1e-6,                  1e6},
    {Unit::Microgram,    ZetUnits::Mass,        L"ug",       1e-9,                  1e9},
    {Unit::AtomicMass,   ZetUnits::Mass,        L"amu",      1.66054e-27,           6.022137376997844e26},
    {Unit::Second,       ZetUnits::Time,        L"s",        1.0,                   1.0},
    {Unit::Millisecond,  ZetUnits::Time,        L"ms",       0.001,                 1000.0},
    {Unit::Microsecond,  ZetUnits::Time,        L"us",       1e-6,                  1e6},
    {Unit::Nanosecond,   ZetUnits::Time,        L"ns",       1e-9,                  1e9},
    {Unit::Minute,       ZetUnits::Time,        L"min",      60.0,                  0.016666666666666666},
    {Unit::Hour,         ZetUnits::Time,        L"hr",       3600.0,                0.0002777777777777778},
    {Unit::Radian,       ZetUnits::Angle,       L"rad",      1.0,                   1.0},
    {Unit::Milliradian,  ZetUnits::Angle,       L"mrad",     0.001,                 1000.0},
    {Unit::Microradian,  ZetUnits::Angle,       L"urad",     1e-6,                  1e6},
    {Unit::Nanoradian,   ZetUnits::Angle,       L"nrad",     1e-9,                  1e9},
    {Unit::Degree,       ZetUnits::Angle,       L"deg",      0.017453292519943295,  57.29577951308232},
    {Unit::ArcMinute,    ZetUnits::Angle,       L"arcmin",   0.0002908882086657216, 3437.7467707849396},
    {Unit::ArcSecond,    ZetUnits::Angle,       L"arcsec",   4.84813681109536e-6,   206264.80624709636},
    {Unit::Kelvin,       ZetUnits::Temperature, L"K",        1.0,                   1.0},
    {Unit::Ampere,       ZetUnits::Current,     L"A",        1.0,                   1.0},
    {Unit::Count,        ZetUnits::Count,       L"cnt",      1.0,                   1.0},
    {Unit::Cycle,        ZetUnits::Cycle,       L"cyc",      1.0,                   1.0},
    {Unit::Electron,     ZetUnits::Electron,    L"el",       1.0,                   1.0},
    {Unit::Photon,       ZetUnits::Photon,      L"ph",       1.0,                   1.0},
};

struct DerivedRow
{
    const wchar_t* name;
    double factor;
    const wchar_t* expression;
};

// Names are case-sensitive: "KHz" has a capital K, and the pressure "inHq" ends in a q.
constexpr DerivedRow derivedRows[] = {
    // name       factor          expression
    {L"sr",       1.0,            L"rad^2"},
    {L"J",        1.0,            L"kg m^2 / s^2"},
    {L"mJ",       0.001,          L"kg m^2 / s^2"},
    {L"uJ",       1e-6,           L"kg m^2 / s^2"},
    {L"nJ",       1e-9,           L"kg m^2 / s^2"},
    {L"pJ",       1e-12,          L"kg m^2 / s^2"},
    {L"erg",      1e-7,           L"kg m^2 / s^2"},
    {L"W",        1.0,            L"kg m^2 / s^3"},
    {L"mW",       0.001,          L"kg m^2 / s^3"},
    {L"uW",       1e-6,           L"kg m^2 / s^3"},
    {L"nW",       1e-9,           L"kg m^2 / s^3"},
    {L"pW",       1e-12,          L"kg m^2 / s^3"},
    {L"Hz",       1.0,            L"s^-1"},
    {L"KHz",      1000.0,         L"s^-1"},
    {L"MHz",      1e6,            L"s^-1"},
    {L"GHz",      1e9,            L"s^-1"},
    {L"wavenum",  29979245800.0,  L"s^-1"},
    {L"N",        1.0,            L"kg m / s^2"},
    {L"dyne",     1e-5,           L"kg m / s^2"},
    {L"lb",       4.44822161525,  L"kg m / s^2"},
    {L"oz",       0.278013850953, L"kg m / s^2"},
    {L"Pa",       1.0,            L"kg / m s^2"},
    {L"stdAtm",   101325.0,       L"kg / m s^2"},
    {L"torr",     133.3224,       L"kg / m s^2"},
    {L"inHq",     3386.3883,      L"kg / m s^2"},
    {L"bar",      100000.0,       L"kg / m s^2"},
    {L"mbar",     100.0,          L"kg / m s^2"},
    {L"C",        1.0,            L"A s"},
};
// clang-format on

constexpr bool inOrderOfUnits()
{
    for (std::size_t i = 0; i < std::size(unitRows); ++i) {
        if (static_cast<std::size_t>(unitRows[i].unit) != i) {
            return false;
        }
    }
    return true;
}
static_assert(std::size(unitRows) == 35 && inOrderOfUnits(), "one row per unit");

/// The row of \p unit, or null.
const UnitRow* rowOf(Unit unit)
{
    const auto index = static_cast<unsigned int>(unit);
    return index < std::size(unitRows) ? &unitRows[index] : nullptr;
}

ZetEnum makeEnumeration(Category category)
{
    ZetEnum enumeration;
    for (const UnitRow& row : unitRows) {
        if (category == ZetUnits::Unitless || category == row.category) {
            enumeration.insert(ZetEnum::Item({static_cast<int>(row.unit), row.symbol}));
        }
    }
    return enumeration;
}

constexpr int enumeratedCategories = ZetUnits::Current + 1;

std::array<ZetEnum, enumeratedCategories> makeEnumerations()
{
    std::array<ZetEnum, enumeratedCategories> enumerations;
    for (int category = 0; category < enumeratedCategories; ++category) {
        enumerations[static_cast<std::size_t>(category)] = makeEnumeration(static_cast<Category>(category));
    }
    return enumerations;
}

}  // namespace

const std::map<Unit, ZetUnits_p::UnitInfo>& ZetUnits_p::unitToInfoMap()
{
    static const auto table = [] {
        std::map<Unit, UnitInfo> made;
        for (const UnitRow& row : unitRows) {
            made[row.unit] = {row.category, row.toBase, row.fromBase, row.symbol};
        }
        return made;
    }();
    return table;
}

const std::map<ZetString, ZetUnits_p::Fundamental, internal::ZetNameOrder>& ZetUnits_p::cmplxStrToFundamentalMap()
{
    static const auto table = [] {
        std::map<ZetString, Fundamental, internal::ZetNameOrder> made;
        for (const DerivedRow& row : derivedRows) {
            made[row.name] = {row.factor, row.expression};
        }
        return made;
    }();
    return table;
}

const std::map<ZetString, Unit, internal::ZetNameOrder>& ZetUnits_p::strToUnitMap()
{
    static const auto table = [] {
        std::map<ZetString, Unit, internal::ZetNameOrder> made;
        for (const UnitRow& row : unitRows) {
            made[row.symbol] = row.unit;
        }
        return made;
    }();
    return table;
}

const ZetString& ZetUnits_p::toString(Unit unit)
{
    static const ZetString noSymbol;
    const auto found = unitToInfoMap().find(unit);
    return found != unitToInfoMap().end() ? found->second.symbol : noSymbol;
}

double ZetUnits_p::toBaseUnits(Unit unit)
{
    const UnitRow* const row = rowOf(unit);
    return row ? row->toBase : 1.0;
}

double ZetUnits_p::fromBaseUnits(Unit unit)
{
    const UnitRow* const row = rowOf(unit);
    return row ? row->fromBase : 1.0;
}

Category ZetUnits_p::toCategory(Unit unit)
{
    const UnitRow* const row = rowOf(unit);
    return row ? row->category : ZetUnits::Unitless;
}

Unit ZetUnits_p::fromString(std::wstring_view text)
{
    const auto found = strToUnitMap().find(text);
    return found != strToUnitMap().end() ? found->second : Unit::Unitless;
}

const ZetUnits_p::Fundamental& ZetUnits_p::toFundamentalUnits(std::wstring_view text)
{
    static const Fundamental unknown = {};
    const auto found = cmplxStrToFundamentalMap().find(text);
    return found != cmplxStrToFundamentalMap().end() ? found->second : unknown;
}

const ZetEnum& ZetUnits_p::enumList(Category category)
{
    static const auto enumerations = makeEnumerations();
    static const ZetEnum none;
    const auto slot = static_cast<unsigned int>(category);
    return slot < enumerations.size() ? enumerations[slot] : none;
}

}  // namespace zet

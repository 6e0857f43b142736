#include <zet/ZetUnits>

#include <cmath>
#include <limits>
#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetEnum>
#include <zet/ZetTextMsg>

#include "quantity/ZetUnitsOf"
#include "quantity/ZetUnits_p"
#include "support/ZetCollectingHandler"
#include "support/ZetPrint"
#include "support/ZetScopedLocale"

namespace zet {
namespace {

using test::thrownBy;
using test::unitsOf;
using test::ZetScopedLocale;
using Unit = ZetUnits::Unit;

ZetString textOf(const ZetUnits& units)
{
    return units;
}

// clang-format off
struct UnitRow
{
    int unit;
    const wchar_t* symbol;
    int category;
    double toBase;
    double fromBase;
};
const UnitRow kUnits[] = {
    {0,  L"unitless",0,  1.0,                    1.0},
    {1,  L"m",       1,  1.0,                    1.0},
    {2,  L"cm",      1,  0.01,                   100.0},
    {3,  L"mm",      1,  0.001,                  1000.0},
    {4,  L"um",      1,  1e-6,                   1e6},
    {5,  L"nm",      1,  1e-9,                   1e9},
    {6,  L"km",      1,  1000.0,                 0.001},
    {7,  L"in",      1,  0.0254,                 39.37007874015748},
    {8,  L"ft",      1,  0.3048,                 3.280839895013123},
    {9,  L"mi",      1,  1609.344,               0.0006213711922373339},
    {10, L"nmi",     1,  1852.0,                 0.0005399568034557236},
    {11, L"kg",      2,  1.0,                    1.0},
    {12, L"g",       2,  0.001,                  1000.0},
    {13, L"mg",      2,  1e-6,                   1e6},
    {14, L"ug",      2,  1e-9,                   1e9},
    {15, L"amu",     2,  1.66054e-27,            6.022137376997844e26},
    {16, L"s",       3,  1.0,                    1.0},
    {17, L"ms",      3,  0.001,                  1000.0},
    {18, L"us",      3,  1e-6,                   1e6},
    {19, L"ns",      3,  1e-9,                   1e9},
    {20, L"min",     3,  60.0,                   0.016666666666666666},
    {21, L"hr",      3,  3600.0,                 0.0002777777777777778},
    {22, L"rad",     4,  1.0,                    1.0},
    {23, L"mrad",    4,  0.001,                  1000.0},
    {24, L"urad",    4,  1e-6,                   1e6},
    {25, L"nrad",    4,  1e-9,                   1e9},
    {26, L"deg",     4,  0.017453292519943295,   57.29577951308232},
    {27, L"arcmin",  4,  0.0002908882086657216,  3437.7467707849396},
    {28, L"arcsec",  4,  4.84813681109536e-6,    206264.80624709636},
    {29, L"K",       5,  1.0,                    1.0},
    {30, L"A",       6,  1.0,                    1.0},
    {31, L"cnt",     7,  1.0,                    1.0},
    {32, L"cyc",     8,  1.0,                    1.0},
    {33, L"el",      9,  1.0,                    1.0},
    {34, L"ph",      10, 1.0,                    1.0},
};

struct DerivedRow
{
    const wchar_t* name;
    double factor;
    const wchar_t* expression;
    const wchar_t* canonical;
};
const DerivedRow kDerived[] = {
    {L"sr",      1.0,            L"rad^2",          L"rad^2"},
    {L"J",       1.0,            L"kg m^2 / s^2",   L"m^2*kg/s^2"},
    {L"mJ",      0.001,          L"kg m^2 / s^2",   L"m^2*kg/s^2"},
    {L"uJ",      1e-6,           L"kg m^2 / s^2",   L"m^2*kg/s^2"},
    {L"nJ",      1e-9,           L"kg m^2 / s^2",   L"m^2*kg/s^2"},
    {L"pJ",      1e-12,          L"kg m^2 / s^2",   L"m^2*kg/s^2"},
    {L"erg",     1e-7,           L"kg m^2 / s^2",   L"m^2*kg/s^2"},
    {L"W",       1.0,            L"kg m^2 / s^3",   L"m^2*kg/s^3"},
    {L"mW",      0.001,          L"kg m^2 / s^3",   L"m^2*kg/s^3"},
    {L"uW",      1e-6,           L"kg m^2 / s^3",   L"m^2*kg/s^3"},
    {L"nW",      1e-9,           L"kg m^2 / s^3",   L"m^2*kg/s^3"},
    {L"pW",      1e-12,          L"kg m^2 / s^3",   L"m^2*kg/s^3"},
    {L"Hz",      1.0,            L"s^-1",           L"s^-1"},
    {L"KHz",     1000.0,         L"s^-1",           L"s^-1"},
    {L"MHz",     1e6,            L"s^-1",           L"s^-1"},
    {L"GHz",     1e9,            L"s^-1",           L"s^-1"},
    {L"wavenum", 29979245800.0,  L"s^-1",           L"s^-1"},
    {L"N",       1.0,            L"kg m / s^2",     L"m*kg/s^2"},
    {L"dyne",    1e-5,           L"kg m / s^2",     L"m*kg/s^2"},
    {L"lb",      4.44822161525,  L"kg m / s^2",     L"m*kg/s^2"},
    {L"oz",      0.278013850953, L"kg m / s^2",     L"m*kg/s^2"},
    {L"Pa",      1.0,            L"kg / m s^2",     L"kg/(m*s^2)"},
    {L"stdAtm",  101325.0,       L"kg / m s^2",     L"kg/(m*s^2)"},
    {L"torr",    133.3224,       L"kg / m s^2",     L"kg/(m*s^2)"},
    {L"inHq",    3386.3883,      L"kg / m s^2",     L"kg/(m*s^2)"},
    {L"bar",     100000.0,       L"kg / m s^2",     L"kg/(m*s^2)"},
    {L"mbar",    100.0,          L"kg / m s^2",     L"kg/(m*s^2)"},
    {L"C",       1.0,            L"A s",            L"s*A"},
};
// clang-format on

TEST(ZetUnits, unitTable)
{
    EXPECT_EQ(std::size(kUnits), 35u);
    EXPECT_EQ(ZetUnits_p::unitToInfoMap().size(), 35u);
    EXPECT_EQ(ZetUnits_p::strToUnitMap().size(), 35u);
    for (const UnitRow& row : kUnits) {
        SCOPED_TRACE(toMultibyte(row.symbol));
        const Unit unit = static_cast<Unit>(row.unit);
        const ZetUnits_p::UnitInfo& info = ZetUnits_p::unitToInfoMap().at(unit);
        EXPECT_EQ(info.symbol, row.symbol);
        EXPECT_EQ(info.category, row.category);
        EXPECT_EQ(info.toBase, row.toBase);
        EXPECT_EQ(info.fromBase, row.fromBase);
        EXPECT_EQ(ZetUnits_p::strToUnitMap().at(row.symbol), unit);
        EXPECT_EQ(ZetUnits_p::toString(unit), row.symbol);
        EXPECT_EQ(ZetUnits_p::fromString(row.symbol), unit);
        EXPECT_EQ(ZetUnits_p::toCategory(unit), row.category);
        EXPECT_EQ(ZetUnits::category(unit), row.category);
        EXPECT_EQ(ZetUnits_p::toBaseUnits(unit), row.toBase);
        EXPECT_EQ(ZetUnits_p::fromBaseUnits(unit), row.fromBase);
        EXPECT_EQ(textOf(unitsOf(row.symbol)), row.unit == 0 ? L"" : row.symbol);
    }
}

TEST(ZetUnits, namedUnitsHaveTheirNumbers)
{
    const std::pair<Unit, const wchar_t*> rows[] = {
        {Unit::Meter, L"m"},          {Unit::Kilometer, L"km"}, {Unit::NauticalMile, L"nmi"}, {Unit::Kilogram, L"kg"},
        {Unit::AtomicMass, L"amu"},   {Unit::Second, L"s"},     {Unit::Hour, L"hr"},          {Unit::Radian, L"rad"},
        {Unit::ArcSecond, L"arcsec"}, {Unit::Kelvin, L"K"},     {Unit::Ampere, L"A"},         {Unit::Count, L"cnt"},
        {Unit::Cycle, L"cyc"},        {Unit::Electron, L"el"},  {Unit::Photon, L"ph"},
    };
    for (const auto& [unit, symbol] : rows) {
        EXPECT_EQ(ZetUnits_p::toString(unit), symbol);
    }
    const std::pair<ZetUnits::Category, int> categories[] = {
        {ZetUnits::Unitless, 0}, {ZetUnits::Length, 1},      {ZetUnits::Mass, 2},    {ZetUnits::Time, 3},
        {ZetUnits::Angle, 4},    {ZetUnits::Temperature, 5}, {ZetUnits::Current, 6}, {ZetUnits::Count, 7},
        {ZetUnits::Cycle, 8},    {ZetUnits::Electron, 9},    {ZetUnits::Photon, 10},
    };
    for (const auto& [category, number] : categories) {
        EXPECT_EQ(static_cast<int>(category), number);
    }
}

TEST(ZetUnits, unknownUnits)
{
    for (const int number : {-1, 35, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        const Unit unit = static_cast<Unit>(number);
        EXPECT_EQ(ZetUnits_p::toString(unit), L"");
        EXPECT_EQ(ZetUnits_p::toCategory(unit), 0);
        EXPECT_EQ(ZetUnits_p::toBaseUnits(unit), 1.0);
        EXPECT_EQ(ZetUnits_p::fromBaseUnits(unit), 1.0);
        ZetUnits units;
        EXPECT_EQ(units.insert({unit, 2.0}), 0);
        EXPECT_EQ(units, ZetUnits());
    }
    EXPECT_EQ(ZetUnits_p::fromString(L"furlong"), Unit::Unitless);
    EXPECT_EQ(ZetUnits_p::fromString(L""), Unit::Unitless);
    EXPECT_EQ(ZetUnits_p::toFundamentalUnits(L"furlong").expression, L"");
}

TEST(ZetUnits, derivedNames)
{
    EXPECT_EQ(ZetUnits_p::cmplxStrToFundamentalMap().size(), std::size(kDerived));
    for (const DerivedRow& row : kDerived) {
        SCOPED_TRACE(toMultibyte(row.name));
        EXPECT_EQ(ZetUnits_p::cmplxStrToFundamentalMap().at(row.name).factor, row.factor);
        EXPECT_EQ(ZetUnits_p::cmplxStrToFundamentalMap().at(row.name).expression, row.expression);
        EXPECT_EQ(ZetUnits_p::toFundamentalUnits(row.name).factor, row.factor);
        EXPECT_EQ(ZetUnits_p::toFundamentalUnits(row.name).expression, row.expression);
        ZetUnits units;
        EXPECT_EQ(units.fromString(row.name), row.factor);
        EXPECT_EQ(textOf(units), row.canonical);
        EXPECT_EQ(units, unitsOf(row.expression));
        // raised and turned
        EXPECT_DOUBLE_EQ(units.fromString(ZetString(row.name) + L"^2"), row.factor * row.factor);
        EXPECT_DOUBLE_EQ(units.fromString(ZetString(L"/") + row.name), 1.0 / row.factor);
    }
}

TEST(ZetUnits, parsing)
{
    const ZetScopedLocale plainNumbers("C");
    struct Row
    {
        const wchar_t* text;
        const wchar_t* canonical;
        double scale;
    };
    const Row rows[] = {
        // nothing
        {L"", L"", 1.0},
        {L" ", L"", 1.0},
        {L" \t ", L"", 1.0},
        {L"unitless", L"", 1.0},
        {L"unitless^3 m", L"m", 1.0},
        {L"()", L"", 1.0},
        {L"m ( ) s", L"m*s", 1.0},
        {L"*", L"", 1.0},
        {L"/", L"", 1.0},
        // products, printed in the order of units
        {L"m", L"m", 1.0},
        {L"kg m^2 / s^2", L"m^2*kg/s^2", 1.0},
        {L"kg / m s^2", L"kg/(m*s^2)", 1.0},
        {L"m/s", L"m/s", 1.0},
        {L"s m", L"m*s", 1.0},
        {L"m*s", L"m*s", 1.0},
        {L"m\ts", L"m*s", 1.0},
        {L"m * s", L"m*s", 1.0},
        {L"*m*", L"m", 1.0},
        {L"m/", L"m", 1.0},
        {L"ph el cyc cnt A K deg s kg m", L"m*kg*s*deg*K*A*cnt*cyc*el*ph", 1.0},
        // no numerator: signed exponents and no slash
        {L"Hz", L"s^-1", 1.0},
        {L"/s", L"s^-1", 1.0},
        {L"/ m s", L"m^-1*s^-1", 1.0},
        // derived names come in as fundamental units
        {L"sr", L"rad^2", 1.0},
        {L"N m", L"m^2*kg/s^2", 1.0},
        {L"mJ", L"m^2*kg/s^2", 0.001},
        {L"mJ^2", L"m^4*kg^2/s^4", 1e-6},
        {L"m / mJ", L"s^2/(m*kg)", 1000.0},
        {L"W / m^2 sr", L"kg/(s^3*rad^2)", 1.0},
        {L"mJ KHz", L"m^2*kg/s^3", 1.0},
        // a repeated category folds into its first unit
        {L"km cm", L"km^2", 1e-5},
        {L"cm km", L"cm^2", 1e5},
        {L"deg rad", L"deg^2", 57.29577951308232},
        {L"m / km", L"", 0.001},
        {L"m m^-1", L"", 1.0},
        {L"m^2 m^-1", L"m", 1.0},
        {L"km^2 / m", L"km", 1000.0},
        {L"hr m / s", L"m", 3600.0},
        // a slash turns everything behind it, and the next one turns again
        {L"m/s/kg", L"m*kg/s", 1.0},
        {L"m/s kg", L"m/(kg*s)", 1.0},
        {L"m//s", L"m*s", 1.0},
        {L"m / / s", L"m*s", 1.0},
        {L"s^-1 / s", L"s^-2", 1.0},
        // a level of parentheses has a slash of its own
        {L"m/(s kg)", L"m/(kg*s)", 1.0},
        {L"m/(s/kg)", L"m*kg/s", 1.0},
        {L"(m/s) kg", L"m*kg/s", 1.0},
        {L"((m)/(s))", L"m/s", 1.0},
        {L"(m)(s)", L"m*s", 1.0},
        {L"(m)s", L"m*s", 1.0},
        {L"m (km (cm))", L"m^3", 10.0},
        {L"km (m (cm))", L"km^3", 1e-8},
        {L"kg ( m / s )", L"m*kg/s", 1.0},
        {L"kg (\tm\t)", L"m*kg", 1.0},
        // exponents
        {L"m^1.5", L"m^1.5", 1.0},
        {L"m^.5", L"m^0.5", 1.0},
        {L"m^-1", L"m^-1", 1.0},
        {L"kg^-1 m", L"m/kg", 1.0},
        {L"m^+2", L"m^2", 1.0},
        {L"m^2x", L"m^2", 1.0},
        {L"m^2^3", L"m^2", 1.0},
        {L"m^0x2", L"m^2", 1.0},
        {L"m^1e400", L"m^inf", 1.0},
        {L"m^-inf", L"m^-inf", 1.0},
        // KEPT: two or more blanks before a slash turn twice, one does not
        {L"m / s", L"m/s", 1.0},
        {L"m  / s", L"m*s", 1.0},
        {L"m   / s", L"m*s", 1.0},
        {L"m  /s", L"m*s", 1.0},
        {L"kg (m) / s", L"m*kg/s", 1.0},
        {L"kg (m)  / s", L"m*kg*s", 1.0},
        {L"m  s", L"m*s", 1.0},
        {L"m/  s", L"m/s", 1.0},
        // the look-ahead does not pass a tab
        {L"m\t\t/ s", L"m/s", 1.0},
        {L"m\t / s", L"m/s", 1.0},
        {L"m \t/ s", L"m/s", 1.0},
        // a blank at either end trims both, whatever stands there
        {L"  m  ", L"m", 1.0},
        {L" m\r\n", L"m", 1.0},
        {L"\r m ", L"m", 1.0},
        {L"\tm\t", L"m", 1.0},
        {L"(\tm \r )", L"m", 1.0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(toMultibyte(row.text));
        // the second time from what is remembered
        for (int round = 0; round < 2; ++round) {
            ZetUnits units = unitsOf(L"K");
            EXPECT_DOUBLE_EQ(units.fromString(row.text), row.scale);
            EXPECT_EQ(textOf(units), row.canonical);
        }
    }
}

TEST(ZetUnits, badTexts)
{
    const ZetScopedLocale plainNumbers("C");
    struct Row
    {
        const wchar_t* text;
        const wchar_t* message;
        const wchar_t* built;
    };
    const Row rows[] = {
        // numbers and unknown names
        {L"1/s", L"Invalid/unknown units: 1", L""},
        {L"s 1", L"Invalid/unknown units: 1", L"s"},
        {L"KG", L"Invalid/unknown units: KG", L""},
        {L"KHZ", L"Invalid/unknown units: KHZ", L""},
        {L"kHz", L"Invalid/unknown units: kHz", L""},
        {L"inHg", L"Invalid/unknown units: inHg", L""},
        {L"^2", L"Invalid/unknown units: ", L""},
        {L"m(s)", L"Invalid/unknown units: m(s)", L""},
        {L"m s xyz kg", L"Invalid/unknown units: xyz", L"m*s"},
        {L"(m s xyz)", L"Invalid/unknown units: xyz", L"m*s"},
        {L"kg (m xyz)", L"Invalid/unknown units: xyz", L"kg"},
        {L"((m) xyz)", L"Invalid/unknown units: xyz", L"m"},
        {L"\u00b5m", L"Invalid/unknown units: \u00b5m", L""},
        // only a blank at an end trims
        {L"m\r", L"Invalid/unknown units: m\r", L""},
        {L"m\n", L"Invalid/unknown units: m\n", L""},
        {L"(m\r)", L"Invalid/unknown units: m\r", L""},
        {L" \n  ", L"Invalid/unknown units: \n", L""},
        // exponents
        {L"m^abc", L"Invalid exponent: abc", L""},
        {L"m^0", L"Invalid exponent: 0", L""},
        {L"m^-0.0", L"Invalid exponent: -0.0", L""},
        {L"s m^", L"Invalid exponent: ", L"s"},
        {L"m^ 2", L"Invalid exponent: ", L""},
        {L"m^(1/2)", L"Invalid exponent: (1", L""},
        {L"xyz^0", L"Invalid exponent: 0", L""},
        {L"unitless^0", L"Invalid exponent: 0", L""},
        {L"mJ^x", L"Invalid exponent: x", L""},
        {L"m^1e-400", L"Invalid exponent: 1e-400", L""},
        // parentheses
        {L"(", L"Unmatched open or close parentheses: (", L""},
        {L"(m", L"Unmatched open or close parentheses: (m", L""},
        {L" s (m ", L"Unmatched open or close parentheses: s (m", L"s"},
        {L"s (m (kg)", L"Unmatched open or close parentheses: s (m (kg)", L"s"},
        {L"m)", L"Invalid/unknown units: m)", L""},
        {L"(m) )", L"Invalid/unknown units: )", L"m"},
        {L"(m))", L"Invalid/unknown units: )", L"m"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(toMultibyte(ZetString(row.message).substr(0, 10)));
        // a text that failed is not remembered: it fails, and builds, again
        for (int round = 0; round < 2; ++round) {
            ZetUnits units = unitsOf(L"K");
            const ZetTextMsg thrown = thrownBy([&] { units.fromString(row.text); });
            EXPECT_EQ(thrown.text(), row.message);
            EXPECT_EQ(thrown.file(), L"ZetUnits");
            EXPECT_EQ(thrown.kind(), ZetTextMsg::Error);
            EXPECT_EQ(textOf(units), row.built);
        }
        ZetUnits units;
        ZetTextMsg message(L"before", ZetTextMsg::Info);
        EXPECT_EQ(units.fromString(row.text, message), 0.0);
        EXPECT_EQ(message.text(), ZetString(L"Error parsing physical units: ") + row.text + L"\n" + row.message);
        EXPECT_EQ(message.file(), L"ZetUnits");
        EXPECT_EQ(message.kind(), ZetTextMsg::Error);
        EXPECT_EQ(textOf(units), row.built);
        EXPECT_FALSE(ZetUnits::isValid(row.text));
    }
}

TEST(ZetUnits, messageIsClearedOnSuccess)
{
    ZetUnits units;
    ZetTextMsg message(L"before", L"file", 7, ZetTextMsg::Info);
    EXPECT_EQ(units.fromString(L"KHz", message), 1000.0);
    EXPECT_EQ(message.text(), L"");
}

TEST(ZetUnits, validTexts)
{
    for (const wchar_t* text : {L"", L"m", L"unitless", L"kg m^2 / s^2", L"mJ", L"m^-2"}) {
        EXPECT_TRUE(ZetUnits::isValid(text));
    }
    // the scale of 1e-360 is 0, which counts as a failure
    EXPECT_FALSE(ZetUnits::isValid(L"pJ^30"));
    ZetUnits units;
    EXPECT_EQ(units.fromString(L"pJ^30"), 0.0);
    EXPECT_EQ(textOf(units), L"m^60*kg^30/s^60");
}

TEST(ZetUnits, equalUnitsAreOneList)
{
    const ZetUnits joule = unitsOf(L"J");
    for (const wchar_t* text : {L"N m", L"kg m^2 / s^2", L"m^2*kg/s^2", L"mJ", L"s^-2 kg m m", L"W s"}) {
        const ZetUnits units = unitsOf(text);
        EXPECT_EQ(units, joule) << toMultibyte(text);
        EXPECT_EQ(&units[0], &joule[0]);
    }
    EXPECT_NE(unitsOf(L"N"), joule);
    EXPECT_NE(ZetUnits(), joule);
    EXPECT_EQ(ZetUnits(), ZetUnits());
}

TEST(ZetUnits, exponentsMatchExactly)
{
    const ZetScopedLocale plainNumbers("C");
    ZetUnits tenth = unitsOf(L"m^0.1");
    tenth.pow(3.0);
    // 0.1 * 3 is not the double nearest to 0.3
    EXPECT_NE(tenth, unitsOf(L"m^0.3"));
    EXPECT_EQ(ZetUnits::addFactor(tenth, unitsOf(L"m^0.3")), 0.0);
}

TEST(ZetUnits, isAnObject)
{
    EXPECT_EQ(ZetUnits().className(), L"ZetUnits");
    EXPECT_FALSE(ZetUnits().isMetaObject());
    EXPECT_EQ(sizeof(ZetUnits), 2 * sizeof(void*));
}

TEST(ZetUnits, insertReplaces)
{
    ZetUnits units;
    EXPECT_EQ(units.numCategories(), 0);
    EXPECT_EQ(units.insert({Unit::Second, 1.0}), ZetUnits::Time);
    EXPECT_EQ(units.insert({Unit::Second, 2.0}), ZetUnits::Time);
    EXPECT_EQ(textOf(units), L"s^2");
    // another unit of the category takes the place, and nothing is rescaled
    EXPECT_EQ(units.insert({Unit::Hour, -1.0}), ZetUnits::Time);
    EXPECT_EQ(textOf(units), L"hr^-1");
    EXPECT_EQ(units.insert({Unit::Photon, 1.0}), ZetUnits::Photon);
    EXPECT_EQ(units.insert({Unit::Meter, 3.0}), ZetUnits::Length);
    EXPECT_EQ(textOf(units), L"m^3*ph/hr");
    EXPECT_EQ(units.numCategories(), 3);
    EXPECT_EQ(units[0].unit, Unit::Meter);
    EXPECT_EQ(units[0].exp, 3.0);
    EXPECT_EQ(units[2].unit, Unit::Photon);
    // nothing changes for an exponent of 0 and for "unitless"
    EXPECT_EQ(units.insert({Unit::Meter, 0.0}), 0);
    EXPECT_EQ(units.insert({Unit::Meter, -0.0}), 0);
    EXPECT_EQ(units.insert({Unit::Unitless, 1.0}), 0);
    EXPECT_EQ(textOf(units), L"m^3*ph/hr");
}

TEST(ZetUnits, remove)
{
    ZetUnits units = unitsOf(L"m kg / s");
    units.remove(ZetUnits::Angle);
    EXPECT_EQ(textOf(units), L"m*kg/s");
    units.remove(ZetUnits::Mass);
    EXPECT_EQ(units, unitsOf(L"m/s"));
    units.remove(ZetUnits::Length);
    EXPECT_EQ(units, unitsOf(L"s^-1"));
    units.remove(ZetUnits::Time);
    EXPECT_EQ(units, ZetUnits());
    units.remove(ZetUnits::Time);
    EXPECT_EQ(units, ZetUnits());
}

TEST(ZetUnits, catIndex)
{
    const ZetUnits units = unitsOf(L"km rad / hr");
    EXPECT_EQ(units.catIndex(ZetUnits::Length), 0);
    EXPECT_EQ(units.catIndex(ZetUnits::Time), 1);
    EXPECT_EQ(units.catIndex(ZetUnits::Angle), 2);
    EXPECT_EQ(units.catIndex(ZetUnits::Mass), -1);
    EXPECT_EQ(units.catIndex(ZetUnits::Unitless), -1);
    EXPECT_EQ(ZetUnits().catIndex(ZetUnits::Length), -1);
}

TEST(ZetUnits, pow)
{
    const ZetScopedLocale plainNumbers("C");
    struct Row
    {
        const wchar_t* text;
        double exponent;
        const wchar_t* power;
    };
    const Row rows[] = {
        {L"m/s", 2.0, L"m^2/s^2"}, {L"m/s", -1.0, L"s/m"}, {L"m^2", 0.5, L"m"},       {L"m", 1.0, L"m"},
        {L"", 2.0, L""},           {L"", 0.0, L""},        {L"km", 0.25, L"km^0.25"}, {L"m/s", 2.0, L"m^2/s^2"},
    };
    for (const Row& row : rows) {
        ZetUnits units = unitsOf(row.text);
        units.pow(row.exponent);
        EXPECT_EQ(units, unitsOf(row.power)) << toMultibyte(row.text);
    }
}

TEST(ZetUnits, exponentsAreReadAsByStrtod)
{
    const ZetScopedLocale locale("C");
    struct Row
    {
        const wchar_t* text;
        double exponent;
    };
    const Row rows[] = {
        // whole numbers, and what may stand behind them
        {L"2", 2.0},
        {L"-3", -3.0},
        {L"+3", 3.0},
        {L"007", 7.0},
        {L"12x34", 12.0},
        {L"-12m", -12.0},
        {L"2^3", 2.0},
        {L"2\u0663", 2.0},
        {L"1p3", 1.0},
        {L"3nan", 3.0},
        // longer than a double is exact
        {L"999999999999999", 999999999999999.0},
        {L"9007199254740993", 9007199254740992.0},
        {L"123456789012345678901234567890", 123456789012345678901234567890.0},
        // fractions, exponents and hexadecimal numbers
        {L"2.5", 2.5},
        {L".5", 0.5},
        {L"-2.m", -2.0},
        {L"2,5", 2.0},
        {L"1e2", 100.0},
        {L"1E-2", 0.01},
        {L"1e", 1.0},
        {L"25ex", 25.0},
        {L"0x10", 16.0},
        {L"-0X1p3", -8.0},
        {L"5x10", 5.0},
        {L"01x10", 1.0},
        {L"inf", std::numeric_limits<double>::infinity()},
    };
    for (const Row& row : rows) {
        const ZetUnits units = unitsOf(L"nmi^" + ZetString(row.text));
        ASSERT_EQ(units.numCategories(), 1) << testing::PrintToString(std::wstring(row.text));
        EXPECT_EQ(units[0].exp, row.exponent) << testing::PrintToString(std::wstring(row.text));
    }
    for (const wchar_t* text : {L"", L"-", L"--2", L"- 2", L"0", L"-0", L"0m", L"0x0", L"00x10", L"x2", L"e2"}) {
        EXPECT_FALSE(ZetUnits::isValid(L"nmi^" + ZetString(text))) << testing::PrintToString(std::wstring(text));
    }
}

TEST(ZetUnits, powOfZeroKeepsTheEntries)
{
    ZetUnits units = unitsOf(L"m/s");
    units.pow(0.0);
    EXPECT_EQ(units.numCategories(), 2);
    EXPECT_EQ(units[0].exp, 0.0);
    EXPECT_EQ(textOf(units), L"");
    EXPECT_NE(units, ZetUnits());
    ZetUnits again = unitsOf(L"m/s");
    again.pow(-0.0);
    EXPECT_EQ(again, units);
    EXPECT_EQ(ZetUnits::addFactor(units, ZetUnits()), 0.0);
}

TEST(ZetUnits, powOfNaN)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const ZetUnits metre = unitsOf(L"m");
    std::vector<ZetUnits> powers;
    for (int i = 0; i < 20; ++i) {
        powers.push_back(metre);
        powers.back().pow(nan);
        EXPECT_EQ(powers.back().numCategories(), 1);
        EXPECT_EQ(textOf(powers.back()), L"");
        // other powers are found as before
        for (const double exponent : {-3.0, -1.0, 0.5, 2.0, 3.0, 7.0, std::numeric_limits<double>::infinity()}) {
            ZetUnits power = metre;
            power.pow(exponent);
            EXPECT_EQ(power[0].exp, exponent);
            ZetUnits second = metre;
            second.pow(exponent);
            EXPECT_EQ(power, second);
        }
    }
    // a NaN equals nothing, so each is a list of its own
    EXPECT_NE(powers[0], powers[1]);
}

TEST(ZetUnits, addFactor)
{
    const ZetScopedLocale plainNumbers("C");
    struct Row
    {
        const wchar_t* a;
        const wchar_t* b;
        double factor;
    };
    const Row rows[] = {
        {L"", L"", 1.0},
        {L"m", L"m", 1.0},
        {L"km", L"m", 0.001},
        {L"m", L"km", 1000.0},
        {L"m^2", L"km^2", 1e6},
        {L"m^-1", L"km^-1", 0.001},
        {L"m^-2", L"km^-2", 1e-6},
        {L"m^0.5", L"km^0.5", 31.622776601683793},
        {L"km/hr", L"m/s", 3.6},
        {L"J", L"kg m^2 / s^2", 1.0},
        {L"in", L"ft", 0.3048 * 39.37007874015748},
        {L"deg", L"rad", 57.29577951308232},
        // different in kind
        {L"m^2", L"m", 0.0},
        {L"m", L"kg", 0.0},
        {L"m", L"", 0.0},
        {L"", L"m", 0.0},
        {L"m s", L"m", 0.0},
        {L"m s", L"m kg", 0.0},
        {L"m s", L"m s^2", 0.0},
        // a factor too small for a double
        {L"km^200", L"m^200", 0.0},
        {L"km^200 kg", L"m^200 g", 0.0},
    };
    for (const Row& row : rows) {
        EXPECT_DOUBLE_EQ(ZetUnits::addFactor(unitsOf(row.a), unitsOf(row.b)), row.factor)
            << toMultibyte(row.a) << " and " << toMultibyte(row.b);
    }
}

struct FactorRow
{
    const wchar_t* a;
    const wchar_t* b;
    const wchar_t* result;
    double factor;
};

using FactorFcn = double (*)(const ZetUnits&, const ZetUnits&, ZetUnits*);

/// Into a third object, and into either operand.
void expectFactor(FactorFcn fcn, const FactorRow& row)
{
    SCOPED_TRACE(toMultibyte(row.a) + " and " + toMultibyte(row.b));
    const ZetUnits expected = unitsOf(row.result);
    ZetUnits a = unitsOf(row.a);
    ZetUnits b = unitsOf(row.b);
    ZetUnits result = unitsOf(L"K");
    EXPECT_DOUBLE_EQ(fcn(a, b, &result), row.factor);
    EXPECT_EQ(result, expected) << toMultibyte(textOf(result));
    EXPECT_DOUBLE_EQ(fcn(a, b, &a), row.factor);
    EXPECT_EQ(a, expected);
    a = unitsOf(row.a);
    EXPECT_DOUBLE_EQ(fcn(a, b, &b), row.factor);
    EXPECT_EQ(b, expected);
}

TEST(ZetUnits, multFactor)
{
    const FactorRow rows[] = {
        {L"", L"", L"", 1.0},
        {L"m", L"", L"m", 1.0},
        {L"", L"m", L"m", 1.0},
        {L"m", L"s", L"m*s", 1.0},
        {L"m", L"m^-1", L"", 1.0},
        {L"m", L"km^-1", L"", 0.001},
        {L"km", L"cm", L"km^2", 1e-5},
        {L"m", L"km^2", L"m^3", 1e6},
        {L"m", L"km^-2", L"m^-1", 1e-6},
        {L"km/hr", L"s", L"km", 1.0 / 3600.0},
        {L"km/hr", L"m s", L"km^2", 0.001 / 3600.0},
        {L"m K", L"s A", L"m*s*K*A", 1.0},
    };
    for (const FactorRow& row : rows) {
        expectFactor(&ZetUnits::multFactor, row);
    }
    ZetUnits self = unitsOf(L"km/s");
    EXPECT_EQ(ZetUnits::multFactor(self, self, &self), 1.0);
    EXPECT_EQ(self, unitsOf(L"km^2/s^2"));
}

TEST(ZetUnits, divFactor)
{
    const FactorRow rows[] = {
        {L"", L"", L"", 1.0},
        {L"m", L"", L"m", 1.0},
        {L"", L"s", L"s^-1", 1.0},
        {L"m", L"s", L"m/s", 1.0},
        {L"m", L"m", L"", 1.0},
        {L"m", L"km", L"", 0.001},
        {L"km", L"m", L"", 1000.0},
        {L"m^2", L"km", L"m", 0.001},
        {L"m", L"km^2", L"m^-1", 1e-6},
        {L"m^-1", L"km^-1", L"", 1000.0},
        {L"m", L"km^-1", L"m^2", 1000.0},
        {L"km s", L"m hr", L"", 1000.0 / 3600.0},
        {L"J", L"N", L"m", 1.0},
    };
    for (const FactorRow& row : rows) {
        expectFactor(&ZetUnits::divFactor, row);
    }
    ZetUnits self = unitsOf(L"km/s");
    EXPECT_EQ(ZetUnits::divFactor(self, self, &self), 1.0);
    EXPECT_EQ(self, ZetUnits());
}

TEST(ZetUnits, factorsOfEntriesWithoutExponent)
{
    ZetUnits none = unitsOf(L"m");
    none.pow(0.0);
    ZetUnits result;
    EXPECT_EQ(ZetUnits::multFactor(none, unitsOf(L"km"), &result), 1000.0);
    EXPECT_EQ(result, unitsOf(L"m"));
    EXPECT_EQ(ZetUnits::multFactor(unitsOf(L"km"), none, &result), 1.0);
    EXPECT_EQ(result, unitsOf(L"km"));
    EXPECT_EQ(ZetUnits::multFactor(none, none, &result), 1.0);
    EXPECT_EQ(result, ZetUnits());
    EXPECT_EQ(ZetUnits::divFactor(unitsOf(L"km"), none, &result), 1.0);
    EXPECT_EQ(result, unitsOf(L"km"));
    EXPECT_EQ(ZetUnits::divFactor(none, none, &result), 1.0);
    EXPECT_EQ(result, ZetUnits());
}

TEST(ZetUnits, theFirstTextStays)
{
    const ZetScopedLocale plainNumbers("C");
    // exponents of this test alone, since texts are remembered by the process
    const ZetUnits fine = unitsOf(L"m^1.23456789");
    std::wostringstream nine;
    nine.precision(9);
    nine << fine;
    EXPECT_EQ(nine.str(), L"m^1.23456789");
    EXPECT_EQ(textOf(fine), L"m^1.23456789");

    const ZetUnits coarse = unitsOf(L"m^1.23456788");
    EXPECT_EQ(textOf(coarse), L"m^1.23457");
    nine.str(L"");
    nine << coarse;
    EXPECT_EQ(nine.str(), L"m^1.23457");

    const ZetUnits fixed = unitsOf(L"m^2.5 s^3.75");
    std::wostringstream out;
    out << std::fixed;
    out.precision(1);
    out << fixed;
    EXPECT_EQ(textOf(fixed), out.str());
    EXPECT_EQ(out.str(), L"m^2.5*s^3.8");
}

TEST(ZetUnits, widthPadsTheWholeTextOnce)
{
    const ZetScopedLocale plainNumbers("C");
    const ZetUnits units = unitsOf(L"kg^4.5 m");
    std::wostringstream out;
    out.width(12);
    out.fill(L'.');
    out << units << units;
    EXPECT_EQ(out.str(), L"....m*kg^4.5m*kg^4.5");
    EXPECT_EQ(textOf(units), L"m*kg^4.5");
}

TEST(ZetUnits, exponentsFollowTheLocale)
{
    const ZetScopedLocale comma("de_DE.UTF-8");
    ASSERT_TRUE(comma.isSet()) << "the machine has no locale with a decimal comma";
    // an exponent of this test alone
    const ZetUnits units = unitsOf(L"m^1,625");
    EXPECT_EQ(units[0].exp, 1.625);
    EXPECT_EQ(textOf(units), L"m^1,625");
    EXPECT_EQ(unitsOf(textOf(units)), units);
    // a point ends the number, and what follows is ignored
    EXPECT_EQ(unitsOf(L"m^1.7"), unitsOf(L"m"));
}

TEST(ZetUnits, readingDropsTheScale)
{
    std::wistringstream in(L"mJ\nkm\n\nm / s");
    ZetUnits units;
    in >> units;
    EXPECT_EQ(units, unitsOf(L"J"));
    in >> units;
    EXPECT_EQ(units, unitsOf(L"km"));
    in >> units;
    EXPECT_EQ(units, ZetUnits());
    EXPECT_TRUE(in.good());
    in >> units;
    EXPECT_EQ(units, unitsOf(L"m/s"));
    EXPECT_TRUE(in.eof());
    EXPECT_FALSE(in.fail());
    // nothing left: the stream fails, and no units are read
    in >> units;
    EXPECT_TRUE(in.fail());
    EXPECT_EQ(units, ZetUnits());
}

TEST(ZetUnits, readingBadTextThrows)
{
    std::wistringstream in(L"xyz\nm");
    ZetUnits units;
    EXPECT_EQ(thrownBy([&] { in >> units; }).text(), L"Invalid/unknown units: xyz");
    EXPECT_TRUE(in.good());
    in >> units;
    EXPECT_EQ(units, unitsOf(L"m"));
}

TEST(ZetUnits, enumerators)
{
    const ZetEnum& all = ZetUnits::enumerator(ZetUnits::Unitless);
    EXPECT_EQ(all.items().size(), 35u);
    for (const UnitRow& row : kUnits) {
        EXPECT_EQ(all.toString(row.unit), row.symbol);
        EXPECT_EQ(all.allKeys()[static_cast<std::size_t>(row.unit)], row.symbol);
    }
    for (int category = 1; category <= 6; ++category) {
        const ZetEnum& listed = ZetUnits::enumerator(static_cast<ZetUnits::Category>(category));
        std::size_t count = 0;
        for (const UnitRow& row : kUnits) {
            const bool member = row.category == category;
            EXPECT_EQ(listed.toString(row.unit), member ? row.symbol : L"");
            count += member ? 1 : 0;
        }
        EXPECT_EQ(listed.items().size(), count);
        EXPECT_EQ(&listed, &ZetUnits::enumerator(static_cast<ZetUnits::Category>(category)));
    }
    // KEPT: no others
    for (const int category : {7, 8, 9, 10, 11, -1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        EXPECT_TRUE(ZetUnits::enumerator(static_cast<ZetUnits::Category>(category)).items().empty());
    }
}

TEST(ZetUnits, deepParentheses)
{
    const std::size_t depth = 100000;
    const ZetString open(depth, L'(');
    const ZetString close(depth, L')');
    ZetUnits units;
    EXPECT_EQ(units.fromString(open + L"m" + close), 1.0);
    EXPECT_EQ(units, unitsOf(L"m"));
    EXPECT_EQ(thrownBy([&] { units.fromString(open); }).text(), L"Unmatched open or close parentheses: " + open);
    // each level multiplied into the one below
    ZetString nested;
    for (int i = 0; i < 500; ++i) {
        nested += L"m/(";
    }
    nested += L"s" + ZetString(500, L')');
    EXPECT_EQ(units.fromString(nested), 1.0);
    EXPECT_EQ(units, unitsOf(L"s"));
}

}  // namespace
}  // namespace zet

#include <zet/ZetScalar>

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "quantity/ZetScalarSupport"
#include "quantity/ZetUnitsOf"
#include "support/ZetCollectingHandler"
#include "support/ZetPrint"
#include "support/ZetScopedLocale"

namespace zet {
namespace {

using test::dump;
using test::scalarOf;
using test::thrownBy;
using test::unitsOf;
using test::ZetScopedLocale;
using Complex = std::complex<double>;
using Unary = ZetScalar& (ZetScalar::*)();
using Binary = ZetScalar& (ZetScalar::*)(const ZetScalar&);

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// Each part to a few units in the last place of the whole.
void expectValue(const ZetScalar& scalar, const Complex& value, const wchar_t* units)
{
    const double reach = 1e-14 * std::abs(value);
    EXPECT_NEAR(scalar.real(), value.real(), reach);
    EXPECT_NEAR(scalar.imag(), value.imag(), reach);
    EXPECT_EQ(ZetString(scalar.units()), units);
}

/// The message of a failure, which leaves the scalar as it stood.
template <class Work>
ZetString failureOf(const ZetScalar& scalar, Work&& work)
{
    ZetScalar own = scalar;
    const ZetTextMsg thrown = thrownBy([&] { work(own); });
    EXPECT_EQ(thrown.file(), L"ZetScalar");
    EXPECT_EQ(dump(own), dump(scalar));
    return thrown.text();
}

TEST(ZetScalar, functionsOfOneValue)
{
    const ZetScopedLocale plainNumbers("C");
    struct Row
    {
        const char* name;
        Unary fcn;
        const wchar_t* scalar;
        Complex value;
        const wchar_t* units;
    };
    const double pi = 3.141592653589793;
    const Row rows[] = {
        {"conj", &ZetScalar::conj, L"(1,2) m", {1, -2}, L"m"},
        {"conj", &ZetScalar::conj, L"3", {3, 0}, L""},
        {"abs", &ZetScalar::abs, L"-3 m", {3, 0}, L"m"},
        {"abs", &ZetScalar::abs, L"(3,-4) m", {5, 0}, L"m"},
        {"norm", &ZetScalar::norm, L"(3,-4) m/s", {25, 0}, L"m^2/s^2"},
        {"norm", &ZetScalar::norm, L"-3", {9, 0}, L""},
        {"arg", &ZetScalar::arg, L"(0,2) m", {pi / 2, 0}, L"rad"},
        {"arg", &ZetScalar::arg, L"-2 deg", {pi, 0}, L"rad"},
        {"arg", &ZetScalar::arg, L"2", {0, 0}, L"rad"},
        {"arg", &ZetScalar::arg, L"(-2,-0.0)", {pi, 0}, L"rad"},
        {"sqrt", &ZetScalar::sqrt, L"4 m^2", {2, 0}, L"m"},
        {"sqrt", &ZetScalar::sqrt, L"-4", {0, 2}, L""},
        {"sqrt", &ZetScalar::sqrt, L"(-4,-0.0) m", {0, 2}, L"m^0.5"},
        {"sqrt", &ZetScalar::sqrt, L"(1.5,-0.75)", {1.2603672050487593, -0.2975323370029233}, L""},
        {"exp", &ZetScalar::exp, L"1", {2.718281828459045, 0}, L""},
        {"exp", &ZetScalar::exp, L"(1.5,-0.75)", {3.2792020065198244, -3.0548929807153673}, L""},
        {"log", &ZetScalar::log, L"2", {0.6931471805599453, 0}, L""},
        {"log", &ZetScalar::log, L"(1.5,-0.75)", {0.5170368837652692, -0.4636476090008061}, L""},
        {"log10", &ZetScalar::log10, L"1000", {3, 0}, L""},
        {"log10", &ZetScalar::log10, L"(1.5,-0.75)", {0.2245462655597094, -0.20135959813668655}, L""},
        {"floor", &ZetScalar::floor, L"-2.5 m", {-3, 0}, L"m"},
        {"floor", &ZetScalar::floor, L"2.5", {2, 0}, L""},
        {"ceil", &ZetScalar::ceil, L"-2.5 m", {-2, 0}, L"m"},
        {"ceil", &ZetScalar::ceil, L"2.5", {3, 0}, L""},
        {"trunc", &ZetScalar::trunc, L"-2.5 m", {-2, 0}, L"m"},
        {"trunc", &ZetScalar::trunc, L"2.5", {2, 0}, L""},
        {"asin", &ZetScalar::asin, L"0.5", {0.5235987755982989, 0}, L"rad"},
        {"acos", &ZetScalar::acos, L"0.5", {1.0471975511965979, 0}, L"rad"},
        {"atan", &ZetScalar::atan, L"0.5", {0.4636476090008061, 0}, L"rad"},
        {"asin", &ZetScalar::asin, L"(1.5,-0.75)", {1.0242880572034125, -1.1627920981631037}, L"rad"},
        {"acos", &ZetScalar::acos, L"(1.5,-0.75)", {0.5465082695914841, 1.1627920981631037}, L"rad"},
        {"atan", &ZetScalar::atan, L"(1.5,-0.75)", {1.05713696075397, -0.20793333596152302}, L"rad"},
        {"sinc", &ZetScalar::sinc, L"(1.5,-0.75)", {0.7042796149098975, 0.3133608844538347}, L""},
        {"sinc", &ZetScalar::sinc, L"2", {0.45464871341284085, 0}, L""},
        {"sinc", &ZetScalar::sinc, L"90 deg", {1.0 / 90.0, 0}, L"deg^-1"},
        {"sinc", &ZetScalar::sinc, L"2 rad", {0.45464871341284085, 0}, L"rad^-1"},
        {"sinc", &ZetScalar::sinc, L"0", {1, 0}, L""},
        {"sinc", &ZetScalar::sinc, L"(1e-16,-1e-16) m", {1, 0}, L"m^-1"},
        {"sinc", &ZetScalar::sinc, L"-2.2e-16 m / s", {1, 0}, L"s/m"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.name) + " of " + toMultibyte(row.scalar));
        ZetScalar scalar = scalarOf(row.scalar);
        EXPECT_EQ(&(scalar.*row.fcn)(), &scalar);
        expectValue(scalar, row.value, row.units);
    }
}

TEST(ZetScalar, angles)
{
    struct Row
    {
        const char* name;
        Unary fcn;
        double real;
        Complex complex;
    };
    // of 1.5 and of (1.5,-0.75)
    const Row rows[] = {
        {"sin", &ZetScalar::sin, 0.9974949866040544, {1.2914400857052224, -0.058168384501671194}},
        {"cos", &ZetScalar::cos, 0.0707372016677029, {0.09158227260398998, 0.8202568175066206}},
        {"tan", &ZetScalar::tan, 14.101419947171719, {0.10358061868779707, -1.5628689818694739}},
        {"sinh", &ZetScalar::sinh, 2.1292794550948173, {1.5579700760145927, -1.6034935732013755}},
        {"cosh", &ZetScalar::cosh, 2.352409615243247, {1.7212319305052317, -1.4513994075139918}},
        {"tanh", &ZetScalar::tanh, 0.9051482536448664, {0.9881121005704792, -0.09838781913967143}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        for (const wchar_t* units : {L"", L"rad", L"mrad", L"deg"}) {
            const ZetUnits target = unitsOf(units);
            ZetScalar real(1.5);
            ZetScalar complex(1.5, -0.75);
            if (target != ZetUnits()) {
                // the same angle in other units
                real = ZetScalar(1.5, unitsOf(L"rad")).convertUnits(target);
                complex = ZetScalar(1.5, -0.75, unitsOf(L"rad")).convertUnits(target);
            }
            (real.*row.fcn)();
            EXPECT_NEAR(real.real(), row.real, 1e-13 * row.real);
            EXPECT_EQ(real.imag(), 0.0);
            EXPECT_EQ(real.units(), ZetUnits());
            expectValue((complex.*row.fcn)(), row.complex, L"");
        }
        EXPECT_EQ(failureOf(scalarOf(L"1 m"), [&](ZetScalar& own) { (own.*row.fcn)(); }),
                  L"Cannot convert physical units from 'rad' to 'm'");
        EXPECT_EQ(failureOf(scalarOf(L"1 rad^2"), [&](ZetScalar& own) { (own.*row.fcn)(); }),
                  L"Cannot convert physical units from 'rad' to 'rad^2'");
    }
    ZetScalar right(90.0, unitsOf(L"deg"));
    EXPECT_EQ(dump(right.sin()), "(1,0)");
}

TEST(ZetScalar, realStaysReal)
{
    const std::pair<Unary, double> rows[] = {
        {&ZetScalar::log, -1.0},  {&ZetScalar::log10, -1.0}, {&ZetScalar::asin, 2.0},   {&ZetScalar::acos, -2.0},
        {&ZetScalar::sqrt, kNaN}, {&ZetScalar::sinc, kNaN},  {&ZetScalar::round, kNaN}, {&ZetScalar::floor, kNaN},
        {&ZetScalar::abs, kNaN},  {&ZetScalar::sin, kInf},
    };
    for (const auto& [fcn, value] : rows) {
        ZetScalar scalar(value);
        (scalar.*fcn)();
        EXPECT_TRUE(std::isnan(scalar.real())) << value;
        EXPECT_EQ(scalar.imag(), 0.0);
    }
    ZetScalar cube(-8.0);
    cube.pow(1.0 / 3.0);
    EXPECT_TRUE(std::isnan(cube.real()));
    EXPECT_EQ(cube.imag(), 0.0);
    ZetScalar logarithm(-1.0);
    EXPECT_TRUE(std::isnan(logarithm.logb(2.0).real()));
    EXPECT_EQ(ZetScalar(0.0).log().real(), -kInf);
    EXPECT_EQ(ZetScalar(-kInf).abs().real(), kInf);
}

TEST(ZetScalar, round)
{
    const std::pair<double, double> rows[] = {
        {-0.5, -1.0},
        {0.5, 1.0},
        {1.5, 2.0},
        {2.5, 3.0},
        {-2.5, -3.0},
        {0.4, 0.0},
        {-0.4, -0.0},
        // KEPT: zero comes out negative, and a half is added before the cut
        {0.0, -0.0},
        {-0.0, -0.0},
        {0.49999999999999994, 1.0},
        {-0.49999999999999994, -1.0},
        {4503599627370497.0, 4503599627370498.0},
        {1e300, 1e300},
        {kInf, kInf},
        {-kInf, -kInf},
    };
    for (const auto& [value, rounded] : rows) {
        SCOPED_TRACE(value);
        ZetScalar scalar(value, unitsOf(L"m"));
        scalar.round();
        EXPECT_EQ(scalar.real(), rounded);
        EXPECT_EQ(std::signbit(scalar.real()), std::signbit(rounded));
        EXPECT_EQ(scalar.imag(), 0.0);
        EXPECT_FALSE(std::signbit(scalar.imag()));
        EXPECT_EQ(scalar.units(), unitsOf(L"m"));
        if (value != 0.0) {
            ZetScalar complex(2.5, value);
            complex.round();
            EXPECT_EQ(complex.value(), Complex(3.0, rounded));
        }
    }
}

TEST(ZetScalar, pow)
{
    struct Row
    {
        const wchar_t* base;
        const wchar_t* exponent;
        Complex power;
        const wchar_t* units;
    };
    const Row rows[] = {
        // whole exponents
        {L"2", L"10", {1024, 0}, L""},
        {L"-2 m", L"3", {-8, 0}, L"m^3"},
        {L"2 m/s", L"-2", {0.25, 0}, L"s^2/m^2"},
        {L"5 m", L"1", {5, 0}, L"m"},
        {L"2", L"1e10", {kInf, 0}, L""},
        {L"-1", L"2147483647", {-1, 0}, L""},
        {L"-1", L"-2147483648", {1, 0}, L""},
        {L"-1", L"2147483649", {-1, 0}, L""},
        {L"0", L"0", {1, 0}, L""},
        {L"0", L"-1", {kInf, 0}, L""},
        {L"(1.5,-0.75) m", L"3", {0.84375, -4.640625}, L"m^3"},
        {L"(1.5,-0.75)", L"-2", {0.21333333333333335, 0.28444444444444444}, L""},
        {L"(1.5,-0.75) m", L"1", {1.5, -0.75}, L"m"},
        {L"(1.5,-0.75)", L"0", {1, 0}, L""},
        // others
        {L"4 m^2", L"0.5", {2, 0}, L"m"},
        {L"2", L"0.5", {1.4142135623730951, 0}, L""},
        {L"(1.5,-0.75) m^2", L"2.5", {1.457421900263204, -3.3379120300521405}, L"m^5"},
        // complex exponents
        {L"2", L"(0.5,-1.25)", {0.9157712445719303, -1.077665545341029}, L""},
        {L"-2", L"(0.5,-1.25)", {54.69585811536306, 46.47907161528953}, L""},
        {L"(-2,-0.0)", L"(0.5,-1.25)", {54.69585811536306, 46.47907161528953}, L""},
        {L"(1.5,-0.75)", L"(0.5,-1.25)", {0.4632355928489137, -0.5582190034137814}, L""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(toMultibyte(row.base) + " ^ " + toMultibyte(row.exponent));
        ZetScalar scalar = scalarOf(row.base);
        EXPECT_EQ(&scalar.pow(scalarOf(row.exponent)), &scalar);
        if (std::isinf(row.power.real())) {
            EXPECT_EQ(scalar.value(), row.power);
        } else {
            expectValue(scalar, row.power, row.units);
        }
    }
    // the exponent 0 keeps units that have no text
    ZetScalar flat(3.0, unitsOf(L"m"));
    flat.pow(0.0);
    EXPECT_EQ(flat.real(), 1.0);
    EXPECT_EQ(flat.units().numCategories(), 1);
    EXPECT_EQ(ZetString(flat.units()), L"");
    // a NaN takes the platform's way
    EXPECT_TRUE(std::isnan(ZetScalar(2.0).pow(kNaN).real()));
    EXPECT_EQ(ZetScalar(1.0).pow(kNaN).real(), 1.0);

    const auto pow = [](const wchar_t* exponent) {
        return [exponent](ZetScalar& own) { own.pow(scalarOf(exponent)); };
    };
    EXPECT_EQ(failureOf(scalarOf(L"2"), pow(L"2 m")), L"Values must be unit-less for 'pow'");
    EXPECT_EQ(failureOf(scalarOf(L"2 m"), pow(L"(1,1)")), L"Values must be unit-less for 'pow'");
}

TEST(ZetScalar, logb)
{
    expectValue(ZetScalar(8.0).logb(2.0), 3.0, L"");
    expectValue(ZetScalar(1.5, -0.75).logb(2.0), {0.7459265481648374, -0.6689021062254881}, L"");
    expectValue(ZetScalar(3.0).logb(Complex(1.5, -0.75)), {1.1777472469874946, 1.0561329611466181}, L"");
    EXPECT_EQ(ZetScalar(8.0).logb(1.0).real(), kInf);
    const auto logb = [](const ZetScalar& base) { return [base](ZetScalar& own) { own.logb(base); }; };
    EXPECT_EQ(failureOf(scalarOf(L"8 m"), logb(2.0)), L"Values must be unit-less for 'log'");
    EXPECT_EQ(failureOf(scalarOf(L"8"), logb(scalarOf(L"2 m"))), L"Values must be unit-less for 'log'");
    EXPECT_EQ(failureOf(scalarOf(L"(8,1)"), logb(1.0)), L"Cannot divide by zero");
}

TEST(ZetScalar, ldexp)
{
    expectValue(scalarOf(L"3 m").ldexp(4.0), 48.0, L"m");
    expectValue(scalarOf(L"(1,2) m").ldexp(-1.0), {0.5, 1.0}, L"m");
    expectValue(ZetScalar(3.0).ldexp(0.5), 3.0 * 1.4142135623730951, L"");
    EXPECT_EQ(failureOf(scalarOf(L"3 m"), [](ZetScalar& own) { own.ldexp(scalarOf(L"2 m")); }),
              L"Values must be unit-less for 'ldexp'");
}

TEST(ZetScalar, functionsWithoutUnits)
{
    const std::pair<Unary, ZetString> rows[] = {
        {&ZetScalar::exp, L"exp"},   {&ZetScalar::log, L"log"},   {&ZetScalar::log10, L"log10"},
        {&ZetScalar::asin, L"asin"}, {&ZetScalar::acos, L"acos"}, {&ZetScalar::atan, L"atan"},
    };
    for (const auto& [fcn, name] : rows) {
        for (const wchar_t* text : {L"0.5 m", L"0.5 rad", L"(0.5,1) s"}) {
            EXPECT_EQ(failureOf(scalarOf(text), [fcn = fcn](ZetScalar& own) { (own.*fcn)(); }),
                      L"Values must be unit-less for '" + name + L"'");
        }
    }
}

TEST(ZetScalar, functionsOfRealValues)
{
    const std::pair<Unary, ZetString> rows[] = {
        {&ZetScalar::floor, L"floor"},
        {&ZetScalar::ceil, L"ceil"},
        {&ZetScalar::trunc, L"trunc"},
    };
    for (const auto& [fcn, name] : rows) {
        EXPECT_EQ(failureOf(scalarOf(L"(1,2) m"), [fcn = fcn](ZetScalar& own) { (own.*fcn)(); }),
                  L"Complex values are not valid for '" + name + L"'");
    }
}

// Computed with many digits by another library.
TEST(ZetScalar, bessel)
{
    struct Row
    {
        double x;
        double j0;
        double j1;
        double j3;
        double y0;
        double y1;
        double y3;
    };
    const Row rows[] = {
        {0.5, 0.9384698072408129, 0.2422684576748739, 0.002563729994587244, -0.44451873350670656, -1.471472392670243,
         -42.059494304723884},
        {1.0, 0.7651976865579666, 0.4400505857449335, 0.019563353982668407, 0.08825696421567696, -0.7812128213002887,
         -5.821517605964729},
        {7.25, 0.291996924191779, 0.06858170065313174, -0.2192453334015082, 0.04842252986520283, -0.28934799419758706,
         0.21859341974485785},
        {30.0, -0.08636798358104021, -0.11875106261662294, 0.129211228759725, -0.11729573168666403, 0.08442557066174723,
         -0.06803569025319872},
    };
    const auto near = [](const ZetScalar& value, double expected) {
        EXPECT_NEAR(value.real(), expected, 1e-14 * std::max(1.0, std::fabs(expected)));
        EXPECT_EQ(value.imag(), 0.0);
        EXPECT_EQ(value.units(), ZetUnits());
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.x);
        near(ZetScalar(row.x).j0(), row.j0);
        near(ZetScalar(row.x).j1(), row.j1);
        near(ZetScalar(row.x).y0(), row.y0);
        near(ZetScalar(row.x).y1(), row.y1);
        near(ZetScalar(row.x).jn(3.0), row.j3);
        near(ZetScalar(row.x).yn(3.0), row.y3);
        // the order is cut
        near(ZetScalar(row.x).jn(0.9), row.j0);
        near(ZetScalar(row.x).yn(1.9), row.y1);
    }
    near(ZetScalar(0.0).j0(), 1.0);
    near(ZetScalar(0.0).j1(), 0.0);
    near(ZetScalar(-0.0).jn(3.0), 0.0);
}

TEST(ZetScalar, besselFailures)
{
    const std::pair<Unary, ZetString> unary[] = {
        {&ZetScalar::j0, L"j0"},
        {&ZetScalar::j1, L"j1"},
        {&ZetScalar::y0, L"y0"},
        {&ZetScalar::y1, L"y1"},
    };
    // complex first, then the argument, then the units
    for (const auto& [fcn, name] : unary) {
        const auto of = [fcn = fcn](const wchar_t* text) {
            return failureOf(scalarOf(text), [fcn](ZetScalar& own) { (own.*fcn)(); });
        };
        EXPECT_EQ(of(L"(-1,1) m"), L"Complex values are not valid for '" + name + L"'");
        EXPECT_EQ(of(L"-1 m"), L"Invalid argument for '" + name + L"'");
        EXPECT_EQ(of(L"1 m"), L"Values must be unit-less for '" + name + L"'");
        const auto apply = [fcn = fcn](ZetScalar& own) { (own.*fcn)(); };
        EXPECT_EQ(failureOf(kNaN, apply), L"Invalid argument for '" + name + L"'");
        if (name.front() == L'y') {
            EXPECT_EQ(of(L"0 m"), L"Invalid argument for '" + name + L"'");
        }
    }
    const std::pair<Binary, ZetString> binary[] = {{&ZetScalar::jn, L"jn"}, {&ZetScalar::yn, L"yn"}};
    for (const auto& [fcn, name] : binary) {
        const auto of = [fcn = fcn](const wchar_t* text, const ZetScalar& n) {
            return failureOf(scalarOf(text), [fcn, n](ZetScalar& own) { (own.*fcn)(n); });
        };
        EXPECT_EQ(of(L"(-1,1) m", -1.0), L"Complex values are not valid for '" + name + L"'");
        EXPECT_EQ(of(L"-1 m", ZetScalar(1.0, 1.0)), L"Complex values are not valid for '" + name + L"'");
        EXPECT_EQ(of(L"-1 m", 1.0), L"Invalid argument for '" + name + L"'");
        EXPECT_EQ(of(L"1 m", -1.0), L"Invalid argument for '" + name + L"'");
        EXPECT_EQ(of(L"1 m", kNaN), L"Invalid argument for '" + name + L"'");
        EXPECT_EQ(of(L"1", 2147483648.0), L"Invalid argument for '" + name + L"'");
        EXPECT_EQ(of(L"1 m", 1.0), L"Values must be unit-less for '" + name + L"'");
        EXPECT_EQ(of(L"1", ZetScalar(1.0, unitsOf(L"m"))), L"Values must be unit-less for '" + name + L"'");
    }
    EXPECT_EQ(failureOf(0.0, [](ZetScalar& own) { own.yn(0.0); }), L"Invalid argument for 'yn'");
}

TEST(ZetScalar, factorial)
{
    const std::pair<double, double> rows[] = {
        {0.0, 1.0},
        {-0.0, 1.0},
        {1.0, 1.0},
        {2.9, 2.0},
        {5.0, 120.0},
        {20.0, 2432902008176640000.0},
        // KEPT: wrapped modulo 2^64
        {21.0, 14197454024290336768.0},
        {25.0, 7034535277573963776.0},
        {65.0, 9223372036854775808.0},
        {66.0, 0.0},
        {170.0, 0.0},
    };
    for (const auto& [value, factorial] : rows) {
        EXPECT_EQ(ZetScalar(value).factorial().real(), factorial) << value;
    }
    const auto of = [](const ZetScalar& scalar) { return failureOf(scalar, [](ZetScalar& own) { own.factorial(); }); };
    // units first, then complex, then the range of the value before the cut
    EXPECT_EQ(of(scalarOf(L"(-1,1) m")), L"Values must be unit-less for 'factorial'");
    EXPECT_EQ(of(scalarOf(L"(-1,1)")), L"Complex values are not valid for 'factorial'");
    for (const double value : {-1.0, -0.1, 170.5, 171.0, 1e300, kInf, kNaN}) {
        EXPECT_EQ(of(value), L"Invalid argument for 'factorial'") << value;
    }
}

TEST(ZetScalar, clipping)
{
    struct Row
    {
        const wchar_t* scalar;
        const wchar_t* clipmin;  // against 1 km
        const wchar_t* clipmax;
        const wchar_t* clip;  // between 1 km and 2000 m
    };
    const Row rows[] = {
        {L"500 m", L"1 km", L"0.5 km", L"1 km"},    {L"1000 m", L"1 km", L"1 km", L"1 km"},
        {L"1500 m", L"1.5 km", L"1 km", L"1.5 km"}, {L"2 km", L"2 km", L"1 km", L"2 km"},
        {L"5 km", L"5 km", L"1 km", L"2000 m"},
    };
    const ZetScalar one = scalarOf(L"1 km");
    const ZetScalar two = scalarOf(L"2000 m");
    for (const Row& row : rows) {
        SCOPED_TRACE(toMultibyte(row.scalar));
        EXPECT_EQ(dump(scalarOf(row.scalar).clipmin(one)), dump(scalarOf(row.clipmin)));
        EXPECT_EQ(dump(scalarOf(row.scalar).clipmax(one)), dump(scalarOf(row.clipmax)));
        EXPECT_EQ(dump(scalarOf(row.scalar).clip(one, two)), dump(scalarOf(row.clip)));
    }
    EXPECT_EQ(failureOf(one, [&](ZetScalar& own) { own.clip(two, one); }), L"Invalid argument for 'clip'");
    const ZetScalar complex = scalarOf(L"(1,2) m");
    EXPECT_EQ(failureOf(complex, [&](ZetScalar& own) { own.clipmin(one); }), L"Complex values are not valid for '<'");
    EXPECT_EQ(failureOf(complex, [&](ZetScalar& own) { own.clipmax(one); }), L"Complex values are not valid for '>'");
    EXPECT_EQ(failureOf(complex, [&](ZetScalar& own) { own.clip(one, two); }), L"Complex values are not valid for '<'");
}

TEST(ZetScalar, stepAndRect)
{
    struct Row
    {
        const wchar_t* scalar;
        double step;  // at 1 km
        double rect;  // between 1 km and 2 km
    };
    const Row rows[] = {
        {L"500 m", 0.0, 0.0}, {L"1000 m", 0.5, 0.5}, {L"1500 m", 1.0, 1.0}, {L"2000 m", 1.0, 0.5}, {L"3 km", 1.0, 0.0},
    };
    const ZetScalar low = scalarOf(L"1 km");
    const ZetScalar high = scalarOf(L"2 km");
    for (const Row& row : rows) {
        SCOPED_TRACE(toMultibyte(row.scalar));
        EXPECT_EQ(dump(scalarOf(row.scalar).step(low)), dump(row.step));
        EXPECT_EQ(dump(scalarOf(row.scalar).rect(low, high)), dump(row.rect));
    }
    // a NaN is neither below nor above
    EXPECT_EQ(dump(ZetScalar(kNaN).step(1.0)), "(0.5,0)");
    EXPECT_EQ(dump(ZetScalar(kNaN).rect(1.0, 2.0)), "(0.5,0)");
    EXPECT_EQ(failureOf(low, [&](ZetScalar& own) { own.rect(high, low); }), L"Invalid argument for 'rect'");
    EXPECT_EQ(failureOf(scalarOf(L"(1,2) m"), [&](ZetScalar& own) { own.step(low); }),
              L"Complex values are not valid for '<'");
}

TEST(ZetScalar, triang)
{
    const std::pair<const wchar_t*, double> rows[] = {
        {L"0.5 km", 0.0}, {L"1000 m", 0.0}, {L"1.5 km", 0.5}, {L"2 km", 1.0},
        {L"2500 m", 0.5}, {L"3 km", 0.0},   {L"4 km", 0.0},
    };
    const ZetScalar low = scalarOf(L"1 km");
    const ZetScalar high = scalarOf(L"3000 m");
    for (const auto& [text, height] : rows) {
        SCOPED_TRACE(toMultibyte(text));
        ZetScalar scalar = scalarOf(text);
        scalar.triang(low, high);
        EXPECT_NEAR(scalar.real(), height, 1e-15);
        EXPECT_EQ(scalar.imag(), 0.0);
        EXPECT_EQ(scalar.units(), ZetUnits());
    }
    // KEPT: the message speaks of another function
    EXPECT_EQ(failureOf(low, [&](ZetScalar& own) { own.triang(high, low); }), L"Invalid argument for 'rect'");
    // an interval without length has no slope, but an outside
    EXPECT_EQ(failureOf(low, [&](ZetScalar& own) { own.triang(low, low); }), L"Cannot divide by zero");
    EXPECT_EQ(dump(ZetScalar(3.0).triang(2.0, 2.0)), "(0,0)");
}

TEST(ZetScalar, hypot)
{
    expectValue(ZetScalar::hypot(scalarOf(L"3 km"), scalarOf(L"4000 m")), 5.0, L"km");
    expectValue(ZetScalar::hypot(3.0, -4.0), 5.0, L"");
    EXPECT_EQ(failureOf(scalarOf(L"(1,2)"), [](ZetScalar& own) { ZetScalar::hypot(own, 1.0); }),
              L"Complex values are not valid for 'hypot'");
    EXPECT_EQ(failureOf(scalarOf(L"(1,2)"), [](ZetScalar& own) { ZetScalar::hypot(1.0, own); }),
              L"Complex values are not valid for 'hypot'");
}

TEST(ZetScalar, atan2)
{
    const double pi = 3.141592653589793;
    struct Row
    {
        const wchar_t* y;
        const wchar_t* x;
        Complex angle;
    };
    const Row rows[] = {
        {L"1", L"1", {pi / 4, 0}},
        {L"1", L"-1", {3 * pi / 4, 0}},
        {L"-1 m", L"-1 m", {-3 * pi / 4, 0}},
        {L"1 km", L"1000 m", {pi / 4, 0}},
        {L"0", L"0", {0, 0}},
        {L"1 m", L"0 m", {pi / 2, 0}},
        {L"(1,2)", L"(3,-1)", {0.19025318855618248, 0.8418239574966186}},
        {L"(1,2) km", L"(3000,-1000) m", {0.19025318855618248, 0.8418239574966186}},
        {L"2 m", L"(0,-4) m", {0, 0.5493061443340549}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(toMultibyte(row.y) + ", " + toMultibyte(row.x));
        expectValue(ZetScalar::atan2(scalarOf(row.y), scalarOf(row.x)), row.angle, L"rad");
    }
    EXPECT_EQ(failureOf(scalarOf(L"(1,2) m"), [](ZetScalar& own) { ZetScalar::atan2(own, scalarOf(L"0 m")); }),
              L"Cannot divide by zero");
}

TEST(ZetScalar, fromPolar)
{
    expectValue(ZetScalar::fromPolar(2.0, 3.141592653589793 / 2), {0, 2}, L"");
    expectValue(ZetScalar::fromPolar(scalarOf(L"2 m"), scalarOf(L"90 deg")), {0, 2}, L"m");
    expectValue(ZetScalar::fromPolar(scalarOf(L"2 m"), scalarOf(L"0.5 rad")),
                {2 * 0.8775825618903728, 2 * 0.479425538604203}, L"m");
    EXPECT_EQ(failureOf(scalarOf(L"(1,2)"), [](ZetScalar& own) { ZetScalar::fromPolar(own, 1.0); }),
              L"Complex values are not valid for 'fromPolar'");
    EXPECT_EQ(failureOf(scalarOf(L"(1,2) m"), [](ZetScalar& own) { ZetScalar::fromPolar(1.0, own); }),
              L"Complex values are not valid for 'fromPolar'");
}

}  // namespace
}  // namespace zet

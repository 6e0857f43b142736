#include <zet/ZetScalar>

#include <cmath>
#include <limits>
#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetScalarMetaObj>

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

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kMax = std::numeric_limits<double>::max();

TEST(ZetScalar, construction)
{
    const ZetUnits metre = unitsOf(L"m");
    EXPECT_EQ(dump(ZetScalar()), "(0,0)");
    EXPECT_EQ(dump(ZetScalar(2.5)), "(2.5,0)");
    EXPECT_EQ(dump(ZetScalar(2.5, metre)), "(2.5,0) m");
    EXPECT_EQ(dump(ZetScalar(1.0, 2.0)), "(1,2)");
    EXPECT_EQ(dump(ZetScalar(1.0, 2.0, metre)), "(1,2) m");
    EXPECT_EQ(dump(ZetScalar(Complex(3.0, 4.0))), "(3,4)");
    EXPECT_EQ(dump(ZetScalar(Complex(3.0, 4.0), metre)), "(3,4) m");
    EXPECT_EQ(dump(ZetScalar(5)), "(5,0)");

    ZetScalar scalar(1.0, 2.0, metre);
    const ZetScalar copy = scalar;
    EXPECT_EQ(dump(copy), "(1,2) m");
    scalar = 7.0;
    EXPECT_EQ(dump(scalar), "(7,0)");
    scalar = copy;
    scalar = Complex(8.0, 9.0);
    EXPECT_EQ(dump(scalar), "(8,9)");
    scalar.setUnits(metre);
    scalar.setValue(1.0);
    EXPECT_EQ(dump(scalar), "(1,0) m");
    EXPECT_EQ(scalar.real(), 1.0);
    EXPECT_EQ(scalar.imag(), 0.0);
    EXPECT_EQ(scalar.units(), metre);
}

TEST(ZetScalar, isRealWhenTheImaginaryPartIsZero)
{
    EXPECT_TRUE(ZetScalar(1.0, 0.0).isReal());
    EXPECT_TRUE(ZetScalar(1.0, -0.0).isReal());
    EXPECT_FALSE(ZetScalar(1.0, 5e-324).isReal());
    EXPECT_FALSE(ZetScalar(1.0, kNaN).isReal());
}

TEST(ZetScalar, text)
{
    const ZetScopedLocale plainNumbers("C");
    struct Row
    {
        ZetScalar scalar;
        const wchar_t* text;
    };
    const Row rows[] = {
        {ZetScalar(5.0), L"5"},
        {ZetScalar(5.0, unitsOf(L"m")), L"5 m"},
        {ZetScalar(1.0, 2.0), L"(1,2)"},
        {ZetScalar(1.0, 2.0, unitsOf(L"m")), L"(1,2) m"},
        {ZetScalar(-0.5, unitsOf(L"m/s")), L"-0.5 m/s"},
        {ZetScalar(1.0, -0.0), L"1"},
        {ZetScalar(0.0, -2.5), L"(0,-2.5)"},
        // the default format of a stream
        {ZetScalar(1.0 / 3.0, unitsOf(L"kg")), L"0.333333 kg"},
        {ZetScalar(1e20), L"1e+20"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ZetString(row.scalar), row.text);
        std::wostringstream out;
        out << row.scalar;
        EXPECT_EQ(out.str(), row.text);
    }
    std::wostringstream precise;
    precise.precision(3);
    precise << ZetScalar(1.0 / 3.0, 2.0 / 3.0, unitsOf(L"kg"));
    EXPECT_EQ(precise.str(), L"(0.333,0.667) kg");
}

TEST(ZetScalar, reading)
{
    const ZetScopedLocale plainNumbers("C");
    struct Row
    {
        const wchar_t* text;
        bool good;
        const char* value;
    };
    const Row rows[] = {
        {L"5", true, "(5,0)"},
        {L"5 m", true, "(5,0) m"},
        {L"5m", true, "(5,0) m"},
        {L"  -2.5e3 km / hr", true, "(-2500,0) km/hr"},
        {L"(1,2) m", true, "(1,2) m"},
        {L"(1,2)", true, "(1,2)"},
        {L"(1)", true, "(1,0)"},
        {L" ( 1 , 2 )m", true, "(1,2) m"},
        // the scale of the units is dropped
        {L"5 mJ", true, "(5,0) m^2*kg/s^2"},
        // nothing but white space behind the number
        {L"5 ", true, "(5,0)"},
        {L"5\n", true, "(5,0)"},
        {L"5\nm", true, "(5,0)"},
        // no number: the scalar stays
        {L"m", false, "(7,0) K"},
        {L"", false, "(7,0) K"},
        {L"(1;2) m", false, "(7,0) K"},
        {L"(1,2", false, "(7,0) K"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(toMultibyte(row.text));
        std::wistringstream in(row.text);
        ZetScalar scalar(7.0, unitsOf(L"K"));
        in >> scalar;
        EXPECT_EQ(!in.fail(), row.good);
        EXPECT_EQ(dump(scalar), row.value);
    }
}

TEST(ZetScalar, readingBadUnitsThrows)
{
    std::wistringstream in(L"5 xyz");
    ZetScalar scalar(7.0, unitsOf(L"K"));
    EXPECT_EQ(thrownBy([&] { in >> scalar; }).text(), L"Invalid/unknown units: xyz");
    EXPECT_EQ(dump(scalar), "(7,0) K");
}

TEST(ZetScalar, textReadsBack)
{
    const ZetScopedLocale plainNumbers("C");
    for (const ZetScalar& scalar : {ZetScalar(5.0), ZetScalar(5.0, unitsOf(L"m")), ZetScalar(1.0, 2.0),
                                    ZetScalar(1.0, -2.0, unitsOf(L"kg / m s^2")), ZetScalar(2.0, unitsOf(L"Hz"))}) {
        std::wistringstream in{ZetString(scalar)};
        ZetScalar read(7.0, unitsOf(L"K"));
        in >> read;
        EXPECT_FALSE(in.fail());
        EXPECT_EQ(dump(read), dump(scalar));
    }
}

TEST(ZetScalar, convertUnits)
{
    struct Row
    {
        const wchar_t* scalar;
        const wchar_t* units;
        const char* converted;
    };
    const Row rows[] = {
        {L"5 km", L"m", "(5000,0) m"}, {L"(1,-2) km", L"m", "(1000,-2000) m"},
        {L"1 m", L"m", "(1,0) m"},     {L"36 km/hr", L"m/s", "(10,0) m/s"},
        {L"5", L"", "(5,0)"},
    };
    for (const Row& row : rows) {
        ZetScalar scalar = scalarOf(row.scalar);
        const ZetScalar before = scalar;
        EXPECT_EQ(dump(before.convertUnits(unitsOf(row.units))), row.converted);
        EXPECT_EQ(dump(before), dump(scalar));
        EXPECT_EQ(dump(scalar.convertUnits(unitsOf(row.units))), row.converted);
    }
}

TEST(ZetScalar, arithmetic)
{
    struct Row
    {
        const wchar_t* a;
        char op;
        const wchar_t* b;
        const char* result;
    };
    const Row rows[] = {
        // the left side's units win
        {L"1 km", '+', L"1 m", "(1.001,0) km"},
        {L"1 m", '+', L"1 km", "(1001,0) m"},
        {L"1 m", '+', L"2 m", "(3,0) m"},
        {L"(1,2) m", '+', L"(3,-5) m", "(4,-3) m"},
        {L"(1,2) m", '+', L"(1,1) km", "(1001,1002) m"},
        {L"1", '+', L"2", "(3,0)"},
        {L"1 km", '-', L"500 m", "(0.5,0) km"},
        {L"1 m", '-', L"(0,1) m", "(1,-1) m"},
        {L"2", '*', L"3", "(6,0)"},
        {L"2 m", '*', L"3", "(6,0) m"},
        {L"2", '*', L"3 m", "(6,0) m"},
        {L"2 m", '*', L"3 s", "(6,0) m*s"},
        {L"2 m", '*', L"3 km", "(6000,0) m^2"},
        {L"2 m", '*', L"3 km^-1", "(0.006,0)"},
        {L"(1,2)", '*', L"(3,4)", "(-5,10)"},
        {L"(1,2) m", '*', L"(3,4) km", "(-5000,10000) m^2"},
        {L"(1,2) m", '*', L"2", "(2,4) m"},
        {L"3 m", '/', L"3 m", "(1,0)"},
        {L"3 m", '/', L"3 km", "(0.001,0)"},
        {L"6", '/', L"3", "(2,0)"},
        {L"6 m", '/', L"3", "(2,0) m"},
        {L"6", '/', L"3 s", "(2,0) s^-1"},
        {L"6 m", '/', L"2 s", "(3,0) m/s"},
        {L"(-5,10)", '/', L"(3,4)", "(1,2)"},
        {L"(-5,10) m", '/', L"(3,4) m", "(1,2)"},
        {L"(-5,10) m", '/', L"(3,4) km", "(0.001,0.002)"},
        {L"(-5,10) m", '/', L"(3,4) s", "(1,2) m/s"},
        {L"(2,4) m", '/', L"2", "(1,2) m"},
        {L"7.9", '%', L"3.9", "(1,0)"},
        {L"-7", '%', L"3", "(-1,0)"},
        {L"7", '%', L"-3", "(1,0)"},
        {L"7", '%', L"-1", "(0,0)"},
        // out of the range of 64 bits is the lowest value
        {L"1e300", '%', L"10", "(-8,0)"},
        {L"1e300", '%', L"-1", "(0,0)"},
        {L"10", '%', L"1e300", "(10,0)"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(toMultibyte(row.a) + " " + row.op + " " + toMultibyte(row.b));
        const ZetScalar a = scalarOf(row.a);
        const ZetScalar b = scalarOf(row.b);
        ZetScalar inPlace = a;
        switch (row.op) {
            case '+':
                EXPECT_EQ(dump(a + b), row.result);
                EXPECT_EQ(&(inPlace += b), &inPlace);
                break;
            case '-':
                EXPECT_EQ(dump(a - b), row.result);
                EXPECT_EQ(&(inPlace -= b), &inPlace);
                break;
            case '*':
                EXPECT_EQ(dump(a * b), row.result);
                EXPECT_EQ(&(inPlace *= b), &inPlace);
                break;
            case '/':
                EXPECT_EQ(dump(a / b), row.result);
                EXPECT_EQ(&(inPlace /= b), &inPlace);
                break;
            default:
                EXPECT_EQ(&(inPlace %= b), &inPlace);
                break;
        }
        EXPECT_EQ(dump(inPlace), row.result);
    }
}

TEST(ZetScalar, complexArithmeticIsOnParts)
{
    // no infinity is recovered, and nothing is scaled
    const ZetScalar product = ZetScalar(kInf, kInf) * ZetScalar(1.0, 1.0);
    EXPECT_TRUE(std::isnan(product.real()));
    EXPECT_EQ(product.imag(), kInf);
    const ZetScalar quotient = ZetScalar(1.0, 1.0) / ZetScalar(1e200, 1e200);
    EXPECT_EQ(quotient.real(), 0.0);
    EXPECT_EQ(quotient.imag(), 0.0);
    EXPECT_TRUE(std::isnan((ZetScalar(1e200, 1e200) / ZetScalar(1e200, 1e200)).real()));
}

TEST(ZetScalar, anOperandMayBeTheScalarItself)
{
    const wchar_t* text = L"(3,4) km";
    ZetScalar z = scalarOf(text);
    EXPECT_EQ(dump(z += z), "(6,8) km");
    z = scalarOf(text);
    EXPECT_EQ(dump(z -= z), "(0,0) km");
    z = scalarOf(text);
    EXPECT_EQ(dump(z *= z), "(-7,24) km^2");
    z = scalarOf(text);
    EXPECT_EQ(dump(z /= z), "(1,0)");
    z = ZetScalar(7.0);
    EXPECT_EQ(dump(z %= z), "(0,0)");
    z = ZetScalar(2.0);
    EXPECT_EQ(dump(z.pow(z)), "(4,0)");
    EXPECT_EQ(dump(z.ldexp(z)), "(64,0)");
    EXPECT_EQ(dump(z.logb(z)), "(1,0)");
    z = scalarOf(L"5 km");
    EXPECT_EQ(dump(z.clip(z, z)), "(5,0) km");
    EXPECT_EQ(dump(z.clipmin(z).clipmax(z)), "(5,0) km");
    EXPECT_EQ(dump(z.step(z)), "(0.5,0)");
    EXPECT_EQ(dump(z.rect(z, z)), "(0.5,0)");
    EXPECT_EQ(dump(z.jn(z)), dump(ZetScalar(0.5).jn(ZetScalar(0.0))));
    EXPECT_TRUE(z == z);
}

struct FailureRow
{
    const char* name;
    void (*work)(ZetScalar& own, const ZetScalar& other);
    const wchar_t* own;
    const wchar_t* other;
    const wchar_t* message;
};

void expectFailures(const FailureRow* begin, const FailureRow* end)
{
    for (const FailureRow* row = begin; row != end; ++row) {
        SCOPED_TRACE(std::string(row->name) + " of " + toMultibyte(row->own) + ", " + toMultibyte(row->other));
        ZetScalar own = scalarOf(row->own);
        const ZetScalar before = own;
        const ZetScalar other = scalarOf(row->other);
        const ZetTextMsg thrown = thrownBy([&] { row->work(own, other); });
        EXPECT_EQ(thrown.text(), row->message);
        EXPECT_EQ(thrown.file(), L"ZetScalar");
        EXPECT_EQ(thrown.kind(), ZetTextMsg::Error);
        EXPECT_EQ(dump(own), dump(before));
    }
}

TEST(ZetScalar, conversionMessages)
{
    const FailureRow rows[] = {
        // sums tell the own units first
        {"+=", [](ZetScalar& a, const ZetScalar& b) { a += b; }, L"1 m", L"1 kg",
         L"Cannot convert physical units from 'm' to 'kg'"},
        {"-=", [](ZetScalar& a, const ZetScalar& b) { a -= b; }, L"1 m", L"1 m^2",
         L"Cannot convert physical units from 'm' to 'm^2'"},
        {"+=", [](ZetScalar& a, const ZetScalar& b) { a += b; }, L"1 m", L"1",
         L"Cannot convert physical units from 'm' to ''"},
        // everything else the target first
        {"convertUnits", [](ZetScalar& a, const ZetScalar& b) { a.convertUnits(b.units()); }, L"1 m", L"1 kg",
         L"Cannot convert physical units from 'kg' to 'm'"},
        {"==", [](ZetScalar& a, const ZetScalar& b) { static_cast<void>(a == b); }, L"1 m", L"1 kg",
         L"Cannot convert physical units from 'm' to 'kg'"},
        {"!=", [](ZetScalar& a, const ZetScalar& b) { static_cast<void>(a != b); }, L"1 m", L"1",
         L"Cannot convert physical units from 'm' to ''"},
        {"<", [](ZetScalar& a, const ZetScalar& b) { static_cast<void>(a < b); }, L"1 m", L"1 kg",
         L"Cannot convert physical units from 'm' to 'kg'"},
        {">", [](ZetScalar& a, const ZetScalar& b) { static_cast<void>(a > b); }, L"1 m", L"1 kg",
         L"Cannot convert physical units from 'm' to 'kg'"},
        {"sin", [](ZetScalar& a, const ZetScalar&) { a.sin(); }, L"1 m", L"1",
         L"Cannot convert physical units from 'rad' to 'm'"},
        {"sinc", [](ZetScalar& a, const ZetScalar&) { a.sinc(); }, L"1 m", L"1",
         L"Cannot convert physical units from 'rad' to 'm'"},
        {"clipmin", [](ZetScalar& a, const ZetScalar& b) { a.clipmin(b); }, L"1 m", L"1 kg",
         L"Cannot convert physical units from 'kg' to 'm'"},
        {"clipmax", [](ZetScalar& a, const ZetScalar& b) { a.clipmax(b); }, L"1 m", L"1 kg",
         L"Cannot convert physical units from 'kg' to 'm'"},
        {"clip", [](ZetScalar& a, const ZetScalar& b) { a.clip(b, b); }, L"1 m", L"1 kg",
         L"Cannot convert physical units from 'm' to 'kg'"},
        {"step", [](ZetScalar& a, const ZetScalar& b) { a.step(b); }, L"1 m", L"1 kg",
         L"Cannot convert physical units from 'm' to 'kg'"},
        {"triang", [](ZetScalar& a, const ZetScalar& b) { a.triang(b, b); }, L"1 m", L"1 kg",
         L"Cannot convert physical units from 'm' to 'kg'"},
        {"hypot", [](ZetScalar& a, const ZetScalar& b) { ZetScalar::hypot(a, b); }, L"1 m", L"1 kg",
         L"Cannot convert physical units from 'm' to 'kg'"},
        {"atan2", [](ZetScalar& a, const ZetScalar& b) { ZetScalar::atan2(a, b); }, L"1 m", L"1 kg",
         L"Cannot convert physical units from 'm' to 'kg'"},
        {"fromPolar", [](ZetScalar& a, const ZetScalar& b) { ZetScalar::fromPolar(a, b); }, L"1 m", L"1 kg",
         L"Cannot convert physical units from 'rad' to 'kg'"},
    };
    expectFailures(std::begin(rows), std::end(rows));
}

TEST(ZetScalar, arithmeticFailures)
{
    const FailureRow rows[] = {
        {"/=", [](ZetScalar& a, const ZetScalar& b) { a /= b; }, L"(1,2) m", L"0 m", L"Cannot divide by zero"},
        {"/=", [](ZetScalar& a, const ZetScalar& b) { a /= b; }, L"0", L"-0", L"Cannot divide by zero"},
        {"/=", [](ZetScalar& a, const ZetScalar& b) { a /= b; }, L"1", L"(0,0) kg", L"Cannot divide by zero"},
        {"%=", [](ZetScalar& a, const ZetScalar& b) { a %= b; }, L"(1,2) m", L"3",
         L"Complex values are not valid for '%='"},
        {"%=", [](ZetScalar& a, const ZetScalar& b) { a %= b; }, L"1 m", L"(3,1)",
         L"Complex values are not valid for '%='"},
        {"%=", [](ZetScalar& a, const ZetScalar& b) { a %= b; }, L"7 m", L"3", L"Values must be unit-less for '%='"},
        {"%=", [](ZetScalar& a, const ZetScalar& b) { a %= b; }, L"7", L"3 m", L"Values must be unit-less for '%='"},
        {"<", [](ZetScalar& a, const ZetScalar& b) { static_cast<void>(a < b); }, L"(1,2)", L"3 m",
         L"Complex values are not valid for '<'"},
        {"<", [](ZetScalar& a, const ZetScalar& b) { static_cast<void>(a < b); }, L"1 m", L"(3,1)",
         L"Complex values are not valid for '<'"},
        {">", [](ZetScalar& a, const ZetScalar& b) { static_cast<void>(a > b); }, L"(1,2)", L"3",
         L"Complex values are not valid for '>'"},
        {">", [](ZetScalar& a, const ZetScalar& b) { static_cast<void>(a > b); }, L"1", L"(3,1)",
         L"Complex values are not valid for '>'"},
    };
    expectFailures(std::begin(rows), std::end(rows));
    ZetScalar self(0.0, unitsOf(L"m"));
    EXPECT_EQ(thrownBy([&] { self /= self; }).text(), L"Cannot divide by zero");
    EXPECT_EQ(dump(self), "(0,0) m");
}

TEST(ZetScalarDeathTest, remainderOfZeroIsTheProcessorsFault)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    ZetScalar scalar(7.0);
    EXPECT_DEATH(scalar %= ZetScalar(0.9), "");
}

TEST(ZetScalar, equality)
{
    struct Row
    {
        ZetScalar a;
        ZetScalar b;
        bool equal;
    };
    const ZetUnits m = unitsOf(L"m");
    const ZetUnits km = unitsOf(L"km");
    const double ulp = 0x1p-52;
    const Row rows[] = {
        {1.0, 1.0, true},
        {1.0, 1.0 + 4 * ulp, true},
        {1.0, 1.0 + 5 * ulp, false},
        {-1.0, -1.0 - 4 * ulp, true},
        {-1.0, -1.0 - 5 * ulp, false},
        {1.0, 1.0 - 2 * ulp, true},
        {1.0, 1.0 - 2.5 * ulp, false},
        {0.0, -0.0, true},
        {2 * 5e-324, -2 * 5e-324, true},
        {2 * 5e-324, -3 * 5e-324, false},
        {1.0, -1.0, false},
        {kMax, -kMax, false},
        {kInf, kInf, true},
        {kInf, -kInf, false},
        {-kInf, kInf, false},
        // an infinity is the next number behind the greatest one
        {kInf, kMax, true},
        {0.0, kNaN, false},
        {kNaN, kNaN, false},
        {-kNaN, kNaN, false},
        // the imaginary parts count if either is not 0
        {{1.0, 2.0}, {1.0, 2.0}, true},
        {{1.0, 2.0}, {1.0, 2.0 + 8 * ulp}, true},
        {{1.0, 2.0}, {1.0, 2.0 + 10 * ulp}, false},
        {{1.0, 2.0}, {1.5, 2.0}, false},
        {{1.0, 2.0}, {1.0, 0.0}, false},
        {{1.0, 0.0}, {1.0, -0.0}, true},
        {{1.0, kNaN}, {1.0, kNaN}, false},
        // the other side is converted
        {{1.0, km}, {1000.0, m}, true},
        {{1000.0, m}, {1.0, km}, true},
        {{1.0, m}, {1.0, km}, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(dump(row.a) + " and " + dump(row.b));
        EXPECT_EQ(row.a == row.b, row.equal);
        EXPECT_EQ(row.b == row.a, row.equal);
        EXPECT_EQ(row.a != row.b, !row.equal);
    }
}

TEST(ZetScalar, order)
{
    struct Row
    {
        ZetScalar a;
        ZetScalar b;
        bool less;
        bool greater;
    };
    const ZetUnits m = unitsOf(L"m");
    const ZetUnits km = unitsOf(L"km");
    const Row rows[] = {
        {1.0, 2.0, true, false},
        {2.0, 1.0, false, true},
        {1.0, 1.0, false, false},
        // exact, without the tolerance of equality
        {1.0, 1.0 + 0x1p-52, true, false},
        {0.0, -0.0, false, false},
        {kNaN, 1.0, false, false},
        {{999.0, m}, {1.0, km}, true, false},
        {{1.0, km}, {999.0, m}, false, true},
        {{1.0, -0.0}, {2.0, 0.0}, true, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(dump(row.a) + " and " + dump(row.b));
        EXPECT_EQ(row.a < row.b, row.less);
        EXPECT_EQ(row.a > row.b, row.greater);
    }
}

TEST(ZetScalar, metaObject)
{
    ZetScalar scalar(1.0, 2.0, unitsOf(L"m"));
    EXPECT_EQ(scalar.className(), L"ZetScalar");
    EXPECT_TRUE(scalar.isMetaObject());
    const ZetMetaObjectPtr meta = scalar.metaObject();
    EXPECT_NE(meta.get(), scalar.metaObject().get());
    meta->properties();
    ZetVariant value;
    EXPECT_EQ(meta->getPropertyValue(L"value", value), 0);
    EXPECT_EQ(value.value<Complex>(), Complex(1.0, 2.0));
    EXPECT_EQ(meta->getPropertyValue(L"units", value), 0);
    EXPECT_EQ(value.value<ZetUnits>(), unitsOf(L"m"));
    // one stays when the other is written, and nothing is rescaled
    EXPECT_EQ(meta->setPropertyValue(L"units", ZetVariant(unitsOf(L"km"))), 0);
    EXPECT_EQ(dump(scalar), "(1,2) km");
    EXPECT_EQ(meta->setPropertyValue(L"value", ZetVariant(7.5)), 0);
    EXPECT_EQ(dump(scalar), "(7.5,0) km");
    EXPECT_EQ(meta->setPropertyValue(L"units", ZetVariant(L"kg / s")), 0);
    EXPECT_EQ(dump(scalar), "(7.5,0) kg/s");
    EXPECT_EQ(meta->setPropertyValue(L"none", ZetVariant(1)), 1);
}

TEST(ZetScalar, inVariants)
{
    const ZetVariant variant(ZetScalar(1.0, 2.0, unitsOf(L"m")));
    EXPECT_EQ(variant.type().type(), ZetMetaType::Scalar);
    EXPECT_EQ(variant.value<ZetString>(), L"(1,2) m");
    EXPECT_EQ(variant.value<Complex>(), Complex(1.0, 2.0));
    EXPECT_EQ(variant.value<double>(), 1.0);
    EXPECT_EQ(dump(ZetVariant(L"5 mJ").value<ZetScalar>()), "(5,0) m^2*kg/s^2");
    EXPECT_EQ(dump(ZetVariant(L"5").value<ZetScalar>()), "(5,0)");
    EXPECT_EQ(dump(ZetVariant(Complex(1.0, 2.0)).value<ZetScalar>()), "(1,2)");
    EXPECT_EQ(dump(ZetVariant(2.5).value<ZetScalar>()), "(2.5,0)");
    ZetScalar out;
    EXPECT_TRUE(ZetVariant(L"5").convertTo(&out));
}

}  // namespace
}  // namespace zet

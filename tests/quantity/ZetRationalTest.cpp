#include <zet/ZetRational>

#include <limits>
#include <numeric>
#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetRationalMetaObj>
#include <zet/ZetScalar>

#include "support/ZetPrint"
#include "support/ZetScopedLocale"

namespace zet {
namespace {

using test::ZetScopedLocale;
using I64 = ZetRational<long>;
using U64 = ZetRational<unsigned long>;

constexpr long kMin = std::numeric_limits<long>::min();
constexpr long kMax = std::numeric_limits<long>::max();
constexpr unsigned long kUMax = std::numeric_limits<unsigned long>::max();

TEST(ZetRational, keepsItsFields)
{
    EXPECT_EQ(I64().numerator(), 0);
    EXPECT_EQ(I64().denominator(), 1);
    EXPECT_EQ(I64(7).denominator(), 1);
    I64 rational(6, -4);
    EXPECT_EQ(rational.numerator(), 6);
    EXPECT_EQ(rational.denominator(), -4);
    rational.setNumerator(8);
    rational.setDenominator(0);
    const I64 copy = rational;
    EXPECT_EQ(copy.numerator(), 8);
    EXPECT_EQ(copy.denominator(), 0);
}

TEST(ZetRational, classNames)
{
    EXPECT_EQ(I64().className(), L"ZetRational<ZetI64>");
    EXPECT_EQ(U64().className(), L"ZetRational<ZetU64>");
    EXPECT_EQ(ZetRational<int>().className(), L"ZetRational<int>");
    EXPECT_EQ(ZetRational<unsigned char>().className(), L"ZetRational<unsigned char>");
    EXPECT_EQ(ZetRational<double>().className(), L"ZetRational<double>");
}

TEST(ZetRational, equality)
{
    struct Row
    {
        I64 a;
        I64 b;
        bool equal;
    };
    const Row rows[] = {
        {{2, 4}, {1, 2}, true},
        {{1, 2}, {1, 3}, false},
        {{-1, 2}, {1, -2}, true},
        {{-1, -2}, {1, 2}, true},
        {{-1, 2}, {1, 2}, false},
        {{-6, 4}, {3, -2}, true},
        {{-6, -4}, {3, 2}, true},
        {{4, -6}, {-2, 3}, true},
        // nothing over something, something over nothing, nothing over nothing
        {{0, 5}, {0, 1}, true},
        {{0, 5}, {0, 7}, true},
        {{0, 5}, {0, -7}, true},
        {{5, 0}, {3, 0}, true},
        {{5, 0}, {-3, 0}, true},
        {{0, 0}, {0, 0}, true},
        {{0, 0}, {0, 1}, false},
        {{0, 0}, {1, 0}, false},
        {{0, 0}, {1, 1}, false},
        {{5, 0}, {5, 1}, false},
        // the ends of the range
        {{kMax, kMax}, {1, 1}, true},
        {{kMin, kMin}, {1, 1}, true},
        {{kMin, 0}, {1, 0}, true},
        {{0, kMin}, {0, 1}, true},
        {{kMin, 2}, {kMin / 2, 1}, true},
        {{kMin, -2}, {kMin / -2, 1}, true},
        {{kMin, -1}, {kMin, -1}, true},
        {{kMin, -1}, {kMin, 1}, false},
        {{-1, kMin}, {-1, kMin}, true},
        {{-1, kMin}, {1, kMin}, false},
        {{kMin, -3}, {kMin, -3}, true},
        {{kMin, -3}, {kMin, 3}, false},
        {{kMin, kMax}, {kMin, -kMax}, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.a == row.b, row.equal) << row.a.numerator() << "/" << row.a.denominator() << " and "
                                             << row.b.numerator() << "/" << row.b.denominator();
        EXPECT_EQ(row.b == row.a, row.equal);
        EXPECT_EQ(row.a != row.b, !row.equal);
    }
    EXPECT_TRUE(U64(kUMax, kUMax - 1) == U64(kUMax, kUMax - 1));
    EXPECT_TRUE(U64(kUMax - 1, 2) == U64(kUMax / 2, 1));
    EXPECT_FALSE(U64(kUMax, 1) == U64(1, kUMax));
}

/// The fraction in lowest terms with a positive denominator, by the standard library's divisor.
std::pair<long, long> lowestTerms(long n, long d)
{
    const long g = std::gcd(n, d);
    if (g == 0) {
        return {0, 0};
    }
    const long sign = d < 0 ? -1 : 1;
    return d == 0 ? std::pair<long, long>(1, 0) : std::pair<long, long>(sign * n / g, sign * d / g);
}

TEST(ZetRational, equalityOfAllSmallFractions)
{
    constexpr long limit = 9;
    for (long a = -limit; a <= limit; ++a) {
        for (long b = -limit; b <= limit; ++b) {
            for (long c = -limit; c <= limit; ++c) {
                for (long d = -limit; d <= limit; ++d) {
                    ASSERT_EQ(I64(a, b) == I64(c, d), lowestTerms(a, b) == lowestTerms(c, d))
                        << a << "/" << b << " and " << c << "/" << d;
                }
            }
        }
    }
}

template <class T>
ZetString written(const ZetRational<T>& rational)
{
    std::wostringstream out;
    out << rational;
    return out.str();
}

TEST(ZetRational, writesItsText)
{
    const ZetScopedLocale plainNumbers("C");
    EXPECT_EQ(written(I64(1, 2)), L"(1,2)");
    EXPECT_EQ(written(I64(-6, 4)), L"(-6,4)");
    EXPECT_EQ(written(I64(kMin, kMax)), L"(-9223372036854775808,9223372036854775807)");
    EXPECT_EQ(written(U64(kUMax, 0)), L"(18446744073709551615,0)");
}

TEST(ZetRational, readsItsText)
{
    const ZetScopedLocale plainNumbers("C");
    struct Row
    {
        const wchar_t* text;
        bool good;
        const wchar_t* value;
    };
    const Row rows[] = {
        {L"(1,2)", true, L"(1,2)"},
        {L"x1y2z", true, L"(1,2)"},
        {L" ( 1 , 2 ) rest", true, L"(1,2)"},
        {L"(-6,-4)", true, L"(-6,-4)"},
        {L"(0,0)", true, L"(0,0)"},
        {L"[1;2]", true, L"(1,2)"},
        // a failure leaves the rational
        {L"(1,2", false, L"(7,9)"},
        {L"1,2", false, L"(7,9)"},
        {L"(a,2)", false, L"(7,9)"},
        {L"(1,)", false, L"(7,9)"},
        {L"(9223372036854775808,1)", false, L"(7,9)"},
        {L"", false, L"(7,9)"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(toMultibyte(row.text));
        std::wistringstream in(row.text);
        I64 rational(7, 9);
        in >> rational;
        EXPECT_EQ(!in.fail(), row.good);
        EXPECT_EQ(written(rational), row.value);
    }
    std::wistringstream in(L"(18446744073709551615,3)(1,2)");
    U64 rational;
    in >> rational;
    EXPECT_EQ(written(rational), L"(18446744073709551615,3)");
    in >> rational;
    EXPECT_EQ(written(rational), L"(1,2)");
}

template <class T>
void expectMetaObject(const ZetMetaType::Type travelsAs)
{
    ZetRational<T> rational(3, 4);
    const ZetMetaObjectPtr meta = rational.metaObject();
    ASSERT_TRUE(meta);
    meta->properties();
    ZetVariant value;
    EXPECT_EQ(meta->getPropertyValue(L"denominator", value), 0);
    EXPECT_EQ(value.type().type(), travelsAs);
    EXPECT_EQ(value.value<double>(), 4.0);
    EXPECT_EQ(meta->setPropertyValue(L"numerator", ZetVariant(5)), 0);
    EXPECT_EQ(meta->setPropertyValue(L"denominator", ZetVariant(6.0)), 0);
    EXPECT_EQ(rational.numerator(), T(5));
    EXPECT_EQ(rational.denominator(), T(6));
    EXPECT_EQ(meta->setPropertyValue(L"quotient", ZetVariant(5)), 1);
}

TEST(ZetRational, metaObjects)
{
    expectMetaObject<char>(ZetMetaType::Int);
    expectMetaObject<unsigned char>(ZetMetaType::UInt);
    expectMetaObject<short>(ZetMetaType::Int);
    expectMetaObject<unsigned short>(ZetMetaType::UInt);
    expectMetaObject<int>(ZetMetaType::Int);
    expectMetaObject<unsigned int>(ZetMetaType::UInt);
    expectMetaObject<long>(ZetMetaType::Int64);
    expectMetaObject<unsigned long>(ZetMetaType::UInt64);
    expectMetaObject<float>(ZetMetaType::Double);
    expectMetaObject<double>(ZetMetaType::Double);
    EXPECT_FALSE(internal::rationalMetaObj(nullptr, typeID<bool>()));
}

TEST(ZetRational, inVariants)
{
    const ZetVariant rational(I64(3, 4));
    EXPECT_EQ(rational.type().type(), ZetMetaType::I64Rational);
    EXPECT_EQ(rational.value<ZetScalar>().real(), 0.75);
    EXPECT_EQ(rational.value<ZetString>(), L"(3,4)");
    EXPECT_EQ(ZetVariant(L"(2,4)").value<I64>(), I64(1, 2));
    EXPECT_EQ(ZetVariant(-0.25).value<I64>(), I64(-1, 4));
    EXPECT_EQ(ZetVariant(U64(kUMax, 1)).value<ZetScalar>().real(), 18446744073709551615.0);
    EXPECT_TRUE(rational == ZetVariant(I64(6, 8)));
}

}  // namespace
}  // namespace zet

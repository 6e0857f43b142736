#include <zet/ZetApproximate>

#include <cmath>
#include <limits>
#include <ostream>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace zet {
namespace {

using Ratio = std::pair<long, long>;

constexpr long kMin = std::numeric_limits<long>::min();
constexpr long kMax = std::numeric_limits<long>::max();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

Ratio approximated(double x, long maxDenominator)
{
    Ratio result(77, 77);
    approximate(x, maxDenominator, &result.first, &result.second);
    return result;
}

struct Row
{
    double x;
    long maxDenominator;
    long numerator;
    long denominator;
};

void expectRows(const std::vector<Row>& rows)
{
    for (const Row& row : rows) {
        EXPECT_EQ(approximated(row.x, row.maxDenominator), Ratio(row.numerator, row.denominator))
            << row.x << " within " << row.maxDenominator;
    }
}

// Made with the rational numbers of another language.
TEST(ZetApproximate, nearestFractions)
{
    expectRows({
        {3.141592653589793, 65535, 104348, 33215},
        {2.718281828459045, 65535, 49171, 18089},
        {-1.4142135623730951, 65535, -66922, 47321},
        {0.1, 65535, 1, 10},
        {0.3333333333333333, 65535, 1, 3},
        {-0.25, 65535, -1, 4},
        {0.5, 65535, 1, 2},
        {3.0, 65535, 3, 1},
        {29.97, 65535, 2997, 100},
        {1e-5, 65535, 1, 65535},
        {7.6e-6, 65535, 0, 1},
        {7.7e-6, 65535, 1, 65535},
        {1e-10, 65535, 0, 1},
        {-1e-10, 65535, 0, 1},
        {65535.5, 65535, 131071, 2},
        {123456789.123, 65535, 123456789123, 1000},
        {4503599627370495.5, 65535, 9007199254740991, 2},
        {0.9999999, 65535, 1, 1},
        {1e-300, 65535, 0, 1},
        {5e-324, 65535, 0, 1},
        {3.141592653589793, 2, 3, 1},
        {3.141592653589793, 7, 22, 7},
        {3.141592653589793, 100, 311, 99},
        {3.141592653589793, 113, 355, 113},
        {3.141592653589793, 1000000, 3126535, 995207},
        // every double of a common size is itself a fraction of 64 bits
        {3.141592653589793, kMax, 884279719003555, 281474976710656},
        {0.1, kMax, 3602879701896397, 36028797018963968},
        {0.1, 100000000000000000, 3602879701896397, 36028797018963968},
        {1e-18, kMax, 9, 8999999999999999356},
    });
}

TEST(ZetApproximate, wholeNumbersAndTheEnds)
{
    expectRows({
        {0.0, 65535, 0, 1},
        {-0.0, 65535, 0, 1},
        {-3.0, 65535, -3, 1},
        {1e15, 2, 1000000000000000, 1},
        {0x1p62, 65535, 1L << 62, 1},
        {-0x1p63, 65535, kMin, 1},
        // beyond 64 bits the nearest that there is
        {0x1p63, 65535, kMax, 1},
        {0x1p127, 65535, kMax, 1},
        {1e300, 65535, kMax, 1},
        {-1e300, 65535, kMin, 1},
        {std::numeric_limits<double>::max(), kMax, kMax, 1},
        {kNaN, 65535, 0, 1},
        {kInf, 65535, 1, 0},
        {-kInf, 65535, -1, 0},
    });
}

TEST(ZetApproximate, aLimitOfOneCuts)
{
    for (const long limit : {1L, 0L, -5L, kMin}) {
        expectRows({
            {2.7, limit, 2, 1},
            {-2.7, limit, -2, 1},
            {0.999, limit, 0, 1},
            {1e300, limit, kMax, 1},
            {-1e300, limit, kMin, 1},
            {kNaN, limit, 0, 1},
            {kInf, limit, 1, 0},
            {-kInf, limit, -1, 0},
        });
    }
}

/// The terms of the continued fraction of n / d, by subtraction.
std::vector<long> termsOf(long n, long d)
{
    std::vector<long> terms;
    while (d != 0) {
        long term = 0;
        while (n >= d) {
            n -= d;
            ++term;
        }
        terms.push_back(term);
        std::swap(n, d);
    }
    return terms;
}

/// The fraction with these terms, folded from the last one.
Ratio fold(const std::vector<long>& terms)
{
    Ratio value(terms.back(), 1);
    for (std::size_t i = terms.size() - 1; i-- > 0;) {
        value = Ratio(terms[i] * value.first + value.second, value.first);
    }
    return value;
}

/// The rule in other words: the longest beginning of the terms that stays within the limit, and
/// behind it as much of the next term as does, if that is at least half of it.
Ratio oracle(long n, long d, long limit, bool* halfTerm)
{
    const std::vector<long> terms = termsOf(n, d);
    std::vector<long> taken = {terms[0]};
    std::size_t i = 1;
    for (; i < terms.size(); ++i) {
        taken.push_back(terms[i]);
        if (fold(taken).second > limit) {
            taken.pop_back();
            break;
        }
    }
    *halfTerm = false;
    const Ratio convergent = fold(taken);
    if (i == terms.size()) {
        return convergent;
    }
    long part = 0;
    Ratio semi = convergent;
    for (long t = 1; t <= terms[i]; ++t) {
        taken.push_back(t);
        const Ratio next = fold(taken);
        taken.pop_back();
        if (next.second > limit) {
            break;
        }
        part = t;
        semi = next;
    }
    *halfTerm = 2 * part == terms[i];
    return 2 * part >= terms[i] ? semi : convergent;
}

/// The distance of p / q from n / d, times q * d.
long scaledDistance(Ratio ratio, long n, long d)
{
    return std::labs(ratio.first * d - n * ratio.second);
}

/// Whether no fraction with a denominator within the limit is nearer to n / d.
bool isNearest(Ratio ratio, long n, long d, long limit)
{
    for (long q = 1; q <= limit; ++q) {
        for (long p = n * q / d; p <= n * q / d + 1; ++p) {
            if (scaledDistance({p, q}, n, d) * ratio.second < scaledDistance(ratio, n, d) * q) {
                return false;
            }
        }
    }
    return true;
}

TEST(ZetApproximate, allSmallFractionsAgainstTheOracle)
{
    constexpr long d = 256;
    int halves = 0;
    for (long n = 0; n <= 3 * d; ++n) {
        for (long limit = 2; limit <= 40; ++limit) {
            bool halfTerm = false;
            const Ratio expected = oracle(n, d, limit, &halfTerm);
            const Ratio result = approximated(static_cast<double>(n) / d, limit);
            ASSERT_EQ(result, expected) << n << "/256 within " << limit;
            ASSERT_EQ(approximated(static_cast<double>(-n) / d, limit), Ratio(-expected.first, expected.second));
            halves += halfTerm ? 1 : 0;
            // exactly half of a term may be further off than none of it
            ASSERT_TRUE(halfTerm || isNearest(result, n, d, limit)) << n << "/256 within " << limit;
        }
    }
    EXPECT_GT(halves, 0);
}

}  // namespace
}  // namespace zet

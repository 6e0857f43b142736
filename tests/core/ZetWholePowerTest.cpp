#include "core/ZetWholePower"

#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

namespace zet {
namespace {

using internal::exponentSize;
using internal::wholePower;

/// The products that make a power, written out.
std::string formula(unsigned int exponent)
{
    return wholePower<std::string>("x", exponent, "1",
                                   [](const std::string& a, const std::string& b) { return "(" + a + b + ")"; });
}

TEST(ZetWholePower, hasAFixedOrder)
{
    EXPECT_EQ(formula(0), "1");
    EXPECT_EQ(formula(1), "x");
    EXPECT_EQ(formula(2), "(xx)");
    EXPECT_EQ(formula(3), "(x(xx))");
    EXPECT_EQ(formula(4), "((xx)(xx))");
    EXPECT_EQ(formula(5), "(x((xx)(xx)))");
    EXPECT_EQ(formula(6), "((xx)((xx)(xx)))");
    EXPECT_EQ(formula(7), "((x(xx))((xx)(xx)))");
}

TEST(ZetWholePower, powersOfDoubles)
{
    struct Row
    {
        double base;
        int exponent;
        double power;
    };
    const double inf = std::numeric_limits<double>::infinity();
    const Row rows[] = {
        {2.0, 10, 1024.0},
        {2.0, -1, 0.5},
        {2.0, 1023, 0x1p1023},
        {2.0, 1024, inf},
        {2.0, -1022, 0x1p-1022},
        {-3.0, 3, -27.0},
        {-3.0, 4, 81.0},
        {-3.0, -1, -1.0 / 3.0},
        {0.0, 0, 1.0},
        {0.0, 5, 0.0},
        {-0.0, 5, -0.0},
        {0.0, -2, inf},
        {-0.0, -3, -inf},
        {inf, -1, 0.0},
        {1.0, std::numeric_limits<int>::max(), 1.0},
        {-1.0, std::numeric_limits<int>::min(), 1.0},
        {-1.0, std::numeric_limits<int>::max(), -1.0},
        {2.0, std::numeric_limits<int>::min(), 0.0},
        {std::numeric_limits<double>::quiet_NaN(), 0, 1.0},
    };
    for (const Row& row : rows) {
        const double power = wholePower(row.base, row.exponent);
        EXPECT_EQ(power, row.power) << row.base << "^" << row.exponent;
        EXPECT_EQ(std::signbit(power), std::signbit(row.power)) << row.base << "^" << row.exponent;
    }
    EXPECT_TRUE(std::isnan(wholePower(std::numeric_limits<double>::quiet_NaN(), 3)));
    // against the product of so many factors
    for (int exponent = 1; exponent < 60; ++exponent) {
        double product = 1.0;
        for (int i = 0; i < exponent; ++i) {
            product *= 1.1;
        }
        EXPECT_NEAR(wholePower(1.1, exponent) / product, 1.0, 1e-14);
    }
}

TEST(ZetWholePower, sizesOfExponents)
{
    EXPECT_EQ(exponentSize(7), 7u);
    EXPECT_EQ(exponentSize(-7), 7u);
    EXPECT_EQ(exponentSize(0), 0u);
    EXPECT_EQ(exponentSize(std::numeric_limits<int>::min()), 2147483648u);
}

}  // namespace
}  // namespace zet

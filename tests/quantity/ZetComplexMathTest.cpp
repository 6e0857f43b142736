#include <zet/ZetComplexMath>

#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

namespace zet {
namespace {

using Complex = std::complex<double>;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// Both parts to a few units of their own last place.
void expectNear(const Complex& value, const Complex& expected, double tolerance = 4e-15)
{
    EXPECT_NEAR(value.real(), expected.real(), tolerance * std::fabs(expected.real())) << "real part";
    EXPECT_NEAR(value.imag(), expected.imag(), tolerance * std::fabs(expected.imag())) << "imaginary part";
}

// Computed with 6000 bits by another library.
TEST(ZetComplexMath, inverseFunctions)
{
    struct Row
    {
        Complex z;
        Complex asin;
        Complex acos;
        Complex atan;
    };
    // clang-format off
    const Row rows[] = {
        {{0.3, 0.4}, {0.2806295622918058, 0.4051123371780309}, {1.2901667645030908, -0.4051123371780309}, {0.3373704711117763, 0.37908687234202215}},
        {{-0.3, 0.4}, {-0.2806295622918058, 0.4051123371780309}, {1.8514258890867024, -0.4051123371780309}, {-0.3373704711117763, 0.37908687234202215}},
        {{0.3, -0.4}, {0.2806295622918058, -0.4051123371780309}, {1.2901667645030908, 0.4051123371780309}, {0.3373704711117763, -0.37908687234202215}},
        {{-0.3, -0.4}, {-0.2806295622918058, -0.4051123371780309}, {1.8514258890867024, 0.4051123371780309}, {-0.3373704711117763, -0.37908687234202215}},
        {{0.0, 0.5}, {0.0, 0.48121182505960347}, {1.5707963267948966, -0.48121182505960347}, {0.0, 0.5493061443340549}},
        {{0.0, -2.0}, {0.0, -1.4436354751788103}, {1.5707963267948966, 1.4436354751788103}, {-1.5707963267948966, -0.5493061443340549}},
        {{1.0, 1e-10}, {1.5707863267948967, 1.0000000000083334e-05}, {9.999999999916666e-06, -1.0000000000083334e-05}, {0.7853981633974483, 5e-11}},
        {{1.0, -1e-300}, {1.5707963267948966, -1e-150}, {1e-150, 1e-150}, {0.7853981633974483, -5e-301}},
        {{-1.0, 1e-10}, {-1.5707863267948967, 1.0000000000083334e-05}, {3.1415826535897935, -1.0000000000083334e-05}, {-0.7853981633974483, 5e-11}},
        {{1.0000000000000002, 1e-12}, {1.5707953269059127, 1.0001110284648372e-06}, {9.998889838611141e-07, -1.0001110284648372e-06}, {0.7853981633974484, 4.999999999999999e-13}},
        {{0.9999999999999999, 1e-17}, {1.570796311878662, 6.704104793917589e-10}, {1.491623461654816e-08, -6.704104793917589e-10}, {0.7853981633974483, 5.000000000000001e-18}},
        {{0.9999999999999999, -0.001}, {1.5391761860173452, -0.03162541123996204}, {0.03162014077755154, 0.03162541123996204}, {0.7853984133974482, -0.0004999999166666418}},
        {{1.5, 1e-10}, {1.5707963267054539, 0.9624236501192069}, {8.944271909999159e-11, -0.9624236501192069}, {0.982793723247329, 3.076923076923077e-11}},
        {{-1.5, -1e-10}, {-1.5707963267054539, -0.9624236501192069}, {3.1415926535003504, 0.9624236501192069}, {-0.982793723247329, -3.076923076923077e-11}},
        {{0.7, 1e-12}, {0.775397496610753, 1.4002800840280098e-12}, {0.7953988301841436, -1.4002800840280098e-12}, {0.6107259643892086, 6.711409395973155e-13}},
        {{2.0, 3.0}, {0.5706527843210994, 1.9833870299165355}, {1.0001435424737972, -1.9833870299165355}, {1.4099210495965755, 0.22907268296853878}},
        {{-20.0, 0.01}, {-1.5702957006625555, 3.6882539928315}, {3.1410920274574523, -3.6882539928315}, {-1.5208379435106845, 2.4937649662161726e-05}},
        {{1e-10, 1e-10}, {1e-10, 1e-10}, {1.5707963266948965, -1e-10}, {1e-10, 1e-10}},
        {{0.64, 0.001}, {0.6944975602366097, 0.001301446883698133}, {0.8762987665582869, -0.001301446883698133}, {0.569313513198879, 0.0007094210851422575}},
        {{0.65, 0.001}, {0.7075836961757987, 0.0013159021766323646}, {0.8632126306190978, -0.0013159021766323646}, {0.5763755418158825, 0.0007029876667377569}},
        {{100000000.0, 100000000.0}, {0.7853981633974483, 19.460401514792284}, {0.7853981633974483, -19.460401514792284}, {1.5707963217948966, 5e-09}},
        {{-1e+100, 1e-05}, {-1.5707963267948966, 230.95165647996453}, {3.141592653589793, -230.95165647996453}, {-1.5707963267948966, 1e-205}},
        {{123.0, -4e+50}, {3.0749999999999997e-49, -117.20869619138212}, {1.5707963267948966, 117.20869619138212}, {1.5707963267948966, -2.4999999999999997e-51}},
        {{0.1, 1.4}, {0.05809150919921076, 1.1393562328114666}, {1.5127048175956859, -1.1393562328114666}, {1.4691282847807587, 0.8811572306129709}},
        {{1.1, 0.9}, {0.7609320221001424, 1.043063220277811}, {0.8098643046947542, -1.043063220277811}, {1.0024661056221293, 0.3434807673293359}},
        {{0.99, 1e-09}, {1.4292568534704693, 7.088812050083348e-09}, {0.14153947332442746, -7.088812050083348e-09}, {0.7803730800666359, 5.050249987374375e-10}},
        {{3.0, 1e-300}, {1.5707963267948966, 1.762747174039086}, {3.5355339059327376e-301, -1.762747174039086}, {1.2490457723982544, 1e-301}},
    };
    // clang-format on
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.z));
        expectNear(asin(row.z), row.asin);
        expectNear(acos(row.z), row.acos);
        expectNear(atan(row.z), row.atan);
    }
}

TEST(ZetComplexMath, atanNearItsPoles)
{
    const std::pair<Complex, Complex> rows[] = {
        {{0.0, 0.9999999999999999}, {0.0, 18.714973875118524}},
        {{0.0, 1.5}, {1.5707963267948966, 0.8047189562170501}},
        {{0.0, -1.5}, {-1.5707963267948966, -0.8047189562170501}},
        {{5.0, 0.1}, {1.3734747051912533, 0.0038447509011981192}},
        {{0.001, 0.0499}, {0.0010024958872824818, 0.04994142900471217}},
        {{0.001, 0.051}, {0.0010026074442740587, 0.05104423486722262}},
        {{0.0, 1.0}, {0.0, kInf}},
        {{0.0, -1.0}, {0.0, -kInf}},
    };
    for (const auto& [z, expected] : rows) {
        SCOPED_TRACE(testing::PrintToString(z));
        const Complex value = atan(z);
        EXPECT_NEAR(value.real(), expected.real(), 4e-15);
        if (std::isinf(expected.imag())) {
            EXPECT_EQ(value.imag(), expected.imag());
        } else {
            EXPECT_NEAR(value.imag(), expected.imag(), 1e-14 * std::fabs(expected.imag()));
        }
    }
}

TEST(ZetComplexMath, atanCancelsAtItsPoles)
{
    // KEPT: the distance of r to 1 is lost there, so the angle has the pole's own value
    expectNear(atan({1e-09, 1.0}), {0.7853981633974483, 10.708206508753179});
    expectNear(atan({-1e-09, -1.0}), {-0.7853981633974483, -10.708206508753179});
    EXPECT_NEAR(atan({1e-09, 1.0}).real(), 0.7853981636474483, 3e-10);
}

TEST(ZetComplexMath, realInputStaysReal)
{
    for (const double zero : {0.0, -0.0}) {
        for (const double x : {-1.0, -0.5, 0.0, 0.25, 1.0, 3.0, -7.0, kInf}) {
            SCOPED_TRACE(x);
            const Complex z(x, zero);
            EXPECT_EQ(atan(z), Complex(std::atan(x), 0.0));
            EXPECT_FALSE(std::signbit(atan(z).imag()));
            if (std::fabs(x) <= 1.0) {
                EXPECT_EQ(asin(z), Complex(std::asin(x), 0.0));
                EXPECT_EQ(acos(z), Complex(std::acos(x), 0.0));
            } else {
                EXPECT_TRUE(std::isnan(asin(z).real()));
                EXPECT_TRUE(std::isnan(acos(z).real()));
            }
            EXPECT_EQ(asin(z).imag(), 0.0);
            EXPECT_EQ(acos(z).imag(), 0.0);
        }
    }
}

TEST(ZetComplexMath, aZeroRealPartCountsAsPositive)
{
    for (const double zero : {0.0, -0.0}) {
        expectNear(asin({zero, 0.5}), {0.0, 0.48121182505960347});
        expectNear(acos({zero, 0.5}), {1.5707963267948966, -0.48121182505960347});
    }
}

TEST(ZetComplexMath, squaresLimitTheImaginaryPart)
{
    // KEPT: the square of a part below 1e-154 is 0, and that of one above 1e154 infinite
    EXPECT_EQ(asin({0.5, 1e-200}), Complex(0.5235987755982989, 0.0));
    EXPECT_EQ(acos({0.5, 1e-200}), Complex(1.0471975511965979, 0.0));
    EXPECT_EQ(asin({1e200, 1e200}).imag(), kInf);
    EXPECT_NEAR(asin({1e200, 1e200}).real(), 0.7853981633974483, 1e-15);
    EXPECT_EQ(acos({1e200, 1e200}).imag(), -kInf);
}

TEST(ZetComplexMath, nanStaysNaN)
{
    for (const Complex z : {Complex(kNaN, 1.0), Complex(1.0, kNaN), Complex(kNaN, kNaN)}) {
        for (const Complex value : {asin(z), acos(z), atan(z)}) {
            EXPECT_TRUE(std::isnan(value.real()));
            EXPECT_TRUE(std::isnan(value.imag()));
        }
    }
    EXPECT_TRUE(std::isnan(asin(Complex(kNaN, 0.0)).real()));
}

TEST(ZetComplexMath, randomNumbersAgainstThePlatform)
{
    std::mt19937_64 random(4711);
    std::uniform_real_distribution<double> size(-5.0, 5.0);
    std::bernoulli_distribution sign;
    const auto part = [&] { return std::pow(10.0, size(random)) * (sign(random) ? 1.0 : -1.0); };
    for (int i = 0; i < 20000; ++i) {
        const Complex z(part(), part());
        SCOPED_TRACE(testing::PrintToString(z));
        expectNear(asin(z), std::asin(z), 1e-13);
        expectNear(acos(z), std::acos(z), 1e-13);
        expectNear(atan(z), std::atan(z), 1e-12);
        // and back through the functions that they invert
        const double reach = 1e-12 * (1.0 + std::norm(z));
        EXPECT_LT(std::abs(std::sin(asin(z)) - z), reach);
        EXPECT_LT(std::abs(std::cos(acos(z)) - z), reach);
        if (HasFailure()) {
            break;
        }
    }
}

}  // namespace
}  // namespace zet

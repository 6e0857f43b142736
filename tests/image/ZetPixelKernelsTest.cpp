#include "image/ZetPixelKernels"

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include <zet/ZetDataType>

namespace zet {
namespace internal {
namespace {

TEST(ZetPixelKernels, columnsFollowTheElementTypes)
{
    const int columns[] = {0, 1, 2, 3, 4, 5, -1, -1, 6, 7, -1, -1, -1};
    for (int type = 0; type < 13; ++type) {
        EXPECT_EQ(realColumn(type), columns[type]) << type;
        const bool found = visitElement(realColumn(type), ZetRealTypes(), [type](auto tag) {
            using T = typename decltype(tag)::type;
            EXPECT_EQ(static_cast<int>(sizeof(T)), ZetDataType(static_cast<ZetDataType::Type>(type)).size());
            EXPECT_EQ(columnOf<T>(ZetRealTypes()), realColumn(type));
        });
        EXPECT_EQ(found, columns[type] >= 0) << type;
    }
}

TEST(ZetPixelKernels, theLastBuildIsUsed)
{
    const std::vector<ZetPixelKernelBuild> builds = pixelKernelBuilds();
    EXPECT_STREQ(builds.front().name, "baseline");
    EXPECT_EQ(&pixelKernels(), builds.back().kernels);
    const ZetPixelKernels* const before = usePixelKernels(builds.front().kernels);
    EXPECT_EQ(&pixelKernels(), builds.front().kernels);
    EXPECT_EQ(usePixelKernels(before), builds.front().kernels);
    EXPECT_EQ(&pixelKernels(), before);
}

/// Random bytes as elements: any bits for integers; for floating types numbers of all sizes, and at
/// times any bits at all, NaN, infinities and the least numbers among them.
class Pixels
{
public:
    explicit Pixels(unsigned long seed) : m_random(seed), m_bytes(kCount * 16 + 8) {}

    static constexpr std::size_t kCount = 1777;

    /// Elements of the type in a column, at an address that is no multiple of anything.
    const void* elements(int column)
    {
        unsigned char* at = m_bytes.data() + 3;
        visitElement(column, ZetRealTypes(), [&](auto tag) {
            using T = typename decltype(tag)::type;
            for (std::size_t i = 0; i < 2 * kCount; ++i) {
                T element;
                const unsigned long bits = m_random();
                if (std::is_integral_v<T> || bits % 8 == 0) {
                    const unsigned long more = m_random();
                    std::memcpy(&element, &more, sizeof element);
                } else {
                    const double mantissa = static_cast<double>(bits >> 11) * 0x1p-52 - 1.0;
                    element = static_cast<T>(std::ldexp(mantissa, static_cast<int>(m_random() % 40)));
                }
                if (i * sizeof element + sizeof element <= m_bytes.size() - 3) {
                    std::memcpy(at + i * sizeof element, &element, sizeof element);
                }
            }
        });
        return at;
    }

private:
    std::mt19937_64 m_random;
    std::vector<unsigned char> m_bytes;
};

/// Whether two runs have the same bits, NaN apart: which of two NaN operands a sum hands on is the
/// compiler's choice.
void expectSame(const std::vector<double>& expected, const std::vector<double>& found)
{
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const bool same = std::memcmp(&expected[i], &found[i], sizeof(double)) == 0 ||
                          (std::isnan(expected[i]) && std::isnan(found[i]));
        ASSERT_TRUE(same) << "element " << i << ": " << expected[i] << " and " << found[i];
    }
}

class ZetPixelKernelBuilds : public testing::TestWithParam<ZetPixelKernelBuild>
{
protected:
    static constexpr int kColumns = static_cast<int>(ZetPixelKernels::columns);
    static constexpr std::size_t kCount = Pixels::kCount;

    const ZetPixelKernels& plain() const { return *pixelKernelBuilds().front().kernels; }
    const ZetPixelKernels& build() const { return *GetParam().kernels; }
};

TEST_P(ZetPixelKernelBuilds, combineAsThePlainest)
{
    for (int op = 0; op < kArithmeticCount; ++op) {
        for (int a = 0; a < kColumns; ++a) {
            for (int b = 0; b < kColumns; ++b) {
                Pixels left(static_cast<unsigned long>(op * 100 + a * 10 + b));
                Pixels right(static_cast<unsigned long>(7 + op * 100 + a * 10 + b));
                const void* x = left.elements(a);
                const void* y = right.elements(b);
                std::vector<double> expected(kCount);
                std::vector<double> found(kCount);
                plain().combine[op].left[a].at[b](x, y, expected.data(), kCount);
                build().combine[op].left[a].at[b](x, y, found.data(), kCount);
                SCOPED_TRACE(testing::Message() << "operator " << op << " of " << a << " and " << b);
                expectSame(expected, found);
            }
        }
        for (int shape = 0; shape < kComplexShapeCount; ++shape) {
            Pixels left(static_cast<unsigned long>(op * 100 + shape));
            Pixels right(static_cast<unsigned long>(7 + op * 100 + shape));
            const std::size_t count = kCount / 2;
            const void* x = left.elements(kDoubleColumn);
            const void* y = right.elements(kDoubleColumn);
            std::vector<double> expected(2 * count);
            std::vector<double> found(2 * count);
            plain().complex->combine[op][shape](x, y, expected.data(), count);
            build().complex->combine[op][shape](x, y, found.data(), count);
            SCOPED_TRACE(testing::Message() << "complex operator " << op << " of shape " << shape);
            expectSame(expected, found);
        }
    }
}

/// One operation, rounded to double: through memory, so that no compiler joins it with another one.
double rounded(int op, double x, double y)
{
    volatile double result = op == kAdd ? x + y : op == kSubtract ? x - y : op == kMultiply ? x * y : x / y;
    return result;
}

/// Doubles of all sizes with NaN, infinities, zeros and the least numbers among them.
std::vector<double> doubles(unsigned long seed, std::size_t count)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double special[] = {nan, HUGE_VAL, -HUGE_VAL, 0.0, -0.0, 5e-324, -5e-324, 0x1p-1022, 0x1.fffffffffffffp1023};
    std::mt19937_64 random(seed);
    std::vector<double> values(count);
    for (double& value : values) {
        const unsigned long bits = random();
        const double fraction = static_cast<double>(bits >> 11) * 0x1p-52 - 1.0;
        value = bits % 16 == 0 ? special[bits / 16 % std::size(special)]
                               : std::ldexp(fraction, static_cast<int>(bits / 16 % 64) - 32);
    }
    return values;
}

/// Elements of 8 or 16 bits: the ends of the range, zero, and what lies between.
template <class T>
std::vector<T> smallIntegers(unsigned long seed, std::size_t count)
{
    const T special[] = {std::numeric_limits<T>::min(), std::numeric_limits<T>::max(), 0, 1};
    std::mt19937_64 random(seed);
    std::vector<T> values(count);
    for (T& value : values) {
        const unsigned long bits = random();
        value = bits % 2 == 0 ? special[bits / 2 % 4] : static_cast<T>(bits >> 32);
    }
    return values;
}

TEST_P(ZetPixelKernelBuilds, sumsAndDifferencesOfSmallIntegersAreThoseOfDoubles)
{
    using Small = ZetTypes<signed char, unsigned char, short, unsigned short>;
    constexpr std::size_t count = 1003;
    for (int a = 0; a < 4; ++a) {
        for (int b = 0; b < 4; ++b) {
            visitElement(a, Small(), [&](auto tagA) {
                visitElement(b, Small(), [&](auto tagB) {
                    const auto x = smallIntegers<typename decltype(tagA)::type>(1, count);
                    const auto y = smallIntegers<typename decltype(tagB)::type>(2, count);
                    for (const int op : {kAdd, kSubtract}) {
                        std::vector<double> expected(count);
                        std::vector<double> found(count);
                        for (std::size_t i = 0; i < count; ++i) {
                            expected[i] = rounded(op, x[i], y[i]);
                        }
                        build().combine[op].left[a].at[b](x.data(), y.data(), found.data(), count);
                        SCOPED_TRACE(testing::Message() << "operator " << op << " of " << a << " and " << b);
                        expectSame(expected, found);
                    }
                });
            });
        }
    }
}

TEST_P(ZetPixelKernelBuilds, chainsRoundEachOperation)
{
    constexpr std::size_t count = 523;  // no multiple of a vector
    const std::vector<double> x = doubles(1, count);
    const std::vector<double> y = doubles(2, count);
    const std::vector<double> z = doubles(3, count);
    for (const int numbers : {0, +kNumberX, +kNumberY, +kNumberZ, kNumberX + kNumberZ, kNumberY + kNumberZ}) {
        const auto at = [numbers](const std::vector<double>& run, int flag, std::size_t i) {
            return run[numbers & flag ? 0 : i];
        };
        for (int chain = 0; chain < kArithmeticCount * kArithmeticCount * 2; ++chain) {
            const int first = chain / (2 * kArithmeticCount);
            const int second = chain / 2 % kArithmeticCount;
            const int turned = chain % 2;
            std::vector<double> expected(count);
            for (std::size_t i = 0; i < count; ++i) {
                const double inner = rounded(first, at(x, kNumberX, i), at(y, kNumberY, i));
                const double last = at(z, kNumberZ, i);
                expected[i] = turned ? rounded(second, last, inner) : rounded(second, inner, last);
            }
            for (int place = 0; place < 4; ++place) {  // the result stands apart, or on one operand
                SCOPED_TRACE(testing::Message() << first << " then " << second << (turned ? " turned" : "")
                                                << " numbers " << numbers << " in place " << place);
                std::vector<double> runs[4] = {x, y, z, std::vector<double>(count)};
                std::vector<double>& found = runs[(place + 3) % 4];
                const double* const operands[] = {runs[0].data(), runs[1].data(), runs[2].data()};
                build().chain[first][second][turned][numbers](operands[0], operands[1], operands[2], found.data(),
                                                              count);
                expectSame(expected, found);
            }
        }
    }
}

TEST_P(ZetPixelKernelBuilds, chainsOfComplexNumbersAreTwoOperations)
{
    constexpr std::size_t count = 261;
    const std::vector<double> x = doubles(5, 2 * count);
    const std::vector<double> y = doubles(6, 2 * count);
    const std::vector<double> z = doubles(7, 2 * count);
    for (int first = 0; first < kArithmeticCount; ++first) {
        std::vector<double> inner(2 * count);
        plain().complex->combine[first][kBothComplex](x.data(), y.data(), inner.data(), count);
        for (int second = 0; second < kArithmeticCount; ++second) {
            for (const bool turned : {false, true}) {
                const std::vector<double>& left = turned ? z : inner;
                const std::vector<double>& right = turned ? inner : z;
                std::vector<double> expected(2 * count);
                plain().complex->combine[second][kBothComplex](left.data(), right.data(), expected.data(), count);
                std::vector<double> found = x;  // in the place of an operand
                build().complex->chain[first][second][turned](found.data(), y.data(), z.data(), found.data(), count);
                SCOPED_TRACE(testing::Message() << first << " then " << second << (turned ? " turned" : ""));
                expectSame(expected, found);
            }
        }
    }
}

TEST_P(ZetPixelKernelBuilds, quotientsOfSumsAndDifferences)
{
    for (int column = 0; column < kColumns; ++column) {
        Pixels pixels[] = {Pixels(1UL + static_cast<unsigned long>(column)), Pixels(20), Pixels(30), Pixels(40)};
        const void* const runs[] = {pixels[0].elements(column), pixels[1].elements(column), pixels[2].elements(column),
                                    pixels[3].elements(column)};
        std::vector<double> elements[4] = {};
        for (int i = 0; i < 4; ++i) {
            elements[i].resize(kCount);
            plain().map[kConvert].at[column](runs[i], elements[i].data(), kCount, 0.0, 0.0);
        }
        for (const int first : {kAdd, kSubtract}) {
            for (const int second : {kAdd, kSubtract}) {
                std::vector<double> expected(kCount);
                std::vector<double> found(kCount);
                for (std::size_t i = 0; i < kCount; ++i) {
                    expected[i] = rounded(kDivide, rounded(first, elements[0][i], elements[1][i]),
                                          rounded(second, elements[2][i], elements[3][i]));
                }
                build().quotient[first][second].at[column](runs[0], runs[1], runs[2], runs[3], found.data(), kCount);
                SCOPED_TRACE(testing::Message() << first << " over " << second << " of " << column);
                expectSame(expected, found);
            }
        }
    }
}

TEST_P(ZetPixelKernelBuilds, chainsOfOneRunAndOfAnyLength)
{
    const std::vector<double> x = doubles(4, 70);
    for (std::size_t count = 0; count < x.size(); ++count) {
        std::vector<double> expected = x;
        std::vector<double> found = x;
        for (std::size_t i = 0; i < count; ++i) {
            expected[i] = rounded(kSubtract, x[i], rounded(kMultiply, x[i], x[i]));
        }
        build().chain[kMultiply][kSubtract][1][0](found.data(), found.data(), found.data(), found.data(), count);
        SCOPED_TRACE(count);
        expectSame(expected, found);
    }
}

TEST_P(ZetPixelKernelBuilds, mapAndGatherAsThePlainest)
{
    for (int column = 0; column < kColumns; ++column) {
        Pixels pixels(static_cast<unsigned long>(column));
        const void* x = pixels.elements(column);
        std::vector<double> expected(kCount);
        std::vector<double> found(kCount);
        for (int map = 0; map < kPixelMapCount; ++map) {
            plain().map[map].at[column](x, expected.data(), kCount, -3.5, 100.25);
            build().map[map].at[column](x, found.data(), kCount, -3.5, 100.25);
            SCOPED_TRACE(testing::Message() << "map " << map << " of " << column);
            expectSame(expected, found);
        }
        for (const long stride : {0L, 1L, 2L}) {
            plain().gather[column](x, stride, expected.data(), kCount / 2);
            build().gather[column](x, stride, found.data(), kCount / 2);
            SCOPED_TRACE(testing::Message() << "gather " << column << " by " << stride);
            expectSame(expected, found);
        }
    }
}

TEST_P(ZetPixelKernelBuilds, roundClipAsThePlainest)
{
    const double limits[][2] = {{0.0, 255.0}, {-1e5, 1e5}, {-1e11, 1e11}, {-HUGE_VAL, HUGE_VAL}, {7.5, -7.5}};
    for (int in = 0; in < kColumns; ++in) {
        Pixels pixels(static_cast<unsigned long>(in));
        const void* x = pixels.elements(in);
        for (int out = 0; out < kColumns; ++out) {
            for (const auto& [min, max] : limits) {
                std::vector<unsigned char> expected(kCount * 8);
                std::vector<unsigned char> found(kCount * 8);
                plain().roundClip[in].to[out](x, expected.data(), kCount, min, max);
                build().roundClip[in].to[out](x, found.data(), kCount, min, max);
                EXPECT_EQ(expected, found) << in << " to " << out << " within " << min << " " << max;
            }
        }
    }
}

TEST_P(ZetPixelKernelBuilds, reduceAsThePlainest)
{
    for (int column = 0; column < kColumns; ++column) {
        for (std::size_t count = 0; count < kCount; count = count * 2 + 1) {
            Pixels pixels(static_cast<unsigned long>(column) + count);
            const void* x = pixels.elements(column);
            expectSame({plain().sum.at[column](x, count, 3.0)}, {build().sum.at[column](x, count, 3.0)});
            for (int which = 0; which < kExtremeCount; ++which) {
                expectSame({plain().extreme[which].at[column](x, count, 0.5)},
                           {build().extreme[which].at[column](x, count, 0.5)});
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, ZetPixelKernelBuilds, testing::ValuesIn(pixelKernelBuilds()),
                         [](const auto& build) { return std::string(build.param.name); });

TEST(ZetPixelKernels, noBuildFusesProductsAndSums)
{
    // a*b - c*d with a = b = c = d: exactly 0 when each product is rounded, which a fused one is not
    std::vector<double> squares(64, 1.0 + 0x1p-30);
    std::vector<double> out(64);
    for (const ZetPixelKernelBuild& build : pixelKernelBuilds()) {
        build.kernels->complex->combine[kMultiply][kBothComplex](squares.data(), squares.data(), out.data(), 32);
        for (std::size_t i = 0; i < out.size(); i += 2) {
            EXPECT_EQ(out[i], 0.0) << build.name;
        }
        // a*b - p with p = a*b rounded
        const double square = 1.0 + 0x1p-29;
        std::vector<double> squareRun(64, square);
        build.kernels->chain[kMultiply][kSubtract][0][0](squares.data(), squares.data(), squareRun.data(), out.data(),
                                                         64);
        EXPECT_EQ(out, std::vector<double>(64, 0.0)) << build.name;
    }
}

}  // namespace
}  // namespace internal
}  // namespace zet

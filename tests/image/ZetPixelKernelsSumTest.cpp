#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "image/ZetPixelKernels"
#include "support/ZetEachKernelBuild"

namespace zet {
namespace internal {
namespace {

/// Sums of floating elements are those from left to right, however a build takes them.
class ZetPixelKernelsSum : public test::ZetEachKernelBuild
{
};
ZET_FOR_EACH_KERNEL_BUILD(ZetPixelKernelsSum);

using Random = std::mt19937_64;

double uniform(Random& random)
{
    return static_cast<double>(random() >> 11) * 0x1p-53;
}

double mixed(Random& random)
{
    return 2.0 * uniform(random) - 1.0;
}

/// One of many numbers at most \p most in size, most of them very small, by powers of two.
double spread(Random& random, double most, int powers)
{
    const int power = static_cast<int>(random() % static_cast<unsigned long>(powers));
    return std::ldexp(mixed(random) * most, -power);
}

struct SumRow
{
    const char* name;
    double start;
    double (*element)(Random& random, std::size_t i);
};

const SumRow kRows[] = {
    {"uniform", 0.0, [](Random& random, std::size_t) { return uniform(random); }},
    {"uniform, negative", 0.0, [](Random& random, std::size_t) { return -uniform(random); }},
    {"whole numbers", 0.0, [](Random& random, std::size_t) { return double(random() % 2000); }},
    {"whole numbers and zeros", 5.0, [](Random& random, std::size_t) { return double(random() % 3) * 100.0; }},
    {"zeros of both signs", -0.0, [](Random& random, std::size_t) { return random() % 2 == 0 ? 0.0 : -0.0; }},
    {"zeros after a start", -7.5, [](Random&, std::size_t i) { return i % 2 == 0 ? 0.0 : -0.0; }},
    {"mixed around zero", 0.0, [](Random& random, std::size_t) { return mixed(random); }},
    {"mixed far from zero", 1e6 / 3.0, [](Random& random, std::size_t) { return mixed(random); }},
    {"mixed far below zero", -1e6 / 3.0, [](Random& random, std::size_t) { return mixed(random); }},
    {"mixed with a drift", 0.0, [](Random& random, std::size_t) { return mixed(random) + 0.125; }},
    {"all sizes", 0.0, [](Random& random, std::size_t) { return spread(random, 1.0, 60); }},
    {"all sizes beside a total", 1.5, [](Random& random, std::size_t) { return spread(random, 0x1p-8, 120); }},
    {"rarely a great one", 1.0,
     [](Random& random, std::size_t) { return random() % 200 == 0 ? 1e5 * mixed(random) : uniform(random); }},
    // the total has the unit 2^-52
    {"ties", 1.0, [](Random& random, std::size_t) { return double(random() % 8) * 0x1p-53; }},
    {"ties below zero", -1.0, [](Random& random, std::size_t) { return -double(random() % 8) * 0x1p-53; }},
    {"rare ties", 1.25, [](Random& random, std::size_t) { return random() % 900 == 0 ? 0x3p-53 : 0x1p-50; }},
    {"rare ties of both signs", 1.25,
     [](Random& random, std::size_t) { return random() % 300 == 0 ? 0x3p-53 : mixed(random) * 0x1p-40; }},
    {"almost ties", 1.25, [](Random&, std::size_t i) { return (i % 2 == 0 ? 0x1p-53 : -0x1p-53) * (1.0 + 0x1p-23); }},
    {"half a unit at the lower end of a power", 1.0, [](Random&, std::size_t) { return -0x1p-54; }},
    {"quarters of a unit at the lower end", 1.0 + 0x1p-52, [](Random&, std::size_t) { return -0x3p-55; }},
    {"in steps to the lower end", 1.0 + 0x1.ep-48,
     [](Random&, std::size_t i) { return i % 64 == 40 ? -0x1.6p-52 : 0.0; }},
    // one step of half the power, which shows no rest when it is rounded
    {"half a power and half a unit down", 1.75,
     [](Random& random, std::size_t i) {
         return i % 2000 == 1000 ? -0.5 - 0x1p-53 : i % 2000 == 1900 ? 0.5 : double(random() % 2) * 0x1p-52;
     }},
    {"at the upper end", 2.0 - 0x1p-52, [](Random&, std::size_t i) { return i % 3 == 0 ? 0x1p-53 : -0x1p-55; }},
    {"up and down over a power", 1.0 - 0x1p-10,
     [](Random&, std::size_t i) { return i / 700 % 2 == 0 ? 0x1p-18 : -0x1p-18; }},
    {"falling through many powers", 1e4, [](Random& random, std::size_t) { return -8.0 * uniform(random); }},
    {"least numbers", 0.0, [](Random& random, std::size_t) { return std::ldexp(mixed(random), -1060); }},
    {"least numbers of floats", 0.0, [](Random& random, std::size_t) { return std::ldexp(uniform(random), -140); }},
    {"around the least normal one", 0x1p-1022,
     [](Random& random, std::size_t) { return std::ldexp(mixed(random), -1030); }},
    {"above the least normal ones", 0x1p-1020,
     [](Random& random, std::size_t) { return std::ldexp(mixed(random), -1034); }},
    {"up to the greatest", 0x1.fffffp1023,
     [](Random& random, std::size_t) { return std::ldexp(uniform(random), 1000); }},
    {"beyond the greatest", -0x1.fffffp1023,
     [](Random& random, std::size_t) { return -std::ldexp(uniform(random), 1010); }},
    {"a NaN", 3.0, [](Random& random, std::size_t i) { return i == 1800 ? std::nan("") : uniform(random); }},
    {"an infinity", 3.0, [](Random& random, std::size_t i) { return i == 1800 ? HUGE_VAL : uniform(random); }},
    {"infinities of both signs", 3.0,
     [](Random&, std::size_t i) { return i == 1500   ? HUGE_VAL
                                         : i == 2500 ? -HUGE_VAL
                                                     : 1.0; }},
    {"an infinite start", -HUGE_VAL, [](Random& random, std::size_t) { return uniform(random); }},
    {"any size", 0.0, [](Random& random, std::size_t) { return spread(random, 0x1p1015, 2089); }},
};

/// A number as an element; beyond the range of floats an infinity.
template <class T>
T elementOf(double x)
{
    const bool isTooGreat = std::abs(x) > static_cast<double>(std::numeric_limits<T>::max());
    return isTooGreat ? std::copysign(std::numeric_limits<T>::infinity(), x < 0.0 ? T(-1) : T(1)) : static_cast<T>(x);
}

/// The plain loop: each total passes through memory, so that nothing reorders it.
template <class T>
double sumInOrder(const std::vector<T>& elements, std::size_t first, std::size_t count, double start)
{
    volatile double total = start;
    for (std::size_t i = first; i < first + count; ++i) {
        total = total + static_cast<double>(elements[i]);
    }
    return total;
}

template <class T>
void expectSums(const SumRow& row, unsigned long seed, const std::vector<std::size_t>& counts)
{
    Random random(seed);
    std::vector<T> elements(counts.back() + 3);
    for (std::size_t i = 0; i < elements.size(); ++i) {
        elements[i] = elementOf<T>(row.element(random, i));
    }
    for (const std::size_t count : counts) {
        for (const double start : {row.start, 0.0}) {
            const std::size_t first = count % 4;
            const double expected = sumInOrder(elements, first, count, start);
            const double found =
                pixelKernels().sum.at[columnOf<T>(ZetRealTypes())](elements.data() + first, count, start);
            const bool same =
                std::memcmp(&expected, &found, sizeof found) == 0 || (expected != expected && found != found);
            EXPECT_TRUE(same) << row.name << " of " << sizeof(T) << " bytes, " << count << " elements from " << start
                              << ", seed " << seed << ": " << std::hexfloat << expected << " and " << found;
        }
    }
}

TEST_P(ZetPixelKernelsSum, isThatFromLeftToRight)
{
    for (const SumRow& row : kRows) {
        for (unsigned long seed = 1; seed <= 8; ++seed) {
            expectSums<float>(row, seed, {1024, 1025, 1500, 2047, 3001, 20000});
            expectSums<double>(row, seed, {1024, 1025, 1500, 2047, 3001, 20000});
        }
    }
}

TEST_P(ZetPixelKernelsSum, ofEachLength)
{
    std::vector<std::size_t> counts;
    for (std::size_t count = 0; count <= 600; ++count) {
        counts.push_back(count);
    }
    for (std::size_t count = 1000; count <= 1400; ++count) {
        counts.push_back(count);
    }
    for (const SumRow& row : kRows) {
        expectSums<float>(row, 99, counts);
        expectSums<double>(row, 99, counts);
    }
}

/// Totals that start anywhere, with steps of any size beside them.
TEST_P(ZetPixelKernelsSum, ofRandomScales)
{
    Random random(20261121);
    for (int round = 0; round < 2000; ++round) {
        const int scale = static_cast<int>(random() % 120) - 60;
        const double drift = random() % 2 == 0 ? 0.0 : mixed(random);
        const int powers = 1 + static_cast<int>(random() % 60);
        const double start = mixed(random);
        std::vector<float> floats(1024 + random() % 1500);
        std::vector<double> doubles(floats.size());
        for (std::size_t i = 0; i < floats.size(); ++i) {
            doubles[i] = std::ldexp(drift + spread(random, 1.0, powers), -scale);
            floats[i] = elementOf<float>(doubles[i]);
        }
        const double sums[][2] = {
            {sumInOrder(floats, 0, floats.size(), start),
             pixelKernels().sum.at[kFloatColumn](floats.data(), floats.size(), start)},
            {sumInOrder(doubles, 0, doubles.size(), start),
             pixelKernels().sum.at[kDoubleColumn](doubles.data(), doubles.size(), start)},
        };
        for (const auto& [expected, found] : sums) {
            ASSERT_EQ(expected, found) << "round " << round << ": " << std::hexfloat << expected << " and " << found;
        }
    }
}

}  // namespace
}  // namespace internal
}  // namespace zet

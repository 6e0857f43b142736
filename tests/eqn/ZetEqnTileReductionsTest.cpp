#include <algorithm>
#include <cmath>
#include <random>

#include <gtest/gtest.h>

#include <zet/ZetEqnTile>

#include "support/ZetEachKernelBuild"
#include "support/ZetTilePixels"

namespace zet {
namespace {

using test::elementAt;
using test::isSame;
using test::kInf;
using test::kNan;
using test::ownTile;
using test::Values;
using test::valuesOf;
using test::ZetTilePixels;

class ZetEqnTileReductions : public test::ZetEachKernelBuild
{
};
ZET_FOR_EACH_KERNEL_BUILD(ZetEqnTileReductions);

const double kLeastNormal = 2.2250738585072014e-308;
const double kGreatest = 1.7976931348623157e308;

const ZetDataType::Type kReal[] = {ZetDataType::I8,  ZetDataType::U8,  ZetDataType::I16,   ZetDataType::U16,
                                   ZetDataType::I32, ZetDataType::U32, ZetDataType::Float, ZetDataType::Double};

/// The four reductions, element by element from first to last.
struct Reduced
{
    double sum = 0.0;
    double max = kLeastNormal;
    double min = kGreatest;
    double median = 0.0;
};

Reduced reduced(const ZetEqnTile& tile)
{
    Reduced result;
    std::vector<double> sorted;
    for (unsigned long i = 0; i < tile.size(); ++i) {
        const double x = elementAt(tile, i).real();
        result.sum += x;
        result.max = x > result.max ? x : result.max;
        result.min = x < result.min ? x : result.min;
        sorted.push_back(x);
    }
    std::sort(sorted.begin(), sorted.end(), [](double a, double b) {
        if (std::isnan(a) || std::isnan(b)) {
            return !std::isnan(a) && std::isnan(b);
        }
        return a < b || (a == b && std::signbit(a) && !std::signbit(b));
    });
    const std::size_t n = sorted.size();
    result.median = n == 0 ? 0.0 : sorted[n % 2 != 0 ? n / 2 : n / 2 - 1];
    return result;
}

void expectReduced(const ZetEqnTile& tile, const Reduced& expected)
{
    EXPECT_TRUE(isSame(tile.sum(), expected.sum)) << tile.sum() << " " << expected.sum;
    EXPECT_TRUE(isSame(tile.max(), expected.max)) << tile.max() << " " << expected.max;
    EXPECT_TRUE(isSame(tile.min(), expected.min)) << tile.min() << " " << expected.min;
    EXPECT_TRUE(isSame(tile.median(), expected.median)) << tile.median() << " " << expected.median;
}

TEST_P(ZetEqnTileReductions, everyTypeIncrementAndSize)
{
    for (const ZetDataType::Type type : kReal) {
        for (const unsigned long size : {1UL, 2UL, 3UL, 4UL, 31UL, 64UL, 130UL, 600UL, 5000UL}) {
            for (const long increment : {1L, 2L, 3L, 0L}) {
                SCOPED_TRACE(testing::Message() << "type " << type << " size " << size << " by " << increment);
                const ZetTilePixels pixels(type, valuesOf(type, size, size), increment, size % 3);
                expectReduced(pixels.tile, reduced(pixels.tile));
            }
        }
    }
}

TEST_P(ZetEqnTileReductions, everySizeUpToSeveralVectors)
{
    for (const ZetDataType::Type type : kReal) {
        for (unsigned long size = 1; size <= 270; ++size) {
            SCOPED_TRACE(testing::Message() << "type " << type << " size " << size);
            const ZetTilePixels pixels(type, valuesOf(type, size, 7 * size), 1, size % 9);
            expectReduced(pixels.tile, reduced(pixels.tile));
        }
    }
}

TEST_P(ZetEqnTileReductions, randomElements)
{
    std::mt19937_64 random(20240229);
    for (const ZetDataType::Type type : kReal) {
        const ZetDataType dataType(type);
        for (int round = 0; round < 20; ++round) {
            Values values(1 + random() % 3000);
            for (std::complex<double>& value : values) {
                const double bits = static_cast<double>(random() >> 11);
                value = dataType.isInteger()
                            ? std::floor(bits * 0x1p-53 *
                                         (dataType.physicalMaxValue() + 1.0 - dataType.physicalMinValue())) +
                                  dataType.physicalMinValue()
                            : (bits * 0x1p-53 - 0.5) * std::pow(10.0, double(random() % 30));
            }
            const ZetTilePixels pixels(type, values, 1 + round % 2);
            SCOPED_TRACE(type);
            expectReduced(pixels.tile, reduced(pixels.tile));
        }
    }
}

TEST_P(ZetEqnTileReductions, emptyAndUnserved)
{
    for (const ZetDataType::Type type : kReal) {
        ZetEqnTile typed;
        typed.initialize(type, 0);
        expectReduced(typed, {0.0, kLeastNormal, kGreatest, 0.0});
    }
    const Reduced none = {0.0, 0.0, 0.0, 0.0};
    expectReduced(ZetEqnTile(), none);
    for (const ZetDataType::Type type :
         {ZetDataType::I64, ZetDataType::U64, ZetDataType::ComplexFloat, ZetDataType::ComplexDouble}) {
        expectReduced(ownTile(type, {1.0, 2.0}), none);
        ZetEqnTile typed;
        typed.initialize(type, 0);
        expectReduced(typed, none);
    }
}

TEST_P(ZetEqnTileReductions, maxOfNegatives)
{
    EXPECT_EQ(ownTile(ZetDataType::I8, {-1.0, -2.0}).max(), kLeastNormal);
    EXPECT_EQ(ownTile(ZetDataType::U8, {0.0, 0.0}).max(), kLeastNormal);
    EXPECT_EQ(ownTile(ZetDataType::Double, {-1.0, 5e-324}).max(), kLeastNormal);
    EXPECT_EQ(ownTile(ZetDataType::Float, {-1.0, 1e-45}).max(), 1.401298464324817e-45);
    EXPECT_EQ(ownTile(ZetDataType::I8, {1.0, 2.0}).min(), 1.0);
    EXPECT_EQ(ownTile(ZetDataType::Double, {kInf, kInf}).min(), kGreatest);
    EXPECT_EQ(ownTile(ZetDataType::Double, {kInf, 1.0}).max(), kInf);
    EXPECT_EQ(ownTile(ZetDataType::Double, {-kInf, 1.0}).min(), -kInf);
    EXPECT_EQ(ownTile(ZetDataType::Float, {kInf}).min(), kGreatest);
}

TEST_P(ZetEqnTileReductions, nanIsPassedOver)
{
    for (const ZetDataType::Type type : {ZetDataType::Float, ZetDataType::Double}) {
        for (unsigned long place = 0; place < 300; ++place) {
            Values values(300, 2.0);
            values[place] = kNan;
            values[(place + 150) % 300] = 3.0;
            values[(place + 17) % 300] = 1.0;
            const ZetEqnTile tile = ownTile(type, values);
            EXPECT_EQ(tile.max(), 3.0) << place;
            EXPECT_EQ(tile.min(), 1.0) << place;
            EXPECT_TRUE(std::isnan(tile.sum())) << place;
        }
        expectReduced(ownTile(type, Values(300, kNan)), {kNan, kLeastNormal, kGreatest, kNan});
    }
}

TEST_P(ZetEqnTileReductions, theFirstZeroGivesItsSign)
{
    const std::size_t places[][2] = {{140, 150}, {140, 200}, {31, 64}, {0, 299}, {127, 128}, {298, 299}};
    for (const ZetDataType::Type type : {ZetDataType::Float, ZetDataType::Double}) {
        for (const double first : {0.0, -0.0}) {
            for (const auto& [place, later] : places) {
                SCOPED_TRACE(testing::Message() << "type " << type << " zero at " << place);
                Values values(300, 1.0);
                values[place] = first;
                values[later] = -first;
                values[10] = kNan;
                EXPECT_TRUE(isSame(ownTile(type, values).min(), first));
                EXPECT_TRUE(isSame(ZetTilePixels(type, values, 2).tile.min(), first));
            }
        }
    }
}

TEST_P(ZetEqnTileReductions, sumsBeyondWholeDoublesRunInOrder)
{
    // 2^21 elements of the greatest value pass 2^53, behind which each addition rounds
    const ZetTilePixels pixels(ZetDataType::U32, {4294967295.0});
    const unsigned long size = (1UL << 21) + 5000;
    const ZetEqnTile standing(pixels.tile.buffer(), ZetDataType::U32, size, 0);
    std::vector<unsigned int> elements(size, 4294967295U);
    elements[7] = 12345;
    const ZetEqnTile dense(new ZetBuffer(size * 4, elements.data(), false), ZetDataType::U32, size);
    double expected = 0.0;
    double expectedDense = 0.0;
    for (unsigned long i = 0; i < size; ++i) {
        expected += 4294967295.0;
        expectedDense += static_cast<double>(elements[i]);
    }
    EXPECT_EQ(standing.sum(), expected);
    EXPECT_EQ(dense.sum(), expectedDense);

    std::vector<int> negatives(size * 2, -2147483647 - 1);
    for (std::size_t i = 0; i < negatives.size(); i += 3) {
        negatives[i] = -2147483647;
    }
    double expectedNegatives = 0.0;
    for (const int element : negatives) {
        expectedNegatives += element;
    }
    const ZetEqnTile tile(new ZetBuffer(size * 8, negatives.data(), false), ZetDataType::I32, size * 2);
    EXPECT_EQ(tile.sum(), expectedNegatives);
}

TEST_P(ZetEqnTileReductions, mediansAmongEqualAndCloseElements)
{
    std::mt19937_64 random(3);
    for (const ZetDataType::Type type : kReal) {
        for (const unsigned long size : {63UL, 64UL, 511UL, 512UL, 513UL, 2047UL, 6000UL}) {
            for (const unsigned long kinds : {1UL, 2UL, 3UL, 50UL, 128UL}) {
                Values values(size);
                for (std::complex<double>& value : values) {
                    value = static_cast<double>(random() % kinds);
                }
                SCOPED_TRACE(testing::Message() << "type " << type << " size " << size << " of " << kinds << " kinds");
                expectReduced(ownTile(type, values), reduced(ownTile(type, values)));
                const ZetTilePixels apart(type, values, 3, 1);
                expectReduced(apart.tile, reduced(apart.tile));
            }
        }
    }
}

TEST_P(ZetEqnTileReductions, mediansBesideNanAndInfinitiesOfBothSigns)
{
    const double special[] = {kNan, -kNan, kInf, -kInf, 0.0, -0.0, 5e-324, -kGreatest, kGreatest};
    std::mt19937_64 random(4);
    for (const ZetDataType::Type type : {ZetDataType::Float, ZetDataType::Double}) {
        for (const unsigned long size : {5UL, 300UL, 700UL, 3000UL}) {
            for (const unsigned long rest : {0UL, 3UL, 9UL, 40UL}) {
                Values values(size);
                for (std::complex<double>& value : values) {
                    const unsigned long which = random() % (9 + rest);
                    const double number = std::ldexp(double(random() >> 11) - 0x1p52, -40);
                    value = which < 9 ? special[which] : number;
                    if (type == ZetDataType::Float && std::abs(value.real()) == kGreatest) {
                        value = std::copysign(3.4028234663852886e38, value.real());
                    }
                }
                SCOPED_TRACE(testing::Message() << "type " << type << " size " << size << " and " << rest);
                const ZetEqnTile tile = ownTile(type, values);
                EXPECT_TRUE(isSame(tile.median(), reduced(tile).median)) << tile.median();
            }
        }
    }
    // as many NaN as leave the last number in the middle, and one more
    for (const double nan : {kNan, -kNan}) {
        Values values(2001, nan);
        std::fill_n(values.begin() + 500, 1001, 4.0);
        values[700] = 5.0;
        EXPECT_EQ(ownTile(ZetDataType::Double, values).median(), 5.0);
        EXPECT_EQ(ownTile(ZetDataType::Float, values).median(), 5.0);
        values[600] = nan;
        EXPECT_TRUE(std::isnan(ownTile(ZetDataType::Double, values).median()));
        EXPECT_TRUE(std::isnan(ownTile(ZetDataType::Float, values).median()));
    }
}

TEST_P(ZetEqnTileReductions, median)
{
    EXPECT_EQ(ownTile(ZetDataType::U8, {4.0, 1.0, 3.0, 2.0}).median(), 2.0);
    EXPECT_EQ(ownTile(ZetDataType::U8, {3.0, 1.0, 2.0}).median(), 2.0);
    EXPECT_EQ(ownTile(ZetDataType::I16, {-5.0}).median(), -5.0);
    EXPECT_EQ(ownTile(ZetDataType::Double, {kNan, 7.0, kNan, 8.0}).median(), 8.0);
    EXPECT_TRUE(std::isnan(ownTile(ZetDataType::Float, {kNan, 7.0, kNan}).median()));
    EXPECT_EQ(ownTile(ZetDataType::Float, {kInf, -kInf, -1.0}).median(), -1.0);
    EXPECT_TRUE(isSame(ownTile(ZetDataType::Double, {0.0, -0.0, -0.0}).median(), -0.0));
    EXPECT_TRUE(isSame(ownTile(ZetDataType::Double, {0.0, -0.0, 0.0}).median(), 0.0));
}

}  // namespace
}  // namespace zet

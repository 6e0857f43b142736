#include <zet/ZetRoundClipLoop>

#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include <zet/ZetCoreFunctions>
#include <zet/ZetEqnTile>

#include "eqn/ZetRoundClipRanges"
#include "support/ZetEachKernelBuild"
#include "support/ZetTilePixels"

namespace zet {
namespace {

using test::elementAt;
using test::expectEmpty;
using test::expectTile;
using test::kInf;
using test::kNan;
using test::ownTile;
using test::Values;
using test::valuesOf;
using test::ZetTilePixels;

class ZetRoundClip : public test::ZetEachKernelBuild
{
};
ZET_FOR_EACH_KERNEL_BUILD(ZetRoundClip);

const ZetDataType::Type kReal[] = {ZetDataType::I8,  ZetDataType::U8,  ZetDataType::I16,   ZetDataType::U16,
                                   ZetDataType::I32, ZetDataType::U32, ZetDataType::Float, ZetDataType::Double};

/// The processor's cut to \p bits bits: out of range and NaN give the lowest number.
long cut(double v, int bits)
{
    const double limit = std::ldexp(1.0, bits - 1);
    const double whole = std::trunc(v);
    return whole >= -limit && whole < limit ? static_cast<long>(whole) : std::lround(-limit);
}

/// One element, rule by rule.
double roundClipped(double v, ZetDataType::Type type, double min, double max)
{
    const ZetDataType dataType(type);
    if (min >= v) {
        v = min;
    } else if (v >= max) {
        v = max;
    } else if (dataType.isInteger()) {
        v = dataType.isSigned() && v < 0.0 ? v - 0.5 : v + 0.5;
    }
    switch (type) {
        case ZetDataType::I8:
            return static_cast<signed char>(cut(v, 32));
        case ZetDataType::U8:
            return static_cast<unsigned char>(cut(v, 32));
        case ZetDataType::I16:
            return static_cast<short>(cut(v, 32));
        case ZetDataType::U16:
            return static_cast<unsigned short>(cut(v, 32));
        case ZetDataType::I32:
            return static_cast<double>(cut(v, 32));
        case ZetDataType::U32:
            return static_cast<unsigned int>(cut(v, 64));
        case ZetDataType::Float:
            return static_cast<double>(static_cast<float>(v));
        default:
            return v;
    }
}

struct Limits
{
    double min;
    double max;
};

const Limits kLimits[] = {
    {0.0, 255.0},
    {-1.0, 1.0},
    {-128.0, 127.9},
    {-3.7, 2.6},
    {0.4, 300.0},
    {-1e9, 1e9},
    {-2147483648.0, 2147483647.0},
    {-1e12, 1e12},
    {-1e300, 1e300},
    {-kInf, kInf},
    {0.0, kInf},
    {-kInf, 10.0},
    // limits that meet, cross, or do not compare
    {5.0, 5.0},
    {100.0, -100.0},
    {1e12, -1e12},
    {1e12, 5.0},
    {5.0, -1e12},
    {kNan, 10.0},
    {-10.0, kNan},
    {kNan, kNan},
};

void expectRoundClipped(const ZetEqnTile& tile, ZetDataType::Type out, const Limits& limits)
{
    SCOPED_TRACE(testing::Message() << "type " << tile.dataType().type() << " to " << out << " within " << limits.min
                                    << " " << limits.max << " increment " << tile.increment());
    Values values;
    for (unsigned long i = 0; i < tile.size(); ++i) {
        values.push_back(roundClipped(elementAt(tile, i).real(), out, limits.min, limits.max));
    }
    expectTile(tile.roundclip(out, limits.min, limits.max), out, values);
}

TEST_P(ZetRoundClip, everyPairOfTypes)
{
    for (const ZetDataType::Type in : kReal) {
        for (const long increment : {1L, 2L, 0L}) {
            const ZetTilePixels pixels(in, valuesOf(in, 600, 1), increment, 1);
            for (const ZetDataType::Type out : kReal) {
                for (const Limits& limits : kLimits) {
                    expectRoundClipped(pixels.tile, out, limits);
                }
            }
        }
    }
}

TEST_P(ZetRoundClip, randomDoubles)
{
    std::mt19937_64 random(4711);
    Values values(4000);
    for (std::complex<double>& value : values) {
        const double mantissa = static_cast<double>(random() >> 11) * 0x1p-52 - 1.0;
        value = std::ldexp(mantissa, static_cast<int>(random() % 70));
    }
    const ZetTilePixels pixels(ZetDataType::Double, values);
    for (const ZetDataType::Type out : kReal) {
        for (const Limits& limits : kLimits) {
            expectRoundClipped(pixels.tile, out, limits);
        }
    }
}

TEST_P(ZetRoundClip, examples)
{
    const Values values = {-3.2, 100.5, 300.0};
    expectTile(ownTile(ZetDataType::Double, values).roundclip(ZetDataType::U8, 0.0, 255.0), ZetDataType::U8,
               {0.0, 101.0, 255.0});
    expectTile(ownTile(ZetDataType::Double, {-2.5, 2.5}).roundclip(ZetDataType::I16, -100.0, 100.0), ZetDataType::I16,
               {-3.0, 3.0});
    expectTile(ownTile(ZetDataType::Float, {0.25, -7.0, 7.0}).roundclip(ZetDataType::Float, 0.0, 1.0),
               ZetDataType::Float, {0.25, 0.0, 1.0});
    // a value equal to a limit is the limit, which is cut and not rounded
    expectTile(ownTile(ZetDataType::Double, {9.9, 9.8, 10.0, -9.9}).roundclip(ZetDataType::I8, -9.9, 9.9),
               ZetDataType::I8, {9.0, 10.0, 9.0, -9.0});
    // rounding may leave the range of the type, and what leaves it wraps
    expectTile(ownTile(ZetDataType::Double, {127.6, -128.6}).roundclip(ZetDataType::I8, -128.9, 127.9), ZetDataType::I8,
               {-128.0, 127.0});
    expectTile(ownTile(ZetDataType::Double, {1.0, 500.0}).roundclip(ZetDataType::U8, 0.0, 300.0), ZetDataType::U8,
               {1.0, 44.0});
    expectTile(ownTile(ZetDataType::Double, {-3.2}).roundclip(ZetDataType::U8, -10.0, 300.0), ZetDataType::U8, {254.0});
    expectTile(ownTile(ZetDataType::Double, {-3.2}).roundclip(ZetDataType::U32, -10.0, 300.0), ZetDataType::U32,
               {4294967294.0});
    expectTile(ownTile(ZetDataType::Double, {kNan, 3e9, -3e9}).roundclip(ZetDataType::I32, -1e10, 1e10),
               ZetDataType::I32, {-2147483648.0, -2147483648.0, -2147483648.0});
    expectTile(ownTile(ZetDataType::Double, {kNan, 1e300}).roundclip(ZetDataType::U32, -kInf, kInf), ZetDataType::U32,
               {0.0, 0.0});
    expectTile(ownTile(ZetDataType::Double, {kNan}).roundclip(ZetDataType::Double, 0.0, 1.0), ZetDataType::Double,
               {kNan});
}

TEST_P(ZetRoundClip, nanIsCut)
{
    const double cuts[] = {0.0, 0.0, 0.0, 0.0, -2147483648.0, 0.0, kNan, kNan};
    for (std::size_t i = 0; i < std::size(kReal); ++i) {
        for (const ZetDataType::Type in : {ZetDataType::Float, ZetDataType::Double}) {
            const ZetEqnTile tile = ownTile(in, Values(70, kNan));
            expectTile(tile.roundclip(kReal[i], 1.0, 100.0), kReal[i], Values(70, cuts[i]));
            expectTile(tile.roundclip(kReal[i], -kInf, kInf), kReal[i], Values(70, cuts[i]));
        }
    }
}

TEST_P(ZetRoundClip, keepsTheDepthOfTheType)
{
    const ZetDataType type(ZetDataType::U16, 12);
    const ZetEqnTile result = ownTile(ZetDataType::Double, {5.0}).roundclip(type, 0.0, type.logicalMaxValue());
    EXPECT_EQ(result.dataType(), type);
    EXPECT_EQ(elementAt(result, 0), 5.0);
}

TEST_P(ZetRoundClip, otherTypesAreNotWritten)
{
    const ZetEqnTile doubles = ownTile(ZetDataType::Double, {1.0, 2.0});
    for (const ZetDataType::Type type :
         {ZetDataType::I64, ZetDataType::U64, ZetDataType::ComplexFloat, ZetDataType::ComplexDouble}) {
        const ZetEqnTile to = doubles.roundclip(type, 0.0, 255.0);
        EXPECT_EQ(to.dataType(), ZetDataType(type));
        EXPECT_EQ(to.size(), 2u);
        EXPECT_NE(to.elements<void>(), nullptr);
        const ZetEqnTile from = ownTile(type, {1.0, 2.0}).roundclip(ZetDataType::U8, 0.0, 255.0);
        EXPECT_EQ(from.dataType(), ZetDataType(ZetDataType::U8));
        EXPECT_EQ(from.size(), 2u);
    }
    const ZetEqnTile invalid = doubles.roundclip(ZetDataType(), 0.0, 255.0);
    EXPECT_EQ(invalid.size(), 2u);
    EXPECT_FALSE(invalid.buffer().booleanTest());
    ZetEqnTile typed;
    typed.initialize(ZetDataType::Float, 0);
    expectTile(typed.roundclip(ZetDataType::U8, 0.0, 255.0), ZetDataType::U8, {});
    expectTile(ZetEqnTile().roundclip(ZetDataType::U8, 0.0, 255.0), ZetDataType::U8, {});
    // a size without pixels
    ZetEqnTile sized;
    sized.initialize(ZetDataType(), 3);
    EXPECT_EQ(sized.roundclip(ZetDataType::U8, 0.0, 255.0).size(), 3u);
}

TEST_P(ZetRoundClip, severalRangesGiveTheSame)
{
    for (const ZetDataType::Type type : {ZetDataType::U8, ZetDataType::Double}) {
        for (const long increment : {1L, 2L, 0L}) {
            const ZetTilePixels pixels(type, valuesOf(type, 1000), increment, 1);
            const ZetEqnTile whole = pixels.tile.roundclip(ZetDataType::I16, -50.0, 70.0);
            for (const unsigned long longest : {1UL, 7UL, 999UL, 1000UL, 1001UL}) {
                ZetEqnTile parts;
                parts.initialize(ZetDataType::I16, 1000);
                internal::roundClipInRanges(pixels.tile, parts, -50.0, 70.0, longest);
                EXPECT_TRUE(parts == whole) << longest;
            }
        }
    }
}

TEST_P(ZetRoundClip, theSwitchOfTheLoopsChangesNothing)
{
    const ZetTilePixels pixels(ZetDataType::Double, valuesOf(ZetDataType::Double, 700));
    const bool before = enableParallelLoops(true);
    const ZetEqnTile parallel = pixels.tile.roundclip(ZetDataType::I16, -50.0, 70.0);
    EXPECT_TRUE(enableParallelLoops(false));
    EXPECT_FALSE(useParallelLoops());
    EXPECT_TRUE(pixels.tile.roundclip(ZetDataType::I16, -50.0, 70.0) == parallel);
    enableParallelLoops(before);
}

TEST(ZetRoundClipLoop, handlesTheElementsOfTheRange)
{
    const ZetTilePixels source(ZetDataType::Float, {1.4, 2.5, 3.6, 4.5, 9.0}, 2);
    ZetEqnTile result = ownTile(ZetDataType::U8, {0.0, 0.0, 0.0, 0.0, 0.0});
    const ZetRoundClipLoop<float, unsigned char> loop(&source.tile, &result, 0.0, 4.9);
    loop(ZetBlockedRange1D<int>(3, 1));
    expectTile(result, ZetDataType::U8, {0.0, 3.0, 4.0, 0.0, 0.0});
    loop(ZetBlockedRange1D<int>(5, 4));
    loop(ZetBlockedRange1D<int>(0));
    loop(ZetBlockedRange1D<int>(2, 3));
    expectTile(result, ZetDataType::U8, {0.0, 3.0, 4.0, 0.0, 4.0});
}

}  // namespace
}  // namespace zet

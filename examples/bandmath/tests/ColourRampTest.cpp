#include "ColourRamp"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using bandmath::Colour;
using bandmath::ColourRamp;

/// The lightness L* of CIE 1976, from the luminance of the screen's colour.
double lightness(Colour c)
{
    const auto linear = [](unsigned char byte) {
        const double v = byte / 255.0;
        return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
    };
    const double y = 0.2126 * linear(c.red) + 0.7152 * linear(c.green) + 0.0722 * linear(c.blue);
    return y > 0.008856 ? 116 * std::cbrt(y) - 16 : 903.3 * y;
}

TEST(ColourRamp, endsAreTheStops)
{
    struct Row
    {
        const char* name;
        int low[3], high[3];
    };
    const Row rows[] = {
        {"grey", {0, 0, 0}, {255, 255, 255}},
        {"vegetation", {0xfb, 0xfa, 0xf6}, {0x0b, 0x3a, 0x1f}},
        {"dusk", {0x12, 0x10, 0x3c}, {0xfd, 0xf0, 0x7a}},
    };
    for (const Row& row : rows) {
        const ColourRamp ramp(row.name);
        for (const double beyond : {0.0, 1.0}) {
            const Colour low = ramp.at(-beyond);
            EXPECT_NEAR(low.red, row.low[0], 1) << row.name;
            EXPECT_NEAR(low.green, row.low[1], 1) << row.name;
            EXPECT_NEAR(low.blue, row.low[2], 1) << row.name;
            const Colour high = ramp.at(1 + beyond);
            EXPECT_NEAR(high.red, row.high[0], 1) << row.name;
            EXPECT_NEAR(high.green, row.high[1], 1) << row.name;
            EXPECT_NEAR(high.blue, row.high[2], 1) << row.name;
        }
    }
}

// A picture must not show an edge where the values have none.
TEST(ColourRamp, lightnessRunsOneWayInSmallSteps)
{
    for (const char* name : {"grey", "vegetation", "dusk"}) {
        const ColourRamp ramp(name);
        const double direction = std::string(name) == "vegetation" ? -1 : 1;
        for (int i = 1; i < 256; ++i) {
            const double step = lightness(ramp.at(i / 255.0)) - lightness(ramp.at((i - 1) / 255.0));
            EXPECT_GE(step * direction, -0.35) << name << " " << i;
            EXPECT_LE(step * direction, 2.0) << name << " " << i;
        }
    }
}

TEST(ColourRamp, greyIsGrey)
{
    const Colour c = ColourRamp("grey").at(0.5);
    EXPECT_EQ(c.red, c.green);
    EXPECT_EQ(c.green, c.blue);
    // half the perceived lightness is not half the byte
    EXPECT_NEAR(c.red, 99, 3);
}

TEST(ColourRamp, names)
{
    EXPECT_TRUE(ColourRamp::isKnown("dusk"));
    EXPECT_FALSE(ColourRamp::isKnown("rainbow"));
    EXPECT_EQ(ColourRamp::names(), "grey, vegetation, dusk");
}

}  // namespace

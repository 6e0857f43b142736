// The picture: what its pixels show, and its legend.

#include "Computing"

namespace bandmath::test {

namespace {

class BandmathPictureTest : public RasterTest
{
protected:
    struct Pixel
    {
        int red, green, blue, opacity;
        bool operator==(const Pixel& o) const
        {
            return red == o.red && green == o.green && blue == o.blue && opacity == o.opacity;
        }
    };

    /// Computes "a" with a picture.
    void draw(const std::string& file, const std::vector<std::string>& more)
    {
        std::vector<std::string> arguments = {"-e", "a+0",           "-b", "a=" + file,
                                              "-o", path("out.tif"), "-p", path("out.png")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        m_outcome = compute(arguments);
        m_picture = open(path("out.png"));
        ASSERT_EQ(m_picture->GetRasterCount(), 4);
        EXPECT_STREQ(m_picture->GetDriver()->GetDescription(), "PNG");
    }

    Pixel at(int x, int y)
    {
        unsigned char bytes[4] = {};
        EXPECT_EQ(m_picture->RasterIO(GF_Read, x, y, 1, 1, bytes, 1, 1, GDT_Byte, 4, nullptr, 1, 1, 1, nullptr),
                  CE_None);
        return {bytes[0], bytes[1], bytes[2], bytes[3]};
    }

    int width() const { return m_picture->GetRasterXSize(); }
    int height() const { return m_picture->GetRasterYSize(); }

    Outcome m_outcome = {};
    GDALDatasetUniquePtr m_picture;
};

TEST_F(BandmathPictureTest, givenLimits)
{
    draw(makeRow("in.tif", GDT_Float32, {-1, 0, 10, 11}), {"--stretch", "0,10"});
    EXPECT_EQ(width(), 4);
    EXPECT_EQ(height(), 1);
    EXPECT_EQ(at(0, 0), (Pixel{0, 0, 0, 255}));
    EXPECT_EQ(at(1, 0), (Pixel{0, 0, 0, 255}));
    EXPECT_EQ(at(2, 0), (Pixel{255, 255, 255, 255}));
    EXPECT_EQ(at(3, 0), (Pixel{255, 255, 255, 255}));
    EXPECT_NE(m_outcome.out.find("picture  " + path("out.png") + "\n"), std::string::npos);
    // only the files that were asked for
    EXPECT_EQ(names(), (std::vector<std::string>{"in.tif", "out.png", "out.tif"}));
}

TEST_F(BandmathPictureTest, percentiles)
{
    Numbers values;
    for (int i = 0; i <= 100; ++i) {
        values.push_back(i);
    }
    draw(makeRow("in.tif", GDT_Float32, values), {"--percentiles", "10,90"});
    EXPECT_EQ(at(10, 0).red, 0);
    EXPECT_GT(at(20, 0).red, 0);  // the first steps are darker than a byte can tell
    EXPECT_LT(at(89, 0).red, 255);
    EXPECT_EQ(at(90, 0).red, 255);
}

TEST_F(BandmathPictureTest, oneValueIsTheMiddle)
{
    draw(makeRow("in.tif", GDT_Byte, {5, 5, 5}), {});
    // the middle of the grey ramp in lightness
    EXPECT_NEAR(at(1, 0).red, 99, 3);
}

TEST_F(BandmathPictureTest, pixelsWithoutAValue)
{
    const std::string in = makeRow("in.tif", GDT_Float32, {0, -9, 1}, -9);
    draw(in, {});
    EXPECT_EQ(at(1, 0).opacity, 0);
    EXPECT_EQ(at(2, 0).opacity, 255);
    draw(in, {"--background", "102030"});
    EXPECT_EQ(at(1, 0), (Pixel{0x10, 0x20, 0x30, 255}));
    draw(makeRow("none.tif", GDT_Byte, {3, 3}, 3), {});
    EXPECT_EQ(at(0, 0).opacity, 0);
}

TEST_F(BandmathPictureTest, ramps)
{
    const std::string in = makeRow("in.tif", GDT_Byte, {0, 1});
    draw(in, {"--stretch", "0,1", "--ramp", "vegetation"});
    EXPECT_EQ(at(0, 0), (Pixel{0xfb, 0xfa, 0xf6, 255}));
    EXPECT_EQ(at(1, 0), (Pixel{0x0b, 0x3a, 0x1f, 255}));
    draw(in, {"--stretch", "0,1", "--ramp", "dusk"});
    EXPECT_EQ(at(0, 0), (Pixel{0x12, 0x10, 0x3c, 255}));
}

TEST_F(BandmathPictureTest, aLargeImageIsAveraged)
{
    // Each pixel of the picture covers 4 x 4 of the image: halves of 0 and 8, one quarter no-data.
    RasterPlan plan{64, 32, GDT_Byte};
    Numbers pixels;
    for (int y = 0; y < 32; ++y) {
        for (int x = 0; x < 64; ++x) {
            pixels.push_back(x % 4 == 3 ? 255 : (x < 32 ? 0 : y % 2 * 8));
        }
    }
    plan.bands = {toComplex(pixels)};
    plan.noData = 255;
    draw(make("in.tif", plan), {"--picture-size", "16", "--stretch", "0,8"});
    EXPECT_EQ(width(), 16);
    EXPECT_EQ(height(), 8);
    EXPECT_EQ(at(0, 0), (Pixel{0, 0, 0, 191}));
    EXPECT_NEAR(at(15, 7).red, 99, 3);
    EXPECT_EQ(at(15, 7).opacity, 191);
    // over a background the share of pixels with data shows, and the rest of the background
    draw(path("in.tif"), {"--picture-size", "16", "--stretch", "0,8", "--background", "c80000"});
    EXPECT_EQ(at(0, 0), (Pixel{50, 0, 0, 255}));
}

TEST_F(BandmathPictureTest, thePictureDoesNotDependOnWindows)
{
    RasterPlan plan{50, 70, GDT_Byte};
    Numbers pixels;
    for (int i = 0; i < 50 * 70; ++i) {
        pixels.push_back(i * 37 % 251);
    }
    plan.bands = {toComplex(pixels)};
    const std::string in = make("in.tif", plan);
    draw(in, {"--picture-size", "33"});
    const Numbers whole = read(path("out.png"));
    EXPECT_EQ(width(), 24);
    EXPECT_EQ(height(), 33);
    draw(in, {"--picture-size", "33", "--window", "17"});
    EXPECT_EQ(read(path("out.png")), whole);
}

TEST_F(BandmathPictureTest, legend)
{
    RasterPlan plan{700, 100, GDT_Byte};
    plan.bands = {Complexes(700 * 100, 1.0)};
    draw(make("in.tif", plan), {"--legend", "--stretch", "0,2", "--ramp", "dusk"});
    EXPECT_EQ(width(), 700);
    EXPECT_EQ(height(), 100 + 12 + 14 + 12);
    // white paper at the corners, and the ramp from its low to its high end between the two values
    EXPECT_EQ(at(0, 137), (Pixel{255, 255, 255, 255}));
    const int bar = 12 + 12 + 12;
    EXPECT_EQ(at(bar, 115), (Pixel{0x12, 0x10, 0x3c, 255}));
    EXPECT_EQ(at(bar + 199, 115), (Pixel{0xfd, 0xf0, 0x7a, 255}));
    EXPECT_EQ(at(bar + 200, 115), (Pixel{255, 255, 255, 255}));
    // the equation behind the high value, from the bar of its "+": "a+0"
    const int text = bar + 200 + 3 * 12 + 12;
    EXPECT_EQ(at(text + 12, 112 + 3 * 2), (Pixel{0x33, 0x33, 0x33, 255}));
    EXPECT_EQ(at(text + 12, 112), (Pixel{255, 255, 255, 255}));
    // the low value "0": the top of the digit is three points wide, twice enlarged
    EXPECT_EQ(at(12, 112), (Pixel{255, 255, 255, 255}));
    EXPECT_EQ(at(14, 112), (Pixel{0x33, 0x33, 0x33, 255}));
    EXPECT_EQ(at(19, 113), (Pixel{0x33, 0x33, 0x33, 255}));
    EXPECT_EQ(at(20, 112), (Pixel{255, 255, 255, 255}));
}

}  // namespace

}  // namespace bandmath::test

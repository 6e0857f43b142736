// The program as a whole: the pixels, tables and pictures that it writes, what it prints, and its exit code.

#include <cmath>
#include <filesystem>
#include <fstream>
#include <limits>
#include <set>
#include <sstream>

#include "raster/tests/Program"
#include "raster/tests/Rasters"

namespace stretch {

namespace {

using tools::test::Numbers;
using tools::test::Outcome;
using tools::test::RasterPlan;
using tools::test::runProgram;
using tools::test::toComplex;

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

class StretchProgram : public tools::test::RasterTest
{
protected:
    std::string write(const std::string& name, const std::string& text) const
    {
        std::ofstream(path(name)) << text;
        return path(name);
    }

    std::string contentOf(const std::string& name) const
    {
        std::ostringstream text;
        text << std::ifstream(path(name)).rdbuf();
        return text.str();
    }

    /// The output over a file; the run must succeed.
    Numbers stretched(const std::string& file, const std::vector<std::string>& more = {})
    {
        std::vector<std::string> arguments = {file, path("out.tif")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        m_outcome = runProgram(arguments);
        EXPECT_EQ(m_outcome.code, 0) << m_outcome.err;
        EXPECT_EQ(m_outcome.err, "");
        return read(path("out.tif"));
    }

    /// Whether a run ends with the text, and leaves no file and no change behind.
    void expectFailure(const std::vector<std::string>& arguments, const std::string& text) const
    {
        const std::vector<std::string> before = names();
        const Outcome outcome = runProgram(arguments);
        EXPECT_EQ(outcome.code, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "stretch: " + text + "\n");
        EXPECT_EQ(names(), before);
    }

    /// The words of a line that was printed.
    std::vector<std::string> wordsOfLine(std::size_t number) const
    {
        std::istringstream lines(m_outcome.out);
        std::string line;
        for (std::size_t i = 0; i <= number; ++i) {
            std::getline(lines, line);
        }
        std::istringstream in(line);
        return {std::istream_iterator<std::string>(in), std::istream_iterator<std::string>()};
    }

    static GDALDataType typeOf(const std::string& file) { return open(file)->GetRasterBand(1)->GetRasterDataType(); }

    Outcome m_outcome = {};
};

/// So many of one value.
Numbers times(std::size_t count, double value)
{
    return Numbers(count, value);
}

Numbers joined(Numbers a, const Numbers& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

TEST_F(StretchProgram, spreadsTheWholeRange)
{
    Numbers in;
    Numbers expected;
    for (int v = 10; v <= 109; ++v) {
        in.push_back(v);
        expected.push_back(std::floor((v - 10) * 255.0 / 99.0 + 0.5));
    }
    EXPECT_EQ(stretched(makeRow("in.tif", GDT_Byte, in), {"-p", "0,100"}), expected);
    EXPECT_EQ(typeOf(path("out.tif")), GDT_Byte);
    for (double& v : in) {
        v -= 1000;
    }
    EXPECT_EQ(stretched(makeRow("negative.tif", GDT_Int16, in), {"--percentiles=0,100"}), expected);
}

TEST_F(StretchProgram, cutsAtThePercentiles)
{
    // a hundred pixels: the lowest and the highest stand alone, beyond 2 and 98 percent
    const Numbers in = joined(joined({0}, joined(times(49, 50), times(49, 100))), {255});
    const Numbers expected = joined(joined({0}, joined(times(49, 0), times(49, 255))), {255});
    EXPECT_EQ(stretched(makeRow("in.tif", GDT_Byte, in)), expected);
    EXPECT_EQ(stretched(makeRow("in16.tif", GDT_UInt16, in), {"-t", "U16"})[60], 65535);
    EXPECT_EQ(typeOf(path("out.tif")), GDT_UInt16);
}

TEST_F(StretchProgram, printsStatistics)
{
    stretched(makeRow("in.tif", GDT_Byte, joined(times(50, 10), times(50, 20))));
    EXPECT_EQ(wordsOfLine(0), (std::vector<std::string>{"band", "count", "min", "max", "mean", "variance", "median",
                                                        "mode", "mode", "%", "entropy", "from", "to"}));
    EXPECT_EQ(wordsOfLine(1),
              (std::vector<std::string>{"1", "100", "10", "20", "15", "25", "15", "10", "50", "1", "10", "20"}));
    // the same one thousand lower: the median of the library is an index, that of the program a value
    stretched(makeRow("low.tif", GDT_Int16, joined(times(50, -990), times(50, -980))));
    EXPECT_EQ(wordsOfLine(1), (std::vector<std::string>{"1", "100", "-990", "-980", "-985", "25", "-985", "-990", "50",
                                                        "1", "-990", "-980"}));
}

TEST_F(StretchProgram, pixelsWithoutData)
{
    EXPECT_EQ(stretched(makeRow("in.tif", GDT_Byte, {7, 10, 20, 7}, 7), {"-p", "0,100"}), (Numbers{0, 1, 255, 0}));
    EXPECT_EQ(wordsOfLine(1)[1], "2");
    int has = 0;
    EXPECT_EQ(open(path("out.tif"))->GetRasterBand(1)->GetNoDataValue(&has), 0);
    EXPECT_TRUE(has);

    EXPECT_EQ(stretched(makeRow("none.tif", GDT_Byte, {7, 7}, 7)), (Numbers{0, 0}));
    EXPECT_EQ(wordsOfLine(1)[1], "0");
    EXPECT_EQ(wordsOfLine(1)[2], "-");
}

TEST_F(StretchProgram, wideTypesGoInSteps)
{
    EXPECT_EQ(stretched(makeRow("in.tif", GDT_Float32, {-1, -0.5, 0, kNaN}), {"-p", "0,100"}),
              (Numbers{1, 128, 255, 0}));
    const std::vector<std::string> words = wordsOfLine(1);
    EXPECT_EQ(words[1], "3");
    EXPECT_EQ(words[2], "-1");
    EXPECT_EQ(words[3], "0");
    EXPECT_EQ(words[8], "33.3333");
    EXPECT_EQ(stretched(makeRow("i32.tif", GDT_Int32, {-1000000, 200000, 1000000}), {"-p", "0,100"}),
              (Numbers{0, 153, 255}));
    EXPECT_EQ(stretched(makeRow("one.tif", GDT_Float64, {3.5, 3.5})), (Numbers{255, 255}));
}

TEST_F(StretchProgram, valuesThatDoublesHardlyTellApart)
{
    const std::string near = makeRow("near.tif", GDT_Float64, {1e17, 1e17 + 16, 1e17 + 32});
    EXPECT_EQ(stretched(near, {"-p", "0,100", "--plot", path("p.png")}), (Numbers{0, 128, 255}));
    const std::string tiny = makeRow("tiny.tif", GDT_Float64, {0, 5e-324});
    EXPECT_EQ(stretched(tiny, {"--plot", path("p.png")}), (Numbers{255, 255}));
    const std::string far = makeRow("far.tif", GDT_Float64, {-1e308, 1e308});
    std::filesystem::remove(path("out.tif"));
    expectFailure({far, path("out.tif")}, "The values of '" + far + "', band 1 are too far apart.");
}

TEST_F(StretchProgram, bandsOfOpacityKeepTheirRange)
{
    RasterPlan plan{3, 1, GDT_Byte};
    plan.bands = {toComplex({10, 15, 20}), toComplex({50, 128, 200})};
    const std::string file = make("in.tif", plan);
    GDALDatasetUniquePtr(GDALDataset::Open(file.c_str(), GDAL_OF_RASTER | GDAL_OF_UPDATE))
        ->GetRasterBand(2)
        ->SetColorInterpretation(GCI_AlphaBand);
    EXPECT_EQ(stretched(file, {"-p", "0,100"}), (Numbers{0, 128, 255}));
    EXPECT_EQ(read(path("out.tif"), 2), (Numbers{50, 128, 200}));
    EXPECT_EQ(open(path("out.tif"))->GetRasterBand(2)->GetColorInterpretation(), GCI_AlphaBand);
}

TEST_F(StretchProgram, writesAndReadsTables)
{
    RasterPlan plan{3, 1, GDT_Byte};
    plan.bands = {toComplex({10, 15, 20}), toComplex({0, 100, 250})};
    const std::string file = make("in.tif", plan);
    const std::string lut = path("tables.lut");
    stretched(file, {"-p", "0,100", "--lut", lut});
    const std::string text = contentOf("tables.lut");
    EXPECT_EQ(text.find("{\n    type= l\n    channels= 2\n    length= 256 256\n    zeroOffset= 0 0\n"
                        "    dataType = U8\n}\n0\n"),
              0u);
    // the tables of that raster serve another one
    plan.bands = {toComplex({20, 10, 5}), toComplex({250, 0, 255})};
    EXPECT_EQ(stretched(make("other.tif", plan), {"-l", lut}), (Numbers{255, 0, 0}));
    EXPECT_EQ(read(path("out.tif"), 2), (Numbers{255, 0, 255}));
    EXPECT_EQ(wordsOfLine(1).back(), "-");
    EXPECT_EQ(contentOf("tables.lut"), text);
}

TEST_F(StretchProgram, readsBreakPointsAndOtherTypes)
{
    // turned round; values beyond the last point become what it does
    const std::string turned =
        write("turned.lut", "{type = b channels = 1 length = 2 dataType = U8}\n0 255\n100 0\n$\n");
    EXPECT_EQ(stretched(makeRow("in.tif", GDT_UInt16, {0, 20, 100, 60000}), {"--lut", turned}),
              (Numbers{255, 204, 0, 0}));
    const std::string fractions =
        write("fractions.lut", "{type = l channels = 1 length = 3 zeroOffset = 10 dataType = Float} 0.5 0.25 -1 $");
    EXPECT_EQ(stretched(path("in.tif"), {"--lut", fractions}), (Numbers{0.5, -1, -1, -1}));
    EXPECT_EQ(typeOf(path("out.tif")), GDT_Float32);
}

TEST_F(StretchProgram, tablesThatDoNotServe)
{
    const std::string in = makeRow("in.tif", GDT_Byte, {1, 2, 3});
    const std::string out = path("out.tif");
    const std::string wide = makeRow("wide.tif", GDT_Float32, {1, 2, 3});
    const std::string lut = write("good.lut", "{type = l channels = 1 length = 2 dataType = U8} 1 2 $");
    expectFailure({wide, out, "-l", lut}, "A file of lookup tables serves bands of one type of up to 16 bits only.");
    expectFailure({wide, out, "-l", path("new.lut")},
                  "A file of lookup tables serves bands of one type of up to 16 bits only.");
    expectFailure({in, out, "-l", lut, "-p", "1,99"},
                  "The tables of '" + lut + "' leave nothing to do for --percentiles.");
    const std::string two = write("two.lut", "{type = l channels = 2 length = 1 1 dataType = U8} 1 $ 2 $");
    expectFailure({in, out, "-l", two}, "'" + two + "' has 2 tables, and the raster 1 bands.");
    const std::string doubles = write("doubles.lut", "{type = l channels = 1 length = 1 dataType = Double} 1 $");
    expectFailure({in, out, "-l", doubles},
                  "The tables of '" + doubles + "' are of the type Double, which does not tell how many there are.");
    const std::string none = write("none.lut", "{type = l channels = 0}");
    expectFailure({in, out, "-l", none}, "'" + none + "' has no entries.");
    const std::string cut = write("cut.lut", "{type = l channels = 1 length = 3 dataType = U8} 1 2 $");
    expectFailure({in, out, "-l", cut}, "'" + cut + "' is no file of lookup tables: Missing lut value");
    const std::string text = write("text.lut", "nothing\n");
    expectFailure({in, out, "-l", text},
                  "'" + text + "' is no file of lookup tables: Unable to find the begin-of-header token '{'.");
}

TEST_F(StretchProgram, rastersThatCannotBeStretched)
{
    const std::string out = path("out.tif");
    RasterPlan plan{2, 1, GDT_CFloat32};
    const std::string complex = make("complex.tif", plan);
    expectFailure({complex, out}, "The pixels of '" + complex + "', band 1 are complex, and have no order to stretch.");
    const std::string coloured = makeRow("coloured.tif", GDT_Byte, {0, 1});
    {
        GDALColorTable colours;
        const GDALColorEntry red = {255, 0, 0, 255};
        colours.SetColorEntry(1, &red);
        GDALDatasetUniquePtr(GDALDataset::Open(coloured.c_str(), GDAL_OF_RASTER | GDAL_OF_UPDATE))
            ->GetRasterBand(1)
            ->SetColorTable(&colours);
    }
    expectFailure({coloured, out},
                  "The pixels of '" + coloured + "', band 1 are numbers of a colour table, not brightness.");
    const std::string text = write("text.txt", "no raster\n");
    expectFailure({text, out}, "Cannot open '" + text + "': `" + text + "' not recognized as a supported file format.");
    const std::string in = makeRow("in.tif", GDT_Byte, {1, 2, 3});
    expectFailure({in, path("no/out.tif")}, "Cannot write '" + path("no/out.tif") + "': No such file or directory.");
    expectFailure({in, out, "--plot", path("no/p.png")},
                  "Cannot write '" + path("no/p.png") + "': No such file or directory.");
    expectFailure({in, path("out.unknown")},
                  "No driver of GDAL that can write piece by piece serves the extension of '" + path("out.unknown") +
                      "'; name one with -f.");
}

TEST_F(StretchProgram, aFullDiskLeavesNothing)
{
    const std::string in = make("in.tif", RasterPlan{300, 300, GDT_Byte});
    const std::vector<std::string> before = names();
    tools::test::Surroundings full;
    full.fileSizeLimit = 4096;
    const Outcome outcome = runProgram({in, path("out.tif"), "--lut", path("t.lut"), "--plot", path("p.png")}, full);
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err.find("stretch: Cannot write '"), 0u) << outcome.err;
    EXPECT_EQ(names(), before);
}

TEST_F(StretchProgram, aFileThatIsCutOff)
{
    RasterPlan plan{100, 100, GDT_Byte};
    plan.bands = {toComplex(times(10000, 9))};
    const std::string in = make("in.tif", plan);
    std::filesystem::resize_file(in, 5000);
    const std::vector<std::string> before = names();
    const Outcome outcome = runProgram({in, path("out.tif"), "--plot", path("p.png")});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err.find("stretch: Cannot read the pixels of '" + in + "', band 1: "), 0u) << outcome.err;
    EXPECT_EQ(names(), before);
}

TEST_F(StretchProgram, commandLinesThatAreWrong)
{
    const std::string in = makeRow("in.tif", GDT_Byte, {1, 2, 3});
    const std::string out = path("out.tif");
    const std::vector<std::string> lines[] = {
        {in},
        {in, out, "-p", "98,2"},
        {in, out, "-p", "2"},
        {in, out, "-p", "2,101"},
        {in, out, "-t", "Float"},
        {in, out, "--plot", out},
        {in, out, "--plot", path("./out.tif")},
        {in, ""},
        {in, out, "--lut", path("a"), "--plot", path("a")},
    };
    for (const std::vector<std::string>& line : lines) {
        const std::vector<std::string> before = names();
        const Outcome outcome = runProgram(line);
        EXPECT_EQ(outcome.code, 1);
        EXPECT_EQ(outcome.err.find("PARSE ERROR: "), 0u) << outcome.err;
        EXPECT_EQ(names(), before);
    }
}

TEST_F(StretchProgram, draws)
{
    RasterPlan plan{100, 1, GDT_Byte};
    plan.bands = {toComplex(joined(times(50, 60), times(50, 180))), toComplex(joined(times(99, 10), {200}))};
    stretched(make("in.tif", plan), {"--plot", path("plot.png")});
    const GDALDatasetUniquePtr picture = open(path("plot.png"));
    ASSERT_TRUE(picture);
    ASSERT_EQ(picture->GetRasterXSize(), 1280);
    ASSERT_EQ(picture->GetRasterYSize(), 70 + 2 * 380);
    ASSERT_EQ(picture->GetRasterCount(), 4);
    std::vector<unsigned char> pixels(1280 * 830 * 4);
    ASSERT_EQ(picture->RasterIO(GF_Read, 0, 0, 1280, 830, pixels.data(), 1280, 830, GDT_Byte, 4, nullptr, 4, 1280 * 4,
                                1, nullptr),
              CE_None);
    std::set<unsigned> upper;
    for (std::size_t i = 0; i < 1280 * 450; ++i) {
        const unsigned char* const p = &pixels[4 * i];
        ASSERT_EQ(p[3], 255);
        upper.insert(p[0] * 65536u + p[1] * 256u + p[2]);
    }
    // paper, bars of a band without colour, the curve and the marks at the ends
    for (const unsigned colour : {0xffffffu, 0xb5bcc4u, 0x1d2b3au, 0xc8553du}) {
        EXPECT_EQ(upper.count(colour), 1u) << std::hex << colour;
    }
}

TEST_F(StretchProgram, page)
{
    RasterPlan plan{64, 64, GDT_UInt16};
    plan.bands.resize(2);
    for (int i = 0; i < 64 * 64; ++i) {
        const double wave = std::floor(200 * (1 + std::sin(i * 0.013)));
        plan.bands[0].emplace_back(1200 + wave + i % 64);
        plan.bands[1].emplace_back(900 + 3 * (i / 64) + i % 7);
    }
    make("scene.tif", plan);
    write("turned.lut",
          "# dark becomes bright\n"
          "{ type = b  channels = 1  length = 2  dataType = U8 }\n"
          "900 255\n"
          "1700 0\n"
          "$\n");
    followPage();
}

}  // namespace

}  // namespace stretch

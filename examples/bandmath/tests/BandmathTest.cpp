// What bandmath computes and writes, against values computed here.

#include <ogr_spatialref.h>

#include <cmath>
#include <fstream>
#include <limits>

#include "Computing"

namespace bandmath::test {

namespace {

class BandmathTest : public RasterTest
{
protected:
    /// The output of an equation over one band "a".
    Numbers over(const std::string& file, const std::string& equation, const std::vector<std::string>& more = {})
    {
        return read(outputOver(file, equation, more));
    }

    std::string outputOver(const std::string& file, const std::string& equation,
                           const std::vector<std::string>& more = {})
    {
        std::vector<std::string> arguments = {"-e", equation, "-b", "a=" + file, "-o", path("out.tif")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        m_outcome = compute(arguments);
        return path("out.tif");
    }

    static GDALDataType typeOf(const std::string& file) { return open(file)->GetRasterBand(1)->GetRasterDataType(); }

    static std::optional<double> noDataOf(const std::string& file)
    {
        int has = 0;
        const double value = open(file)->GetRasterBand(1)->GetNoDataValue(&has);
        return has ? std::optional<double>(value) : std::nullopt;
    }

    Outcome m_outcome = {};
};

const double kNan = std::numeric_limits<double>::quiet_NaN();
const double kInfinity = std::numeric_limits<double>::infinity();

/// Equal values, NaN being equal to itself.
void expectSame(const Numbers& actual, const Numbers& expected, const std::string& what = "")
{
    ASSERT_EQ(actual.size(), expected.size()) << what;
    for (std::size_t i = 0; i < actual.size(); ++i) {
        if (std::isnan(expected[i])) {
            EXPECT_TRUE(std::isnan(actual[i])) << what << " at " << i << ": " << actual[i];
        } else {
            EXPECT_EQ(actual[i], expected[i]) << what << " at " << i;
        }
    }
}

/// Numbers that look random and are the same everywhere.
Numbers scattered(std::size_t count, unsigned seed, unsigned modulus)
{
    Numbers result;
    for (std::size_t i = 0; i < count; ++i) {
        seed = seed * 1664525u + 1013904223u;
        result.push_back(seed / 65536 % modulus);
    }
    return result;
}

// ---- windows -------------------------------------------------------------------------------------

TEST_F(BandmathTest, valuesDoNotDependOnStorageOrWindows)
{
    constexpr int kWidth = 131;
    constexpr int kHeight = 67;
    const Numbers red = scattered(kWidth * kHeight, 1, 4000);
    const Numbers nir = scattered(kWidth * kHeight, 2, 4000);
    Numbers expected;
    for (std::size_t i = 0; i < red.size(); ++i) {
        expected.push_back((nir[i] - red[i]) / (nir[i] + red[i]));
    }
    const std::vector<std::pair<std::string, std::string>> storages[] = {
        {},
        {{"BLOCKYSIZE", "5"}},
        {{"TILED", "YES"}, {"BLOCKXSIZE", "32"}, {"BLOCKYSIZE", "16"}},
        {{"INTERLEAVE", "PIXEL"}, {"COMPRESS", "DEFLATE"}},
    };
    for (const auto& storage : storages) {
        RasterPlan plan{kWidth, kHeight, GDT_UInt16};
        plan.bands = {toComplex(red), toComplex(nir)};
        plan.creation = storage;
        const std::string in = make("in.tif", plan);
        for (const std::vector<std::string>& window :
             {std::vector<std::string>{}, {"--window", "1"}, {"--window", "50"}, {"--window", "1000"}, {"--whole"}}) {
            std::vector<std::string> arguments = {"-e", "(nir - red) / (nir + red)", "-b", "red=" + in + ":1",
                                                  "-b", "nir=" + in + ":2",          "-o", path("out.tif")};
            arguments.insert(arguments.end(), window.begin(), window.end());
            compute(arguments);
            expectSame(read(path("out.tif")), expected, window.empty() ? "" : window.back());
        }
    }
}

TEST_F(BandmathTest, bandsOfSeveralFiles)
{
    const std::string a = makeRow("a.tif", GDT_Byte, {1, 2, 3});
    const std::string b = makeRow("b.tif", GDT_Float32, {0.5, 0.25, -8});
    compute({"-e", "a*b", "-b", "a=" + a, "-b", "b=" + b + ":1", "-o", path("o.tif")});
    expectSame(read(path("o.tif")), {0.5, 0.5, -24});
}

TEST_F(BandmathTest, memoryStaysBoundedWhateverTheSize)
{
    RasterPlan plan{8192, 8192, GDT_Byte};
    plan.creation = {{"SPARSE_OK", "TRUE"}, {"TILED", "YES"}};
    const std::string in = make("large.tif", plan);
    setenv("GDAL_CACHEMAX", "16", 1);
    const Outcome outcome = compute({"-e", "a+b*2", "-b", "a=" + in, "-b", "b=" + in, "-o", path("out.tif"), "-t", "U8",
                                     "--co", "COMPRESS=DEFLATE"});
    unsetenv("GDAL_CACHEMAX");
    // One band of doubles alone is 512 MiB.
    EXPECT_LT(outcome.peakKilobytes, 200 * 1024);
    EXPECT_NE(outcome.out.find("count    67108864\n"), std::string::npos) << outcome.out;
}

// ---- element types -------------------------------------------------------------------------------

struct TypeRow
{
    const char* name;
    GDALDataType type;
    Numbers values;
    bool computes;  // whether arithmetic with a number serves it
};

const TypeRow kTypes[] = {
    {"U8", GDT_Byte, {0, 1, 254, 255}, true},
    {"I16", GDT_Int16, {-32768, -1, 0, 32767}, true},
    {"U16", GDT_UInt16, {0, 1, 40000, 65535}, true},
    {"I32", GDT_Int32, {-2147483648.0, -1, 0, 2147483647}, true},
    {"U32", GDT_UInt32, {0, 1, 3000000000.0, 4294967295.0}, true},
    {"I64", GDT_Int64, {-9007199254740992.0, -1, 0, 9007199254740992.0}, false},
    {"U64", GDT_UInt64, {0, 1, 2, 9007199254740992.0}, false},
    {"Float", GDT_Float32, {-1.5, 0, 0.25, 16777216}, true},
    {"Double", GDT_Float64, {-1e300, 0, 0.1, 1e300}, true},
};

TEST_F(BandmathTest, realTypesInAndOut)
{
    for (const TypeRow& row : kTypes) {
        SCOPED_TRACE(row.name);
        const std::string in = makeRow("in.tif", row.type, row.values);
        // a band as it is keeps its type and its pixels
        expectSame(over(in, "a"), row.values);
        EXPECT_EQ(typeOf(path("out.tif")), row.type);
        EXPECT_NE(m_outcome.out.find(std::string(", ") + row.name + "\n"), std::string::npos) << m_outcome.out;
        // what is computed is a double
        if (row.computes) {
            Numbers expected;
            for (const double value : row.values) {
                expected.push_back(value / 2 - 1);
            }
            expectSame(over(in, "a / 2 - 1"), expected);
            EXPECT_EQ(typeOf(path("out.tif")), GDT_Float64);
        }
    }
}

TEST_F(BandmathTest, signedBytes)
{
    RasterPlan plan{4, 1, GDT_Byte};
    plan.bands = {toComplex({128, 255, 0, 127})};
    plan.creation = {{"PIXELTYPE", "SIGNEDBYTE"}};
    const std::string in = make("in.tif", plan);
    expectSame(over(in, "a*1"), {-128, -1, 0, 127});
    // and back: bytes that are noted to be signed
    const std::string real = makeRow("real.tif", GDT_Float32, {-3.5, -200, 200, 126.5});
    expectSame(over(real, "a", {"-t", "I8"}), {252, 128, 127, 127});
    EXPECT_STREQ(open(path("out.tif"))->GetRasterBand(1)->GetMetadataItem("PIXELTYPE", "IMAGE_STRUCTURE"),
                 "SIGNEDBYTE");
}

TEST_F(BandmathTest, complexTypes)
{
    const Complexes values = {{3, 4}, {0, -1}, {-2, 0}};
    struct Row
    {
        GDALDataType type;
        GDALDataType copied;
    };
    // complex whole numbers are read as ComplexDouble
    for (const Row row : {Row{GDT_CInt16, GDT_CFloat64}, Row{GDT_CInt32, GDT_CFloat64}, Row{GDT_CFloat32, GDT_CFloat32},
                          Row{GDT_CFloat64, GDT_CFloat64}}) {
        RasterPlan plan{3, 1, row.type};
        plan.bands = {values};
        const std::string in = make("in.tif", plan);
        EXPECT_EQ(readComplex(outputOver(in, "a")), values);
        EXPECT_EQ(typeOf(path("out.tif")), row.copied);
        EXPECT_EQ(readComplex(outputOver(in, "a*a")), (Complexes{{-7, 24}, {-1, 0}, {4, 0}}));
        EXPECT_EQ(typeOf(path("out.tif")), GDT_CFloat64);
        EXPECT_EQ(readComplex(outputOver(in, "a*a", {"-t", "ComplexFloat"})), (Complexes{{-7, 24}, {-1, 0}, {4, 0}}));
        EXPECT_EQ(typeOf(path("out.tif")), GDT_CFloat32);
    }
    RasterPlan plan{3, 1, GDT_CFloat64};
    plan.bands = {values};
    const std::string in = make("in.tif", plan);
    expectSame(over(in, "norm(a)"), {25, 1, 4});
    EXPECT_EQ(typeOf(path("out.tif")), GDT_Float64);
    // the statistics are those of the modulus
    outputOver(in, "a");
    EXPECT_NE(m_outcome.out.find("minimum  1\nmaximum  5\nmean     2.666666667\n"), std::string::npos) << m_outcome.out;
    // real pixels in a complex file
    const std::string real = makeRow("real.tif", GDT_Byte, {1, 2, 3});
    EXPECT_EQ(readComplex(outputOver(real, "a+1", {"-t", "ComplexDouble"})), (Complexes{{2, 0}, {3, 0}, {4, 0}}));
}

TEST_F(BandmathTest, roundingAndLimits)
{
    struct Row
    {
        const char* type;
        std::vector<std::string> limits;
        Numbers in;
        Numbers out;
    };
    const Row rows[] = {
        {"U8", {}, {-3.2, 100.5, 300, 0.49, 254.6}, {0, 101, 255, 0, 255}},
        {"I16", {}, {-2.5, 2.5, -40000, 40000, -2.4}, {-3, 3, -32768, 32767, -2}},
        {"U16", {"--min", "10", "--max", "20"}, {9, 10.4, 19.5, 21, kInfinity}, {10, 10, 20, 20, 20}},
        {"I32", {}, {-1e10, 1e10, -0.5, 0.5, 7}, {-2147483648.0, 2147483647, -1, 1, 7}},
        {"U32", {}, {-1, 1e10, 0.5, 4294967294.6, 7}, {0, 4294967295.0, 1, 4294967295.0, 7}},
        // floating types are not rounded, and clipped only when asked to
        {"Float", {}, {-3.25, 1e9, kInfinity, -kInfinity, 0.5}, {-3.25, 1e9, kInfinity, -kInfinity, 0.5}},
        {"Float", {"--min", "0", "--max", "1"}, {-3.25, 0.25, 9, kInfinity, -kInfinity}, {0, 0.25, 1, 1, 0}},
        {"Double", {"--max", "1"}, {-3.25, 0.1, 9, kInfinity, -1e300}, {-3.25, 0.1, 1, 1, -1e300}},
    };
    for (const Row& row : rows) {
        std::vector<std::string> more = {"-t", row.type};
        more.insert(more.end(), row.limits.begin(), row.limits.end());
        expectSame(over(makeRow("in.tif", GDT_Float64, row.in), "a", more), row.out, row.type);
    }
}

TEST_F(BandmathTest, aNumberFillsTheImage)
{
    const std::string in = makeRow("in.tif", GDT_Byte, {1, 2, 3});
    expectSame(over(in, "2*21"), {42, 42, 42});
    EXPECT_EQ(typeOf(path("out.tif")), GDT_Float64);
    expectSame(over(in, "1<2", {"-t", "U8"}), {1, 1, 1});
    expectSame(over(in, "sqrt(4)"), {2, 2, 2});
    EXPECT_EQ(readComplex(outputOver(in, "sqrt(-4)")), Complexes(3, {0, 2}));
    expectSame(over(in, "m_pi"), Numbers(3, 3.141592653589793));
}

// ---- the equation --------------------------------------------------------------------------------

TEST_F(BandmathTest, definitionsAndConstants)
{
    const std::string in = makeRow("in.tif", GDT_Byte, {1, 2, 3});
    expectSame(over(in, "k*a + c; k = 2*c; c = 10"), {30, 50, 70});
    expectSame(over(in, "a*pi"), {3.141592653589793, 2 * 3.141592653589793, 3 * 3.141592653589793});
    expectSame(over(in, "a\n+\n1"), {2, 3, 4});
}

TEST_F(BandmathTest, noWindowSeesTheDefinitionsOfTheOneBefore)
{
    // "k" stands behind "c" in the text and is computed before it, so "c" has no value yet.
    const std::string in = makeRow("in.tif", GDT_Byte, {1, 2, 3, 4});
    expectSame(over(in, "a*0 + (k ? 1 : 2); c = 1; k = c == 1", {"--window", "1"}), {2, 2, 2, 2});
    expectSame(over(in, "a*0 + (k ? 1 : 2); c = 1; k = c == 1", {"--window", "4"}), {2, 2, 2, 2});
}

TEST_F(BandmathTest, aNameOfAConstantMayBeABand)
{
    const std::string in = makeRow("in.tif", GDT_Byte, {1, 2, 3});
    compute({"-e", "pi+0", "-b", "pi=" + in, "-o", path("out.tif")});
    expectSame(read(path("out.tif")), {1, 2, 3});
}

TEST_F(BandmathTest, reductionsOverTheWholeImage)
{
    RasterPlan plan{2, 3, GDT_Byte};
    plan.bands = {toComplex({1, 2, 3, 4, 5, 9})};
    const std::string in = make("in.tif", plan);
    expectSame(over(in, "a - mean(a)", {"--whole"}), {-3, -2, -1, 0, 1, 5});
    expectSame(over(in, "median(a)", {"--whole"}), Numbers(6, 3));
    // an image of one window needs no --whole
    expectSame(over(in, "a/sum(a)*24"), {1, 2, 3, 4, 5, 9});
    // several arguments of "max" fold pixel by pixel
    expectSame(over(in, "max(a,3)", {"--window", "2"}), {3, 3, 3, 4, 5, 9});
}

// ---- no-data -------------------------------------------------------------------------------------

TEST_F(BandmathTest, noDataOfAnyBandIsNoDataOfTheOutput)
{
    const std::string a = makeRow("a.tif", GDT_Int16, {-99, 2, 3, 4}, -99);
    const std::string b = makeRow("b.tif", GDT_Byte, {1, 255, 3, 4}, 255);
    const std::string c = makeRow("c.tif", GDT_Float32, {1, 2, 3, kNan}, kNan);
    const Outcome outcome =
        compute({"-e", "a+b", "-b", "a=" + a, "-b", "b=" + b, "-b", "c=" + c, "-o", path("out.tif")});
    expectSame(read(path("out.tif")), {kNan, kNan, 6, kNan});
    EXPECT_TRUE(std::isnan(noDataOf(path("out.tif")).value()));
    EXPECT_EQ(outcome.out, path("out.tif") +
                               ": 4 x 1, Double\n"
                               "count    1\nminimum  6\nmaximum  6\nmean     6\n"
                               "no data  3\n");
}

TEST_F(BandmathTest, noDataOfEveryType)
{
    for (const TypeRow& row : kTypes) {
        const double noData = row.values[1];
        const std::string in = makeRow("in.tif", row.type, row.values, noData);
        outputOver(in, "a", {"-n", "7"});
        Numbers expected = row.values;
        expected[1] = 7;
        expectSame(read(path("out.tif")), expected, row.name);
        EXPECT_EQ(noDataOf(path("out.tif")), 7.0) << row.name;
        EXPECT_NE(m_outcome.out.find("count    3\n"), std::string::npos) << m_outcome.out;
    }
}

TEST_F(BandmathTest, noDataOfSignedBytesAndComplexPixels)
{
    RasterPlan bytes{3, 1, GDT_Byte};
    bytes.bands = {toComplex({255, 1, 128})};
    bytes.noData = -1;
    bytes.creation = {{"PIXELTYPE", "SIGNEDBYTE"}};
    expectSame(over(make("in.tif", bytes), "a*2"), {kNan, 2, -256});

    RasterPlan complexes{3, 1, GDT_CFloat32};
    complexes.bands = {{{-9, 0}, {1, 2}, {3, -9}}};
    complexes.noData = -9;
    EXPECT_EQ(readComplex(outputOver(make("in.tif", complexes), "a", {"-n", "0"})),
              (Complexes{{0, 0}, {1, 2}, {3, -9}}));
}

TEST_F(BandmathTest, noDataOfFloatsIsComparedAsFloat)
{
    // -3.4e38 is no float; the file holds the nearest one
    const std::string in = makeRow("in.tif", GDT_Float32, {-3.4e38, 1, 2}, -3.4e38);
    expectSame(over(in, "a+1", {"-n", "-1"}), {-1, 2, 3});
}

TEST_F(BandmathTest, maskOfAFileCountsAsNoData)
{
    const std::string in = makeRow("in.tif", GDT_Byte, {1, 2, 3});
    {
        const GDALDatasetUniquePtr dataset(GDALDataset::Open(in.c_str(), GDAL_OF_RASTER | GDAL_OF_UPDATE));
        ASSERT_EQ(dataset->CreateMaskBand(GMF_PER_DATASET), CE_None);
        unsigned char mask[] = {255, 0, 255};
        ASSERT_EQ(dataset->GetRasterBand(1)->GetMaskBand()->RasterIO(GF_Write, 0, 0, 3, 1, mask, 3, 1, GDT_Byte, 0, 0,
                                                                     nullptr),
                  CE_None);
    }
    expectSame(over(in, "a+1"), {2, kNan, 4});
}

// Four-band images often call their fourth band alpha, whatever it is.
TEST_F(BandmathTest, anAlphaBandIsNoMask)
{
    RasterPlan plan{2, 1, GDT_Byte};
    plan.bands = {toComplex({1, 2}), toComplex({0, 255})};
    plan.creation = {{"ALPHA", "YES"}};
    const std::string in = make("in.tif", plan);
    expectSame(over(in + ":1", "a+1"), {2, 3});
    EXPECT_FALSE(noDataOf(path("out.tif")));
}

TEST_F(BandmathTest, integerOutputsTakeTheEndOfTheirRange)
{
    const std::string in = makeRow("in.tif", GDT_Float32, {-9, 1000, -1000, 5}, -9);
    struct Row
    {
        const char* type;
        double noData;
        Numbers out;
    };
    // the limits leave the no-data value out
    const Row rows[] = {
        {"U8", 255, {255, 254, 0, 5}},
        {"I16", -32768, {-32768, 1000, -1000, 5}},
        {"U16", 65535, {65535, 1000, 0, 5}},
        {"I32", -2147483648.0, {-2147483648.0, 1000, -1000, 5}},
        {"U32", 4294967295.0, {4294967295.0, 1000, 0, 5}},
    };
    for (const Row& row : rows) {
        expectSame(over(in, "a", {"-t", row.type}), row.out, row.type);
        EXPECT_EQ(noDataOf(path("out.tif")), row.noData) << row.type;
    }
    // limits that are asked for stay, and what falls on no-data is told
    expectSame(over(in, "a", {"-t", "U8", "--max", "255"}), {255, 255, 0, 5});
    EXPECT_EQ(m_outcome.err, "bandmath: warning: 1 valid pixels equal the no-data value; choose another with -n.\n");
    expectSame(over(in, "a", {"-t", "U8", "-n", "0"}), {0, 255, 1, 5});
    expectSame(over(in, "a", {"-t", "U8", "-n", "5"}), {5, 255, 0, 5});
    EXPECT_EQ(m_outcome.err, "bandmath: warning: 1 valid pixels equal the no-data value; choose another with -n.\n");
}

TEST_F(BandmathTest, noNoDataWithoutNeed)
{
    const std::string in = makeRow("in.tif", GDT_Byte, {1, 2});
    outputOver(in, "a+1");
    EXPECT_FALSE(noDataOf(path("out.tif")));
    outputOver(in, "a+1", {"-t", "U8", "-n", "9"});
    EXPECT_EQ(noDataOf(path("out.tif")), 9.0);
}

TEST_F(BandmathTest, pixelsWithoutAValue)
{
    const std::string in = makeRow("in.tif", GDT_Byte, {0, 2, 4});
    // in a floating output they stay what they are, and are not counted
    expectSame(over(in, "a/a"), {kNan, 1, 1});
    EXPECT_EQ(m_outcome.out,
              path("out.tif") + ": 3 x 1, Double\ncount    2\nminimum  1\nmaximum  1\nmean     1\nno value 1\n");
    EXPECT_EQ(m_outcome.err, "");
    // with a no-data value they become that
    expectSame(over(in, "a/a", {"-t", "U8", "-n", "200"}), {200, 1, 1});
    expectSame(over(in, "a/a", {"-n", "-1"}), {-1, 1, 1});
    // without one, in an integer output, they are told about
    expectSame(over(in, "a/a", {"-t", "I16", "--min", "-5"}), {-5, 1, 1});
    EXPECT_EQ(m_outcome.err,
              "bandmath: warning: pixels without a value (NaN) were written as the least value; give a no-data value "
              "with -n to tell them apart.\n");
    // an infinity is a value
    expectSame(over(in, "1/a"), {kInfinity, 0.5, 0.25});
    EXPECT_NE(m_outcome.out.find("count    3\nminimum  0.25\nmaximum  inf\n"), std::string::npos) << m_outcome.out;
}

TEST_F(BandmathTest, nothingButNoData)
{
    const std::string in = makeRow("in.tif", GDT_Byte, {7, 7}, 7);
    expectSame(over(in, "a*2"), {kNan, kNan});
    EXPECT_EQ(m_outcome.out, path("out.tif") + ": 2 x 1, Double\ncount    0\nno data  2\n");
}

// ---- georeference and storage --------------------------------------------------------------------

TEST_F(BandmathTest, georeferenceIsKept)
{
    const std::string in = makeRow("in.tif", GDT_Byte, {1, 2, 3});
    double transform[6] = {440720.5, 28.5, 0.25, 3751320, -0.125, -28.5};
    OGRSpatialReference reference;
    ASSERT_EQ(reference.importFromEPSG(32618), OGRERR_NONE);
    {
        const GDALDatasetUniquePtr dataset(GDALDataset::Open(in.c_str(), GDAL_OF_RASTER | GDAL_OF_UPDATE));
        dataset->SetGeoTransform(transform);
        dataset->SetSpatialRef(&reference);
    }
    const GDALDatasetUniquePtr out = open(outputOver(in, "a*2"));
    double kept[6] = {};
    ASSERT_EQ(out->GetGeoTransform(kept), CE_None);
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(kept[i], transform[i]) << i;
    }
    ASSERT_TRUE(out->GetSpatialRef());
    EXPECT_TRUE(out->GetSpatialRef()->IsSame(&reference));
}

TEST_F(BandmathTest, controlPointsAreKept)
{
    const std::string in = makeRow("in.tif", GDT_Byte, {1, 2, 3});
    OGRSpatialReference reference;
    ASSERT_EQ(reference.importFromEPSG(4326), OGRERR_NONE);
    {
        const GDALDatasetUniquePtr dataset(GDALDataset::Open(in.c_str(), GDAL_OF_RASTER | GDAL_OF_UPDATE));
        GDAL_GCP points[3];
        GDALInitGCPs(3, points);
        for (int i = 0; i < 3; ++i) {
            points[i].dfGCPPixel = i;
            points[i].dfGCPX = 10 + i;
            points[i].dfGCPY = 50 - i * i;
        }
        ASSERT_EQ(dataset->SetGCPs(3, points, &reference), CE_None);
        GDALDeinitGCPs(3, points);
    }
    const GDALDatasetUniquePtr out = open(outputOver(in, "a*2"));
    ASSERT_EQ(out->GetGCPCount(), 3);
    EXPECT_EQ(out->GetGCPs()[2].dfGCPX, 12);
    EXPECT_EQ(out->GetGCPs()[2].dfGCPY, 46);
    ASSERT_TRUE(out->GetGCPSpatialRef());
}

TEST_F(BandmathTest, aTiledImageGivesATiledImage)
{
    RasterPlan plan{600, 500, GDT_Byte};
    plan.creation = {{"TILED", "YES"}, {"BLOCKXSIZE", "128"}, {"BLOCKYSIZE", "64"}};
    int width = 0;
    int height = 0;
    open(outputOver(make("in.tif", plan), "a+1"))->GetRasterBand(1)->GetBlockSize(&width, &height);
    EXPECT_EQ(width, 128);
    EXPECT_EQ(height, 64);
    // unless another storage is asked for
    open(outputOver(path("in.tif"), "a+1", {"--co", "TILED=NO", "--co", "BLOCKYSIZE=20", "--co", "COMPRESS=LZW"}))
        ->GetRasterBand(1)
        ->GetBlockSize(&width, &height);
    EXPECT_EQ(width, 600);
    EXPECT_EQ(height, 20);
}

TEST_F(BandmathTest, otherFormatsWithAllTheirFiles)
{
    const std::string in = makeRow("in.tif", GDT_Byte, {1, 2, 3});
    compute({"-e", "a+1", "-b", "a=" + in, "-o", path("out.dat"), "-f", "ENVI"});
    EXPECT_EQ(names(), (std::vector<std::string>{"in.tif", "out.dat", "out.hdr"}));
    expectSame(read(path("out.dat")), {2, 3, 4});
    compute({"-e", "a+1", "-b", "a=" + in, "-o", path("out.img")});
    expectSame(read(path("out.img")), {2, 3, 4});
    EXPECT_STREQ(open(path("out.img"))->GetDriver()->GetDescription(), "HFA");
}

TEST_F(BandmathTest, theOutputMayReplaceAnInput)
{
    const std::string in = makeRow("in.tif", GDT_Byte, {1, 2, 3});
    compute({"-e", "a+1", "-b", "a=" + in, "-o", in});
    expectSame(read(in), {2, 3, 4});
    EXPECT_EQ(names(), std::vector<std::string>{"in.tif"});
}

TEST_F(BandmathTest, aSymbolicLinkStaysOne)
{
    const std::string in = makeRow("in.tif", GDT_Byte, {1, 2, 3});
    std::filesystem::create_symlink("target.tif", path("link.tif"));
    compute({"-e", "a+1", "-b", "a=" + in, "-o", path("link.tif")});
    EXPECT_TRUE(std::filesystem::is_symlink(path("link.tif")));
    expectSame(read(path("target.tif")), {2, 3, 4});
}

TEST_F(BandmathTest, aLinkToTheOutputIsNoPlaceForThePicture)
{
    const std::string in = makeRow("in.tif", GDT_Byte, {1, 2, 3});
    std::filesystem::create_symlink("out.tif", path("link.tif"));
    const Outcome outcome = runProgram({"-e", "a", "-b", "a=" + in, "-o", path("out.tif"), "-p", path("link.tif")});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_NE(outcome.err.find("The picture and the output are one file"), std::string::npos) << outcome.err;
    EXPECT_EQ(names(), (std::vector<std::string>{"in.tif", "link.tif"}));
}

// GDAL would take them for statistics, masks and overviews of the new file.
TEST_F(BandmathTest, whatStoodBesideAnOlderOutputGoes)
{
    const std::string in = makeRow("in.tif", GDT_Byte, {1, 2, 3});
    for (const char* name :
         {"out.tif", "out.tif.aux.xml", "out.tif.msk", "out.tif.msk.ovr", "out.tif.ovr", "out.tif.txt", "out.ovr"}) {
        std::ofstream(path(name)) << "old";
    }
    compute({"-e", "a+1", "-b", "a=" + in, "-o", path("out.tif")});
    EXPECT_EQ(names(), (std::vector<std::string>{"in.tif", "out.ovr", "out.tif", "out.tif.txt"}));
    expectSame(read(path("out.tif")), {2, 3, 4});

    // but not what belongs to the new one
    for (const char* noData : {"7", "9"}) {
        compute({"-e", "a+1", "-t", "U8", "-b", "a=" + in, "-o", path("out.tif"), "-f", "PNM", "-n", noData});
        EXPECT_TRUE(std::filesystem::exists(path("out.tif.aux.xml")));
        EXPECT_EQ(open(path("out.tif"))->GetRasterBand(1)->GetNoDataValue(), std::stod(noData));
    }
}

// ---- what is printed -----------------------------------------------------------------------------

TEST_F(BandmathTest, statistics)
{
    const std::string in = makeRow("in.tif", GDT_Byte, {1, 2, 4, 250});
    outputOver(in, "a*2", {"-t", "U8", "--max", "100"});
    // they are those of the pixels as written
    EXPECT_EQ(m_outcome.out, path("out.tif") + ": 4 x 1, U8\ncount    4\nminimum  2\nmaximum  100\nmean     28.5\n");
    EXPECT_EQ(m_outcome.err, "");

    outputOver(makeRow("ends.tif", GDT_Float32, {kInfinity, -kInfinity}), "a");
    EXPECT_EQ(m_outcome.out,
              path("out.tif") + ": 2 x 1, Float\ncount    2\nminimum  -inf\nmaximum  inf\nmean     nan\n");
    outputOver(makeRow("zero.tif", GDT_Float64, {-0.0}), "a");
    EXPECT_EQ(m_outcome.out, path("out.tif") + ": 1 x 1, Double\ncount    1\nminimum  0\nmaximum  0\nmean     0\n");
}

TEST_F(BandmathTest, progressInALog)
{
    RasterPlan plan{10, 20, GDT_Byte};
    const std::string in = make("in.tif", plan);
    const Outcome outcome = runProgram({"-e", "a+1", "-b", "a=" + in, "-o", path("out.tif"), "--window", "10"});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "10 %\n20 %\n30 %\n40 %\n50 %\n60 %\n70 %\n80 %\n90 %\n100 %\n");
}

TEST_F(BandmathTest, progressOnATerminal)
{
    RasterPlan plan{10, 20, GDT_Byte};
    const std::string in = make("in.tif", plan);
    Surroundings terminal;
    terminal.errorsToTerminal = true;
    const Outcome outcome =
        runProgram({"-e", "a+1", "-b", "a=" + in, "-o", path("out.tif"), "--window", "10"}, terminal);
    EXPECT_EQ(outcome.code, 0);
    // one line, renewed in place and ended once
    EXPECT_EQ(outcome.err.substr(0, 4), "\r  5");
    EXPECT_NE(outcome.err.find("\r100 %  "), std::string::npos) << outcome.err;
    EXPECT_EQ(outcome.err.find('\n'), outcome.err.size() - 1) << outcome.err;
}

}  // namespace

}  // namespace bandmath::test

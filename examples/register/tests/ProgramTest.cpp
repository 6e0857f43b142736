// The program as a whole: what it reads, prints and writes, and its exit code.

#include <fstream>
#include <sstream>

#include <zet/ZetMatrix>

#include "raster/TextFile"
#include "raster/tests/Program"
#include "raster/tests/Rasters"

namespace registration {

namespace {

using tools::test::Outcome;
using tools::test::RasterPlan;
using tools::test::runProgram;

const char* const kFourPoints =
    "# corner, then clockwise\n"
    "((0,0),(100,200))\n"
    "  ((10,0),(120,200))\r\n"
    "\n"
    "((10,10),(120,170))\n"
    "[[0;10];[100;170]]\n";

class RegisterProgram : public tools::test::RasterTest
{
protected:
    std::string write(const std::string& name, const std::string& text) const
    {
        std::ofstream(path(name)) << text;
        return path(name);
    }

    /// A raster whose corners are tied to a field of 300 m by 200 m.
    std::string makeControlled(const std::string& name) const
    {
        const std::string file = make(name, RasterPlan{30, 20, GDT_Byte});
        GDALDatasetUniquePtr dataset(GDALDataset::Open(file.c_str(), GDAL_OF_RASTER | GDAL_OF_UPDATE));
        const double corners[4][4] = {
            {0, 0, 5000, 8000}, {30, 0, 5300, 8000}, {30, 20, 5300, 7800}, {0, 20, 5000, 7800}};
        GDAL_GCP controls[4];
        GDALInitGCPs(4, controls);
        for (int i = 0; i < 4; ++i) {
            controls[i].dfGCPPixel = corners[i][0];
            controls[i].dfGCPLine = corners[i][1];
            controls[i].dfGCPX = corners[i][2];
            controls[i].dfGCPY = corners[i][3];
        }
        EXPECT_EQ(dataset->SetGCPs(4, controls, ""), CE_None);
        GDALDeinitGCPs(4, controls);
        return file;
    }

    zet::ZetMatrix readMatrix(const std::string& name) const
    {
        std::wistringstream in(tools::readText(path(name)));
        zet::ZetMatrix matrix;
        in >> matrix;
        return matrix;
    }

    void expectMatrix(const std::string& name, const std::vector<double>& expected) const
    {
        const zet::ZetMatrix matrix = readMatrix(name);
        ASSERT_EQ(matrix.rowCount(), 2);
        ASSERT_EQ(matrix.elementCount(), expected.size());
        for (std::size_t i = 0; i < expected.size(); ++i) {
            EXPECT_NEAR(matrix.data()[i], expected[i], 1e-10) << i;
        }
    }

    void expectFailure(const std::vector<std::string>& arguments, const std::string& text) const
    {
        const std::vector<std::string> before = names();
        const Outcome outcome = runProgram(arguments);
        EXPECT_EQ(outcome.code, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "register: " + text + "\n");
        EXPECT_EQ(names(), before);
    }
};

TEST_F(RegisterProgram, fitsPointsOfAFile)
{
    const Outcome outcome = runProgram({"-p", write("points.txt", kFourPoints), "-o", path("model.cmf")});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.err, "");
    expectMatrix("model.cmf", {100, 2, 0, 200, 0, -3});
    EXPECT_EQ(outcome.out.find("model affine, points 4\n"), 0u);
    EXPECT_NE(outcome.out.find("\nx = 100 + 2 u "), std::string::npos);
    EXPECT_EQ(names(), (std::vector<std::string>{"model.cmf", "points.txt"}));
}

TEST_F(RegisterProgram, fitsControlPointsOfARaster)
{
    const Outcome outcome = runProgram({"--raster", makeControlled("field.tif"), "-m", "affine", "-o", path("m.cmf")});
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    expectMatrix("m.cmf", {5000, 10, 0, 8000, 0, -10});
}

TEST_F(RegisterProgram, fitsSecondOrder)
{
    // x = u*u, y = u*v, on nine points
    std::string text;
    for (int u = 0; u < 3; ++u) {
        for (int v = 0; v < 3; ++v) {
            std::ostringstream line;
            line << "((" << u << "," << v << "),(" << u * u << "," << u * v << "))\n";
            text += line.str();
        }
    }
    const Outcome outcome =
        runProgram({"-p", write("points.txt", text), "--model=second-order", "-o", path("model.cmf")});
    EXPECT_EQ(outcome.code, 0) << outcome.err;
    expectMatrix("model.cmf", {0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 1, 0});
}

TEST_F(RegisterProgram, replacesWhatIsThere)
{
    write("model.cmf", "old");
    EXPECT_EQ(runProgram({"-p", write("points.txt", kFourPoints), "-o", path("model.cmf")}).code, 0);
    expectMatrix("model.cmf", {100, 2, 0, 200, 0, -3});
}

TEST_F(RegisterProgram, linesThatAreNoPoints)
{
    const char* const lines[] = {"((1,2),(3,4)", "(1,2,3,4)", "((1,2),(3,x))", "((1,2),(3,4)) 5", "point"};
    for (const char* const line : lines) {
        const std::string file = write("points.txt", std::string("((0,0),(1,1))\n\n") + line + "\n");
        expectFailure({"-p", file, "-o", path("model.cmf")},
                      "'" + file + "', line 3: '" + line + "' is no tie point such as ((10.5,20),(512340,4815600)).");
    }
}

TEST_F(RegisterProgram, filesWithoutPoints)
{
    const std::string none = path("none.txt");
    expectFailure({"-p", none, "-o", path("m.cmf")}, "Cannot read '" + none + "': No such file or directory.");
    const std::string empty = write("empty.txt", "# nothing\n\n");
    expectFailure({"-p", empty, "-o", path("m.cmf")}, "'" + empty + "' has no tie points.");
    const std::string latin = write("latin.txt", "# gr\xFC\xDF\n");
    expectFailure({"-p", latin, "-o", path("m.cmf")}, "'" + latin + "' is not text of the locale.");
    const std::string plain = make("plain.tif", RasterPlan{3, 3, GDT_Byte});
    expectFailure({"-r", plain, "-o", path("m.cmf")}, "'" + plain + "' has no ground control points.");
    expectFailure({"-r", empty, "-o", path("m.cmf")},
                  "Cannot open '" + empty + "': `" + empty + "' not recognized as a supported file format.");
}

TEST_F(RegisterProgram, whatCannotBeFittedOrWritten)
{
    const std::string two = write("two.txt", "((0,0),(0,0))\n((1,1),(1,1))\n");
    expectFailure({"-p", two, "-o", path("m.cmf")},
                  "The points leave the model open: one that is affine needs three points that are not on one line.");
    const std::string four = write("four.txt", kFourPoints);
    expectFailure({"-p", four, "-o", path("m.cmf"), "-m", "second-order"},
                  "The points leave the model open: one that is second-order needs six points that are not on one "
                  "conic section.");
    expectFailure({"-p", four, "-o", path("no/m.cmf")},
                  "Cannot write '" + path("no/m.cmf") + "': No such file or directory.");
}

TEST_F(RegisterProgram, aFullDiskLeavesNothing)
{
    const std::string four = write("four.txt", kFourPoints);
    tools::test::Surroundings full;
    full.fileSizeLimit = 16;
    const std::vector<std::string> before = names();
    const Outcome outcome = runProgram({"-p", four, "-o", path("m.cmf")}, full);
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "register: Cannot write '" + path("m.cmf") + "': File too large.\n");
    EXPECT_EQ(names(), before);
}

TEST_F(RegisterProgram, commandLinesThatAreWrong)
{
    const std::string four = write("four.txt", kFourPoints);
    const std::vector<std::string> lines[] = {
        {"-o", path("m.cmf")},
        {"-p", four},
        {"-p", four, "-r", four, "-o", path("m.cmf")},
        {"-p", four, "-o", path("m.cmf"), "-m", "cubic"},
        {"-p", four, "-o", path("m.cmf"), "more"},
    };
    for (const std::vector<std::string>& line : lines) {
        const std::vector<std::string> before = names();
        const Outcome outcome = runProgram(line);
        EXPECT_EQ(outcome.code, 1);
        EXPECT_EQ(outcome.err.find("PARSE ERROR: "), 0u) << outcome.err;
        EXPECT_EQ(names(), before);
    }
}

TEST_F(RegisterProgram, page)
{
    write("points.txt",
          "# column and line in the image; easting and northing on the map\n"
          "((120.5,88),(468620.4,4815377.9))\n"
          "((1910,132.5),(522310.1,4814040.2))\n"
          "((1834,1670.5),(520033.7,4767898.5))\n"
          "((203,1588),(471095.2,4770376.6))\n"
          "((1020.5,910),(495622.9,4790715.8))\n"
          "((655,1240),(484655.3,4780815.1))\n");
    followPage();
}

}  // namespace

}  // namespace registration

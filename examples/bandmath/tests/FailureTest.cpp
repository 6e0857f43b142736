// What ends in a failure: the text whole, exit code 1, and nothing left behind.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <fstream>

#include "Computing"

namespace bandmath::test {

namespace {

class BandmathFailureTest : public RasterTest
{
protected:
    BandmathFailureTest()
    {
        makeRow("a.tif", GDT_Byte, {1, 2, 3});
        makeRow("wide.tif", GDT_Byte, {1, 2, 3, 4});
        makeRow("i64.tif", GDT_Int64, {1, 2, 3});
        RasterPlan plan{3, 1, GDT_CFloat32};
        plan.bands = {{{1, 2}, {3, 4}, {5, 6}}};
        make("c32.tif", plan);
        plan.type = GDT_CFloat64;
        make("c64.tif", plan);
        RasterPlan tall{3, 100, GDT_Byte};
        make("tall.tif", tall);
        std::ofstream(path("text.txt")) << "no raster\n";
        m_before = names();
    }

    /// Runs with "a" as the band a.tif unless the arguments name bands.
    Outcome run(const std::string& equation, const std::vector<std::string>& more)
    {
        std::vector<std::string> arguments = {"-q", "-e", equation};
        bool named = false;
        bool placed = false;
        for (const std::string& argument : more) {
            named = named || argument == "-b";
            placed = placed || argument == "-o";
        }
        if (!named) {
            arguments.insert(arguments.end(), {"-b", "a=" + path("a.tif")});
        }
        if (!placed) {
            arguments.insert(arguments.end(), {"-o", path("out.tif")});
        }
        arguments.insert(arguments.end(), more.begin(), more.end());
        return runProgram(arguments);
    }

    void expectFailure(const Outcome& outcome, const std::string& text, int code = 1)
    {
        EXPECT_EQ(outcome.code, code);
        EXPECT_EQ(outcome.err, "bandmath: " + text + "\n");
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(names(), m_before);
    }

    std::vector<std::string> m_before;
};

TEST_F(BandmathFailureTest, equations)
{
    const char* const rows[][2] = {
        // the caret stands under the column that the message names
        {"1+", "Parsing error at column #2 : syntax error, unexpected end of file\n  1+\n   ^"},
        {"a=1", "Parsing error at column #2 : syntax error, unexpected '=', expecting end of file or ';'\n  a=1\n   ^"},
        {"(a + 2)) * 3",
         "Parsing error at column #8 : syntax error, unexpected ')', expecting end of file or ';'\n"
         "  (a + 2)) * 3\n         ^"},
        {"a + #", "Parsing error at column #5 : syntax error token\n  a + #\n      ^"},
        // a function that is none, or has other arguments, is pointed at itself
        {"2*foo(a)", "'foo()' is not a valid parametric function.\n  2*foo(a)\n      ^"},
        {"a + sin(a, 2)", "'sin()' does not have the correct number of arguments.\n  a + sin(a, 2)\n        ^"},
        {"a & 1", "'bitand()' is not a valid parametric function.\n  a & 1"},
        // what only shows when it is computed
        {"a < 2", "Invalid argument passed to 'lessthan' function.\n  a < 2"},
        {"a - \"x\"", "Invalid argument passed to 'subtract' function.\n  a - \"x\""},
        {"a + nir", "The variable 'nir' has no band: add -b nir=FILE:BAND.\n  a + nir\n        ^"},
        {"2 a",
         "The equation gives a text and no pixels: '2 a'. A name behind a number is a unit; write 2*x, not 2 x."
         "\n  2 a"},
        {"atan2(a, a)", "A function of the equation does not serve bands: atan2 and ldexp compute with numbers only."},
        {"7 % 0", "The equation divides a whole number by zero with '%'."},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row[0]);
        expectFailure(run(row[0], {}), row[1]);
    }
}

TEST_F(BandmathFailureTest, unservedElementTypes)
{
    const std::string head = "An operation of the equation does not serve the element type ";
    expectFailure(run("a + 1", {"-b", "a=" + path("i64.tif")}),
                  head + "I64 of 'a' ('" + path("i64.tif") +
                      "', band 1): no arithmetic serves 64-bit integers. 'gdal_translate -ot' makes a copy of another "
                      "type, such as Float64.");
    expectFailure(run("b + a", {"-b", "b=" + path("a.tif"), "-b", "a=" + path("i64.tif")}),
                  head + "I64 of 'a' ('" + path("i64.tif") +
                      "', band 1): no arithmetic serves 64-bit integers. 'gdal_translate -ot' makes a copy of another "
                      "type, such as Float64.");
    expectFailure(run("z * 2", {"-b", "z=" + path("c32.tif")}),
                  head + "ComplexFloat of 'z' ('" + path("c32.tif") +
                      "', band 1): ComplexFloat bands combine with bands, but not with numbers, and no function serves "
                      "them. 'gdal_translate -ot' makes a copy of another type, such as CFloat64.");
    expectFailure(run("floor(z)", {"-b", "z=" + path("c64.tif")}),
                  head + "ComplexDouble of 'z' ('" + path("c64.tif") +
                      "', band 1): rounding, clipping, factorial, logb and the Bessel functions serve real numbers "
                      "only. 'gdal_translate -ot' makes a copy of another type, such as CFloat64.");
}

// These would answer with 0, or with pixels that nobody has written.
TEST_F(BandmathFailureTest, functionsThatAnswerWithoutServing)
{
    struct Row
    {
        const char* equation;
        const char* file;
        const char* function;
        const char* type;
    };
    const Row rows[] = {
        {"sum(z)", "i64.tif", "sum", "I64"},
        {"1 + Mean(z*2)", "i64.tif", "mean", "I64"},
        {"roundclip(z, \"(U8,8)\", 0, 9)", "i64.tif", "roundclip", "I64"},
        {"max(norm(z))", "c32.tif", "max", "ComplexFloat"},
        {"min(z)", "c64.tif", "min", "ComplexDouble"},
        {"roundclip( z , \"(U8,8)\", 0, 9)", "c64.tif", "roundclip", "ComplexDouble"},
    };
    for (const Row& row : rows) {
        expectFailure(run(row.equation, {"-b", "z=" + path(row.file)}),
                      "'" + std::string(row.function) + "' does not serve the element type " + row.type + " of 'z' ('" +
                          path(row.file) + "', band 1).");
    }
    // a part of a complex band is real
    EXPECT_EQ(run("sum(norm(z))", {"-b", "z=" + path("c64.tif")}).code, 0);
}

TEST_F(BandmathFailureTest, bandsAndFiles)
{
    struct Row
    {
        std::vector<std::string> arguments;
        std::string text;
    };
    const std::string a = path("a.tif");
    const std::string wide = path("wide.tif");
    const Row rows[] = {
        {{"-b", "a=" + a + ":2"}, "'" + a + "' has no band 2; it has 1."},
        {{"-b", "a=" + path("none.tif")},
         "Cannot open '" + path("none.tif") + "': " + path("none.tif") + ": No such file or directory"},
        {{"-b", "a=" + path("text.txt")},
         "Cannot open '" + path("text.txt") + "': `" + path("text.txt") +
             "' not recognized as a supported file format."},
        {{"-b", "a=" + a, "-b", "w=" + wide},
         "The sizes differ: '" + a + "', band 1 is 3 x 1, '" + wide + "', band 1 is 4 x 1."},
        {{"-o", path("none/out.tif")}, "Cannot write '" + path("none/out.tif") + "': No such file or directory."},
        {{"-o", path("")}, "Cannot write '" + path("") + "': it is not a regular file."},
        {{"-o", "/dev/null"}, "Cannot write '/dev/null': it is not a regular file."},
        {{"-o", path("out.xyz")},
         "No driver of GDAL that can write piece by piece serves the extension of '" + path("out.xyz") +
             "'; name one with -f."},
        {{"-f", "Nonesuch"}, "GDAL has no driver 'Nonesuch'."},
        {{"-f", "PNG"}, "GDAL's driver 'PNG' cannot write a raster piece by piece; GTiff can."},
        {{"-f", "MFF"}, "Cannot write '" + path("out.tif") + "': the driver gives its files other names."},
        {{"--co", "COMPRESS"}, "'COMPRESS' is not a creation option such as COMPRESS=DEFLATE."},
        {{"-p", path("none/p.png")}, "Cannot write '" + path("none/p.png") + "': No such file or directory."},
        {{"-t", "I64"},
         "Pixels of type U8 cannot be rounded and clipped to I64: 64-bit integers are only copied as "
         "they are."},
        {{"-t", "U16", "--max", "70000"}, "The limits 0 to 70000 do not lie within the element type U16."},
        {{"-t", "I8", "--max", "127.5"}, "The limits -128 to 127.5 do not lie within the element type I8."},
        {{"-t", "U8", "--min", "256"}, "The limits 256 to 255 do not lie within the element type U8."},
        {{"-t", "U8", "-n", "256"}, "The no-data value 256 is none of the element type U8."},
        {{"-t", "U8", "-n", "nan"}, "The no-data value nan is none of the element type U8."},
        {{"-t", "U8", "-n", "0.5"}, "The no-data value 0.5 is none of the element type U8."},
        {{"-t", "Float", "-n", "1e300"},
         "The no-data value 1.0000000000000001e+300 is none of the element type Float."},
        {{"-t", "ComplexFloat", "--min", "0"}, "--min and --max have no meaning for complex pixels."},
        {{"-b", "a=" + path("c64.tif"), "-t", "U8"},
         "The equation gives complex pixels, which U8 cannot hold: take real(), imag(), arg() or norm() in the "
         "equation."},
    };
    for (const Row& row : rows) {
        expectFailure(run("a", row.arguments), row.text);
    }
}

// GDAL tells of these in words of its own, and would go on.
TEST_F(BandmathFailureTest, creationOptionsThatTheDriverDoesNotKnow)
{
    const char* const rows[][2] = {{"COMPRES=LZW", "COMPRES"}, {"COMPRESS=LZV", "LZV"}, {"BLOCKXSIZE=wide", "wide"}};
    for (const auto& row : rows) {
        const Outcome outcome = run("a", {"--co", row[0]});
        EXPECT_EQ(outcome.code, 1);
        EXPECT_EQ(outcome.err.find("bandmath: Cannot write '" + path("out.tif") + "': "), 0u) << outcome.err;
        EXPECT_NE(outcome.err.find(row[1]), std::string::npos) << outcome.err;
        EXPECT_EQ(names(), m_before);
    }
}

TEST_F(BandmathFailureTest, aReductionOfWindows)
{
    expectFailure(run("a - median(a)", {"-b", "a=" + path("tall.tif"), "--window", "30"}),
                  "'median' makes one number of a band, but the image is computed window by window: add --whole to "
                  "compute it at once.");
}

TEST_F(BandmathFailureTest, anExistingOutputStaysAsItIs)
{
    std::ofstream(path("out.tif")) << "precious";
    m_before = names();
    run("a <", {});
    run("a < 1", {});
    Surroundings full;
    full.fileSizeLimit = 0;
    runProgram({"-q", "-e", "a+1", "-b", "a=" + path("a.tif"), "-o", path("out.tif")}, full);
    EXPECT_EQ(names(), m_before);
    std::filesystem::permissions(path("out.tif"), std::filesystem::perms::owner_read);
    expectFailure(run("a + 1", {}), "Cannot write '" + path("out.tif") + "': it is write-protected.");
    std::string text;
    std::ifstream(path("out.tif")) >> text;
    EXPECT_EQ(text, "precious");
}

// A limit of the file size stands for a full disk: the failure comes in the middle, or when the
// file is closed.
TEST_F(BandmathFailureTest, aFullDisk)
{
    RasterPlan plan{2000, 500, GDT_Byte};
    plan.bands = {Complexes(2000 * 500, 7.0)};
    make("large.tif", plan);
    m_before = names();
    for (const long limit : {0L, 100L, 100000L, 3999000L}) {
        Surroundings full;
        full.fileSizeLimit = limit;
        const Outcome outcome =
            runProgram({"-q", "-e", "a*2", "-t", "Float", "-b", "a=" + path("large.tif"), "-o", path("out.tif")}, full);
        EXPECT_EQ(outcome.code, 1) << limit;
        EXPECT_EQ(outcome.err.find("bandmath: Cannot write '" + path("out.tif") + "': "), 0u) << outcome.err;
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(names(), m_before) << limit;
    }
}

TEST_F(BandmathFailureTest, aFullStandardOutput)
{
    Surroundings full;
    full.outputFull = true;
    expectFailure(runProgram({"-q", "-e", "a+1", "-b", "a=" + path("a.tif"), "-o", path("out.tif")}, full),
                  "Cannot write to the standard output.");
}

// The signal of a pipe that is broken must not end the program in the middle.
TEST_F(BandmathFailureTest, progressThatNobodyReads)
{
    Surroundings unread;
    unread.errorsUnread = true;
    const Outcome outcome =
        runProgram({"-e", "a+1", "-b", "a=" + path("tall.tif"), "-o", path("out.tif"), "--window", "30"}, unread);
    EXPECT_EQ(outcome.code, 0);
    m_before.push_back("out.tif");
    std::sort(m_before.begin(), m_before.end());
    EXPECT_EQ(names(), m_before);
}

TEST_F(BandmathFailureTest, aBrokenInputInTheMiddle)
{
    RasterPlan plan{1000, 1000, GDT_Byte};
    plan.bands = {Complexes(1000 * 1000, 7.0)};
    make("broken.tif", plan);
    std::filesystem::resize_file(path("broken.tif"), 600000);
    m_before = names();
    const Outcome outcome =
        runProgram({"-q", "-e", "a*2", "-b", "a=" + path("broken.tif"), "-o", path("out.tif"), "-p", path("p.png")});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.err.find("bandmath: Cannot "), 0u) << outcome.err;
    EXPECT_EQ(names(), m_before);
}

TEST_F(BandmathFailureTest, signalsLeaveNothing)
{
    RasterPlan plan{4000, 4000, GDT_Byte};
    plan.creation = {{"SPARSE_OK", "TRUE"}};
    make("large.tif", plan);
    m_before = names();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        Surroundings interrupted;
        interrupted.signalOnProgress = signal;
        const Outcome outcome = runProgram(
            {"-e", "sin(a)*cos(a)", "-b", "a=" + path("large.tif"), "-o", path("out.tif"), "--window", "4000"},
            interrupted);
        EXPECT_EQ(outcome.code, 130);
        EXPECT_NE(outcome.err.find("bandmath: Interrupted; nothing was written.\n"), std::string::npos) << outcome.err;
        EXPECT_EQ(names(), m_before);
    }
}

}  // namespace

}  // namespace bandmath::test

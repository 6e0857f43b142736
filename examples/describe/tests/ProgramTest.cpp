// The program as a whole: what it prints where, and its exit code.

#include <fstream>

#include "raster/tests/Program"
#include "raster/tests/Rasters"

namespace describe {

namespace {

using tools::test::Outcome;
using tools::test::RasterPlan;
using tools::test::runProgram;

class DescribeProgram : public tools::test::RasterTest
{
protected:
    void expectFailure(const std::vector<std::string>& arguments, const std::string& text)
    {
        const Outcome outcome = runProgram(arguments);
        EXPECT_EQ(outcome.code, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "describe: " + text + "\n");
    }
};

TEST_F(DescribeProgram, printsValues)
{
    const std::string file = make("in.tif", RasterPlan{7, 5, GDT_UInt16});
    const Outcome outcome = runProgram({file, "--get", "size"});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out, "(7,5,1)\n");
    EXPECT_EQ(outcome.err, "");

    const Outcome traced = runProgram({"-t", file, "--get", "size"});
    EXPECT_EQ(traced.out, "(7,5,1)\n");
    EXPECT_EQ(traced.err, "asked for the parts of the raster\nasked for the fields of the raster\n");

    const Outcome whole = runProgram({file});
    EXPECT_EQ(whole.code, 0);
    EXPECT_EQ(whole.out.find(file + "; GeoTIFF\n"), 0u);
}

TEST_F(DescribeProgram, namesAreText)
{
    const std::string file = make("gr\xC3\xBC\xC3\x9F.tif", RasterPlan{7, 5, GDT_UInt16});
    const Outcome outcome = runProgram({file});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.out.find(file + "; GeoTIFF\n"), 0u);
}

TEST_F(DescribeProgram, filesThatAreNoRasters)
{
    std::ofstream(path("text.txt")) << "no raster\n";
    expectFailure({path("text.txt")}, "Cannot open '" + path("text.txt") + "': `" + path("text.txt") +
                                          "' not recognized as a supported file format.");
    expectFailure({path("none.tif")},
                  "Cannot open '" + path("none.tif") + "': " + path("none.tif") + ": No such file or directory");

    // a raster that ends in the middle of its head
    const std::string file = make("in.tif", RasterPlan{7, 5, GDT_UInt16});
    std::ifstream in(file, std::ios::binary);
    std::string head(60, '\0');
    in.read(head.data(), static_cast<std::streamsize>(head.size()));
    std::ofstream(path("broken.tif"), std::ios::binary) << head;
    const Outcome broken = runProgram({path("broken.tif")});
    EXPECT_EQ(broken.code, 1);
    EXPECT_EQ(broken.out, "");
    EXPECT_EQ(broken.err.find("describe: Cannot open '" + path("broken.tif") + "': "), 0u) << broken.err;
    EXPECT_EQ(broken.err.find('\n'), broken.err.size() - 1);
}

TEST_F(DescribeProgram, wrongCommandLines)
{
    const std::string file = make("in.tif", RasterPlan{7, 5, GDT_UInt16});
    expectFailure({file, "--cell", "9"}, "There is no cell 9; there are 1, counted from 0.");
    expectFailure({file, "--get", "no"}, "There is no 'no' in the description of '" + file + "'.");

    const std::string kOneQuestion = "One question at a time: give one of --get, --cell and --region. - ";
    const struct
    {
        std::vector<std::string> arguments;
        std::string text;
    } rows[] = {
        {{}, "Required argument missing: file - "},
        {{file, "--cell"}, "Missing a value for this argument: "},
        {{file, "--unknown"}, "Couldn't find match for argument: --unknown - "},
        {{file, file}, "Couldn't find match for argument: "},
        {{file, "-c", "1", "-g", "size"}, kOneQuestion},
        {{file, "-r", "1,2,3,4", "-g", "size"}, kOneQuestion},
        {{file, "-c", "1", "-r", "1,2,3,4"}, kOneQuestion},
        {{file, "--cell", "x"}, "--cell: 'x' is not of the kind UInt. - "},
        {{file, "--cell", "-1"}, "--cell: '-1' is not of the kind UInt. - "},
        {{file, "--cell", "1.5"}, "--cell: '1.5' is not of the kind UInt. - "},
        {{file, "--cell", "4294967296"}, "--cell: '4294967296' is not of the kind UInt. - "},
        {{file, "--region", "1,2,3"}, "--region: '1,2,3' is not a region such as 0,0,640,480. - "},
        {{file, "--region=1,2,3,4,5"}, "--region: '1,2,3,4,5' is not a region such as 0,0,640,480. - "},
        {{file, "--region", "1,2,3,x"}, "--region: '1,2,3,x' is not a region such as 0,0,640,480. - "},
        {{file, "--region", "1,2,-3,4"}, "--region: '1,2,-3,4' is not a region such as 0,0,640,480. - "},
        {{file, "--region", "1,,3,4"}, "--region: '1,,3,4' is not a region such as 0,0,640,480. - "},
        {{file, "--region", "9999999999,2,3,4"},
         "--region: '9999999999,2,3,4' is not a region such as 0,0,640,480. - "},
    };
    for (const auto& row : rows) {
        const Outcome outcome = runProgram(row.arguments);
        EXPECT_EQ(outcome.code, 1);
        EXPECT_EQ(outcome.out, "");
        const std::string begin = "PARSE ERROR: error: " + row.text;
        EXPECT_EQ(outcome.err.substr(0, begin.size()), begin);
    }
}

TEST_F(DescribeProgram, helpAndVersion)
{
    const Outcome help = runProgram({"--help"});
    EXPECT_EQ(help.code, 0);
    for (const char* option : {"--get", "--cell", "--region", "--trace", "--version", "--help"}) {
        EXPECT_NE(help.out.find(option), std::string::npos) << option;
    }
    const Outcome version = runProgram({"--version"});
    EXPECT_EQ(version.code, 0);
    EXPECT_NE(version.out.find("describe  version: "), std::string::npos) << version.out;
}

}  // namespace
}  // namespace describe

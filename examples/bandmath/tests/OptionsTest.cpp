#include "Options"

#include <fstream>
#include <regex>

#include "Computing"

namespace bandmath::test {

namespace {

using Arguments = std::vector<std::string>;

/// The arguments behind those that every call needs.
Arguments with(const Arguments& more)
{
    Arguments arguments = {"-e", "a", "-b", "a=in.tif", "-o", "out.tif"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

Options parse(const Arguments& arguments)
{
    Arguments words = {"bandmath"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return parseOptions(words);
}

/// The brief usage that follows the line of a failure.
const char* const kBrief =
    "\n"
    "\n"
    "Brief USAGE: \n"
    "   bandmath  {-e <ZetString>|-E <ZetString>} [-b <ZetString>] ...  -o\n"
    "             <ZetString> [-f <ZetString>] [--co <ZetString>] ...  [-t\n"
    "             <ZetString>] [--min <Double>] [--max <Double>] [-n <Double>]\n"
    "             [-p <ZetString>] [--ramp <ZetString>] [--stretch <ZetString>]\n"
    "             [--percentiles <ZetString>] [--background <ZetString>]\n"
    "             [--picture-size <Int>] [--legend] [--window <Int>] [--whole]\n"
    "             [-q] [-v] [-h]\n"
    "\n"
    "For complete USAGE and HELP type: \n"
    "   bandmath --help\n"
    "\n";

/// Runs the program, and gives what it says in front of the brief usage.
std::string failureOf(const Arguments& arguments)
{
    const Outcome outcome = runProgram(arguments);
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.out, "");
    const std::string text = std::regex_replace(outcome.err, std::regex(" - \\(\\w+ : [0-9]+\\)"), "");
    const std::size_t brief = text.find("\n\n");
    EXPECT_EQ(text.substr(std::min(brief, text.size())), kBrief);
    const std::string head = "PARSE ERROR: error: ";
    EXPECT_EQ(text.find(head), 0u);
    return text.substr(0, brief).substr(std::min(head.size(), text.size()));
}

TEST(Options, allOfThem)
{
    const Options o = parse({"--equation",
                             "r+g",
                             "-b",
                             "r=x.tif:2",
                             "--band=g=dir:a/y.tif",
                             "-o",
                             "o.tif",
                             "-f",
                             "ENVI",
                             "--co",
                             "A=B",
                             "--co=C=D",
                             "-t",
                             "U8",
                             "--min",
                             "-1.5",
                             "--max=7",
                             "-n",
                             "nan",
                             "-p",
                             "p.png",
                             "--ramp",
                             "dusk",
                             "--stretch",
                             "-1,1",
                             "--percentiles=5,95",
                             "--background",
                             "0a0B10",
                             "--picture-size",
                             "99",
                             "--legend",
                             "--window",
                             "12",
                             "--whole",
                             "-q"});
    EXPECT_EQ(o.equation(), "r+g");
    const std::vector<BandChoice> bands = o.bands();
    ASSERT_EQ(bands.size(), 2u);
    EXPECT_EQ(bands[0].name, "r");
    EXPECT_EQ(bands[0].file, "x.tif");
    EXPECT_EQ(bands[0].band, 2);
    EXPECT_EQ(bands[1].file, "dir:a/y.tif");
    EXPECT_EQ(bands[1].band, 1);
    EXPECT_EQ(o.output(), "o.tif");
    EXPECT_EQ(o.driver(), "ENVI");
    EXPECT_EQ(o.creationOptions(), (std::vector<std::string>{"A=B", "C=D"}));
    EXPECT_EQ(o.elementType(), "U8");
    EXPECT_EQ(o.minimum(), -1.5);
    EXPECT_EQ(o.maximum(), 7.0);
    EXPECT_NE(*o.noData(), *o.noData());
    EXPECT_EQ(o.picture(), "p.png");
    EXPECT_EQ(o.ramp(), "dusk");
    EXPECT_EQ(*o.stretch(), (std::pair<double, double>(-1, 1)));
    EXPECT_EQ(o.percentiles(), (std::pair<double, double>(5, 95)));
    EXPECT_EQ(o.background()->red, 10);
    EXPECT_EQ(o.background()->green, 11);
    EXPECT_EQ(o.background()->blue, 16);
    EXPECT_EQ(o.pictureSize(), 99);
    EXPECT_TRUE(o.legend());
    EXPECT_EQ(o.windowPixels(), 12u);
    EXPECT_TRUE(o.whole());
    EXPECT_TRUE(o.quiet());
}

TEST(Options, thoseThatAreNotGiven)
{
    const Options o = parse(with({}));
    EXPECT_EQ(o.driver(), "");
    EXPECT_TRUE(o.creationOptions().empty());
    EXPECT_EQ(o.elementType(), "");
    EXPECT_FALSE(o.minimum());
    EXPECT_FALSE(o.maximum());
    EXPECT_FALSE(o.noData());
    EXPECT_EQ(o.picture(), "");
    EXPECT_EQ(o.ramp(), "grey");
    EXPECT_FALSE(o.stretch());
    EXPECT_EQ(o.percentiles(), (std::pair<double, double>(2, 98)));
    EXPECT_FALSE(o.background());
    EXPECT_EQ(o.pictureSize(), 1024);
    EXPECT_FALSE(o.legend());
    EXPECT_EQ(o.windowPixels(), 65536u);
    EXPECT_FALSE(o.whole());
    EXPECT_FALSE(o.quiet());
}

TEST(Options, valuesThatLookLikeOptions)
{
    const Options o = parse({"-e", "--min=1", "-b", "q=--min=1", "-b=b=c.tif", "-o", "--max"});
    EXPECT_EQ(o.equation(), "--min=1");
    EXPECT_EQ(o.output(), "--max");
    EXPECT_EQ(o.bands().back().name, "b");
    EXPECT_FALSE(o.minimum());
}

TEST(Options, failures)
{
    struct Row
    {
        Arguments arguments;
        const char* text;
    };
    const Row rows[] = {
        {{}, "Required arguments missing: output, equation-file, equation"},
        {{"-e", "a"}, "Required argument missing: output"},
        {{"-e", "a", "-o", "out.tif"}, "Required argument missing: band"},
        {{"-e", "a", "-b", "a=x.tif"}, "Required argument missing: output"},
        {with({"-E", "b"}), "Mutually exclusive argument already set: "},
        {with({"-x"}), "Couldn't find match for argument: -x"},
        {with({"stray"}), "Couldn't find match for argument: stray"},
        {with({"--equations=a"}), "Couldn't find match for argument: --equations=a"},
        {with({"-t"}), "Missing a value for this argument: "},
        {with({"-q", "-q"}), "Argument already set: "},
        {with({"-o", "b.tif"}), "Argument already set: "},
        {with({"--quiet=1"}), "Couldn't find match for argument: --quiet=1"},
        {with({"-b", "noequals"}), "--band: 'noequals' is not a band such as red=image.tif:1."},
        {with({"-b", "b="}), "--band: 'b=' is not a band such as red=image.tif:1."},
        {with({"-b", "2b=x.tif"}), "--band: '2b' cannot be the name of a variable."},
        {with({"-b", "b-c=x.tif"}), "--band: 'b-c' cannot be the name of a variable."},
        {with({"-b", "=x.tif"}), "--band: '' cannot be the name of a variable."},
        {with({"-b", "a=y.tif"}), "The variable 'a' has two bands."},
        {with({"-b", "b=y.tif:0"}), "--band: '0' is not a whole number of 1 or more."},
        {with({"-t", "U9"}),
         "--type: The value of 'U9' is not a member of "
         "{I8,U8,I16,U16,I32,U32,I64,U64,Float,Double,ComplexFloat,ComplexDouble}."},
        {with({"--min", "x"}), "--min: 'x' is not of the kind Double."},
        {with({"--min", ""}), "--min: '' is not of the kind Double."},
        {with({"--min="}), "--min: '' is not of the kind Double."},
        {with({"--max", "inf"}), "--max: The value of 'inf' is not within (-inf, inf)."},
        {with({"-n", "1,5"}), "--no-data: '1,5' is not of the kind Double."},
        {with({"--min", "2", "--max", "1"}), "--min is greater than --max."},
        {with({"--stretch", "1"}), "--stretch: '1' is not a range such as 0,1."},
        {with({"--stretch", "1,1"}), "--stretch: The range '1,1' does not rise."},
        {with({"--stretch", "1,inf"}), "--stretch: 'inf' is not a finite number."},
        {with({"--percentiles", "-1,50"}), "--percentiles: The percentiles '-1,50' are not between 0 and 100."},
        {with({"--background", "red"}), "--background: 'red' is not a colour of six hexadecimal digits."},
        {with({"--ramp", "rainbow"}), "--ramp: There is no colour ramp 'rainbow'; there are grey, vegetation, dusk."},
        {with({"--window", "1.5"}), "--window: '1.5' is not of the kind Int."},
        {with({"--window", "0"}), "--window: The value of '0' is not within [1, 1000000000]."},
        // a number that is cut to the kind's 32 bits would be 1
        {with({"--window", "4294967297"}), "--window: '4294967297' is not of the kind Int."},
        {with({"--picture-size", "3"}), "--picture-size: The value of '3' is not within [16, 1000000000]."},
        {with({"-p", "out.tif"}), "The picture and the output are one file, 'out.tif'."},
        {with({"-p", "./out.tif"}), "The picture and the output are one file, 'out.tif'."},
        {{"-e", "a", "-b", "a=in.tif", "-o", ""}, "The output has no name."},
        {{"-E", "/none", "-b", "a=in.tif", "-o", "out.tif"}, "Cannot read '/none': No such file or directory."},
        {{"-E", "/", "-b", "a=in.tif", "-o", "out.tif"}, "Cannot read '/': Is a directory."},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(failureOf(row.arguments), row.text);
    }
}

TEST_F(RasterTest, theEquationOfAFile)
{
    std::ofstream(path("equation.txt")) << "a\n+ 1\n";
    const std::string in = makeRow("in.tif", GDT_Byte, {1, 2, 3});
    compute({"-E", path("equation.txt"), "-b", "a=" + in, "-o", path("out.tif")});
    EXPECT_EQ(read(path("out.tif")), (Numbers{2, 3, 4}));
    // as some editors write it
    std::ofstream(path("marked.txt")) << "\xEF\xBB\xBF"
                                         "a\r\n+ 2\r\n";
    compute({"-E", path("marked.txt"), "-b", "a=" + in, "-o", path("out.tif")});
    EXPECT_EQ(read(path("out.tif")), (Numbers{3, 4, 5}));
    // an empty one is no failure of the command line
    std::ofstream(path("empty.txt")) << "";
    const Outcome outcome = runProgram({"-E", path("empty.txt"), "-b", "a=" + in, "-o", path("out.tif")});
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.err.find("bandmath: "), 0u) << outcome.err;
}

TEST(Options, versionAndHelpNeedNothingElse)
{
    for (const char* option : {"-v", "--version"}) {
        const Outcome outcome = runProgram({option});
        EXPECT_EQ(outcome.code, 0);
        EXPECT_EQ(outcome.out, "\nbandmath  version: 1.0\n\n");
        EXPECT_EQ(outcome.err, "");
    }
    for (const char* option : {"-h", "--help"}) {
        const Outcome outcome = runProgram({option});
        EXPECT_EQ(outcome.code, 0);
        EXPECT_EQ(outcome.err, "");
        const std::string usage = "\nUSAGE: \n\n" + std::string(kBrief).substr(16);
        EXPECT_EQ(outcome.out.find(usage.substr(0, usage.find("\n\nFor"))), 0u) << outcome.out;
        for (const char* text : {"-e <ZetString>,  --equation <ZetString>\n     (OR required) the equation",
                                 "-E <ZetString>,  --equation-file <ZetString>\n     (OR required) a file",
                                 "-b <ZetString>,  --band <ZetString> (accepted multiple times)\n     (required) NAME",
                                 "-o <ZetString>,  --output <ZetString>\n     (required) the raster",
                                 "-f <ZetString>,  --format <ZetString>\n     GDAL's driver",
                                 "   --co <ZetString> (accepted multiple times)\n     NAME=VALUE",
                                 "-t <ZetString>,  --type <ZetString>\n     element type",
                                 "   --min <Double>\n     least value",
                                 "   --max <Double>\n     greatest value",
                                 "-n <Double>,  --no-data <Double>\n     value of pixels",
                                 "-p <ZetString>,  --picture <ZetString>\n     a PNG",
                                 "   --ramp <ZetString>\n     colours",
                                 "   --stretch <ZetString>\n     LO,HI",
                                 "   --percentiles <ZetString>\n     LO,HI",
                                 "   --background <ZetString>\n     RRGGBB",
                                 "   --picture-size <Int>\n     longer side",
                                 "   --legend\n     put",
                                 "   --window <Int>\n     pixels",
                                 "   --whole\n     compute",
                                 "-q,  --quiet\n     no progress",
                                 "   Computes an equation over the pixels of raster images.\n\n"}) {
            EXPECT_NE(outcome.out.find(text), std::string::npos) << text;
        }
    }
}

}  // namespace

}  // namespace bandmath::test

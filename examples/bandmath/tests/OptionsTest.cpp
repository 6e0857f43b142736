#include "Options"

#include <gtest/gtest.h>

#include "Failure"

namespace {

using bandmath::Failure;
using bandmath::Options;
using bandmath::parseOptions;

using Arguments = std::vector<std::string>;

/// The arguments behind those that every call needs.
Arguments with(const Arguments& more)
{
    Arguments arguments = {"-e", "a", "-b", "a=in.tif", "-o", "out.tif"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

std::string failureOf(const Arguments& arguments)
{
    try {
        parseOptions(arguments);
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "no failure";
}

TEST(Options, allOfThem)
{
    const Options o = parseOptions({"--equation",
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
    EXPECT_EQ(o.equation, "r+g");
    ASSERT_EQ(o.bands.size(), 2u);
    EXPECT_EQ(o.bands[0].name, "r");
    EXPECT_EQ(o.bands[0].file, "x.tif");
    EXPECT_EQ(o.bands[0].band, 2);
    EXPECT_EQ(o.bands[1].file, "dir:a/y.tif");
    EXPECT_EQ(o.bands[1].band, 1);
    EXPECT_EQ(o.output, "o.tif");
    EXPECT_EQ(o.driver, "ENVI");
    EXPECT_EQ(o.creationOptions, (std::vector<std::string>{"A=B", "C=D"}));
    EXPECT_EQ(o.elementType, "U8");
    EXPECT_EQ(o.minimum, -1.5);
    EXPECT_EQ(o.maximum, 7.0);
    EXPECT_NE(*o.noData, *o.noData);
    EXPECT_EQ(o.picture, "p.png");
    EXPECT_EQ(o.ramp, "dusk");
    EXPECT_EQ(*o.stretch, (std::pair<double, double>(-1, 1)));
    EXPECT_EQ(o.percentiles, (std::pair<double, double>(5, 95)));
    EXPECT_EQ(o.background->red, 10);
    EXPECT_EQ(o.background->green, 11);
    EXPECT_EQ(o.background->blue, 16);
    EXPECT_EQ(o.pictureSize, 99);
    EXPECT_TRUE(o.legend);
    EXPECT_EQ(o.windowPixels, 12u);
    EXPECT_TRUE(o.whole);
    EXPECT_TRUE(o.quiet);
    EXPECT_FALSE(o.help);
}

TEST(Options, failures)
{
    struct Row
    {
        Arguments arguments;
        const char* text;
    };
    const Row rows[] = {
        {{}, "There is no equation: give -e."},
        {{"-e", "a"}, "There is no band: give -b."},
        {{"-e", "a", "-b", "a=x.tif"}, "There is no output: give -o."},
        {with({"-x"}), "There is no option '-x'."},
        {with({"stray"}), "There is no option 'stray'."},
        {with({"--equations=a"}), "There is no option '--equations'."},
        {with({"-t"}), "The option '-t' needs a value."},
        {with({"--quiet=1"}), "The option '--quiet' takes no value."},
        {with({"-b", "noequals"}), "'noequals' is not a band such as red=image.tif:1."},
        {with({"-b", "b="}), "'b=' is not a band such as red=image.tif:1."},
        {with({"-b", "2b=x.tif"}), "'2b' cannot be the name of a variable."},
        {with({"-b", "b-c=x.tif"}), "'b-c' cannot be the name of a variable."},
        {with({"-b", "=x.tif"}), "'' cannot be the name of a variable."},
        {with({"-b", "a=y.tif"}), "The variable 'a' has two bands."},
        {with({"-b", "b=y.tif:0"}), "'0' is not a whole number of 1 or more."},
        {with({"--min", "x"}), "'x' is not a number."},
        {with({"--min", ""}), "'' is not a number."},
        {with({"--max", "inf"}), "'inf' is not a finite number."},
        {with({"--min", "2", "--max", "1"}), "--min is greater than --max."},
        {with({"--stretch", "1"}), "'1' is not a range such as 0,1."},
        {with({"--stretch", "1,1"}), "The range '1,1' does not rise."},
        {with({"--percentiles", "-1,50"}), "The percentiles '-1,50' are not between 0 and 100."},
        {with({"--background", "red"}), "'red' is not a colour of six hexadecimal digits."},
        {with({"--ramp", "rainbow"}), "There is no colour ramp 'rainbow'; there are grey, vegetation, dusk."},
        {with({"--window", "1.5"}), "'1.5' is not a whole number of 1 or more."},
        {with({"--picture-size", "3"}), "'3' is not a whole number of 16 or more."},
        {with({"-p", "out.tif"}), "The picture and the output are one file, 'out.tif'."},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(failureOf(row.arguments), std::string(row.text) + " See bandmath --help.");
    }
}

TEST(Options, helpNeedsNothingElseAndNamesEveryOption)
{
    EXPECT_TRUE(parseOptions({"--help"}).help);
    EXPECT_TRUE(parseOptions({"-h"}).help);
    const std::string help = bandmath::helpText();
    for (const char* option : {"-e, --equation TEXT",   "-b, --band NAME=FILE:BAND",
                               "-o, --output FILE",     "-f, --format DRIVER",
                               "--co NAME=VALUE",       "-t, --type TYPE",
                               "--min VALUE",           "--max VALUE",
                               "-n, --no-data VALUE",   "-p, --picture FILE.png",
                               "--ramp NAME",           "--stretch LO,HI",
                               "--percentiles LO,HI",   "--background RRGGBB",
                               "--picture-size PIXELS", "--legend",
                               "--window PIXELS",       "--whole",
                               "-q, --quiet",           "-h, --help"}) {
        EXPECT_NE(help.find(option), std::string::npos) << option;
    }
}

}  // namespace

// What ends the process: exit statuses, and both streams byte for byte.

#include <regex>

#include <gtest/gtest.h>

#include <zet/ZetClExitException>
#include <zet/ZetNumValidator>
#include <zet/ZetWideStreams>

#include "support/ZetChildRun"
#include "support/ZetCommandLine"

namespace zet {
namespace {

using test::ZetChildOutcome;
using test::ZetChildRun;

using Words = std::vector<ZetString>;

/// The text with the numbers of source lines, which mean nothing, as "#".
std::string withoutLines(const std::string& text)
{
    return std::regex_replace(text, std::regex(" : [0-9]+\\)"), " : #)");
}

/// Adds the arguments of the program that most cases run.
void addArguments(ZetClParser& parser)
{
    ZetMetaProperty number = test::option(L'n', L"number", 0, ZetMetaType::Int);
    number.setValidator(new ZetNumValidator<int>(5, 0, 10));
    parser.add(test::valueArg(L'f', L"file", ZetMetaFlag::Required));
    parser.add(test::switchArg(L'q', L"quiet"));
    parser.add(new ZetClValueArg(number, 3));
    parser.add(test::unlabeledArg(L"out"));
}

/// Runs the program, which prints what it got where its command line is right.
ZetChildOutcome run(Words words, bool helpAndVersion = true, wchar_t delimiter = L'=')
{
    return ZetChildRun()([&] {
        ZetClParser parser(L"Computes.", L"1.2", delimiter, helpAndVersion);
        addArguments(parser);
        words.insert(words.begin(), L"prog");
        const ZetTextMsg result = parser.parse(words);
        internal::cout() << L"done" << result.text() << L"\n";
    });
}

const char* const kUsage =
    "\n"
    "USAGE: \n"
    "\n"
    "   prog  [-n=<Int>] [-q] -f=<ZetString> [-v] [-h] <ZetString>\n"
    "\n"
    "\n"
    "Where: \n"
    "\n"
    "   -n=<Int>,  --number=<Int>\n"
    "     tells number\n"
    "\n"
    "   -q,  --quiet\n"
    "     tells quiet\n"
    "\n"
    "   -f=<ZetString>,  --file=<ZetString>\n"
    "     (required) tells file\n"
    "\n"
    "   -v,  --version\n"
    "     Displays version information and exits\n"
    "\n"
    "   -h,  --help\n"
    "     Displays usage information and exits\n"
    "\n"
    "   <ZetString>\n"
    "     tells out\n"
    "\n"
    "\n"
    "   Computes.\n"
    "\n";

const char* const kVersion = "\nprog  version: 1.2\n\n";

/// How a failure whose line ends in \p message reads.
std::string failureText(const std::string& message)
{
    return "PARSE ERROR: error: " + message +
           "\n"
           "\n"
           "Brief USAGE: \n"
           "   prog  [-n=<Int>] [-q] -f=<ZetString> [-v] [-h] <ZetString>\n"
           "\n"
           "For complete USAGE and HELP type: \n"
           "   prog --help\n"
           "\n";
}

TEST(ZetClParserExit, success)
{
    const ZetChildOutcome outcome = run({L"-f=x", L"-q", L"y"});
    EXPECT_EQ(outcome.status, ZetChildRun::Returned);
    EXPECT_EQ(outcome.out, "done\n");
    EXPECT_EQ(outcome.err, "");
}

struct PrintRow
{
    Words words;
    const char* out;
};

TEST(ZetClParserExit, helpAndVersion)
{
    const PrintRow rows[] = {
        {{L"-h"}, kUsage},
        {{L"--help"}, kUsage},
        {{L"-v"}, kVersion},
        {{L"--version"}, kVersion},
        // what stands in front is taken first; what is behind, or missing, is not looked at
        {{L"-q", L"-h", L"-x"}, kUsage},
        {{L"-h", L"-v"}, kUsage},
        {{L"-v", L"-h"}, kVersion},
        // of a group version is asked before help
        {{L"-hv"}, kVersion},
        {{L"-vh"}, kVersion},
        {{L"-qh"}, kUsage},
        // any word of one dash that has the letter
        {{L"-path"}, kUsage},
    };
    for (const PrintRow& row : rows) {
        const ZetChildOutcome outcome = run(row.words);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.out, row.out);
        EXPECT_EQ(outcome.err, "");
    }
}

TEST(ZetClParserExit, helpAsAValue)
{
    const ZetChildOutcome outcome = run({L"-f", L"-h"}, true, L' ');
    EXPECT_EQ(outcome.status, ZetChildRun::Returned);
    EXPECT_EQ(outcome.out, "done\n");
}

struct FailureRow
{
    Words words;
    const char* message;
};

TEST(ZetClParserExit, failures)
{
    const FailureRow rows[] = {
        {{}, "Required argument missing: file - (ZetClParser : #)"},
        {{L"-f=x", L"y", L"z"}, "Couldn't find match for argument: z - (ZetClParser : #)"},
        // a message that ends in a blank gives two
        {{L"-f=x", L"-f=y"}, "Argument already set:  - (ZetClValueArg : #)"},
        {{L"-q", L"-q"}, "Argument already set:  - (ZetClSwitchArg : #)"},
        {{L"-f"}, "Couldn't find delimiter for this argument:  - (ZetClValueArg : #)"},
        // what a validator says of a value
        {{L"-n=11"}, "The value of '11' is not within [0, 10]. - (ZetNumValidator : #)"},
        // the consumed switch shows as its overwritten character
        {{L"-xq"}, "Couldn't find match for argument: -x\7 - (ZetClParser : #)"},
    };
    for (const FailureRow& row : rows) {
        const ZetChildOutcome outcome = run(row.words);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(withoutLines(outcome.err), failureText(row.message));
    }
}

TEST(ZetClParserExit, failuresOfGroups)
{
    const auto grouped = [](Words words) {
        return ZetChildRun()([&] {
            ZetClParser parser(L"Computes.", L"1.2", L'=', true);
            parser.xorAdd(test::valueArg(L'e', L"equation"), test::unlabeledArg(L"file"));
            words.insert(words.begin(), L"prog");
            parser.parse(words);
        });
    };
    const std::string rest =
        "\n"
        "\n"
        "Brief USAGE: \n"
        "   prog  {-e=<ZetString>|<ZetString>} [-v] [-h]\n"
        "\n"
        "For complete USAGE and HELP type: \n"
        "   prog --help\n"
        "\n";
    const FailureRow rows[] = {
        {{}, "PARSE ERROR: error: Required arguments missing: equation, file - (ZetClParser : #)"},
        {{L"-e=x", L"y"}, "PARSE ERROR: error: Mutually exclusive argument already set: 1 - (ZetClXorHandler : #)"},
        {{L"y", L"-e=x"}, "PARSE ERROR: error: Mutually exclusive argument already set:  - (ZetClValueArg : #)"},
    };
    for (const FailureRow& row : rows) {
        const ZetChildOutcome outcome = grouped(row.words);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(withoutLines(outcome.err), row.message + rest);
    }
}

TEST(ZetClParserExit, withoutHelpAFailurePrintsTheWholeUsage)
{
    const ZetChildOutcome outcome = run({L"-h"}, false);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out,
              "\n"
              "USAGE: \n"
              "\n"
              "   prog  [-n=<Int>] [-q] -f=<ZetString> <ZetString>\n"
              "\n"
              "\n"
              "Where: \n"
              "\n"
              "   -n=<Int>,  --number=<Int>\n"
              "     tells number\n"
              "\n"
              "   -q,  --quiet\n"
              "     tells quiet\n"
              "\n"
              "   -f=<ZetString>,  --file=<ZetString>\n"
              "     (required) tells file\n"
              "\n"
              "   <ZetString>\n"
              "     tells out\n"
              "\n"
              "\n"
              "   Computes.\n"
              "\n");
    // "-h" was taken as the unlabeled argument
    EXPECT_EQ(withoutLines(outcome.err), "PARSE ERROR: error: Required argument missing: file - (ZetClParser : #)\n\n");
}

/// Says on the error stream what it was asked for.
class Plain : public ZetClOutputIF
{
public:
    void usage(const ZetClParserIF&) const override { internal::cerr() << L"plain usage\n"; }
    void version(const ZetClParserIF&) const override { internal::cerr() << L"plain version\n"; }
    void failure(const ZetClParserIF&, const ZetTextMsg& message) const override
    {
        internal::cerr() << L"plain " << message.text() << L"\n";
    }
};

TEST(ZetClParserExit, helpAndVersionKeepTheFirstOutput)
{
    const auto runPlain = [](Words words) {
        return ZetChildRun()([&] {
            ZetClParser parser(L"Computes.", L"1.2", L'=', true);
            addArguments(parser);
            parser.setOutput(new Plain);
            words.insert(words.begin(), L"prog");
            parser.parse(words);
        });
    };
    const ZetChildOutcome help = runPlain({L"-h"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.out, kUsage);
    EXPECT_EQ(help.err, "");
    const ZetChildOutcome version = runPlain({L"-v"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.out, kVersion);
    const ZetChildOutcome failure = runPlain({L"y", L"z"});
    EXPECT_EQ(failure.status, 1);
    EXPECT_EQ(failure.out, "");
    EXPECT_EQ(failure.err, "plain Couldn't find match for argument: z\n");
}

/// Asks for the end of the program with a status of its own.
class Ending : public ZetClArgVisitorIF
{
public:
    ZetClArgVisitorIF* clone() const override { return new Ending; }
    void visit() override { throw ZetClExitException(42); }
};

TEST(ZetClParserExit, anyVisitorMayEndTheProgram)
{
    const ZetChildOutcome outcome = ZetChildRun()([] {
        ZetClParser parser(L"", L"", L'=', false);
        parser.add(new ZetClSwitchArg(test::option(L'e', L"end"), false, new Ending));
        std::vector<ZetString> args = {L"prog", L"-e"};
        parser.parse(args);
    });
    EXPECT_EQ(outcome.status, 42);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "");
}

TEST(ZetClParserExit, narrowWordsOfMain)
{
    const ZetChildOutcome outcome = ZetChildRun()([] {
        ZetClParser parser(L"Computes.", L"1.2", L'=', true);
        const char* const argv[] = {"./prog", "--version"};
        parser.parse(2, argv);
    });
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "\n./prog  version: 1.2\n\n");
}

}  // namespace
}  // namespace zet

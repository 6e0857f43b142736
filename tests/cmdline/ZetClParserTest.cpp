#include <zet/ZetClParser>

#include <gtest/gtest.h>

#include <zet/ZetClExitException>
#include <zet/ZetClHelpVisitor>
#include <zet/ZetClStdOutput>
#include <zet/ZetClVersionVisitor>
#include <zet/ZetMetaObjectImpl>
#include <zet/ZetMetaProperties>
#include <zet/ZetNumValidator>
#include <zet/ZetVersion>

#include "support/ZetCollectingHandler"
#include "support/ZetCommandLine"

namespace zet {
namespace {

using test::failureOf;
using test::multiSwitchArg;
using test::multiUnlabeledArg;
using test::multiValueArg;
using test::option;
using test::parserOf;
using test::switchArg;
using test::unlabeledArg;
using test::valueArg;

constexpr int kRequired = ZetMetaFlag::Required;

using Words = std::vector<ZetString>;

ZetString namesOf(const ZetClParser& parser)
{
    ZetStrList names;
    for (const ZetClArgPtr& arg : parser.argList()) {
        names.append(arg->name());
    }
    return names.toString(L" ");
}

// ---- construction --------------------------------------------------------------------------------

TEST(ZetClParser, aNewParser)
{
    const ZetClParser parser(L"Adds.", L"1.2", L'=', false);
    EXPECT_EQ(parser.className(), L"ZetClParser");
    EXPECT_EQ(parser.description(), L"Adds.");
    EXPECT_EQ(parser.version(), L"1.2");
    EXPECT_EQ(parser.delimiter(), L'=');
    EXPECT_EQ(parser.programName(), L"not_set_yet");
    EXPECT_TRUE(parser.argList().empty());
    EXPECT_TRUE(parser.xorHandler().groups().empty());
    EXPECT_FALSE(parser.hasHelpAndVersion());
    ASSERT_TRUE(parser.output());
    EXPECT_EQ(parser.output()->className(), L"ZetClStdOutput");
    EXPECT_EQ(parser.ZetClParserIF::className(), L"ZetClParserIF");
}

TEST(ZetClParser, helpAndVersion)
{
    const ZetClParser parser(L"Adds.", L"1.2", L'=', true);
    EXPECT_TRUE(parser.hasHelpAndVersion());
    // help was added first, so it stands behind
    ASSERT_EQ(namesOf(parser), L"version help");
    const ZetClArg& version = *parser.argList().front();
    const ZetClArg& help = *parser.argList().back();
    EXPECT_EQ(help.property().commandFlag(), L'h');
    EXPECT_EQ(help.property().description(), L"Displays usage information and exits");
    EXPECT_EQ(version.property().commandFlag(), L'v');
    EXPECT_EQ(version.property().description(), L"Displays version information and exits");
    for (const ZetClArg* arg : {&help, &version}) {
        EXPECT_EQ(arg->className(), L"ZetClSwitchArg");
        EXPECT_EQ(arg->property().type().type(), 0);
        EXPECT_EQ(arg->property().flags().flags(), ZetMetaFlag::Ignorable);
        EXPECT_EQ(arg->property().label(), arg->name());
        EXPECT_FALSE(arg->value().value<bool>());
    }
}

TEST(ZetClParser, theLastParserSetsTheDelimiterOfAll)
{
    const ZetClArgPtr file = valueArg(L'f', L"file");
    const auto first = parserOf({file}, L'=');
    const auto second = parserOf({valueArg(L'f', L"file")}, L':');
    EXPECT_EQ(first->delimiter(), L'=');
    EXPECT_EQ(ZetClArg::rdelimiter(), L':');
    EXPECT_EQ(failureOf(*first, {L"-f=x"}), L"Couldn't find match for argument: -f=x");
    EXPECT_EQ(failureOf(*first, {L"-f:x"}), L"");
    EXPECT_EQ(file->value().value<ZetString>(), L"x");
}

// ---- adding --------------------------------------------------------------------------------------

TEST(ZetClParser, orderOfTheList)
{
    const auto parser = parserOf({switchArg(L'a', L"a1"), unlabeledArg(L"u1", kRequired), valueArg(L'b', L"b2"),
                                  multiUnlabeledArg(L"u2"), switchArg(L'c', L"c3")});
    EXPECT_EQ(namesOf(*parser), L"c3 b2 a1 u1 u2");
}

/// What add() says to the last of some arguments.
struct RefusalRow
{
    std::vector<ZetClArgPtr> before;
    ZetClArgPtr arg;
    const wchar_t* text;
};

TEST(ZetClParser, refusedArguments)
{
    const wchar_t* const kNoMore =
        L"No more unlabeled arguments are allowed following an optional unlabeled arg: second";
    const RefusalRow rows[] = {
        {{switchArg(L'a', L"all")},
         valueArg(L'a', L"other"),
         L"Argument with same flag/name already exists: -a=<ZetString>,  --other=<ZetString>"},
        {{switchArg(L'a', L"all")}, switchArg(0, L"all"), L"Argument with same flag/name already exists: --all"},
        {{switchArg(L'a', L"all")}, switchArg(L'b', L"other"), L""},
        // a name, and even a flag, of an unlabeled argument counts too
        {{unlabeledArg(L"file")}, switchArg(0, L"file"), L"Argument with same flag/name already exists: --file"},
        {{new ZetClUnlabeledArg(option(L'f', L"file"), ZetVariant())},
         switchArg(L'f', L"fast"),
         L"Argument with same flag/name already exists: -f,  --fast"},
        // unlabeled arguments
        {{unlabeledArg(L"first")}, unlabeledArg(L"second"), kNoMore},
        {{unlabeledArg(L"first")}, unlabeledArg(L"second", kRequired), kNoMore},
        {{unlabeledArg(L"first")}, multiUnlabeledArg(L"second"), kNoMore},
        {{unlabeledArg(L"first", kRequired)}, unlabeledArg(L"second"), L""},
        {{unlabeledArg(L"first", kRequired)}, multiUnlabeledArg(L"second", kRequired), L""},
        {{unlabeledArg(L"first")}, switchArg(L's', L"second"), L""},
        // one for many values lets others follow that can never be reached
        {{multiUnlabeledArg(L"first")}, unlabeledArg(L"second"), L""},
        {{multiUnlabeledArg(L"first", kRequired)}, unlabeledArg(L"second", kRequired), L""},
        // the rule on unlabeled arguments comes before the names
        {{unlabeledArg(L"second")}, unlabeledArg(L"second"), kNoMore},
    };
    for (const RefusalRow& row : rows) {
        const auto parser = parserOf(row.before);
        if (*row.text == 0) {
            EXPECT_NO_THROW(parser->add(row.arg));
            EXPECT_EQ(parser->argList().size(), row.before.size() + 1);
            continue;
        }
        const ZetTextMsg message = test::thrownBy([&] { parser->add(row.arg); });
        EXPECT_EQ(message.text(), row.text);
        EXPECT_EQ(message.file(), L"ZetClParser");
        EXPECT_EQ(message.kind(), ZetTextMsg::Error);
        EXPECT_EQ(parser->argList().size(), row.before.size());
    }
}

TEST(ZetClParser, aRefusedOptionalArgumentStillClosesTheList)
{
    const auto parser = parserOf({switchArg(0, L"file")});
    EXPECT_EQ(test::thrownBy([&] { parser->add(unlabeledArg(L"file")); }).text(),
              L"Argument with same flag/name already exists: <ZetString>");
    EXPECT_EQ(test::thrownBy([&] { parser->add(unlabeledArg(L"second", kRequired)); }).text(),
              L"No more unlabeled arguments are allowed following an optional unlabeled arg: second");
}

TEST(ZetClParser, failuresOfSettingUpPassTheHandlerBy)
{
    const test::ZetCollectingHandler posted;
    const auto parser = parserOf({switchArg(L'a', L"all")});
    EXPECT_THROW(parser->add(switchArg(L'a', L"all")), ZetTextMsg);
    EXPECT_TRUE(posted.messages().empty());
}

TEST(ZetClParser, xorAddMakesMembersRequired)
{
    const ZetClArgPtr a = valueArg(L'a', L"all", ZetMetaFlag::InFileName);
    const ZetClArgPtr b = switchArg(L'b', L"bit");
    const auto parser = parserOf({});
    parser->xorAdd(a, b);
    EXPECT_EQ(namesOf(*parser), L"bit all");
    EXPECT_EQ(a->property().flags().flags(), ZetMetaFlag::InFileName | kRequired);
    EXPECT_EQ(a->requireLabel(), L"OR required");
    EXPECT_EQ(b->description(), L"(OR required) tells bit");
    ASSERT_EQ(parser->xorHandler().groups().size(), 1u);
    EXPECT_EQ(parser->xorHandler().groups().front(), (ZetClXorHandler::Group{a, b}));
    // none are no group
    parser->xorAdd({});
    EXPECT_EQ(parser->xorHandler().groups().size(), 1u);
    // a refused member leaves no group, but those before it as arguments
    const ZetClArgPtr c = switchArg(L'c', L"cut");
    EXPECT_THROW(parser->xorAdd({c, switchArg(L'a', L"again"), switchArg(L'd', L"deep")}), ZetTextMsg);
    EXPECT_EQ(namesOf(*parser), L"cut bit all");
    EXPECT_EQ(parser->xorHandler().groups().size(), 1u);
    EXPECT_TRUE(c->isRequired());
}

// ---- parsing -------------------------------------------------------------------------------------

TEST(ZetClParser, parseFillsTheArguments)
{
    const ZetClArgPtr all = switchArg(L'a', L"all");
    const ZetClArgPtr file = valueArg(L'f', L"file", kRequired);
    const ZetClArgPtr rest = multiUnlabeledArg(L"rest");
    const auto parser = parserOf({all, file, rest});
    std::vector<ZetString> args = {L"dir/prog", L"one", L"-a", L"--file=x", L"two"};
    const ZetTextMsg result = parser->parse(args);
    EXPECT_EQ(result, ZetTextMsg(L"", ZetTextMsg::Error));
    EXPECT_EQ(parser->programName(), L"dir/prog");
    EXPECT_EQ(args, (Words{L"one", L"-a", L"--file=x", L"two"}));
    EXPECT_TRUE(all->value().value<bool>());
    EXPECT_EQ(file->value().value<ZetString>(), L"x");
    EXPECT_EQ(test::textsOf(*rest), (Words{L"one", L"two"}));
}

TEST(ZetClParser, parseOfNarrowWords)
{
    const ZetClArgPtr file = valueArg(L'f', L"file");
    const auto parser = parserOf({file});
    const char* const argv[] = {"prog", "-f=x", "never"};
    EXPECT_EQ(parser->parse(2, argv).text(), L"");
    EXPECT_EQ(parser->programName(), L"prog");
    EXPECT_EQ(file->value().value<ZetString>(), L"x");
    const auto empty = parserOf({});
    EXPECT_EQ(empty->parse(0, nullptr).text(), L"");
    EXPECT_EQ(empty->programName(), L"not_set_yet");
}

/// Sees the words that the other form of parse() is given.
class Watching : public ZetClParser
{
public:
    Watching() : ZetClParser(L"", L"", L'=', false) {}
    using ZetClParser::parse;
    ZetTextMsg parse(std::vector<ZetString>& args) override
    {
        seen = args;
        return ZetTextMsg(L"seen", ZetTextMsg::Info);
    }
    void xorAdd(const std::vector<ZetClArgPtr>& group) override { groups.push_back(group.size()); }
    using ZetClParser::xorAdd;

    Words seen;
    std::vector<std::size_t> groups;
};

TEST(ZetClParser, theShortFormsCallTheVirtualOnes)
{
    Watching parser;
    const char* const argv[] = {"prog", "x"};
    EXPECT_EQ(parser.parse(2, argv).text(), L"seen");
    EXPECT_EQ(parser.seen, (Words{L"prog", L"x"}));
    parser.xorAdd(switchArg(L'a', L"all"), switchArg(L'b', L"bit"));
    EXPECT_EQ(parser.groups, std::vector<std::size_t>{2});
}

/// What some arguments say to some words; an empty text is success.
struct ParseRow
{
    std::vector<ZetClArgPtr> args;
    Words words;
    const wchar_t* text;
};

void expectParses(const std::vector<ParseRow>& rows, wchar_t delimiter = L'=')
{
    for (const ParseRow& row : rows) {
        const auto parser = parserOf(row.args, delimiter);
        std::wstring all;
        for (const ZetString& word : row.words) {
            all += word + L" ";
        }
        EXPECT_EQ(failureOf(*parser, row.words), row.text) << all;
    }
}

TEST(ZetClParser, unmatchedWords)
{
    expectParses({
        {{}, {}, L""},
        {{}, {L"x"}, L"Couldn't find match for argument: x"},
        {{switchArg(L'a', L"all")}, {L"-b"}, L"Couldn't find match for argument: -b"},
        // a word that is empty, and a group without switches
        {{}, {L""}, L""},
        {{}, {L"-"}, L""},
        {{}, {L"-\7\7"}, L""},
        {{}, {L"-\7 "}, L"Couldn't find match for argument: -\7 "},
        {{}, {L"\7"}, L"Couldn't find match for argument: \7"},
    });
}

TEST(ZetClParser, twoDashesMeanNothingSpecial)
{
    expectParses({
        {{switchArg(L'a', L"all")}, {L"--", L"-a"}, L"Couldn't find match for argument: --"},
        {{switchArg(L'a', L"ignore_rest")}, {L"--", L"-a"}, L"Couldn't find match for argument: --"},
        {{unlabeledArg(L"file")}, {L"--"}, L""},
    });
    // an argument behind a marker is taken like any other
    const ZetClArgPtr all = switchArg(L'a', L"all");
    const auto parser = parserOf({all, switchArg(L'-', L"ignore_rest"), multiUnlabeledArg(L"rest")});
    EXPECT_EQ(failureOf(*parser, {L"--", L"-a"}), L"");
    EXPECT_TRUE(all->alreadySet());
}

TEST(ZetClParser, unlabeledArgumentsTakeWhatIsLeft)
{
    const ZetClArgPtr all = switchArg(L'a', L"all");
    const ZetClArgPtr first = unlabeledArg(L"first", kRequired);
    const ZetClArgPtr rest = multiUnlabeledArg(L"rest");
    const auto parser = parserOf({first, rest, all});
    EXPECT_EQ(failureOf(*parser, {L"-x", L"-a", L"", L"-"}), L"");
    EXPECT_EQ(first->value().value<ZetString>(), L"-x");
    EXPECT_EQ(test::textsOf(*rest), (Words{L"", L"-"}));
    EXPECT_TRUE(all->alreadySet());
}

TEST(ZetClParser, valuesOfOptions)
{
    const wchar_t* const noDelimiter = L"Couldn't find delimiter for this argument: ";
    expectParses({
        {{valueArg(L'f', L"file")}, {L"-f=x"}, L""},
        {{valueArg(L'f', L"file")}, {L"-f"}, noDelimiter},
        {{valueArg(L'f', L"file")}, {L"-f="}, noDelimiter},
        {{valueArg(L'f', L"file")}, {L"-f", L"x"}, noDelimiter},
        {{valueArg(L'f', L"file")}, {L"-f=x", L"--file=y"}, L"Argument already set: "},
        {{multiValueArg(L'f', L"file")}, {L"-f=x", L"--file=y"}, L""},
    });
    expectParses(
        {
            {{valueArg(L'f', L"file")}, {L"-f", L"x"}, L""},
            {{valueArg(L'f', L"file")}, {L"-f"}, L"Missing a value for this argument: "},
            {{valueArg(L'f', L"file")}, {L"-f", L"x", L"y"}, L"Couldn't find match for argument: y"},
            {{valueArg(L'f', L"file")}, {L"-f=x"}, L"Couldn't find match for argument: -f=x"},
        },
        L' ');
}

TEST(ZetClParser, groupsOfSwitches)
{
    const ZetClArgPtr a = switchArg(L'a', L"all");
    const ZetClArgPtr b = switchArg(L'b', L"bit");
    const ZetClArgPtr c = switchArg(L'c', L"cut");
    const auto parser = parserOf({a, b, c});
    EXPECT_EQ(failureOf(*parser, {L"-abc"}), L"");
    for (const ZetClArgPtr& arg : {a, b, c}) {
        EXPECT_TRUE(arg->value().value<bool>());
    }
    expectParses({
        {{switchArg(L'a', L"all")}, {L"-aa"}, L"Argument already set: "},
        {{switchArg(L'a', L"all"), switchArg(L'b', L"bit")}, {L"-aba"}, L"Argument already set: "},
        {{switchArg(L'a', L"all"), switchArg(L'b', L"bit")}, {L"-a", L"-ba"}, L"Argument already set: "},
        // the text of a failure shows consumed switches as they were overwritten
        {{switchArg(L'a', L"all")}, {L"-axa"}, L"Argument already set: "},
        {{switchArg(L'a', L"all")}, {L"-xay"}, L"Couldn't find match for argument: -x\7y"},
        {{multiSwitchArg(L'v', L"verbose")}, {L"-vvv"}, L""},
        {{multiSwitchArg(L'v', L"verbose")}, {L"-vxv"}, L"Couldn't find match for argument: -\7x\7"},
        // an option with a value does not stand in a group
        {{switchArg(L'a', L"all"), valueArg(L'f', L"file")}, {L"-af=x"}, L"Couldn't find match for argument: -af=x"},
        {{switchArg(L'a', L"all"), valueArg(L'f', L"file")}, {L"-fa"}, L"Couldn't find match for argument: -f\7"},
        // nor is what is left of a group a value for others
        {{switchArg(L'a', L"all"), multiUnlabeledArg(L"rest")}, {L"-ax"}, L"Couldn't find match for argument: -\7x"},
    });
}

TEST(ZetClParser, theCallersWordsAreOverwritten)
{
    const auto parser = parserOf({switchArg(L'a', L"all"), switchArg(L'b', L"bit"), multiSwitchArg(L'v', L"verbose")});
    std::vector<ZetString> args = {L"prog", L"-avbv", L"-v", L"--verbose"};
    parser->parse(args);
    EXPECT_EQ(args, (Words{L"-\7\7\7\7", L"-v", L"--verbose"}));
}

TEST(ZetClParser, multiSwitchesBesideSwitches)
{
    // in either order of adding, so of being asked
    for (const bool multiLast : {false, true}) {
        const ZetClArgPtr all = switchArg(L'a', L"all");
        const ZetClArgPtr verbose = multiSwitchArg(L'v', L"verbose");
        const auto parser = multiLast ? parserOf({all, verbose}) : parserOf({verbose, all});
        EXPECT_EQ(failureOf(*parser, {L"-vav", L"-v"}), L"");
        EXPECT_TRUE(all->value().value<bool>());
        EXPECT_EQ(verbose->value().value<unsigned int>(), 3u);
    }
}

TEST(ZetClParser, switchesSetBeforeAFailureStaySet)
{
    const ZetClArgPtr a = switchArg(L'a', L"all");
    const ZetClArgPtr b = switchArg(L'b', L"bit");
    const auto parser = parserOf({a, b});
    // the last one added is asked first
    EXPECT_EQ(failureOf(*parser, {L"-baa"}), L"Argument already set: ");
    EXPECT_TRUE(b->alreadySet());
    EXPECT_FALSE(a->alreadySet());
    EXPECT_EQ(failureOf(*parser, {L"-a", L"-x"}), L"Couldn't find match for argument: -x");
    EXPECT_TRUE(a->alreadySet());
}

// ---- what is required ----------------------------------------------------------------------------

TEST(ZetClParser, missingArguments)
{
    expectParses({
        {{valueArg(L'f', L"file", kRequired)}, {}, L"Required argument missing: file"},
        {{switchArg(L'a', L"all", kRequired)}, {}, L"Required argument missing: all"},
        {{unlabeledArg(L"file", kRequired)}, {}, L"Required argument missing: file"},
        // in the order of the list, with the plain names
        {{valueArg(L'f', L"file", kRequired), valueArg(L'g', L"gain", kRequired), unlabeledArg(L"out", kRequired),
          switchArg(L'a', L"all")},
         {L"-a"},
         L"Required arguments missing: gain, file, out"},
        {{valueArg(L'f', L"file", kRequired), valueArg(L'g', L"gain", kRequired)},
         {L"-f=x"},
         L"Required argument missing: gain"},
        {{valueArg(L'f', L"file", kRequired)}, {L"-f=x"}, L""},
        // an unmatched word comes first
        {{valueArg(L'f', L"file", kRequired)}, {L"x"}, L"Couldn't find match for argument: x"},
        // an empty word at an unlabeled argument is one
        {{unlabeledArg(L"file", kRequired)}, {L""}, L""},
    });
}

TEST(ZetClParser, requiredCounts)
{
    const wchar_t* const tooMany = L"Too many arguments!";
    expectParses({
        // each word of a required argument for many words counts
        {{multiUnlabeledArg(L"files", kRequired)}, {L"x"}, L""},
        {{multiUnlabeledArg(L"files", kRequired)}, {L"x", L"y"}, tooMany},
        {{multiUnlabeledArg(L"files")}, {L"x", L"y"}, L""},
        // a required multi-switch counts each word that is its own, and none of its groups
        {{multiSwitchArg(L'v', L"verbose", kRequired)}, {L"-v"}, L""},
        {{multiSwitchArg(L'v', L"verbose", kRequired)}, {L"-v", L"-v"}, tooMany},
        {{multiSwitchArg(L'v', L"verbose", kRequired)}, {L"-vv"}, L"Required argument missing: "},
        {{multiSwitchArg(L'v', L"verbose", kRequired)}, {L"-vv", L"-v"}, L""},
        // of the required switches in a group only the one that ends it counts
        {{switchArg(L'a', L"all", kRequired)}, {L"-a"}, L""},
        {{switchArg(L'a', L"all", kRequired), switchArg(L'b', L"bit", kRequired)}, {L"-a", L"-b"}, L""},
        {{switchArg(L'a', L"all", kRequired), switchArg(L'b', L"bit", kRequired)},
         {L"-ab"},
         L"Required argument missing: "},
        // the switch asked last ends it
        {{switchArg(L'a', L"all", kRequired), switchArg(L'b', L"bit")}, {L"-ab"}, L""},
        {{switchArg(L'a', L"all"), switchArg(L'b', L"bit", kRequired)}, {L"-ab"}, L"Required argument missing: "},
    });
}

TEST(ZetClParser, requiredMultiValueArguments)
{
    // by the time it is counted it has a value and is required no more
    expectParses({
        {{multiValueArg(L'f', L"file", kRequired)}, {}, L"Required argument missing: file"},
        {{multiValueArg(L'f', L"file", kRequired)}, {L"-f=x"}, L"Required argument missing: "},
        {{multiValueArg(L'f', L"file", kRequired)}, {L"-f=x", L"-f=y"}, L"Required argument missing: "},
        // with a default value it never was
        {{multiValueArg(L'f', L"file", kRequired, ZetVariantList())}, {}, L""},
        {{multiValueArg(L'f', L"file", kRequired, ZetVariantList())}, {L"-f=x"}, L""},
    });
}

TEST(ZetClParser, failuresBearTheirUnit)
{
    const auto parser = parserOf({valueArg(L'f', L"file", kRequired)});
    for (const Words& words : {Words{}, Words{L"x"}}) {
        const ZetTextMsg message = test::thrownBy([&] { test::parseWords(*parser, words); });
        EXPECT_EQ(message.file(), L"ZetClParser");
        EXPECT_EQ(message.kind(), ZetTextMsg::Error);
        EXPECT_GT(message.line(), 0);
    }
}

TEST(ZetClParser, refusedValues)
{
    ZetMetaProperty property = option(L'n', L"number", 0, ZetMetaType::Int);
    property.setValidator(new ZetNumValidator<int>(5, 0, 10));
    const ZetClArgPtr number = new ZetClValueArg(property, 3);
    const auto parser = parserOf({number});
    EXPECT_EQ(failureOf(*parser, {L"-n=11"}), L"The value of '11' is not within [0, 10].");
    EXPECT_EQ(number->value().value<int>(), 3);
    EXPECT_EQ(failureOf(*parser, {L"-n=10"}), L"");
    EXPECT_EQ(number->value().value<int>(), 10);
}

// ---- resetting -----------------------------------------------------------------------------------

TEST(ZetClParser, parsingTwice)
{
    const ZetClArgPtr file = valueArg(L'f', L"file", kRequired, L"preset");
    const auto parser = parserOf({file});
    EXPECT_EQ(failureOf(*parser, {L"-f=x"}), L"");
    EXPECT_EQ(failureOf(*parser, {L"-f=y"}), L"Argument already set: ");
    parser->reset();
    EXPECT_EQ(parser->programName(), L"");
    EXPECT_EQ(file->value().value<ZetString>(), L"preset");
    EXPECT_EQ(failureOf(*parser, {L"-f=y"}), L"");
    EXPECT_EQ(file->value().value<ZetString>(), L"y");
    // what is required stays so
    parser->reset();
    EXPECT_EQ(failureOf(*parser, {}), L"Required argument missing: file");
}

TEST(ZetClParser, anEmptyCommandLine)
{
    const auto parser = parserOf({valueArg(L'f', L"file", kRequired)});
    std::vector<ZetString> none;
    EXPECT_EQ(test::thrownBy([&] { parser->parse(none); }).text(), L"Required argument missing: file");
    EXPECT_EQ(parser->programName(), L"not_set_yet");
    std::vector<ZetString> args = {L"prog", L"-f=x"};
    parser->parse(args);
    parser->reset();
    EXPECT_THROW(parser->parse(none), ZetTextMsg);
    EXPECT_EQ(parser->programName(), L"");
    // without required arguments it is a command line like any other
    const auto free = parserOf({switchArg(L'a', L"all")});
    EXPECT_EQ(free->parse(none).text(), L"");
    EXPECT_EQ(free->programName(), L"not_set_yet");
}

// ---- visitors ------------------------------------------------------------------------------------

TEST(ZetClParser, visitorsOfHelpAndVersion)
{
    /// Notes which text was asked for.
    class Noting : public test::ZetThrowingOutput
    {
    public:
        explicit Noting(ZetString* notes) : m_notes(notes) {}
        void usage(const ZetClParserIF& parser) const override { *m_notes += L"usage of " + parser.version() + L";"; }
        void version(const ZetClParserIF& parser) const override
        {
            *m_notes += L"version of " + parser.version() + L";";
        }

    private:
        ZetString* m_notes;
    };

    ZetString notes;
    const ZetClParser parser(L"", L"1.2", L'=', false);
    ZetClHelpVisitor help(&parser, new Noting(&notes));
    ZetClVersionVisitor version(&parser, new Noting(&notes));
    EXPECT_EQ(help.className(), L"ZetClHelpVisitor");
    EXPECT_EQ(version.className(), L"ZetClVersionVisitor");
    EXPECT_EQ(help.ZetClArgVisitorIF::className(), L"ZetClArgVisitorIF");
    EXPECT_EQ(parser.output()->ZetClOutputIF::className(), L"ZetClOutputIF");
    const ZetClArgVisitorIFPtr clones[] = {help.clone(), version.clone()};
    for (ZetClArgVisitorIF* visitor : {static_cast<ZetClArgVisitorIF*>(&help), clones[0].get(),
                                       static_cast<ZetClArgVisitorIF*>(&version), clones[1].get()}) {
        try {
            visitor->visit();
            ADD_FAILURE() << "nothing was thrown";
        } catch (const ZetClExitException& end) {
            EXPECT_EQ(end.status(), 0);
            EXPECT_EQ(end.className(), L"ZetClExitException");
        }
    }
    EXPECT_EQ(notes, L"usage of 1.2;usage of 1.2;version of 1.2;version of 1.2;");
}

TEST(ZetClIgnoreRestVisitor, remembersTheMarker)
{
    ZetClIgnoreRestVisitor visitor;
    EXPECT_EQ(visitor.className(), L"ZetClIgnoreRestVisitor");
    EXPECT_FALSE(visitor.visited());
    visitor.visit();
    EXPECT_TRUE(visitor.visited());
    const ZetClArgVisitorIFPtr clone = visitor.clone();
    EXPECT_TRUE(dynamic_cast<ZetClIgnoreRestVisitor&>(*clone).visited());
    visitor.reset();
    EXPECT_FALSE(visitor.visited());
}

TEST(ZetClParser, argumentsOfAProperty)
{
    // any property of a meta object makes an option
    ZetVersion version;
    const ZetMetaPropertyConstPtr minor = version.metaObject()->properties()->property(L"minor", false);
    ZetMetaProperty property = *minor;
    property.setCommandFlag(L'm');
    const ZetClArgPtr arg = new ZetClValueArg(property, 0);
    EXPECT_EQ(arg->name(), L"minor");
    const auto parser = parserOf({arg});
    EXPECT_EQ(arg->longID(L"val"), L"-m=<Int>,  --minor=<Int>");
    EXPECT_EQ(failureOf(*parser, {L"-m=7"}), L"");
    version.metaObject()->setPropertyValue(arg->name(), arg->value());
    EXPECT_EQ(version.minor(), 7);
}

/// What a program takes, as properties.
class Settings : public ZetObject
{
public:
    using ZetObject::metaObject;
    ZetMetaObjectConstPtr metaObject() const override;

    ZetString m_file = L"preset";
    int m_level = 2;
};

class SettingsMetaObj : public ZetMetaObjectImpl<SettingsMetaObj, Settings>
{
public:
    using ZetMetaObjectImpl::ZetMetaObjectImpl;
    ZET_PROPERTY(ZetString, file)
    ZET_PROPERTY(int, level)
    static ZetMetaPropertiesPtr staticProperties()
    {
        static constexpr Row rows[] = {
            ZET_OPTION(file, L'f', ZetMetaFlag::InFileName | ZetMetaFlag::Required, L"the file to read"),
            ZET_OPTION(level, 0, 0, L"how much is told"),
        };
        return fill(L"Settings", rows);
    }
};

ZetMetaObjectConstPtr Settings::metaObject() const
{
    return new SettingsMetaObj(this);
}

TEST(ZetClParser, optionsOfAReflectedClass)
{
    Settings settings;
    const auto parser = parserOf({});
    for (const ZetMetaPropertyConstPtr& property : *settings.metaObject()->properties()) {
        parser->add(new ZetClValueArg(*property, ZetVariant()));
    }
    const ZetClArg& level = *parser->argList().front();
    const ZetClArg& file = *parser->argList().back();
    EXPECT_EQ(level.longID(L"val"), L"--level=<Int>");
    EXPECT_EQ(level.description(), L"how much is told");
    EXPECT_EQ(level.property().label(), L"level");
    EXPECT_EQ(file.longID(L"val"), L"-f=<ZetString>,  --file=<ZetString>");
    EXPECT_EQ(file.description(), L"(required) the file to read");
    EXPECT_EQ(file.property().flags().flags(), 0x800 | 0x8);
    EXPECT_EQ(failureOf(*parser, {L"-f=x", L"--level=7"}), L"");
    for (const ZetClArgPtr& arg : parser->argList()) {
        settings.metaObject()->setPropertyValue(arg->name(), arg->value());
    }
    EXPECT_EQ(settings.m_file, L"x");
    EXPECT_EQ(settings.m_level, 7);
}

}  // namespace
}  // namespace zet

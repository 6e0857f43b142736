#include <zet/ZetClArg>

#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetNumValidator>

#include "support/ZetCollectingHandler"
#include "support/ZetCommandLine"

namespace zet {
namespace {

using test::option;

/// An option of two digits, which its validator lets range from 10 to 20.
ZetMetaProperty ranged(wchar_t flag, const ZetString& name)
{
    ZetMetaProperty property = option(flag, name, 0, ZetMetaType::Int);
    property.setValidator(new ZetNumValidator<int>(5, 10, 20));
    return property;
}

/// Sets the delimiter of the process, as a parser that is made does.
void useDelimiter(wchar_t delimiter)
{
    ZetClArg::rdelimiter() = delimiter;
}

// ---- construction --------------------------------------------------------------------------------

TEST(ZetClArg, fieldsOfANewArgument)
{
    const ZetMetaProperty property = option(L'f', L" file ", ZetMetaFlag::Required);
    const ZetClValueArg arg(property, L"preset");
    EXPECT_EQ(arg.name(), L"file");
    EXPECT_EQ(arg.property(), property);
    EXPECT_EQ(arg.value().value<ZetString>(), L"preset");
    EXPECT_EQ(arg.defaultValue().value<ZetString>(), L"preset");
    EXPECT_EQ(arg.requireLabel(), L"required");
    EXPECT_FALSE(arg.alreadySet());
    EXPECT_FALSE(arg.xorSet());
    // the property is a copy
    EXPECT_NE(&arg.property(), &property);
}

struct FamilyRow
{
    ZetClArgPtr arg;
    const wchar_t* className;
    bool isLabeled;
    bool isSwitch;
    bool isMultiValue;
    int flags;
};

TEST(ZetClArg, family)
{
    constexpr int ignorable = 0x20;
    const FamilyRow rows[] = {
        {test::switchArg(L'a', L"all"), L"ZetClSwitchArg", true, true, false, ignorable},
        {test::multiSwitchArg(L'a', L"all"), L"ZetClMultiSwitchArg", true, true, false, ignorable},
        {test::valueArg(L'a', L"all"), L"ZetClValueArg", true, false, false, 0},
        {test::multiValueArg(L'a', L"all"), L"ZetClMultiValueArg", true, false, true, 0},
        {test::unlabeledArg(L"all"), L"ZetClUnlabeledArg", false, false, false, 0},
        {test::multiUnlabeledArg(L"all"), L"ZetClMultiUnlabeledArg", false, false, true, 0},
    };
    for (const FamilyRow& row : rows) {
        EXPECT_EQ(row.arg->className(), row.className);
        EXPECT_EQ(row.arg->isLabeled(), row.isLabeled) << row.className;
        EXPECT_EQ(row.arg->isSwitch(), row.isSwitch) << row.className;
        EXPECT_EQ(row.arg->isMultiValue(), row.isMultiValue) << row.className;
        EXPECT_EQ(row.arg->property().flags().flags(), row.flags) << row.className;
    }
    EXPECT_EQ(rows[0].arg->ZetClArg::className(), L"ZetClArg");
}

TEST(ZetClArg, onlyMultiValueArgumentsAllowMore)
{
    for (const ZetClArgPtr& arg : {test::switchArg(L'a', L"all"), test::valueArg(L'a', L"all"),
                                   test::unlabeledArg(L"all"), test::multiUnlabeledArg(L"all")}) {
        EXPECT_FALSE(arg->allowMore());
        EXPECT_FALSE(arg->allowMore());
    }
    const ZetClArgPtr multi = test::multiValueArg(L'a', L"all");
    EXPECT_FALSE(multi->allowMore());
    EXPECT_TRUE(multi->allowMore());
    EXPECT_TRUE(multi->allowMore());
    multi->reset();
    EXPECT_FALSE(multi->allowMore());
}

TEST(ZetClArg, flagsOfSwitchesAreMadeConsistent)
{
    // a new flag is normalised with the others: two kinds of file names drive each other out
    const int files = ZetMetaFlag::InFileName | ZetMetaFlag::OutFileName;
    ZetMetaFlag loose;
    loose.setFlag(files);
    EXPECT_EQ(test::switchArg(L'a', L"all", files)->property().flags().flags(), 0x20);
    const ZetClArgPtr returned = test::switchArg(L'a', L"all", ZetMetaFlag::Return | ZetMetaFlag::NoCrossRef);
    EXPECT_EQ(returned->property().flags().flags(), 0x80 | 0x20);
}

// ---- construction faults -------------------------------------------------------------------------

struct FaultRow
{
    wchar_t flag;
    const wchar_t* name;
    std::vector<ZetString> posted;
};

const ZetString kFlagFault = L"Argument flag cannot be either '-' or '--' or a space: ";
const ZetString kNameFault = L"Argument name cannot begin with either '-' or '--' or space: ";

const FaultRow kFaults[] = {
    {L'a', L"all", {}},
    {0, L"all", {}},
    {L'-', L"all", {kFlagFault + L"-- (--all)"}},
    {L' ', L"all", {kFlagFault + L"-  (--all)"}},
    {L'a', L"-all", {kNameFault + L"-a (---all)"}},
    {L'a', L"--all", {kNameFault + L"-a (----all)"}},
    {0, L"all of it", {kNameFault + L"(--all of it)"}},
    {L'-', L"-", {kFlagFault + L"-- (---)", kNameFault + L"-- (---)"}},
    // the ends of a name are trimmed by the property
    {L'a', L" all ", {}},
    // dashes and other white space inside are no fault
    {L'a', L"a-l\tl", {}},
    // the one name that is exempt, by exactly this spelling
    {L'-', L"ignore_rest", {}},
    {L' ', L"ignore_rest", {}},
    {L'-', L"ignore_Rest", {kFlagFault + L"-- (--ignore_Rest)"}},
};

TEST(ZetClArg, constructionFaultsArePosted)
{
    for (const FaultRow& row : kFaults) {
        const test::ZetCollectingHandler posted;
        const ZetClArgPtr arg = test::valueArg(row.flag, row.name, 0, L"preset");
        EXPECT_EQ(posted.texts(), row.posted);
        for (const ZetTextMsg& message : posted.messages()) {
            EXPECT_EQ(message.file(), L"ZetClArg");
            EXPECT_EQ(message.kind(), ZetTextMsg::Error);
        }
        // the argument is usable
        EXPECT_EQ(arg->value().value<ZetString>(), L"preset");
        EXPECT_TRUE(arg->argMatches(L"--" + arg->name()));
        arg->setValue(L"set");
        EXPECT_EQ(arg->value().value<ZetString>(), L"set");
    }
}

TEST(ZetClArg, constructionFaultsThrowUnderTheDefaultHandler)
{
    for (const FaultRow& row : kFaults) {
        if (row.posted.empty()) {
            EXPECT_NO_THROW(test::switchArg(row.flag, row.name));
        } else {
            const ZetTextMsg message = test::thrownBy([&] { test::switchArg(row.flag, row.name); });
            EXPECT_EQ(message.text(), row.posted.front());
        }
    }
}

TEST(ZetClArg, aFlagOfADashWorks)
{
    const test::ZetCollectingHandler posted;
    useDelimiter(L'=');
    const ZetClArgPtr arg = test::switchArg(L'-', L"all");
    EXPECT_EQ(posted.messages().size(), 1u);
    EXPECT_TRUE(arg->argMatches(L"--"));
    EXPECT_TRUE(arg->argMatches(L"--all"));
    // but it is never found in a group
    ZetString group = L"-a-";
    EXPECT_FALSE(arg->combinedSwitchesMatch(group));
    EXPECT_EQ(group, L"-a-");
    std::vector<ZetString> args = {L"--all"};
    int i = 0;
    EXPECT_TRUE(arg->processArg(&i, args));
    EXPECT_TRUE(arg->value().value<bool>());
}

// ---- texts ---------------------------------------------------------------------------------------

TEST(ZetClArg, streamForm)
{
    std::wostringstream out;
    out << *test::switchArg(L'a', L"all") << L'|' << *test::unlabeledArg(L"file");
    EXPECT_EQ(out.str(), L"-a (--all)|(--file)");
}

TEST(ZetClArg, description)
{
    const ZetClArgPtr optional = test::valueArg(L'f', L"file");
    EXPECT_EQ(optional->description(), L"tells file");
    const ZetClArgPtr required = test::valueArg(L'f', L"file", ZetMetaFlag::Required);
    EXPECT_EQ(required->description(), L"(required) tells file");
    required->setRequireLabel(L"OR required");
    EXPECT_EQ(required->description(), L"(OR required) tells file");
}

struct IdentifierRow
{
    ZetClArgPtr arg;
    const wchar_t* shortID;
    const wchar_t* longID;
};

TEST(ZetClArg, identifiers)
{
    constexpr int required = ZetMetaFlag::Required;
    useDelimiter(L'=');
    const IdentifierRow rows[] = {
        {test::switchArg(L'a', L"all"), L"[-a]", L"-a,  --all"},
        {test::switchArg(0, L"all"), L"[--all]", L"--all"},
        {test::switchArg(L'a', L"all", required), L"-a", L"-a,  --all"},
        {test::multiSwitchArg(L'a', L"all"), L"[-a] ... ", L"-a,  --all (accepted multiple times)"},
        {test::multiSwitchArg(0, L"all", required), L"--all ... ", L"--all (accepted multiple times)"},
        // values are called by their types
        {test::valueArg(L'a', L"all"), L"[-a=<ZetString>]", L"-a=<ZetString>,  --all=<ZetString>"},
        {test::valueArg(0, L"all", required), L"--all=<ZetString>", L"--all=<ZetString>"},
        {new ZetClValueArg(option(L'a', L"all", 0, ZetMetaType::Double), 1.5), L"[-a=<Double>]",
         L"-a=<Double>,  --all=<Double>"},
        {new ZetClValueArg(option(0, L"all", 0, ZetMetaType::Invalid), 1.5), L"[--all=<>]", L"--all=<>"},
        {test::multiValueArg(L'a', L"all"), L"[-a=<ZetString>] ... ",
         L"-a=<ZetString>,  --all=<ZetString> (accepted multiple times)"},
        {test::multiValueArg(0, L"all", required), L"--all=<ZetString> ... ",
         L"--all=<ZetString> (accepted multiple times)"},
        // unlabeled arguments look the same, required or not
        {test::unlabeledArg(L"file"), L"<ZetString>", L"<ZetString>"},
        {test::unlabeledArg(L"file", required), L"<ZetString>", L"<ZetString>"},
        {test::multiUnlabeledArg(L"file"), L"<ZetString> ...", L"<ZetString> (accepted multiple times)"},
        {new ZetClUnlabeledArg(option(0, L"file", 0, ZetMetaType::Int), 0), L"<Int>", L"<Int>"},
    };
    for (const IdentifierRow& row : rows) {
        EXPECT_EQ(row.arg->shortID(L"val"), row.shortID);
        EXPECT_EQ(row.arg->longID(L"val"), row.longID);
    }
    // the base takes the name that it is given
    const ZetClArgPtr value = test::valueArg(L'a', L"all");
    EXPECT_EQ(value->ZetClArg::shortID(L"val"), L"[-a=<val>]");
    EXPECT_EQ(value->ZetClArg::longID(L"val"), L"-a=<val>,  --all=<val>");
    useDelimiter(L' ');
    EXPECT_EQ(value->shortID(L"val"), L"[-a <ZetString>]");
    EXPECT_EQ(value->longID(L"val"), L"-a <ZetString>,  --all <ZetString>");
}

// ---- matching ------------------------------------------------------------------------------------

TEST(ZetClArg, argMatches)
{
    const ZetClArgPtr flagged = test::switchArg(L'a', L"all");
    const ZetClArgPtr named = test::switchArg(0, L"all");
    struct Row
    {
        const wchar_t* word;
        bool flagged;
        bool named;
    };
    const Row rows[] = {
        {L"-a", true, false},   {L"--all", true, true}, {L"-all", false, false},
        {L"--a", false, false}, {L"a", false, false},   {L"-A", false, false},
        {L"-", false, false},   {L"", false, false},    {L"-aa", false, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(flagged->argMatches(row.word), row.flagged) << row.word;
        EXPECT_EQ(named->argMatches(row.word), row.named) << row.word;
    }
    EXPECT_FALSE(named->argMatches(ZetString(L"-") + ZetString(1, L'\0')));
}

TEST(ZetClArg, matches)
{
    EXPECT_TRUE(test::switchArg(L'a', L"all")->matches(*test::valueArg(L'a', L"other")));
    EXPECT_TRUE(test::switchArg(L'a', L"all")->matches(*test::valueArg(L'b', L"all")));
    EXPECT_TRUE(test::switchArg(0, L"all")->matches(*test::valueArg(0, L"all")));
    EXPECT_FALSE(test::switchArg(L'a', L"all")->matches(*test::valueArg(L'b', L"other")));
    // no flag is not the same flag
    EXPECT_FALSE(test::switchArg(0, L"all")->matches(*test::valueArg(0, L"other")));
}

TEST(ZetClArg, blanksOfAWord)
{
    struct Row
    {
        const wchar_t* word;
        bool hasBlanks;
        bool lastCombined;
    };
    const Row rows[] = {
        // the first character is never looked at
        {L"", false, true},
        {L"-", false, true},
        {L"x", false, true},
        {L"\7", false, true},
        {L"-a", false, false},
        {L"-\7", true, true},
        {L"-\7\7\7", true, true},
        {L"-\7"
         L"b",
         true, false},
        {L"-a\7", true, false},
        {L"x\7", true, true},
        {L"\7a", false, false},
        // a space is not the blank character
        {L"-  ", false, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ZetClArg::hasBlanks(row.word), row.hasBlanks) << row.word;
        EXPECT_EQ(ZetClArg::lastCombined(row.word), row.lastCombined) << row.word;
    }
}

TEST(ZetClArg, splitStr)
{
    struct Row
    {
        wchar_t delimiter;
        const wchar_t* word;
        const wchar_t* flag;
        const wchar_t* value;
    };
    const Row rows[] = {
        {L'=', L"-f=x", L"-f", L"x"},     {L'=', L"-f", L"-f", L""},    {L'=', L"-f=", L"-f", L""},
        {L'=', L"-f=x=y", L"-f", L"x=y"}, {L'=', L"=x", L"", L"x"},     {L'=', L"", L"", L""},
        {L'=', L"-f x", L"-f x", L""},    {L' ', L"-f x", L"-f", L"x"}, {L':', L"-f:x", L"-f", L"x"},
    };
    for (const Row& row : rows) {
        useDelimiter(row.delimiter);
        ZetString flag = L"old";
        ZetString value = L"old";
        ZetClArg::splitStr(row.word, flag, value);
        EXPECT_EQ(flag, row.flag) << row.word;
        EXPECT_EQ(value, row.value) << row.word;
    }
}

TEST(ZetClArg, combinedSwitchesMatch)
{
    struct Row
    {
        const wchar_t* word;
        wchar_t flag;
        bool matches;
        const wchar_t* after;
    };
    const Row rows[] = {
        {L"-abc", L'a', true,
         L"-\7"
         L"bc"},
        {L"-abc", L'b', true,
         L"-a\7"
         L"c"},
        // the first occurrence only
        {L"-aa", L'a', true,
         L"-\7"
         L"a"},
        {L"-abc", L'd', false, L"-abc"},
        {L"-a", L'a', true, L"-\7"},
        // no group of switches
        {L"--abc", L'a', false, L"--abc"},
        {L"abc", L'a', false, L"abc"},
        {L"-ab=c", L'a', false, L"-ab=c"},
        {L"-abc", 0, false, L"-abc"},
        {L"", L'a', false, L""},
        {L"-", L'a', false, L"-"},
        // consumed switches are not found again
        {L"-\7\7", L'\7', false, L"-\7\7"},
    };
    useDelimiter(L'=');
    for (const Row& row : rows) {
        ZetString word = row.word;
        const ZetClArgPtr arg = test::switchArg(row.flag, L"all");
        EXPECT_EQ(arg->combinedSwitchesMatch(word), row.matches) << row.word;
        EXPECT_EQ(word, row.after) << row.word;
    }
}

TEST(ZetClArg, theDelimiterIsOneForAll)
{
    ZetClArg::rdelimiter() = L':';
    EXPECT_EQ(ZetClArg::rdelimiter(), L':');
    EXPECT_EQ(test::valueArg(L'f', L"file")->shortID(L"val"), L"[-f:<ZetString>]");
}

// ---- setting -------------------------------------------------------------------------------------

TEST(ZetClArg, setValue)
{
    int visits = 0;
    ZetClValueArg arg(option(L'f', L"file"), L"preset", new test::ZetCountingVisitor(&visits));
    arg.setValue(7);
    EXPECT_TRUE(arg.alreadySet());
    EXPECT_EQ(arg.value().value<int>(), 7);
    EXPECT_EQ(visits, 1);
    arg.setXorSet(true);
    arg.reset();
    EXPECT_FALSE(arg.alreadySet());
    EXPECT_FALSE(arg.xorSet());
    EXPECT_EQ(arg.value().value<ZetString>(), L"preset");
    EXPECT_EQ(visits, 1);
}

TEST(ZetClArg, aRefusedValueChangesNothing)
{
    int visits = 0;
    ZetClValueArg arg(ranged(L'n', L"number"), L"12", new test::ZetCountingVisitor(&visits));
    const ZetTextMsg refusal = test::thrownBy([&] { arg.setValue(L"21"); });
    EXPECT_EQ(refusal.text(), L"The value of '21' is not within [10, 20].");
    EXPECT_EQ(refusal.file(), L"ZetNumValidator");
    EXPECT_EQ(refusal.kind(), ZetTextMsg::Error);
    EXPECT_FALSE(arg.alreadySet());
    EXPECT_EQ(arg.value().value<ZetString>(), L"12");
    EXPECT_EQ(visits, 0);
    // the text is kept; it becomes a number when it is read
    arg.setValue(L"20");
    EXPECT_EQ(arg.value().type().type(), ZetMetaType::String);
    EXPECT_EQ(arg.value().value<int>(), 20);
    EXPECT_EQ(visits, 1);
}

/// Refuses everything, and says nothing.
class Silent : public ZetValidator
{
public:
    ZetValidator* clone() const override { return new Silent; }
    bool isEqual(const ZetValidator*) const override { return false; }
    bool isValid(const ZetVariant& value, ZetTextMsg* msg) const override
    {
        s_judged = value.type().type();
        s_given = *msg;
        return false;
    }

    static ZetMetaType::Type s_judged;
    static ZetTextMsg s_given;
};

ZetMetaType::Type Silent::s_judged = ZetMetaType::Invalid;
ZetTextMsg Silent::s_given(L"none", ZetTextMsg::User);

TEST(ZetClArg, aValidatorJudgesTheTextWithAnEmptyMessage)
{
    ZetMetaProperty property = ranged(L'n', L"number");
    property.setValidator(new Silent);
    useDelimiter(L'=');
    ZetClValueArg arg(property, 0);
    std::vector<ZetString> args = {L"-n=5"};
    int i = 0;
    const ZetTextMsg refusal = test::thrownBy([&] { arg.processArg(&i, args); });
    EXPECT_EQ(Silent::s_judged, ZetMetaType::String);
    EXPECT_EQ(Silent::s_given, ZetTextMsg(L"", ZetTextMsg::Error));
    EXPECT_EQ(refusal, ZetTextMsg(L"", ZetTextMsg::Error));
}

TEST(ZetClArg, theVisitorIsACloneOfTheGivenOne)
{
    int visits = 0;
    const ZetClArgVisitorIFPtr given = new test::ZetCountingVisitor(&visits);
    ZetClSwitchArg arg(option(L'a', L"all"), false, given);
    EXPECT_TRUE(given.isUnique());
    arg.setValue(true);
    EXPECT_EQ(visits, 1);
}

TEST(ZetClArg, addFlagMakesFlagsConsistent)
{
    const ZetClArgPtr arg = test::valueArg(L'f', L"file", ZetMetaFlag::InFileName);
    arg->addFlag(ZetMetaFlag::Required);
    EXPECT_EQ(arg->property().flags().flags(), 0x800 | 0x8);
    EXPECT_TRUE(arg->isRequired());
    arg->addFlag(ZetMetaFlag::Directory);
    EXPECT_EQ(arg->property().flags().flags(), 0x8);
}

// ---- processing ----------------------------------------------------------------------------------

/// What becomes of one word, or two, at an argument.
struct ProcessRow
{
    std::vector<ZetString> before;
    bool taken;
    std::vector<ZetString> after;
    int steps;
    const wchar_t* value;  ///< The value's text; of a list "a|b".
};

ZetString valueText(const ZetClArg& arg)
{
    if (arg.value().type().type() != ZetMetaType::VariantList) {
        return arg.value().isValid() ? arg.value().value<ZetString>() : ZetString(L"none");
    }
    ZetString all;
    for (const ZetString& text : test::textsOf(arg)) {
        all += (all.empty() ? L"" : L"|") + text;
    }
    return all;
}

void expectProcess(ZetClArgPtr (*make)(), const std::vector<ProcessRow>& rows)
{
    for (const ProcessRow& row : rows) {
        const ZetClArgPtr arg = make();
        std::vector<ZetString> args = row.before;
        int i = 0;
        EXPECT_EQ(arg->processArg(&i, args), row.taken) << row.before.front().c_str();
        EXPECT_EQ(args, row.after);
        EXPECT_EQ(i, row.steps) << row.before.front().c_str();
        EXPECT_EQ(valueText(*arg), row.value) << row.before.front().c_str();
    }
}

TEST(ZetClSwitchArg, processArg)
{
    useDelimiter(L'=');
    expectProcess([] { return test::switchArg(L'a', L"all"); }, {
                                                                    {{L"-a"}, true, {L"-a"}, 0, L"true"},
                                                                    {{L"--all"}, true, {L"--all"}, 0, L"true"},
                                                                    {{L"-ba"}, false, {L"-b\7"}, 0, L"true"},
                                                                    {{L"-\7"
                                                                      L"a"},
                                                                     true,
                                                                     {L"-\7\7"},
                                                                     0,
                                                                     L"true"},
                                                                    {{L"-b"}, false, {L"-b"}, 0, L"false"},
                                                                    {{L"-ba=1"}, false, {L"-ba=1"}, 0, L"false"},
                                                                    {{L"-a=1"}, false, {L"-a=1"}, 0, L"false"},
                                                                    {{L"x"}, false, {L"x"}, 0, L"false"},
                                                                    {{L""}, false, {L""}, 0, L"false"},
                                                                });
    // it turns its default around
    expectProcess([] { return ZetClArgPtr(new ZetClSwitchArg(option(L'a', L"all"), true)); },
                  {{{L"-a"}, true, {L"-a"}, 0, L"false"}});
}

TEST(ZetClSwitchArg, faults)
{
    useDelimiter(L'=');
    struct Row
    {
        bool set;
        bool xorSet;
        const wchar_t* word;
        const wchar_t* text;
    };
    const Row rows[] = {
        {true, false, L"-a", L"Argument already set: "},
        {true, false, L"--all", L"Argument already set: "},
        {true, false, L"-ab", L"Argument already set: "},
        {false, false, L"-aa", L"Argument already set: "},
        {false, true, L"-a", L"Mutually exclusive argument already set: "},
        {true, true, L"-a", L"Mutually exclusive argument already set: "},
        // the word is looked at before the group
        {false, true, L"-aa", L"Argument already set: "},
    };
    for (const Row& row : rows) {
        const ZetClArgPtr arg = test::switchArg(L'a', L"all");
        if (row.set) {
            arg->setValue(true);
        }
        arg->setXorSet(row.xorSet);
        std::vector<ZetString> args = {row.word};
        int i = 0;
        const ZetTextMsg message = test::thrownBy([&] { arg->processArg(&i, args); });
        EXPECT_EQ(message.text(), row.text) << row.word;
        EXPECT_EQ(message.file(), L"ZetClSwitchArg");
        EXPECT_EQ(message.kind(), ZetTextMsg::Error);
    }
}

TEST(ZetClMultiSwitchArg, processArg)
{
    useDelimiter(L'=');
    expectProcess([] { return ZetClArgPtr(new ZetClMultiSwitchArg(option(L'v', L"verbose"), 10)); },
                  {
                      {{L"-v"}, true, {L"-v"}, 0, L"11"},
                      {{L"--verbose"}, true, {L"--verbose"}, 0, L"11"},
                      // a group never counts as used up
                      {{L"-vvv"}, false, {L"-\7\7\7"}, 0, L"13"},
                      {{L"-vavb"},
                       false,
                       {L"-\7"
                        L"a\7"
                        L"b"},
                       0,
                       L"12"},
                      {{L"-\7v"}, false, {L"-\7\7"}, 0, L"11"},
                      {{L"-a"}, false, {L"-a"}, 0, L"10"},
                      {{L"-v=1"}, false, {L"-v=1"}, 0, L"10"},
                  });
}

TEST(ZetClMultiSwitchArg, countsThroughValidatorAndVisitor)
{
    useDelimiter(L'=');
    int visits = 0;
    ZetMetaProperty property = option(L'v', L"verbose", 0, ZetMetaType::UInt);
    property.setValidator(new ZetNumValidator<unsigned int>(4, 0, 3));
    ZetClMultiSwitchArg arg(property, 0, new test::ZetCountingVisitor(&visits));
    std::vector<ZetString> args = {L"-vv", L"-v", L"-vvv"};
    int i = 0;
    EXPECT_FALSE(arg.processArg(&i, args));
    EXPECT_EQ(visits, 1);
    i = 1;
    EXPECT_TRUE(arg.processArg(&i, args));
    EXPECT_EQ(visits, 2);
    EXPECT_TRUE(arg.alreadySet());
    i = 2;
    EXPECT_EQ(test::thrownBy([&] { arg.processArg(&i, args); }).text(), L"The value of '6' is not within (-inf, 3].");
    EXPECT_EQ(args[2], L"-\7\7\7");
    EXPECT_EQ(arg.value().value<unsigned int>(), 3u);
    EXPECT_EQ(arg.value().type().type(), ZetMetaType::UInt);
}

TEST(ZetClMultiSwitchArg, aFlagOfTheBlankCharacterEnds)
{
    useDelimiter(L'=');
    const ZetClArgPtr arg = test::multiSwitchArg(7, L"bell");
    std::vector<ZetString> args = {L"-\7\7", L"-\7"};
    int i = 0;
    EXPECT_FALSE(arg->processArg(&i, args));
    i = 1;
    EXPECT_TRUE(arg->processArg(&i, args));
    EXPECT_EQ(arg->value().value<unsigned int>(), 1u);
}

TEST(ZetClValueArg, processArg)
{
    const auto make = [] { return test::valueArg(L'f', L"file"); };
    useDelimiter(L'=');
    expectProcess(make, {
                            {{L"-f=x"}, true, {L"-f=x"}, 0, L"x"},
                            {{L"--file=x y=z"}, true, {L"--file=x y=z"}, 0, L"x y=z"},
                            {{L"-g=x"}, false, {L"-g=x"}, 0, L"none"},
                            {{L"-fx"}, false, {L"-fx"}, 0, L"none"},
                            {{L"f=x"}, false, {L"f=x"}, 0, L"none"},
                            // consumed switches make the word another's
                            {{L"-f=\7"}, false, {L"-f=\7"}, 0, L"none"},
                        });
    useDelimiter(L' ');
    expectProcess(make, {
                            {{L"-f", L"x"}, true, {L"-f", L"x"}, 1, L"x"},
                            {{L"-f x", L"y"}, true, {L"-f x", L"y"}, 0, L"x"},
                            {{L"-f ", L"y"}, true, {L"-f ", L"y"}, 1, L"y"},
                            // whatever comes next is the value
                            {{L"-f", L"-h"}, true, {L"-f", L"-h"}, 1, L"-h"},
                            {{L"-f", L""}, true, {L"-f", L""}, 1, L""},
                        });
}

/// The options with a value, which fail alike but for one test.
struct ValueFaultRow
{
    bool set;
    bool xorSet;
    wchar_t delimiter;
    const wchar_t* word;
    const wchar_t* single;
    const wchar_t* multi;
};

const ValueFaultRow kValueFaults[] = {
    {false, false, L'=', L"-f", L"Couldn't find delimiter for this argument: ",
     L"Couldn't find delimiter for this argument: "},
    {false, false, L'=', L"-f=", L"Couldn't find delimiter for this argument: ",
     L"Couldn't find delimiter for this argument: "},
    {false, false, L' ', L"-f", L"Missing a value for this argument: ", L"Missing a value for this argument: "},
    {true, false, L'=', L"-f=x", L"Argument already set: ", nullptr},
    {false, true, L'=', L"-f=x", L"Mutually exclusive argument already set: ",
     L"Mutually exclusive argument already set: "},
    {true, true, L'=', L"-f", L"Mutually exclusive argument already set: ",
     L"Mutually exclusive argument already set: "},
    // what was set comes before what is missing
    {true, false, L' ', L"-f", L"Argument already set: ", L"Missing a value for this argument: "},
};

void expectValueFault(const ZetClArgPtr& arg, const ValueFaultRow& row, const wchar_t* text)
{
    useDelimiter(row.delimiter);
    if (row.set) {
        arg->setValue(ZetVariantList{ZetVariant(L"old")});
    }
    arg->setXorSet(row.xorSet);
    std::vector<ZetString> args = {row.word};
    int i = 0;
    if (!text) {
        EXPECT_TRUE(arg->processArg(&i, args));
        return;
    }
    const ZetTextMsg message = test::thrownBy([&] { arg->processArg(&i, args); });
    EXPECT_EQ(message.text(), text) << row.word;
    EXPECT_EQ(message.file(), arg->className());
}

TEST(ZetClValueArg, faults)
{
    for (const ValueFaultRow& row : kValueFaults) {
        expectValueFault(test::valueArg(L'f', L"file"), row, row.single);
    }
}

TEST(ZetClMultiValueArg, faults)
{
    for (const ValueFaultRow& row : kValueFaults) {
        expectValueFault(test::multiValueArg(L'f', L"file"), row, row.multi);
    }
}

TEST(ZetClMultiValueArg, processArg)
{
    const auto make = [] { return test::multiValueArg(L'f', L"file", 0, ZetVariantList{ZetVariant(L"first")}); };
    useDelimiter(L'=');
    // a default stays in front
    expectProcess(make, {
                            {{L"-f=x"}, true, {L"-f=x"}, 0, L"first|x"},
                            {{L"--file=x"}, true, {L"--file=x"}, 0, L"first|x"},
                            {{L"-g=x"}, false, {L"-g=x"}, 0, L"first"},
                            {{L"-f=\7"}, false, {L"-f=\7"}, 0, L"first"},
                        });
    useDelimiter(L' ');
    expectProcess(make, {{{L"-f", L"x"}, true, {L"-f", L"x"}, 1, L"first|x"}});
}

TEST(ZetClMultiValueArg, valuesAreTextsAndNeverReachTheDefault)
{
    useDelimiter(L'=');
    const ZetVariant preset(ZetVariantList{ZetVariant(1)});
    for (const ZetClArgPtr& arg :
         {test::multiValueArg(L'f', L"file", 0, preset), test::multiUnlabeledArg(L"file", 0, preset)}) {
        std::vector<ZetString> args = {L"--file=2", L"--file=3"};
        for (int i = 0; i < 2; ++i) {
            EXPECT_TRUE(arg->processArg(&i, args));
        }
        const ZetVariantList values = arg->value().value<ZetVariantList>();
        ASSERT_EQ(values.size(), 3u);
        EXPECT_EQ(values[0].type().type(), ZetMetaType::Int);
        EXPECT_EQ(values[1].type().type(), ZetMetaType::String);
        EXPECT_EQ(preset.value<ZetVariantList>().size(), 1u);
        EXPECT_EQ(arg->defaultValue().value<ZetVariantList>().size(), 1u);
        arg->reset();
        EXPECT_EQ(arg->value().value<ZetVariantList>().size(), 1u);
    }
}

TEST(ZetClMultiValueArg, isRequiredUntilItHasAValue)
{
    const ZetClArgPtr arg = test::multiValueArg(L'f', L"file", ZetMetaFlag::Required);
    EXPECT_TRUE(arg->isRequired());
    EXPECT_EQ(arg->description(), L"(required) tells file");
    arg->setValue(ZetVariantList());
    EXPECT_FALSE(arg->isRequired());
    // usage is asked when it is printed
    useDelimiter(L'=');
    EXPECT_EQ(arg->shortID(L"val"), L"[-f=<ZetString>] ... ");
    EXPECT_EQ(arg->description(), L"tells file");
    arg->reset();
    EXPECT_TRUE(arg->isRequired());
    EXPECT_FALSE(test::multiValueArg(L'f', L"file")->isRequired());
    // a default value will do
    EXPECT_FALSE(test::multiValueArg(L'f', L"file", ZetMetaFlag::Required, ZetVariantList())->isRequired());
}

TEST(ZetClUnlabeledArg, processArg)
{
    useDelimiter(L'=');
    expectProcess([] { return test::unlabeledArg(L"file"); }, {
                                                                  {{L"x"}, true, {L"x"}, 0, L"x"},
                                                                  // nothing is tested about a dash in front
                                                                  {{L"-x"}, true, {L"-x"}, 0, L"-x"},
                                                                  {{L"--"}, true, {L"--"}, 0, L"--"},
                                                                  {{L""}, true, {L""}, 0, L""},
                                                                  {{L"\7"}, true, {L"\7"}, 0, L"\7"},
                                                                  {{L"-\7"}, false, {L"-\7"}, 0, L"none"},
                                                              });
    // the second word is another's
    const ZetClArgPtr arg = test::unlabeledArg(L"file");
    arg->setValue(L"x");
    std::vector<ZetString> args = {L"y"};
    int i = 0;
    EXPECT_FALSE(arg->processArg(&i, args));
    EXPECT_EQ(valueText(*arg), L"x");
}

TEST(ZetClMultiUnlabeledArg, processArg)
{
    useDelimiter(L'=');
    expectProcess([] { return test::multiUnlabeledArg(L"file", 0, ZetVariantList{ZetVariant(L"first")}); },
                  {
                      {{L"x"}, true, {L"x"}, 0, L"first|x"},
                      {{L"-x"}, true, {L"-x"}, 0, L"first|-x"},
                      {{L"-\7"}, false, {L"-\7"}, 0, L"first"},
                  });
}

TEST(ZetClArg, valuesAreJudgedAsListsWhereTheyAreMany)
{
    useDelimiter(L'=');
    ZetMetaProperty property = option(L'n', L"number");
    property.setValidator(new Silent);
    ZetClMultiValueArg multi(property, ZetVariant());
    ZetClMultiUnlabeledArg unlabeled(property, ZetVariant());
    for (ZetClArg* arg : {static_cast<ZetClArg*>(&multi), static_cast<ZetClArg*>(&unlabeled)}) {
        Silent::s_judged = ZetMetaType::Invalid;
        std::vector<ZetString> args = {L"-n=5"};
        int i = 0;
        EXPECT_THROW(arg->processArg(&i, args), ZetTextMsg);
        EXPECT_EQ(Silent::s_judged, ZetMetaType::VariantList);
    }
}

}  // namespace
}  // namespace zet

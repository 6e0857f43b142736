#include <zet/ZetClXorHandler>

#include <gtest/gtest.h>

#include "support/ZetCollectingHandler"
#include "support/ZetCommandLine"

namespace zet {
namespace {

using test::failureOf;
using test::multiSwitchArg;
using test::multiUnlabeledArg;
using test::multiValueArg;
using test::parserOf;
using test::switchArg;
using test::unlabeledArg;
using test::valueArg;

const wchar_t* const kOther = L"Mutually exclusive argument already set: ";
const wchar_t* const kOtherOne = L"Mutually exclusive argument already set: 1";

// ---- the handler alone ---------------------------------------------------------------------------

TEST(ZetClXorHandler, check)
{
    const ZetClArgPtr a = switchArg(L'a', L"all");
    const ZetClArgPtr b = switchArg(L'b', L"bit");
    const ZetClArgPtr c = switchArg(L'c', L"cut");
    const ZetClArgPtr free = switchArg(L'f', L"free");
    const ZetClArgPtr required = switchArg(L'r', L"required", ZetMetaFlag::Required);
    ZetClXorHandler handler;
    EXPECT_EQ(handler.className(), L"ZetClXorHandler");
    handler.add({a, b, c});
    EXPECT_TRUE(handler.contains(b));
    EXPECT_FALSE(handler.contains(free));
    // an argument is found by itself, not by its name
    EXPECT_FALSE(handler.contains(switchArg(L'b', L"bit")));

    EXPECT_EQ(handler.check(free), 0);
    EXPECT_EQ(handler.check(required), 1);
    EXPECT_EQ(handler.check(b), 3);
    EXPECT_TRUE(a->xorSet());
    EXPECT_FALSE(b->xorSet());
    EXPECT_TRUE(c->xorSet());
    EXPECT_FALSE(free->xorSet());
}

TEST(ZetClXorHandler, checkFails)
{
    const ZetClArgPtr a = switchArg(L'a', L"all");
    const ZetClArgPtr b = switchArg(L'b', L"bit");
    ZetClXorHandler handler;
    handler.add({a, b});
    a->setValue(true);
    const ZetTextMsg message = test::thrownBy([&] { handler.check(b); });
    EXPECT_EQ(message.text(), kOtherOne);
    EXPECT_EQ(message.file(), L"ZetClXorHandler");
    EXPECT_EQ(message.kind(), ZetTextMsg::Error);
    EXPECT_FALSE(a->xorSet());
    a->reset();
    a->setXorSet(true);
    EXPECT_EQ(test::thrownBy([&] { handler.check(b); }).text(), kOtherOne);
    a->reset();
    EXPECT_EQ(handler.check(b), 2);
}

TEST(ZetClXorHandler, theFirstGroupThatHoldsAnArgumentCounts)
{
    const ZetClArgPtr a = switchArg(L'a', L"all");
    const ZetClArgPtr b = switchArg(L'b', L"bit");
    const ZetClArgPtr c = switchArg(L'c', L"cut");
    ZetClXorHandler handler;
    handler.add({a, b});
    handler.add({a, b, c});
    EXPECT_EQ(handler.check(a), 2);
    EXPECT_TRUE(b->xorSet());
    EXPECT_FALSE(c->xorSet());
}

TEST(ZetClXorHandler, multiValueMembers)
{
    const ZetClArgPtr alone = multiValueArg(L'a', L"all");
    const ZetClArgPtr many = multiValueArg(L'm', L"many");
    const ZetClArgPtr other = switchArg(L'o', L"other");
    ZetClXorHandler handler;
    handler.add({alone});
    handler.add({many, other});
    // alone, the first time fills the group and later ones nothing
    EXPECT_EQ(handler.check(alone), 1);
    EXPECT_EQ(handler.check(alone), 0);
    EXPECT_EQ(handler.check(alone), 0);
    // beside another one, the second time sees that one marked
    EXPECT_EQ(handler.check(many), 2);
    EXPECT_EQ(test::thrownBy([&] { handler.check(many); }).text(), kOtherOne);
}

// ---- in a parser ---------------------------------------------------------------------------------

struct GroupRow
{
    std::vector<ZetClArgPtr> group;
    std::vector<ZetString> words;
    const wchar_t* text;
};

void expectGroups(const std::vector<GroupRow>& rows)
{
    for (const GroupRow& row : rows) {
        const auto parser = parserOf({});
        parser->xorAdd(row.group);
        std::wstring all;
        for (const ZetString& word : row.words) {
            all += word + L" ";
        }
        EXPECT_EQ(failureOf(*parser, row.words), row.text) << all;
    }
}

TEST(ZetClXorHandler, oneMemberIsGiven)
{
    expectGroups({
        {{valueArg(L'e', L"equation"), valueArg(L'f', L"file")}, {L"-e=x"}, L""},
        {{valueArg(L'e', L"equation"), valueArg(L'f', L"file")}, {L"-f=x"}, L""},
        {{valueArg(L'e', L"equation"), switchArg(L's', L"stdin")}, {L"-s"}, L""},
        {{valueArg(L'e', L"equation"), unlabeledArg(L"file")}, {L"x"}, L""},
        {{valueArg(L'e', L"equation"), multiValueArg(L'm', L"many")}, {L"-m=x"}, L""},
        {{switchArg(L'a', L"all"), switchArg(L'b', L"bit"), switchArg(L'c', L"cut")}, {L"-b"}, L""},
        {{switchArg(L'a', L"all")}, {L"-a"}, L""},
    });
}

TEST(ZetClXorHandler, noMemberIsGiven)
{
    expectGroups({
        {{valueArg(L'e', L"equation"), valueArg(L'f', L"file")}, {}, L"Required arguments missing: file, equation"},
        {{switchArg(L'a', L"all")}, {}, L"Required argument missing: all"},
        // a member for many values that has a default is not missed, but the other one is
        {{valueArg(L'e', L"equation"), multiValueArg(L'm', L"many", 0, ZetVariantList())},
         {},
         L"Required argument missing: equation"},
    });
}

TEST(ZetClXorHandler, secondMember)
{
    expectGroups({
        // labelled members with values, and switches, speak for themselves
        {{valueArg(L'e', L"equation"), valueArg(L'f', L"file")}, {L"-e=x", L"-f=y"}, kOther},
        {{switchArg(L'a', L"all"), switchArg(L'b', L"bit")}, {L"-a", L"-b"}, kOther},
        {{valueArg(L'e', L"equation"), multiValueArg(L'm', L"many")}, {L"-e=x", L"-m=y"}, kOther},
        {{switchArg(L'a', L"all"), switchArg(L'b', L"bit")}, {L"-a", L"-bx"}, kOther},
        // the others are found by the group
        {{valueArg(L'e', L"equation"), unlabeledArg(L"file")}, {L"-e=x", L"y"}, kOtherOne},
        {{unlabeledArg(L"file"), valueArg(L'e', L"equation")}, {L"x", L"-e=y"}, kOther},
        {{valueArg(L'e', L"equation"), multiUnlabeledArg(L"files")}, {L"-e=x", L"y"}, kOtherOne},
        {{switchArg(L'a', L"all"), multiSwitchArg(L'v', L"verbose")}, {L"-a", L"-v"}, kOtherOne},
        {{switchArg(L'a', L"all"), switchArg(L'b', L"bit")}, {L"-ab"}, kOtherOne},
    });
    // the same member again is no second one
    expectGroups({
        {{valueArg(L'e', L"equation"), valueArg(L'f', L"file")}, {L"-e=x", L"-e=y"}, L"Argument already set: "},
        {{switchArg(L'a', L"all"), switchArg(L'b', L"bit")}, {L"-a", L"-a"}, L"Argument already set: "},
    });
}

TEST(ZetClXorHandler, switchesOfCombinedGroups)
{
    // a switch that does not end its word is not told to its group
    const ZetClArgPtr a = switchArg(L'a', L"all");
    const ZetClArgPtr b = switchArg(L'b', L"bit");
    const ZetClArgPtr free = switchArg(L'f', L"free");
    const auto parser = parserOf({free});
    parser->xorAdd(a, b);
    EXPECT_EQ(failureOf(*parser, {L"-af"}), L"Required argument missing: bit");
    EXPECT_TRUE(a->alreadySet());
    EXPECT_FALSE(b->xorSet());
    EXPECT_EQ(failureOf(*parser, {L"-b"}), kOtherOne);
    // a multi-switch of a group in one word neither
    expectGroups({
        {{switchArg(L'a', L"all"), multiSwitchArg(L'v', L"verbose")}, {L"-vv"}, L"Required argument missing: all"},
        {{switchArg(L'a', L"all"), multiSwitchArg(L'v', L"verbose")}, {L"-v"}, L""},
    });
}

TEST(ZetClXorHandler, multiValueMembersInAParser)
{
    expectGroups({
        {{multiValueArg(L'm', L"many")}, {L"-m=x", L"-m=y"}, L""},
        {{multiValueArg(L'm', L"many"), switchArg(L'o', L"other")}, {L"-m=x", L"-m=y"}, kOtherOne},
        // with a default it was not counted, but fills the whole group
        {{multiValueArg(L'm', L"many", 0, ZetVariantList()), switchArg(L'o', L"other")},
         {L"-m=x"},
         L"Too many arguments!"},
        // words without a label are counted one by one
        {{multiUnlabeledArg(L"files")}, {L"x"}, L""},
        {{multiUnlabeledArg(L"files")}, {L"x", L"y"}, L"Too many arguments!"},
        {{multiUnlabeledArg(L"files"), switchArg(L'o', L"other")}, {L"x", L"y"}, kOtherOne},
    });
}

TEST(ZetClXorHandler, twoGroups)
{
    const auto parser = parserOf({});
    const ZetClArgPtr gain = valueArg(L'g', L"gain", ZetMetaFlag::Required);
    parser->add(gain);
    parser->xorAdd(switchArg(L'a', L"all"), switchArg(L'b', L"bit"));
    parser->xorAdd({switchArg(L'c', L"cut"), switchArg(L'd', L"deep"), switchArg(L'e', L"even")});
    EXPECT_EQ(failureOf(*parser, {L"-b", L"-c", L"-g=1"}), L"");
    parser->reset();
    EXPECT_EQ(failureOf(*parser, {L"-b", L"-g=1"}), L"Required arguments missing: even, deep, cut");
    parser->reset();
    EXPECT_EQ(failureOf(*parser, {L"-b", L"-e"}), L"Required argument missing: gain");
    // after a reset another member may be given
    parser->reset();
    EXPECT_EQ(failureOf(*parser, {L"-a", L"-d", L"-g=1"}), L"");
}

}  // namespace
}  // namespace zet

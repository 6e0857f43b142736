#include "eqn/ZetEqnParser_p"

#include <gtest/gtest.h>

#include "support/ZetTreeDump"

namespace zet {
namespace {

TEST(ZetEqnParser_p, rootIsTheFirstTree)
{
    struct Row
    {
        const wchar_t* text;
        const char* root;
    };
    const Row rows[] = {
        {L"", "null"},
        {L"1+", "null"},
        {L"x+y; y=1", "add(x,y)"},
        {L"; a=b; b=2", "b"},
    };
    for (const Row& row : rows) {
        ZetEqnParser_p parser;
        parser.parse(row.text);
        EXPECT_EQ(test::dumpTree(parser.root().get()), row.root) << toMultibyte(row.text);
    }
}

TEST(ZetEqnParser_p, firstMessageIsEmptyAndFromAnUnknownPlace)
{
    const ZetEqnParser_p parser;
    EXPECT_EQ(parser.lastMessage(), ZetTextMsg(ZetString(), L"<filename unknown>", 0, ZetTextMsg::Error));
}

TEST(ZetEqnParser_p, aCopySharesNoNode)
{
    ZetEqnParser_p parser;
    parser.parse(L"x+1");
    const ZetEqnParser_p copy(parser);
    EXPECT_EQ(test::dumpTree(copy.root().get()), "add(x,1)");
    EXPECT_NE(copy.root().get(), parser.root().get());
}

// A subscript widened to a sequence is a clone, and its variables get their values too.
TEST(ZetEqnParser_p, valuesReachWidenedSubscripts)
{
    ZetEqnParser_p parser;
    parser.parse(L"x[a,1:n]");
    parser.setValue(L"a", 5.0);
    EXPECT_EQ(parser.collapse(), 2);
    EXPECT_EQ(test::dumpTree(parser.root().get()), "subscript(x,5,1i,5,1,1i,n)");
}

TEST(ZetEqnParser_p, collapseReplacesTheTree)
{
    ZetEqnParser_p parser;
    parser.parse(L"v*3 + x - (1+2)");
    parser.setValue(L"v", 2.0);
    parser.collapse();
    EXPECT_EQ(test::dumpTree(parser.root().get()), "subtract(add(6,x),3)");
}

}  // namespace
}  // namespace zet

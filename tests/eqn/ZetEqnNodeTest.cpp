#include "eqn/ZetEqnNode"

#include <gtest/gtest.h>

#include "eqn/ZetConstNode"
#include "eqn/ZetFcnNode"
#include "eqn/ZetVarNode"

namespace zet {
namespace internal {
namespace {

TEST(ZetEqnNode, checkedCasts)
{
    struct Row
    {
        ZetEqnNodePtr node;
        const wchar_t* className;
        bool isConst;
        bool isVar;
        bool isFcn;
    };
    const Row rows[] = {
        {new ZetConstNode(1.0), L"ZetConstNode", true, false, false},
        {new ZetVarNode(L"a"), L"ZetVarNode", false, true, false},
        {new ZetFcnNode(L"sin", ZetEqnNodePtr(new ZetVarNode(L"a"))), L"ZetFcnNode", false, false, true},
    };
    for (const Row& row : rows) {
        const ZetEqnNodeConstPtr fixed = row.node;
        EXPECT_EQ(row.node->className(), row.className);
        EXPECT_EQ(row.node->toConstNode() == row.node.get(), row.isConst) << toMultibyte(row.className);
        EXPECT_EQ(row.node->toVarNode() == row.node.get(), row.isVar) << toMultibyte(row.className);
        EXPECT_EQ(row.node->toFcnNode() == row.node.get(), row.isFcn) << toMultibyte(row.className);
        EXPECT_EQ(fixed->toConstNode() == fixed.get(), row.isConst) << toMultibyte(row.className);
        EXPECT_EQ(fixed->toVarNode() == fixed.get(), row.isVar) << toMultibyte(row.className);
        EXPECT_EQ(fixed->toFcnNode() == fixed.get(), row.isFcn) << toMultibyte(row.className);
    }
}

TEST(ZetEqnNode, theBaseIsNoneOfTheClasses)
{
    struct Plain : ZetEqnNode
    {
        ZetEqnNode* clone() const override { return new Plain; }
        ZetVariant evaluate() override { return ZetVariant(); }
    };
    Plain plain;
    const Plain& fixed = plain;
    EXPECT_EQ(plain.className(), L"ZetEqnNode");
    EXPECT_EQ(plain.toConstNode(), nullptr);
    EXPECT_EQ(plain.toVarNode(), nullptr);
    EXPECT_EQ(plain.toFcnNode(), nullptr);
    EXPECT_EQ(fixed.toConstNode(), nullptr);
    EXPECT_EQ(fixed.toVarNode(), nullptr);
    EXPECT_EQ(fixed.toFcnNode(), nullptr);
    EXPECT_FALSE(plain.isMetaObject());
}

TEST(ZetConstNode, value)
{
    const ZetEqnNodePtr node = new ZetConstNode(2.5);
    EXPECT_EQ(node->evaluate().typeName(), L"Double");
    EXPECT_EQ(node->evaluate().value<double>(), 2.5);
    const ZetEqnNodePtr copy = node->clone();
    EXPECT_NE(copy.get(), node.get());
    EXPECT_EQ(copy->toConstNode()->value().value<double>(), 2.5);
}

TEST(ZetVarNode, hasNoValueUntilOneIsSet)
{
    const ZetEqnNodePtr node = new ZetVarNode(L"gain");
    EXPECT_EQ(node->toVarNode()->name(), L"gain");
    EXPECT_FALSE(node->evaluate().isValid());
    node->toVarNode()->setValue(3.0);
    EXPECT_EQ(node->evaluate().value<double>(), 3.0);
    EXPECT_EQ(node->toVarNode()->value().value<double>(), 3.0);
}

TEST(ZetVarNode, aCloneKeepsTheValueAndGoesItsOwnWay)
{
    const ZetEqnNodePtr node = new ZetVarNode(L"gain");
    node->toVarNode()->setValue(3.0);
    const ZetEqnNodePtr copy = node->clone();
    node->toVarNode()->setValue(4.0);
    EXPECT_EQ(copy->toVarNode()->name(), L"gain");
    EXPECT_EQ(copy->evaluate().value<double>(), 3.0);
}

}  // namespace
}  // namespace internal
}  // namespace zet

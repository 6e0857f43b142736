#include "eqn/ZetFcnNode"

#include <gtest/gtest.h>

#include <stdexcept>

#include "eqn/ZetConstNode"
#include "eqn/ZetVarNode"
#include "support/ZetCollectingHandler"
#include "support/ZetTreeDump"

namespace zet {
namespace internal {
namespace {

using Nodes = std::vector<ZetEqnNodePtr>;

ZetEqnNodePtr number(double value)
{
    return new ZetConstNode(value);
}

ZetEqnNodePtr variable(const wchar_t* name)
{
    return new ZetVarNode(name);
}

ZetEqnNodePtr call(const wchar_t* name, const Nodes& args)
{
    return new ZetFcnNode(name, args);
}

// A leaf that counts its evaluations, and the nodes that are alive.
class CountedNode : public ZetEqnNode
{
public:
    explicit CountedNode(int* evaluations) : m_evaluations(evaluations) { ++s_alive; }
    ~CountedNode() override { --s_alive; }
    ZetEqnNode* clone() const override { return new CountedNode(m_evaluations); }
    ZetVariant evaluate() override
    {
        ++*m_evaluations;
        return 1.0;
    }

    static int s_alive;

private:
    int* m_evaluations;
};

int CountedNode::s_alive = 0;

TEST(ZetFcnNode, takesItsFunctionFromTheTable)
{
    struct Row
    {
        const wchar_t* name;
        bool variadic;
        int minArgs;
        bool isFunction;
    };
    const Row rows[] = {
        {L"sin", false, 1, true},       {L"add", false, 2, true},  {L"ternary", false, 3, true},
        {L"roundclip", false, 4, true}, {L"sum", true, 1, true},   {L"SeLeCt", true, 1, true},
        {L"bitand", false, 0, false},   {L"foo", false, 0, false}, {L"", false, 0, false},
    };
    for (const Row& row : rows) {
        const ZetFcnNode node(row.name, Nodes{});
        EXPECT_EQ(node.name(), row.name);
        EXPECT_EQ(node.variadic(), row.variadic) << toMultibyte(row.name);
        EXPECT_EQ(node.minArgs(), row.minArgs) << toMultibyte(row.name);
        EXPECT_EQ(node.fcn() != nullptr, row.isFunction) << toMultibyte(row.name);
        EXPECT_EQ(ZetFcnNode::isaFunction(row.name), row.isFunction) << toMultibyte(row.name);
    }
}

TEST(ZetFcnNode, constructors)
{
    const ZetEqnNodePtr a = variable(L"a");
    const ZetEqnNodePtr b = variable(L"b");
    EXPECT_EQ(test::dumpTree(ZetEqnNodePtr(new ZetFcnNode(L"f", a)).get()), "f(a)");
    EXPECT_EQ(test::dumpTree(ZetEqnNodePtr(new ZetFcnNode(L"f", a, b)).get()), "f(a,b)");
    EXPECT_EQ(test::dumpTree(call(L"f", {a, nullptr, b, a}).get()), "f(a,null,b,a)");
    EXPECT_EQ(test::dumpTree(call(L"f", {}).get()), "f()");
}

TEST(ZetFcnNode, evaluatesWhereTheCountFits)
{
    struct Row
    {
        const wchar_t* name;
        std::size_t count;
        bool isValid;
    };
    const Row rows[] = {
        {L"add", 1, false}, {L"add", 2, true}, {L"add", 3, false}, {L"sum", 0, false},
        {L"sum", 1, true},  {L"sum", 5, true}, {L"foo", 0, false}, {L"foo", 2, false},
    };
    for (const Row& row : rows) {
        const ZetEqnNodePtr node = call(row.name, Nodes(row.count, number(1.0)));
        EXPECT_EQ(node->evaluate().isValid(), row.isValid) << toMultibyte(row.name) << row.count;
    }
    EXPECT_EQ(call(L"ADD", {number(2.0), number(3.0)})->evaluate().value<double>(), 5.0);
}

TEST(ZetFcnNode, anUnknownNameClonesWithoutComplaint)
{
    const ZetEqnNodePtr node = call(L"Foo", {number(1.0), nullptr, variable(L"x")});
    EXPECT_EQ(test::dumpTree(ZetEqnNodePtr(node->clone()).get()), "Foo(1,null,x)");
}

TEST(ZetFcnNode, theBranchNotTakenIsNotEvaluated)
{
    int taken = 0;
    int other = 0;
    const ZetEqnNodePtr node = call(L"ternary", {number(1.0), new CountedNode(&taken), new CountedNode(&other)});
    EXPECT_EQ(node->evaluate().value<double>(), 1.0);
    EXPECT_EQ(taken, 1);
    EXPECT_EQ(other, 0);
}

TEST(ZetFcnNode, copiesShareNoNode)
{
    const ZetEqnNodePtr x = variable(L"x");
    x->toVarNode()->setValue(2.0);
    const ZetEqnNodePtr node = call(L"add", {x, call(L"multiply", {x, number(3.0)})});
    const ZetEqnNodePtr copy = node->clone();
    x->toVarNode()->setValue(10.0);
    EXPECT_EQ(node->evaluate().value<double>(), 40.0);
    EXPECT_EQ(copy->evaluate().value<double>(), 8.0);
    EXPECT_EQ(test::dumpTree(copy.get()), "add(x,multiply(x,3))");
}

TEST(ZetFcnNode, assignment)
{
    ZetFcnNode node(L"sin", variable(L"a"));
    const ZetFcnNode other(L"sum", {nullptr, variable(L"b"), call(L"f", {variable(L"c")})});
    node = other;
    EXPECT_EQ(test::dumpTree(&node), "sum(null,b,f(c))");
    EXPECT_TRUE(node.variadic());
    EXPECT_EQ(node.minArgs(), 1);
    EXPECT_EQ(node.fcn(), other.fcn());
    EXPECT_NE(node.args()[1].get(), other.args()[1].get());

    ZetFcnNode& self = node;
    node = self;
    EXPECT_EQ(test::dumpTree(&node), "sum(null,b,f(c))");
}

TEST(ZetFcnNode, assignmentFromBelow)
{
    ZetFcnNode node(L"f", call(L"g", {variable(L"a"), call(L"h", {variable(L"b")})}));
    node = *node.args()[0]->toFcnNode();
    EXPECT_EQ(test::dumpTree(&node), "g(a,h(b))");
}

TEST(ZetFcnNode, copyArgs)
{
    ZetFcnNode node(L"f", {variable(L"a"), variable(L"b"), variable(L"c")});
    const ZetEqnNode* const first = node.args()[0].get();
    node.copyArgs(node.args());
    EXPECT_EQ(node.args()[0].get(), first) << "its own list stays";

    const Nodes args = {nullptr, number(1.0)};
    node.copyArgs(args);
    EXPECT_EQ(test::dumpTree(&node), "f(null,1)");
    EXPECT_NE(node.args()[1].get(), args[1].get());

    node.clear();
    EXPECT_TRUE(node.args().empty());
}

TEST(ZetFcnNode, releasesWhatItHeld)
{
    int evaluations = 0;
    {
        const ZetEqnNodePtr kept = new CountedNode(&evaluations);
        ZetFcnNode node(L"f", {kept, new CountedNode(&evaluations), call(L"g", {new CountedNode(&evaluations), kept})});
        const ZetEqnNodePtr copy = node.clone();
        EXPECT_EQ(CountedNode::s_alive, 7);
        node.clear();
        EXPECT_EQ(CountedNode::s_alive, 5);
    }
    EXPECT_EQ(CountedNode::s_alive, 0);
}

TEST(ZetFcnNode, deepTreesReleaseWhatTheyHeldAndNoMore)
{
    constexpr int depth = 1000;
    int evaluations = 0;
    {
        ZetEqnNodePtr kept;
        ZetEqnNodePtr tree = number(1.0);
        for (int i = 0; i < depth; ++i) {
            tree = call(L"f", {new CountedNode(&evaluations), nullptr, tree, tree, new CountedNode(&evaluations)});
            if (i == depth / 2) {
                kept = tree;
            }
        }
        ASSERT_EQ(CountedNode::s_alive, 2 * depth);
        tree = nullptr;
        EXPECT_EQ(CountedNode::s_alive, 2 * (depth / 2 + 1));
        const std::vector<ZetEqnNodePtr>& args = kept->toFcnNode()->args();
        ASSERT_EQ(args.size(), 5U);
        EXPECT_EQ(args[1].get(), nullptr);
        EXPECT_EQ(args[2].get(), args[3].get());
        EXPECT_EQ(args[2]->toFcnNode()->args().size(), 5U);
    }
    EXPECT_EQ(CountedNode::s_alive, 0);
}

TEST(ZetFcnNode, search)
{
    const ZetEqnNodePtr x1 = variable(L"x");
    const ZetEqnNodePtr x2 = variable(L"x");
    const ZetEqnNodePtr inner = call(L"f", {x1, nullptr, number(1.0)});
    const ZetEqnNodePtr tree = call(L"add", {inner, call(L"g", {x2, variable(L"y")})});
    const ZetFcnNode& root = *tree->toFcnNode();
    EXPECT_EQ(root.node(L"add").get(), tree.get()) << "the node itself";
    EXPECT_EQ(root.node(L"f").get(), inner.get());
    EXPECT_EQ(root.node(L"x").get(), x2.get()) << "the last argument first";
    EXPECT_EQ(inner->toFcnNode()->node(L"x").get(), x1.get());
    EXPECT_EQ(root.node(L"F").get(), nullptr) << "names are compared exactly";
    EXPECT_EQ(root.node(L"z").get(), nullptr);
}

TEST(ZetFcnNode, searchMeetsACallBeforeWhatIsBelowIt)
{
    const ZetEqnNodePtr below = variable(L"f");
    const ZetEqnNodePtr outer = call(L"f", {below});
    EXPECT_EQ(call(L"g", {variable(L"f"), outer})->toFcnNode()->node(L"f").get(), outer.get());
}

struct FoldRow
{
    ZetEqnNodePtr tree;
    std::string result;  // of one pass; "-": the node stays
    std::string left;    // what the tree is then
    int changes;
};

TEST(ZetFcnNode, collapse)
{
    const ZetEqnNodePtr bound = variable(L"b");
    bound->toVarNode()->setValue(2.0);
    const FoldRow rows[] = {
        {call(L"add", {number(2.0), number(3.0)}), "5", "add(2,3)", 1},
        // a variable without a value holds the call
        {call(L"add", {variable(L"x"), number(3.0)}), "-", "add(x,3)", 0},
        // one with a value becomes a constant, and the call is folded at once
        {call(L"add", {bound, number(3.0)}), "5", "add(2,3)", 2},
        {call(L"add", {bound, variable(L"x")}), "-", "add(2,x)", 1},
        // a call folded below counts in the next pass
        {call(L"add", {call(L"add", {number(2.0), number(3.0)}), number(1.0)}), "-", "add(5,1)", 1},
        {call(L"add", {number(5.0), number(1.0)}), "6", "add(5,1)", 1},
        // no arguments are all constant; what has no value folds to an invalid constant
        {call(L"sum", {}), "invalid", "sum()", 1},
        {call(L"foo", {number(1.0)}), "invalid", "foo(1)", 1},
        // null is no constant
        {call(L"sum", {number(1.0), nullptr}), "-", "sum(1,null)", 0},
        // an explicit unary plus goes, in any case of its letters
        {call(L"unaryplus", {variable(L"x")}), "x", "unaryplus(null)", 1},
        {call(L"UnaryPlus", {call(L"sin", {variable(L"x")})}), "sin(x)", "UnaryPlus(null)", 1},
        {call(L"add", {call(L"unaryplus", {variable(L"x")}), number(1.0)}), "-", "add(x,1)", 1},
        {call(L"unaryplus", {number(4.0)}), "4", "unaryplus(4)", 1},
    };
    for (const FoldRow& row : rows) {
        const std::string before = test::dumpTree(row.tree.get());
        int changes = 0;
        const ZetEqnNodePtr result = row.tree->toFcnNode()->collapse(&changes);
        EXPECT_EQ(result ? test::dumpTree(result.get()) : "-", row.result) << before;
        EXPECT_EQ(test::dumpTree(row.tree.get()), row.left) << before;
        EXPECT_EQ(changes, row.changes) << before;
    }
}

TEST(ZetFcnNode, collapseAddsToTheCount)
{
    int changes = 10;
    call(L"add", {number(2.0), number(3.0)})->toFcnNode()->collapse(&changes);
    EXPECT_EQ(changes, 11);
}

TEST(ZetFcnNode, collapseLetsFailuresOut)
{
    const ZetEqnNodePtr bad = call(L"subtract", {new ZetConstNode(L"text"), number(1.0)});
    const ZetEqnNodePtr tree = call(L"add", {bad, call(L"add", {number(1.0), number(2.0)})});
    int changes = 0;
    const ZetTextMsg failure = test::thrownBy([&] { tree->toFcnNode()->collapse(&changes); });
    EXPECT_EQ(failure.text(), L"Invalid argument passed to 'subtract' function.");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(test::dumpTree(tree.get()), "add(subtract(\"text\",1),3)");
}

// add(1,add(1,...)), with the depth on the left or on the right.
ZetEqnNodePtr chain(int depth, const ZetEqnNodePtr& end, bool left)
{
    ZetEqnNodePtr tree = end;
    for (int i = 0; i < depth; ++i) {
        tree = left ? call(L"add", {tree, number(1.0)}) : call(L"add", {number(1.0), tree});
    }
    return tree;
}

constexpr int kDeep = 20000;

TEST(ZetFcnNode, deepTreesNeedNoDeepStack)
{
    for (const bool left : {true, false}) {
        const ZetEqnNodePtr x = variable(L"x");
        x->toVarNode()->setValue(0.5);
        const ZetEqnNodePtr tree = chain(kDeep, x, left);
        ZetFcnNode& root = *tree->toFcnNode();
        EXPECT_EQ(root.height(), kDeep);
        EXPECT_EQ(tree->evaluate().value<double>(), kDeep + 0.5);
        EXPECT_EQ(root.node(L"x").get(), x.get());
        const ZetEqnNodePtr copy = tree->clone();
        x->toVarNode()->setValue(1.5);
        EXPECT_EQ(copy->evaluate().value<double>(), kDeep + 0.5);
        EXPECT_EQ(tree->evaluate().value<double>(), kDeep + 1.5);
        root.copyArgs(copy->toFcnNode()->args());
        EXPECT_EQ(tree->evaluate().value<double>(), kDeep + 0.5);
        int changes = 0;
        EXPECT_EQ(root.collapse(&changes).get(), nullptr);
        EXPECT_EQ(changes, 2) << "the variable and the innermost call";
        EXPECT_EQ(tree->evaluate().value<double>(), kDeep + 0.5);
        EXPECT_EQ(root.height(), kDeep - 1);
        root.clear();
    }
}

// The value, the count of evaluations and the failures are those of plain recursion.
TEST(ZetFcnNode, deepEvaluationIsLazyAndEvaluatesOnce)
{
    int first = 0;
    int second = 0;
    const ZetEqnNodePtr deep1 = chain(1000, new CountedNode(&first), true);
    const ZetEqnNodePtr deep2 = chain(1000, new CountedNode(&second), false);

    EXPECT_EQ(call(L"ternary", {number(0.0), deep1, deep2})->evaluate().value<double>(), 1001.0);
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);

    int shallow = 0;
    const ZetEqnNodePtr sum = call(L"sum", {new CountedNode(&shallow), deep1, new CountedNode(&shallow), deep2});
    EXPECT_EQ(sum->evaluate().value<double>(), 2004.0);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 2);
    EXPECT_EQ(shallow, 2);
}

TEST(ZetFcnNode, deepEvaluationHandsOutFailures)
{
    const ZetEqnNodePtr text = new ZetConstNode(L"text");
    const ZetEqnNodePtr tree = chain(5000, call(L"subtract", {text, number(1.0)}), true);
    EXPECT_EQ(test::thrownBy([&] { tree->evaluate(); }).text(), L"Invalid argument passed to 'subtract' function.");
}

TEST(ZetFcnNode, deepCallsOfNoFunctionAreInvalid)
{
    ZetEqnNodePtr tree = variable(L"x");
    for (int i = 0; i < 1000; ++i) {
        tree = call(L"foo", {nullptr, tree});
    }
    EXPECT_FALSE(tree->evaluate().isValid());
    EXPECT_EQ(call(L"ternary", {number(1.0), number(7.0), tree})->evaluate().value<double>(), 7.0);
}

}  // namespace
}  // namespace internal
}  // namespace zet

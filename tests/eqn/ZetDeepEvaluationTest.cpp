#include "eqn/ZetDeepEvaluation"

#include <iterator>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "eqn/ZetFcnNode"
#include "eqn/ZetVarNode"
#include "support/ZetFunctionCalls"
#include "support/ZetScopedLocale"
#include "support/ZetTreeDump"

namespace zet {
namespace test {
namespace {

using internal::ZetEqnArgs;
using internal::ZetEqnNodePtr;
using internal::ZetFcnNode;
using internal::ZetMathFcn;
using internal::ZetVarNode;
using internal::ZetVarNodePtr;

// Trees of calls with operands of every class, as variables that have a value.
class TreeMaker
{
public:
    explicit TreeMaker(unsigned int seed) : m_random(seed)
    {
        for (const auto& [name, info] : ZetMathFcn::functionMap()) {
            // the one may end the process, the other leave elements unwritten
            if (name != L"mod" && name != L"roundclip") {
                m_functions.push_back(name);
            }
        }
    }

    ZetEqnNodePtr make(int depth)
    {
        if (depth == 0 || below(8) == 0) {
            return operand();
        }
        const ZetString& name = m_functions[below(m_functions.size())];
        const int count = ZetMathFcn::fromString(name).nArgs;
        ZetEqnArgs args(static_cast<std::size_t>(count < 0 ? 1 + static_cast<int>(below(3)) : count));
        for (ZetEqnNodePtr& arg : args) {
            arg = make(depth - 1);
        }
        return new ZetFcnNode(name, args);
    }

private:
    std::size_t below(std::size_t limit) { return m_random() % limit; }

    ZetEqnNodePtr operand()
    {
        static const wchar_t* const operands[] = {
            L"0.5",
            L"-2",
            L"3",
            L"Int 1",
            L"Bool 1",
            L"Scalar 3 m",
            L"Scalar 2",
            L"(1,0.5)",
            L"(2,0)",
            L"U8[1 4]",
            L"Double[2 -0.5]",
            L"I16/2[3 9 4 9]",
            L"ComplexDouble[(1,2) (3,0)]",
            L"'ab'",
            L"'1'",
            L"Type U8",
            L"unset",
        };
        const ZetVarNodePtr variable = new ZetVarNode(L"v");
        variable->setValue(makeValue(operands[below(std::size(operands))]));
        return variable.get();
    }

    std::mt19937 m_random;
    std::vector<ZetString> m_functions;
};

template <class Evaluate>
std::wstring outcome(const Evaluate& evaluate)
{
    try {
        return valueText(evaluate());
    } catch (const ZetTextMsg& message) {
        return L"!" + message.text();
    }
}

// The value after folding, which evaluates both branches of a choice, and so may fail where it does not.
ZetVariant collapsed(ZetEqnNodePtr tree)
{
    int changes = 1;
    while (tree->toFcnNode() && changes > 0) {
        changes = 0;
        const ZetEqnNodePtr folded = tree->toFcnNode()->collapse(&changes);
        tree = folded ? folded : tree;
    }
    return tree->evaluate();
}

TEST(ZetDeepEvaluation, givesWhatRecursionGives)
{
    const ZetScopedLocale plainNumbers("C");
    TreeMaker maker(11);
    int values = 0;
    for (int i = 0; i < 5000; ++i) {
        const ZetEqnNodePtr tree = maker.make(5);
        ZetFcnNode* const call = tree->toFcnNode();
        if (!call) {
            continue;
        }
        const std::wstring plain = outcome([&] { return call->evaluate(); });
        for (const int maxHeight : {0, 2}) {
            ASSERT_EQ(outcome([&] { return evaluateDeep(call, maxHeight); }), plain) << dumpTree(tree.get());
        }
        ASSERT_EQ(outcome([&] { return call->evaluate(); }), plain) << "again: " << dumpTree(tree.get());
        const std::wstring folded = outcome([&] { return collapsed(tree->clone()); });
        ASSERT_TRUE(folded == plain || folded[0] == L'!') << dumpTree(tree.get());
        values += plain[0] != L'!' ? 1 : 0;
    }
    EXPECT_GT(values, 500) << "trees that have a value";
}

}  // namespace
}  // namespace test
}  // namespace zet

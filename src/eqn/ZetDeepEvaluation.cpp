#include "eqn/ZetDeepEvaluation"

#include "core/ZetUnitInit"
#include "eqn/ZetOperand"

namespace zet {
namespace internal {

namespace {

class Placeholder;

// Thrown through a function to the loop below.
struct Awaited
{
    Placeholder* argument;
};

class Placeholder : public ZetEqnNode
{
public:
    Placeholder(ZetEqnNode* node, int maxHeight) : m_node(node), m_maxHeight(maxHeight), m_isKnown(false) {}

    ZetEqnNode* clone() const override { return m_node->clone(); }

    ZetVariant evaluate() override
    {
        if (!m_isKnown) {
            if (isDeep()) {
                throw Awaited{this};
            }
            take(m_node->evaluate());
        }
        return m_value;
    }

    ZetFcnNode* call() { return m_node->toFcnNode(); }

    void take(const ZetVariant& value)
    {
        m_value = value;
        m_isKnown = true;
    }

private:
    bool isDeep() const
    {
        const ZetFcnNode* const call = m_node->toFcnNode();
        return call && call->height() > m_maxHeight;
    }

    ZetEqnNode* m_node;
    int m_maxHeight;
    bool m_isKnown;
    ZetVariant m_value;
};

struct Call
{
    Call(ZetFcnNode* callNode, int maxHeight) : node(callNode), awaited(nullptr)
    {
        for (const ZetEqnNodePtr& arg : node->args()) {
            args.push_back(arg ? new Placeholder(arg.get(), maxHeight) : nullptr);
        }
    }

    ZetFcnNode* node;
    std::vector<ZetEqnNodePtr> args;
    Placeholder* awaited;
};

}  // namespace

ZetVariant evaluateDeep(ZetFcnNode* root, int maxHeight)
{
    std::vector<Call> calls;
    calls.emplace_back(root, maxHeight);
    for (;;) {
        Call& call = calls.back();
        try {
            const ZetVariant value = call.node->callWith(call.args).value();
            calls.pop_back();
            if (calls.empty()) {
                return value;
            }
            calls.back().awaited->take(value);
            continue;
        } catch (const Awaited& missing) {
            call.awaited = missing.argument;
        }
        calls.emplace_back(call.awaited->call(), maxHeight);
    }
}

}  // namespace internal
}  // namespace zet

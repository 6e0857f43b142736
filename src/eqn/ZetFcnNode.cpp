#include "eqn/ZetFcnNode"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "core/ZetUnitInit"
#include "eqn/ZetConstNode"
#include "eqn/ZetDeepEvaluation"
#include "eqn/ZetOperand"
#include "eqn/ZetVarNode"

namespace zet {
namespace internal {

namespace {

// A call nested deeper than this is evaluated and released without recursion: no text can exhaust the
// thread's stack.
constexpr int kMaxRecursion = 200;

}  // namespace

ZetFcnNode::ZetFcnNode(const ZetString& name, const ZetEqnNodePtr& arg) : ZetFcnNode(name, std::vector{arg}) {}

ZetFcnNode::ZetFcnNode(const ZetString& name, const ZetEqnNodePtr& arg1, const ZetEqnNodePtr& arg2)
    : ZetFcnNode(name, std::vector{arg1, arg2})
{}

ZetFcnNode::ZetFcnNode(ZetString name, std::vector<ZetEqnNodePtr> args)
    : ZetFcnNode(std::move(name), ZetMathFcn::fromString(name), std::move(args))
{}

ZetFcnNode::ZetFcnNode(ZetString&& name, const ZetMathFcn::ZetFcnInfo& info, std::vector<ZetEqnNodePtr>&& args)
    : m_variadic(info.nArgs < 0),
      m_minArgs(std::abs(info.nArgs)),
      m_name(std::move(name)),
      m_fcn(info.fcn),
      m_operandFcn(info.operandFcn),
      m_args(std::move(args)),
      m_height(0)
{
    measure();
}

ZetFcnNode::ZetFcnNode(const ZetFcnNode& other) : ZetFcnNode(other, WithoutArgs())
{
    copyArgs(other.m_args);
}

ZetFcnNode::ZetFcnNode(const ZetFcnNode& other, WithoutArgs)
    : ZetEqnNode(other),
      m_variadic(other.m_variadic),
      m_minArgs(other.m_minArgs),
      m_name(other.m_name),
      m_fcn(other.m_fcn),
      m_operandFcn(other.m_operandFcn),
      m_height(other.m_height)
{}

ZetFcnNode& ZetFcnNode::operator=(const ZetFcnNode& other)
{
    m_variadic = other.m_variadic;
    m_minArgs = other.m_minArgs;
    m_name = other.m_name;
    m_fcn = other.m_fcn;
    m_operandFcn = other.m_operandFcn;
    copyArgs(other.m_args);
    return *this;
}

ZetFcnNode::~ZetFcnNode()
{
    clear();
}

ZetString ZetFcnNode::className() const
{
    return L"ZetFcnNode";
}

ZetFcnNode* ZetFcnNode::clone() const
{
    return new ZetFcnNode(*this);
}

ZetVariant ZetFcnNode::evaluate()
{
    return operand().value();
}

ZetOperand ZetFcnNode::operand()
{
    return m_height > kMaxRecursion ? evaluateDeep(this, kMaxRecursion) : callWith(m_args);
}

ZetOperand ZetFcnNode::callWith(std::vector<ZetEqnNodePtr>& args) const
{
    return m_operandFcn && hasFittingArgs() ? m_operandFcn(args) : ZetOperand(ZetVariant());
}

bool ZetFcnNode::hasFittingArgs() const
{
    const auto least = static_cast<std::size_t>(m_minArgs);
    return m_variadic ? m_args.size() >= least : m_args.size() == least;
}

void ZetFcnNode::clear()
{
    release(m_args);
}

// The way back up from a deep argument lies in the tree itself, so that no memory is asked for either:
// the place of the argument that is being released holds the call two above it.
void ZetFcnNode::release(std::vector<ZetEqnNodePtr>& nodes)
{
    ZetEqnNodePtr call;  // whose arguments are being released; null for the nodes themselves
    ZetEqnNodePtr above;
    std::vector<ZetEqnNodePtr>* rest = &nodes;
    for (;;) {
        while (!rest->empty()) {
            ZetEqnNodePtr& last = rest->back();
            ZetFcnNode* const below = last.isUnique() ? last->toFcnNode() : nullptr;
            if (below && below->m_height > kMaxRecursion) {
                std::swap(above, last);
                std::swap(above, call);
                rest = &below->m_args;
            } else {
                rest->pop_back();
            }
        }
        if (!call) {
            return;
        }
        call = above;
        rest = call ? &call->toFcnNode()->m_args : &nodes;
        above = rest->back();
        rest->pop_back();
    }
}

void ZetFcnNode::copyArgs(const std::vector<ZetEqnNodePtr>& args)
{
    if (&args == &m_args) {
        return;
    }
    struct Task
    {
        const std::vector<ZetEqnNodePtr>* from;
        ZetFcnNode* to;
    };
    // What is copied may hang below the old arguments: they go last.
    std::vector<ZetEqnNodePtr> old;
    old.swap(m_args);
    std::vector<Task> tasks = {{&args, this}};
    while (!tasks.empty()) {
        const Task task = tasks.back();
        tasks.pop_back();
        task.to->m_args.resize(task.from->size());
        for (std::size_t i = task.from->size(); i-- > 0;) {
            const ZetEqnNode* const arg = (*task.from)[i].get();
            if (!arg) {
                continue;
            }
            const ZetFcnNode* const call = arg->toFcnNode();
            if (!call) {
                task.to->m_args[i] = arg->clone();
                continue;
            }
            ZetFcnNode* const copy = new ZetFcnNode(*call, WithoutArgs());
            task.to->m_args[i] = copy;
            tasks.push_back({&call->m_args, copy});
        }
    }
    measure();
    release(old);
}

ZetEqnNodeConstPtr ZetFcnNode::node(const ZetString& name) const
{
    std::vector<const ZetEqnNode*> waiting = {this};
    while (!waiting.empty()) {
        const ZetEqnNode* const next = waiting.back();
        waiting.pop_back();
        const ZetFcnNode* const call = next->toFcnNode();
        const ZetVarNode* const variable = next->toVarNode();
        if ((call && call->m_name == name) || (variable && variable->name() == name)) {
            return next;
        }
        if (!call) {
            continue;
        }
        for (const ZetEqnNodePtr& arg : call->m_args) {
            if (arg) {
                waiting.push_back(arg.get());
            }
        }
    }
    return ZetEqnNodeConstPtr();
}

ZetEqnNodePtr ZetFcnNode::collapse(int* changes)
{
    struct Walk
    {
        ZetFcnNode* call;
        std::size_t remaining;
        std::size_t constants;
    };
    std::vector<Walk> walks = {{this, m_args.size(), 0}};
    for (;;) {
        Walk& walk = walks.back();
        if (walk.remaining > 0) {
            ZetEqnNodePtr& arg = walk.call->m_args[--walk.remaining];
            if (ZetFcnNode* const below = arg ? arg->toFcnNode() : nullptr) {
                walks.push_back({below, below->m_args.size(), 0});
            } else if (foldLeaf(arg, changes)) {
                ++walk.constants;
            }
            continue;
        }
        const ZetEqnNodePtr folded = walk.call->fold(walk.constants, changes);
        walks.pop_back();
        if (walks.empty()) {
            return folded;
        }
        if (folded) {
            walks.back().call->m_args[walks.back().remaining] = folded;
        }
    }
}

bool ZetFcnNode::foldLeaf(ZetEqnNodePtr& leaf, int* changes)
{
    if (!leaf) {
        return false;
    }
    const ZetVarNode* const variable = leaf->toVarNode();
    if (variable && variable->value().isValid()) {
        leaf = new ZetConstNode(variable->value());
        ++*changes;
    }
    return leaf->toConstNode() != nullptr;
}

ZetEqnNodePtr ZetFcnNode::fold(std::size_t constants, int* changes)
{
    measure();
    if (constants == m_args.size()) {
        const ZetEqnNodePtr result = new ZetConstNode(evaluate());
        ++*changes;
        return result;
    }
    if (zet::isEqual(m_name, L"unaryplus")) {
        const ZetEqnNodePtr result = m_args.front();
        m_args.front() = nullptr;
        ++*changes;
        return result;
    }
    return ZetEqnNodePtr();
}

void ZetFcnNode::measure()
{
    int below = 0;
    for (const ZetEqnNodePtr& arg : m_args) {
        const ZetFcnNode* const call = arg ? arg->toFcnNode() : nullptr;
        below = std::max(below, call ? call->m_height : 0);
    }
    m_height = below + 1;
}

}  // namespace internal
}  // namespace zet

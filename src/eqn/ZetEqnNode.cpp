#include "eqn/ZetEqnNode"

#include "core/ZetUnitInit"
#include "eqn/ZetOperand"

namespace zet {
namespace internal {

ZetString ZetEqnNode::className() const
{
    return L"ZetEqnNode";
}

const ZetConstNode* ZetEqnNode::toConstNode() const
{
    return nullptr;
}

const ZetVarNode* ZetEqnNode::toVarNode() const
{
    return nullptr;
}

const ZetFcnNode* ZetEqnNode::toFcnNode() const
{
    return nullptr;
}

ZetConstNode* ZetEqnNode::toConstNode()
{
    return nullptr;
}

ZetVarNode* ZetEqnNode::toVarNode()
{
    return nullptr;
}

ZetFcnNode* ZetEqnNode::toFcnNode()
{
    return nullptr;
}

ZetOperand ZetEqnNode::operand()
{
    return evaluate();
}

}  // namespace internal
}  // namespace zet

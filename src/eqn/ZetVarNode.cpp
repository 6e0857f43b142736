#include "eqn/ZetVarNode"

#include "core/ZetUnitInit"
#include "eqn/ZetOperand"

namespace zet {
namespace internal {

ZetString ZetVarNode::className() const
{
    return L"ZetVarNode";
}

ZetVarNode* ZetVarNode::clone() const
{
    return new ZetVarNode(*this);
}

ZetVariant ZetVarNode::evaluate()
{
    return m_value;
}

ZetOperand ZetVarNode::operand()
{
    return ZetOperand::ofLeaf(m_value);
}

}  // namespace internal
}  // namespace zet

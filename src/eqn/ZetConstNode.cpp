#include "eqn/ZetConstNode"

#include "core/ZetUnitInit"
#include "eqn/ZetOperand"

namespace zet {
namespace internal {

ZetString ZetConstNode::className() const
{
    return L"ZetConstNode";
}

ZetConstNode* ZetConstNode::clone() const
{
    return new ZetConstNode(*this);
}

ZetVariant ZetConstNode::evaluate()
{
    return m_value;
}

ZetOperand ZetConstNode::operand()
{
    return ZetOperand::ofLeaf(m_value);
}

}  // namespace internal
}  // namespace zet

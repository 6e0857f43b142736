#include "eqn/ZetConstNode"

#include "core/ZetUnitInit"

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

}  // namespace internal
}  // namespace zet

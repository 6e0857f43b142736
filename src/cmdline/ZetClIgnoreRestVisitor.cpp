#include <zet/ZetClIgnoreRestVisitor>

#include "core/ZetUnitInit"

namespace zet {

ZetString ZetClIgnoreRestVisitor::className() const
{
    return L"ZetClIgnoreRestVisitor";
}

ZetClArgVisitorIF* ZetClIgnoreRestVisitor::clone() const
{
    return new ZetClIgnoreRestVisitor(*this);
}

}  // namespace zet

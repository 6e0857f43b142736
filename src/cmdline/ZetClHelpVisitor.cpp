#include <zet/ZetClHelpVisitor>

#include <zet/ZetClExitException>

#include "core/ZetUnitInit"

namespace zet {

ZetString ZetClHelpVisitor::className() const
{
    return L"ZetClHelpVisitor";
}

ZetClArgVisitorIF* ZetClHelpVisitor::clone() const
{
    return new ZetClHelpVisitor(*this);
}

void ZetClHelpVisitor::visit()
{
    m_output->usage(*m_parser);
    throw ZetClExitException(0);
}

}  // namespace zet

#include <zet/ZetClVersionVisitor>

#include <zet/ZetClExitException>

#include "core/ZetUnitInit"

namespace zet {

ZetString ZetClVersionVisitor::className() const
{
    return L"ZetClVersionVisitor";
}

ZetClArgVisitorIF* ZetClVersionVisitor::clone() const
{
    return new ZetClVersionVisitor(*this);
}

void ZetClVersionVisitor::visit()
{
    m_output->version(*m_parser);
    throw ZetClExitException(0);
}

}  // namespace zet

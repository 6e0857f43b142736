#include <zet/ZetClExitException>

#include "core/ZetUnitInit"

namespace zet {

ZetString ZetClExitException::className() const
{
    return L"ZetClExitException";
}

}  // namespace zet

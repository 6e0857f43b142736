#include <zet/ZetValidator>

#include "core/ZetUnitInit"

namespace zet {

ZetString ZetValidator::className() const
{
    return L"ZetValidator";
}

}  // namespace zet

#include <zet/ZetClArgVisitorIF>

#include "core/ZetUnitInit"

namespace zet {

ZetString ZetClArgVisitorIF::className() const
{
    return L"ZetClArgVisitorIF";
}

}  // namespace zet

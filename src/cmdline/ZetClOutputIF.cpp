#include <zet/ZetClOutputIF>

#include "core/ZetUnitInit"

namespace zet {

ZetString ZetClOutputIF::className() const
{
    return L"ZetClOutputIF";
}

}  // namespace zet

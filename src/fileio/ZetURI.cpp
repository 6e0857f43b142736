#include <zet/ZetURI>

#include "core/ZetUnitInit"

namespace zet {

ZetString ZetURI::className() const
{
    return L"ZetURI";
}

}  // namespace zet

#include <zet/ZetObjectFactory>

#include "core/ZetUnitInit"

namespace zet {

ZetString ZetObjectFactory::className() const
{
    return L"ZetObjectFactory";
}

}  // namespace zet

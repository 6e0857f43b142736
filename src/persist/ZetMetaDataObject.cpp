#include <zet/ZetMetaDataObject>

#include "core/ZetUnitInit"

namespace zet {

ZetString ZetMetaDataObject::className() const
{
    return L"ZetMetaDataObject";
}

}  // namespace zet

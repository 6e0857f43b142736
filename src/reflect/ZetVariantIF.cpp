#include <zet/ZetVariantIF>

#include "core/ZetUnitInit"

namespace zet {

ZetString ZetVariantIF::className() const
{
    return L"ZetVariantIF";
}

}  // namespace zet

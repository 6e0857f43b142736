#include <zet/ZetImageSize>

#include "core/ZetUnitInit"

namespace zet {

ZetString ZetImageSize::className() const
{
    return L"ZetImageSize";
}

}  // namespace zet

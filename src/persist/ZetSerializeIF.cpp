#include <zet/ZetSerializeIF>

#include "core/ZetUnitInit"

namespace zet {

ZetString ZetSerializeIF::className() const
{
    return L"ZetSerializeIF";
}

}  // namespace zet

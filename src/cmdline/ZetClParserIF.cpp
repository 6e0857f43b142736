#include <zet/ZetClParserIF>

#include "core/ZetUnitInit"

namespace zet {

ZetString ZetClParserIF::className() const
{
    return L"ZetClParserIF";
}

}  // namespace zet

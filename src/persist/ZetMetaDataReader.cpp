#include <zet/ZetMetaDataReader>

#include "core/ZetUnitInit"

namespace zet {

ZetString ZetMetaDataReader::className() const
{
    return L"ZetMetaDataReader";
}

}  // namespace zet

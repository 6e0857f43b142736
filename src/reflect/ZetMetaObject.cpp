#include <zet/ZetMetaObject>

#include "core/ZetUnitInit"

namespace zet {

ZetMetaObject::~ZetMetaObject() = default;

}  // namespace zet

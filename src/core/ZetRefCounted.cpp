#include <zet/ZetRefCounted>

#include "core/ZetUnitInit"

namespace zet {

ZetRefCounted::~ZetRefCounted() = default;

}  // namespace zet

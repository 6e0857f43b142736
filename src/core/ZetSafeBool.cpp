#include <zet/ZetSafeBool>

#include "core/ZetUnitInit"

namespace zet {
namespace internal {

ZetSafeBoolBase::~ZetSafeBoolBase() = default;

}  // namespace internal
}  // namespace zet

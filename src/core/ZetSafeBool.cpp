#include <zet/ZetSafeBool>

#include "core/ZetUnitInit"

namespace zet {
namespace internal {

void ZetSafeBoolBase::this_type_does_not_support_comparisons() const {}

}  // namespace internal
}  // namespace zet

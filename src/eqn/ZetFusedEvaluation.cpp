#include "eqn/ZetFusedEvaluation"

#include <utility>

#include "core/ZetUnitInit"

namespace zet {
namespace internal {

namespace {

constinit bool s_isFused = true;

}  // namespace

bool isEvaluationFused()
{
    return s_isFused;
}

bool useFusedEvaluation(bool fused)
{
    return std::exchange(s_isFused, fused);
}

}  // namespace internal
}  // namespace zet

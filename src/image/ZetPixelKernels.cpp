#include "image/ZetPixelKernels"

#include "core/ZetUnitInit"

namespace zet {
namespace internal {

namespace {

const ZetPixelKernels& choose()
{
    return *pixelKernelBuilds().back().kernels;
}

}  // namespace

const ZetPixelKernels& pixelKernels()
{
    static const ZetPixelKernels& chosen = choose();
    return chosen;
}

std::vector<ZetPixelKernelBuild> pixelKernelBuilds()
{
    std::vector<ZetPixelKernelBuild> builds = {{"baseline", &kBaselineKernels}};
#ifdef __x86_64__
    __builtin_cpu_init();
    if (__builtin_cpu_supports("avx2")) {
        builds.push_back({"avx2", &kAvx2Kernels});
    }
    if (__builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512dq") &&
        __builtin_cpu_supports("avx512vl")) {
        builds.push_back({"avx512", &kAvx512Kernels});
    }
#endif
    return builds;
}

}  // namespace internal
}  // namespace zet

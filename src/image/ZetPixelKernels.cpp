#include "image/ZetPixelKernels"

#include <utility>

#include "core/ZetUnitInit"

namespace zet {
namespace internal {

namespace {

const ZetPixelKernels*& currentKernels()
{
    static const ZetPixelKernels* kernels = pixelKernelBuilds().back().kernels;
    return kernels;
}

}  // namespace

const ZetPixelKernels& pixelKernels()
{
    return *currentKernels();
}

const ZetPixelKernels* usePixelKernels(const ZetPixelKernels* kernels)
{
    return std::exchange(currentKernels(), kernels);
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

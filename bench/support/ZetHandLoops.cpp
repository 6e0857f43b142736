#include "support/ZetHandLoops"

namespace bench {

namespace {

bool hasAvx512()
{
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
           __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl");
}

}  // namespace

const HandLoops& handLoops()
{
    static const HandLoops& loops = hasAvx512()                      ? avx512Loops
                                    : __builtin_cpu_supports("avx2") ? avx2Loops
                                                                     : baselineLoops;
    return loops;
}

const char* instructionSet()
{
    return hasAvx512() ? "AVX-512" : __builtin_cpu_supports("avx2") ? "AVX2" : "x86-64";
}

}  // namespace bench

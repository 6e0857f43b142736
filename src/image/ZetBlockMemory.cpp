#include "image/ZetBlockMemory"

#include <cstdlib>

#include <sys/mman.h>

#include "core/ZetUnitInit"

namespace zet {
namespace internal {

namespace {

constexpr std::size_t kLeastToAlign = 1024;
constexpr std::size_t kHugePage = std::size_t{2} << 20;
constexpr std::size_t kLeastForHugePages = 2 * kHugePage;

/// A block as from std::malloc(). Vectors of pixels do not straddle lines of the cache in it, and
/// a great one has few pages to be touched.
void* alignedBlock(std::size_t size)
{
    if (size < kLeastToAlign) {
        return std::malloc(size);
    }
    const bool isHuge = size >= kLeastForHugePages;
    void* block = nullptr;
    if (::posix_memalign(&block, isHuge ? kHugePage : kCacheLine, size) != 0) {
        return nullptr;
    }
#ifdef MADV_HUGEPAGE
    if (isHuge) {
        ::madvise(block, size, MADV_HUGEPAGE);  // an advice: where it is not taken, nothing is lost
    }
#endif
    return block;
}

}  // namespace

void* (*acquireBlock)(std::size_t size) = &alignedBlock;

}  // namespace internal
}  // namespace zet

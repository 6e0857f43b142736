#include <zet/ZetTempFile>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <new>

#include <gtest/gtest.h>

#include "support/ZetScratchFolder"

namespace {

// How many blocks may still be had; any number below 0.
thread_local long s_blocksLeft = -1;

std::atomic<long> s_liveBlocks(0);

void release(void* block)
{
    s_liveBlocks -= block ? 1 : 0;
    std::free(block);
}

}  // namespace

void* operator new(std::size_t size)
{
    if (s_blocksLeft >= 0 && s_blocksLeft-- == 0) {
        s_blocksLeft = 0;
        throw std::bad_alloc();
    }
    void* const block = std::malloc(size > 0 ? size : 1);
    if (!block) {
        throw std::bad_alloc();
    }
    ++s_liveBlocks;
    return block;
}

void operator delete(void* block) noexcept
{
    release(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    release(block);
}

namespace zet {
namespace {

TEST(ZetTempFileMemory, noFileStaysWhereAnAllocationFails)
{
    const test::ZetScratchFolder folder;
    // longer than what a text holds without a block
    const auto path = folder / std::string(100, 'n').c_str();
    const std::wstring name = path.wstring();
    bool isOpened = false;
    long blocks = 0;
    for (; !isOpened; ++blocks) {
        const long before = s_liveBlocks;
        {
            ZetTempFile file;
            s_blocksLeft = blocks;
            try {
                isOpened = file.open(name.c_str(), L"w", true) == 0;
            } catch (const std::bad_alloc&) {
                isOpened = false;
            }
            s_blocksLeft = -1;
            EXPECT_EQ(file.name(), isOpened ? name : L"") << blocks;
        }
        EXPECT_EQ(s_liveBlocks, before) << "of " << blocks << " blocks";
        EXPECT_FALSE(std::filesystem::exists(path)) << "of " << blocks << " blocks";
    }
    EXPECT_GE(blocks, 3);
}

}  // namespace
}  // namespace zet

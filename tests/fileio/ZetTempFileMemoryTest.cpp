#include <zet/ZetTempFile>

#include <filesystem>
#include <new>

#include <gtest/gtest.h>

#include "support/ZetCountedNew"
#include "support/ZetScratchFolder"

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

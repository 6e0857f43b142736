#include "image/ZetBlockMemory"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <zet/ZetBuffer>

#include "support/ZetCollectingHandler"

namespace zet {
namespace {

using internal::acquireBlock;

constexpr std::size_t kKiB = 1024;
constexpr std::size_t kMiB = 1024 * kKiB;

struct SizeRow
{
    std::size_t size;
    std::size_t alignment;  // what the address is a multiple of
};

const SizeRow kSizes[] = {
    // below 1 KiB a block is as malloc() gives it
    {0, 1},
    {1, 1},
    {2, 2},
    {8, 8},
    {16, alignof(std::max_align_t)},
    {100, alignof(std::max_align_t)},
    {kKiB - 1, alignof(std::max_align_t)},
    // from there on it begins at a line of the cache
    {kKiB, 64},
    {kKiB + 1, 64},
    {kKiB + 63, 64},
    {5000, 64},
    {512 * kKiB, 64},
    {2 * kMiB, 64},
    {4 * kMiB - 1, 64},
    // and from 4 MiB on at a huge page
    {4 * kMiB, 2 * kMiB},
    {4 * kMiB + 1, 2 * kMiB},
    {6 * kMiB - 1, 2 * kMiB},
    {6 * kMiB + 12345, 2 * kMiB},
};

struct Free
{
    void operator()(void* block) const { std::free(block); }
};
using Block = std::unique_ptr<void, Free>;

Block makeBlock(std::size_t size)
{
    return Block(acquireBlock(size));
}

std::size_t offsetOf(const void* block, std::size_t alignment)
{
    return reinterpret_cast<std::uintptr_t>(block) % alignment;
}

/// Bytes that tell one place from another.
const unsigned char* pattern(std::size_t seed = 0)
{
    static const std::vector<unsigned char> bytes = [] {
        std::vector<unsigned char> all(7 * kMiB);
        for (std::size_t i = 0; i < all.size(); ++i) {
            all[i] = static_cast<unsigned char>(i * 31 + i / 256);
        }
        return all;
    }();
    return bytes.data() + seed;
}

void fill(void* data, std::size_t size, std::size_t seed = 0)
{
    std::memcpy(data, pattern(seed), size);
}

bool hasBytes(const void* data, std::size_t size, std::size_t seed = 0)
{
    return std::memcmp(data, pattern(seed), size) == 0;
}

// Several of one size at a time: one block may begin at a good place by chance.
TEST(ZetBlockMemory, whereBlocksBegin)
{
    for (const SizeRow& row : kSizes) {
        SCOPED_TRACE(row.size);
        std::vector<Block> blocks;
        for (int i = 0; i < 5; ++i) {
            blocks.push_back(makeBlock(row.size));
            ASSERT_NE(blocks.back(), nullptr);
            EXPECT_EQ(offsetOf(blocks.back().get(), row.alignment), 0u);
        }
    }
}

TEST(ZetBlockMemory, allOfABlockMayBeWritten)
{
    for (const SizeRow& row : kSizes) {
        SCOPED_TRACE(row.size);
        std::vector<Block> blocks;
        for (std::size_t seed = 0; seed < 3; ++seed) {
            blocks.push_back(makeBlock(row.size));
            ASSERT_NE(blocks.back(), nullptr);
            fill(blocks.back().get(), row.size, seed);
        }
        for (std::size_t seed = 0; seed < 3; ++seed) {
            EXPECT_TRUE(hasBytes(blocks[seed].get(), row.size, seed)) << seed;
        }
    }
}

// free() ends the process where a block is not one of its own, and the address checker counts those that stay.
TEST(ZetBlockMemory, freeTakesBlocksBack)
{
    for (const SizeRow& row : kSizes) {
        for (int i = 0; i < 20; ++i) {
            void* const block = acquireBlock(row.size);
            ASSERT_NE(block, nullptr);
            std::free(block);
        }
    }
}

TEST(ZetBlockMemory, bytesStayWhereABufferCrossesTheBorders)
{
    const std::size_t sizes[] = {1,        kKiB - 1,     kKiB,     kKiB + 1,     3 * kKiB,
                                 kMiB + 5, 4 * kMiB - 1, 4 * kMiB, 4 * kMiB + 1, 6 * kMiB};
    for (const std::size_t before : sizes) {
        for (const std::size_t after : sizes) {
            SCOPED_TRACE(testing::Message() << "from " << before << " to " << after);
            ZetBuffer buffer(before, true);
            fill(buffer.data(), before);
            void* const moved = buffer.reallocate(after, true);
            ASSERT_NE(moved, nullptr);
            EXPECT_EQ(buffer.data(), moved);
            EXPECT_EQ(buffer.size(), after);
            EXPECT_TRUE(hasBytes(moved, std::min(before, after)));
            fill(moved, after, 7);
            EXPECT_TRUE(hasBytes(buffer.reallocate(before, true), std::min(before, after), 7));
        }
    }
}

TEST(ZetBlockMemory, aBufferHasItsBlockFromHere)
{
    for (const SizeRow& row : kSizes) {
        SCOPED_TRACE(row.size);
        ZetBuffer buffer(row.size, true);
        EXPECT_EQ(offsetOf(buffer.data(), row.alignment), 0u);
        unsigned char callers[3];
        fill(callers, sizeof callers);
        ZetBuffer wrapping(sizeof callers, callers, false);
        const void* const copy = wrapping.reallocate(row.size, true);
        EXPECT_NE(copy, static_cast<const void*>(callers));
        EXPECT_EQ(offsetOf(copy, row.alignment), 0u);
        EXPECT_TRUE(hasBytes(copy, std::min(row.size, sizeof callers)));
    }
}

TEST(ZetBlockMemory, sizesThatNoMemoryCanHold)
{
    constexpr std::size_t most = std::numeric_limits<std::size_t>::max();
    for (const std::size_t size : {most, most - 1, most - 63, most - 64, most - 2 * kMiB, most / 2 + 1, most / 4 * 3}) {
        SCOPED_TRACE(size);
        EXPECT_EQ(makeBlock(size), nullptr);

        const ZetString text = L"Cannot allocate '" + std::to_wstring(size) + L"' bytes for buffer.";
        ZetBuffer buffer(size, false);
        const ZetTextMsg thrown = test::thrownBy([&] { buffer.allocate(); });
        EXPECT_EQ(thrown.text(), text);
        EXPECT_EQ(thrown.file(), L"ZetBuffer");
        EXPECT_TRUE(buffer.allocationFailed());

        const test::ZetCollectingHandler posted;
        EXPECT_EQ(buffer.allocate(), nullptr);
        EXPECT_EQ(posted.texts(), std::vector<ZetString>{text});
        EXPECT_TRUE(buffer.allocationFailed());
        EXPECT_EQ(buffer.size(), size);
    }
}

}  // namespace
}  // namespace zet

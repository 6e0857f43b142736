#include "raster/WindowWalk"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using tools::Window;
using tools::WindowWalk;

struct Row
{
    const char* what;
    int width, height;            // of the image
    int blockWidth, blockHeight;  // of its storage
    std::size_t limit;
    int firstWidth, firstHeight;  // of the first window
};

const Row kRows[] = {
    // rows of pixels: as many as fit
    {"rows", 2048, 1024, 2048, 1, 65536, 2048, 32},
    {"strips of 3 rows", 791, 718, 791, 3, 65536, 791, 81},
    // square blocks: as many side by side as fit, and whole rows of them below each other
    {"one block fits", 1024, 1024, 256, 256, 65536, 256, 256},
    {"two blocks fit", 1024, 1024, 256, 256, 131072, 512, 256},
    {"rows of blocks fit", 1024, 1024, 256, 256, 600000, 1024, 512},
    {"the image fits", 300, 200, 128, 128, 65536, 300, 200},
    // a block beyond the limit is cut
    {"a tall strip", 100, 1000, 100, 1000, 2500, 100, 25},
    {"a long row", 100000, 3, 100000, 1, 65536, 65536, 1},
    {"a block of all", 1000, 1000, 1000, 1000, 65536, 1000, 65},
    // the least image and the least limit
    {"one pixel", 1, 1, 1, 1, 1, 1, 1},
    {"pixel by pixel", 5, 4, 2, 3, 1, 1, 1},
    {"ragged blocks", 10, 7, 4, 3, 12, 4, 3},
    // a storage block may be told larger than the image
    {"block larger than the image", 13, 12, 256, 256, 65536, 13, 12},
};

TEST(WindowWalk, coversEachPixelOnceWithinTheLimit)
{
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.what);
        WindowWalk walk(row.width, row.height, row.blockWidth, row.blockHeight, row.limit);
        std::vector<int> seen(static_cast<std::size_t>(row.width) * static_cast<std::size_t>(row.height));
        Window window;
        bool first = true;
        while (walk.next(window)) {
            if (first) {
                EXPECT_EQ(window.width, row.firstWidth);
                EXPECT_EQ(window.height, row.firstHeight);
                first = false;
            }
            ASSERT_LE(window.pixels(), row.limit);
            ASSERT_LE(window.pixels(), walk.largest());
            ASSERT_GT(window.width, 0);
            ASSERT_GT(window.height, 0);
            for (int y = window.y; y < window.y + window.height; ++y) {
                for (int x = window.x; x < window.x + window.width; ++x) {
                    ASSERT_LT(x, row.width);
                    ASSERT_LT(y, row.height);
                    ++seen[static_cast<std::size_t>(y) * static_cast<std::size_t>(row.width) +
                           static_cast<std::size_t>(x)];
                }
            }
        }
        EXPECT_EQ(seen, std::vector<int>(seen.size(), 1));
    }
}

TEST(WindowWalk, aCutBlockIsFinishedBeforeTheNext)
{
    WindowWalk walk(8, 4, 4, 4, 8);
    const int expected[][4] = {{0, 0, 4, 2}, {0, 2, 4, 2}, {4, 0, 4, 2}, {4, 2, 4, 2}};
    Window window;
    for (const auto& e : expected) {
        ASSERT_TRUE(walk.next(window));
        EXPECT_EQ(window.x, e[0]);
        EXPECT_EQ(window.y, e[1]);
        EXPECT_EQ(window.width, e[2]);
        EXPECT_EQ(window.height, e[3]);
    }
    EXPECT_FALSE(walk.next(window));
}

TEST(WindowWalk, windowsStandOnBlockEdges)
{
    WindowWalk walk(1000, 900, 256, 128, 70000);
    Window window;
    while (walk.next(window)) {
        EXPECT_EQ(window.x % 256, 0);
        EXPECT_EQ(window.y % 128, 0);
    }
}

}  // namespace

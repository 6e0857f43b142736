#include <zet/ZetTileGrid>

#include <set>

#include <gtest/gtest.h>

#include "support/ZetScopedLocale"

namespace zet {
namespace {

constexpr unsigned int kWidest = 4294967295u;

ZetROI roi(int x, int y, int z, unsigned int width, unsigned int height, unsigned int depth)
{
    return ZetROI(ZetCoord3D<int>(x, y, z), ZetImageSize(width, height, depth));
}

/// 4 x 4 cells.
ZetTileGrid square()
{
    return ZetTileGrid(ZetImageSize(100, 100, 3), ZetImageSize(32, 32, 3));
}

struct SizeRow
{
    ZetImageSize image;
    ZetImageSize tile;
    unsigned int across;
    unsigned int down;
    unsigned int count;
};

TEST(ZetTileGrid, initialize)
{
    const SizeRow rows[] = {
        {{100, 100, 3}, {32, 32, 3}, 4, 4, 16},
        {{96, 97, 1}, {32, 32, 1}, 3, 4, 12},
        {{1, 1, 1}, {1000, 1000, 1}, 1, 1, 1},
        {{0, 5, 1}, {2, 2, 1}, 0, 3, 0},
        {{kWidest, 1, 1}, {1, 1, 1}, kWidest, 1, kWidest},
        {{kWidest, kWidest, 1}, {kWidest - 1, 2, 1}, 2, 2147483648u, 0},  // the count is cut to 32 bits
    };
    for (const SizeRow& row : rows) {
        const ZetTileGrid made(row.image, row.tile);
        ZetTileGrid grid = square();
        grid.initialize(row.image, row.tile);
        EXPECT_EQ(grid, made);
        EXPECT_EQ(grid.tilesAcross(), row.across);
        EXPECT_EQ(grid.tilesDown(), row.down);
        EXPECT_EQ(grid.tileCount(), row.count);
        EXPECT_EQ(grid.imageSize(), row.image);
        EXPECT_EQ(grid.tileSize(), row.tile);
    }
    EXPECT_EQ(ZetTileGrid().className(), L"ZetTileGrid");
    EXPECT_EQ(ZetTileGrid().tileCount(), 0u);
    EXPECT_EQ(ZetTileGrid().imageSize(), ZetImageSize());
}

TEST(ZetTileGrid, clear)
{
    ZetTileGrid grid = square();
    grid.clear();
    EXPECT_EQ(grid, ZetTileGrid());

    // without cells it stays as it is
    grid.initialize(ZetImageSize(0, 5, 1), ZetImageSize(2, 2, 1));
    const ZetTileGrid before = grid;
    grid.clear();
    EXPECT_EQ(grid, before);
    EXPECT_EQ(grid.tilesDown(), 3u);
}

TEST(ZetTileGrid, equality)
{
    EXPECT_EQ(square(), square());
    EXPECT_NE(square(), ZetTileGrid(ZetImageSize(100, 100, 2), ZetImageSize(32, 32, 3)));
    EXPECT_NE(square(), ZetTileGrid(ZetImageSize(100, 100, 3), ZetImageSize(32, 33, 3)));
    EXPECT_NE(square(), ZetTileGrid());
}

struct CellRow
{
    unsigned int x;
    unsigned int y;
    unsigned int z;
    unsigned int cell;
};

const CellRow kCells[] = {
    {0, 0, 0, 0},
    {31, 31, 2, 0},
    {32, 31, 0, 1},
    {31, 32, 1, 4},
    {99, 99, 2, 15},
    {99, 0, 0, 3},
    // outside
    {100, 0, 0, kWidest},
    {0, 100, 0, kWidest},
    {0, 0, 3, kWidest},
    {kWidest, kWidest, kWidest, kWidest},
};

TEST(ZetTileGrid, imageToCell)
{
    for (const CellRow& row : kCells) {
        EXPECT_EQ(square().imageToCell(row.x, row.y, row.z), row.cell) << row.x << " " << row.y << " " << row.z;
    }
    EXPECT_EQ(ZetTileGrid::kOutside, kWidest);
    EXPECT_EQ(ZetTileGrid().imageToCell(0, 0, 0), kWidest);

    const ZetTileGrid wide(ZetImageSize(kWidest, kWidest, 1), ZetImageSize(65536, 65536, 1));
    EXPECT_EQ(wide.imageToCell(kWidest - 1, 0, 0), 65535u);
    EXPECT_EQ(wide.imageToCell(0, kWidest - 1, 0), 65535u * 65536u);
}

struct RegionRow
{
    unsigned int cellX;
    unsigned int cellY;
    unsigned int z;
    ZetROI region;
};

TEST(ZetTileGrid, regionsOfCells)
{
    const RegionRow rows[] = {
        {0, 0, 0, roi(0, 0, 0, 32, 32, 3)},
        {1, 2, 0, roi(32, 64, 0, 32, 32, 3)},
        // cut at the edges
        {3, 0, 0, roi(96, 0, 0, 4, 32, 3)},
        {3, 3, 0, roi(96, 96, 0, 4, 4, 3)},
        // z is a plane itself; the depth is cut too
        {0, 0, 1, roi(0, 0, 1, 32, 32, 2)},
        {1, 1, 2, roi(32, 32, 2, 32, 32, 1)},
    };
    for (const RegionRow& row : rows) {
        EXPECT_EQ(ZetString(square()(row.cellX, row.cellY, row.z)), ZetString(row.region));
    }
    EXPECT_EQ(ZetString(square()[15]), L"((96,96,0),(4,4,3))");
    EXPECT_EQ(ZetString(square()[5]), L"((32,32,0),(32,32,3))");

    // without columns the number is the column
    const ZetTileGrid none(ZetImageSize(0, 5, 1), ZetImageSize(2, 2, 1));
    EXPECT_EQ(ZetString(none[3].origin().x() == 6 ? L"column" : L"row"), L"column");
    EXPECT_EQ(none[3].origin(), ZetCoord3D<int>(6, 0, 0));
}

TEST(ZetTileGrid, cellsOutside)
{
    const test::ZetScopedLocale plainNumbers("C");
    // the first position is 128, the last 99
    EXPECT_EQ(ZetString(square()(4, 0, 0)), L"((128,0,0),(4294967268,32,3))");
    EXPECT_EQ(ZetString(square()(0, 0, 3)), L"((0,0,3),(32,32,0))");
    // positions do not wrap before they are compared with the image
    const ZetTileGrid wide(ZetImageSize(100, 100, 1), ZetImageSize(65536, 65536, 1));
    EXPECT_EQ(ZetString(wide(65536, 0, 0)), L"((0,0,0),(100,100,1))");
    EXPECT_EQ(ZetString(wide(0, 0, kWidest)), L"((0,0,-1),(100,100,2))");
    // the greatest of all: (2^32 - 1)^2 is 1 in 32 bits
    const ZetTileGrid widest(ZetImageSize(100, 100, 1), ZetImageSize(kWidest, kWidest, kWidest));
    EXPECT_EQ(ZetString(widest(kWidest, kWidest, 0)), L"((1,1,0),(99,99,1))");
    EXPECT_EQ(ZetString(widest(1, 0, kWidest)), L"((-1,0,-1),(101,100,2))");
    // a tile without planes stays so
    const ZetTileGrid flat(ZetImageSize(100, 100, 1), ZetImageSize(32, 32, 0));
    EXPECT_EQ(ZetString(flat(0, 0, 0)), L"((0,0,0),(32,32,0))");
}

struct TouchRow
{
    ZetROI region;
    std::set<unsigned int> cells;
};

TEST(ZetTileGrid, intersectedCells)
{
    const std::set<unsigned int> all = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    const TouchRow rows[] = {
        // one pixel
        {roi(0, 0, 0, 1, 1, 1), {0}},
        {roi(99, 99, 2, 1, 1, 1), {15}},
        {roi(40, 70, 0, 1, 1, 1), {9}},
        // across a corner of four cells
        {roi(31, 31, 0, 2, 2, 1), {0, 1, 4, 5}},
        {roi(32, 0, 0, 64, 33, 1), {1, 2, 5, 6}},
        // one whole cell
        {roi(32, 32, 0, 32, 32, 3), {5}},
        // the image and more
        {roi(0, 0, 0, 100, 100, 3), all},
        {roi(-50, -50, -5, 1000, 1000, 1000), all},
        {roi(-50, -50, 0, 51, 51, 1), {0}},
        // up to the end of the range
        {roi(98, 0, 0, kWidest, 1, 1), {3}},
        // outside, or nothing
        {roi(100, 0, 0, 5, 5, 1), {}},
        {roi(-5, 0, 0, 5, 5, 1), {}},
        {roi(0, 0, 3, 5, 5, 1), {}},
        {roi(0, 0, 0, 0, 5, 1), {}},
        {roi(2147483647, 0, 0, kWidest, 1, 1), {}},
    };
    for (const TouchRow& row : rows) {
        EXPECT_EQ(square().intersectedCells(row.region), row.cells) << testing::PrintToString(ZetString(row.region));
    }
    EXPECT_TRUE(ZetTileGrid().intersectedCells(roi(0, 0, 0, 5, 5, 5)).empty());
}

TEST(ZetTileGrid, intersectedCellsOfTheWidestImage)
{
    // the last number of the last row is the greatest one
    const ZetTileGrid wide(ZetImageSize(kWidest, 2, 1), ZetImageSize(1, 1, 1));
    EXPECT_EQ(wide.intersectedCells(roi(2147483647, 0, 0, 1, 1, 1)), std::set<unsigned int>{2147483647u});
    const ZetTileGrid tall(ZetImageSize(65536 * 4, 65536 * 4, 1), ZetImageSize(4, 4, 1));
    EXPECT_EQ(tall.intersectedCells(roi(65536 * 4 - 1, 65536 * 4 - 1, 0, 9, 9, 1)), std::set<unsigned int>{kWidest});
}

TEST(ZetTileGrid, agreesWithAWalkOverAllPixels)
{
    const ZetTileGrid grid(ZetImageSize(13, 9, 1), ZetImageSize(4, 5, 1));
    for (int x = -2; x < 15; x += 3) {
        for (int y = -2; y < 11; y += 2) {
            for (unsigned int size = 0; size < 9; ++size) {
                const ZetROI region = roi(x, y, 0, size, size, 1);
                std::set<unsigned int> cells;
                for (unsigned int cell = 0; cell < grid.tileCount(); ++cell) {
                    if (!grid[cell].intersection(region).size().isEmpty()) {
                        cells.insert(cell);
                    }
                }
                EXPECT_EQ(grid.intersectedCells(region), cells);
            }
        }
    }
}

}  // namespace
}  // namespace zet

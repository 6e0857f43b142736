#include <zet/ZetROI>

#include <limits>
#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetMetaProperties>
#include <zet/ZetSemaphore>
#include <zet/ZetVariant>

namespace zet {
namespace {

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kGreatest = std::numeric_limits<int>::max();
constexpr unsigned int kWidest = std::numeric_limits<unsigned int>::max();

ZetROI roi(int x, int y, int z, unsigned int width, unsigned int height, unsigned int depth)
{
    return ZetROI(ZetCoord3D<int>(x, y, z), ZetImageSize(width, height, depth));
}

TEST(ZetROI, holdsOriginAndSize)
{
    ZetROI region;
    EXPECT_EQ(region.className(), L"ZetROI");
    EXPECT_EQ(region, roi(0, 0, 0, 0, 0, 0));
    region.setOrigin(ZetCoord3D<int>(1, 2, 3));
    region.setSize(ZetImageSize(4, 5, 6));
    EXPECT_EQ(region.origin(), ZetCoord3D<int>(1, 2, 3));
    EXPECT_EQ(region.size(), ZetImageSize(4, 5, 6));
    EXPECT_EQ(region, roi(1, 2, 3, 4, 5, 6));
    EXPECT_NE(region, roi(1, 2, 3, 4, 5, 7));
    EXPECT_NE(region, roi(0, 2, 3, 4, 5, 6));
    EXPECT_EQ(ZetString(region), L"((1,2,3),(4,5,6))");
}

struct JoinRow
{
    ZetROI a;
    ZetROI b;
    ZetROI result;
};

TEST(ZetROI, intersection)
{
    const JoinRow rows[] = {
        {roi(0, 0, 0, 10, 10, 2), roi(5, -5, 1, 10, 10, 2), roi(5, 0, 1, 5, 5, 1)},
        {roi(0, 0, 0, 10, 10, 1), roi(2, 3, 0, 4, 5, 1), roi(2, 3, 0, 4, 5, 1)},
        // apart on one axis: no area, the origin is the greater one, other axes keep their overlap
        {roi(0, 0, 0, 10, 10, 1), roi(20, 0, 0, 5, 5, 1), roi(20, 0, 0, 0, 5, 1)},
        // touching is apart
        {roi(0, 0, 0, 10, 1, 1), roi(10, 0, 0, 10, 1, 1), roi(10, 0, 0, 0, 1, 1)},
        // an empty region
        {roi(0, 0, 0, 0, 0, 0), roi(0, 0, 0, 5, 5, 1), roi(0, 0, 0, 0, 0, 0)},
        {roi(3, 3, 0, 0, 4, 1), roi(0, 0, 0, 5, 5, 1), roi(3, 3, 0, 0, 2, 1)},
        // the ends of the ranges
        {roi(kGreatest, 0, 0, kWidest, 1, 1), roi(kGreatest, 0, 0, 2, 1, 1), roi(kGreatest, 0, 0, 2, 1, 1)},
        {roi(kLowest, 0, 0, kWidest, 1, 1), roi(kLowest, 0, 0, kWidest, 1, 1), roi(kLowest, 0, 0, kWidest, 1, 1)},
        {roi(kLowest, 0, 0, 1, 1, 1), roi(kGreatest, 0, 0, kWidest, 1, 1), roi(kGreatest, 0, 0, 0, 1, 1)},
        {roi(kLowest, 0, 0, kWidest, 1, 1), roi(kGreatest - 1, 0, 0, 5, 1, 1), roi(kGreatest - 1, 0, 0, 1, 1, 1)},
    };
    for (const JoinRow& row : rows) {
        EXPECT_EQ(ZetString(row.a.intersection(row.b)), ZetString(row.result));
        EXPECT_EQ(ZetString(row.b.intersection(row.a)), ZetString(row.result));
        EXPECT_EQ(row.a.intersection(row.b), row.result);
    }
    EXPECT_TRUE(roi(0, 0, 0, 10, 10, 1).intersection(roi(20, 0, 0, 5, 5, 1)).size().isEmpty());
}

TEST(ZetROI, boundingROI)
{
    const JoinRow rows[] = {
        // reaching from this origin to the last of both
        {roi(0, 0, 0, 1, 1, 1), roi(5, 6, 1, 2, 1, 3), roi(0, 0, 0, 7, 7, 4)},
        {roi(0, 0, 0, 10, 2, 1), roi(5, 1, 0, 2, 8, 1), roi(0, 0, 0, 10, 9, 1)},
        // what begins before this region is not covered
        {roi(5, 5, 0, 1, 1, 1), roi(0, 0, 0, 1, 1, 1), roi(5, 5, 0, 1, 1, 1)},
        {roi(5, 5, 0, 1, 1, 1), roi(0, 0, 0, 20, 1, 1), roi(5, 5, 0, 15, 1, 1)},
        // an empty region gives the other
        {roi(7, 7, 7, 0, 5, 5), roi(1, 2, 3, 4, 5, 6), roi(1, 2, 3, 4, 5, 6)},
        {roi(1, 2, 3, 4, 5, 6), roi(7, 7, 7, 5, 0, 5), roi(1, 2, 3, 4, 5, 6)},
        {roi(1, 1, 1, 0, 1, 1), roi(2, 2, 2, 1, 0, 1), roi(2, 2, 2, 1, 0, 1)},
        // the ends of the ranges: positions do not wrap, a size is cut to its 32 bits
        {roi(kGreatest, 0, 0, 5, 1, 1), roi(kGreatest, 0, 0, kWidest, 1, 1), roi(kGreatest, 0, 0, kWidest, 1, 1)},
        {roi(kLowest, 0, 0, 1, 1, 1), roi(kGreatest, 0, 0, 1, 1, 1), roi(kLowest, 0, 0, 0, 1, 1)},
        {roi(kLowest, 0, 0, 1, 1, 1), roi(kGreatest, 0, 0, 6, 1, 1), roi(kLowest, 0, 0, 5, 1, 1)},
    };
    for (const JoinRow& row : rows) {
        EXPECT_EQ(ZetString(row.a.boundingROI(row.b)), ZetString(row.result));
    }
}

TEST(ZetROI, properties)
{
    ZetROI region;
    EXPECT_TRUE(region.isMetaObject());
    EXPECT_FALSE(ZetSemaphore(0).isMetaObject());
    const ZetMetaObjectPtr meta = region.metaObject();
    meta->properties();
    EXPECT_EQ(meta->setPropertyValue(L"origin", ZetVariant(ZetCoord3D<double>(1.9, -2.9, 3.0))), 0);
    EXPECT_EQ(meta->setPropertyValue(L"size", ZetVariant(ZetSize3D<unsigned int>(4, 5, 6))), 0);
    EXPECT_EQ(region, roi(1, -2, 3, 4, 5, 6));
    ZetVariant value;
    EXPECT_EQ(meta->getPropertyValue(L"size", value), 0);
    EXPECT_EQ(value.value<ZetImageSize>(), ZetImageSize(4, 5, 6));
    EXPECT_EQ(static_cast<const ZetROI&>(region).metaObject()->getPropertyValue(L"origin", value), 0);
    EXPECT_EQ(value.value<ZetString>(), L"(1,-2,3)");
}

TEST(ZetROI, convertsToTextAndNotFromIt)
{
    EXPECT_EQ(ZetVariant(roi(1, 2, 3, 4, 5, 6)).value<ZetString>(), L"((1,2,3),(4,5,6))");
    EXPECT_EQ(ZetVariant(L"((1,2,3),(4,5,6))").value<ZetROI>(), ZetROI());
}

}  // namespace
}  // namespace zet

#include <zet/ZetTiePoint>

#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include <zet/ZetMetaProperties>
#include <zet/ZetVariant>

#include "support/ZetScopedLocale"

namespace zet {
namespace {

ZetTiePoint tie(double u, double v, double x, double y)
{
    return ZetTiePoint(ZetCoord2D<double>(u, v), ZetCoord2D<double>(x, y));
}

TEST(ZetTiePoint, holdsBothPoints)
{
    ZetTiePoint point;
    EXPECT_EQ(point.className(), L"ZetTiePoint");
    EXPECT_EQ(point, tie(0, 0, 0, 0));
    point.setUv(ZetCoord2D<double>(1, 2));
    point.setXy(ZetCoord2D<double>(3, 4));
    EXPECT_EQ(point.uv(), ZetCoord2D<double>(1, 2));
    EXPECT_EQ(point.xy(), ZetCoord2D<double>(3, 4));
    EXPECT_EQ(point, tie(1, 2, 3, 4));
    EXPECT_NE(point, tie(1, 2, 3, 5));
    EXPECT_NE(point, tie(0, 2, 3, 4));
}

TEST(ZetTiePoint, order)
{
    // ascending: u, then v, then x, then y decides
    const std::vector<ZetTiePoint> sorted = {
        tie(-1, 9, 9, 9), tie(0, -5, 9, 9), tie(0, 0, -5, 9), tie(0, 0, 0, -5),
        tie(0, 0, 0, 0),  tie(0, 0, 1, -9), tie(0, 1, -9, 0), tie(1, -9, -9, -9),
    };
    for (std::size_t a = 0; a < sorted.size(); ++a) {
        for (std::size_t b = 0; b < sorted.size(); ++b) {
            EXPECT_EQ(sorted[a] < sorted[b], a < b) << a << " " << b;
        }
    }
    EXPECT_FALSE(tie(0.0, 0, 0, 0) < tie(-0.0, 0, 0, 0));
    EXPECT_TRUE(tie(0, 0, 0, 0) < tie(std::numeric_limits<double>::denorm_min(), -1, 0, 0));
}

TEST(ZetTiePoint, properties)
{
    const test::ZetScopedLocale plainNumbers("C");
    ZetTiePoint point;
    const ZetMetaObjectPtr meta = point.metaObject();
    meta->properties();
    EXPECT_EQ(meta->setPropertyValue(L"uv", ZetVariant(L"(1,2)")), 0);
    EXPECT_EQ(meta->setPropertyValue(L"xy", ZetVariant(ZetCoord2D<double>(3, 4))), 0);
    EXPECT_EQ(point, tie(1, 2, 3, 4));
    ZetVariant value;
    EXPECT_EQ(meta->getPropertyValue(L"xy", value), 0);
    EXPECT_EQ(value.value<ZetCoord2D<double>>(), ZetCoord2D<double>(3, 4));
}

}  // namespace
}  // namespace zet

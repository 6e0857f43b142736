#include <cmath>
#include <limits>
#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetCoord2D>
#include <zet/ZetCoord3D>
#include <zet/ZetImageSize>
#include <zet/ZetMetaProperties>
#include <zet/ZetSize2D>
#include <zet/ZetSize3D>
#include <zet/ZetVariant>

#include "support/ZetScopedLocale"

// The four small templates behave alike: one file tests them as one family.
namespace zet {
namespace {

template <class T>
class ZetCoord : public testing::Test
{
};

using Elements =
    testing::Types<char, unsigned char, short, unsigned short, int, unsigned int, long, unsigned long, float, double>;
TYPED_TEST_SUITE(ZetCoord, Elements);

TYPED_TEST(ZetCoord, holdsItsFields)
{
    using T = TypeParam;
    const T a = 1;
    const T b = 2;
    const T c = 3;

    ZetCoord2D<T> flat(a, b);
    EXPECT_EQ(flat.x(), a);
    EXPECT_EQ(flat.y(), b);
    flat.setX(c);
    flat.setY(a);
    EXPECT_EQ(flat, ZetCoord2D<T>(c, a));
    EXPECT_NE(flat, ZetCoord2D<T>(c, b));
    EXPECT_NE(flat, ZetCoord2D<T>(a, a));

    ZetCoord3D<T> deep(a, b, c);
    EXPECT_EQ(deep.z(), c);
    deep.setX(c);
    deep.setY(a);
    deep.setZ(b);
    EXPECT_EQ(deep, ZetCoord3D<T>(c, a, b));
    EXPECT_NE(deep, ZetCoord3D<T>(c, a, c));

    ZetSize2D<T> area(a, b);
    area.setWidth(c);
    area.setHeight(a);
    EXPECT_EQ(area, ZetSize2D<T>(c, a));
    EXPECT_EQ(area.width(), c);
    EXPECT_EQ(area.height(), a);
    EXPECT_NE(area, ZetSize2D<T>(c, b));

    ZetSize3D<T> volume(a, b, c);
    volume.setWidth(c);
    volume.setHeight(a);
    volume.setDepth(b);
    EXPECT_EQ(volume, ZetSize3D<T>(c, a, b));
    EXPECT_EQ(volume.depth(), b);
    EXPECT_NE(volume, ZetSize3D<T>(c, a, c));
}

TYPED_TEST(ZetCoord, isNullAndEmptyByDefault)
{
    using T = TypeParam;
    const T o = 0;
    const T i = 1;
    EXPECT_TRUE(ZetCoord2D<T>().isNull());
    EXPECT_TRUE(ZetCoord3D<T>().isNull());
    EXPECT_FALSE(ZetCoord2D<T>(i, o).isNull());
    EXPECT_FALSE(ZetCoord2D<T>(o, i).isNull());
    EXPECT_FALSE(ZetCoord3D<T>(o, o, i).isNull());
    EXPECT_TRUE(ZetSize2D<T>().isEmpty());
    EXPECT_TRUE(ZetSize2D<T>(o, i).isEmpty());
    EXPECT_TRUE(ZetSize2D<T>(i, o).isEmpty());
    EXPECT_FALSE(ZetSize2D<T>(i, i).isEmpty());
    EXPECT_TRUE(ZetSize3D<T>().isEmpty());
    EXPECT_TRUE(ZetSize3D<T>(o, i, i).isEmpty());
    EXPECT_TRUE(ZetSize3D<T>(i, o, i).isEmpty());
    EXPECT_TRUE(ZetSize3D<T>(i, i, o).isEmpty());
    EXPECT_FALSE(ZetSize3D<T>(i, i, i).isEmpty());
}

/// The kind in which an element travels.
template <class T>
ZetString kindOf()
{
    if (!std::numeric_limits<T>::is_integer) {
        return L"Double";
    }
    const ZetString kind = sizeof(T) == 8 ? L"Int64" : L"Int";
    return (std::numeric_limits<T>::is_signed ? L"" : L"U") + kind;
}

/// Writes and reads each property of \p object.
template <class T>
void expectProperties(ZetObject& object, std::initializer_list<const wchar_t*> names)
{
    const ZetMetaObjectPtr meta = object.metaObject();
    ASSERT_TRUE(meta.booleanTest());
    meta->properties();
    int i = 0;
    for (const wchar_t* name : names) {
        EXPECT_EQ(meta->setPropertyValue(name, ZetVariant(++i)), 0);
    }
    i = 0;
    for (const wchar_t* name : names) {
        ZetVariant value;
        EXPECT_EQ(meta->getPropertyValue(name, value), 0);
        EXPECT_EQ(value.typeName(), kindOf<T>());
        EXPECT_EQ(value.value<int>(), ++i);
    }
    ZetVariant value;
    EXPECT_EQ(meta->getPropertyValue(L"other", value), 1);
    EXPECT_EQ(meta->setPropertyValue(L"other", ZetVariant(1)), 1);
}

TYPED_TEST(ZetCoord, properties)
{
    using T = TypeParam;
    ZetCoord2D<T> flat;
    expectProperties<T>(flat, {L"x", L"y"});
    EXPECT_EQ(flat, ZetCoord2D<T>(T(1), T(2)));
    ZetCoord3D<T> deep;
    expectProperties<T>(deep, {L"x", L"y", L"z"});
    EXPECT_EQ(deep, ZetCoord3D<T>(T(1), T(2), T(3)));
    ZetSize2D<T> area;
    expectProperties<T>(area, {L"width", L"height"});
    EXPECT_EQ(area, ZetSize2D<T>(T(1), T(2)));
    ZetSize3D<T> volume;
    expectProperties<T>(volume, {L"width", L"height", L"depth"});
    EXPECT_EQ(volume, ZetSize3D<T>(T(1), T(2), T(3)));
}

TEST(ZetCoordFamily, negativeZeroIsNull)
{
    EXPECT_TRUE(ZetCoord2D<double>(0.0, -0.0).isNull());
    EXPECT_TRUE(ZetCoord3D<double>(-0.0, 0.0, -0.0).isNull());
    EXPECT_FALSE(ZetCoord2D<double>(0.0, std::numeric_limits<double>::denorm_min()).isNull());
    EXPECT_FALSE(ZetCoord2D<double>(0.0, std::nan("")).isNull());
}

TEST(ZetCoordFamily, noOtherElementHasAMetaObject)
{
    EXPECT_FALSE(internal::coord2DMetaObj(nullptr, typeID<bool>()).booleanTest());
    EXPECT_FALSE(internal::coord3DMetaObj(nullptr, typeID<signed char>()).booleanTest());
    EXPECT_FALSE(internal::size2DMetaObj(nullptr, 0).booleanTest());
    EXPECT_FALSE(internal::size3DMetaObj(nullptr, typeID<ZetString>()).booleanTest());
}

TEST(ZetCoordFamily, classNames)
{
    EXPECT_EQ(ZetCoord2D<int>().className(), L"ZetCoord2D<int>");
    EXPECT_EQ(ZetCoord2D<double>().className(), L"ZetCoord2D<double>");
    EXPECT_EQ(ZetCoord3D<int>().className(), L"ZetCoord3D<int>");
    EXPECT_EQ(ZetCoord3D<double>().className(), L"ZetCoord3D<double>");
    EXPECT_EQ(ZetCoord3D<unsigned short>().className(), L"ZetCoord3D<unsigned short>");
    EXPECT_EQ(ZetSize2D<unsigned int>().className(), L"ZetSize2D<unsigned int>");
    EXPECT_EQ(ZetSize3D<unsigned int>().className(), L"ZetSize3D<unsigned int>");
    EXPECT_EQ(ZetImageSize().className(), L"ZetImageSize");
}

TEST(ZetImageSize, isASizeWithItsOwnName)
{
    ZetImageSize size(640, 480, 3);
    EXPECT_EQ(size.width(), 640u);
    EXPECT_EQ(size.height(), 480u);
    EXPECT_EQ(size.depth(), 3u);
    EXPECT_FALSE(size.isEmpty());
    EXPECT_TRUE(ZetImageSize().isEmpty());
    EXPECT_TRUE(ZetImageSize(5, 0, 1).isEmpty());
    EXPECT_EQ(ZetString(size), L"(640,480,3)");
    EXPECT_EQ(size, (ZetSize3D<unsigned int>(640, 480, 3)));
    expectProperties<unsigned int>(size, {L"width", L"height", L"depth"});
    EXPECT_EQ(size, ZetImageSize(1, 2, 3));
}

TEST(ZetSize3D, textByConversion)
{
    const test::ZetScopedLocale plainNumbers("C");
    EXPECT_EQ(ZetString(ZetSize3D<unsigned int>(1, 2, 4294967295u)), L"(1,2,4294967295)");
}

}  // namespace
}  // namespace zet

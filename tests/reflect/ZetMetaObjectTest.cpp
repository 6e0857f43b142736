#include <zet/ZetMetaObject>

#include <cstdlib>

#include <gtest/gtest.h>

#include <zet/ZetMetaObjectImpl>
#include <zet/ZetROI>
#include <zet/ZetSemaphore>
#include <zet/ZetVersion>

#include "support/ZetScopedLocale"

namespace zet {
namespace {

class PointMetaObj;

class Point : public ZetObject
{
public:
    ZetString className() const override { return L"Point"; }
    using ZetObject::metaObject;
    ZetMetaObjectConstPtr metaObject() const override;

    int m_x = 1;
    float m_weight = 0.5f;
    unsigned char m_level = 200;
    short m_step = -3;
    ZetString m_text = L"text";
};

class PointMetaObj : public ZetMetaObjectImpl<PointMetaObj, Point>
{
public:
    using ZetMetaObjectImpl::ZetMetaObjectImpl;
    ZET_PROPERTY(int, x)
    ZET_PROPERTY(float, weight)
    ZET_PROPERTY(unsigned char, level)
    ZET_PROPERTY(short, step)
    ZET_PROPERTY(ZetString, text)

    static ZetMetaPropertiesPtr staticProperties()
    {
        static const Row rows[] = {
            ZET_ROW(x, L"X", 0),
            ZET_ROW(weight, L"Weight", ZetMetaFlag::Required),
            ZET_ROW(level, L"", 0),
            ZET_ROW(step, L"Step", 0),
            ZET_ROW(text, L"Text", 0),
            // a name that is there already is left out
            ZET_ROW(x, L"Second X", 0),
        };
        return fill(L"Point", rows);
    }
};

ZetMetaObjectConstPtr Point::metaObject() const
{
    return new PointMetaObj(this);
}

/// A class of its own for the test of the empty table.
class Late : public ZetObject
{
public:
    int m_x = 4;
};

class LateMetaObj : public ZetMetaObjectImpl<LateMetaObj, Late>
{
public:
    using ZetMetaObjectImpl::ZetMetaObjectImpl;
    ZET_PROPERTY(int, x)
    static ZetMetaPropertiesPtr staticProperties()
    {
        static const Row rows[] = {ZET_ROW(x, L"X", 0)};
        return fill(L"Late", rows);
    }
};

/// A meta class with another one behind it.
class Derived : public Point
{
public:
    int m_z = 30;
};

class DerivedMetaObj : public ZetMetaObjectImpl<DerivedMetaObj, Derived>
{
public:
    using ZetMetaObjectImpl::ZetMetaObjectImpl;
    ZET_PROPERTY(int, z)
    static ZetMetaPropertiesPtr staticProperties()
    {
        static const Row rows[] = {ZET_ROW(z, L"Z", 0)};
        return fill(L"Derived", rows, PointMetaObj::staticProperties());
    }
    ZetMetaObjectPtr superMetaObject() const override { return new PointMetaObj(m_object); }
};

/// A meta class that names itself as its super meta object.
class SelfMetaObj : public ZetMetaObjectImpl<SelfMetaObj, Point>
{
public:
    using ZetMetaObjectImpl::ZetMetaObjectImpl;
    ZET_PROPERTY(int, x)
    static ZetMetaPropertiesPtr staticProperties()
    {
        static const Row rows[] = {ZET_ROW(x, L"X", 0)};
        return fill(L"Self", rows);
    }
    ZetMetaObjectPtr superMetaObject() const override { return const_cast<SelfMetaObj*>(this); }
};

TEST(ZetMetaObject, accessBeforePropertiesAnswersOne)
{
    Late object;
    const ZetMetaObjectPtr meta(new LateMetaObj(&object));
    ZetVariant value(7);
    EXPECT_EQ(meta->getPropertyValue(L"x", value), 1);
    EXPECT_EQ(meta->setPropertyValue(L"x", ZetVariant(9)), 1);
    EXPECT_EQ(value.value<int>(), 7);
    EXPECT_EQ(object.m_x, 4);

    const ZetMetaPropertiesConstPtr properties = meta->properties();
    EXPECT_EQ(meta->getPropertyValue(L"x", value), 0);
    EXPECT_EQ(value.value<int>(), 4);
    EXPECT_EQ(meta->setPropertyValue(L"x", ZetVariant(9)), 0);
    EXPECT_EQ(object.m_x, 9);

    // the table is one for the class and stays
    Late other;
    const ZetMetaObjectPtr otherMeta(new LateMetaObj(&other));
    EXPECT_EQ(otherMeta->getPropertyValue(L"x", value), 0);
    EXPECT_EQ(otherMeta->properties().get(), properties.get());
    EXPECT_EQ(LateMetaObj::staticProperties().get(), properties.get());
}

int accessVersion()
{
    const ZetVersion version(3, 1, 4);
    const ZetMetaObjectConstPtr meta = version.metaObject();
    ZetVariant value;
    const bool refused = meta->getPropertyValue(L"major", value) == 1 && !value.isValid();
    meta->properties();
    return refused && meta->getPropertyValue(L"major", value) == 0 && value.value<int>() == 3 ? 0 : 1;
}

TEST(ZetMetaObjectDeathTest, aFreshVersionAnswersOnlyAfterProperties)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(std::exit(accessVersion()), testing::ExitedWithCode(0), "");
}

TEST(ZetMetaObject, writesByConversion)
{
    ZetVersion version(3, 1, 4);
    const ZetMetaObjectPtr meta = version.metaObject();
    meta->properties();
    EXPECT_EQ(meta->setPropertyValue(L"major", ZetVariant(L"7")), 0);
    EXPECT_EQ(version.major(), 7);
    EXPECT_EQ(meta->setPropertyValue(L"major", ZetVariant(L"x")), 0);
    EXPECT_EQ(version.major(), 0);
    EXPECT_EQ(meta->setPropertyValue(L"minor", ZetVariant(2.9)), 0);
    EXPECT_EQ(version.minor(), 2);
    EXPECT_EQ(meta->setPropertyValue(L"build", ZetVariant()), 0);
    EXPECT_EQ(version.build(), 0);
    EXPECT_EQ(meta->setPropertyValue(L"unknown", ZetVariant(1)), 1);
    EXPECT_EQ(meta->setPropertyValue(L"Major", ZetVariant(1)), 1);
    EXPECT_EQ(meta->setPropertyValue(L"", ZetVariant(1)), 1);
}

TEST(ZetMetaObject, readsUnknownNamesNotAtAll)
{
    const Point point;
    const ZetMetaObjectConstPtr meta = point.metaObject();
    meta->properties();
    ZetVariant value(L"kept");
    EXPECT_EQ(meta->getPropertyValue(L"y", value), 1);
    EXPECT_EQ(value.value<ZetString>(), L"kept");
}

struct KindRow
{
    const wchar_t* name;
    ZetMetaType::Type kind;
    const wchar_t* label;
    int flags;
    const wchar_t* text;
};

TEST(ZetMetaObject, smallNumbersTravelAsTheKindThatHoldsThem)
{
    const test::ZetScopedLocale plainNumbers("C");
    const KindRow rows[] = {
        {L"x", ZetMetaType::Int, L"X", 0, L"1"},
        {L"weight", ZetMetaType::Double, L"Weight", 8, L"0.5"},
        // an empty label shows the name
        {L"level", ZetMetaType::UInt, L"level", 0, L"200"},
        {L"step", ZetMetaType::Int, L"Step", 0, L"-3"},
        {L"text", ZetMetaType::String, L"Text", 0, L"text"},
    };
    Point point;
    const ZetMetaObjectPtr meta = point.metaObject();
    const ZetMetaPropertiesConstPtr properties = meta->properties();
    EXPECT_EQ(properties->ownerClassName(), L"Point");
    EXPECT_EQ(properties->propertyNames(false), (ZetStrList{L"x", L"weight", L"level", L"step", L"text"}));
    for (const KindRow& row : rows) {
        const ZetMetaPropertyConstPtr property = properties->property(row.name, false);
        ASSERT_TRUE(property);
        EXPECT_EQ(property->type().type(), row.kind) << toMultibyte(row.name);
        EXPECT_EQ(property->label(), row.label);
        EXPECT_EQ(property->flags().flags(), row.flags);
        EXPECT_EQ(property->description(), L"");
        EXPECT_EQ(property->commandFlag(), 0);
        EXPECT_FALSE(property->validator());
        ZetVariant value;
        EXPECT_EQ(meta->getPropertyValue(row.name, value), 0);
        EXPECT_EQ(value.type().type(), row.kind) << toMultibyte(row.name);
        EXPECT_EQ(value.value<ZetString>(), row.text) << toMultibyte(row.name);
    }
    EXPECT_EQ(meta->setPropertyValue(L"weight", ZetVariant(L"0.25")), 0);
    EXPECT_EQ(meta->setPropertyValue(L"level", ZetVariant(7)), 0);
    EXPECT_EQ(meta->setPropertyValue(L"step", ZetVariant(-4.0)), 0);
    EXPECT_EQ(point.m_weight, 0.25f);
    EXPECT_EQ(point.m_level, 7);
    EXPECT_EQ(point.m_step, -4);
}

TEST(ZetMetaObject, asksTheSuperMetaObject)
{
    Derived object;
    const ZetMetaObjectPtr meta(new DerivedMetaObj(&object));
    meta->properties();
    ZetVariant value;
    EXPECT_EQ(meta->getPropertyValue(L"z", value), 0);
    EXPECT_EQ(value.value<int>(), 30);
    EXPECT_EQ(meta->getPropertyValue(L"x", value), 0);
    EXPECT_EQ(value.value<int>(), 1);
    EXPECT_EQ(meta->setPropertyValue(L"x", ZetVariant(12)), 0);
    EXPECT_EQ(object.m_x, 12);
    EXPECT_EQ(meta->getPropertyValue(L"none", value), 1);
    EXPECT_EQ(meta->setPropertyValue(L"none", value), 1);
    EXPECT_EQ(meta->properties()->propertyNames(true), (ZetStrList{L"x", L"weight", L"level", L"step", L"text", L"z"}));
}

TEST(ZetMetaObject, aSuperMetaObjectThatIsTheObjectItselfIsNotAsked)
{
    Point object;
    const ZetMetaObjectPtr meta(new SelfMetaObj(&object));
    meta->properties();
    ZetVariant value;
    EXPECT_EQ(meta->getPropertyValue(L"x", value), 0);
    EXPECT_EQ(meta->getPropertyValue(L"y", value), 1);
    EXPECT_EQ(meta->setPropertyValue(L"y", value), 1);
}

TEST(ZetMetaObject, isNewOnEveryCall)
{
    Point point;
    const Point& constant = point;
    const ZetMetaObjectPtr first = point.metaObject();
    const ZetMetaObjectPtr second = point.metaObject();
    EXPECT_NE(first.get(), second.get());
    EXPECT_NE(constant.metaObject().get(), constant.metaObject().get());
}

TEST(ZetMetaObject, classesHaveOneOrNot)
{
    EXPECT_TRUE(ZetROI().isMetaObject());
    EXPECT_TRUE(ZetVersion().isMetaObject());
    EXPECT_FALSE(ZetSemaphore(1).isMetaObject());
    EXPECT_FALSE(ZetObject().isMetaObject());
}

}  // namespace
}  // namespace zet

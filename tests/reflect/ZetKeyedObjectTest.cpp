#include <zet/ZetKeyedObject>

#include <gtest/gtest.h>

#include <zet/ZetKeyedMetaObj>

#include "support/ZetScopedLocale"

namespace zet {
namespace {

TEST(ZetKeyedObject, keysCountUp)
{
    const ZetKeyedObject first(L"a");
    const ZetKeyedObject second(L"b");
    EXPECT_EQ(second.key().value(), first.key().value() + 1);
    // a given key leaves the counter
    const ZetKeyedObject given(ZetKey(17), L"c");
    EXPECT_EQ(given.key().value(), 17u);
    const ZetKeyedObject copy(first);
    const ZetKeyedObject third(L"d");
    EXPECT_EQ(third.key().value(), second.key().value() + 1);
    EXPECT_EQ(first.className(), L"ZetKeyedObject");
}

TEST(ZetKeyedObject, emptyNameBecomesTheKeysText)
{
    const test::ZetScopedLocale plainNumbers("C");
    const ZetKeyedObject counted((ZetString()));
    EXPECT_EQ(counted.name(), ZetString(counted.key()));
    const ZetKeyedObject given(ZetKey(4294967295u), L"");
    EXPECT_EQ(given.name(), L"4294967295");
    const ZetKeyedObject blank(L" ");
    EXPECT_EQ(blank.name(), L" ");
}

TEST(ZetKeyedObject, equalityIsThatOfNames)
{
    const ZetKeyedObject a(L"same");
    const ZetKeyedObject b(L"same");
    const ZetKeyedObject c(a.key(), L"other");
    EXPECT_NE(a.key(), b.key());
    EXPECT_TRUE(a == b);
    EXPECT_FALSE(a == c);
    EXPECT_TRUE(a != c);
}

TEST(ZetKeyedObject, copyHasKeyAndNameAndItsOwnMetaObject)
{
    const ZetKeyedObject source(L"source");
    ZetKeyedObject copy(source);
    EXPECT_EQ(copy.key(), source.key());
    EXPECT_EQ(copy.name(), L"source");
    EXPECT_NE(copy.metaObject().get(), source.metaObject().get());
    copy.metaObject()->properties();
    EXPECT_EQ(copy.metaObject()->setPropertyValue(L"name", ZetVariant(L"copy")), 0);
    EXPECT_EQ(copy.name(), L"copy");
    EXPECT_EQ(source.name(), L"source");
}

TEST(ZetKeyedObject, assignmentLeavesTheMetaObject)
{
    const ZetKeyedObject source(L"source");
    ZetKeyedObject target(L"target");
    const ZetMetaObjectPtr meta = target.metaObject();
    target = source;
    EXPECT_EQ(target.key(), source.key());
    EXPECT_EQ(target.name(), L"source");
    EXPECT_EQ(target.metaObject().get(), meta.get());
    ZetKeyedObject& self = target;
    target = self;
    EXPECT_EQ(target.name(), L"source");
}

TEST(ZetKeyedObject, metaObjectIsHeld)
{
    ZetKeyedObject object(L"x");
    const ZetKeyedObject& constant = object;
    EXPECT_TRUE(object.isMetaObject());
    EXPECT_EQ(object.metaObject().get(), object.metaObject().get());
    EXPECT_EQ(constant.metaObject().get(), object.metaObject().get());
    EXPECT_EQ(ZetKeyedObject::staticProperties(), ZetKeyedMetaObj::staticProperties());
    EXPECT_EQ(object.metaObject()->properties().get(), ZetKeyedObject::staticProperties().get());
}

class Named : public ZetKeyedObject
{
public:
    using ZetKeyedObject::ZetKeyedObject;
    ZetString className() const override { return L"Named"; }
};

TEST(ZetKeyedObject, properties)
{
    Named object(ZetKey(4000000000u), L"first");
    const ZetMetaObjectPtr meta = object.metaObject();
    meta->properties();

    ZetVariant value;
    EXPECT_EQ(meta->getPropertyValue(L"classname", value), 0);
    EXPECT_EQ(value.type().type(), ZetMetaType::String);
    EXPECT_EQ(value.value<ZetString>(), L"Named");
    EXPECT_EQ(meta->getPropertyValue(L"key", value), 0);
    EXPECT_EQ(value.type().type(), ZetMetaType::UInt);
    EXPECT_EQ(value.value<unsigned int>(), 4000000000u);
    EXPECT_EQ(meta->getPropertyValue(L"name", value), 0);
    EXPECT_EQ(value.value<ZetString>(), L"first");

    EXPECT_EQ(meta->setPropertyValue(L"classname", ZetVariant(L"Other")), 1);
    EXPECT_EQ(object.className(), L"Named");
    EXPECT_EQ(meta->setPropertyValue(L"key", ZetVariant(5)), 1);
    EXPECT_EQ(object.key().value(), 4000000000u);
    EXPECT_EQ(meta->setPropertyValue(L"name", ZetVariant(5)), 0);
    EXPECT_EQ(object.name(), L"5");
    EXPECT_EQ(meta->setPropertyValue(L"Name", ZetVariant(L"x")), 1);
    EXPECT_EQ(meta->getPropertyValue(L"label", value), 1);
}

}  // namespace
}  // namespace zet

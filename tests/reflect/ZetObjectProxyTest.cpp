#include <zet/ZetObjectProxy>

#include <cstdlib>
#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetDataType>
#include <zet/ZetKeyedObject>
#include <zet/ZetMetaObjectImpl>
#include <zet/ZetNumValidator>
#include <zet/ZetObjectProxyMetaObj>

namespace zet {
namespace {

class BoxMetaObj;

/// An object with a property that is refused, one that is read-only in silence, and a plain one.
class Box : public ZetObject
{
public:
    Box() { ++s_alive; }
    Box(const Box&) = delete;
    Box& operator=(const Box&) = delete;
    ~Box() override { --s_alive; }

    ZetString className() const override { return L"Box"; }
    using ZetObject::metaObject;
    ZetMetaObjectConstPtr metaObject() const override;

    static int s_alive;

    int m_width = 1;
    int m_refused = 2;
};

int Box::s_alive = 0;

class BoxMetaObj : public ZetMetaObjectImpl<BoxMetaObj, Box>
{
public:
    using ZetMetaObjectImpl::ZetMetaObjectImpl;
    ZET_PROPERTY(int, width)
    ZET_PROPERTY_TYPE(int, refused)
    int set_refused(const ZetVariant&) { return 1; }
    int get_refused(ZetVariant& value) const { return read(m_object->m_refused, value); }
    ZET_PROPERTY_TYPE(int, unreadable)
    int set_unreadable(const ZetVariant&) { return 0; }
    int get_unreadable(ZetVariant&) const { return 1; }
    static ZetMetaPropertiesPtr staticProperties()
    {
        static const Row rows[] = {ZET_ROW(width, L"", 0), ZET_ROW(refused, L"", 0), ZET_ROW(unreadable, L"", 0)};
        static const ZetMetaPropertiesPtr parent = makeParent();
        return fill(L"Box", rows, parent);
    }

private:
    static ZetMetaPropertiesPtr makeParent()
    {
        ZetMetaPropertiesPtr parent(new ZetMetaProperties(L"Parent", ZetMetaPropertiesPtr()));
        parent->append(new ZetMetaProperty(L"inherited", ZetMetaType::Int, 0, L"", L"", 0));
        return parent;
    }
};

ZetMetaObjectConstPtr Box::metaObject() const
{
    return new BoxMetaObj(this);
}

/// An object without a meta object.
class Stone : public ZetObject
{
public:
    Stone() { ++s_alive; }
    Stone(const Stone&) = delete;
    Stone& operator=(const Stone&) = delete;
    ~Stone() override { --s_alive; }
    ZetString className() const override { return L"Stone"; }

    static int s_alive;
};

int Stone::s_alive = 0;

/// Makes a \p T for the type name; none where the entry "refuse" is given.
template <class T>
class Factory : public ZetObjectFactory
{
public:
    explicit Factory(const ZetString& type) : m_type(type) {}
    ZetString objectType() const override { return m_type; }
    ZetObject* createObject(const std::map<ZetString, ZetVariant>& properties) const override
    {
        return properties.count(L"refuse") ? nullptr : new T;
    }

private:
    ZetString m_type;
};

/// A proxy as written through its own properties.
ZetObjectProxy makeProxy(const wchar_t* type, const ZetVariantMap& properties = {})
{
    ZetObjectProxy proxy;
    const ZetMetaObjectPtr meta = proxy.metaObject();
    meta->properties();
    EXPECT_EQ(meta->setPropertyValue(L"type", ZetVariant(type)), 0);
    EXPECT_EQ(meta->setPropertyValue(L"properties", ZetVariant(properties)), 0);
    return proxy;
}

TEST(ZetObjectProxy, startsEmpty)
{
    const ZetObjectProxy proxy;
    EXPECT_EQ(proxy.type(), L"");
    EXPECT_TRUE(proxy.properties().empty());
    EXPECT_EQ(proxy.createObject_aux(), nullptr);
    EXPECT_EQ(proxy.className(), L"ZetObjectProxy");
}

TEST(ZetObjectProxy, freezesTheClasssOwnProperties)
{
    Box box;
    box.m_width = 5;
    ZetObjectProxy proxy = makeProxy(L"Other", {{L"left", ZetVariant(1)}});
    proxy.setObject(box);
    EXPECT_EQ(proxy.type(), L"Box");
    // without the parent's, and without those that do not read
    ASSERT_EQ(proxy.properties().size(), 2u);
    EXPECT_EQ(proxy.properties().at(L"width").value<int>(), 5);
    EXPECT_EQ(proxy.properties().at(L"refused").value<int>(), 2);
}

TEST(ZetObjectProxy, freezesAnObjectWithoutMetaObject)
{
    ZetObjectProxy proxy = makeProxy(L"Other", {{L"left", ZetVariant(1)}});
    proxy.setObject(Stone());
    EXPECT_EQ(proxy.type(), L"Stone");
    EXPECT_TRUE(proxy.properties().empty());
}

TEST(ZetObjectProxy, copiesShareTheVariants)
{
    Box box;
    ZetObjectProxy proxy;
    proxy.setObject(box);
    const ZetObjectProxy copy(proxy);
    ZetObjectProxy assigned;
    assigned = proxy;
    EXPECT_EQ(copy.properties().at(L"width").implementation().get(),
              proxy.properties().at(L"width").implementation().get());
    EXPECT_EQ(assigned.properties().at(L"width").implementation().get(),
              proxy.properties().at(L"width").implementation().get());
    EXPECT_EQ(copy, proxy);
    EXPECT_NE(copy, ZetObjectProxy());
}

TEST(ZetObjectProxy, thaws)
{
    EXPECT_TRUE(ZetObjectProxy::registerFactory(new Factory<Box>(L"Box")));
    Box box;
    box.m_width = 5;
    box.m_refused = 9;
    ZetObjectProxy proxy;
    proxy.setObject(box);
    {
        const std::unique_ptr<ZetObject> thawed(proxy.createObject_aux());
        ASSERT_TRUE(thawed);
        EXPECT_EQ(thawed->className(), L"Box");
        EXPECT_EQ(dynamic_cast<const Box&>(*thawed).m_width, 5);
        // the refused write passed unnoticed
        EXPECT_EQ(dynamic_cast<const Box&>(*thawed).m_refused, 2);
        EXPECT_EQ(Box::s_alive, 2);
    }
    const std::unique_ptr<Box> typed = proxy.createObject<Box>();
    ASSERT_TRUE(typed);
    EXPECT_EQ(typed->m_width, 5);
    EXPECT_EQ(Box::s_alive, 2);
    // an object of another class than wanted is deleted
    EXPECT_FALSE(proxy.createObject<Stone>());
    EXPECT_EQ(Box::s_alive, 2);
}

TEST(ZetObjectProxy, thawGivesNull)
{
    EXPECT_EQ(makeProxy(L"Nobody's type").createObject_aux(), nullptr);
    ZetObjectProxy::registerFactory(new Factory<Box>(L"Refusing"));
    EXPECT_EQ(makeProxy(L"Refusing", {{L"refuse", ZetVariant(true)}}).createObject_aux(), nullptr);
    ZetObjectProxy::registerFactory(new Factory<Stone>(L"Stone"));
    EXPECT_EQ(makeProxy(L"Stone").createObject_aux(), nullptr);
    EXPECT_EQ(Stone::s_alive, 0) << "the object without a meta object was deleted";
}

TEST(ZetObjectProxy, theFirstFactoryOfANameStays)
{
    EXPECT_TRUE(ZetObjectProxy::registerFactory(new Factory<Box>(L"Twice")));
    EXPECT_TRUE(ZetObjectProxy::registerFactory(new Factory<Stone>(L"Twice")));
    const std::unique_ptr<ZetObject> made(makeProxy(L"Twice").createObject_aux());
    ASSERT_TRUE(made);
    EXPECT_EQ(made->className(), L"Box");
}

TEST(ZetObjectProxy, numericValidatorComesBackEqual)
{
    const ZetNumValidator<int> validator(5, 0, 10);
    ZetObjectProxy proxy;
    proxy.setObject(validator);
    EXPECT_EQ(proxy.type(), L"ZetNumValidator");
    ASSERT_EQ(proxy.properties().size(), 4u);
    EXPECT_EQ(proxy.properties().at(L"template_type").value<ZetDataType>().type(), ZetDataType::I32);
    EXPECT_EQ(proxy.properties().at(L"flags").value<unsigned int>(), 5u);
    EXPECT_EQ(proxy.properties().at(L"lower_bound").value<int>(), 0);
    EXPECT_EQ(proxy.properties().at(L"upper_bound").value<int>(), 10);

    const std::unique_ptr<ZetValidator> thawed = proxy.createObject<ZetValidator>();
    ASSERT_TRUE(thawed);
    EXPECT_TRUE(validator.isEqual(thawed.get()));
}

int thawUnasked()
{
    ZetObjectProxy proxy;
    proxy.metaObject()->properties();
    const ZetVariantMap properties = {{L"flags", ZetVariant(5)}, {L"template_type", ZetVariant(4)}};
    proxy.metaObject()->setPropertyValue(L"type", ZetVariant(L"ZetNumValidator"));
    proxy.metaObject()->setPropertyValue(L"properties", ZetVariant(properties));

    const std::unique_ptr<ZetNumValidator<int>> unasked = proxy.createObject<ZetNumValidator<int>>();
    const bool isDefault = unasked && unasked->flags() == 0;
    unasked->metaObject()->properties();
    const std::unique_ptr<ZetNumValidator<int>> asked = proxy.createObject<ZetNumValidator<int>>();
    return isDefault && asked && asked->flags() == 5 ? 0 : 1;
}

// In a process that never asked for the properties of the class, every write is refused.
TEST(ZetObjectProxyDeathTest, thawBeforePropertiesKeepsTheDefaults)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(std::exit(thawUnasked()), testing::ExitedWithCode(0), "");
}

TEST(ZetObjectProxy, properties)
{
    ZetObjectProxy proxy;
    proxy.setObject(ZetKeyedObject(ZetKey(3), L"name"));
    const ZetMetaObjectPtr meta = proxy.metaObject();
    EXPECT_EQ(meta->properties().get(), ZetObjectProxyMetaObj::staticProperties().get());
    ZetVariant value;
    EXPECT_EQ(meta->getPropertyValue(L"type", value), 0);
    EXPECT_EQ(value.value<ZetString>(), L"ZetKeyedObject");
    EXPECT_EQ(meta->getPropertyValue(L"properties", value), 0);
    EXPECT_EQ(value.type().type(), ZetMetaType::VariantMap);
    EXPECT_EQ(value.value<ZetVariantMap>().at(L"name").value<ZetString>(), L"name");
}

TEST(ZetObjectProxy, hasNoTextForm)
{
    std::wostringstream out;
    out << ZetObjectProxy();
    EXPECT_TRUE(out.fail());
    EXPECT_EQ(out.str(), L"");
    std::wistringstream in(L"text");
    ZetObjectProxy proxy = makeProxy(L"Box");
    in >> proxy;
    EXPECT_TRUE(in.fail());
    EXPECT_EQ(proxy.type(), L"Box");
    in.clear();
    std::wstring rest;
    in >> rest;
    EXPECT_EQ(rest, L"text");
}

TEST(ZetObjectProxy, travelsInAVariant)
{
    const ZetObjectProxy proxy = makeProxy(L"Box", {{L"width", ZetVariant(4)}});
    const ZetVariant variant(ZetMetaType::of<ZetObjectProxy>(), &proxy);
    EXPECT_EQ(variant.typeName(), L"ZetObjectProxy");
    EXPECT_EQ(variant.value<ZetObjectProxy>(), proxy);
    ZetString text = L"before";
    EXPECT_FALSE(variant.convertTo(&text));
    EXPECT_EQ(text, L"");
    double number = 4.5;
    EXPECT_FALSE(variant.convertTo(&number));
    EXPECT_EQ(number, 4.5);
    EXPECT_EQ(ZetVariant(L"(Box)").value<ZetObjectProxy>(), ZetObjectProxy());
}

}  // namespace
}  // namespace zet

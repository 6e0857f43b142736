#include <zet/ZetObject>

#include <type_traits>

#include <gtest/gtest.h>

#include <zet/ZetMetaObject>
#include <zet/ZetMetaProperties>

#include "support/ZetPrint"

namespace zet {
namespace {

class EmptyMetaObject : public ZetMetaObject
{
public:
    int setPropertyValue(const ZetString&, const ZetVariant&) override { return 1; }
    int getPropertyValue(const ZetString&, ZetVariant&) const override { return 1; }
    ZetMetaPropertiesConstPtr properties() const override { return ZetMetaPropertiesConstPtr(); }
};

class Reflected : public ZetObject
{
public:
    using ZetObject::metaObject;
    ZetMetaObjectConstPtr metaObject() const override
    {
        ++calls;
        return m_meta;
    }

    mutable int calls = 0;

private:
    ZetMetaObjectPtr m_meta = new EmptyMetaObject;
};

TEST(ZetObject, knowsItsName)
{
    EXPECT_EQ(ZetObject().className(), L"ZetObject");
}

TEST(ZetObject, aPlainObjectHasNoMetaObject)
{
    ZetObject plain;
    EXPECT_FALSE(plain.isMetaObject());
    EXPECT_FALSE(plain.metaObject());
    EXPECT_FALSE(static_cast<const ZetObject&>(plain).metaObject());
}

TEST(ZetObject, aClassWithAMetaObjectSaysSo)
{
    const Reflected reflected;
    EXPECT_TRUE(reflected.isMetaObject());
    EXPECT_EQ(reflected.calls, 1);
}

TEST(ZetObject, theWritableMetaObjectIsTheReadableOne)
{
    Reflected reflected;
    const ZetMetaObjectConstPtr readable = static_cast<const Reflected&>(reflected).metaObject();
    ZetObject& base = reflected;
    const ZetMetaObjectPtr writable = base.metaObject();
    EXPECT_EQ(reflected.calls, 2);
    EXPECT_TRUE(writable);
    EXPECT_EQ(writable.get(), readable.get());
}

TEST(ZetObject, theWritableMetaObjectHoldsAReference)
{
    ZetMetaObjectPtr writable;
    {
        Reflected reflected;
        writable = static_cast<ZetObject&>(reflected).metaObject();
    }
    // The object and its own pointer are gone.
    EXPECT_FALSE(writable->properties());
}

TEST(ZetObject, isPolymorphicWithoutData)
{
    static_assert(std::has_virtual_destructor_v<ZetObject>);
    static_assert(sizeof(ZetObject) == sizeof(void*));
}

}  // namespace
}  // namespace zet

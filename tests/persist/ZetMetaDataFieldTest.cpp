#include <zet/ZetMetaDataField>

#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetCoord3D>
#include <zet/ZetMetaDataObject>
#include <zet/ZetMetaProperties>
#include <zet/ZetStrList>

#include "support/ZetScopedLocale"

namespace zet {
namespace {

template <class T>
ZetString textOf(const T& value)
{
    std::wostringstream out;
    out << value;
    return out.str();
}

ZetMetaDataField fieldOf(const ZetString& name, const ZetString& description, const ZetVariantList& values)
{
    ZetMetaDataField field(name);
    field.setDescription(description);
    field.setValues(values);
    return field;
}

TEST(ZetMetaDataObject, namesAndDescribes)
{
    ZetMetaDataObject object(L"n", L"d");
    EXPECT_EQ(object.className(), L"ZetMetaDataObject");
    EXPECT_FALSE(object.isMetaObject());
    EXPECT_EQ(object.name(), L"n");
    EXPECT_EQ(object.description(), L"d");
    EXPECT_EQ(object, ZetMetaDataObject(L"n", L"d"));
    EXPECT_NE(object, ZetMetaDataObject(L"n", L"e"));
    EXPECT_NE(object, ZetMetaDataObject(L"m", L"d"));
    object.setName(L"m");
    object.setDescription(L"");
    EXPECT_EQ(object, ZetMetaDataObject(L"m"));
    EXPECT_EQ(ZetMetaDataObject(), ZetMetaDataObject(L"", L""));
}

TEST(ZetMetaDataField, construction)
{
    const ZetMetaDataField named(L"n");
    EXPECT_EQ(named.className(), L"ZetMetaDataField");
    EXPECT_EQ(named.name(), L"n");
    EXPECT_EQ(named.description(), L"");
    EXPECT_TRUE(named.values().empty());

    const ZetMetaDataField valued(L"n", ZetVariant(3), L"d");
    EXPECT_EQ(valued.description(), L"d");
    ASSERT_EQ(valued.values().size(), 1u);
    EXPECT_EQ(valued.values()[0].value<int>(), 3);

    EXPECT_EQ(ZetMetaDataField(), ZetMetaDataField(L""));
}

TEST(ZetMetaDataField, equality)
{
    const ZetMetaDataField field = fieldOf(L"n", L"d", {1, 2.5});
    EXPECT_TRUE(field == fieldOf(L"n", L"d", {1, 2.5}));
    EXPECT_FALSE(field == fieldOf(L"m", L"d", {1, 2.5}));
    EXPECT_FALSE(field == fieldOf(L"n", L"e", {1, 2.5}));
    EXPECT_FALSE(field == fieldOf(L"n", L"d", {1}));
    EXPECT_FALSE(field == fieldOf(L"n", L"d", {2.5, 1}));
    EXPECT_TRUE(field != ZetMetaDataField(L"n"));

    // values compare by the rules of variants: the left one leads
    EXPECT_TRUE(fieldOf(L"n", L"", {2}) == fieldOf(L"n", L"", {2.5}));
    EXPECT_FALSE(fieldOf(L"n", L"", {2.5}) == fieldOf(L"n", L"", {2}));
}

struct TextRow
{
    ZetMetaDataField field;
    const wchar_t* text;
};

TEST(ZetMetaDataField, text)
{
    const test::ZetScopedLocale plainNumbers("C");
    const TextRow rows[] = {
        {ZetMetaDataField(), L"(,\"\",0,)"},
        {fieldOf(L"n", L"some words", {}), L"(n,\"some words\",0,)"},
        {fieldOf(L"n", L"", {7}), L"(n,\"\",1,\"7\")"},
        // values print by their conversion to text, not as variants do
        {fieldOf(L"n", L"d", {3.0, true, false, 2.5, L"a \"b\""}),
         L"(n,\"d\",5,\"3.0\",\"true\",\"false\",\"2.5\",\"a \"b\"\")"},
        {fieldOf(L"n", L"", {ZetCoord3D<int>(1, 2, 3), ZetStrList({L"a", L"b"})}), L"(n,\"\",2,\"(1,2,3)\",\"(a,b)\")"},
        // what does not convert to text prints nothing
        {fieldOf(L"n", L"", {ZetVariant(), ZetVariantList{1, 2}}), L"(n,\"\",2,\"\",\"\")"},
    };
    for (const TextRow& row : rows) {
        EXPECT_EQ(textOf(row.field), row.text);
    }
}

TEST(ZetMetaDataField, isNotReadFromText)
{
    ZetMetaDataField field(L"n", ZetVariant(3), L"d");
    std::wistringstream in(L"(m,\"\",0,)");
    in >> field;
    EXPECT_TRUE(in.fail());
    EXPECT_EQ(field, ZetMetaDataField(L"n", ZetVariant(3), L"d"));
}

TEST(ZetMetaDataField, properties)
{
    ZetMetaDataField field(L"n", ZetVariant(3), L"d");
    const ZetMetaObjectPtr meta = field.metaObject();
    meta->properties();

    ZetVariant value;
    EXPECT_EQ(meta->getPropertyValue(L"values", value), 0);
    EXPECT_EQ(value.value<ZetVariantList>(), ZetVariantList{3});
    EXPECT_EQ(meta->setPropertyValue(L"name", ZetVariant(L"m")), 0);
    EXPECT_EQ(meta->setPropertyValue(L"description", ZetVariant(12)), 0);
    EXPECT_EQ(meta->setPropertyValue(L"values", ZetVariant(ZetVariantList{1, L"x"})), 0);
    EXPECT_EQ(field, fieldOf(L"m", L"12", {1, L"x"}));
    EXPECT_EQ(meta->getPropertyValue(L"fields", value), 1);
}

TEST(ZetMetaDataField, travelsInVariants)
{
    const test::ZetScopedLocale plainNumbers("C");
    const ZetMetaDataField field(L"n", ZetVariant(3.0), L"d");
    const ZetVariant variant(ZetMetaType::of<ZetMetaDataField>(), &field);
    EXPECT_EQ(variant.typeName(), L"ZetMetaDataField");
    EXPECT_EQ(variant.value<ZetMetaDataField>(), field);
    EXPECT_EQ(variant.value<ZetString>(), L"(n,\"d\",1,\"3.0\")");
    EXPECT_EQ(textOf(variant), L"ZetMetaDataField,(n,\"d\",1,\"3.0\")");

    const ZetVariantIFPtr clone = variant.implementation()->clone();
    EXPECT_TRUE(clone->isEqual(variant.implementation().get()));
    const ZetString text = L"(n,\"d\",1,\"3.0\")";
    EXPECT_FALSE(clone->convertFrom(typeID<ZetString>(), &text));
    EXPECT_EQ(ZetVariant(text).value<ZetMetaDataField>(), ZetMetaDataField());

    int number = 7;
    EXPECT_FALSE(variant.convertTo(&number));
    EXPECT_EQ(number, 7);
}

}  // namespace
}  // namespace zet

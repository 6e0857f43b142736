#include <zet/ZetParameter>

#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetCoord3D>
#include <zet/ZetMetaProperties>
#include <zet/ZetNumValidator>
#include <zet/ZetParameterList>
#include <zet/ZetStrList>

#include "support/ZetPrint"
#include "support/ZetScopedLocale"

namespace zet {
namespace {

ZetMetaProperty gainProperty()
{
    ZetMetaProperty property(L"gain", ZetMetaType::Double, ZetMetaFlag::Required, L"Gain", L"what it is", L'g');
    property.setValidator(new ZetNumValidator<double>(1, 0.0, 1.0));
    return property;
}

TEST(ZetParameter, constructs)
{
    const struct
    {
        ZetParameter parameter;
        const wchar_t* name;
        const wchar_t* crossRef;
        ZetVariant value;
        const wchar_t* type;
        int flags;
    } rows[] = {
        {ZetParameter(), L"", L"", L"", L"ZetString", 0},
        {ZetParameter(L"a", L"b"), L"a", L"b", L"", L"ZetString", 0},
        {ZetParameter(L"a", 5, false), L"a", L"", 5, L"Int", 0},
        {ZetParameter(L"a", ZetVariant(L"x+1"), true), L"a", L"", L"x+1", L"ZetString", ZetMetaFlag::Expression},
        {ZetParameter(L"a", ZetVariant(), false), L"a", L"", ZetVariant(), L"", 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(toMultibyte(row.name));
        const ZetParameter& p = row.parameter;
        EXPECT_EQ(p.className(), L"ZetParameter");
        EXPECT_EQ(p.name(), row.name);
        EXPECT_EQ(p.crossRef(), row.crossRef);
        EXPECT_EQ(p.value().type(), row.value.type());
        EXPECT_TRUE(p.value() == row.value);
        EXPECT_EQ(p.property().name(), row.name);
        EXPECT_EQ(p.property().label(), row.name);
        EXPECT_EQ(p.property().type().toString(), row.type);
        EXPECT_EQ(p.property().flags().flags(), row.flags);
        EXPECT_EQ(p.property().description(), L"");
        EXPECT_EQ(p.property().commandFlag(), L'\0');
        EXPECT_FALSE(p.property().validator());
        EXPECT_EQ(p.owner(), nullptr);
    }
}

TEST(ZetParameter, anEmptyNameIsTheKey)
{
    // all but the default parameter: an empty name becomes the text of the key
    const ZetParameter reference(L"", L"b");
    EXPECT_EQ(reference.name(), ZetString(reference.key()));
    EXPECT_EQ(reference.property().name(), reference.name());
    const ZetParameter value(L"", 5, false);
    EXPECT_EQ(value.name(), ZetString(value.key()));
    EXPECT_EQ(value.property().name(), value.name());
}

TEST(ZetParameter, constructsOfAProperty)
{
    const ZetMetaProperty property = gainProperty();
    const ZetParameter parameter(property);
    EXPECT_EQ(parameter.name(), L"gain");
    EXPECT_EQ(parameter.crossRef(), L"");
    EXPECT_EQ(parameter.value().typeName(), L"ZetString");
    EXPECT_EQ(parameter.value().value<ZetString>(), L"");
    EXPECT_TRUE(parameter.property() == property);
    EXPECT_TRUE(parameter.property().validator());
    EXPECT_NE(parameter.key(), property.key());
}

TEST(ZetParameter, setValueTakesAnything)
{
    ZetParameter parameter(gainProperty());
    parameter.setValue(5.0, false);  // outside of the validator's range
    EXPECT_EQ(parameter.value().value<double>(), 5.0);
    parameter.setValue(L"a*b", true);
    EXPECT_EQ(parameter.value().value<ZetString>(), L"a*b");
    EXPECT_EQ(parameter.property().flags().flags(), ZetMetaFlag::Required | ZetMetaFlag::Expression);
    // the record's kind and name stay
    EXPECT_EQ(parameter.property().type().toString(), L"Double");
    EXPECT_EQ(parameter.property().name(), L"gain");
    parameter.setValue(ZetVariant(), false);
    EXPECT_FALSE(parameter.value().isValid());
    EXPECT_EQ(parameter.property().flags().flags(), ZetMetaFlag::Required);
}

TEST(ZetParameter, setValueKeepsTheFlagsConsistent)
{
    const struct
    {
        int before;
        int after;
    } rows[] = {
        {ZetMetaFlag::Return | ZetMetaFlag::NoCrossRef, ZetMetaFlag::Return},
        {ZetMetaFlag::InFileName | ZetMetaFlag::Directory, 0},
        {ZetMetaFlag::InFileName | ZetMetaFlag::OutFileName | ZetMetaFlag::Directory | ZetMetaFlag::Hidden,
         ZetMetaFlag::Hidden},
        {ZetMetaFlag::NoCrossRef | ZetMetaFlag::Directory, ZetMetaFlag::NoCrossRef | ZetMetaFlag::Directory},
    };
    for (const auto& row : rows) {
        ZetMetaProperty property;
        property.setFlags(row.before);
        ZetParameter parameter(property);
        parameter.setValue(1, true);
        EXPECT_EQ(parameter.property().flags().flags(), row.after | ZetMetaFlag::Expression);
        parameter.setValue(1, false);
        EXPECT_EQ(parameter.property().flags().flags(), row.after);
    }
}

TEST(ZetParameter, equality)
{
    const ZetParameter a(L"a", 5, false);
    ZetParameter same(L"a", 5, false);
    EXPECT_TRUE(a == same);
    EXPECT_FALSE(a != same);
    // the name of the parameter itself plays no part
    same.setName(L"other");
    EXPECT_TRUE(a == same);
    ZetParameterList list(L"list");
    const ZetParameterPtr held = new ZetParameter(a);
    list.insertParm(held, 0);
    EXPECT_TRUE(a == *held);

    ZetParameter reference(a);
    reference.setCrossRef(L"r");
    EXPECT_FALSE(a == reference);
    ZetParameter value(a);
    value.setValue(6, false);
    EXPECT_FALSE(a == value);
    ZetParameter property(a);
    property.setProperty(gainProperty());
    EXPECT_FALSE(a == property);
    EXPECT_TRUE(a != property);
}

TEST(ZetParameter, assignmentTakesAllButTheList)
{
    ZetParameterList list(L"list");
    const ZetParameterPtr target = new ZetParameter(L"target", 1, false);
    list.insertParm(target, 0);
    ZetParameter source(gainProperty());
    source.setCrossRef(L"r");
    source.setValue(5, true);
    *target = source;
    EXPECT_EQ(target->name(), L"gain");
    EXPECT_EQ(target->key(), source.key());
    EXPECT_TRUE(*target == source);
    EXPECT_EQ(target->owner(), &list);
    const ZetParameter& self = *target;
    *target = self;
    EXPECT_TRUE(*target == source);

    const ZetParameter copy(*target);
    EXPECT_TRUE(copy == *target);
    EXPECT_EQ(copy.name(), L"gain");
    EXPECT_EQ(copy.key(), source.key());
    EXPECT_EQ(copy.owner(), nullptr);
}

TEST(ZetParameter, readsAndWritesThroughTheMetaObject)
{
    ZetParameter parameter(L"a", L"b");
    const ZetMetaObjectPtr meta = parameter.metaObject();
    EXPECT_NE(meta.get(), parameter.metaObject().get());
    meta->properties();
    ZetVariant value;

    EXPECT_EQ(meta->getPropertyValue(L"cross_ref", value), 0);
    EXPECT_EQ(value.value<ZetString>(), L"b");
    EXPECT_EQ(meta->setPropertyValue(L"cross_ref", 7), 0);
    EXPECT_EQ(parameter.crossRef(), L"7");

    parameter.setValue(L"x", true);
    EXPECT_EQ(meta->getPropertyValue(L"value", value), 0);
    EXPECT_EQ(value.typeName(), L"ZetString");
    EXPECT_EQ(value.value<ZetString>(), L"x");
    // a value that is written is no expression
    EXPECT_EQ(meta->setPropertyValue(L"value", 2.5), 0);
    EXPECT_EQ(parameter.value().typeName(), L"Double");
    EXPECT_FALSE(parameter.property().flags().isSet(ZetMetaFlag::Expression));
    EXPECT_EQ(meta->setPropertyValue(L"value", ZetVariant()), 0);
    EXPECT_NE(meta->getPropertyValue(L"value", value), 0);
    EXPECT_FALSE(value.isValid());

    const ZetMetaProperty property = gainProperty();
    EXPECT_EQ(meta->setPropertyValue(L"properties", ZetVariant(ZetMetaType::of<ZetMetaProperty>(), &property)), 0);
    EXPECT_TRUE(parameter.property() == property);
    EXPECT_EQ(parameter.name(), L"a");
    EXPECT_EQ(meta->getPropertyValue(L"properties", value), 0);
    EXPECT_TRUE(value.value<ZetMetaProperty>() == property);
}

TEST(ZetParameter, theKeyedObjectServesTheOtherNames)
{
    ZetParameter parameter(L"a", L"b");
    const ZetMetaObjectPtr meta = parameter.metaObject();
    meta->properties();
    ZetVariant value;
    EXPECT_EQ(meta->getPropertyValue(L"name", value), 0);
    EXPECT_EQ(value.value<ZetString>(), L"a");
    EXPECT_EQ(meta->setPropertyValue(L"name", ZetVariant(L"c")), 0);
    EXPECT_EQ(parameter.name(), L"c");
    EXPECT_EQ(meta->getPropertyValue(L"classname", value), 0);
    EXPECT_EQ(value.value<ZetString>(), L"ZetParameter");
    EXPECT_EQ(meta->setPropertyValue(L"classname", ZetVariant(L"c")), 1);
    EXPECT_EQ(meta->getPropertyValue(L"key", value), 0);
    EXPECT_EQ(value.value<unsigned int>(), parameter.key().value());
    EXPECT_EQ(meta->getPropertyValue(L"owner", value), 1);
    EXPECT_EQ(meta->setPropertyValue(L"owner", value), 1);
}

ZetString textOf(const ZetParameter& parameter)
{
    std::wostringstream out;
    out << parameter;
    return out.str();
}

TEST(ZetParameterStream, writes)
{
    const test::ZetScopedLocale plainNumbers("C");
    const ZetString nul(1, L'\0');
    ZetParameter gain(gainProperty());
    gain.setValue(1.5, false);
    const struct
    {
        ZetParameter parameter;
        ZetString text;
    } rows[] = {
        {gain, L"(gain,Double,1.5,(gain,Gain,Double,(Required),what it is,g))"},
        {ZetParameter(), L"(,ZetString,,(,,ZetString,(Editable),," + nul + L"))"},
        // the cross reference is not written
        {ZetParameter(L"a", L"b"), L"(a,ZetString,,(a,a,ZetString,(Editable),," + nul + L"))"},
        {ZetParameter(L"a", ZetVariant(), false), L"(a,, ,(a,a,,(Editable),," + nul + L"))"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(textOf(row.parameter), row.text);
    }
}

struct ReadRow
{
    const wchar_t* text;
    const wchar_t* name;
    const wchar_t* value;
    const wchar_t* property;
    bool fails;
    const wchar_t* rest;
};

TEST(ZetParameterStream, reads)
{
    const test::ZetScopedLocale plainNumbers("C");
    const ReadRow rows[] = {
        {L"(gain,Double,1.5,(gain,Gain,Double,(Required),what it is,g)) rest", L"gain", L"Double,1.5",
         L"((gain,Gain,Double,(Required),what it is,g)", false, L" rest"},
        // one character in the place of comma and bracket, and names without blanks around them
        {L"  # gain , Int ,7,gain , Gain,Int,ReadOnly,,g##", L"gain", L"Int,7", L"(gain, Gain,Int,(ReadOnly),,g)",
         false, L""},
        // a value that ends its text by itself
        {L"(c,ZetI32Coord,(1,2,3),p,p,Int,Bogus,d,x))", L"c", L"ZetI32Coord,(1,2,3)", L"(p,p,Int,(Editable),d,x)",
         false, L""},
        {L"(s,ZetString,\"a, b\",p,p,Int,Hidden,d,x))", L"s", L"ZetString,a, b", L"(p,p,Int,(Hidden),d,x)", false, L""},
        // an unknown kind is text
        {L"(s,Bogus,word ,p,p,Int,Hidden,d,x))", L"s", L"ZetString,word", L"(p,p,Int,(Hidden),d,x)", false, L""},
    };
    for (const ReadRow& row : rows) {
        SCOPED_TRACE(toMultibyte(row.text));
        std::wistringstream in(row.text);
        ZetParameter parameter(L"before", L"reference");
        in >> parameter;
        EXPECT_EQ(parameter.name(), row.name);
        EXPECT_EQ(parameter.crossRef(), L"reference");
        std::wostringstream value;
        value << parameter.value();
        EXPECT_EQ(value.str(), row.value);
        std::wostringstream property;
        property << parameter.property();
        EXPECT_EQ(property.str(), row.property);
        EXPECT_EQ(in.fail(), row.fails);
        in.clear();
        std::wstring rest;
        std::getline(in, rest, L'\0');
        EXPECT_EQ(rest, row.rest);
    }
}

TEST(ZetParameterStream, thePropertyNameGainsABracket)
{
    const test::ZetScopedLocale plainNumbers("C");
    ZetParameter parameter(L"gain", 1.5, false);
    const wchar_t* names[] = {L"(gain", L"((gain", L"(((gain"};
    for (const wchar_t* name : names) {
        std::wstringstream stream;
        stream << parameter;
        stream >> parameter;
        EXPECT_TRUE(stream.good());
        EXPECT_EQ(parameter.name(), L"gain");
        EXPECT_EQ(parameter.value().value<double>(), 1.5);
        EXPECT_EQ(parameter.property().name(), name);
        EXPECT_EQ(parameter.property().label(), L"gain");
        EXPECT_EQ(parameter.property().type().toString(), L"Double");
    }
}

TEST(ZetParameterStream, textTakesTheWholeWord)
{
    ZetParameter parameter(L"a", ZetVariant(L"word"), false);
    std::wstringstream stream;
    stream << parameter;
    stream >> parameter;
    EXPECT_EQ(parameter.value().value<ZetString>(), L"word,(a,a,ZetString,(Editable),," + ZetString(1, L'\0') + L"))");
    EXPECT_TRUE(stream.fail());
    EXPECT_EQ(parameter.name(), L"a");
    EXPECT_EQ(parameter.property().name(), L"");
}

TEST(ZetParameterStream, theSameKindIsReadIntoCopies)
{
    ZetParameter parameter(L"a", 5, false);
    const ZetParameter copy(parameter);
    std::wistringstream in(L"(a,Int,7,p,p,Int,Hidden,d,x)) (a,Double,8,p,p,Int,Hidden,d,x))");
    in >> parameter;
    EXPECT_EQ(copy.value().value<int>(), 7);
    in >> parameter;
    EXPECT_EQ(parameter.value().value<double>(), 8.0);
    EXPECT_EQ(copy.value().value<int>(), 7);
}

TEST(ZetParameterStream, readingReplacesTheValidator)
{
    ZetParameter parameter(gainProperty());
    std::wistringstream in(L"(a,Int,7,p,p,Int,Hidden,d,x))");
    in >> parameter;
    EXPECT_FALSE(parameter.property().validator());
}

}  // namespace
}  // namespace zet

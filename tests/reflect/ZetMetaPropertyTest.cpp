#include <zet/ZetMetaProperty>

#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetMetaPropertyMetaObj>
#include <zet/ZetNumValidator>
#include <zet/ZetVariant>

namespace zet {
namespace {

ZetMetaProperty makeProperty()
{
    return ZetMetaProperty(L"gain", ZetMetaType::Double, ZetMetaFlag::Required | ZetMetaFlag::Hidden, L"The Gain",
                           L"What to multiply by", L'g');
}

ZetNumValidator<int> upTo(int bound)
{
    return ZetNumValidator<int>(ZetNumValidator<int>::UpperInclusive, 0, bound);
}

TEST(ZetMetaProperty, defaults)
{
    const ZetMetaProperty property;
    EXPECT_EQ(property.name(), L"");
    EXPECT_EQ(property.type().type(), ZetMetaType::String);
    EXPECT_EQ(property.flags().flags(), 0);
    EXPECT_EQ(property.label(), L"");
    EXPECT_EQ(property.description(), L"");
    EXPECT_EQ(property.commandFlag(), 0);
    EXPECT_FALSE(property.validator());
    EXPECT_EQ(property.className(), L"ZetMetaProperty");
}

TEST(ZetMetaProperty, constructs)
{
    const ZetMetaProperty property = makeProperty();
    EXPECT_EQ(property.name(), L"gain");
    EXPECT_EQ(property.type().type(), ZetMetaType::Double);
    EXPECT_EQ(property.flags().flags(), 0x48);
    EXPECT_EQ(property.label(), L"The Gain");
    EXPECT_EQ(property.description(), L"What to multiply by");
    EXPECT_EQ(property.commandFlag(), L'g');

    const ZetMetaProperty argument(L'v', L" verbose\t", L"Talk more", ZetMetaType::Bool, ZetMetaFlag::System, L"");
    EXPECT_EQ(argument.name(), L"verbose");
    EXPECT_EQ(argument.type().type(), ZetMetaType::Bool);
    EXPECT_EQ(argument.flags().flags(), 0x100);
    EXPECT_EQ(argument.label(), L"verbose");
    EXPECT_EQ(argument.description(), L"Talk more");
    EXPECT_EQ(argument.commandFlag(), L'v');
}

TEST(ZetMetaProperty, nameIsTrimmedAndServesAsLabel)
{
    const ZetMetaProperty property(L"  max speed \n", ZetMetaType::Int, 0, L"", L"", 0);
    EXPECT_EQ(property.name(), L"max speed");
    EXPECT_EQ(property.label(), L"max speed");
    const ZetMetaProperty labelled(L" x ", ZetMetaType::Int, 0, L" Label ", L"", 0);
    EXPECT_EQ(labelled.label(), L" Label ");
    // an empty name becomes the key's text
    const ZetMetaProperty nameless(L"", ZetMetaType::Int, 0, L"", L"", 0);
    EXPECT_EQ(nameless.name(), ZetString(nameless.key()));
    EXPECT_EQ(nameless.label(), nameless.name());
}

TEST(ZetMetaProperty, validatorIsAClone)
{
    ZetMetaProperty property = makeProperty();
    const ZetValidatorPtr source(upTo(10).clone());
    property.setValidator(source);
    ASSERT_TRUE(property.validator());
    EXPECT_NE(property.validator().get(), source.get());
    EXPECT_TRUE(property.validator()->isEqual(source.get()));

    const ZetMetaObjectPtr meta = source->metaObject();
    meta->properties();
    EXPECT_EQ(meta->setPropertyValue(L"upper_bound", ZetVariant(20)), 0);
    EXPECT_TRUE(source->isValid(ZetVariant(15), nullptr));
    EXPECT_FALSE(property.validator()->isValid(ZetVariant(15), nullptr));

    property.setValidator(ZetValidatorConstPtr());
    EXPECT_FALSE(property.validator());
}

TEST(ZetMetaProperty, assignmentSharesTheValidator)
{
    ZetMetaProperty source = makeProperty();
    source.setValidator(ZetValidatorConstPtr(upTo(10).clone()));
    ZetMetaProperty target;
    target = source;
    EXPECT_EQ(target, source);
    EXPECT_EQ(target.key(), source.key());
    EXPECT_EQ(target.validator().get(), source.validator().get());
    const ZetMetaProperty copy(source);
    EXPECT_EQ(copy, source);
    EXPECT_EQ(copy.validator().get(), source.validator().get());
}

struct ChangeRow
{
    const char* what;
    void (*change)(ZetMetaProperty&);
    bool equal;
};

TEST(ZetMetaProperty, equality)
{
    const ChangeRow rows[] = {
        {"nothing", [](ZetMetaProperty&) {}, true},
        {"name", [](ZetMetaProperty& p) { p.setName(L"other"); }, false},
        {"label", [](ZetMetaProperty& p) { p.setLabel(L"other"); }, false},
        {"description", [](ZetMetaProperty& p) { p.setDescription(L"other"); }, false},
        {"flags", [](ZetMetaProperty& p) { p.setFlags(ZetMetaFlag::Hidden); }, false},
        {"type", [](ZetMetaProperty& p) { p.setType(ZetMetaType::Int); }, false},
        {"command flag", [](ZetMetaProperty& p) { p.setCommandFlag(L'x'); }, false},
        {"no validator", [](ZetMetaProperty& p) { p.setValidator(ZetValidatorConstPtr()); }, false},
        {"an equal validator", [](ZetMetaProperty& p) { p.setValidator(ZetValidatorConstPtr(upTo(10).clone())); },
         true},
        {"another validator", [](ZetMetaProperty& p) { p.setValidator(ZetValidatorConstPtr(upTo(11).clone())); },
         false},
    };
    for (const ChangeRow& row : rows) {
        ZetMetaProperty a = makeProperty();
        ZetMetaProperty b = makeProperty();
        EXPECT_TRUE(a == b) << "the key is not compared, and two absent validators are equal";
        EXPECT_NE(a.key(), b.key());
        a.setValidator(ZetValidatorConstPtr(upTo(10).clone()));
        b.setValidator(ZetValidatorConstPtr(upTo(10).clone()));
        row.change(b);
        EXPECT_EQ(a == b, row.equal) << row.what;
        EXPECT_EQ(b == a, row.equal) << row.what;
        EXPECT_EQ(a != b, !row.equal) << row.what;
    }
}

TEST(ZetMetaProperty, prints)
{
    std::wostringstream out;
    out << makeProperty();
    EXPECT_EQ(out.str(), L"(gain,The Gain,Double,(Required | Hidden),What to multiply by,g)");

    std::wostringstream plain;
    plain << ZetMetaProperty(L"x", ZetMetaType::Invalid, 0, L"", L"", 0);
    EXPECT_EQ(plain.str(), std::wstring(L"(x,x,,(Editable),,\0)", 20));
}

TEST(ZetMetaProperty, reads)
{
    std::wistringstream in(L" (  gain ,  The Gain , Double ,(Required | Hidden), what, g ) rest");
    ZetMetaProperty property(L"old", ZetMetaType::Int, ZetMetaFlag::System, L"old", L"old", L'o');
    property.setValidator(ZetValidatorConstPtr(upTo(10).clone()));
    in >> property;
    EXPECT_TRUE(in.good());
    EXPECT_EQ(property.name(), L"gain");
    EXPECT_EQ(property.label(), L"  The Gain ") << "not trimmed";
    EXPECT_EQ(property.type().type(), ZetMetaType::Double);
    EXPECT_EQ(property.flags().flags(), 0x48) << "the flags before are gone";
    EXPECT_EQ(property.description(), L" what") << "not trimmed";
    EXPECT_EQ(property.commandFlag(), L'g');
    EXPECT_TRUE(property.validator()) << "not part of the text";
    std::wstring rest;
    in >> rest;
    EXPECT_EQ(rest, L"rest");
}

TEST(ZetMetaProperty, anyCharacterPassesForABracket)
{
    std::wistringstream in(L"<n,l,Nonsense,ReadOnly,d,f>");
    ZetMetaProperty property;
    in >> property;
    EXPECT_TRUE(in.good());
    EXPECT_EQ(property, ZetMetaProperty(L"n", ZetMetaType::Invalid, ZetMetaFlag::ReadOnly, L"l", L"d", L'f'));
}

TEST(ZetMetaProperty, readsBackWhatItWrote)
{
    std::wstringstream stream;
    stream << makeProperty() << ZetMetaProperty(L"x", ZetMetaType::ROI, 0, L"", L"", 0);
    ZetMetaProperty first;
    ZetMetaProperty second;
    stream >> first >> second;
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(first, makeProperty());
    EXPECT_EQ(second, ZetMetaProperty(L"x", ZetMetaType::ROI, 0, L"", L"", 0));
}

TEST(ZetMetaProperty, textThatEndsEarlyFails)
{
    for (const wchar_t* text :
         {L"", L"(", L"(n,l", L"(n,l,Int,(Editable),d", L"(n,l,Int,(Editable),d,", L"(n,l,Int,(Editable),d,f"}) {
        std::wistringstream in(text);
        ZetMetaProperty property;
        in >> property;
        EXPECT_TRUE(in.fail()) << toMultibyte(text);
    }
}

TEST(ZetMetaProperty, propertiesReadAndWriteAsText)
{
    ZetMetaProperty property = makeProperty();
    const ZetMetaObjectPtr meta = property.metaObject();
    meta->properties();
    struct Row
    {
        const wchar_t* name;
        ZetMetaType::Type kind;
        const wchar_t* text;
    };
    const Row rows[] = {
        {L"name", ZetMetaType::String, L"gain"},
        {L"label", ZetMetaType::String, L"The Gain"},
        {L"type", ZetMetaType::String, L"Double"},
        {L"flags", ZetMetaType::String, L"(Required | Hidden)"},
        {L"description", ZetMetaType::String, L"What to multiply by"},
        {L"command_flag", ZetMetaType::Char, L"g"},
    };
    for (const Row& row : rows) {
        ZetVariant value;
        EXPECT_EQ(meta->getPropertyValue(row.name, value), 0);
        EXPECT_EQ(value.type().type(), row.kind) << toMultibyte(row.name);
        EXPECT_EQ(value.value<ZetString>(), row.text) << toMultibyte(row.name);
        EXPECT_EQ(meta->properties()->property(row.name, false)->type().type(), row.kind);
    }
    EXPECT_EQ(meta->setPropertyValue(L"name", ZetVariant(L"offset")), 0);
    EXPECT_EQ(meta->setPropertyValue(L"label", ZetVariant(L"The Offset")), 0);
    EXPECT_EQ(meta->setPropertyValue(L"type", ZetVariant(L"Int")), 0);
    EXPECT_EQ(meta->setPropertyValue(L"flags", ZetVariant(L"(system)")), 0);
    EXPECT_EQ(meta->setPropertyValue(L"description", ZetVariant(L"What to add")), 0);
    EXPECT_EQ(meta->setPropertyValue(L"command_flag", ZetVariant(L"o")), 0);
    EXPECT_EQ(property,
              ZetMetaProperty(L"offset", ZetMetaType::Int, ZetMetaFlag::System, L"The Offset", L"What to add", L'o'));

    // an unknown kind is refused and leaves the kind
    EXPECT_EQ(meta->setPropertyValue(L"type", ZetVariant(L"int")), 1);
    EXPECT_EQ(meta->setPropertyValue(L"type", ZetVariant(L"")), 1);
    EXPECT_EQ(property.type().type(), ZetMetaType::Int);
    // the keyed object's own properties are not served
    ZetVariant value;
    EXPECT_EQ(meta->getPropertyValue(L"key", value), 1);
}

TEST(ZetMetaProperty, metaObjectIsNewOnEveryCall)
{
    ZetMetaProperty property;
    const ZetMetaProperty& constant = property;
    EXPECT_NE(property.metaObject().get(), property.metaObject().get());
    const ZetMetaObjectConstPtr meta = constant.metaObject();
    EXPECT_EQ(meta->properties().get(), ZetMetaPropertyMetaObj::staticProperties().get());
}

TEST(ZetMetaProperty, validatorTravelsAsAProxy)
{
    ZetMetaProperty source = makeProperty();
    source.setValidator(ZetValidatorConstPtr(upTo(10).clone()));
    ZetMetaProperty target = makeProperty();
    const ZetMetaObjectPtr from = source.metaObject();
    const ZetMetaObjectPtr to = target.metaObject();
    from->properties();

    ZetVariant value;
    EXPECT_EQ(from->getPropertyValue(L"validator", value), 0);
    EXPECT_EQ(value.typeName(), L"ZetObjectProxy");
    EXPECT_EQ(value.value<ZetObjectProxy>().type(), L"ZetNumValidator");
    EXPECT_EQ(to->setPropertyValue(L"validator", value), 0);
    ASSERT_TRUE(target.validator());
    EXPECT_TRUE(target.validator()->isEqual(source.validator().get()));

    // an absent validator is an empty proxy, and that changes nothing when it is written
    const ZetMetaProperty bare;
    EXPECT_EQ(bare.metaObject()->getPropertyValue(L"validator", value), 0);
    EXPECT_EQ(value.value<ZetObjectProxy>(), ZetObjectProxy());
    EXPECT_EQ(to->setPropertyValue(L"validator", value), 0);
    EXPECT_TRUE(target.validator());
    EXPECT_EQ(to->setPropertyValue(L"validator", ZetVariant(5)), 0);
    EXPECT_TRUE(target.validator());
}

TEST(ZetMetaProperty, travelsInAVariant)
{
    const ZetMetaType type = ZetMetaType::of<ZetMetaProperty>();
    EXPECT_EQ(type.toString(), L"ZetMetaProperty");
    const ZetMetaProperty property = makeProperty();
    const ZetVariant variant(type, &property);
    EXPECT_EQ(variant.value<ZetMetaProperty>(), property);
    EXPECT_TRUE(variant.metaObject());
    EXPECT_EQ(variant.value<ZetString>(), L"(gain,The Gain,Double,(Required | Hidden),What to multiply by,g)");
    // text becomes a property
    EXPECT_EQ(ZetVariant(variant.value<ZetString>()).value<ZetMetaProperty>(), property);
    // nothing else does, and it becomes nothing else
    EXPECT_EQ(ZetVariant(5).value<ZetMetaProperty>(), ZetMetaProperty());
    int number = 77;
    EXPECT_FALSE(variant.convertTo(&number));
    EXPECT_EQ(number, 77);

    std::wstringstream stream;
    stream << variant;
    EXPECT_EQ(stream.str(), L"ZetMetaProperty," + variant.value<ZetString>());
    ZetVariant back;
    stream >> back;
    EXPECT_EQ(back.type(), type);
    EXPECT_EQ(back.value<ZetMetaProperty>(), property);
    EXPECT_TRUE(back == variant);
}

}  // namespace
}  // namespace zet

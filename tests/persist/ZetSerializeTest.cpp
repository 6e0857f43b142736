#include <zet/ZetSerialize>

#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetDataType>
#include <zet/ZetMetaProperties>
#include <zet/ZetROI>
#include <zet/ZetSemaphore>
#include <zet/ZetStrList>
#include <zet/ZetTextMsg>
#include <zet/ZetUnits>
#include <zet/ZetVariant>

#include "support/ZetPrint"
#include "support/ZetScopedLocale"

namespace zet {
namespace {

/// Stores variants in their text form, and objects as the values of their properties.
class PlainFormat : public ZetSerializeIF
{
public:
    std::wostream& writeObject(std::wostream& out, const ZetMetaObjectConstPtr& object) override
    {
        for (const ZetString& name : object->properties()->propertyNames(false)) {
            ZetVariant value;
            object->getPropertyValue(name, value);
            out << name << L"=" << value << L";";
        }
        return out;
    }

    std::wistream& readObject(std::wistream& in, const ZetMetaObjectPtr& object) override
    {
        for (const ZetString& name : object->properties()->propertyNames(false)) {
            ZetString text;
            ZetVariant value;
            getline(in, text, L'=');
            in >> value;
            object->setPropertyValue(name, value);
            getline(in, text, L';');
        }
        return in;
    }

    std::wostream& writeValue(std::wostream& out, const ZetVariant& value) override { return out << value; }
    std::wistream& readValue(std::wistream& in, ZetVariant& value) override { return in >> value; }
};

/// Throws in every operation.
template <class Thrown>
class ThrowingFormat : public ZetSerializeIF
{
public:
    explicit ThrowingFormat(const Thrown& thrown) : m_thrown(thrown) {}

    std::wostream& writeObject(std::wostream&, const ZetMetaObjectConstPtr&) override { throw m_thrown; }
    std::wistream& readObject(std::wistream&, const ZetMetaObjectPtr&) override { throw m_thrown; }
    std::wostream& writeValue(std::wostream&, const ZetVariant&) override { throw m_thrown; }
    std::wistream& readValue(std::wistream&, ZetVariant&) override { throw m_thrown; }

private:
    Thrown m_thrown;
};

/// Answers every question with streams of its own.
class OtherStreams : public PlainFormat
{
public:
    std::wostream& writeObject(std::wostream&, const ZetMetaObjectConstPtr&) override { return out; }
    std::wistream& readObject(std::wistream&, const ZetMetaObjectPtr&) override { return in; }
    std::wostream& writeValue(std::wostream&, const ZetVariant&) override { return out; }
    std::wistream& readValue(std::wistream&, ZetVariant& value) override
    {
        seen = value;
        return in;
    }

    std::wostringstream out;
    std::wistringstream in;
    ZetVariant seen;
};

TEST(ZetSerialize, names)
{
    const ZetSerializeIFPtr format = new PlainFormat;
    EXPECT_EQ(format->className(), L"ZetSerializeIF");
    const ZetSerialize serialize(format);
    EXPECT_EQ(serialize.className(), L"ZetSerialize");
    EXPECT_FALSE(serialize.isMetaObject());
    EXPECT_EQ(ZetSerialize(ZetSerializeIFPtr()).className(), L"ZetSerialize");
}

TEST(ZetSerialize, anObjectWithProperties)
{
    const test::ZetScopedLocale plainNumbers("C");
    const ZetSerialize serialize(new PlainFormat);
    std::wstringstream stream;
    const ZetROI region(ZetCoord3D<int>(1, 2, 3), ZetImageSize(4, 5, 6));
    EXPECT_EQ(&serialize.serialize_aux(stream, region), &stream);
    EXPECT_EQ(stream.str(), L"origin=ZetI32Coord,(1,2,3);size=ZetImageSize,(4,5,6);");
    ZetROI back;
    EXPECT_EQ(&serialize.deSerialize_aux(stream, back), &stream);
    EXPECT_TRUE(stream.good());
    EXPECT_TRUE(back == region);
}

TEST(ZetSerialize, anObjectOfAKind)
{
    const test::ZetScopedLocale plainNumbers("C");
    const ZetSerialize serialize(new PlainFormat);
    std::wstringstream stream;
    EXPECT_EQ(&serialize.serialize_aux(stream, ZetDataType(ZetDataType::U16, 12)), &stream);
    EXPECT_EQ(stream.str(), L"ZetDataType,(U16,12)");
    ZetDataType back(ZetDataType::Float);
    EXPECT_EQ(&serialize.deSerialize_aux(stream, back), &stream);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(back.type(), ZetDataType::U16);
    EXPECT_EQ(back.logicalBitDepth(), 12u);
}

TEST(ZetSerialize, theVariantStartsFromTheObject)
{
    OtherStreams* const format = new OtherStreams;
    const ZetSerialize serialize(format);
    std::wistringstream in;
    ZetStrList list{L"a", L"b"};
    serialize.deSerialize_aux(in, list);
    EXPECT_EQ(format->seen.typeName(), L"ZetStrList");
    EXPECT_EQ(format->seen.value<ZetStrList>(), (ZetStrList{L"a", L"b"}));
    EXPECT_EQ(list, (ZetStrList{L"a", L"b"}));
}

TEST(ZetSerialize, anotherKindIsConverted)
{
    const test::ZetScopedLocale plainNumbers("C");
    const ZetSerialize serialize(new PlainFormat);
    std::wistringstream text(L"ZetString,(U8,7)");
    ZetDataType type(ZetDataType::Float);
    serialize.deSerialize_aux(text, type);
    EXPECT_FALSE(text.fail());
    EXPECT_EQ(type.type(), ZetDataType::U8);
    EXPECT_EQ(type.logicalBitDepth(), 7u);

    std::wistringstream map(L"ZetVariantMap,{}");
    ZetStrList list{L"a"};
    serialize.deSerialize_aux(map, list);
    EXPECT_TRUE(map.fail());
}

TEST(ZetSerialize, anObjectOfNoKind)
{
    const ZetSerialize serialize(new PlainFormat);
    ZetSemaphore object(0);
    std::wstringstream out;
    EXPECT_EQ(&serialize.serialize_aux(out, object), &out);
    EXPECT_TRUE(out.fail());
    EXPECT_EQ(out.str(), L"");
    std::wstringstream in(L"Int,5");
    EXPECT_EQ(&serialize.deSerialize_aux(in, object), &in);
    EXPECT_TRUE(in.fail());
    in.clear();
    EXPECT_EQ(in.peek(), L'I');
}

TEST(ZetSerialize, variantsGoStraightToTheFormat)
{
    const test::ZetScopedLocale plainNumbers("C");
    const ZetSerialize serialize(new PlainFormat);
    std::wstringstream stream;
    EXPECT_EQ(&serialize.serialize_aux(stream, ZetVariant(5)), &stream);
    EXPECT_EQ(stream.str(), L"Int,5");
    ZetVariant back;
    EXPECT_EQ(&serialize.deSerialize_aux(stream, back), &stream);
    EXPECT_FALSE(stream.fail());
    EXPECT_EQ(back.typeName(), L"Int");
    EXPECT_EQ(back.value<int>(), 5);
}

TEST(ZetSerialize, returnsWhatTheFormatReturns)
{
    OtherStreams* const format = new OtherStreams;
    const ZetSerialize serialize(format);
    std::wstringstream stream;
    ZetROI region;
    ZetUnits units;
    ZetVariant variant;
    EXPECT_EQ(&serialize.serialize_aux(stream, region), &format->out);
    EXPECT_EQ(&serialize.serialize_aux(stream, units), &format->out);
    EXPECT_EQ(&serialize.serialize_aux(stream, variant), &format->out);
    EXPECT_EQ(&serialize.deSerialize_aux(stream, region), &format->in);
    EXPECT_EQ(&serialize.deSerialize_aux(stream, units), &format->in);
    EXPECT_EQ(&serialize.deSerialize_aux(stream, variant), &format->in);
}

void everyCallFails(const ZetSerialize& serialize)
{
    ZetROI region(ZetCoord3D<int>(1, 2, 3), ZetImageSize(4, 5, 6));
    ZetDataType type(ZetDataType::U16);
    ZetVariant variant(5);
    const auto writes = [&](const auto& value) {
        std::wstringstream stream;
        EXPECT_EQ(&serialize.serialize_aux(stream, value), &stream);
        EXPECT_TRUE(stream.fail());
        EXPECT_FALSE(stream.bad());
    };
    const auto reads = [&](auto& value) {
        std::wstringstream stream(L"x");
        EXPECT_EQ(&serialize.deSerialize_aux(stream, value), &stream);
        EXPECT_TRUE(stream.fail());
        EXPECT_FALSE(stream.bad());
    };
    writes(region);
    writes(type);
    writes(variant);
    reads(region);
    reads(type);
    reads(variant);
    EXPECT_EQ(region.origin().x(), 1);
    EXPECT_EQ(type.type(), ZetDataType::U16);
    EXPECT_EQ(variant.value<int>(), 5);
}

TEST(ZetSerialize, exceptionsSetTheFailBit)
{
    everyCallFails(ZetSerialize(new ThrowingFormat<int>(5)));
    everyCallFails(ZetSerialize(new ThrowingFormat<ZetTextMsg>(ZetTextMsg(L"text", ZetTextMsg::Error))));
}

}  // namespace
}  // namespace zet

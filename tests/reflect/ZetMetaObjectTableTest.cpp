// The meta objects of the library, told independently of it: class text, and name, label, flags
// and kind of each property in order.

#include <vector>

#include <gtest/gtest.h>

#include <zet/ZetBreakPoint>
#include <zet/ZetCoord2D>
#include <zet/ZetCoord3D>
#include <zet/ZetHistogram>
#include <zet/ZetHistogram_p>
#include <zet/ZetKeyedObject>
#include <zet/ZetLutDesc>
#include <zet/ZetMetaDataField>
#include <zet/ZetMetaDataSet>
#include <zet/ZetMetaProperties>
#include <zet/ZetNumValidator>
#include <zet/ZetObjectProxy>
#include <zet/ZetParameter>
#include <zet/ZetROI>
#include <zet/ZetRational>
#include <zet/ZetScalar>
#include <zet/ZetSize2D>
#include <zet/ZetSize3D>
#include <zet/ZetTiePoint>
#include <zet/ZetVersion>

namespace zet {
namespace {

struct Property
{
    const wchar_t* name;
    const wchar_t* label;
    int flags;
    const wchar_t* kind;
};

struct MetaObjectRow
{
    ZetMetaPropertiesConstPtr properties;
    const wchar_t* classText;
    std::vector<Property> expected;
};

template <class T>
ZetMetaPropertiesConstPtr propertiesOf(const T& object = T())
{
    const ZetMetaObjectConstPtr meta = object.metaObject();
    return meta ? meta->properties() : ZetMetaPropertiesConstPtr();
}

void expectTable(const MetaObjectRow& row)
{
    SCOPED_TRACE(toMultibyte(row.classText));
    ASSERT_TRUE(row.properties);
    EXPECT_EQ(row.properties->ownerClassName(), row.classText);
    ZetStrList names;
    for (const Property& told : row.expected) {
        SCOPED_TRACE(toMultibyte(told.name));
        names.append(told.name);
        const ZetMetaPropertyConstPtr property = row.properties->property(told.name, false);
        ASSERT_TRUE(property);
        EXPECT_EQ(property->name(), told.name);
        EXPECT_EQ(property->label(), told.label);
        EXPECT_EQ(property->flags().flags(), told.flags);
        EXPECT_EQ(property->type().toString(), told.kind);
        EXPECT_EQ(property->description(), L"");
        EXPECT_EQ(property->commandFlag(), 0);
        EXPECT_FALSE(property->validator());
    }
    EXPECT_EQ(row.properties->propertyNames(true), names);
}

TEST(ZetMetaObjectTable, classes)
{
    const MetaObjectRow rows[] = {
        {propertiesOf(ZetKeyedObject(L"x")),
         L"ZetKeyedObject",
         {{L"classname", L"Class Name", 5, L"ZetString"},
          {L"key", L"Object ID", 5, L"UInt"},
          {L"name", L"Object Name", 0, L"ZetString"}}},
        {propertiesOf<ZetMetaProperty>(),
         L"ZetMetaProperty",
         {{L"name", L"Name", 0, L"ZetString"},
          {L"label", L"Label", 0, L"ZetString"},
          {L"type", L"Type", 0, L"ZetString"},
          {L"flags", L"Flags", 0, L"ZetString"},
          {L"description", L"Description", 0, L"ZetString"},
          {L"command_flag", L"Command Flag", 0, L"ZetChar"},
          {L"validator", L"Validator", 0, L"ZetObjectProxy"}}},
        {propertiesOf<ZetObjectProxy>(),
         L"ZetObjectProxy",
         {{L"type", L"Type", 0, L"ZetString"}, {L"properties", L"Properties", 0, L"ZetVariantMap"}}},
        {propertiesOf<ZetVersion>(),
         L"ZetVersion",
         {{L"major", L"Major", 0, L"Int"}, {L"minor", L"Minor", 0, L"Int"}, {L"build", L"Build", 0, L"Int"}}},
        {propertiesOf<ZetROI>(),
         L"ZetROI",
         {{L"origin", L"Origin", 0, L"ZetI32Coord"}, {L"size", L"Size", 0, L"ZetImageSize"}}},
        {propertiesOf<ZetScalar>(),
         L"ZetScalar",
         {{L"value", L"Value", 0, L"ComplexDouble"}, {L"units", L"Units", 0, L"ZetUnits"}}},
        {propertiesOf<ZetTiePoint>(),
         L"ZetTiePoint",
         {{L"uv", L"UV", 0, L"ZetDblCoord2D"}, {L"xy", L"XY", 0, L"ZetDblCoord2D"}}},
        {propertiesOf<ZetBreakPoint>(),
         L"ZetBreakPoint",
         {{L"in", L"In", 0, L"Int"}, {L"out", L"Out", 0, L"Double"}, {L"band", L"Band", 0, L"UInt"}}},
        {propertiesOf<ZetHistogram>(), L"ZetHistogram", {{L"freq_histogram", L"Histogram", 0, L"ZetHistogram_p"}}},
        {propertiesOf<ZetHistogram_p>(),
         L"ZetHistogram_p",
         {{L"first_bin", L"First Bin", 0, L"Int"},
          {L"last_bin", L"Last Bin", 0, L"Int"},
          {L"data", L"Data", 0, L"ZetBufferPtr"}}},
        {propertiesOf<ZetLutDesc>(),
         L"ZetLutDesc",
         {{L"reuseLutDataForAllBands", L"Reuse Lut Data For All Bands", 0, L"Bool"},
          {L"numEntriesPerBand", L"Num Entries Per Band", 0, L"UInt"},
          {L"numBands", L"Num Bands", 0, L"UInt"},
          {L"minIndex", L"Minimum Index", 0, L"Int64"},
          {L"data", L"Lut Data", 0, L"ZetBufferPtr"},
          {L"datatype", L"Data Type", 0, L"ZetDataType"}}},
        {propertiesOf<ZetParameter>(),
         L"ZetParameter",
         {{L"cross_ref", L"Cross Reference", 0, L"ZetString"},
          {L"value", L"Value", 0, L"ZetVariant"},
          {L"properties", L"Properties", 0, L"ZetMetaProperty"}}},
        {propertiesOf<ZetMetaDataField>(),
         L"ZetMetaDataField",
         {{L"name", L"Name", 0, L"ZetString"},
          {L"description", L"Description", 0, L"ZetString"},
          {L"values", L"Values", 0, L"ZetVariantList"}}},
        {propertiesOf<ZetMetaDataSet>(),
         L"ZetMetaDataSet",
         {{L"name", L"Name", 0, L"ZetString"},
          {L"description", L"Description", 0, L"ZetString"},
          {L"fields", L"Fields", 0, L"ZetVariantList"},
          {L"subsets", L"Subsets", 0, L"ZetVariantList"}}},
    };
    for (const MetaObjectRow& row : rows) {
        expectTable(row);
    }
}

template <class T>
class ZetMetaObjectTableOf : public testing::Test
{
public:
    /// The kind in which the element type travels.
    static const wchar_t* kind()
    {
        if (std::is_floating_point<T>::value) {
            return L"Double";
        }
        if (sizeof(T) == sizeof(long)) {
            return std::is_signed<T>::value ? L"Int64" : L"UInt64";
        }
        return std::is_signed<T>::value ? L"Int" : L"UInt";
    }
};

using ElementTypes =
    testing::Types<double, int, unsigned int, long, unsigned long, char, unsigned char, short, unsigned short, float>;
TYPED_TEST_SUITE(ZetMetaObjectTableOf, ElementTypes);

TYPED_TEST(ZetMetaObjectTableOf, classes)
{
    using T = TypeParam;
    const wchar_t* kind = this->kind();
    expectTable({propertiesOf<ZetCoord2D<T>>(), L"ZetCoord2D", {{L"x", L"X", 0, kind}, {L"y", L"Y", 0, kind}}});
    expectTable({propertiesOf<ZetCoord3D<T>>(),
                 L"ZetCoord3D",
                 {{L"x", L"X", 0, kind}, {L"y", L"Y", 0, kind}, {L"z", L"Z", 0, kind}}});
    expectTable(
        {propertiesOf<ZetSize2D<T>>(), L"ZetSize2D", {{L"width", L"Width", 0, kind}, {L"height", L"Height", 0, kind}}});
    expectTable({propertiesOf<ZetSize3D<T>>(),
                 L"ZetSize3D",
                 {{L"width", L"Width", 0, kind}, {L"height", L"Height", 0, kind}, {L"depth", L"Depth", 0, kind}}});
    expectTable({propertiesOf<ZetRational<T>>(),
                 L"ZetRational",
                 {{L"numerator", L"Numerator", 0, kind}, {L"denominator", L"Denominator", 0, kind}}});
    // of the element types with one byte a validator has the signed one
    using Number = std::conditional_t<std::is_same<T, char>::value, signed char, T>;
    expectTable({propertiesOf<ZetNumValidator<Number>>(),
                 L"ZetNumValidator",
                 {{L"template_type", L"Data Type", 1, L"ZetDataType"},
                  {L"flags", L"Flags", 0, L"UInt"},
                  {L"lower_bound", L"Lower Bound", 0, kind},
                  {L"upper_bound", L"Upper Bound", 0, kind}}});
}

TYPED_TEST(ZetMetaObjectTableOf, readAndWriteTheFields)
{
    using T = TypeParam;
    ZetCoord3D<T> coordinate(T(1), T(2), T(3));
    const ZetMetaObjectPtr meta = coordinate.metaObject();
    meta->properties();
    ZetVariant value;
    EXPECT_EQ(meta->getPropertyValue(L"y", value), 0);
    EXPECT_EQ(value.type().toString(), this->kind());
    EXPECT_EQ(value.value<double>(), 2.0);
    EXPECT_EQ(meta->setPropertyValue(L"z", ZetVariant(L"77")), 0);
    EXPECT_EQ(coordinate.z(), T(77));
}

TEST(ZetMetaObjectTable, ofNoElementTypeIsNull)
{
    EXPECT_FALSE(ZetCoord2D<wchar_t>().isMetaObject());
    EXPECT_FALSE(ZetSize3D<long long>().isMetaObject());
}

}  // namespace
}  // namespace zet

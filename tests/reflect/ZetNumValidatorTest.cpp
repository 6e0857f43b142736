#include <zet/ZetNumValidator>

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include <zet/ZetCoord2D>
#include <zet/ZetDataType>
#include <zet/ZetEqnTile>
#include <zet/ZetNumValidatorFactory>
#include <zet/ZetNumValidatorMetaObj>
#include <zet/ZetObjectProxy>
#include <zet/ZetROI>
#include <zet/ZetStrList>
#include <zet/ZetTextMsg>
#include <zet/ZetUnits>

#include "support/ZetScopedLocale"

namespace zet {
namespace {

template <class T>
class ZetNumValidatorOf : public testing::Test
{
};

using ElementTypes = testing::Types<signed char, unsigned char, short, unsigned short, int, unsigned int, long,
                                    unsigned long, float, double>;
TYPED_TEST_SUITE(ZetNumValidatorOf, ElementTypes);

struct VerdictRow
{
    unsigned int flags;
    int value;
    bool valid;
};

// Bounds 5 and 10, or what of them the flags name.
const VerdictRow kVerdicts[] = {
    {0, 0, true},
    {0, 100, true},
    {1, 5, true},
    {1, 4, false},
    {1, 100, true},
    {2, 5, false},
    {2, 6, true},
    {4, 10, true},
    {4, 11, false},
    {4, 0, true},
    {8, 10, false},
    {8, 9, true},
    {5, 5, true},
    {5, 10, true},
    {5, 4, false},
    {5, 11, false},
    {6, 5, false},
    {6, 10, true},
    {9, 5, true},
    {9, 10, false},
    {10, 5, false},
    {10, 6, true},
    {10, 10, false},
    // both bits of a side are no bound
    {3, 0, true},
    {12, 100, true},
    {15, 0, true},
    {7, 0, true},
    {7, 11, false},
    {11, 10, false},
    {13, 100, true},
    {13, 4, false},
    // bits beyond the four mean nothing
    {16, 0, true},
};

TYPED_TEST(ZetNumValidatorOf, verdicts)
{
    for (const VerdictRow& row : kVerdicts) {
        const ZetNumValidator<TypeParam> validator(row.flags, TypeParam(5), TypeParam(10));
        ZetTextMsg message(L"before", ZetTextMsg::User);
        EXPECT_EQ(validator.isValid(ZetVariant(row.value), &message), row.valid) << row.flags << ' ' << row.value;
        EXPECT_EQ(validator.isValid(ZetVariant(row.value), nullptr), row.valid) << row.flags << ' ' << row.value;
        EXPECT_EQ(message.text() == L"before", row.valid) << "only a refusal writes";
        // text and numbers of other kinds are converted
        const ZetString text = std::to_wstring(row.value);
        EXPECT_EQ(validator.isValid(ZetVariant(text), nullptr), row.valid) << row.flags << ' ' << row.value;
        EXPECT_EQ(validator.isValid(ZetVariant(static_cast<double>(row.value)), nullptr), row.valid);
    }
}

struct RefusalRow
{
    unsigned int flags;
    int value;
    const wchar_t* text;
};

// Bounds 0 and 10.
const RefusalRow kRefusals[] = {
    {5, 11, L"The value of '11' is not within [0, 10]."},
    {5, 120, L"The value of '120' is not within [0, 10]."},
    {9, 10, L"The value of '10' is not within [0, 10)."},
    {6, 0, L"The value of '0' is not within (0, 10]."},
    {10, 0, L"The value of '0' is not within (0, 10)."},
    {4, 11, L"The value of '11' is not within (-inf, 10]."},
    {8, 10, L"The value of '10' is not within (-inf, 10)."},
    {2, 0, L"The value of '0' is not within (0, inf)."},
    // KEPT: a side with both bits has no bound, and shows one
    {7, 11, L"The value of '11' is not within [0, 10]."},
    {11, 11, L"The value of '11' is not within [0, 10)."},
    {14, 0, L"The value of '0' is not within (0, 10]."},
};

TYPED_TEST(ZetNumValidatorOf, refusals)
{
    for (const RefusalRow& row : kRefusals) {
        const ZetNumValidator<TypeParam> validator(row.flags, TypeParam(0), TypeParam(10));
        ZetTextMsg message(L"before", ZetTextMsg::User);
        EXPECT_FALSE(validator.isValid(ZetVariant(row.value), &message));
        EXPECT_EQ(message.text(), row.text) << row.flags;
        EXPECT_EQ(message.file(), L"ZetNumValidator");
        EXPECT_EQ(message.kind(), ZetTextMsg::Error);
        EXPECT_EQ(message.givenKind(), 0);
        EXPECT_GT(message.line(), 0);
    }
}

TYPED_TEST(ZetNumValidatorOf, acceptsEverythingByDefault)
{
    const ZetNumValidator<TypeParam> validator;
    EXPECT_EQ(validator.className(), L"ZetNumValidator");
    EXPECT_EQ(validator.flags(), 0u);
    EXPECT_EQ(validator.lowerBound(), TypeParam(0));
    EXPECT_EQ(validator.upperBound(), TypeParam(0));
    for (const ZetVariant& value : {ZetVariant(), ZetVariant(L"no number"), ZetVariant(1e300), ZetVariant(-1)}) {
        EXPECT_TRUE(validator.isValid(value, nullptr));
    }
}

TYPED_TEST(ZetNumValidatorOf, whatDoesNotConvertCountsAsZero)
{
    const ZetNumValidator<TypeParam> fromZero(1, TypeParam(0), TypeParam(0));
    const ZetNumValidator<TypeParam> fromOne(1, TypeParam(1), TypeParam(0));
    const ZetVariant values[] = {
        ZetVariant(),
        L"no number",
        ZetStrList{L"5"},
        ZetEqnTile(),
        ZetCoord2D<double>(5, 5),
        ZetROI(ZetCoord3D<int>(5, 5, 5), ZetImageSize(5, 5, 5)),
        ZetUnits(),
        ZetVariantList{5},
        ZetVariantMap{{L"5", 5}},
    };
    for (const ZetVariant& value : values) {
        EXPECT_TRUE(fromZero.isValid(value, nullptr));
        ZetTextMsg message(L"", 0);
        EXPECT_FALSE(fromOne.isValid(value, &message));
        EXPECT_EQ(message.text(), L"The value of '0' is not within [1, inf).");
    }
}

TYPED_TEST(ZetNumValidatorOf, clonesAreEqual)
{
    const ZetNumValidator<TypeParam> validator(5, TypeParam(1), TypeParam(2));
    const ZetValidatorPtr clone(validator.clone());
    EXPECT_NE(clone.get(), static_cast<const ZetValidator*>(&validator));
    EXPECT_TRUE(validator.isEqual(clone.get()));
    EXPECT_TRUE(clone->isEqual(&validator));
    EXPECT_FALSE(validator.isEqual(nullptr));

    const ZetNumValidator<TypeParam> flags(6, TypeParam(1), TypeParam(2));
    const ZetNumValidator<TypeParam> lower(5, TypeParam(0), TypeParam(2));
    const ZetNumValidator<TypeParam> upper(5, TypeParam(1), TypeParam(3));
    EXPECT_FALSE(validator.isEqual(&flags));
    EXPECT_FALSE(validator.isEqual(&lower));
    EXPECT_FALSE(validator.isEqual(&upper));
}

TYPED_TEST(ZetNumValidatorOf, freezesAndThaws)
{
    const ZetNumValidator<TypeParam> validator(9, TypeParam(3), TypeParam(100));
    ZetObjectProxy proxy;
    proxy.setObject(validator);
    ASSERT_EQ(proxy.properties().size(), 4u);
    for (const wchar_t* name : {L"template_type", L"flags", L"lower_bound", L"upper_bound"}) {
        EXPECT_EQ(proxy.properties().count(name), 1u);
    }
    const std::unique_ptr<ZetNumValidator<TypeParam>> thawed = proxy.createObject<ZetNumValidator<TypeParam>>();
    ASSERT_TRUE(thawed);
    EXPECT_TRUE(validator.isEqual(thawed.get()));
    EXPECT_EQ(thawed->lowerBound(), TypeParam(3));
    EXPECT_EQ(thawed->upperBound(), TypeParam(100));
}

template <class T>
void expectThawed(T lower, T upper)
{
    const ZetNumValidator<T> validator(5, lower, upper);
    ZetObjectProxy proxy;
    proxy.setObject(validator);
    const std::unique_ptr<ZetNumValidator<T>> thawed = proxy.createObject<ZetNumValidator<T>>();
    ASSERT_TRUE(thawed);
    EXPECT_EQ(thawed->lowerBound(), lower);
    EXPECT_EQ(thawed->upperBound(), upper);
}

TEST(ZetNumValidator, thawsWithBoundsOfTheWholeRange)
{
    expectThawed<signed char>(-128, 127);
    expectThawed<unsigned char>(0, 255);
    expectThawed<short>(-32768, 32767);
    expectThawed<unsigned short>(0, 65535);
    expectThawed<int>(std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    expectThawed<unsigned int>(0, 4294967295u);
    expectThawed<long>(std::numeric_limits<long>::min(), std::numeric_limits<long>::max());
    expectThawed<unsigned long>(0, 18446744073709551615ul);
    expectThawed<float>(-0.1f, 3.25e38f);
    expectThawed<double>(-0.1, 1e300);
}

TEST(ZetNumValidator, withoutAnUpperBoundTheTextEndsInInfinity)
{
    ZetTextMsg message(L"", 0);
    EXPECT_FALSE((ZetNumValidator<int>(1, 0, 0).isValid(ZetVariant(-1), &message)));
    EXPECT_EQ(message.text(), L"The value of '-1' is not within [0, inf).");
}

TEST(ZetNumValidator, differentElementTypesAreNotEqual)
{
    const ZetNumValidator<int> ofInt(5, 1, 2);
    const ZetNumValidator<long> ofLong(5, 1, 2);
    EXPECT_FALSE(ofInt.isEqual(&ofLong));
    EXPECT_FALSE(ofLong.isEqual(&ofInt));
}

TEST(ZetNumValidator, smallTypesJudgeTheRealValue)
{
    const ZetNumValidator<signed char> ofChar(5, -100, 100);
    ZetTextMsg message(L"", 0);
    EXPECT_FALSE(ofChar.isValid(ZetVariant(300), &message));
    EXPECT_EQ(message.text(), L"The value of '300' is not within [-100, 100].");
    EXPECT_TRUE(ofChar.isValid(ZetVariant(-100), nullptr));

    const ZetNumValidator<unsigned char> ofByte(4, 0, 200);
    EXPECT_FALSE(ofByte.isValid(ZetVariant(256), nullptr));
    const ZetNumValidator<short> ofShort(1, -5, 0);
    EXPECT_FALSE(ofShort.isValid(ZetVariant(-65536), nullptr));
    const ZetNumValidator<unsigned short> ofUShort(4, 0, 10);
    EXPECT_FALSE(ofUShort.isValid(ZetVariant(65536), nullptr));
}

TEST(ZetNumValidator, realNumbersAreJudgedAsDoubles)
{
    const test::ZetScopedLocale plainNumbers("C");
    const ZetNumValidator<float> ofFloat(6, 0.25f, 0.5f);
    ZetTextMsg message(L"", 0);
    EXPECT_TRUE(ofFloat.isValid(ZetVariant(0.5), nullptr));
    EXPECT_TRUE(ofFloat.isValid(ZetVariant(L"0.25000001"), nullptr));
    EXPECT_FALSE(ofFloat.isValid(ZetVariant(0.25), &message));
    EXPECT_EQ(message.text(), L"The value of '0.25' is not within (0.25, 0.5].");
    EXPECT_FALSE(ofFloat.isValid(ZetVariant(0.50000001), nullptr));
    EXPECT_FALSE(ofFloat.isValid(ZetVariant(1e300), nullptr));

    const ZetNumValidator<double> ofDouble(5, -1e-3, 1234567.0);
    EXPECT_FALSE(ofDouble.isValid(ZetVariant(-0.0011), &message));
    // the default format shows six digits
    EXPECT_EQ(message.text(), L"The value of '-0.0011' is not within [-0.001, 1.23457e+06].");
}

TEST(ZetNumValidator, notANumberPassesInclusiveBounds)
{
    const ZetVariant nan(std::numeric_limits<double>::quiet_NaN());
    EXPECT_TRUE((ZetNumValidator<double>(5, 0.0, 1.0).isValid(nan, nullptr)));
    EXPECT_FALSE((ZetNumValidator<double>(2, 0.0, 1.0).isValid(nan, nullptr)));
    EXPECT_FALSE((ZetNumValidator<double>(8, 0.0, 1.0).isValid(nan, nullptr)));
}

TEST(ZetNumValidator, wholeRangeOfLongNumbers)
{
    const test::ZetScopedLocale plainNumbers("C");
    const long lowest = std::numeric_limits<long>::min();
    const unsigned long greatest = std::numeric_limits<unsigned long>::max();
    EXPECT_TRUE((ZetNumValidator<long>(1, lowest, 0).isValid(ZetVariant(lowest), nullptr)));
    EXPECT_FALSE((ZetNumValidator<long>(2, lowest, 0).isValid(ZetVariant(lowest), nullptr)));
    EXPECT_TRUE((ZetNumValidator<unsigned long>(4, 0, greatest).isValid(ZetVariant(greatest), nullptr)));
    ZetTextMsg message(L"", 0);
    EXPECT_FALSE((ZetNumValidator<unsigned long>(8, 0, greatest).isValid(ZetVariant(greatest), &message)));
    EXPECT_EQ(message.text(), L"The value of '18446744073709551615' is not within (-inf, 18446744073709551615).");
}

template <class T>
void expectProperties(ZetMetaType::Type bounds, ZetDataType::Type element)
{
    ZetNumValidator<T> validator(5, T(1), T(2));
    const ZetMetaObjectPtr meta = validator.metaObject();
    meta->properties();
    ZetVariant value;
    EXPECT_EQ(meta->getPropertyValue(L"template_type", value), 0);
    EXPECT_EQ(value.value<ZetDataType>(), ZetDataType(element));
    EXPECT_EQ(meta->setPropertyValue(L"template_type", ZetVariant(ZetDataType(ZetDataType::U8))), 0);
    EXPECT_EQ(meta->getPropertyValue(L"template_type", value), 0);
    EXPECT_EQ(value.value<ZetDataType>(), ZetDataType(element)) << "writing is ignored";

    EXPECT_EQ(meta->setPropertyValue(L"flags", ZetVariant(10)), 0);
    EXPECT_EQ(meta->setPropertyValue(L"lower_bound", ZetVariant(L"3")), 0);
    EXPECT_EQ(meta->setPropertyValue(L"upper_bound", ZetVariant(4.0)), 0);
    EXPECT_EQ(validator.flags(), 10u);
    EXPECT_EQ(validator.lowerBound(), T(3));
    EXPECT_EQ(validator.upperBound(), T(4));
    EXPECT_EQ(meta->getPropertyValue(L"upper_bound", value), 0);
    EXPECT_EQ(value.type().type(), bounds);
    EXPECT_EQ(value.value<int>(), 4);
}

TEST(ZetNumValidator, properties)
{
    expectProperties<signed char>(ZetMetaType::Int, ZetDataType::I8);
    expectProperties<unsigned char>(ZetMetaType::UInt, ZetDataType::U8);
    expectProperties<short>(ZetMetaType::Int, ZetDataType::I16);
    expectProperties<unsigned short>(ZetMetaType::UInt, ZetDataType::U16);
    expectProperties<int>(ZetMetaType::Int, ZetDataType::I32);
    expectProperties<unsigned int>(ZetMetaType::UInt, ZetDataType::U32);
    expectProperties<long>(ZetMetaType::Int64, ZetDataType::I64);
    expectProperties<unsigned long>(ZetMetaType::UInt64, ZetDataType::U64);
    expectProperties<float>(ZetMetaType::Double, ZetDataType::Float);
    expectProperties<double>(ZetMetaType::Double, ZetDataType::Double);
}

TEST(ZetNumValidator, metaObjectIsChosenByElementType)
{
    const ZetNumValidator<short> validator(5, 1, 2);
    EXPECT_FALSE(internal::numValidatorMetaObj(&validator, typeID<char>()));
    EXPECT_FALSE(internal::numValidatorMetaObj(&validator, typeID<bool>()));
    const ZetMetaObjectPtr meta = internal::numValidatorMetaObj(&validator, typeID<short>());
    EXPECT_NE(dynamic_cast<const ZetNumValidatorMetaObj<short>*>(meta.get()), nullptr);
}

template <class T>
bool makes(const ZetVariant& templateType)
{
    const std::unique_ptr<ZetObject> made(ZetNumValidatorFactory().createObject({{L"template_type", templateType}}));
    const auto* validator = dynamic_cast<const ZetNumValidator<T>*>(made.get());
    return validator && validator->flags() == 0;
}

TEST(ZetNumValidatorFactory, makesByElementType)
{
    EXPECT_EQ(ZetNumValidatorFactory().className(), L"ZetNumValidatorFactory");
    EXPECT_EQ(ZetNumValidatorFactory().objectType(), L"ZetNumValidator");
    EXPECT_TRUE(makes<signed char>(ZetVariant(ZetDataType(ZetDataType::I8))));
    EXPECT_TRUE(makes<unsigned char>(ZetVariant(ZetDataType(ZetDataType::U8))));
    EXPECT_TRUE(makes<short>(ZetVariant(ZetDataType(ZetDataType::I16))));
    EXPECT_TRUE(makes<unsigned short>(ZetVariant(ZetDataType(ZetDataType::U16))));
    EXPECT_TRUE(makes<int>(ZetVariant(ZetDataType(ZetDataType::I32))));
    EXPECT_TRUE(makes<unsigned int>(ZetVariant(ZetDataType(ZetDataType::U32))));
    EXPECT_TRUE(makes<long>(ZetVariant(ZetDataType(ZetDataType::I64))));
    EXPECT_TRUE(makes<unsigned long>(ZetVariant(ZetDataType(ZetDataType::U64))));
    EXPECT_TRUE(makes<float>(ZetVariant(ZetDataType(ZetDataType::Float))));
    EXPECT_TRUE(makes<double>(ZetVariant(ZetDataType(ZetDataType::Double))));
    // through the conversions of variants
    EXPECT_TRUE(makes<short>(ZetVariant(2)));
    EXPECT_TRUE(makes<unsigned short>(ZetVariant(L"(U16,16)")));
}

TEST(ZetNumValidatorFactory, refuses)
{
    const ZetNumValidatorFactory factory;
    EXPECT_EQ(factory.createObject({}), nullptr);
    EXPECT_EQ(factory.createObject({{L"flags", ZetVariant(5)}}), nullptr);
    for (const ZetVariant& type : {ZetVariant(ZetDataType(ZetDataType::ComplexFloat)), ZetVariant(11), ZetVariant(12),
                                   ZetVariant(-1), ZetVariant(), ZetVariant(L"nonsense")}) {
        EXPECT_EQ(factory.createObject({{L"template_type", type}}), nullptr);
    }
}

}  // namespace
}  // namespace zet

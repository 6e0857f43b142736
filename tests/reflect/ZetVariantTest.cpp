#include <zet/ZetVariant>

#include <cmath>
#include <limits>
#include <type_traits>

#include <gtest/gtest.h>

#include <zet/ZetMetaObject>
#include <zet/ZetMetaProperties>
#include <zet/ZetVariantImpl>

#include "reflect/ZetBuiltInVariants"
#include "support/ZetKindSamples"
#include "support/ZetScopedLocale"

namespace zet {
namespace {

using test::dump;
using test::makeBuffer;
using test::makeTile;
using test::makeUnits;

// A pointer would silently become a bool.
static_assert(!std::is_constructible<ZetVariant, int*>::value, "");
static_assert(!std::is_constructible<ZetVariant, void*>::value, "");
static_assert(!std::is_constructible<ZetVariant, const ZetVariant*>::value, "");
static_assert(std::is_constructible<ZetVariant, const char*>::value, "");
static_assert(std::is_constructible<ZetVariant, const wchar_t*>::value, "");

struct ConstructRow
{
    ZetVariant variant;
    const wchar_t* kind;
    const wchar_t* className;
    const wchar_t* text;
};

TEST(ZetVariant, constructs)
{
    const test::ZetScopedLocale plainNumbers("C");
    const ConstructRow rows[] = {
        {true, L"Bool", L"bool", L"true"},
        {-5, L"Int", L"int", L"-5"},
        {5u, L"UInt", L"unsigned int", L"5"},
        {-5l, L"Int64", L"ZetI64", L"-5"},
        {5ul, L"UInt64", L"ZetU64", L"5"},
        {2.5, L"Double", L"double", L"2.5"},
        {std::complex<double>(1, 2), L"ComplexDouble", L"ZetDblComplex", L"(1,2)"},
        {L'A', L"ZetChar", nullptr, L"A"},
        {ZetString(L"text"), L"ZetString", L"ZetString", L"text"},
        {L"wide", L"ZetString", L"ZetString", L"wide"},
        {std::wstring(L"standard"), L"ZetString", L"ZetString", L"standard"},
        {"narrow", L"ZetString", L"ZetString", L"narrow"},
        {std::string("narrow"), L"ZetString", L"ZetString", L"narrow"},
        {"", L"ZetString", L"ZetString", L""},
        {ZetStrList{L"a", L"b"}, L"ZetStrList", L"ZetStrList", L"(a,b)"},
        {makeTile(3), L"ZetEqnTile", L"ZetEqnTile", L""},
        {ZetBufferPtr(), L"ZetBufferPtr", nullptr, L"0x00000000"},
        {ZetCoord3D<int>(1, 2, 3), L"ZetI32Coord", L"ZetCoord3D<int>", L"(1,2,3)"},
        {ZetCoord3D<double>(1, 2, 3), L"ZetDblCoord", L"ZetCoord3D<double>", L"(1,2,3)"},
        {ZetCoord2D<double>(1, 2), L"ZetDblCoord2D", L"ZetCoord2D<double>", L"(1,2)"},
        {ZetSize3D<unsigned int>(1, 2, 3), L"ZetU32Size", L"ZetSize3D<unsigned int>", L"(1,2,3)"},
        {ZetImageSize(1, 2, 3), L"ZetImageSize", L"ZetImageSize", L"(1,2,3)"},
        {makeUnits(L"m"), L"ZetUnits", L"ZetUnits", L"m"},
        {ZetScalar(5.0, makeUnits(L"m")), L"ZetScalar", L"ZetScalar", L"5 m"},
        {ZetROI(), L"ZetROI", L"ZetROI", L"((0,0,0),(0,0,0))"},
        {ZetDataType(ZetDataType::U16), L"ZetDataType", L"ZetDataType", L"U16"},
        {ZetDataLayout(ZetDataLayout::LineInterleaved), L"ZetDataLayout", L"ZetDataLayout", L"LineInterleaved"},
        {ZetColorModel(ZetColorModel::RGB), L"ZetColorModel", L"ZetColorModel", L"RGB"},
        {ZetByteOrder(ZetByteOrder::BigEndian), L"ZetByteOrder", L"ZetByteOrder", L"BigEndian"},
        {ZetRational<long>(1, 2), L"ZetI64Rational", L"ZetRational<ZetI64>", L"(1,2)"},
        {ZetRational<unsigned long>(1, 2), L"ZetU64Rational", L"ZetRational<ZetU64>", L"(1,2)"},
        {ZetVariantList{ZetVariant(1)}, L"ZetVariantList", nullptr, L""},
        {ZetVariantMap{{L"a", ZetVariant(1)}}, L"ZetVariantMap", nullptr, L""},
    };
    for (const ConstructRow& row : rows) {
        SCOPED_TRACE(toMultibyte(row.kind));
        EXPECT_TRUE(row.variant.isValid());
        EXPECT_EQ(row.variant.typeName(), row.kind);
        EXPECT_EQ(row.variant.type().toString(), row.kind);
        EXPECT_EQ(row.variant.className(), L"ZetVariant");
        EXPECT_EQ(row.variant.value<ZetString>(), row.text);
        if (row.className) {
            EXPECT_EQ(row.variant.implementation()->className(), row.className);
        }
        // a clone has a value of its own, and is of the same class
        const ZetVariantIFPtr clone(row.variant.implementation()->clone());
        const ZetVariantIF& original = *row.variant.implementation();
        const ZetVariantIF& copy = *clone;
        EXPECT_EQ(typeid(copy), typeid(original));
        EXPECT_NE(clone->data(), row.variant.data());
    }
}

TEST(ZetVariant, namedImplementations)
{
    const auto named = [](const ZetVariant& variant) { return variant.implementation().get(); };
    EXPECT_NE(dynamic_cast<const ZetBoolVariant*>(named(true)), nullptr);
    EXPECT_NE(dynamic_cast<const ZetDoubleVariant*>(named(2.5)), nullptr);
    EXPECT_NE(dynamic_cast<const ZetStringVariant*>(named(L"x")), nullptr);
    EXPECT_NE(dynamic_cast<const ZetBufferPtrVariant*>(named(ZetBufferPtr())), nullptr);
    EXPECT_NE(dynamic_cast<const ZetInvalidVariant*>(named(ZetVariant())), nullptr);
    EXPECT_NE(dynamic_cast<const ZetVariantImpl<int>*>(named(5)), nullptr);
    // and so are the prototypes
    const auto prototype = [](ZetMetaType::Type type) { return ZetVariant::fromValue(type, nullptr); };
    EXPECT_NE(dynamic_cast<const ZetBoolVariant*>(prototype(ZetMetaType::Bool).get()), nullptr);
    EXPECT_NE(dynamic_cast<const ZetDoubleVariant*>(prototype(ZetMetaType::Double).get()), nullptr);
    EXPECT_NE(dynamic_cast<const ZetStringVariant*>(prototype(ZetMetaType::String).get()), nullptr);
    EXPECT_NE(dynamic_cast<const ZetBufferPtrVariant*>(prototype(ZetMetaType::BufferPtr).get()), nullptr);
    EXPECT_NE(dynamic_cast<const ZetInvalidVariant*>(prototype(ZetMetaType::Invalid).get()), nullptr);
}

TEST(ZetVariant, anInvalidOneHoldsNothing)
{
    const ZetVariant none;
    EXPECT_FALSE(none.isValid());
    EXPECT_EQ(none.typeName(), L"");
    EXPECT_EQ(none.type().type(), 28);
    EXPECT_FALSE(none.isNumeric());
    EXPECT_FALSE(none.metaObject());
    EXPECT_EQ(none.value<int>(), 0);
    EXPECT_EQ(none.value<ZetString>(), L"");
    EXPECT_EQ(none.value<ZetScalar>().real(), 0.0);
    // a class without a kind gives its default, whatever the variant
    EXPECT_EQ(none.value<float>(), 0.0f);
    EXPECT_EQ(ZetVariant(5).value<float>(), 0.0f);
    EXPECT_FALSE(ZetVariant(ZetVariantIFPtr()).isValid());
}

TEST(ZetVariant, valueConverts)
{
    const test::ZetScopedLocale plainNumbers("C");
    EXPECT_EQ(ZetVariant(3).value<double>(), 3.0);
    EXPECT_EQ(ZetVariant(3.9).value<int>(), 3);
    EXPECT_EQ(ZetVariant(L"12").value<int>(), 12);
    EXPECT_EQ(ZetVariant(L"yes").value<bool>(), true);
    EXPECT_EQ(ZetVariant(3).value<ZetString>(), L"3");
    EXPECT_EQ(ZetVariant(3.0).value<ZetString>(), L"3.0");
    EXPECT_EQ(ZetVariant(L"(1,2,3)").value<ZetCoord3D<int>>(), ZetCoord3D<int>(1, 2, 3));
}

TEST(ZetVariant, valueOfAFailedConversion)
{
    // zero for numbers, also where the conversion left a part
    EXPECT_EQ(ZetVariant(L"abc").value<int>(), 0);
    EXPECT_EQ(ZetVariant(L"12abc").value<int>(), 0);
    EXPECT_EQ(ZetVariant(L"12abc").value<double>(), 0.0);
    EXPECT_EQ(ZetVariant(L"12abc").value<long>(), 12);
    EXPECT_EQ(ZetVariant(L"").value<long>(), 0);
    EXPECT_EQ(dump(ZetVariant(true).value<ZetRational<long>>()), L"0/1");
    EXPECT_EQ(dump(ZetVariant(L"(1,x)").value<ZetRational<long>>()), L"0/1");
    EXPECT_EQ(dump(ZetVariant(L"nothing").value<ZetScalar>()), L"(0,0) ''");
    // the default for the rest
    EXPECT_EQ(ZetVariant(5).value<ZetStrList>(), ZetStrList());
    EXPECT_EQ(ZetVariant(5).value<ZetBufferPtr>(), ZetBufferPtr());
    EXPECT_EQ(ZetVariant(L"(1,2").value<ZetCoord3D<int>>(), ZetCoord3D<int>());
    EXPECT_EQ(ZetVariant(2.5).value<ZetDataType>(), ZetDataType());
    EXPECT_EQ(ZetVariant(2.5).value<ZetByteOrder>(), ZetByteOrder(ZetByteOrder::nativeOrder()));
    EXPECT_EQ(ZetVariant(5).value<ZetROI>(), ZetROI());
    EXPECT_EQ(ZetVariant(5).value<ZetEqnTile>().size(), 0u);
    EXPECT_TRUE(ZetVariant(ZetVariantMap{{L"a", ZetVariant(1)}}).value<ZetVariantList>().empty());
}

TEST(ZetVariant, copiesShareTheValue)
{
    ZetVariant first(5);
    const ZetVariant copy(first);
    ZetVariant assigned;
    assigned = first;
    EXPECT_EQ(copy.implementation().get(), first.implementation().get());
    EXPECT_EQ(assigned.implementation().get(), first.implementation().get());
    *static_cast<int*>(first.data()) = 6;
    EXPECT_EQ(copy.value<int>(), 6);
    EXPECT_EQ(assigned.value<int>(), 6);

    first.clear();
    EXPECT_FALSE(first.isValid());
    EXPECT_EQ(copy.value<int>(), 6);
    assigned = ZetVariant(7);
    EXPECT_EQ(copy.value<int>(), 6);
}

TEST(ZetVariant, movingCopies)
{
    ZetVariant source(5);
    const ZetVariant moved(std::move(source));
    EXPECT_EQ(source.value<int>(), 5);
    EXPECT_EQ(moved.value<int>(), 5);
    ZetVariant target;
    target = std::move(source);
    EXPECT_EQ(source.value<int>(), 5);
    EXPECT_EQ(target.value<int>(), 5);
    ZetVariant other(L"text");
    std::swap(target, other);
    EXPECT_EQ(target.value<ZetString>(), L"text");
    EXPECT_EQ(other.value<int>(), 5);
}

TEST(ZetVariant, mayBeAssignedWhatItHolds)
{
    ZetVariant list(ZetVariantList{ZetVariant(ZetVariantList{ZetVariant(L"innermost")})});
    while (list.type() == ZetMetaType::VariantList) {
        list = static_cast<const ZetVariantList*>(list.data())->front();
    }
    EXPECT_EQ(list.value<ZetString>(), L"innermost");
    ZetVariant map(ZetVariantMap{{L"a", ZetVariant(5)}});
    map = static_cast<const ZetVariantMap*>(map.data())->at(L"a");
    EXPECT_EQ(map.value<int>(), 5);
    const ZetVariant& self = map;
    map = self;
    EXPECT_EQ(map.value<int>(), 5);
}

struct NumericRow
{
    ZetVariant variant;
    bool numeric;
};

TEST(ZetVariant, isNumeric)
{
    const NumericRow rows[] = {
        {true, true},
        {5, true},
        {2.5, true},
        {L'x', true},
        {std::complex<double>(1, 2), true},
        {ZetRational<long>(1, 2), true},
        {ZetScalar(5.0), true},
        // by conversion to double
        {L"12", true},
        {L"0x10", true},
        {L"", true},
        {L"12abc", false},
        {ZetDataType(), true},
        {ZetByteOrder(), true},
        {ZetStrList{L"12"}, false},
        {ZetBufferPtr(), false},
        {ZetCoord3D<int>(), false},
        {ZetUnits(), false},
        {makeTile(1), false},
        {ZetVariantList(), false},
        {ZetVariant(), false},
    };
    for (const NumericRow& row : rows) {
        EXPECT_EQ(row.variant.isNumeric(), row.numeric) << toMultibyte(dump(row.variant));
    }
}

TEST(ZetVariant, metaObjectIsTheValues)
{
    ZetVariant region(ZetROI(ZetCoord3D<int>(1, 2, 3), ZetImageSize(4, 5, 6)));
    const ZetMetaObjectPtr meta = region.metaObject();
    ASSERT_TRUE(meta);
    meta->properties();
    EXPECT_EQ(meta->setPropertyValue(L"origin", ZetVariant(ZetCoord3D<int>(7, 8, 9))), 0);
    EXPECT_EQ(dump(region.value<ZetROI>()), L"7 8 9 + 4 5 6");
    const ZetVariant& constant = region;
    EXPECT_TRUE(constant.metaObject());
    EXPECT_FALSE(ZetVariant(5).metaObject());
    EXPECT_FALSE(ZetVariant(L"text").metaObject());
}

struct EqualRow
{
    ZetVariant a;
    ZetVariant b;
    bool aEqualsB;
    bool bEqualsA;
};

TEST(ZetVariant, equalityConvertsToTheLeftKind)
{
    const test::ZetScopedLocale plainNumbers("C");
    const ZetBufferPtr buffer = makeBuffer("abc");
    const EqualRow rows[] = {
        {5, 5, true, true},
        {5, 6, false, false},
        {5, 5.0, true, true},
        {3, 3.7, true, false},
        {true, 5, true, false},
        {true, 1, true, true},
        {1, L"1", true, true},
        {1.0, L"1", true, false},
        {1.0, L"1.0", true, true},
        {1, L"1x", false, false},
        {0, L"", true, false},
        {false, L"no", true, false},
        {L"a", L"a", true, true},
        {L"a", L"A", false, false},
        {-1, 4294967295u, true, true},
        {ZetRational<long>(1, 2), ZetRational<long>(2, 4), true, true},
        {ZetRational<long>(1, 2), 0.5, true, true},
        {ZetDataType(ZetDataType::U16), 3, true, true},
        {ZetDataType(ZetDataType::U16), 3l, false, true},
        {ZetUnits(), 5, false, false},
        {makeUnits(L"m"), makeUnits(L"m"), true, true},
        {ZetCoord3D<int>(1, 2, 3), ZetCoord3D<double>(1.5, 2, 3), true, false},
        // doubles to within 2^-23
        {1.0, 1.0 + 1e-8, true, true},
        {1.0, 1.0 + 1e-6, false, false},
        {1.0, 1.0 + 0x1p-23, true, true},
        {1.0, 1.0 + 0x1p-23 + 0x1p-52, false, false},
        {1e300, 1e300, true, true},
        {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity(), true, true},
        {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::quiet_NaN(), false, false},
        // buffers by their bytes
        {buffer, buffer, true, true},
        {buffer, makeBuffer("abc"), true, true},
        {buffer, makeBuffer("abd"), false, false},
        {buffer, makeBuffer("ab"), false, false},
        {buffer, ZetBufferPtr(), false, false},
        {ZetBufferPtr(), ZetBufferPtr(), true, true},
        {ZetBufferPtr(), 0, false, false},
        // an invalid variant equals nothing else
        {ZetVariant(), ZetVariant(), true, true},
        {ZetVariant(), 0, false, false},
        {ZetVariant(), L"", false, false},
        // lists by element
        {ZetVariantList{ZetVariant(1), ZetVariant(L"a")}, ZetVariantList{ZetVariant(1), ZetVariant(L"a")}, true, true},
        {ZetVariantList{ZetVariant(1)}, ZetVariantList{ZetVariant(1), ZetVariant(2)}, false, false},
        {ZetVariantList{ZetVariant(1)}, ZetVariantList{ZetVariant(2)}, false, false},
        {ZetVariantList{ZetVariant(L"a")}, L"a", true, false},
        {ZetVariantList(), ZetVariantList(), true, true},
        {ZetVariantMap{{L"a", ZetVariant(1)}}, ZetVariantMap{{L"a", ZetVariant(1)}}, true, true},
        {ZetVariantMap{{L"a", ZetVariant(1)}}, ZetVariantMap{{L"b", ZetVariant(1)}}, false, false},
    };
    for (const EqualRow& row : rows) {
        SCOPED_TRACE(toMultibyte(dump(row.a) + L" and " + dump(row.b)));
        EXPECT_EQ(row.a == row.b, row.aEqualsB);
        EXPECT_EQ(row.b == row.a, row.bEqualsA);
        EXPECT_EQ(row.a != row.b, !row.aEqualsB);
        EXPECT_EQ(row.b != row.a, !row.bEqualsA);
    }
}

TEST(ZetVariant, theLeftSideLeadsAlsoBesideAPlainValue)
{
    EXPECT_TRUE(ZetVariant(true) == 5);
    EXPECT_FALSE(5 == ZetVariant(true));
    EXPECT_TRUE(1 == ZetVariant(L"1"));
    EXPECT_TRUE(ZetVariant(1) == L"1");
    EXPECT_FALSE(1.0 == ZetVariant(L"1x"));
    EXPECT_FALSE(ZetVariant(true) != 5);
    EXPECT_TRUE(5 != ZetVariant(true));
}

TEST(ZetVariant, aSharedValueEqualsItself)
{
    const ZetVariant nan(std::numeric_limits<double>::quiet_NaN());
    const ZetVariant copy(nan);
    EXPECT_TRUE(nan == copy);
    // in a list too
    const ZetVariant a(ZetVariantList{nan});
    const ZetVariant b(ZetVariantList{nan});
    EXPECT_NE(a.implementation().get(), b.implementation().get());
    EXPECT_TRUE(a == b);
}

TEST(ZetVariant, thePlainImplementationOfDoublesComparesExactly)
{
    const ZetVariantImpl<double> plain(1.0);
    const ZetVariantImpl<double> close(1.0 + 1e-8);
    EXPECT_FALSE(plain.isEqual(&close));
    EXPECT_TRUE(plain.isEqual(&plain));
    EXPECT_TRUE(ZetDoubleVariant(1.0).isEqual(&close));
    // and that of buffers by pointer
    const ZetVariantImpl<ZetBufferPtr> buffer(makeBuffer("abc"));
    const ZetVariantImpl<ZetBufferPtr> other(makeBuffer("abc"));
    EXPECT_FALSE(buffer.isEqual(&other));
    EXPECT_TRUE(buffer.isEqual(&buffer));
}

TEST(ZetVariant, typeFromNameKnowsClassNames)
{
    struct Row
    {
        const wchar_t* name;
        int type;
    };
    const Row rows[] = {
        {L"bool", 0},
        {L"int", 1},
        {L"unsigned int", 2},
        {L"ZetI64", 3},
        {L"ZetU64", 4},
        {L"double", 5},
        {L"ZetDblComplex", 6},
        {L"ZetRational<ZetI64>", 7},
        {L"ZetRational<ZetU64>", 8},
        {L"ZetString", 10},
        {L"ZetStrList", 11},
        {L"ZetEqnTile", 12},
        {L"ZetCoord3D<int>", 14},
        {L"ZetCoord3D<double>", 15},
        {L"ZetCoord2D<double>", 16},
        {L"ZetSize3D<unsigned int>", 17},
        {L"ZetImageSize", 18},
        {L"ZetUnits", 19},
        {L"ZetScalar", 20},
        {L"ZetROI", 21},
        {L"ZetDataType", 22},
        {L"ZetDataLayout", 23},
        {L"ZetColorModel", 24},
        {L"ZetByteOrder", 25},
        {L"ZetMetaProperty", 1026},
        {L"ZetObjectProxy", 1027},
        // not the names of kinds
        {L"Double", 28},
        {L"Int", 28},
        {L"ZetI64Rational", 28},
        {L"ZetVariantList", 28},
        {L"ZetVariant", 28},
        {L"", 28},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ZetVariant::typeFromName(row.name).type(), row.type) << toMultibyte(row.name);
    }
    EXPECT_EQ(ZetVariant(2.5).typeName(), L"Double");
}

TEST(ZetVariant, fromValue)
{
    const int number = 42;
    EXPECT_EQ(ZetVariant(ZetMetaType::Int, &number).value<int>(), 42);
    // without a value, that of the prototype
    EXPECT_EQ(ZetVariant(ZetMetaType::Int, nullptr).value<int>(), 0);
    EXPECT_EQ(ZetVariant(ZetMetaType::Int, nullptr).typeName(), L"Int");
    EXPECT_EQ(ZetVariant(ZetMetaType::String, nullptr).value<ZetString>(), L"");
    EXPECT_EQ(ZetVariant(ZetMetaType::BufferPtr, nullptr).value<ZetBufferPtr>(), ZetBufferPtr());
    // each result is a value of its own
    EXPECT_NE(ZetVariant::fromValue(ZetMetaType::Int, nullptr).get(),
              ZetVariant::fromValue(ZetMetaType::Int, nullptr).get());
    // a kind without a prototype, and none
    EXPECT_FALSE(ZetVariant(ZetMetaType::of<ZetVariant>(), &number).isValid());
    EXPECT_FALSE(ZetVariant(ZetMetaType(), &number).isValid());
    EXPECT_FALSE(ZetVariant(ZetMetaType(), nullptr).isValid());
}

TEST(ZetVariant, everyBuiltInKindHasAPrototype)
{
    for (int number = 0; number < 28; ++number) {
        const ZetMetaType type(static_cast<ZetMetaType::Type>(number));
        const ZetVariant variant(type, nullptr);
        EXPECT_EQ(variant.type(), type);
        EXPECT_EQ(variant.isValid(), true);
    }
}

TEST(ZetVariant, convertFromTakesItsOwnClassOnly)
{
    ZetVariant variant(5);
    const int number = 6;
    const long other = 7;
    EXPECT_TRUE(variant.implementation()->convertFrom(typeID<int>(), &number));
    EXPECT_EQ(variant.value<int>(), 6);
    EXPECT_FALSE(variant.implementation()->convertFrom(typeID<long>(), &other));
    EXPECT_FALSE(variant.implementation()->convertFrom(typeID<ZetString>(), &other));
    EXPECT_EQ(variant.value<int>(), 6);

    ZetVariant map((ZetVariantMap()));
    const ZetVariantMap entries = {{L"a", ZetVariant(1)}, {L"b", ZetVariant(2)}};
    EXPECT_TRUE(map.implementation()->convertFrom(typeID<ZetVariantMap>(), &entries));
    EXPECT_EQ(dump(map.value<ZetVariantMap>()), L"{a=Int 1|b=Int 2}");
}

TEST(ZetVariant, clearPOD)
{
    unsigned char bytes[] = {1, 2, 3, 4};
    ZetVariant::clearPOD(bytes + 1, 2);
    EXPECT_EQ(bytes[0], 1);
    EXPECT_EQ(bytes[1], 0);
    EXPECT_EQ(bytes[2], 0);
    EXPECT_EQ(bytes[3], 4);
}

/// A caller's own value class and its variant.
class Celsius : public ZetObject
{
public:
    explicit Celsius(double value = 20.0) : degrees(value) {}
    ZetString className() const override { return L"Celsius"; }
    bool operator==(const Celsius& other) const { return degrees == other.degrees; }
    double degrees;
};

std::wostream& operator<<(std::wostream& out, const Celsius& value)
{
    return out << value.degrees << L"C";
}

std::wistream& operator>>(std::wistream& in, Celsius& value)
{
    wchar_t unit = 0;
    return in >> value.degrees >> unit;
}

class CelsiusVariant : public ZetVariantImpl<Celsius>
{
public:
    using ZetVariantImpl::ZetVariantImpl;
    ZetVariantIF* clone() const override { return new CelsiusVariant(*this); }
};

/// The same, with conversions of its own.
class WarmVariant : public CelsiusVariant
{
public:
    using CelsiusVariant::CelsiusVariant;
    ZetVariantIF* clone() const override { return new WarmVariant(*this); }
    bool convertTo(unsigned long typeId, void* out) const override
    {
        if (typeId != typeID<double>()) {
            return CelsiusVariant::convertTo(typeId, out);
        }
        *static_cast<double*>(out) = m_value.degrees;
        return true;
    }
    bool convertFrom(unsigned long typeId, const void* in) override
    {
        if (typeId != typeID<double>()) {
            return CelsiusVariant::convertFrom(typeId, in);
        }
        m_value.degrees = *static_cast<const double*>(in);
        return true;
    }
};

TEST(ZetVariant, aKindOfACallersOwn)
{
    const test::ZetScopedLocale plainNumbers("C");
    EXPECT_EQ(ZetVariant(5).value<Celsius>(), Celsius()) << "not yet a kind";
    EXPECT_TRUE(ZetVariant::registerType<Celsius>(L"Celsius", new CelsiusVariant));
    const ZetMetaType type = ZetMetaType::of<Celsius>();
    EXPECT_GE(type.type(), 1024);
    EXPECT_EQ(ZetVariant::typeFromName(L"Celsius"), type);

    const Celsius value(36.5);
    const ZetVariant variant(type, &value);
    EXPECT_TRUE(variant.isValid());
    EXPECT_EQ(variant.value<Celsius>(), value);
    EXPECT_EQ(variant.implementation()->className(), L"Celsius");
    EXPECT_EQ(ZetVariant(type, nullptr).value<Celsius>().degrees, 20.0);
    EXPECT_TRUE(variant == ZetVariant(type, &value));
    EXPECT_FALSE(variant == ZetVariant(type, nullptr));

    std::wstringstream stream;
    stream << variant;
    EXPECT_EQ(stream.str(), L"Celsius,36.5C");
    ZetVariant back;
    stream >> back;
    EXPECT_EQ(back.value<Celsius>(), value);

    // by the default rules it converts to nothing else
    EXPECT_EQ(variant.value<double>(), 0.0);
    EXPECT_EQ(ZetVariant(5.0).value<Celsius>().degrees, 20.0);

    // a second prototype takes the first one's place
    EXPECT_TRUE(ZetVariant::registerType(new WarmVariant));
    const ZetVariant warm(type, &value);
    EXPECT_EQ(warm.value<double>(), 36.5);
    EXPECT_EQ(ZetVariant(5.0).value<Celsius>().degrees, 5.0);
}

TEST(ZetVariant, registerTypeRefuses)
{
    EXPECT_FALSE(ZetVariant::registerType(ZetVariantIFPtr()));
    EXPECT_FALSE(ZetVariant::registerType(new ZetInvalidVariant));
    // a class that is no kind
    EXPECT_FALSE(ZetVariant::registerType(new ZetVariantImpl<float>(1.5f)));
    EXPECT_FALSE(ZetVariant(ZetMetaType(), nullptr).isValid());
    EXPECT_NE(dynamic_cast<const ZetInvalidVariant*>(ZetVariant::fromValue(ZetMetaType(), nullptr).get()), nullptr);
}

TEST(ZetVariantIF, className)
{
    class Bare : public ZetVariantImpl<int>
    {
    public:
        ZetString className() const override { return ZetVariantIF::className(); }
    };
    EXPECT_EQ(Bare().className(), L"ZetVariantIF");
}

}  // namespace
}  // namespace zet

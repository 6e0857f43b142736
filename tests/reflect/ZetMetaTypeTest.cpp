#include <zet/ZetMetaType>

#include <array>
#include <atomic>
#include <cstdlib>
#include <sstream>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include <zet/ZetBuffer>
#include <zet/ZetByteOrder>
#include <zet/ZetColorModel>
#include <zet/ZetCoord2D>
#include <zet/ZetCoord3D>
#include <zet/ZetDataLayout>
#include <zet/ZetDataType>
#include <zet/ZetEnum>
#include <zet/ZetEqnTile>
#include <zet/ZetImageSize>
#include <zet/ZetROI>
#include <zet/ZetRational>
#include <zet/ZetScalar>
#include <zet/ZetSize3D>
#include <zet/ZetUnits>
#include <zet/ZetVariant>

namespace zet {
namespace {

struct KindRow
{
    int number;
    const wchar_t* name;
    unsigned long (*id)();
    bool numeric;
};

const KindRow kKinds[] = {
    {0, L"Bool", &typeID<bool>, true},
    {1, L"Int", &typeID<int>, true},
    {2, L"UInt", &typeID<unsigned int>, true},
    {3, L"Int64", &typeID<long>, true},
    {4, L"UInt64", &typeID<unsigned long>, true},
    {5, L"Double", &typeID<double>, true},
    {6, L"ComplexDouble", &typeID<std::complex<double>>, true},
    {7, L"ZetI64Rational", &typeID<ZetRational<long>>, true},
    {8, L"ZetU64Rational", &typeID<ZetRational<unsigned long>>, true},
    {9, L"ZetChar", &typeID<wchar_t>, true},
    {10, L"ZetString", &typeID<ZetString>, false},
    {11, L"ZetStrList", &typeID<ZetStrList>, false},
    {12, L"ZetEqnTile", &typeID<ZetEqnTile>, false},
    {13, L"ZetBufferPtr", &typeID<ZetBufferPtr>, false},
    {14, L"ZetI32Coord", &typeID<ZetCoord3D<int>>, false},
    {15, L"ZetDblCoord", &typeID<ZetCoord3D<double>>, false},
    {16, L"ZetDblCoord2D", &typeID<ZetCoord2D<double>>, false},
    {17, L"ZetU32Size", &typeID<ZetSize3D<unsigned int>>, false},
    {18, L"ZetImageSize", &typeID<ZetImageSize>, false},
    {19, L"ZetUnits", &typeID<ZetUnits>, false},
    {20, L"ZetScalar", &typeID<ZetScalar>, true},
    {21, L"ZetROI", &typeID<ZetROI>, false},
    {22, L"ZetDataType", &typeID<ZetDataType>, false},
    {23, L"ZetDataLayout", &typeID<ZetDataLayout>, false},
    {24, L"ZetColorModel", &typeID<ZetColorModel>, false},
    {25, L"ZetByteOrder", &typeID<ZetByteOrder>, false},
    {26, L"ZetVariantList", &typeID<std::vector<ZetVariant>>, false},
    {27, L"ZetVariantMap", &typeID<std::map<ZetString, ZetVariant>>, false},
};

ZetMetaType kind(int number)
{
    return ZetMetaType(static_cast<ZetMetaType::Type>(number));
}

TEST(ZetMetaType, hasTwentyEightBuiltInKinds)
{
    ASSERT_EQ(std::size(kKinds), 28u);
    ASSERT_GE(ZetMetaType::allKeys().size(), 28u);
    for (const KindRow& row : kKinds) {
        const ZetMetaType type = kind(row.number);
        EXPECT_EQ(type.type(), row.number);
        EXPECT_EQ(type.toString(), row.name);
        EXPECT_EQ(type.typeID(), row.id()) << row.number;
        EXPECT_EQ(type.isNumeric(), row.numeric) << row.number;
        EXPECT_EQ(ZetMetaType::fromTypeID(row.id()), row.number);
        EXPECT_EQ(ZetMetaType::fromString(row.name), row.number);
        EXPECT_EQ(ZetMetaType(ZetString(row.name)).type(), row.number);
        EXPECT_TRUE(ZetMetaType::isValid(row.name)) << row.number;
        EXPECT_EQ(ZetMetaType::allKeys()[static_cast<std::size_t>(row.number)], row.name);

        const ZetVariant id = ZetMetaType::enumerator().data(row.number);
        EXPECT_EQ(id.type().type(), ZetMetaType::UInt64);
        EXPECT_EQ(id.value<unsigned long>(), row.id());
    }
    EXPECT_EQ(ZetMetaType().className(), L"ZetMetaType");
}

TEST(ZetMetaType, invalidHasNoNameAndNoId)
{
    const ZetMetaType none;
    EXPECT_EQ(none.type(), 28);
    EXPECT_EQ(none.toString(), L"");
    EXPECT_EQ(none.typeID(), 0u);
    EXPECT_FALSE(none.isNumeric());
    EXPECT_EQ(ZetMetaType::enumerator().items().count(28), 0u);
}

TEST(ZetMetaType, numbersOutOfTheTableAreInvalid)
{
    EXPECT_EQ(kind(28).type(), 28);
    EXPECT_EQ(kind(-1).type(), 28);
    EXPECT_EQ(kind(std::numeric_limits<int>::min()).type(), 28);
    EXPECT_EQ(kind(29).type(), 28);
    EXPECT_EQ(kind(1023).type(), 28);
    EXPECT_EQ(kind(500000).type(), 28);
    EXPECT_EQ(kind(1024).type(), 1024);
    EXPECT_FALSE(kind(1024).isNumeric());
}

TEST(ZetMetaType, namesCompareExactly)
{
    for (const wchar_t* name : {L"", L"int", L"INT", L"Int ", L"double", L"Bogus"}) {
        EXPECT_EQ(ZetMetaType(ZetString(name)).type(), 28);
        EXPECT_EQ(ZetMetaType::fromString(name), 28);
        EXPECT_FALSE(ZetMetaType::isValid(name));
    }
}

TEST(ZetMetaType, orderAndEqualityAreThoseOfTheNumber)
{
    EXPECT_TRUE(kind(1) == ZetMetaType(L"Int"));
    EXPECT_TRUE(kind(1) != kind(2));
    EXPECT_TRUE(kind(1) < kind(2));
    EXPECT_FALSE(kind(2) < kind(2));
}

TEST(ZetMetaType, unknownIdsAreInvalid)
{
    EXPECT_EQ(ZetMetaType::fromTypeID(0), 28);
    EXPECT_EQ(ZetMetaType::fromTypeID(typeID<float>()), 28);
    EXPECT_EQ(ZetMetaType::fromTypeID(~0ul), 28);
    // what travels as another kind has none of its own
    EXPECT_EQ(ZetMetaType::of<short>().type(), 28);
}

TEST(ZetMetaType, streams)
{
    std::wostringstream out;
    out << kind(3) << L"|" << ZetMetaType();
    EXPECT_EQ(out.str(), L"Int64|");

    std::wistringstream in(L"  Double,x Int rest");
    ZetMetaType type = ZetMetaType::Bool;
    in >> type;
    EXPECT_EQ(type.type(), 28) << "one word, the comma in it";
    in >> type;
    EXPECT_EQ(type.type(), ZetMetaType::Int);
    EXPECT_TRUE(in.good());

    std::wistringstream nothing(L"");
    nothing >> type;
    EXPECT_TRUE(nothing.fail());
    EXPECT_EQ(type.type(), 28);
}

struct LateClass
{
};
struct LaterClass
{
};

TEST(ZetMetaType, registersCustomKinds)
{
    EXPECT_EQ(ZetMetaType::of<LateClass>().type(), 28);

    // a known name gives its number, whatever the class
    EXPECT_EQ(ZetMetaType::registerType(typeID<LateClass>(), L"Int"), 1);
    EXPECT_EQ(ZetMetaType::of<LateClass>().type(), 28);
    EXPECT_EQ(ZetMetaType(ZetMetaType::Int).typeID(), typeID<int>());

    const std::size_t before = ZetMetaType::allKeys().size();
    const int number = ZetMetaType::registerType(typeID<LateClass>(), L"LateClass");
    EXPECT_GE(number, 1024);
    EXPECT_EQ(ZetMetaType::allKeys().size(), before + 1);
    EXPECT_EQ(ZetMetaType::allKeys()[before], L"LateClass");
    EXPECT_EQ(ZetMetaType(L"LateClass").type(), number);
    EXPECT_EQ(kind(number).typeID(), typeID<LateClass>());
    // it is found although it was asked for before
    EXPECT_EQ(ZetMetaType::of<LateClass>().type(), number);

    // the same class under a second name keeps its number, and the name is dropped
    EXPECT_EQ(ZetMetaType::registerType(typeID<LateClass>(), L"SecondName"), number);
    EXPECT_FALSE(ZetMetaType::isValid(L"SecondName"));
    EXPECT_EQ(ZetMetaType::registerType(typeID<int>(), L"MyInt"), 1);
    EXPECT_FALSE(ZetMetaType::isValid(L"MyInt"));
    EXPECT_EQ(ZetMetaType::allKeys().size(), before + 1);

    EXPECT_EQ(ZetMetaType::registerType(typeID<LaterClass>(), L"LaterClass"), number + 1);
}

struct SharedClass
{
};
struct StrangeClass
{
};

// The first questions of the process for a class may come from several threads at once.
TEST(ZetMetaType, threadsAskTogether)
{
    const ZetMetaType::Type number = ZetMetaType::registerType(typeID<SharedClass>(), L"SharedClass");
    typeID<StrangeClass>();
    constexpr std::size_t count = 4;
    using Answers = std::array<ZetMetaType::Type, 3>;
    std::vector<Answers> answers(count);
    std::atomic<std::size_t> ready{0};
    std::vector<std::thread> threads;
    for (Answers& answer : answers) {
        threads.emplace_back([&ready, &answer] {
            ++ready;
            while (ready < count) {
            }
            answer = {ZetMetaType::of<SharedClass>().type(), ZetMetaType::of<StrangeClass>().type(),
                      ZetMetaType::of<ZetROI>().type()};
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(answers, std::vector<Answers>(count, {number, ZetMetaType::Invalid, ZetMetaType::ROI}));
}

const wchar_t* const kCustomKinds[] = {
    L"ZetDataTypeInfo", L"ZetHistogram_p",   L"ZetMetaProperty", L"ZetObjectProxy",
    L"ZetVariant",      L"ZetMetaDataField", L"ZetMetaDataSet",
};

/// The number of custom kinds of the library that do not have their number in this process.
int misnumberedKinds()
{
    int wrong = 0;
    for (std::size_t i = 0; i < std::size(kCustomKinds); ++i) {
        wrong += ZetMetaType::fromString(kCustomKinds[i]) != 1024 + static_cast<int>(i);
    }
    return wrong;
}

TEST(ZetMetaType, theLibrarysOwnCustomKindsComeFirst)
{
    EXPECT_EQ(misnumberedKinds(), 0);
    EXPECT_EQ(ZetMetaType::of<ZetVariant>().type(), 1028);
}

TEST(ZetMetaTypeDeathTest, aFreshProcessHasSevenCustomKinds)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto asTold = [] {
        return misnumberedKinds() == 0 && ZetMetaType::allKeys().size() == 28 + 7 && kind(1030).type() == 1030 &&
               kind(1031).type() == ZetMetaType::Invalid;
    };
    EXPECT_EXIT(std::exit(asTold() ? 0 : 1), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace zet

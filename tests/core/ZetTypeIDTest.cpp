#include <zet/ZetTypeID>

#include <cstdlib>
#include <typeinfo>
#include <vector>

#include <gtest/gtest.h>

#include <zet/ZetCoord2D>
#include <zet/ZetMetaProperties>
#include <zet/ZetNumValidator>
#include <zet/ZetObject>
#include <zet/ZetRational>
#include <zet/ZetSize3D>
#include <zet/ZetStrList>
#include <zet/ZetVariant>

namespace zet {
namespace {

struct Local
{
};

struct Row
{
    unsigned long (*id)();
    ZetString name;
};

const Row kRows[] = {
    {&typeID<bool>, L"bool"},
    {&typeID<char>, L"char"},
    {&typeID<signed char>, L"signed char"},
    {&typeID<unsigned char>, L"unsigned char"},
    {&typeID<short>, L"short"},
    {&typeID<unsigned short>, L"unsigned short"},
    {&typeID<int>, L"int"},
    {&typeID<unsigned int>, L"unsigned int"},
    {&typeID<long>, L"ZetI64"},
    {&typeID<unsigned long>, L"ZetU64"},
    {&typeID<float>, L"float"},
    {&typeID<double>, L"double"},
    {&typeID<std::complex<double>>, L"ZetDblComplex"},
    {&typeID<ZetString>, L"ZetString"},
    // every other type goes by the compiler's name
    {&typeID<wchar_t>, ZetString(typeid(wchar_t).name())},
    {&typeID<ZetStrList>, L"N3zet10ZetStrListE"},
    {&typeID<Local>, ZetString(typeid(Local).name())},
};

TEST(ZetTypeID, isTheNumberOfTheTypesName)
{
    for (const Row& row : kRows) {
        SCOPED_TRACE(toMultibyte(row.name));
        EXPECT_EQ(row.id(), internal::uniqueTypeID(row.name));
        EXPECT_EQ(row.id(), row.id());
    }
}

TEST(ZetTypeID, everyTypeHasItsOwnNumber)
{
    for (const Row& a : kRows) {
        for (const Row& b : kRows) {
            EXPECT_EQ(a.id() == b.id(), &a == &b);
        }
    }
}

TEST(ZetTypeID, numbersAreDense)
{
    const unsigned long first = internal::uniqueTypeID(L"a name that nobody asked for");
    EXPECT_GE(first, 1u);
    EXPECT_EQ(internal::uniqueTypeID(L"another name that nobody asked for"), first + 1);
    EXPECT_EQ(internal::uniqueTypeID(L"a name that nobody asked for"), first);
    EXPECT_EQ(internal::uniqueTypeID(L"a third name that nobody asked for"), first + 2);
}

/// How many types are new to the process when the library's own come into use.
unsigned long firstAskedInUse()
{
    const unsigned long before = internal::uniqueTypeID(L"a name before");
    for (const ZetMetaObjectPtr& meta :
         {ZetCoord2D<float>().metaObject(), ZetSize3D<char>().metaObject(), ZetRational<short>().metaObject(),
          ZetNumValidator<signed char>().metaObject()}) {
        meta->properties();
    }
    ZetVariant().isValid();
    ZetVariant(L"1").value<double>();
    return internal::uniqueTypeID(L"a name behind") - before - 1;
}

TEST(ZetTypeIDDeathTest, theLibrarysTypesAreAskedForAtTheStart)
{
    EXPECT_EXIT(std::exit(firstAskedInUse() == 0 ? 0 : 1), ::testing::ExitedWithCode(0), "");
}

TEST(ZetTypeID, isBaseOfAsksForDerivation)
{
    static_assert(isBaseOf<ZetObject, ZetStrList>());
    static_assert(isBaseOf<ZetObject, ZetObject>());
    static_assert(!isBaseOf<ZetObject, ZetString>());
    static_assert(!isBaseOf<ZetObject, int>());
}

}  // namespace
}  // namespace zet

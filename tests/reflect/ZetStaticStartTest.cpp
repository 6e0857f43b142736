// What a caller's static initialiser can do, also before those of the library have run.

#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetEnumValidator>
#include <zet/ZetKeyedMetaObj>
#include <zet/ZetMetaFlag>
#include <zet/ZetNumValidator>
#include <zet/ZetObjectProxy>
#include <zet/ZetSize2D>
#include <zet/ZetTextMsg>

namespace zet {
namespace {

class NullFactory : public ZetObjectFactory
{
public:
    ZetString objectType() const override { return L"EarlyType"; }
    ZetObject* createObject(const std::map<ZetString, ZetVariant>&) const override { return new ZetKeyedObject(L"x"); }
};

struct Early
{
    Early()
        : object(L""),
          keyKind(ZetMetaType::of<unsigned int>()),
          converted(ZetVariant(L"2.5").value<double>()),
          registered(ZetObjectProxy::registerFactory(new NullFactory))
    {
        text << ZetMetaFlag(5) << ZetVariant(3) << ZetMetaType(L"Int");
        std::wistringstream(L"ZetI32Coord,(1,2,3)") >> read;
        names = ZetSize2D<char>().metaObject()->properties()->propertyNames(true);
        refused = !ZetNumValidator<int>(4, 0, 10).isValid(ZetVariant(11), &refusal);
    }

    ZetKeyedObject object;
    ZetMetaType keyKind;
    double converted;
    bool registered;
    std::wostringstream text;
    ZetVariant read;
    ZetStrList names;
    ZetTextMsg refusal = ZetTextMsg(L"", 0);
    bool refused = false;
};

// The first of all static objects of the program.
__attribute__((init_priority(101))) const Early s_early;

TEST(ZetStaticStart, theFirstKeyedObjectOfAProcessHasTheKeyOne)
{
    EXPECT_EQ(s_early.object.key(), ZetKey(1));
    EXPECT_EQ(s_early.object.name(), L"1");
}

TEST(ZetStaticStart, everyTableServes)
{
    EXPECT_EQ(s_early.keyKind.toString(), L"UInt");
    EXPECT_EQ(s_early.converted, 2.5);
    EXPECT_TRUE(s_early.registered);
    EXPECT_EQ(s_early.text.str(), L"(ReadOnly | NoPersist)Int,3Int");
    EXPECT_EQ(s_early.read.value<ZetString>(), L"(1,2,3)");
    EXPECT_EQ(s_early.names, (ZetStrList{L"width", L"height"}));
    EXPECT_TRUE(s_early.refused);
    EXPECT_EQ(s_early.refusal.text(), L"The value of '11' is not within (-inf, 10].");
}

TEST(ZetStaticStart, theLibrarysOwnKindsKeepTheirNumbers)
{
    EXPECT_EQ(ZetMetaType(L"ZetDataTypeInfo").type(), 1024);
    EXPECT_EQ(ZetMetaType(L"ZetMetaDataSet").type(), 1030);
}

}  // namespace
}  // namespace zet

#include <zet/ZetMetaProperties>

#include <gtest/gtest.h>

namespace zet {
namespace {

ZetMetaPropertyPtr makeProperty(const wchar_t* name, const wchar_t* label = L"")
{
    return new ZetMetaProperty(name, ZetMetaType::Int, 0, label, L"", 0);
}

ZetMetaPropertiesPtr makeList(const wchar_t* owner, std::initializer_list<const wchar_t*> names,
                              const ZetMetaPropertiesPtr& parent = ZetMetaPropertiesPtr())
{
    const ZetMetaPropertiesPtr list(new ZetMetaProperties(owner, parent));
    for (const wchar_t* name : names) {
        EXPECT_EQ(list->append(makeProperty(name)), 0);
    }
    return list;
}

/// Three levels: "a" and "b", over "c", over "d", "e" and "f".
struct Chain
{
    ZetMetaPropertiesPtr oldest = makeList(L"Oldest", {L"f", L"d", L"e"});
    ZetMetaPropertiesPtr middle = makeList(L"Middle", {L"c"}, oldest);
    ZetMetaPropertiesPtr youngest = makeList(L"Youngest", {L"b", L"a"}, middle);
};

TEST(ZetMetaProperties, startsEmpty)
{
    const ZetMetaProperties list(L"Owner", ZetMetaPropertiesPtr());
    EXPECT_EQ(list.className(), L"ZetMetaProperties");
    EXPECT_EQ(list.ownerClassName(), L"Owner");
    EXPECT_EQ(list.numProperties(false), 0);
    EXPECT_EQ(list.numProperties(true), 0);
    EXPECT_TRUE(list.propertyNames(true).empty());
    EXPECT_TRUE(list.begin() == list.end());
}

TEST(ZetMetaProperties, appendRefusesAKnownName)
{
    const ZetMetaPropertiesPtr list = makeList(L"Owner", {L"a"});
    EXPECT_EQ(list->append(makeProperty(L"a", L"second")), 1);
    EXPECT_EQ(list->numProperties(false), 1);
    EXPECT_EQ(list->propertyNames(false), (ZetStrList{L"a"}));
    EXPECT_EQ(list->property(L"a", false)->label(), L"a");
    // the parent's names do not count
    const ZetMetaPropertiesPtr child = makeList(L"Child", {L"a", L"A"}, list);
    EXPECT_EQ(child->numProperties(false), 2);
}

TEST(ZetMetaProperties, namesKeepTheirOrderBehindTheParents)
{
    const Chain chain;
    EXPECT_EQ(chain.youngest->propertyNames(false), (ZetStrList{L"b", L"a"}));
    EXPECT_EQ(chain.youngest->propertyNames(true), (ZetStrList{L"f", L"d", L"e", L"c", L"b", L"a"}));
    EXPECT_EQ(chain.oldest->propertyNames(true), (ZetStrList{L"f", L"d", L"e"}));
}

TEST(ZetMetaProperties, numPropertiesCountsOneParent)
{
    const Chain chain;
    EXPECT_EQ(chain.youngest->numProperties(false), 2);
    EXPECT_EQ(chain.youngest->numProperties(true), 3);
    EXPECT_EQ(chain.middle->numProperties(true), 4);
    EXPECT_EQ(chain.oldest->numProperties(true), 3);
}

TEST(ZetMetaProperties, propertyAsksTheWholeChain)
{
    const Chain chain;
    const ZetMetaProperties& constant = *chain.youngest;
    for (const wchar_t* name : {L"a", L"c", L"f"}) {
        ASSERT_TRUE(chain.youngest->property(name, true));
        EXPECT_EQ(chain.youngest->property(name, true)->name(), name);
        EXPECT_EQ(constant.property(name, true).get(), chain.youngest->property(name, true).get());
    }
    EXPECT_TRUE(chain.youngest->property(L"a", false));
    EXPECT_FALSE(chain.youngest->property(L"c", false));
    EXPECT_FALSE(constant.property(L"c", false));
    EXPECT_FALSE(chain.youngest->property(L"x", true));
    EXPECT_FALSE(constant.property(L"x", true));
}

TEST(ZetMetaProperties, ownPropertyHidesTheParents)
{
    const Chain chain;
    EXPECT_EQ(chain.youngest->append(makeProperty(L"f", L"own f")), 0);
    EXPECT_EQ(chain.youngest->property(L"f", true)->label(), L"own f");
    EXPECT_EQ(chain.oldest->property(L"f", true)->label(), L"f");
    EXPECT_EQ(chain.youngest->propertyNames(true), (ZetStrList{L"f", L"d", L"e", L"c", L"b", L"a", L"f"}));
}

TEST(ZetMetaProperties, iteratesOverAllNames)
{
    const Chain chain;
    ZetStrList names;
    for (const ZetMetaPropertyPtr& property : *chain.youngest) {
        names.append(property->name());
    }
    EXPECT_EQ(names, (ZetStrList{L"f", L"d", L"e", L"c", L"b", L"a"}));

    const ZetMetaProperties& constant = *chain.middle;
    ZetMetaProperties::const_iterator position = constant.begin();
    EXPECT_EQ((*position)->name(), L"f");
    EXPECT_EQ((*position++)->name(), L"f");
    EXPECT_EQ((*++position)->name(), L"e");
    EXPECT_EQ((*++position)->name(), L"c");
    EXPECT_TRUE(++position == constant.end());
    EXPECT_TRUE(position != constant.begin());
}

TEST(ZetMetaProperties, iteratorsHaveTheirOwnNames)
{
    const ZetMetaPropertiesPtr list = makeList(L"Owner", {L"a", L"b"});
    ZetMetaProperties::iterator position = list->begin();
    list->append(makeProperty(L"c"));
    EXPECT_EQ((*++position)->name(), L"b");
}

}  // namespace
}  // namespace zet

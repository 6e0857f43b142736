#include <zet/ZetParameterList>

#include <algorithm>
#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetMetaProperties>

#include "support/ZetPrint"
#include "support/ZetScopedLocale"

namespace zet {
namespace {

using Scopes = std::vector<ZetParameterListConstPtr>;

ZetParameterPtr valued(const ZetString& name, int value)
{
    return new ZetParameter(name, value, false);
}

ZetParameterPtr referring(const ZetString& name, const ZetString& crossRef)
{
    return new ZetParameter(name, crossRef);
}

ZetParameterPtr expression(const ZetString& name)
{
    return new ZetParameter(name, ZetVariant(L"1+1"), true);
}

ZetParameterListPtr listOf(const std::vector<ZetParameterPtr>& parameters)
{
    const ZetParameterListPtr list = new ZetParameterList(L"list");
    for (const ZetParameterPtr& parameter : parameters) {
        EXPECT_EQ(list->insertParm(parameter, -1), 0);
    }
    return list;
}

/// The names in the order of iteration.
ZetString namesOf(const ZetParameterList& list)
{
    ZetString names;
    for (const ZetParameterPtr& parameter : list) {
        names += parameter->name() + L" ";
    }
    return names;
}

/// The value as text, "-" for an invalid one.
ZetString dump(const ZetVariant& value)
{
    return value.isValid() ? value.value<ZetString>() : ZetString(L"-");
}

TEST(ZetParameterList, constructs)
{
    const test::ZetScopedLocale plainNumbers("C");
    const ZetParameterList list(L"name");
    EXPECT_EQ(list.className(), L"ZetParameterList");
    EXPECT_EQ(list.name(), L"name");
    EXPECT_EQ(list.key(), ZetKey::INVALID_KEY);
    EXPECT_EQ(list.begin(), list.end());
    EXPECT_FALSE(list.parameter(L"name"));
    EXPECT_EQ(ZetParameterList(L"").name(), L"4294967295");
}

TEST(ZetParameterList, insertsAtPositions)
{
    const struct
    {
        int index;
        const wchar_t* names;
    } rows[] = {
        {0, L"x c a b "},
        {1, L"c x a b "},
        {2, L"c a x b "},
        {3, L"c a b x "},
        {4, L"c a b x "},
        {-1, L"c a b x "},
        {-2147483647 - 1, L"c a b x "},
        {2147483647, L"c a b x "},
    };
    for (const auto& row : rows) {
        const ZetParameterListPtr list = listOf({valued(L"c", 1), valued(L"a", 2), valued(L"b", 3)});
        const ZetParameterPtr x = valued(L"x", 4);
        EXPECT_EQ(list->insertParm(x, row.index), 0);
        EXPECT_EQ(namesOf(*list), row.names) << row.index;
        EXPECT_EQ(x->owner(), list.get());
    }
}

TEST(ZetParameterList, refusesToInsert)
{
    const ZetParameterPtr a = valued(L"a", 1);
    const ZetParameterListPtr list = listOf({a, valued(L"b", 2)});
    // the same one twice, another of its name, and null
    EXPECT_EQ(list->insertParm(a, 0), 1);
    const ZetParameterPtr another = valued(L"a", 3);
    EXPECT_EQ(list->insertParm(another, 0), 1);
    EXPECT_EQ(another->owner(), nullptr);
    EXPECT_EQ(list->insertParm(ZetParameterPtr(), 0), 1);
    EXPECT_EQ(namesOf(*list), L"a b ");
    // one that another list holds, also under a new name
    ZetParameterList other(L"other");
    EXPECT_EQ(other.insertParm(a, 0), 1);
    a->setName(L"z");
    EXPECT_EQ(list->insertParm(a, 0), 1);
    EXPECT_EQ(a->owner(), list.get());
    EXPECT_EQ(namesOf(other), L"");
}

TEST(ZetParameterList, removes)
{
    const ZetParameterPtr a = valued(L"a", 1);
    const ZetParameterListPtr list = listOf({valued(L"b", 2), a, valued(L"c", 3)});
    EXPECT_FALSE(list->removeParm(L"unknown"));
    EXPECT_EQ(namesOf(*list), L"b a c ");
    EXPECT_EQ(list->removeParm(L"a").get(), a.get());
    EXPECT_EQ(a->owner(), nullptr);
    EXPECT_EQ(namesOf(*list), L"b c ");
    EXPECT_FALSE(list->removeParm(L"a"));
    // free again
    EXPECT_EQ(list->insertParm(a, 0), 0);
    EXPECT_EQ(namesOf(*list), L"a b c ");
}

TEST(ZetParameterList, renames)
{
    const struct
    {
        const wchar_t* oldName;
        const wchar_t* newName;
        int status;
        const wchar_t* names;
    } rows[] = {
        {L"b", L"x", 0, L"x a c "}, {L"a", L"x", 0, L"b x c "}, {L"c", L"x", 0, L"b a x "},
        {L"a", L"a", 1, L"b a c "}, {L"a", L"c", 1, L"b a c "}, {L"unknown", L"x", 1, L"b a c "},
    };
    for (const auto& row : rows) {
        const ZetParameterListPtr list = listOf({valued(L"b", 1), valued(L"a", 2), valued(L"c", 3)});
        EXPECT_EQ(list->renameParm(row.oldName, row.newName), row.status);
        EXPECT_EQ(namesOf(*list), row.names);
    }
}

TEST(ZetParameterList, renamingLeavesTheProperty)
{
    const ZetParameterPtr a = valued(L"a", 1);
    const ZetParameterListPtr list = listOf({a});
    EXPECT_EQ(list->renameParm(a->name(), L"x"), 0);
    EXPECT_EQ(a->name(), L"x");
    EXPECT_EQ(a->property().name(), L"a");
    EXPECT_EQ(a->owner(), list.get());
    EXPECT_EQ(list->removeParm(L"x").get(), a.get());
}

TEST(ZetParameterList, parameterIgnoresTheName)
{
    const ZetParameterListPtr list = listOf({valued(L"c", 1), valued(L"b", 2)});
    EXPECT_EQ(list->parameter(L"c")->name(), L"b");
    EXPECT_EQ(list->parameter(L"unknown")->name(), L"b");
    // in the order of names, upper case first, not that of insertion
    list->insertParm(valued(L"Z", 3), -1);
    EXPECT_EQ(list->parameter(L"b")->name(), L"Z");
    EXPECT_EQ(dump(list->parmValue(L"c", Scopes())), L"3");
}

TEST(ZetParameterList, resolves)
{
    const ZetParameterListConstPtr empty = listOf({});
    const ZetParameterListConstPtr five = listOf({valued(L"v", 5)});
    const ZetParameterListConstPtr six = listOf({valued(L"v", 6)});
    const ZetParameterListConstPtr self = listOf({referring(L"a", L"a")});
    const ZetParameterListConstPtr outward = listOf({referring(L"a", L"elsewhere")});
    const ZetParameterListConstPtr sibling = listOf({referring(L"a", L"b"), valued(L"b", 7)});
    const ZetParameterListConstPtr equation = listOf({expression(L"a")});
    const ZetParameterListConstPtr noValue = listOf({new ZetParameter(L"a", ZetVariant(), false)});
    const struct
    {
        const char* what;
        ZetParameterListConstPtr list;
        const wchar_t* name;
        Scopes scopes;
        const wchar_t* value;
    } rows[] = {
        {"nothing anywhere", empty, L"a", {}, L"-"},
        {"the value", five, L"v", {}, L"5"},
        {"the first value under any name", five, L"w", {six}, L"5"},
        {"the outer list", empty, L"a", {five}, L"5"},
        {"the list behind the outer list", empty, L"a", {empty, six}, L"6"},
        {"nothing in the outer lists", empty, L"a", {empty, empty}, L"-"},
        {"a reference to itself", self, L"a", {}, L"-"},
        {"a reference to itself, seen from outside", self, L"x", {}, L"-"},
        {"a reference to itself, answered outside", self, L"a", {five}, L"5"},
        {"a reference to itself, twice", self, L"a", {self, six}, L"6"},
        {"a reference elsewhere", outward, L"a", {}, L"-"},
        {"a reference elsewhere, answered outside", outward, L"a", {empty, five}, L"5"},
        // the sibling's name gives the first parameter again
        {"a reference to a sibling", sibling, L"a", {}, L"-"},
        {"a reference to a sibling, answered outside", sibling, L"a", {five}, L"5"},
        // an entry that cannot be resolved does not fall back to the scopes
        {"an expression", equation, L"a", {five}, L"-"},
        {"an expression in the outer list", empty, L"a", {equation, five}, L"-"},
        {"no value", noValue, L"a", {five}, L"-"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(dump(row.list->parmValue(row.name, row.scopes)), row.value) << row.what;
    }
}

TEST(ZetParameterList, aReferenceGoesBeforeAnExpression)
{
    const ZetParameterPtr both = expression(L"a");
    both->setCrossRef(L"v");
    const ZetParameterListConstPtr list = listOf({both});
    EXPECT_EQ(dump(list->parmValue(L"a", {listOf({valued(L"v", 5)})})), L"5");
}

TEST(ZetParameterList, namesInProgressHaveNoValue)
{
    const ZetParameterListConstPtr list = listOf({valued(L"a", 5)});
    const ZetParameterListConstPtr outer = listOf({valued(L"a", 6)});
    ZetStrList visited{L"x", L"a"};
    EXPECT_EQ(dump(list->parmValue(L"a", {outer}, visited)), L"-");
    EXPECT_EQ(visited, (ZetStrList{L"x", L"a"}));
    // exactly that name
    EXPECT_EQ(dump(list->parmValue(L"A", {outer}, visited)), L"5");
    EXPECT_EQ(visited, (ZetStrList{L"x", L"a"}));
    // an outer list begins anew
    EXPECT_EQ(dump(listOf({})->parmValue(L"b", {outer}, visited)), L"6");
    EXPECT_EQ(dump(listOf({referring(L"b", L"a")})->parmValue(L"b", {outer}, visited)), L"6");
    EXPECT_EQ(visited, (ZetStrList{L"x", L"a"}));
}

TEST(ZetParameterList, solvesSteps)
{
    const ZetParameterListConstPtr list = listOf({valued(L"a", 5)});
    const ZetParameterListConstPtr outer = listOf({valued(L"a", 6)});
    const ZetParameterConstPtr toA = referring(L"free", L"a");
    ZetStrList visited;
    EXPECT_EQ(dump(list->solveCrossRef(toA, {outer}, visited)), L"5");
    EXPECT_EQ(dump(list->solveCrossRef(referring(L"free", L"b"), {outer}, visited)), L"6");
    EXPECT_EQ(dump(list->solveCrossRef(referring(L"free", L"b"), {}, visited)), L"-");
    EXPECT_EQ(dump(list->solveExp(expression(L"e"), {outer}, visited)), L"-");
    EXPECT_TRUE(visited.empty());
    visited.append(L"a");
    EXPECT_EQ(dump(list->solveCrossRef(toA, {outer}, visited)), L"6");
    EXPECT_EQ(dump(list->solveCrossRef(toA, {}, visited)), L"-");
}

TEST(ZetParameterList, manyScopes)
{
    Scopes scopes(999, listOf({}));
    scopes.push_back(listOf({valued(L"a", 5)}));
    EXPECT_EQ(dump(listOf({})->parmValue(L"a", scopes)), L"5");
}

TEST(ZetParameterList, clearLeavesTheOwner)
{
    const ZetParameterPtr a = valued(L"a", 1);
    const ZetParameterListPtr list = listOf({a, valued(L"b", 2)});
    list->clear();
    EXPECT_EQ(namesOf(*list), L"");
    EXPECT_FALSE(list->parameter(L"a"));
    EXPECT_EQ(a->owner(), list.get());
    EXPECT_EQ(list->insertParm(a, 0), 1);
    EXPECT_EQ(ZetParameterList(L"other").insertParm(a, 0), 1);
    EXPECT_FALSE(list->removeParm(L"a"));
}

TEST(ZetParameterList, heldParametersOutliveTheList)
{
    const ZetParameterPtr a = valued(L"a", 1);
    listOf({a});
    EXPECT_TRUE(a.isUnique());
    EXPECT_EQ(a->value().value<int>(), 1);
}

TEST(ZetParameterList, copiesAreEmpty)
{
    const ZetParameterListPtr list = listOf({valued(L"a", 1), valued(L"b", 2), valued(L"c", 3)});
    const ZetParameterList copy(*list);
    EXPECT_EQ(namesOf(copy), L"");
    EXPECT_EQ(copy.name(), L"list");
    EXPECT_EQ(copy.key(), ZetKey::INVALID_KEY);

    const ZetParameterPtr x = valued(L"x", 4);
    const ZetParameterListPtr target = listOf({x});
    target->setName(L"target");
    *target = *list;
    EXPECT_EQ(namesOf(*target), L"");
    EXPECT_EQ(target->name(), L"list");
    EXPECT_EQ(target->key(), ZetKey::INVALID_KEY);
    EXPECT_TRUE(x.isUnique());
    EXPECT_EQ(namesOf(*list), L"a b c ");

    const ZetParameterList& self = *list;
    *list = self;
    EXPECT_EQ(namesOf(*list), L"a b c ");
}

TEST(ZetParameterList, equalityTellsWhetherTheLeftIsEmpty)
{
    const ZetParameterListPtr empty = listOf({});
    const ZetParameterListPtr full = listOf({valued(L"a", 1)});
    const ZetParameterListPtr same = listOf({valued(L"a", 1)});
    EXPECT_TRUE(*empty == *empty);
    EXPECT_TRUE(*empty == *full);
    EXPECT_FALSE(*full == *empty);
    EXPECT_FALSE(*full == *same);
    EXPECT_FALSE(*full == *full);
    EXPECT_TRUE(*full != *full);
    EXPECT_FALSE(*empty != *full);
}

TEST(ZetParameterList, iterates)
{
    const ZetParameterPtr b = valued(L"b", 1);
    const ZetParameterListPtr list = listOf({b, valued(L"a", 2)});
    using Iterator = ZetParameterList::iterator;
    using ConstIterator = ZetParameterList::const_iterator;
    static_assert(std::is_same<Iterator, ZetParameterList::Iterator_p<ZetParameterList>>::value, "");
    static_assert(std::is_same<ConstIterator, ZetParameterList::Iterator_p<const ZetParameterList>>::value, "");
    static_assert(std::is_same<std::iterator_traits<Iterator>::value_type, ZetParameterPtr>::value, "");
    static_assert(std::is_same<std::iterator_traits<ConstIterator>::difference_type, long>::value, "");
    static_assert(
        std::is_same<std::iterator_traits<ConstIterator>::iterator_category, std::forward_iterator_tag>::value, "");

    Iterator position = list->begin();
    EXPECT_EQ((*position).get(), b.get());
    EXPECT_EQ(position->get(), b.get());
    const Iterator before = position++;
    EXPECT_EQ(before, list->begin());
    EXPECT_EQ((*position)->name(), L"a");
    EXPECT_NE(position, list->end());
    EXPECT_EQ(++position, list->end());
    EXPECT_NE(list->begin(), listOf({})->begin());
    EXPECT_EQ(Iterator(), Iterator());

    const ZetParameterList& constant = *list;
    EXPECT_EQ(std::distance(constant.begin(), constant.end()), 2);
    const auto found = std::find_if(constant.begin(), constant.end(),
                                    [](const ZetParameterPtr& p) { return p->value().value<int>() == 2; });
    EXPECT_EQ((*found)->name(), L"a");
}

TEST(ZetParameterList, streamsDoNothing)
{
    const ZetParameterListPtr list = listOf({valued(L"a", 1)});
    std::wstringstream stream(L" text");
    stream >> *list;
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(stream.peek(), L' ');
    EXPECT_EQ(namesOf(*list), L"a ");
    std::wostringstream out;
    out << *list;
    EXPECT_TRUE(out.good());
    EXPECT_EQ(out.str(), L"");
}

TEST(ZetParameterList, servesTheKeyedObjectsProperties)
{
    ZetParameterList list(L"a");
    const ZetMetaObjectPtr meta = list.metaObject();
    meta->properties();
    ZetVariant value;
    EXPECT_EQ(meta->getPropertyValue(L"classname", value), 0);
    EXPECT_EQ(value.value<ZetString>(), L"ZetParameterList");
    EXPECT_EQ(meta->setPropertyValue(L"name", ZetVariant(L"b")), 0);
    EXPECT_EQ(list.name(), L"b");
}

}  // namespace
}  // namespace zet

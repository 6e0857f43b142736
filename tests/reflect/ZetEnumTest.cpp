#include <zet/ZetEnum>

#include <gtest/gtest.h>

#include <zet/ZetVariant>

namespace zet {
namespace {

ZetEnum makeTable()
{
    const ZetEnum::Item items[] = {
        ZetEnum::Item({7, L"seven"}),
        ZetEnum::Item({-2, L"minus two"}, ZetVariant(2.5)),
        ZetEnum::Item({0, L"zero"}, ZetVariant(L"nothing")),
    };
    return ZetEnum(items, 3);
}

TEST(ZetEnum, startsEmpty)
{
    const ZetEnum table;
    EXPECT_TRUE(table.items().empty());
    EXPECT_TRUE(table.allKeys().empty());
    EXPECT_EQ(table.className(), L"ZetEnum");
}

TEST(ZetEnum, invalidIsTheGreatestInt)
{
    EXPECT_EQ(ZetEnum::INVALID_ENUM, 2147483647);
}

TEST(ZetEnum, keysStandInOrderOfInsertionAndItemsInOrderOfValue)
{
    const ZetEnum table = makeTable();
    EXPECT_EQ(table.allKeys(), (ZetStrList{L"seven", L"minus two", L"zero"}));
    std::vector<int> values;
    for (const auto& entry : table.items()) {
        values.push_back(entry.first);
    }
    EXPECT_EQ(values, (std::vector<int>{-2, 0, 7}));
}

TEST(ZetEnum, insertIgnoresKnownValuesAndNames)
{
    ZetEnum table = makeTable();
    table.insert(ZetEnum::Item({7, L"other"}));
    table.insert(ZetEnum::Item({8, L"seven"}));
    table.insert(ZetEnum::Item({7, L"seven"}, ZetVariant(1)));
    EXPECT_EQ(table.items().size(), 3u);
    EXPECT_EQ(table.allKeys(), (ZetStrList{L"seven", L"minus two", L"zero"}));
    EXPECT_EQ(table.toString(7), L"seven");
    EXPECT_EQ(table.toString(8), L"");
    EXPECT_FALSE(table.data(7).isValid());
    // names differ by case
    table.insert(ZetEnum::Item({8, L"Seven"}));
    EXPECT_EQ(table.toString(8), L"Seven");
}

TEST(ZetEnum, dataIsACopyOfTheItems)
{
    ZetEnum table = makeTable();
    EXPECT_EQ(table.data(-2).value<double>(), 2.5);
    EXPECT_EQ(table.data(0).value<ZetString>(), L"nothing");
    EXPECT_FALSE(table.data(7).isValid());
    EXPECT_FALSE(table.data(99).isValid());

    table.setData(7, ZetVariant(77));
    EXPECT_EQ(table.data(7).value<int>(), 77);
    table.setData(-2, ZetVariant(L"text"));
    EXPECT_EQ(table.data(-2).value<ZetString>(), L"text");
    table.setData(99, ZetVariant(1));
    EXPECT_EQ(table.items().size(), 3u);
    EXPECT_FALSE(table.data(99).isValid());
}

TEST(ZetEnum, toStringOfAnUnknownValueIsOneEmptyString)
{
    const ZetEnum table = makeTable();
    const ZetEnum other;
    EXPECT_EQ(table.toString(99), L"");
    EXPECT_EQ(&table.toString(99), &other.toString(1));
}

struct NameRow
{
    const wchar_t* name;
    int value;
    bool valid;
};

TEST(ZetEnum, namesCompareExactly)
{
    ZetEnum table = makeTable();
    table.insert(ZetEnum::Item({ZetEnum::INVALID_ENUM, L"last"}));
    const NameRow rows[] = {
        {L"seven", 7, true},
        {L"minus two", -2, true},
        {L"Seven", ZetEnum::INVALID_ENUM, false},
        {L"seven ", ZetEnum::INVALID_ENUM, false},
        {L"", ZetEnum::INVALID_ENUM, false},
        // found, but with the value that means no item
        {L"last", ZetEnum::INVALID_ENUM, false},
    };
    for (const NameRow& row : rows) {
        EXPECT_EQ(table.fromString(row.name), row.value) << toMultibyte(row.name);
        EXPECT_EQ(table.isValid(row.name), row.valid) << toMultibyte(row.name);
    }
}

TEST(ZetEnum, copiesAreDeep)
{
    ZetEnum table = makeTable();
    const ZetEnum copy(table);
    ZetEnum assigned;
    assigned.insert(ZetEnum::Item({1, L"gone"}));
    assigned = table;
    table.setData(-2, ZetVariant(9));
    table.insert(ZetEnum::Item({100, L"hundred"}));
    for (const ZetEnum* other : {&copy, static_cast<const ZetEnum*>(&assigned)}) {
        EXPECT_EQ(other->data(-2).value<double>(), 2.5);
        EXPECT_EQ(other->allKeys(), (ZetStrList{L"seven", L"minus two", L"zero"}));
        EXPECT_EQ(other->toString(100), L"");
    }
    EXPECT_EQ(assigned.fromString(L"gone"), ZetEnum::INVALID_ENUM);
}

TEST(ZetEnum, itemsCopyTheirVariant)
{
    const ZetEnum::Item plain({1, L"plain"});
    ZetEnum::Item holder({2, L"holder"}, ZetVariant(5));
    const ZetEnum::Item copy(holder);
    EXPECT_EQ(plain.data(), nullptr);
    ASSERT_NE(copy.data(), nullptr);
    EXPECT_NE(copy.data(), holder.data());
    EXPECT_EQ(copy.data()->value<int>(), 5);

    ZetEnum::Item& self = holder;
    holder = self;
    ASSERT_NE(holder.data(), nullptr);
    EXPECT_EQ(holder.data()->value<int>(), 5);
    EXPECT_EQ(holder.name(), L"holder");

    holder = plain;
    EXPECT_EQ(holder.value(), 1);
    EXPECT_EQ(holder.name(), L"plain");
    EXPECT_EQ(holder.data(), nullptr);
    holder = copy;
    EXPECT_EQ(holder.data()->value<int>(), 5);
}

}  // namespace
}  // namespace zet

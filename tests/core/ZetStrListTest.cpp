#include <zet/ZetStrList>

#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include "support/ZetPrint"

namespace zet {
namespace {

/// A list whose storage is full.
ZetStrList fullList(std::initializer_list<ZetString> elements)
{
    return ZetStrList(elements);
}

TEST(ZetStrList, knowsItsName)
{
    EXPECT_EQ(ZetStrList().className(), L"ZetStrList");
}

TEST(ZetStrList, isEmptyByDefault)
{
    const ZetStrList list;
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.size(), 0u);
    EXPECT_EQ(list.toString(L","), L"");
    EXPECT_EQ(static_cast<ZetString>(list), L"");
}

TEST(ZetStrList, splits)
{
    struct Row
    {
        const wchar_t* text;
        const wchar_t* delims;
        ZetStrList kept;
        ZetStrList withoutEmpty;
    };
    const Row rows[] = {
        {L"a,b,c", L",", {L"a", L"b", L"c"}, {L"a", L"b", L"c"}},
        {L"a", L",", {L"a"}, {L"a"}},
        {L"", L",", {}, {}},
        // empty parts
        {L"a,,b", L",", {L"a", L"", L"b"}, {L"a", L"b"}},
        {L"a,", L",", {L"a", L""}, {L"a"}},
        {L",a", L",", {L"", L"a"}, {L"a"}},
        {L",,", L",", {L"", L"", L""}, {}},
        {L",", L",", {L"", L""}, {}},
        // one pair of brackets
        {L"(a,b)", L",", {L"a", L"b"}, {L"a", L"b"}},
        {L"(a,b", L",", {L"(a", L"b"}, {L"(a", L"b"}},
        {L"a,b)", L",", {L"a", L"b)"}, {L"a", L"b)"}},
        {L"()", L",", {L""}, {}},
        {L"(", L",", {L"("}, {L"("}},
        {L")", L",", {L")"}, {L")"}},
        {L"((a),b)", L",", {L"(a)", L"b"}, {L"(a)", L"b"}},
        {L" (a) ", L",", {L"a"}, {L"a"}},
        // only the ends of the whole text are trimmed, and only before the brackets go
        {L" a , b ", L",", {L"a ", L" b"}, {L"a ", L" b"}},
        {L"( a )", L",", {L" a "}, {L" a "}},
        {L"   ", L",", {L"   "}, {L"   "}},
        // a set of characters
        {L"a,b;c", L",;", {L"a", L"b", L"c"}, {L"a", L"b", L"c"}},
        {L"a,;b", L",;", {L"a", L"", L"b"}, {L"a", L"b"}},
        {L"a b", L" ", {L"a", L"b"}, {L"a", L"b"}},
        // no delimiters
        {L" (a,b) ", L"", {L"a,b"}, {L"a,b"}},
        {L"()", L"", {L""}, {L""}},
        {L"", L"", {}, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(toMultibyte(row.text));
        ZetStrList list = {L"before"};
        list.split(row.text, row.delims, true);
        EXPECT_EQ(list, row.kept);
        list.split(row.text, row.delims, false);
        EXPECT_EQ(list, row.withoutEmpty);
        EXPECT_EQ(ZetStrList(row.text, row.delims), row.kept);
    }
}

TEST(ZetStrList, splitsOneOfItsOwnElements)
{
    ZetStrList list = {L"x", L"a,b,c"};
    list.split(list[1], L",", true);
    EXPECT_EQ(list, (ZetStrList{L"a", L"b", L"c"}));
}

TEST(ZetStrList, joins)
{
    struct Row
    {
        ZetStrList list;
        const wchar_t* joined;
        const wchar_t* written;
    };
    const Row rows[] = {
        {{}, L"", L""},      {{L"a"}, L"a", L"(a)"}, {{L"a", L"b"}, L"a; b", L"(a,b)"}, {{L"", L""}, L"; ", L"(,)"},
        {{L""}, L"", L"()"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(row.list.toString(L"; "), row.joined);
        EXPECT_EQ(static_cast<ZetString>(row.list), row.written);
        std::wostringstream out;
        out << row.list;
        EXPECT_EQ(out.str(), row.written);
        std::wistringstream in(out.str());
        ZetStrList back = {L"before"};
        in >> back;
        EXPECT_EQ(back, row.list);
    }
}

TEST(ZetStrList, readsOneLine)
{
    std::wistringstream in(L"(a, b)\nc\n\nd");
    ZetStrList list;
    EXPECT_TRUE(in >> list);
    EXPECT_EQ(list, (ZetStrList{L"a", L" b"}));
    EXPECT_TRUE(in >> list);
    EXPECT_EQ(list, (ZetStrList{L"c"}));
    // an empty list prints nothing, and only an empty line reads back as one
    EXPECT_TRUE(in >> list);
    EXPECT_EQ(list, ZetStrList());
    std::wistringstream text(L"x");
    text >> list;
    EXPECT_EQ(list, (ZetStrList{L"x"}));
}

TEST(ZetStrList, findsTheLastOfEqualElements)
{
    const ZetStrList list = {L"a", L"b", L"A", L"a", L"\u00c4"};
    struct Row
    {
        const wchar_t* text;
        int exact;
        int folded;
    };
    const Row rows[] = {
        {L"a", 3, 3}, {L"A", 2, 3}, {L"b", 1, 1}, {L"B", -1, 1}, {L"c", -1, -1}, {L"", -1, -1}, {L"\u00e4", -1, -1},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(list.find(row.text, false), row.exact);
        EXPECT_EQ(list.find(row.text), row.exact);
        EXPECT_EQ(list.find(row.text, true), row.folded);
    }
    EXPECT_EQ(ZetStrList().find(L"a"), -1);
}

TEST(ZetStrList, removesEveryEqualElement)
{
    ZetStrList list = {L"a", L"b", L"a", L"A"};
    list.remove(L"x");
    EXPECT_EQ(list, (ZetStrList{L"a", L"b", L"a", L"A"}));
    list.remove(list[0]);
    EXPECT_EQ(list, (ZetStrList{L"b", L"A"}));
}

TEST(ZetStrList, inserts)
{
    ZetStrList list;
    list.insert(5, L"b");
    list.insert(0, L"a");
    list.insert(2, L"d");
    list.insert(2, L"c");
    EXPECT_EQ(list, (ZetStrList{L"a", L"b", L"c", L"d"}));
    ZetStrList two = {L"a", L"b"};
    two.insert(100, L"z");
    EXPECT_EQ(two, (ZetStrList{L"a", L"b", L"z"}));
}

TEST(ZetStrList, insertsOneOfItsOwnElements)
{
    ZetStrList list = fullList({L"first, and long enough to stand in memory of its own", L"b"});
    list.insert(2, list[0]);
    list.insert(0, list[1]);
    EXPECT_EQ(list[0], L"b");
    EXPECT_EQ(list[3], list[1]);
}

/// Where the elements stand; it changes when the storage grows.
const ZetString* storage(const ZetStrList& list)
{
    return &*list.begin();
}

TEST(ZetStrList, growsByTenThenTwofold)
{
    ZetStrList list;
    list.insert(0, L"x");
    std::vector<std::size_t> growths;
    const ZetString* before = storage(list);
    for (std::size_t count = 2; count <= 45; ++count) {
        list.insert(list.size(), L"x");
        if (storage(list) != before) {
            growths.push_back(count);
            before = storage(list);
        }
    }
    EXPECT_EQ(growths, (std::vector<std::size_t>{11, 21, 41}));
}

TEST(ZetStrList, resizes)
{
    ZetStrList list = {L"a", L"b"};
    list.resize(4);
    EXPECT_EQ(list, (ZetStrList{L"a", L"b", L"", L""}));
    list.resize(1);
    EXPECT_EQ(list, (ZetStrList{L"a"}));
    list.resize(0);
    EXPECT_TRUE(list.empty());
}

TEST(ZetStrList, sorts)
{
    struct Row
    {
        bool reverse;
        bool ignoreCase;
        ZetStrList sorted;
    };
    const Row rows[] = {
        {false, false, {L"", L"A", L"B", L"b1", L"c"}},
        {true, false, {L"c", L"b1", L"B", L"A", L""}},
        {false, true, {L"", L"A", L"B", L"b1", L"c"}},
        {true, true, {L"c", L"b1", L"B", L"A", L""}},
    };
    for (const Row& row : rows) {
        ZetStrList list = {L"c", L"B", L"b1", L"", L"A"};
        list.sort(row.reverse, row.ignoreCase);
        EXPECT_EQ(list, row.sorted);
    }
    ZetStrList mixed = {L"b", L"C", L"a"};
    mixed.sort(false, false);
    EXPECT_EQ(mixed, (ZetStrList{L"C", L"a", L"b"}));
    mixed.sort(false, true);
    EXPECT_EQ(mixed, (ZetStrList{L"a", L"b", L"C"}));
}

TEST(ZetStrList, isAValue)
{
    const ZetStrList list = {L"a", L"b"};
    ZetStrList copy = list;
    EXPECT_EQ(copy, list);
    copy[0] = L"x";
    EXPECT_NE(copy, list);
    EXPECT_EQ(list[0], L"a");
    copy = list;
    EXPECT_EQ(copy, list);
    copy.append(L"c");
    EXPECT_EQ(copy.size(), 3u);
    copy.clear();
    EXPECT_TRUE(copy.empty());
    EXPECT_NE((ZetStrList{L"a"}), (ZetStrList{L"A"}));
}

}  // namespace
}  // namespace zet

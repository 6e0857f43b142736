#include <zet/ZetDir>

#include <dirent.h>

#include <algorithm>
#include <iterator>
#include <vector>

#include <gtest/gtest.h>

#include "fileio/ZetState_p"
#include "support/ZetPrint"
#include "support/ZetScopedLocale"
#include "support/ZetScratchFolder"

namespace zet {
namespace {

using test::ZetScopedLocale;
using test::ZetScratchFolder;
using Names = std::vector<ZetString>;

/// The names in any order, sorted.
Names namesIn(const ZetDir& dir, const ZetString& pattern)
{
    Names names(dir.begin(pattern), dir.end());
    std::sort(names.begin(), names.end());
    return names;
}

int openDescriptors()
{
    const std::filesystem::directory_iterator entries("/proc/self/fd");
    return static_cast<int>(std::distance(begin(entries), end(entries)));
}

struct MatchRow
{
    const wchar_t* pattern;
    const wchar_t* name;
    bool matches;
};

const MatchRow kMatches[] = {
    {L"a", L"a", true},
    {L"a", L"b", false},
    {L"a", L"A", false},
    {L"a", L"ab", false},
    {L"ab", L"a", false},
    // an empty pattern matches only the empty name
    {L"", L"a", false},
    {L"", L"", true},
    {L"*", L"", true},
    {L"*", L"a", true},
    {L"*", L"..", true},
    {L"*.c", L"a.c", true},
    {L"*.c", L"a.cc", false},
    {L"*.c", L".c", true},
    {L"*.c", L"a.c.c", true},
    {L"*.c", L"c", false},
    {L"a*", L"a", true},
    {L"a*", L"abc", true},
    {L"a*", L"ba", false},
    {L"a*b", L"ab", true},
    {L"a*b", L"axxb", true},
    {L"a*b", L"axxbx", false},
    {L"a*b", L"a", false},
    // what stands before the star and what stands behind it do not overlap
    {L"ab*ab", L"ab", false},
    {L"ab*ab", L"aba", false},
    {L"ab*ab", L"abab", true},
    {L"ab*b", L"ab", false},
    {L"ab*", L"a", false},
    // no other wildcard
    {L"?", L"a", false},
    {L"?", L"?", true},
    {L"[a]", L"a", false},
    // a star in a name is a character
    {L"a*c", L"a*c", true},
    {L"a*", L"a*b", true},
    {L"ab", L"a*", false},
};

TEST(ZetDir, patternMatch)
{
    for (const MatchRow& row : kMatches) {
        ZetState_p state;
        state.acquireHandle(L"/none", row.pattern);
        EXPECT_EQ(state.patternMatch(row.name), row.matches)
            << ::testing::PrintToString(row.pattern) << " " << ::testing::PrintToString(row.name);
    }
}

TEST(ZetDir, namesThatMatch)
{
    const ZetScratchFolder folder;
    for (const char* name : {"a.c", "b.c", "a.cc", ".c", "a", "ab"}) {
        folder.write(name, "");
    }
    std::filesystem::create_directory(folder / "d.c");
    const ZetDir dir(folder.path().wstring());
    EXPECT_EQ(dir.className(), L"ZetDir");
    EXPECT_FALSE(dir.isMetaObject());
    EXPECT_EQ(dir.path(), folder.path().wstring());
    EXPECT_EQ(namesIn(dir, L"*"), (Names{L".", L"..", L".c", L"a", L"a.c", L"a.cc", L"ab", L"b.c", L"d.c"}));
    EXPECT_EQ(namesIn(dir, L"*.c"), (Names{L".c", L"a.c", L"b.c", L"d.c"}));
    EXPECT_EQ(namesIn(dir, L"a*"), (Names{L"a", L"a.c", L"a.cc", L"ab"}));
    EXPECT_EQ(namesIn(dir, L"a*c"), (Names{L"a.c", L"a.cc"}));
    EXPECT_EQ(namesIn(dir, L"ab"), (Names{L"ab"}));
    EXPECT_EQ(namesIn(dir, L"*a*"), Names());
    EXPECT_EQ(namesIn(dir, L"**"), Names());
    EXPECT_EQ(namesIn(dir, L""), Names());
    EXPECT_EQ(namesIn(dir, L"?"), Names());
}

TEST(ZetDir, namesComeInThePlatformsOrder)
{
    const ZetScratchFolder folder;
    for (int i = 0; i < 300; ++i) {
        folder.write(("f" + std::to_string(i * 7919 % 1000)).c_str(), "");
    }
    Names expected;
    DIR* const handle = ::opendir(folder.path().c_str());
    while (const dirent* entry = ::readdir(handle)) {
        expected.push_back(entry->d_name);
    }
    ::closedir(handle);
    EXPECT_EQ(expected.size(), 302u);
    const ZetDir dir(folder.path().wstring());
    EXPECT_EQ(Names(dir.begin(L"*"), dir.end()), expected);
}

TEST(ZetDir, emptyDirectory)
{
    const ZetScratchFolder folder;
    EXPECT_EQ(namesIn(ZetDir(folder.path().wstring()), L"*"), (Names{L".", L".."}));
}

TEST(ZetDir, longestName)
{
    const ZetScratchFolder folder;
    const std::string name(255, 'n');
    folder.write(name.c_str(), "");
    EXPECT_EQ(namesIn(ZetDir(folder.path().wstring()), L"n*"), (Names{ZetString(255, L'n')}));
}

TEST(ZetDir, directoryThatCannotBeOpened)
{
    const ZetScratchFolder folder;
    const ZetDir nowhere;
    EXPECT_TRUE(nowhere.begin(L"*") == nowhere.end());
    for (const auto& path : {folder / "none", folder.write("file", "")}) {
        const ZetDir dir(path.wstring());
        EXPECT_TRUE(dir.begin(L"*") == dir.end());
        EXPECT_FALSE(dir.begin(L"*") != dir.end());
    }
    const ZetScopedLocale plain("C");
    const ZetDir unnamable(L"/\x20ac");
    EXPECT_TRUE(unnamable.begin(L"*") == unnamable.end());
}

TEST(ZetDir, iteratorSteps)
{
    const ZetScratchFolder folder;
    folder.write("a1", "");
    folder.write("a2", "");
    const ZetDir dir(folder.path().wstring());
    ZetDir::Iterator name = dir.begin(L"a*");
    const ZetString first = *name;
    EXPECT_TRUE(name == dir.begin(L"a*"));
    name = dir.begin(L"a*");
    EXPECT_EQ(*name++, first);
    EXPECT_EQ(first + *name, first == L"a1" ? L"a1a2" : L"a2a1");
    EXPECT_TRUE(name != dir.end());
    EXPECT_TRUE(++name == dir.end());
    EXPECT_EQ(*name, L"");
    EXPECT_TRUE(++name == dir.end());

    // without a state, nothing changes
    ZetDir::Iterator end = dir.end();
    EXPECT_TRUE(++end == dir.end());
    EXPECT_TRUE(end++ == dir.end());
    EXPECT_TRUE(ZetDir::Iterator() == dir.end());
    ZetDir::Iterator named(ZetDir::StatePtr(), L"a");
    ++named;
    EXPECT_EQ(*named, L"a");
}

TEST(ZetDir, copiesShareTheIteration)
{
    const ZetScratchFolder folder;
    folder.write("a1", "");
    folder.write("a2", "");
    const ZetDir dir(folder.path().wstring());
    ZetDir::Iterator one = dir.begin(L"a*");
    ZetDir::Iterator other = one;
    const ZetString first = *one;
    ++one;
    EXPECT_EQ(*other, first);
    ++other;
    EXPECT_TRUE(other == dir.end());
    EXPECT_TRUE(one != dir.end());
}

TEST(ZetDir, aNewIterationEndsTheOneBefore)
{
    const ZetScratchFolder folder;
    folder.write("a1", "");
    folder.write("a2", "");
    ZetDir dir(folder.path().wstring());
    const int before = openDescriptors();

    ZetDir::Iterator first = dir.begin(L"a*");
    ZetDir::Iterator second = dir.begin(L"a*");
    EXPECT_EQ(openDescriptors(), before + 1);
    EXPECT_TRUE(first != dir.end());
    EXPECT_TRUE(++first == dir.end());
    EXPECT_TRUE(++second != dir.end());

    second = dir.begin(L"a*");
    dir.clearState();
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_TRUE(++second == dir.end());
    dir.clearState();

    second = dir.begin(L"a*");
    dir.setPath(L"/none");
    EXPECT_EQ(dir.path(), L"/none");
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_TRUE(++second == dir.end());
    EXPECT_TRUE(dir.begin(L"*") == dir.end());

    // a bad pattern ends it too
    dir.setPath(folder.path().wstring());
    second = dir.begin(L"a*");
    EXPECT_TRUE(dir.begin(L"**") == dir.end());
    EXPECT_TRUE(++second == dir.end());
    EXPECT_EQ(openDescriptors(), before);
}

TEST(ZetDir, iterationOutlivesItsDirectory)
{
    const ZetScratchFolder folder;
    folder.write("a1", "");
    folder.write("a2", "");
    const int before = openDescriptors();
    {
        ZetDir::Iterator name;
        {
            const ZetDir dir(folder.path().wstring());
            name = dir.begin(L"a*");
        }
        EXPECT_EQ(openDescriptors(), before + 1);
        EXPECT_TRUE(name != ZetDir::Iterator());
        EXPECT_TRUE(++name != ZetDir::Iterator());
    }
    EXPECT_EQ(openDescriptors(), before);
}

TEST(ZetDir, namesInTheLocale)
{
    const ZetScratchFolder folder;
    folder.write("a\xe2\x82\xac", "");
    folder.write("a\xff", "");
    folder.write("ab", "");
    const ZetDir dir(folder.path().wstring());
    {
        const ZetScopedLocale utf8("C.UTF-8");
        ASSERT_TRUE(utf8.isSet());
        EXPECT_EQ(namesIn(dir, L"a*"), (Names{L"ab", L"a\x20ac"}));
        EXPECT_EQ(namesIn(dir, L"*\x20ac"), (Names{L"a\x20ac"}));
    }
    const ZetScopedLocale plain("C");
    EXPECT_EQ(namesIn(dir, L"a*"), (Names{L"ab"}));
}

}  // namespace
}  // namespace zet

#include <zet/ZetMetaFlag>

#include <sstream>

#include <gtest/gtest.h>

#include <zet/ZetStrList>

namespace zet {
namespace {

struct KeyRow
{
    const wchar_t* key;
    int bit;
};

const KeyRow kKeys[] = {
    {L"Editable", 0},       {L"ReadOnly", 0x1},       {L"NoCrossRef", 0x2},   {L"NoPersist", 0x4},
    {L"Required", 0x8},     {L"Disabled", 0x10},      {L"Ignorable", 0x20},   {L"Hidden", 0x40},
    {L"Return", 0x80},      {L"System", 0x100},       {L"Expression", 0x200}, {L"MultiLine", 0x400},
    {L"InFileName", 0x800}, {L"OutFileName", 0x1000}, {L"Directory", 0x2000},
};

TEST(ZetMetaFlag, hasFifteenKeys)
{
    ASSERT_EQ(ZetMetaFlag::allKeys().size(), std::size(kKeys));
    for (std::size_t i = 0; i < std::size(kKeys); ++i) {
        const ZetString text = L"(" + ZetString(kKeys[i].key) + L")";
        EXPECT_EQ(ZetMetaFlag::allKeys()[i], kKeys[i].key);
        EXPECT_EQ(ZetMetaFlag(kKeys[i].bit).toString(), text);
        EXPECT_EQ(ZetMetaFlag::fromString(text), kKeys[i].bit);
    }
    EXPECT_EQ(ZetMetaFlag().className(), L"ZetMetaFlag");
    EXPECT_EQ(ZetMetaFlag().flags(), 0);
}

struct PrintRow
{
    int word;
    const wchar_t* text;
};

TEST(ZetMetaFlag, prints)
{
    const PrintRow rows[] = {
        {0, L"(Editable)"},
        {5, L"(ReadOnly | NoPersist)"},
        {0x7f, L"(ReadOnly | NoCrossRef | NoPersist | Required | Disabled | Ignorable | Hidden)"},
        {0x2701, L"(ReadOnly | System | Expression | MultiLine | Directory)"},
        // a bit outside the table prints nothing
        {0x4000, L"()"},
        {0x4008, L"(Required)"},
    };
    for (const PrintRow& row : rows) {
        EXPECT_EQ(ZetMetaFlag(row.word).toString(), row.text) << row.word;
        std::wostringstream out;
        out << ZetMetaFlag(row.word);
        EXPECT_EQ(out.str(), row.text) << row.word;
    }
}

struct ReadRow
{
    const wchar_t* text;
    int before;
    int after;
    bool fails;
    const wchar_t* rest;
};

TEST(ZetMetaFlag, reads)
{
    const ReadRow rows[] = {
        {L"(Required|Hidden)", 0, 0x48, false, L""},
        {L"(required|hidden)", 0, 0x48, false, L""},
        {L"(Required|Hidden|Bogus)", 0, 0x48, false, L""},
        {L"(readonly|HIDDEN)", 0, 0x41, false, L""},
        {L"  ( ReadOnly  |\tHidden )x", 0, 0x41, false, L"x"},
        {L"(Bogus)", 0, 0, false, L""},
        {L"(Bogus|Required|more)", 0, 0x8, false, L""},
        {L"()", 0, 0, false, L""},
        {L"(Editable)", 0, 0, false, L""},
        // without a bracket, one word
        {L"Required|System tail", 0, 0x108, false, L" tail"},
        {L"R", 0, 0, false, L""},
        // a missing bracket leaves the word
        {L"(Required|Hidden", 0, 0, true, L""},
        {L"(Required|Hidden", 0x20, 0x20, true, L""},
        {L"", 0x20, 0x20, true, L""},
        // KEPT: the word is not cleared first
        {L"(Hidden)", 0x1, 0x41, false, L""},
        {L"(Editable)", 0x1, 0x1, false, L""},
        // setting a flag ends with validation
        {L"(Return|NoCrossRef)", 0, 0x80, false, L""},
        {L"(NoCrossRef)", 0x80, 0x80, false, L""},
        {L"(InFileName|Directory|Required)", 0, 0x8, false, L""},
    };
    for (const ReadRow& row : rows) {
        std::wistringstream in(row.text);
        ZetMetaFlag flag(row.before);
        in >> flag;
        EXPECT_EQ(flag.flags(), row.after) << toMultibyte(row.text);
        EXPECT_EQ(in.fail(), row.fails) << toMultibyte(row.text);
        in.clear();
        std::wstring rest;
        std::getline(in, rest, L'\0');
        EXPECT_EQ(rest, row.rest) << toMultibyte(row.text);
    }
}

TEST(ZetMetaFlag, readingAddsToTheWord)
{
    std::wistringstream in(L"(Hidden)(Required)");
    ZetMetaFlag flag(ZetMetaFlag::ReadOnly);
    in >> flag >> flag;
    EXPECT_EQ(flag.flags(), 0x49);
}

TEST(ZetMetaFlag, fromStringStartsFromAnEmptyWord)
{
    EXPECT_EQ(ZetMetaFlag::fromString(L"(Required | Hidden)"), 0x48);
    EXPECT_EQ(ZetMetaFlag::fromString(L"(required|hidden)"), 0x48);
    EXPECT_EQ(ZetMetaFlag::fromString(L"(required|hidden|unknown)"), 0x48);
    EXPECT_EQ(ZetMetaFlag::fromString(L"(required"), 0);
    EXPECT_EQ(ZetMetaFlag::fromString(L""), 0);
}

struct ValidateRow
{
    int before;
    int after;
};

TEST(ZetMetaFlag, validates)
{
    const ValidateRow rows[] = {
        {0x82, 0x80}, {0x2, 0x2},  {0x80, 0x80}, {0x800, 0x800}, {0x1000, 0x1000}, {0x2000, 0x2000},
        {0x1800, 0},  {0x2800, 0}, {0x3000, 0},  {0x3800, 0},    {0x3807, 0x7},    {0x2882, 0x80},
    };
    for (const ValidateRow& row : rows) {
        EXPECT_EQ(ZetMetaFlag(row.before).flags(), row.after) << row.before;
        ZetMetaFlag flag;
        flag.setFlags(row.before);
        EXPECT_EQ(flag.flags(), row.after) << row.before;
    }
    ZetMetaFlag flag(ZetMetaFlag::InFileName);
    flag.setFlag(ZetMetaFlag::Directory);
    EXPECT_EQ(flag.flags(), 0);
    flag.setFlag(ZetMetaFlag::Hidden);
    flag.setFlag(ZetMetaFlag::System);
    flag.setFlag(ZetMetaFlag::Hidden, false);
    EXPECT_TRUE(flag.isSet(ZetMetaFlag::System));
    EXPECT_FALSE(flag.isSet(ZetMetaFlag::Hidden));
    EXPECT_EQ(flag, 0x100);
}

}  // namespace
}  // namespace zet

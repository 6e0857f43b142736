#include <zet/ZetTextMsg>

#include <algorithm>
#include <limits>
#include <locale>
#include <memory>
#include <sstream>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/ZetPrint"

namespace zet {
namespace {

ZetString written(const ZetTextMsg& message)
{
    std::wostringstream out;
    out << message;
    return out.str();
}

TEST(ZetTextMsg, reducesItsKind)
{
    struct Row
    {
        int given;
        int kind;
        const wchar_t* word;
    };
    const Row rows[] = {
        {0, 0, L"error"},
        {1, 1, L"warning"},
        {2, 2, L"info"},
        {3, 3, L"debug"},
        {4, 4, L"user"},
        {7, 4, L"user"},
        {8, 4, L"user"},
        {-1, 4, L"user"},
        {std::numeric_limits<int>::max(), 4, L"user"},
        {std::numeric_limits<int>::min(), 4, L"user"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.given);
        const ZetTextMsg message(L"bad", L"ZetBuffer", 7, row.given);
        EXPECT_EQ(message.kind(), row.kind);
        EXPECT_EQ(message.givenKind(), row.given);
        EXPECT_EQ(written(message), row.word + ZetString(L": bad - (ZetBuffer : 7)"));
        EXPECT_EQ(ZetTextMsg(L"bad", row.given).kind(), row.kind);
    }
}

TEST(ZetTextMsg, keepsItsFields)
{
    const ZetTextMsg message(L"text", L"ZetUnits", 12, ZetTextMsg::Warning);
    EXPECT_EQ(message.code(), 0);
    EXPECT_EQ(message.kind(), ZetTextMsg::Warning);
    EXPECT_EQ(message.line(), 12);
    EXPECT_EQ(message.file(), L"ZetUnits");
    EXPECT_EQ(message.text(), L"text");
    EXPECT_EQ(message.className(), L"ZetTextMsg");
    EXPECT_FALSE(message.isMetaObject());
}

TEST(ZetTextMsg, fromAnUnknownPlace)
{
    const ZetTextMsg message(L"text", ZetTextMsg::Info);
    EXPECT_EQ(message.file(), L"<filename unknown>");
    EXPECT_EQ(message.line(), 0);
    EXPECT_EQ(written(message), L"info: text - (<filename unknown> : 0)");
    EXPECT_EQ(&ZetTextMsg::unknown(), &ZetTextMsg::unknown());
}

TEST(ZetTextMsg, cutsPaths)
{
    struct Row
    {
        const wchar_t* path;
        const wchar_t* name;
    };
    const Row rows[] = {
        {L"a/b\\c.x", L"c.x"}, {L"a\\b/c.x", L"c.x"}, {L"/c.x", L"c.x"}, {L"c.x", L"c.x"}, {L"", L""},
        {L"a/", L""},          {L"\\", L""},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(ZetTextMsg::trimFname(row.path), row.name);
        EXPECT_EQ(ZetTextMsg(L"t", row.path, 1, 0).file(), row.name);
    }
}

TEST(ZetTextMsg, setTextOverwritesEverything)
{
    ZetTextMsg message(L"old", L"Old", 1, ZetTextMsg::Error);
    message.setText(L"new", L"dir/New", 2, 9);
    EXPECT_EQ(message, ZetTextMsg(L"new", L"New", 2, 9));
    EXPECT_EQ(message.givenKind(), 9);
    EXPECT_EQ(message.kind(), ZetTextMsg::User);
    // its own texts
    message.setText(message.file(), message.text(), 3, 0);
    EXPECT_EQ(message, ZetTextMsg(L"New", L"new", 3, 0));
}

TEST(ZetTextMsg, clearLeavesAnEmptyError)
{
    ZetTextMsg message(L"text", L"File", 3, ZetTextMsg::Debug);
    message.clear();
    EXPECT_EQ(message.code(), 0);
    EXPECT_EQ(message.kind(), 0);
    EXPECT_EQ(message.givenKind(), 0);
    EXPECT_EQ(message.line(), 0);
    EXPECT_EQ(message.text(), L"");
    EXPECT_EQ(message.file(), L"<filename unknown>");
}

TEST(ZetTextMsg, comparesAllFields)
{
    const ZetTextMsg message(L"text", L"File", 3, 7);
    const ZetTextMsg others[] = {
        {L"other", L"File", 3, 7},
        {L"text", L"Other", 3, 7},
        {L"text", L"File", 4, 7},
        // both are "user"
        {L"text", L"File", 3, 8},
        {L"text", L"File", 3, 1},
    };
    for (const ZetTextMsg& other : others) {
        EXPECT_FALSE(message == other);
        EXPECT_TRUE(message != other);
        EXPECT_FALSE(message.isEqual(&other));
    }
    const ZetTextMsg same(L"text", L"dir/File", 3, 7);
    EXPECT_TRUE(message == same);
    EXPECT_FALSE(message != same);
    EXPECT_TRUE(message.isEqual(&same));
    EXPECT_FALSE(message.isEqual(nullptr));
}

TEST(ZetTextMsg, copies)
{
    const ZetTextMsg message(L"text", L"File", 3, 7);
    ZetTextMsg copy(message);
    EXPECT_EQ(copy, message);
    copy.clear();
    copy = message;
    EXPECT_EQ(copy, message);
    const ZetTextMsg& self = copy;
    copy = self;
    EXPECT_EQ(copy, message);
    const std::unique_ptr<ZetTextMsg> clone(message.clone());
    EXPECT_EQ(*clone, message);
    EXPECT_NE(clone.get(), &message);
}

TEST(ZetTextMsg, anEmptyTextPrintsNothing)
{
    const ZetTextMsg message(L"", L"File", 3, ZetTextMsg::Error);
    EXPECT_EQ(written(message), L"");
    std::ostringstream narrow;
    narrow << message;
    EXPECT_EQ(narrow.str(), "");
}

TEST(ZetTextMsg, whatIsTheWideBuffer)
{
    const ZetTextMsg message(L"bad", L"File", 3, ZetTextMsg::Error);
    EXPECT_EQ(static_cast<const void*>(message.what()), static_cast<const void*>(message.text().c_str()));
    // A reader of narrow text sees the first character, and the zero bytes behind it.
    EXPECT_STREQ(message.what(), "b");
}

/// \p text with "#" in the place of every address.
std::string withoutAddresses(std::string text)
{
    for (std::size_t at = text.find("0x"); at != std::string::npos; at = text.find("0x")) {
        const std::size_t end = text.find_first_not_of("0123456789abcdef", at + 2);
        text.replace(at, std::min(end, text.size()) - at, "#");
    }
    return text;
}

TEST(ZetTextMsg, narrowStreamPrintsPointers)
{
    std::ostringstream out;
    out.imbue(std::locale::classic());
    // Parts that begin with no hexadecimal digit, so that it can be seen where an address ends.
    out << ZetTextMsg(L"text", L"ZetFile", -7, ZetTextMsg::Error);
    EXPECT_EQ(withoutAddresses(out.str()), "error#text#ZetFile#-7#");
}

TEST(ZetTextMsg, isAnExceptionFirst)
{
    static_assert(std::is_base_of_v<std::exception, ZetTextMsg> && std::is_base_of_v<ZetObject, ZetTextMsg>);
    const ZetTextMsg message(L"x", 0);
    EXPECT_EQ(static_cast<const void*>(static_cast<const std::exception*>(&message)),
              static_cast<const void*>(&message));
    try {
        throw ZetTextMsg(L"thrown", ZetTextMsg::Error);
    } catch (const std::exception& caught) {
        EXPECT_EQ(dynamic_cast<const ZetTextMsg&>(caught).text(), L"thrown");
    }
}

}  // namespace
}  // namespace zet

#include <zet/ZetTempFile>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <set>
#include <sstream>
#include <stdexcept>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "fileio/ZetTempName"
#include "support/ZetCollectingHandler"
#include "support/ZetNoMemory"
#include "support/ZetScopedLocale"
#include "support/ZetScratchFolder"

namespace zet {
namespace {

using test::postedBy;
using test::thrownBy;
using test::ZetNoMemory;
using test::ZetScopedLocale;
using test::ZetScratchFolder;

bool isThere(const ZetString& name)
{
    return ::access(toMultibyte(name).c_str(), F_OK) == 0;
}

ZetString textOf(const ZetTempFile& file)
{
    std::wostringstream out;
    file.fileToStream(out);
    return out.str();
}

TEST(ZetTempFile, closedFile)
{
    ZetTempFile file;
    EXPECT_EQ(file.className(), L"ZetTempFile");
    EXPECT_FALSE(file.isMetaObject());
    EXPECT_TRUE(file.deleteOnClose());
    EXPECT_EQ(file.name(), L"");
    EXPECT_EQ(file.close(), 0);
    char byte = 'x';
    EXPECT_EQ(file.read(&byte, 1), -1);
    EXPECT_EQ(file.write(&byte, 1), -1);
    EXPECT_EQ(file.seek(0, SEEK_SET), -1);
    EXPECT_EQ(textOf(file), L"");
}

TEST(ZetTempFile, generatedName)
{
    ZetTempFile file;
    ASSERT_EQ(file.open(L"w+", true), 0);
    const ZetString name = file.name();
    EXPECT_TRUE(isThere(name));
    // the platform keeps at least five characters of the prefix
    EXPECT_NE(name.find(L"/vanta"), ZetString::npos);
    if (!std::getenv("TMPDIR")) {
        EXPECT_EQ(name.substr(0, 10), L"/tmp/vanta");
    }
    EXPECT_EQ(file.write("abc", 3), 3);
    EXPECT_EQ(file.close(), 0);
    EXPECT_FALSE(isThere(name));
    EXPECT_EQ(file.name(), L"");
}

TEST(ZetTempFile, openingAgainRemovesTheFileBefore)
{
    ZetTempFile file;
    ASSERT_EQ(file.open(L"w", true), 0);
    const ZetString first = file.name();
    ASSERT_EQ(file.open(L"w", false), 0);
    const ZetString second = file.name();
    EXPECT_NE(first, second);
    EXPECT_FALSE(isThere(first));
    EXPECT_TRUE(isThere(second));
    EXPECT_FALSE(file.deleteOnClose());
    // the name of the open file itself will do
    ASSERT_EQ(file.open(file.name().c_str(), L"r", true), 0);
    EXPECT_EQ(file.name(), second);
    EXPECT_TRUE(file.deleteOnClose());
    file.close();
    EXPECT_FALSE(isThere(second));
}

TEST(ZetTempFile, destructorCloses)
{
    ZetString name;
    {
        ZetTempFile file;
        ASSERT_EQ(file.open(L"w", true), 0);
        name = file.name();
        EXPECT_TRUE(isThere(name));
    }
    EXPECT_FALSE(isThere(name));
}

TEST(ZetTempFile, fileThatStays)
{
    const ZetScratchFolder folder;
    const auto path = folder / "file";
    ZetTempFile file;
    ASSERT_EQ(file.open(path.wstring().c_str(), L"w", false), 0);
    EXPECT_EQ(file.name(), path.wstring());
    EXPECT_EQ(file.write("abc", 3), 3);
    EXPECT_EQ(file.close(), 0);
    EXPECT_EQ(file.name(), L"");
    EXPECT_EQ(ZetScratchFolder::bytesOf(path), "abc");
}

TEST(ZetTempFile, readsWritesAndSeeks)
{
    ZetTempFile file;
    ASSERT_EQ(file.open(L"w+", true), 0);
    EXPECT_EQ(file.write("0123456789", 10), 10);
    EXPECT_EQ(file.write("", 0), 0);
    EXPECT_EQ(file.seek(2, SEEK_SET), 0);
    char bytes[16] = {};
    EXPECT_EQ(file.read(bytes, 3), 3);
    EXPECT_STREQ(bytes, "234");
    EXPECT_EQ(file.read(bytes, 0), 0);
    // fewer at the end
    EXPECT_EQ(file.read(bytes, 16), 5);
    EXPECT_STREQ(bytes, "56789");
    EXPECT_EQ(file.read(bytes, 16), 0);
    EXPECT_EQ(file.seek(-1, SEEK_SET), -1);
    EXPECT_EQ(file.seek(-1, SEEK_END), 0);
    EXPECT_EQ(file.read(bytes, 1), 1);
    EXPECT_EQ(bytes[0], '9');
}

TEST(ZetTempFile, transfersThatFail)
{
    const ZetScratchFolder folder;
    const auto path = folder.write("file", "abc");
    char bytes[4] = {};
    ZetTempFile file;
    ASSERT_EQ(file.open(path.wstring().c_str(), L"w", false), 0);
    EXPECT_EQ(file.read(bytes, 4), -1);
    ASSERT_EQ(file.open(path.wstring().c_str(), L"r", false), 0);
    EXPECT_EQ(file.write("a", 1), -1);
}

// The device takes nothing, as a full disk does.
TEST(ZetTempFile, fullDisk)
{
    ZetTempFile file;
    ASSERT_EQ(file.open(L"/dev/full", L"w", false), 0);
    const std::string much(1 << 20, 'x');
    EXPECT_EQ(file.write(much.data(), much.size()), -1);
    // what lies in the buffer fails at the end, and the file is closed all the same
    ASSERT_EQ(file.open(L"/dev/full", L"w", false), 0);
    EXPECT_EQ(file.write("a", 1), 1);
    EXPECT_EQ(file.close(), EOF);
    EXPECT_EQ(file.name(), L"");
    EXPECT_EQ(file.write("a", 1), -1);
    EXPECT_EQ(file.close(), 0);
}

TEST(ZetTempFile, fileToStreamEndsAtThePosition)
{
    ZetTempFile file;
    ASSERT_EQ(file.open(L"w+", true), 0);
    EXPECT_EQ(textOf(file), L"\n");
    EXPECT_EQ(file.write("abc\ndef", 7), 7);
    EXPECT_EQ(textOf(file), L"abc\ndef\n");
    // the position stays behind what was read
    EXPECT_EQ(file.write("gh", 2), 2);
    EXPECT_EQ(textOf(file), L"abc\ndefgh\n");
    EXPECT_EQ(file.seek(2, SEEK_SET), 0);
    EXPECT_EQ(textOf(file), L"ab\n");
    char byte = 0;
    EXPECT_EQ(file.read(&byte, 1), 1);
    EXPECT_EQ(byte, 'c');
    // a zero byte ends the text, not the reading
    EXPECT_EQ(file.seek(1, SEEK_SET), 0);
    EXPECT_EQ(file.write("\0", 1), 1);
    EXPECT_EQ(file.seek(5, SEEK_SET), 0);
    EXPECT_EQ(textOf(file), L"a\n");
    EXPECT_EQ(file.read(&byte, 1), 1);
    EXPECT_EQ(byte, 'e');
}

TEST(ZetTempFile, fileToStreamOfAFileWithoutPosition)
{
    const ZetScratchFolder folder;
    const auto path = folder / "pipe";
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    ZetTempFile file;
    ASSERT_EQ(file.open(path.wstring().c_str(), L"r+", true), 0);
    EXPECT_EQ(textOf(file), L"");
}

TEST(ZetTempFile, fileToStreamWithoutMemory)
{
    ZetTempFile file;
    ASSERT_EQ(file.open(L"w+", true), 0);
    EXPECT_EQ(file.write("abc", 3), 3);
    ZetString text = L"before";
    std::vector<ZetTextMsg> posted;
    {
        const ZetNoMemory none;
        posted = postedBy([&] { text = textOf(file); });
        EXPECT_EQ(thrownBy([&] { textOf(file); }).text(), L"Cannot allocate '4' bytes for buffer.");
    }
    ASSERT_EQ(posted.size(), 1u);
    EXPECT_EQ(posted[0].text(), L"Cannot allocate '4' bytes for buffer.");
    EXPECT_EQ(text, L"");
    EXPECT_EQ(textOf(file), L"abc\n");
}

TEST(ZetTempFile, openWithoutMode)
{
    const wchar_t* const message = L"The passed mode for file open cannot be null or empty.";
    for (const wchar_t* mode : {static_cast<const wchar_t*>(nullptr), L""}) {
        ZetTempFile file;
        EXPECT_EQ(thrownBy([&] { file.open(L"/tmp/name", mode, false); }).text(), message);
        EXPECT_EQ(thrownBy([&] { file.open(mode, false); }).text(), message);

        ASSERT_EQ(file.open(L"w", true), 0);
        const ZetString before = file.name();
        int status = 0;
        const auto posted = postedBy([&] { status = file.open(L"/tmp/name", mode, false); });
        EXPECT_EQ(status, -1);
        ASSERT_EQ(posted.size(), 1u);
        EXPECT_EQ(posted[0].text(), message);
        EXPECT_EQ(posted[0].file(), L"ZetTempFile");
        EXPECT_EQ(posted[0].kind(), ZetTextMsg::Error);
        // what was open is closed, and the wish is kept
        EXPECT_FALSE(isThere(before));
        EXPECT_EQ(file.name(), L"");
        EXPECT_FALSE(file.deleteOnClose());
        EXPECT_EQ(file.seek(0, SEEK_SET), -1);
    }
}

TEST(ZetTempFile, openThatFails)
{
    const ZetScratchFolder folder;
    const ZetString name = (folder / "none").wstring();
    const ZetString message = L"Unable to fopen(r) temporary file '" + name + L"'.";
    ZetTempFile file;
    EXPECT_EQ(thrownBy([&] { file.open(name.c_str(), L"r", true); }).text(), message);
    EXPECT_EQ(file.name(), L"");

    int status = 0;
    const auto posted = postedBy([&] { status = file.open(name.c_str(), L"r", true); });
    EXPECT_EQ(status, -1);
    ASSERT_EQ(posted.size(), 1u);
    EXPECT_EQ(posted[0].text(), message);
    EXPECT_EQ(posted[0].file(), L"ZetTempFile");
    EXPECT_EQ(file.name(), L"");
    EXPECT_EQ(file.close(), 0);

    EXPECT_EQ(thrownBy([&] { file.open(nullptr, L"r", true); }).text(), L"Unable to fopen(r) temporary file ''.");
    // a generated name is told in the message too
    const ZetString generated = thrownBy([&] { file.open(L"q", true); }).text();
    EXPECT_EQ(generated.substr(0, 33), L"Unable to fopen(q) temporary file");
    EXPECT_NE(generated.find(L"/vanta"), ZetString::npos);
}

TEST(ZetTempFile, noNameToBeHad)
{
    const wchar_t* const message = L"Unable to create name for a temporary file.";
    ZetTempFile file;
    ASSERT_EQ(file.open(L"w", true), 0);
    const ZetString before = file.name();
    auto* const platform = internal::makeTempName;
    internal::makeTempName = [](const char* directory, const char* prefix) -> char* {
        EXPECT_STREQ(directory, "/tmp");
        EXPECT_STREQ(prefix, "vanta_");
        return nullptr;
    };
    int status = 0;
    const auto posted = postedBy([&] { status = file.open(L"w", true); });
    EXPECT_EQ(thrownBy([&] { file.open(L"w", true); }).text(), message);
    internal::makeTempName = platform;
    EXPECT_EQ(status, -1);
    ASSERT_EQ(posted.size(), 1u);
    EXPECT_EQ(posted[0].text(), message);
    EXPECT_EQ(posted[0].file(), L"ZetTempFile");
    // the file that was open still is
    EXPECT_EQ(file.name(), before);
    EXPECT_EQ(file.write("a", 1), 1);
}

TEST(ZetTempFile, namesInTheLocale)
{
    const ZetScratchFolder folder;
    ZetTempFile file;
    {
        const ZetScopedLocale utf8("C.UTF-8");
        ASSERT_TRUE(utf8.isSet());
        ASSERT_EQ(file.open((toWide(folder.path().string()) + L"/\x20ac").c_str(), L"w", true), 0);
        EXPECT_TRUE(std::filesystem::exists(folder / "\xe2\x82\xac"));
    }
    const ZetScopedLocale plain("C");
    // the file that was opened is the one that goes, also under a locale without its name
    EXPECT_THROW(file.open(L"/tmp/\x20ac", L"w", true), std::length_error);
    EXPECT_FALSE(std::filesystem::exists(folder / "\xe2\x82\xac"));
    EXPECT_EQ(file.name(), L"");
    EXPECT_EQ(file.seek(0, SEEK_SET), -1);
}

TEST(ZetTempFile, threadsGenerateNamesAtOnce)
{
    constexpr std::size_t kThreads = 4;
    std::vector<std::vector<ZetTempFile>> files(kThreads);
    std::vector<std::thread> threads;
    for (std::vector<ZetTempFile>& own : files) {
        own = std::vector<ZetTempFile>(25);
        threads.emplace_back([&own] {
            for (ZetTempFile& file : own) {
                file.open(L"w", true);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::set<ZetString> names;
    for (const std::vector<ZetTempFile>& own : files) {
        for (const ZetTempFile& file : own) {
            EXPECT_TRUE(isThere(file.name()));
            names.insert(file.name());
        }
    }
    EXPECT_EQ(names.size(), kThreads * 25);
}

}  // namespace
}  // namespace zet

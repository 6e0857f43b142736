#include <zet/ZetFileInfo>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

#include <gtest/gtest.h>

#include <zet/ZetDirControl>

#include "support/ZetPrint"
#include "support/ZetScopedLocale"
#include "support/ZetScratchFolder"

namespace zet {
namespace {

using test::ZetScopedLocale;
using test::ZetScratchFolder;

struct CleanRow
{
    const wchar_t* given;
    const wchar_t* path;
};

const CleanRow kClean[] = {
    {L"", L""},
    {L"a", L"a"},
    {L"a/b/c", L"a/b/c"},
    {L".", L"."},
    {L"..", L".."},
    {L"/", L"/"},
    // "/./" loses two characters, again and again
    {L"a/./b", L"a/b"},
    {L"a/././b", L"a/b"},
    {L"/././.", L"/."},
    {L"/./", L"/"},
    {L"a/.b/./.c", L"a/.b/.c"},
    {L"a/.", L"a/."},
    // then "//" loses one
    {L"a//b", L"a/b"},
    {L"////", L"/"},
    {L"//a///b", L"/a/b"},
    {L"a/.//b", L"a/b"},
    // a "/./" that comes of that stays
    {L"a//./b", L"a/b"},
    {L"a/././/./b", L"a/b"},
    // then "./" goes from the start, once
    {L"./a", L"a"},
    {L"./", L"."},
    {L".//", L"."},
    {L"././", L"."},
    {L"./././a", L"a"},
    {L"./.", L"."},
    {L"./..", L".."},
    {L".a", L".a"},
    {L"../a", L"../a"},
    // then a slash from the end
    {L"a/", L"a"},
    {L"a//", L"a"},
    {L"/a/", L"/a"},
    {L"./a/", L"a"},
    // ".." is not resolved, a backslash is a character
    {L"a/../b", L"a/../b"},
    {L"a\\.\\b\\\\c\\", L"a\\.\\b\\\\c\\"},
    {L".\\a", L".\\a"},
};

TEST(ZetFileInfo, cleansPaths)
{
    EXPECT_EQ(ZetFileInfo().className(), L"ZetFileInfo");
    EXPECT_EQ(ZetFileInfo().filePath(), L"");
    EXPECT_FALSE(ZetFileInfo().isMetaObject());
    for (const CleanRow& row : kClean) {
        EXPECT_EQ(ZetFileInfo(row.given).filePath(), row.path) << ::testing::PrintToString(row.given);
        ZetFileInfo info(L"before");
        info.setFile(row.given);
        EXPECT_EQ(info.filePath(), row.path);
    }
}

struct PieceRow
{
    const wchar_t* file;
    const wchar_t* path;
    const wchar_t* baseName;
    const wchar_t* suffix;
    bool isAbsolute;
};

const PieceRow kPieces[] = {
    {L"", L".", L"", L"", false},
    {L"a", L".", L"a", L"", false},
    {L"/a", L"/", L"a", L"", true},
    {L"/", L"/", L"", L"", true},
    {L"a/b/c", L"a/b", L"c", L"", false},
    {L"/a/b", L"/a", L"b", L"", true},
    {L"a/b.c", L"a", L"b.c", L".c", false},
    {L"a.b.c", L".", L"a.b.c", L".c", false},
    {L"a.d/b", L"a.d", L"b", L".d/b", false},
    {L"a.", L".", L"a.", L".", false},
    {L".profile", L".", L".profile", L".profile", false},
    // both separators
    {L"a\\b", L"a", L"b", L"", false},
    {L"a/b\\c", L"a/b", L"c", L"", false},
    {L"a\\b/c", L"a\\b", L"c", L"", false},
    {L"\\a", L"\\", L"a", L"", false},
    {L"a\\", L"a", L"", L"", false},
    {L"C:\\x.y\\z", L"C:\\x.y", L"z", L".y\\z", false},
};

TEST(ZetFileInfo, takesPathsApart)
{
    for (const PieceRow& row : kPieces) {
        SCOPED_TRACE(::testing::PrintToString(row.file));
        const ZetFileInfo info(row.file);
        EXPECT_EQ(info.path(), row.path);
        EXPECT_EQ(info.baseName(), row.baseName);
        EXPECT_EQ(info.suffix(), row.suffix);
        EXPECT_EQ(info.isAbsolute(), row.isAbsolute);
    }
}

TEST(ZetFileInfo, suffix)
{
    EXPECT_EQ(ZetFileInfo(L"a.d/b").suffix(), L".d/b");
    EXPECT_EQ(ZetFileInfo(L"a.d/b.c").suffix(), L".c");
}

TEST(ZetFileInfo, absolutePaths)
{
    const ZetString here = ZetDirControl::getcwd();
    ASSERT_EQ(here.substr(0, 1), L"/");
    EXPECT_EQ(ZetFileInfo(L"a").absoluteFilePath(), here + L"/a");
    EXPECT_EQ(ZetFileInfo(L"a").absolutePath(), here);
    EXPECT_EQ(ZetFileInfo(L"a/b").absoluteFilePath(), here + L"/a/b");
    EXPECT_EQ(ZetFileInfo(L"a/b").absolutePath(), here + L"/a");
    EXPECT_EQ(ZetFileInfo(L"a\\b").absolutePath(), here + L"/a");
    EXPECT_EQ(ZetFileInfo(L"\\a").absoluteFilePath(), here + L"/\\a");
    EXPECT_EQ(ZetFileInfo(L"/a").absoluteFilePath(), L"/a");
    EXPECT_EQ(ZetFileInfo(L"/a").absolutePath(), L"/");
    EXPECT_EQ(ZetFileInfo(L"/").absolutePath(), L"/");
    EXPECT_EQ(ZetFileInfo(L"/a/b").absolutePath(), L"/a");
    EXPECT_EQ(ZetFileInfo(L"/a\\b").absolutePath(), L"/a");
    EXPECT_EQ(ZetFileInfo(L"").absoluteFilePath(), L"");
    EXPECT_EQ(ZetFileInfo(L"").absolutePath(), L"");
}

TEST(ZetFileInfo, asksThePlatform)
{
    const ZetScratchFolder folder;
    const auto path = folder.write("file", "12345");
    const ZetFileInfo info(path.wstring());
    EXPECT_EQ(info.access(F_OK), 0);
    EXPECT_EQ(info.access(R_OK), 0);
    struct ::stat64 status = {};
    EXPECT_EQ(info.stat(status), 0);
    EXPECT_EQ(status.st_size, 5);

    for (const ZetString& missing : {ZetString((folder / "none").wstring()), ZetString()}) {
        const ZetFileInfo none(missing);
        EXPECT_EQ(none.access(F_OK), -1);
        EXPECT_EQ(none.stat(status), -1);
        EXPECT_EQ(errno, ENOENT);
        EXPECT_FALSE(none.isDir());
        EXPECT_FALSE(none.isFile());
    }
}

TEST(ZetFileInfo, kindsOfFiles)
{
    const ZetScratchFolder folder;
    const ZetFileInfo file(folder.write("file", "").wstring());
    EXPECT_TRUE(file.isFile());
    EXPECT_FALSE(file.isDir());
    const ZetFileInfo directory(folder.path().wstring());
    EXPECT_FALSE(directory.isFile());
    EXPECT_TRUE(directory.isDir());
    // a link is what it leads to
    std::filesystem::create_directory_symlink(folder.path(), folder / "link");
    EXPECT_FALSE(ZetFileInfo((folder / "link").wstring()).isFile());
    EXPECT_TRUE(ZetFileInfo((folder / "link").wstring()).isDir());
    // a character device is neither
    EXPECT_FALSE(ZetFileInfo(L"/dev/null").isFile());
    EXPECT_FALSE(ZetFileInfo(L"/dev/null").isDir());

    // a socket has both bits
    const auto path = folder / "socket";
    struct ::sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    ASSERT_LT(path.string().size(), sizeof address.sun_path);
    std::strcpy(address.sun_path, path.c_str());
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
    ASSERT_NE(descriptor, -1);
    ASSERT_EQ(::bind(descriptor, reinterpret_cast<const struct ::sockaddr*>(&address), sizeof address), 0);
    EXPECT_TRUE(ZetFileInfo(path.wstring()).isFile());
    EXPECT_TRUE(ZetFileInfo(path.wstring()).isDir());
    ::close(descriptor);
}

// Where the machine shows a block device, it is a directory and no file.
TEST(ZetFileInfo, blockDevice)
{
    for (const auto& entry : std::filesystem::directory_iterator("/dev")) {
        std::error_code ignored;
        if (entry.is_block_file(ignored)) {
            EXPECT_TRUE(ZetFileInfo(entry.path().wstring()).isDir()) << entry.path();
            EXPECT_FALSE(ZetFileInfo(entry.path().wstring()).isFile()) << entry.path();
        }
    }
}

TEST(ZetFileInfo, namesInTheLocale)
{
    const ZetScratchFolder folder;
    const ZetScopedLocale utf8("C.UTF-8");
    ASSERT_TRUE(utf8.isSet());
    folder.write("\xe2\x82\xac", "");
    const ZetFileInfo info(toWide(folder.path().string()) + L"/\x20ac");
    EXPECT_TRUE(info.isFile());
    EXPECT_EQ(info.baseName(), L"\x20ac");
    EXPECT_EQ(info.access(F_OK), 0);

    const ZetScopedLocale plain("C");
    EXPECT_THROW(info.isFile(), std::length_error);
    EXPECT_THROW(info.access(F_OK), std::length_error);
}

}  // namespace
}  // namespace zet

#include <zet/ZetDirControl>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include <gtest/gtest.h>

#include "support/ZetPrint"
#include "support/ZetScopedLocale"
#include "support/ZetScratchFolder"

namespace zet {
namespace {

using test::ZetScopedLocale;
using test::ZetScratchFolder;

/// Comes back to the working directory of before.
class Homing
{
public:
    Homing() : m_before(std::filesystem::current_path()) {}
    Homing(const Homing&) = delete;
    Homing& operator=(const Homing&) = delete;
    ~Homing() { std::filesystem::current_path(m_before); }

private:
    std::filesystem::path m_before;
};

TEST(ZetDirControl, makesEntersAndRemovesDirectories)
{
    EXPECT_EQ(ZetDirControl().className(), L"ZetDirControl");
    EXPECT_FALSE(ZetDirControl().isMetaObject());
    const ZetScratchFolder folder;
    const ZetString path = (folder / "sub").wstring();
    const Homing homing;

    EXPECT_EQ(ZetDirControl::mkdir(path, 0750), 0);
    struct ::stat status = {};
    ASSERT_EQ(::stat(toMultibyte(path).c_str(), &status), 0);
    EXPECT_TRUE(S_ISDIR(status.st_mode));
    EXPECT_EQ(status.st_mode & 0007, 0u);
    EXPECT_EQ(ZetDirControl::mkdir(path, 0750), -1);
    EXPECT_EQ(errno, EEXIST);

    EXPECT_EQ(ZetDirControl::chdir(path), 0);
    EXPECT_EQ(ZetDirControl::getcwd(), std::filesystem::canonical(folder.path()).wstring() + L"/sub");
    EXPECT_EQ(ZetDirControl::chdir(L".."), 0);
    EXPECT_EQ(ZetDirControl::rmdir(L"sub"), 0);
    EXPECT_NE(::stat(toMultibyte(path).c_str(), &status), 0);

    EXPECT_EQ(ZetDirControl::rmdir(path), -1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(ZetDirControl::chdir(path), -1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(ZetDirControl::mkdir(L"", 0750), -1);
    EXPECT_EQ(errno, ENOENT);
}

TEST(ZetDirControl, longWorkingDirectory)
{
    const ZetScratchFolder folder;
    const Homing homing;
    std::filesystem::current_path(folder.path());
    const ZetString name(200, L'd');
    std::size_t length = std::filesystem::current_path().string().size();
    // as long as the path and its end fit into 1024 bytes, it is told
    for (; length + 201 < 1024; length += 201) {
        ASSERT_EQ(ZetDirControl::mkdir(name, 0700), 0);
        ASSERT_EQ(ZetDirControl::chdir(name), 0);
        EXPECT_EQ(ZetDirControl::getcwd().size(), length + 201);
    }
    const ZetString last(1023 - length - 1, L'e');
    if (!last.empty()) {
        ASSERT_EQ(ZetDirControl::mkdir(last, 0700), 0);
        ASSERT_EQ(ZetDirControl::chdir(last), 0);
        EXPECT_EQ(ZetDirControl::getcwd().size(), 1023u);
        ASSERT_EQ(ZetDirControl::chdir(L".."), 0);
        ASSERT_EQ(ZetDirControl::mkdir(last + L"e", 0700), 0);
        ASSERT_EQ(ZetDirControl::chdir(last + L"e"), 0);
    } else {
        ASSERT_EQ(ZetDirControl::mkdir(L"e", 0700), 0);
        ASSERT_EQ(ZetDirControl::chdir(L"e"), 0);
    }
    EXPECT_EQ(ZetDirControl::getcwd(), L"");
    EXPECT_EQ(errno, ERANGE);
}

TEST(ZetDirControl, workingDirectoryThatIsGone)
{
    const ZetScratchFolder folder;
    const Homing homing;
    const ZetString path = (folder / "sub").wstring();
    ASSERT_EQ(ZetDirControl::mkdir(path, 0700), 0);
    ASSERT_EQ(ZetDirControl::chdir(path), 0);
    ASSERT_EQ(ZetDirControl::rmdir(path), 0);
    EXPECT_EQ(ZetDirControl::getcwd(), L"");
}

TEST(ZetDirControl, namesInTheLocale)
{
    const ZetScratchFolder folder;
    const Homing homing;
    std::filesystem::current_path(folder.path());
    {
        const ZetScopedLocale utf8("C.UTF-8");
        ASSERT_TRUE(utf8.isSet());
        EXPECT_EQ(ZetDirControl::mkdir(L"\x20ac", 0700), 0);
        EXPECT_TRUE(std::filesystem::is_directory(folder / "\xe2\x82\xac"));
        EXPECT_EQ(ZetDirControl::chdir(L"\x20ac"), 0);
        const ZetString here = ZetDirControl::getcwd();
        EXPECT_EQ(here.substr(here.size() - 2), L"/\x20ac");
    }
    const ZetScopedLocale plain("C");
    EXPECT_EQ(ZetDirControl::getcwd(), L"");
    for (const int status :
         {ZetDirControl::chdir(L"\x20ac"), ZetDirControl::mkdir(L"\x20ac", 0700), ZetDirControl::rmdir(L"\x20ac")}) {
        EXPECT_EQ(status, -1);
        EXPECT_EQ(errno, EILSEQ);
    }
}

}  // namespace
}  // namespace zet

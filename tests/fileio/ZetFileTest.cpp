#include <zet/ZetFile>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "support/ZetPrint"
#include "support/ZetScopedLocale"
#include "support/ZetScratchFolder"

namespace zet {
namespace {

using test::ZetScopedLocale;
using test::ZetScratchFolder;

constexpr int kWriting = O_RDWR | O_CREAT | O_TRUNC;
constexpr unsigned long kTwoTo32 = 1ul << 32;

ZetString wide(const std::filesystem::path& path)
{
    return path.wstring();
}

bool isOpenDescriptor(int descriptor)
{
    return ::fcntl(descriptor, F_GETFD) != -1;
}

TEST(ZetFile, closedFile)
{
    ZetFile file;
    EXPECT_EQ(file.className(), L"ZetFile");
    EXPECT_FALSE(file.isMetaObject());
    EXPECT_EQ(file.descriptor(), -1);
    EXPECT_EQ(file.name(), L"");
    EXPECT_EQ(file.close(), -1);
    EXPECT_EQ(file.descriptor(), -1);

    char byte = 'x';
    struct ::stat64 status = {};
    for (const long answer :
         {long{file.read(&byte, 1)}, long{file.write(&byte, 1)}, long{file.read(0, &byte, 1)},
          long{file.write(0, &byte, 1)}, file.lseek(0, SEEK_SET), file.offset(), long{file.stat(status)}}) {
        EXPECT_EQ(answer, -1);
    }
    EXPECT_EQ(errno, EBADF);
    EXPECT_EQ(byte, 'x');
}

TEST(ZetFile, readsAndWritesAtThePosition)
{
    const ZetScratchFolder folder;
    const auto path = folder / "file";
    ZetFile file;
    ASSERT_EQ(file.open(wide(path), kWriting, 0640), 0);
    EXPECT_EQ(file.name(), wide(path));
    EXPECT_TRUE(isOpenDescriptor(file.descriptor()));
    EXPECT_EQ(file.offset(), 0);
    EXPECT_EQ(file.write("0123456789", 10), 10);
    EXPECT_EQ(file.offset(), 10);

    struct ::stat64 status = {};
    EXPECT_EQ(file.stat(status), 0);
    EXPECT_EQ(status.st_size, 10);
    EXPECT_TRUE(S_ISREG(status.st_mode));
    EXPECT_EQ(status.st_mode & 0007, 0u);

    char bytes[11] = {};
    EXPECT_EQ(file.read(bytes, 10), 0);
    EXPECT_EQ(file.lseek(-4, SEEK_END), 6);
    EXPECT_EQ(file.read(bytes, 10), 4);
    EXPECT_STREQ(bytes, "6789");
    EXPECT_EQ(file.lseek(2, SEEK_SET), 2);
    EXPECT_EQ(file.read(bytes, 3), 3);
    EXPECT_EQ(file.offset(), 5);
    EXPECT_EQ(std::string(bytes, 3), "234");
    EXPECT_EQ(file.lseek(-1, SEEK_SET), -1);
    EXPECT_EQ(file.offset(), 5);

    const int descriptor = file.descriptor();
    EXPECT_EQ(file.close(), 0);
    EXPECT_FALSE(isOpenDescriptor(descriptor));
    EXPECT_EQ(file.descriptor(), -1);
    EXPECT_EQ(file.name(), wide(path));
    EXPECT_EQ(file.close(), -1);
    EXPECT_EQ(ZetScratchFolder::bytesOf(path), "0123456789");
}

TEST(ZetFile, positionedCallsMoveThePosition)
{
    const ZetScratchFolder folder;
    const auto path = folder.write("file", "0123456789");
    ZetFile file;
    ASSERT_EQ(file.open(wide(path), O_RDWR, 0), 0);
    char bytes[4] = {};
    EXPECT_EQ(file.read(3l, bytes, 4), 4);
    EXPECT_EQ(std::string(bytes, 4), "3456");
    EXPECT_EQ(file.offset(), 7);
    EXPECT_EQ(file.read(8l, bytes, 4), 2);
    EXPECT_EQ(std::string(bytes, 2), "89");
    EXPECT_EQ(file.offset(), 10);
    EXPECT_EQ(file.write(1l, "ab", 2), 2);
    EXPECT_EQ(file.offset(), 3);
    EXPECT_EQ(file.write(12l, "z", 1), 1);
    EXPECT_EQ(ZetScratchFolder::bytesOf(path), std::string("0ab3456789\0\0z", 13));
}

TEST(ZetFile, seekThatFailsGivesTheLockBack)
{
    const ZetScratchFolder folder;
    ZetFile file;
    ASSERT_EQ(file.open(wide(folder.write("file", "0123456789")), O_RDWR, 0), 0);
    char byte = 'x';
    EXPECT_EQ(file.read(-1l, &byte, 1), -1);
    EXPECT_EQ(file.write(-1l, &byte, 1), -1);
    EXPECT_EQ(byte, 'x');
    EXPECT_EQ(file.offset(), 0);
    // another thread is not kept waiting
    int count = 0;
    std::thread([&] { count = file.read(4l, &byte, 1); }).join();
    EXPECT_EQ(count, 1);
    EXPECT_EQ(byte, '4');
}

TEST(ZetFile, transfersThatFail)
{
    const ZetScratchFolder folder;
    char byte = 'x';
    ZetFile file;
    ASSERT_EQ(file.open(L"/dev/full", O_RDWR, 0), 0);
    EXPECT_EQ(file.write(&byte, 1), -1);
    EXPECT_EQ(errno, ENOSPC);
    EXPECT_EQ(file.write(0l, &byte, 1), -1);
    EXPECT_EQ(errno, ENOSPC);
    ASSERT_EQ(file.open(wide(folder.path()), O_RDONLY, 0), 0);
    EXPECT_EQ(file.read(&byte, 1), -1);
    EXPECT_EQ(errno, EISDIR);
    ASSERT_EQ(file.open(wide(folder.write("file", "abc")), O_RDONLY, 0), 0);
    EXPECT_EQ(file.write(1l, &byte, 1), -1);
    EXPECT_EQ(errno, EBADF);
    // the seek before it went through
    EXPECT_EQ(file.offset(), 1);
}

TEST(ZetFile, countsAreNarrowedTo32Bits)
{
    const ZetScratchFolder folder;
    const auto path = folder / "file";
    ZetFile file;
    ASSERT_EQ(file.open(wide(path), kWriting, 0600), 0);
    EXPECT_EQ(file.write("0123456789abcdef", kTwoTo32 + 10), 10);
    EXPECT_EQ(file.write(10l, "ABCDEFGH", 5 * kTwoTo32 + 2), 2);
    EXPECT_EQ(file.write("x", kTwoTo32), 0);
    EXPECT_EQ(ZetScratchFolder::bytesOf(path), "0123456789AB");
    char bytes[16] = {};
    EXPECT_EQ(file.read(0l, bytes, kTwoTo32 + 10), 10);
    EXPECT_STREQ(bytes, "0123456789");
    EXPECT_EQ(file.lseek(4, SEEK_SET), 4);
    std::memset(bytes, 0, sizeof bytes);
    EXPECT_EQ(file.read(bytes, kTwoTo32 + 3), 3);
    EXPECT_STREQ(bytes, "456");
}

TEST(ZetFile, openClosesTheFileBefore)
{
    const ZetScratchFolder folder;
    const auto first = folder.write("first", "1");
    ZetFile file;
    ASSERT_EQ(file.open(wide(first), O_RDONLY, 0), 0);
    ASSERT_EQ(file.open(wide(folder.write("second", "2")), O_RDONLY, 0), 0);
    char byte = 0;
    EXPECT_EQ(file.read(&byte, 1), 1);
    EXPECT_EQ(byte, '2');

    // also where the new file cannot be opened
    const int descriptor = file.descriptor();
    const auto missing = folder / "missing";
    EXPECT_EQ(file.open(wide(missing), O_RDONLY, 0), 1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(isOpenDescriptor(descriptor));
    EXPECT_EQ(file.descriptor(), -1);
    EXPECT_EQ(file.name(), wide(missing));
    EXPECT_EQ(file.close(), -1);
    ASSERT_EQ(file.open(wide(first), O_RDONLY, 0), 0);
    EXPECT_EQ(file.open(file.name(), O_RDONLY, 0), 0);
}

TEST(ZetFile, destructorCloses)
{
    const ZetScratchFolder folder;
    int descriptor = -1;
    {
        ZetFile file;
        ASSERT_EQ(file.open(wide(folder.write("file", "")), O_RDONLY, 0), 0);
        descriptor = file.descriptor();
        EXPECT_TRUE(isOpenDescriptor(descriptor));
    }
    EXPECT_FALSE(isOpenDescriptor(descriptor));
}

TEST(ZetFile, namesInTheLocale)
{
    const ZetScratchFolder folder;
    const ZetScopedLocale utf8("C.UTF-8");
    ASSERT_TRUE(utf8.isSet());
    ZetFile file;
    ASSERT_EQ(file.open(toWide(folder.path().string()) + L"/\x20ac \x4e2d", kWriting, 0600), 0);
    EXPECT_TRUE(std::filesystem::exists(folder / "\xe2\x82\xac \xe4\xb8\xad"));

    const int descriptor = file.descriptor();
    const ZetScopedLocale plain("C");
    EXPECT_THROW(file.open(L"/tmp/\x20ac", O_RDONLY, 0), std::length_error);
    EXPECT_FALSE(isOpenDescriptor(descriptor));
    EXPECT_EQ(file.descriptor(), -1);
}

// Each thread reads and writes ranges of its own, of a file in which every word tells its place.
TEST(ZetFile, threadsShareAFile)
{
    constexpr unsigned int kWords = 4096;
    constexpr unsigned int kThreads = 4;
    constexpr unsigned int kRounds = 2000;
    const ZetScratchFolder folder;
    std::vector<unsigned int> words(kWords);
    for (unsigned int i = 0; i < kWords; ++i) {
        words[i] = i;
    }
    ZetFile file;
    ASSERT_EQ(file.open(wide(folder / "words"), kWriting, 0600), 0);
    ASSERT_EQ(file.write(words.data(), kWords * sizeof(unsigned int)), static_cast<int>(kWords * 4));

    std::vector<unsigned int> wrong(kThreads, 0);
    std::vector<std::thread> threads;
    for (unsigned int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            for (unsigned int round = 0; round < kRounds; ++round) {
                const unsigned int first = (round * 37 + t * 911) % (kWords - 8);
                unsigned int seen[8] = {};
                const int count = file.read(long{first} * 4, seen, sizeof seen);
                for (unsigned int i = 0; i < 8; ++i) {
                    wrong[t] += count != sizeof seen || seen[i] != first + i;
                }
                // rewrites what is there, so that a transfer in the wrong place is seen by all
                wrong[t] += file.write(long{first} * 4, seen, sizeof seen) != sizeof seen;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(wrong, std::vector<unsigned int>(kThreads, 0));
    std::vector<unsigned int> after(kWords + 1);
    EXPECT_EQ(file.read(0l, after.data(), after.size() * 4), static_cast<int>(kWords * 4));
    after.pop_back();
    EXPECT_EQ(after, words);
}

}  // namespace
}  // namespace zet

#include <zet/ZetMutex>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <thread>
#include <type_traits>

#include <gtest/gtest.h>

namespace zet {
namespace {

TEST(ZetMutex, itsHolderMayLockItAgain)
{
    ZetMutex mutex;
    EXPECT_EQ(mutex.lock(), 0);
    EXPECT_EQ(mutex.lock(), 0);
    EXPECT_EQ(mutex.unlock(), 0);
    EXPECT_EQ(mutex.unlock(), 0);
}

TEST(ZetMutex, twoLocksNeedTwoUnlocks)
{
    ZetMutex mutex;
    mutex.lock();
    mutex.lock();
    std::atomic<bool> entered{false};
    std::thread other([&] {
        mutex.lock();
        entered = true;
        mutex.unlock();
    });
    mutex.unlock();
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(entered);
    mutex.unlock();
    other.join();
    EXPECT_TRUE(entered);
}

TEST(ZetMutex, givesThePlatformsResult)
{
    ZetMutex mutex;
    EXPECT_EQ(mutex.unlock(), EPERM);
    mutex.lock();
    std::thread([&] { EXPECT_EQ(mutex.unlock(), EPERM); }).join();
    EXPECT_EQ(mutex.unlock(), 0);
}

TEST(ZetMutex, keepsThreadsApart)
{
    ZetMutex mutex;
    long count = 0;
    const auto work = [&] {
        for (int i = 0; i < 20000; ++i) {
            mutex.lock();
            ++count;
            mutex.unlock();
        }
    };
    std::thread other(work);
    work();
    other.join();
    EXPECT_EQ(count, 40000);
}

TEST(ZetMutex, isOnePointerAndNotCopied)
{
    static_assert(sizeof(ZetMutex) == sizeof(void*));
    static_assert(!std::is_polymorphic_v<ZetMutex>);
    static_assert(!std::is_copy_constructible_v<ZetMutex> && !std::is_copy_assignable_v<ZetMutex>);
}

}  // namespace
}  // namespace zet

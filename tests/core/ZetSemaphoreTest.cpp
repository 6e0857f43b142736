#include <zet/ZetSemaphore>

#include <pthread.h>
#include <signal.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <thread>

#include <gtest/gtest.h>

#include "support/ZetPrint"

namespace zet {
namespace {

/// More than any platform's semaphore counts.
constexpr unsigned int kTooMuch = 0xffffffffu;

int takeAll(ZetSemaphore& semaphore)
{
    int taken = 0;
    while (semaphore.tryAcquire()) {
        ++taken;
    }
    return taken;
}

TEST(ZetSemaphore, knowsItsName)
{
    EXPECT_EQ(ZetSemaphore(0).className(), L"ZetSemaphore");
}

TEST(ZetSemaphore, startsWithItsValue)
{
    for (const unsigned int value : {0u, 1u, 5u}) {
        ZetSemaphore semaphore(value);
        EXPECT_EQ(semaphore.lastErrno(), 0);
        EXPECT_EQ(takeAll(semaphore), static_cast<int>(value));
    }
}

TEST(ZetSemaphore, releasesOneAtATime)
{
    ZetSemaphore semaphore(0);
    semaphore.release(0);
    EXPECT_EQ(takeAll(semaphore), 0);
    semaphore.release(3);
    EXPECT_EQ(takeAll(semaphore), 3);
}

TEST(ZetSemaphore, acquireTakesOne)
{
    ZetSemaphore semaphore(2);
    EXPECT_TRUE(semaphore.acquire());
    EXPECT_EQ(takeAll(semaphore), 1);
}

TEST(ZetSemaphore, initializeLeavesAWorkingOne)
{
    ZetSemaphore semaphore(2);
    EXPECT_FALSE(semaphore.initialize(7));
    EXPECT_EQ(takeAll(semaphore), 2);
}

TEST(ZetSemaphore, oneThatFailedIsUnusable)
{
    ZetSemaphore semaphore(kTooMuch);
    EXPECT_EQ(semaphore.lastErrno(), EINVAL);
    EXPECT_FALSE(semaphore.acquire());
    EXPECT_FALSE(semaphore.tryAcquire());
    semaphore.release(3);
    EXPECT_FALSE(semaphore.initialize(kTooMuch));
    EXPECT_TRUE(semaphore.initialize(2));
    EXPECT_EQ(takeAll(semaphore), 2);
}

TEST(ZetSemaphore, acquireWaits)
{
    ZetSemaphore semaphore(0);
    std::atomic<bool> acquired{false};
    std::thread other([&] { acquired = semaphore.acquire(); });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(acquired);
    semaphore.release(1);
    other.join();
    EXPECT_TRUE(acquired);
}

std::atomic<int> s_signals{0};

TEST(ZetSemaphore, aSignalDoesNotEndTheWait)
{
    struct sigaction noting = {};
    struct sigaction before = {};
    noting.sa_handler = [](int) { ++s_signals; };
    sigaction(SIGUSR1, &noting, &before);

    ZetSemaphore semaphore(0);
    std::atomic<bool> returned{false};
    std::atomic<bool> acquired{false};
    std::thread other([&] {
        acquired = semaphore.acquire();
        returned = true;
    });
    for (int i = 0; i < 5; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        pthread_kill(other.native_handle(), SIGUSR1);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_GT(s_signals, 0);
    EXPECT_FALSE(returned);
    semaphore.release(1);
    other.join();
    EXPECT_TRUE(acquired);
    sigaction(SIGUSR1, &before, nullptr);
}

}  // namespace
}  // namespace zet

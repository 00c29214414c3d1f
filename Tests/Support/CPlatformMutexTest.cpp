#include "Support/Threads/CPlatformMutex.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace NSSupport {

static bool IsFreeForAnotherThread(CPlatformMutex& mutex) {
    bool isFree = false;
    std::thread([&] { isFree = static_cast<bool>(CMutexTryLock(mutex)); }).join();
    return isFree;
}

TEST(PlatformMutex, IsHeldAsOftenAsItWasTaken) {
    CPlatformMutex mutex;
    {
        const CMutexLock outer(mutex);
        {
            const CMutexLock inner(mutex);
            EXPECT_TRUE(CMutexTryLock(mutex));
        }
        EXPECT_FALSE(IsFreeForAnotherThread(mutex));
    }
    EXPECT_TRUE(IsFreeForAnotherThread(mutex));
}

// A host may end a thread in the middle of a call.
TEST(PlatformMutex, PassesOnFromAThreadThatEnded) {
    CPlatformMutex waitedFor;
    CPlatformMutex tried;
    std::thread([&] {
        waitedFor.Lock();
        tried.Lock();
    }).join();
    {
        const CMutexLock lock(waitedFor);
        EXPECT_TRUE(CMutexTryLock(tried));
        EXPECT_FALSE(IsFreeForAnotherThread(waitedFor));
    }
    EXPECT_TRUE(IsFreeForAnotherThread(waitedFor));
    EXPECT_TRUE(IsFreeForAnotherThread(tried));
}

TEST(PlatformMutex, IsWaitedForBeyondTheFirstWait) {
    CPlatformMutex mutex;
    std::atomic<bool> released{false};
    mutex.Lock();
    std::thread waiter([&] {
        mutex.Lock(20);
        EXPECT_TRUE(released) << "two threads hold it";
        mutex.Unlock();
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    released = true;
    mutex.Unlock();
    waiter.join();
}

} // namespace NSSupport

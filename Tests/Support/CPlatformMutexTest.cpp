#include "Support/Threads/CPlatformMutex.h"

#include <gtest/gtest.h>

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

} // namespace NSSupport

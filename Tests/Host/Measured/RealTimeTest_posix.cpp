#include "Tests/Host/HostLoop.h"
#include "Tests/Host/Measured/CountingAllocator.h"
#include "Tests/Host/Measured/NextFunction.h"
#include "Tests/Host/Measured/SystemCallFilter.h"

#include <atomic>
#include <csignal>
#include <thread>

#include <dlfcn.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

// What the audio thread's call does besides computing: nothing but look up the handle.

namespace {

thread_local int64_t gWaits = 0;

} // namespace

// The library takes its waiting locks by these two, which end up here first.
extern "C" int pthread_mutex_lock(pthread_mutex_t* mutex) {
    static const auto next = NextFunction<int (*)(pthread_mutex_t*)>("pthread_mutex_lock");
    ++gWaits;
    return next(mutex);
}

extern "C" int pthread_mutex_timedlock(pthread_mutex_t* mutex, const timespec* deadline) {
    static const auto next =
        NextFunction<int (*)(pthread_mutex_t*, const timespec*)>("pthread_mutex_timedlock");
    ++gWaits;
    return next(mutex, deadline);
}

namespace {

struct SCost {
    int64_t fHeapCalls;
    int64_t fWaits;
};

SCost PullBatches(LOPHandle loop, int count) {
    float left[1000];
    float right[1000];
    LOPRenderBuffers buffers{left, right};
    FailAllocation(-1);
    gWaits = 0;
    for (int i = 0; i < count; ++i) {
        LOPRenderPreviewBatch(loop, 1000, &buffers);
    }
    return {CountedHeapCalls(), gWaits};
}

TEST_F(CHostTest, ABatchMakesNoSystemCallAndTouchesNoHeap) {
    if (kSanitizerHasItsOwn) {
        GTEST_SKIP() << "the sanitizer makes such calls itself";
    }
    const CHostLoop loop(DrumLOP2());
    LOPSetOutputSampleRate(loop.Get(), 48000);
    LOPStartPreview(loop.Get());
    // What a first batch costs, a tempo that changes under the plan, and a tail that fades.
    const EAlone result = RunWithoutSystemCalls([&] {
        int64_t heapCalls = PullBatches(loop.Get(), 100).fHeapCalls;
        LOPSetPreviewTempo(loop.Get(), 90000);
        heapCalls += PullBatches(loop.Get(), 100).fHeapCalls;
        LOPStopPreview(loop.Get());
        const SCost tail = PullBatches(loop.Get(), 100);
        return heapCalls + tail.fHeapCalls + tail.fWaits == 0;
    });
    if (result == EAlone::kNotSupported) {
        GTEST_SKIP() << "no filters of system calls here";
    }
    EXPECT_NE(result, EAlone::kSystemCall);
    EXPECT_NE(result, EAlone::kFalse) << "a call to the heap, or a lock waited for";
}

TEST_F(CHostTest, ABatchTouchesNoHeapWhileOtherThreadsAreBusy) {
    const CHostLoop loop(DrumLOP2());
    const Bytes bytes = DrumLOP2(24);
    std::atomic<bool> done{false};
    std::thread control([&] {
        int32_t tempo = 90000;
        while (!done) {
            LOPStartPreview(loop.Get());
            LOPSetPreviewTempo(loop.Get(), tempo);
            tempo = tempo == 90000 ? 140000 : 90000;
            LOPStopPreview(loop.Get());
        }
    });
    std::thread loader([&] {
        while (!done) {
            LOPHandle other = 0;
            CreateLoop(other, bytes);
            LOPDelete(&other);
        }
    });
    const SCost cost = PullBatches(loop.Get(), 300);
    done = true;
    control.join();
    loader.join();
    EXPECT_EQ(cost.fHeapCalls, 0);
    // A look-up that finds the lock taken waits for it, a second time behind a long load.
    EXPECT_LE(cost.fWaits, 600);
}

// The batch writes into a page that is not there: its thread ends as a host may end it, with no
// way out of the call.
[[gnu::noinline]] void DieInABatch(LOPHandle loop) {
    struct sigaction end {};
    struct sigaction before {};
    end.sa_handler = [](int /*signal*/) { syscall(SYS_exit, 0); };
    sigaction(SIGSEGV, &end, &before);
    void* const page = mmap(nullptr, 4096, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    std::thread([&] {
        LOPRenderBuffers buffers{static_cast<float*>(page), nullptr};
        LOPRenderPreviewBatch(loop, 64, &buffers);
        ADD_FAILURE() << "still alive";
    }).join();
    munmap(page, 4096);
    sigaction(SIGSEGV, &before, nullptr);
}

TEST_F(CHostTest, AStartBringsAPreviewBackWhoseThreadDiedInABatch) {
    const CHostLoop loop(DrumLOP2());
    LOPStartPreview(loop.Get());
    loop.RenderPreview(640, 640);
    DieInABatch(loop.Get());
    EXPECT_TRUE(IsSilent(loop.RenderPreview(8192, 441)[0])) << "a second batch beside the first";
    EXPECT_EQ(LOPStartPreview(loop.Get()), kLOPResult_PreviewRunning);
    EXPECT_TRUE(IsSilent(loop.RenderPreview(8192, 441)[0])) << "a refused start";
    EXPECT_EQ(LOPStopPreview(loop.Get()), kLOPResult_OK);
    EXPECT_EQ(LOPStartPreview(loop.Get()), kLOPResult_OK);
    loop.RenderPreview(640, 640);
    LOPStopPreview(loop.Get());
    loop.RenderPreview(640, 640);
    LOPStartPreview(loop.Get());
    EXPECT_FALSE(IsSilent(loop.RenderPreview(8192, 441)[0]));
}

} // namespace

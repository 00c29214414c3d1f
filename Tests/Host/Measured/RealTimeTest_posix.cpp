#include "Tests/Host/HostLoop.h"
#include "Tests/Host/Measured/CountingAllocator.h"

#include <atomic>
#include <dlfcn.h>
#include <pthread.h>
#include <thread>

// What the audio thread's call does besides computing: nothing but look up the handle.

namespace {

thread_local int64_t gWaits = 0;

template <class Function>
Function NextFunction(const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

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
    int64_t fAllocations;
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
    return {CountedAllocations(), gWaits};
}

TEST_F(CHostTest, ABatchAllocatesNothingAndWaitsForTheHandleAlone) {
    const CHostLoop loop(DrumLOP2());
    LOPStartPreview(loop.Get());
    PullBatches(loop.Get(), 10);
    LOPSetPreviewTempo(loop.Get(), 90000);
    const SCost playing = PullBatches(loop.Get(), 50);
    EXPECT_EQ(playing.fAllocations, 0);
    EXPECT_EQ(playing.fWaits, 50) << "one look-up of the handle a batch";
    LOPStopPreview(loop.Get());
    EXPECT_EQ(PullBatches(loop.Get(), 50).fAllocations, 0);
    LOPSetOutputSampleRate(loop.Get(), 48000);
    LOPStartPreview(loop.Get());
    const SCost retuned = PullBatches(loop.Get(), 50);
    EXPECT_EQ(retuned.fAllocations, 0);
    EXPECT_EQ(retuned.fWaits, 50);
}

TEST_F(CHostTest, AndSoItDoesWhileOtherThreadsAreBusy) {
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
    EXPECT_EQ(cost.fAllocations, 0);
    // A look-up that times out behind a long load waits a second time.
    EXPECT_GE(cost.fWaits, 300);
    EXPECT_LE(cost.fWaits, 600);
}

} // namespace

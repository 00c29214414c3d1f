#include "Tests/Host/HostLoop.h"
#include "Tests/Host/Measured/CountingAllocator.h"
#include "Tests/Host/Measured/NextFunction.h"

#include <atomic>
#include <csignal>
#include <cstddef>
#include <thread>

#include <dlfcn.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
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

// From here on this thread may do nothing but compute and leave: any other system call ends the
// process. False where the system has no such filters.
bool ForbidSystemCalls() {
    sock_filter program[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_exit_group, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
    };
    const sock_fprog filter{4, program};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

TEST_F(CHostTest, ABatchMakesNoSystemCallAndTouchesNoHeap) {
    if (kSanitizerHasItsOwn) {
        GTEST_SKIP() << "the sanitizer makes such calls itself";
    }
    const CHostLoop loop(DrumLOP2());
    // In a process of its own, which the filter may end: what a first batch costs, a tempo that
    // changes under the plan, and a tail that fades.
    const auto play = [&] {
        LOPSetOutputSampleRate(loop.Get(), 48000);
        LOPStartPreview(loop.Get());
        if (!ForbidSystemCalls()) {
            _exit(2);
        }
        int64_t heapCalls = PullBatches(loop.Get(), 100).fHeapCalls;
        LOPSetPreviewTempo(loop.Get(), 90000);
        heapCalls += PullBatches(loop.Get(), 100).fHeapCalls;
        LOPStopPreview(loop.Get());
        const SCost tail = PullBatches(loop.Get(), 100);
        _exit(heapCalls + tail.fHeapCalls + tail.fWaits == 0 ? 0 : 1);
    };
    const pid_t child = fork();
    if (child == 0) {
        play();
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    if (WIFEXITED(status) && WEXITSTATUS(status) == 2) {
        GTEST_SKIP() << "no filters of system calls here";
    }
    EXPECT_FALSE(WIFSIGNALED(status)) << "a system call, signal " << WTERMSIG(status);
    EXPECT_EQ(WEXITSTATUS(status), 0) << "a call to the heap, or a lock waited for";
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

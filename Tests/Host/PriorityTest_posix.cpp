#include "Tests/Host/HostLoop.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>

#include <pthread.h>
#include <sched.h>
#include <unistd.h>

// An audio thread that waits for a load of the lowest priority does not wait for what runs between
// the two.

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto kPatience = std::chrono::milliseconds(700);

struct SScene {
    std::atomic<bool> fIsLoading{false};
    std::atomic<bool> fAudioWaits{false};
    std::atomic<bool> fAudioDone{false};
    bool fHogSawAudioDone = false;
    LOPHandle fLoaded = 0;
};

void Doze() {
    usleep(500);
}

extern "C" int32_t HoldTheLibrary(int32_t /*percent*/, void* user) {
    auto& scene = *static_cast<SScene*>(user);
    scene.fIsLoading = true;
    while (!scene.fAudioWaits) {
        Doze();
    }
    return 0;
}

/// On the same processor as all others here, so that one thread runs at a time.
std::thread StartThread(int policy, int priority, std::function<void()> body) {
    std::thread thread([body = std::move(body)] {
        while (sched_getscheduler(0) == SCHED_OTHER) {
            Doze();
        }
        body();
    });
    cpu_set_t allowed;
    cpu_set_t one;
    sched_getaffinity(0, sizeof allowed, &allowed);
    CPU_ZERO(&one);
    for (size_t cpu = 0; CPU_COUNT(&one) == 0; ++cpu) {
        if (CPU_ISSET(cpu, &allowed)) {
            CPU_SET(cpu, &one);
        }
    }
    pthread_setaffinity_np(thread.native_handle(), sizeof one, &one);
    const sched_param parameters{priority};
    EXPECT_EQ(pthread_setschedparam(thread.native_handle(), policy, &parameters), 0);
    return thread;
}

bool MayRunInRealTime() {
    bool may = false;
    std::thread([&] {
        const sched_param parameters{2};
        may = pthread_setschedparam(pthread_self(), SCHED_FIFO, &parameters) == 0;
    }).join();
    return may;
}

TEST_F(CHostTest, AnAudioThreadLendsItsPriorityToTheLoadThatItWaitsFor) {
    if (!MayRunInRealTime()) {
        GTEST_SKIP() << "this user may not use SCHED_FIFO";
    }
    const CHostLoop playing(DrumLOP2());
    const Bytes bytes = DrumLOP2();
    SScene scene;
    LOPStartPreview(playing.Get());

    std::thread loader = StartThread(SCHED_IDLE, 0, [&] {
        EXPECT_EQ(CreateLoop(scene.fLoaded, bytes, HoldTheLibrary, &scene), kLOPResult_OK);
    });
    std::thread hog = StartThread(SCHED_FIFO, 10, [&] {
        while (!scene.fAudioWaits) {
            Doze();
        }
        const Clock::time_point end = Clock::now() + kPatience;
        while (Clock::now() < end && !scene.fAudioDone) {
        }
        scene.fHogSawAudioDone = scene.fAudioDone;
    });
    std::thread audio = StartThread(SCHED_FIFO, 20, [&] {
        while (!scene.fIsLoading) {
            Doze();
        }
        scene.fAudioWaits = true;
        playing.RenderPreview(64, 64);
        scene.fAudioDone = true;
    });
    audio.join();
    hog.join();
    loader.join();
    EXPECT_TRUE(scene.fHogSawAudioDone) << "the load went on only when nothing else would run";
    LOPDelete(&scene.fLoaded);
}

} // namespace

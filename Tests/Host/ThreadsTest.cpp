#include "Tests/Host/HostLoop.h"

#include <atomic>
#include <functional>
#include <thread>

// Calls that may run side by side, side by side. The thread sanitizer is what looks for races here;
// without it these tests still find hangs, crashes and wrong results.

namespace {

constexpr int kRounds = 200;

// Runs all bodies at once and waits for them. The first body is the audio thread: it repeats until
// all others are done.
void RunBeside(const std::function<void()>& audio,
               const std::vector<std::function<void()>>& others) {
    std::atomic<bool> done{false};
    std::thread audioThread([&] {
        while (!done.load(std::memory_order_relaxed)) {
            audio();
        }
    });
    std::vector<std::thread> threads;
    threads.reserve(others.size());
    for (const auto& body : others) {
        threads.emplace_back([&body] {
            for (int round = 0; round < kRounds; ++round) {
                body();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    done = true;
    audioThread.join();
}

void PullBatch(LOPHandle loop) {
    float left[441];
    float right[441];
    LOPRenderBuffers buffers{left, right};
    EXPECT_EQ(LOPRenderPreviewBatch(loop, 441, &buffers), kLOPResult_OK);
}

TEST_F(CHostTest, APreviewIsControlledWhileItSounds) {
    const CHostLoop loop(DrumLOP2());
    RunBeside([&] { PullBatch(loop.Get()); }, {[&] {
                                                   LOPStartPreview(loop.Get());
                                                   LOPStopPreview(loop.Get());
                                               },
                                               [&] { LOPSetPreviewTempo(loop.Get(), 90000); },
                                               [&] {
                                                   loop.GetInfo();
                                                   loop.GetSliceInfo(1);
                                               },
                                               [&] { loop.RenderSlice(0); }});
}

TEST_F(CHostTest, TheRateChangesUnderTheTailOfAStoppedPreview) {
    const CHostLoop loop(DrumLOP2());
    int32_t rate = 44100;
    RunBeside([&] { PullBatch(loop.Get()); }, {[&] {
                  LOPStartPreview(loop.Get());
                  std::this_thread::yield();
                  LOPStopPreview(loop.Get());
                  rate = rate == 44100 ? 48000 : 44100;
                  EXPECT_EQ(LOPSetOutputSampleRate(loop.Get(), rate), kLOPResult_OK);
              }});
}

TEST_F(CHostTest, LoopsComeAndGoBesideEachOther) {
    const CHostLoop playing(DrumLOP2());
    const CHostLoop retuned(DrumLOP2(24));
    const Bytes bytes = DrumLOP2(16, false);
    int32_t rate = 44100;
    LOPStartPreview(playing.Get());
    const auto comeAndGo = [&bytes] {
        LOPHandle handle = 0;
        EXPECT_EQ(CreateLoop(handle, bytes), kLOPResult_OK);
        LOPDelete(&handle);
        EXPECT_EQ(handle, 0U);
    };
    RunBeside([&] { PullBatch(playing.Get()); },
              {comeAndGo, comeAndGo,
               [&] {
                   rate = rate == 44100 ? 22050 : 44100;
                   EXPECT_EQ(LOPSetOutputSampleRate(retuned.Get(), rate), kLOPResult_OK);
               },
               [&] {
                   LOPInfo info{};
                   EXPECT_EQ(LOPGetInfoFromBuffer(static_cast<int32_t>(bytes.size()), bytes.data(),
                                                  sizeof info, &info),
                             kLOPResult_OK);
               }});
}

TEST_F(CHostTest, OfTwoStartsOneWins) {
    const CHostLoop loop(DrumLOP2());
    for (int round = 0; round < kRounds; ++round) {
        std::atomic<int> started{0};
        std::atomic<int> refused{0};
        const auto start = [&] {
            (LOPStartPreview(loop.Get()) == kLOPResult_OK ? started : refused)++;
        };
        std::thread first(start);
        std::thread second(start);
        first.join();
        second.join();
        EXPECT_EQ(started, 1);
        EXPECT_EQ(refused, 1);
        ASSERT_EQ(LOPStopPreview(loop.Get()), kLOPResult_OK);
    }
}

// Whatever the order of the two, what sounds is what the answers say.
TEST_F(CHostTest, AStartBesideAStopLeavesNoPreviewThatCannotBeStopped) {
    const CHostLoop loop(DrumLOP2());
    constexpr int kRaces = 2000;
    std::atomic<int> round{0};
    std::atomic<int> stopped{0};
    // One comes a little later than the other, by all distances in turn.
    const auto spin = [&round](int times) {
        for (int i = 0; i < times * 2; ++i) {
            round.load();
        }
    };
    std::thread stopper([&] {
        for (int race = 1; race <= kRaces; ++race) {
            while (round < race) {
                std::this_thread::yield();
            }
            spin(race % 41);
            LOPStopPreview(loop.Get());
            stopped = race;
        }
    });
    int soundingOn = 0;
    for (int race = 1; race <= kRaces; ++race) {
        round = race;
        spin(race % 37);
        LOPStartPreview(loop.Get());
        while (stopped < race) {
            std::this_thread::yield();
        }
        LOPStopPreview(loop.Get());
        // No batch came between, so that nothing has begun to sound.
        soundingOn += IsSilent(loop.RenderPreview(640, 640)[0]) ? 0 : 1;
    }
    stopper.join();
    EXPECT_EQ(soundingOn, 0) << "of " << kRaces;
}

} // namespace

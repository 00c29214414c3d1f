#include "Bindings/Cpp/SliceScheduler.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace {

using LoopLibrary::PlacedSlice;
using LoopLibrary::SliceScheduler;

constexpr int64_t kPPQ = 15360;
constexpr double kRate = 44100.0;

// Slices of `frames` samples each, at pulses; slice i is i + 1, i + 1.001, i + 1.002, ...
struct PlacedLoop {
    PlacedLoop(std::vector<int64_t> pulses, int64_t frames, double quarters) : fQuarters(quarters) {
        fSamples.resize(pulses.size());
        for (std::size_t i = 0; i < pulses.size(); ++i) {
            for (int64_t frame = 0; frame < frames; ++frame) {
                fSamples[i].push_back(static_cast<float>(i + 1) +
                                      0.001F * static_cast<float>(frame));
            }
            fSlices.push_back({fSamples[i].data(), nullptr, frames,
                               static_cast<double>(pulses[i]) / kPPQ, false});
        }
    }
    void GiveTo(SliceScheduler& scheduler) const {
        scheduler.SetSampleRate(kRate);
        scheduler.SetLoop(fSlices.data(), fSlices.size(), fQuarters);
    }

    double fQuarters;
    std::vector<std::vector<float>> fSamples;
    std::vector<PlacedSlice> fSlices;
};

// Places a whole slice by hand.
void Place(std::vector<float>& out, int64_t at, const std::vector<float>& slice) {
    for (std::size_t i = 0; i < slice.size(); ++i) {
        const int64_t frame = at + static_cast<int64_t>(i);
        if (frame >= 0 && frame < static_cast<int64_t>(out.size())) {
            out[static_cast<std::size_t>(frame)] += slice[i];
        }
    }
}

// The frame nearest to a place in pulses, by whole numbers, at thousandths of a BPM.
int64_t NearestFrame(int64_t pulses, int64_t thousandths) {
    const int64_t above = pulses * 60 * 44100 * 1000 * 2;
    const int64_t below = kPPQ * thousandths * 2;
    return (above + below / 2) / below;
}

// Renders `frames` in blocks of sizes that have nothing to do with each other.
template <class RenderBlock>
std::vector<float> InOddBlocks(int64_t frames, RenderBlock renderBlock) {
    std::vector<float> out(static_cast<std::size_t>(frames));
    const int64_t sizes[] = {1, 64, 333, 2, 1024, 77, 4096, 511};
    std::size_t turn = 0;
    for (int64_t done = 0; done < frames;) {
        const int64_t block = std::min(sizes[turn++ % std::size(sizes)], frames - done);
        renderBlock(done, out.data() + done, block);
        done += block;
    }
    return out;
}

TEST(SliceScheduler, PlacesEverySliceOfAnHourAtItsNearestFrame) {
    // One sample a slice, so that each slice is one sample of the output.
    const std::vector<int64_t> pulses = {0, 7680, 11111, 15360, 23041, 30720, 46080, 53761};
    const PlacedLoop loop(pulses, 1, 4.0);
    for (const int64_t thousandths : {120000, 97531, 174007}) {
        SliceScheduler scheduler;
        loop.GiveTo(scheduler);
        LoopLibrary::TempoClock clock(kRate, static_cast<double>(thousandths) / 1000.0);
        std::vector<float> block(4001);
        int64_t number = 0;
        for (int64_t start = 0; start < int64_t{3600} * 44100;) {
            const int64_t frames = 1 + (start * 7919) % 4001;
            std::fill(block.begin(), block.end(), 0.0F);
            scheduler.Render(clock.GetQuarter(), clock.GetBpm(), block.data(), nullptr, frames);
            clock.Advance(frames);
            for (int64_t i = 0; i < frames; ++i) {
                const float sample = block[static_cast<std::size_t>(i)];
                if (sample != 0.0F) {
                    const int64_t slice = number % 8;
                    ASSERT_EQ(sample, static_cast<float>(slice + 1)) << number;
                    ASSERT_EQ(start + i, NearestFrame(number / 8 * 4 * kPPQ +
                                                          pulses[static_cast<std::size_t>(slice)],
                                                      thousandths))
                        << thousandths << ": " << number;
                    ++number;
                }
            }
            start += frames;
        }
        EXPECT_GE(number, int64_t{2} * 60 * thousandths / 1000) << thousandths;
    }
}

TEST(SliceScheduler, MixesOverlapsAndTailsAndLeavesMutedSlicesOut) {
    PlacedLoop loop({0, 15360, 30720}, 40000,
                    3.0); // a quarter is 22050 frames at 120 BPM: they overlap
    loop.fSlices[1].fMuted = true;
    SliceScheduler scheduler;
    loop.GiveTo(scheduler);
    LoopLibrary::TempoClock clock(kRate, 120.0);
    const std::vector<float> out = InOddBlocks(200000, [&](int64_t, float* left, int64_t frames) {
        scheduler.Render(clock.GetQuarter(), clock.GetBpm(), left, nullptr, frames);
        clock.Advance(frames);
    });
    std::vector<float> expected(out.size());
    for (int64_t beat = 0; beat < 10; ++beat) {
        if (beat % 3 != 1) {
            Place(expected, beat * 22050, loop.fSamples[static_cast<std::size_t>(beat % 3)]);
        }
    }
    EXPECT_EQ(out, expected);
}

TEST(SliceScheduler, FollowsATempoMapAtTheFrameOfEachChange) {
    const PlacedLoop loop({0, 15360, 30720, 46080}, 900, 4.0);
    SliceScheduler scheduler;
    loop.GiveTo(scheduler);
    const LoopLibrary::TempoPoint map[] = {{0.0, 120.0}, {2.5, 60.0}, {4.0, 240.0}, {4.0, 80.0}};
    LoopLibrary::TempoMapPlayer player(map, 4, kRate);
    player.MoveTo(0.0);
    const std::vector<float> out = InOddBlocks(400000, [&](int64_t, float* left, int64_t frames) {
        player.Render(scheduler, left, nullptr, frames);
    });
    // Seconds by hand: 2.5 quarters at half a second, 1.5 at a second, then three quarters of one.
    std::vector<float> expected(out.size());
    for (int64_t beat = 0; beat < 16; ++beat) {
        const double quarter = static_cast<double>(beat);
        const double seconds = quarter <= 2.5   ? quarter * 0.5
                               : quarter <= 4.0 ? 1.25 + (quarter - 2.5)
                                                : 2.75 + (quarter - 4.0) * 0.75;
        Place(expected, static_cast<int64_t>(std::floor(seconds * kRate + 0.5)),
              loop.fSamples[static_cast<std::size_t>(beat % 4)]);
    }
    EXPECT_EQ(out, expected);
}

TEST(SliceScheduler, EntersASliceInTheMiddleAfterAJump) {
    const PlacedLoop loop({0, 30720}, 60000, 4.0);
    SliceScheduler scheduler;
    loop.GiveTo(scheduler);
    std::vector<float> out(3000);
    // Position, and the slice and its frame that should sound once the fades are over.
    const struct {
        double fQuarter;
        std::size_t fSlice;
        std::size_t fFrame;
    } rows[] = {
        {0.0, 0, 0}, {3.0, 1, 22050}, {-1.0, 1, 22050}, {1.0, 0, 22050}, {4001.5, 0, 33075}};
    for (const auto& row : rows) {
        std::fill(out.begin(), out.end(), 0.0F);
        scheduler.Render(row.fQuarter, 120.0, out.data(), nullptr, 3000);
        EXPECT_EQ(out[100], loop.fSamples[row.fSlice][row.fFrame + 100]) << row.fQuarter;
        EXPECT_EQ(out[2999], loop.fSamples[row.fSlice][row.fFrame + 2999]) << row.fQuarter;
    }
    // A stop fades out, and a silent scheduler stays silent.
    std::fill(out.begin(), out.end(), 0.0F);
    scheduler.Stop();
    scheduler.Ring(out.data(), nullptr, 3000);
    EXPECT_GT(out[10], 0.0F);
    EXPECT_LT(out[40], out[10]);
    EXPECT_EQ(out[SliceScheduler::kFadeFrames], 0.0F);
    // A slice of a key rings on through a jump and a stop, also one that begins with the jump.
    std::fill(out.begin(), out.end(), 0.0F);
    scheduler.Trigger(0, 0.5F, 10);
    scheduler.Render(5.99, 120.0, out.data(), nullptr, 20); // in the middle of slice 1
    scheduler.Stop();
    scheduler.Ring(out.data() + 20, nullptr, 1980);
    EXPECT_EQ(out[1999], 0.5F * loop.fSamples[0][1989]);
    scheduler.Silence();
    scheduler.Ring(out.data() + 2000, nullptr, 1000);
    EXPECT_EQ(out[2000 + SliceScheduler::kFadeFrames], 0.0F);
}

TEST(SliceScheduler, StaysWithPositionsThatAHostHasRounded) {
    const PlacedLoop loop({0, 7680}, 1, 1.0);
    // Positions cut to ticks step back and forth, by less than a frame and by ten frames.
    for (const double ticks : {30000.0, 1920.0}) {
        SliceScheduler scheduler;
        loop.GiveTo(scheduler);
        const double bpm = 133.0;
        int64_t heard = 0;
        for (int64_t block = 0; block < 20000; ++block) {
            float out[128] = {};
            const double exact = static_cast<double>(block) * 128.0 * bpm / (60.0 * kRate);
            scheduler.Render(std::floor(exact * ticks) / ticks, bpm, out, nullptr, 128);
            for (const float sample : out) {
                heard += sample != 0.0F ? 1 : 0;
            }
        }
        const double quarters = 20000.0 * 128.0 * bpm / (60.0 * kRate);
        EXPECT_EQ(heard, static_cast<int64_t>(std::ceil(quarters * 2.0))) << ticks;
    }
}

TEST(SliceScheduler, IsSilentWithoutALoopAndAtPositionsThatAreNone) {
    SliceScheduler scheduler;
    const PlacedLoop loop({0}, 100, 1.0);
    float out[256] = {};
    scheduler.Render(0.0, 120.0, out, nullptr, 256);
    loop.GiveTo(scheduler);
    const std::pair<double, double> rows[] = {{std::nan(""), 120.0}, {0.0, 0.0},
                                              {0.0, -5.0},           {0.0, std::nan("")},
                                              {1.0e300, 120.0},      {0.0, 1.0e300}};
    for (const auto& [quarter, bpm] : rows) {
        scheduler.Render(quarter, bpm, out, nullptr, 256);
    }
    scheduler.Trigger(std::numeric_limits<std::size_t>::max(), 1.0F, 0);
    for (const double rate : {0.0, std::nan(""), 1.0e300}) {
        scheduler.SetSampleRate(rate);
        scheduler.Render(0.0, 120.0, out, nullptr, 256);
    }
    scheduler.SetSampleRate(kRate);
    for (const double quarters : {0.0, 1.0e-300, std::nan(""), HUGE_VAL}) {
        scheduler.SetLoop(loop.fSlices.data(), 1, quarters);
        scheduler.Render(1.0e8, 120.0, out, nullptr, 256);
    }
    for (const float sample : out) {
        ASSERT_EQ(sample, 0.0F);
    }
    // What lies outside is brought to the edge.
    loop.GiveTo(scheduler);
    scheduler.SetStartSlice(std::numeric_limits<std::size_t>::max());
    scheduler.Trigger(0, 1.0F, -100);
    scheduler.Render(0.0, 120.0, out + 100, nullptr, 100);
    EXPECT_EQ(out[0], 0.0F);
    EXPECT_EQ(out[101], 2.0F * loop.fSamples[0][1]);
    // Points without a tempo are passed over, or stand.
    LoopLibrary::TempoPoint points[] = {{0.0, std::nan("")}, {1.0, -1.0}, {2.0, 120.0}};
    LoopLibrary::TempoMapPlayer player(points, 3, kRate);
    player.MoveTo(0.0);
    player.Render(scheduler, out, nullptr, 256);
}

} // namespace

#include "looptool/Analysis/LoopAnalysis.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>
#include <string>
#include <vector>

namespace {

using NSLoopTool::SOnset;

constexpr int kRate = 44100;

struct SHit {
    int64_t fFrame;
    bool fLow; // a low tone, which rises slowly, else a burst of noise
    double fLevel;
};

// Hits that ring on, round the loop's end.
std::vector<float> MakeLoop(size_t frames, const std::vector<SHit>& hits) {
    std::mt19937 random(1);
    std::vector<float> loop(frames);
    for (const SHit& hit : hits) {
        for (size_t i = 0; i < 12000; ++i) {
            const double time = static_cast<double>(i) / kRate;
            const double noise = static_cast<double>(random()) / 2147483648.0 - 1.0;
            const double sound = hit.fLow ? std::sin(2 * std::numbers::pi * 70.0 * time) : noise;
            loop[(static_cast<size_t>(hit.fFrame) + i) % frames] +=
                static_cast<float>(hit.fLevel * sound * std::exp(-time * (hit.fLow ? 12.0 : 40.0)));
        }
    }
    return loop;
}

TEST(LoopAnalysis, FindsAttacksWithinAMillisecondAndCutsBeforeThem) {
    const std::vector<SHit> hits = {{0, false, 0.8},      {11025, false, 0.2}, {22050, true, 0.9},
                                    {30000, false, 0.05}, {41000, false, 0.7}, {52345, true, 0.8},
                                    {66150, false, 0.4},  {77000, false, 0.3}};
    const std::vector<float> loop = MakeLoop(88200, hits);
    const std::vector<SOnset> onsets = NSLoopTool::FindOnsets(loop, kRate, 50);
    ASSERT_EQ(onsets.size(), hits.size());
    const std::vector<int64_t> cuts = NSLoopTool::PlaceCuts(loop, kRate, onsets);
    ASSERT_EQ(cuts.size(), hits.size());
    for (size_t i = 0; i < hits.size(); ++i) {
        EXPECT_NEAR(static_cast<double>(onsets[i].fFrame), static_cast<double>(hits[i].fFrame), 44)
            << i;
        EXPECT_LE(cuts[i], std::max<int64_t>(onsets[i].fFrame - 17, 0)) << i; // 0.4 ms before
        EXPECT_GE(cuts[i], hits[i].fFrame - 300) << i;
        EXPECT_TRUE(onsets[i].fStrength > 0.0 && onsets[i].fStrength <= 1.0) << i;
    }
    // Fewer at a low sensitivity, none less at a high one.
    EXPECT_LT(NSLoopTool::FindOnsets(loop, kRate, 0).size(), hits.size());
    EXPECT_GE(NSLoopTool::FindOnsets(loop, kRate, 99).size(), hits.size());
}

// A soft hit counts on a sixteenth and not beside it, unless the loop keeps to no such grid.
TEST(LoopAnalysis, WeighsSoftHitsByWhereTheyFall) {
    constexpr int64_t kSixteenth = 6000;
    const struct {
        int64_t fOff;  // of every other strong hit from the grid
        int64_t fSoft; // frame of the soft hit
        bool fIsFound;
    } rows[] = {{0, 6 * kSixteenth, true},
                {0, 6 * kSixteenth + 2600, false},
                {3000, 6 * kSixteenth + 2600, true}};
    for (const auto& row : rows) {
        std::vector<SHit> hits;
        for (int64_t beat = 0; beat < 8; ++beat) {
            hits.push_back({beat * 4 * kSixteenth + beat % 2 * row.fOff, false, 0.8});
        }
        hits.push_back({row.fSoft, false, 0.0027});
        const std::vector<SOnset> onsets =
            NSLoopTool::FindOnsets(MakeLoop(32 * kSixteenth, hits), kRate, 50, 8.0);
        const bool isFound = std::any_of(onsets.begin(), onsets.end(), [&row](const SOnset& onset) {
            return std::abs(onset.fFrame - row.fSoft) < 44;
        });
        EXPECT_EQ(isFound, row.fIsFound) << row.fOff << " " << row.fSoft;
        EXPECT_EQ(onsets.size(), isFound ? 9U : 8U);
    }
}

TEST(LoopAnalysis, HearsNothingInSilenceSteadyTonesAndScraps) {
    EXPECT_TRUE(NSLoopTool::FindOnsets(std::vector<float>(44100), kRate, 99).empty());
    EXPECT_TRUE(NSLoopTool::FindOnsets({}, kRate, 50).empty());
    EXPECT_TRUE(NSLoopTool::FindOnsets(std::vector<float>(100, 0.5F), kRate, 50).empty());
    std::vector<float> tone(44100);
    for (size_t i = 0; i < tone.size(); ++i) {
        tone[i] = static_cast<float>(
            0.5 * std::sin(2 * std::numbers::pi * 440.0 * static_cast<double>(i) / kRate));
    }
    EXPECT_TRUE(NSLoopTool::FindOnsets(tone, kRate, 50).empty());
    EXPECT_TRUE(NSLoopTool::PlaceCuts(tone, kRate, {}).empty());
}

// A bar as a drummer plays it: x marks a sixteenth with an onset.
std::vector<SOnset> Drum(const char* bar, int bars, double beatFrames) {
    std::vector<SOnset> onsets;
    const size_t steps = std::char_traits<char>::length(bar);
    for (size_t step = 0; step < steps * static_cast<size_t>(bars); ++step) {
        if (bar[step % steps] == 'x') {
            onsets.push_back({std::llround(static_cast<double>(step) * beatFrames / 4), 0.7});
        }
    }
    return onsets;
}

TEST(LoopAnalysis, WeighsWholeBarsByWhereOnsetsFall) {
    const struct {
        const char* fBar;
        int fBars;
        int fBeats;
        double fTempo;
    } rows[] = {
        {"x.x.x.x.x.x.x.x.", 1, 4, 95.0},  {"x.x.x.xxx.x.x.x.", 2, 4, 128.0},
        {"x.x.x.x.x.x.xxx.", 4, 4, 174.0}, {"x.x.x.x.x.x.", 2, 3, 110.0},
        {"xxx.x.x.x.x.x.xx", 2, 4, 84.0},
    };
    for (const auto& row : rows) {
        const double beatFrames = 60.0 * kRate / row.fTempo;
        const auto frames = static_cast<size_t>(std::llround(beatFrames * row.fBeats * row.fBars));
        const std::vector<SOnset> onsets = Drum(row.fBar, row.fBars, beatFrames);
        const NSLoopTool::STempoGuess guess = NSLoopTool::GuessTempo(frames, kRate, onsets, {});
        EXPECT_NEAR(guess.fTempo, row.fTempo, 0.01) << row.fTempo;
        EXPECT_EQ(guess.fBars * guess.fNumerator, row.fBars * row.fBeats) << row.fTempo;
        // What is known decides, and silence is not a ground for a guess.
        NSLoopTool::SKnown known;
        known.fBars = row.fBars * 2;
        known.fSignature = {row.fBeats, 4};
        EXPECT_NEAR(NSLoopTool::GuessTempo(frames, kRate, onsets, known).fTempo, row.fTempo * 2,
                    0.02);
        known = {};
        known.fTempo = row.fTempo;
        EXPECT_EQ(NSLoopTool::GuessTempo(frames, kRate, onsets, known).fBars, row.fBars);
        known.fTempo = row.fTempo * 1.09;
        EXPECT_EQ(NSLoopTool::GuessTempo(frames, kRate, onsets, known).fConfidence, 0.0);
        EXPECT_LT(NSLoopTool::GuessTempo(frames, kRate, {}, {}).fConfidence,
                  NSLoopTool::kEnoughConfidence);
    }
    // Half a bar: each whole number of bars is too fast.
    const std::vector<SOnset> half = Drum("x.x.x.xx", 1, 19457.0);
    EXPECT_LT(NSLoopTool::GuessTempo(38914, kRate, half, {}).fConfidence,
              NSLoopTool::kEnoughConfidence);
}

} // namespace

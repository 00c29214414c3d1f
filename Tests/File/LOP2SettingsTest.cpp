#include "LoopLibrary/Render/LegacyTimeIndex.h"
#include "LoopWriter/LOP2File.h"
#include "Tests/File/LoadTools.h"

#include <gtest/gtest.h>

namespace NSLOPDLL {

namespace {

using namespace NSLoopWriter;

// Shaper attack and decay, compressor attack and release: as stored, or as the sampler holds them.
using Times = std::array<int32_t, 4>;

Times TimesAfterLoading(const SStoredVersion& version, const Times& stored) {
    SLOP2File file;
    file.fHead.fVersion = version;
    file.fEdit = [&](SIFFChunk& root) {
        Poke(root, {"TRSH", 1, 2}, stored[0]);
        Poke(root, {"TRSH", 3, 2}, stored[1]);
        Poke(root, {"COMP", 5, 2}, stored[2]);
        Poke(root, {"COMP", 7, 2}, stored[3]);
    };
    const SLoaded loaded = Load(WriteLOP2(file));
    EXPECT_EQ(loaded.fOutcome, "loaded");
    const CSamplerSettings& sound = loaded.fSequencer->GetSampler().GetSettings();
    return {sound.fShaperAttack, sound.fShaperDecay, sound.fCompressorAttack,
            sound.fCompressorRelease};
}

TEST(LOP2Settings, TimesFollowTheVersion) {
    const Times indices[][2] = {{{0, 100, 0, 300}, {0, 100, 0, 300}},
                                {{521, 57, 521, 133}, {520, 58, 520, 134}},
                                {{1, 750, 1, 667}, {1, 749, 1, 666}},
                                {{2, 1022, 2, 1023}, {2, 749, 2, 666}},
                                {{3, 1023, 3, 200}, {3, 1023, 3, 200}}};
    for (const auto& [stored, held] : indices) {
        EXPECT_EQ(TimesAfterLoading({2, 0, 0}, stored), held);
        EXPECT_EQ(TimesAfterLoading({3, 7, 1}, stored), held);
    }
    for (const SStoredVersion& between : {SStoredVersion{1, 0, 1}, {1, 99, 99}, {2, 0, 0, 3}}) {
        EXPECT_EQ(TimesAfterLoading(between, {5, 100, 5, 200}), (Times{21, 1023, 193, 350}));
    }
    const auto index = [](int32_t value, bool isDecay) {
        return LegacyTimeIndex(value, isDecay, 44100);
    };
    const SStoredVersion oldest{1};
    EXPECT_EQ(TimesAfterLoading(oldest, {101, 64, 101, 127}),
              (Times{index(50, false), index(64, true), index(33, false), index(79, true)}));
    // 0 is no attack and 1 the shortest one; a decay of 127 is none, which a release cannot be.
    EXPECT_EQ(TimesAfterLoading(oldest, {0, 127, 0, 222}), (Times{0, 1023, 0, 666}));
    EXPECT_EQ(TimesAfterLoading(oldest, {1, 126, 1, 0}),
              (Times{index(0, false), 749, index(0, false), index(16, true)}));
    EXPECT_EQ(TimesAfterLoading(oldest, {1023, 1023, 1023, 1023}), (Times{520, 1023, 520, 666}));
}

TEST(LOP2Settings, SequencerAndDevices) {
    SLOP2File file;
    file.fHead.fVersion = {1, 5, 0};
    file.fGeneralInfo = {{}, 999, 7, 0, 15, 99, 0, 7943, -2400, 450000, 0, 1};
    file.fTesselInfo.fTempoSync = 0;
    file.fTransientShaper = {0, 5, 100, 88};
    file.fCompressor = {2, 11, 127, 5, 200};
    file.fEqualizer = {1, 16, 21, -17999, 501, 1501, 17998, 502, 101};
    const SLoaded loaded = Load(WriteLOP2(file));
    ASSERT_EQ(loaded.fOutcome, "loaded");
    EXPECT_EQ(NumbersOf(*loaded.fSequencer), (Numbers{999, 7, 1, 15, 450000, 0, 1, 7943, -2400, 0,
                                                      21, 1023, 88, 1, 11, 127, 193, 350}));
    EXPECT_TRUE(loaded.fSequencer->GetEqualizer().IsEnabled());
    const CEqualizerParameters& targets = loaded.fSequencer->GetEqualizer().GetTargets();
    const std::vector<float> held = {targets.fLowCut, targets.fBand1Frequency, targets.fBand1Gain,
                                     targets.fBand1Q, targets.fBand2Frequency, targets.fBand2Gain,
                                     targets.fBand2Q, targets.fHighCut};
    EXPECT_EQ(held, (std::vector<float>{16, 21, -17999, 501, 1501, 17998, 502, 101}));
}

TEST(LOP2Settings, EditSettings) {
    SLOP2File file;
    file.fGeneralInfo.fSplitIntoSlices = 0;
    file.fTransientShaper.fEnabled = 0;
    file.fEqualizer.fEnabled = 1;
    file.fCompressor.fEnabled = 255;
    const auto load = [&] {
        const CTesselEditSettings s = Load(WriteLOP2(file)).fEditSettings;
        return std::vector<int64_t>{s.fGridMode,          s.fGridEnabled,      s.fShaperEnabled,
                                    s.fCompressorEnabled, s.fEqualizerEnabled, s.fViewMode,
                                    s.fViewStart,         s.fViewEnd,          s.fViewFlag,
                                    s.fSplitIntoSlices};
    };
    const std::pair<uint8_t, int64_t> gridModes[] = {{0, 0}, {1, 12}, {10, 10}, {11, 11}, {12, 12}};
    for (const auto& [byte, mode] : gridModes) {
        file.fTesselInfo.fGridByte = byte;
        EXPECT_EQ(load(), (std::vector<int64_t>{mode, 1, 0, 1, 1, 0, 0, 0, 0, 0}));
    }
    // The extra info stands in for the flags of the devices.
    const std::pair<uint32_t, int64_t> viewModes[] = {
        {0, 0}, {1, 1}, {3, 3}, {4, 0}, {0x80000001, 0}};
    for (const auto& [stored, mode] : viewModes) {
        file.fTesselExtraInfo = {{1, 9, 9}, stored, 1, 0, 0, 0xFFFFFFFF, 5, 9};
        EXPECT_EQ(load(), (std::vector<int64_t>{12, 1, 1, 0, 0, mode, 0xFFFFFFFF, 5, 1, 0}));
    }
}

} // namespace

} // namespace NSLOPDLL

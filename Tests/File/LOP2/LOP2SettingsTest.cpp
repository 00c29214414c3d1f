#include "LoopLibrary/Render/Slices/LegacyTimeIndex.h"
#include "Tests/File/LoadTools.h"

namespace NSLOPDLL {

TEST(LOP2Settings, TimesFollowTheVersion) {
    // Shaper attack and decay, compressor attack and release: as stored, and as the sampler holds
    // them.
    using Times = std::array<int32_t, 4>;
    struct SRow {
        SStoredVersion fVersion;
        Times fStored;
        Times fHeld;
    };
    const auto attack = [](int32_t value) { return LegacyTimeIndex(value, false, 44100); };
    const auto decay = [](int32_t value) { return LegacyTimeIndex(value, true, 44100); };
    const SRow rows[] = {{{2, 0, 0}, {0, 100, 0, 300}, {0, 100, 0, 300}},
                         {{2, 0, 0}, {521, 57, 521, 133}, {520, 58, 520, 134}},
                         {{2, 0, 0}, {1, 750, 1, 667}, {1, 749, 1, 666}},
                         {{3, 7, 1}, {2, 1022, 2, 1023}, {2, 749, 2, 666}},
                         {{3, 7, 1}, {3, 1023, 3, 200}, {3, 1023, 3, 200}},
                         {{1, 0, 1}, {5, 100, 5, 200}, {21, 1023, 193, 350}},
                         {{1, 99, 99}, {5, 100, 5, 200}, {21, 1023, 193, 350}},
                         {{2, 0, 0, 3}, {5, 100, 5, 200}, {21, 1023, 193, 350}},
                         {{1}, {101, 64, 101, 127}, {attack(50), decay(64), attack(33), decay(79)}},
                         // 0 means no attack and 1 the shortest one; a decay of 127 is none, which
                         // a release cannot be.
                         {{1}, {0, 127, 0, 222}, {0, 1023, 0, 666}},
                         {{1}, {1, 126, 1, 0}, {attack(0), 749, attack(0), decay(16)}},
                         {{1}, {1023, 1023, 1023, 1023}, {520, 1023, 520, 666}}};
    for (const SRow& row : rows) {
        SLOP2File file;
        file.fHead.fVersion = row.fVersion;
        file.fEdit = [&](SIFFChunk& root) {
            Poke("TRSH", 1, 4, row.fStored[0] << 16 | row.fStored[1])(root);
            Poke("COMP", 5, 4, row.fStored[2] << 16 | row.fStored[3])(root);
        };
        const SLoaded loaded = Load(WriteLOP2(file));
        ASSERT_EQ(loaded.fOutcome, "loaded");
        const CSamplerSettings& sound = loaded.fSequencer->GetSampler().GetSettings();
        EXPECT_EQ((Times{sound.fShaperAttack, sound.fShaperDecay, sound.fCompressorAttack,
                         sound.fCompressorRelease}),
                  row.fHeld);
    }
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
    file.fCompressor.fEnabled = 0;
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
        EXPECT_EQ(load(), (std::vector<int64_t>{mode, 1, 0, 0, 1, 0, 0, 0, 0, 0}));
    }
    // The extra info stands in for the flags of the devices.
    const std::pair<uint32_t, int64_t> viewModes[] = {{3, 3}, {4, 0}, {0x80000001, 0}};
    for (const auto& [stored, mode] : viewModes) {
        file.fTesselExtraInfo = {{1, 9, 9}, stored, 0, 0, 255, 0xFFFFFFFF, 5, 9};
        EXPECT_EQ(load(), (std::vector<int64_t>{12, 1, 0, 1, 0, mode, 0xFFFFFFFF, 5, 1, 0}));
    }
}

} // namespace NSLOPDLL

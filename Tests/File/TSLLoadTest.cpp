#include "LoopLibrary/File/TSLLoader.h"
#include "LoopWriter/SyntheticLoop.h"
#include "LoopWriter/TSLFile.h"
#include "Tests/File/LoadTools.h"

#include <gtest/gtest.h>

namespace NSLOPDLL {

namespace {

using namespace NSLoopWriter;

TEST(TSLLoad, AudioAndFileInfo) {
    STSLFile file;
    file.fAudio.fSamples = MakeNoise(2500, 16, 7);
    file.fAudio.fSoundData.fOffset = 6;
    file.SetLoop(100, 1125); // 41 percent; 18604 of the 1000ths of a minute
    file.fBars = 300;
    file.fBeats = 8;
    file.fTimeSignatureNumerator = 16;
    file.fTimeSignatureDenominator = 0;
    file.fStoredFlag = 9;
    file.fDropMuted = 1;
    file.fStretchIndex = 65535;
    const Bytes bytes = WriteTSL(file);
    CheckReports(bytes, {0, 1024, 2048, 2500}, "audio: XAbort callback cancelled");
    const SLoaded loaded = Load(bytes);
    EXPECT_EQ(NumbersOf(loaded.fInfo),
              (Numbers{1, 16, 44100, 2500, 100, 1125, 1, 1, 450000, 300, 8, 16, 0, 1.0, 41, 0}));
    EXPECT_TRUE(loaded.fStoredFlag);
    EXPECT_EQ(NumbersOf(*loaded.fSequencer), (Numbers{300, 7, 15, 1, 450000, 1, 1, 1000, 0, 1, 0,
                                                      1023, 100, 0, 77, 39, 193, 350}));
    EXPECT_EQ(loaded.fAudio->GetBitDepth(), 16U);
    EXPECT_EQ(loaded.fAudio->GetLoopStart(), 100);
    EXPECT_EQ(loaded.fAudio->GetLoopEnd(), 1125);
    for (int32_t& sample : file.fAudio.fSamples) {
        sample *= 256;
    }
    EXPECT_EQ(Samples(*loaded.fAudio), file.fAudio.fSamples);
}

TEST(TSLLoad, TempoAndTranspose) {
    struct SRow {
        uint8_t fBeats;
        uint8_t fTempoStored;
        uint32_t fStored;
        int32_t fTempo; // of the sequencer; that of the file info is 0 for a loop of no length
        int16_t fTranspose;
    };
    // Half a second, so that a beat of it is 120.
    const SRow rows[] = {{1, 0, 240000, 120000, 0},
                         {1, 1, 120000, 120000, 0},
                         {1, 1, 240000, 240000, 1200},
                         {1, 1, 60000, 60000, -1200},
                         {1, 1, 0xFFFFFFFF, 20000, -2400},
                         {1, 1, 0x7FFFFFFF, 450000, 2288},
                         {7, 0, 0, 450000, 0},
                         {7, 1, 450000, 450000, -1080},
                         {0, 1, 99000, 130000, 0}};
    for (const SRow& row : rows) {
        STSLFile file;
        file.fAudio.fSamples.resize(22050);
        file.SetLoop(0, 22050);
        file.fBars = 0;
        file.fBeats = row.fBeats;
        file.fTempoStored = row.fTempoStored;
        file.fTempo = row.fStored;
        const SLoaded loaded = Load(WriteTSL(file));
        EXPECT_EQ(loaded.fInfo.fTempo, row.fBeats == 0 ? 0 : row.fTempo);
        EXPECT_EQ(loaded.fSequencer->GetTempo(), row.fTempo);
        EXPECT_EQ(loaded.fSequencer->IsTempoSynced(), row.fBeats != 0);
        EXPECT_EQ(loaded.fSequencer->GetSampler().GetSettings().fTranspose, row.fTranspose);
    }
}

TEST(TSLLoad, Slices) {
    STSLFile file;
    file.fSensitivity = 509;
    file.fSplitIntoSlices = 0;
    file.fSlices = {{1, true, 30, 5}, {2, false, 10, 40000}, {3, false, 20, 7}, {0, false, 64, 7}};
    const SLoaded loaded = Load(WriteTSL(file));
    EXPECT_EQ(NumbersOf(*loaded.fSlices), (SliceNumbers{{10, 40000 - 65536, kSliceKind_Forced, 0},
                                                        {20, 7, kSliceKind_Level, 0},
                                                        {30, 5, kSliceKind_Hidden, 1}}));
    EXPECT_EQ(loaded.fSlices->GetThreshold(), 16218);
    EXPECT_EQ(loaded.fSlices->GetSlice(0).GetLength(), 54U);
    EXPECT_EQ(loaded.fInfo.fSliceCount, 4);
    EXPECT_EQ(loaded.fEditSettings.fSplitIntoSlices, 0);

    file.fBars = 0; // a loop of no length has no grid of 12
    const Bytes bytes = WriteTSL(file);
    NSPorter::CMemoryMedia media = MediaOver(bytes);
    for (const int32_t mode : {12, 11}) {
        CTesselEditSettings settings;
        settings.fGridMode = mode;
        ReadTSLEditSettings(media, settings);
        EXPECT_EQ(settings.fGridMode, mode == 12 ? 0 : mode);
    }
}

TEST(TSLLoad, RefusesOtherAudio) {
    const std::string shape = "open: " + Violation("TSL file that isn't 16-bit mono");
    const std::string noLoop = "open: " + Violation("invalid loop mode");
    const auto leaveOut = [](const char* id) {
        return
            [id](STSLFile& f) { f.fEdit = [id](SIFFChunk& root) { LeaveOutChunk(root, ID(id)); }; };
    };
    const std::pair<std::string, std::function<void(STSLFile&)>> rows[] = {
        {shape, [](auto& f) { f.fAudio.fCommon.fBits = 8; }},
        {shape, [](auto& f) { f.fAudio.fCommon.fBits = 24; }},
        {shape, [](auto& f) { f.fAudio.fCommon.fChannels = 2; }},
        {noLoop, leaveOut("INST")},
        {noLoop, leaveOut("MARK")},
        {noLoop, [](auto& f) { f.fAudio.fInstrument->fSustainLoop.fPlayMode = 3; }},
        {noLoop,
         [](auto& f) {
             f.SetLoop(9, 9);
             f.fMajor = 2;
         }},
        {"loaded", [](auto& f) { f.fAudio.fInstrument->fSustainLoop.fPlayMode = 2; }},
        {"loaded", [](auto& f) { f.fAudio.fInstrument->fSustainLoop.fPlayMode = 0; }},
        {"open: XUnsupportedFormat[lop_file] bad Tessel chunk version",
         [](auto& f) { f.fMajor = 0; }},
        {"open: XFormatViolation ", [](auto& f) { f.fAudio.fFrames = 0x80000000; }},
        {"audio: XFormatViolation ", leaveOut("SSND")},
        {"audio: XFormatViolation ", [](auto& f) { f.fAudio.fFrames = INT32_MAX; }},
        {"audio: XFormatViolation ", [](auto& f) { f.fAudio.fRawSoundData.emplace(127); }},
        {"audio: " + Violation(""), [](auto& f) { // claimed by the chunk, too, but not in the file
             f.fAudio.fFrames = 0x3FFFFFF0;
             f.fEdit = [](SIFFChunk& root) {
                 MoveChunk(root, ID("SSND"), 99);
                 FindChunk(root, ID("SSND")).fStoredSize = 0x7FFFFFFF;
             };
         }}};
    for (size_t i = 0; i < std::size(rows); ++i) {
        STSLFile file;
        rows[i].second(file);
        EXPECT_EQ(Load(WriteTSL(file)).fOutcome, rows[i].first) << i;
    }

    // The audio path tests again, in words of its own, and what the file info told as well.
    const auto outcome = [](const STSLFile& file, uint16_t toldChannels) {
        const Bytes bytes = WriteTSL(file);
        NSPorter::CMemoryMedia media = MediaOver(bytes);
        CTesselFileInfo told;
        told.fWaveSampleInfo.fChannels = toldChannels;
        told.fWaveSampleInfo.fBitDepth = 16;
        CNotingCallback callback;
        return OutcomeOf([&] { ReadTSLWaveSample(media, told, callback); });
    };
    STSLFile file;
    EXPECT_EQ(outcome(file, 1), "loaded");
    EXPECT_EQ(outcome(file, 2), Violation("tsl file that isn't 16-bit mono"));
    file.fAudio.fInstrument.reset();
    EXPECT_EQ(outcome(file, 2), Violation("invalid loop mode"));
    file.fAudio.fCommon.fBits = 8;
    EXPECT_EQ(outcome(file, 1), Violation("tsl file that isn't 16-bit mono"));
}

} // namespace

} // namespace NSLOPDLL

#include "LoopLibrary/File/Legacy/TSLLoader.h"
#include "Tests/File/LoadTools.h"

namespace NSLOPDLL {

TEST(TSLLoad, AudioAndFileInfo) {
    STSLFile file;
    file.fAudio.fSamples = MakeNoise(2500, 16, 7);
    file.fAudio.fSoundData.fOffset = 6;
    file.SetLoop(100, 1125); // 41 percent; 18604 of the 1000ths of a minute
    file.fBars = 300;
    file.fBeats = 8;
    file.fTimeSignatureNumerator = 16;
    file.fTimeSignatureDenominator = 0;
    file.fDropMuted = 1;
    file.fStretchIndex = 65535;
    const Bytes bytes = WriteTSL(file);
    CheckReports(bytes, {0, 1024, 2048, 2500}, "audio: XAbort callback cancelled");
    const SLoaded loaded = Load(bytes);
    EXPECT_EQ(NumbersOf(loaded.fInfo), (Numbers{1, 16, 44100, 2500, 15, 0, 100, 1125, 1, 1, 450000,
                                                300, 8, 16, 0, 1.0, 41, 0}));
    EXPECT_EQ(NumbersOf(*loaded.fSequencer), (Numbers{300, 7, 15, 1, 450000, 1, 1, 1000, 0, 1, 0,
                                                      1023, 100, 0, 77, 39, 193, 350}));
    EXPECT_EQ(loaded.fAudio->GetLoopStart(), 100);
    EXPECT_EQ(loaded.fAudio->GetLoopEnd(), 1125);
    for (int32_t& sample : file.fAudio.fSamples) {
        sample *= 256;
    }
    EXPECT_EQ(Samples(*loaded.fAudio), file.fAudio.fSamples);
    for (const bool isSet : {true, false}) {
        file.fStoredFlag = isSet ? 9 : 0;
        const Bytes flagged = WriteTSL(file);
        NSPorter::CMemoryMedia media = MediaOver(flagged);
        EXPECT_EQ(CTesselFile(&media).GetStoredFlag(), isSet);
    }
}

TEST(TSLLoad, TempoAndTranspose) {
    // Bars of two beats, beats, whether a tempo is stored and which; the sequencer's tempo and
    // transposition. The audio is half a second, so that a beat of it is 120.
    const int64_t rows[][6] = {
        {0, 1, 0, 240000, 120000, 0},       {1, 1, 0, 240000, 360000, 0},
        {0, 1, 1, 120000, 120000, 0},       {1, 0, 1, 120000, 120000, -1200},
        {0, 1, 1, 240000, 240000, 1200},    {0, 1, 1, 0xFFFFFFFF, 20000, -2400},
        {0, 1, 1, INT32_MAX, 450000, 2288}, {0, 7, 0, 0, 450000, 0},
        {0, 7, 1, 450000, 450000, -1080},   {0, 0, 1, 99000, 130000, 0}};
    for (const auto& [bars, beats, isStored, stored, tempo, transpose] : rows) {
        STSLFile file;
        file.fAudio.fSamples.resize(22050);
        file.SetLoop(0, 22050);
        file.fTimeSignatureNumerator = 2;
        file.fBars = static_cast<uint16_t>(bars);
        file.fBeats = static_cast<uint8_t>(beats);
        file.fTempoStored = static_cast<uint8_t>(isStored);
        file.fTempo = static_cast<uint32_t>(stored);
        const SLoaded loaded = Load(WriteTSL(file));
        EXPECT_EQ(loaded.fInfo.fTempo, bars + beats == 0 ? 0 : tempo);
        EXPECT_EQ(loaded.fSequencer->GetTempo(), tempo);
        EXPECT_EQ(loaded.fSequencer->IsTempoSynced(), bars + beats != 0);
        EXPECT_EQ(loaded.fSequencer->GetSampler().GetSettings().fTranspose, transpose);
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
    const std::pair<std::string, std::function<void(STSLFile&)>> rows[] = {
        {shape, [](auto& f) { f.fAudio.fCommon.fBits = 8; }},
        {shape, [](auto& f) { f.fAudio.fCommon.fChannels = 2; }},
        {noLoop, [](auto& f) { f.fEdit = Without("INST"); }},
        {noLoop, [](auto& f) { f.fEdit = Without("MARK"); }},
        {noLoop, [](auto& f) { f.fAudio.fInstrument->fSustainLoop.fPlayMode = 3; }},
        {noLoop, [](auto& f) { f.SetLoop(9, 9), f.fMajor = 2; }},
        {"loaded", [](auto& f) { f.fAudio.fInstrument->fSustainLoop.fPlayMode = 2; }},
        {"loaded", [](auto& f) { f.fAudio.fInstrument->fSustainLoop.fPlayMode = 0; }},
        {"open: XFormatViolation ", [](auto& f) { f.fAudio.fFrames = 0x80000000; }},
        {"audio: XFormatViolation ", [](auto& f) { f.fEdit = Without("SSND"); }},
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
    STSLFile file;
    const auto outcome = [&] {
        const Bytes bytes = WriteTSL(file);
        NSPorter::CMemoryMedia media = MediaOver(bytes);
        CNotingCallback callback;
        return OutcomeOf([&] { ReadTSLWaveSample(media, CTesselFileInfo(), callback); });
    };
    EXPECT_EQ(outcome(), Violation("tsl file that isn't 16-bit mono"));
    file.fAudio.fInstrument.reset();
    EXPECT_EQ(outcome(), Violation("invalid loop mode"));
}

} // namespace NSLOPDLL

#include "LoopLibrary/File/Legacy/CLOPAppChunk.h"
#include "LoopLibrary/File/Legacy/CLOPSliceCopier.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "Tests/File/LoadTools.h"

namespace NSLOPDLL {

TEST(LOPLoad, FileInfoAndSettings) {
    SLOPFile file;
    file.fAudio.fSamples = MakeNoise(500, 16, 1);
    file.fAudio.SetLoop(5, 9); // which is not taken
    file.fAudio.fInstrument->fSustainLoop.fPlayMode = 2;
    file.fPPQLength = 4800;
    file.fSlices = {{0, 100, 0}, {100, 100, 960}, {200, 50, 960}};
    SLoaded loaded = Load(WriteLOP(file));
    EXPECT_EQ(NumbersOf(loaded.fInfo), (Numbers{1, 16, 44100, 500, 15, 0, 0, 500, 3, 2, 120000, 1,
                                                1, 4, 4, 1.0, 100, 1010}));
    EXPECT_EQ(NumbersOf(*loaded.fSequencer),
              (Numbers{1, 1, 4, 4, 120000, 1, 1, 1000, 0, 0, 21, 1023, 40, 0, 77, 39, 193, 350}));
    EXPECT_EQ(loaded.fEditSettings.fGridMode, 10);
    // The file info keeps the bars as they are, the sequencer has a limit.
    file.fPPQLength = 3840 * 1500 + 959;
    file.fTempo = 0x80000000;
    loaded = Load(WriteLOP(file));
    EXPECT_EQ(loaded.fInfo.fBars, 1500);
    EXPECT_EQ(loaded.fInfo.fTempo, 20000);
    EXPECT_EQ(loaded.fSequencer->GetBars(), 999);
    file.fPPQLength = 959; // shorter than a beat: no musical length, so no sync
    EXPECT_FALSE(Load(WriteLOP(file)).fSequencer->IsTempoSynced());
}

// The loop that a file's records make of its audio, frame by frame; notes the reports on the way.
static std::vector<int32_t> Model(const SLOPFile& file, double scale,
                                  std::vector<uint32_t>& reports) {
    std::vector<int32_t> loop(std::max<size_t>(static_cast<size_t>(scale * file.fPPQLength), 1));
    const auto total = static_cast<int64_t>(loop.size());
    size_t stream = 0; // only goes forward
    int64_t cursor = 0;
    for (size_t i = 0; i < file.fSlices.size(); ++i) {
        const SLOPSlice& slice = file.fSlices[i];
        if (i + 1 < file.fSlices.size() && file.fSlices[i + 1].fPPQPosition == slice.fPPQPosition) {
            continue;
        }
        auto position = static_cast<int64_t>(slice.fPPQPosition * scale);
        const int64_t length = std::min<int64_t>(slice.fSourceLength, total - position);
        reports.push_back(static_cast<uint32_t>(position));
        stream += static_cast<size_t>(std::max<int64_t>(slice.fSourceStart - cursor, 0));
        for (int64_t n = 0; n < length; ++n, ++position) {
            if (n % 2048 == 0) {
                reports.push_back(static_cast<uint32_t>(position));
            }
            loop[static_cast<size_t>(position)] = file.fAudio.fSamples.at(stream++) * 256;
        }
        cursor = slice.fSourceStart + length;
    }
    reports.push_back(static_cast<uint32_t>(total));
    return loop;
}

TEST(LOPLoad, LaysThePiecesOut) {
    const std::pair<std::vector<SLOPSlice>, double> rows[] = {
        {{{0, 5000, 0}}, 5000.0 / 3840},
        {{{0, 1000, 0}, {1000, 2500, 960}, {3500, 10, 2880}}, 2500.0 / 1920},      // gaps
        {{{500, 1000, 0}, {2000, 700, 1920}}, 1000.0 / 1920},                      // skipped source
        {{{0, 100, 960}, {100, 900, 1920}}, 900.0 / 1920},                         // late first
        {{{0, 2000, 0}, {2000, 30, 0}, {2030, 960, 1920}}, 0.5},                   // equal ticks
        {{{1000, 960, 0}, {0, 500, 960}, {300, 200, 1920}, {4000, 9, 2880}}, 1.0}, // backward
        {{{0, 960, 0}, {900, 4000, 3840}}, 4000.0},                                // at the end
        {{{0, 2, 0}, {8, 3, 4800}, {20, 1, 960}, {30, 2, 1920}}, 3.0},             // behind it
        {{{0, 0, 0}, {10, 0, 960}}, 0.0}};                                         // no length
    for (const auto& [slices, scale] : rows) {
        SCOPED_TRACE(scale);
        SLOPFile file;
        file.fAudio.fSamples = MakeNoise(7000, 16, 5);
        file.fSlices = slices;
        std::vector<uint32_t> reports;
        const std::vector<int32_t> loop = Model(file, scale, reports);
        CheckReports(WriteLOP(file), reports, "audio: XAbort callback cancelled");
        EXPECT_EQ(Samples(*Load(WriteLOP(file)).fAudio), loop);
    }
}

TEST(LOPLoad, Slices) {
    SLOPFile file;
    file.fAudio.fSamples.resize(2000);
    file.fSlices = {{0, 10, 960}, {0, 10, 1920}, {0, 960, 1920}, {0, 10, 2880}, {0, 9, 3840}};
    const SLoaded loaded = Load(WriteLOP(file));
    // What lies in front of the first piece is a slice of its own; the piece at the end is dropped.
    EXPECT_EQ(NumbersOf(*loaded.fSlices), (SliceNumbers{{0, 32767, kSliceKind_Level, 1},
                                                        {8640, 32767, kSliceKind_Level, 0},
                                                        {17280, 32767, kSliceKind_Level, 0},
                                                        {25920, 32767, kSliceKind_Level, 0}}));
    EXPECT_EQ(loaded.fSlices->GetSensitivity(), 99);
    EXPECT_EQ(loaded.fSlices->GetSlice(3).GetLength(), 8640U);
}

TEST(LOPLoad, RefusesOtherAudio) {
    NSPorter::CMemoryMedia noBytes = MediaOver({});
    const auto sample = CreateWaveSample(44100, 1, false, 16);
    CNotingCallback callback;
    const CWaveSampleInfo stereo{2, 16, 44100, 1, {}};
    EXPECT_EQ(
        OutcomeOf([&] { CLOPSliceCopier(noBytes, stereo, *sample, callback).Copy({}, 0, 0); }),
        Violation("fileInfo.fWaveSampleInfo.fChannels != 1"));

    const std::string shape = "open: " + Violation("lop file that isn't 16-bit mono");
    SLOPFile file;
    file.fSliceCount = 0; // tested behind the audio
    for (const auto& [bits, channels] : {std::pair{8, 1}, {16, 2}}) {
        file.fAudio.fCommon.fBits = static_cast<uint16_t>(bits);
        file.fAudio.fCommon.fChannels = static_cast<uint16_t>(channels);
        EXPECT_EQ(Load(WriteLOP(file)).fOutcome, shape);
    }
    file = SLOPFile();
    file.fEdit = Without("SSND");
    EXPECT_EQ(Load(WriteLOP(file)).fOutcome, "audio: XFormatViolation ");
    file.fAudio.fFrames = 0; // then the pieces stay silent, whatever they ask for
    CheckReports(WriteLOP(file), {64}, "");
}

TEST(LOPLoad, GiantNumbers) {
    const std::string tooLong = "open: " + Violation("wrong fExportedSize in file info");
    const std::string outside = "audio: " + Violation("");
    const std::tuple<uint32_t, SLOPSlice, std::string> rows[] = {
        {3840, {0, 0x80000000, 0}, tooLong}, // of 64 frames
        {0xFFFFFFFF, {0, 0xFFFFFFFF, 0xFFFFFFFE}, tooLong},
        {0xFFFFFFFF, {0, 1, 0}, "loaded"},
        {0, {0, 10, 0}, "loaded"},
        {3840, {0xFFFFFFFF, 10, 0}, outside},
        {3840, {65, 0, 0}, outside},
        {3840, {64, 0, 0}, "loaded"},
        {3840, {33, 32, 0}, "audio: XFormatViolation "},
        {1, {0, 0xFFFFFFFF, 0xFFFFFFFF}, tooLong},
        {1, {0, 1, 0xFFFFFFFF}, "loaded"}}; // stands behind the loop: nothing is copied
    for (const auto& [ticks, slice, outcome] : rows) {
        SLOPFile file;
        file.fPPQLength = ticks;
        file.fSlices = {slice};
        // A claim of the chunk does no harm where nothing reads that far.
        file.fEdit = [](SIFFChunk& root) { FindChunk(root, ID("SSND")).fStoredSize = 0x7FFFFFFF; };
        EXPECT_EQ(Load(WriteLOP(file)).fOutcome, outcome);
    }
}

} // namespace NSLOPDLL

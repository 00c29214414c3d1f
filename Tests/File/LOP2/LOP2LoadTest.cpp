#include "Tests/File/LoadTools.h"

namespace NSLOPDLL {

TEST(LOP2Load, AudioAndFileInfo) {
    for (const int32_t depth : {16, 24}) {
        for (const int32_t channels : {1, 2}) {
            SLOP2File file;
            file.fBitDepth = depth;
            file.fLeft = MakeNoise(3000, depth, 3);
            file.fRight = channels == 2 ? MakeTransients(3000, depth, 700) : Plane();
            file.fSampleInfo.fLoopStart = 5;
            file.fSampleInfo.fLoopEnd = 6;
            file.fGeneralInfo.fTimeSignatureNumerator = 0;
            file.fGeneralInfo.fBeats = 2;
            file.fTesselInfo.fExportedSize = 12345;
            file.fTesselInfo.fExportedSliceCount = 77;
            const SLoaded loaded = Load(WriteLOP2(file));
            ASSERT_EQ(loaded.fOutcome, "loaded");
            SIFFChunk chunks = BuildLOP2Chunks(file);
            // Words of four bytes count for 24 bits, and 0.03 percent counts as one.
            const double ratio = 3000.0 * channels * (depth == 16 ? 2 : 4) /
                                 static_cast<double>(FindChunk(chunks, ID("SDAT")).fBody.size());
            EXPECT_EQ(NumbersOf(loaded.fInfo),
                      (Numbers{1.0 * channels, 1.0 * depth, 44100, 3000, 15, 0, 5, 6, 1, 77, 120000,
                               1, 2, 0, 4, ratio, 1, 12345}));
            EXPECT_EQ(loaded.fAudio->GetLoopMode(), kSampleLoopMode_Forward);
            EXPECT_EQ(loaded.fAudio->GetLoopStart(), 5);
            EXPECT_EQ(loaded.fAudio->GetLoopEnd(), 6);
            std::vector<int32_t> stored;
            for (size_t i = 0; i < 3000 * static_cast<size_t>(channels); ++i) {
                const Plane& plane = channels == 2 && i % 2 == 1 ? file.fRight : file.fLeft;
                stored.push_back(plane[i / static_cast<size_t>(channels)] *
                                 (depth == 16 ? 256 : 1));
            }
            EXPECT_EQ(Samples(*loaded.fAudio), stored);
        }
    }
}

TEST(LOP2Load, ReportsEachBlock) {
    SLOP2File file;
    file.fLeft = MakeTransients(2 * 1048576 + 5, 16, 400000);
    const Bytes bytes = WriteLOP2(file);
    CheckReports(bytes, {0, 1048576, 2097152, 2097157}, "audio: XAbort stopped by callback");
    EXPECT_EQ(Load(bytes).fAudio->Get16BitSample(2000000, kChannel_Left), file.fLeft[2000000]);
    EXPECT_FALSE(CLOP2DecompressCallback().ShouldStop(0));
}

TEST(LOP2Load, StreamsThatAreTooShort) {
    SLOP2File file;
    file.fSampleInfo.fFrames = INT32_MAX;
    // Silence settles at a bit a sample, which takes this stream beyond its first block.
    file.fLeft = Plane(1048576 + 100000);
    const SLoaded loaded = Load(WriteLOP2(file));
    EXPECT_EQ(loaded.fOutcome, "audio: domain_error bad format");
    EXPECT_EQ(loaded.fReports, (std::vector<uint32_t>{0, 1048576}));
    EXPECT_EQ(Load(WriteLOP2(file), 1).fOutcome, "audio: XAbort stopped by callback");
    file.fRawStream.emplace();
    const SLoaded empty = Load(WriteLOP2(file));
    EXPECT_EQ(empty.fOutcome, "audio: domain_error bad format");
    EXPECT_EQ(empty.fInfo.fCompressionRatio, 2.0 * INT32_MAX);
}

TEST(LOP2Load, ChunksStandInAnyOrderAndTheFirstOfAnIdCounts) {
    SLOP2File file;
    file.fEdit = [](SIFFChunk& root) {
        MoveChunk(root, ID("SDAT"), 1);
        MoveChunk(root, ID("GLOB"), 99);
        DuplicateChunk(root, ID("GLOB"));
        root.fChildren.back().fBody.clear();
        InsertChunk(root, ID("LOP2"), 1, MakeSimpleChunk(ID("JUNK"), {1, 2, 3}));
        InsertChunk(root, ID("DEVL"), 0, MakeSimpleChunk(ID("JUNK"), {}));
    };
    EXPECT_EQ(Load(WriteLOP2(file)).fOutcome, "loaded");
    // A search that runs to the end meets what stands there.
    file.fEdit = [](SIFFChunk& root) {
        InsertChunk(root, ID("LOP2"), 99, MakeSimpleChunk(ID(" BAD"), {}));
    };
    EXPECT_EQ(Load(WriteLOP2(file)).fOutcome, "edit: XFormatViolation ");
}

TEST(LOP2Load, SliceLists) {
    SLOP2File file;
    file.fGeneralInfo.fSensitivity = 50;
    file.fGeneralInfo.fGateLevel = 123;
    // Out of order; of those at 20 the first stays, with the best level and kind of them; the last
    // lies outside the 64 frames.
    file.fSlices = {{40, 9, 300, 2}, {20, 0, 100, 5},   {20, 0, 700, 1},
                    {20, 0, 200, 0}, {10, 0, 32767, 1}, {64, 0, 900, 0}};
    SLoaded loaded = Load(WriteLOP2(file));
    ASSERT_EQ(loaded.fOutcome, "loaded");
    EXPECT_EQ(NumbersOf(*loaded.fSlices), (SliceNumbers{{10, 32767, kSliceKind_Hidden, 0},
                                                        {20, 700, kSliceKind_Level, 1},
                                                        {40, 300, kSliceKind_Forced, 0}}));
    EXPECT_EQ(loaded.fSlices->GetThreshold(), 16218);
    EXPECT_EQ(loaded.fSlices->GetGateLevel(), 123);

    file.fSlices.clear();
    EXPECT_EQ(Load(WriteLOP2(file)).fSlices->GetSliceCount(), 0U);
    const auto outcomeWith = [&](const SIFFChunk& chunk, uint32_t count) {
        file.fGeneralInfo.fSliceCount = count;
        file.fEdit = [&](SIFFChunk& root) { InsertChunk(root, ID("SLCL"), 0, chunk); };
        return Load(WriteLOP2(file)).fOutcome;
    };
    const SIFFChunk list = MakeGroup(SIFFChunk::EKind::kList, ID("SLCE"), {});
    const SIFFChunk other = MakeSimpleChunk(ID("SLCF"), Bytes(11));
    const std::string words = " in kLOP2SliceCatIFFType cat";
    EXPECT_EQ(outcomeWith(list, 0), "slices: " + Violation("wrong # of chunks" + words));
    EXPECT_EQ(outcomeWith(list, 1), "slices: " + Violation("wrong chunks header kind" + words));
    EXPECT_EQ(outcomeWith(other, 1), "slices: " + Violation("wrong chunks header kind" + words));
}

} // namespace NSLOPDLL

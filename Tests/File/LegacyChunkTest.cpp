#include "LoopLibrary/File/CLOPAppChunk.h"
#include "LoopLibrary/File/CTSLAppChunk.h"
#include "LoopWriter/LOP2File.h"
#include "LoopWriter/LOPFile.h"
#include "LoopWriter/TSLFile.h"
#include "Tests/File/LoadTools.h"

#include <gtest/gtest.h>

namespace NSLOPDLL {

namespace {

using namespace NSLoopWriter;

int32_t KindOf(const Bytes& bytes) {
    NSPorter::CMemoryMedia media = MediaOver(bytes);
    media.SetPosition(5);
    const int32_t kind = CTesselFile::DetectFileKind(media);
    EXPECT_EQ(CTesselFile::IsKnownFile(media), kind != kFileKind_None);
    EXPECT_EQ(media.GetPosition(), 5);
    return kind;
}

TEST(Detection, LOP2IsKnownByItsFirst24Bytes) {
    Bytes bytes = WriteLOP2(SLOP2File());
    for (size_t i = 0; i < 24; ++i) {
        const bool isSize = (i >= 4 && i < 8) || (i >= 16 && i < 20);
        bytes[i] ^= 1;
        EXPECT_EQ(KindOf(bytes), isSize ? kFileKind_LOP2 : kFileKind_None) << i;
        bytes[i] ^= 1;
    }
    bytes.resize(24);
    EXPECT_EQ(Load(bytes).fOutcome, "open: XFormatViolation ");
    for (const size_t size : {23U, 11U, 0U}) {
        bytes.resize(size);
        EXPECT_EQ(Load(bytes).fOutcome, "open: XUnsupportedFormat[lop_file] invalid file type");
    }
}

TEST(Detection, OlderKindsAreKnownByTheirApplicationChunk) {
    const auto kindOf = [](const ChunkEdit& edit) {
        STSLFile file;
        file.fEdit = edit;
        return KindOf(WriteTSL(file));
    };
    const auto insert = [](size_t index, uint32_t id, size_t size) {
        return [=](SIFFChunk& root) {
            InsertChunk(root, root.fID, index, MakeSimpleChunk(id, Bytes(size)));
        };
    };
    EXPECT_EQ(kindOf({}), kFileKind_TSL);
    EXPECT_EQ(KindOf(WriteLOP(SLOPFile())), kFileKind_LOP);
    EXPECT_EQ(kindOf([](auto& root) { TruncateChunk(root, ID("APPL"), 8); }), kFileKind_TSL);
    EXPECT_EQ(kindOf([](auto& root) { TruncateChunk(root, ID("APPL"), 7); }), kFileKind_None);
    EXPECT_EQ(kindOf([](auto& root) { LeaveOutChunk(root, ID("APPL")); }), kFileKind_None);
    EXPECT_EQ(kindOf([](auto& root) { Poke(root, {"APPL", 0, 4}, ID("LOP ")); }), kFileKind_None);
    EXPECT_EQ(kindOf([](auto& root) { Poke(root, {"APPL", 7, 1}, 0xD1); }), kFileKind_None);
    EXPECT_EQ(kindOf([](auto& root) { root.fID = ID("AIFC"); }), kFileKind_None);
    EXPECT_EQ(kindOf([](auto& root) { root.fStoredSize = 0x7FFFFFFF; }), kFileKind_None);
    // The first application chunk decides, and only what stands in front of it must be sound.
    EXPECT_EQ(kindOf(insert(0, ID("APPL"), 9)), kFileKind_None);
    EXPECT_EQ(kindOf(insert(0, 0x07202020, 0)), kFileKind_None);
    EXPECT_EQ(kindOf(insert(99, 0x07202020, 0)), kFileKind_TSL);
}

TEST(TSLAppChunk, StoresEachFieldAtItsPlace) {
    CTSLAppChunk chunk;
    chunk.fMinor = 2;
    chunk.fTimeSignatureNumerator = 3;
    chunk.fTimeSignatureDenominator = 5;
    chunk.fBars = 300;
    chunk.fBeats = 6;
    chunk.fTempo = 0x01020304;
    chunk.fStoredFlag = true;
    chunk.fDropMuted = true;
    chunk.fStretchIndex = 0x0506;
    chunk.fSensitivity = 0x0708;
    chunk.fSlices = {{2, true, 0x090A0B0C, 0x0D0E}, {0, false, 1, 2}};
    std::array<uint8_t, CTSLAppChunk::kByteCount> bytes;
    bytes.fill(0xEE);
    chunk.Store(bytes);

    std::array<uint8_t, CTSLAppChunk::kByteCount> expected{};
    const Bytes head = {0xD1, 0xDA, 0xDE, 0xD0, 1, 2, 3, 5, 44, 6, 1, 2,
                        3,    4,    1,    0,    1, 0, 5, 6, 7,  8, 1};
    const Bytes records = {0, 2, 0x82, 9, 10, 11, 12, 0, 13, 14, 0, 0, 0, 0, 1, 0, 0, 2};
    std::copy(head.begin(), head.end(), expected.begin());
    std::copy(records.begin(), records.end(), expected.begin() + 158);
    EXPECT_EQ(bytes, expected);
    CTSLAppChunk::Load(bytes).Store(bytes);
    EXPECT_EQ(bytes, expected);

    chunk.fSlices.resize(1001);
    chunk.Store(bytes);
    EXPECT_EQ(CTSLAppChunk::Load(bytes).fSlices.size(), 1000U);
}

TEST(TSLAppChunk, ExportedSliceCountAndStretch) {
    CTSLAppChunk chunk;
    chunk.fSplitIntoSlices = true;
    chunk.fSensitivity = 509; // 50 gives the threshold 16218
    chunk.fSlices = {{2, true, 5, 0},       {0, false, 10, 30000}, {0, false, 11, 16219},
                     {0, false, 12, 16218}, {1, false, 13, 32767}, {2, true, 14, 0},
                     {0, false, 15, 65535}, {2, false, 20, 0},     {2, false, 12, 0}};
    EXPECT_EQ(chunk.CountExportedSlices(10, 20), 0); // no length
    chunk.fBeats = 1;
    // 11, 14 and 15; 20 ends the walk, so that what is listed behind it does not count.
    EXPECT_EQ(chunk.CountExportedSlices(10, 20), 1 + 3);
    EXPECT_EQ(chunk.CountExportedSlices(10, 21), 1 + 5);
    chunk.fDropMuted = true;
    // The muted slice at 5 takes the first count although the one at 10 is not muted.
    EXPECT_EQ(chunk.CountExportedSlices(10, 20), 0 + 2);
    EXPECT_EQ(chunk.CountExportedSlices(4, 20), 1 + 3);
    chunk.fSensitivity = 0; // threshold 32767, which only levels beyond 15 bits exceed
    EXPECT_EQ(chunk.CountExportedSlices(4, 20), 1 + 1);
    chunk.fSplitIntoSlices = false;
    EXPECT_EQ(chunk.CountExportedSlices(10, 20), 1);

    const int16_t percents[] = {0, 5, 10, 15, 20, 25, 30, 40, 50, 60, 70, 80, 90, 100, 100};
    for (uint16_t i = 0; i < std::size(percents); ++i) {
        chunk.fStretchIndex = i;
        EXPECT_EQ(chunk.GetStretchPercent(), percents[i]);
    }
}

TEST(AppChunks, RefuseWhatIsNotOfTheirKind) {
    const auto tsl = [](const ChunkEdit& edit) {
        STSLFile file;
        file.fEdit = edit;
        const Bytes bytes = WriteTSL(file);
        NSPorter::CMemoryMedia media = MediaOver(bytes);
        return OutcomeOf([&] { ReadTSLChunk(media); });
    };
    const auto lop = [](const ChunkEdit& edit) {
        SLOPFile file;
        file.fEdit = edit;
        const Bytes bytes = WriteLOP(file);
        NSPorter::CMemoryMedia media = MediaOver(bytes);
        return OutcomeOf([&] { ReadLOPChunk(media); });
    };
    const auto poke = [](size_t offset, size_t width, int64_t value) {
        return [=](SIFFChunk& root) { Poke(root, {"APPL", offset, width}, value); };
    };
    const auto cut = [](size_t size) {
        return [=](SIFFChunk& root) { TruncateChunk(root, ID("APPL"), size); };
    };
    const ChunkEdit leaveOut = [](SIFFChunk& root) { LeaveOutChunk(root, ID("APPL")); };
    EXPECT_EQ(tsl(leaveOut), Violation("couldn't read Tessel chunk"));
    EXPECT_EQ(tsl(poke(0, 4, 0)), Violation("bad Tessel chunk signature"));
    EXPECT_EQ(tsl(poke(4, 5, 0)), Violation("bad Tessel chunk magic"));
    EXPECT_EQ(tsl(poke(8, 1, 2)), "XUnsupportedFormat[lop_file] bad Tessel chunk version");
    EXPECT_EQ(tsl(poke(162, 2, 1000)), "loaded");
    EXPECT_EQ(tsl(poke(162, 2, 1001)), Violation(""));
    EXPECT_EQ(tsl(cut(3)), Violation(""));
    EXPECT_EQ(tsl(cut(8)), "XUnsupportedFormat[lop_file] bad Tessel chunk version");
    EXPECT_EQ(lop(leaveOut), Violation("can't read app specific chunk"));
    EXPECT_EQ(lop(poke(0, 4, 0)), Violation("bad app signature for app-specific chunk"));
    EXPECT_EQ(lop(poke(4, 5, 0)), Violation("bad magic number in app specific chunk"));
    EXPECT_EQ(lop(poke(8, 1, 2)), Violation("incompatible version in app specific chunk"));
    EXPECT_EQ(lop(poke(14, 2, 0)), Violation("zero or negativ slice count in app specific chunk"));
    EXPECT_EQ(lop(poke(14, 2, 1000)), "loaded");
    EXPECT_EQ(lop(poke(14, 2, 1001)), Violation(""));
    for (const uint32_t size : {0x7FFFFFFFU, 0xFFFFFFFFU}) {
        const auto claim = [=](SIFFChunk& root) { FindChunk(root, ID("APPL")).fStoredSize = size; };
        EXPECT_EQ(tsl(claim), Violation(""));
        EXPECT_EQ(lop(claim), Violation(""));
    }
    // A size that steps nowhere, in front of the chunk that is sought.
    EXPECT_EQ(tsl([](SIFFChunk& root) {
                  InsertChunk(root, root.fID, 0, MakeSimpleChunk(ID("JUNK"), {}));
                  root.fChildren[0].fStoredSize = 0xFFFFFFF8;
              }),
              Violation("couldn't read Tessel chunk"));

    // What a chunk lacks at its end counts as zero.
    SLOPFile file;
    file.fSlices = {{1, 2, 0}, {3, 4, 0x01020304}};
    file.fEdit = cut(4 + 1016 + 12 + 10);
    const Bytes bytes = WriteLOP(file);
    NSPorter::CMemoryMedia media = MediaOver(bytes);
    EXPECT_EQ(ReadLOPChunk(media).fSlices.at(1).fPPQPosition, 0x01020000U);
}

TEST(LOPAppChunk, ScaleIsTheLargestThatAPieceAsksFor) {
    struct SRow {
        std::vector<SLOPSliceRecord> fRecords;
        double fScale;
        int64_t fTotal;
        int32_t fDistinct;
    };
    const SRow rows[] = {
        {{{0, 1000, 0}}, 1000.0 / 3840, 1000, 1},
        {{{0, 1000, 0}, {0, 3000, 1920}}, 3000.0 / 1920, 6000, 2},
        {{{0, 1000, 0}, {0, 30, 1920}}, 1000.0 / 1920, 2000, 2},
        // Of equal ticks the last counts, and only those that stand together are equal.
        {{{0, 9999, 0}, {0, 5, 0}, {0, 192, 1920}}, 0.1, 384, 2},
        {{{0, 7, 0}, {0, 8, 3840}, {0, 9, 0}}, 8.0, 30720, 3},
        {{{0, 0, 0}}, 0.0, 0, 1},
        // Ticks so close that they fall on one frame.
        {{{0, 4, 0}, {0, 0, 1930}, {0, 0, 1931}}, 4.0 / 1930, 7, 2},
        {{{0, 0xFFFFFFFF, 3839}}, 4294967295.0, 4294967295 * 3840, 1}};
    CLOPAppChunk chunk;
    for (const SRow& row : rows) {
        chunk.fPPQLength = 3840;
        chunk.fSlices = row.fRecords;
        EXPECT_EQ(chunk.GetFramesPerTick(), row.fScale);
        EXPECT_EQ(chunk.GetTotalFrames(), row.fTotal);
        EXPECT_EQ(chunk.CountDistinctPositions(), row.fDistinct);
    }
    chunk.fPPQLength = 0xFFFFFFFF;
    chunk.fSlices[0].fPPQPosition = 0xFFFFFFFE;
    EXPECT_EQ(chunk.GetTotalFrames(), int64_t{1} << 62);
    EXPECT_EQ(FrameOfTick(0xFFFFFFFF, 4294967295.0), INT32_MAX);
}

} // namespace

} // namespace NSLOPDLL

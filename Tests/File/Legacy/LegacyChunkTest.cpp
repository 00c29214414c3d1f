#include "LoopLibrary/File/Legacy/AppChunk.h"
#include "LoopLibrary/File/Legacy/CLOPAppChunk.h"
#include "LoopLibrary/File/Legacy/CTSLAppChunk.h"
#include "PorterPackage/Core/Media/COwnedMemoryMedia.h"
#include "Tests/File/LoadTools.h"

namespace NSLOPDLL {

static int32_t KindOf(const Bytes& bytes) {
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
    EXPECT_EQ(KindOf(WriteLOP(SLOPFile())), kFileKind_LOP);
    const auto insert = [](size_t index, uint32_t id, size_t size) -> ChunkEdit {
        return [=](SIFFChunk& root) {
            InsertChunk(root, root.fID, index, MakeSimpleChunk(id, Bytes(size)));
        };
    };
    // The first application chunk decides, and only what stands before it must be sound.
    const std::pair<int32_t, std::vector<ChunkEdit>> rows[] = {
        {kFileKind_TSL, {{}, Cut("APPL", 8), insert(99, 0x07202020, 0)}},
        {kFileKind_None,
         {[](auto& root) { FindChunk(root, ID("APPL")).fStoredSize = 7; }, Without("APPL"),
          Poke("APPL", 0, 4, ID("LOP ")), Poke("APPL", 7, 1, 0xD1),
          [](auto& root) { root.fID = ID("AIFC"); },
          [](auto& root) { root.fStoredSize = 0x7FFFFFFF; }, insert(0, ID("APPL"), 9),
          insert(0, 0x07202020, 0)}}};
    for (const auto& [kind, edits] : rows) {
        for (size_t i = 0; i < edits.size(); ++i) {
            STSLFile file;
            file.fEdit = edits[i];
            EXPECT_EQ(KindOf(WriteTSL(file)), kind) << i;
        }
    }
}

TEST(TSLAppChunk, StoresEachFieldAtItsPlace) {
    std::array<uint8_t, CTSLAppChunk::kByteCount> expected{};
    std::array<uint8_t, CTSLAppChunk::kByteCount> bytes;
    bytes.fill(0xEE);
    const Bytes head = {0xD1, 0xDA, 0xDE, 0xD0, 1, 2, 3, 5, 44, 6, 1, 2,
                        3,    4,    1,    0,    1, 0, 5, 6, 7,  8, 1};
    const Bytes records = {0, 2, 0x82, 9, 10, 11, 12, 0, 13, 14, 0, 0, 0, 0, 1, 0, 0, 2};
    std::copy(head.begin(), head.end(), expected.begin());
    std::copy(records.begin(), records.end(), expected.begin() + 158);
    CTSLAppChunk chunk = CTSLAppChunk::Load(expected);
    chunk.Store(bytes);
    EXPECT_EQ(bytes, expected);
    EXPECT_TRUE(chunk.fBars == 300 && chunk.fTempo == 0x01020304 && chunk.fDropMuted);
    EXPECT_FALSE(chunk.fSplitIntoSlices || chunk.fSlices.at(1).fMuted);
    chunk.fSlices.resize(1001);
    chunk.Store(bytes);
    NSPorter::COwnedMemoryMedia media;
    NSPorter::CIFFWriter writer(&media);
    writer.BeginGroup(kAIFFGroupID, kAIFFType);
    WriteAppChunk(writer, CTSLAppChunk::kSignature, bytes);
    writer.EndGroup();
    EXPECT_EQ(media.GetLength(), 12 + 8 + 4 + 8160);
    EXPECT_EQ(ReadTSLChunk(media).fSlices.size(), 1000U);
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
    chunk.fSensitivity = 1990; // threshold -33098, below all levels: 16 bits would make it 32438
    EXPECT_EQ(chunk.CountExportedSlices(4, 20), 1 + 4);
    chunk.fSplitIntoSlices = false;
    EXPECT_EQ(chunk.CountExportedSlices(10, 20), 1);

    const int16_t percents[] = {0, 5, 10, 15, 20, 25, 30, 40, 50, 60, 70, 80, 90, 100, 100};
    for (size_t i = 0; i < std::size(percents); ++i) {
        chunk.fStretchIndex = static_cast<uint16_t>(i);
        EXPECT_EQ(chunk.GetStretchPercent(), percents[i]);
    }
}

TEST(AppChunks, RefuseWhatIsNotOfTheirKind) {
    using Rows = std::vector<std::pair<ChunkEdit, std::string>>;
    const auto check = [](auto file, auto write, auto read, const Rows& rows) {
        for (const auto& [edit, outcome] : rows) {
            file.fEdit = edit;
            const Bytes bytes = write(file);
            NSPorter::CMemoryMedia media = MediaOver(bytes);
            EXPECT_EQ(OutcomeOf([&] { read(media); }), outcome);
        }
    };
    const auto claim = [](uint32_t size) -> ChunkEdit {
        return [=](SIFFChunk& root) { FindChunk(root, ID("APPL")).fStoredSize = size; };
    };
    const std::string version = "XUnsupportedFormat[lop_file] bad Tessel chunk version";
    const Rows tsl = {
        {Without("APPL"), Violation("couldn't read Tessel chunk")},
        {Poke("APPL", 0, 4, 0), Violation("bad Tessel chunk signature")},
        {Poke("APPL", 4, 5, 0), Violation("bad Tessel chunk magic")},
        {Poke("APPL", 8, 1, 2), version},
        {Poke("APPL", 162, 2, 1000), "loaded"},
        {Poke("APPL", 162, 2, 1001), Violation("")},
        {Cut("APPL", 3), Violation("")},
        {Cut("APPL", 8), version},
        {claim(0xFFFFFFFF), Violation("")},
        {[](SIFFChunk& root) { // a size that steps nowhere, in front of the chunk that is sought
             InsertChunk(root, root.fID, 0, MakeSimpleChunk(ID("JUNK"), {}));
             root.fChildren[0].fStoredSize = 0xFFFFFFF8;
         },
         Violation("couldn't read Tessel chunk")}};
    check(STSLFile(), WriteTSL, ReadTSLChunk, tsl);
    const Rows lop = {
        {Without("APPL"), Violation("can't read app specific chunk")},
        {Poke("APPL", 0, 4, 0), Violation("bad app signature for app-specific chunk")},
        {Poke("APPL", 4, 5, 0), Violation("bad magic number in app specific chunk")},
        {Poke("APPL", 8, 8, 0x0200000000000000), // ahead of the count
         Violation("incompatible version in app specific chunk")},
        {Poke("APPL", 14, 2, 0), Violation("zero or negativ slice count in app specific chunk")},
        {Poke("APPL", 14, 2, 1000), "loaded"},
        {Poke("APPL", 14, 2, 1001), Violation("")},
        {claim(0xFFFFFFFF), Violation("")}};
    check(SLOPFile(), WriteLOP, ReadLOPChunk, lop);

    // What a chunk lacks at its end counts as zero.
    SLOPFile file;
    file.fSlices = {{1, 2, 0}, {3, 4, 0x01020304}};
    file.fEdit = Cut("APPL", 4 + 1016 + 12 + 10);
    const Bytes bytes = WriteLOP(file);
    NSPorter::CMemoryMedia media = MediaOver(bytes);
    EXPECT_EQ(ReadLOPChunk(media).fSlices.at(1).fPPQPosition, 0x01020000U);
}

TEST(LOPAppChunk, ScaleIsTheLargestThatAPieceAsksFor) {
    const std::tuple<std::vector<SLOPSliceRecord>, double, int64_t, int32_t> rows[] = {
        {{{0, 1000, 0}, {0, 30, 1920}}, 1000.0 / 1920, 2000, 2},
        // Of equal ticks the last counts, and only those that stand together are equal.
        {{{0, 9999, 0}, {0, 5, 0}, {0, 192, 1920}}, 0.1, 384, 2},
        {{{0, 7, 0}, {0, 8, 3840}, {0, 9, 0}}, 8.0, 30720, 3},
        {{{0, 0, 0}}, 0.0, 0, 1},
        // Ticks so close that they fall on one frame.
        {{{0, 4, 0}, {0, 0, 1930}, {0, 0, 1931}}, 4.0 / 1930, 7, 2},
        {{{0, 0xFFFFFFFF, 3839}}, 4294967295.0, 4294967295 * 3840, 1}};
    CLOPAppChunk chunk;
    chunk.fPPQLength = 3840;
    for (const auto& [records, scale, total, distinct] : rows) {
        chunk.fSlices = records;
        EXPECT_EQ(chunk.GetFramesPerTick(), scale);
        EXPECT_EQ(chunk.GetTotalFrames(), total);
        EXPECT_EQ(chunk.CountDistinctPositions(), distinct);
    }
    chunk.fPPQLength = 0xFFFFFFFF;
    chunk.fSlices = {{0, 1000, 0}}; // a span saturates at 31 bits, and so the loop is twice as long
    EXPECT_EQ(chunk.GetFramesPerTick(), 1000.0 / INT32_MAX);
    EXPECT_EQ(chunk.GetTotalFrames(), 2000);
    chunk.fSlices = {{0, 0xFFFFFFFF, 0xFFFFFFFE}};
    EXPECT_EQ(chunk.GetTotalFrames(), int64_t{1} << 62);
    EXPECT_EQ(FrameOfTick(0xFFFFFFFF, 4294967295.0), INT32_MAX);
}

} // namespace NSLOPDLL

#include "LoopLibrary/Render/Sample/CAIFFSampleReader.h"
#include "LoopLibrary/Render/Sample/CAIFFSampleWriter.h"
#include "LoopLibrary/Render/Sample/ReadSamples.h"

#include "PorterPackage/Core/Bytes/ExtendedFloat.h"
#include "Tests/Core/CoreTestTools.h"

#include <tuple>

namespace NSLOPDLL {
namespace {

using namespace NSPorter;

std::string Word(int value) {
    return {static_cast<char>(value >> 8), static_cast<char>(value)};
}

std::string Rate(double rate) {
    const std::array<uint8_t, kExtendedSize> bytes = EncodeExtended(rate);
    return {bytes.begin(), bytes.end()};
}

// Mono, 1000 frames of 16 bits at 44100.9 Hz.
const std::string kCommon = Word(1) + BigEndian(1000) + Word(16) + Rate(44100.9);
// Sustain loop forward from marker 1 to marker 2.
const std::string kInstrument =
    "\x40\x0A\x10\x70\x01\x7F"s + Word(0) + Word(1) + Word(1) + Word(2) + Word(0) + BigEndian(0);

std::string With(std::string data, size_t place, const std::string& bytes) {
    return data.replace(place, bytes.size(), bytes);
}

std::string Instrument(int playMode, int begin, int end) {
    return Chunk("INST", With(kInstrument, 8, Word(playMode) + Word(begin) + Word(end)));
}

std::string MarkerChunk(const std::vector<std::tuple<int, uint32_t, std::string>>& markers) {
    std::string data = Word(static_cast<int>(markers.size()));
    for (const auto& [id, position, name] : markers) {
        data += Word(id) + BigEndian(position) + Padded(static_cast<char>(name.size()) + name);
    }
    return Chunk("MARK", data);
}

CWaveSampleInfo InfoOfFile(const std::string& file) {
    CMemoryMedia media = MediaOf(file);
    CWaveSampleInfo info;
    info.fLoop.fMode = 99;
    ReadAIFFSampleInfo(info, media);
    return info;
}

CWaveSampleInfo InfoOf(const std::string& common, const std::string& chunks = "") {
    return InfoOfFile(Chunk("FORM", "AIFF" + Chunk("COMM", common) + chunks));
}

CWaveLoopInfo LoopOf(const std::string& chunks) {
    return InfoOf(kCommon, chunks).fLoop;
}

auto Fields(const CWaveSampleInfo& info) {
    const CWaveLoopInfo& loop = info.fLoop;
    return std::tuple(info.fChannels, info.fBitDepth, info.fSampleRate, info.fFrames, loop.fMode,
                      loop.fDirection, loop.fStart, loop.fEnd, loop.fHasRootNote, loop.fRootNote,
                      loop.fDetune, loop.fHasNoteRange, loop.fLowNote, loop.fHighNote);
}

TEST(ReadAIFFSampleInfo, CommonChunkInBothForms) {
    // 21 bytes are too few for a compression type.
    for (const std::string& common : {kCommon, kCommon + "NONE\0"s, kCommon + "sow"}) {
        EXPECT_EQ(Fields(InfoOf(common)), Fields({1, 16, 44100, 1000}));
    }
    EXPECT_EQ(InfoOf(With(kCommon, 8, Rate(2147483647.5))).fSampleRate, 2147483647);
    EXPECT_EQ(InfoOf(With(kCommon, 6, Word(22))).fBitDepth, 22);
    // The compression comes ahead of the fields, and the depth behind them.
    for (const std::string& refused : {With(kCommon + "sowt", 0, Word(0)),
                                       With(kCommon, 6, Word(12)), With(kCommon, 6, Word(32))}) {
        EXPECT_RAISES(NSLichen::XUnsupportedFormat, InfoOf(refused));
    }
    for (const std::string& broken :
         {""s, kCommon.substr(0, 17), With(kCommon, 0, Word(0)),
          With(kCommon, 2, BigEndian(0x80000000)), With(kCommon, 8, "\x7F\xFF\x80"),
          With(kCommon, 8, "\x7F\xFF\0\0\0\0"s), With(With(kCommon, 6, Word(0)), 8, Rate(0.99)),
          With(kCommon, 8, Rate(-44100.0)), With(kCommon, 8, Rate(2147483648.0))}) {
        EXPECT_VIOLATION(InfoOf(broken));
    }
    // A file that ends inside the chunk.
    EXPECT_VIOLATION(InfoOfFile(Chunk("FORM", "AIFFCOMM" + BigEndian(22) + kCommon)));
}

TEST(ReadAIFFLoopInfo, InstrumentGivesNotesOrNothing) {
    EXPECT_EQ(Fields(InfoOf(kCommon, Instrument(0, 1, 2))),
              Fields({1, 16, 44100, 1000, {13, 0, 0, 0, true, 0x40, 10, true, 0x10, 0x70}}));
    const std::string unlooped = With(kInstrument, 8, Word(0));
    // Detunes beyond half a semitone are limited and no fault.
    for (const auto& [stored, taken] : {std::pair{60, 50}, {-50, -50}, {-128, -50}}) {
        const std::string detune = {static_cast<char>(stored)};
        EXPECT_EQ(LoopOf(Chunk("INST", With(unlooped, 1, detune))).fDetune, taken);
    }
    // Faults cost the loop, and the load goes on.
    std::vector<std::string> broken = {unlooped.substr(0, 19), With(unlooped, 8, Word(3)),
                                       With(unlooped, 14, Word(3))};
    for (const size_t place : {0U, 2U, 3U, 4U, 5U}) {
        broken.push_back(With(unlooped, place, "\x80"));
    }
    for (const std::string& instrument : broken) {
        EXPECT_EQ(Fields(InfoOf(kCommon, Chunk("INST", instrument))), Fields(InfoOf(kCommon)));
    }
}

TEST(ReadAIFFLoopInfo, LoopPoints) {
    const std::string usual =
        MarkerChunk({{7, 5, "odd"}, {1, 100, "even"}, {2, 900, ""}, {1, 6, ""}});
    const std::string zero = MarkerChunk({{0, 3, ""}, {2, 900, ""}});
    const std::string late = MarkerChunk({{1, 2000, ""}, {2, 3000, ""}, {3, 999, ""}});
    const std::string early = MarkerChunk({{1, 0xFFFFFFFF, ""}, {2, 900, ""}, {3, 1U << 31, ""}});
    const std::string good = MarkerChunk({{1, 100, "even"}, {2, 900, "last"}});
    const struct {
        std::string fChunks;
        int32_t fMode, fDirection, fStart, fEnd;
    } cases[] = {
        {Instrument(1, 1, 2) + usual, 15, 0, 100, 900},
        {Instrument(2, 1, 2) + usual, 15, 1, 100, 900},
        {Instrument(0, 1, 2) + usual, 14, 0, 100, 900},
        {Instrument(0, 1, 9) + usual, 13, 0, 0, 0},
        // An id of 0 may be a marker's; if it is none's, there is no loop and no fault.
        {Instrument(1, 0, 2) + zero, 15, 0, 3, 900},
        {Instrument(1, 0, 2) + usual, 13, 0, 0, 0},
        {Instrument(1, 0, 2), 13, 0, 0, 0},
        {Instrument(1, -1, 2) + usual, 13, 0, 0, 0},
        {Instrument(1, 2, 1) + usual, 13, 0, 0, 0},
        {Instrument(1, 2, 2) + usual, 13, 0, 0, 0},
        {Instrument(1, 1, 2) + late, 13, 0, 0, 0},
        {Instrument(1, 3, 2) + late, 15, 0, 999, 1000},
        // A start below zero moves to zero and ends the looping, but the end stays.
        {Instrument(1, 1, 2) + early, 13, 0, 0, 900},
        {Instrument(1, 1, 3) + early, 13, 0, 0, 0},
        // What asks for no loop loses none of the rest to damaged markers.
        {Instrument(0, 1, 2) + With(good, 8, Word(3)), 13, 0, 0, 0},
    };
    for (const auto& c : cases) {
        const CWaveLoopInfo loop = LoopOf(c.fChunks);
        EXPECT_TRUE(loop.fHasRootNote);
        EXPECT_EQ(std::tuple(loop.fMode, loop.fDirection, loop.fStart, loop.fEnd),
                  std::tuple(c.fMode, c.fDirection, c.fStart, c.fEnd));
    }
    // A loop that names markers which are not there is a fault, and so are markers without the pad
    // byte of the last name, beyond the file, one too many, and no whole count of them.
    const std::string looped = Instrument(1, 1, 2);
    for (const std::string& chunks :
         {looped, Instrument(1, 9, 2) + usual, Instrument(1, 1, 9) + usual,
          Instrument(1, 0, 9) + usual, looped + With(good, 4, BigEndian(25)),
          looped + With(good, 4, BigEndian(200)), looped + With(good, 8, Word(3)),
          looped + Chunk("MARK", "x")}) {
        EXPECT_FALSE(LoopOf(chunks).fHasRootNote);
    }
}

TEST(WriteAIFF, GivesTheSameInformationBack) {
    const struct {
        EAIFFCommonForm fForm;
        CWaveLoopInfo fLoop;
    } rows[] = {{EAIFFCommonForm::kPlain, {15, 1, 10, 90, true, 61, -7, true, 3, 99}},
                {EAIFFCommonForm::kWithCompressionType, {15, 0, 10, 90}},
                {EAIFFCommonForm::kPlain, {14, 0, 10, 90}},
                {EAIFFCommonForm::kPlain, {}}};
    for (const auto& row : rows) {
        CWaveSampleInfo info{2, 24, 48000, 100, row.fLoop};
        COwnedMemoryMedia media;
        CIFFWriter writer(&media);
        writer.BeginGroup(kAIFFGroupID, kAIFFType);
        WriteAIFFCommon(writer, info, row.fForm);
        WriteAIFFLoop(writer, info.fLoop);
        BeginAIFFSoundData(writer, 1500, 512);
        writer.Write(600, Raw(std::string(600, 'x')));
        writer.EndChunk();
        writer.EndGroup();

        // Notes that the record does not have are written as their defaults.
        info.fLoop.fHasRootNote = info.fLoop.fHasNoteRange = true;
        CWaveSampleInfo read;
        ReadAIFFSampleInfo(read, media);
        EXPECT_EQ(Fields(read), Fields(info));
        CIFFReader reader(&media, kAIFFGroupID);
        CAIFFMarkerChunk markers;
        if (markers.Read(reader)) {
            EXPECT_EQ(markers.Find(1)->fName + markers.Find(2)->fName, "Loop StartLoop End");
        }
        EXPECT_EQ(EnterAIFFSoundData(reader, read).fBlockSize, 512U);
        EXPECT_EQ(media.BytesLeft(), 600);
    }
}

TEST(EnterAIFFSoundData, HoldsTheFramesAgainstTheChunk) {
    const struct {
        CWaveSampleInfo fInfo;
        uint32_t fSize, fOffset;
        bool fIsSound;
    } cases[] = {{{1, 8, 0, 10}, 18, 0, true},
                 {{2, 16, 0, 10}, 48, 0, true},
                 {{1, 20, 0, 10}, 38, 0, true},
                 {{1, 24, 0, 10}, 37, 0, false},
                 {{1, 16, 0, 4}, 26, 10, true},
                 {{1, 16, 0, 5}, 26, 10, false},
                 {{1, 16, 0, 0}, 18, 10, true},
                 {{1, 16, 0, 0}, 7, 0, false},
                 {{1, 0, 0, 0}, 8, 0, false},
                 // An offset beyond the chunk, which would wrap in 32 bits.
                 {{1, 16, 0, 5}, 8, 0x80000000, false},
                 {{65535, 24, 0, 0x7FFFFFFF}, 0xFFFFFFFF, 0, false},
                 // What the chunk claims beyond the end of the file is not noticed here.
                 {{1, 16, 0, 0x3FFFFFFB}, 0x7FFFFFFF, 0, true}};
    for (const auto& c : cases) {
        const std::string file =
            Chunk("FORM", "AIFF" + Chunk("JUNK", "odd") + "SSND" + BigEndian(c.fSize) +
                              BigEndian(c.fOffset) + BigEndian(512) + "0123456789");
        CMemoryMedia media = MediaOf(file);
        CIFFReader reader(&media, kAIFFGroupID);
        if (c.fIsSound) {
            const SAIFFSoundData data = EnterAIFFSoundData(reader, c.fInfo);
            EXPECT_EQ(data.fBlockSize, 512U);
            EXPECT_EQ(media.GetPosition(), 12 + 12 + 16 + c.fOffset);
        } else {
            EXPECT_VIOLATION(EnterAIFFSoundData(reader, c.fInfo));
        }
    }
}

TEST(ReadSamples, EveryDepthOnOneScale) {
    const std::pair<int32_t, std::vector<float>> table[] = {
        {8, {-8388608.0f, -65536.0f, 65536.0f, 8323072.0f}},
        {16, {-8323328.0f, 98048.0f, 1192960.0f}},
        {20, {-8323327.0f, 8327732.0f}}};
    for (const auto& [depth, expected] : table) {
        const std::string bytes = "\x80\xFF\x01\x7F\x12\x34"s;
        CMemoryMedia media = MediaOf(bytes);
        std::vector<float> values(expected.size());
        ReadSamples(media, 1, depth, static_cast<int64_t>(values.size()), values.data());
        EXPECT_EQ(values, expected) << depth;
    }
}

TEST(ReadSamples, LotsCoverAnyCountAndStopAtTheEnd) {
    std::string bytes;
    std::vector<float> expected;
    for (; bytes.size() < 6000; expected.push_back(static_cast<float>(bytes.back() * 65536))) {
        bytes += static_cast<char>(bytes.size() % 127);
    }
    for (const int32_t channels : {1, 3, 2000}) {
        CMemoryMedia media = MediaOf(bytes);
        std::vector<float> values(6000);
        ReadSamples(media, channels, 8, 6000 / channels, values.data());
        EXPECT_EQ(values, expected);
        EXPECT_VIOLATION(ReadSamples(media, channels, 8, 1LL << 40, values.data()));
    }
    CMemoryMedia media = MediaOf(bytes);
    EXPECT_RAISES_TEXT(NSLichen::XFormatViolation, "bad bytes/frame",
                       ReadSamples(media, 0, 12, 1, nullptr));
    EXPECT_RAISES_TEXT(NSLichen::XFormatViolation, "bad CWaveSampleInfo format",
                       ReadSamples(media, 2049, 16, 1, nullptr));
}

} // namespace
} // namespace NSLOPDLL

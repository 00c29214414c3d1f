#include "LoopLibrary/Render/CAIFFSampleReader.h"
#include "LoopLibrary/Render/CAIFFSampleWriter.h"
#include "LoopLibrary/Render/ReadSamples.h"

#include "Failure/XClasses.h"
#include "PorterPackage/Core/ExtendedFloat.h"
#include "Tests/Core/CoreTestTools.h"

#include <limits>

namespace NSLOPDLL {

namespace {

using NSPorter::BigEndian;
using NSPorter::Chunk;

std::string Word(int value) {
    return {static_cast<char>(value >> 8), static_cast<char>(value)};
}

std::string Extended(const std::array<uint8_t, NSPorter::kExtendedSize>& bytes) {
    return {bytes.begin(), bytes.end()};
}

struct SCommon {
    int fChannels = 1;
    uint32_t fFrames = 1000;
    int fBits = 16;
    std::array<uint8_t, NSPorter::kExtendedSize> fRate = NSPorter::EncodeExtended(44100.9);
    std::string fRest = {};
    size_t fSize = 100;
};

std::string Common(const SCommon& c) {
    const std::string data =
        Word(c.fChannels) + BigEndian(c.fFrames) + Word(c.fBits) + Extended(c.fRate) + c.fRest;
    return Chunk("COMM", data.substr(0, c.fSize));
}

struct SInstrument {
    int fPlayMode = 1;
    int fBegin = 1;
    int fEnd = 2;
    std::string fNotes = "\x40\x0A\x10\x70\x01\x7F"s;
    int fReleasePlayMode = 0;
    size_t fSize = 20;
};

std::string Instrument(const SInstrument& i) {
    const std::string data = i.fNotes + Word(0) + Word(i.fPlayMode) + Word(i.fBegin) +
                             Word(i.fEnd) + Word(i.fReleasePlayMode) + Word(0) + Word(0);
    return Chunk("INST", data.substr(0, i.fSize));
}

struct SMarker {
    int fID;
    uint32_t fPosition;
    std::string fName;
};

std::string Markers(const std::vector<SMarker>& markers) {
    std::string data = Word(static_cast<int>(markers.size()));
    for (const SMarker& marker : markers) {
        data += Word(marker.fID) + BigEndian(marker.fPosition) +
                NSPorter::Padded(static_cast<char>(marker.fName.size()) + marker.fName);
    }
    return Chunk("MARK", data);
}

std::string File(const std::string& chunks) {
    return Chunk("FORM", "AIFF" + chunks);
}

CWaveSampleInfo InfoOf(const std::string& chunks) {
    const std::string file = File(chunks);
    NSPorter::CMemoryMedia media = NSPorter::MediaOf(file);
    CWaveSampleInfo info;
    info.fLoop.fMode = 99;
    ReadAIFFSampleInfo(info, media);
    return info;
}

TEST(AIFFSampleReader, CommonChunkInBothForms) {
    SCommon plain;
    SCommon none;
    none.fRest = "NONE\0"s;
    SCommon cut = none;
    cut.fRest = "sow";
    for (const SCommon& common : {plain, none, cut}) {
        const CWaveSampleInfo info = InfoOf(Common(common));
        EXPECT_EQ(info.fChannels, 1);
        EXPECT_EQ(info.fBitDepth, 16);
        EXPECT_EQ(info.fSampleRate, 44100);
        EXPECT_EQ(info.fFrames, 1000);
        EXPECT_EQ(info.fLoop.fMode, kLoopMode_None);
        EXPECT_FALSE(info.fLoop.fHasRootNote);
    }
    for (const int depth : {8, 20, 22, 24}) {
        EXPECT_EQ(InfoOf(Common({.fBits = depth})).fBitDepth, depth);
    }
}

TEST(AIFFSampleReader, CommonChunkRefused) {
    for (const std::string& chunks :
         {Common({.fRest = "sowt"}), Common({.fRest = "    "}), Common({.fBits = 12}),
          Common({.fBits = 0}), Common({.fBits = 32})}) {
        EXPECT_RAISES(NSLichen::XUnsupportedFormat, "", InfoOf(chunks));
    }
    std::vector<std::string> broken = {Chunk("JUNK", "12345678"), Common({.fSize = 17}),
                                       Common({.fChannels = 0}), Common({.fFrames = 0x80000000}),
                                       // Claims 22 bytes, of which the file holds 18.
                                       "COMM" + BigEndian(22) + Common({}).substr(8)};
    for (const double rate : {0.0, 0.99, -44100.0, 2147483648.0, 1e300}) {
        broken.push_back(Common({.fRate = NSPorter::EncodeExtended(rate)}));
    }
    broken.push_back(Common({.fRate = {0x7F, 0xFF, 0x80}}));
    broken.push_back(Common({.fRate = {0x7F, 0xFF}}));
    for (const std::string& chunks : broken) {
        EXPECT_RAISES(NSLichen::XFormatViolation, "", InfoOf(chunks));
    }
    EXPECT_EQ(InfoOf(Common({.fRate = NSPorter::EncodeExtended(2147483647.5)})).fSampleRate,
              2147483647);
}

TEST(AIFFSampleReader, InstrumentGivesNotes) {
    const CWaveLoopInfo loop = InfoOf(Common({}) + Instrument({.fPlayMode = 0})).fLoop;
    EXPECT_TRUE(loop.fHasRootNote && loop.fHasNoteRange);
    EXPECT_EQ(loop.fRootNote, 0x40);
    EXPECT_EQ(loop.fDetune, 10);
    EXPECT_EQ(loop.fLowNote, 0x10);
    EXPECT_EQ(loop.fHighNote, 0x70);
    EXPECT_EQ(loop.fMode, kLoopMode_None);
    // Detunes beyond half a semitone are limited and no fault.
    for (const auto& [stored, taken] : {std::pair{60, 50}, {-50, -50}, {-128, -50}}) {
        const std::string notes = "\x3C"s + static_cast<char>(stored) + "\0\x7F\0\0"s;
        EXPECT_EQ(InfoOf(Common({}) + Instrument({.fPlayMode = 0, .fNotes = notes})).fLoop.fDetune,
                  taken);
    }
}

TEST(AIFFSampleReader, BrokenInstrumentCostsTheLoopOnly) {
    const std::string markers = Markers({{1, 10, ""}, {2, 20, ""}});
    std::vector<SInstrument> broken = {{.fPlayMode = 3},
                                       {.fReleasePlayMode = 3},
                                       {.fPlayMode = 0xFFFF},
                                       {.fSize = 19},
                                       {.fSize = 0},
                                       {.fBegin = 3},
                                       {.fEnd = 3}};
    for (const size_t place : {0U, 2U, 3U, 4U, 5U}) {
        SInstrument instrument;
        instrument.fNotes[place] = '\x80';
        broken.push_back(instrument);
    }
    for (const SInstrument& instrument : broken) {
        const CWaveSampleInfo info = InfoOf(Common({}) + markers + Instrument(instrument));
        EXPECT_EQ(info.fFrames, 1000);
        EXPECT_EQ(info.fLoop.fMode, kLoopMode_None);
        EXPECT_FALSE(info.fLoop.fHasRootNote);
        EXPECT_EQ(info.fLoop.fRootNote, 60);
    }
}

TEST(AIFFSampleReader, LoopPoints) {
    struct Case {
        SInstrument fInstrument;
        std::vector<SMarker> fMarkers;
        int32_t fMode, fDirection, fStart, fEnd;
    };
    const std::vector<SMarker> usual = {{7, 5, "odd"}, {1, 100, "even"}, {2, 900, ""}, {1, 6, ""}};
    const std::vector<SMarker> zero = {{0, 3, ""}, {2, 900, ""}};
    const std::vector<SMarker> late = {{1, 2000, ""}, {2, 3000, ""}, {3, 999, ""}};
    const std::vector<SMarker> early = {{1, 0xFFFFFFFF, ""}, {2, 900, ""}, {3, 0x80000000, ""}};
    for (const Case& c : {
             Case{{}, usual, kLoopMode_Looping, 0, 100, 900},
             Case{{.fPlayMode = 2}, usual, kLoopMode_Looping, 1, 100, 900},
             Case{{.fPlayMode = 0}, usual, kLoopMode_PointsOnly, 0, 100, 900},
             // An id of 0 may be a marker's; if it is none's, there is no loop and no fault.
             Case{{.fBegin = 0}, zero, kLoopMode_Looping, 0, 3, 900},
             Case{{.fBegin = 0}, usual, kLoopMode_None, 0, 0, 0},
             Case{{.fEnd = 0}, usual, kLoopMode_None, 0, 0, 0},
             Case{{.fBegin = 0, .fEnd = 0}, usual, kLoopMode_None, 0, 0, 0},
             Case{{.fPlayMode = 0, .fEnd = 9}, usual, kLoopMode_None, 0, 0, 0},
             Case{{.fBegin = 0xFFFF}, usual, kLoopMode_None, 0, 0, 0},
             Case{{.fBegin = 2, .fEnd = 1}, usual, kLoopMode_None, 0, 0, 0},
             Case{{.fBegin = 2}, usual, kLoopMode_None, 0, 0, 0},
             Case{{}, late, kLoopMode_None, 0, 0, 0},
             Case{{.fBegin = 3}, late, kLoopMode_Looping, 0, 999, 1000},
             // A start below zero moves to zero and ends the looping, but the points stay.
             Case{{}, early, kLoopMode_None, 0, 0, 900},
             Case{{.fEnd = 3}, early, kLoopMode_None, 0, 0, 0},
         }) {
        const CWaveLoopInfo loop =
            InfoOf(Common({}) + Instrument(c.fInstrument) + Markers(c.fMarkers)).fLoop;
        EXPECT_TRUE(loop.fHasRootNote);
        EXPECT_EQ(loop.fMode, c.fMode);
        EXPECT_EQ(loop.fDirection, c.fDirection);
        EXPECT_EQ(loop.fStart, c.fStart);
        EXPECT_EQ(loop.fEnd, c.fEnd);
    }
}

TEST(AIFFSampleReader, MarkersThatRunOutOfTheirChunk) {
    const std::string good = Markers({{1, 100, "even"}, {2, 900, "last"}});
    // The pad byte behind the last name counts, too.
    std::string shorter = "MARK" + BigEndian(25) + good.substr(8);
    std::string cutFile = "MARK" + BigEndian(200) + good.substr(8);
    std::string many = good;
    many[8] = '\x7F';
    for (const std::string& markers : {shorter, cutFile, many, Chunk("MARK", "\0"s)}) {
        for (const int playMode : {0, 1, 2}) {
            const CWaveLoopInfo loop =
                InfoOf(Common({}) + Instrument({.fPlayMode = playMode}) + markers).fLoop;
            EXPECT_EQ(loop.fMode, kLoopMode_None);
            // What asks for no loop loses none of the rest, either.
            EXPECT_EQ(loop.fHasRootNote, playMode == 0);
        }
    }
    for (const auto& [begin, forgiven] : {std::pair{1, false}, {0, true}}) {
        const CWaveLoopInfo loop = InfoOf(Common({}) + Instrument({.fBegin = begin})).fLoop;
        EXPECT_EQ(loop.fHasRootNote, forgiven);
    }
}

TEST(AIFFSampleReader, SoundDataStart) {
    struct Case {
        int fChannels, fBits;
        uint32_t fFrames, fSize, fOffset;
        bool fSound;
    };
    for (const Case& c :
         {Case{1, 8, 10, 18, 0, true}, Case{2, 16, 10, 48, 0, true}, Case{1, 20, 10, 38, 0, true},
          Case{1, 24, 10, 37, 0, false}, Case{1, 16, 4, 26, 10, true},
          Case{1, 16, 5, 26, 10, false}, Case{1, 16, 0, 8, 0, true}, Case{1, 16, 0, 7, 0, false},
          // An offset beyond the chunk, which would wrap in 32 bits.
          Case{1, 16, 5, 8, 0x80000000, false}, Case{65535, 24, 0x7FFFFFFF, 0xFFFFFFFF, 0, false},
          // What the chunk claims and the file does not hold is not noticed here.
          Case{1, 16, 0x3FFFFFFB, 0x7FFFFFFF, 0, true}}) {
        const std::string file = File(Chunk("JUNK", "odd") + "SSND" + BigEndian(c.fSize) +
                                      BigEndian(c.fOffset) + BigEndian(512) + "0123456789abcdef");
        NSPorter::CMemoryMedia media = NSPorter::MediaOf(file);
        NSPorter::CIFFReader reader(&media, kAIFFGroupID);
        CWaveSampleInfo info;
        info.fChannels = static_cast<uint16_t>(c.fChannels);
        info.fBitDepth = c.fBits;
        info.fFrames = static_cast<int32_t>(c.fFrames);
        if (c.fSound) {
            const SAIFFSoundData data = EnterAIFFSoundData(reader, info);
            EXPECT_EQ(data.fOffset, c.fOffset);
            EXPECT_EQ(data.fBlockSize, 512U);
            EXPECT_EQ(media.GetPosition(), 12 + 12 + 16 + c.fOffset);
        } else {
            EXPECT_RAISES(NSLichen::XFormatViolation, "", EnterAIFFSoundData(reader, info));
        }
        info.fBitDepth = 0;
        EXPECT_RAISES(NSLichen::XFormatViolation, "", EnterAIFFSoundData(reader, info));
    }
    const std::string none = File(Common({}));
    NSPorter::CMemoryMedia media = NSPorter::MediaOf(none);
    NSPorter::CIFFReader reader(&media, kAIFFGroupID);
    EXPECT_RAISES(NSLichen::XFormatViolation, "", EnterAIFFSoundData(reader, {}));
}

TEST(ReadSamples, EachDepthOnOneScale) {
    const std::string bytes = "\x80\xFF\x01\x7F\x12\x34"s;
    struct Case {
        int32_t fDepth;
        std::vector<float> fValues;
    };
    for (const Case& c :
         {Case{8, {-8388608.0f, -65536.0f, 65536.0f, 8323072.0f}},
          Case{16, {-8323328.0f, 98048.0f, 1192960.0f}}, Case{20, {-8323327.0f, 8327732.0f}},
          Case{24, {-8323327.0f, 8327732.0f}}}) {
        NSPorter::CMemoryMedia media = NSPorter::MediaOf(bytes);
        std::vector<float> values(c.fValues.size());
        ReadSamples(media, 1, c.fDepth, static_cast<int64_t>(values.size()), values.data());
        EXPECT_EQ(values, c.fValues) << c.fDepth;
    }
}

TEST(ReadSamples, LotsCoverAnyCountAndStopAtTheEnd) {
    std::string bytes(3 * 5000, '\0');
    for (size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(i * 7);
    }
    for (const int32_t channels : {1, 2, 3, 1500, 2048}) {
        NSPorter::CMemoryMedia media = NSPorter::MediaOf(bytes);
        const int64_t frames = 7500 / channels;
        std::vector<float> values(7501, -1.0f);
        ReadSamples(media, channels, 16, frames, values.data());
        const auto count = static_cast<size_t>(frames * channels);
        for (size_t i = 0; i < count; ++i) {
            const auto high = static_cast<int8_t>(bytes[2 * i]);
            const auto low = static_cast<uint8_t>(bytes[2 * i + 1]);
            ASSERT_EQ(values[i], static_cast<float>((high * 256 + low) * 256));
        }
        EXPECT_EQ(values[count], -1.0f);
        EXPECT_EQ(media.GetPosition(), static_cast<int64_t>(2 * count));
        EXPECT_RAISES(NSLichen::XFormatViolation, "",
                      ReadSamples(media, channels, 16, std::numeric_limits<int64_t>::max() / 65536,
                                  values.data()));
    }
    NSPorter::CMemoryMedia media = NSPorter::MediaOf(bytes);
    for (const int32_t depth : {0, 12, 32}) {
        EXPECT_RAISES(NSLichen::XFormatViolation, "bad bytes/frame",
                      ReadSamples(media, 1, depth, 1, nullptr));
    }
    for (const int32_t channels : {0, -1, 2049}) {
        EXPECT_RAISES(NSLichen::XFormatViolation, "bad CWaveSampleInfo format",
                      ReadSamples(media, channels, 16, 1, nullptr));
    }
    EXPECT_EQ(media.GetPosition(), 0);
}

TEST(AIFFSampleWriter, ReaderGetsTheSameBack) {
    for (const int32_t mode : {kLoopMode_None, kLoopMode_PointsOnly, kLoopMode_Looping}) {
        CWaveSampleInfo info{.fChannels = 2, .fBitDepth = 24, .fSampleRate = 96000, .fFrames = 500};
        const bool hasPoints = mode != kLoopMode_None;
        info.fLoop = {mode,
                      mode == kLoopMode_Looping,
                      hasPoints ? 17 : 0,
                      hasPoints ? 400 : 0,
                      true,
                      72,
                      -33,
                      true,
                      12,
                      100};
        NSPorter::COwnedMemoryMedia media;
        NSPorter::CIFFWriter writer(&media);
        writer.BeginGroup(kAIFFGroupID, kAIFFType);
        WriteAIFFCommon(writer, info,
                        hasPoints ? EAIFFCommonForm::kWithCompressionType
                                  : EAIFFCommonForm::kPlain);
        WriteAIFFLoop(writer, info.fLoop);
        BeginAIFFSoundData(writer, 1500, 64);
        const std::string samples(500 * 6, '\x11');
        writer.Write(3000, NSPorter::Raw(samples));
        writer.EndChunk();
        writer.EndGroup();

        CWaveSampleInfo read;
        ReadAIFFSampleInfo(read, media);
        EXPECT_EQ(read.fChannels, 2);
        EXPECT_EQ(read.fBitDepth, 24);
        EXPECT_EQ(read.fSampleRate, 96000);
        EXPECT_EQ(read.fFrames, 500);
        EXPECT_EQ(read.fLoop.fMode, mode);
        EXPECT_EQ(read.fLoop.fDirection, info.fLoop.fDirection);
        EXPECT_EQ(read.fLoop.fStart, info.fLoop.fStart);
        EXPECT_EQ(read.fLoop.fEnd, info.fLoop.fEnd);
        EXPECT_EQ(read.fLoop.fRootNote, 72);
        EXPECT_EQ(read.fLoop.fDetune, -33);
        EXPECT_EQ(read.fLoop.fLowNote, 12);
        EXPECT_EQ(read.fLoop.fHighNote, 100);
        NSPorter::CIFFReader reader(&media, kAIFFGroupID);
        EXPECT_EQ(EnterAIFFSoundData(reader, read).fOffset, 1500U);
        EXPECT_EQ(media.BytesLeft(), 3000);
    }
}

TEST(AIFFSampleWriter, DefaultsToTheByte) {
    NSPorter::COwnedMemoryMedia media;
    NSPorter::CIFFWriter writer(&media);
    CWaveLoopInfo loop;
    loop.fMode = kLoopMode_Looping;
    loop.fStart = 3;
    loop.fEnd = 0x01020304;
    // Not taken over: the record says that it does not know them.
    loop.fRootNote = 99;
    loop.fHighNote = 98;
    WriteAIFFLoop(writer, loop);
    const std::string notes = "\x3C\0\0\x7F\x01\x7F"s;
    EXPECT_EQ(NSPorter::BytesOf(media),
              Instrument({.fNotes = notes}) +
                  Markers({{1, 3, "Loop Start"}, {2, 0x01020304, "Loop End"}}));
}

} // namespace

} // namespace NSLOPDLL

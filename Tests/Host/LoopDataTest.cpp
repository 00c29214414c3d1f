#include "Tests/Host/HostLoop.h"

#include <array>
#include <bit>
#include <cmath>
#include <string>

// What a loop tells of itself, against what was written into its file.

namespace {

// The record's fields in their order.
using Fields = std::array<int32_t, 9>;

TEST_F(CHostTest, InfoTellsWhatTheFileHolds) {
    struct SCase {
        Bytes fBytes;
        int32_t fChannels;
        int32_t fBitDepth;
        int32_t fStatedSlices; // the LOP2 files here state none
    };
    for (const SCase& c :
         {SCase{DrumLOP2(16, false), 1, 16, 0}, SCase{DrumLOP2(16, true), 2, 16, 0},
          SCase{DrumLOP2(24, false), 1, 24, 0}, SCase{DrumLOP2(24, true), 2, 24, 0},
          SCase{DrumTSL(), 1, 16, 8}, SCase{DrumLOP(), 1, 16, 8}}) {
        Fields expected = {c.fChannels, 44100, 8, 120000, 120000, 4 * LOP_PPQ, 4, 4, c.fBitDepth};
        EXPECT_EQ(std::bit_cast<Fields>(CHostLoop(c.fBytes).GetInfo()), expected);
        LOPInfo info{};
        ASSERT_EQ(LOPGetInfoFromBuffer(static_cast<int32_t>(c.fBytes.size()), c.fBytes.data(),
                                       sizeof info, &info),
                  kLOPResult_OK);
        expected[2] = c.fStatedSlices;
        EXPECT_EQ(std::bit_cast<Fields>(info), expected);
    }
}

TEST_F(CHostTest, OneRecordingRendersTheSameSlicesFromTSLAndLOP2) {
    NSLoopWriter::SLOP2File lop2 = NSLoopWriter::MakeDrumLOP2(DrumOptions(16, false));
    // What a .tsl of stretch index 4 asks of the shaper.
    lop2.fTransientShaper.fEnabled = 1;
    lop2.fTransientShaper.fAmount = 20;
    NSLoopWriter::STSLFile tsl = NSLoopWriter::MakeDrumTSL(DrumOptions(16, false));
    tsl.fStretchIndex = 4;
    const CHostLoop newer(WriteLOP2(lop2));
    const CHostLoop older(WriteTSL(tsl));
    for (int32_t slice = 0; slice < 8; ++slice) {
        EXPECT_EQ(older.RenderSlice(slice), newer.RenderSlice(slice)) << slice;
    }
}

TEST_F(CHostTest, InfoFromBufferIsNotClamped) {
    NSLoopWriter::SLOP2File file = NSLoopWriter::MakeDrumLOP2(DrumOptions());
    file.fGeneralInfo.fTimeSignatureNumerator = 0;
    file.fGeneralInfo.fBeats = 3;
    file.fTesselInfo.fExportedSliceCount = 99;
    const Bytes bytes = WriteLOP2(file);
    LOPInfo info{};
    const auto size = static_cast<int32_t>(bytes.size());
    ASSERT_EQ(LOPGetInfoFromBuffer(size, bytes.data(), sizeof info, &info), kLOPResult_OK);
    EXPECT_EQ(info.fTimeSignatureNumerator, 0);
    EXPECT_EQ(info.fPPQLength, 3 * LOP_PPQ);
    EXPECT_EQ(info.fSliceCount, 99);

    const CHostLoop loop(bytes);
    EXPECT_EQ(loop.GetInfo().fTimeSignatureNumerator, 1);
    EXPECT_EQ(loop.GetInfo().fPPQLength, 4 * LOP_PPQ);
    EXPECT_EQ(loop.GetInfo().fSliceCount, 8);
}

TEST_F(CHostTest, ATimeSignatureOverZeroHasNoLengthInTheFile) {
    NSLoopWriter::SLOP2File file = NSLoopWriter::MakeDrumLOP2(DrumOptions());
    file.fGeneralInfo.fTimeSignatureDenominator = 0;
    const Bytes bytes = WriteLOP2(file);
    LOPInfo info{};
    EXPECT_EQ(
        LOPGetInfoFromBuffer(static_cast<int32_t>(bytes.size()), bytes.data(), sizeof info, &info),
        kLOPResult_FileCorrupt);
    EXPECT_EQ(info.fSampleRate, 44100);
    const CHostLoop loop(bytes);
    EXPECT_EQ(loop.GetInfo().fTimeSignatureDenominator, 1);
}

TEST_F(CHostTest, CreatorTextsComeInOrderAndAreCutBetweenCharacters) {
    NSLoopWriter::SLOP2File file = NSLoopWriter::MakeDrumLOP2(DrumOptions());
    file.fCreatorInfo.emplace();
    file.fCreatorInfo->fTexts[0].fText = u"first";
    file.fCreatorInfo->fTexts[1].fText = std::u16string(255, u'x');
    // 127 two-byte characters make 254 bytes; one more would be split.
    file.fCreatorInfo->fTexts[2].fText = std::u16string(255, u'\u00E9');
    file.fCreatorInfo->fTexts[3].fText = u"two\nlines";
    file.fCreatorInfo->fTexts[4].fText = u"\u65E5\u672C";
    const CHostLoop loop(WriteLOP2(file));
    LOPCreatorInfo info{};
    ASSERT_EQ(LOPGetCreatorInfo(loop.Get(), sizeof info, &info), kLOPResult_OK);
    EXPECT_STREQ(info.fText1, "first");
    EXPECT_EQ(std::string(info.fText2), std::string(255, 'x'));
    EXPECT_EQ(std::string(info.fText3).size(), 254U);
    EXPECT_STREQ(info.fText4, "two\xE2\x80\xA9lines");
    EXPECT_STREQ(info.fText5, "\xE6\x97\xA5\xE6\x9C\xAC");
}

TEST_F(CHostTest, ABrokenCreatorTextLoadsAndFailsWhenAskedFor) {
    NSLoopWriter::SLOP2File file = NSLoopWriter::MakeDrumLOP2(DrumOptions());
    file.fCreatorInfo.emplace();
    file.fCreatorInfo->fTexts[0].fText = u"kept";
    file.fCreatorInfo->fTexts[1].fForm = NSLoopWriter::SStoredText::EForm::kLong;
    file.fCreatorInfo->fTexts[1].fRawBytes = Bytes{0xED, 0xB0, 0x80}; // a lone low surrogate
    const CHostLoop loop(WriteLOP2(file));
    LOPCreatorInfo info{};
    EXPECT_EQ(LOPGetCreatorInfo(loop.Get(), sizeof info, &info), kLOPResult_FileCorrupt);
    EXPECT_STREQ(info.fText1, "kept");
    EXPECT_STREQ(info.fText2, "");
}

TEST_F(CHostTest, SlicesStandOnTheirEighthNotes) {
    for (const Bytes& bytes : {DrumLOP2(), DrumTSL(), DrumLOP()}) {
        const CHostLoop loop(bytes);
        for (int32_t slice = 0; slice < 8; ++slice) {
            EXPECT_NEAR(loop.GetSliceInfo(slice).fPPQPosition, slice * (LOP_PPQ / 2.0), 2.0);
        }
    }
}

TEST_F(CHostTest, SliceLengthsFollowTheOutputRate) {
    const CHostLoop loop(DrumLOP2());
    const int32_t atSource = loop.GetSliceInfo(0).fFrameCount;
    ASSERT_EQ(LOPSetOutputSampleRate(loop.Get(), 88200), kLOPResult_OK);
    EXPECT_NEAR(loop.GetSliceInfo(0).fFrameCount, 2 * atSource, 2);
    EXPECT_EQ(loop.GetInfo().fSampleRate, 44100);
    ASSERT_EQ(LOPSetPreviewTempo(loop.Get(), 60000), kLOPResult_OK);
    EXPECT_NEAR(loop.GetSliceInfo(0).fFrameCount, 2 * atSource, 2);
    EXPECT_EQ(loop.GetInfo().fStoredTempo, 120000);
}

TEST_F(CHostTest, SlicesArePaddedClippedAndTheSameEachTime) {
    const CHostLoop loop(DrumLOP2(24));
    const Planes first = loop.RenderSlice(2);
    EXPECT_EQ(loop.RenderSlice(2), first);
    const size_t frames = first[0].size();
    std::vector<float> left(frames + 100, 9.0f);
    std::vector<float> right(left);
    LOPRenderBuffers buffers{left.data(), right.data()};
    ASSERT_EQ(LOPRenderSlice(loop.Get(), 2, static_cast<int32_t>(frames) + 100, &buffers),
              kLOPResult_OK);
    EXPECT_TRUE(std::equal(first[0].begin(), first[0].end(), left.begin()));
    for (const std::vector<float>* plane : {&left, &right}) {
        for (size_t i = frames; i < plane->size(); ++i) {
            EXPECT_EQ((*plane)[i], 0.0f);
        }
        for (const float sample : *plane) {
            EXPECT_LE(std::abs(sample), 1.0f);
        }
    }
}

TEST_F(CHostTest, AFileMayAskForItsLoopInOnePiece) {
    NSLoopWriter::SLOP2File file = NSLoopWriter::MakeDrumLOP2(DrumOptions());
    file.fGeneralInfo.fSplitIntoSlices = 0;
    const CHostLoop loop(WriteLOP2(file));
    EXPECT_EQ(loop.GetInfo().fSliceCount, 1);
    EXPECT_EQ(loop.GetSliceInfo(0).fPPQPosition, 0);
    ASSERT_EQ(LOPSetPreviewTempo(loop.Get(), 60000), kLOPResult_OK); // not of the piece
    const std::vector<float> whole = loop.RenderSlice(0)[0];
    EXPECT_GE(whole.size(), 88200U);
    EXPECT_LT(whole.size(), 88200U + 20000U) << "the loop and what its last slice rings on";
    for (size_t beat = 0; beat < 4; ++beat) {
        const auto start = whole.begin() + static_cast<ptrdiff_t>(beat * 22050);
        EXPECT_FALSE(IsSilent({start, start + 2000})) << beat;
    }
}

TEST_F(CHostTest, ALoopOfNoFramesIsHarmless) {
    NSLoopWriter::SLOP2File file = NSLoopWriter::MakeDrumLOP2(DrumOptions());
    file.fSampleInfo.fLoopStart = 500;
    file.fSampleInfo.fLoopEnd = 500;
    const CHostLoop loop(WriteLOP2(file));
    EXPECT_EQ(loop.GetInfo().fLoopTempo, 0);
    ASSERT_EQ(LOPStartPreview(loop.Get()), kLOPResult_OK);
    Planes planes = loop.RenderPreview(20000, 777);
    for (int32_t slice = 0; slice < loop.GetInfo().fSliceCount; ++slice) {
        planes.push_back(loop.RenderSlice(slice)[0]);
    }
    for (const std::vector<float>& plane : planes) {
        EXPECT_TRUE(std::all_of(plane.begin(), plane.end(),
                                [](float sample) { return std::isfinite(sample); }));
    }
}

} // namespace

#include "Tests/Host/HostLoop.h"

// The preview as a host hears it.

namespace {

TEST_F(CHostTest, BatchesOfAnySizeGiveTheSameSamples) {
    for (const Bytes& bytes : {DrumLOP2(16, true), DrumLOP2(24, false), DrumTSL(), DrumLOP()}) {
        const auto render = [&bytes](size_t batch) {
            const CHostLoop loop(bytes);
            EXPECT_EQ(LOPSetPreviewTempo(loop.Get(), 97531), kLOPResult_OK);
            EXPECT_EQ(LOPStartPreview(loop.Get()), kLOPResult_OK);
            return loop.RenderPreview(50000, batch);
        };
        const Planes whole = render(50000);
        EXPECT_FALSE(IsSilent(whole[0]));
        for (const size_t batch : {1U, 63U, 64U, 65U, 441U, 1000U}) {
            EXPECT_EQ(render(batch), whole) << batch;
        }
    }
}

TEST_F(CHostTest, AMonoMixIsTheMeanOfBothChannels) {
    for (const bool isStereo : {true, false}) {
        const Bytes bytes = DrumLOP2(16, isStereo);
        const CHostLoop loop(bytes);
        const CHostLoop mixed(bytes);
        LOPStartPreview(loop.Get());
        LOPStartPreview(mixed.Get());
        const Planes planes = loop.RenderPreview(20000, 1000);
        EXPECT_FALSE(IsSilent(planes[0]));
        EXPECT_EQ(planes[0] == planes[1], !isStereo) << "a mono loop sounds on both sides";
        std::vector<float> mono(20000);
        LOPRenderBuffers buffers{mono.data(), nullptr};
        ASSERT_EQ(LOPRenderPreviewBatch(mixed.Get(), 20000, &buffers), kLOPResult_OK);
        for (size_t i = 0; i < mono.size(); ++i) {
            ASSERT_EQ(mono[i], (planes[0][i] + planes[1][i]) * 0.5f) << i;
        }
    }
}

TEST_F(CHostTest, AStopFadesAndAStartBeginsAgain) {
    const CHostLoop loop(DrumLOP2());
    LOPStartPreview(loop.Get());
    LOPStopPreview(loop.Get()); // the audio never heard of it, so the next start stands
    LOPStartPreview(loop.Get());
    const Planes first = loop.RenderPreview(8192, 64);
    EXPECT_FALSE(IsSilent(first[0]));
    LOPStopPreview(loop.Get());
    const Planes tail = loop.RenderPreview(8192, 64);
    EXPECT_FALSE(IsSilent({tail[0].begin(), tail[0].begin() + 32}));
    EXPECT_TRUE(IsSilent({tail[0].end() - 4096, tail[0].end()}));
    LOPStartPreview(loop.Get());
    EXPECT_EQ(loop.RenderPreview(8192, 64), first);
}

TEST_F(CHostTest, AStopAndStartWithNoBatchBetweenStaysSilent) {
    const CHostLoop loop(DrumLOP2());
    LOPStartPreview(loop.Get());
    loop.RenderPreview(8192, 8192);
    ASSERT_EQ(LOPStopPreview(loop.Get()), kLOPResult_OK);
    ASSERT_EQ(LOPStartPreview(loop.Get()), kLOPResult_OK);
    loop.RenderPreview(8192, 8192);
    EXPECT_TRUE(IsSilent(loop.RenderPreview(44100, 441)[0]));
    ASSERT_EQ(LOPStopPreview(loop.Get()), kLOPResult_OK);
    loop.RenderPreview(64, 64);
    ASSERT_EQ(LOPStartPreview(loop.Get()), kLOPResult_OK);
    EXPECT_FALSE(IsSilent(loop.RenderPreview(8192, 441)[0]));
}

// Two runs part where the faster one starts its second slice. At the loop's own tempo of 120 that
// is 11025 frames on; the first interval of a start is a block shorter than planned.
TEST_F(CHostTest, SlicesFollowTheTempo) {
    const CHostLoop loop(DrumLOP2());
    const auto render = [&loop](int32_t tempo) {
        EXPECT_EQ(LOPSetPreviewTempo(loop.Get(), tempo), kLOPResult_OK);
        EXPECT_EQ(LOPStartPreview(loop.Get()), kLOPResult_OK);
        std::vector<float> heard = loop.RenderPreview(40000, 441)[0];
        LOPStopPreview(loop.Get());
        loop.RenderPreview(19200, 1000); // whole blocks
        return heard;
    };
    const std::vector<float> slowest = render(20000);
    for (const auto& [tempo, blocks] : {std::pair(60000, 345), {120000, 172}, {200000, 103}}) {
        const std::vector<float> faster = render(tempo);
        const auto parting = std::mismatch(faster.begin(), faster.end(), slowest.begin()).first;
        EXPECT_EQ((parting - faster.begin()) / 64, blocks - 1) << tempo;
    }
}

TEST_F(CHostTest, WithoutSlicesInTheLoopThePreviewIsSilent) {
    NSLoopWriter::SLOP2File muted = NSLoopWriter::MakeDrumLOP2(DrumOptions());
    for (NSLoopWriter::SLOP2Slice& slice : muted.fSlices) {
        slice.fFlags = 4;
    }
    muted.fGeneralInfo.fDropMuted = 1;
    // The one slice that crosses the loop is dropped, so that every range is outside of it.
    NSLoopWriter::SLOP2File outside = muted;
    outside.fSampleInfo.fLoopStart = 12000;
    outside.fSampleInfo.fLoopEnd = 13000;
    outside.fSlices.front().fFlags = 0;
    struct SCase {
        NSLoopWriter::SLOP2File& fFile;
        bool fSplit;
        int32_t fSlices;
        bool fIsSilent;
    };
    for (const SCase& c : {SCase{muted, true, 0, true}, SCase{muted, false, 1, true},
                           SCase{outside, true, 0, true}, SCase{outside, false, 1, false}}) {
        c.fFile.fGeneralInfo.fSplitIntoSlices = c.fSplit ? 1 : 0;
        const CHostLoop loop(WriteLOP2(c.fFile));
        EXPECT_EQ(loop.GetInfo().fSliceCount, c.fSlices);
        EXPECT_EQ(LOPStartPreview(loop.Get()), kLOPResult_OK);
        EXPECT_EQ(IsSilent(loop.RenderPreview(4096, 100)[0]), c.fIsSilent);
        EXPECT_EQ(LOPStopPreview(loop.Get()), kLOPResult_OK);
    }
}

} // namespace

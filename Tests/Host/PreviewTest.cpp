#include "Tests/Host/HostLoop.h"

#include <cmath>

// The preview as a host hears it.

namespace {

bool IsSilent(const std::vector<float>& samples) {
    return std::all_of(samples.begin(), samples.end(),
                       [](float sample) { return std::abs(sample) < 1e-4f; });
}

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
    const Bytes bytes = DrumLOP2(16, true);
    const CHostLoop stereo(bytes);
    const CHostLoop mixed(bytes);
    LOPStartPreview(stereo.Get());
    LOPStartPreview(mixed.Get());
    const Planes planes = stereo.RenderPreview(8192, 8192);
    std::vector<float> mono(8192);
    LOPRenderBuffers buffers{mono.data(), nullptr};
    ASSERT_EQ(LOPRenderPreviewBatch(mixed.Get(), 8192, &buffers), kLOPResult_OK);
    for (size_t i = 0; i < mono.size(); ++i) {
        ASSERT_EQ(mono[i], (planes[0][i] + planes[1][i]) * 0.5f) << i;
    }
}

TEST_F(CHostTest, AMonoLoopSoundsAlikeOnBothSides) {
    const CHostLoop loop(DrumLOP2(16, false));
    LOPStartPreview(loop.Get());
    const Planes planes = loop.RenderPreview(8192, 1000);
    EXPECT_EQ(planes[0], planes[1]);
    EXPECT_FALSE(IsSilent(planes[0]));
}

TEST_F(CHostTest, AStopFadesAndAStartBeginsAgain) {
    const CHostLoop loop(DrumLOP2());
    LOPStartPreview(loop.Get());
    const Planes first = loop.RenderPreview(8192, 64);
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

// First frames of the hits in a run of preview: where sound follows on silence.
std::vector<size_t> Onsets(const std::vector<float>& samples) {
    std::vector<size_t> onsets;
    size_t quiet = 1000;
    for (size_t i = 0; i < samples.size(); ++i) {
        if (std::abs(samples[i]) > 0.05f) {
            if (quiet >= 1000) {
                onsets.push_back(i);
            }
            quiet = 0;
        } else {
            ++quiet;
        }
    }
    return onsets;
}

// Clicks a quarter apart, so that each trigger shows.
Bytes ClickLOP2() {
    NSLoopWriter::SLOP2File file;
    file.fLeft = NSLoopWriter::Plane(88200);
    file.fSlices.clear();
    for (uint32_t beat = 0; beat < 4; ++beat) {
        NSLoopWriter::SLOP2Slice slice;
        slice.fPosition = beat * 22050;
        file.fSlices.push_back(slice);
        for (uint32_t i = 0; i < 40; ++i) {
            file.fLeft[slice.fPosition + 100 + i] = 20000;
        }
    }
    return WriteLOP2(file);
}

TEST_F(CHostTest, SlicesFollowTheTempo) {
    const CHostLoop loop(ClickLOP2());
    for (const int32_t tempo : {60000, 90000, 120000, 200000}) {
        ASSERT_EQ(LOPSetPreviewTempo(loop.Get(), tempo), kLOPResult_OK);
        ASSERT_EQ(LOPStartPreview(loop.Get()), kLOPResult_OK);
        const std::vector<size_t> onsets = Onsets(loop.RenderPreview(400000, 441)[0]);
        const double beat = 44100.0 * 60000.0 / tempo;
        ASSERT_GE(onsets.size(), static_cast<size_t>(400000 / beat) - 1);
        for (size_t i = 1; i < onsets.size(); ++i) {
            // The grid of 64 frames, the block by which the first interval is shorter, and what is
            // rounded anew at each turn of the loop's four beats.
            const size_t turns = i / 4;
            EXPECT_NEAR(static_cast<double>(onsets[i] - onsets[0]), static_cast<double>(i) * beat,
                        129.0 + 32.0 * static_cast<double>(turns))
                << tempo;
        }
        LOPStopPreview(loop.Get());
        loop.RenderPreview(200000, 1000);
    }
}

TEST_F(CHostTest, WithoutSlicesInTheLoopThePreviewIsSilent) {
    NSLoopWriter::SLOP2File file = NSLoopWriter::MakeDrumLOP2(DrumOptions());
    for (NSLoopWriter::SLOP2Slice& slice : file.fSlices) {
        slice.fFlags = 4; // muted
    }
    file.fGeneralInfo.fDropMuted = 1;
    const CHostLoop loop(WriteLOP2(file));
    EXPECT_EQ(loop.GetInfo().fSliceCount, 0);
    EXPECT_EQ(LOPStartPreview(loop.Get()), kLOPResult_OK);
    EXPECT_TRUE(IsSilent(loop.RenderPreview(4096, 100)[0]));
    EXPECT_EQ(LOPStopPreview(loop.Get()), kLOPResult_OK);
}

} // namespace

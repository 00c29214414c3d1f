#include "LoopLibrary/Render/Exporter/CExporter.h"
#include "Tests/Render/Sequencer/SequencerTestKit.h"

#include <stdexcept>
#include <tuple>

namespace NSLOPDLL {
namespace {

std::vector<int16_t> Samples(const CABCWaveSample& sample) {
    std::vector<int16_t> values(sample.GetFrameCount());
    sample.Get16BitSamples(0, static_cast<int32_t>(values.size()), values.data(), kChannel_Left);
    return values;
}

auto Loop(const CABCWaveSample& sample) {
    return std::tuple(sample.HasLoop(), sample.GetLoopMode(), sample.GetLoopStart(),
                      sample.GetLoopEnd());
}

// What floats become in a sample of 16 bits.
std::vector<int16_t> Stored(const std::vector<float>& audio, size_t count) {
    const auto sample = CreateWaveSample(44100, static_cast<uint32_t>(count), false, 16);
    sample->SetFloatSamples(0, static_cast<int32_t>(count), audio.data(), kChannel_Left);
    return Samples(*sample);
}

TEST(CExporter, SlicesSoundLikeAPreviewOfOneSlice) {
    SBarLoop loop;
    loop.fSequencer.SetLoopRange(22050, kBarFrames);
    loop.fSequencer.SetBeats(3);
    loop.fSequencer.SetTimeSignature(3, 8);
    loop.fSequencer.GetSampler().SetTranspose(-300);
    CExporter exporter(loop.fSequencer, true, false);
    EXPECT_EQ(exporter.GetItemCount(), 3U); // the first beat lies before the loop
    exporter.SetOutputRate(22050);
    exporter.SetExtraFrames(100);
    loop.fSequencer.SetOutputRate(22050);
    uint64_t total = 0;
    for (uint32_t item = 0; item < 3; ++item) {
        loop.fSequencer.StartOneShot(item + 1);
        auto expected = Stored(RenderBlocks(loop.fSequencer, 400), size_t{400} * kBlockFrames);
        const CExportItemInfo info = exporter.GetItemInfo(item);
        // Eighths. The transposition makes each slice ring on into the next one.
        EXPECT_EQ(info.fPPQPosition, item * 7680);
        EXPECT_GT(info.fPPQEnd, std::min((item + 1) * 7680, 3U * 7680 - 1));
        EXPECT_LE(info.fPPQEnd, 3U * 7680);
        expected.resize(info.fFrameCount - 100);
        expected.resize(info.fFrameCount, 0);
        const auto slice = exporter.Export(item);
        EXPECT_EQ(Samples(*slice), expected);
        EXPECT_EQ(Loop(*slice), std::tuple(true, 2U, 0, int32_t(info.fFrameCount)));
        total += info.fFrameCount;
        loop.fSequencer.GetSampler().ResetVoices();
    }
    EXPECT_EQ(exporter.GetTotalFrameCount(), total);
    EXPECT_THROW(exporter.Export(3), std::out_of_range);
}

// Slices behind the loop start, closer than a block in the middle and at the end, and nearer to the
// loop end than the block that their time is rounded to.
TEST(CExporter, LoopPlacesItsSlicesInTime) {
    const auto sample = MakeNoiseSample(44100, 20010, true, 16);
    const SliceTable table = MakeTable({100, 5000, 5010, 20000, 20005}, 20010);
    CTesselSequencer sequencer(sample.get());
    sequencer.SetBeats(1);
    sequencer.SetTempo(sequencer.GetLoopTempo());
    sequencer.SetSliceTable(std::make_unique<SliceTable>(table));
    SamplerActions actions;
    const int64_t blocks[] = {2, 78, 79, 313, 314};
    for (size_t i = 0; i < 5; ++i) {
        actions.emplace(blocks[i], Range(table[i]));
    }
    const auto audio = SamplerAudio(sequencer, 500, actions);

    CExporter exporter(sequencer, false, false);
    const CExportItemInfo info = exporter.GetItemInfo(0);
    EXPECT_EQ(info.fPPQEnd, 15360U);
    EXPECT_EQ(int32_t(info.fFrameCount), 314 * 64 + sequencer.GetRenderLength(table[4]));
    const auto whole = exporter.Export(0);
    EXPECT_EQ(Samples(*whole), Stored(audio, info.fFrameCount));
    EXPECT_EQ(Loop(*whole), std::tuple(true, 2U, 0, 20010));

    // With the fade the loop keeps its length, and the last slices have no time left.
    const auto faded = CExporter(sequencer, false, true).Export(0);
    EXPECT_EQ(faded->GetFrameCount(), 20010U);
    for (const auto& [frame, part] : {std::pair(19970, 1.0), {19990, 0.5}, {20009, 0.025}}) {
        for (const int32_t channel : {kChannel_Left, kChannel_Right}) {
            EXPECT_NEAR(faded->Get16BitSample(frame, channel),
                        whole->Get16BitSample(frame, channel) * part, 1);
        }
    }
}

TEST(CExporter, LengthsAtTheLimits) {
    const auto sample = CreateWaveSample(1000, 3000000, false, 16);
    CTesselSequencer sequencer(sample.get());
    sequencer.SetBars(INT32_MAX);
    sequencer.SetSliceTable(std::make_unique<SliceTable>(MakeTable({0, 10}, 3000000)));
    CExporter exporter(sequencer, true, false);
    exporter.SetOutputRate(1000000);
    exporter.SetExtraFrames(UINT32_MAX);
    EXPECT_EQ(exporter.GetItemInfo(1).fFrameCount, 0x7FFFFFFFU);
    sample->SetLoop(kSampleLoopMode_Forward, 10, 10);
    EXPECT_EQ(CExporter(sequencer, false, false).GetItemInfo(0).fPPQEnd, 0U);
}

} // namespace
} // namespace NSLOPDLL

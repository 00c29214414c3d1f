#include "LoopLibrary/Render/Exporter/CExporter.h"

#include "LoopLibrary/Render/Sample/CABCWaveSample.h"

#include <algorithm>

namespace NSLOPDLL {

namespace {

constexpr int32_t kFadeOutFrames = 40;
constexpr float kFadeOutStep = 0.025f;

void FadeOutEnd(CABCWaveSample& target, int32_t total) noexcept {
    float factor = 1.0f;
    for (int32_t frame = std::max(total - kFadeOutFrames, 0); frame < total; ++frame) {
        for (int32_t channel = kChannel_Left;
             channel <= (target.IsStereo() ? kChannel_Right : kChannel_Left); ++channel) {
            target.SetFloatSample(frame, target.GetFloatSample(frame, channel) * factor, channel);
        }
        factor = std::max(factor - kFadeOutStep, 0.0f);
    }
}

} // namespace

std::unique_ptr<CABCWaveSample> CExporter::Export(uint32_t index) {
    const CExportItemInfo info = GetItemInfo(index);
    const CABCWaveSample& source = fSequencer.GetWaveSample();
    auto target = CreateWaveSample(static_cast<uint32_t>(GetOutputRate()), info.fFrameCount,
                                   source.IsStereo(), source.GetBitDepth());
    if (fPerSlice) {
        target->SetLoop(kSampleLoopMode_Forward, 0, static_cast<int32_t>(info.fFrameCount));
        RenderSlice(*target, index);
    } else {
        target->SetLoop(kSampleLoopMode_Forward, 0, fSequencer.FramesToOutput(LoopLength()));
        RenderLoop(*target);
    }
    return target;
}

void CExporter::RenderLoop(CABCWaveSample& target) {
    fSequencer.ResetRender();
    const auto total = static_cast<int32_t>(target.GetFrameCount());
    const size_t count = fSliceIndices.size();
    int64_t next = count == 0 ? 0 : SliceTime(0);
    size_t slice = 0;
    int32_t position = 0;
    while (position < total) {
        if (position == next) {
            if (slice < count) {
                fSequencer.PlaySlice(fSliceIndices[slice]);
                ++slice;
            }
            next = slice < count ? std::max<int64_t>(SliceTime(slice), next + kBlockFrames) : total;
        }
        // Times are rounded to blocks and may lie behind an end that is not.
        const auto end = static_cast<int32_t>(std::min<int64_t>(next, total));
        RenderBlocks(target, position, end - position);
        position = end;
    }
    if (fFadeOutEnd) {
        FadeOutEnd(target, total);
    }
}

void CExporter::RenderSlice(CABCWaveSample& target, uint32_t item) {
    const uint32_t index = SliceIndex(item);
    const auto total = static_cast<int32_t>(target.GetFrameCount());
    const int32_t sounding =
        std::min(fSequencer.GetRenderLength(fSequencer.GetSlicePlayRange(index)), total);
    fSequencer.ResetRender();
    fSequencer.PlaySlice(index);
    RenderBlocks(target, 0, sounding);
    for (int32_t frame = sounding; frame < total; ++frame) {
        target.Set16BitSample(frame, 0, kChannel_Left);
        if (target.IsStereo()) {
            target.Set16BitSample(frame, 0, kChannel_Right);
        }
    }
}

void CExporter::RenderBlocks(CABCWaveSample& target, int32_t start, int32_t count) {
    float left[kBlockFrames];
    float right[kBlockFrames];
    for (int32_t done = 0; done < count;) {
        fSequencer.RenderBlock({left, right});
        const int32_t stored = std::min(kBlockFrames, count - done);
        target.SetFloatSamples(start + done, stored, left, kChannel_Left);
        if (target.IsStereo()) {
            target.SetFloatSamples(start + done, stored, right, kChannel_Right);
        }
        done += stored;
    }
}

} // namespace NSLOPDLL

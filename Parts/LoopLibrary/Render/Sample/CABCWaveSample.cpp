#include "LoopLibrary/Render/Sample/CABCWaveSample.h"

#include "LoopLibrary/Render/Forms/RenderForms.h"

#include <algorithm>
#include <array>

namespace NSLOPDLL {

namespace {

constexpr int32_t kPreviewStep = 64;

SPeaks Union(SPeaks a, SPeaks b) {
    return {std::min(a.fLow, b.fLow), std::max(a.fHigh, b.fHigh)};
}

// The peaks of the 64 frames of one preview step, fewer or none at the end of the sample.
SPeaks ReadStepPeaks(const CABCWaveSample& sample, int32_t channel, int64_t step) {
    const int64_t first = step * kPreviewStep;
    const int64_t left = int64_t{sample.GetFrameCount()} - first;
    if (left <= 0) {
        return {};
    }
    std::array<int16_t, kPreviewStep> values;
    const auto count = static_cast<int32_t>(std::min<int64_t>(left, kPreviewStep));
    sample.Get16BitSamples(static_cast<int32_t>(first), count, values.data(), channel);
    return GetRenderForm().fFindPeaks(values.data(), count);
}

} // namespace

CABCWaveSample::CABCWaveSample(uint32_t sampleRate, uint32_t frameCount, bool stereo,
                               uint32_t bitDepth) noexcept
    : fSampleRate(sampleRate), fFrameCount(frameCount), fBitDepth(bitDepth), fStereo(stereo),
      fLoopEnd(static_cast<int32_t>(frameCount)) {}

CABCWaveSample::CABCWaveSample(const CABCWaveSample& other)
    : fSampleRate(other.fSampleRate), fFrameCount(other.fFrameCount), fBitDepth(other.fBitDepth),
      fStereo(other.fStereo),
      fPreview(other.fPreview ? std::make_unique<CWaveSamplePreview>(*other.fPreview) : nullptr),
      fLoopSet(other.fLoopSet), fLoopMode(other.fLoopMode), fLoopStart(other.fLoopStart),
      fLoopEnd(other.fLoopEnd) {}

CABCWaveSample::~CABCWaveSample() = default;

void CABCWaveSample::SetLoop(uint32_t mode, int32_t start, int32_t end) noexcept {
    SetLoopMode(mode);
    fLoopStart = start;
    fLoopEnd = end;
}

void CABCWaveSample::SetLoopMode(uint32_t mode) noexcept {
    fLoopMode = mode;
    fLoopSet = true;
}

void CABCWaveSample::CreatePreview() {
    const auto entryCount = static_cast<int32_t>(fFrameCount / kPreviewStep);
    auto preview = std::make_unique<CWaveSamplePreview>(entryCount, fStereo);
    FillPreviewPeaks(kChannel_Left, entryCount, preview->GetLeftPeaks());
    if (fStereo) {
        FillPreviewPeaks(kChannel_Right, entryCount, preview->GetRightPeaks());
    }
    fPreview = std::move(preview);
}

void CABCWaveSample::FillPreviewPeaks(int32_t channel, int32_t entryCount,
                                      int16_t* peaks) const noexcept {
    SPeaks first = ReadStepPeaks(*this, channel, 0);
    SPeaks second = ReadStepPeaks(*this, channel, 1);
    for (int32_t i = 0; i < entryCount; ++i) {
        const SPeaks third = ReadStepPeaks(*this, channel, int64_t{i} + 2);
        const SPeaks entry = Union(Union(first, second), third);
        *peaks++ = entry.fLow;
        *peaks++ = entry.fHigh;
        first = second;
        second = third;
    }
}

} // namespace NSLOPDLL

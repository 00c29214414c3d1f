#include "LoopLibrary/Render/Sample/CABCWaveSample.h"

#include <algorithm>
#include <array>
#include <limits>

namespace NSLOPDLL {

namespace {

constexpr int32_t kPreviewStep = 64;

struct CPeaks {
    // What no sample has taken part in: neutral in Union.
    int16_t fLow = std::numeric_limits<int16_t>::max();
    int16_t fHigh = std::numeric_limits<int16_t>::min();
};

CPeaks Union(CPeaks a, CPeaks b) {
    return {std::min(a.fLow, b.fLow), std::max(a.fHigh, b.fHigh)};
}

// The peaks of the 64 frames of one preview step, fewer or none at the end of the sample.
CPeaks ReadStepPeaks(const CABCWaveSample& sample, int32_t channel, int64_t step) {
    const int64_t first = step * kPreviewStep;
    const int64_t left = int64_t{sample.GetFrameCount()} - first;
    CPeaks peaks;
    if (left <= 0) {
        return peaks;
    }
    std::array<int16_t, kPreviewStep> values;
    const auto count = static_cast<int32_t>(std::min<int64_t>(left, kPreviewStep));
    sample.Get16BitSamples(static_cast<int32_t>(first), count, values.data(), channel);
    for (int32_t i = 0; i < count; ++i) {
        peaks = Union(peaks, {values[static_cast<size_t>(i)], values[static_cast<size_t>(i)]});
    }
    return peaks;
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
    CPeaks first = ReadStepPeaks(*this, channel, 0);
    CPeaks second = ReadStepPeaks(*this, channel, 1);
    for (int32_t i = 0; i < entryCount; ++i) {
        const CPeaks third = ReadStepPeaks(*this, channel, int64_t{i} + 2);
        const CPeaks entry = Union(Union(first, second), third);
        *peaks++ = entry.fLow;
        *peaks++ = entry.fHigh;
        first = second;
        second = third;
    }
}

} // namespace NSLOPDLL

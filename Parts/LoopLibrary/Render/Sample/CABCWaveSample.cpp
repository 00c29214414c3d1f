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

// The peaks of one preview step after the other of a channel: of 64 frames each, of fewer or none
// at the end of the sample. Many steps are read at a time, since a read costs more than a step's
// peaks.
class CStepPeaks {
public:
    CStepPeaks(const CABCWaveSample& sample, int32_t channel)
        : fSample(sample), fChannel(channel) {}

    SPeaks Next() {
        if (fUsed == fRead) {
            Read();
        }
        const int32_t count = std::min(fRead - fUsed, kPreviewStep);
        const int16_t* const values = fValues.data() + fUsed;
        fUsed += count;
        return count > 0 ? GetRenderForm().fFindPeaks(values, count) : SPeaks{};
    }

private:
    void Read() {
        const int64_t left = int64_t{fSample.GetFrameCount()} - fPosition;
        fUsed = 0;
        fRead = static_cast<int32_t>(std::clamp<int64_t>(left, 0, kReadAtOnce));
        if (fRead > 0) {
            fSample.Get16BitSamples(static_cast<int32_t>(fPosition), fRead, fValues.data(),
                                    fChannel);
        }
        fPosition += fRead;
    }

    static constexpr int32_t kReadAtOnce = 16 * kPreviewStep;

    const CABCWaveSample& fSample;
    const int32_t fChannel;
    int64_t fPosition = 0;
    int32_t fUsed = 0;
    int32_t fRead = 0;
    std::array<int16_t, kReadAtOnce> fValues;
};

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
    CStepPeaks steps(*this, channel);
    SPeaks first = steps.Next();
    SPeaks second = steps.Next();
    for (int32_t i = 0; i < entryCount; ++i) {
        const SPeaks third = steps.Next();
        const SPeaks entry = Union(Union(first, second), third);
        *peaks++ = entry.fLow;
        *peaks++ = entry.fHigh;
        first = second;
        second = third;
    }
}

} // namespace NSLOPDLL

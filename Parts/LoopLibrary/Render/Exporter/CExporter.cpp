#include "LoopLibrary/Render/Exporter/CExporter.h"

#include "Failure/Raising/Raise.h"
#include "LoopLibrary/Render/Common/BlockTime.h"
#include "LoopLibrary/Render/Common/LoopRanges.h"
#include "LoopLibrary/Render/Common/OutputRate.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <utility>

namespace NSLOPDLL {

namespace {

// Wraps, as the format's own arithmetic does for loops beyond any sensible length.
int32_t WrappingProduct(int32_t a, int32_t b) noexcept {
    return static_cast<int32_t>(int64_t{a} * b);
}

} // namespace

CExporter::CExporter(const CTesselSequencer& sequencer, bool perSlice, bool fadeOutEnd)
    : fSequencer(sequencer), fPerSlice(perSlice), fFadeOutEnd(fadeOutEnd) {
    fSequencer.SetTempoSync(true);
    fSequencer.RebuildSliceTable();
    SetOutputRate(fSequencer.GetSourceRate());

    const CABCWaveSample& sample = fSequencer.GetWaveSample();
    const uint32_t count = fSequencer.GetSliceCount();
    for (uint32_t index = 0; index < count; ++index) {
        const CSlicePlayRange range = fSequencer.GetSlicePlayRange(index);
        if (range.fStart >= sample.GetLoopStart() && range.fEnd <= sample.GetLoopEnd()) {
            fSliceIndices.push_back(index);
        }
    }
}

CExporter::~CExporter() = default;

void CExporter::SetOutputRate(int32_t rate) {
    CommitOutputRate(CDSPTablesHandle(ClipOutputRate(rate)));
}

void CExporter::CommitOutputRate(CDSPTablesHandle tables) {
    fSequencer.CommitOutputRate(std::move(tables));
    fSequencer.ApplyOutputRate();
}

bool CExporter::IsStereo() const noexcept {
    return fSequencer.GetWaveSample().IsStereo();
}

uint32_t CExporter::GetItemCount() const noexcept {
    return fPerSlice ? static_cast<uint32_t>(fSliceIndices.size()) : 1;
}

uint32_t CExporter::SliceIndex(uint32_t item) const {
    if (item >= fSliceIndices.size()) {
        NSLichen::Raise(std::out_of_range("invalid vector<T> subscript"));
    }
    return fSliceIndices[item];
}

CExportItemInfo CExporter::GetItemInfo(uint32_t index) const {
    return fPerSlice ? GetSliceInfo(index) : GetLoopInfo();
}

uint64_t CExporter::GetTotalFrameCount() const {
    uint64_t total = 0;
    for (uint32_t index = 0; index < GetItemCount(); ++index) {
        total += GetItemInfo(index).fFrameCount;
    }
    return total;
}

CExportItemInfo CExporter::GetLoopInfo() const {
    int64_t frames = fSequencer.FramesToOutput(LoopLength());
    if (!fFadeOutEnd && !fSliceIndices.empty()) {
        // The loop grows by what its last slice rings beyond it.
        int64_t time = SliceTime(0);
        for (size_t item = 1; item < fSliceIndices.size(); ++item) {
            time = std::max<int64_t>(SliceTime(item), time + kBlockFrames);
        }
        const CSlicePlayRange last = fSequencer.GetSlicePlayRange(fSliceIndices.back());
        frames = std::max(frames, time + fSequencer.GetRenderLength(last));
    }
    CExportItemInfo info;
    info.fPPQEnd = FramesToPPQ(LoopLength());
    info.fFrameCount = WithExtraFrames(frames);
    return info;
}

CExportItemInfo CExporter::GetSliceInfo(uint32_t item) const {
    const CSlicePlayRange range = fSequencer.GetSlicePlayRange(SliceIndex(item));
    const int32_t frames = fSequencer.GetRenderLength(range);
    const double sourceFrames = static_cast<double>(fSequencer.GetSourceRate()) /
                                static_cast<double>(GetOutputRate()) * frames;
    const double start =
        static_cast<double>(range.fStart) - fSequencer.GetWaveSample().GetLoopStart();
    CExportItemInfo info;
    info.fPPQPosition = FramesToPPQ(start);
    info.fPPQEnd = FramesToPPQ(start + std::trunc(sourceFrames));
    info.fFrameCount = WithExtraFrames(frames);
    return info;
}

uint32_t CExporter::WithExtraFrames(int64_t frames) const noexcept {
    constexpr int64_t kMost = std::numeric_limits<int32_t>::max();
    return static_cast<uint32_t>(std::clamp<int64_t>(frames + fExtraFrames, 0, kMost));
}

uint32_t CExporter::FramesToPPQ(double frames) const noexcept {
    const int32_t denominator = fSequencer.GetTimeSignatureDenominator();
    const auto beats = static_cast<int32_t>(int64_t{fSequencer.GetBars()} *
                                                fSequencer.GetTimeSignatureNumerator() +
                                            fSequencer.GetBeats());
    const int32_t length = WrappingProduct(LoopLength(), denominator);
    const int32_t quarters = WrappingProduct(beats, 4);
    if (length <= 0 || quarters <= 0) {
        return 0;
    }
    const double perQuarter = static_cast<double>(length) / static_cast<double>(quarters);
    const int32_t pulses = SaturateToInt32(frames * kPulsesPerQuarter / perQuarter + 0.5);
    const int64_t most = int64_t{kPulsesPerQuarter} * beats * 4 / denominator;
    return static_cast<uint32_t>(std::clamp(pulses, 0, std::max(SaturateToInt32(most), 0)));
}

int32_t CExporter::LoopLength() const noexcept {
    const CABCWaveSample& sample = fSequencer.GetWaveSample();
    return SaturateToInt32(int64_t{sample.GetLoopEnd()} - sample.GetLoopStart());
}

int32_t CExporter::SliceTime(size_t item) const {
    const CSlicePlayRange range = fSequencer.GetSlicePlayRange(fSliceIndices[item]);
    const int64_t frames = int64_t{range.fStart} - fSequencer.GetWaveSample().GetLoopStart();
    return RoundToBlock(fSequencer.FramesToOutput(SaturateToInt32(frames)));
}

} // namespace NSLOPDLL

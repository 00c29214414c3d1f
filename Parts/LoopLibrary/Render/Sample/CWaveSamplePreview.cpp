#include "LoopLibrary/Render/Sample/CWaveSamplePreview.h"

#include <algorithm>
#include <cstddef>

namespace NSLOPDLL {

namespace {

std::unique_ptr<int16_t[]> MakePeaks(int32_t entryCount) {
    return std::make_unique_for_overwrite<int16_t[]>(2 * static_cast<size_t>(entryCount));
}

std::unique_ptr<int16_t[]> ClonePeaks(const int16_t* peaks, int32_t entryCount) {
    if (peaks == nullptr) {
        return nullptr;
    }
    auto clone = MakePeaks(entryCount);
    std::copy_n(peaks, 2 * static_cast<size_t>(entryCount), clone.get());
    return clone;
}

} // namespace

CWaveSamplePreview::CWaveSamplePreview(int32_t entryCount, bool stereo)
    : fEntryCount(entryCount), fLeftPeaks(MakePeaks(entryCount)),
      fRightPeaks(stereo ? MakePeaks(entryCount) : nullptr) {}

CWaveSamplePreview::CWaveSamplePreview(const CWaveSamplePreview& other)
    : fEntryCount(other.fEntryCount), fLeftPeaks(ClonePeaks(other.GetLeftPeaks(), fEntryCount)),
      fRightPeaks(ClonePeaks(other.GetRightPeaks(), fEntryCount)) {}

CWaveSamplePreview::~CWaveSamplePreview() = default;

} // namespace NSLOPDLL

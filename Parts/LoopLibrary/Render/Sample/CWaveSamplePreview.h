#pragma once

#include <cstdint>
#include <memory>

namespace NSLOPDLL {

/// A reduced picture of a wave sample: for every 64 frames a minimum and a maximum in 16-bit scale.
/// Each pair looks at up to 192 frames, so that it overlaps its two successors.
class CWaveSamplePreview {
public:
    /// The pairs start out undefined. `entryCount` is at least 0.
    CWaveSamplePreview(int32_t entryCount, bool stereo);
    CWaveSamplePreview(const CWaveSamplePreview& other);
    CWaveSamplePreview& operator=(const CWaveSamplePreview&) = delete;
    virtual ~CWaveSamplePreview();

    int32_t GetEntryCount() const noexcept { return fEntryCount; }
    bool IsStereo() const noexcept { return fRightPeaks != nullptr; }

    /// 2 * GetEntryCount() values: minimum, maximum, minimum, ... The right ones are null in mono.
    const int16_t* GetLeftPeaks() const noexcept { return fLeftPeaks.get(); }
    const int16_t* GetRightPeaks() const noexcept { return fRightPeaks.get(); }
    int16_t* GetLeftPeaks() noexcept { return fLeftPeaks.get(); }
    int16_t* GetRightPeaks() noexcept { return fRightPeaks.get(); }

private:
    const int32_t fEntryCount;
    std::unique_ptr<int16_t[]> fLeftPeaks;
    std::unique_ptr<int16_t[]> fRightPeaks;
};

} // namespace NSLOPDLL

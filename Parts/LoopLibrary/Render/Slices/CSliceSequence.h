#pragma once

#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "LoopLibrary/Render/Slices/CSlice.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace NSLOPDLL {

/// The cut points of a wave sample, sorted by position and with no two at one position, and the two
/// controls that decide which of them count and how long each one sounds. Built by one thread, then
/// read by any number.
class CSliceSequence {
public:
    /// Borrows `waveSample`, which must outlive the sequence and have its preview before a length
    /// is worked out with the gate on (without one every level counts as silence).
    explicit CSliceSequence(const CABCWaveSample* waveSample) noexcept;
    CSliceSequence(const CSliceSequence&) = default;
    CSliceSequence& operator=(const CSliceSequence&) = default;
    virtual ~CSliceSequence();

    size_t GetSliceCount() const noexcept { return fSlices.size(); }
    const CSlice& GetSlice(size_t index) const noexcept { return fSlices[index]; }
    const std::vector<CSlice>& GetSlices() const noexcept { return fSlices; }
    int32_t GetSensitivity() const noexcept { return fSensitivity; }
    int32_t GetGateLevel() const noexcept { return fGateLevel; }
    int16_t GetThreshold() const noexcept { return fThreshold; }

    /// 0 to 99: a higher value lets weaker slices through. Updates the lengths.
    void SetSensitivity(int32_t value);
    /// 0 (off) to 999. Updates the lengths.
    void SetGateLevel(int32_t value);

    /// Drops a slice outside the sample. At a position that is taken the older slice stays, with
    /// the larger level of both and the stronger kind (forced, level, hidden). Leaves lengths
    /// alone.
    void InsertSlice(const CSlice& slice);
    void InsertSliceAndUpdate(const CSlice& slice);
    /// The result of inserting the slices one by one in their order, in O(n log n).
    void InsertSlices(std::vector<CSlice> slices);
    /// Removes the first slice at or behind the position of `slice`, if there is one.
    void RemoveSliceAt(const CSlice& slice);

    /// The level above which slices of kSliceKind_Level are active: 32767 at a sensitivity of 0,
    /// and 0 at 99. Negative beyond; the sequence's own threshold is this one narrowed to 16 bits.
    static int32_t ThresholdFor(int32_t sensitivity) noexcept;
    bool IsActive(const CSlice& slice) const noexcept;
    /// Gives every slice its length: active ones reach to the next active one or to where the gate
    /// closes, all others get 1.
    void UpdateSliceLengths();

    /// The queries leave `out` as it is when they answer false.
    bool FindSliceAt(uint32_t position, CSlice& out) const;
    bool HasSliceAt(uint32_t position) const noexcept;
    /// Smallest distance, the earliest slice on a tie.
    bool FindNearest(uint32_t position, CSlice& out) const;
    bool FindNearestActive(uint32_t position, CSlice& out) const;
    /// The active slice, the start (0) or the end (`frameCount`) that lies nearest to `position`;
    /// `position` itself when no slice is active.
    uint32_t SnapToSlice(uint32_t position, uint32_t frameCount) const;
    /// True for a first slice from 1 to 3999, whose position is stored; false and 0 otherwise.
    bool GetLeadIn(uint32_t& out) const noexcept;

private:
    bool IsInsideSample(const CSlice& slice) const noexcept;
    template <typename Predicate>
    const CSlice* Nearest(uint32_t position, Predicate isCandidate) const;
    std::vector<CSlice>::const_iterator LowerBound(uint32_t position) const noexcept;
    uint32_t SoundingLength(uint32_t start, uint32_t gap, float gateLimit) const noexcept;

    std::vector<CSlice> fSlices;
    int32_t fSensitivity = 0;
    int32_t fGateLevel = 0;
    int16_t fThreshold = 32767; // follows from fSensitivity
    const CABCWaveSample* fWaveSample;
};

} // namespace NSLOPDLL

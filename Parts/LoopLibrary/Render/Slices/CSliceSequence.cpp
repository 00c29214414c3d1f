#include "LoopLibrary/Render/Slices/CSliceSequence.h"

#include "LoopLibrary/Render/Common/FloatMath.h"
#include "LoopLibrary/Render/Slices/SliceGate.h"

#include <algorithm>

namespace NSLOPDLL {

namespace {

bool IsBefore(const CSlice& a, const CSlice& b) {
    return a.GetPosition() < b.GetPosition();
}

uint32_t Distance(uint32_t a, uint32_t b) {
    return a > b ? a - b : b - a;
}

// What becomes of a slice when another is inserted at its position.
void Merge(CSlice& slice, const CSlice& added) {
    slice.SetLevel(std::max(slice.GetLevel(), added.GetLevel()));
    if (added.GetKind() == kSliceKind_Forced) {
        slice.SetKind(kSliceKind_Forced);
    } else if (added.GetKind() == kSliceKind_Level && slice.GetKind() == kSliceKind_Hidden) {
        slice.SetKind(kSliceKind_Level);
    }
}

} // namespace

CSliceSequence::CSliceSequence(const CABCWaveSample* waveSample) noexcept
    : fWaveSample(waveSample) {}

CSliceSequence::~CSliceSequence() = default;

int32_t CSliceSequence::ThresholdFor(int32_t sensitivity) noexcept {
    // The part that is taken off is rounded up: at 50 it is 16549.
    const int64_t scaled = int64_t{sensitivity} * 32767;
    const int64_t reduction = scaled / 99 + (scaled % 99 > 0 ? 1 : 0);
    return static_cast<int32_t>(32767 - reduction);
}

void CSliceSequence::SetSensitivity(int32_t value) {
    fSensitivity = value;
    fThreshold = static_cast<int16_t>(ThresholdFor(value));
    UpdateSliceLengths();
}

void CSliceSequence::SetGateLevel(int32_t value) {
    fGateLevel = value;
    UpdateSliceLengths();
}

bool CSliceSequence::IsInsideSample(const CSlice& slice) const noexcept {
    return slice.GetPosition() <= 0x7FFFFFFF && slice.GetPosition() < fWaveSample->GetFrameCount();
}

std::vector<CSlice>::const_iterator CSliceSequence::LowerBound(uint32_t position) const noexcept {
    return std::lower_bound(
        fSlices.begin(), fSlices.end(), position,
        [](const CSlice& slice, uint32_t at) { return slice.GetPosition() < at; });
}

void CSliceSequence::InsertSlice(const CSlice& slice) {
    if (!IsInsideSample(slice)) {
        return;
    }
    const auto place = fSlices.begin() + (LowerBound(slice.GetPosition()) - fSlices.cbegin());
    if (place != fSlices.end() && place->GetPosition() == slice.GetPosition()) {
        Merge(*place, slice);
    } else {
        fSlices.insert(place, slice);
    }
}

void CSliceSequence::InsertSliceAndUpdate(const CSlice& slice) {
    InsertSlice(slice);
    UpdateSliceLengths();
}

void CSliceSequence::InsertSlices(std::vector<CSlice> slices) {
    std::erase_if(slices, [this](const CSlice& slice) { return !IsInsideSample(slice); });
    // Both steps are stable: of slices at one position the present one comes first, then those of
    // the batch in their order.
    std::stable_sort(slices.begin(), slices.end(), IsBefore);
    std::vector<CSlice> sorted(fSlices.size() + slices.size());
    std::merge(fSlices.begin(), fSlices.end(), slices.begin(), slices.end(), sorted.begin(),
               IsBefore);

    size_t kept = 0;
    for (const CSlice& slice : sorted) {
        if (kept > 0 && sorted[kept - 1].GetPosition() == slice.GetPosition()) {
            Merge(sorted[kept - 1], slice);
        } else {
            sorted[kept++] = slice;
        }
    }
    sorted.resize(kept);
    fSlices = std::move(sorted);
}

void CSliceSequence::RemoveSliceAt(const CSlice& slice) {
    const auto place = LowerBound(slice.GetPosition());
    if (place != fSlices.cend()) {
        fSlices.erase(place);
    }
}

bool CSliceSequence::IsActive(const CSlice& slice) const noexcept {
    return slice.GetKind() == kSliceKind_Forced ||
           (slice.GetKind() == kSliceKind_Level && slice.GetLevel() > fThreshold);
}

uint32_t CSliceSequence::SoundingLength(uint32_t start, uint32_t gap,
                                        float gateLimit) const noexcept {
    return fGateLevel > 0 ? MeasureGated(*fWaveSample, start, gap, gateLimit) : gap;
}

void CSliceSequence::UpdateSliceLengths() {
    const float part = static_cast<float>(fGateLevel) / 999.0F;
    const float gateLimit = FloatPow(0.002F, static_cast<float>(1.0 - static_cast<double>(part)));

    CSlice* current = nullptr;
    const auto closeCurrent = [&](uint32_t end) {
        if (current != nullptr) {
            const uint32_t start = current->GetPosition();
            current->SetLength(SoundingLength(start, end - start, gateLimit));
        }
    };
    for (CSlice& slice : fSlices) {
        if (IsActive(slice)) {
            closeCurrent(slice.GetPosition());
            current = &slice;
        } else {
            slice.SetLength(1);
        }
    }
    closeCurrent(fWaveSample->GetFrameCount());
}

bool CSliceSequence::FindSliceAt(uint32_t position, CSlice& out) const {
    const auto place = LowerBound(position);
    if (place == fSlices.end() || place->GetPosition() != position) {
        return false;
    }
    out = *place;
    return true;
}

bool CSliceSequence::HasSliceAt(uint32_t position) const noexcept {
    const auto place = LowerBound(position);
    return place != fSlices.end() && place->GetPosition() == position;
}

template <typename Predicate>
const CSlice* CSliceSequence::Nearest(uint32_t position, Predicate isCandidate) const {
    const CSlice* nearest = nullptr;
    for (const CSlice& slice : fSlices) {
        if (isCandidate(slice) &&
            (nearest == nullptr || Distance(slice.GetPosition(), position) <
                                       Distance(nearest->GetPosition(), position))) {
            nearest = &slice;
        }
    }
    return nearest;
}

bool CSliceSequence::FindNearest(uint32_t position, CSlice& out) const {
    const CSlice* nearest = Nearest(position, [](const CSlice&) { return true; });
    if (nearest != nullptr) {
        out = *nearest;
    }
    return nearest != nullptr;
}

bool CSliceSequence::FindNearestActive(uint32_t position, CSlice& out) const {
    const CSlice* nearest =
        Nearest(position, [this](const CSlice& slice) { return IsActive(slice); });
    if (nearest != nullptr) {
        out = *nearest;
    }
    return nearest != nullptr;
}

uint32_t CSliceSequence::SnapToSlice(uint32_t position, uint32_t frameCount) const {
    const auto isActive = [this](const CSlice& slice) { return IsActive(slice); };
    const auto first = std::find_if(fSlices.begin(), fSlices.end(), isActive);
    if (first == fSlices.end()) {
        return position;
    }
    const auto last = std::find_if(fSlices.rbegin(), fSlices.rend(), isActive);
    const uint64_t twice = uint64_t{position} * 2;
    if (twice < first->GetPosition()) {
        return 0;
    }
    if (twice > uint64_t{last->GetPosition()} + frameCount) {
        return frameCount;
    }
    return Nearest(position, isActive)->GetPosition();
}

bool CSliceSequence::GetLeadIn(uint32_t& out) const noexcept {
    out = 0;
    if (fSlices.empty() || fSlices.front().GetPosition() < 1 ||
        fSlices.front().GetPosition() > 3999) {
        return false;
    }
    out = fSlices.front().GetPosition();
    return true;
}

} // namespace NSLOPDLL

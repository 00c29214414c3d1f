#pragma once

#include <cstdint>

namespace NSLOPDLL {

constexpr int32_t kSliceKind_Level = 1;  // active when its level is above the sequence's threshold
constexpr int32_t kSliceKind_Hidden = 2; // never active
constexpr int32_t kSliceKind_Forced = 3; // always active

/// A point at which the audio may be cut. Positions and lengths are in source frames.
class CSlice {
public:
    CSlice() noexcept = default;
    CSlice(const CSlice&) noexcept = default;
    CSlice& operator=(const CSlice&) noexcept = default;
    virtual ~CSlice();

    uint32_t GetPosition() const noexcept { return fPosition; }
    uint32_t GetLength() const noexcept { return fLength; }
    int16_t GetLevel() const noexcept { return fLevel; }
    bool IsMuted() const noexcept { return fMuted; }
    int32_t GetKind() const noexcept { return fKind; }

    void SetPosition(uint32_t position) noexcept { fPosition = position; }
    void SetLength(uint32_t length) noexcept { fLength = length; }
    void SetLevel(int16_t level) noexcept { fLevel = level; }
    void SetMuted(bool muted) noexcept { fMuted = muted; }
    void SetKind(int32_t kind) noexcept { fKind = kind; }

    friend bool operator==(const CSlice& a, const CSlice& b) noexcept {
        return a.fPosition == b.fPosition && a.fLength == b.fLength && a.fLevel == b.fLevel &&
               a.fMuted == b.fMuted && a.fKind == b.fKind;
    }

private:
    uint32_t fPosition = 0;
    uint32_t fLength = 1; // frames that the slice sounds
    int16_t fLevel = 0;   // strength of the transient, 0 to 32767
    bool fMuted = false;
    int32_t fKind = kSliceKind_Level;
};

} // namespace NSLOPDLL

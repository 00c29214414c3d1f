#pragma once

#include "PorterPackage/Core/Bytes/FourCharID.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace NSPorter {
class CMedia;
}

namespace NSLOPDLL {

/// One slice record of a .lop application chunk.
struct SLOPSliceRecord {
    uint32_t fSourceStart = 0;  // frame in the AIFF audio
    uint32_t fSourceLength = 0; // frames
    uint32_t fPPQPosition = 0;  // tick in the loop
};

/// The application chunk of a .lop file.
///
/// Records that directly follow each other with one tick are a run, of which the last record alone
/// has audio. Nothing promises that ticks rise.
class CLOPAppChunk {
public:
    static constexpr uint32_t kSignature = NSPorter::FourCharID("LOP ");
    static constexpr uint32_t kMagic = 0xD1D1D1DA;
    /// Bytes behind the signature, with room for kSliceLimit records.
    static constexpr size_t kByteCount = 13016;
    static constexpr size_t kSliceLimit = 1000;
    static constexpr uint32_t kTicksPerBeat = 960;
    static constexpr uint32_t kTicksPerBar = 3840;

    /// What is parsed from kByteCount bytes, of which those that the file lacks are zero.
    /// XFormatViolation without words above kSliceLimit records; magic, version and a count of 0
    /// are not tested.
    static CLOPAppChunk Load(std::span<const uint8_t, kByteCount> bytes);

    /// Behind the run of records that begins with `first`.
    size_t FindRunEnd(size_t first) const;
    /// Scale from ticks to frames: the largest that any slice asks for, so that none overlaps the
    /// next. Takes a pass over the records.
    double GetFramesPerTick() const;
    /// Frames of the loop, saturated at 2^62: beyond 31 bits no wave sample can hold them.
    int64_t GetTotalFrames() const;
    /// Different frames on which slices stand, neighbours compared only.
    int32_t CountDistinctPositions() const;

    int32_t GetBars() const { return static_cast<int32_t>(fPPQLength / kTicksPerBar); }
    int32_t GetBeats() const { return static_cast<int32_t>(fPPQLength / kTicksPerBeat % 4); }

    uint32_t fMagic = kMagic;
    uint8_t fMajor = 1;
    uint8_t fMinor = 0;
    uint32_t fPPQLength = 0; // ticks
    int32_t fTempo = 0;      // thousandths of a beat per minute
    std::vector<SLOPSliceRecord> fSlices;
};

/// The frame of a tick, truncated and saturated at the largest signed 32-bit value.
int32_t FrameOfTick(uint32_t tick, double framesPerTick);

/// The application chunk of the AIFF file on `media`, read anew and tested.
CLOPAppChunk ReadLOPChunk(NSPorter::CMedia& media);

} // namespace NSLOPDLL

#pragma once

#include "LoopWriter/AIFFAudio.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace NSLoopWriter {

struct SLOPSlice {
    uint32_t fSourceStart = 0;  // frame in the audio
    uint32_t fSourceLength = 0; // frames
    uint32_t fPPQPosition = 0;  // tick in the loop
};

/// A .lop file before it is written. As it is constructed it is valid: one bar at 120 beats per
/// minute, one piece of 64 frames of silence.
struct SLOPFile {
    SAIFFAudio fAudio;

    uint32_t fSignature = NSPorter::FourCharID("LOP ");
    uint32_t fMagic = 0xD1D1D1DA;
    uint8_t fMajor = 1;
    uint8_t fMinor = 0;
    uint32_t fPPQLength = 3840;          // ticks, 960 to a beat
    std::optional<uint16_t> fSliceCount; // of fSlices if not set
    uint32_t fTempo = 120000;            // thousandths of a beat per minute
    std::vector<SLOPSlice> fSlices = {SLOPSlice{0, 64, 0}};
    /// Bytes of the application data behind the signature. If not set, 13016, and more where the
    /// slices need more.
    std::optional<size_t> fApplicationSize;

    /// Changes the chunks before they are written.
    ChunkEdit fEdit;
};

/// The file's chunks; `fEdit` is not applied.
SIFFChunk BuildLOPChunks(const SLOPFile& file);

/// The bytes of the whole file.
std::vector<uint8_t> WriteLOP(const SLOPFile& file);

} // namespace NSLoopWriter

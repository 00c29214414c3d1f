#pragma once

#include "LoopLibrary/Render/Sample/CAIFFChunks.h"
#include "LoopWriter/IFFChunkTree.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace NSLoopWriter {

/// The sound of an AIFF-based file and the standard chunks that describe it; by default 16-bit
/// mono. Fields that are not set follow from the others.
///
/// A program that writes such files links the render floor of the library too.
struct SAIFFAudio {
    std::vector<int32_t> fSamples = std::vector<int32_t>(64); // frame by frame

    NSLOPDLL::CAIFFCommonChunk fCommon; // fFrames is not looked at
    std::optional<uint32_t> fFrames;

    std::optional<NSLOPDLL::CAIFFInstrumentChunk> fInstrument;
    std::optional<NSLOPDLL::CAIFFMarkerChunk> fMarkers;

    NSLOPDLL::SAIFFSoundData fSoundData; // as many zero bytes as its offset precede the samples
    /// What follows the 8 bytes of the head instead of those zeros and the samples.
    std::optional<std::vector<uint8_t>> fRawSoundData;

    /// Markers "Loop Start" (1) and "Loop End" (2), and an instrument whose sustain loop runs
    /// forward between them. Positions are frames.
    void SetLoop(uint32_t start, uint32_t end);
};

/// The group of a loop file: "COMM", the application chunk, "MARK" and "INST" if any, "SSND".
/// `applicationData` begins behind the signature.
SIFFChunk BuildAIFFChunks(const SAIFFAudio& audio, uint32_t signature,
                          const std::vector<uint8_t>& applicationData);

} // namespace NSLoopWriter

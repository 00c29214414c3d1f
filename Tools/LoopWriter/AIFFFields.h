#pragma once

#include "LoopWriter/IFFChunkTree.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace NSLoopWriter {

// The standard chunks of the two AIFF-based kinds, every stored field at its raw width.

struct SAIFFCommon {
    std::optional<uint16_t> fChannels; // 1 if not set
    std::optional<uint32_t> fFrames;   // as the audio says if not set
    uint16_t fBits = 16;
    double fSampleRate = 44100.0;
    /// The ten bytes of the rate in the place of `fSampleRate`.
    std::optional<std::array<uint8_t, 10>> fRawSampleRate;
    /// Makes the chunk 22 bytes long.
    std::optional<uint32_t> fCompressionType;
};

struct SAIFFLoop {
    uint16_t fPlayMode = 0; // 0 none, 1 forward, 2 forward and backward
    int16_t fBeginMarker = 0;
    int16_t fEndMarker = 0;
};

struct SAIFFInstrument {
    uint8_t fRootNote = 60;
    int8_t fDetune = 0; // cents
    uint8_t fLowNote = 0;
    uint8_t fHighNote = 127;
    uint8_t fLowVelocity = 1;
    uint8_t fHighVelocity = 127;
    uint16_t fGain = 0;
    SAIFFLoop fSustainLoop;
    SAIFFLoop fReleaseLoop;
};

struct SAIFFMarker {
    uint16_t fID = 0;
    uint32_t fPosition = 0; // frame
    std::string fName;      // at most 255 bytes
};

struct SAIFFMarkers {
    std::optional<uint16_t> fCount; // of fMarkers if not set
    std::vector<SAIFFMarker> fMarkers;
};

struct SAIFFSoundData {
    uint32_t fOffset = 0; // that many zero bytes stand ahead of the samples
    uint32_t fBlockSize = 0;
    /// The bytes behind the 8 of the head in the place of offset bytes and samples.
    std::optional<std::vector<uint8_t>> fRawData;
};

/// The sampled sound of an AIFF file, with what describes it.
struct SAIFFAudio {
    SAIFFCommon fCommon;
    std::optional<SAIFFInstrument> fInstrument;
    std::optional<SAIFFMarkers> fMarkers;
    SAIFFSoundData fSoundData;
    std::vector<int32_t> fSamples = std::vector<int32_t>(64); // mono, 16 bits
};

SIFFChunk BuildCommonChunk(const SAIFFAudio& audio);
SIFFChunk BuildInstrumentChunk(const SAIFFInstrument& instrument);
SIFFChunk BuildMarkerChunk(const SAIFFMarkers& markers);
SIFFChunk BuildSoundDataChunk(const SAIFFAudio& audio);

/// The group of a loop file: "COMM", the application chunk, "MARK" and "INST" if any, "SSND".
/// `applicationData` begins behind the signature.
SIFFChunk BuildAIFFChunks(const SAIFFAudio& audio, uint32_t signature,
                          const std::vector<uint8_t>& applicationData);

} // namespace NSLoopWriter

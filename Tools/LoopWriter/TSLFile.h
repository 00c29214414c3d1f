#pragma once

#include "LoopWriter/AIFFAudio.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace NSLoopWriter {

struct STSLSlice {
    uint8_t fKind = 0; // 7 bits: 0 level, 1 hidden, 2 forced
    bool fMuted = false;
    uint32_t fPosition = 0; // frame
    uint16_t fLevel = 32767;
};

/// A .tsl file before it is written. As it is constructed it is valid: one bar of 4/4, 64 frames of
/// silence, all of them the loop, one slice. Flags are bytes: 0 is off, any other value on.
struct STSLFile {
    STSLFile() { SetLoop(0, 64); }

    /// Frames; see `SAIFFAudio::SetLoop`.
    void SetLoop(uint32_t start, uint32_t end) { fAudio.SetLoop(start, end); }

    SAIFFAudio fAudio;

    uint32_t fSignature = NSPorter::FourCharID("TeSl");
    uint32_t fMagic = 0xD1DADED0;
    uint8_t fMajor = 1;
    uint8_t fMinor = 0;
    uint8_t fTimeSignatureNumerator = 4;
    uint8_t fTimeSignatureDenominator = 4;
    uint16_t fBars = 1;
    uint8_t fBeats = 0;
    uint32_t fTempo = 120000; // thousandths of a beat per minute
    uint8_t fStoredFlag = 0;
    uint8_t fSplitIntoSlices = 1;
    uint8_t fDropMuted = 0;
    uint8_t fTempoStored = 0;
    uint16_t fStretchIndex = 0;          // 0 to 13
    uint16_t fSensitivity = 990;         // tenths
    std::optional<uint16_t> fSliceCount; // of fSlices if not set
    std::vector<STSLSlice> fSlices = {STSLSlice{}};
    /// Bytes of the application data behind the signature. If not set, 8160, and more where the
    /// slices need more.
    std::optional<size_t> fApplicationSize;

    /// Changes the chunks before they are written.
    ChunkEdit fEdit;
};

/// The file's chunks; `fEdit` is not applied.
SIFFChunk BuildTSLChunks(const STSLFile& file);

/// The bytes of the whole file.
std::vector<uint8_t> WriteTSL(const STSLFile& file);

} // namespace NSLoopWriter

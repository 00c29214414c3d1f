#pragma once

#include "LoopWriter/IFFChunkTree.h"
#include "LoopWriter/StoredFields.h"

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace NSLoopWriter {

// The chunks of a LOP2 file with every stored field at its raw width, so that values that no reader
// accepts can be written too. Defaults are valid and neutral. Flags are bytes: 0 is off, any other
// value on.

struct SLOP2Head {
    uint32_t fMagic = 0x490CF18D;
    SStoredVersion fVersion{2};
    std::array<uint8_t, 16> fUUID{};
    SStoredText fHeadText;
};

struct SLOP2CreatorInfo {
    std::array<SStoredText, 5> fTexts;
};

struct SLOP2GeneralInfo {
    std::optional<uint32_t> fSliceCount; // that of SLOP2File::fSlices if not set
    uint16_t fBars = 1;
    uint8_t fBeats = 0;
    uint8_t fTimeSignatureNumerator = 4;
    uint8_t fTimeSignatureDenominator = 4;
    uint8_t fSensitivity = 99; // 0 to 99, 99 lets the weakest slice sound
    uint16_t fGateLevel = 0;
    uint16_t fGain = 1000;    // thousandths
    int16_t fTranspose = 0;   // cents
    uint32_t fTempo = 120000; // thousandths of a beat per minute
    uint8_t fSplitIntoSlices = 1;
    uint8_t fDropMuted = 0;
};

struct SLOP2TesselInfo {
    SStoredVersion fVersion{2};
    uint8_t fTempoSync = 1;
    uint8_t fGridByte = 10;
    int32_t fExportedSize = 0;
    int32_t fExportedSliceCount = 0;
};

struct SLOP2TesselExtraInfo {
    SStoredVersion fVersion{1};
    uint32_t fViewMode = 0;
    uint8_t fShaperEnabled = 0;
    uint8_t fEqualizerEnabled = 0;
    uint8_t fCompressorEnabled = 0;
    uint32_t fViewStart = 0;
    uint32_t fViewEnd = 0;
    uint8_t fViewFlag = 0;
};

struct SLOP2TransientShaper {
    uint8_t fEnabled = 0;
    uint16_t fAttack = 0;
    uint16_t fDecay = 1023;
    uint16_t fAmount = 0;
};

struct SLOP2Equalizer {
    uint8_t fEnabled = 0;
    uint16_t fLowFrequency = 15;
    uint16_t fBand1Frequency = 300;
    int16_t fBand1Gain = 0;
    uint16_t fBand1Q = 1000;
    uint16_t fBand2Frequency = 4000;
    int16_t fBand2Gain = 0;
    uint16_t fBand2Q = 1000;
    uint16_t fHighFrequency = 20000;
};

struct SLOP2Compressor {
    uint8_t fEnabled = 0;
    uint16_t fThreshold = 127;
    uint16_t fRatio = 0;
    uint16_t fAttack = 0;
    uint16_t fRelease = 300;
};

struct SLOP2Slice {
    uint32_t fPosition = 0; // source frame
    uint32_t fLength = 0;   // readers do not use it
    int16_t fLevel = 32767;
    uint8_t fFlags = 0; // 1 hidden, 2 forced, 4 muted
};

struct SLOP2SampleInfo {
    std::optional<uint8_t> fChannels;  // as the planes say if not set
    std::optional<uint8_t> fDepthCode; // as SLOP2File::fBitDepth says if not set
    uint32_t fSampleRate = 44100;
    std::optional<int32_t> fFrames; // as the planes say if not set
    int32_t fLoopStart = 0;
    std::optional<int32_t> fLoopEnd; // the number of frames if not set
};

/// A LOP2 file before it is written. As it is constructed it is valid: one bar of 4/4 at 120 beats
/// per minute, one slice, 64 frames of silence.
struct SLOP2File {
    SLOP2Head fHead;
    std::optional<SLOP2CreatorInfo> fCreatorInfo;
    SLOP2GeneralInfo fGeneralInfo;
    SLOP2TesselInfo fTesselInfo;
    std::optional<SLOP2TesselExtraInfo> fTesselExtraInfo;
    SLOP2TransientShaper fTransientShaper;
    SLOP2Equalizer fEqualizer;
    SLOP2Compressor fCompressor;
    std::vector<SLOP2Slice> fSlices = {SLOP2Slice{}};
    SLOP2SampleInfo fSampleInfo;

    /// 8, 16, 24 or 32; sets the depth code. Planes hold signed samples of that many bits.
    int32_t fBitDepth = 16;
    std::vector<int32_t> fLeft = std::vector<int32_t>(64);
    std::vector<int32_t> fRight; // empty: mono
    /// The stream of "SDAT" instead of the compressed planes.
    std::optional<std::vector<uint8_t>> fRawStream;

    /// Changes the chunks before they are written: see IFFChunkTree.h.
    ChunkEdit fEdit;
};

/// The file's chunks in the usual order, "HEAD" first; `fEdit` is not applied.
SIFFChunk BuildLOP2Chunks(const SLOP2File& file);

/// The bytes of the whole file.
std::vector<uint8_t> WriteLOP2(const SLOP2File& file);

} // namespace NSLoopWriter

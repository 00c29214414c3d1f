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

/// One slice record of a .tsl application chunk.
struct STSLSliceRecord {
    uint8_t fKind = 0; // see CTSLAppChunk; up to 127 may be stored
    bool fMuted = false;
    uint32_t fPosition = 0; // frame in the audio
    uint16_t fLevel = 0;
};

/// The application chunk of a .tsl file.
class CTSLAppChunk {
public:
    static constexpr uint32_t kSignature = NSPorter::FourCharID("TeSl");
    static constexpr uint32_t kMagic = 0xD1DADED0;
    /// Bytes behind the signature, with room for kSliceLimit records.
    static constexpr size_t kByteCount = 8160;
    static constexpr size_t kSliceLimit = 1000;
    /// STSLSliceRecord::fKind.
    static constexpr uint8_t kKind_Level = 0;
    static constexpr uint8_t kKind_Hidden = 1;
    static constexpr uint8_t kKind_Forced = 2;

    /// What is parsed from kByteCount bytes, of which those that the file lacks are zero.
    /// XFormatViolation without words above kSliceLimit records; magic and version are not tested.
    static CTSLAppChunk Load(std::span<const uint8_t, kByteCount> bytes);
    /// The reverse. At most kSliceLimit records are taken.
    void Store(std::span<uint8_t, kByteCount> bytes) const;

    bool HasLength() const { return fBars != 0 || fBeats != 0; }
    /// Percent by which slices may sound on, 0 to 100, that fStretchIndex stands for; indices
    /// beyond the table mean its last entry.
    int16_t GetStretchPercent() const;
    /// Slices that the authoring tool exports from a loop of these frames.
    int32_t CountExportedSlices(uint32_t loopStart, uint32_t loopEnd) const;

    uint32_t fMagic = kMagic;
    uint8_t fMajor = 1;
    uint8_t fMinor = 0;
    uint8_t fTimeSignatureNumerator = 4;
    uint8_t fTimeSignatureDenominator = 4;
    uint16_t fBars = 0;
    uint8_t fBeats = 0;
    int32_t fTempo = 0; // thousandths of a beat per minute, of use only with fTempoStored
    bool fStoredFlag = false;
    bool fSplitIntoSlices = false;
    bool fDropMuted = false;
    bool fTempoStored = false;
    uint16_t fStretchIndex = 0;
    uint16_t fSensitivity = 0; // tenths
    std::vector<STSLSliceRecord> fSlices;

private:
    static bool IsOn(const STSLSliceRecord& slice, int32_t threshold);
};

/// The application chunk of the AIFF file on `media`, read anew and tested.
CTSLAppChunk ReadTSLChunk(NSPorter::CMedia& media);

} // namespace NSLOPDLL

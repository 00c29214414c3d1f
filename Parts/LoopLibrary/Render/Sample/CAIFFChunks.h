// The AIFF chunks that describe audio, each as a record that reads and writes itself. The records
// hold what the file says; what of it is acceptable is the sample reader's matter.
//
// Reading a chunk that the file does not hold whole raises XFormatViolation with an empty text.
#pragma once

#include "PorterPackage/Core/Bytes/FourCharID.h"
#include "PorterPackage/Core/IFF/CIFFReader.h"
#include "PorterPackage/Core/IFF/CIFFWriter.h"

#include <cstdint>
#include <string>
#include <vector>

namespace NSLOPDLL {

constexpr uint32_t kAIFFGroupID = NSPorter::FourCharID("FORM");
constexpr uint32_t kAIFFType = NSPorter::FourCharID("AIFF");
constexpr uint32_t kAIFFSoundDataID = NSPorter::FourCharID("SSND");
constexpr uint32_t kAIFFCompressionNone = NSPorter::FourCharID("NONE");

constexpr uint16_t kAIFFPlayMode_None = 0;
constexpr uint16_t kAIFFPlayMode_Forward = 1;
constexpr uint16_t kAIFFPlayMode_ForwardBackward = 2;

/// "COMM".
struct CAIFFCommonChunk {
    /// Raises when the chunk is absent, too.
    void Read(NSPorter::CIFFReader& reader);
    /// 22 bytes with a compression type, otherwise 18.
    void Write(NSPorter::CIFFWriter& writer) const;

    uint16_t fChannels = 1;
    uint32_t fFrames = 0;
    uint16_t fBits = 16;
    double fSampleRate = 44100.0;
    bool fHasCompression = false;
    uint32_t fCompression = kAIFFCompressionNone;
};

struct CAIFFLoop {
    uint16_t fPlayMode = kAIFFPlayMode_None;
    /// Marker ids.
    int16_t fBegin = 0;
    int16_t fEnd = 0;
};

/// "INST".
struct CAIFFInstrumentChunk {
    /// False if the chunk is absent.
    bool Read(NSPorter::CIFFReader& reader);
    void Write(NSPorter::CIFFWriter& writer) const;

    uint8_t fRootNote = 60;
    /// In cents.
    int8_t fDetune = 0;
    uint8_t fLowNote = 0;
    uint8_t fHighNote = 127;
    uint8_t fLowVelocity = 1;
    uint8_t fHighVelocity = 127;
    /// The bits of a signed number of decibels, which nothing here acts on.
    uint16_t fGain = 0;
    CAIFFLoop fSustainLoop;
    CAIFFLoop fReleaseLoop;
};

struct CAIFFMarker {
    uint16_t fID = 0;
    /// In frames.
    uint32_t fPosition = 0;
    /// At most 255 bytes are written.
    std::string fName;
};

/// "MARK".
struct CAIFFMarkerChunk {
    /// False if the chunk is absent. Markers that take more than the chunk's size raise.
    bool Read(NSPorter::CIFFReader& reader);
    void Write(NSPorter::CIFFWriter& writer) const;
    /// The first marker of that id, null if there is none.
    const CAIFFMarker* Find(int32_t id) const;

    std::vector<CAIFFMarker> fMarkers;
};

/// What stands in front of the samples in "SSND".
struct SAIFFSoundData {
    /// Bytes between this head and the first sample.
    uint32_t fOffset = 0;
    uint32_t fBlockSize = 0;
};

} // namespace NSLOPDLL

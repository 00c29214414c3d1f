#pragma once

#include "LoopLibrary/File/Common/CTesselFileInfo.h"
#include "LoopLibrary/File/Common/FileKind.h"

#include <cstdint>
#include <memory>

namespace NSPorter {
class CMedia;
}

namespace NSLOPDLL {

class CABCWaveSample;
class CLOP2CreatorInfoChunk;
class CLOP2DecompressCallback;
class CSliceSequence;
class CTesselSequencer;
struct CTesselEditSettings;

/// A loop file of any of the three kinds. Reads on demand, straight from the media, and keeps
/// nothing but the file info: each operation opens the file again from its start, so the operations
/// may be called in any order, and a second object on the same media gives the same results. The
/// media's cursor is undefined after each. One thread at a time may use an object and its media.
///
/// The operations raise XFormatViolation, XUnsupportedFormat, XVersionTooNew, XRead or
/// std::domain_error for bad files, and leave nothing allocated then.
class CTesselFile {
public:
    /// Told by a few fixed offsets or the signature of the application chunk, so that a file which
    /// is recognised may still be bad. The media's cursor comes back where it was.
    static int32_t DetectFileKind(NSPorter::CMedia& media) noexcept;
    static bool IsKnownFile(NSPorter::CMedia& media) noexcept;

    /// Borrows `media`, which must outlive the object. Reads the file info, which takes headers
    /// only and no audio. XUnsupportedFormat "invalid file type" for a media of no known kind.
    explicit CTesselFile(NSPorter::CMedia* media);
    virtual ~CTesselFile();
    CTesselFile(const CTesselFile&) = delete;
    CTesselFile& operator=(const CTesselFile&) = delete;

    void GetFileInfo(CTesselFileInfo& info) const { info = fFileInfo; }
    int32_t GetKind() const { return fKind; }
    /// A flag that one older kind of file carries; nothing acts on it.
    bool GetStoredFlag() const { return fStoredFlag; }

    /// The decoded audio. XAbort when the callback stops the load.
    std::unique_ptr<CABCWaveSample> ReadWaveSample(CLOP2DecompressCallback& callback) const;
    /// Adds the file's slices to the sequence and sets its two controls.
    void ReadSlices(CSliceSequence& sequence) const;
    /// Sets tempo, time signature, lengths and devices.
    void ReadSequencerSettings(CTesselSequencer& sequencer) const;
    /// Changes only the fields that the kind of file stores.
    void ReadEditSettings(CTesselEditSettings& settings) const;
    /// Null when the file has no creator texts. Only for kFileKind_LOP2.
    std::unique_ptr<CLOP2CreatorInfoChunk> ReadCreatorInfo() const;

private:
    CTesselFileInfo fFileInfo;
    int32_t fKind;
    NSPorter::CMedia* fMedia; // borrowed
    bool fStoredFlag = false;
};

} // namespace NSLOPDLL

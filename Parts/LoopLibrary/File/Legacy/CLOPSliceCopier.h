#pragma once

#include "LoopLibrary/Render/Sample/CWaveSampleInfo.h"

#include <cstdint>

namespace NSPorter {
class CMedia;
}

namespace NSLOPDLL {

class CABCWaveSample;
class CLOP2DecompressCallback;
struct SLOPSliceRecord;

/// Copies the pieces of a .lop file from its AIFF audio to their places in the loop. Works forward
/// only: a piece that begins behind the cursor takes the next frames of the stream instead.
class CLOPSliceCopier {
public:
    /// Borrows all four. The media stands at the first sample of the audio that `info` describes.
    CLOPSliceCopier(NSPorter::CMedia& media, const CWaveSampleInfo& info,
                    CABCWaveSample& waveSample, CLOP2DecompressCallback& callback);

    /// Copies up to `length` frames, none if it is below 1, to `position` in the wave sample, which
    /// has room for them. Asks the callback before each block; XAbort "callback cancelled" when it
    /// says stop. XFormatViolation for audio that is not mono, and for frames that the file lacks.
    void Copy(const SLOPSliceRecord& record, int32_t position, int64_t length);

private:
    void SkipTo(int64_t sourceFrame);

    NSPorter::CMedia& fMedia;
    const CWaveSampleInfo& fInfo;
    CABCWaveSample& fWaveSample;
    CLOP2DecompressCallback& fCallback;
    int64_t fSourceCursor = 0; // frame, by the records; may be beyond the media's
};

} // namespace NSLOPDLL

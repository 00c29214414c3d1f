// Reading the audio of the two older kinds of file, both AIFF with 16-bit mono audio.
#pragma once

#include <cstdint>
#include <string>

namespace NSPorter {
class CMedia;
}

namespace NSLOPDLL {

class CABCWaveSample;
class CLOP2DecompressCallback;
struct CWaveSampleInfo;

/// The largest block, in frames.
constexpr int32_t kMonoBlockFrameLimit = 2048;

/// XFormatViolation with `words` for any other audio.
void Check16BitMono(const CWaveSampleInfo& info, const std::string& words);

/// Reports the frame that is about to be written; XAbort "callback cancelled" when the callback
/// says stop.
void ReportFrame(CLOP2DecompressCallback& callback, int32_t frame);

/// Copies `count` frames, none if it is below 1, from the media's cursor to `position` in the wave
/// sample, which has room for them. Goes by blocks of `blockFrames`, 1 to kMonoBlockFrameLimit, and
/// reports before each. XFormatViolation without words for frames that the media lacks.
void CopyMonoFrames(NSPorter::CMedia& media, const CWaveSampleInfo& info, int32_t position,
                    int64_t count, int32_t blockFrames, CABCWaveSample& waveSample,
                    CLOP2DecompressCallback& callback);

} // namespace NSLOPDLL

#pragma once

#include "LoopLibrary/Render/Sample/CWaveSampleInfo.h"

#include <cstdint>

namespace NSLOPDLL {

/// What a loop file says of itself, as it says it: apart from what each kind of file promises,
/// nothing here is limited to useful ranges.
struct CTesselFileInfo {
    CWaveSampleInfo fWaveSampleInfo;
    int32_t fSliceCount = 0;         // slices stored in the file
    int32_t fExportedSliceCount = 0; // slices that the authoring tool exported
    int32_t fTempo = 0; // thousandths of a beat per minute, 0 if the loop has no length
    int32_t fBars = 0;
    int32_t fBeats = 0;
    int32_t fTimeSignatureNumerator = 0;
    int32_t fTimeSignatureDenominator = 0;
    double fCompressionRatio = 0.0; // decoded bytes over stored bytes
    int32_t fLoopPercent = 0;       // share of the audio inside the loop, 0 to 100
    int64_t fExportedSize = 0;      // bytes
};

/// The fLoopPercent of a loop of `loopFrames` in `frames`, above 0: rounded up.
inline int32_t LoopPercent(int64_t loopFrames, int64_t frames) {
    return static_cast<int32_t>((loopFrames * 100 + frames - 1) / frames);
}

} // namespace NSLOPDLL

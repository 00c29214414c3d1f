#include "LoopLibrary/File/Legacy/MonoAudio.h"

#include "Failure/Classes/XProgressErrors.h"
#include "Failure/Raising/Raise.h"
#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "LoopLibrary/File/LOP2/CLOP2DecompressCallback.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "LoopLibrary/Render/Sample/CWaveSampleInfo.h"
#include "LoopLibrary/Render/Sample/ReadSamples.h"

#include <algorithm>
#include <array>

namespace NSLOPDLL {

void Check16BitMono(const CWaveSampleInfo& info, const std::string& words) {
    if (info.fBitDepth != 16 || info.fChannels != 1) {
        RaiseFormatViolation(words);
    }
}

void ReportFrame(CLOP2DecompressCallback& callback, int32_t frame) {
    if (callback.ShouldStop(static_cast<uint32_t>(frame))) {
        NSLichen::Raise(NSLichen::XAbort("callback cancelled"));
    }
}

void CopyMonoFrames(NSPorter::CMedia& media, const CWaveSampleInfo& info, int32_t position,
                    int64_t count, int32_t blockFrames, CABCWaveSample& waveSample,
                    CLOP2DecompressCallback& callback) {
    std::array<float, kMonoBlockFrameLimit> values;
    while (count > 0) {
        ReportFrame(callback, position);
        const auto blockCount = static_cast<int32_t>(std::min<int64_t>(count, blockFrames));
        ReadSamples(media, info.fChannels, info.fBitDepth, blockCount, values.data());
        waveSample.Set24BitFloatSamples(position, blockCount, values.data(), kChannel_Left);
        position += blockCount;
        count -= blockCount;
    }
}

} // namespace NSLOPDLL

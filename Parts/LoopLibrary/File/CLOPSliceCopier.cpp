#include "LoopLibrary/File/CLOPSliceCopier.h"

#include "Failure/Raise.h"
#include "Failure/XProgressErrors.h"
#include "LoopLibrary/File/CLOP2DecompressCallback.h"
#include "LoopLibrary/File/CLOPAppChunk.h"
#include "LoopLibrary/File/LoopFileFailures.h"
#include "LoopLibrary/Render/CABCWaveSample.h"
#include "LoopLibrary/Render/ReadSamples.h"
#include "PorterPackage/Core/CMedia.h"

#include <algorithm>
#include <array>

namespace NSLOPDLL {

namespace {

constexpr int64_t kBytesPerFrame = 2;
constexpr int64_t kBlockFrameLimit = 2048;

} // namespace

CLOPSliceCopier::CLOPSliceCopier(NSPorter::CMedia& media, const CWaveSampleInfo& info,
                                 CABCWaveSample& waveSample, CLOP2DecompressCallback& callback)
    : fMedia(media), fInfo(info), fWaveSample(waveSample), fCallback(callback) {}

void CLOPSliceCopier::Copy(const SLOPSliceRecord& record, int32_t position, int64_t length) {
    if (fInfo.fChannels != 1) {
        RaiseFormatViolation("fileInfo.fWaveSampleInfo.fChannels != 1");
    }
    SkipTo(record.fSourceStart);
    std::array<float, kBlockFrameLimit> values;
    for (int64_t left = length; left > 0;) {
        if (fCallback.ShouldStop(static_cast<uint32_t>(position))) {
            NSLichen::Raise(NSLichen::XAbort("callback cancelled"));
        }
        const auto count = static_cast<int32_t>(std::min(left, kBlockFrameLimit));
        ReadSamples(fMedia, fInfo.fChannels, fInfo.fBitDepth, count, values.data());
        fWaveSample.Set24BitFloatSamples(position, count, values.data(), kChannel_Left);
        position += count;
        left -= count;
    }
    // Where the record says that it ends, also when its frames came from elsewhere.
    fSourceCursor = record.fSourceStart + length;
}

void CLOPSliceCopier::SkipTo(int64_t sourceFrame) {
    const int64_t frames = sourceFrame - fSourceCursor;
    if (frames <= 0) {
        return;
    }
    if (frames > fMedia.BytesLeft() / kBytesPerFrame) {
        RaiseFormatViolation("");
    }
    fMedia.Skip(frames * kBytesPerFrame);
    fSourceCursor = sourceFrame;
}

} // namespace NSLOPDLL

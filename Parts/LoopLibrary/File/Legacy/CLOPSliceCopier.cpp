#include "LoopLibrary/File/Legacy/CLOPSliceCopier.h"

#include "LoopLibrary/File/Common/LoopFileFailures.h"
#include "LoopLibrary/File/Legacy/CLOPAppChunk.h"
#include "LoopLibrary/File/Legacy/MonoAudio.h"
#include "PorterPackage/Core/Media/CMedia.h"

namespace NSLOPDLL {

namespace {

constexpr int64_t kBytesPerFrame = 2;
constexpr int32_t kFramesAtOnce = 2048;

} // namespace

CLOPSliceCopier::CLOPSliceCopier(NSPorter::CMedia& media, const CWaveSampleInfo& info,
                                 CABCWaveSample& waveSample, CLOP2DecompressCallback& callback)
    : fMedia(media), fInfo(info), fWaveSample(waveSample), fCallback(callback) {}

void CLOPSliceCopier::Copy(const SLOPSliceRecord& record, int32_t position, int64_t length) {
    if (fInfo.fChannels != 1) {
        RaiseFormatViolation("fileInfo.fWaveSampleInfo.fChannels != 1");
    }
    SkipTo(record.fSourceStart);
    CopyMonoFrames(fMedia, fInfo, position, length, kFramesAtOnce, fWaveSample, fCallback);
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

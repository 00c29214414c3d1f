#include "looptool/Loop/StoredAudio.h"

#include "looptool/Loop/LoadReport.h"
#include "looptool/System/Interrupt.h"
#include "looptool/System/ToolFailure.h"

#include "LoopLibrary/File/Common/CTesselFile.h"
#include "LoopLibrary/File/LOP2/CLOP2DecompressCallback.h"
#include "LoopLibrary/Public/FailureToResult.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"

#include <algorithm>
#include <exception>
#include <memory>

namespace NSLoopTool {

namespace {

class CShowingCallback final : public NSLOPDLL::CLOP2DecompressCallback {
public:
    CShowingCallback(const ProgressFunction& progress, int64_t frames)
        : fProgress(progress), fFrames(frames) {}

    bool ShouldStop(uint32_t framesDone) override {
        fProgress(int64_t{framesDone} * 100 / std::max<int64_t>(fFrames, 1));
        return WasInterrupted();
    }

private:
    const ProgressFunction& fProgress;
    const int64_t fFrames;
};

} // namespace

SAudio AudioOfSample(const NSLOPDLL::CABCWaveSample& sample) {
    SAudio audio;
    audio.fSampleRate = static_cast<int32_t>(sample.GetSampleRate());
    audio.fBitDepth = static_cast<int32_t>(sample.GetBitDepth());
    const auto frames = static_cast<int32_t>(sample.GetFrameCount());
    audio.fPlanes.resize(sample.IsStereo() ? 2 : 1,
                         std::vector<int32_t>(static_cast<size_t>(frames)));
    for (size_t channel = 0; channel < audio.fPlanes.size(); ++channel) {
        std::vector<int32_t>& plane = audio.fPlanes[channel];
        sample.Get24BitSamples(0, frames, plane.data(), static_cast<int32_t>(channel) + 1);
        if (audio.fBitDepth == 16) {
            std::transform(plane.begin(), plane.end(), plane.begin(),
                           [](int32_t value) { return value >> 8; });
        }
    }
    return audio;
}

SAudio ReadStoredAudio(const std::vector<uint8_t>& bytes, const std::string& name,
                       const ProgressFunction& progress) {
    try {
        NSPorter::CMemoryMedia media(static_cast<int64_t>(bytes.size()), bytes.data());
        NSLOPDLL::CTesselFile file(&media);
        NSLOPDLL::CTesselFileInfo info;
        file.GetFileInfo(info);
        CShowingCallback callback(progress, info.fWaveSampleInfo.fFrames);
        return AudioOfSample(*file.ReadWaveSample(callback));
    } catch (const std::exception& exception) {
        StopIfInterrupted();
        throw CToolFailure(name + ": " +
                           FailedLoadText(bytes, NSLOPDLL::ResultOfException(exception)));
    }
}

} // namespace NSLoopTool

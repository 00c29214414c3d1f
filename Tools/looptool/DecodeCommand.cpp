#include "looptool/AudioFile.h"
#include "looptool/CProgressBar.h"
#include "looptool/Commands.h"
#include "looptool/InputFile.h"
#include "looptool/Interrupt.h"
#include "looptool/ToolFailure.h"

#include "LoopLibrary/File/Common/CTesselFile.h"
#include "LoopLibrary/File/Common/CTesselFileInfo.h"
#include "LoopLibrary/File/LOP2/CLOP2DecompressCallback.h"
#include "LoopLibrary/Public/FailureToResult.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"
#include "looptool/ResultText.h"

#include <exception>
#include <memory>

namespace NSLoopTool {

namespace {

class CShowingCallback final : public NSLOPDLL::CLOP2DecompressCallback {
public:
    CShowingCallback(CProgressBar& bar, uint32_t totalFrames)
        : fBar(bar), fTotalFrames(totalFrames) {}

    bool ShouldStop(uint32_t framesDone) override {
        fBar.Show(fTotalFrames == 0 ? 100 : int64_t{framesDone} * 100 / fTotalFrames);
        return WasInterrupted();
    }

private:
    CProgressBar& fBar;
    const uint32_t fTotalFrames;
};

SAudio StoredAudio(const std::string& path, const std::vector<uint8_t>& bytes) {
    NSPorter::CMemoryMedia media(static_cast<int64_t>(bytes.size()), bytes.data());
    NSLOPDLL::CTesselFile file(&media);
    NSLOPDLL::CTesselFileInfo info;
    file.GetFileInfo(info);
    CProgressBar bar("decoding " + path);
    CShowingCallback callback(bar, static_cast<uint32_t>(info.fWaveSampleInfo.fFrames));
    const std::unique_ptr<NSLOPDLL::CABCWaveSample> sample = file.ReadWaveSample(callback);

    SAudio audio;
    audio.fSampleRate = static_cast<int32_t>(sample->GetSampleRate());
    audio.fBitDepth = static_cast<int32_t>(sample->GetBitDepth());
    const auto frames = static_cast<int32_t>(sample->GetFrameCount());
    audio.fPlanes.resize(sample->IsStereo() ? 2 : 1,
                         std::vector<int32_t>(static_cast<size_t>(frames)));
    for (size_t channel = 0; channel < audio.fPlanes.size(); ++channel) {
        std::vector<int32_t>& plane = audio.fPlanes[channel];
        sample->Get24BitSamples(0, frames, plane.data(), static_cast<int32_t>(channel) + 1);
        if (audio.fBitDepth == 16) {
            for (int32_t& value : plane) {
                value >>= 8;
            }
        }
    }
    return audio;
}

} // namespace

void RunDecode(const SDecodeOptions& options) {
    const std::vector<uint8_t> bytes = ReadInputFile(options.fFile);
    SAudio audio;
    try {
        audio = StoredAudio(options.fFile, bytes);
    } catch (const std::exception& exception) {
        StopIfInterrupted();
        const std::string detail = exception.what();
        throw CToolFailure(options.fFile + ": " +
                           ResultText(NSLOPDLL::ResultOfException(exception)) +
                           (detail.empty() ? "" : " (" + detail + ")"));
    }
    WriteAudioFile(options.fOutput, audio);
}

} // namespace NSLoopTool

#include "looptool/AudioFile.h"
#include "looptool/CLoop.h"
#include "looptool/CProgressBar.h"
#include "looptool/Commands.h"
#include "looptool/Interrupt.h"
#include "looptool/ToolFailure.h"

#include <algorithm>
#include <cmath>

namespace NSLoopTool {

namespace {

// Keeps the whole of a preview, and so a WAV file of it, below its 4 GB.
constexpr double kMaxFrames = 256.0 * 1024 * 1024;

} // namespace

void RunPreview(const SPreviewOptions& options) {
    CLoop loop(options.fFile);
    if (options.fRate != 0) {
        loop.SetOutputSampleRate(options.fRate);
    }
    if (options.fTempo != 0.0) {
        loop.SetPreviewTempo(static_cast<int32_t>(std::lround(options.fTempo * 1000.0)));
    }
    const int32_t rate = options.fRate != 0
                             ? options.fRate
                             : std::clamp<int32_t>(loop.GetInfo().fSampleRate, LOP_MIN_SAMPLE_RATE,
                                                   LOP_MAX_SAMPLE_RATE);
    const double wanted = options.fSeconds * rate;
    if (!(wanted >= 0.0 && wanted <= kMaxFrames)) {
        throw CToolFailure("--seconds: too long a preview", kExitCode_Usage);
    }
    const auto frames = static_cast<size_t>(wanted);

    std::vector<std::vector<float>> planes(loop.IsStereo() ? 2 : 1, std::vector<float>(frames));
    CProgressBar bar("previewing " + options.fFile);
    loop.StartPreview();
    for (size_t done = 0; done < frames;) {
        StopIfInterrupted();
        const size_t count = std::min<size_t>(frames - done, LOP_MAX_BATCH_FRAMES);
        loop.RenderPreview(static_cast<int32_t>(count), planes.front().data() + done,
                           planes.size() == 2 ? planes.back().data() + done : nullptr);
        done += count;
        bar.Show(static_cast<int64_t>(done * 100 / frames));
    }
    loop.StopPreview();
    WriteFloatFile(options.fOutput, rate, planes);
}

} // namespace NSLoopTool

#include "looptool/AudioFile.h"
#include "looptool/CLoop.h"
#include "looptool/CProgressBar.h"
#include "looptool/Commands.h"
#include "looptool/Interrupt.h"
#include "looptool/NativePath.h"
#include "looptool/ToolFailure.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

namespace NSLoopTool {

namespace {

std::string SliceName(const std::string& stem, int32_t slice) {
    char number[16];
    std::snprintf(number, sizeof number, "%03d", slice);
    return stem + "_slice_" + number + ".wav";
}

} // namespace

void RunRender(const SRenderOptions& options) {
    CLoop loop(options.fFile);
    if (options.fRate != 0) {
        loop.SetOutputSampleRate(options.fRate);
    }
    const LOPInfo info = loop.GetInfo();
    if (options.fSlice >= info.fSliceCount) {
        throw CToolFailure(options.fFile + ": has " + std::to_string(info.fSliceCount) +
                           " slices; there is no slice " + std::to_string(options.fSlice));
    }
    const std::filesystem::path folder = PathOfArgument(options.fFolder);
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        throw CToolFailure(options.fFolder + ": cannot make the folder: " + error.message());
    }

    const std::string stem = ArgumentOfPath(PathOfArgument(options.fFile).stem());
    const int32_t rate =
        options.fRate != 0
            ? options.fRate
            : std::clamp<int32_t>(info.fSampleRate, LOP_MIN_SAMPLE_RATE, LOP_MAX_SAMPLE_RATE);
    const int32_t first = options.fSlice < 0 ? 0 : options.fSlice;
    const int32_t end = options.fSlice < 0 ? info.fSliceCount : options.fSlice + 1;
    CProgressBar bar("rendering " + options.fFile);
    for (int32_t slice = first; slice < end; ++slice) {
        StopIfInterrupted();
        const std::filesystem::path target = folder / PathOfArgument(SliceName(stem, slice));
        WriteFloatFile(ArgumentOfPath(target), rate, loop.RenderSlice(slice));
        bar.Show(int64_t{slice - first + 1} * 100 / (end - first));
    }
}

} // namespace NSLoopTool

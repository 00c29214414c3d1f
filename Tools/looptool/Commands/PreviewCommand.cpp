#include "looptool/Audio/CAudioWriter.h"
#include "looptool/CommandLine/CCommandLine.h"
#include "looptool/CommandLine/CommonOptions.h"
#include "looptool/Commands/Commands.h"
#include "looptool/Console/CProgressBar.h"
#include "looptool/Loop/CExactPreview.h"
#include "looptool/Loop/CLoop.h"
#include "looptool/System/Interrupt.h"
#include "looptool/System/ToolFailure.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <memory>

namespace NSLoopTool {

namespace {

constexpr double kMostPreviewedLoops = 100000.0;
constexpr double kLeastLength = 0.001;
constexpr double kUsualSeconds = 8.0;
constexpr double kMostSeconds = 7 * 24 * 3600.0;

struct SPreviewOptions {
    std::string fFile;
    std::string fOutput;
    double fTempo = 0.0;   // 0 keeps the loop's own
    double fSeconds = 0.0; // 0: by fLoops, or else the usual length
    double fLoops = 0.0;
    bool fIsExact = false;
    int32_t fRate = 0;
    SFormatWish fFormat;
};

// Fills the planes with the next frames.
using RenderFunction =
    std::function<void(uint64_t first, size_t count, std::vector<std::vector<float>>& planes)>;

void WriteStream(const CLoop& loop, CAudioWriter& writer, uint64_t frames,
                 const RenderFunction& render) {
    // Who listens on a pipe gets the first sound at once.
    uint64_t lot = 4096;
    std::vector<std::vector<float>> planes(loop.GetChannels(),
                                           std::vector<float>(LOP_MAX_BATCH_FRAMES));
    CProgressBar bar("previewing " + loop.GetName());
    for (uint64_t done = 0; done < frames;) {
        StopIfInterrupted();
        const auto count = static_cast<size_t>(std::min(frames - done, lot));
        render(done, count, planes);
        writer.Write(planes, 0, count);
        writer.Flush();
        done += count;
        lot = std::min<uint64_t>(lot * 2, LOP_MAX_BATCH_FRAMES);
        bar.Show(static_cast<int64_t>(done * 100 / frames));
    }
}

int RunPreview(const SPreviewOptions& options) {
    if (options.fSeconds != 0.0 && options.fLoops != 0.0) {
        throw CToolFailure("--seconds and --loops: only one of them", kExitCode_Usage);
    }
    const SAudioFormat format =
        ChooseAudioFormat(options.fFormat, options.fOutput, EEncoding::kFloat);
    CLoop loop(options.fFile);
    loop.SetOutputSampleRate(options.fRate);
    const double tempo =
        options.fTempo != 0.0 ? options.fTempo : loop.GetInfo().fStoredTempo / 1000.0;
    const double seconds = options.fSeconds != 0.0 ? options.fSeconds : kUsualSeconds;
    const auto frames = static_cast<uint64_t>(
        options.fLoops != 0.0 ? std::round(options.fLoops * PassFrames(loop, tempo))
                              : seconds * loop.GetOutputSampleRate());
    CAudioWriter writer(options.fOutput, format, loop.GetOutputSampleRate(), loop.GetChannels(),
                        frames);
    if (options.fIsExact) {
        const CExactPreview preview(loop, tempo);
        WriteStream(loop, writer, frames, [&preview](uint64_t first, size_t count, auto& planes) {
            preview.Render(first, count, planes);
        });
    } else {
        if (options.fTempo != 0.0) {
            loop.SetPreviewTempo(static_cast<int32_t>(std::lround(tempo * 1000.0)));
        }
        loop.StartPreview();
        WriteStream(loop, writer, frames, [&loop](uint64_t /*first*/, size_t count, auto& planes) {
            loop.RenderPreview(static_cast<int32_t>(count), planes.front().data(),
                               loop.IsStereo() ? planes.back().data() : nullptr);
        });
        loop.StopPreview();
    }
    writer.Commit();
    return 0;
}

} // namespace

void AddPreviewCommand(CCommandLine& line) {
    const auto options = std::make_shared<SPreviewOptions>();
    CCommand command = line.AddCommand("preview", "Render the loop at a tempo",
                                       [options] { return RunPreview(*options); });
    command.AddFile("FILE", options->fFile, "Loop file; - is standard input");
    command.AddOutput(options->fOutput, "Audio file; - is standard output");
    AddTempo(command, options->fTempo);
    command.AddDecimal("--seconds", options->fSeconds, kLeastLength, kMostSeconds,
                       "Length of the preview; else 8");
    command.AddDecimal("--loops", options->fLoops, kLeastLength, kMostPreviewedLoops,
                       "Length of the preview in passes of the loop");
    command.AddFlag("--exact", options->fIsExact,
                    "Place rendered slices to the frame, not to blocks of 64 frames");
    AddRate(command, options->fRate);
    AddFormat(command, options->fFormat, "floats (24 in FLAC)");
    command.SetExample("looptool preview drums.lop2 --tempo 92.5 -o - | aplay");
}

} // namespace NSLoopTool

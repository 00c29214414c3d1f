#include "looptool/Audio/CAudioWriter.h"
#include "looptool/CommandLine/CCommandLine.h"
#include "looptool/CommandLine/CommonOptions.h"
#include "looptool/Commands/Commands.h"
#include "looptool/Console/CProgressBar.h"
#include "looptool/Files/COutputFile.h"
#include "looptool/Loop/CLoop.h"
#include "looptool/Loop/SliceFiles.h"
#include "looptool/System/Interrupt.h"
#include "looptool/System/NativePath.h"
#include "looptool/System/ToolFailure.h"

#include <memory>

namespace NSLoopTool {

namespace {

struct SRenderOptions {
    std::string fFile;
    std::string fFolder;
    int32_t fRate = 0;   // 0 keeps the loop's own
    int32_t fSlice = -1; // -1 is all
    SFormatWish fFormat;
};

int RunRender(const SRenderOptions& options) {
    const SAudioFormat format = ChooseAudioFormat(options.fFormat, "", EEncoding::kFloat);
    CLoop loop(options.fFile);
    loop.SetOutputSampleRate(options.fRate);
    const int32_t count = loop.GetInfo().fSliceCount;
    if (options.fSlice >= count) {
        throw CToolFailure(loop.GetName() + ": has " + std::to_string(count) +
                           " slices; there is no slice " + std::to_string(options.fSlice));
    }
    MakeFolder(options.fFolder);
    const int32_t first = options.fSlice < 0 ? 0 : options.fSlice;
    const int32_t end = options.fSlice < 0 ? count : options.fSlice + 1;
    CProgressBar bar("rendering " + loop.GetName());
    for (int32_t slice = first; slice < end; ++slice) {
        StopIfInterrupted();
        const std::string target = SliceFileName(options.fFile, slice, count, format.GetSuffix());
        WriteFloatFile(ArgumentOfPath(PathOfArgument(options.fFolder) / PathOfArgument(target)),
                       format, loop.GetOutputSampleRate(), loop.RenderSlice(slice));
        bar.Show(int64_t{slice - first + 1} * 100 / (end - first));
    }
    return 0;
}

} // namespace

void AddRenderCommand(CCommandLine& line) {
    const auto options = std::make_shared<SRenderOptions>();
    CCommand command = line.AddCommand("render", "Render slices to audio files",
                                       [options] { return RunRender(*options); });
    command.AddFile("FILE", options->fFile, "Loop file; - is standard input");
    command.AddOutput(options->fFolder, "Folder for the audio files");
    AddRate(command, options->fRate);
    command.AddInteger("--slice", options->fSlice, 0, INT32_MAX,
                       "Only this slice, from 0; else all");
    AddFormat(command, options->fFormat, "floats (24 in FLAC)");
    command.SetExample("looptool render drums.lop2 -o slices --format flac --rate 48000");
}

} // namespace NSLoopTool

#include "looptool/Audio/CAudioWriter.h"
#include "looptool/CommandLine/CCommandLine.h"
#include "looptool/CommandLine/CommonOptions.h"
#include "looptool/Commands/Commands.h"
#include "looptool/Commands/Jobs.h"
#include "looptool/Commands/OutputTasks.h"
#include "looptool/Files/COutputFile.h"
#include "looptool/Loop/CLoop.h"
#include "looptool/Loop/SliceFiles.h"
#include "looptool/System/Interrupt.h"
#include "looptool/System/ToolFailure.h"

#include <memory>

namespace NSLoopTool {

namespace {

struct SRenderOptions {
    std::vector<std::string> fFiles;
    std::string fFolder;
    int32_t fRate = 0;   // 0 keeps the loop's own
    int32_t fSlice = -1; // -1 is all
    SFormatWish fFormat;
    int32_t fJobs = 0;
};

void RenderOne(const SRenderOptions& options, const std::string& file,
               const ProgressFunction& progress) {
    const SAudioFormat format = ChooseAudioFormat(options.fFormat, "", EEncoding::kFloat);
    CLoop loop(file, [&progress](int64_t percent) { progress(percent / 2); });
    loop.SetOutputSampleRate(options.fRate);
    const int32_t count = loop.GetInfo().fSliceCount;
    if (options.fSlice >= count) {
        throw CToolFailure(loop.GetName() + ": has " + std::to_string(count) +
                           " slices; there is no slice " + std::to_string(options.fSlice));
    }
    const int32_t first = options.fSlice < 0 ? 0 : options.fSlice;
    const int32_t end = options.fSlice < 0 ? count : options.fSlice + 1;
    const auto target = [&](int32_t slice) {
        return PathInFolder(options.fFolder, SliceFileName(file, slice, count, format.GetSuffix()));
    };
    MakeFolder(options.fFolder);
    for (int32_t slice = first; slice < end; ++slice) {
        StopIfInterrupted();
        WriteFloatFile(target(slice), format, loop.GetOutputSampleRate(), loop.RenderSlice(slice));
        progress(50 + int64_t{slice - first + 1} * 50 / (end - first));
    }
}

int RunRender(const SRenderOptions& options) {
    ChooseAudioFormat(options.fFormat, "", EEncoding::kFloat); // told before the work
    RefuseSameNames(options.fFiles, [](const std::string& file) {
        return SliceFileName(file, 0, 1, std::string());
    });
    return RunJobs(options.fFiles.size(), options.fJobs, "rendering " + NameOfAll(options.fFiles),
                   [&options](size_t index, const ProgressFunction& progress) {
                       RenderOne(options, options.fFiles[index], progress);
                   });
}

} // namespace

void AddRenderCommand(CCommandLine& line) {
    const auto options = std::make_shared<SRenderOptions>();
    CCommand command = line.AddCommand("render", "Render slices to audio files",
                                       [options] { return RunRender(*options); });
    command.AddFiles("FILE", options->fFiles, "Loop files; - is standard input");
    command.AddOutput(options->fFolder, "Folder for the audio files");
    AddRate(command, options->fRate);
    command.AddInteger("--slice", options->fSlice, 0, INT32_MAX,
                       "Only this slice, from 0; else all");
    AddFormat(command, options->fFormat, "floats (24 in FLAC)");
    AddJobs(command, options->fJobs);
    command.SetExample("looptool render drums.lop2 -o slices --format flac --rate 48000");
}

} // namespace NSLoopTool

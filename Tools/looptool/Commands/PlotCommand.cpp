#include "looptool/CommandLine/CCommandLine.h"
#include "looptool/CommandLine/CommonOptions.h"
#include "looptool/Commands/Commands.h"
#include "looptool/Commands/EachFile.h"
#include "looptool/Commands/Jobs.h"
#include "looptool/Commands/OutputTasks.h"
#include "looptool/Console/SafeText.h"
#include "looptool/Files/COutputFile.h"
#include "looptool/Loop/CLoop.h"
#include "looptool/Picture/LoopPlot.h"
#include "looptool/Picture/PngCanvas.h"
#include "looptool/Picture/SvgCanvas.h"
#include "looptool/System/NativePath.h"
#include "looptool/System/Terminal.h"
#include "looptool/System/ToolFailure.h"

#include <algorithm>
#include <cstdio>
#include <memory>

namespace NSLoopTool {

namespace {

struct SPlotOptions {
    std::vector<std::string> fFiles;
    std::string fOutput;
    std::string fFormat;
    bool fIsDark = false;
    bool fIsAscii = false;
    int32_t fWidth = 1200;
    int32_t fHeight = 420;
    bool fForce = false;
    int32_t fJobs = 0;
};

std::string ChooseFormat(const SPlotOptions& options, bool isFolder) {
    if (!options.fFormat.empty()) {
        return options.fFormat;
    }
    const std::string suffix = ArgumentOfPath(PathOfArgument(options.fOutput).extension());
    if (isFolder || options.fOutput == "-" || suffix == ".svg") {
        return "svg";
    }
    if (suffix == ".png") {
        return "png";
    }
    throw CToolFailure(SafeText(options.fOutput) +
                           ": a picture ends in .svg or .png, or --format says its kind",
                       kExitCode_Usage);
}

int PrintPlots(const SPlotOptions& options) {
    constexpr int kLeastColumns = 20;
    const int columns = std::max(TerminalWidth(stdout) - 1, kLeastColumns);
    bool isFirst = true;
    return ForEachFile(options.fFiles, [columns, &isFirst](const std::string& file) {
        const CLoop loop(file);
        std::fputs(isFirst ? "" : "\n", stdout);
        isFirst = false;
        std::fputs(AsciiPlot(MakeLoopPlot(loop), static_cast<size_t>(columns)).c_str(), stdout);
    });
}

std::unique_ptr<ICanvas> MakeCanvas(const SPlotOptions& options, const std::string& format) {
    const double width = options.fWidth;
    const double height = options.fHeight;
    return format == "svg" ? MakeSvgCanvas(width, height) : MakePngCanvas(width, height);
}

void DrawPlot(const SPlotOptions& options, const std::string& format, const SOutputTask& task,
              const ProgressFunction& progress) {
    const CLoop loop(task.fInput, progress);
    const std::unique_ptr<ICanvas> canvas = MakeCanvas(options, format);
    DrawLoopPlot(MakeLoopPlot(loop), *canvas, options.fWidth, options.fHeight, options.fIsDark);
    const std::vector<uint8_t> bytes = canvas->Finish();
    WriteOutputFile(task.fOutput, bytes.data(), bytes.size());
}

int RunPlot(const SPlotOptions& options) {
    if (options.fOutput.empty() != options.fIsAscii) {
        throw CToolFailure(options.fIsAscii ? "--ascii prints; it takes no --output"
                                            : "--output or --ascii is needed",
                           kExitCode_Usage);
    }
    if (options.fIsAscii) {
        return PrintPlots(options);
    }
    const bool isFolder = IsFolderOutput(options.fFiles, options.fOutput);
    const std::string format = ChooseFormat(options, isFolder);
    MakeCanvas(options, format); // what this build lacks is told before the work
    const std::vector<SOutputTask> tasks =
        PlanOutputs(options.fFiles, options.fOutput, isFolder, "." + format);
    return RunJobs(tasks.size(), options.fJobs, "plotting " + NameOfAll(options.fFiles),
                   [&](size_t index, const ProgressFunction& progress) {
                       if (isFolder && !options.fForce) {
                           RefuseToReplace(tasks[index].fOutput);
                       }
                       DrawPlot(options, format, tasks[index], progress);
                   });
}

} // namespace

void AddPlotCommand(CCommandLine& line) {
    const auto options = std::make_shared<SPlotOptions>();
    CCommand command = line.AddCommand("plot", "Draw a loop with its slices, bars and beats",
                                       [options] { return RunPlot(*options); });
    command.AddFiles("FILE", options->fFiles, "Loop files; - is standard input");
    command.AddText("-o,--output", "PATH", options->fOutput,
                    HasCairo()
                        ? "Picture, .svg or .png, - is standard output; a folder for several "
                          "files"
                        : "Picture, .svg (this build has no cairo for .png)");
    command.AddChoice("--format", options->fFormat, {"svg", "png"},
                      "Kind of picture; else by the suffix");
    command.AddFlag("--dark", options->fIsDark, "Light on dark");
    command.AddFlag("--ascii", options->fIsAscii, "Print the picture in letters instead");
    command.AddInteger("--width", options->fWidth, 300, 8000, "Pixels; else 1200");
    command.AddInteger("--height", options->fHeight, 200, 4000, "Pixels; else 420");
    AddForce(command, options->fForce, "Replace files that exist in a folder");
    AddJobs(command, options->fJobs);
    command.SetExample("looptool plot drums.lop2 -o drums.svg --dark");
}

} // namespace NSLoopTool

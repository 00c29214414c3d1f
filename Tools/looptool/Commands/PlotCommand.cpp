#include "looptool/CommandLine/CCommandLine.h"
#include "looptool/Commands/Commands.h"
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
    std::string fFile;
    std::string fOutput;
    std::string fFormat;
    bool fIsDark = false;
    bool fIsAscii = false;
    int32_t fWidth = 1200;
    int32_t fHeight = 420;
};

std::string ChooseFormat(const SPlotOptions& options) {
    if (!options.fFormat.empty()) {
        return options.fFormat;
    }
    const std::string suffix = ArgumentOfPath(PathOfArgument(options.fOutput).extension());
    if (options.fOutput == "-" || suffix == ".svg") {
        return "svg";
    }
    if (suffix == ".png") {
        return "png";
    }
    throw CToolFailure(SafeText(options.fOutput) +
                           ": a picture ends in .svg or .png, or --format says its kind",
                       kExitCode_Usage);
}

int RunPlot(const SPlotOptions& options) {
    if (options.fOutput.empty() != options.fIsAscii) {
        throw CToolFailure(options.fIsAscii ? "--ascii prints; it takes no --output"
                                            : "--output or --ascii is needed",
                           kExitCode_Usage);
    }
    const std::string format = options.fIsAscii ? "" : ChooseFormat(options);
    const double width = options.fWidth;
    const double height = options.fHeight;
    const std::unique_ptr<ICanvas> canvas = format == "svg"   ? MakeSvgCanvas(width, height)
                                            : format == "png" ? MakePngCanvas(width, height)
                                                              : nullptr;
    const CLoop loop(options.fFile);
    const SLoopPlot plot = MakeLoopPlot(loop);
    if (canvas == nullptr) {
        constexpr int kLeastColumns = 20;
        const int columns = std::max(TerminalWidth(stdout) - 1, kLeastColumns);
        std::fputs(AsciiPlot(plot, static_cast<size_t>(columns)).c_str(), stdout);
        return 0;
    }
    DrawLoopPlot(plot, *canvas, width, height, options.fIsDark);
    const std::vector<uint8_t> bytes = canvas->Finish();
    WriteOutputFile(options.fOutput, bytes.data(), bytes.size());
    return 0;
}

} // namespace

void AddPlotCommand(CCommandLine& line) {
    const auto options = std::make_shared<SPlotOptions>();
    CCommand command = line.AddCommand("plot", "Draw a loop with its slices, bars and beats",
                                       [options] { return RunPlot(*options); });
    command.AddFile("FILE", options->fFile, "Loop file; - is standard input");
    command.AddText("-o,--output", "PATH", options->fOutput,
                    HasCairo() ? "Picture, .svg or .png; - is standard output"
                               : "Picture, .svg (this build has no cairo for .png)");
    command.AddChoice("--format", options->fFormat, {"svg", "png"},
                      "Kind of picture; else by the suffix");
    command.AddFlag("--dark", options->fIsDark, "Light on dark");
    command.AddFlag("--ascii", options->fIsAscii, "Print the picture in letters instead");
    command.AddInteger("--width", options->fWidth, 300, 8000, "Pixels; else 1200");
    command.AddInteger("--height", options->fHeight, 200, 4000, "Pixels; else 420");
    command.SetExample("looptool plot drums.lop2 -o drums.svg --dark");
}

} // namespace NSLoopTool

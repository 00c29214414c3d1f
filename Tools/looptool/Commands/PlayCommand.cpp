#include "looptool/CommandLine/CCommandLine.h"
#include "looptool/CommandLine/CommonOptions.h"
#include "looptool/Commands/Commands.h"
#include "looptool/Playing/Player.h"

#include <memory>

namespace NSLoopTool {

namespace {

constexpr double kMostPlayedLoops = 1000000.0;

struct SPlayOptions {
    std::string fFile;
    double fTempo = 0.0;
    double fLoops = 0.0;
    int32_t fRate = 0;
};

int RunPlay(const SPlayOptions& options) {
    CLoop loop(options.fFile);
    loop.SetOutputSampleRate(options.fRate);
    PlayLoop(loop, options.fTempo, options.fLoops);
    return 0;
}

} // namespace

void AddPlayCommand(CCommandLine& line) {
    const auto options = std::make_shared<SPlayOptions>();
    CCommand command =
        line.AddCommand("play", HasPortAudio() ? "Play a loop" : "Play a loop (not in this build)",
                        [options] { return RunPlay(*options); });
    command.AddFile("FILE", options->fFile, "Loop file");
    AddTempo(command, options->fTempo);
    command.AddDecimal("--loops", options->fLoops, 0.001, kMostPlayedLoops,
                       "Passes of the loop; else until q is pressed");
    AddRate(command, options->fRate);
    command.SetExample("looptool play drums.lop2 --tempo 92.5");
}

} // namespace NSLoopTool

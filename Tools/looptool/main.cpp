#include "looptool/Arguments.h"
#include "looptool/Commands.h"
#include "looptool/Interrupt.h"
#include "looptool/Terminal.h"
#include "looptool/ToolFailure.h"

#include "LoopLibrary/Public/LoopLibrary.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace NSLoopTool;

std::string VersionText() {
    return "looptool " + std::to_string(LOOPLIBRARY_VERSION_MAJOR) + "." +
           std::to_string(LOOPLIBRARY_VERSION_MINOR) + "." +
           std::to_string(LOOPLIBRARY_VERSION_PATCH);
}

void AddInfo(CLI::App& app, SInfoOptions& options, std::function<void()>& chosen) {
    CLI::App* info = app.add_subcommand("info", "Show what a loop file holds");
    CLI::App* slices = app.add_subcommand("slices", "List the slices of a loop file");
    for (CLI::App* command : {info, slices}) {
        command->add_option("FILE", options.fFile, "Loop file")->required();
        command->add_flag("--json", options.fJson, "Print JSON");
    }
    info->callback([&] { chosen = [&] { RunInfo(options); }; });
    slices->callback([&] { chosen = [&] { RunSlices(options); }; });
}

void AddRender(CLI::App& app, SRenderOptions& options, std::function<void()>& chosen) {
    CLI::App* command = app.add_subcommand("render", "Render slices to WAV files");
    command->add_option("FILE", options.fFile, "Loop file")->required();
    command->add_option("-o,--output", options.fFolder, "Folder for the WAV files")->required();
    command->add_option("--rate", options.fRate, "Output rate in Hz; else the loop's own")
        ->check(CLI::Range(LOP_MIN_SAMPLE_RATE, LOP_MAX_SAMPLE_RATE));
    command->add_option("--slice", options.fSlice, "Only this slice, from 0; else all")
        ->check(CLI::NonNegativeNumber);
    command->callback([&] { chosen = [&] { RunRender(options); }; });
}

void AddPreview(CLI::App& app, SPreviewOptions& options, std::function<void()>& chosen) {
    CLI::App* command = app.add_subcommand("preview", "Render the loop at a tempo");
    command->add_option("FILE", options.fFile, "Loop file")->required();
    command->add_option("-o,--output", options.fOutput, "WAV file, or - for standard output")
        ->required();
    command->add_option("--tempo", options.fTempo, "Beats per minute; else the stored tempo")
        ->check(CLI::Range(LOP_MIN_TEMPO / 1000.0, LOP_MAX_TEMPO / 1000.0));
    command->add_option("--seconds", options.fSeconds, "Length of the preview")
        ->capture_default_str()
        ->check(CLI::NonNegativeNumber);
    command->add_option("--rate", options.fRate, "Output rate in Hz; else the loop's own")
        ->check(CLI::Range(LOP_MIN_SAMPLE_RATE, LOP_MAX_SAMPLE_RATE));
    command->callback([&] { chosen = [&] { RunPreview(options); }; });
}

void AddDecode(CLI::App& app, SDecodeOptions& options, std::function<void()>& chosen) {
    CLI::App* command = app.add_subcommand("decode", "Write the stored audio, bit for bit");
    command->add_option("FILE", options.fFile, "Loop file")->required();
    command->add_option("-o,--output", options.fOutput, "WAV file, or - for standard output")
        ->required();
    command->callback([&] { chosen = [&] { RunDecode(options); }; });
}

void AddMake(CLI::App& app, SMakeOptions& options, std::function<void()>& chosen) {
    CLI::App* command = app.add_subcommand("make", "Make a loop file from audio");
    command->add_option("AUDIO", options.fAudio, "Audio file of 1 or 2 channels")->required();
    command->add_option("-o,--output", options.fOutput, "Loop file to write")->required();
    command->add_option("--kind", options.fKind, "Kind of loop file")
        ->capture_default_str()
        ->check(CLI::IsMember({"lop2", "tsl", "lop"}));
    command->add_option("--tempo", options.fTempo, "Beats per minute; else by length and bars")
        ->check(CLI::Range(LOP_MIN_TEMPO / 1000.0, LOP_MAX_TEMPO / 1000.0));
    command->add_option("--bars", options.fBars, "Length in whole bars")
        ->capture_default_str()
        ->check(CLI::Range(0, 999));
    command->add_option("--beats", options.fBeats, "Beats beyond the bars")
        ->capture_default_str()
        ->check(CLI::Range(0, 7));
    command->add_option("--signature", options.fSignature, "Time signature")->capture_default_str();
    command->add_option("--slices", options.fSlices, "Frames at which slices start")
        ->delimiter(',');
    command->add_option("--bits", options.fBits, "16 or 24; else those of the audio")
        ->check(CLI::IsMember({16, 24}));
    command->add_option("--text", options.fTexts, "Creator text; up to five times")
        ->expected(1)
        ->take_all();
    command->callback([&] { chosen = [&] { RunMake(options); }; });
}

int Fail(const char* text, int exitCode) {
    std::fprintf(stderr, "looptool: %s\n", text);
    return exitCode;
}

} // namespace

int main(int argc, char** argv) {
    CLI::App app("Inspect, render, preview and make sliced audio loops.", "looptool");
    app.set_version_flag("--version", VersionText());
    app.require_subcommand(1);
    app.footer("Exit codes: 0 success, 1 wrong usage, 2 failure, 130 interrupted.");
    MakeTerminalUtf8();
    std::function<void()> chosen;
    SInfoOptions info;
    SRenderOptions render;
    SPreviewOptions preview;
    SDecodeOptions decode;
    SMakeOptions make;
    try {
        AddInfo(app, info, chosen);
        AddRender(app, render, chosen);
        AddPreview(app, preview, chosen);
        AddDecode(app, decode, chosen);
        AddMake(app, make, chosen);
        std::vector<std::string> arguments = Arguments(argc, argv);
        std::reverse(arguments.begin(), arguments.end()); // as the parser takes a vector
        app.parse(std::move(arguments));
        CatchInterrupts();
        chosen();
        return 0;
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kExitCode_Usage;
    } catch (const CToolFailure& failure) {
        return Fail(failure.what(), failure.GetExitCode());
    } catch (const std::bad_alloc&) {
        return Fail("not enough memory", kExitCode_Failed);
    } catch (const std::exception& exception) {
        return Fail(exception.what(), kExitCode_Failed);
    }
}

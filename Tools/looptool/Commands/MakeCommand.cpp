#include "looptool/Audio/Sndfile.h"
#include "looptool/CommandLine/CCommandLine.h"
#include "looptool/CommandLine/CommonOptions.h"
#include "looptool/Commands/Commands.h"
#include "looptool/Commands/Jobs.h"
#include "looptool/Commands/OutputTasks.h"
#include "looptool/Console/SafeText.h"
#include "looptool/Files/COutputFile.h"
#include "looptool/Making/PackLoop.h"
#include "looptool/Making/PlanLoop.h"
#include "looptool/System/NativePath.h"
#include "looptool/System/ToolFailure.h"

#include <cmath>
#include <cstdio>
#include <memory>

namespace NSLoopTool {

namespace {

struct SMakeOptions {
    std::vector<std::string> fAudio;
    std::string fOutput;
    SMakeWish fWish;
    std::string fSettingsFile;
    std::string fKind;
    std::string fTempo = "auto";
    std::string fBars = "auto";
    int32_t fBeats = -1;
    std::string fSignature;
    std::string fBits;
    int64_t fLoopStart = -1;
    int64_t fLoopEnd = -1;
    std::vector<std::string> fTexts;
    CLoopSettings fSettings;
    bool fForce = false;
    int32_t fJobs = 0; // 0: as many as the machine has processors
};

[[noreturn]] void Misuse(const std::string& text) {
    throw CToolFailure(text, kExitCode_Usage);
}

double ParseTempo(const std::string& text) {
    const std::optional<double> tempo = ParseDecimal(text);
    if (!tempo || *tempo < kLeastTempo || *tempo > kGreatestTempo) {
        Misuse("--tempo: must be a number from " + DecimalText(kLeastTempo) + " to " +
               DecimalText(kGreatestTempo) + ", or auto");
    }
    return *tempo;
}

int32_t ParseBars(const std::string& text) {
    const std::optional<int64_t> bars = ParseInteger(text);
    if (!bars || !NSLOPDLL::kBarsRange.Holds(*bars)) {
        Misuse("--bars: must be a whole number from 0 to 999, or auto");
    }
    return static_cast<int32_t>(*bars);
}

// The command line goes before the file.
SKnownLoop KnownLoop(const SMakeOptions& options) {
    SKnownLoop known;
    if (!options.fSettingsFile.empty()) {
        known = ReadSettingsFile(options.fSettingsFile);
    }
    if (options.fTempo != "auto") {
        known.fTempo = ParseTempo(options.fTempo);
    }
    if (options.fBars != "auto") {
        known.fBars = ParseBars(options.fBars);
        known.fBeats = options.fBeats < 0 ? 0 : options.fBeats;
    } else if (options.fBeats >= 0) {
        known.fBeats = options.fBeats;
    }
    if (!options.fSignature.empty()) {
        known.fSignature = ParseSignature(options.fSignature);
        if (!known.fSignature) {
            Misuse("--signature: must be like 4/4, each number 1 to 15");
        }
    }
    if (options.fLoopStart >= 0) {
        known.fLoopStart = options.fLoopStart;
    }
    if (options.fLoopEnd >= 0) {
        known.fLoopEnd = options.fLoopEnd;
    }
    if (!options.fTexts.empty()) {
        known.fTexts = options.fTexts;
    }
    for (const auto& [key, value] : options.fSettings) {
        known.fSettings[key] = value;
    }
    const auto grid = known.fSettings.find("grid");
    if (grid != known.fSettings.end() && grid->second != 0 && grid->second < 10) {
        Misuse("--grid: must be 0, 10, 11 or 12");
    }
    CheckTexts(known.fTexts);
    return known;
}

// A suffix that names a kind, or another kind of file, is never passed over.
std::string ChooseKind(const SMakeOptions& options, const SKnownLoop& known, bool isFolder) {
    const std::string suffix = ArgumentOfPath(PathOfArgument(options.fOutput).extension());
    const bool isNamed = !isFolder && options.fOutput != "-" && !suffix.empty();
    const bool isKind = suffix == ".lop2" || suffix == ".tsl" || suffix == ".lop";
    std::string kind = options.fKind;
    if (kind.empty() && isNamed && isKind) {
        kind = suffix.substr(1);
    }
    if (isNamed && (isKind ? suffix.substr(1) != kind : options.fKind.empty())) {
        Misuse(SafeText(options.fOutput) +
               (isKind ? ": the suffix names another kind than --kind"
                       : ": a loop file ends in .lop2, .tsl or .lop, or --kind says its kind"));
    }
    return !kind.empty() ? kind : (known.fKind.empty() ? std::string(kKind_LOP2) : known.fKind);
}

// "drums.lop2: 16 slices, 2 bars at 120 BPM, 1058488 bytes became 310012 (29.3 %)"
std::string Report(const SMakePlan& plan, const SOutputTask& task, size_t packed, bool isVerbose) {
    const auto stored = static_cast<double>(plan.GetFrames()) *
                        static_cast<double>(plan.fAudio.fPlanes.size()) * plan.fAudio.fBitDepth /
                        8.0;
    const auto percent = [stored](double bytes) {
        return " (" + DecimalText(std::round(bytes / stored * 1000.0) / 10.0) + " %)";
    };
    std::string text = (task.fOutput == "-" ? "standard output" : SafeText(task.fOutput)) + ": " +
                       CountText(static_cast<int64_t>(plan.fCuts.size()), "slice") + ", " +
                       CountText(plan.fBars, "bar") +
                       (plan.fBeats > 0 ? " and " + CountText(plan.fBeats, "beat") : "") + " at " +
                       DecimalText(plan.fTempo / 1000.0) + " BPM, " + DecimalText(stored) +
                       " bytes of audio became " + std::to_string(packed) +
                       percent(static_cast<double>(packed));
    if (isVerbose) {
        const std::optional<uint64_t> flac = FlacSize(plan.fAudio);
        text += flac ? ", as FLAC " + std::to_string(*flac) + percent(static_cast<double>(*flac))
                     : ", no FLAC to compare with in this build";
    }
    return text;
}

void MakeOne(const SMakeOptions& options, const SOutputTask& task,
             const ProgressFunction& progress) {
    if (!options.fForce) {
        RefuseToReplace(task.fOutput);
    }
    const SMakePlan plan =
        PlanLoop(task.fInput, options.fWish, [&](int64_t percent) { progress(percent / 4); });
    const std::vector<uint8_t> bytes =
        PackLoop(plan, [&](int64_t percent) { progress(25 + percent * 3 / 4); });
    WriteOutputFile(task.fOutput, bytes.data(), bytes.size());
    std::fprintf(stderr, "%s\n",
                 Report(plan, task, bytes.size(), options.fWish.fIsVerbose).c_str());
}

int RunMake(SMakeOptions& options) {
    const bool isFolder = IsFolderOutput(options.fAudio, options.fOutput);
    options.fWish.fBits = options.fBits.empty() ? 0 : (options.fBits == "16" ? 16 : 24);
    options.fWish.fKnown = KnownLoop(options);
    const std::string kind = ChooseKind(options, options.fWish.fKnown, isFolder);
    options.fWish.fKnown.fKind = kind;
    if (kind == kKind_LOP && options.fLoopStart < 0 && options.fLoopEnd < 0) {
        // That kind has no loop of its own; the JSON tells where its pieces end.
        options.fWish.fKnown.fLoopStart.reset();
        options.fWish.fKnown.fLoopEnd.reset();
    }
    const std::vector<SOutputTask> tasks =
        PlanOutputs(options.fAudio, options.fOutput, isFolder, "." + kind);
    return RunJobs(tasks.size(), options.fJobs, "making " + NameOfAll(options.fAudio),
                   [&](size_t index, const ProgressFunction& progress) {
                       MakeOne(options, tasks[index], progress);
                   });
}

} // namespace

void AddMakeCommand(CCommandLine& line) {
    const auto options = std::make_shared<SMakeOptions>();
    CCommand command = line.AddCommand("make", "Make loop files from audio",
                                       [options] { return RunMake(*options); });
    command.AddFiles("AUDIO", options->fAudio,
                     "Audio files of 1 or 2 channels; - is standard input");
    command.AddOutput(options->fOutput,
                      "Loop file; a folder for several audio files, or if it is one");
    command.AddChoice("--kind", options->fKind, {"lop2", "tsl", "lop"},
                      "Kind of loop file; else by the suffix, else lop2");
    command.AddText("--tempo", "X|auto", options->fTempo, "Beats per minute; else auto");
    command.AddText("--bars", "N|auto", options->fBars, "Length in whole bars; else auto");
    command.AddInteger("--beats", options->fBeats, NSLOPDLL::kBeatsRange.fLeast,
                       NSLOPDLL::kBeatsRange.fGreatest, "Beats beyond the bars; else 0");
    command.AddText("--signature", "N/D", options->fSignature, "Time signature; else 4/4");
    command.AddText("--slices", "LIST", options->fWish.fSlices,
                    "Frames, seconds (0.25s) and beats (1.5b), parted by commas; beats/N; a file "
                    "of labels, or of slices --json; cue; auto; none; else none");
    command.AddInteger("--sensitivity", options->fWish.fSensitivity, 0, 99,
                       "Of --slices auto: 99 finds the weakest hits too; else 50");
    command.AddInteger("--loop-start", options->fLoopStart, 0, INT32_MAX,
                       "First frame of the loop; else the audio's");
    command.AddInteger("--loop-end", options->fLoopEnd, 1, INT32_MAX,
                       "Frame behind the loop; else behind the audio");
    command.AddChoice("--bits", options->fBits, {"16", "24"},
                      "Depth to store; else that of the audio");
    command.AddTexts("--text", options->fTexts, "Creator text; up to five times");
    command.AddText("--settings", "FILE", options->fSettingsFile,
                    "JSON of info --settings; options go before it");
    AddForce(command, options->fForce);
    command.AddFlag("--verbose", options->fWish.fIsVerbose, "Compare the size with FLAC's");
    AddJobs(command, options->fJobs);
    for (const SSettingRow& row : SettingRows()) {
        command.AddInteger(
            row.GetOption(),
            [options, &row](int64_t value) { options->fSettings[row.fKey] = value; },
            row.fRange.fLeast, row.fRange.fGreatest,
            std::to_string(row.fRange.fLeast) + " to " + std::to_string(row.fRange.fGreatest) +
                ": " + row.fHelp + (row.fSetLOP2 == nullptr ? " (tsl)" : ""),
            "Settings, stored as they are");
    }
    command.SetExample("looptool make drums.wav -o drums.lop2 --bars 2 --slices beats/4");
}

} // namespace NSLoopTool

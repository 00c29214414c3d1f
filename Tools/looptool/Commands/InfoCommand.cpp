#include "looptool/CommandLine/CCommandLine.h"
#include "looptool/CommandLine/CommonOptions.h"
#include "looptool/Commands/Commands.h"
#include "looptool/Commands/EachFile.h"
#include "looptool/Console/SafeText.h"
#include "looptool/Loop/LoopJson.h"
#include "looptool/System/ToolFailure.h"

#include <cstdio>

#include <memory>

namespace NSLoopTool {

namespace {

struct SInfoOptions {
    std::vector<std::string> fFiles;
    bool fJson = false;
    bool fSettings = false;
    std::string fField;
};

void PrintText(const CLoop& loop, const SLoopModel& model) {
    const LOPInfo& info = loop.GetInfo();
    std::printf("File:           %s\n", loop.GetName().c_str());
    std::printf("Kind:           %s\n", std::string(model.fKind).c_str());
    std::printf("Audio:          %s, %d Hz, %d bits, %lld frames (%s s)\n",
                loop.IsStereo() ? "stereo" : "mono", info.fSampleRate, info.fBitDepth,
                static_cast<long long>(model.fFrames), DecimalText(model.GetSeconds()).c_str());
    std::printf("Loop:           %lld to %lld\n", static_cast<long long>(model.fLoopStart),
                static_cast<long long>(model.fLoopEnd));
    std::printf("Slices:         %d\n", info.fSliceCount);
    std::printf("Stored tempo:   %.3f BPM\n", info.fStoredTempo / 1000.0);
    std::printf("Loop tempo:     %.3f BPM\n", info.fLoopTempo / 1000.0);
    std::printf("Length:         %s%s (%s quarter notes)\n", CountText(model.fBars, "bar").c_str(),
                model.fBeats == 0 ? "" : (", " + CountText(model.fBeats, "beat")).c_str(),
                DecimalText(static_cast<double>(info.fPPQLength) / LOP_PPQ).c_str());
    std::printf("Time signature: %d/%d\n", info.fTimeSignatureNumerator,
                info.fTimeSignatureDenominator);
    for (const std::string& text : loop.GetCreatorTexts()) {
        if (!text.empty()) {
            std::printf("Creator text:   %s\n", SafeText(text).c_str());
        }
    }
}

// "settings.equalizer.low_cut": a member of a member. Texts are printed as they are, but made safe.
void PrintField(const nlohmann::ordered_json& info, const std::string& field) {
    const nlohmann::ordered_json* value = &info;
    for (size_t at = 0; at <= field.size();) {
        const size_t point = std::min(field.find('.', at), field.size());
        const std::string key = field.substr(at, point - at);
        if (!value->is_object() || !value->contains(key)) {
            throw CToolFailure("--field: there is no \"" + SafeText(field) +
                                   "\" (info --settings shows all names)",
                               kExitCode_Usage);
        }
        value = &(*value)[key];
        at = point + 1;
    }
    const std::string text =
        value->is_string() ? SafeText(value->get<std::string>()) : JsonText(*value, -1);
    std::puts(text.c_str());
}

int RunInfo(const SInfoOptions& options) {
    nlohmann::ordered_json list = nlohmann::ordered_json::array();
    const bool isJson = options.fJson || options.fSettings;
    bool isFirst = true;
    const int exitCode = ForEachFile(options.fFiles, [&](const std::string& file) {
        const CLoop loop(file);
        const SLoopModel model = ReadLoopModel(loop);
        if (!options.fField.empty()) {
            PrintField(InfoJson(loop, model, true), options.fField);
        } else if (isJson) {
            list.push_back(InfoJson(loop, model, options.fSettings));
        } else {
            std::fputs(isFirst ? "" : "\n", stdout);
            PrintText(loop, model);
        }
        isFirst = false;
    });
    if (isJson && options.fField.empty()) {
        std::puts(JsonText(options.fFiles.size() == 1 ? list.front() : list).c_str());
    }
    return exitCode;
}

} // namespace

void AddInfoCommand(CCommandLine& line) {
    const auto options = std::make_shared<SInfoOptions>();
    CCommand command = line.AddCommand("info", "Show what loop files hold",
                                       [options] { return RunInfo(*options); });
    command.AddFiles("FILE", options->fFiles, "Loop files; - is standard input");
    command.AddFlag("--json", options->fJson, "Print JSON");
    command.AddFlag("--settings", options->fSettings,
                    "Print JSON with all stored settings, which make --settings reads");
    command.AddText("--field", "NAME", options->fField, "Print one value, by its name in the JSON");
    command.SetExample("looptool info drums.lop2 --field loop_tempo");
}

} // namespace NSLoopTool

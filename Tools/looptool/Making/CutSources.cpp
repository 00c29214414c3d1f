#include "looptool/Making/CutSources.h"

#include "looptool/Console/Numbers.h"
#include "looptool/Console/SafeText.h"
#include "looptool/Files/InputFile.h"
#include "looptool/System/NativePath.h"
#include "looptool/System/ToolFailure.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>

namespace NSLoopTool {

namespace {

[[noreturn]] void Misuse(const std::string& text) {
    throw CToolFailure("--slices: " + text, kExitCode_Usage);
}

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);) {
        parts.push_back(part);
    }
    return parts;
}

int64_t FrameOf(double frame) {
    constexpr double kMost = 1e15; // far behind any audio, and within 64 bits
    return std::llround(std::clamp(frame, -1.0, kMost));
}

// "11025", "0.25s", "1.5b".
std::optional<int64_t> ParsePlace(const std::string& text, const SMakePlan& plan) {
    if (text.empty()) {
        return std::nullopt;
    }
    const char unit = text.back();
    if (unit != 's' && unit != 'b') {
        return ParseInteger(text);
    }
    const std::optional<double> value = ParseDecimal(text.substr(0, text.size() - 1));
    if (!value) {
        return std::nullopt;
    }
    return unit == 's' ? FrameOf(*value * plan.fAudio.fSampleRate)
                       : plan.fLoopStart + FrameOf(*value * plan.GetFramesPerBeat());
}

std::optional<std::vector<SCut>> ParseList(const std::string& wish, const SMakePlan& plan) {
    std::vector<SCut> cuts;
    for (const std::string& part : Split(wish, ',')) {
        const std::optional<int64_t> frame = ParsePlace(part, plan);
        if (!frame) {
            return std::nullopt;
        }
        cuts.push_back({*frame});
    }
    return cuts;
}

std::vector<SCut> BeatCuts(const std::string& count, const SMakePlan& plan) {
    constexpr int64_t kMostPerBeat = 64;
    const std::optional<int64_t> perBeat = ParseInteger(count);
    if (!perBeat || *perBeat < 1 || *perBeat > kMostPerBeat) {
        Misuse("beats/N: N must be a whole number from 1 to 64");
    }
    std::vector<SCut> cuts;
    const double distance = plan.GetFramesPerBeat() / static_cast<double>(*perBeat);
    for (int64_t i = 0; i < plan.GetTotalBeats() * *perBeat; ++i) {
        cuts.push_back({plan.fLoopStart + FrameOf(static_cast<double>(i) * distance)});
    }
    return cuts;
}

std::vector<SCut> CueCuts(const SMakePlan& plan) {
    if (plan.fAudio.fCues.empty()) {
        throw CToolFailure(plan.fName + ": holds no cue points");
    }
    std::vector<SCut> cuts;
    for (const int64_t cue : plan.fAudio.fCues) {
        cuts.push_back({cue});
    }
    return cuts;
}

// A line a label: start and end in seconds and a name, parted by tabs. Lines that begin with a
// backslash tell more of the label before them.
std::vector<SCut> LabelCuts(const std::string& text, const std::string& name,
                            const SMakePlan& plan) {
    std::vector<SCut> cuts;
    size_t number = 0;
    for (std::string line : Split(text, '\n')) {
        ++number;
        line.erase(line.find_last_not_of("\r \t") + 1);
        if (line.empty() || line.front() == '\\') {
            continue;
        }
        const std::optional<double> start = ParseDecimal(Split(line, '\t').front());
        if (!start) {
            throw CToolFailure(name + ": line " + std::to_string(number) +
                               " does not begin with a time in seconds");
        }
        cuts.push_back({FrameOf(*start * plan.fAudio.fSampleRate)});
    }
    return cuts;
}

// Cuts of audio at another rate move in proportion.
std::vector<SCut> JsonCuts(const std::string& text, const std::string& name,
                           const SMakePlan& plan) {
    try {
        const nlohmann::json json = nlohmann::json::parse(text);
        const double scale =
            static_cast<double>(plan.fAudio.fSampleRate) /
            json.value("sample_rate", static_cast<double>(plan.fAudio.fSampleRate));
        std::vector<SCut> cuts;
        for (const nlohmann::json& slice : json.at("slices")) {
            if (!slice.value("stored", true)) {
                continue;
            }
            SCut cut;
            cut.fFrame = FrameOf(slice.at("start_frame").get<double>() * scale);
            cut.fLevel = std::clamp(slice.value("level", 32767), 0, 32767);
            cut.fIsHidden = slice.value("hidden", false);
            cut.fIsForced = slice.value("forced", false);
            cut.fIsMuted = slice.value("muted", false);
            cuts.push_back(cut);
        }
        return cuts;
    } catch (const nlohmann::json::exception&) {
        throw CToolFailure(name + ": not the JSON that \"looptool slices --json\" prints");
    }
}

std::vector<SCut> FileCuts(const std::string& path, const SMakePlan& plan) {
    std::error_code error;
    if (path != "-" && !std::filesystem::exists(PathOfArgument(path), error)) {
        Misuse("\"" + SafeText(path) +
               "\" is not a list of frames, seconds (0.25s) or beats (1.5b), no other word for "
               "slices, and no file");
    }
    const std::vector<uint8_t> bytes = ReadInputFile(path);
    const std::string text(bytes.begin(), bytes.end());
    const size_t first = text.find_first_not_of(" \t\r\n");
    const bool isJson = first != std::string::npos && text[first] == '{';
    return isJson ? JsonCuts(text, InputName(path), plan) : LabelCuts(text, InputName(path), plan);
}

} // namespace

std::vector<SCut> OrderedCuts(std::vector<SCut> cuts) {
    if (cuts.empty()) {
        cuts.push_back({0});
    }
    std::stable_sort(cuts.begin(), cuts.end(),
                     [](const SCut& a, const SCut& b) { return a.fFrame < b.fFrame; });
    const auto end = std::unique(cuts.begin(), cuts.end(),
                                 [](const SCut& a, const SCut& b) { return a.fFrame == b.fFrame; });
    cuts.erase(end, cuts.end());
    return cuts;
}

std::vector<SCut> CutsOf(const std::string& wish, const SMakePlan& plan) {
    std::vector<SCut> cuts;
    if (wish.empty() || wish == "none") {
        return OrderedCuts({});
    }
    if (wish == "cue") {
        cuts = CueCuts(plan);
    } else if (wish.starts_with("beats/")) {
        cuts = BeatCuts(wish.substr(6), plan);
    } else if (const auto list = ParseList(wish, plan)) {
        cuts = *list;
    } else {
        cuts = FileCuts(wish, plan);
    }
    cuts = OrderedCuts(std::move(cuts));
    if (cuts.front().fFrame < 0) {
        Misuse("a slice lies before the audio");
    }
    if (cuts.back().fFrame >= plan.GetFrames()) {
        Misuse("frame " + std::to_string(cuts.back().fFrame) + " lies behind the audio of " +
               std::to_string(plan.GetFrames()) + " frames");
    }
    return cuts;
}

} // namespace NSLoopTool

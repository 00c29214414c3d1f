#include "looptool/Making/PlanLoop.h"

#include "looptool/Console/Numbers.h"
#include "looptool/Files/InputFile.h"
#include "looptool/Making/AutoPlan.h"
#include "looptool/Making/CutSources.h"
#include "looptool/System/ToolFailure.h"

#include "LoopLibrary/Public/LoopLibrary.h"
#include "LoopLibrary/Render/Common/LoopRanges.h"
#include "LoopLibrary/Render/Sequencer/LoopTempo.h"

#include <algorithm>
#include <cmath>

namespace NSLoopTool {

namespace {

constexpr int64_t kMostFrames = 0x7FFFFFFF;

void ConvertDepth(SAudio& audio, int32_t bits) {
    if (bits == 0 || bits == audio.fBitDepth) {
        return;
    }
    for (std::vector<int32_t>& plane : audio.fPlanes) {
        std::transform(plane.begin(), plane.end(), plane.begin(),
                       [bits](int32_t sample) { return bits == 16 ? sample >> 8 : sample * 256; });
    }
    audio.fBitDepth = bits;
}

void CheckAudio(const SMakePlan& plan) {
    if (plan.GetFrames() > kMostFrames) {
        throw CToolFailure(plan.fName + ": too long for a loop file");
    }
    if (!NSLOPDLL::kStoredRateRange.Holds(plan.fAudio.fSampleRate)) {
        throw CToolFailure(plan.fName + ": its sample rate is not 1000 to 1000000");
    }
}

void SetLoop(SMakePlan& plan, const SMakeWish& wish) {
    const bool isFromFile = wish.fSlices == "cue" && plan.fAudio.fLoop.has_value();
    const int64_t start = isFromFile ? plan.fAudio.fLoop->first : 0;
    const int64_t end = isFromFile ? plan.fAudio.fLoop->second : plan.GetFrames();
    plan.fLoopStart = wish.fKnown.fLoopStart.value_or(start);
    plan.fLoopEnd = wish.fKnown.fLoopEnd.value_or(end);
    if (plan.fLoopStart < 0 || plan.fLoopStart >= plan.fLoopEnd ||
        plan.fLoopEnd > plan.GetFrames()) {
        throw CToolFailure(plan.fName + ": the loop, " + std::to_string(plan.fLoopStart) + " to " +
                               std::to_string(plan.fLoopEnd) + ", does not lie in the audio of " +
                               std::to_string(plan.GetFrames()) + " frames",
                           kExitCode_Usage);
    }
}

void SetTotalBeats(SMakePlan& plan, int64_t beats) {
    plan.fBars = static_cast<int32_t>(beats / plan.fSignature.fNumerator);
    plan.fBeats = static_cast<int32_t>(beats % plan.fSignature.fNumerator);
    if (beats < 1 || !NSLOPDLL::kBarsRange.Holds(plan.fBars) ||
        !NSLOPDLL::kBeatsRange.Holds(plan.fBeats)) {
        throw CToolFailure(plan.fName + ": its length is not 1 to 999 bars and 0 to 7 beats; give "
                                        "--bars and --beats",
                           kExitCode_Usage);
    }
}

// The tempo alone tells the length only where a whole number of beats comes out.
void SetLengthByTempo(SMakePlan& plan, double tempo) {
    constexpr double kTolerance = 0.06;
    const double beats = static_cast<double>(plan.fLoopEnd - plan.fLoopStart) /
                         plan.fAudio.fSampleRate * tempo / 60.0;
    const double whole = std::round(beats);
    if (whole < 1.0 || std::abs(beats - whole) > kTolerance) {
        throw CToolFailure(plan.fName + ": is " + DecimalText(beats) + " beats long at " +
                               DecimalText(tempo) +
                               " BPM, which is not a whole number; give --bars",
                           kExitCode_Usage);
    }
    SetTotalBeats(plan, static_cast<int64_t>(whole));
}

void SetLength(SMakePlan& plan, const SKnownLoop& known) {
    plan.fSignature = known.fSignature.value_or(SSignature{});
    const int32_t bars = known.fBars.value_or(0);
    const int32_t beats = known.fBeats.value_or(0);
    plan.fIsTempoGiven = known.fTempo.has_value();
    if (bars != 0 || beats != 0) {
        plan.fBars = bars;
        plan.fBeats = beats;
    } else if (known.fTempo) {
        SetLengthByTempo(plan, *known.fTempo);
    } else {
        GuessLength(plan, known);
    }
    const int32_t ownTempo =
        NSLOPDLL::LoopTempo(plan.fLoopEnd - plan.fLoopStart,
                            static_cast<uint32_t>(plan.fAudio.fSampleRate), plan.GetTotalBeats());
    plan.fTempo = known.fTempo ? static_cast<int32_t>(std::lround(*known.fTempo * 1000.0))
                               : std::clamp<int32_t>(ownTempo, LOP_MIN_TEMPO, LOP_MAX_TEMPO);
}

void CheckSettings(const SMakePlan& plan) {
    for (const auto& [key, value] : plan.fSettings) {
        const SSettingRow& row = *FindSettingRow(key);
        if (!row.IsOfKind(plan.fKind)) {
            throw CToolFailure(row.GetOption() + ": a loop of the kind " + std::string(plan.fKind) +
                                   " has no such setting",
                               kExitCode_Usage);
        }
    }
}

} // namespace

SMakePlan PlanLoop(const std::string& audioFile, const SMakeWish& wish,
                   const ProgressFunction& progress) {
    SMakePlan plan;
    plan.fName = InputName(audioFile);
    plan.fKind = wish.fKnown.fKind == kKind_TSL   ? kKind_TSL
                 : wish.fKnown.fKind == kKind_LOP ? kKind_LOP
                                                  : kKind_LOP2;
    plan.fSettings = wish.fKnown.fSettings;
    plan.fTexts = wish.fKnown.fTexts;
    CheckSettings(plan);
    plan.fAudio = ReadAudioFile(audioFile, progress);
    ConvertDepth(plan.fAudio, wish.fBits);
    CheckAudio(plan);
    SetLoop(plan, wish);
    SetLength(plan, wish.fKnown);
    plan.fCuts =
        wish.fSlices == "auto" ? FindCuts(plan, wish.fSensitivity) : CutsOf(wish.fSlices, plan);
    return plan;
}

} // namespace NSLoopTool

#include "looptool/Making/AutoPlan.h"

#include "looptool/Analysis/LoopAnalysis.h"
#include "looptool/Console/Numbers.h"
#include "looptool/Making/CutSources.h"
#include "looptool/System/ToolFailure.h"

#include <cmath>
#include <cstdio>
#include <utility>

namespace NSLoopTool {

namespace {

constexpr int kUsualSensitivity = 50;

std::vector<float> MonoLoop(const SMakePlan& plan) {
    const std::vector<float> mono = MonoOf(plan.fAudio);
    return {mono.begin() + plan.fLoopStart, mono.begin() + plan.fLoopEnd};
}

} // namespace

void GuessLength(SMakePlan& plan, const SKnownLoop& known) {
    const std::vector<float> mono = MonoLoop(plan);
    const int rate = plan.fAudio.fSampleRate;
    const std::vector<SOnset> onsets = FindOnsets(mono, rate, kUsualSensitivity);
    SKnown facts;
    if (known.fSignature) {
        facts.fSignature = {known.fSignature->fNumerator, known.fSignature->fDenominator};
    }
    const STempoGuess guess = GuessTempo(mono.size(), rate, onsets, facts);
    const double beatsPerMinute = guess.fTempo * guess.fDenominator / 4.0;
    const std::string words =
        CountText(guess.fBars, "bar") + " of " + std::to_string(guess.fNumerator) + "/" +
        std::to_string(guess.fDenominator) + " at " + DecimalText(beatsPerMinute) +
        " BPM (confidence " + DecimalText(std::round(guess.fConfidence * 100.0) / 100.0) + ")";
    if (guess.fConfidence < kEnoughConfidence) {
        throw CToolFailure(plan.fName + ": perhaps " + words +
                               ", which is too unsure; give --bars or --tempo",
                           kExitCode_Usage);
    }
    std::fprintf(stderr, "%s: %s\n", plan.fName.c_str(), words.c_str());
    plan.fSignature = {guess.fNumerator, guess.fDenominator};
    plan.fBars = guess.fBars;
    plan.fBeats = 0;
}

std::vector<SCut> FindCuts(const SMakePlan& plan, int32_t sensitivity) {
    const std::vector<float> mono = MonoLoop(plan);
    const int rate = plan.fAudio.fSampleRate;
    const double quarters = 4.0 * plan.GetTotalBeats() / plan.fSignature.fDenominator;
    const std::vector<SOnset> onsets = FindOnsets(mono, rate, sensitivity, quarters);
    std::vector<SCut> cuts;
    // The loop's start begins a slice, cut or not. An attack so close to it is its own: before it,
    // at the loop's end, or behind it, the cut would leave a slice of next to nothing.
    const int64_t close = rate / 50;
    const int64_t last = static_cast<int64_t>(mono.size()) - close;
    for (const int64_t frame : PlaceCuts(mono, rate, onsets)) {
        cuts.push_back({plan.fLoopStart + (frame > last || frame < close ? 0 : frame)});
    }
    cuts = OrderedCuts(std::move(cuts));
    std::fprintf(stderr, "%s: %zu slices found (sensitivity %d)\n", plan.fName.c_str(), cuts.size(),
                 sensitivity);
    return cuts;
}

} // namespace NSLoopTool

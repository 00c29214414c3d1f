#include "looptool/Analysis/BeatGrid.h"
#include "looptool/Analysis/LoopAnalysis.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace NSLoopTool {

namespace {

// A loop is a whole number of bars that begins with a beat. So there are few candidates; each is
// weighed as a model of where onsets fall: every place of the bar's grid has a probability to bear
// one, and what falls off the grid is an accident. A model that is too slow has to call ordinary
// sixteenths accidents; one that is too fast leaves its beats empty.
constexpr double kAccident = 0.02; // share of onsets that belong to no grid
constexpr double kTypicalTempo = 112.0;
constexpr double kTempoSpread = 0.40; // of the logarithm
constexpr double kSlowest = 70.0; // beyond these a tempo is nearly always a doubling or a halving
constexpr double kFastest = 180.0;
constexpr int kMostGuessedBars = 16;

struct SCandidate {
    int fBars;
    STimeSignature fSignature;
    double fTempo;
    double fLikelihood; // logarithm
};

// Strong onsets are drawn to beats and away from sixteenths: how much, over the mean strength.
constexpr double kAccent = 3.0;
constexpr std::array<double, 4> kAccentOfPart = {1.0, -0.3, 0.0, -0.3};

// How often a place of the grid bears an onset: beats, offbeat eighths, sixteenths.
struct SMetre {
    double fDownbeat = 0.97;
    double fBeat = 0.88;
    double fEighth = 0.60;
    double fSixteenth = 0.16;
};

double LogLikelihood(std::span<const SOnset> onsets, double framesOfBeat, double rate, int beats,
                     int beatsOfBar, const SFeel& feel) {
    const SMetre metre;
    std::vector<double> best(static_cast<size_t>(beats) * 4, 0.0); // strength of the place's onset
    double mean = 0.0;
    for (const SOnset& onset : onsets) {
        mean += onset.fStrength / static_cast<double>(onsets.size());
    }
    double sum = 0.0;
    for (const SOnset& onset : onsets) {
        const SBeatPlace place = NearestPlace(onset.fFrame, framesOfBeat, rate, feel);
        // Density on the grid against an accident's, by how strong the onset is.
        const double weight = 0.4 + 0.6 * std::sqrt(onset.fStrength);
        sum += weight * std::log(kAccident + (1.0 - kAccident) * place.fCloseness);
        sum += kAccent * kAccentOfPart[place.fPart] * place.fCloseness * (onset.fStrength - mean);
        if (place.fCloseness > 0.1) {
            double& slot = best[(place.fBeat * 4 + place.fPart) % best.size()];
            slot = std::max(slot, weight);
        }
    }
    for (size_t slot = 0; slot < best.size(); ++slot) {
        const size_t part = slot % 4;
        const auto beat = static_cast<int>(slot / 4);
        const double probability = part == 0
                                       ? (beat % beatsOfBar == 0 ? metre.fDownbeat : metre.fBeat)
                                   : part == 2 ? metre.fEighth
                                               : metre.fSixteenth;
        sum += best[slot] > 0.0 ? best[slot] * std::log(probability) : std::log(1.0 - probability);
    }
    return sum;
}

// Short powers of two are the rule, whole tempos between slow and fast too.
double LogPrior(int bars, const STimeSignature& signature, double tempo) {
    const double distance = std::log(tempo / kTypicalTempo) / kTempoSpread;
    double prior = -0.5 * distance * distance;
    if (tempo < kSlowest || tempo > kFastest) {
        prior -= 9.0;
    }
    const bool powerOfTwo = (bars & (bars - 1)) == 0;
    prior += powerOfTwo ? 0.0 : -2.5;
    prior += bars > 4 ? -1.0 : 0.0;
    prior += signature.fNumerator == 4 ? 0.0 : -3.5;
    return prior;
}

SCandidate Weigh(size_t frames, double rate, std::span<const SOnset> onsets, int bars,
                 const STimeSignature& signature) {
    const int beats = bars * signature.fNumerator;
    const double framesOfBeat = static_cast<double>(frames) / beats;
    const double tempo =
        60.0 * rate / framesOfBeat * 4.0 / static_cast<double>(signature.fDenominator);
    double best = -1e300;
    for (const SFeel& feel : BeatFeels()) {
        best = std::max(
            best, LogLikelihood(onsets, framesOfBeat, rate, beats, signature.fNumerator, feel) -
                      (feel.fSwing > 0.5 ? 1.0 : 0.0) - (feel.fSwungEighths ? 1.0 : 0.0));
    }
    return {bars, signature, tempo, best + LogPrior(bars, signature, tempo)};
}

std::vector<STimeSignature> Signatures(const SKnown& known) {
    if (known.fSignature) {
        return {*known.fSignature};
    }
    return {{4, 4}, {3, 4}};
}

} // namespace

STempoGuess GuessTempo(size_t frames, int rate, std::span<const SOnset> onsets,
                       const SKnown& known) {
    std::vector<SCandidate> candidates;
    const double seconds = static_cast<double>(frames) / rate;
    for (const STimeSignature& signature : Signatures(known)) {
        const double quartersOfBar =
            4.0 * signature.fNumerator / static_cast<double>(signature.fDenominator);
        int first = 1;
        int last = kMostGuessedBars;
        if (known.fBars) {
            first = last = *known.fBars;
        } else if (known.fTempo) {
            first = std::max(1, static_cast<int>(std::lround(std::min(
                                    999.0, seconds * *known.fTempo / 60.0 / quartersOfBar))));
            last = first;
        }
        for (int bars = first; bars <= last; ++bars) {
            const double tempo = bars * quartersOfBar * 60.0 / seconds;
            const bool agrees = !known.fTempo || std::abs(tempo / *known.fTempo - 1.0) < 0.01;
            if (agrees && (known.fBars || known.fTempo || (tempo >= 40.0 && tempo <= 300.0))) {
                candidates.push_back(Weigh(frames, rate, onsets, bars, signature));
            }
        }
    }
    if (candidates.empty()) {
        return {known.fTempo.value_or(0.0), known.fBars.value_or(1)};
    }
    const auto best = std::max_element(
        candidates.begin(), candidates.end(),
        [](const SCandidate& a, const SCandidate& b) { return a.fLikelihood < b.fLikelihood; });
    // The models are rough: their odds are flattened to what they are worth.
    double all = 0.0;
    for (const SCandidate& candidate : candidates) {
        all += std::exp(0.5 * (candidate.fLikelihood - best->fLikelihood));
    }
    double confidence = 1.0 / all;
    if (onsets.size() < 3 && !known.fBars && !known.fTempo) {
        confidence = std::min(confidence, 0.2);
    }
    // Where all whole bars are too slow or too fast, the loop is perhaps no whole number of bars.
    constexpr double kMargin = 1.1;
    if (!known.fBars && !known.fTempo &&
        (best->fTempo < kSlowest / kMargin || best->fTempo > kFastest * kMargin)) {
        confidence = std::min(confidence, 0.4);
    }
    return {best->fTempo, best->fBars, best->fSignature.fNumerator, best->fSignature.fDenominator,
            confidence};
}

} // namespace NSLoopTool

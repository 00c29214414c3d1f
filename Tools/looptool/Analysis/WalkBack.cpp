#include "looptool/Analysis/WalkBack.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace NSLoopTool {

namespace {

// Seconds.
constexpr double kSearchBefore = 0.030; // around a detected time
constexpr double kSearchBehind = 0.022;
constexpr double kGrain = 0.0003;  // of the energy curves
constexpr double kAhead = 0.0040;  // the first energy of an attack is taken over so long
constexpr double kBack = 0.0060;   // and compared with the energy so long before
constexpr double kLongest = 0.015; // from the first energy of an attack to its steepest rise
constexpr double kHidden = 0.005;  // of a slow attack under what sounds before it, at most
constexpr double kQuiet = 0.012;   // what sounded before an attack is judged over so long

constexpr double kAboveQuiet = 1.5; // energy of an attack over what sounded before
constexpr double kOfPeak = 0.0002;  // and over its own peak

// The energy of a stretch of audio in grains.
struct SEnergy {
    std::vector<double> fGrains;
    std::vector<double> fSums; // of all grains before

    double Mean(size_t from, size_t to) const {
        return (fSums[to] - fSums[from]) / static_cast<double>(to - from);
    }
};

// `emphasis` near 1 hears the click of a hit through a low tone's swing; 0 takes all as it is.
SEnergy EnergyOf(std::span<const float> mono, int64_t first, size_t grains, int64_t grain,
                 double emphasis) {
    const auto count = static_cast<int64_t>(mono.size());
    int64_t at = ((first - 1) % count + count) % count;
    double last = static_cast<double>(mono[static_cast<size_t>(at)]);
    SEnergy energy;
    energy.fSums.push_back(0.0);
    for (size_t i = 0; i < grains; ++i) {
        double sum = 0.0;
        for (int64_t k = 0; k < grain; ++k) {
            at = at + 1 == count ? 0 : at + 1;
            const double now = static_cast<double>(mono[static_cast<size_t>(at)]);
            const double difference = now - emphasis * last;
            sum += difference * difference;
            last = now;
        }
        energy.fGrains.push_back(sum / static_cast<double>(grain));
        energy.fSums.push_back(energy.fSums.back() + energy.fGrains.back());
    }
    return energy;
}

// So compressed, a strong rise out of quiet counts more than a stronger one within a sound: some
// hits (claps) have their loudest burst late.
double Loudness(double energy) {
    return std::pow(energy, 0.125);
}

// From the steepest rise back to where the energy leaves what sounded before.
size_t StartOfRise(const SEnergy& energy, size_t steepest, size_t ahead, size_t longest,
                   size_t quiet, size_t mostHidden) {
    const size_t earliest = steepest - std::min(steepest, longest);
    double peak = 0.0;
    for (size_t i = steepest; i < steepest + ahead; ++i) {
        peak = std::max(peak, energy.fGrains[i]);
    }
    double before = 0.0;
    for (size_t i = earliest - std::min(earliest, quiet); i < earliest; ++i) {
        before = std::max(before, energy.fGrains[i]);
    }
    const double floor = std::max(before * kAboveQuiet, peak * kOfPeak);
    size_t start = earliest;
    while (start < steepest + ahead - 1 && energy.fGrains[start] <= floor) {
        ++start;
    }
    // Up to here what sounded before hides a slow attack: its line is drawn on to silence.
    size_t half = start;
    while (half < steepest + ahead - 1 && energy.fGrains[half] < peak / 4) {
        ++half;
    }
    const double level = std::sqrt(floor);
    const double rise = std::sqrt(energy.fGrains[half]) - level;
    const double hidden = rise > 0.0 ? level * static_cast<double>(half - start) / rise : 0.0;
    return start - std::min({start, mostHidden, static_cast<size_t>(hidden)});
}

} // namespace

int64_t WalkBack(std::span<const float> mono, double rate, double frame) {
    const auto count = static_cast<int64_t>(mono.size());
    const auto grain = std::max<int64_t>(1, std::llround(kGrain * rate));
    const auto grainsOf = [&](double seconds) {
        return static_cast<size_t>(std::max<int64_t>(1, std::llround(seconds * rate) / grain));
    };
    const size_t back = grainsOf(kBack);
    const size_t ahead = grainsOf(kAhead);
    const size_t lead = grainsOf(kLongest + kQuiet);
    const int64_t first =
        std::llround(frame - kSearchBefore * rate) - static_cast<int64_t>(lead) * grain;
    const size_t grains = lead + grainsOf(kSearchBefore + kSearchBehind) + ahead;
    const SEnergy clicks = EnergyOf(mono, first, grains, grain, 0.9);
    const SEnergy whole = EnergyOf(mono, first, grains, grain, 0.0);

    double best = -1.0;
    size_t steepest = lead;
    for (size_t i = lead; i + ahead <= grains; ++i) {
        const double rise =
            Loudness(clicks.Mean(i, i + ahead)) - Loudness(clicks.Mean(i - back, i));
        if (rise > best) {
            best = rise;
            steepest = i;
        }
    }
    const size_t longest = grainsOf(kLongest);
    const size_t quiet = grainsOf(kQuiet);
    const size_t hidden = grainsOf(kHidden);
    const size_t click = StartOfRise(clicks, steepest, ahead, longest, quiet, hidden);
    const size_t body = StartOfRise(whole, steepest, ahead, longest, quiet, hidden);
    const size_t start = std::min(click, body);
    const int64_t found = first + static_cast<int64_t>(start) * grain;
    return (found % count + count) % count;
}

} // namespace NSLoopTool

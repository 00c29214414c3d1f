#include "looptool/Analysis/BeatGrid.h"

#include <array>
#include <cmath>

namespace NSLoopTool {

namespace {

constexpr double kSpread = 0.010; // seconds that players stray from the grid

constexpr std::array<SFeel, 9> kFeels = {{{0.5, false},
                                          {0.54, false},
                                          {0.54, true},
                                          {0.58, false},
                                          {0.58, true},
                                          {0.62, false},
                                          {0.62, true},
                                          {0.667, false},
                                          {0.667, true}}};

} // namespace

std::span<const SFeel> BeatFeels() {
    return kFeels;
}

SBeatPlace NearestPlace(int64_t frame, double framesOfBeat, double rate, const SFeel& feel) {
    const double offbeat = feel.fSwungEighths ? feel.fSwing : 0.5;
    const std::array<double, 5> places = {0.0, feel.fSwing / 2, offbeat, offbeat + feel.fSwing / 2,
                                          1.0};
    const double place = static_cast<double>(frame) / framesOfBeat;
    const double beat = std::floor(place);
    SBeatPlace found;
    double nearest = 1.0;
    for (size_t i = 0; i < places.size(); ++i) {
        const double distance = std::abs(place - beat - places[i]);
        if (distance < nearest) {
            nearest = distance;
            found.fBeat = static_cast<size_t>(beat) + i / 4;
            found.fPart = i % 4;
        }
    }
    const double spreads = nearest * framesOfBeat / (kSpread * rate);
    found.fCloseness = std::exp(-0.5 * spreads * spreads);
    return found;
}

} // namespace NSLoopTool

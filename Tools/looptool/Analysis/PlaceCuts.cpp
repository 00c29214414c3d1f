#include "looptool/Analysis/LoopAnalysis.h"

#include <algorithm>
#include <cmath>

namespace NSLoopTool {

namespace {

// Seconds.
constexpr double kLead = 0.0004; // a cut stands before the attack by that at least
constexpr double kReach = 0.004; // before which a crossing is looked for

int64_t PlaceCut(std::span<const float> mono, int64_t reach, int64_t attack) {
    const auto at = [&](int64_t i) { return mono[static_cast<size_t>(i)]; };
    int64_t quietest = attack;
    if (attack < reach) {
        return 0; // no scrap of a slice before it
    }
    for (int64_t frame = attack; frame > attack - reach; --frame) {
        // The first frame of the other sign, or a zero: the slice begins with what follows it.
        if ((at(frame) >= 0.0F) != (at(frame - 1) >= 0.0F) || at(frame) == 0.0F) {
            return frame;
        }
        if (std::abs(at(frame)) < std::abs(at(quietest))) {
            quietest = frame;
        }
    }
    return quietest;
}

} // namespace

std::vector<int64_t> PlaceCuts(std::span<const float> mono, int rate,
                               std::span<const SOnset> onsets) {
    const int64_t reach = std::min(static_cast<int64_t>(std::llround(kReach * rate)) + 1,
                                   static_cast<int64_t>(mono.size()));
    std::vector<int64_t> cuts;
    for (const SOnset& onset : onsets) {
        const int64_t latest = onset.fFrame - std::llround(kLead * rate);
        cuts.push_back(PlaceCut(mono, reach, std::max<int64_t>(latest, 0)));
    }
    std::sort(cuts.begin(), cuts.end());
    cuts.erase(std::unique(cuts.begin(), cuts.end()), cuts.end());
    return cuts;
}

} // namespace NSLoopTool

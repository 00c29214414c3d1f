#include "CTransport.h"

#include "AtomWalk.h"

#include <algorithm>
#include <cmath>

namespace {

// False for a body that is shorter than its type.
template <class Number>
bool ReadAs(const LV2_Atom& atom, double& value) {
    const auto* const body = AtomWalk::ReadBody<Number>(atom);
    value = body != nullptr ? static_cast<double>(*body) : value;
    return body != nullptr;
}

// Bounds on what a block can begin, far above what anybody plays.
constexpr double kFastest = 2000.0;
constexpr double kFastestSpeed = 8.0;

// Quarters. Hosts cut positions to ticks, 960 or 1920 to a quarter: a position that is not farther
// off than two of the larger says that playing goes on, and would only shake the slices' places if
// it were taken.
constexpr double kRounding = 1.0 / 480.0;

} // namespace

bool CTransport::Read(const LV2_Atom_Object& object, LV2_URID key, double& value) const noexcept {
    const LV2_Atom* const atom = AtomWalk::FindValue(object, key);
    double read = 0.0;
    const bool isRead =
        atom != nullptr && ((atom->type == fUris->fFloat && ReadAs<float>(*atom, read)) ||
                            (atom->type == fUris->fDouble && ReadAs<double>(*atom, read)) ||
                            (atom->type == fUris->fInt && ReadAs<int32_t>(*atom, read)) ||
                            (atom->type == fUris->fLong && ReadAs<int64_t>(*atom, read)));
    if (!isRead || !std::isfinite(read)) {
        return false;
    }
    value = read;
    return true;
}

void CTransport::Update(const LV2_Atom_Object& position) noexcept {
    const double running = GetQuarter();
    const double runningBpm = GetBpm();
    double value = 0.0;
    if (Read(position, fUris->fBeatUnit, value) && value >= 1.0) {
        fBeatUnit = value;
    }
    if (Read(position, fUris->fBeatsPerBar, value) && value > 0.0) {
        fBeatsPerBar = value;
    }
    if (Read(position, fUris->fBpm, value) && value > 0.0) {
        fBeatsPerMinute = std::min(value, kFastest);
    }
    if (Read(position, fUris->fSpeed, value)) {
        fSpeed = std::min(value, kFastestSpeed);
    }
    double quarter = running;
    double beatInBar = 0.0;
    if (Read(position, fUris->fBar, value) && Read(position, fUris->fBarBeat, beatInBar)) {
        quarter = (value * fBeatsPerBar + beatInBar) * 4.0 / fBeatUnit;
    } else if (Read(position, fUris->fFrame, value)) {
        quarter = value * GetTempo() / (60.0 * fRate);
    }
    const bool goesOn = IsRolling() && GetBpm() == runningBpm;
    if (!goesOn || !(std::abs(quarter - running) <= kRounding)) {
        fQuarter = quarter;
        fFrames = 0;
    }
}

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
    Settle();
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
    double beatInBar = 0.0;
    if (Read(position, fUris->fBar, value) && Read(position, fUris->fBarBeat, beatInBar)) {
        fQuarter = (value * fBeatsPerBar + beatInBar) * 4.0 / fBeatUnit;
    } else if (Read(position, fUris->fFrame, value)) {
        fQuarter = value * GetTempo() / (60.0 * fRate);
    }
    if (Read(position, fUris->fSpeed, value)) {
        fSpeed = std::min(value, kFastestSpeed);
    }
}

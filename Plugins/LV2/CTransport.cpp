#include "CTransport.h"

#include <lv2/atom/util.h>

#include <algorithm>
#include <cmath>

namespace {

// Bounds on what a block can begin, far above what anybody plays.
constexpr double kFastest = 2000.0;
constexpr double kFastestSpeed = 8.0;

} // namespace

bool CTransport::Read(const LV2_Atom* atom, double& value) const noexcept {
    if (atom == nullptr) {
        return false;
    }
    double read = 0.0;
    if (atom->type == fUris->fFloat) {
        read = static_cast<double>(reinterpret_cast<const LV2_Atom_Float*>(atom)->body);
    } else if (atom->type == fUris->fDouble) {
        read = reinterpret_cast<const LV2_Atom_Double*>(atom)->body;
    } else if (atom->type == fUris->fInt) {
        read = reinterpret_cast<const LV2_Atom_Int*>(atom)->body;
    } else if (atom->type == fUris->fLong) {
        read = static_cast<double>(reinterpret_cast<const LV2_Atom_Long*>(atom)->body);
    } else {
        return false;
    }
    if (!std::isfinite(read)) {
        return false;
    }
    value = read;
    return true;
}

void CTransport::Update(const LV2_Atom_Object& position) noexcept {
    const LV2_Atom *bar = nullptr, *barBeat = nullptr, *beatsPerBar = nullptr, *beatUnit = nullptr,
                   *bpm = nullptr, *speed = nullptr, *frame = nullptr;
    lv2_atom_object_get(&position, fUris->fBar, &bar, fUris->fBarBeat, &barBeat,
                        fUris->fBeatsPerBar, &beatsPerBar, fUris->fBeatUnit, &beatUnit, fUris->fBpm,
                        &bpm, fUris->fSpeed, &speed, fUris->fFrame, &frame, 0);
    Settle();
    double value = 0.0;
    if (Read(beatUnit, value) && value >= 1.0) {
        fBeatUnit = value;
    }
    if (Read(beatsPerBar, value) && value > 0.0) {
        fBeatsPerBar = value;
    }
    if (Read(bpm, value) && value > 0.0) {
        fBeatsPerMinute = std::min(value, kFastest);
    }
    double beatInBar = 0.0;
    if (Read(bar, value) && Read(barBeat, beatInBar)) {
        fQuarter = (value * fBeatsPerBar + beatInBar) * 4.0 / fBeatUnit;
    } else if (Read(frame, value)) {
        fQuarter = value * GetTempo() / (60.0 * fRate);
    }
    if (Read(speed, value)) {
        fSpeed = std::min(value, kFastestSpeed);
    }
}

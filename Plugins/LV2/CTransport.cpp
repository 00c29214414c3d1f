#include "CTransport.h"

#include <lv2/atom/util.h>

#include <cmath>

bool CTransport::Read(const LV2_Atom* atom, double& value) const noexcept {
    if (atom == nullptr) {
        return false;
    }
    double read = 0.0;
    if (atom->type == fUris.fFloat) {
        read = static_cast<double>(reinterpret_cast<const LV2_Atom_Float*>(atom)->body);
    } else if (atom->type == fUris.fDouble) {
        read = reinterpret_cast<const LV2_Atom_Double*>(atom)->body;
    } else if (atom->type == fUris.fInt) {
        read = reinterpret_cast<const LV2_Atom_Int*>(atom)->body;
    } else if (atom->type == fUris.fLong) {
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
                   *bpm = nullptr, *speed = nullptr;
    lv2_atom_object_get(&position, fUris.fBar, &bar, fUris.fBarBeat, &barBeat, fUris.fBeatsPerBar,
                        &beatsPerBar, fUris.fBeatUnit, &beatUnit, fUris.fBpm, &bpm, fUris.fSpeed,
                        &speed, 0);
    // What was counted at the old tempo stays counted.
    fQuarter = GetQuarter();
    fFrames = 0;
    double value = 0.0;
    if (Read(beatUnit, value) && value >= 1.0) {
        fBeatUnit = value;
    }
    if (Read(beatsPerBar, value) && value > 0.0) {
        fBeatsPerBar = value;
    }
    if (Read(bpm, value) && value > 0.0) {
        fBeatsPerMinute = value;
    }
    double beatInBar = 0.0;
    if (Read(bar, value) && Read(barBeat, beatInBar)) {
        fQuarter = (value * fBeatsPerBar + beatInBar) * 4.0 / fBeatUnit;
    }
    if (Read(speed, value)) {
        fRolling = value > 0.0;
    }
}

#pragma once

#include "Uris.h"

#include <cstdint>

/// Where the host's timeline stands, from the time:Position objects that it sends. Hosts send all
/// or some of the properties, as any number type, at every block or at changes alone; between two
/// messages the position runs on by whole frames, so that it does not drift. For the audio call.
class CTransport {
public:
    CTransport(const SUris& uris, double rate) : fUris(uris), fRate(rate) {}

    /// Takes what a position object says; it holds from now on.
    void Update(const LV2_Atom_Object& position) noexcept;
    void Advance(int64_t frames) noexcept { fFrames += fRolling ? frames : 0; }

    bool IsRolling() const noexcept { return fRolling; }
    /// Quarter notes per minute; 0 when the host has not told.
    double GetBpm() const noexcept { return fBeatsPerMinute * 4.0 / fBeatUnit; }
    /// From the start of the timeline.
    double GetQuarter() const noexcept {
        return fQuarter + static_cast<double>(fFrames) * GetBpm() / (60.0 * fRate);
    }

private:
    bool Read(const LV2_Atom* atom, double& value) const noexcept;

    const SUris& fUris;
    double fRate;
    bool fRolling = false;
    double fBeatsPerMinute = 0.0;
    double fBeatUnit = 4.0;
    double fBeatsPerBar = 4.0;
    double fQuarter = 0.0; // at the last message
    int64_t fFrames = 0;   // since
};

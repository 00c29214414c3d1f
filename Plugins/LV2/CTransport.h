#pragma once

#include "Uris.h"

#include <cstdint>

/// Where the host's timeline stands, from the time:Position objects that it sends. Hosts send all
/// or some of the properties, as any number type, at every block or at changes alone; between two
/// messages the position runs on by whole frames, so that it does not drift, and through messages
/// that repeat it but for a rounding. A host that tells no tempo is followed at the tempo of the
/// plug-in's control, one that tells no bars by its frames. For the audio call.
class CTransport {
public:
    CTransport(const SUris& uris, double rate) : CTransport(&uris, rate) {}

    /// Takes what a position object says; it holds from now on.
    void Update(const LV2_Atom_Object& position) noexcept;
    void Advance(int64_t frames) noexcept { fFrames += IsRolling() ? frames : 0; }
    /// As if the host had told nothing yet.
    void Reset() noexcept { *this = CTransport(fUris, fRate); }
    /// Quarter notes per minute for a host that tells none.
    void SetTempoWithoutHost(double bpm) noexcept {
        if (bpm != fOwnBpm) {
            Settle();
            fOwnBpm = bpm;
        }
    }

    /// Forwards; nothing is played backwards.
    bool IsRolling() const noexcept { return fSpeed > 0.0; }
    /// Quarter notes that pass in a minute, at the host's speed.
    double GetBpm() const noexcept { return GetTempo() * fSpeed; }
    /// From the start of the timeline.
    double GetQuarter() const noexcept {
        return fQuarter + static_cast<double>(fFrames) * GetBpm() / (60.0 * fRate);
    }

private:
    CTransport(const SUris* uris, double rate) : fUris(uris), fRate(rate) {}

    // A property that is a number; false leaves `value` as it is.
    bool Read(const LV2_Atom_Object& object, LV2_URID key, double& value) const noexcept;
    double GetTempo() const noexcept {
        return fBeatsPerMinute > 0.0 ? fBeatsPerMinute * 4.0 / fBeatUnit : fOwnBpm;
    }
    // What was counted at the old tempo stays counted.
    void Settle() noexcept {
        fQuarter = GetQuarter();
        fFrames = 0;
    }

    const SUris* fUris;
    double fRate;
    double fSpeed = 0.0;
    double fOwnBpm = 120.0;
    double fBeatsPerMinute = 0.0; // 0: not told
    double fBeatUnit = 4.0;
    double fBeatsPerBar = 4.0;
    double fQuarter = 0.0; // at the last message
    int64_t fFrames = 0;   // since
};

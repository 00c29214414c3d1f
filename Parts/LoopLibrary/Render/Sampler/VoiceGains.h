#pragma once

#include "LoopLibrary/Render/Common/CBlockBuffers.h"
#include "LoopLibrary/Render/Sampler/VoiceEnvelopes.h"
#include "Support/Threads/RealTime.h"

#include <cstddef>
#include <cstdint>

namespace NSLOPDLL {

/// The gains of all voices for one block, frame by frame. Straight ramps are worked out four at a
/// time at the end, since each alone is a chain of additions that wait for each other.
class CVoiceGains {
public:
    static constexpr size_t kVoices = 8;

    /// Plans the gains of voice `index`, at most once. `gain` is what stands at the first frame; it
    /// takes the gain behind the last one, at the latest in Finish.
    void Plan(size_t index, float& gain, const CGainMove& move) noexcept LOOP_REALTIME;
    void Finish() noexcept LOOP_REALTIME;
    /// 64 gains of a voice that was planned, valid after Finish.
    const float* Get(size_t index) const noexcept LOOP_REALTIME { return fGains[index]; }

private:
    static constexpr size_t kLanes = 4;

    alignas(32) float fGains[kVoices][kBlockFrames];
    alignas(32) float fSpare[kBlockFrames]; // of lanes without a voice
    struct {
        float* fVoiceGain;
        float* fTarget;
        float fStep;
    } fRamps[kVoices];
    size_t fRampCount = 0;
};

} // namespace NSLOPDLL

#pragma once

#include <cstdint>

namespace NSLOPDLL {

constexpr uint32_t kVoiceKind_Slice = 1;
constexpr uint32_t kVoiceKind_Plain = 2;

constexpr uint32_t kVoiceState_Off = 0;
constexpr uint32_t kVoiceState_Attack = 1;
constexpr uint32_t kVoiceState_Held = 2; // held or decaying
constexpr uint32_t kVoiceState_Release = 3;

/// fDirection of a slice voice.
constexpr uint32_t kVoiceDirection_NotTurned = 0;
constexpr uint32_t kVoiceDirection_Forward = 1;
constexpr uint32_t kVoiceDirection_Backward = 2;

/// fDirection of a plain voice.
constexpr uint32_t kVoiceDirection_Once = 0;
constexpr uint32_t kVoiceDirection_Loop = 1;

/// Headroom of all voices, about 5/6.
constexpr float kVoiceHeadroom = 0x1.aaaaaap-1F;
/// Under this level a fading voice is taken as silent, about -84 dB.
constexpr float kVoiceSilence = 6.25e-5F;

/// One of the sampler's eight voices; all zero when free.
struct SamplerVoice {
    uint32_t fKind = 0;
    int32_t fPosition = 0;   // next source frame to fetch
    uint32_t fPhase = 0;     // fraction of a frame, 0 to 16383
    float fRateRatio = 0.0F; // rate of the wave sample over the output rate
    uint32_t fDirection = 0;
    int32_t fRangeStart = 0; // slice voice: tail start; plain voice: first frame of the range
    int32_t fRangeEnd = 0;   // slice voice: tail end; plain voice: frame behind the range
    uint32_t fState = kVoiceState_Off;
    float fEnvelope = 0.0F;        // 0.0 to 1.0
    float fGain = 0.0F;            // in force now, moved frame by frame toward a target
    bool fInTail = false;          // the source has run out once
    float fFadeGain = 0.0F;        // tail fade, 1.0 falling to 1e-6
    float fFadeStep = 0.0F;        // fall of fFadeGain per fetched frame
    float fTailLevel = 0.0F;       // correction of the level along the tail, starts at 1.0
    float fTailLevelStep = 0.0F;   // change of fTailLevel per fetched frame
    uint32_t fCompressorState = 0; // 1 attack, 2 release
    float fCompressorEnvelope = 0.0F;
};

} // namespace NSLOPDLL

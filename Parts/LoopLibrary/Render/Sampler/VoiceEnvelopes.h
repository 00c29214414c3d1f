#pragma once

#include "LoopLibrary/Render/Sampler/CSamplerSettings.h"
#include "LoopLibrary/Render/Sampler/SamplerVoice.h"
#include "LoopLibrary/Render/Slices/CSlicePlayRange.h"
#include "LoopLibrary/Render/Tables/CDSPTables.h"
#include "Support/Threads/RealTime.h"

namespace NSLOPDLL {

/// One frame as a part of a block of 64.
constexpr float kFramePart = 0.015625F;

/// How a voice's gain moves over one block of 64 frames.
struct CGainMove {
    float fTarget = 0.0F;     // gain at the end of the block
    float fRamp = 0.0F;       // step per frame that gets there in a straight line
    float fAttackRamp = 0.0F; // step per frame of an attack that is quicker; 0.0 for none
};

/// The entry of a table of kEnvelopeTableSize floats for a setting.
float EnvelopeTableValue(const float* table, int16_t index) noexcept LOOP_REALTIME;

/// Sets the shaper's and the compressor's envelope and the tail fade of a voice that starts
/// `range`.
void StartEnvelopes(SamplerVoice& voice, const CSlicePlayRange& range,
                    const CSamplerSettings& settings) noexcept LOOP_REALTIME;

/// The gain that the two envelopes and the output level ask for.
float TargetGain(const SamplerVoice& voice,
                 const CSamplerSettings& settings) noexcept LOOP_REALTIME;

/// Moves both envelopes of a slice voice on by one block.
CGainMove StepEnvelopes(SamplerVoice& voice, const CSamplerSettings& settings,
                        const CDSPTables& tables) noexcept LOOP_REALTIME;

/// Writes the gain of each of the block's 64 frames, one after the other; answers the gain behind
/// the last.
float FillGains(float gain, CGainMove move, float* gains) noexcept LOOP_REALTIME;

} // namespace NSLOPDLL

#pragma once

#include "LoopLibrary/Render/Common/CBlockBuffers.h"
#include "Support/Threads/RealTime.h"

namespace NSLOPDLL {

/// One parametric band: a resonator whose output is added to the dry signal times fGain.
struct CEqualizerBand {
    float fA = 0.0F;
    float fB = 0.0F;
    float fC = 0.0F;
    float fGain = 0.0F;
};

struct CEqualizerCut {
    float fA = 0.0F;
    float fB = 0.0F;
    float fGain = 0.0F;
};

struct CEqualizerCoefficients {
    CEqualizerBand fBand1;
    CEqualizerBand fBand2;
    CEqualizerCut fLow;
    CEqualizerCut fHigh;
};

/// The filter memories of one channel, one and two frames back.
struct CEqualizerState {
    float fInput[2] = {};
    float fBand1[2] = {};
    float fBand2[2] = {};
    float fLow[2] = {};
    float fOutput[2] = {};

    bool IsFinite() const noexcept LOOP_REALTIME;
};

/// Both channels at once, in the lanes of a vector: the bits of two calls of
/// FilterChannel (Forms/PlainForms.h).
void FilterStereoLanes(const CEqualizerCoefficients& coefficients, CEqualizerState& leftState,
                       CEqualizerState& rightState,
                       const CBlockBuffers& buffers) noexcept LOOP_REALTIME;

} // namespace NSLOPDLL

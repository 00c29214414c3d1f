#pragma once

#include "LoopLibrary/Render/Common/CBlockBuffers.h"
#include "Support/Threads/RealTime.h"

#include <cstdint>

namespace NSLOPDLL {

/// The most frames that a form works out side by side.
constexpr int32_t kInterpolatedAtOnce = 8;

/// One block of one voice, or a part of one. The six taps of an output frame lie on the source
/// frames n to n + 5, where n is its phase shifted right by 14; the point read is n + 2 and the
/// fraction. All forms read up to two floats behind the last tap.
struct CInterpolationJob {
    const float* fLeftFetch;
    const float* fRightFetch; // equal to fLeftFetch for a mono source, whose sum is worked out once
    uint32_t fPhase;          // of the first frame, 14 bits of fraction
    uint32_t fStep;
    const float* fGains;                // one a frame
    CBlockBuffers fOutput;              // added to
    int32_t fFrameCount = kBlockFrames; // a multiple of kInterpolatedAtOnce
};

/// A step of one frame, at which all frames of a block have the same taps.
constexpr uint32_t kUnitStep = 0x4000;

/// Several frames in the lanes of a vector: the bits of InterpolateScalar (Forms/PlainForms.h).
void InterpolateLanes(const CInterpolationJob& job) noexcept LOOP_REALTIME;
/// Only where the processor has AVX2.
void InterpolateAvx2(const CInterpolationJob& job) noexcept LOOP_REALTIME;

} // namespace NSLOPDLL

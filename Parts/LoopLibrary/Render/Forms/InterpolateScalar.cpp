#include "LoopLibrary/Render/Forms/PlainForms.h"
#include "LoopLibrary/Render/Tables/CDSPTables.h"

#include <cstddef>

namespace NSLOPDLL {

namespace {

constexpr size_t kRow = kInterpolationPhases;

float SumTaps(const float* taps, const float* fetch) {
    return taps[5 * kRow] * fetch[0] + taps[4 * kRow] * fetch[1] + taps[3 * kRow] * fetch[2] +
           taps[2 * kRow] * fetch[3] + taps[kRow] * fetch[4] + taps[0] * fetch[5];
}

} // namespace

void InterpolateScalar(const CInterpolationJob& job) noexcept {
    const float* table = CDSPTables::GetInterpolationTable();
    uint32_t phase = job.fPhase;
    for (int32_t i = 0; i < job.fFrameCount; ++i) {
        const uint32_t n = phase >> 14;
        const float* taps = table + ((phase >> 6) & 255);
        job.fOutput.fLeft[i] += SumTaps(taps, job.fLeftFetch + n) * job.fGains[i];
        job.fOutput.fRight[i] += SumTaps(taps, job.fRightFetch + n) * job.fGains[i];
        phase += job.fStep;
    }
}

} // namespace NSLOPDLL

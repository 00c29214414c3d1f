// Four output frames in the lanes of a vector.

#include "LoopLibrary/Render/Common/Lanes.h"
#include "LoopLibrary/Render/Sampler/Interpolator.h"
#include "LoopLibrary/Render/Tables/CDSPTables.h"

namespace NSLOPDLL {

namespace {

static_assert(kInterpolatedAtOnce % kLaneCount == 0);

// What an output frame is summed from: its row of the table, in the order of the source frames, and
// its first source frame.
struct CPlace {
    const float* fTaps;
    uint32_t fFrame;
};

CPlace PlaceAt(const float* table, uint32_t phase) {
    return {table + ((phase >> 6) & 255) * kPhaseStride, phase >> 14};
}

// Of taps 0 to 3, or of 4 and 5 in the lower half.
template <int32_t kFirstTap>
Lanes Products(const CPlace& place, const float* fetch) {
    return LoadLanes(place.fTaps + kFirstTap) * LoadLanes(fetch + place.fFrame + kFirstTap);
}

Lanes SumTaps(const CPlace (&places)[kLaneCount], const float* fetch) {
    Lanes p0 = Products<0>(places[0], fetch);
    Lanes p1 = Products<0>(places[1], fetch);
    Lanes p2 = Products<0>(places[2], fetch);
    Lanes p3 = Products<0>(places[3], fetch);
    Transpose(p0, p1, p2, p3);
    const Lanes last01 =
        InterleaveLower(Products<4>(places[0], fetch), Products<4>(places[1], fetch));
    const Lanes last23 =
        InterleaveLower(Products<4>(places[2], fetch), Products<4>(places[3], fetch));
    return p0 + p1 + p2 + p3 + LowerHalves(last01, last23) + UpperHalves(last01, last23);
}

void AddTo(float* output, Lanes values) {
    StoreLanes(output, LoadLanes(output) + values);
}

// At a step of one frame a lane's source frames are those of the lane before it, moved on by one:
// four neighbours are one load a tap, and nothing has to be turned.
Lanes SumUnitTaps(const Lanes (&taps)[kInterpolationTaps], const float* fetch) {
    return taps[0] * LoadLanes(fetch) + taps[1] * LoadLanes(fetch + 1) +
           taps[2] * LoadLanes(fetch + 2) + taps[3] * LoadLanes(fetch + 3) +
           taps[4] * LoadLanes(fetch + 4) + taps[5] * LoadLanes(fetch + 5);
}

void InterpolateUnitStep(const CInterpolationJob& job, const float* table) {
    const CPlace place = PlaceAt(table, job.fPhase);
    Lanes taps[kInterpolationTaps];
    for (size_t tap = 0; tap < kInterpolationTaps; ++tap) {
        taps[tap] = Broadcast(place.fTaps[tap]);
    }
    const bool mono = job.fLeftFetch == job.fRightFetch;
    const float* leftFetch = job.fLeftFetch + place.fFrame;
    const float* rightFetch = job.fRightFetch + place.fFrame;
    for (int32_t i = 0; i < job.fFrameCount; i += kLaneCount) {
        const Lanes gains = LoadLanes(job.fGains + i);
        const Lanes left = SumUnitTaps(taps, leftFetch + i) * gains;
        AddTo(job.fOutput.fLeft + i, left);
        AddTo(job.fOutput.fRight + i, mono ? left : SumUnitTaps(taps, rightFetch + i) * gains);
    }
}

} // namespace

void InterpolateLanes(const CInterpolationJob& job) noexcept {
    const float* table = CDSPTables::GetInterpolationTableByPhase();
    if (job.fStep == kUnitStep) {
        InterpolateUnitStep(job, table);
        return;
    }
    const bool mono = job.fLeftFetch == job.fRightFetch;
    const uint32_t step = job.fStep;
    uint32_t phase = job.fPhase;
    for (int32_t i = 0; i < job.fFrameCount; i += kLaneCount) {
        const CPlace places[] = {PlaceAt(table, phase), PlaceAt(table, phase + step),
                                 PlaceAt(table, phase + 2 * step),
                                 PlaceAt(table, phase + 3 * step)};
        const Lanes gains = LoadLanes(job.fGains + i);
        const Lanes left = SumTaps(places, job.fLeftFetch) * gains;
        AddTo(job.fOutput.fLeft + i, left);
        AddTo(job.fOutput.fRight + i, mono ? left : SumTaps(places, job.fRightFetch) * gains);
        phase += kLaneCount * step;
    }
}

} // namespace NSLOPDLL

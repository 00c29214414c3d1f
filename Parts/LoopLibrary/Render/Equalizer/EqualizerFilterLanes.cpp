// Two chains of feedback, each with the two channels in two lanes of a vector: the bands side by
// side, and the low cut beside the high cut. A chain is bound by the latency of its additions, so
// that more lanes cost no more time. In one turn of the loop the bands are at frame i, the low cut
// at i - 1 and the high cut at i - 3, so that no stage waits for another's result. With the high
// cut at i - 2 what passes between the cuts would be the longest chain, since they share a vector.

#include "LoopLibrary/Render/Common/Lanes.h"
#include "LoopLibrary/Render/Equalizer/EqualizerFilter.h"

namespace NSLOPDLL {

namespace {

constexpr int32_t kGroup = kLaneCount; // frames read and written at once
constexpr int32_t kLag = 3;            // turns from the bands to the high cut

// Left and right in the lower lanes, left and right in the upper ones.
Lanes Pack(float lower, float upper) {
    return Lanes{lower, lower, upper, upper};
}

// A place in both channels' memories, twice.
struct SPlace {
    float* fLowerLeft;
    float* fLowerRight;
    float* fUpperLeft;
    float* fUpperRight;

    Lanes Load() const { return Lanes{*fLowerLeft, *fLowerRight, *fUpperLeft, *fUpperRight}; }

    void Store(Lanes lanes) const {
        *fLowerLeft = lanes[0];
        *fLowerRight = lanes[1];
        *fUpperLeft = lanes[2];
        *fUpperRight = lanes[3];
    }
};

SPlace InputsOf(CEqualizerState& left, CEqualizerState& right, int age) {
    return {&left.fInput[age], &right.fInput[age], &left.fInput[age], &right.fInput[age]};
}

SPlace BandsOf(CEqualizerState& left, CEqualizerState& right, int age) {
    return {&left.fBand1[age], &right.fBand1[age], &left.fBand2[age], &right.fBand2[age]};
}

SPlace CutsOf(CEqualizerState& left, CEqualizerState& right, int age) {
    return {&left.fLow[age], &right.fLow[age], &left.fOutput[age], &right.fOutput[age]};
}

struct SFeedback {
    Lanes fGain;
    Lanes fA;
    Lanes fB;
    Lanes fLast;
    Lanes fOlder; // one frame before the last

    void Filter(Lanes input) {
        const Lanes output = input * fGain + fLast * fA - fOlder * fB;
        fOlder = fLast;
        fLast = output;
    }
};

class CBands {
public:
    CBands(const CEqualizerCoefficients& c, CEqualizerState& left, CEqualizerState& right)
        : fInput1(InputsOf(left, right, 0).Load()), fInput2(InputsOf(left, right, 1).Load()),
          fGain(Pack(c.fBand1.fGain, c.fBand2.fGain)), fBands{Pack(c.fBand1.fA, c.fBand2.fA),
                                                              Pack(c.fBand1.fC, c.fBand2.fC),
                                                              Pack(c.fBand1.fB, c.fBand2.fB),
                                                              BandsOf(left, right, 0).Load(),
                                                              BandsOf(left, right, 1).Load()} {}

    // Takes a frame in the lower lanes and once more in the upper ones; the result is in the lower.
    Lanes Filter(Lanes input) {
        fBands.Filter(input - fInput2 + 1e-6F);
        fInput2 = fInput1;
        fInput1 = input;
        const Lanes parts = fBands.fLast * fGain;
        return parts + input + __builtin_shufflevector(parts, parts, 2, 3, 0, 1);
    }

    void StoreTo(CEqualizerState& left, CEqualizerState& right) const {
        InputsOf(left, right, 0).Store(fInput1);
        InputsOf(left, right, 1).Store(fInput2);
        BandsOf(left, right, 0).Store(fBands.fLast);
        BandsOf(left, right, 1).Store(fBands.fOlder);
    }

private:
    Lanes fInput1;
    Lanes fInput2;
    Lanes fGain;
    SFeedback fBands;
};

// The high cut filters what the low cut gave two turns before.
class CCuts {
public:
    CCuts(const CEqualizerCoefficients& c, CEqualizerState& left, CEqualizerState& right)
        : fCuts{Pack(c.fLow.fGain, c.fHigh.fGain), Pack(c.fLow.fA, c.fHigh.fA),
                Pack(c.fLow.fB, c.fHigh.fB), CutsOf(left, right, 0).Load(),
                CutsOf(left, right, 1).Load()} {}

    // Takes a frame in the lower lanes; the upper ones of the result are the output of the frame
    // two before it.
    Lanes Filter(Lanes equalized) {
        const Lanes low1 = fCuts.fLast;
        const Lanes low2 = fCuts.fOlder;
        fCuts.Filter(LowerHalves(equalized, fHigh));
        fHigh = fNextHigh;
        fNextHigh = fCuts.fLast - low1 * 2.0F + low2;
        return fCuts.fLast;
    }

    // Takes one of the first frames, when there is none yet for the high cut.
    void FilterFirst(Lanes equalized) {
        const SFeedback before = fCuts;
        Filter(equalized);
        fCuts.fLast = __builtin_shufflevector(fCuts.fLast, before.fLast, 0, 1, 6, 7);
        fCuts.fOlder = __builtin_shufflevector(fCuts.fOlder, before.fOlder, 0, 1, 6, 7);
    }

    // Gives the output of one of the last frames, when there is none any more for the low cut.
    Lanes FilterLast() {
        const SFeedback before = fCuts;
        const Lanes output = Filter(Lanes{});
        fCuts.fLast = __builtin_shufflevector(before.fLast, fCuts.fLast, 0, 1, 6, 7);
        fCuts.fOlder = __builtin_shufflevector(before.fOlder, fCuts.fOlder, 0, 1, 6, 7);
        return output;
    }

    void StoreTo(CEqualizerState& left, CEqualizerState& right) const {
        CutsOf(left, right, 0).Store(fCuts.fLast);
        CutsOf(left, right, 1).Store(fCuts.fOlder);
    }

private:
    SFeedback fCuts;
    Lanes fHigh{};
    Lanes fNextHigh{};
};

Lanes FrameAt(const CBlockBuffers& buffers, int32_t frame) {
    const float left = buffers.fLeft[frame];
    const float right = buffers.fRight[frame];
    return Lanes{left, right, left, right};
}

// From the upper lanes of each.
void StoreFour(const CBlockBuffers& buffers, int32_t frame, const Lanes (&outputs)[kGroup]) {
    const Lanes first = UpperHalves(outputs[0], outputs[1]);
    const Lanes second = UpperHalves(outputs[2], outputs[3]);
    StoreLanes(buffers.fLeft + frame, __builtin_shufflevector(first, second, 0, 2, 4, 6));
    StoreLanes(buffers.fRight + frame, __builtin_shufflevector(first, second, 1, 3, 5, 7));
}

} // namespace

void FilterStereoLanes(const CEqualizerCoefficients& coefficients, CEqualizerState& leftState,
                       CEqualizerState& rightState, const CBlockBuffers& buffers) noexcept {
    CBands bands(coefficients, leftState, rightState);
    CCuts cuts(coefficients, leftState, rightState);

    Lanes equalized = bands.Filter(FrameAt(buffers, 0));
    cuts.FilterFirst(equalized);
    equalized = bands.Filter(FrameAt(buffers, 1));
    cuts.FilterFirst(equalized);
    equalized = bands.Filter(FrameAt(buffers, 2));
    Lanes outputs[kGroup];
    for (int32_t frame = 0; frame < kBlockFrames - kGroup; frame += kGroup) {
        const Lanes left = LoadLanes(buffers.fLeft + frame + kLag);
        const Lanes right = LoadLanes(buffers.fRight + frame + kLag);
        outputs[0] = cuts.Filter(equalized);
        equalized = bands.Filter(__builtin_shufflevector(left, right, 0, 4, 0, 4));
        outputs[1] = cuts.Filter(equalized);
        equalized = bands.Filter(__builtin_shufflevector(left, right, 1, 5, 1, 5));
        outputs[2] = cuts.Filter(equalized);
        equalized = bands.Filter(__builtin_shufflevector(left, right, 2, 6, 2, 6));
        outputs[3] = cuts.Filter(equalized);
        equalized = bands.Filter(__builtin_shufflevector(left, right, 3, 7, 3, 7));
        StoreFour(buffers, frame, outputs);
    }
    outputs[0] = cuts.Filter(equalized);
    equalized = bands.Filter(FrameAt(buffers, kBlockFrames - 1));
    outputs[1] = cuts.Filter(equalized);
    outputs[2] = cuts.FilterLast();
    outputs[3] = cuts.FilterLast();
    StoreFour(buffers, kBlockFrames - kGroup, outputs);

    bands.StoreTo(leftState, rightState);
    cuts.StoreTo(leftState, rightState);
}

} // namespace NSLOPDLL

// Fade and level side by side in a vector, whose turned copies are the factors of four frames. The
// products of a group take place while the additions of the next ones are waited for.

#include "LoopLibrary/Render/Common/Lanes.h"
#include "LoopLibrary/Render/Sampler/TailShape.h"

namespace NSLOPDLL {

namespace {

void Scale(float* frames, Lanes fades, Lanes levels) {
    StoreLanes(frames, LoadLanes(frames) * fades * levels);
}

} // namespace

void ShapeTailLanes(CTailShape& shape, int32_t count, float* left, float* right) noexcept {
    const int32_t grouped = count / kLaneCount * kLaneCount;
    // Where the fade stays off its floor the comparison with it is left out of the chain; two steps
    // are more than the roundings of a block add up to.
    const bool isOffFloor =
        shape.fFade - shape.fFadeStep * static_cast<float>(grouped + 2) > 2.0F * kFadeFloor;
    int32_t done = 0;
    if (isOffFloor) {
        Lanes first = {shape.fFade, shape.fLevel};
        // Subtracting what is negated is adding, to the bit.
        const Lanes step = {shape.fFadeStep, -shape.fLevelStep};
        for (; done < grouped; done += kLaneCount) {
            const Lanes second = first - step;
            const Lanes third = second - step;
            const Lanes fourth = third - step;
            const Lanes front = InterleaveLower(first, second);
            const Lanes back = InterleaveLower(third, fourth);
            const Lanes fades = LowerHalves(front, back);
            const Lanes levels = UpperHalves(front, back);
            Scale(left + done, fades, levels);
            if (right != nullptr) {
                Scale(right + done, fades, levels);
            }
            first = fourth - step;
        }
        shape.fFade = first[0];
        shape.fLevel = first[1];
    }
    ShapeTailPlain(shape, count - done, left + done, right != nullptr ? right + done : nullptr);
}

} // namespace NSLOPDLL

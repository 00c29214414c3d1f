// Fade and level side by side in a vector, whose turned copies are the factors of four frames. The
// products of a group take place while the additions of the next ones are waited for.

#include "LoopLibrary/Render/Sampler/TailShape.h"

#include <cstring>

namespace NSLOPDLL {

namespace {

using Lanes = float __attribute__((vector_size(16)));

constexpr int32_t kGroup = 4;

void Scale(float* frames, Lanes fades, Lanes levels) {
    Lanes values;
    std::memcpy(&values, frames, sizeof values);
    values = values * fades * levels;
    std::memcpy(frames, &values, sizeof values);
}

} // namespace

void ShapeTailLanes(CTailShape& shape, int32_t count, float* left, float* right) noexcept {
    const int32_t grouped = count / kGroup * kGroup;
    // Where the fade stays off its floor the comparison with it is left out of the chain; two steps
    // are more than the roundings of a block add up to.
    const bool isOffFloor =
        shape.fFade - shape.fFadeStep * static_cast<float>(grouped + 2) > 2.0F * kFadeFloor;
    int32_t done = 0;
    if (isOffFloor) {
        Lanes first = {shape.fFade, shape.fLevel};
        // Subtracting what is negated is adding, to the bit.
        const Lanes step = {shape.fFadeStep, -shape.fLevelStep};
        for (; done < grouped; done += kGroup) {
            const Lanes second = first - step;
            const Lanes third = second - step;
            const Lanes fourth = third - step;
            const Lanes front = __builtin_shufflevector(first, second, 0, 4, 1, 5);
            const Lanes back = __builtin_shufflevector(third, fourth, 0, 4, 1, 5);
            const Lanes fades = __builtin_shufflevector(front, back, 0, 1, 4, 5);
            const Lanes levels = __builtin_shufflevector(front, back, 2, 3, 6, 7);
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

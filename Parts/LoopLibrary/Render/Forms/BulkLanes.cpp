#include "LoopLibrary/Render/Forms/BulkLanes.h"

#include "LoopLibrary/Render/Common/CBlockBuffers.h"
#include "LoopLibrary/Render/Common/Lanes.h"

#include <algorithm>
#include <cstddef>

namespace NSLOPDLL {

// A ramp is a chain of additions, each of which waits for the one before it; four chains in the
// lanes take the time of one. Turning four frames of them makes the rows that are stored.
void FillFourRampsLanes(float* const* targets, float* values, const float* steps) noexcept {
    Lanes value = LoadLanes(values);
    const Lanes step = LoadLanes(steps);
    for (int32_t i = 0; i < kBlockFrames; i += kLaneCount) {
        Lanes a = value;
        Lanes b = a + step;
        Lanes c = b + step;
        Lanes d = c + step;
        value = d + step;
        Transpose(a, b, c, d);
        StoreLanes(targets[0] + i, a);
        StoreLanes(targets[1] + i, b);
        StoreLanes(targets[2] + i, c);
        StoreLanes(targets[3] + i, d);
    }
    StoreLanes(values, value);
}

void ReverseLanes(float* values, int32_t count) noexcept {
    const auto turned = [](Lanes lanes) {
        return __builtin_shufflevector(lanes, lanes, 3, 2, 1, 0);
    };
    float* front = values;
    float* back = values + count;
    while (back - front >= ptrdiff_t{2} * kLaneCount) {
        back -= kLaneCount;
        const Lanes first = LoadLanes(front);
        const Lanes last = LoadLanes(back);
        StoreLanes(front, turned(last));
        StoreLanes(back, turned(first));
        front += kLaneCount;
    }
    std::reverse(front, back);
}

} // namespace NSLOPDLL

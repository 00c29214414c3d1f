#pragma once

#include "Support/Threads/RealTime.h"

#include <algorithm>
#include <cstdint>

namespace NSLOPDLL {

/// What the fade of a tail does not fall below.
constexpr float kFadeFloor = 1e-6F;

/// The two factors of a tail on their way from frame to frame.
struct CTailShape {
    float fFade;
    float fFadeStep; // taken off
    float fLevel;
    float fLevelStep; // added

    void Advance() noexcept {
        fFade = std::max(fFade - fFadeStep, kFadeFloor);
        fLevel += fLevelStep;
    }
};

/// Shapes frames in place, those of `right` only if it is not null, and moves the factors on. The
/// additions of a factor are a chain whose rounding is part of the sound.
void ShapeTailPlain(CTailShape& shape, int32_t count, float* left,
                    float* right) noexcept LOOP_REALTIME;
void ShapeTailLanes(CTailShape& shape, int32_t count, float* left,
                    float* right) noexcept LOOP_REALTIME;

} // namespace NSLOPDLL

#include "LoopLibrary/Public/ClipSamples.h"

namespace NSLOPDLL {

void ClipSamples(float* samples, int32_t count) noexcept LOOP_REALTIME {
    for (int32_t i = 0; i < count; ++i) {
        const float sample = samples[i];
        samples[i] = sample > 1.0f ? 1.0f : (sample < -1.0f ? -1.0f : sample);
    }
}

} // namespace NSLOPDLL

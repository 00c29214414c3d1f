#include "LoopLibrary/Public/ClipSamples.h"

namespace NSLOPDLL {

namespace {

// Not-a-number stays what it is.
float Clipped(float sample) noexcept {
    return sample > 1.0f ? 1.0f : (sample < -1.0f ? -1.0f : sample);
}

} // namespace

void ClipSamples(float* samples, int32_t count) noexcept LOOP_REALTIME {
    // A run of known length is what compilers turn into vectors at -O2.
    constexpr int32_t kRun = 16;
    int32_t i = 0;
    for (; i + kRun <= count; i += kRun) {
        for (int32_t j = 0; j < kRun; ++j) {
            samples[i + j] = Clipped(samples[i + j]);
        }
    }
    for (; i < count; ++i) {
        samples[i] = Clipped(samples[i]);
    }
}

} // namespace NSLOPDLL

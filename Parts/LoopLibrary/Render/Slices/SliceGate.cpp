#include "LoopLibrary/Render/Slices/SliceGate.h"

#include <algorithm>

namespace NSLOPDLL {

namespace {

constexpr uint32_t kFramesPerEntry = 64;
constexpr uint32_t kFirstWindow = 1024;
constexpr uint32_t kWindow = 128;

// In 16 bits, where -32768 has no positive counterpart and stays as it is.
int16_t Magnitude(int16_t value) {
    return static_cast<int16_t>(value < 0 ? -value : value);
}

// Of a pair of minimum and maximum the one that is greater in magnitude.
int16_t Stronger(const int16_t* pair) {
    return Magnitude(pair[0]) >= Magnitude(pair[1]) ? pair[0] : pair[1];
}

} // namespace

float GetPeakLevel(const CABCWaveSample& sample, uint32_t position, uint32_t frames) noexcept {
    const CWaveSamplePreview* preview = sample.GetPreview();
    if (preview == nullptr) {
        return 0.0F;
    }
    const int64_t end =
        std::min<int64_t>((int64_t{position} + frames) / kFramesPerEntry, preview->GetEntryCount());
    int16_t peak = 0;
    for (int64_t entry = position / kFramesPerEntry; entry < end; ++entry) {
        const int16_t* left = preview->GetLeftPeaks() + 2 * entry;
        if (preview->IsStereo()) {
            const int16_t* right = preview->GetRightPeaks() + 2 * entry;
            const auto sum = static_cast<int16_t>(Stronger(left) + Stronger(right));
            peak = std::max(peak, Magnitude(sum));
        } else {
            peak = std::max({peak, Magnitude(left[0]), Magnitude(left[1])});
        }
    }
    return static_cast<float>(peak) * 0x1p-15F;
}

uint32_t MeasureGated(const CABCWaveSample& sample, uint32_t start, uint32_t frames,
                      float gateLimit) noexcept {
    float level = 1.0F;
    uint32_t window = kFirstWindow;
    uint32_t total = 0;
    while (total < frames) {
        const uint32_t width = std::min(window, frames - total);
        const float peak = GetPeakLevel(sample, start + total, width);
        total += width;
        if (peak > level) {
            level = peak;
        } else {
            level *= 0.9F;
            if (gateLimit > level) {
                break;
            }
        }
        window = kWindow;
    }
    return total;
}

} // namespace NSLOPDLL

#include "LoopLibrary/Render/Common/BlockTime.h"

#include "LoopLibrary/Render/Common/CBlockBuffers.h"

#include <algorithm>
#include <limits>

namespace NSLOPDLL {

namespace {

constexpr int32_t kLowest = std::numeric_limits<int32_t>::min();
constexpr int32_t kHighest = std::numeric_limits<int32_t>::max();

} // namespace

int32_t SaturateToInt32(int64_t value) noexcept {
    return static_cast<int32_t>(std::clamp<int64_t>(value, kLowest, kHighest));
}

int32_t SaturateToInt32(double value) noexcept {
    if (!(value > kLowest)) {
        return value <= kLowest ? kLowest : 0;
    }
    return value < kHighest ? static_cast<int32_t>(value) : kHighest;
}

int32_t RoundToBlock(int32_t frames) noexcept {
    constexpr int32_t kHalf = kBlockFrames / 2;
    if (frames > kHighest - kHalf || frames < kLowest + kHalf) {
        return frames;
    }
    const int32_t biased = frames > 0 ? frames + kHalf : frames - kHalf;
    return biased / kBlockFrames * kBlockFrames;
}

int32_t ScaleFrames(double frames, int32_t outputRate, int32_t sourceRate) noexcept {
    return SaturateToInt32(outputRate * frames / sourceRate + 0.5);
}

int32_t RescaleToBlock(int32_t value, int32_t numerator, int32_t denominator) noexcept {
    if (denominator == 0) {
        return value;
    }
    return RoundToBlock(SaturateToInt32(int64_t{value} * numerator / denominator));
}

} // namespace NSLOPDLL

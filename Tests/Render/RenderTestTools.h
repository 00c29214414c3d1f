#pragma once

#include "LoopLibrary/Render/Common/CBlockBuffers.h"
#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "LoopLibrary/Render/Slices/CSlice.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <utility>
#include <vector>

namespace NSLOPDLL {

// A sequence of integers that is the same everywhere.
class CTestNoise {
public:
    explicit CTestNoise(uint32_t seed) : fState(seed) {}

    uint32_t Next() {
        fState = fState * 1664525U + 1013904223U;
        return fState >> 8;
    }
    int32_t Within(int32_t least, int32_t most) {
        return least + static_cast<int32_t>(Next() % static_cast<uint32_t>(most - least + 1));
    }
    int32_t Next24Bit() { return Within(-8388608, 8388607); }
    float NextFloat() { return static_cast<float>(Next24Bit()) * 0x1p-23F; }

private:
    uint32_t fState;
};

inline std::unique_ptr<CABCWaveSample> MakeNoiseSample(uint32_t rate, int32_t frames, bool stereo,
                                                       uint32_t depth, uint32_t seed = 1) {
    auto sample = CreateWaveSample(rate, static_cast<uint32_t>(frames), stereo, depth);
    CTestNoise noise(seed);
    for (int32_t channel = 1; channel <= (stereo ? 2 : 1); ++channel) {
        for (int32_t frame = 0; frame < frames; ++frame) {
            sample->Set24BitSample(frame, noise.Next24Bit(), channel);
        }
    }
    return sample;
}

inline CSlice MakeSlice(uint32_t position, int32_t kind = kSliceKind_Forced, int16_t level = 0,
                        bool muted = false) {
    CSlice slice;
    slice.SetPosition(position);
    slice.SetKind(kind);
    slice.SetLevel(level);
    slice.SetMuted(muted);
    return slice;
}

struct CTestBlock {
    alignas(32) std::array<float, kBlockFrames> fLeft{};
    alignas(32) std::array<float, kBlockFrames> fRight{};

    CBlockBuffers Buffers() { return {fLeft.data(), fRight.data()}; }
    friend bool operator==(const CTestBlock&, const CTestBlock&) = default;
};

} // namespace NSLOPDLL

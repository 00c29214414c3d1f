#pragma once

#include "LoopLibrary/Render/Common/SampleConversion.h"
#include "LoopLibrary/Render/Sample/TPlanarWaveSample.h"

namespace NSLOPDLL {

/// Conversions of samples that are stored as 24-bit integers, sign-extended to 32 bits. A damaged
/// stream can leave up to 31 bits in a word; they are kept as they are.
struct C24BitDepth {
    using Value = int32_t;
    static constexpr uint32_t kBits = 24;
    static constexpr int64_t kQuietLevel = 0x3ffff;

    static float ToFloat(Value s) noexcept { return static_cast<float>(s) * 0x1p-23F; }
    static Value FromFloat(float v) noexcept {
        return RoundToInteger(v, 8388607.0F, -8388608.0F, 8388607.0F);
    }
    static int16_t To16(Value s) noexcept { return static_cast<int16_t>(s >> 8); }
    static Value From16(int16_t v) noexcept { return v * 256; }
    static int32_t To24(Value s) noexcept { return s; }
    static Value From24(int32_t v) noexcept { return v; }
    static float To24Float(Value s) noexcept { return static_cast<float>(s); }
    static Value From24Float(float v) noexcept { return TruncateTo24Bit(v); }
};

extern template class TPlanarWaveSample<C24BitDepth>;

class C24BitWaveSample final : public TPlanarWaveSample<C24BitDepth> {
public:
    C24BitWaveSample(uint32_t sampleRate, uint32_t frameCount, bool stereo);
    C24BitWaveSample(const C24BitWaveSample& other) = default;
};

} // namespace NSLOPDLL

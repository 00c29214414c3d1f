#pragma once

#include "LoopLibrary/Render/Common/SampleConversion.h"
#include "LoopLibrary/Render/Sample/TPlanarWaveSample.h"

namespace NSLOPDLL {

/// Conversions of samples that are stored as signed 16-bit integers.
struct C16BitDepth {
    using Value = int16_t;
    static constexpr uint32_t kBits = 16;
    static constexpr int64_t kQuietLevel = 1023;

    static float ToFloat(Value s) noexcept { return static_cast<float>(s) * 0x1p-15F; }
    static Value FromFloat(float v) noexcept {
        return static_cast<Value>(RoundToInteger(v, 32767.0F, -32768.0F, 32767.0F));
    }
    static int16_t To16(Value s) noexcept { return s; }
    static Value From16(int16_t v) noexcept { return v; }
    static int32_t To24(Value s) noexcept { return s * 256; }
    static Value From24(int32_t v) noexcept { return static_cast<Value>(v >> 8); }
    static float To24Float(Value s) noexcept { return static_cast<float>(s * 256); }
    static Value From24Float(float v) noexcept { return From24(TruncateTo24Bit(v)); }
};

extern template class TPlanarWaveSample<C16BitDepth>;

class C16BitWaveSample final : public TPlanarWaveSample<C16BitDepth> {
public:
    C16BitWaveSample(uint32_t sampleRate, uint32_t frameCount, bool stereo);
    C16BitWaveSample(const C16BitWaveSample& other) = default;
};

} // namespace NSLOPDLL

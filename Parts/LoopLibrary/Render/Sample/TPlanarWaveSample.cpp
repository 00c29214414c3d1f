#include "LoopLibrary/Render/Sample/TPlanarWaveSample.h"

#include "LoopLibrary/Render/Forms/RenderForms.h"
#include "LoopLibrary/Render/Sample/C16BitWaveSample.h"
#include "LoopLibrary/Render/Sample/C24BitWaveSample.h"

#include <algorithm>
#include <cassert>

namespace NSLOPDLL {

namespace {

// Frames that a walk for a quiet place goes, at most, to each side.
constexpr int64_t kQuietWalk = 25000;

bool HaveOppositeSigns(int32_t a, int32_t b) {
    return (a > 0 && b < 0) || (a < 0 && b > 0);
}

template <auto kConvert, typename Value, typename View>
void ReadPlane(const Value* plane, int32_t first, int32_t count, View* values) noexcept {
    for (int32_t i = 0; i < count; ++i) {
        values[i] = kConvert(plane[ptrdiff_t{first} + i]);
    }
}

template <auto kConvert, typename Value, typename View>
void WritePlane(Value* plane, int32_t first, int32_t count, const View* values) noexcept {
    for (int32_t i = 0; i < count; ++i) {
        plane[ptrdiff_t{first} + i] = kConvert(values[i]);
    }
}

template <auto kConvert, typename Value, typename View>
void ReadFrames(const Value* left, const Value* right, int32_t first, int32_t count,
                View* values) noexcept {
    for (int32_t i = 0; i < count; ++i) {
        *values++ = kConvert(left[ptrdiff_t{first} + i]);
        *values++ = kConvert(right[ptrdiff_t{first} + i]);
    }
}

template <auto kConvert, typename Value, typename View>
void WriteFrames(Value* left, Value* right, int32_t first, int32_t count,
                 const View* values) noexcept {
    for (int32_t i = 0; i < count; ++i) {
        left[ptrdiff_t{first} + i] = kConvert(*values++);
        right[ptrdiff_t{first} + i] = kConvert(*values++);
    }
}

} // namespace

template <typename Depth>
TPlanarWaveSample<Depth>::TPlanarWaveSample(uint32_t sampleRate, uint32_t frameCount, bool stereo)
    : CABCWaveSample(sampleRate, frameCount, stereo, Depth::kBits), fLeft(frameCount) {
    if (stereo) {
        fRight = CSamplePlane<Value>(frameCount);
    }
}

template <typename Depth>
TPlanarWaveSample<Depth>::TPlanarWaveSample(const TPlanarWaveSample& other)
    : CABCWaveSample(other), fLeft(other.fLeft), fRight(other.fRight) {}

template <typename Depth>
void TPlanarWaveSample<Depth>::ReplaceChannelFrom(const CABCWaveSample& source, int32_t channel) {
    const auto* other = dynamic_cast<const TPlanarWaveSample*>(&source);
    assert(other != nullptr);
    if (GetFrameCount() > 0) {
        CSamplePlane<Value> plane(GetFrameCount(), other->fLeft);
        if (channel == kChannel_Right) {
            fRight = std::move(plane);
        } else {
            fRight = std::move(fLeft);
            fLeft = std::move(plane);
        }
    }
    SetStereo(true);
}

template <typename Depth>
float TPlanarWaveSample<Depth>::GetFloatSample(int32_t frame, int32_t channel) const noexcept {
    return Depth::ToFloat(Plane(channel)[frame]);
}

template <typename Depth>
void TPlanarWaveSample<Depth>::SetFloatSample(int32_t frame, float value,
                                              int32_t channel) noexcept {
    Plane(channel)[frame] = Depth::FromFloat(value);
}

template <typename Depth>
void TPlanarWaveSample<Depth>::GetFloatSamples(int32_t first, int32_t count, float* values,
                                               int32_t channel) const noexcept {
    if constexpr (Depth::kBits == 16) {
        GetRenderForm().fReadFloats16(Plane(channel) + first, count, values);
    } else {
        GetRenderForm().fReadFloats24(Plane(channel) + first, count, values);
    }
}

template <typename Depth>
void TPlanarWaveSample<Depth>::SetFloatSamples(int32_t first, int32_t count, const float* values,
                                               int32_t channel) noexcept {
    if constexpr (Depth::kBits == 16) {
        GetRenderForm().fStoreFloats16(values, count, Plane(channel) + first);
    } else {
        GetRenderForm().fStoreFloats24(values, count, Plane(channel) + first);
    }
}

template <typename Depth>
void TPlanarWaveSample<Depth>::Prefetch(int64_t first, int32_t count) const noexcept {
    constexpr int64_t kCacheLine = 64 / sizeof(Value); // frames
    const int64_t end = std::min<int64_t>(first + count, GetFrameCount());
    for (int64_t frame = std::max<int64_t>(first, 0); frame < end; frame += kCacheLine) {
        __builtin_prefetch(fLeft.Get() + frame);
        if (IsStereo()) {
            __builtin_prefetch(fRight.Get() + frame);
        }
    }
}

template <typename Depth>
int16_t TPlanarWaveSample<Depth>::Get16BitSample(int32_t frame, int32_t channel) const noexcept {
    return Depth::To16(Plane(channel)[frame]);
}

template <typename Depth>
void TPlanarWaveSample<Depth>::Set16BitSample(int32_t frame, int16_t value,
                                              int32_t channel) noexcept {
    Plane(channel)[frame] = Depth::From16(value);
}

template <typename Depth>
void TPlanarWaveSample<Depth>::Get16BitSamples(int32_t first, int32_t count, int16_t* values,
                                               int32_t channel) const noexcept {
    if constexpr (Depth::kBits == 16) {
        std::copy_n(Plane(channel) + first, std::max(count, 0), values);
    } else {
        GetRenderForm().fNarrow24(Plane(channel) + first, count, values);
    }
}

template <typename Depth>
void TPlanarWaveSample<Depth>::Set16BitSamples(int32_t first, int32_t count, const int16_t* values,
                                               int32_t channel) noexcept {
    WritePlane<Depth::From16>(Plane(channel), first, count, values);
}

template <typename Depth>
float TPlanarWaveSample<Depth>::Get24BitFloatSample(int32_t frame, int32_t channel) const noexcept {
    return Depth::To24Float(Plane(channel)[frame]);
}

template <typename Depth>
void TPlanarWaveSample<Depth>::Set24BitFloatSample(int32_t frame, float value,
                                                   int32_t channel) noexcept {
    Plane(channel)[frame] = Depth::From24Float(value);
}

template <typename Depth>
void TPlanarWaveSample<Depth>::Get24BitFloatSamples(int32_t first, int32_t count, float* values,
                                                    int32_t channel) const noexcept {
    ReadPlane<Depth::To24Float>(Plane(channel), first, count, values);
}

template <typename Depth>
void TPlanarWaveSample<Depth>::Set24BitFloatSamples(int32_t first, int32_t count,
                                                    const float* values, int32_t channel) noexcept {
    WritePlane<Depth::From24Float>(Plane(channel), first, count, values);
}

template <typename Depth>
void TPlanarWaveSample<Depth>::Get16BitFrames(int32_t first, int32_t count,
                                              int16_t* values) const noexcept {
    ReadFrames<Depth::To16>(fLeft.Get(), fRight.Get(), first, count, values);
}

template <typename Depth>
void TPlanarWaveSample<Depth>::Set16BitFrames(int32_t first, int32_t count,
                                              const int16_t* values) noexcept {
    WriteFrames<Depth::From16>(fLeft.Get(), fRight.Get(), first, count, values);
}

template <typename Depth>
int32_t TPlanarWaveSample<Depth>::Get24BitSample(int32_t frame, int32_t channel) const noexcept {
    return Depth::To24(Plane(channel)[frame]);
}

template <typename Depth>
void TPlanarWaveSample<Depth>::Set24BitSample(int32_t frame, int32_t value,
                                              int32_t channel) noexcept {
    Plane(channel)[frame] = Depth::From24(value);
}

template <typename Depth>
void TPlanarWaveSample<Depth>::Get24BitSamples(int32_t first, int32_t count, int32_t* values,
                                               int32_t channel) const noexcept {
    ReadPlane<Depth::To24>(Plane(channel), first, count, values);
}

template <typename Depth>
void TPlanarWaveSample<Depth>::Set24BitSamples(int32_t first, int32_t count, const int32_t* values,
                                               int32_t channel) noexcept {
    WritePlane<Depth::From24>(Plane(channel), first, count, values);
}

template <typename Depth>
void TPlanarWaveSample<Depth>::Get24BitFrames(int32_t first, int32_t count,
                                              int32_t* values) const noexcept {
    ReadFrames<Depth::To24>(fLeft.Get(), fRight.Get(), first, count, values);
}

template <typename Depth>
void TPlanarWaveSample<Depth>::Set24BitFrames(int32_t first, int32_t count,
                                              const int32_t* values) noexcept {
    WriteFrames<Depth::From24>(fLeft.Get(), fRight.Get(), first, count, values);
}

template <typename Depth>
void TPlanarWaveSample<Depth>::Get24BitFloatFrames(int32_t first, int32_t count,
                                                   float* values) const noexcept {
    ReadFrames<Depth::To24Float>(fLeft.Get(), fRight.Get(), first, count, values);
}

template <typename Depth>
void TPlanarWaveSample<Depth>::Set24BitFloatFrames(int32_t first, int32_t count,
                                                   const float* values) noexcept {
    WriteFrames<Depth::From24Float>(fLeft.Get(), fRight.Get(), first, count, values);
}

template <typename Depth>
int32_t TPlanarWaveSample<Depth>::FindZeroCrossing(int32_t frame) const noexcept {
    const int64_t frameCount = GetFrameCount();
    if (frameCount == 0) {
        return 0;
    }
    const int64_t origin = std::clamp<int64_t>(frame, 0, frameCount);
    const int64_t upper = std::min(origin + kQuietWalk, frameCount);
    const int64_t lower = std::max<int64_t>(origin - kQuietWalk, 0);
    const Value* left = fLeft.Get();
    // A mono sample follows its one plane twice, which changes nothing.
    const Value* right = IsStereo() ? fRight.Get() : left;

    const auto isQuiet = [](int64_t value) {
        return -Depth::kQuietLevel < value && value < Depth::kQuietLevel;
    };
    const auto isQuietAt = [&](int64_t at) { return isQuiet(left[at]) || isQuiet(right[at]); };
    const auto isCrossing = [&](int64_t from, int64_t to) {
        return HaveOppositeSigns(left[from], left[to]) || HaveOppositeSigns(right[from], right[to]);
    };

    int64_t forward = origin;
    int64_t backward = origin;
    while (true) {
        if (isQuietAt(forward) || forward >= upper) {
            return static_cast<int32_t>(forward);
        }
        ++forward;
        if (isCrossing(forward - 1, forward)) {
            return static_cast<int32_t>(forward);
        }
        if (isQuietAt(backward) || backward <= lower) {
            return static_cast<int32_t>(backward);
        }
        --backward;
        if (isCrossing(backward + 1, backward)) {
            return static_cast<int32_t>(backward + 1); // the frame behind the crossing
        }
    }
}

template class TPlanarWaveSample<C16BitDepth>;
template class TPlanarWaveSample<C24BitDepth>;

} // namespace NSLOPDLL

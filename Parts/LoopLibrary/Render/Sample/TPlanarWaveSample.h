#pragma once

#include "LoopLibrary/Render/Sample/CABCWaveSample.h"
#include "LoopLibrary/Render/Sample/CSamplePlane.h"
#include "Support/Threads/RealTime.h"

namespace NSLOPDLL {

/// The accessors of both depths, written once over the conversions of a `Depth`:
///   Depth::Value, Depth::kBits, Depth::kQuietLevel, and between Value and each view
///   ToFloat/FromFloat, To16/From16, To24/From24, To24Float/From24Float.
template <typename Depth>
class TPlanarWaveSample : public CABCWaveSample {
public:
    using Value = typename Depth::Value;

    /// The frames as they are stored; null for the right plane of a mono sample.
    Value* Plane(int32_t channel) noexcept {
        return channel == kChannel_Left ? fLeft.Get() : fRight.Get();
    }

    void ReplaceChannelFrom(const CABCWaveSample& source, int32_t channel) override;
    float GetFloatSample(int32_t frame, int32_t channel) const noexcept override;
    void SetFloatSample(int32_t frame, float value, int32_t channel) noexcept override;
    void GetFloatSamples(int32_t first, int32_t count, float* values,
                         int32_t channel) const noexcept LOOP_REALTIME override;
    void SetFloatSamples(int32_t first, int32_t count, const float* values,
                         int32_t channel) noexcept override;
    void Prefetch(int64_t first, int32_t count) const noexcept LOOP_REALTIME override;
    int16_t Get16BitSample(int32_t frame, int32_t channel) const noexcept override;
    void Set16BitSample(int32_t frame, int16_t value, int32_t channel) noexcept override;
    void Get16BitSamples(int32_t first, int32_t count, int16_t* values,
                         int32_t channel) const noexcept override;
    void Set16BitSamples(int32_t first, int32_t count, const int16_t* values,
                         int32_t channel) noexcept override;
    float Get24BitFloatSample(int32_t frame, int32_t channel) const noexcept override;
    void Set24BitFloatSample(int32_t frame, float value, int32_t channel) noexcept override;
    void Get24BitFloatSamples(int32_t first, int32_t count, float* values,
                              int32_t channel) const noexcept override;
    void Set24BitFloatSamples(int32_t first, int32_t count, const float* values,
                              int32_t channel) noexcept override;
    void Get16BitFrames(int32_t first, int32_t count, int16_t* values) const noexcept override;
    void Set16BitFrames(int32_t first, int32_t count, const int16_t* values) noexcept override;
    int32_t Get24BitSample(int32_t frame, int32_t channel) const noexcept override;
    void Set24BitSample(int32_t frame, int32_t value, int32_t channel) noexcept override;
    void Get24BitSamples(int32_t first, int32_t count, int32_t* values,
                         int32_t channel) const noexcept override;
    void Set24BitSamples(int32_t first, int32_t count, const int32_t* values,
                         int32_t channel) noexcept override;
    void Get24BitFrames(int32_t first, int32_t count, int32_t* values) const noexcept override;
    void Set24BitFrames(int32_t first, int32_t count, const int32_t* values) noexcept override;
    void Get24BitFloatFrames(int32_t first, int32_t count, float* values) const noexcept override;
    void Set24BitFloatFrames(int32_t first, int32_t count, const float* values) noexcept override;
    int32_t FindZeroCrossing(int32_t frame) const noexcept override;

protected:
    TPlanarWaveSample(uint32_t sampleRate, uint32_t frameCount, bool stereo);
    TPlanarWaveSample(const TPlanarWaveSample& other);

private:
    const Value* Plane(int32_t channel) const noexcept {
        return channel == kChannel_Left ? fLeft.Get() : fRight.Get();
    }

    CSamplePlane<Value> fLeft;
    CSamplePlane<Value> fRight; // absent in a mono sample
};

} // namespace NSLOPDLL

#pragma once

#include "LoopLibrary/Render/Sample/CWaveSamplePreview.h"
#include "Support/Threads/RealTime.h"

#include <cstdint>
#include <memory>

namespace NSLOPDLL {

/// Channel numbers of the accessors: 1 selects the left plane, any other value the right one.
constexpr int32_t kChannel_Left = 1;
constexpr int32_t kChannel_Right = 2;

constexpr uint32_t kSampleLoopMode_None = 1;
constexpr uint32_t kSampleLoopMode_Forward = 2;

/// The audio of a loop or of a rendered slice: one or two planes of integer frames with a rate and
/// an optional loop range. The accessors convert between the stored depth and four views:
///   Float        normalized; reading divides by 2^15 or 2^23, writing multiplies by 2^15 - 1 or
///                2^23 - 1. The asymmetry is part of the sound.
///   16Bit        signed 16-bit integers
///   24Bit        signed 24-bit integers in 32-bit words
///   24BitFloat   floats in 24-bit scale
///
/// Bulk forms take a first frame and a count and do nothing for a count of 0 or less; `Frames`
/// forms are interleaved left, right and need a stereo sample. No accessor tests a frame index or
/// whether the right plane exists: that is the caller's duty. Each plane ends in one readable frame
/// of silence behind its last frame.
///
/// Filled once by one thread; from then on any number of threads may call what is const. The const
/// accessors are safe on the render thread: they neither allocate, lock nor throw.
class CABCWaveSample {
public:
    virtual ~CABCWaveSample();

    /// Takes the left plane of `source`, which must be of the same concrete class, as channel 2;
    /// or, for any other `channel`, as the left plane, the old one becoming the right. A shorter
    /// source is continued with silence. The sample is stereo afterwards. On std::bad_alloc nothing
    /// has changed.
    virtual void ReplaceChannelFrom(const CABCWaveSample& source, int32_t channel) = 0;

    virtual float GetFloatSample(int32_t frame, int32_t channel) const noexcept = 0;
    /// Rounds half away from zero and clips to the depth; not-a-number stores 0.
    virtual void SetFloatSample(int32_t frame, float value, int32_t channel) noexcept = 0;
    virtual void GetFloatSamples(int32_t first, int32_t count, float* values,
                                 int32_t channel) const noexcept LOOP_REALTIME = 0;
    virtual void SetFloatSamples(int32_t first, int32_t count, const float* values,
                                 int32_t channel) noexcept = 0;

    /// Has the processor fetch frames of both channels that will be read soon; changes nothing
    /// else. Any range will do: what lies outside the sample is left out.
    virtual void Prefetch(int64_t first, int32_t count) const noexcept LOOP_REALTIME = 0;

    virtual int16_t Get16BitSample(int32_t frame, int32_t channel) const noexcept = 0;
    virtual void Set16BitSample(int32_t frame, int16_t value, int32_t channel) noexcept = 0;
    virtual void Get16BitSamples(int32_t first, int32_t count, int16_t* values,
                                 int32_t channel) const noexcept = 0;
    virtual void Set16BitSamples(int32_t first, int32_t count, const int16_t* values,
                                 int32_t channel) noexcept = 0;

    virtual float Get24BitFloatSample(int32_t frame, int32_t channel) const noexcept = 0;
    /// Truncates toward zero; clips to 24 bits, not-a-number stores 0.
    virtual void Set24BitFloatSample(int32_t frame, float value, int32_t channel) noexcept = 0;
    virtual void Get24BitFloatSamples(int32_t first, int32_t count, float* values,
                                      int32_t channel) const noexcept = 0;
    virtual void Set24BitFloatSamples(int32_t first, int32_t count, const float* values,
                                      int32_t channel) noexcept = 0;

    virtual void Get16BitFrames(int32_t first, int32_t count, int16_t* values) const noexcept = 0;
    virtual void Set16BitFrames(int32_t first, int32_t count, const int16_t* values) noexcept = 0;

    virtual int32_t Get24BitSample(int32_t frame, int32_t channel) const noexcept = 0;
    virtual void Set24BitSample(int32_t frame, int32_t value, int32_t channel) noexcept = 0;
    virtual void Get24BitSamples(int32_t first, int32_t count, int32_t* values,
                                 int32_t channel) const noexcept = 0;
    virtual void Set24BitSamples(int32_t first, int32_t count, const int32_t* values,
                                 int32_t channel) noexcept = 0;

    virtual void Get24BitFrames(int32_t first, int32_t count, int32_t* values) const noexcept = 0;
    virtual void Set24BitFrames(int32_t first, int32_t count, const int32_t* values) noexcept = 0;
    virtual void Get24BitFloatFrames(int32_t first, int32_t count,
                                     float* values) const noexcept = 0;
    virtual void Set24BitFloatFrames(int32_t first, int32_t count,
                                     const float* values) noexcept = 0;

    /// Walks outward from `frame`, at most 25000 frames each way, to a place where a cut is quiet:
    /// a level under about 3 percent of full scale, or a change of sign. 0 for an empty sample.
    virtual int32_t FindZeroCrossing(int32_t frame) const noexcept = 0;

    uint32_t GetSampleRate() const noexcept LOOP_REALTIME { return fSampleRate; }
    uint32_t GetFrameCount() const noexcept LOOP_REALTIME { return fFrameCount; }
    uint32_t GetBitDepth() const noexcept { return fBitDepth; }
    bool IsStereo() const noexcept LOOP_REALTIME { return fStereo; }
    uint32_t GetLoopMode() const noexcept { return fLoopMode; }
    int32_t GetLoopStart() const noexcept LOOP_REALTIME { return fLoopStart; }
    int32_t GetLoopEnd() const noexcept LOOP_REALTIME { return fLoopEnd; }
    bool HasLoop() const noexcept { return fLoopSet; }

    /// These change what is told about the planes, never the planes: a count above the one of the
    /// construction, or stereo on a mono sample, makes the accessors read what is not there.
    void SetFrameCount(uint32_t frameCount) noexcept { fFrameCount = frameCount; }
    void SetStereo(bool stereo) noexcept { fStereo = stereo; }

    /// The range in frames, the end behind the last; at first the whole sample. Only a mode makes
    /// it a loop that HasLoop tells of. Nothing holds the range against the frame count.
    void SetLoopStart(int32_t start) noexcept { fLoopStart = start; }
    void SetLoopEnd(int32_t end) noexcept { fLoopEnd = end; }
    void SetLoop(uint32_t mode, int32_t start, int32_t end) noexcept;
    void SetLoopMode(uint32_t mode) noexcept;

    /// Builds the picture of the present audio; one frame is read once. Replaces an older picture.
    void CreatePreview();
    /// Null before CreatePreview.
    const CWaveSamplePreview* GetPreview() const noexcept { return fPreview.get(); }

protected:
    CABCWaveSample(uint32_t sampleRate, uint32_t frameCount, bool stereo,
                   uint32_t bitDepth) noexcept;
    CABCWaveSample(const CABCWaveSample& other);
    CABCWaveSample& operator=(const CABCWaveSample&) = delete;

private:
    void FillPreviewPeaks(int32_t channel, int32_t entryCount, int16_t* peaks) const noexcept;

    uint32_t fSampleRate; // frames per second
    uint32_t fFrameCount;
    uint32_t fBitDepth; // 16 or 24
    bool fStereo;
    std::unique_ptr<CWaveSamplePreview> fPreview;
    bool fLoopSet = false;
    uint32_t fLoopMode = kSampleLoopMode_None;
    int32_t fLoopStart = 0;
    int32_t fLoopEnd; // frame behind the range
};

/// A silent sample of `frameCount` frames (0 to 2^31 - 1): 16 bits for a depth of 8 or 16, 24 bits
/// for any other. The planes are untouched zero pages, so that memory is used only where something
/// is written. Raises std::bad_alloc.
std::unique_ptr<CABCWaveSample> CreateWaveSample(uint32_t sampleRate, uint32_t frameCount,
                                                 bool stereo, uint32_t bitDepth);

/// A deep copy of the same concrete class; null for a class other than the two of this library.
std::unique_ptr<CABCWaveSample> CloneWaveSample(const CABCWaveSample& sample);

} // namespace NSLOPDLL

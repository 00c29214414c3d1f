#pragma once

#include "LoopLibrary/Codec/TWIPChannelState.h"
#include "LoopLibrary/Codec/TWIPForms.h"

#include <cstdint>

namespace NSLOPDLL {

// The one virtual function is not a destructor: nobody deletes a decoder through this class.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// Decodes TWIP, the lossless audio codec of LOP2 files, from a span of 32-bit words in memory.
///
/// A stream has no header, no frames and no end mark: one object decodes one stream from its first
/// sample, in any number of calls, and the caller knows how many frames there are. Corrupt data is
/// not detected but by running out of words; it yields wrong samples, and values are then good
/// modulo 2^31. After any exception the object is of no further use.
///
/// Not thread-safe. Allocates nothing.
class COptimizedTWIPDecompressor {
public:
    COptimizedTWIPDecompressor() = default;
    COptimizedTWIPDecompressor(const COptimizedTWIPDecompressor&) = delete;
    COptimizedTWIPDecompressor& operator=(const COptimizedTWIPDecompressor&) = delete;

    /// Decodes `frameCount` frames, none if it is below 1. Samples go to `out16`, as the low 16
    /// bits, when it is not null, and sign-extended to `out32` otherwise: `frameCount` values.
    void DecompressMono(int32_t frameCount, int16_t* out16, int32_t* out32);

    /// As `DecompressMono`, but each frame is a pair of samples: twice `frameCount` values. One
    /// stream is either mono or stereo throughout.
    void DecompressStereo(int32_t frameCount, int16_t* out16, int32_t* out32);

    /// Decodes `frameCount` frames into a plane for each channel, mono if `right` is null. `Sample`
    /// is int16_t or int32_t; samples are stored as by the two functions above.
    template <class Sample>
    void DecompressPlanes(int32_t frameCount, Sample* left, Sample* right) {
        Decompress(frameCount, TTWIPOutput<Sample>{left, right, 1});
    }

    /// Makes `wordCount` words the span, as they stand in the stream (most significant byte first),
    /// and drops what is left of the current word. The words are borrowed until they are used up or
    /// replaced.
    void SetWords(int32_t wordCount, const uint32_t* words);

protected:
    /// Called when a bit is needed and the span is used up; must set a span of at least one word
    /// or throw. This one throws `NSLichen::XOutOfItems` with "TWIP decompressor underflow".
    virtual void Underflow();

private:
    class CBitReader;
    class CChannel;

    template <class Sample>
    void Decompress(int32_t frameCount, const TTWIPOutput<Sample>& output);
    template <int32_t kChannels, class Sample>
    int64_t DecodePlainly(int64_t done, int64_t frameCount, const TTWIPOutput<Sample>& output,
                          bool toTheEnd);

    TWIPChannelState fChannels[6]; // the first two are in use
    STWIPSpan fSpan;
};

#pragma GCC diagnostic pop

} // namespace NSLOPDLL

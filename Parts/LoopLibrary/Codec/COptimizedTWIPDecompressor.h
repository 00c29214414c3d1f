#pragma once

#include "LoopLibrary/Codec/TWIPChannelState.h"

#include <cstdint>

namespace NSLOPDLL {

// The one virtual function is no destructor: nobody deletes a decoder through this class.
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

    /// Makes `wordCount` words in native byte order the span, and drops what is left of the
    /// current word. The words are borrowed until they are used up or replaced.
    void SetWords(int32_t wordCount, const uint32_t* words);

protected:
    /// Called when a bit is needed and the span is used up; must set a span of at least one word
    /// or throw. This one throws `NSLichen::XOutOfItems` with "TWIP decompressor underflow".
    virtual void Underflow();

private:
    class CBitReader;
    class CChannel;

    template <class Sample>
    void DecodeMono(int32_t frameCount, Sample* out);
    template <class Sample>
    void DecodeStereo(int32_t frameCount, Sample* out);

    TWIPChannelState fChannels[6]; // the first two are in use
    const uint32_t* fNextWord = nullptr;
    const uint32_t* fEndOfWords = nullptr;
    int32_t fBitsLeft = 0;
    uint32_t fCurrentWord = 0; // the next bit is bit 31
};

#pragma GCC diagnostic pop

} // namespace NSLOPDLL

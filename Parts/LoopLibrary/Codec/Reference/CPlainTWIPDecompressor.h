#pragma once

#include "LoopLibrary/Codec/Reference/CInputBitStream.h"
#include "LoopLibrary/Codec/TWIPChannelState.h"
#include "PorterPackage/Core/Media/CMedia.h"

#include <cstdint>

namespace NSLOPDLL {

/// The codec in its plainest form, one sample at a time: the reference that the fast decoder is
/// held against. Same calls and same samples for every stream of 16- or 24-bit audio; on damaged
/// streams the two differ, since this one works modulo 2^32 and the fast one modulo 2^31.
class CPlainTWIPDecompressor {
public:
    /// `channels` is 1 or 2. The media stands at the first byte of the stream and extends to its
    /// end; it must outlive the decoder.
    CPlainTWIPDecompressor(NSPorter::CMedia* media, int32_t channels);

    /// Decodes `frameCount` frames, interleaved if stereo, to `out16` if not null, else to `out32`.
    /// Throws `std::domain_error` with "bad format" when the media has no whole word left for a bit
    /// that is needed.
    void Decompress(int32_t frameCount, int16_t* out16, int32_t* out32);

private:
    int32_t DecodeSample(TWIPChannelState& channel);
    uint32_t ReadBits(uint32_t count);

    CInputBitStream fStream;
    int64_t fWordCount; // whole words in the media
    int32_t fChannelCount;
    TWIPChannelState fChannels[2];
};

} // namespace NSLOPDLL

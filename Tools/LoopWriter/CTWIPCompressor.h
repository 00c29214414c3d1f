#pragma once

#include "LoopLibrary/Codec/TWIPChannelState.h"

#include <cstdint>
#include <vector>

namespace NSLoopWriter {

/// Makes TWIP streams: the inverse of the decoder's state machine.
///
/// One object makes one stream, mono or stereo throughout, in any number of calls; the stream does
/// not depend on how the frames are split into calls. Samples are signed and of at most 24 bits.
class CTWIPCompressor {
public:
    /// Throws `std::domain_error` in the one case that the format cannot express: full-scale 24-bit
    /// audio at half the sample rate whose decayed sums wrap around to almost nothing.
    void CompressMono(int64_t frameCount, const int32_t* samples);
    void CompressStereo(int64_t frameCount, const int32_t* left, const int32_t* right);

    /// The whole stream, its last word filled up with zeros. Nothing may be compressed afterwards.
    std::vector<uint8_t> TakeStream();

private:
    void EncodeSample(NSLOPDLL::TWIPChannelState& channel, int32_t sample);
    void WriteBits(uint32_t count, uint32_t bits);

    std::vector<uint8_t> fBytes;
    uint64_t fPending = 0;      // bits not yet in fBytes, at the bottom
    uint32_t fPendingCount = 0; // below 32 between calls
    NSLOPDLL::TWIPChannelState fChannels[2];
};

/// The stream of whole planes; stereo unless `right` is empty, when both are of one length.
std::vector<uint8_t> CompressTWIP(const std::vector<int32_t>& left,
                                  const std::vector<int32_t>& right);

} // namespace NSLoopWriter

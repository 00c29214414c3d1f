#pragma once

#include "LoopLibrary/Codec/TWIPChannelState.h"
#include "PorterPackage/Core/Media/CMedia.h"

#include <cstdint>
#include <vector>

namespace NSLoopWriter {

/// Makes TWIP streams: the inverse of the decoder's state machine.
///
/// One object makes one stream, mono or stereo throughout, in any number of calls; the stream does
/// not depend on how the frames are split into calls. Samples are signed and of at most 24 bits.
class CTWIPCompressor {
public:
    /// Collects the stream in memory; see `TakeStream`.
    CTWIPCompressor() = default;
    /// Writes the stream at the cursor of a media, which must outlive the compressor.
    explicit CTWIPCompressor(NSPorter::CMedia* media);
    CTWIPCompressor(const CTWIPCompressor&) = delete;
    CTWIPCompressor& operator=(const CTWIPCompressor&) = delete;

    /// Throws `std::domain_error` in the one case that the format cannot express: full-scale 24-bit
    /// audio at half the sample rate whose decayed sums wrap around to almost nothing.
    void CompressMono(int64_t frameCount, const int32_t* samples);
    void CompressStereo(int64_t frameCount, const int32_t* left, const int32_t* right);
    void CompressStereoInterleaved(int64_t frameCount, const int32_t* frames);

    /// Fills the last word up with zeros and writes all that is still held. Not done by the
    /// destructor. Nothing may be compressed afterwards.
    void Finish();

    /// Bits of code words so far, padding not counted.
    int64_t GetBitCount() const { return fBitCount; }

    /// The whole stream of a compressor without a media, after `Finish`.
    std::vector<uint8_t> TakeStream();

private:
    void EncodeSample(NSLOPDLL::TWIPChannelState& channel, int32_t sample);
    void WriteBits(uint32_t count, uint32_t bits);
    void SendToMedia();

    NSPorter::CMedia* fMedia = nullptr; // borrowed
    std::vector<uint8_t> fBytes;        // with a media: what it has not been given yet
    uint64_t fPending = 0;              // bits not yet in fBytes, at the bottom
    uint32_t fPendingCount = 0;         // below 32 between calls
    int64_t fBitCount = 0;
    NSLOPDLL::TWIPChannelState fChannels[2];
};

/// The stream of whole planes; stereo unless `right` is empty, when both are of one length.
std::vector<uint8_t> CompressTWIP(const std::vector<int32_t>& left,
                                  const std::vector<int32_t>& right);

} // namespace NSLoopWriter

#include "LoopLibrary/Codec/Reference/CPlainTWIPDecompressor.h"

#include "Failure/Raising/Raise.h"

#include <bit>
#include <stdexcept>

namespace NSLOPDLL {

CPlainTWIPDecompressor::CPlainTWIPDecompressor(NSPorter::CMedia* media, int32_t channels)
    : fStream(media), fWordCount(media->BytesLeft() / 4), fChannelCount(channels) {}

void CPlainTWIPDecompressor::Decompress(int32_t frameCount, int16_t* out16, int32_t* out32) {
    for (int32_t frame = 0; frame < frameCount; ++frame) {
        uint32_t sample = 0;
        for (int32_t i = 0; i < fChannelCount; ++i) {
            sample += static_cast<uint32_t>(DecodeSample(fChannels[i]));
            if (out16 != nullptr) {
                *out16++ = static_cast<int16_t>(sample);
            } else {
                *out32++ = static_cast<int32_t>(sample);
            }
        }
    }
}

int32_t CPlainTWIPDecompressor::DecodeSample(TWIPChannelState& channel) {
    const int32_t order = channel.ChooseOrder();
    uint32_t step = channel.GetStep(order);
    uint32_t folded = 0;
    for (uint32_t zeros = 0; ReadBits(1) == 0;) {
        folded += step;
        if (++zeros % 7 == 0) {
            step *= 4;
        }
    }
    // Truncated binary code of the range below the step; a step of 0, which no sound stream has,
    // leaves nothing to read.
    if (step > 1) {
        const uint32_t bitCount = static_cast<uint32_t>(std::bit_width(step)) - 1;
        const uint32_t shortCodes = (2u << bitCount) - step;
        uint32_t remainder = ReadBits(bitCount);
        if (remainder >= shortCodes) {
            remainder = 2 * remainder - shortCodes + ReadBits(1);
        }
        folded += remainder;
    }
    channel.Advance(order, TWIPChannelState::Unfold(folded));
    return channel.fValue[0];
}

// The stream itself would go on for ever behind its end.
uint32_t CPlainTWIPDecompressor::ReadBits(uint32_t count) {
    const int64_t bitsLeft =
        (fWordCount - fStream.GetWordsConsumed()) * 32 - fStream.GetBitsUsedInWord();
    if (count > bitsLeft) {
        NSLichen::Raise(std::domain_error("bad format"));
    }
    return count == 1 ? fStream.ReadBit() : fStream.ReadBits(count);
}

} // namespace NSLOPDLL

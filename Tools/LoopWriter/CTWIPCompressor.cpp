#include "LoopWriter/CTWIPCompressor.h"

#include "Failure/Raising/Raise.h"
#include "PorterPackage/Core/Bytes/ByteOrder.h"

#include <bit>
#include <stdexcept>
#include <utility>

namespace NSLoopWriter {

namespace {

int32_t Difference(int32_t a, int32_t b) {
    return static_cast<int32_t>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}

} // namespace

void CTWIPCompressor::CompressMono(int64_t frameCount, const int32_t* samples) {
    for (int64_t i = 0; i < frameCount; ++i) {
        EncodeSample(fChannels[0], samples[i]);
    }
}

void CTWIPCompressor::CompressStereo(int64_t frameCount, const int32_t* left,
                                     const int32_t* right) {
    for (int64_t i = 0; i < frameCount; ++i) {
        EncodeSample(fChannels[0], left[i]);
        EncodeSample(fChannels[1], Difference(right[i], left[i]));
    }
}

void CTWIPCompressor::EncodeSample(NSLOPDLL::TWIPChannelState& channel, int32_t sample) {
    const int32_t order = channel.ChooseOrder();
    int32_t value = sample;
    for (int32_t i = 0; i < order; ++i) {
        value = Difference(value, channel.fValue[i]);
    }

    uint32_t rest = NSLOPDLL::TWIPChannelState::Fold(value);
    uint32_t step = channel.GetStep(order);
    for (uint32_t zeros = 1; rest > 0 && rest >= step; ++zeros) {
        if (step == 0) {
            NSLichen::Raise(std::domain_error("sample cannot be coded"));
        }
        rest -= step;
        WriteBits(1, 0);
        if (zeros % 7 == 0) {
            step *= 4;
        }
    }
    WriteBits(1, 1);

    // Truncated binary code: the lowest values of the range below the step take one bit less.
    if (step > 1) {
        const uint32_t bitCount = static_cast<uint32_t>(std::bit_width(step)) - 1;
        const uint32_t shortCodes = (2u << bitCount) - step;
        if (rest < shortCodes) {
            WriteBits(bitCount, rest);
        } else {
            WriteBits(bitCount + 1, rest + shortCodes);
        }
    }
    channel.Advance(order, value);
}

// `count` from 1 to 32.
void CTWIPCompressor::WriteBits(uint32_t count, uint32_t bits) {
    fPending = fPending << count | bits;
    fPendingCount += count;
    if (fPendingCount >= 32) {
        fPendingCount -= 32;
        const auto word = NSPorter::SplitBytes(static_cast<uint32_t>(fPending >> fPendingCount));
        fBytes.insert(fBytes.end(), word.begin(), word.end());
    }
}

std::vector<uint8_t> CTWIPCompressor::TakeStream() {
    if (fPendingCount > 0) {
        WriteBits(32 - fPendingCount, 0);
    }
    return std::move(fBytes);
}

std::vector<uint8_t> CompressTWIP(const std::vector<int32_t>& left,
                                  const std::vector<int32_t>& right) {
    CTWIPCompressor compressor;
    if (right.empty()) {
        compressor.CompressMono(static_cast<int64_t>(left.size()), left.data());
    } else {
        if (right.size() != left.size()) {
            NSLichen::Raise(std::invalid_argument("planes of different lengths"));
        }
        compressor.CompressStereo(static_cast<int64_t>(left.size()), left.data(), right.data());
    }
    return compressor.TakeStream();
}

} // namespace NSLoopWriter

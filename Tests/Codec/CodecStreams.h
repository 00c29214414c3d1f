// Streams, bit by bit, and the decoders over them, for the tests of this folder.
#pragma once

#include "LoopLibrary/Codec/COptimizedTWIPDecompressorFromMedia.h"
#include "LoopLibrary/Codec/Reference/CPlainTWIPDecompressor.h"
#include "LoopLibrary/Codec/TWIPForms.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace CodecTests {

using Bytes = std::vector<uint8_t>;
using Samples = std::vector<int32_t>;

// A suite that runs once with each form of the decoder in use.
class CEachTWIPForm : public testing::TestWithParam<NSLOPDLL::STWIPForm> {
protected:
    CEachTWIPForm() { NSLOPDLL::ForceTWIPForm(GetParam().fName); }
    ~CEachTWIPForm() override { NSLOPDLL::ForceTWIPForm(""); }
};

inline std::string NameOfForm(const testing::TestParamInfo<NSLOPDLL::STWIPForm>& info) {
    return info.param.fName;
}

// '0' and '1' are bits, anything else is there for the eye; zeros fill the last word up.
inline Bytes BytesOfBits(const std::string& text) {
    std::string bits;
    for (const char c : text) {
        if (c == '0' || c == '1') {
            bits += c;
        }
    }
    bits.resize((bits.size() + 31) / 32 * 32, '0');
    Bytes bytes(bits.size() / 8);
    for (size_t i = 0; i < bits.size(); ++i) {
        bytes[i / 8] = static_cast<uint8_t>(bytes[i / 8] << 1 | (bits[i] == '1' ? 1 : 0));
    }
    return bytes;
}

// As they stand in the stream.
inline std::vector<uint32_t> WordsOfBytes(const Bytes& bytes) {
    std::vector<uint32_t> words(bytes.size() / 4);
    std::memcpy(words.data(), bytes.data(), words.size() * 4);
    return words;
}

inline NSPorter::CMemoryMedia MediaOf(const Bytes& bytes) {
    return {static_cast<int64_t>(bytes.size()), bytes.data()};
}

inline void Decompress(NSLOPDLL::COptimizedTWIPDecompressor& decoder, int32_t channels,
                       int32_t frameCount, int16_t* out16, int32_t* out32) {
    if (channels == 1) {
        decoder.DecompressMono(frameCount, out16, out32);
    } else {
        decoder.DecompressStereo(frameCount, out16, out32);
    }
}

// In two calls, since any runs of frames that a form takes at once end with a call.
inline Samples DecodeFast(const Bytes& bytes, int32_t channels, int32_t frameCount) {
    NSPorter::CMemoryMedia media = MediaOf(bytes);
    NSLOPDLL::COptimizedTWIPDecompressorFromMedia decoder(&media);
    Samples samples(static_cast<size_t>(frameCount) * static_cast<size_t>(channels));
    const int32_t split = frameCount / 3;
    Decompress(decoder, channels, split, nullptr, samples.data());
    Decompress(decoder, channels, frameCount - split, nullptr,
               samples.data() + static_cast<size_t>(split) * static_cast<size_t>(channels));
    return samples;
}

inline Samples DecodePlain(const Bytes& bytes, int32_t channels, int32_t frameCount) {
    NSPorter::CMemoryMedia media = MediaOf(bytes);
    NSLOPDLL::CPlainTWIPDecompressor decoder(&media, channels);
    Samples samples(static_cast<size_t>(frameCount) * static_cast<size_t>(channels));
    decoder.Decompress(frameCount, nullptr, samples.data());
    return samples;
}

} // namespace CodecTests

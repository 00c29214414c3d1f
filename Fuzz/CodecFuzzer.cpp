#include "Fuzz/CByteSource.h"
#include "Fuzz/Promise.h"

#include "LoopLibrary/Codec/COptimizedTWIPDecompressorFromMedia.h"
#include "LoopWriter/CTWIPCompressor.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"

#include <stdexcept>

namespace {

constexpr int32_t kMostFrames = 20000;
constexpr size_t kMostSamples = 2 * size_t{kMostFrames};

NSPorter::CMemoryMedia Borrow(const std::vector<uint8_t>& bytes) {
    return {static_cast<int64_t>(bytes.size()), bytes.data()};
}

void Decode(NSLOPDLL::COptimizedTWIPDecompressor& decoder, bool stereo, int32_t frames,
            int16_t* narrow, int32_t* wide) {
    if (stereo) {
        decoder.DecompressStereo(frames, narrow, wide);
    } else {
        decoder.DecompressMono(frames, narrow, wide);
    }
}

// Any bytes decode to something or end with "bad format", in time that their number bounds.
void DecodeGarbage(const std::vector<uint8_t>& bytes, bool stereo, bool wide) {
    NSPorter::CMemoryMedia media = Borrow(bytes);
    NSLOPDLL::COptimizedTWIPDecompressorFromMedia decoder(&media);
    std::vector<int32_t> out32(kMostSamples);
    std::vector<int16_t> out16(kMostSamples);
    int16_t* const narrow = wide ? nullptr : out16.data();
    try {
        Decode(decoder, stereo, kMostFrames, narrow, out32.data());
    } catch (const std::domain_error&) {
    }
}

// Signals that bend to the input: steps, runs and noise of 24 bits.
std::vector<int32_t> MakeSignal(CByteSource& source, size_t frames) {
    std::vector<int32_t> signal;
    int32_t value = 0;
    while (signal.size() < frames && !source.IsEmpty()) {
        const uint8_t kind = source.Byte();
        if (kind < 64) {
            signal.insert(signal.end(), std::min<size_t>(kind, frames - signal.size()), value);
        } else if (kind < 192) {
            value += static_cast<int8_t>(source.Byte()) * (kind - 63);
        } else {
            value = static_cast<int32_t>(source.Word(3)) - 0x800000;
        }
        value = std::clamp(value, -0x800000, 0x7FFFFF);
        signal.push_back(value);
    }
    return signal;
}

void RoundTrip(CByteSource& source, bool stereo) {
    const std::vector<int32_t> left = MakeSignal(source, 2000);
    std::vector<int32_t> right = stereo ? MakeSignal(source, left.size()) : left;
    right.resize(stereo ? left.size() : 0);
    std::vector<uint8_t> stream;
    try {
        stream = NSLoopWriter::CompressTWIP(left, right);
    } catch (const std::domain_error&) {
        return; // the one signal that the format cannot express
    }
    const auto frames = static_cast<int32_t>(left.size());
    std::vector<int32_t> decoded(left.size() * (stereo ? 2 : 1));
    NSPorter::CMemoryMedia media = Borrow(stream);
    NSLOPDLL::COptimizedTWIPDecompressorFromMedia decoder(&media);
    const int32_t split = frames / 3;
    Decode(decoder, stereo, split, nullptr, decoded.data());
    Decode(decoder, stereo, frames - split, nullptr,
           decoded.data() + static_cast<size_t>(split) * (stereo ? 2 : 1));
    for (size_t i = 0; i < left.size(); ++i) {
        PROMISE(decoded[stereo ? 2 * i : i] == left[i]);
        PROMISE(!stereo || decoded[2 * i + 1] == right[i]);
    }
}

} // namespace

// The decoder on garbage, and on legal streams against the signal itself.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
    CByteSource source(bytes, size);
    const uint8_t mode = source.Byte();
    if ((mode & 1) != 0) {
        RoundTrip(source, (mode & 2) != 0);
    } else {
        DecodeGarbage(source.Rest(), (mode & 2) != 0, (mode & 4) != 0);
    }
    return 0;
}

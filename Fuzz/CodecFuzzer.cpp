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

struct SDecoded {
    bool fReachedTheEnd = false;
    std::vector<int16_t> fNarrow;
    std::vector<int32_t> fWide;
    bool operator==(const SDecoded&) const = default;
};

SDecoded DecodeToTheEnd(const std::vector<uint8_t>& bytes, bool stereo, bool wide) {
    NSPorter::CMemoryMedia media = Borrow(bytes);
    NSLOPDLL::COptimizedTWIPDecompressorFromMedia decoder(&media);
    SDecoded decoded;
    decoded.fNarrow.resize(wide ? 0 : kMostSamples);
    decoded.fWide.resize(wide ? kMostSamples : 0);
    try {
        Decode(decoder, stereo, kMostFrames, wide ? nullptr : decoded.fNarrow.data(),
               decoded.fWide.data());
        decoded.fReachedTheEnd = true;
    } catch (const std::domain_error&) {
    }
    return decoded;
}

// Any bytes decode to something or end with "bad format", in time that their number bounds, and in
// each form to the same up to the same sample.
void DecodeGarbage(const std::vector<uint8_t>& bytes, bool stereo, bool wide) {
    NSLOPDLL::ForceTWIPForm("plain");
    const SDecoded plain = DecodeToTheEnd(bytes, stereo, wide);
    for (const NSLOPDLL::STWIPForm& form : NSLOPDLL::GetTWIPForms().subspan(1)) {
        NSLOPDLL::ForceTWIPForm(form.fName);
        PROMISE(DecodeToTheEnd(bytes, stereo, wide) == plain);
    }
}

// Steps of any size that bend to the input, within 24 bits.
std::vector<int32_t> MakeSignal(const std::vector<uint8_t>& bytes) {
    std::vector<int32_t> signal;
    int32_t value = 0;
    for (const uint8_t byte : bytes) {
        const int32_t step = static_cast<int8_t>(byte & 0xF0) * (1 << (byte & 0x0F));
        value = std::clamp(value + step, -0x800000, 0x7FFFFF);
        signal.push_back(value);
    }
    return signal;
}

void RoundTrip(CByteSource& source, bool stereo) {
    const std::vector<int32_t> left = MakeSignal(source.Take(2000));
    std::vector<int32_t> right = MakeSignal(source.Take(2000));
    right.resize(stereo ? left.size() : 0);
    std::vector<uint8_t> stream;
    try {
        stream = NSLoopWriter::CompressTWIP(left, right);
    } catch (const std::domain_error&) {
        return; // the one signal that the format cannot express
    }
    const auto frames = static_cast<int32_t>(left.size());
    const int32_t split = frames / 3;
    for (const NSLOPDLL::STWIPForm& form : NSLOPDLL::GetTWIPForms()) {
        NSLOPDLL::ForceTWIPForm(form.fName);
        std::vector<int32_t> decoded(left.size() * (stereo ? 2 : 1));
        NSPorter::CMemoryMedia media = Borrow(stream);
        NSLOPDLL::COptimizedTWIPDecompressorFromMedia decoder(&media);
        Decode(decoder, stereo, split, nullptr, decoded.data());
        Decode(decoder, stereo, frames - split, nullptr,
               decoded.data() + static_cast<size_t>(split) * (stereo ? 2 : 1));
        for (size_t i = 0; i < left.size(); ++i) {
            PROMISE(decoded[stereo ? 2 * i : i] == left[i]);
            PROMISE(!stereo || decoded[2 * i + 1] == right[i]);
        }
    }
}

} // namespace

// Each form of the decoder on garbage against the plain form, and on legal streams against the
// signal.
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

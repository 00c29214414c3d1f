#include "LoopWriter/CTWIPCompressor.h"
#include "LoopWriter/SyntheticLoop.h"
#include "PorterPackage/Core/COwnedMemoryMedia.h"
#include "Tests/Codec/CodecStreams.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace CodecTests {
namespace {

using NSLoopWriter::Plane;

struct SSignal {
    std::string fName;
    Plane fLeft;
    Plane fRight; // empty: mono
};

Samples Interleaved(const SSignal& signal) {
    if (signal.fRight.empty()) {
        return signal.fLeft;
    }
    Samples samples;
    for (size_t i = 0; i < signal.fLeft.size(); ++i) {
        samples.push_back(signal.fLeft[i]);
        samples.push_back(signal.fRight[i]);
    }
    return samples;
}

std::vector<SSignal> MakeSignals() {
    const size_t frames = 30000; // more than one filling of the decoder's buffer at 24 bits
    std::vector<SSignal> signals;
    for (const int32_t bits : {16, 24}) {
        const std::vector<std::pair<std::string, Plane>> planes = {
            {"noise", NSLoopWriter::MakeNoise(frames, bits, 1)},
            {"silence", Plane(frames)},
            {"half the rate", NSLoopWriter::MakeFullScaleSquare(frames, bits, 1)},
            {"square", NSLoopWriter::MakeFullScaleSquare(frames, bits, 50)},
            {"sine", NSLoopWriter::MakeSine(frames, bits, 3000)},
            {"transients", NSLoopWriter::MakeTransients(frames, bits, 777)},
            {"quiet noise", NSLoopWriter::MakeNoise(frames, 3, 2)},
        };
        for (size_t i = 0; i < planes.size(); ++i) {
            const auto& other = planes[(i + 1) % planes.size()];
            const std::string name = std::to_string(bits) + " bits, " + planes[i].first;
            signals.push_back({name, planes[i].second, {}});
            signals.push_back({name + " and " + other.first, planes[i].second, other.second});
        }
        // Opposite full scale: the difference takes a bit more than a sample.
        Plane opposite = planes[2].second;
        std::rotate(opposite.begin(), opposite.begin() + 1, opposite.end());
        signals.push_back({std::to_string(bits) + " bits, opposite", planes[2].second, opposite});
    }
    NSLoopWriter::SDrumLoopOptions options;
    options.fStereo = true;
    options.fBitDepth = 24;
    NSLoopWriter::SDrumLoop drums = NSLoopWriter::MakeDrumLoop(options);
    signals.push_back({"drums", std::move(drums.fLeft), std::move(drums.fRight)});
    return signals;
}

TEST(TWIPRoundTrip, BothDecodersGiveTheAudioBack) {
    for (const SSignal& signal : MakeSignals()) {
        SCOPED_TRACE(signal.fName);
        const Bytes bytes = NSLoopWriter::CompressTWIP(signal.fLeft, signal.fRight);
        const int32_t channels = signal.fRight.empty() ? 1 : 2;
        const int32_t frames = static_cast<int32_t>(signal.fLeft.size());
        const Samples expected = Interleaved(signal);
        EXPECT_TRUE(DecodeFast(bytes, channels, frames) == expected);
        EXPECT_TRUE(DecodePlain(bytes, channels, frames) == expected);
    }
}

SSignal ShortSignal(bool stereo) {
    Plane left = NSLoopWriter::MakeTransients(200, 24, 60);
    const Plane noise = NSLoopWriter::MakeNoise(100, 16, 5);
    std::copy(noise.begin(), noise.end(), left.begin() + 50);
    return {"", left, stereo ? NSLoopWriter::MakeSine(200, 24, 9000) : Plane()};
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"
// Hands the words out in spans of a fixed size.
class CFedDecompressor final : public NSLOPDLL::COptimizedTWIPDecompressor {
public:
    CFedDecompressor(const std::vector<uint32_t>& words, size_t spanSize)
        : fWords(words), fSpanSize(spanSize) {}

private:
    void Underflow() override {
        const size_t count = std::min(fSpanSize, fWords.size() - fTaken);
        if (count == 0) {
            COptimizedTWIPDecompressor::Underflow();
        }
        fSpan.assign(fWords.begin() + static_cast<std::ptrdiff_t>(fTaken),
                     fWords.begin() + static_cast<std::ptrdiff_t>(fTaken + count));
        fTaken += count;
        SetWords(static_cast<int32_t>(count), fSpan.data());
    }

    const std::vector<uint32_t>& fWords;
    size_t fSpanSize;
    size_t fTaken = 0;
    std::vector<uint32_t> fSpan; // a span alone in its block, so that reading beyond it is found
};
#pragma GCC diagnostic pop

// Lots of one frame split the stream at every boundary, most of them within a word.
TEST(TWIPRoundTrip, AnySpansAndAnySplitIntoCallsGiveTheSame) {
    for (const int32_t channels : {1, 2}) {
        const SSignal signal = ShortSignal(channels == 2);
        const Samples expected = Interleaved(signal);
        const Bytes bytes = NSLoopWriter::CompressTWIP(signal.fLeft, signal.fRight);
        const std::vector<uint32_t> words = WordsOfBytes(bytes);
        for (const int32_t lot : {1, 7, 200}) {
            NSPorter::COwnedMemoryMedia written;
            NSLoopWriter::CTWIPCompressor compressor(&written);
            for (int32_t done = 0; done < 200; done += lot) {
                const int32_t count = std::min(lot, 200 - done);
                if (channels == 1) {
                    compressor.CompressMono(count, signal.fLeft.data() + done);
                } else {
                    compressor.CompressStereo(count, signal.fLeft.data() + done,
                                              signal.fRight.data() + done);
                }
            }
            compressor.Finish();
            ASSERT_EQ(Bytes(written.GetData(), written.GetData() + written.GetLength()), bytes);

            for (size_t spanSize = 1; spanSize <= words.size(); ++spanSize) {
                CFedDecompressor decoder(words, spanSize);
                Samples samples(expected.size());
                int32_t* out = samples.data();
                for (int32_t done = 0; done < 200; done += lot, out += ptrdiff_t{lot} * channels) {
                    Decompress(decoder, channels, std::min(lot, 200 - done), nullptr, out);
                }
                ASSERT_EQ(samples, expected) << "spans of " << spanSize << ", lots of " << lot;
            }
        }
    }
}

} // namespace
} // namespace CodecTests

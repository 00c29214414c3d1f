#include "LoopWriter/CTWIPCompressor.h"
#include "LoopWriter/SyntheticLoop.h"
#include "Tests/Codec/CodecStreams.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace CodecTests {
namespace {

class TWIPRoundTrip : public CEachTWIPForm {};
INSTANTIATE_TEST_SUITE_P(Form, TWIPRoundTrip, testing::ValuesIn(NSLOPDLL::GetTWIPForms()),
                         NameOfForm);

using NSLoopWriter::Plane;
using NSLOPDLL::COptimizedTWIPDecompressorFromMedia;

// Left and right; mono without a right plane.
using Signal = std::pair<Plane, Plane>;

Samples Interleaved(const Signal& signal) {
    const auto& [left, right] = signal;
    Samples samples;
    for (size_t i = 0; i < left.size(); ++i) {
        samples.push_back(left[i]);
        if (!right.empty()) {
            samples.push_back(right[i]);
        }
    }
    return samples;
}

std::vector<Signal> MakeSignals(int32_t bits) {
    const size_t frames = 30000; // more than one filling of the decoder's buffer at 24 bits
    const std::vector<Plane> planes = {
        NSLoopWriter::MakeNoise(frames, bits, 1),
        Plane(frames),
        NSLoopWriter::MakeFullScaleSquare(frames, bits, 1),
        NSLoopWriter::MakeFullScaleSquare(frames, bits, 50),
        NSLoopWriter::MakeSine(frames, bits, 3000),
        NSLoopWriter::MakeTransients(frames, bits, 777),
        NSLoopWriter::MakeNoise(frames, 3, 2),
    };
    std::vector<Signal> signals;
    for (size_t i = 0; i < planes.size(); ++i) {
        signals.emplace_back(planes[i], Plane());
        signals.emplace_back(planes[i], planes[(i + 1) % planes.size()]);
    }
    // Opposite full scale: the difference takes a bit more than a sample.
    Plane opposite = planes[2];
    std::rotate(opposite.begin(), opposite.begin() + 1, opposite.end());
    signals.emplace_back(planes[2], opposite);
    return signals;
}

TEST_P(TWIPRoundTrip, BothDecodersGiveTheAudioBack) {
    for (const int32_t bits : {16, 24}) {
        const std::vector<Signal> signals = MakeSignals(bits);
        for (size_t i = 0; i < signals.size(); ++i) {
            SCOPED_TRACE(testing::Message() << bits << " bits, signal " << i);
            const auto& [left, right] = signals[i];
            const Bytes bytes = NSLoopWriter::CompressTWIP(left, right);
            const int32_t channels = right.empty() ? 1 : 2;
            const int32_t frames = static_cast<int32_t>(left.size());
            const Samples expected = Interleaved(signals[i]);
            EXPECT_TRUE(DecodeFast(bytes, channels, frames) == expected);
            EXPECT_TRUE(DecodePlain(bytes, channels, frames) == expected);
        }
    }
}

Signal ShortSignal(bool stereo) {
    Plane left = NSLoopWriter::MakeTransients(200, 24, 60);
    const Plane noise = NSLoopWriter::MakeNoise(100, 16, 5);
    std::copy(noise.begin(), noise.end(), left.begin() + 50);
    return {left, stereo ? NSLoopWriter::MakeSine(200, 24, 9000) : Plane()};
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
TEST_P(TWIPRoundTrip, AnySpansAndAnySplitIntoCallsGiveTheSame) {
    for (const int32_t channels : {1, 2}) {
        const Signal signal = ShortSignal(channels == 2);
        const auto& [left, right] = signal;
        const Samples expected = Interleaved(signal);
        const Bytes bytes = NSLoopWriter::CompressTWIP(left, right);
        const std::vector<uint32_t> words = WordsOfBytes(bytes);
        for (const int32_t lot : {1, 7, 200}) {
            NSLoopWriter::CTWIPCompressor compressor;
            for (int32_t done = 0; done < 200; done += lot) {
                const int32_t count = std::min(lot, 200 - done);
                if (channels == 1) {
                    compressor.CompressMono(count, left.data() + done);
                } else {
                    compressor.CompressStereo(count, left.data() + done, right.data() + done);
                }
            }
            ASSERT_EQ(compressor.TakeStream(), bytes);

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

// What a form makes of bytes that no encoder wrote, and how far it comes, is what the plain form
// makes of them. Mostly zeros give long code words, mostly ones silence.
TEST_P(TWIPRoundTrip, DamagedStreamsGiveTheSameInEachForm) {
    NSLoopWriter::CNoise noise(3);
    const auto random = [&](uint32_t limit) { return static_cast<uint32_t>(noise.Next()) % limit; };
    for (int32_t round = 0; round < 2000; ++round) {
        Bytes bytes(size_t{4} * (random(400) + 2));
        const uint32_t usual = round % 4 == 1 ? 0 : 0xFF;
        for (uint8_t& byte : bytes) {
            const bool isUsual = round % 4 != 0 && random(round % 4 == 3 ? 60 : 7) != 0;
            byte = static_cast<uint8_t>(isUsual ? usual : random(256));
        }
        const int32_t channels = round / 4 % 2 + 1;
        const auto decode = [&] {
            NSPorter::CMemoryMedia media = MediaOf(bytes);
            COptimizedTWIPDecompressorFromMedia decoder(&media);
            Samples samples(static_cast<size_t>(channels) * bytes.size() * 2, 7);
            try {
                Decompress(decoder, channels, static_cast<int32_t>(bytes.size() * 2), nullptr,
                           samples.data());
            } catch (const std::domain_error&) {
                samples.push_back(8);
            }
            return samples;
        };
        const Samples samples = decode();
        NSLOPDLL::ForceTWIPForm("plain");
        ASSERT_TRUE(decode() == samples) << "round " << round;
        NSLOPDLL::ForceTWIPForm(GetParam().fName);
    }
}

} // namespace
} // namespace CodecTests

#include "Failure/XClasses.h"
#include "LoopWriter/CTWIPCompressor.h"
#include "LoopWriter/SyntheticLoop.h"
#include "Tests/Codec/CodecStreams.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace CodecTests {
namespace {

using NSLOPDLL::COptimizedTWIPDecompressor;
using NSLOPDLL::COptimizedTWIPDecompressorFromMedia;
using NSLOPDLL::CPlainTWIPDecompressor;

struct SWorkedStream {
    const char* fBits;
    int32_t fChannels;
    Samples fSamples;
};

// Worked out by hand: the first step is 60, with 5 bits below its highest and 4 short codes.
const SWorkedStream kWorkedStreams[] = {
    {"1 00000", 1, {0}},
    {"1 00001", 1, {-1}},
    {"1 00010", 1, {1}},
    {"1 00100 0", 1, {2}},                      // 4
    {"1 00100 1", 1, {-3}},                     // 5
    {"1 11111 1", 1, {-30}},                    // 59
    {"0 1 00000", 1, {30}},                     // 60
    {"0000000 1 0000000", 1, {210}},            // 7 * 60, then a range of 240 with 16 short codes
    {"0000000 0 1 0000001", 1, {-331}},         // 7 * 60 + 240 + 1
    {"0000000 0000000 1 000000000", 1, {1050}}, // 7 * 60 + 7 * 240, then a range of 960
    // 1000 is 2000 folded: 13 zeros are worth 1860, 140 of 240 is a long code. All sums are then
    // 4480, so the next is a sample again, step 105: ten zeros, 5 of 420. The first difference has
    // the least sum of 4340 then, step 102: 7 is 14 folded, of 26 short codes.
    {"0000000000000 1 10011100  0000000000 1 00000101  1 001110", 1, {1000, 1000, 1007}},
    // The second channel is its difference to the first.
    {"1 00010  1 00001", 2, {1, 0}},
    {"1 00001  1 00010", 2, {-1, 0}},
};

TEST(TWIP, WorkedStreams) {
    for (const SWorkedStream& stream : kWorkedStreams) {
        SCOPED_TRACE(stream.fBits);
        const Bytes bytes = BytesOfBits(stream.fBits);
        const int32_t frames = static_cast<int32_t>(stream.fSamples.size()) / stream.fChannels;
        EXPECT_EQ(DecodeFast(bytes, stream.fChannels, frames), stream.fSamples);
        EXPECT_EQ(DecodePlain(bytes, stream.fChannels, frames), stream.fSamples);
        NSLoopWriter::CTWIPCompressor compressor;
        if (stream.fChannels == 1) {
            compressor.CompressMono(frames, stream.fSamples.data());
        } else {
            compressor.CompressStereoInterleaved(frames, stream.fSamples.data());
        }
        compressor.Finish();
        EXPECT_EQ(compressor.TakeStream(), bytes);
    }
}

TEST(TWIP, SilenceAndEqualChannelsSettleAtOneBit) {
    const int32_t settled = 400;
    NSLoopWriter::CTWIPCompressor silence;
    const Samples zeros(2 * settled);
    silence.CompressMono(settled, zeros.data());
    const int64_t before = silence.GetBitCount();
    silence.CompressMono(settled, zeros.data());
    EXPECT_EQ(silence.GetBitCount() - before, settled);

    const Samples noise = NSLoopWriter::MakeNoise(2 * settled, 16, 1);
    NSLoopWriter::CTWIPCompressor mono;
    NSLoopWriter::CTWIPCompressor stereo;
    int64_t bits[2];
    for (int64_t& count : bits) {
        const int64_t start = mono.GetBitCount() - stereo.GetBitCount();
        const int32_t* half = noise.data() + (&count - bits) * settled;
        mono.CompressMono(settled, half);
        stereo.CompressStereo(settled, half, half);
        count = start - (mono.GetBitCount() - stereo.GetBitCount());
    }
    EXPECT_EQ(bits[1], settled);
}

TEST(TWIP, SixteenBitsKeepTheLowBitsOfASample) {
    // 30000 on the left, and 10000 more on the right.
    const Samples left = {30000, -30000};
    const Samples right = {40000, -40000};
    const Bytes bytes = NSLoopWriter::CompressTWIP(left, right);
    NSPorter::CMemoryMedia media = MediaOf(bytes);
    COptimizedTWIPDecompressorFromMedia decoder(&media);
    int16_t samples[4];
    int32_t untouched = 77;
    decoder.DecompressStereo(2, samples, &untouched);
    EXPECT_EQ((std::vector<int16_t>(samples, samples + 4)),
              (std::vector<int16_t>{30000, 40000 - 65536, -30000, 65536 - 40000}));
    EXPECT_EQ(untouched, 77);
}

TEST(TWIP, NoFramesNeedNoWords) {
    COptimizedTWIPDecompressor decoder;
    int32_t untouched = 77;
    decoder.DecompressMono(0, nullptr, &untouched);
    decoder.DecompressStereo(-1, nullptr, &untouched);
    EXPECT_EQ(untouched, 77);
}

TEST(TWIP, ASpanThatRunsOutIsAnUnderflow) {
    const std::vector<uint32_t> words = WordsOfBytes(BytesOfBits(kWorkedStreams[10].fBits));
    COptimizedTWIPDecompressor decoder;
    decoder.SetWords(static_cast<int32_t>(words.size()), words.data());
    int32_t samples[8];
    decoder.DecompressMono(3, nullptr, samples);
    EXPECT_EQ(samples[2], 1007);
    try {
        decoder.DecompressMono(5, nullptr, samples);
        FAIL() << "decoded what is not there";
    } catch (const NSLichen::XOutOfItems& failure) {
        EXPECT_STREQ(failure.what(), "TWIP decompressor underflow");
    }
}

template <class Decode>
void ExpectBadFormat(Decode decode) {
    try {
        decode();
        FAIL() << "decoded what is not there";
    } catch (const std::domain_error& failure) {
        EXPECT_STREQ(failure.what(), "bad format");
    }
}

// The words hold just what the samples need, so that any more need a word that is not there.
TEST(TWIP, BytesBehindTheLastWholeWordAreNoData) {
    Samples samples = NSLoopWriter::MakeNoise(999, 24, 3);
    NSLoopWriter::CTWIPCompressor compressor;
    compressor.CompressMono(999, samples.data());
    compressor.Finish();
    const Bytes whole = compressor.TakeStream();
    for (size_t cut = 0; cut < 4; ++cut) {
        SCOPED_TRACE(cut);
        Bytes bytes = whole;
        bytes.resize(whole.size() + cut, 0xFF);
        EXPECT_EQ(DecodeFast(bytes, 1, 999), samples);
        EXPECT_EQ(DecodePlain(bytes, 1, 999), samples);
        ExpectBadFormat([&] { DecodeFast(bytes, 1, 1100); });
        ExpectBadFormat([&] { DecodePlain(bytes, 1, 1100); });
        bytes.resize(whole.size() - 4 + cut);
        ExpectBadFormat([&] { DecodeFast(bytes, 1, 999); });
        ExpectBadFormat([&] { DecodePlain(bytes, 1, 999); });
    }
    for (size_t size = 0; size < 4; ++size) {
        ExpectBadFormat([&] { DecodeFast(Bytes(size, 0xFF), 2, 1); });
        ExpectBadFormat([&] { DecodePlain(Bytes(size, 0xFF), 2, 1); });
    }
}

// Runs of zeros that no sound stream has: from 91 on the step has its highest bit set, from 105 on
// it is 0. A run ends, and so does a decode, whatever the words hold.
TEST(TWIP, OverlongRunsOfZerosEnd) {
    for (int32_t zeros : {83, 84, 90, 91, 97, 98, 104, 105, 106, 112, 1000}) {
        for (const char fill : {'0', '1'}) {
            SCOPED_TRACE(zeros);
            const std::string bits = std::string(static_cast<size_t>(zeros), '0') + '1';
            const Bytes bytes = BytesOfBits(bits + std::string(40000 - bits.size(), fill));
            if (fill == '0') {
                ExpectBadFormat([&] { DecodeFast(bytes, 1, 1000); });
                ExpectBadFormat([&] { DecodePlain(bytes, 1, 1000); });
            } else {
                DecodeFast(bytes, 1, 1000);
                DecodePlain(bytes, 1, 1000);
            }
            // Before any arithmetic on the value the two agree but for the lost top bit.
            EXPECT_EQ(static_cast<uint32_t>(DecodeFast(bytes, 1, 1)[0]) << 1,
                      static_cast<uint32_t>(DecodePlain(bytes, 1, 1)[0]) << 1);
        }
    }
}

TEST(TWIP, AStepOfNothingReadsNoRemainder) {
    // 105 zeros: the value is the sum alone, 7 * 60 * (1 + 4 + 16 + ... + 4^14) modulo 2^32, and
    // the bit behind the 1 begins the next sample.
    uint32_t folded = 0;
    for (uint32_t i = 0, step = 60; i < 15; ++i, step *= 4) {
        folded += 7 * step;
    }
    const Samples samples = DecodePlain(BytesOfBits(std::string(105, '0') + "1"), 1, 1);
    ASSERT_EQ(folded % 2, 0u);
    EXPECT_EQ(samples[0], static_cast<int32_t>(folded >> 1));
}

TEST(TWIP, RandomBitsEnd) {
    for (uint32_t seed = 1; seed <= 50; ++seed) {
        NSLoopWriter::CNoise noise(seed);
        Bytes bytes(2000);
        std::generate(bytes.begin(), bytes.end(),
                      [&] { return static_cast<uint8_t>(noise.Next() & noise.Next()); });
        for (const int32_t channels : {1, 2}) {
            ExpectBadFormat([&] { DecodeFast(bytes, channels, 20000); });
            ExpectBadFormat([&] { DecodePlain(bytes, channels, 20000); });
        }
    }
}

} // namespace
} // namespace CodecTests

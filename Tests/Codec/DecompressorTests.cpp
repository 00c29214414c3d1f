#include "Failure/Classes/XClasses.h"
#include "LoopWriter/CTWIPCompressor.h"
#include "LoopWriter/SyntheticLoop.h"
#include "Tests/Codec/CodecStreams.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace CodecTests {
namespace {

class TWIP : public CEachTWIPForm {};
INSTANTIATE_TEST_SUITE_P(Form, TWIP, testing::ValuesIn(NSLOPDLL::GetTWIPForms()), NameOfForm);

using NSLOPDLL::COptimizedTWIPDecompressor;
using NSLOPDLL::COptimizedTWIPDecompressorFromMedia;

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
    // -13 is 25 folded. All sums are then 2505, whose step is just below 59: 20 of 58 is long.
    {"1 01110 1  1 01101 0", 1, {-13, 10}},
    // The second channel is its difference to the first.
    {"1 00010  1 00001", 2, {1, 0}},
    {"1 00001  1 00010", 2, {-1, 0}},
};

TEST_P(TWIP, WorkedStreams) {
    for (const SWorkedStream& stream : kWorkedStreams) {
        SCOPED_TRACE(stream.fBits);
        const Bytes bytes = BytesOfBits(stream.fBits);
        const int32_t frames = static_cast<int32_t>(stream.fSamples.size()) / stream.fChannels;
        EXPECT_EQ(DecodeFast(bytes, stream.fChannels, frames), stream.fSamples);
        EXPECT_EQ(DecodePlain(bytes, stream.fChannels, frames), stream.fSamples);
        const Samples& samples = stream.fSamples;
        EXPECT_EQ(stream.fChannels == 1 ? NSLoopWriter::CompressTWIP(samples, {})
                                        : NSLoopWriter::CompressTWIP({samples[0]}, {samples[1]}),
                  bytes);
    }
}

TEST_P(TWIP, SilenceSettlesAtOneBitAndSoDoesAChannelEqualToTheOther) {
    using NSLoopWriter::CompressTWIP;
    EXPECT_EQ(CompressTWIP(Samples(720), {}).size() - CompressTWIP(Samples(400), {}).size(), 40U);
    const auto sizeOfEqual = [](size_t frames) {
        const Samples noise = NSLoopWriter::MakeNoise(frames, 16, 1);
        return CompressTWIP(noise, noise).size() - CompressTWIP(noise, {}).size();
    };
    EXPECT_NEAR(static_cast<double>(sizeOfEqual(32400) - sizeOfEqual(400)), 4000.0, 8.0); // words
}

TEST_P(TWIP, SixteenBitsKeepTheLowBitsOfASample) {
    // 30000 on the left, and 10000 more on the right.
    const Bytes bytes = NSLoopWriter::CompressTWIP({30000, -30000}, {40000, -40000});
    NSPorter::CMemoryMedia media = MediaOf(bytes);
    std::vector<int16_t> samples(4);
    int32_t untouched = 77;
    COptimizedTWIPDecompressorFromMedia(&media).DecompressStereo(2, samples.data(), &untouched);
    EXPECT_EQ(samples, (std::vector<int16_t>{30000, 40000 - 65536, -30000, 65536 - 40000}));
    EXPECT_EQ(untouched, 77);
}

template <class X, class Decode>
void ExpectFailure(const char* words, Decode decode) {
    try {
        decode();
        FAIL() << "decoded what is not there";
    } catch (const X& failure) {
        EXPECT_STREQ(failure.what(), words);
    }
}

TEST_P(TWIP, ASpanThatRunsOutIsAnUnderflow) {
    const std::vector<uint32_t> words = WordsOfBytes(BytesOfBits(kWorkedStreams[10].fBits));
    COptimizedTWIPDecompressor decoder;
    decoder.SetWords(static_cast<int32_t>(words.size()), words.data());
    int32_t samples[8];
    decoder.DecompressMono(3, nullptr, samples);
    EXPECT_EQ(samples[2], 1007);
    ExpectFailure<NSLichen::XOutOfItems>("TWIP decompressor underflow",
                                         [&] { decoder.DecompressMono(5, nullptr, samples); });
}

void ExpectBadFormat(const Bytes& bytes, int32_t channels, int32_t frames) {
    ExpectFailure<std::domain_error>("bad format", [&] { DecodeFast(bytes, channels, frames); });
    ExpectFailure<std::domain_error>("bad format", [&] { DecodePlain(bytes, channels, frames); });
}

// The words hold just what the samples need, so that any more need a word that is not there.
TEST_P(TWIP, BytesBehindTheLastWholeWordAreNoData) {
    const Samples samples = NSLoopWriter::MakeNoise(999, 24, 3);
    const Bytes whole = NSLoopWriter::CompressTWIP(samples, {});
    for (size_t cut = 0; cut < 4; ++cut) {
        SCOPED_TRACE(cut);
        Bytes bytes = whole;
        bytes.resize(whole.size() + cut, 0xFF);
        EXPECT_EQ(DecodeFast(bytes, 1, 999), samples);
        ExpectBadFormat(bytes, 1, 1100);
        bytes.resize(whole.size() - 4 + cut);
        ExpectBadFormat(bytes, 1, 999);
    }
    for (size_t size = 0; size < 4; ++size) {
        ExpectBadFormat(Bytes(size, 0xFF), 2, 1);
    }
}

// Runs of zeros that no sound stream has: from 91 on the step has its highest bit set, from 105 on
// it is 0. A run ends, and so does a decode, whatever the words hold.
TEST_P(TWIP, OverlongRunsOfZerosEnd) {
    for (int32_t zeros : {83, 84, 90, 91, 97, 98, 104, 105, 106, 112, 1000}) {
        for (const char fill : {'0', '1'}) {
            SCOPED_TRACE(zeros);
            const std::string bits = std::string(static_cast<size_t>(zeros), '0') + '1';
            const Bytes bytes = BytesOfBits(bits + std::string(size_t{40000} - bits.size(), fill));
            if (fill == '0') {
                ExpectBadFormat(bytes, 1, 1000);
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

TEST_P(TWIP, AStepOfNothingReadsNoRemainder) {
    // 105 zeros: 7 * 60 * (1 + 4 + ... + 4^14) is 140 * (2^30 - 1), modulo 2^32 as good as -140.
    const Bytes bytes = BytesOfBits(std::string(105, '0') + "1");
    EXPECT_EQ(DecodePlain(bytes, 1, 1), Samples{0x7FFFFFFF - 69});
    EXPECT_EQ(DecodeFast(bytes, 1, 1), Samples{-70});
}

// Each channel holds 2097151860 folded: 7 * 60 * (1 + 4 + ... + 4^10), six times 60 * 4^11 and no
// remainder.
TEST_P(TWIP, ASumOfDamagedChannelsIsGoodModulo2To31) {
    const std::string value = std::string(83, '0') + '1' + std::string(27, '0');
    EXPECT_EQ(DecodeFast(BytesOfBits(value + value), 2, 1),
              (Samples{1048575930, 2 * 1048575930 - 0x7FFFFFFF - 1}));
}

} // namespace
} // namespace CodecTests

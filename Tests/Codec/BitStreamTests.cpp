#include "LoopLibrary/Codec/Reference/CInputBitStream.h"
#include "LoopLibrary/Codec/Reference/COutputBitStream.h"
#include "LoopWriter/SyntheticLoop.h"
#include "PorterPackage/Core/Media/COwnedMemoryMedia.h"
#include "Tests/Codec/CodecStreams.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace CodecTests {
namespace {

using NSLOPDLL::CInputBitStream;
using NSLOPDLL::COutputBitStream;

// Random bytes, and the bits of them as a plain array to hold the streams against.
struct SRandomBits {
    explicit SRandomBits(size_t byteCount) : fNoise(7), fBytes(byteCount) {
        for (uint8_t& byte : fBytes) {
            byte = static_cast<uint8_t>(fNoise.Next());
            for (int i = 7; i >= 0; --i) {
                fBits.push_back(uint32_t{byte} >> i & 1u);
            }
        }
    }
    uint32_t Take(uint32_t count) {
        uint32_t value = 0;
        for (uint32_t i = 0; i < count; ++i) {
            value = value << 1 | fBits[fPosition++];
        }
        return value;
    }
    uint32_t Random(uint32_t limit) { return static_cast<uint32_t>(fNoise.Next()) % limit; }

    NSLoopWriter::CNoise fNoise;
    Bytes fBytes;
    std::vector<uint32_t> fBits;
    size_t fPosition = 0;
};

TEST(BitStreams, InputDeliversTheBitsInAnyPieces) {
    SRandomBits bits(3 * 4096 + 8);
    NSPorter::CMemoryMedia media = MediaOf(bits.fBytes);
    CInputBitStream stream(&media);
    EXPECT_EQ(media.GetPosition(), 0); // nothing is read early
    while (bits.fPosition + 100 < bits.fBits.size()) {
        const uint32_t count = bits.Random(32) + 1;
        const uint32_t call = bits.Random(8);
        if (call == 0) {
            EXPECT_EQ(stream.ReadBit(), bits.Take(1));
        } else if (call == 1) {
            stream.SkipBits(count);
            bits.fPosition += count;
        } else if (call == 2) {
            stream.AlignToWord();
            bits.fPosition = (bits.fPosition + 31) / 32 * 32;
        } else {
            ASSERT_EQ(stream.ReadBits(count), bits.Take(count)) << "at " << bits.fPosition;
        }
        ASSERT_EQ(stream.GetBitsUsedInWord(), bits.fPosition % 32);
        ASSERT_EQ(stream.GetWordsConsumed(), static_cast<int64_t>(bits.fPosition / 32));
    }
    // Behind the end it goes on with what the buffer's filling before the last left.
    stream.AlignToWord();
    while (stream.GetWordsConsumed() < 3 * 1024 + 2) {
        stream.ReadBits(32);
    }
    bits.fPosition = size_t{2 * 4096 + 8} * 8;
    EXPECT_EQ(stream.ReadBits(32), bits.Take(32));
    NSPorter::CMemoryMedia empty(0, bits.fBytes.data());
    EXPECT_EQ(CInputBitStream(&empty).ReadBits(32), 0u);
}

class CFailingMedia : public NSPorter::COwnedMemoryMedia {
    void WriteBytes(int64_t, int64_t, const uint8_t*) override {
        throw std::runtime_error("no room");
    }
};

TEST(BitStreams, OutputWritesTheBitsInAnyPiecesAndEndsWithAWord) {
    SRandomBits bits(2 * 4096 + 64);
    NSPorter::COwnedMemoryMedia media;
    media.WriteU16(0xABCD); // the stream begins behind it
    {
        COutputBitStream stream(&media);
        while (bits.fPosition < bits.fBits.size()) {
            const uint32_t left = static_cast<uint32_t>(bits.fBits.size() - bits.fPosition);
            const uint32_t count = std::min(left, bits.Random(32) + 1);
            const uint32_t above = count < 32 ? 0xFFFFFFFFu << count : 0; // to be ignored
            stream.WriteBits(count, bits.Take(count) | above);
            ASSERT_EQ(stream.GetBitsUsedInWord(), bits.fPosition % 32);
            ASSERT_EQ(stream.GetWordsWritten(), static_cast<int64_t>(bits.fPosition / 32));
        }
        stream.Flush();
        stream.WriteBits(3, 5);
        stream.Flush(); // fills the word up
    }                   // and writes one in any case
    bits.fBytes.insert(bits.fBytes.end(), {0xA0, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(Bytes(media.GetData() + 2, media.GetData() + media.GetLength()), bits.fBytes);

    CFailingMedia full; // its failure is dropped in the destructor alone
    COutputBitStream stream(&full);
    EXPECT_THROW(stream.Flush(), std::runtime_error);
}

} // namespace
} // namespace CodecTests

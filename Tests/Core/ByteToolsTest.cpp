#include "CoreTestTools.h"

#include "PorterPackage/Core/BitTools.h"
#include "PorterPackage/Core/ByteOrder.h"
#include "PorterPackage/Core/ExtendedFloat.h"
#include "PorterPackage/Core/SevenBitPacking.h"

#include <cmath>
#include <limits>
#include <numeric>

namespace NSPorter {

namespace {

TEST(ByteOrder, JoinsAndTakesApart) {
    EXPECT_EQ(JoinLongs(JoinWords(JoinBytes(1, 2), 0x0304), 0x85060708), 0x0102030485060708U);
    EXPECT_EQ(HighLong(0x0102030485060708), 0x01020304U);
    EXPECT_EQ(LowLong(0x0102030485060708), 0x85060708U);
    EXPECT_EQ(HighWord(0x85060708), 0x8506);
    EXPECT_EQ(LowWord(0x85060708), 0x0708);
    EXPECT_EQ(HighByte(0x8506), 0x85);
    EXPECT_EQ(LowByte(0x8506), 0x06);
    EXPECT_EQ(SplitBytes(0x85060708), (std::array<uint8_t, 4>{0x85, 6, 7, 8}));
    EXPECT_EQ(SplitNibblesHighFirst(0x9C), (std::array<uint8_t, 2>{9, 12}));
    EXPECT_EQ(SplitNibblesLowFirst(0x9C), (std::array<uint8_t, 2>{12, 9}));
    EXPECT_EQ(DecodeBCD(0x59), 59);

    uint8_t bytes[4] = {};
    EncodeLittleEndian(0x85060708, bytes);
    EXPECT_EQ(DecodeBigEndian(bytes), 0x08070685U);
    EXPECT_EQ(DecodeLittleEndian(bytes), 0x85060708U);
    EncodeNative(0x85060708, bytes);
    EXPECT_EQ(DecodeNative(bytes), std::bit_cast<uint32_t>(bytes));
    EXPECT_EQ(DecodeNative(bytes), 0x85060708U);
}

TEST(BitTools, FlagsAndSearches) {
    EXPECT_EQ(BitMask(31), 0x80000000U);
    EXPECT_TRUE(TestBit(0x10, 4));
    EXPECT_FALSE(TestBit(0x10, 5));
    EXPECT_EQ(CountBits(0xF001), 5);
    EXPECT_TRUE(HasAtMostOneBit(0) && HasAtMostOneBit(0x80000000));
    EXPECT_FALSE(HasAtMostOneBit(3));

    const uint8_t flags[8] = {1, 0, 0, 255, 0, 0, 0, 2};
    EXPECT_EQ(GatherFlags(flags), 0x89U);
    EXPECT_EQ(PackEightFlags(flags), 0x91);
    EXPECT_EQ(SumBytes(flags), 258U);
    EXPECT_EQ(FindByte(flags, 255), 3);
    EXPECT_EQ(FindByte(flags, 9), -1);
    const std::vector<uint8_t> many(40, 1);
    EXPECT_EQ(GatherFlags(many), 0xFFFFFFFFU);
}

TEST(SevenBitPacking, MovesTopBitsToTheEighthByte) {
    const uint8_t source[] = {0x81, 0x02, 0x83, 0x04, 0x05, 0x06, 0xFF, 0x80};
    const std::vector<uint8_t> packed = PackSevenBit(source);
    // Bytes 0, 2 and 6 of the first group have their top bit set, byte 0 of the second.
    EXPECT_EQ(packed, (std::vector<uint8_t>{0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x7F, 0x51, 0x00, 0,
                                            0, 0, 0, 0, 0, 0x40}));

    std::vector<uint8_t> bytes(300);
    std::iota(bytes.begin(), bytes.end(), uint8_t{100});
    for (size_t length = 0; length <= bytes.size(); ++length) {
        const std::vector<uint8_t> part(bytes.begin(),
                                        bytes.begin() + static_cast<ptrdiff_t>(length));
        const std::vector<uint8_t> stream = PackSevenBit(part);
        ASSERT_EQ(stream.size(), (length + 6) / 7 * 8);
        for (const uint8_t byte : stream) {
            ASSERT_LT(byte, 128);
        }
        ASSERT_EQ(UnpackSevenBit(stream, length), part);
    }
    EXPECT_RAISES(NSLichen::XFormatViolation, "", UnpackSevenBit(packed, 15));
    EXPECT_RAISES(NSLichen::XFormatViolation, "",
                  UnpackSevenBit(packed, std::numeric_limits<size_t>::max()));
}

TEST(ExtendedFloat, KnownEncodings) {
    struct Case {
        double fValue;
        std::array<uint8_t, kExtendedSize> fBytes;
    };
    // The rates are those that AIFF files are full of.
    for (const Case& c :
         {Case{0.0, {}}, Case{1.0, {0x3F, 0xFF, 0x80}}, Case{-0.75, {0xBF, 0xFE, 0xC0}},
          Case{44100.0, {0x40, 0x0E, 0xAC, 0x44}}, Case{48000.0, {0x40, 0x0E, 0xBB, 0x80}},
          Case{22254.5, {0x40, 0x0D, 0xAD, 0xDD, 0x00}},
          Case{2147483647.0, {0x40, 0x1D, 0xFF, 0xFF, 0xFF, 0xFE}}}) {
        EXPECT_EQ(EncodeExtended(c.fValue), c.fBytes) << c.fValue;
        EXPECT_EQ(DecodeExtended(c.fBytes), c.fValue);
    }
    // The low half of the mantissa counts from 2^-63.
    EXPECT_EQ(DecodeExtended({0x3F, 0xFF, 0, 0, 0, 0, 0x80}), 0x1p-32);
    EXPECT_EQ(EncodeExtended(-0.0), EncodeExtended(0.0));
}

TEST(ExtendedFloat, EveryMagnitudeReturns) {
    for (int exponent = -1074; exponent <= 1022; ++exponent) {
        const double power = std::ldexp(1.0, exponent);
        for (const double value : {power, -power, std::nextafter(power, 1e300),
                                   std::nextafter(power, 0.0), power * 1.7}) {
            ASSERT_EQ(DecodeExtended(EncodeExtended(value)), value) << exponent;
        }
    }
}

TEST(ExtendedFloat, BeyondDoublesRange) {
    EXPECT_EQ(DecodeExtended({0x7F, 0xFF, 0x80}), std::numeric_limits<double>::infinity());
    EXPECT_EQ(DecodeExtended({0xFF, 0xFE, 0x80}), -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(DecodeExtended({0x7F, 0xFF})));
    EXPECT_EQ(DecodeExtended({0x00, 0x01, 0x80}), 0.0);
    COwnedMemoryMedia media;
    for (const double value : {std::numeric_limits<double>::infinity(), std::nan("")}) {
        EXPECT_RAISES(NSLichen::XFormatViolation, "", media.WriteExtended(value));
    }
    EXPECT_EQ(media.GetLength(), 0);
    media.WriteExtended(44100.0);
    media.SetPosition(0);
    EXPECT_EQ(media.ReadExtended(), 44100.0);
    EXPECT_EQ(media.GetPosition(), 10);
}

} // namespace

} // namespace NSPorter

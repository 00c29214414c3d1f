#include "Tests/Core/CoreTestTools.h"

#include "PorterPackage/Core/Bytes/BitTools.h"
#include "PorterPackage/Core/Bytes/ExtendedFloat.h"
#include "PorterPackage/Core/Bytes/SevenBitPacking.h"

#include <cmath>
#include <limits>

namespace NSPorter {

TEST(BitTools, FlagsGoToTheirBits) {
    const uint8_t flags[8] = {1, 0, 0, 255, 0, 0, 0, 2};
    EXPECT_EQ(GatherFlags(flags), 0x89U);
    EXPECT_EQ(GatherFlags(std::vector<uint8_t>(40, 1)), 0xFFFFFFFFU);
    EXPECT_EQ(PackEightFlags(flags), 0x91);
}

TEST(SevenBitPacking, MovesTopBitsToTheEighthByte) {
    const uint8_t source[] = {0x81, 0x02, 0x83, 0x04, 0x05, 0x06, 0xFF, 0x80};
    // Bytes 0, 2 and 6 of the first group have their top bit set, byte 0 of the second.
    const std::vector<uint8_t> packed = {1, 2, 3, 4, 5, 6, 0x7F, 0x51, 0, 0, 0, 0, 0, 0, 0, 0x40};
    EXPECT_EQ(PackSevenBit(source), packed);
    EXPECT_EQ(UnpackSevenBit(packed, 8), std::vector<uint8_t>(source, source + 8));
    EXPECT_VIOLATION(UnpackSevenBit(packed, 15));
    EXPECT_VIOLATION(UnpackSevenBit(packed, std::numeric_limits<size_t>::max()));
}

TEST(ExtendedFloat, KnownEncodings) {
    using Bytes = std::array<uint8_t, kExtendedSize>;
    // The rates are those that AIFF files are full of.
    const std::pair<double, Bytes> table[] = {{0.0, {}},
                                              {1.0, {0x3F, 0xFF, 0x80}},
                                              {-0.75, {0xBF, 0xFE, 0xC0}},
                                              {44100.0, {0x40, 0x0E, 0xAC, 0x44}},
                                              {48000.0, {0x40, 0x0E, 0xBB, 0x80}},
                                              {2147483647.0, {0x40, 0x1D, 0xFF, 0xFF, 0xFF, 0xFE}}};
    for (const auto& [value, bytes] : table) {
        EXPECT_EQ(EncodeExtended(value), bytes) << value;
        EXPECT_EQ(DecodeExtended(bytes), value);
    }
    EXPECT_EQ(EncodeExtended(-0.0), Bytes{});
    EXPECT_EQ(DecodeExtended({0xFF, 0xFF, 0x80}), -std::numeric_limits<double>::infinity());
    EXPECT_TRUE(std::isnan(DecodeExtended({0x7F, 0xFF})));
    EXPECT_VIOLATION(EncodeExtended(std::numeric_limits<double>::infinity()));
    EXPECT_VIOLATION(EncodeExtended(std::nan("")));
    // The low half of the mantissa counts from 2^-63.
    EXPECT_EQ(DecodeExtended({0x3F, 0xFF, 0, 0, 0, 0, 0x80}), 0x1p-32);
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

} // namespace NSPorter

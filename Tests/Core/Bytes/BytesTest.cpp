#include "PorterPackage/Core/Bytes/BitTools.h"
#include "PorterPackage/Core/Bytes/ByteOrder.h"
#include "PorterPackage/Core/Bytes/CountedStrings.h"
#include "PorterPackage/Core/Bytes/ExtendedFloat.h"
#include "PorterPackage/Core/Bytes/SVersionRecord.h"
#include "PorterPackage/Core/Bytes/SevenBitPacking.h"
#include "Tests/Core/CoreTestTools.h"

#include <cmath>
#include <limits>

namespace NSPorter {

static_assert(JoinLongs(JoinWords(0x0123, 0x4567), 0x89ABCDEF) == 0x0123456789ABCDEF);
static_assert(HighLong(0x0123456789ABCDEF) == 0x01234567);
static_assert(LowLong(0x0123456789ABCDEF) == 0x89ABCDEF);
static_assert(HighWord(0x01234567) == 0x0123 && LowWord(0x01234567) == 0x4567);
static_assert(SplitNibblesHighFirst(0xA5) == std::array<uint8_t, 2>{0xA, 5});
static_assert(SplitNibblesLowFirst(0xA5) == std::array<uint8_t, 2>{5, 0xA});
static_assert(DecodeBCD(0x42) == 42 && CountBits(0xF00F) == 8 && TestBit(4, 2) && !TestBit(4, 1));
static_assert(HasAtMostOneBit(0) && HasAtMostOneBit(64) && !HasAtMostOneBit(65));

TEST(BitTools, BytesAndFlags) {
    const uint8_t flags[8] = {1, 0, 0, 255, 0, 0, 0, 2};
    EXPECT_EQ(GatherFlags(flags), 0x89U);
    EXPECT_EQ(GatherFlags(std::vector<uint8_t>(40, 1)), 0xFFFFFFFFU);
    EXPECT_EQ(PackEightFlags(flags), 0x91);
    EXPECT_EQ(SumBytes(flags), 258U);
    EXPECT_EQ(FindByte(flags, 255), 3);
    EXPECT_EQ(FindByte(flags, 9), -1);
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

static std::string LongVersion(uint32_t major, uint32_t stage, uint32_t build, uint32_t extra) {
    return "\xBC\xFF\xFF\xFF\xFF"s + BigEndian(major) + BigEndian(1) + BigEndian(2) +
           BigEndian(stage) + BigEndian(build) + BigEndian(extra);
}

static std::string LongString(const std::string& text) {
    return "\xFF\xFF\xFF\xFF\xBC\x01\0\0\0"s + BigEndian(text.size()) + text;
}

TEST(VersionRecord, BothForms) {
    const std::pair<std::string, SVersionRecord> table[] = {
        {"\xBC\x01\x02\x03\x00"s, {1, 2, 3}},          {"\xBC\xFE\x00\x00\x00"s, {254}},
        {LongVersion(255, 4, 0, 0), {255, 1, 2}},      {LongVersion(3, 4, 7, 0), {3, 1, 2, 4, 7}},
        {LongVersion(3, 4, 0, 9), {3, 1, 2, 4, 0, 9}}, {LongVersion(3, 1, 0, 0), {3, 1, 2, 1}}};
    for (const auto& [bytes, version] : table) {
        CMemoryMedia media = MediaOf(bytes);
        const SVersionRecord read = ReadVersionRecord(media);
        EXPECT_TRUE(IsSameVersion(read, version));
        EXPECT_EQ(read.fExtra, version.fExtra);
        EXPECT_EQ(media.BytesLeft(), 0);
        COwnedMemoryMedia written;
        WriteVersionRecord(written, version);
        EXPECT_EQ(BytesOf(written), bytes);
    }
    // Not all of the four bytes are 255, so 255 is the major.
    const std::string odd = "\xBC\xFF\xFF\xFF\xFE"s;
    CMemoryMedia media = MediaOf(odd);
    EXPECT_TRUE(IsSameVersion(ReadVersionRecord(media), {255, 255, 255}));
    for (const std::string& bytes : {"\xBC\x01\x02\x03"s, "\xBB\x01\x02\x03\x00"s,
                                     "\xBB\xFF\xFF\xFF\xFF"s, LongVersion(3, 4, 0, 0).substr(0, 28),
                                     LongVersion(3, 5, 0, 0), LongVersion(3, 0, 0, 0)}) {
        CMemoryMedia bad = MediaOf(bytes);
        EXPECT_VIOLATION(ReadVersionRecord(bad));
    }
}

TEST(VersionRecord, Order) {
    // From old to new.
    const std::vector<SVersionRecord> ladder = {
        {0, 9, 9},       {1, 0, 0, 1, 5}, {1, 0, 0, 2, 0}, {1, 0, 0, 2, 1}, {1, 0, 0, 3, 9},
        {1, 0, 0, 4, 7}, {1, 0, 0, 4, 8}, {1, 0, 0, 4, 0}, {1, 0, 1},       {1, 2, 0}};
    for (size_t i = 0; i < ladder.size(); ++i) {
        for (size_t j = 0; j < ladder.size(); ++j) {
            EXPECT_EQ(CompareVersions(ladder[i], ladder[j]), i <=> j) << i << " and " << j;
            EXPECT_EQ(IsAtLeast(ladder[i], ladder[j]), i >= j);
        }
    }
    EXPECT_TRUE(IsSameVersion({1, 0, 0, 4, 0, 5}, {1}));
    EXPECT_TRUE(MajorsEqual({1, 2}, {1, 3}) && !MajorsEqual({1, 2}, {2, 2}));
    EXPECT_TRUE(IsInRange({3, 9, 9}, {1, 5}, {3}));
    EXPECT_FALSE(IsInRange({4}, {1, 5}, {3}) || IsInRange({1, 4}, {1, 5}, {3}));
}

TEST(CountedString, Reads) {
    const std::pair<std::string, std::u16string> table[] = {
        {BigEndian(5) + "ab\0cd"s, u"ab"},
        {BigEndian(2) + "\x80\xE9"s, u"\u20AC\u00E9"},
        {BigEndian(4) + "a\r\nb", u"a\u2029b"},
        {BigEndian(5) + "\n\r\r\n\r", u"\u2029\u2029\u2029\u2029"},
        {LongString("a\r\nb"), u"a\r\nb"},
        {LongString("\xE2\x82\xAC\0x"s), u"\u20AC"}};
    for (const auto& [bytes, text] : table) {
        CMemoryMedia media = MediaOf(bytes);
        EXPECT_EQ(ReadCountedString(media), text);
        EXPECT_EQ(media.BytesLeft(), 0);
    }
}

TEST(CountedString, RefusesWhatTheMediaDoesNotHold) {
    for (const std::string& bytes :
         {BigEndian(3) + "ab", BigEndian(0xFFFFFFFE), LongString("abc").substr(0, 15),
          "\xFF\xFF\xFF\xFF\xBC\x01"s}) {
        CMemoryMedia media = MediaOf(bytes);
        EXPECT_VIOLATION(ReadCountedString(media));
    }
    std::string other = LongString("a");
    other[5] = 2;
    CMemoryMedia media = MediaOf(other);
    EXPECT_RAISES(NSLichen::XUnsupportedFormat, ReadCountedString(media));
    for (const std::string& bytes : {"\0\0\0"s, LongString("").substr(0, 12)}) {
        CMemoryMedia cut = MediaOf(bytes);
        EXPECT_RAISES(NSLichen::XRead, ReadCountedString(cut));
    }
}

TEST(CountedString, WritesTheShorterFormThatHoldsTheText) {
    const std::pair<std::u16string, std::string> table[] = {
        {u"", BigEndian(0)},
        {u"a\u20AC?", BigEndian(3) + "a\x80?"},
        {u"\u0416", LongString("\xD0\x96")},
        {u"a\u2029z", LongString("a\xE2\x80\xA9z")}};
    for (const auto& [text, bytes] : table) {
        COwnedMemoryMedia media;
        WriteCountedString(media, text);
        EXPECT_EQ(BytesOf(media), bytes);
        media.SetPosition(0);
        EXPECT_EQ(ReadCountedString(media), text);
    }
}

TEST(UTF8String, KeepsBelowItsLimit) {
    const std::u16string most(kUTF8StringLimit - 1, u'x');
    for (const std::u16string& text : {most, u""s, u"\u0416\0a"s}) {
        COwnedMemoryMedia media;
        WriteUTF8String(media, text);
        media.SetPosition(0);
        EXPECT_EQ(ReadUTF8String(media), text);
        EXPECT_VIOLATION(WriteUTF8String(media, most + u'x'));
    }
    for (const std::string& bytes :
         {BigEndian(16384) + std::string(16384, 'x'), BigEndian(3) + "ab"}) {
        CMemoryMedia media = MediaOf(bytes);
        EXPECT_VIOLATION(ReadUTF8String(media));
    }
}

} // namespace NSPorter

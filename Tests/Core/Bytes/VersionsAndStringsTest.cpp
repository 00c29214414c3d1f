#include "Tests/Core/CoreTestTools.h"

#include "PorterPackage/Core/Bytes/CountedStrings.h"
#include "PorterPackage/Core/Bytes/SVersionRecord.h"

namespace NSPorter {

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

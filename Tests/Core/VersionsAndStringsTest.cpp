#include "CoreTestTools.h"

#include "PorterPackage/Core/CPartialMedia.h"
#include "PorterPackage/Core/CountedStrings.h"
#include "PorterPackage/Core/SVersionRecord.h"

#include <algorithm>

namespace NSPorter {

namespace {

std::string LongVersion(uint32_t stage, uint32_t build) {
    return "\xBC\xFF\xFF\xFF\xFF"s + BigEndian(300) + BigEndian(1) + BigEndian(2) +
           BigEndian(stage) + BigEndian(build) + BigEndian(9);
}

std::string Written(const SVersionRecord& version) {
    COwnedMemoryMedia media;
    WriteVersionRecord(media, version);
    return BytesOf(media);
}

TEST(VersionRecord, BothForms) {
    struct Case {
        std::string fBytes;
        SVersionRecord fVersion;
    };
    for (const Case& c :
         {Case{"\xBC\x01\x02\x03\x00"s, {1, 2, 3}}, Case{"\xBC\xFE\x00\x00\x00"s, {254}},
          Case{LongVersion(4, 7), {300, 1, 2, 4, 7, 9}},
          Case{LongVersion(1, 0), {300, 1, 2, 1, 0, 9}}}) {
        CMemoryMedia media = MediaOf(c.fBytes);
        const SVersionRecord read = ReadVersionRecord(media);
        EXPECT_TRUE(IsSameVersion(read, c.fVersion));
        EXPECT_EQ(read.fExtra, c.fVersion.fExtra);
        EXPECT_EQ(media.BytesLeft(), 0);
        EXPECT_EQ(Written(c.fVersion), c.fBytes);
    }
    // Not all of the four bytes are 255, so 255 is the major; the last byte does not count.
    const std::string odd = "\xBC\xFF\xFF\xFF\xFE"s;
    CMemoryMedia media = MediaOf(odd);
    EXPECT_TRUE(IsSameVersion(ReadVersionRecord(media), {255, 255, 255}));
    // The writer avoids 255 in a short form, and says long what the short form cannot.
    for (const SVersionRecord& version :
         {SVersionRecord{0, 255}, SVersionRecord{1, 0, 0, 3}, SVersionRecord{1, 0, 0, 4, 1},
          SVersionRecord{1, 0, 0, 4, 0, 1}}) {
        EXPECT_EQ(Written(version).size(), 29U);
    }
}

TEST(VersionRecord, RefusesWhatIsNone) {
    for (const std::string& bytes :
         {"\xBC\x01\x02\x03"s, "\xBB\x01\x02\x03\x00"s, "\xBB\xFF\xFF\xFF\xFF"s,
          LongVersion(4, 0).substr(0, 28), LongVersion(5, 0), LongVersion(0, 0)}) {
        CMemoryMedia media = MediaOf(bytes);
        EXPECT_RAISES(NSLichen::XFormatViolation, "", ReadVersionRecord(media));
    }
}

TEST(VersionRecord, Order) {
    // From old to new.
    const std::vector<SVersionRecord> ladder = {{0, 9, 9},       {1, 0, 0, 1, 5}, {1, 0, 0, 2, 0},
                                                {1, 0, 0, 2, 1}, {1, 0, 0, 3, 9}, {1, 0, 0, 4, 7},
                                                {1, 0, 0, 4, 8}, {1, 0, 0, 4, 0}, {1, 0, 1},
                                                {1, 2, 0},       {0xFFFFFFFF}};
    for (size_t i = 0; i < ladder.size(); ++i) {
        for (size_t j = 0; j < ladder.size(); ++j) {
            EXPECT_EQ(CompareVersions(ladder[i], ladder[j]), i <=> j) << i << " and " << j;
            EXPECT_EQ(IsAtLeast(ladder[i], ladder[j]), i >= j);
        }
    }
    EXPECT_TRUE(IsSameVersion({1, 0, 0, 4, 0, 5}, {1}));
    EXPECT_TRUE(IsInRange({3, 9, 9}, {1, 5}, {3, 0, 0}));
    EXPECT_FALSE(IsInRange({4, 0, 0}, {1, 5}, {3, 0, 0}));
    EXPECT_FALSE(IsInRange({1, 4}, {1, 5}, {3}));
    EXPECT_TRUE(MajorsEqual({2, 1}, {2, 9}));
    EXPECT_FALSE(MajorsEqual({2}, {3}));
}

std::string LongString(const std::string& text) {
    return "\xFF\xFF\xFF\xFF\xBC\x01\x00\x00\x00"s + BigEndian(static_cast<uint32_t>(text.size())) +
           text;
}

TEST(CountedString, Reads) {
    struct Case {
        std::string fBytes;
        std::u16string fText;
    };
    for (const Case& c :
         {Case{BigEndian(0), u""}, Case{BigEndian(5) + "ab\0cd"s, u"ab"},
          Case{BigEndian(2) + "\x80\xE9"s, u"\u20AC\u00E9"},
          Case{BigEndian(4) + "a\r\nb", u"a\u2029b"},
          Case{BigEndian(5) + "\n\r\r\n\r", u"\u2029\u2029\u2029\u2029"}, Case{LongString(""), u""},
          Case{LongString("a\r\nb"), u"a\r\nb"}, Case{LongString("\xE2\x82\xAC\0x"s), u"\u20AC"},
          Case{LongString("\xF0\x9D\x84\x9E"), u"\U0001D11E"}}) {
        CMemoryMedia media = MediaOf(c.fBytes);
        EXPECT_EQ(ReadCountedString(media), c.fText);
        EXPECT_EQ(media.BytesLeft(), 0);
    }
}

TEST(CountedString, RefusesWhatTheMediaDoesNotHold) {
    for (const std::string& bytes :
         {BigEndian(3) + "ab", BigEndian(0xFFFFFFFE), LongString("abc").substr(0, 15),
          "\xFF\xFF\xFF\xFF\xBC\x01"s, LongString("a\xC3")}) {
        CMemoryMedia media = MediaOf(bytes);
        EXPECT_THROW(ReadCountedString(media), NSLichen::XFormatViolation);
    }
    std::string other = LongString("a");
    other[5] = 2;
    CMemoryMedia media = MediaOf(other);
    EXPECT_RAISES(NSLichen::XUnsupportedFormat, "", ReadCountedString(media));

    for (const std::string& bytes : {"\0\0\0"s, LongString("").substr(0, 12)}) {
        CMemoryMedia parent = MediaOf(bytes);
        CPartialMedia view(&parent, 0, parent.GetLength());
        EXPECT_RAISES(NSLichen::XRead, "", ReadCountedString(view));
        EXPECT_RAISES(NSLichen::XRead, "", ReadCountedString(parent));
    }
}

TEST(CountedString, WritesTheShorterFormThatHoldsTheText) {
    struct Case {
        std::u16string fText;
        std::string fBytes;
    };
    for (const Case& c : {Case{u"", BigEndian(0)}, Case{u"a\u20AC?", BigEndian(3) + "a\x80?"},
                          Case{u"\u0416", LongString("\xD0\x96")},
                          Case{u"a\u2029b", LongString("a\xE2\x80\xA9"
                                                       "b")}}) {
        COwnedMemoryMedia media;
        WriteCountedString(media, c.fText);
        EXPECT_EQ(BytesOf(media), c.fBytes);
        media.SetPosition(0);
        EXPECT_EQ(ReadCountedString(media), c.fText);
    }
}

TEST(UTF8String, KeepsBelowItsLimit) {
    COwnedMemoryMedia media;
    const std::u16string most(kUTF8StringLimit - 1, u'x');
    WriteUTF8String(media, most);
    WriteUTF8String(media, u"");
    WriteUTF8String(media, u"\u0416\0a"s);
    EXPECT_EQ(media.GetLength(), 4 + 16383 + 4 + 4 + 4);
    EXPECT_RAISES(NSLichen::XFormatViolation, "", WriteUTF8String(media, most + u'x'));
    EXPECT_EQ(media.GetLength(), 4 + 16383 + 4 + 4 + 4);
    media.SetPosition(0);
    EXPECT_EQ(ReadUTF8String(media), most);
    EXPECT_EQ(ReadUTF8String(media), u"");
    EXPECT_EQ(ReadUTF8String(media), u"\u0416\0a"s);

    const std::string tooLong = BigEndian(16384) + std::string(16384, 'x');
    const std::string tooShort = BigEndian(3) + "ab";
    for (const std::string& bytes : {tooLong, tooShort}) {
        CMemoryMedia bad = MediaOf(bytes);
        EXPECT_RAISES(NSLichen::XFormatViolation, "", ReadUTF8String(bad));
    }
}

} // namespace

} // namespace NSPorter

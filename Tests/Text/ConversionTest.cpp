#include "Failure/Chain/FailureQuestions.h"
#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Classes/XClasses.h"
#include "Text/CodePage.h"
#include "Text/UnicodeConversion.h"

#include <gtest/gtest.h>

#include <string>

namespace NSTextPackage {

// The text of the failure, which must be about Unicode.
template <class Conversion>
std::string RefusalOf(Conversion conversion) {
    try {
        conversion();
    } catch (const NSLichen::XFormatViolation& failure) {
        EXPECT_TRUE(NSLichen::HasTargetObjectType(failure, NSLichen::UnicodeWord()));
        return failure.what();
    }
    return "not refused";
}

TEST(UnicodeConversion, BothWaysForEveryLength) {
    const struct {
        std::u16string fUtf16;
        std::string fUtf8;
    } cases[] = {
        {u"", ""},
        {u"A", "A"},
        {u"\u07FF\u0800", "\xDF\xBF\xE0\xA0\x80"},
        {u"\u00E9", "\xC3\xA9"},
        {u"\u20AC", "\xE2\x82\xAC"},
        {u"\uFFFF", "\xEF\xBF\xBF"},
        {{0xD83D, 0xDE00}, "\xF0\x9F\x98\x80"},
        {{0xD800, 0xDC00, 0xDBFF, 0xDFFF}, "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
        {std::u16string(1, u'\0'), std::string(1, '\0')},
    };
    for (const auto& [utf16, utf8] : cases) {
        EXPECT_EQ(Utf16ToUtf8(utf16), utf8);
        EXPECT_EQ(Utf8ToUtf16Default(utf8), utf16);
    }
    EXPECT_EQ(Utf16ToUtf8WithMark(u"", true), "\xEF\xBB\xBF");
    EXPECT_EQ(Utf16ToUtf8WithMark(u"x", false), "x");
    // One allocation: the capacity is what was asked for, and no growth came on top.
    EXPECT_EQ(Utf16ToUtf8(std::u16string(1000, u'\u20AC')).capacity(), 3001U);
}

TEST(UnicodeConversion, SurrogatesInWrongPlaces) {
    const char* const missing = "High-surrogate missing! Broken Unicode";
    EXPECT_EQ(RefusalOf([] { Utf16ToUtf8({0xDC00}); }), missing);
    EXPECT_EQ(RefusalOf([] { Utf16ToUtf8({u'a', 0xDFFF, 0xD800}); }), missing);
    // A high surrogate takes anything: (0xD800 - 0xD7F7) * 1024 + 'A' is 0x2441, and 0x2400 alone
    // at the end of the text.
    EXPECT_EQ(Utf16ToUtf8({0xD800, u'A', u'B'}), "\xE2\x91\x81"
                                                 "B");
    EXPECT_EQ(Utf16ToUtf8({0xD800}), "\xE2\x90\x80");
    // Encoded surrogates are let through on the way in.
    EXPECT_EQ(Utf8ToUtf16Default("\xED\xB0\x80"), std::u16string(1, 0xDC00));
}

TEST(UnicodeConversion, LongFormsAreReadAndCutTo16Bits) {
    // 5 bytes: 0x200000. (0x200000 - 0x10000) >> 10 is 0x7C0.
    EXPECT_EQ(Utf8ToUtf16Default("\xF8\x88\x80\x80\x80"), (std::u16string{0xDFC0, 0xDC00}));
    // 6 bytes: 0x4000000, and 7 bytes: all 36 bits set.
    EXPECT_EQ(Utf8ToUtf16Default("\xFC\x84\x80\x80\x80\x80"), (std::u16string{0xD7C0, 0xDC00}));
    EXPECT_EQ(Utf8ToUtf16Default("\xFE\xBF\xBF\xBF\xBF\xBF\xBF"), (std::u16string{0xD7BF, 0xDFFF}));
    // What follows a lead byte is taken for a continuation: 'A' gives its low six bits.
    EXPECT_EQ(Utf8ToUtf16("\xC3\x41", "#"), u"\u00C1");
}

TEST(UnicodeConversion, BrokenUtf8IsRefused) {
    for (const char* const text :
         {"\x80", "\xBF", "\xFF", "\xFF\x80\x80\x80\x80\x80\x80", "a\xC3", "\xE2\x82",
          "\xF0\x9F\x98", "\xF8\x80\x80\x80", "\xFE", "\xFE\x80\x80\x80\x80\x80"}) {
        EXPECT_EQ(RefusalOf([text] { Utf8ToUtf16Default(text); }), "")
            << testing::PrintToString(text);
    }
}

TEST(UnicodeConversion, CodePointLimits) {
    std::string text;
    AppendCodePointAsUtf8(0x3FFFFF, text);
    EXPECT_EQ(text, "\xFF\xBF\xBF\xBF");
    EXPECT_EQ(RefusalOf([&text] { AppendCodePointAsUtf8(0x400000, text); }),
              "Character code bigger than max Unicode");
    std::u16string units;
    AppendCodePoint(0xFFFF, units);
    AppendCodePoint(0x10000, units);
    EXPECT_EQ(units, (std::u16string{0xFFFF, 0xD800, 0xDC00}));
}

TEST(UnicodeConversion, Ascii) {
    EXPECT_EQ(AsciiToUtf16("a\x7F", false), u"a\u007F");
    EXPECT_EQ(RefusalOf([] { AsciiToUtf16("a\x80", false); }), "");
    EXPECT_EQ(AsciiToUtf16("\x80\xFF", true), u"\u0080\u00FF");
    EXPECT_EQ(Utf16ToAscii(u"a\u007F\u0080\u20AC", '?'), "a\x7F??");
}

TEST(CodePage, Every1252ByteDecodesAndComesBack) {
    std::string bytes;
    std::u16string expected;
    for (int byte = 0; byte < 256; ++byte) {
        bytes.push_back(static_cast<char>(byte));
        expected.push_back(static_cast<char16_t>(byte));
    }
    expected.replace(0x80, 32,
                     u"\u20AC\x81\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152"
                     u"\x8D\u017D\x8F\x90\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122"
                     u"\u0161\u203A\u0153\x9D\u017E\u0178");
    EXPECT_EQ(Cp1252ToUtf16(bytes), expected);
    EXPECT_EQ(Utf16ToCp1252(expected, '?'), bytes);
    // Latin-1's control codes and other scripts are not in the page; a pair counts as two.
    EXPECT_EQ(Utf16ToCp1252(u"\u0080\u0100\u03B1\U0001F600", '#'), "#####");
}

TEST(CodePage, OtherPagesComeFromTheSystem) {
    const struct {
        uint32_t fCodePage;
        const char* fBytes;
        const char16_t* fText;
    } rows[] = {{1251, "\xEF\xE8\xE2\xEE", u"\u043F\u0438\u0432\u043E"},
                {65001, "\xF0\x9F\x98\x80", u"\U0001F600"},
                {28591, "\xE9", u"\u00E9"},
                {20127, "loop", u"loop"},
                {kCodePage_1252, "\x81\x80", u"\u0081\u20AC"},
                {1251, "", u""},
                // A mark could follow the last letter of these two.
                {1258, "loopa", u"loopa"},
                {1255, "\xE0\xE1", u"\u05D0\u05D1"},
                {10000, "\x8E", u"\u00E9"},
                {20866, "\xC1", u"\u0430"}};
    for (const auto& [codePage, bytes, text] : rows) {
        EXPECT_EQ(CodePageToUtf16(bytes, codePage), text) << codePage;
    }
    EXPECT_EQ(RefusalOf([] { CodePageToUtf16("\xC3", 65001); }), "");
    EXPECT_EQ(RefusalOf([] { CodePageToUtf16("a", 64999); }), "");
}

} // namespace NSTextPackage

#include "Text/CodePage.h"

#include "Tests/Text/RefusalOf.h"

namespace NSTextPackage {

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

#include "Text/CodePage.h"

#include "Failure/Classes/XClasses.h"

#include <gtest/gtest.h>

namespace NSTextPackage {
namespace {

TEST(CodePage, Every1252ByteDecodesAndComesBack) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes.push_back(static_cast<char>(byte));
    }
    const std::u16string units = Cp1252ToUtf16(bytes);
    ASSERT_EQ(units.size(), 256U);
    EXPECT_EQ(units.substr(0x7F, 8), u"\u007F\u20AC\u0081\u201A\u0192\u201E\u2026\u2020");
    EXPECT_EQ(units.substr(0x8C, 6), u"\u0152\u008D\u017D\u008F\u0090\u2018");
    EXPECT_EQ(units.substr(0x9C, 5), u"\u0153\u009D\u017E\u0178\u00A0");
    EXPECT_EQ(units.back(), u'\u00FF');
    EXPECT_EQ(Utf16ToCp1252(units, '?'), bytes);
    // Latin-1's control codes and other scripts are not in the page; a pair counts as two.
    EXPECT_EQ(Utf16ToCp1252(u"\u0080\u0100\u03B1\U0001F600", '#'), "#####");
}

TEST(CodePage, OtherPagesComeFromTheSystem) {
    EXPECT_EQ(CodePageToUtf16("\xEF\xE8\xE2\xEE", 1251), u"\u043F\u0438\u0432\u043E");
    EXPECT_EQ(CodePageToUtf16("\xF0\x9F\x98\x80", 65001), u"\U0001F600");
    EXPECT_EQ(CodePageToUtf16("\xE9", 28591), u"\u00E9");
    EXPECT_EQ(CodePageToUtf16("loop", 20127), u"loop");
    EXPECT_EQ(CodePageToUtf16("\x81\x80", kCodePage_1252), u"\u0081\u20AC");
    EXPECT_EQ(CodePageToUtf16("", 1251), u"");
    EXPECT_THROW(CodePageToUtf16("\xC3", 65001), NSLichen::XFormatViolation);
    EXPECT_THROW(CodePageToUtf16("a", 64999), NSLichen::XFormatViolation);
}

} // namespace
} // namespace NSTextPackage

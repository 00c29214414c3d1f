// What the system itself decides about text is its own matter on Windows; this is ours.
#include "Text/CodePage.h"
#include "Text/Comparison.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace NSTextPackage {

TEST(ComparisonMarks, MarksAndVariantsAreOneLevel) {
    const struct {
        const char16_t* fMarked;
        const char16_t* fPlain;
    } cases[] = {{u"\u00E9t\u00E9", u"ete"},
                 {u"\u1EC7", u"e"},
                 {u"\u00F8\u0142\u0111", u"old"},
                 {u"\u00E6\u0153\u00DF\u00FE", u"aeoessth"},
                 {u"\u1F82", u"\u03B1"},
                 {u"\u03C2", u"\u03C3"},
                 {u"\u0451", u"\u0435"},
                 {u"a\u0328\u0301", u"a"},
                 {u"\u0131", u"i"}};
    for (const auto& [marked, plain] : cases) {
        EXPECT_EQ(CompareText(marked, plain, false, true), EComparison::kEqual);
        EXPECT_EQ(CompareText(marked, plain, false, false), EComparison::kGreater);
        EXPECT_EQ(CompareText(plain, marked, false, false), EComparison::kLess);
    }
    EXPECT_EQ(CompareText(u"\u00C9", u"e", false, true), EComparison::kGreater);
    EXPECT_EQ(CompareText(u"\u00C9", u"e", true, true), EComparison::kEqual);
    EXPECT_TRUE(TextEquals(u"\u0130", u"I\u0307"));
    // Short i is a letter, not a marked one.
    EXPECT_EQ(CompareText(u"\u0439\u0430", u"\u0438\u044F", false, false), EComparison::kGreater);
    EXPECT_EQ(CompareText(u"\u0439", u"\u0438", false, true), EComparison::kGreater);
    EXPECT_TRUE(TextEquals(u"\u0418\u0306", u"\u0419"));
    EXPECT_TRUE(TextEquals(u"\u045D\u0306", u"\u0438\u0300\u0306"));
}

TEST(CodePageNames, LeadToTheirConverters) {
    const struct {
        uint32_t fCodePage;
        std::string fBytes;
        std::u16string fText;
    } rows[] = {{37, "\xC1", u"A"},
                {708, "\xC7", u"\u0627"},
                {1200, std::string("a\0\x16\x04", 4), u"a\u0416"},
                {1201, std::string("\0a\x04\x16", 4), u"a\u0416"},
                {10007, "\x80", u"\u0410"},
                {10029, "\x8A", u"\u00E4"},
                {20277, "\x4A", u"#"},
                {21866, "\xA4", u"\u0454"},
                {50220, "\x1B$B$\"\x1B(B", u"\u3042"},
                {51932, "\xA4\xA2", u"\u3042"},
                {51949, "\xB0\xA1", u"\uAC00"},
                {54936, "\x81\x30\x81\x30", u"\u0080"},
                {65000, "a+AOk-", u"a\u00E9"}};
    for (const auto& [codePage, bytes, text] : rows) {
        EXPECT_EQ(CodePageToUtf16(bytes, codePage), text) << codePage;
    }
    // Cut off inside a character.
    EXPECT_THROW(CodePageToUtf16("abc", 1200), std::runtime_error);
}

} // namespace NSTextPackage

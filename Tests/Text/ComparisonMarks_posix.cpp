// What marks and variants weigh is the system's own affair; this is ours.
#include "Text/Comparison.h"

#include <gtest/gtest.h>

#include <random>

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

TEST(ComparisonMarks, OrderIsTotalOnHostileTexts) {
    std::mt19937 random(1);
    const char16_t units[] = {u'a',   u'A',   u'e',   0x301,  0x302, 0xE9,  0xD83D, 0xDE00,
                              0xDC00, 0x1EBF, 0x1F82, 0x439,  0x438, 0x306, 0xE6,   0xFF21,
                              0,      0xFFFF, 0x3000, 0x4E00, u'-',  u'7',  0x345,  0xDF};
    const auto make = [&] {
        std::u16string text;
        for (auto length = random() % 6; length > 0; --length) {
            text.push_back(units[random() % std::size(units)]);
        }
        return text;
    };
    const auto less = [](const std::u16string& a, const std::u16string& b) {
        return CompareText(a, b, false, false) == EComparison::kLess;
    };
    for (int i = 0; i < 20000; ++i) {
        const std::u16string a = make();
        const std::u16string b = make();
        const std::u16string c = make();
        EXPECT_FALSE(less(a, b) && less(b, a));
        EXPECT_TRUE(!less(a, b) || !less(b, c) || less(a, c));
        // Being equal is transitive too.
        if (TextEquals(a, b)) {
            EXPECT_EQ(CompareText(a, c, false, false), CompareText(b, c, false, false));
        }
    }
}

} // namespace NSTextPackage

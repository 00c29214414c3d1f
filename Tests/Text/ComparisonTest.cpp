#include "Text/Comparison.h"

#include <gtest/gtest.h>

#include <vector>

namespace NSTextPackage {

TEST(Comparison, EqualTexts) {
    EXPECT_TRUE(TextEquals(u"\uFEFF\u00E9", u"\u00E9"));
    EXPECT_TRUE(TextEquals(u"", u"\uFEFF"));
    EXPECT_TRUE(TextEquals(u"e\u0301", u"\u00E9"));
    EXPECT_TRUE(TextEquals(u"\uFF2C\uFF2F\uFF2F\uFF30", u"LOOP")); // full-width forms
    EXPECT_TRUE(TextEqualsIgnoreCase(u"\u00C9\u0394\u0416\u1EBE", u"\u00E9\u03B4\u0436\u1EBF"));
    for (const auto* const other : {u"E", u"\u00E8", u"e", u"\u00C9", u"\u00E9 ", u"\u0435"}) {
        EXPECT_FALSE(TextEquals(u"\u00E9", other));
    }
    EXPECT_FALSE(TextEqualsIgnoreCase(u"\u00E9", u"e"));
}

// Ascending for both systems: symbols, digits, letters; then marks; then case.
const std::vector<std::u16string> kAscending = {
    u"",   u"-",       u"1",  u"10", u"2", u"a",      u"A",      u"\u00E0", u"\u00C0", u"ab",
    u"Ab", u"\u00E1b", u"aC", u"e",  u"z", u"\u03B1", u"\u03AC", u"\u03B2", u"\u0438", u"\u043A"};

TEST(Comparison, OneOrderOverAllTexts) {
    for (size_t i = 0; i < kAscending.size(); ++i) {
        for (size_t j = 0; j < kAscending.size(); ++j) {
            const int expected = i < j ? 17014 : i > j ? 17015 : 17016;
            EXPECT_EQ(static_cast<int>(CompareText(kAscending[i], kAscending[j], false, false)),
                      expected)
                << i << " against " << j;
        }
    }
}

TEST(Comparison, LowerCase) {
    EXPECT_EQ(ToLowerUtf16(u"LOOP 1 \u00C9\u00D7\u00DF"), u"loop 1 \u00E9\u00D7\u00DF");
    EXPECT_EQ(ToLowerUtf16(u"\u0178\u0139\u013A\u0179\u0220\u1EF8"),
              u"\u00FF\u013A\u013A\u017A\u019E\u1EF9");
    EXPECT_EQ(ToLowerUtf16(u"\u0386\u03A9\u0403\u0429\u04C0\u0531"),
              u"\u03AC\u03C9\u0453\u0449\u04CF\u0561");
    // Units of pairs, texts without case and U+0000 stay.
    const std::u16string caseless{0, 0xD83D, 0xDE00, 0x4E00, u'1'};
    EXPECT_EQ(ToLowerUtf16(caseless), caseless);
}

} // namespace NSTextPackage

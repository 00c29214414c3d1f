#include "Text/TextTools.h"

#include "Text/Comparison.h"
#include "Text/NumberGrouping.h"

#include <gtest/gtest.h>

#include <limits>
#include <locale>
#include <sstream>
#include <vector>

namespace NSTextPackage {

TEST(TextTools, CopyToBufferCutsAndTerminates) {
    std::vector<char16_t> buffer(1025, u'#');
    CopyToBuffer(buffer.data(), std::u16string(1500, u'x'), 1023);
    EXPECT_EQ(std::u16string(buffer.data()), std::u16string(1023, u'x'));
    EXPECT_EQ(buffer[1024], u'#');

    CopyToBuffer(buffer.data(), u"ab\U0001F600", 3); // also inside a pair
    EXPECT_EQ(std::u16string(buffer.data()), (std::u16string{u'a', u'b', 0xD83D}));
    CopyToBuffer(buffer.data(), u"ab", 0);
    EXPECT_EQ(buffer[0], u'\0');
}

TEST(TextTools, PartsOfTexts) {
    EXPECT_EQ(LeftOf(u"loop", 2), u"lo");
    EXPECT_EQ(LeftOf(u"loop", 9), u"loop");
    EXPECT_EQ(ReplaceAnyOf(u"a/b\u00E9:c", "/:\xC3\xA9", u'_'), u"a_b__c");
    EXPECT_EQ(TrimStart(u"  \tloop ", " \t"), u"loop ");
    EXPECT_EQ(TrimEnd(u" loop\u00E9 ", " \xC3\xA9"), u" loop");
    EXPECT_EQ(TrimStart(u"   ", " "), u"");
    EXPECT_EQ(TrimEnd(u"   ", " "), u"");
}

TEST(TextTools, FormatFixed) {
    EXPECT_EQ(FormatFixed(130.0, 3), "130.000");
    EXPECT_EQ(FormatFixed(-0.5, 0), "-0");
    EXPECT_EQ(FormatFixed(2.5, 0), "2"); // ties to even, as printf
    EXPECT_EQ(FormatFixed(1.0 / 3.0, -1), "0.333333");
    EXPECT_EQ(FormatFixed(std::numeric_limits<double>::max(), 0).size(), 309U);
    const std::string cut = FormatFixed(1.0, std::numeric_limits<int>::max());
    EXPECT_EQ(cut, "1." + std::string(509, '0'));
}

TEST(NumberGrouping, ModesAndStreams) {
    std::wostringstream stream;
    stream.imbue(std::locale::classic());
    const auto facetOf = [&] {
        return &std::use_facet<std::numpunct<std::wios::char_type>>(stream.getloc());
    };
    const struct {
        int32_t fMode;
        const char* fGrouping;
        std::wstring fText;
        bool fIsNew; // the stream gets another format
    } rows[] = {{7480, "\3", L"1234567 0.5", false},
                {kNumberGrouping_WhenDifferent, "\3", L"1,234,567 0.5", true},
                {kNumberGrouping_WhenDifferent, "\3", L"1,234,567 0.5", false},
                {kNumberGrouping_WhenDifferent, "\2", L"1,23,45,67 0.5", true},
                {kNumberGrouping_Always, "\2", L"1,23,45,67 0.5", true}};
    for (const auto& row : rows) {
        const auto* const before = facetOf();
        SetNumberGrouping(row.fMode, stream, "C", row.fGrouping);
        EXPECT_EQ(facetOf() != before, row.fIsNew);
        stream.str(L"");
        stream << 1234567 << L' ' << 0.5;
        EXPECT_TRUE(stream.str() == row.fText);
    }
    EXPECT_THROW(SetNumberGrouping(kNumberGrouping_Always, stream, "no such locale", "\3"),
                 std::runtime_error);
}

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

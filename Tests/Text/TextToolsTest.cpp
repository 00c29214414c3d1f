#include "Text/TextTools.h"
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
    const auto print = [](std::wostringstream& stream) {
        stream.str(L"");
        stream << 1234567 << L' ' << 0.5;
        std::string text;
        for (const auto unit : stream.str()) {
            text.push_back(static_cast<char>(unit));
        }
        return text;
    };
    std::wostringstream stream;
    stream.imbue(std::locale::classic());
    SetNumberGrouping(7480, stream, "C", "\3");
    EXPECT_EQ(print(stream), "1234567 0.5");
    SetNumberGrouping(kNumberGrouping_WhenDifferent, stream, "C", "\3");
    EXPECT_EQ(print(stream), "1,234,567 0.5");

    const auto facetOf = [&] {
        return &std::use_facet<std::numpunct<std::wios::char_type>>(stream.getloc());
    };
    const auto* const first = facetOf();
    SetNumberGrouping(kNumberGrouping_WhenDifferent, stream, "C", "\3");
    EXPECT_EQ(facetOf(), first);
    SetNumberGrouping(kNumberGrouping_WhenDifferent, stream, "C", "\2");
    EXPECT_EQ(print(stream), "1,23,45,67 0.5");
    const auto* const second = facetOf();
    SetNumberGrouping(kNumberGrouping_Always, stream, "C", "\2");
    EXPECT_NE(facetOf(), second);

    EXPECT_THROW(SetNumberGrouping(kNumberGrouping_Always, stream, "no such locale", "\3"),
                 std::runtime_error);
}

} // namespace NSTextPackage

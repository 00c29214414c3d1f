// The converter has names where other systems have numbers.
#include "Text/CodePage.h"

#include "Tests/Text/RefusalOf.h"

namespace NSTextPackage {

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
                {20277, "\x5B", u"\u00C5"},
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
    EXPECT_EQ(RefusalOf([] { CodePageToUtf16("abc", 1200); }), "");
}

} // namespace NSTextPackage

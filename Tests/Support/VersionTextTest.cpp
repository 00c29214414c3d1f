#include "Support/Version/VersionText.h"

#include "Failure/Classes/XClasses.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"
#include "PorterPackage/Core/Media/CRawByteReader.h"

#include <gtest/gtest.h>

namespace NSSupport {

using NSPorter::SVersionRecord;

static bool SameFields(const SVersionRecord& a, const SVersionRecord& b) {
    return a.fMajor == b.fMajor && a.fMinor == b.fMinor && a.fBugFix == b.fBugFix &&
           a.fStage == b.fStage && a.fBuild == b.fBuild && a.fExtra == b.fExtra;
}

TEST(VersionText, FormatsAndParsesBack) {
    const struct {
        SVersionRecord fVersion;
        std::string fText;
        std::string fWithBuild;
    } cases[] = {
        {{1, 2, 3, 4, 0, 0}, "1.2.3", "1.2.3"},
        {{1, 2, 0, 4, 0, 0}, "1.2", "1.2"},
        {{1, 0, 0, 1, 0, 0}, "1.0d0", "1.0d0 build 0"},
        {{1, 0, 2, 2, 17, 0}, "1.0.2a17", "1.0.2a17 build 17"},
        {{10, 20, 0, 3, 5, 0}, "10.20b5", "10.20b5 build 5"},
        {{0, 0, 0, 4, 9, 0}, "0.0f9", "0.0f9 build 9"},
        {{0xFFFFFFFF, 0, 0xFFFFFFFF, 4, 0, 0},
         "4294967295.0.4294967295",
         "4294967295.0.4294967295"},
        {{}, "none", "none"},
    };
    for (const auto& [version, text, withBuild] : cases) {
        EXPECT_EQ(FormatVersion(version, "none"), text);
        EXPECT_EQ(FormatVersion(version, "none", true), withBuild);
        EXPECT_TRUE(SameFields(ParseVersion(text, "none"), version)) << text;
        EXPECT_TRUE(SameFields(ParseVersion(withBuild, "none"), version)) << withBuild;
    }
    for (const char* const text : {"1", "1.", ".1", "1.2.", "1.2x5", "1.2b", "1.2b5 build 6",
                                   "-1.2", "1.2b5 ", "1.4294967296", "none"}) {
        EXPECT_THROW(ParseVersion(text), NSLichen::XFormatViolation) << text;
    }
}

TEST(VersionText, Placeholders) {
    EXPECT_EQ(ReplacePlaceholders("^1^0^1", {"a", "^0"}), "^0a^0");
    EXPECT_EQ(ReplacePlaceholders("^2 ^x ^", {"a", "b"}), "^2 ^x ^");
}

class CFailingReader : public NSLichen::IByteReader {
public:
    int32_t Read(int64_t, int64_t, uint8_t*) override { return 5020; }
};

TEST(VersionText, ShortVersionFromAReader) {
    const uint8_t bytes[] = {0, 188, 1, 2, 3, 77, 0xBB, 1, 2, 3, 0};
    NSPorter::CMemoryMedia media(sizeof bytes, bytes);
    NSPorter::CRawByteReader reader(&media);
    EXPECT_TRUE(SameFields(ReadShortVersion(reader, 1), {1, 2, 3, 4, 0, 0}));
    try {
        ReadShortVersion(reader, 6);
        FAIL();
    } catch (const NSLichen::XFormatViolation& failure) {
        EXPECT_STREQ(failure.what(), "ReadVersion bad version file magic");
    }
    CFailingReader failing;
    EXPECT_THROW(ReadShortVersion(failing, 0), NSLichen::XNotFound);
}

} // namespace NSSupport

#include "Support/Version/VersionText.h"

#include "Failure/Classes/XClasses.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"
#include "PorterPackage/Core/Media/CRawByteReader.h"
#include "Support/Modules/ModuleResources.h"
#include "Support/Modules/ResourceTables.h"
#include "Support/Version/VersionInfo.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

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

static CTextTable MakeTable(const std::string& text) {
    NSPorter::CMemoryMedia media(static_cast<int64_t>(text.size()),
                                 reinterpret_cast<const uint8_t*>(text.data()));
    return CTextTable(media);
}

TEST(TextTable, LinesOfATextTable) {
    const CTextTable table = MakeTable("\xEF\xBB\xBF# comment = none\r\n\r\n"
                                       " a.b =  one = two \\n\\\\x \r\nempty=\na.b = again");
    EXPECT_EQ(table.GetCount(), 2U);
    EXPECT_EQ(table.GetText("a.b"), "one = two \n\\x");
    EXPECT_EQ(table.GetText("empty"), "");
    EXPECT_EQ(table.GetText("a"), std::nullopt);
    EXPECT_EQ(MakeTable("").GetCount(), 0U);
    EXPECT_THROW(MakeTable("no sign"), NSLichen::XFormatViolation);
    EXPECT_THROW(MakeTable("a = \\t"), NSLichen::XFormatViolation);
    EXPECT_THROW(MakeTable("a = \\"), NSLichen::XFormatViolation);
}

TEST(ModuleResources, TablesOfAllKinds) {
    const CTextTable* const strings = GetStringTables().Find("product");
    ASSERT_NE(strings, nullptr);
    EXPECT_EQ(strings->GetText("maker"), "Halyard Software");
    ASSERT_NE(GetAlertTables().Find("results"), nullptr);
    EXPECT_TRUE(GetAlertTables().Find("results")->GetText("106"));
    ASSERT_NE(GetMenuTables().Find("preview"), nullptr);
    ASSERT_NE(GetHelpTables().Find("preview"), nullptr);
    // Two kinds may have resources of one name.
    EXPECT_NE(GetMenuTables().Find("preview")->GetText("tempo"),
              GetHelpTables().Find("preview")->GetText("tempo"));
    EXPECT_EQ(GetStringTables().Find("results"), nullptr);
    EXPECT_EQ(GetStringTables().Find("product.txt"), nullptr);
}

TEST(ModuleResources, RawResources) {
    EXPECT_EQ(ListModuleResources(kResourceKind_Strings), std::vector<std::string>{"product.txt"});
    EXPECT_TRUE(ListModuleResources(kResourceKind_Image).empty());
    EXPECT_EQ(OpenModuleResource(kResourceKind_Dialog, "product.txt"), nullptr);
    const auto media = OpenModuleResource(kResourceKind_Strings, "Product.TXT");
    ASSERT_NE(media, nullptr);
    EXPECT_EQ(media->ReadU8(), static_cast<uint32_t>('#'));
}

class CFakeVersionInfo : public IVersionInfo {
public:
    std::optional<SVersionLanguage> GetLanguage() const override { return fLanguage; }
    std::optional<std::string> GetText(const std::string& subBlock) const override {
        const auto found = fTexts.find(subBlock);
        return found == fTexts.end() ? std::nullopt : std::make_optional(found->second);
    }
    std::optional<SVersionLanguage> fLanguage = SVersionLanguage{0x41D, 0x4E4};
    std::map<std::string, std::string> fTexts;
};

TEST(VersionInfo, NamesAreTriedInOrderAndKindsAreThree) {
    CFakeVersionInfo info;
    EXPECT_EQ(FindVersionText(info), std::nullopt);
    EXPECT_EQ(FindBuildKindName(info), "");
    for (const auto& [name, value] :
         {std::pair{"Product Version", "3"}, {"ProductVersion", "2"}, {"Build Number", "1"}}) {
        info.fTexts["\\StringFileInfo\\041d04e4\\" + std::string(name)] = value;
        EXPECT_EQ(FindVersionText(info), value);
    }
    info.fLanguage.reset();
    EXPECT_EQ(FindVersionText(info), std::nullopt);
    for (const auto& [value, name] : {std::pair{"debugging", "Debugging"},
                                      {"TESTING", "Testing"},
                                      {"Deployment", "Deployment"},
                                      {"Deployment ", ""}}) {
        info.fTexts["\\StringFileInfo\\040904b0\\SpecialBuild"] = value;
        EXPECT_EQ(FindBuildKindName(info), name);
    }
}

TEST(VersionInfo, OfThisModule) {
    const auto info = OpenModuleVersionInfo();
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(FindVersionValue(*info, "CompanyName"), "Halyard Software");
    EXPECT_EQ(FindVersionText(*info), FindVersionValue(*info, "FileVersion"));
    EXPECT_EQ(FindVersionValue(*info, "Nothing"), std::nullopt);
    EXPECT_EQ(GetBuildKindName(), FindVersionValue(*info, "SpecialBuild"));
    EXPECT_NE(GetBuildKindName(), "");
    EXPECT_EQ(OpenFileVersionInfo(u"C:\\no such file"), nullptr);
}

} // namespace NSSupport

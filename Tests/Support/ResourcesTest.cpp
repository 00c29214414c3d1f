#include "Support/Modules/ModuleResources.h"
#include "Support/Modules/ResourceTables.h"
#include "Support/Version/VersionInfo.h"

#include "Failure/Classes/XClasses.h"
#include "PorterPackage/Core/Media/CMemoryMedia.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace NSSupport {

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

TEST(VersionInfo, NamesAreTriedInOrder) {
    CFakeVersionInfo info;
    EXPECT_EQ(FindVersionText(info), std::nullopt);
    for (const auto& [name, value] :
         {std::pair{"Product Version", "3"}, {"ProductVersion", "2"}, {"Build Number", "1"}}) {
        info.fTexts["\\StringFileInfo\\041d04e4\\" + std::string(name)] = value;
        EXPECT_EQ(FindVersionText(info), value);
    }
    info.fLanguage.reset();
    EXPECT_EQ(FindVersionText(info), std::nullopt);
}

TEST(VersionInfo, BuildKinds) {
    CFakeVersionInfo info;
    EXPECT_EQ(FindBuildKindName(info), "");
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

#include "Support/Version/VersionInfo.h"

#include "Text/Comparison.h"
#include "Text/UnicodeConversion.h"

#include <array>
#include <cstdio>

namespace NSSupport {

std::optional<std::string> FindVersionValue(const IVersionInfo& info, const std::string& name) {
    const std::optional<SVersionLanguage> language = info.GetLanguage();
    if (!language) {
        return std::nullopt;
    }
    std::array<char, 16> table{};
    std::snprintf(table.data(), table.size(), "%04x%04x", language->fLanguage, language->fCodePage);
    return info.GetText("\\StringFileInfo\\" + std::string(table.data()) + "\\" + name);
}

std::optional<std::string> FindVersionText(const IVersionInfo& info) {
    for (const char* const name : {"Build Number", "ProductVersion", "Product Version"}) {
        if (auto value = FindVersionValue(info, name)) {
            return value;
        }
    }
    return std::nullopt;
}

std::string FindBuildKindName(const IVersionInfo& info) {
    // Modules of this family keep it in the US English table whatever language they name first.
    const auto value = info.GetText("\\StringFileInfo\\040904b0\\SpecialBuild");
    if (!value) {
        return {};
    }
    const std::u16string kind = NSTextPackage::Utf8ToUtf16Default(*value);
    for (const char* const name : {"Debugging", "Testing", "Deployment"}) {
        if (NSTextPackage::TextEqualsIgnoreCase(NSTextPackage::Utf8ToUtf16Default(name), kind)) {
            return name;
        }
    }
    return {};
}

std::string GetBuildKindName() {
    const std::unique_ptr<IVersionInfo> info = OpenModuleVersionInfo();
    return info ? FindBuildKindName(*info) : std::string();
}

} // namespace NSSupport

#include "Support/Modules/ModuleResources.h"
#include "Support/Version/CTextTable.h"
#include "Support/Version/VersionInfo.h"

namespace NSSupport {

namespace {

// The module's version information is a text table of the strings that a VERSIONINFO block of
// another system would hold, all in one language.
constexpr SVersionLanguage kLanguage = {0x0409, 0x04B0};
const char* const kStringTable = "\\StringFileInfo\\040904b0\\";

class CEmbeddedVersionInfo : public IVersionInfo {
public:
    explicit CEmbeddedVersionInfo(NSPorter::CMedia& media) : fStrings(media) {}

    std::optional<SVersionLanguage> GetLanguage() const override { return kLanguage; }

    std::optional<std::string> GetText(const std::string& subBlock) const override {
        const std::string table = kStringTable;
        if (!subBlock.starts_with(table)) {
            return std::nullopt;
        }
        return fStrings.GetText(subBlock.substr(table.size()));
    }

private:
    CTextTable fStrings;
};

} // namespace

std::unique_ptr<IVersionInfo> OpenFileVersionInfo(const std::u16string&) {
    return nullptr;
}

std::unique_ptr<IVersionInfo> OpenModuleVersionInfo() {
    const auto media = OpenModuleResource("VERSION", "version.txt");
    return media ? std::make_unique<CEmbeddedVersionInfo>(*media) : nullptr;
}

} // namespace NSSupport

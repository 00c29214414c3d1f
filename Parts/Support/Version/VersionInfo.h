// The version information that the system keeps with a code file.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace NSSupport {

struct SVersionLanguage {
    uint16_t fLanguage = 0;
    uint16_t fCodePage = 0;
};

/// One file's version information.
class IVersionInfo {
public:
    virtual ~IVersionInfo() = default;
    /// The first language that the file names.
    virtual std::optional<SVersionLanguage> GetLanguage() const = 0;
    /// The text of a sub-block, such as "\StringFileInfo\040904b0\ProductName".
    virtual std::optional<std::string> GetText(const std::string& subBlock) const = 0;

protected:
    IVersionInfo() = default;
    IVersionInfo(const IVersionInfo&) = default;
    IVersionInfo& operator=(const IVersionInfo&) = default;
};

/// Null when the file has none; on systems other than Windows no file has any.
std::unique_ptr<IVersionInfo> OpenFileVersionInfo(const std::u16string& path);
/// Of the module that holds this code. Null when it has none.
std::unique_ptr<IVersionInfo> OpenModuleVersionInfo();

/// The value of a name in the file's language.
std::optional<std::string> FindVersionValue(const IVersionInfo& info, const std::string& name);
/// The first of "Build Number", "ProductVersion" and "Product Version" that the file has.
std::optional<std::string> FindVersionText(const IVersionInfo& info);

/// "Debugging", "Testing" or "Deployment" as the version information says, ignoring case; empty
/// when it says nothing or something else.
std::string FindBuildKindName(const IVersionInfo& info);
/// That of this module.
std::string GetBuildKindName();

} // namespace NSSupport

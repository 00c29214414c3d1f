#pragma once

#include <string>

namespace NSPorter {

struct SOwnModulePath {
    std::u16string fPath;   // native, full
    std::u16string fFolder; // the same up to and with its last "\"
};

/// Where the system says that this code was loaded from. Raises a plain std::exception when it does
/// not say.
SOwnModulePath FindOwnModulePath(void* systemHandle);

/// Leads the process's search for libraries to a folder until the end of the scope, where systems
/// have such a setting.
class CLibrarySearchFolder {
public:
    explicit CLibrarySearchFolder(const std::u16string& folder);
    ~CLibrarySearchFolder();
    CLibrarySearchFolder(const CLibrarySearchFolder&) = delete;
    CLibrarySearchFolder& operator=(const CLibrarySearchFolder&) = delete;

private:
    /// The setting before; empty for the system's default.
    std::u16string fFolderBefore;
};

} // namespace NSPorter

// The file work of the package. Paths are UTF-16 with drive and "\" on every platform; folders end
// in "\" where they are answered. Failures are answered, not raised.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace NSDebugPackage {

bool PathExists(const std::u16string& path);
bool MakeFolder(const std::u16string& path);
bool RemoveFile(const std::u16string& path);
/// Over a file of the target's name, but not of a file onto itself.
bool CopyOneFile(const std::u16string& source, const std::u16string& target);

/// Of the user. False when the platform knows none.
bool FindDocumentsFolder(std::u16string& folder);
bool FindDesktopFolder(std::u16string& folder);

/// A file that grows at its end; others may read it meanwhile.
class CAppendFile {
public:
    /// Opens the file, creating it when missing.
    explicit CAppendFile(const std::u16string& path);
    ~CAppendFile();
    CAppendFile(const CAppendFile&) = delete;
    CAppendFile& operator=(const CAppendFile&) = delete;

    /// False when the file did not open or not all was written.
    bool Append(const char* bytes, size_t count);
    void Flush();

private:
    intptr_t fFile;
};

} // namespace NSDebugPackage

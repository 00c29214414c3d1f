#pragma once

#include "Debug/Platform/CDescriptor_posix.h"

#include <string>

namespace NSDebugPackage {

/// A file that is made here, for the user alone, since it tells what the process knows. It is gone
/// again with the object unless it was finished.
class CNewFile {
public:
    /// Makes the file, unless the name exists, even as a link that leads nowhere.
    explicit CNewFile(const std::string& path);
    ~CNewFile();
    CNewFile(const CNewFile&) = delete;
    CNewFile& operator=(const CNewFile&) = delete;

    bool IsOpen() const noexcept { return fFile.IsOpen(); }
    /// Why the file is not open, as errno tells it.
    int GetError() const noexcept { return fError; }
    int Get() const noexcept { return fFile.Get(); }
    /// Closes the file and keeps it if that goes well.
    bool Finish() noexcept;

private:
    const std::string fPath;
    CDescriptor fFile;
    const int fError;
    bool fIsTemporary; // to be removed by the destructor
};

} // namespace NSDebugPackage

#pragma once

#include "PorterPackage/FileSupport/SpecHandles.h"

#include <string>

namespace NSFileLibSupport {

/// A reference to a file that is kept as text and so survives a file that is gone for the moment.
class CRobustFileSpec {
public:
    explicit CRobustFileSpec(std::string url);
    /// With the name stored, so that asking for it touches no disk.
    CRobustFileSpec(std::string url, std::u16string name);
    /// Of a spec, with its name. XOutOfSpace for a path too long to be carried as a URL.
    explicit CRobustFileSpec(const FileHandle& file);

    const std::string& GetURL() const { return fURL; }
    bool HasStoredName() const { return fHasName; }
    /// XNotFound when no name is stored and the file is not there.
    std::u16string GetName() const;
    /// XNotFound when the file is not there.
    FileHandle GetFile() const;

private:
    std::string fURL; // UTF-8
    bool fHasName = false;
    std::u16string fName;
};

} // namespace NSFileLibSupport

// A folder of its own for a test, removed with all that is in it.
#pragma once

#include "FileLib/Implementation/CDirScannerImpl.h"
#include "FileLib/Implementation/FileFunctionsWin.h"

#include <string>

namespace NSFileLibInternals {

class CTestFolder {
public:
    CTestFolder() : fPath(WinCreateUniqueDirectory(WinGetTempPath())) {}
    ~CTestFolder() {
        try {
            RemoveTree(fPath);
        } catch (...) { // what a failed test leaves open stays behind
        }
    }
    CTestFolder(const CTestFolder&) = delete;
    CTestFolder& operator=(const CTestFolder&) = delete;

    const std::u16string& GetPath() const { return fPath; } // ends in "\"
    std::u16string PathOf(const std::u16string& name) const { return fPath + name; }
    int CountEntries() const {
        int count = 0;
        for (CDirScannerImpl scanner(fPath); !scanner.IsAtEnd(); scanner.Advance()) {
            ++count;
        }
        return count;
    }

private:
    static void RemoveTree(const std::u16string& folder) {
        for (CDirScannerImpl scanner(folder); !scanner.IsAtEnd(); scanner.Advance()) {
            const std::u16string path = folder + scanner.GetName();
            if (scanner.IsFolder()) {
                RemoveTree(WithTrailingSeparator(path));
            } else {
                WinDeletePhysicalFile(path);
            }
        }
        WinDeletePhysicalDirectory(folder);
    }

    std::u16string fPath;
};

} // namespace NSFileLibInternals

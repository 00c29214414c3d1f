#include "Tests/FileLib/CTestFolder.h"

#include "FileLib/Source/Win/CDirScannerImpl.h"
#include "FileLib/Source/Win/FileFunctionsWin.h"

#include <vector>

namespace NSFileLibInternals {

namespace {

void RemoveTree(const std::u16string& folder) {
    std::vector<std::u16string> names;
    std::vector<bool> areFolders;
    {
        for (CDirScannerImpl scanner(folder); !scanner.IsAtEnd(); scanner.Advance()) {
            names.push_back(scanner.GetName());
            areFolders.push_back(scanner.IsFolder());
        }
    }
    for (size_t i = 0; i < names.size(); ++i) {
        if (areFolders[i]) {
            RemoveTree(WithTrailingSeparator(folder + names[i]));
        } else {
            WinDeletePhysicalFile(folder + names[i]);
        }
    }
    WinDeletePhysicalDirectory(folder);
}

} // namespace

CTestFolder::CTestFolder() : fPath(WinCreateUniqueDirectory(WinGetTempPath())) {}

CTestFolder::~CTestFolder() {
    try {
        RemoveTree(fPath);
    } catch (...) { // what a failed test leaves open stays behind
    }
}

int CTestFolder::CountEntries() const {
    int count = 0;
    for (CDirScannerImpl scanner(fPath); !scanner.IsAtEnd(); scanner.Advance()) {
        ++count;
    }
    return count;
}

} // namespace NSFileLibInternals

// What the tests of the file library share: the system in memory, what a call raises, and a folder
// of the real system.
#pragma once

#include "Failure/Classes/XClasses.h"
#include "FileLib/Implementation/CDirScannerImpl.h"
#include "FileLib/Implementation/CFileLibImpl.h"
#include "FileLib/Implementation/CSafeOpenReadWriteFileImpl.h"
#include "FileLib/Implementation/FileFunctionsWin.h"
#include "Tests/FileLib/CFakeFileOps.h"

#include <exception>
#include <functional>
#include <string>
#include <typeinfo>
#include <vector>

#include <gtest/gtest.h>

namespace NSFileLibInternals {

constexpr uint32_t kUnknownError = 1000;

// The text of an exception of exactly the class X; anything else is told as such.
template <class X>
std::string TextRaised(const std::function<void()>& call) {
    try {
        call();
    } catch (const std::exception& exception) {
        const bool isX = typeid(exception) == typeid(X);
        return isX ? exception.what() : std::string("another class: ") + exception.what();
    }
    return "nothing raised";
}

const auto kNotFound = TextRaised<NSLichen::XNotFound>;
const auto kCreate = TextRaised<NSLichen::XCreate>;

struct SFailureRow {
    std::string (*fTextRaised)(const std::function<void()>&);
    std::function<void()> fCall;
    std::string fText;
    std::string fOperation = {}; // fails with an unknown error; the text names its function
};

inline void ExpectFailures(CFakeFileOps& ops, const std::vector<SFailureRow>& rows) {
    for (const SFailureRow& row : rows) {
        ops.Script(row.fOperation, {kUnknownError});
        const char* tail = row.fOperation.empty() ? "" : " failed with unrecognized error type";
        EXPECT_EQ(row.fTextRaised(row.fCall), row.fText + tail);
    }
}

template <class TFile>
void WriteText(TFile& file, const std::string& text) {
    file.Write(0, static_cast<int64_t>(text.size()), reinterpret_cast<const uint8_t*>(text.data()));
}

inline void SaveText(const std::u16string& path, const std::string& text) {
    CSafeOpenReadWriteFileImpl file(path);
    WriteText(file, text);
    file.Commit();
}

// A folder of its own for a test, removed with all that is in it.
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

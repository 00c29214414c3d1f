#include "Failure/Classes/XClasses.h"
#include "PorterPackage/FileSupport/CodeModule/CCodeModuleLocation.h"
#include "PorterPackage/FileSupport/FolderHelpers.h"
#include "Tests/FileLib/CFakeFileOps.h"

#include <string>

#include <windows.h>

#include <gtest/gtest.h>

namespace NSPorter {

namespace {

std::wstring SearchFolder() {
    wchar_t folder[300] = {};
    GetDllDirectoryW(300, folder);
    return folder;
}

} // namespace

TEST(CodeModule, GivesTheSearchFolderBackOnEveryPath) {
    for (const wchar_t* folder : {L"C:\\windows", static_cast<const wchar_t*>(nullptr)}) {
        SetDllDirectoryW(folder);
        const std::wstring before = SearchFolder();
        FindCodeModule(nullptr);
        EXPECT_EQ(SearchFolder(), before);
        NSFileLibInternals::CFakeFileOps ops;
        ops.fLongestPath = 3;
        EXPECT_THROW(FindCodeModule(nullptr), NSLichen::XNotFound);
        EXPECT_EQ(SearchFolder(), before);
    }
    NSFileLib::ReleaseFileLibSingleton();
}

TEST(CodeModule, AHandleOfNoModuleIsAPlainFailure) {
    int notAModule = 0;
    EXPECT_THROW(FindCodeModule(&notAModule), NSLichen::NSLichenDetails::XStdException);
}

} // namespace NSPorter

#include "Failure/Classes/XClasses.h"
#include "PorterPackage/FileSupport/CodeModule/CDLLTarget.h"
#include "PorterPackage/FileSupport/CodeModule/LoadedModulePath.h"
#include "PorterPackage/FileSupport/FolderHelpers.h"

#include <memory>

#include <gtest/gtest.h>

namespace NSPorter {

TEST(CodeModule, TheFirstOneMadeIsThatOfTheProcess) {
    EXPECT_EQ(CABCCodeModule::GetCodeModule(), nullptr);
    CCodeModuleLocation location;
    location.fPath1 = u"first";
    auto first = std::make_unique<CDLLTarget>(location);
    {
        const CDLLTarget second{CCodeModuleLocation()};
        EXPECT_EQ(CABCCodeModule::GetCodeModule(), first.get());
    }
    EXPECT_EQ(CABCCodeModule::GetCodeModule(), first.get());
    EXPECT_EQ(CABCCodeModule::GetOwnerThread(), std::this_thread::get_id());
    EXPECT_EQ(first->GetLocation().fPath1, u"first");
    first.reset();
    EXPECT_EQ(CABCCodeModule::GetCodeModule(), nullptr);
    EXPECT_EQ(CABCCodeModule::GetOwnerThread(), std::thread::id());
}

// A test program holds the library itself, so its own file is the module's.
TEST(CodeModule, FindsItsOwnFile) {
    const NSFileLibSupport::FileHandle program =
        NSFileLibSupport::CallFileLib([](NSFileLib::IFileLib& fileLib, int32_t* status) {
            return fileLib.GetExecutableFile(status);
        });
    const CCodeModuleLocation location = FindCodeModule(nullptr);
    EXPECT_EQ(location.fPath1, NSFileLibSupport::GetName(*program));
    EXPECT_EQ(location.fPath2, location.fPath1);
    EXPECT_EQ(NSFileLibSupport::GetName(*location.fFile), location.fPath1);
    EXPECT_EQ(location.fSystemHandle, nullptr);
    NSFileLib::ReleaseFileLibSingleton();
}

TEST(LoadedModulePath, JoinsARelativeNameWithTheDirectoryOfThatTime) {
    const struct {
        const char *fName, *fDirectory, *fPath;
    } rows[] = {{"/usr/lib/x.so", "/home", "/usr/lib/x.so"},
                {"/usr/./lib/././.x.so", "/home", "/usr/lib/.x.so"},
                {"./x.so", "/home/a", "/home/a/x.so"},
                {"x.so", "", "/proc/self/cwd/x.so"},
                {"../x.so", "(unreachable)/b", "/proc/self/cwd/../x.so"},
                {"", "/home", ""}};
    for (const auto& row : rows) {
        EXPECT_EQ(MakeLoadedModulePath(row.fName, row.fDirectory), row.fPath);
    }
}

} // namespace NSPorter

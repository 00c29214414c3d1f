#include "Tests/Host/LibraryCopies.h"

// The library finds its own file when it starts: under every name that the kernel takes, and when
// the name leads nowhere any more.

namespace {

using ReloadPathsTest = CLibraryCopies;

void ExpectWorks(const CLoadedLibrary& library) {
    EXPECT_EQ(library.InitializeDLL(), kLOPResult_OK);
    Hear(library, ShortLOP2());
    library.UninitializeDLL();
}

TEST_F(ReloadPathsTest, StartsFromAnyPath) {
    const std::string folder = std::string(200, 'd') + "/" + std::string(200, 'e') + "/";
    for (const std::string& name :
         {folder + "long.so", std::string("a:b.so"), std::string("what?.so"),
          std::string(" two  spaces .so "), std::string("\xFF\xC3(\xE9.so"),
          std::string("d\xE9?: *|/con.so."), folder + folder + "\xED\xA0\x80:?\x01\\.so"}) {
        const CLoadedLibrary library(Copy(name));
        ExpectWorks(library);
    }
}

TEST_F(ReloadPathsTest, StartsFromARelativePathThatTheHostHasLeft) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(Copy("here.so").parent_path());
    const CLoadedLibrary library("./here.so");
    std::filesystem::current_path(before);
    ExpectWorks(library);
}

TEST_F(ReloadPathsTest, StartsAfterItsFileWasRemovedOrReplaced) {
    const std::filesystem::path gone = Copy("folder/gone.so");
    const CLoadedLibrary removed(gone);
    std::filesystem::remove_all(gone.parent_path());
    ExpectWorks(removed);

    const std::filesystem::path file = Copy("old.so");
    const CLoadedLibrary replaced(file);
    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
    ExpectWorks(replaced);
}

} // namespace

#include "FileLib/Platform/UserFolders_posix.h"

#include "FileLib/Rules/PosixNameCodec.h"
#include "Tests/FileLib/CTestFolder.h"

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

namespace NSFileLibInternals {

TEST(UserFolders, AsTheUserHasThem) {
    const CTestFolder folder;
    const std::string place = PosixFromNative(folder.GetPath());
    const std::string home = place.substr(0, place.size() - 1);
    const auto find = [&] { return FindUserFolder(home, "DOCUMENTS", "Documents"); };
    EXPECT_EQ(find(), "");
    std::filesystem::create_directories(place + ".config");
    std::filesystem::create_directories(place + "Documents");
    EXPECT_EQ(find(), home + "/Documents");

    const struct {
        const char* fText;
        std::string fFolder;
    } cases[] = {
        {"# XDG_DOCUMENTS_DIR=\"/comment\"\nXDG_DESKTOP_DIR=\"/desk\"\n", home + "/Documents"},
        {"XDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n", home + "/Dokumente"},
        {"  XDG_DOCUMENTS_DIR=\"/srv/a \\\"b\\\" \\$c/\"", "/srv/a \"b\" $c"},
        {"XDG_DOCUMENTS_DIR=\"relative\"\n", home + "/Documents"},
        {"XDG_DOCUMENTS_DIR=\"/a\"\nXDG_DOCUMENTS_DIR=\"/b\"\n", "/b"},
        {"XDG_DOCUMENTS_DIR=\"$HOME/\"", home},
    };
    for (const auto& [text, expected] : cases) {
        std::ofstream(place + ".config/user-dirs.dirs") << text;
        EXPECT_EQ(find(), expected) << text;
    }
    EXPECT_EQ(FindUserFolder("", "DOCUMENTS", "Documents"), "");
}

} // namespace NSFileLibInternals

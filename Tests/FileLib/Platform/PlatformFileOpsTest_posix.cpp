// What only POSIX can do to the platform operations: names of any bytes, FIFOs, links, owners, and
// paths of any length.

#include "FileLib/Platform/PosixErrors.h"
#include "FileLib/Platform/UserFolders_posix.h"
#include "FileLib/Rules/PosixNameCodec.h"
#include "Tests/FileLib/FileLibTest.h"

#include <cerrno>
#include <fstream>

#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace NSFileLibInternals {

namespace {

using namespace NSLichen;
using L = CFileLibImpl;

class PosixFileOps : public testing::Test {
protected:
    const CTestFolder fFolder;
    const std::string fPlace = PosixFromNative(fFolder.GetPath()); // ends in "/"
    const std::u16string fA = fFolder.PathOf(u".a");
    const std::u16string fB = fFolder.PathOf(u"b");
    const std::string fBytesOfA = PosixFromNative(fA);
};

void Touch(const std::string& path) {
    std::ofstream(path) << "text";
}

struct stat StatusOf(const std::string& path) {
    struct stat status = {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0) << path;
    return status;
}

// Saves as an ordinary user who is a member of these groups. Needs a privileged process.
bool SaveAsUser(const std::u16string& path, const std::vector<gid_t>& groups) {
    constexpr uid_t kUser = 99;
    const pid_t child = fork();
    if (child == 0) {
        const bool isUser = setgroups(groups.size(), groups.data()) == 0 && setgid(kUser) == 0 &&
                            setuid(kUser) == 0;
        try {
            SaveText(path, "saved");
            _exit(isUser ? 0 : 1);
        } catch (...) {
            _exit(2);
        }
    }
    int status = -1;
    return waitpid(child, &status, 0) == child && status == 0;
}

TEST_F(PosixFileOps, OpensFilesUnderAnyName) {
    for (const char* name : {"a:b", "what?", "\xFF\xFE", " ", "con", "back\\slash", "dot.", "...",
                             "\xC3\xA9", "\xED\xA0\x80", "new\nline"}) {
        Touch(fPlace + name);
        const CDirScannerImpl scanner(fFolder.GetPath());
        ASSERT_FALSE(scanner.IsAtEnd()) << name;
        EXPECT_EQ(PosixNameFromNative(scanner.GetName()), name);
        const std::u16string path = L::GetChildFile(fFolder.GetPath(), scanner.GetName());
        EXPECT_EQ(COpenReadFileImpl(path).GetSize(), 4);
        EXPECT_EQ(L::InterpretURL(L::GetURL(path)).fPath, path);
        WinDeletePhysicalFile(path);
    }
}

TEST_F(PosixFileOps, OtherVolumesDoNotExist) {
    IPlatformFileOps& ops = GetSystemFileOps();
    const std::u16string away = u"D:\\away";
    SPlatformEntry entry;
    PlatformHandle handle = kNoPlatformHandle;
    SPlatformVolume volume;
    SDiskSpace space;
    std::u16string text;
    Touch(fBytesOfA);
    const SOpenRequest create = {EFileAccess::kReadWrite, kShare_None, EFileCreation::kCreateNew};
    for (const uint32_t answer :
         {ops.WriteAttributes(away, kAttribute_ReadOnly), ops.FindFirst(away, handle, entry),
          ops.FindEntry(away, entry), ops.Open(away, create, handle), ops.Move(fA, away, 0),
          ops.Move(away, fA, 0), ops.Delete(away), ops.MakeFolder(away), ops.RemoveFolder(away),
          ops.MakeTempName(away, u"x", 0, text), ops.ReadVolumeInfo(u"D:\\", volume),
          ops.ReadDiskSpace(u"D:\\", space), ops.ReadLongPath(away, text)}) {
        EXPECT_EQ(answer, kError_PathNotFound);
    }
    uint32_t errorCode = kError_None;
    EXPECT_EQ(ops.ReadAttributes(away, errorCode), kAttributes_None);
    EXPECT_EQ(errorCode, kError_PathNotFound);
    ops.CopyAccessRights(away, fA);
    EXPECT_EQ(ops.FollowLinks(away), away);
    EXPECT_EQ(ops.ReadDriveKind(u"D:\\"), 1U) << "no such root";
}

TEST_F(PosixFileOps, PathsMayBeLong) {
    std::u16string path = fFolder.GetPath();
    for (int i = 0; i < 4; ++i) {
        path = L::CreateFolder(path, std::u16string(200, u'd'));
    }
    path += u"file";
    EXPECT_GT(path.size(), kMaxPathLength);
    COpenReadWriteFileImpl(path, kOpenMode_CreateNew).Close();
    EXPECT_EQ(L::MakeFilePath(path), path);
    EXPECT_THROW(L::CreateFolder(fFolder.GetPath(), std::u16string(256, u'n')), XCreate);
}

TEST_F(PosixFileOps, WhatIsNoFileIsRefusedAtOnce) {
    ASSERT_EQ(mkfifo(fBytesOfA.c_str(), 0600), 0);
    EXPECT_THROW(COpenReadFileImpl reader(fA), XPermission);
    EXPECT_THROW(COpenReadWriteFileImpl(fA, kOpenMode_CreateAlways), XPermission);
}

TEST_F(PosixFileOps, SafeSavingKeepsOwnerGroupAndAccessRights) {
    const std::u16string unique = WinCreateUniqueFile(fFolder.GetPath(), u"x.wav");
    EXPECT_EQ(StatusOf(PosixFromNative(unique)).st_mode & 0777U, 0600U) << "for the user alone";
    Touch(fBytesOfA);
    EXPECT_EQ(WinGetFileInfo(fA).fHidden, 1) << "by its name";
    ASSERT_EQ(chmod(fBytesOfA.c_str(), 0646), 0);
    SaveText(fA, "new");
    EXPECT_EQ(StatusOf(fBytesOfA).st_mode & 0777U, 0646U);
    EXPECT_EQ(StatusOf(fBytesOfA).st_size, 3);
    if (geteuid() != 0) {
        GTEST_SKIP() << "only a privileged process gives files to others";
    }
    constexpr uid_t kOwner = 4321;
    constexpr gid_t kGroup = 1234;
    ASSERT_EQ(chmod(fPlace.c_str(), 0777), 0);
    const auto share = [&] {
        return chown(fBytesOfA.c_str(), kOwner, kGroup) + chmod(fBytesOfA.c_str(), 0664);
    };
    ASSERT_EQ(share(), 0);
    SaveText(fA, "new");
    EXPECT_EQ(StatusOf(fBytesOfA).st_uid, kOwner);
    EXPECT_EQ(StatusOf(fBytesOfA).st_gid, kGroup);
    EXPECT_TRUE(SaveAsUser(fA, {kGroup}));
    EXPECT_EQ(StatusOf(fBytesOfA).st_gid, kGroup);
    EXPECT_EQ(StatusOf(fBytesOfA).st_mode & 0777U, 0664U);
    ASSERT_EQ(share(), 0);
    EXPECT_TRUE(SaveAsUser(fA, {}));
    EXPECT_NE(StatusOf(fBytesOfA).st_gid, kGroup);
    EXPECT_EQ(StatusOf(fBytesOfA).st_mode & 0777U, 0604U) << "another group gets no rights";
}

TEST_F(PosixFileOps, TwoNamesOfOneFileCanBeMovedAndSwapped) {
    Touch(fBytesOfA);
    ASSERT_EQ(link(fBytesOfA.c_str(), PosixFromNative(fB).c_str()), 0);
    WinSwapFilesContents(fA, fB);
    EXPECT_EQ(fFolder.CountEntries(), 2);
    WinMoveFileEx(fA, fB, kMove_Replace);
    EXPECT_FALSE(WinDoesFileExist(fA));
    EXPECT_TRUE(WinDoesFileExist(fB));
}

TEST_F(PosixFileOps, LinksAreFollowedUnlessTheyAreAliases) {
    L::CreateFolder(fFolder.GetPath(), u"sub");
    for (const auto& [target, name] : {std::pair("sub", "link"),
                                       {"sub", "alias.lnk"},
                                       {"none", "dangling"},
                                       {"none", "dangling.lnk"}}) {
        ASSERT_EQ(symlink(target, (fPlace + name).c_str()), 0);
    }
    EXPECT_TRUE(WinDoesDirectoryExist(fFolder.PathOf(u"link")));
    EXPECT_TRUE(WinDoesFileExist(fFolder.PathOf(u"alias.lnk")));
    EXPECT_FALSE(WinDoesFileExist(fFolder.PathOf(u"dangling")));
    EXPECT_EQ(fFolder.CountEntries(), 5);
    EXPECT_EQ(L::ResolvePossibleAlias(fFolder.PathOf(u"alias.lnk")).fPath,
              fFolder.PathOf(u"sub\\"));
    EXPECT_THROW(L::ResolvePossibleAlias(fFolder.PathOf(u"dangling.lnk")), XNotFound);
    EXPECT_EQ(unlink((fPlace + "link").c_str()), 0); // the folder cannot be removed with it
    SaveText(fFolder.PathOf(u"dangling"), "new");
    EXPECT_EQ(StatusOf(fPlace + "none").st_size, 3) << "a save makes what the link leads to";
}

TEST_F(PosixFileOps, InfoAndSavesOfALinkAreThoseOfItsTarget) {
    constexpr int64_t kTime = 132223104000000000;
    Touch(fBytesOfA);
    ASSERT_EQ(chmod(fBytesOfA.c_str(), 0444), 0);
    const struct {
        const char *fTarget, *fName, *fChanged; // what setting changes
    } kRows[] = {{".a", "link", ".a"}, {".a", "x.lnk", "x.lnk"}, {"none", "lost", "lost"}};
    for (const auto& [target, name, changed] : kRows) {
        ASSERT_EQ(symlink(target, (fPlace + name).c_str()), 0);
        const std::u16string path = fFolder.PathOf(NativeNameFromPosix(name));
        NSFileLib::SFileInfo info = WinGetFileInfo(path);
        const bool isTarget = changed == std::string(".a");
        EXPECT_EQ(info.fReadOnly, isTarget ? 1 : 0) << name;
        EXPECT_EQ(info.fSizeLow, isTarget ? 4U : 0U) << name;
        for (CDirScannerImpl scanner(fFolder.GetPath()); !scanner.IsAtEnd(); scanner.Advance()) {
            if (scanner.GetName() == GetNameOfPath(path)) {
                EXPECT_EQ(scanner.GetInfo().fLastWriteTime, info.fLastWriteTime) << name;
                EXPECT_EQ(scanner.GetInfo().fCreationTime, info.fCreationTime) << name;
            }
        }
        const auto before = StatusOf(fBytesOfA);
        info.fLastWriteTime = kTime;
        WinSetFileInfo(path, info);
        EXPECT_EQ(StatusOf(fPlace + changed).st_mtim.tv_sec, 1577836800) << name;
        EXPECT_EQ(StatusOf(fBytesOfA).st_mode, before.st_mode) << name;
        if (!isTarget) {
            EXPECT_EQ(StatusOf(fBytesOfA).st_mtim.tv_sec, before.st_mtim.tv_sec) << name;
            info.fReadOnly = 1;
            EXPECT_THROW(WinSetFileInfo(path, info), XWrite) << "a link has no rights of its own";
        }
        ASSERT_EQ(utimensat(AT_FDCWD, fBytesOfA.c_str(), nullptr, 0), 0);
    }
    ASSERT_EQ(chmod(fBytesOfA.c_str(), 0644), 0);
    SaveText(fFolder.PathOf(u"link"), "through the link");
    EXPECT_TRUE(S_ISLNK(StatusOf(fPlace + "link").st_mode));
    EXPECT_EQ(StatusOf(fBytesOfA).st_size, 16);
    ASSERT_EQ(symlink("ring", (fPlace + "ring").c_str()), 0);
    EXPECT_THROW(SaveText(fFolder.PathOf(u"ring"), ""), XCreate);
}

TEST_F(PosixFileOps, UserFoldersAreAsTheUserHasThem) {
    const std::string home = fPlace.substr(0, fPlace.size() - 1);
    const auto find = [&] { return FindUserFolder(home, "DOCUMENTS", "Documents"); };
    EXPECT_EQ(find(), "");
    L::CreateFolder(fFolder.GetPath(), u".config");
    L::CreateFolder(fFolder.GetPath(), u"Documents");
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
        std::ofstream(fPlace + ".config/user-dirs.dirs") << text;
        EXPECT_EQ(find(), expected) << text;
    }
    EXPECT_EQ(FindUserFolder("", "DOCUMENTS", "Documents"), "");
}

TEST(PosixErrors, NoErrorOfTheSystemLooksLikeABugOfTheCaller) {
    EXPECT_EQ(ErrorOfReadErrno(EIO), kError_ReadFault);
    EXPECT_EQ(ErrorOfWriteErrno(EIO), kError_WriteFault);
    for (int error = 1; error < 200; ++error) {
        const uint32_t code = ErrorOfErrno(error);
        EXPECT_TRUE(code != 0 && code != 21 && code != 87 && code != 1237) << error;
    }
}

} // namespace

} // namespace NSFileLibInternals

// What only POSIX can do to the platform operations: names of any bytes, FIFOs, links, and paths of
// any length.

#include "FileLib/Source/Win/FileFunctionsWin.h"
#include "FileLib/Source/Win/FileLibImplWin.h"
#include "FileLib/Source/Win/PlatformCodes.h"
#include "FileLib/Source/Win/PosixErrors.h"
#include "FileLib/Source/Win/PosixNameCodec.h"

#include "Failure/XClasses.h"
#include "Tests/FileLib/CTestFolder.h"

#include <cerrno>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace NSFileLibInternals {

namespace {

using namespace NSLichen;

std::string BytesOf(const std::u16string& path) {
    return PosixFromNative(path);
}

void Touch(const std::string& path) {
    std::ofstream(path) << "text";
}

TEST(PosixFileOps, OpensFilesUnderAnyName) {
    const CTestFolder folder;
    const CFileLibImpl impl;
    for (const char* name : {"a:b", "what?", "\xFF\xFE", " ", "con", "back\\slash", "dot.", "...",
                             "\xC3\xA9", "\xED\xA0\x80", "new\nline"}) {
        Touch(BytesOf(folder.GetPath()) + name);
        const auto scanner = impl.CreateDirScanner(folder.GetPath());
        ASSERT_FALSE(scanner->IsAtEnd()) << name;
        EXPECT_EQ(PosixNameFromNative(scanner->GetName()), name);
        const std::u16string path = impl.GetChildFile(folder.GetPath(), scanner->GetName());
        EXPECT_EQ(COpenReadFileImpl(path).GetSize(), 4);
        EXPECT_EQ(impl.InterpretURL(impl.GetURL(path)).fPath, path);
        impl.DeletePhysicalFile(path);
    }
}

TEST(PosixFileOps, PathsMayBeLong) {
    const CTestFolder folder;
    const CFileLibImpl impl;
    std::u16string path = folder.GetPath();
    for (int i = 0; i < 4; ++i) {
        path = impl.CreateFolder(path, std::u16string(200, u'd'));
    }
    path += u"file";
    EXPECT_GT(path.size(), kMaxPathLength);
    COpenReadWriteFileImpl(path, kOpenMode_CreateNew).Close();
    EXPECT_EQ(impl.MakeFilePath(path), path);
    EXPECT_THROW(impl.CreateFolder(folder.GetPath(), std::u16string(256, u'n')), XCreate);
}

TEST(PosixFileOps, AFifoIsRefusedAtOnce) {
    const CTestFolder folder;
    const std::u16string path = folder.PathOf(u"fifo");
    ASSERT_EQ(mkfifo(BytesOf(path).c_str(), 0600), 0);
    EXPECT_THROW(COpenReadFileImpl reader(path), XPermission);
    EXPECT_THROW(COpenReadWriteFileImpl(path, kOpenMode_CreateAlways), XPermission);
}

TEST(PosixFileOps, LocksOfOtherProgramsCount) {
    const CTestFolder folder;
    const std::u16string path = folder.PathOf(u"a");
    Touch(BytesOf(path));
    const int descriptor = open(BytesOf(path).c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(descriptor, LOCK_SH), 0);
    EXPECT_NO_THROW(COpenReadFileImpl reader(path));
    EXPECT_THROW(COpenReadWriteFileImpl(path, kOpenMode_CreateAlways), XLocked);
    ASSERT_EQ(flock(descriptor, LOCK_EX), 0);
    EXPECT_THROW(COpenReadFileImpl reader(path), XLocked);
    close(descriptor);
}

TEST(PosixFileOps, SafeSavingKeepsTheAccessRights) {
    const CTestFolder folder;
    const std::u16string path = folder.PathOf(u"a");
    Touch(BytesOf(path));
    ASSERT_EQ(chmod(BytesOf(path).c_str(), 0640), 0);
    CSafeOpenReadWriteFileImpl(path).Commit();
    struct stat status = {};
    ASSERT_EQ(stat(BytesOf(path).c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
    EXPECT_EQ(status.st_size, 0);
}

TEST(PosixFileOps, TwoNamesOfOneFileCanBeMovedAndSwapped) {
    const CTestFolder folder;
    const std::u16string a = folder.PathOf(u"a");
    const std::u16string b = folder.PathOf(u"b");
    Touch(BytesOf(a));
    ASSERT_EQ(link(BytesOf(a).c_str(), BytesOf(b).c_str()), 0);
    WinSwapFilesContents(a, b);
    EXPECT_EQ(folder.CountEntries(), 2);
    WinMoveFileEx(a, b, kMove_Replace);
    EXPECT_FALSE(WinDoesFileExist(a));
    EXPECT_TRUE(WinDoesFileExist(b));
}

TEST(PosixFileOps, LinksAreFollowedUnlessTheyAreAliases) {
    const CTestFolder folder;
    const CFileLibImpl impl;
    const std::string place = BytesOf(folder.GetPath());
    impl.CreateFolder(folder.GetPath(), u"sub");
    ASSERT_EQ(symlink("sub", (place + "link").c_str()), 0);
    ASSERT_EQ(symlink("sub", (place + "alias.lnk").c_str()), 0);
    ASSERT_EQ(symlink("none", (place + "dangling").c_str()), 0);
    ASSERT_EQ(symlink("none", (place + "dangling.lnk").c_str()), 0);
    EXPECT_TRUE(WinDoesDirectoryExist(folder.PathOf(u"link")));
    EXPECT_TRUE(WinDoesFileExist(folder.PathOf(u"alias.lnk")));
    EXPECT_FALSE(WinDoesFileExist(folder.PathOf(u"dangling")));
    EXPECT_EQ(folder.CountEntries(), 5);
    EXPECT_EQ(impl.ResolvePossibleAlias(folder.PathOf(u"alias.lnk")).fPath,
              folder.PathOf(u"sub\\"));
    EXPECT_THROW(impl.ResolvePossibleAlias(folder.PathOf(u"dangling.lnk")), XNotFound);
}

TEST(PosixFileOps, HiddenAndReadOnlyComeFromNameAndMode) {
    const CTestFolder folder;
    const std::u16string path = folder.PathOf(u".a");
    Touch(BytesOf(path));
    SFileInfo info = WinGetFileInfo(path);
    EXPECT_EQ(info.fHidden, 1);
    info.fReadOnly = 1;
    WinSetFileInfo(path, info);
    EXPECT_EQ(WinGetFileInfo(path).fReadOnly, 1) << "also for one who may write everything";
    info.fReadOnly = 0;
    WinSetFileInfo(path, info);
    EXPECT_EQ(WinGetFileInfo(path).fReadOnly, 0);
}

TEST(PosixFileOps, NoErrorOfTheSystemLooksLikeABugOfTheCaller) {
    EXPECT_EQ(ErrorOfReadErrno(EIO), kError_ReadFault);
    EXPECT_EQ(ErrorOfWriteErrno(EIO), kError_WriteFault);
    for (int error = 1; error < 200; ++error) {
        const uint32_t code = ErrorOfErrno(error);
        EXPECT_TRUE(code != 0 && code != 21 && code != 87 && code != 1237) << error;
    }
}

} // namespace

} // namespace NSFileLibInternals

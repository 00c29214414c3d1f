// What only POSIX can do to the platform operations: names of any bytes, FIFOs, links, and paths of
// any length.

#include "Failure/Classes/XClasses.h"
#include "FileLib/Implementation/CDirScannerImpl.h"
#include "FileLib/Implementation/CFileLibImpl.h"
#include "FileLib/Implementation/CSafeOpenReadWriteFileImpl.h"
#include "FileLib/Implementation/FileFunctionsWin.h"
#include "FileLib/Platform/PlatformCodes.h"
#include "FileLib/Platform/PosixErrors.h"
#include "FileLib/Rules/PosixNameCodec.h"
#include "Tests/FileLib/CTestFolder.h"

#include <cerrno>
#include <fstream>
#include <iterator>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace NSFileLibInternals {

namespace {

using namespace NSLichen;

class PosixFileOps : public testing::Test {
protected:
    const CTestFolder fFolder;
    const std::u16string fA = fFolder.PathOf(u".a");
    const std::u16string fB = fFolder.PathOf(u"b");
    const std::string fBytesOfA = PosixFromNative(fA);
};

void Touch(const std::string& path) {
    std::ofstream(path) << "text";
}

TEST_F(PosixFileOps, OpensFilesUnderAnyName) {
    for (const char* name : {"a:b", "what?", "\xFF\xFE", " ", "con", "back\\slash", "dot.", "...",
                             "\xC3\xA9", "\xED\xA0\x80", "new\nline"}) {
        Touch(PosixFromNative(fFolder.GetPath()) + name);
        const auto scanner = std::make_unique<CDirScannerImpl>(fFolder.GetPath());
        ASSERT_FALSE(scanner->IsAtEnd()) << name;
        EXPECT_EQ(PosixNameFromNative(scanner->GetName()), name);
        const std::u16string path =
            CFileLibImpl::GetChildFile(fFolder.GetPath(), scanner->GetName());
        EXPECT_EQ(COpenReadFileImpl(path).GetSize(), 4);
        EXPECT_EQ(CFileLibImpl::InterpretURL(CFileLibImpl::GetURL(path)).fPath, path);
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
    const uint32_t answers[] = {
        ops.WriteAttributes(away, kAttribute_ReadOnly),
        ops.FindFirst(away, handle, entry),
        ops.FindEntry(away, entry),
        ops.Open(away, {EFileAccess::kReadWrite, kShare_None, EFileCreation::kCreateNew}, handle),
        ops.Move(fA, away, 0),
        ops.Move(away, fA, 0),
        ops.Delete(away),
        ops.MakeFolder(away),
        ops.RemoveFolder(away),
        ops.MakeTempName(away, u"x", 0, text),
        ops.ReadVolumeInfo(u"D:\\", volume),
        ops.ReadDiskSpace(u"D:\\", space),
        ops.ReadLongPath(away, text),
    };
    for (size_t i = 0; i < std::size(answers); ++i) {
        EXPECT_EQ(answers[i], kError_PathNotFound) << i;
    }
    uint32_t errorCode = kError_None;
    EXPECT_EQ(ops.ReadAttributes(away, errorCode), kAttributes_None);
    EXPECT_EQ(errorCode, kError_PathNotFound);
    ops.CopyAccessRights(away, fA);
    EXPECT_EQ(ops.ReadDriveKind(u"D:\\"), 1U) << "no such root";
}

TEST_F(PosixFileOps, PathsMayBeLong) {
    std::u16string path = fFolder.GetPath();
    for (int i = 0; i < 4; ++i) {
        path = CFileLibImpl::CreateFolder(path, std::u16string(200, u'd'));
    }
    path += u"file";
    EXPECT_GT(path.size(), kMaxPathLength);
    COpenReadWriteFileImpl(path, kOpenMode_CreateNew).Close();
    EXPECT_EQ(CFileLibImpl::MakeFilePath(path), path);
    EXPECT_THROW(CFileLibImpl::CreateFolder(fFolder.GetPath(), std::u16string(256, u'n')), XCreate);
}

TEST_F(PosixFileOps, WhatIsNoFileIsRefusedAtOnce) {
    ASSERT_EQ(mkfifo(fBytesOfA.c_str(), 0600), 0);
    EXPECT_THROW(COpenReadFileImpl reader(fA), XPermission);
    EXPECT_THROW(COpenReadWriteFileImpl(fA, kOpenMode_CreateAlways), XPermission);
}

TEST_F(PosixFileOps, SafeSavingKeepsTheAccessRights) {
    Touch(fBytesOfA);
    EXPECT_EQ(WinGetFileInfo(fA).fHidden, 1) << "by its name";
    ASSERT_EQ(chmod(fBytesOfA.c_str(), 0640), 0);
    CSafeOpenReadWriteFileImpl(fA).Commit();
    struct stat status = {};
    ASSERT_EQ(stat(fBytesOfA.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
    EXPECT_EQ(status.st_size, 0);
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
    const std::string place = PosixFromNative(fFolder.GetPath());
    CFileLibImpl::CreateFolder(fFolder.GetPath(), u"sub");
    ASSERT_EQ(symlink("sub", (place + "link").c_str()), 0);
    ASSERT_EQ(symlink("sub", (place + "alias.lnk").c_str()), 0);
    ASSERT_EQ(symlink("none", (place + "dangling").c_str()), 0);
    ASSERT_EQ(symlink("none", (place + "dangling.lnk").c_str()), 0);
    EXPECT_TRUE(WinDoesDirectoryExist(fFolder.PathOf(u"link")));
    EXPECT_TRUE(WinDoesFileExist(fFolder.PathOf(u"alias.lnk")));
    EXPECT_FALSE(WinDoesFileExist(fFolder.PathOf(u"dangling")));
    EXPECT_EQ(fFolder.CountEntries(), 5);
    EXPECT_EQ(CFileLibImpl::ResolvePossibleAlias(fFolder.PathOf(u"alias.lnk")).fPath,
              fFolder.PathOf(u"sub\\"));
    EXPECT_THROW(CFileLibImpl::ResolvePossibleAlias(fFolder.PathOf(u"dangling.lnk")), XNotFound);
    EXPECT_EQ(unlink((place + "link").c_str()), 0); // the folder cannot be removed with it
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

// The operations of the system that the tests run on, through the functions that use them.

#include "FileLib/Source/Win/FileFunctionsWin.h"
#include "FileLib/Source/Win/FileLibImplWin.h"
#include "FileLib/Source/Win/PlatformCodes.h"

#include "Failure/XClasses.h"
#include "Tests/FileLib/CTestFolder.h"

#include <set>
#include <string>

#include <gtest/gtest.h>

namespace NSFileLibInternals {

namespace {

using namespace NSLichen;

void WriteFileText(const std::u16string& path, const std::string& text) {
    COpenReadWriteFileImpl file(path, kOpenMode_CreateAlways);
    file.Write(0, static_cast<int64_t>(text.size()), reinterpret_cast<const uint8_t*>(text.data()));
}

std::string ReadFileText(const std::u16string& path) {
    const COpenReadFileImpl file(path);
    std::string text(static_cast<size_t>(file.GetSize()), '\0');
    file.Read(0, file.GetSize(), reinterpret_cast<uint8_t*>(text.data()));
    return text;
}

TEST(PlatformFileOps, FilesAreCreatedReadAndDeleted) {
    const CTestFolder folder;
    const std::u16string path = folder.PathOf(u"\xE9\x4E2D\xD834\xDD1E.bin");
    WriteFileText(path, "a longer text");
    WriteFileText(path, "text");
    EXPECT_EQ(ReadFileText(path), "text") << "creating empties";
    EXPECT_THROW(COpenReadWriteFileImpl(path, kOpenMode_CreateNew), XCreate);
    const uint8_t byte = 7;
    {
        COpenReadWriteFileImpl file(path, kOpenMode_CreateAlways);
        constexpr int64_t kFar = int64_t{5} << 30; // a hole, past what 32 bits can say
        file.Write(kFar, 1, &byte);
        EXPECT_EQ(file.GetSize(), kFar + 1);
        uint8_t bytes[2] = {};
        file.Read(kFar, 1, bytes);
        EXPECT_EQ(bytes[0], 7);
        EXPECT_THROW(file.Read(kFar, 2, bytes), XRead);
    }
    WinDeletePhysicalFile(path);
    EXPECT_FALSE(WinDoesFileExist(path));
    EXPECT_THROW(WinDeletePhysicalFile(path), XNotFound);
    EXPECT_THROW(COpenReadFileImpl(folder.PathOf(u"none")), XNotFound);
}

TEST(PlatformFileOps, AWriterExcludesOthersAndReadersDoNot) {
    const CTestFolder folder;
    const std::u16string path = folder.PathOf(u"a");
    {
        const COpenReadWriteFileImpl writer(path, kOpenMode_CreateNew);
        EXPECT_THROW(COpenReadFileImpl reader(path), XLocked);
        EXPECT_THROW(COpenReadWriteFileImpl(path, kOpenMode_CreateAlways), XLocked);
    }
    WriteFileText(path, "text");
    const COpenReadFileImpl reader(path);
    EXPECT_NO_THROW(COpenReadFileImpl second(path));
    EXPECT_THROW(COpenReadWriteFileImpl(path, kOpenMode_CreateAlways), XLocked);
    EXPECT_EQ(reader.GetSize(), 4) << "a refused writer must not empty the file";
}

TEST(PlatformFileOps, SafeSavingAndSwapping) {
    const CTestFolder folder;
    const std::u16string a = folder.PathOf(u"a.wav");
    const std::u16string b = folder.PathOf(u"b.wav");
    WriteFileText(a, "a");
    WriteFileText(b, "b");
    WinSwapFilesContents(a, b);
    EXPECT_EQ(ReadFileText(a) + ReadFileText(b), "ba");
    {
        CSafeOpenReadWriteFileImpl file(a);
        const uint8_t letter = 'c';
        file.Write(0, 1, &letter);
        file.Commit();
    }
    EXPECT_EQ(ReadFileText(a), "c");
    EXPECT_EQ(folder.CountEntries(), 2);
    SFileInfo info = WinGetFileInfo(a);
    info.fReadOnly = 1;
    WinSetFileInfo(a, info);
    EXPECT_THROW(CSafeOpenReadWriteFileImpl file(a), XLocked);
    info.fReadOnly = 0;
    WinSetFileInfo(a, info);
}

TEST(PlatformFileOps, InfoAndTimes) {
    const CTestFolder folder;
    const std::u16string path = folder.PathOf(u"a.LNK");
    WriteFileText(path, "text");
    SFileInfo info = WinGetFileInfo(path);
    EXPECT_EQ(info.fSizeLow, 4U);
    EXPECT_EQ(info.fAlias, 1);
    // Made between the beginnings of 2020 and 2200.
    EXPECT_GT(info.fCreationTime, 132223104000000000);
    EXPECT_LT(info.fCreationTime, 189026784000000000);
    info.fCreationTime = 0;
    info.fLastWriteTime = 132223104000000000 + 1234567;
    WinSetFileInfo(path, info);
    EXPECT_EQ(WinGetFileInfo(path).fLastWriteTime, info.fLastWriteTime);
    EXPECT_THROW(WinGetFileInfo(folder.PathOf(u"none")), XNotFound);
}

TEST(PlatformFileOps, FoldersAreMadeScannedAndRemoved) {
    const CTestFolder folder;
    const CFileLibImpl impl;
    const std::u16string sub = impl.CreateFolder(folder.GetPath(), u"sub");
    EXPECT_THROW(impl.CreateFolder(folder.GetPath(), u"sub"), XCreate);
    EXPECT_TRUE(impl.CreateDirScanner(sub)->IsAtEnd());
    std::set<std::u16string> wanted = {u"a", u"b.c", u"\xE9"};
    for (const std::u16string& name : wanted) {
        WriteFileText(JoinPath(sub, name), "");
    }
    wanted.insert(GetNameOfPath(impl.CreateUniqueFolder(sub)));
    wanted.insert(GetNameOfPath(impl.CreateUniqueFile(sub, u"x.wav")));
    std::set<std::u16string> found;
    for (const auto scanner = impl.CreateDirScanner(sub); !scanner->IsAtEnd(); scanner->Advance()) {
        found.insert(scanner->GetName());
        EXPECT_EQ(scanner->IsFolder(), impl.DoesChildFolderExist(sub, scanner->GetName()));
    }
    EXPECT_EQ(found, wanted);
    EXPECT_THROW(impl.DeletePhysicalDirectory(sub), XDelete) << "it is not empty";
    EXPECT_THROW(impl.CreateDirScanner(folder.PathOf(u"none")), XNotFound);
    EXPECT_EQ(impl.GetChildDirectory(sub, u".."), folder.GetPath());
    EXPECT_EQ(impl.InterpretURL(impl.GetURL(sub)).fPath, sub);
}

TEST(PlatformFileOps, MovingReplacesOnlyWhenAsked) {
    const CTestFolder folder;
    const std::u16string a = folder.PathOf(u"a");
    const std::u16string b = folder.PathOf(u"b");
    WriteFileText(a, "a");
    WriteFileText(b, "b");
    EXPECT_THROW(WinMoveFileEx(a, b, 0), XNotFound);
    EXPECT_EQ(ReadFileText(b), "b");
    WinMoveFileEx(a, b, kMove_Replace | kMove_WriteThrough);
    EXPECT_EQ(ReadFileText(b), "a");
    EXPECT_FALSE(WinDoesFileExist(a));
}

TEST(PlatformFileOps, AliasesLeadBack) {
    const CTestFolder folder;
    const CFileLibImpl impl;
    const std::u16string file = folder.PathOf(u"target file");
    const std::u16string alias = folder.PathOf(u"alias.lnk");
    WriteFileText(file, "text");
    impl.CreateAlias(alias, file);
    EXPECT_EQ(impl.ResolvePossibleAlias(alias).fPath, file);
    EXPECT_EQ(impl.GetFileInfo(alias).fAlias, 1);
    WriteFileText(folder.PathOf(u"plain.lnk"), "text");
    EXPECT_THROW(impl.ResolvePossibleAlias(folder.PathOf(u"plain.lnk")), XResolve);
}

TEST(PlatformFileOps, VolumesAndWellKnownFolders) {
    const CFileLibImpl impl;
    const std::u16string boot = impl.GetBootVolume();
    EXPECT_EQ(boot, u"C:\\");
    bool isListed = false;
    for (const std::u16string& volume : impl.GetVolumes()) {
        isListed = isListed || volume == boot;
    }
    EXPECT_TRUE(isListed);
    EXPECT_EQ(impl.GetVolumeType(boot), kDrive_Fixed);
    EXPECT_GT(impl.GetDiskSpace(boot).fTotal, 0U);
    EXPECT_GT(impl.GetVolumeInfo(boot).fMaxComponentLength, 0U);
    EXPECT_FALSE(WinDoesVolumeExist(u"Q:\\"));
    EXPECT_FALSE(WinDoesVolumeExist(u"\\\\no-such-server\\share"));
    EXPECT_TRUE(WinDoesDirectoryExist(impl.GetTemporaryFolder()));
    EXPECT_TRUE(WinDoesDirectoryExist(u"C:\\"));
    EXPECT_TRUE(WinDoesFileExist(impl.GetExecutableFile()));
    EXPECT_THROW(impl.GetSpecialFolder(9999), XNotFound);
    EXPECT_EQ(impl.GetVolumeOfFolder(impl.GetTemporaryFolder()), boot);
}

} // namespace

} // namespace NSFileLibInternals

// The operations of the system that the tests run on, through the functions that use them.

#include "Failure/Classes/XClasses.h"
#include "FileLib/Implementation/CDirScannerImpl.h"
#include "FileLib/Implementation/CFileLibImpl.h"
#include "FileLib/Implementation/CSafeOpenReadWriteFileImpl.h"
#include "FileLib/Implementation/FileFunctionsWin.h"
#include "FileLib/Platform/PlatformCodes.h"
#include "Tests/FileLib/CTestFolder.h"

#include <algorithm>
#include <set>
#include <string>
#include <vector>

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

class PlatformFileOps : public testing::Test {
protected:
    const CTestFolder fFolder;
    const std::u16string fA = fFolder.PathOf(u"a.wav");
    const std::u16string fB = fFolder.PathOf(u"\xE9\x4E2D\xD834\xDD1E.bin");
};

TEST_F(PlatformFileOps, FilesAreCreatedReadAndDeleted) {
    WriteFileText(fB, "a longer text");
    WriteFileText(fB, "text");
    EXPECT_EQ(ReadFileText(fB), "text") << "creating empties";
    EXPECT_THROW(COpenReadWriteFileImpl(fB, kOpenMode_CreateNew), XCreate);
    {
        COpenReadWriteFileImpl file(fB, kOpenMode_CreateAlways);
        constexpr int64_t kFar = int64_t{5} << 30; // a hole, past what 32 bits can say
        uint8_t bytes[2] = {7};
        file.Write(kFar, 1, bytes);
        EXPECT_EQ(file.GetSize(), kFar + 1);
        bytes[0] = 0;
        file.Read(kFar, 1, bytes);
        EXPECT_EQ(bytes[0], 7);
        EXPECT_THROW(file.Read(kFar, 2, bytes), XRead);
    }
    WinDeletePhysicalFile(fB);
    EXPECT_FALSE(WinDoesFileExist(fB));
    EXPECT_THROW(WinDeletePhysicalFile(fB), XNotFound);
    EXPECT_THROW(COpenReadFileImpl{fB}, XNotFound);
}

TEST_F(PlatformFileOps, AWriterExcludesOthersAndReadersDoNot) {
    {
        const COpenReadWriteFileImpl writer(fA, kOpenMode_CreateNew);
        EXPECT_THROW(COpenReadFileImpl reader(fA), XLocked);
        EXPECT_THROW(COpenReadWriteFileImpl(fA, kOpenMode_CreateAlways), XLocked);
    }
    WriteFileText(fA, "text");
    const COpenReadFileImpl reader(fA);
    EXPECT_NO_THROW(COpenReadFileImpl second(fA));
    EXPECT_THROW(COpenReadWriteFileImpl(fA, kOpenMode_CreateAlways), XLocked);
    EXPECT_EQ(reader.GetSize(), 4) << "a refused writer must not empty the file";
}

TEST_F(PlatformFileOps, MovingSwappingAndSafeSaving) {
    WriteFileText(fA, "a");
    WriteFileText(fB, "b");
    WinSwapFilesContents(fA, fB);
    EXPECT_EQ(ReadFileText(fA) + ReadFileText(fB), "ba");
    {
        CSafeOpenReadWriteFileImpl file(fA);
        const uint8_t letter = 'c';
        file.Write(0, 1, &letter);
        file.Commit();
    }
    EXPECT_EQ(ReadFileText(fA), "c");
    EXPECT_EQ(fFolder.CountEntries(), 2);
    NSFileLib::SFileInfo info = WinGetFileInfo(fA);
    info.fReadOnly = 1;
    WinSetFileInfo(fA, info);
    EXPECT_THROW(CSafeOpenReadWriteFileImpl file(fA), XLocked);
    info.fReadOnly = 0;
    WinSetFileInfo(fA, info);
    EXPECT_THROW(WinMoveFileEx(fA, fB, 0), XNotFound);
    EXPECT_EQ(ReadFileText(fB), "a");
    WinMoveFileEx(fA, fB, kMove_Replace | kMove_WriteThrough);
    EXPECT_EQ(ReadFileText(fB), "c");
    EXPECT_FALSE(WinDoesFileExist(fA));
}

TEST_F(PlatformFileOps, InfoTimesAndAliases) {
    const std::u16string alias = fFolder.PathOf(u"alias.LNK");
    WriteFileText(alias, "text");
    EXPECT_THROW(CFileLibImpl::ResolvePossibleAlias(alias), XResolve);
    WinDeletePhysicalFile(alias);
    WriteFileText(fA, "text");
    CFileLibImpl::CreateAlias(alias, fA);
    EXPECT_EQ(CFileLibImpl::ResolvePossibleAlias(alias).fPath, fA);
    EXPECT_EQ(WinGetFileInfo(alias).fAlias, 1);
    NSFileLib::SFileInfo info = WinGetFileInfo(fA);
    EXPECT_EQ(info.fSizeLow, 4U);
    // Made between the beginnings of 2020 and 2200.
    EXPECT_GT(info.fCreationTime, 132223104000000000);
    EXPECT_LT(info.fCreationTime, 189026784000000000);
    info.fCreationTime = 0;
    info.fLastWriteTime = 132223104000000000 + 1234567;
    WinSetFileInfo(fA, info);
    EXPECT_EQ(WinGetFileInfo(fA).fLastWriteTime, info.fLastWriteTime);
    EXPECT_THROW(WinGetFileInfo(fB), XNotFound);
}

TEST_F(PlatformFileOps, FoldersAreMadeScannedAndRemoved) {
    const std::u16string sub = CFileLibImpl::CreateFolder(fFolder.GetPath(), u"sub");
    EXPECT_THROW(CFileLibImpl::CreateFolder(fFolder.GetPath(), u"sub"), XCreate);
    EXPECT_TRUE(std::make_unique<CDirScannerImpl>(sub)->IsAtEnd());
    std::set<std::u16string> wanted = {u"a", u"b.c", u"\xE9"};
    for (const std::u16string& name : wanted) {
        WriteFileText(JoinPath(sub, name), "");
    }
    wanted.insert(GetNameOfPath(WinCreateUniqueDirectory(sub)));
    wanted.insert(GetNameOfPath(WinCreateUniqueFile(sub, u"x.wav")));
    std::set<std::u16string> found;
    for (const auto scanner = std::make_unique<CDirScannerImpl>(sub); !scanner->IsAtEnd();
         scanner->Advance()) {
        found.insert(scanner->GetName());
        EXPECT_EQ(scanner->IsFolder(), CFileLibImpl::DoesChildFolderExist(sub, scanner->GetName()));
    }
    EXPECT_EQ(found, wanted);
    EXPECT_THROW(WinDeletePhysicalDirectory(sub), XDelete) << "it is not empty";
    EXPECT_THROW(std::make_unique<CDirScannerImpl>(fFolder.PathOf(u"none")), XNotFound);
    EXPECT_EQ(CFileLibImpl::InterpretURL(CFileLibImpl::GetURL(sub)).fPath, sub);
}

TEST_F(PlatformFileOps, VolumesAndWellKnownFolders) {
    const std::u16string boot = WinGetBootVolume();
    EXPECT_EQ(boot, u"C:\\");
    const std::vector<std::u16string> volumes = WinGetVolumes();
    EXPECT_EQ(std::count(volumes.begin(), volumes.end(), boot), 1);
    EXPECT_EQ(WinGetVolumeType(boot), kDrive_Fixed);
    EXPECT_GT(WinGetDiskFreeSpace(boot).fTotal, 0U);
    EXPECT_GT(WinGetMountedVolumeInfo(boot).fMaxComponentLength, 0U);
    EXPECT_FALSE(WinDoesVolumeExist(u"Q:\\"));
    EXPECT_FALSE(WinDoesVolumeExist(u"\\\\no-such-server\\share"));
    EXPECT_TRUE(WinDoesDirectoryExist(WinGetTempPath()));
    EXPECT_TRUE(WinDoesDirectoryExist(u"C:\\"));
    EXPECT_TRUE(WinDoesFileExist(WinGetExecutablePath()));
    for (const int32_t number : {kSpecialFolder_CommonAppData, kSpecialFolder_Windows}) {
        EXPECT_TRUE(WinDoesDirectoryExist(WinGetSpecialFolderPath(number))) << number;
    }
    EXPECT_THROW(WinGetSpecialFolderPath(9999), XNotFound);
    EXPECT_EQ(GetVolumeOfPath(WinGetTempPath()), boot);
}

} // namespace

} // namespace NSFileLibInternals

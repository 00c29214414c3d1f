// The operations of the system that the tests run on, through the functions that use them.

#include "Tests/FileLib/FileLibTest.h"

#include <algorithm>
#include <set>
#include <thread>

namespace NSFileLibInternals {

namespace {

using namespace NSLichen;
using L = CFileLibImpl;

void WriteFileText(const std::u16string& path, const std::string& text) {
    COpenReadWriteFileImpl file(path, kOpenMode_CreateAlways);
    WriteText(file, text);
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
    NSFileLib::SFileInfo info = WinGetFileInfo(fA);
    const int64_t creationTime = info.fCreationTime;
    info.fCreationTime = 0;
    info.fLastWriteTime = 132223104000000000;
    WinSetFileInfo(fA, info);
    SaveText(fA, "c");
    EXPECT_EQ(ReadFileText(fA), "c");
    EXPECT_EQ(fFolder.CountEntries(), 2);
    info = WinGetFileInfo(fA);
    EXPECT_GT(info.fLastWriteTime, 132223104000000000) << "that of the save";
    EXPECT_GE(info.fCreationTime, creationTime);
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

TEST_F(PlatformFileOps, ManySafeSavesAtOnceDoNotMeet) {
    std::vector<std::thread> threads;
    for (char16_t letter = u'a'; letter < u'i'; ++letter) {
        threads.emplace_back([path = fFolder.PathOf(std::u16string(1, letter) + u".wav")] {
            EXPECT_NO_THROW({
                for (int i = 0; i < 6; ++i) {
                    SaveText(path, std::string(static_cast<size_t>(i), 'x'));
                }
            });
            EXPECT_EQ(ReadFileText(path), "xxxxx");
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(fFolder.CountEntries(), 8);
}

TEST_F(PlatformFileOps, InfoTimesAndAliases) {
    const std::u16string alias = fFolder.PathOf(u"alias.LNK");
    WriteFileText(alias, "text");
    EXPECT_THROW(L::ResolvePossibleAlias(alias), XResolve);
    WinDeletePhysicalFile(alias);
    WriteFileText(fA, "text");
    L::CreateAlias(alias, fA);
    EXPECT_EQ(L::ResolvePossibleAlias(alias).fPath, fA);
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
    const std::u16string sub = L::CreateFolder(fFolder.GetPath(), u"sub");
    EXPECT_THROW(L::CreateFolder(fFolder.GetPath(), u"sub"), XCreate);
    EXPECT_TRUE(CDirScannerImpl(sub).IsAtEnd());
    std::set<std::u16string> wanted = {u"a", u"b.c", u"\xE9"};
    for (const std::u16string& name : wanted) {
        WriteFileText(JoinPath(sub, name), "");
    }
    wanted.insert(GetNameOfPath(WinCreateUniqueDirectory(sub)));
    wanted.insert(GetNameOfPath(WinCreateUniqueFile(sub, u"x.wav")));
    std::set<std::u16string> found;
    for (CDirScannerImpl scanner(sub); !scanner.IsAtEnd(); scanner.Advance()) {
        found.insert(scanner.GetName());
        EXPECT_EQ(scanner.IsFolder(), L::DoesChildFolderExist(sub, scanner.GetName()));
    }
    EXPECT_EQ(found, wanted);
    EXPECT_THROW(WinDeletePhysicalDirectory(sub), XDelete) << "it is not empty";
    EXPECT_THROW(CDirScannerImpl(fFolder.PathOf(u"none")), XNotFound);
    EXPECT_EQ(L::InterpretURL(L::GetURL(sub)).fPath, sub);
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
    EXPECT_TRUE(WinDoesFileExist(WinGetExecutablePath()));
    for (const std::u16string& folder :
         {boot, WinGetTempPath(), WinGetSpecialFolderPath(kSpecialFolder_CommonAppData),
          WinGetSpecialFolderPath(kSpecialFolder_Windows)}) {
        EXPECT_TRUE(WinDoesDirectoryExist(folder)) << testing::PrintToString(folder);
    }
    EXPECT_THROW(WinGetSpecialFolderPath(9999), XNotFound);
}

} // namespace

} // namespace NSFileLibInternals

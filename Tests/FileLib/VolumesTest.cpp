#include "FileLib/Source/Win/Volumes.h"

#include "Failure/XClasses.h"
#include "FileLib/Source/Win/SpecialFolders.h"
#include "Tests/FileLib/CFakeFileOps.h"
#include "Tests/FileLib/TextRaised.h"

#include <gtest/gtest.h>

namespace NSFileLibInternals {

namespace {

using namespace NSLichen;

constexpr uint32_t kUnknownError = 1000;

TEST(Volumes, ExistByTheirKind) {
    CFakeFileOps ops;
    ops.fDrives[u"A:\\"] = {kDrive_Removable, u"\\Device\\Floppy0", kError_NotReady};
    ops.fDrives[u"E:\\"] = {kDrive_Removable, u"\\Device\\HarddiskVolume7", kError_NotReady};
    ops.fDrives[u"\\\\s\\t\\"] = {};
    ops.AddFolder(u"\\\\s\\t");
    ops.fDrives[u"\\\\s\\asleep\\"] = {kDrive_Remote, u"", kError_NotReady};
    ops.fDrives[u"\\\\s\\locked\\"] = {kDrive_Remote, u"", kError_AccessDenied};
    const struct {
        const char16_t* fPath;
        bool fExists;
    } kRows[] = {{u"C:\\", true},
                 {u"C:", true},
                 {u"D:\\", false},
                 {u"A:\\", true}, // a floppy drive needs no medium
                 {u"E:\\", false},
                 {u"\\\\s\\t", true},
                 {u"\\\\s\\asleep\\", true},
                 {u"\\\\s\\locked\\", false},
                 {u"\\\\s\\none\\", false},
                 {u"C:\\Temp", false}};
    for (const auto& row : kRows) {
        EXPECT_EQ(WinDoesVolumeExist(row.fPath), row.fExists) << testing::PrintToString(row.fPath);
        EXPECT_EQ(ops.fErrorMode, 0U);
    }
    EXPECT_EQ(ops.fErrorModeOfLastVolumeCall, kErrorMode_FailCriticalErrors);
}

TEST(Volumes, TellWhatTheyAre) {
    CFakeFileOps ops;
    EXPECT_EQ(WinGetVolumeType(u"C:\\"), kDrive_Fixed);
    EXPECT_EQ(WinGetMountedVolumeInfo(u"C:\\").fLabel, u"label");
    EXPECT_EQ(WinGetDiskFreeSpace(u"C:").fFreeForUser, uint64_t{5} << 32);
    EXPECT_EQ(TextRaised<XNotFound>([] { WinGetVolumeType(u"C:\\Temp"); }),
              "WinIsValidVolumePath failed");
    EXPECT_EQ(TextRaised<XNotFound>([] { WinGetDiskFreeSpace(u"D:\\"); }),
              "WinDoesVolumeExist failed");
    ops.Script("ReadDiskSpace", {kUnknownError});
    EXPECT_EQ(TextRaised<XNotFound>([] { WinGetDiskFreeSpace(u"C:\\"); }),
              "GetDiskFreeSpaceEx failed with unrecognized error type");
    ops.fDrives[u"C:\\"].fVolumeError = kUnknownError;
    EXPECT_EQ(TextRaised<XNotFound>([] { WinGetMountedVolumeInfo(u"C:\\"); }),
              "GetVolumeInformation failed with unrecognized error type");
    ops.fDrives[u"A:\\"] = {kDrive_Removable, u"\\Device\\Floppy0", kError_NotReady};
    EXPECT_EQ(TextRaised<XNotFound>([] { WinGetMountedVolumeInfo(u"A:\\"); }),
              "GetVolumeInformation failed to get info for floppy drive - no disk in drive");
    ops.fDrives[u"C:\\"].fVolumeError = kError_NotReady;
    EXPECT_THROW(WinGetMountedVolumeInfo(u"C:\\"), std::logic_error);
    EXPECT_EQ(ops.fErrorMode, 0U) << "the mode must come back after a failure too";
}

TEST(Volumes, AreListedUnlessOneHasNoRoot) {
    CFakeFileOps ops;
    ops.fDrives[u"D:\\"] = {kDrive_CDRom, u"", kError_NotReady};
    EXPECT_EQ(WinGetVolumes(), (std::vector<std::u16string>{u"C:\\", u"D:\\"}));
    ops.fDrives[u"D:\\"].fKind = kDrive_NoRoot;
    EXPECT_EQ(TextRaised<XNotFound>([] { WinGetVolumes(); }),
              "GetDriveType returned DRIVE_NO_ROOT_DIR");
    ops.Script("ListDriveRoots", {kUnknownError});
    EXPECT_EQ(TextRaised<XNotFound>([] { WinGetVolumes(); }),
              "GetLogicalDriveStrings failed with unrecognized error type");
}

TEST(Volumes, TheBootVolumeIsThatOfTheSystemsFolder) {
    CFakeFileOps ops;
    EXPECT_EQ(WinGetBootVolume(), u"C:\\");
    ops.fWindowsFolder = u"D:\\" + std::u16string(256, u'w');
    EXPECT_EQ(WinGetBootVolume(), u"D:\\");
    ops.fWindowsFolder += u'w';
    EXPECT_EQ(TextRaised<XNotFound>([] { WinGetBootVolume(); }),
              "GetWindowsDirectory failed - folder name to large");
    ops.Script("FindWindowsFolder", {kUnknownError});
    EXPECT_EQ(TextRaised<XNotFound>([] { WinGetBootVolume(); }),
              "GetWindowsDirectory failed with unrecognized error type");
}

TEST(SpecialFolders, AppDataFallsBackToTheSystemsFolder) {
    CFakeFileOps ops;
    ops.fSpecialFolders = {{26, u"C:\\Mine"}, {35, u"C:\\Ours"}, {36, u"C:\\System"}};
    EXPECT_EQ(WinGetAppDataPathImpl(u"Maker", u"Product", false), u"C:\\Mine\\Maker\\Product\\");
    EXPECT_EQ(WinGetAppDataPathImpl(u"Maker", u"Product", true), u"C:\\Ours\\Maker\\Product\\");
    EXPECT_TRUE(ops.HasFile(u"C:\\Ours\\Maker\\Product"));
    EXPECT_EQ(WinGetAppDataPathImpl(u"Maker", u"Product", true), u"C:\\Ours\\Maker\\Product\\")
        << "folders that are there already are fine";
    ops.fSpecialFolders.erase(26);
    EXPECT_EQ(WinGetAppDataPathImpl(u"Maker", u"", false), u"C:\\System\\Maker\\");
    ops.fSpecialFolders.erase(36);
    EXPECT_EQ(WinGetAppDataPathImpl(u"Maker", u"P", false), u"C:\\Windows\\Maker\\P\\");

    ops.Script("MakeFolder", {kUnknownError});
    EXPECT_EQ(TextRaised<XNotFound>([] { WinGetAppDataPathImpl(u"M", u"P", false); }),
              "CreateDirectory failed with unrecognized error type");
    EXPECT_EQ(TextRaised<XNotFound>([] { WinGetAppDataPathImpl(u"M:", u"P", false); }),
              "WinIsValidPath failed");
}

TEST(SpecialFolders, FailInTheirOwnWords) {
    CFakeFileOps ops;
    EXPECT_EQ(WinGetTempPath(), u"C:\\Temp\\");
    EXPECT_EQ(WinGetExecutablePath(), u"C:\\Program\\a.exe");
    ops.Script("FindTempFolder", {kUnknownError});
    EXPECT_EQ(TextRaised<XNotFound>([] { WinGetTempPath(); }),
              "GetTempPath failed with unrecognized error type");
    ops.Script("FindExecutable", {kUnknownError});
    EXPECT_EQ(TextRaised<XNotFound>([] { WinGetExecutablePath(); }),
              "GetModuleFileName failed with unrecognized error type");
    EXPECT_EQ(TextRaised<XNotFound>([] { WinGetSpecialFolderPath(5); }),
              "WinGetSpecialFolderPath failed");
    ops.fSpecialFolders[5] = u"C:\\Documents";
    EXPECT_EQ(WinGetProductFolderPath(5, u"M", u"P"), u"C:\\Documents\\M\\P\\");
    ops.fHasItemPaths = false;
    EXPECT_EQ(TextRaised<XNotFound>([] { WinGetSpecialFolderPath(5); }),
              "SHGetPathFromIDList failed");
}

} // namespace

} // namespace NSFileLibInternals

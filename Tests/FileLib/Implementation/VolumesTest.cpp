#include "FileLib/Implementation/Volumes.h"

#include "Failure/Classes/XClasses.h"
#include "FileLib/Implementation/SpecialFolders.h"
#include "Tests/FileLib/TextRaised.h"

namespace NSFileLibInternals {

namespace {

using namespace NSLichen;

const SFakeDrive kEmptyFloppy = {kDrive_Removable, u"\\Device\\Floppy0", kError_NotReady};

TEST(Volumes, ExistByTheirKind) {
    CFakeFileOps ops;
    ops.fDrives[u"A:\\"] = kEmptyFloppy;
    ops.fDrives[u"E:\\"] = {kDrive_Removable, u"\\Device\\HarddiskVolume7", kError_NotReady};
    ops.fDrives[u"\\\\s\\t\\"] = {};
    ops.AddFolder(u"\\\\s\\t");
    ops.fDrives[u"\\\\s\\asleep\\"] = {kDrive_Remote, u"", kError_NotReady};
    ops.fDrives[u"\\\\s\\locked\\"] = {kDrive_Remote, u"", kError_AccessDenied};
    // A floppy drive needs no medium.
    for (const char16_t* path : {u"C:\\", u"C:", u"A:\\", u"\\\\s\\t", u"\\\\s\\asleep\\"}) {
        EXPECT_TRUE(WinDoesVolumeExist(path)) << testing::PrintToString(path);
    }
    for (const char16_t* path :
         {u"D:\\", u"E:\\", u"\\\\s\\locked\\", u"\\\\s\\none\\", u"C:\\Temp"}) {
        EXPECT_FALSE(WinDoesVolumeExist(path)) << testing::PrintToString(path);
    }
    EXPECT_EQ(ops.fErrorMode, 0U);
    EXPECT_EQ(ops.fErrorModeOfLastVolumeCall, kErrorMode_FailCriticalErrors);
}

TEST(Volumes, TellWhatTheyAreOrFailInTheirOwnWords) {
    CFakeFileOps ops;
    ops.fDrives[u"A:\\"] = kEmptyFloppy;
    EXPECT_EQ(WinGetVolumeType(u"C:\\"), kDrive_Fixed);
    EXPECT_EQ(WinGetMountedVolumeInfo(u"C:\\").fLabel, u"label");
    EXPECT_EQ(WinGetDiskFreeSpace(u"C:").fFreeForUser, uint64_t{5} << 32);
    EXPECT_EQ(WinGetVolumes(), (std::vector<std::u16string>{u"A:\\", u"C:\\"}));
    const auto notFound = TextRaised<XNotFound>;
    ops.fDrives[u"C:\\"].fVolumeError = kUnknownError;
    ExpectFailures(
        ops,
        {{notFound, [] { WinGetVolumeType(u"C:\\Temp"); }, "WinIsValidVolumePath failed"},
         {notFound, [] { WinGetDiskFreeSpace(u"D:\\"); }, "WinDoesVolumeExist failed"},
         {notFound, [] { WinGetMountedVolumeInfo(u"A:\\"); },
          "GetVolumeInformation failed to get info for floppy drive - no disk in drive"},
         {notFound, [] { WinGetMountedVolumeInfo(u"C:\\"); },
          "GetVolumeInformation failed with unrecognized error type"},
         {notFound, [] { WinGetDiskFreeSpace(u"A:\\"); }, "GetDiskFreeSpaceEx", "ReadDiskSpace"},
         {notFound, [] { WinGetVolumes(); }, "GetLogicalDriveStrings", "ListDriveRoots"}});
    ops.fDrives[u"C:\\"] = {kDrive_NoRoot, u"", kError_NotReady};
    EXPECT_EQ(notFound([] { WinGetVolumes(); }), "GetDriveType returned DRIVE_NO_ROOT_DIR");
    ops.fDrives[u"C:\\"].fKind = kDrive_Fixed;
    EXPECT_THROW(WinGetMountedVolumeInfo(u"C:\\"), std::logic_error);
    EXPECT_EQ(ops.fErrorMode, 0U) << "the mode must come back after a failure too";
}

TEST(SpecialFolders, AppDataFallsBackToTheSystemsFolder) {
    CFakeFileOps ops;
    ops.fSpecialFolders = {{26, u"C:\\Mine"}, {35, u"C:\\Ours"}, {36, u"C:\\System"}};
    EXPECT_EQ(WinGetAppDataPathImpl(u"Maker", u"Product", false), u"C:\\Mine\\Maker\\Product\\");
    for (int i = 0; i < 2; ++i) { // folders that are there already are fine
        EXPECT_EQ(WinGetAppDataPathImpl(u"Maker", u"P", true), u"C:\\Ours\\Maker\\P\\");
        EXPECT_TRUE(ops.HasFile(u"C:\\Ours\\Maker\\P"));
    }
    ops.fSpecialFolders.erase(26);
    EXPECT_EQ(WinGetAppDataPathImpl(u"Maker", u"", false), u"C:\\System\\Maker\\");
    ops.fSpecialFolders.erase(36);
    EXPECT_EQ(WinGetAppDataPathImpl(u"Maker", u"P", false), u"C:\\Windows\\Maker\\P\\");
}

TEST(SpecialFolders, FailInTheirOwnWords) {
    CFakeFileOps ops;
    ops.fSpecialFolders[5] = u"C:\\Documents";
    ops.fWindowsFolder = u"D:\\" + std::u16string(256, u'w');
    EXPECT_EQ(WinGetBootVolume(), u"D:\\");
    ops.fWindowsFolder += u'w';
    ops.fHasItemPaths = false;
    const auto notFound = TextRaised<XNotFound>;
    ExpectFailures(
        ops, {{notFound, [] { WinGetTempPath(); }, "GetTempPath", "FindTempFolder"},
              {notFound, [] { WinGetExecutablePath(); }, "GetModuleFileName", "FindExecutable"},
              {notFound, [] { WinGetBootVolume(); },
               "GetWindowsDirectory failed - folder name to large"},
              {notFound, [] { WinGetBootVolume(); }, "GetWindowsDirectory", "FindWindowsFolder"},
              {notFound, [] { WinGetSpecialFolderPath(6); }, "WinGetSpecialFolderPath failed"},
              {notFound, [] { WinGetSpecialFolderPath(5); }, "SHGetPathFromIDList failed"}});
    ops.fHasItemPaths = true;
    ExpectFailures(ops, {{notFound, [] { WinGetProductFolderPath(5, u"N", u"P"); },
                          "CreateDirectory", "MakeFolder"},
                         {notFound, [] { WinGetProductFolderPath(5, u"M:", u"P"); },
                          "WinIsValidPath failed"}});
}

} // namespace

} // namespace NSFileLibInternals

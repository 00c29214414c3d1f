#include "FileLib/Implementation/CFileLibImpl.h"

#include "Tests/FileLib/FileLibTest.h"

namespace NSFileLibInternals {

namespace {

using namespace NSLichen;
using L = CFileLibImpl;

const std::u16string kRoot = u"C:\\";
const std::u16string kFile = u"C:\\Temp\\a.txt";
const std::u16string kAlias = u"C:\\a.lnk";
const SFakeDrive kEmptyFloppy = {kDrive_Removable, u"\\Device\\Floppy0", kError_NotReady};

class FileLibImpl : public testing::Test {
protected:
    FileLibImpl() { fOps.AddFile(kFile, "text", 5); }

    CFakeFileOps fOps;
};

TEST_F(FileLibImpl, InterpretsURLs) {
    for (const auto& [url, path] : {std::pair("file://C:\\Temp\\a.txt", u"C:\\Temp\\a.txt"),
                                    {"file://C:/Temp/a.txt", u"C:\\Temp\\a.txt"},
                                    {"C:/Temp/", u"C:\\Temp\\"},
                                    {"file://C:\\", u"C:\\"}}) {
        const SSpecPath spec = L::InterpretURL(url);
        EXPECT_EQ(spec.fKind, path == kFile ? ESpecKind::kFile : ESpecKind::kFolder) << url;
        EXPECT_EQ(spec.fPath, path);
    }
    EXPECT_EQ(L::GetURL(u"C:\\Temp\\\xE9"), "file://C:\\Temp\\\xC3\xA9");
    for (const char* url : {"file://C:\\None\\", "file:///", "C:\\Temp\\a.txt\\"}) {
        EXPECT_EQ(kNotFound([&] { L::InterpretURL(url); }),
                  "CFileLibImpl::InterpretURL Non valid dir path or dir does not exist");
    }
    for (const char* url : {"file://C:\\Temp", "", "file://", "C:\\none", "C:\\a?"}) {
        EXPECT_EQ(kNotFound([&] { L::InterpretURL(url); }),
                  "CFileLibImpl::InterpretURL Non valid file path or dir does not exist");
    }
}

TEST_F(FileLibImpl, TellsAndSetsInfo) {
    SPlatformEntry entry;
    entry.fName = u"x.LNK";
    entry.fAttributes = kAttribute_ReadOnly | kAttribute_Hidden;
    entry.fSize = (uint64_t{7} << 32) | 9;
    const NSFileLib::SFileInfo all = FileInfoOfEntry(entry);
    EXPECT_EQ(all.fHidden * 100 + all.fReadOnly * 10 + all.fAlias, 111);
    EXPECT_EQ(all.fSizeHigh, 7U);
    EXPECT_EQ(all.fSizeLow, 9U);

    NSFileLib::SFileInfo info = WinGetFileInfo(kFile);
    EXPECT_EQ(info.fHidden + info.fReadOnly + info.fAlias, 0);
    info.fCreationTime = 0; // stays as it is
    info.fLastWriteTime = 42;
    WinSetFileInfo(kFile, info);
    EXPECT_EQ(WinGetFileInfo(kFile).fCreationTime, 5);
    EXPECT_EQ(WinGetFileInfo(kFile).fLastWriteTime, 42);
    EXPECT_NO_THROW(WinGetFileInfo(kRoot));
}

TEST_F(FileLibImpl, FailsInTheWordsOfTheCall) {
    fOps.AddFolder(u"C:\\new");
    NSFileLib::SFileInfo info = WinGetFileInfo(kFile);
    const auto change = [&] {
        info.fHidden = 1 - info.fHidden;
        WinSetFileInfo(kFile, info);
    };
    fOps.Script("FindEntry", {kUnknownError});
    fOps.Script("FindNext", {0, kUnknownError});
    const auto write = TextRaised<XWrite>;
    ExpectFailures(
        fOps,
        {{kNotFound, [&] { WinGetFileInfo(kFile); }, "WinGetFileInfo FindFirstFile failed"},
         {write, change, "SetFileAttributes", "WriteAttributes"},
         {write, change, "CreateFile", "Open"},
         {write, change, "SetFileTime", "WriteTimes"},
         {kNotFound, change, "GetFileAttributes", "FindEntry"},
         {kNotFound, [&] { CDirScannerImpl(kRoot).Advance(); },
          "WinGetFileInfo FindFirstFile failed"},
         {kCreate, [&] { L::CreateFolder(kRoot, u"new"); }, "CreateDirectory failed"},
         {kCreate, [&] { L::CreateFolder(kRoot, u"a:b"); }, "WinIsValidPath failed"},
         {TextRaised<XDelete>, [&] { WinDeletePhysicalDirectory(u"C:\\new\\"); }, "RemoveDirectory",
          "RemoveFolder"},
         {kNotFound, [&] { WinDeletePhysicalFile(kFile); }, "DeleteFile", "Delete"},
         {kNotFound, [&] { WinDeletePhysicalFile(kRoot); }, "WinIsValidFilePath failed"},
         {kNotFound, [] { WinMoveFileEx(kFile, u"C:\\b", 0); }, "MoveFileEx()", "Move"},
         {kNotFound, [] { WinNormalizePath(u"C:\\Temp"); }, "GetLongPathName", "ReadLongPath"},
         {kNotFound, [&] { L::MakeFolderPath(kFile); },
          "CFileLibImpl::WinExtensions_CreateDirSpec taret is not a directory"},
         {kNotFound, [&] { L::MakeFolderPath(u"a"); }, "WinIsValidPath failed"},
         {kNotFound, [&] { L::MakeFilePath(u"C:\\a\\"); }, "WinIsValidFilePath failed"},
         {kNotFound, [&] { L::MakeVolumePath(u"C:\\a"); }, "WinIsValidVolumePath failed"},
         {kNotFound, [&] { L::GetChildFile(kRoot, u"Temp"); },
          "fImpl.GetChildFile child file does not exist"},
         {kNotFound, [&] { L::GetChildDirectory(kRoot, u"none"); },
          "fImpl.GetChildDirectory child directory does not exist"},
         {kNotFound, [&] { L::GetChildDirectory(u"C:\\none\\", u"."); },
          "fImpl.GetChildDirectory child directory does not exist"}});
}

TEST_F(FileLibImpl, TheNameOfAChildIsNotAPath) {
    fOps.AddFolder(u"C:\\Temp\\Sub");
    for (const char16_t* name : {u"Temp\\a.txt", u"Temp\\Sub", u"Temp\\new", u"Temp\\", u"."}) {
        bool isFolder = false;
        EXPECT_FALSE(L::DoesChildFileExist(kRoot, name) || L::DoesChildFolderExist(kRoot, name));
        EXPECT_EQ(kNotFound([&] { L::GetChildInfo(kRoot, name, isFolder); }),
                  "WinIsValidFilePath failed");
        EXPECT_EQ(kCreate([&] { L::CreateFolder(kRoot, name); }), "WinIsValidPath failed");
        EXPECT_THROW(L::GetChildFile(kRoot, name), XNotFound);
    }
    EXPECT_THROW(L::GetChildDirectory(kRoot, u"Temp\\Sub"), XNotFound);
}

TEST_F(FileLibImpl, AliasesFailInTheirOwnWords) {
    fOps.Script("CreateShellLink", {kOLE_AccessDenied});
    EXPECT_EQ(TextRaised<XPermission>([&] { L::CreateAlias(kAlias, kFile); }),
              "WinHandleOLEError E_ACCESSDENIED");
    const auto resolve = [&] { L::ResolvePossibleAlias(kAlias); };
    const auto unresolved = TextRaised<XResolve>;
    ExpectFailures(
        fOps,
        {{kCreate, [&] { L::CreateAlias(u"C:\\a?.lnk", kFile); }, "WinIsValidFilePath failed"},
         {kNotFound, [&] { L::CreateAlias(kAlias, u"C:\\none"); },
          "CFileLibImpl::CreateAlias source file does not exist"},
         {kNotFound, [&] { L::CreateAlias(kAlias, u"C:\\Temp\\"); },
          "CFileLibImpl::CreateAlias source file is not a file"},
         {kNotFound, resolve, "CFileLibImpl::ResolvePossibleAlias alias file does not exist"},
         {kNotFound, [&] { L::ResolvePossibleAlias(u"C:\\Temp\\"); },
          "CFileLibImpl::ResolvePossibleAlias alias file is not a file"},
         {unresolved, [&] { L::ResolvePossibleAlias(kFile); },
          "CFileLibImpl::ResolvePossibleAlias alias file is not an alias"}});

    L::CreateAlias(kAlias, kFile);
    EXPECT_EQ(L::ResolvePossibleAlias(kAlias).fPath, kFile);
    for (const auto& [link, text] :
         {std::pair(SFakeLink{kOLE_BadFormat, ELinkStep::kLoad, kFile},
                    "CFileLibImpl::ResolvePossibleAlias alias file is not an alias"),
          {{0x80004005, ELinkStep::kLoad, kFile}, "persistFile->Load failed"},
          {{0x80004005, ELinkStep::kCreate, kFile}, "WinHandleOLEError unrecognized OLE error"},
          {{0, ELinkStep::kDone, u""}, "shellLink->GetIDList returned NULL but no error"}}) {
        fOps.fLinks[kAlias] = link;
        EXPECT_EQ(unresolved(resolve), text);
    }
    for (const ELinkStep step : {ELinkStep::kCreate, ELinkStep::kLoad}) {
        fOps.fLinks[kAlias] = {kOLE_DeviceNotReady, step, kFile};
        EXPECT_EQ(TextRaised<XNotReady>(resolve), "WinHandleOLEError OLE_ERROR_DEVICE_NOT_READY");
    }
    fOps.fLinks[kAlias] = {0, ELinkStep::kDone, u"C:\\none"};
    EXPECT_EQ(kNotFound(resolve), "WinFindShortcutTarget target does not exist");
    fOps.fLinks[kAlias].fTarget = kFile;
    fOps.Script("ReadAttributes", {kError_AccessDenied, kError_AccessDenied});
    EXPECT_EQ(unresolved(resolve), "CFileLibImpl::ResolvePossibleAlias target is of unknown type");
    fOps.fHasItemPaths = false;
    EXPECT_EQ(kNotFound(resolve), "SHGetPathFromIDList failed");
}

TEST_F(FileLibImpl, VolumesExistByTheirKind) {
    fOps.fDrives[u"A:\\"] = kEmptyFloppy;
    fOps.fDrives[u"E:\\"] = {kDrive_Removable, u"\\Device\\HarddiskVolume7", kError_NotReady};
    fOps.fDrives[u"\\\\s\\t\\"] = {};
    fOps.AddFolder(u"\\\\s\\t");
    fOps.fDrives[u"\\\\s\\asleep\\"] = {kDrive_Remote, u"", kError_NotReady};
    fOps.fDrives[u"\\\\s\\locked\\"] = {kDrive_Remote, u"", kError_AccessDenied};
    // A floppy drive needs no medium.
    for (const char16_t* path : {u"C:\\", u"C:", u"A:\\", u"\\\\s\\t", u"\\\\s\\asleep\\"}) {
        EXPECT_TRUE(WinDoesVolumeExist(path)) << testing::PrintToString(path);
    }
    for (const char16_t* path :
         {u"D:\\", u"E:\\", u"\\\\s\\locked\\", u"\\\\s\\none\\", u"C:\\Temp"}) {
        EXPECT_FALSE(WinDoesVolumeExist(path)) << testing::PrintToString(path);
    }
    EXPECT_EQ(fOps.fErrorMode, 0U);
    EXPECT_EQ(fOps.fErrorModeOfLastVolumeCall, kErrorMode_FailCriticalErrors);
}

TEST_F(FileLibImpl, VolumesTellWhatTheyAreOrFailInTheirOwnWords) {
    fOps.fDrives[u"A:\\"] = kEmptyFloppy;
    EXPECT_EQ(WinGetVolumeType(kRoot), kDrive_Fixed);
    EXPECT_EQ(WinGetMountedVolumeInfo(kRoot).fLabel, u"label");
    EXPECT_EQ(WinGetDiskFreeSpace(u"C:").fFreeForUser, uint64_t{5} << 32);
    EXPECT_EQ(WinGetVolumes(), (std::vector<std::u16string>{u"A:\\", kRoot}));
    SFakeDrive& drive = fOps.fDrives[kRoot];
    drive.fVolumeError = kUnknownError;
    ExpectFailures(
        fOps,
        {{kNotFound, [] { WinGetVolumeType(u"C:\\Temp"); }, "WinIsValidVolumePath failed"},
         {kNotFound, [] { WinGetDiskFreeSpace(u"D:\\"); }, "WinDoesVolumeExist failed"},
         {kNotFound, [] { WinGetMountedVolumeInfo(u"A:\\"); },
          "GetVolumeInformation failed to get info for floppy drive - no disk in drive"},
         {kNotFound, [] { WinGetMountedVolumeInfo(kRoot); },
          "GetVolumeInformation failed with unrecognized error type"},
         {kNotFound, [] { WinGetDiskFreeSpace(u"A:\\"); }, "GetDiskFreeSpaceEx", "ReadDiskSpace"},
         {kNotFound, [] { WinGetVolumes(); }, "GetLogicalDriveStrings", "ListDriveRoots"}});
    drive = {kDrive_NoRoot, u"", kError_NotReady};
    EXPECT_EQ(kNotFound([] { WinGetVolumes(); }), "GetDriveType returned DRIVE_NO_ROOT_DIR");
    drive.fKind = kDrive_Fixed;
    EXPECT_THROW(WinGetMountedVolumeInfo(kRoot), std::logic_error);
    EXPECT_EQ(fOps.fErrorMode, 0U) << "the mode must come back after a failure too";
}

TEST_F(FileLibImpl, SpecialFoldersFallBackOrFailInTheirOwnWords) {
    fOps.fSpecialFolders = {{26, u"C:\\Mine"}, {35, u"C:\\Ours"}, {36, u"C:\\System"}};
    EXPECT_EQ(WinGetAppDataPathImpl(u"M", u"P", false), u"C:\\Mine\\M\\P\\");
    for (int i = 0; i < 2; ++i) { // folders that are there already are fine
        EXPECT_EQ(WinGetAppDataPathImpl(u"M", u"P", true), u"C:\\Ours\\M\\P\\");
        EXPECT_TRUE(fOps.HasFile(u"C:\\Ours\\M\\P"));
    }
    fOps.fSpecialFolders.erase(26);
    EXPECT_EQ(WinGetAppDataPathImpl(u"M", u"", false), u"C:\\System\\M\\");
    fOps.fSpecialFolders = {{5, u"C:\\Documents"}};
    EXPECT_EQ(WinGetAppDataPathImpl(u"M", u"P", false), u"C:\\Windows\\M\\P\\");

    fOps.fWindowsFolder = u"D:\\" + std::u16string(256, u'w');
    EXPECT_EQ(WinGetBootVolume(), u"D:\\");
    fOps.fWindowsFolder += u'w';
    ExpectFailures(
        fOps,
        {{kNotFound, [] { WinGetTempPath(); }, "GetTempPath", "FindTempFolder"},
         {kNotFound, [] { WinGetExecutablePath(); }, "GetModuleFileName", "FindExecutable"},
         {kNotFound, [] { WinGetBootVolume(); },
          "GetWindowsDirectory failed - folder name to large"},
         {kNotFound, [] { WinGetBootVolume(); }, "GetWindowsDirectory", "FindWindowsFolder"},
         {kNotFound, [] { WinGetSpecialFolderPath(6); }, "WinGetSpecialFolderPath failed"},
         {kNotFound, [] { WinGetProductFolderPath(5, u"N", u"P"); }, "CreateDirectory",
          "MakeFolder"},
         {kNotFound, [] { WinGetProductFolderPath(5, u"M:", u"P"); }, "WinIsValidPath failed"}});
    fOps.fHasItemPaths = false;
    EXPECT_EQ(kNotFound([] { WinGetSpecialFolderPath(5); }), "SHGetPathFromIDList failed");
}

} // namespace

} // namespace NSFileLibInternals

#include "FileLib/Implementation/Volumes.h"

#include "Failure/Classes/XClasses.h"
#include "FileLib/Implementation/FileInfo.h"
#include "FileLib/Implementation/SpecialFolders.h"
#include "FileLib/Platform/RaiseForError.h"
#include "FileLib/Rules/NameMaking.h"
#include "FileLib/Rules/PathRules.h"
#include "Text/Comparison.h"

namespace NSFileLibInternals {

using NSLichen::XNotFound;

namespace {

bool IsFloppyDrive(const std::u16string& root) {
    IPlatformFileOps& ops = GetPlatformFileOps();
    std::u16string deviceName;
    return ops.ReadDriveKind(root) == kDrive_Removable &&
           ops.ReadDeviceName(root.substr(0, 2), deviceName) == kError_None &&
           NSTextPackage::ToLowerUtf16(deviceName).find(u"\\device\\floppy") !=
               std::u16string::npos;
}

bool DoesShareExist(const std::u16string& share) {
    SPlatformVolume info;
    const CErrorBoxesOff boxesOff;
    const uint32_t errorCode = GetPlatformFileOps().ReadVolumeInfo(share, info);
    return errorCode == kError_NotReady ||
           (errorCode == kError_None && WinDoesDirectoryExist(share));
}

bool DoesDriveExist(const std::u16string& root) {
    const CErrorBoxesOff boxesOff;
    IPlatformFileOps& ops = GetPlatformFileOps();
    std::u16string longPath;
    return ops.ReadDriveKind(root) != kDrive_NoRoot &&
           (IsFloppyDrive(root) || ops.ReadLongPath(root, longPath) == kError_None);
}

std::u16string RequireVolume(const std::u16string& path) {
    if (!WinIsValidVolumePath(path)) {
        NSLichen::Raise(XNotFound("WinIsValidVolumePath failed"));
    }
    if (!WinDoesVolumeExist(path)) {
        NSLichen::Raise(XNotFound("WinDoesVolumeExist failed"));
    }
    return WithTrailingSeparator(path);
}

} // namespace

bool WinDoesVolumeExist(const std::u16string& path) {
    if (!WinIsValidVolumePath(path)) {
        return false;
    }
    const std::u16string root = WithTrailingSeparator(path);
    return IsSharePath(root) ? DoesShareExist(root) : DoesDriveExist(root);
}

std::vector<std::u16string> WinGetVolumes() {
    IPlatformFileOps& ops = GetPlatformFileOps();
    std::vector<std::u16string> roots;
    CheckForError<XNotFound>(ops.ListDriveRoots(roots),
                             "GetLogicalDriveStrings failed with unrecognized error type");
    for (const std::u16string& root : roots) {
        if (ops.ReadDriveKind(root) == kDrive_NoRoot) {
            NSLichen::Raise(XNotFound("GetDriveType returned DRIVE_NO_ROOT_DIR"));
        }
    }
    return roots;
}

std::u16string WinGetBootVolume() {
    return GetVolumeOfPath(WinGetWindowsPath());
}

uint32_t WinGetVolumeType(const std::u16string& volume) {
    return GetPlatformFileOps().ReadDriveKind(RequireVolume(volume));
}

SPlatformVolume WinGetMountedVolumeInfo(const std::u16string& volume) {
    const std::u16string root = RequireVolume(volume);
    const CErrorBoxesOff boxesOff;
    SPlatformVolume info;
    const uint32_t errorCode = GetPlatformFileOps().ReadVolumeInfo(root, info);
    if (errorCode == kError_NotReady && !IsSharePath(root) && IsFloppyDrive(root)) {
        NSLichen::Raise(XNotFound(
            "GetVolumeInformation failed to get info for floppy drive - no disk in drive"));
    }
    CheckForError<XNotFound>(errorCode, "GetVolumeInformation failed with unrecognized error type");
    return info;
}

SDiskSpace WinGetDiskFreeSpace(const std::u16string& volume) {
    const std::u16string root = RequireVolume(volume);
    const CErrorBoxesOff boxesOff;
    SDiskSpace space;
    CheckForError<XNotFound>(GetPlatformFileOps().ReadDiskSpace(root, space),
                             "GetDiskFreeSpaceEx failed with unrecognized error type");
    return space;
}

} // namespace NSFileLibInternals

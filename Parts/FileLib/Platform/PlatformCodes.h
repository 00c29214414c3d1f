// The numbers that the file functions share with the platform operations: error codes, attribute
// bits, kinds of drive, numbers of special folders. They are the Windows values on every system.
#pragma once

#include <cstdint>

namespace NSFileLibInternals {

constexpr uint32_t kError_None = 0;
constexpr uint32_t kError_FileNotFound = 2;
constexpr uint32_t kError_PathNotFound = 3;
constexpr uint32_t kError_TooManyOpenFiles = 4;
constexpr uint32_t kError_AccessDenied = 5;
constexpr uint32_t kError_NotEnoughMemory = 8;
constexpr uint32_t kError_InvalidDrive = 15;
constexpr uint32_t kError_NotSameDevice = 17;
constexpr uint32_t kError_NoMoreFiles = 18;
constexpr uint32_t kError_WriteProtect = 19;
constexpr uint32_t kError_NotReady = 21;
constexpr uint32_t kError_WriteFault = 29;
constexpr uint32_t kError_ReadFault = 30;
constexpr uint32_t kError_GenFailure = 31;
constexpr uint32_t kError_SharingViolation = 32;
constexpr uint32_t kError_LockViolation = 33;
constexpr uint32_t kError_HandleDiskFull = 39;
constexpr uint32_t kError_FileExists = 80;
constexpr uint32_t kError_CannotMake = 82;
constexpr uint32_t kError_InvalidParameter = 87;
constexpr uint32_t kError_DiskFull = 112;
constexpr uint32_t kError_DirNotEmpty = 145;
constexpr uint32_t kError_AlreadyExists = 183;
constexpr uint32_t kError_FilenameExcedRange = 206;
constexpr uint32_t kError_Retry = 1237;

constexpr uint32_t kAttribute_ReadOnly = 1;
constexpr uint32_t kAttribute_Hidden = 2;
constexpr uint32_t kAttribute_Directory = 16;
constexpr uint32_t kAttribute_Archive = 32;
constexpr uint32_t kAttribute_Normal = 128;
constexpr uint32_t kAttributes_None = 0xFFFFFFFF; // nothing has that path

constexpr uint32_t kDrive_Unknown = 0;
constexpr uint32_t kDrive_NoRoot = 1;
constexpr uint32_t kDrive_Removable = 2;
constexpr uint32_t kDrive_Fixed = 3;
constexpr uint32_t kDrive_Remote = 4;
constexpr uint32_t kDrive_CDRom = 5;

constexpr int32_t kSpecialFolder_Desktop = 0;
constexpr int32_t kSpecialFolder_Personal = 5;
constexpr int32_t kSpecialFolder_AppData = 26;
constexpr int32_t kSpecialFolder_CommonAppData = 35;
constexpr int32_t kSpecialFolder_Windows = 36;

/// Bits for MoveFile's flags as this library numbers them.
constexpr uint32_t kMove_WriteThrough = 1;
constexpr uint32_t kMove_Replace = 2;

/// COM results of shell links.
constexpr uint32_t kOLE_AccessDenied = 0x80070005;
constexpr uint32_t kOLE_NotFound = 0x80070002;
constexpr uint32_t kOLE_BadFormat = 0x8007000B; // a file that is not a link
constexpr uint32_t kOLE_DeviceNotReady = 0x80070015;
constexpr uint32_t kOLE_NetworkPathNotFound = 0x80070035;
constexpr uint32_t kOLE_NetworkNameNoLongerAvailable = 0x80070040;
constexpr uint32_t kOLE_NetworkNameNotFound = 0x80070043;
constexpr uint32_t kOLE_NetworkUserNotAuthenticated = 0x800704DC;

constexpr bool IsOLEFailure(uint32_t result) {
    return (result & 0x80000000U) != 0;
}

/// Bit for SetErrorMode: no dialog when a drive has no medium.
constexpr uint32_t kErrorMode_FailCriticalErrors = 1;

} // namespace NSFileLibInternals

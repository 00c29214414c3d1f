#include "FileLib/Platform/KnownErrors.h"

#include "Failure/Chain/ObjectTypeWords.h"
#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "FileLib/Platform/PlatformCodes.h"

#include <stdexcept>
#include <string>

namespace NSFileLibInternals {

namespace {

using namespace NSLichen;

template <class X>
void RaiseAs(const char* text) {
    Raise(X(text));
}

void RaiseOutOfFileHandles(const char* text) {
    RaiseWithTarget(XOutOfItems(text), FileHandleWord());
}

void RaiseBadAlloc(const char*) {
    Raise(std::bad_alloc());
}

struct SErrorRow {
    uint32_t fCode;
    void (*fRaise)(const char* text);
    const char* fText;
};

template <size_t N>
void RaiseForRow(const SErrorRow (&rows)[N], uint32_t code) {
    for (const SErrorRow& row : rows) {
        if (row.fCode == code) {
            row.fRaise(row.fText);
        }
    }
}

// A success, a drive without a medium, a bad argument and a retry are held to be bugs of the
// caller, so they come out as logic errors.
constexpr SErrorRow kErrorRows[] = {
    {kError_None, RaiseAs<std::logic_error>, "WinThrowExceptionForKnownError(NO_ERROR)"},
    {kError_FileNotFound, RaiseAs<XNotFound>,
     "WinThrowExceptionForKnownError(ERROR_FILE_NOT_FOUND)"},
    {kError_PathNotFound, RaiseAs<XNotFound>,
     "WinThrowExceptionForKnownError(ERROR_PATH_NOT_FOUND)"},
    {kError_TooManyOpenFiles, RaiseOutOfFileHandles,
     "WinThrowExceptionForKnownError(ERROR_TOO_MANY_OPEN_FILES)"},
    {kError_AccessDenied, RaiseAs<XPermission>,
     "WinThrowExceptionForKnownError(ERROR_ACCESS_DENIED)"},
    {kError_NotEnoughMemory, RaiseBadAlloc, ""},
    {kError_InvalidDrive, RaiseAs<XNotFound>,
     "WinThrowExceptionForKnownError(ERROR_INVALID_DRIVE)"},
    {kError_WriteProtect, RaiseAs<XLocked>, "WinThrowExceptionForKnownError(ERROR_WRITE_PROTECT)"},
    {kError_NotReady, RaiseAs<std::logic_error>, "WinThrowExceptionForKnownError(ERROR_NOT_READY)"},
    {kError_WriteFault, RaiseAs<XWrite>, "WinThrowExceptionForKnownError(ERROR_WRITE_FAULT)"},
    {kError_ReadFault, RaiseAs<XRead>, "WinThrowExceptionForKnownError(ERROR_READ_FAULT)"},
    {kError_SharingViolation, RaiseAs<XLocked>,
     "WinThrowExceptionForKnownError(ERROR_SHARING_VIOLATION)"},
    {kError_LockViolation, RaiseAs<XLocked>,
     "WinThrowExceptionForKnownError(ERROR_LOCK_VIOLATION)"},
    {kError_HandleDiskFull, RaiseAs<XOutOfSpace>,
     "WinThrowExceptionForKnownError(ERROR_HANDLE_DISK_FULL)"},
    {kError_CannotMake, RaiseAs<XCreate>, "WinThrowExceptionForKnownError(ERROR_CANNOT_MAKE)"},
    {kError_InvalidParameter, RaiseAs<std::logic_error>,
     "WinThrowExceptionForKnownError(ERROR_INVALID_PARAMETER)"},
    {kError_DiskFull, RaiseAs<XOutOfSpace>, "WinThrowExceptionForKnownError(ERROR_DISK_FULL)"},
    {kError_Retry, RaiseAs<std::logic_error>, "WinThrowExceptionForKnownError(ERROR_RETRY)"},
};

constexpr SErrorRow kOLERows[] = {
    {kOLE_AccessDenied, RaiseAs<XPermission>, "WinHandleOLEError E_ACCESSDENIED"},
    {kOLE_DeviceNotReady, RaiseAs<XNotReady>, "WinHandleOLEError OLE_ERROR_DEVICE_NOT_READY"},
    {kOLE_NetworkPathNotFound, RaiseAs<XNotFound>,
     "WinHandleOLEError OLE_ERROR_NETWORK_PATH_NOT_FOUND"},
    {kOLE_NetworkNameNoLongerAvailable, RaiseAs<XNotFound>,
     "WinHandleOLEError OLE_ERROR_NETWORK_NAME_NO_LONGER_AVAILABLE"},
    {kOLE_NetworkNameNotFound, RaiseAs<XNotFound>,
     "WinHandleOLEError OLE_ERROR_NETWORK_NAME_NOT_FOUND"},
    {kOLE_NetworkUserNotAuthenticated, RaiseAs<XPermission>,
     "WinHandleOLEError OLE_ERROR_NETWORK_USER_NOT_AUTHENTICATED"},
};

} // namespace

void WinThrowExceptionForKnownError(uint32_t code, const char* /*file*/, int /*line*/,
                                    const char* /*function*/) {
    RaiseForRow(kErrorRows, code);
}

void WinThrowExceptionForKnownOLEError(uint32_t result) {
    RaiseForRow(kOLERows, result);
}

void WinHandleOLEError(uint32_t result) {
    if (IsOLEFailure(result)) {
        WinThrowExceptionForKnownOLEError(result);
        RaiseWithTarget(XResolve("WinHandleOLEError unrecognized OLE error"), ReferenceWord());
    }
}

} // namespace NSFileLibInternals

#include "FileLib/Platform/PosixErrors.h"

#include "FileLib/Platform/PlatformCodes.h"

#include <cerrno>

namespace NSFileLibInternals {

uint32_t ErrorOfErrno(int error) noexcept {
    switch (error) {
    case 0:
        return kError_None;
    case ENOENT:
        return kError_FileNotFound;
    case ENOTDIR:
        return kError_PathNotFound;
    case EMFILE:
    case ENFILE:
        return kError_TooManyOpenFiles;
    case EACCES:
    case EPERM:
    case EISDIR:
        return kError_AccessDenied;
    case ENOMEM:
        return kError_NotEnoughMemory;
    case EXDEV:
        return kError_NotSameDevice;
    case EROFS:
        return kError_WriteProtect;
    case EBUSY:
    case ETXTBSY:
    case EWOULDBLOCK:
        return kError_SharingViolation;
    case ENOSPC:
    case EDQUOT:
        return kError_DiskFull;
    case ENOTEMPTY:
        return kError_DirNotEmpty;
    case EEXIST:
        return kError_AlreadyExists;
    case ENAMETOOLONG:
        return kError_FilenameExcedRange;
    default:
        return kError_GenFailure;
    }
}

uint32_t ErrorOfReadErrno(int error) noexcept {
    return error == EIO ? kError_ReadFault : ErrorOfErrno(error);
}

uint32_t ErrorOfWriteErrno(int error) noexcept {
    return error == EIO ? kError_WriteFault : ErrorOfErrno(error);
}

} // namespace NSFileLibInternals

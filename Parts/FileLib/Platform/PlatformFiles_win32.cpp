// Contents, times and sharing of files. Handles of the Windows body are the system's own, but for
// scans.

#include "FileLib/Platform/CSystemFileOps.h"
#include "FileLib/Platform/PlatformCodes.h"
#include "FileLib/Platform/WindowsText.h"
#include "FileLib/Platform/WindowsValues.h"

#include <algorithm>
#include <limits>

#include <windows.h>

namespace NSFileLibInternals {

namespace {

DWORD AccessOf(EFileAccess access) {
    switch (access) {
    case EFileAccess::kReadWrite:
        return GENERIC_READ | GENERIC_WRITE;
    case EFileAccess::kWriteAttributes:
        return FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES;
    case EFileAccess::kRead:
        break;
    }
    return GENERIC_READ;
}

DWORD SharingOf(uint32_t sharing) {
    return ((sharing & kShare_Read) != 0 ? DWORD{FILE_SHARE_READ} : 0) |
           ((sharing & kShare_Write) != 0 ? DWORD{FILE_SHARE_WRITE} : 0);
}

DWORD CreationOf(EFileCreation creation) {
    switch (creation) {
    case EFileCreation::kCreateNew:
        return CREATE_NEW;
    case EFileCreation::kCreateAlways:
        return CREATE_ALWAYS;
    case EFileCreation::kOpenExisting:
        break;
    }
    return OPEN_EXISTING;
}

FILETIME FileTimeFrom(uint64_t time) {
    return {static_cast<DWORD>(time & 0xFFFFFFFFU), static_cast<DWORD>(time >> 32)};
}

// Moves bytes in pieces that a 32-bit count can tell, until all are moved or a piece moves none.
// step answers an error code.
template <class Step>
uint32_t TransferAll(uint64_t position, uint64_t count, uint64_t& transferred, Step step) {
    constexpr uint64_t kMost = uint64_t{1} << 30;
    transferred = 0;
    while (transferred < count) {
        OVERLAPPED place = {};
        place.Offset = static_cast<DWORD>((position + transferred) & 0xFFFFFFFFU);
        place.OffsetHigh = static_cast<DWORD>((position + transferred) >> 32);
        DWORD moved = 0;
        const auto size = static_cast<DWORD>(std::min(count - transferred, kMost));
        const uint32_t errorCode = step(transferred, size, moved, place);
        if (errorCode != kError_None) {
            return errorCode;
        }
        if (moved == 0) {
            break;
        }
        transferred += moved;
    }
    return kError_None;
}

} // namespace

uint32_t CSystemFileOps::Open(const std::u16string& path, const SOpenRequest& request,
                              PlatformHandle& file) {
    const HANDLE handle =
        CreateFileW(WideOf<wchar_t>(path).c_str(), AccessOf(request.fAccess),
                    SharingOf(request.fSharing), nullptr, CreationOf(request.fCreation),
                    FILE_ATTRIBUTE_NORMAL | FILE_FLAG_RANDOM_ACCESS, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return GetLastError();
    }
    file = reinterpret_cast<PlatformHandle>(handle);
    return kError_None;
}

void CSystemFileOps::Close(PlatformHandle file) noexcept {
    CloseHandle(HandleOf(file));
}

uint32_t CSystemFileOps::Read(PlatformHandle file, uint64_t position, uint64_t count,
                              uint8_t* buffer, uint64_t& transferred) {
    return TransferAll(position, count, transferred,
                       [&](uint64_t done, DWORD size, DWORD& moved, OVERLAPPED& place) -> uint32_t {
                           if (ReadFile(HandleOf(file), buffer + done, size, &moved, &place)) {
                               return kError_None;
                           }
                           const DWORD errorCode = GetLastError();
                           return errorCode == ERROR_HANDLE_EOF ? kError_None : errorCode;
                       });
}

uint32_t CSystemFileOps::Write(PlatformHandle file, uint64_t position, uint64_t count,
                               const uint8_t* buffer, uint64_t& transferred) {
    return TransferAll(position, count, transferred,
                       [&](uint64_t done, DWORD size, DWORD& moved, OVERLAPPED& place) -> uint32_t {
                           return WriteFile(HandleOf(file), buffer + done, size, &moved, &place)
                                      ? kError_None
                                      : GetLastError();
                       });
}

uint32_t CSystemFileOps::ReadSize(PlatformHandle file, uint64_t& size) {
    LARGE_INTEGER value = {};
    if (!GetFileSizeEx(HandleOf(file), &value)) {
        return GetLastError();
    }
    size = static_cast<uint64_t>(value.QuadPart);
    return kError_None;
}

uint32_t CSystemFileOps::ReadTimes(PlatformHandle file, SFileTimes& times) {
    FILETIME creation = {};
    FILETIME lastAccess = {};
    FILETIME lastWrite = {};
    if (!GetFileTime(HandleOf(file), &creation, &lastAccess, &lastWrite)) {
        return GetLastError();
    }
    times = {TimeOf(creation), TimeOf(lastAccess), TimeOf(lastWrite)};
    return kError_None;
}

uint32_t CSystemFileOps::WriteTimes(PlatformHandle file, const SFileTimes& times) {
    const FILETIME creation = FileTimeFrom(times.fCreation);
    const FILETIME lastAccess = FileTimeFrom(times.fLastAccess);
    const FILETIME lastWrite = FileTimeFrom(times.fLastWrite);
    const bool isSet = SetFileTime(HandleOf(file), times.fCreation != 0 ? &creation : nullptr,
                                   times.fLastAccess != 0 ? &lastAccess : nullptr,
                                   times.fLastWrite != 0 ? &lastWrite : nullptr) != 0;
    return isSet ? kError_None : GetLastError();
}

} // namespace NSFileLibInternals

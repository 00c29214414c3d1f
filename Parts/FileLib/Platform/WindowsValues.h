// Handles and times of the Windows API as the platform operations tell them.
#pragma once

#include "FileLib/Platform/IPlatformFileOps.h"

#include <cstdint>

#include <windows.h>

namespace NSFileLibInternals {

inline HANDLE HandleOf(PlatformHandle handle) {
    // The operations gave it out as a number; handles are plain numbers on all platforms.
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    return reinterpret_cast<HANDLE>(handle);
}

inline uint64_t TimeOf(const FILETIME& time) {
    return (static_cast<uint64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

} // namespace NSFileLibInternals

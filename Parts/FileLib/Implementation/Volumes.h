// Volumes are named by their root: "C:\" or "\\server\share\".
#pragma once

#include "FileLib/Platform/IPlatformFileOps.h"

#include <cstdint>
#include <string>
#include <vector>

namespace NSFileLibInternals {

/// A floppy drive exists without a medium too, and so does a share that is not ready.
bool WinDoesVolumeExist(const std::u16string& path);

std::vector<std::u16string> WinGetVolumes();
std::u16string WinGetBootVolume();

/// One of kDrive_. XNotFound.
uint32_t WinGetVolumeType(const std::u16string& volume);
/// XNotFound, also for a floppy drive without a medium.
SPlatformVolume WinGetMountedVolumeInfo(const std::u16string& volume);
SDiskSpace WinGetDiskFreeSpace(const std::u16string& volume);

} // namespace NSFileLibInternals

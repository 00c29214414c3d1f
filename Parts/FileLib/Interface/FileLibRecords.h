#pragma once

#include <cstdint>

#include "FileLib/Interface/FileLibStatus.h"

namespace NSFileLib {

/// Of a file or a folder. Flags are 0 or 1; times are 100 ns units since the beginning of 1601,
/// UTC.
struct SFileInfo {
    int32_t fHidden;
    int32_t fReadOnly;
    int32_t fAlias; // by the extension alone
    int64_t fCreationTime;
    int64_t fLastAccessTime;
    int64_t fLastWriteTime;
    uint32_t fSizeHigh; // of the size in bytes
    uint32_t fSizeLow;
};

struct SVolumeInfo {
    char16_t fLabel[kFileLibTextUnits];
    char16_t fFileSystem[kFileLibTextUnits];
    uint32_t fSerialNumber;
    uint32_t fMaxComponentLength; // UTF-16 units
    uint32_t fFlags;              // the platform's
};

} // namespace NSFileLib

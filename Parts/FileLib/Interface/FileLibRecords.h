#pragma once

#include "FileLib/Interface/FileLibStatus.h"

#include <cstdint>

namespace NSFileLib {

/// Of a file or a folder. Flags are 0 or 1; times are 100 ns units since the beginning of 1601,
/// UTC.
struct SFileInfo {
    int32_t fHidden = 0;
    int32_t fReadOnly = 0;
    int32_t fAlias = 0; // by the extension alone
    int64_t fCreationTime = 0;
    int64_t fLastAccessTime = 0;
    int64_t fLastWriteTime = 0;
    uint32_t fSizeHigh = 0; // of the size in bytes
    uint32_t fSizeLow = 0;
};

struct SVolumeInfo {
    char16_t fLabel[kFileLibTextUnits];
    char16_t fFileSystem[kFileLibTextUnits];
    uint32_t fSerialNumber;
    uint32_t fMaxComponentLength; // UTF-16 units
    uint32_t fFlags;              // the platform's
};

} // namespace NSFileLib

#pragma once

#include "FileLib/Interface/FileLibRecords.h"

#include <cstdint>

namespace NSFileLib {

/// Walks the entries of one folder in the platform's order, without "." and "..".
class IDirScanner {
public:
    virtual ~IDirScanner() = default;
    /// 1 past the last entry, where the next two answer kFileLibStatus_IllegalCallSequence.
    virtual int32_t IsAtEnd() const = 0;
    /// Name in a buffer of kFileLibTextUnits; 1 in `isFolder` for a folder.
    virtual int32_t GetCurrent(char16_t* name, SFileInfo* info, int32_t* isFolder) const = 0;
    virtual int32_t Advance() = 0;
    virtual int32_t IsValid() const = 0;
};

} // namespace NSFileLib

#pragma once

#include "Failure/Raising/IByteReader.h"

#include <cstdint>

namespace NSFileLib {

using NSLichen::IByteReader;

/// Positions and counts are in bytes. A host may supply its own writer.
class IByteWriter {
public:
    virtual int32_t Write(int64_t position, int64_t count, const uint8_t* source) = 0;
    virtual int32_t GetSize(int64_t* size) = 0;
    virtual ~IByteWriter() = default;

protected:
    IByteWriter() = default;
    IByteWriter(const IByteWriter&) = default;
    IByteWriter& operator=(const IByteWriter&) = default;
};

} // namespace NSFileLib

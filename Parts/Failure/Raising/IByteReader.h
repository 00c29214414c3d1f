#pragma once

#include <cstdint>

namespace NSLichen {

/// What a byte reader or writer answers when all went well; every other answer is a failure.
constexpr int32_t kByteStreamStatus_OK = 5000;

/// Bytes by position, for code that knows of no media. Hosts may supply their own.
class IByteReader {
public:
    /// Fills the caller's buffer with `count` bytes from `position` on, all or none. Answers a
    /// status; a reader over something that raises may let its exceptions through.
    virtual int32_t Read(int64_t position, int64_t count, uint8_t* buffer) = 0;
    virtual ~IByteReader() = default;

protected:
    IByteReader() = default;
    IByteReader(const IByteReader&) = default;
    IByteReader& operator=(const IByteReader&) = default;
};

} // namespace NSLichen

// The three operations that make a run of bytes a media.
#pragma once

#include <cstdint>

namespace NSPorter {

/// Positions are absolute, and no operation moves a cursor. Whether a position is checked is each
/// media's own matter: read-only views check reads against their limit, memory media check writes
/// alone.
class IMediaImplementation {
public:
    virtual void ReadBytes(int64_t position, int64_t count, uint8_t* destination) const = 0;
    virtual void WriteBytes(int64_t position, int64_t count, const uint8_t* source) = 0;
    /// In bytes.
    virtual int64_t GetLength() const = 0;

protected:
    IMediaImplementation() = default;
    IMediaImplementation(const IMediaImplementation&) = default;
    IMediaImplementation& operator=(const IMediaImplementation&) = default;
    /// Nothing is ever deleted through this interface.
    ~IMediaImplementation() = default;
};

} // namespace NSPorter

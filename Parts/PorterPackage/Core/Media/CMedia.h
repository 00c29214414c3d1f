// A random-access run of bytes with a cursor. All parsing and writing goes through one.
#pragma once

#include "PorterPackage/Core/Media/IMediaImplementation.h"

#include <cstdint>

namespace NSPorter {

/// All numbers are big-endian. Every operation below moves the cursor behind what it took or put,
/// after the transfer: a read or write that throws leaves the cursor where it was. A parser that
/// stands on a media without a limit of its own asks BytesLeft first.
///
/// A media has no lock: it and all views over it belong to one thread at a time.
class CMedia : public IMediaImplementation {
public:
    CMedia() = default;
    /// Takes over the cursor, nothing else.
    CMedia(const CMedia& source) = default;
    CMedia& operator=(const CMedia& source) = default;
    virtual ~CMedia();

    /// The cursor is not limited: it may lie beyond the end or below zero until it is used.
    int64_t GetPosition() const { return fPosition; }
    void SetPosition(int64_t position) { fPosition = position; }
    void Skip(int64_t delta);

    /// Bytes from the cursor to the end; 0 when the cursor lies outside.
    int64_t BytesLeft() const;

    void Read(int64_t count, uint8_t* destination);
    void ReadAt(int64_t position, int64_t count, uint8_t* destination);
    /// Leaves the cursor.
    uint8_t PeekU8() const;
    uint32_t ReadU8();
    uint16_t ReadU16();
    uint32_t ReadU32();
    /// 10 bytes, see ExtendedFloat.h.
    double ReadExtended();

    void Write(int64_t count, const uint8_t* source);
    void WriteAt(int64_t position, int64_t count, const uint8_t* source);
    /// The low 8 bits.
    void WriteU8(uint32_t value);
    void WriteU16(uint16_t value);
    void WriteU32(uint32_t value);
    /// A value that is not finite raises XFormatViolation.
    void WriteExtended(double value);

    /// Copies from the source's cursor to this cursor in pieces of at most `bufferSize` bytes; both
    /// cursors end behind what was copied. A buffer size below 1 raises XStdInvalidArgument.
    void CopyFrom(int64_t byteCount, CMedia& source, int64_t bufferSize);

private:
    int64_t fPosition = 0;
};

} // namespace NSPorter

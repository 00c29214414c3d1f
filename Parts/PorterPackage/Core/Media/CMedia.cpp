#include "PorterPackage/Core/Media/CMedia.h"

#include "Failure/Classes/XClasses.h"
#include "Failure/Raising/Raise.h"
#include "PorterPackage/Core/Bytes/ByteOrder.h"
#include "PorterPackage/Core/Bytes/ExtendedFloat.h"

#include <algorithm>
#include <array>
#include <vector>

namespace NSPorter {

CMedia::~CMedia() = default;

void CMedia::Skip(int64_t delta) {
    // The sum of two positions taken from files may wrap; what comes out is checked when it is
    // used.
    fPosition =
        static_cast<int64_t>(static_cast<uint64_t>(fPosition) + static_cast<uint64_t>(delta));
}

int64_t CMedia::BytesLeft() const {
    const int64_t length = GetLength();
    return fPosition >= 0 && fPosition < length ? length - fPosition : 0;
}

void CMedia::Read(int64_t count, uint8_t* destination) {
    ReadBytes(fPosition, count, destination);
    Skip(count);
}

void CMedia::ReadAt(int64_t position, int64_t count, uint8_t* destination) {
    ReadBytes(position, count, destination);
    fPosition = position;
    Skip(count);
}

uint8_t CMedia::PeekU8() const {
    uint8_t byte = 0;
    ReadBytes(fPosition, 1, &byte);
    return byte;
}

uint32_t CMedia::ReadU8() {
    uint8_t byte = 0;
    Read(1, &byte);
    return byte;
}

uint16_t CMedia::ReadU16() {
    std::array<uint8_t, 2> bytes{};
    Read(2, bytes.data());
    return JoinBytes(bytes[0], bytes[1]);
}

uint32_t CMedia::ReadU32() {
    std::array<uint8_t, 4> bytes{};
    Read(4, bytes.data());
    return DecodeBigEndian(bytes.data());
}

double CMedia::ReadExtended() {
    std::array<uint8_t, kExtendedSize> bytes{};
    Read(kExtendedSize, bytes.data());
    return DecodeExtended(bytes);
}

void CMedia::Write(int64_t count, const uint8_t* source) {
    WriteBytes(fPosition, count, source);
    Skip(count);
}

void CMedia::WriteAt(int64_t position, int64_t count, const uint8_t* source) {
    WriteBytes(position, count, source);
    fPosition = position;
    Skip(count);
}

void CMedia::WriteU8(uint32_t value) {
    const auto byte = static_cast<uint8_t>(value);
    Write(1, &byte);
}

void CMedia::WriteU16(uint16_t value) {
    const std::array<uint8_t, 2> bytes = {HighByte(value), LowByte(value)};
    Write(2, bytes.data());
}

void CMedia::WriteU32(uint32_t value) {
    const std::array<uint8_t, 4> bytes = SplitBytes(value);
    Write(4, bytes.data());
}

void CMedia::WriteExtended(double value) {
    const std::array<uint8_t, kExtendedSize> bytes = EncodeExtended(value);
    Write(kExtendedSize, bytes.data());
}

void CMedia::CopyFrom(int64_t byteCount, CMedia& source, int64_t bufferSize) {
    if (bufferSize < 1) {
        NSLichen::Raise(NSLichen::NSLichenDetails::XStdInvalidArgument(""));
    }
    if (byteCount < 1) {
        return;
    }
    std::vector<uint8_t> buffer(static_cast<size_t>(std::min(byteCount, bufferSize)));
    for (int64_t left = byteCount; left > 0;) {
        const int64_t piece = std::min(left, bufferSize);
        source.Read(piece, buffer.data());
        Write(piece, buffer.data());
        left -= piece;
    }
}

} // namespace NSPorter

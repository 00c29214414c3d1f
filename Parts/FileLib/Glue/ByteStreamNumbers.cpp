#include "FileLib/Glue/ByteStreamNumbers.h"

#include "FileLib/Glue/FileLibFailures.h"
#include "PorterPackage/Core/Bytes/ByteOrder.h"

namespace NSFileLib {

namespace {

void Read(IByteReader& reader, int64_t& position, int64_t count, uint8_t* bytes) {
    ThrowIfByteStreamError(reader.Read(position, count, bytes));
    position += count;
}

void Write(IByteWriter& writer, int64_t& position, int64_t count, const uint8_t* bytes) {
    ThrowIfByteStreamError(writer.Write(position, count, bytes));
    position += count;
}

} // namespace

uint32_t ReadU32(IByteReader& reader, int64_t& position) {
    uint8_t bytes[4] = {};
    Read(reader, position, sizeof bytes, bytes);
    return NSPorter::DecodeBigEndian(bytes);
}

uint8_t ReadU8(IByteReader& reader, int64_t& position) {
    uint8_t byte = 0;
    Read(reader, position, 1, &byte);
    return byte;
}

void WriteU32(IByteWriter& writer, int64_t& position, uint32_t value) {
    const auto bytes = NSPorter::SplitBytes(value);
    Write(writer, position, bytes.size(), bytes.data());
}

void WriteU8(IByteWriter& writer, int64_t& position, uint8_t value) {
    Write(writer, position, 1, &value);
}

} // namespace NSFileLib

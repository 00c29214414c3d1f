#include "PorterPackage/Core/Bytes/SevenBitPacking.h"

#include "PorterPackage/Core/Bytes/CheckFormat.h"

namespace NSPorter {

size_t GetSevenBitPackedSize(size_t sourceSize) {
    return (sourceSize / 7 + (sourceSize % 7 != 0 ? 1 : 0)) * 8;
}

std::vector<uint8_t> PackSevenBit(std::span<const uint8_t> source) {
    std::vector<uint8_t> packed(GetSevenBitPackedSize(source.size()));
    for (size_t i = 0; i < source.size(); ++i) {
        const size_t group = i / 7 * 8;
        const size_t place = i % 7;
        const uint32_t topBit = uint32_t{source[i]} >> 7;
        packed[group + place] = source[i] & 0x7F;
        packed[group + 7] |= static_cast<uint8_t>(topBit << (6 - place));
    }
    return packed;
}

std::vector<uint8_t> UnpackSevenBit(std::span<const uint8_t> packed, size_t length) {
    // Groups are compared, since the packed size of a giant length would not fit.
    CheckFormat(length / 7 + (length % 7 != 0 ? 1 : 0) <= packed.size() / 8);
    std::vector<uint8_t> bytes(length);
    for (size_t i = 0; i < length; ++i) {
        const size_t group = i / 7 * 8;
        const size_t place = i % 7;
        const uint32_t topBit = (uint32_t{packed[group + 7]} >> (6 - place)) & 1;
        bytes[i] = static_cast<uint8_t>((packed[group + place] & 0x7F) | (topBit << 7));
    }
    return bytes;
}

} // namespace NSPorter

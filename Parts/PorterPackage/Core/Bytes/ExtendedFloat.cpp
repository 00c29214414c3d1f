#include "PorterPackage/Core/Bytes/ExtendedFloat.h"

#include "PorterPackage/Core/Bytes/ByteOrder.h"
#include "PorterPackage/Core/Bytes/CheckFormat.h"

#include <cmath>

namespace NSPorter {

namespace {

constexpr int kExponentBias = 16383;

} // namespace

double DecodeExtended(const std::array<uint8_t, kExtendedSize>& bytes) {
    const uint16_t head = JoinBytes(bytes[0], bytes[1]);
    const uint32_t high = DecodeBigEndian(&bytes[2]);
    const uint32_t low = DecodeBigEndian(&bytes[6]);
    if (head == 0 && high == 0 && low == 0) {
        return 0.0;
    }
    const double mantissa =
        static_cast<double>(low) * 0x1p-63 + static_cast<double>(high) * 0x1p-31;
    const double magnitude = mantissa * std::ldexp(1.0, (head & 0x7FFF) - kExponentBias);
    return (head & 0x8000) != 0 ? -magnitude : magnitude;
}

std::array<uint8_t, kExtendedSize> EncodeExtended(double value) {
    CheckFormat(std::isfinite(value));
    std::array<uint8_t, kExtendedSize> bytes{};
    if (value == 0.0) {
        return bytes;
    }
    const double x = std::fabs(value);
    // The logarithm of a value just below a power of two may come out as that power, which leaves
    // the top bit of the mantissa clear; the value is the same.
    const double exponentOfTwo = std::log(x) / std::log(2.0);
    const int exponent = static_cast<int>(exponentOfTwo + kExponentBias);
    const double scaled = std::ldexp(x, kExponentBias + 31 - exponent);
    const auto high = static_cast<uint32_t>(scaled);
    const auto low = static_cast<uint32_t>((scaled - static_cast<double>(high)) * 0x1p32);

    const auto head = static_cast<uint16_t>(exponent | (value < 0.0 ? 0x8000 : 0));
    bytes[0] = HighByte(head);
    bytes[1] = LowByte(head);
    EncodeBigEndian(high, &bytes[2]);
    EncodeBigEndian(low, &bytes[6]);
    return bytes;
}

} // namespace NSPorter

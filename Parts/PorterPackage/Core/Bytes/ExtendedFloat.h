// The 80-bit extended float of AIFF files: sign and 15-bit exponent, then a 64-bit mantissa with an
// explicit leading one, all big-endian.
#pragma once

#include <array>
#include <cstdint>

namespace NSPorter {

constexpr int kExtendedSize = 10;

/// Works in double precision: an exponent beyond double's range gives an infinity, or not a number
/// where the mantissa is 0.
double DecodeExtended(const std::array<uint8_t, kExtendedSize>& bytes);

/// A value that is not finite raises XFormatViolation. Both zeros give ten zero bytes.
std::array<uint8_t, kExtendedSize> EncodeExtended(double value);

} // namespace NSPorter

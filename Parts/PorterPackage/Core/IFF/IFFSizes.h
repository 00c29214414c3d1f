// How the nesting IFF family stores the four bytes of a chunk size.
#pragma once

#include <cstdint>

namespace NSPorter {

using IFFSizeDecoder = uint32_t (*)(const uint8_t* bytes);
using IFFSizeEncoder = void (*)(uint32_t size, uint8_t* bytes);

/// The modes of readers and writers.
constexpr int32_t kIFFMode_BigEndian = 0;
constexpr int32_t kIFFMode_Native = 1;

/// Another mode raises XStdInvalidArgument.
IFFSizeDecoder GetIFFSizeDecoder(int32_t mode);
IFFSizeEncoder GetIFFSizeEncoder(int32_t mode);

} // namespace NSPorter

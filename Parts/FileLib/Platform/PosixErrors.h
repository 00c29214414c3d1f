// errno as Windows error codes.
#pragma once

#include <cstdint>

namespace NSFileLibInternals {

/// Never a code that stands for a bug of the caller: what has no counterpart becomes a code with no
/// row in the error table.
uint32_t ErrorOfErrno(int error) noexcept;
/// The same, with an input or output error told by its direction.
uint32_t ErrorOfReadErrno(int error) noexcept;
uint32_t ErrorOfWriteErrno(int error) noexcept;

} // namespace NSFileLibInternals

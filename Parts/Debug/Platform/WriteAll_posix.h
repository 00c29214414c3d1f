#pragma once

#include <cstddef>

namespace NSDebugPackage {

/// Writes all bytes to an open file, however many calls that takes. False when the system refuses
/// one; what was written until then stays.
bool WriteAll(int file, const void* data, size_t count) noexcept;

} // namespace NSDebugPackage

#pragma once

#include "Failure/Chain/CFailureSite.h"
#include "Failure/Codes/FailureMap.h"

#include <cstdint>
#include <exception>

namespace NSLichen {

// A failure across an interface of plain integers: into an integer inside a catch, and thrown again
// as the same class with the same target type on the far side. The words of this module's custom
// table travel too.

/// The integer for an exception. A tunnelled error leaves exactly as it came in. Throws the integer
/// 5 for a body whose chain names no failure.
int32_t EncodeExceptionToInteger(const std::exception& exception, const SIntegerRange& range,
                                 const SFailureCodeMapEntry* map, const CFailureSite& site);
/// Throws what one of our own integers names; a plain std::exception when it names nothing.
[[noreturn]] void ThrowForIntegerPacked(int32_t value, const SIntegerRange& range,
                                        const SFailureCodeMapEntry* map, const CFailureSite& site);
/// The same for an integer of foreign code, such as a host's reader. One that the map does not know
/// is not read as a packed failure but taken through the system as it is.
[[noreturn]] void ThrowForIntegerTunneled(int32_t value, const SIntegerRange& range,
                                          const SFailureCodeMapEntry* map,
                                          const CFailureSite& site);

} // namespace NSLichen

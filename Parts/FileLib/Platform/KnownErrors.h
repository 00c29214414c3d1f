// Platform error codes as failures.
#pragma once

#include <cstdint>

namespace NSFileLibInternals {

/// Raises the failure of a known code. Returns for a code with no row, so that the caller goes on
/// to raise its own. File, line and function are not read.
void WinThrowExceptionForKnownError(uint32_t code, const char* file = nullptr, int line = 0,
                                    const char* function = nullptr);

/// The same for a COM result: returns for a success and for a failure with no row.
void WinThrowExceptionForKnownOLEError(uint32_t result);

/// Returns for a success only; a failure with no row is XResolve, target "reference".
void WinHandleOLEError(uint32_t result);

} // namespace NSFileLibInternals

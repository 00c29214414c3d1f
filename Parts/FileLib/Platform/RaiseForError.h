// How most platform failures end.
#pragma once

#include "Failure/Raising/Raise.h"
#include "FileLib/Platform/KnownErrors.h"
#include "FileLib/Platform/PlatformCodes.h"

#include <cstdint>
#include <string>

namespace NSFileLibInternals {

/// Raises the failure of a code that is known, and X with the fallback text for any other.
template <class X>
[[noreturn]] void RaiseForError(uint32_t code, const char* fallbackText) {
    WinThrowExceptionForKnownError(code);
    NSLichen::Raise(X(fallbackText));
}

/// The same unless the code is kError_None.
template <class X>
void CheckForError(uint32_t code, const char* fallbackText) {
    if (code != kError_None) {
        RaiseForError<X>(code, fallbackText);
    }
}

} // namespace NSFileLibInternals

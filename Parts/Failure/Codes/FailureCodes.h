#pragma once

#include "Failure/Chain/CFixedName.h"

#include <cstdint>

namespace NSLichen {

/// The kinds of failure. The values are contiguous and travel inside packed integers, so they never
/// change; each but the first names one exception class.
enum EFailureCode : int32_t {
    /// Also marks an item that only adds context to a failure recorded before it.
    kFailureCode_UndefinedException = 5,
    kFailureCode_NonLichenException = 6,
    kFailureCode_Exception = 7,
    kFailureCode_TunneledError = 8,
    kFailureCode_LogicError = 9,
    kFailureCode_LogicError_Domain = 10,
    kFailureCode_LogicError_InvalidArgument = 11,
    kFailureCode_LogicError_Length = 12,
    kFailureCode_LogicError_OutOfRange = 13,
    kFailureCode_LogicError_IllegalCallSequence = 14,
    kFailureCode_LogicError_InvariantCorrupt = 15,
    kFailureCode_BadAlloc = 16,
    kFailureCode_RuntimeError = 17,
    kFailureCode_RuntimeError_Overflow = 18,
    kFailureCode_RuntimeError_Underflow = 19,
    kFailureCode_RuntimeError_RangeError = 20,
    kFailureCode_RuntimeError_UnsupportedFormat = 21,
    kFailureCode_RuntimeError_FormatViolation = 22,
    kFailureCode_RuntimeError_VersionTooOld = 23,
    kFailureCode_RuntimeError_VersionTooNew = 24,
    kFailureCode_RuntimeError_ReadFailure = 25,
    kFailureCode_RuntimeError_WriteFailure = 26,
    kFailureCode_RuntimeError_OutOfSpace = 27,
    kFailureCode_RuntimeError_OutOfItems = 28,
    kFailureCode_RuntimeError_Create = 29,
    kFailureCode_RuntimeError_Open = 30,
    kFailureCode_RuntimeError_Close = 31,
    kFailureCode_RuntimeError_Delete = 32,
    kFailureCode_RuntimeError_ResolveFailure = 33,
    kFailureCode_RuntimeError_NotFound = 34,
    kFailureCode_RuntimeError_AlreadyExists = 35,
    kFailureCode_RuntimeError_Permission = 36,
    kFailureCode_RuntimeError_Locked = 37,
    kFailureCode_RuntimeError_ReadOnly = 38,
    kFailureCode_RuntimeError_NotReady = 39,
    kFailureCode_RuntimeError_Timeout = 40,
    kFailureCode_RuntimeError_Abort = 41,
    kFailureCode_RuntimeError_SilentAbort = 42,
    kFailureCode_UnitTestFailure = 43,
    /// Past the codes: ends a failure map.
    kFailureMapEnd = 44
};

constexpr int32_t kFailureCodeCount = kFailureMapEnd - kFailureCode_UndefinedException;

constexpr bool IsFailureCode(int32_t code) {
    return code >= kFailureCode_UndefinedException && code < kFailureMapEnd;
}

/// The code's name, "kFailureCode_..."; empty for a value that is not a code.
CFixedName GetFailureCodeName(int32_t code);
/// Whether there is a code of that name; the code is left alone when there is none.
bool FindFailureCodeByName(const CFixedName& name, int32_t& code);

} // namespace NSLichen

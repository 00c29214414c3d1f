#pragma once

#include <cstdint>

namespace NSFileLib {

/// What every operation of the file library answers. From kFileLibTunnelFirst on, read unsigned, a
/// status carries a packed failure or an integer of foreign code.
enum EFileLibStatus : int32_t {
    kFileLibStatus_OK = 5000,
    kFileLibStatus_OutOfMemory = 5001,
    kFileLibStatus_BadArgument = 5002, // null or negative
    kFileLibStatus_Invariant = 5003,   // an invalid object
    kFileLibStatus_IllegalCallSequence = 5004,
    kFileLibStatus_LogicError = 5005, // also in an out-status until the operation is done
    kFileLibStatus_OutOfSpace = 5006,
    kFileLibStatus_Create = 5007,
    kFileLibStatus_Locked = 5010,
    kFileLibStatus_NotReady = 5011,
    kFileLibStatus_Permission = 5012,
    kFileLibStatus_Read = 5013,
    kFileLibStatus_Write = 5014,
    kFileLibStatus_FormatViolation = 5015,
    kFileLibStatus_UnsupportedFormat = 5016, // also an unknown interface name
    kFileLibStatus_Resolve = 5017,
    kFileLibStatus_ResolveReference = 5018,
    kFileLibStatus_NotFoundAlias = 5019, // understood, never answered
    kFileLibStatus_NotFound = 5020,
    kFileLibStatus_OutOfItems = 5021,
    kFileLibStatus_Range = 5022,
    kFileLibStatus_RuntimeError = 5023 // also what is not a std::exception
};

constexpr uint32_t kFileLibTunnelFirst = 100000;

/// In an out-argument that an operation has not come to fill; the text form is "666".
constexpr int32_t kFileLibUnfinished = 666;

/// Texts cross the interfaces as UTF-16 with a terminator, in buffers of this many units that the
/// caller owns. A longer result is cut to 1023, or to 1022 where that would split a surrogate pair.
constexpr int32_t kFileLibTextUnits = 1024;

} // namespace NSFileLib

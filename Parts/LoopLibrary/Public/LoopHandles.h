#pragma once

#include "LoopLibrary/Public/LoopLibrary.h"

#include <cstdint>

namespace NSLOPDLL {

class CLOPObject;

/// A handle is the object's address with its four low bytes in reverse order, so that a host does
/// not mistake it for a pointer. The exchange is its own reverse.
constexpr uint64_t ExchangeLowBytes(uint64_t value) {
    return (value & 0xFFFFFFFF00000000U) | ((value & 0x000000FFU) << 24) |
           ((value & 0x0000FF00U) << 8) | ((value & 0x00FF0000U) >> 8) |
           ((value & 0xFF000000U) >> 24);
}

/// Neither looks at what the address holds.
inline LOPHandle HandleFromObject(const CLOPObject* object) {
    return ExchangeLowBytes(reinterpret_cast<uintptr_t>(object));
}

inline CLOPObject* ObjectFromHandle(LOPHandle handle) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): that is what a handle is.
    return reinterpret_cast<CLOPObject*>(static_cast<uintptr_t>(ExchangeLowBytes(handle)));
}

} // namespace NSLOPDLL

#pragma once

#include "Support/Threads/RealTime.h"

#include <cstdint>

namespace NSSupport {

/// Works for a scope in the default floating-point mode (round to nearest, denormals kept, no
/// traps) and gives the caller's mode and sticky flags back on every way out. A host that renders
/// under flush-to-zero thus gets the same bits as any other.
class CFloatingPointMode {
public:
    CFloatingPointMode() noexcept LOOP_REALTIME;
    ~CFloatingPointMode() noexcept LOOP_REALTIME;
    CFloatingPointMode(const CFloatingPointMode&) = delete;
    CFloatingPointMode& operator=(const CFloatingPointMode&) = delete;

private:
    uint64_t fSaved[4]; // as the processor's home needs it
};

} // namespace NSSupport

#pragma once

#include <cstdint>

namespace NSSupport {

/// Works for a scope in the default floating-point mode (round to nearest, denormals kept, no
/// traps) and gives the caller's mode and sticky flags back on every way out. A host that renders
/// under flush-to-zero thus gets the same bits as any other. Real-time safe.
class CFloatingPointMode {
public:
    CFloatingPointMode() noexcept;
    ~CFloatingPointMode();
    CFloatingPointMode(const CFloatingPointMode&) = delete;
    CFloatingPointMode& operator=(const CFloatingPointMode&) = delete;

private:
    const uint32_t fSaved;
};

} // namespace NSSupport

#include "Tests/Host/FloatingPointControl.h"

#include <cfenv>

// The rounding in the lower half, the sticky flags in the upper.
uint64_t GetFloatingPointControl() {
    const auto flags = static_cast<uint64_t>(std::fetestexcept(FE_ALL_EXCEPT));
    return static_cast<uint64_t>(std::fegetround()) | flags << 32;
}

void SetFloatingPointControl(uint64_t control) {
    std::fesetround(static_cast<int>(control));
    std::feclearexcept(FE_ALL_EXCEPT);
    std::feraiseexcept(static_cast<int>(control >> 32));
}

std::vector<SFloatingPointMode> GetOtherFloatingPointModes() {
    std::vector<SFloatingPointMode> modes;
#ifdef FE_UPWARD
    modes.push_back({"up", FE_UPWARD});
    modes.push_back({"down", FE_DOWNWARD});
    modes.push_back({"toward zero", FE_TOWARDZERO});
    modes.push_back({"with a sticky flag", uint64_t{FE_INEXACT} << 32});
#endif
    return modes;
}

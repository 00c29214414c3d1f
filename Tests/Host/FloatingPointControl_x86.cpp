#include "Tests/Host/FloatingPointControl.h"

#include <xmmintrin.h>

uint64_t GetFloatingPointControl() {
    return _mm_getcsr();
}

void SetFloatingPointControl(uint64_t control) {
    _mm_setcsr(static_cast<uint32_t>(control));
}

std::vector<SFloatingPointMode> GetOtherFloatingPointModes() {
    return {{"up", 0x1F80 | 0x4000},
            {"down", 0x1F80 | 0x2000},
            {"toward zero", 0x1F80 | 0x6000},
            {"flush to zero, denormals are zero", 0x1F80 | 0x8040},
            {"with a sticky flag", 0x1F80 | 0x0020}};
}

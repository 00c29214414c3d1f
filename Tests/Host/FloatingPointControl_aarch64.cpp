#include "Tests/Host/FloatingPointControl.h"

// The mode in the lower half, the sticky flags in the upper.
uint64_t GetFloatingPointControl() {
    uint64_t mode;
    uint64_t flags;
    __asm__ volatile("mrs %0, fpcr\n\tmrs %1, fpsr" : "=r"(mode), "=r"(flags));
    return mode | flags << 32;
}

void SetFloatingPointControl(uint64_t control) {
    __asm__ volatile("msr fpcr, %0\n\tmsr fpsr, %1"
                     :
                     : "r"(control & 0xFFFFFFFF), "r"(control >> 32));
}

std::vector<SFloatingPointMode> GetOtherFloatingPointModes() {
    return {{"up", 1 << 22},
            {"down", 2 << 22},
            {"toward zero", 3 << 22},
            {"flush to zero", 1 << 24},
            {"with a sticky flag", uint64_t{1} << 36}};
}

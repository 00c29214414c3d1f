#include "Support/Threads/CFloatingPointMode.h"

namespace NSSupport {

// Two registers, one with the mode and one with the sticky flags. 0 is the default of either:
// nearest, denormals kept, no alternate behaviour, no traps, no flag.
CFloatingPointMode::CFloatingPointMode() noexcept LOOP_REALTIME {
    __asm__ volatile("mrs %0, fpcr\n\tmrs %1, fpsr" : "=r"(fSaved[0]), "=r"(fSaved[1]));
    __asm__ volatile("msr fpcr, %0\n\tmsr fpsr, %0" : : "r"(uint64_t{0}));
}

CFloatingPointMode::~CFloatingPointMode() noexcept LOOP_REALTIME {
    __asm__ volatile("msr fpcr, %0\n\tmsr fpsr, %1" : : "r"(fSaved[0]), "r"(fSaved[1]));
}

} // namespace NSSupport

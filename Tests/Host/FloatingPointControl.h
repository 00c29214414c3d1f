// The floating-point modes that a host may have set on this processor.
#pragma once

#include <cstdint>
#include <vector>

/// Mode and sticky flags of the calling thread, as one number of the processor's own form.
uint64_t GetFloatingPointControl();
void SetFloatingPointControl(uint64_t control);

struct SFloatingPointMode {
    const char* fName;
    uint64_t fControl;
};

/// All but the default mode. Empty on a processor that has no other.
std::vector<SFloatingPointMode> GetOtherFloatingPointModes();

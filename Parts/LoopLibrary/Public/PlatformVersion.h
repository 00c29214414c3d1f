#pragma once

#include <cstdint>

namespace NSLOPDLL {

struct SWindowsVersion {
    uint32_t fMajor;
    uint32_t fMinor;
    uint32_t fServicePack;
    bool fIsWorkstation;
    bool fIs64Bit;
};

/// Whether the library agrees to be loaded: 5.0 and older never, 5.1 and the 64-bit workstation of
/// 5.2 from service pack 2 on, everything else always.
constexpr bool IsSupportedWindows(const SWindowsVersion& version) {
    if (version.fMajor != 5) {
        return version.fMajor > 5;
    }
    switch (version.fMinor) {
    case 0:
        return false;
    case 1:
        return version.fServicePack >= 2;
    case 2:
        return !(version.fIs64Bit && version.fIsWorkstation) || version.fServicePack >= 2;
    default:
        return true;
    }
}

} // namespace NSLOPDLL

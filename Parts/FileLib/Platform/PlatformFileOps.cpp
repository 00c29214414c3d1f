#include "FileLib/Platform/IPlatformFileOps.h"
#include "FileLib/Platform/PlatformCodes.h"

#include <atomic>
#include <chrono>

namespace NSFileLibInternals {

namespace {

constinit std::atomic<IPlatformFileOps*> gFileOps = nullptr;

} // namespace

IPlatformFileOps& GetPlatformFileOps() {
    IPlatformFileOps* const ops = gFileOps.load();
    return ops != nullptr ? *ops : GetSystemFileOps();
}

IPlatformFileOps* SetPlatformFileOps(IPlatformFileOps* ops) noexcept {
    return gFileOps.exchange(ops);
}

uint32_t NextTempNumber(uint32_t process) noexcept {
    static const auto start =
        static_cast<uint32_t>(std::chrono::system_clock::now().time_since_epoch().count() / 100);
    static std::atomic<uint32_t> gTurn = 0;
    // An odd step meets all numbers, and two processes seldom have the same.
    const uint32_t step = (start >> 16) | 1U;
    for (;;) {
        const uint32_t number = (start + process * 40503U + gTurn.fetch_add(1) * step) & 0xFFFFU;
        if (number != 0) {
            return number;
        }
    }
}

CErrorBoxesOff::CErrorBoxesOff()
    : fOps(GetPlatformFileOps()), fModeBefore(fOps.SetErrorMode(kErrorMode_FailCriticalErrors)) {}

CErrorBoxesOff::~CErrorBoxesOff() {
    fOps.SetErrorMode(fModeBefore);
}

} // namespace NSFileLibInternals

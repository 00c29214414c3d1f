#include "FileLib/Platform/IPlatformFileOps.h"
#include "FileLib/Platform/PlatformCodes.h"

#include <atomic>

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

CErrorBoxesOff::CErrorBoxesOff()
    : fOps(GetPlatformFileOps()), fModeBefore(fOps.SetErrorMode(kErrorMode_FailCriticalErrors)) {}

CErrorBoxesOff::~CErrorBoxesOff() {
    fOps.SetErrorMode(fModeBefore);
}

} // namespace NSFileLibInternals

#include "Support/Threads/CPlatformMutex.h"

#include "Failure/Raising/Raise.h"

#include <exception>
#include <windows.h>

namespace NSSupport {

namespace {

bool Taken(DWORD answer) noexcept {
    return answer == WAIT_OBJECT_0 || answer == WAIT_ABANDONED;
}

} // namespace

struct CPlatformMutex::SNative {
    HANDLE fMutex = nullptr;
};

CPlatformMutex::CPlatformMutex() : fNative(std::make_unique<SNative>()) {
    fNative->fMutex = CreateMutexW(nullptr, FALSE, nullptr);
    if (fNative->fMutex == nullptr) {
        NSLichen::Raise(std::exception());
    }
}

CPlatformMutex::~CPlatformMutex() {
    CloseHandle(fNative->fMutex);
}

void CPlatformMutex::Lock(uint32_t firstWaitMilliseconds) {
    DWORD answer = WaitForSingleObject(fNative->fMutex, firstWaitMilliseconds);
    if (answer == WAIT_TIMEOUT) {
        answer = WaitForSingleObject(fNative->fMutex, INFINITE);
    }
    if (!Taken(answer)) {
        NSLichen::Raise(std::exception());
    }
}

bool CPlatformMutex::TryLock() noexcept LOOP_REALTIME {
    return Taken(WaitForSingleObject(fNative->fMutex, 0));
}

void CPlatformMutex::Unlock() noexcept LOOP_REALTIME {
    ReleaseMutex(fNative->fMutex);
}

} // namespace NSSupport

#include "Support/Threads/CPlatformMutex.h"

#include "Failure/Raising/Raise.h"

#include <exception>
#include <windows.h>

namespace NSSupport {

namespace {

constexpr DWORD kFirstWaitMilliseconds = 5000;

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

void CPlatformMutex::Lock() {
    DWORD answer = WaitForSingleObject(fNative->fMutex, kFirstWaitMilliseconds);
    if (answer == WAIT_TIMEOUT) {
        answer = WaitForSingleObject(fNative->fMutex, INFINITE);
    }
    if (!Taken(answer)) {
        NSLichen::Raise(std::exception());
    }
}

bool CPlatformMutex::TryLock() noexcept {
    return Taken(WaitForSingleObject(fNative->fMutex, 0));
}

void CPlatformMutex::Unlock() noexcept {
    ReleaseMutex(fNative->fMutex);
}

} // namespace NSSupport

#pragma once

#include "Support/Threads/RealTime.h"

#include <cstdint>
#include <memory>

namespace NSSupport {

/// A recursive mutex of the platform with a try that never waits. A mutex whose owner ended without
/// releasing it counts as taken by whoever asks next.
///
/// On POSIX systems whoever holds the mutex runs at the priority of the most urgent thread that
/// waits for it, so that an audio thread never waits behind threads of a priority in between.
class CPlatformMutex {
public:
    /// Raises a plain std::exception when the platform has no mutex to give.
    CPlatformMutex();
    ~CPlatformMutex();
    CPlatformMutex(const CPlatformMutex&) = delete;
    CPlatformMutex& operator=(const CPlatformMutex&) = delete;

    static constexpr uint32_t kFirstWaitMilliseconds = 5000;

    /// Waits `firstWaitMilliseconds`, then without limit. Raises a plain std::exception when the
    /// platform refuses the wait. A mutex that is free is taken without a system call on POSIX.
    void Lock(uint32_t firstWaitMilliseconds = kFirstWaitMilliseconds);
    /// Neither waits nor allocates.
    bool TryLock() noexcept LOOP_REALTIME;
    /// Only by the thread that holds the mutex.
    void Unlock() noexcept LOOP_REALTIME;

private:
    struct SNative;
    std::unique_ptr<SNative> fNative;
};

/// Holds a mutex for a scope, having waited for it.
class CMutexLock {
public:
    explicit CMutexLock(CPlatformMutex& mutex) : fMutex(mutex) { fMutex.Lock(); }
    ~CMutexLock() { fMutex.Unlock(); }
    CMutexLock(const CMutexLock&) = delete;
    CMutexLock& operator=(const CMutexLock&) = delete;

private:
    CPlatformMutex& fMutex;
};

/// Holds a mutex for a scope if it was free.
class CMutexTryLock {
public:
    explicit CMutexTryLock(CPlatformMutex& mutex) noexcept LOOP_REALTIME : fMutex(mutex),
                                                                           fHeld(mutex.TryLock()) {}
    ~CMutexTryLock() noexcept LOOP_REALTIME {
        if (fHeld) {
            fMutex.Unlock();
        }
    }
    CMutexTryLock(const CMutexTryLock&) = delete;
    CMutexTryLock& operator=(const CMutexTryLock&) = delete;

    explicit operator bool() const noexcept LOOP_REALTIME { return fHeld; }

private:
    CPlatformMutex& fMutex;
    const bool fHeld;
};

} // namespace NSSupport

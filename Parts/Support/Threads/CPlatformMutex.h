#pragma once

#include <memory>

namespace NSSupport {

/// A recursive mutex of the platform with a try that never waits. A mutex whose owner ended without
/// releasing it counts as taken by whoever asks next.
class CPlatformMutex {
public:
    /// Raises a plain std::exception when the platform has no mutex to give.
    CPlatformMutex();
    ~CPlatformMutex();
    CPlatformMutex(const CPlatformMutex&) = delete;
    CPlatformMutex& operator=(const CPlatformMutex&) = delete;

    /// Waits 5000 milliseconds, then without limit. Raises a plain std::exception when the platform
    /// refuses the wait.
    void Lock();
    /// Real-time safe: neither waits nor allocates.
    bool TryLock() noexcept;
    /// Only by the thread that holds the mutex.
    void Unlock() noexcept;

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

/// Holds a mutex for a scope if it was free. Real-time safe.
class CMutexTryLock {
public:
    explicit CMutexTryLock(CPlatformMutex& mutex) noexcept
        : fMutex(mutex), fHeld(mutex.TryLock()) {}
    ~CMutexTryLock() {
        if (fHeld) {
            fMutex.Unlock();
        }
    }
    CMutexTryLock(const CMutexTryLock&) = delete;
    CMutexTryLock& operator=(const CMutexTryLock&) = delete;

    explicit operator bool() const noexcept { return fHeld; }

private:
    CPlatformMutex& fMutex;
    const bool fHeld;
};

} // namespace NSSupport

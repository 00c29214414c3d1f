#include "Support/Threads/CPlatformMutex.h"

#include "Failure/Raising/Raise.h"

#include <cerrno>
#include <ctime>
#include <exception>
#include <pthread.h>

namespace NSSupport {

namespace {

class CMutexAttributes {
public:
    CMutexAttributes() {
        if (pthread_mutexattr_init(&fAttributes) != 0) {
            NSLichen::Raise(std::exception());
        }
    }
    ~CMutexAttributes() { pthread_mutexattr_destroy(&fAttributes); }
    CMutexAttributes(const CMutexAttributes&) = delete;
    CMutexAttributes& operator=(const CMutexAttributes&) = delete;

    pthread_mutexattr_t* Get() { return &fAttributes; }

private:
    pthread_mutexattr_t fAttributes;
};

timespec DeadlineIn(uint32_t milliseconds) noexcept {
    timespec deadline{};
    clock_gettime(CLOCK_REALTIME, &deadline);
    deadline.tv_sec += static_cast<time_t>(milliseconds / 1000);
    deadline.tv_nsec += static_cast<long>(milliseconds % 1000) * 1000000;
    if (deadline.tv_nsec >= 1000000000) {
        deadline.tv_nsec -= 1000000000;
        ++deadline.tv_sec;
    }
    return deadline;
}

} // namespace

struct CPlatformMutex::SNative {
    pthread_mutex_t fMutex;

    // Whether the mutex is ours now. An abandoned one is made usable again.
    bool Taken(int answer) noexcept {
        if (answer == EOWNERDEAD) {
            return pthread_mutex_consistent(&fMutex) == 0;
        }
        return answer == 0;
    }
};

CPlatformMutex::CPlatformMutex() : fNative(std::make_unique<SNative>()) {
    CMutexAttributes attributes;
    if (pthread_mutexattr_settype(attributes.Get(), PTHREAD_MUTEX_RECURSIVE) != 0 ||
        pthread_mutexattr_setrobust(attributes.Get(), PTHREAD_MUTEX_ROBUST) != 0) {
        NSLichen::Raise(std::exception());
    }
    // A system without inheritance says so at one of the first two calls.
    if ((pthread_mutexattr_setprotocol(attributes.Get(), PTHREAD_PRIO_INHERIT) != 0 ||
         pthread_mutex_init(&fNative->fMutex, attributes.Get()) != 0) &&
        (pthread_mutexattr_setprotocol(attributes.Get(), PTHREAD_PRIO_NONE) != 0 ||
         pthread_mutex_init(&fNative->fMutex, attributes.Get()) != 0)) {
        NSLichen::Raise(std::exception());
    }
}

CPlatformMutex::~CPlatformMutex() {
    pthread_mutex_destroy(&fNative->fMutex);
}

void CPlatformMutex::Lock(uint32_t firstWaitMilliseconds) {
    // Before the clock is read: a mutex that is free costs no more than taking it.
    if (TryLock()) {
        return;
    }
    const timespec deadline = DeadlineIn(firstWaitMilliseconds);
    int answer = pthread_mutex_timedlock(&fNative->fMutex, &deadline);
    if (answer == ETIMEDOUT) {
        answer = pthread_mutex_lock(&fNative->fMutex);
    }
    if (!fNative->Taken(answer)) {
        NSLichen::Raise(std::exception());
    }
}

bool CPlatformMutex::TryLock() noexcept LOOP_REALTIME {
    return fNative->Taken(pthread_mutex_trylock(&fNative->fMutex));
}

void CPlatformMutex::Unlock() noexcept LOOP_REALTIME {
    pthread_mutex_unlock(&fNative->fMutex);
}

} // namespace NSSupport

#pragma once

#ifndef _WIN32
#include <pthread.h>
#endif

namespace Grimworks {

/// The one lock of a plug-in instance: recursive, so that a host may call back into the plug-in from inside a
/// call of its own. A critical section on Windows; elsewhere a mutex with priority inheritance, so that an
/// audio thread that waits lifts whoever holds it.
class PlugLock {
public:
    PlugLock();
    ~PlugLock();
    PlugLock(const PlugLock&) = delete;
    PlugLock& operator=(const PlugLock&) = delete;

    void Enter();
    void Leave();

    /// Takes the lock if nobody else holds it; false otherwise.
    [[nodiscard]] bool TryEnter();

private:
#ifdef _WIN32
    alignas(8) unsigned char section[40]; // a CRITICAL_SECTION, without its header's macros in every file
#else
    pthread_mutex_t mutex{};
#endif
};

/// Holds a PlugLock for its own lifetime.
class PlugLockGuard {
public:
    explicit PlugLockGuard(PlugLock& held) : lock(held) { lock.Enter(); }
    ~PlugLockGuard() { lock.Leave(); }
    PlugLockGuard(const PlugLockGuard&) = delete;
    PlugLockGuard& operator=(const PlugLockGuard&) = delete;

private:
    PlugLock& lock;
};

} // namespace Grimworks

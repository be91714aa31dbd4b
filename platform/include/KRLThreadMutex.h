#pragma once

#include <mutex>

/// A lock that one thread holds at a time.
class KRLThreadMutex {
public:
    /// `options` chooses kinds of locks on other systems; here it has no effect.
    explicit KRLThreadMutex([[maybe_unused]] int options) {}
    KRLThreadMutex(KRLThreadMutex const&) = delete;
    KRLThreadMutex& operator=(KRLThreadMutex const&) = delete;

    /// @{
    /// A thread does not lock twice, and unlocks what it has locked.
    void lock() { m_mutex.lock(); }
    void unlock() { m_mutex.unlock(); }
    /// @}

private:
    std::mutex m_mutex;
};

/// Holds a mutex from construction to destruction, also when an exception
/// passes.
class KRLThreadGuard {
public:
    /// Waits until the mutex is free.
    explicit KRLThreadGuard(KRLThreadMutex& mutex) : m_lock(mutex) {}

private:
    std::lock_guard<KRLThreadMutex> m_lock;
};

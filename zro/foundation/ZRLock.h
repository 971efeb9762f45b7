#pragma once

#include <atomic>
#include <mutex>

#include "zro/foundation/Export.h"

namespace ZroCommon {

/// A recursive lock: the thread that holds it may take it again. Taken through `ZRMutex`.
///
/// It knows its owner, so that a guard that was copied over another one cannot unlock what its
/// thread does not hold.
class ZRO_API ZRLock {
public:
    constexpr ZRLock() = default;
    ZRLock(const ZRLock&) = delete;
    ~ZRLock() = default;

    /// Copies nothing: each lock stays what it is.
    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
    ZRLock& operator=(const ZRLock&) { return *this; }

private:
    friend class ZRMutex;
    void lock();
    void unlock();

    std::mutex m_mutex;
    std::atomic<const void*> m_owner{nullptr};  // a mark of the thread that holds the lock
    int m_depth = 0;                            // touched by the owner only
};

/// Scoped guard of a `ZRLock`: locks in the constructor, unlocks in the destructor.
class ZRO_API ZRMutex {
public:
    /// Takes the one lock of the library, which guards what it builds on first need.
    ZRMutex();
    ZRMutex(ZRLock& lock);
    /// A null lock is allowed and makes an inert guard.
    ZRMutex(ZRLock* lock);
    ZRMutex(const ZRMutex&) = delete;
    ~ZRMutex();

    /// Copies the pointer alone, without taking or giving up anything.
    ZRMutex& operator=(const ZRMutex& other) = default;

    /// Atomic steps; each returns the new value.
    static int interlockedIncrement(int& value);
    static int interlockedDecrement(int& value);

private:
    void lock();
    void unlock();

    ZRLock* m_lock;
};

}  // namespace ZroCommon

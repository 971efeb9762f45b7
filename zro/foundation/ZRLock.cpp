#include "zro/foundation/ZRLock.h"

namespace ZroCommon {
namespace {

constinit ZRLock s_globalLock;

// Its address tells the calling thread from all others.
thread_local constinit char t_self = 0;

}  // namespace

void ZRLock::lock() {
    const void* self = &t_self;
    if (m_owner.load(std::memory_order_relaxed) != self) {
        m_mutex.lock();
        m_owner.store(self, std::memory_order_relaxed);
    }
    ++m_depth;
}

void ZRLock::unlock() {
    if (m_owner.load(std::memory_order_relaxed) != &t_self) {
        return;
    }
    if (--m_depth == 0) {
        m_owner.store(nullptr, std::memory_order_relaxed);
        m_mutex.unlock();
    }
}

ZRMutex::ZRMutex() : ZRMutex(&s_globalLock) {}

ZRMutex::ZRMutex(ZRLock& lock) : ZRMutex(&lock) {}

ZRMutex::ZRMutex(ZRLock* lock) : m_lock(lock) {
    this->lock();
}

ZRMutex::~ZRMutex() {
    unlock();
}

void ZRMutex::lock() {
    if (m_lock != nullptr) {
        m_lock->lock();
    }
}

void ZRMutex::unlock() {
    if (m_lock != nullptr) {
        m_lock->unlock();
    }
}

int ZRMutex::interlockedIncrement(int& value) {
    return std::atomic_ref(value).fetch_add(1) + 1;
}

int ZRMutex::interlockedDecrement(int& value) {
    return std::atomic_ref(value).fetch_sub(1) - 1;
}

}  // namespace ZroCommon

#pragma once

#include <atomic>

#include "zro/foundation/ZRObjectBase.h"

namespace ZroCommon {

/// A reference-counted object, shared between owners and normally held by `ZRPtr`.
///
/// A new object has count 0; the first owner takes it to 1. `addRef`, `release` and `removeRef` are
/// safe from any thread, the other counters' operations belong to the owning thread. Objects are
/// not copied.
class ZRO_API ZRRCObject : public ZRObjectBase {
public:
    ZRRCObject() = default;
    ZRRCObject(const ZRRCObject&) = delete;
    ZRRCObject& operator=(const ZRRCObject&) = delete;

    static unsigned int getStaticTypeID() { return 0x90AF0240U; }
    unsigned int getTypeID() const override = 0;
    bool isA(unsigned int typeID) const override;
    UnicodeString getTypeName() const override = 0;

    /// One owner more. \return the new count.
    int addRef() const { return m_refCount.fetch_add(1, std::memory_order_relaxed) + 1; }

    /// One owner less; below a count of 1 the object deletes itself, so a never-owned object (count
    /// 0) goes to -1 and dies too. \return the new count.
    int release() const {
        if (m_refCount.load(std::memory_order_acquire) == 1) {  // nobody else can have it now
            clearRefCount();
            destroy();
            return 0;
        }
        const int count = m_refCount.fetch_sub(1, std::memory_order_acq_rel) - 1;
        if (count < 1) {
            destroy();
        }
        return count;
    }

    /// One owner less without ever deleting the object, also at 0. \return the new count.
    int removeRef() const { return m_refCount.fetch_sub(1, std::memory_order_acq_rel) - 1; }

    int getRefCount() const { return m_refCount.load(std::memory_order_relaxed); }

    /// Kept in the interface; do nothing.
    static void DebugPrintInstanceCount(const char* title);             // NOLINT
    static void DebugPrintInstanceId(const char* title, int instance);  // NOLINT

protected:
    ~ZRRCObject() override;

    /// A decrement for the owning thread only, not atomic as a whole. \return the new count.
    int decrementRefCount() const {
        const int count = m_refCount.load(std::memory_order_relaxed) - 1;
        m_refCount.store(count, std::memory_order_relaxed);
        return count;
    }

    void clearRefCount() const { m_refCount.store(0, std::memory_order_relaxed); }

    /// The owners of a new object, before anybody else knows of it. Costs far less than counting.
    void startRefCount(int count) const { m_refCount.store(count, std::memory_order_relaxed); }

private:
    void destroy() const;

    mutable std::atomic<int> m_refCount{0};
};

}  // namespace ZroCommon

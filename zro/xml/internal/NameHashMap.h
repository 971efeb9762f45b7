#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "zro/vocabulary/ZRName.h"
#include "zro/vocabulary/internal/NameHash.h"

namespace ZroCommon::internal {

/// A small open-addressing map keyed by name numbers. Entries are never removed singly; values must
/// be cheap to copy. Finding is inline, since a parser does it for each tag and attribute.
template <class Value>
class NameHashMap {
public:
    NameHashMap() : m_slots(kFirstSize) {}

    /// The value of the key, or null. The pointer holds until the next `at` or `clear`.
    const Value* find(ZRNameEnum key) const {
        const std::size_t mask = m_slots.size() - 1;
        for (std::size_t i = m_hash(key) & mask; m_slots[i].key != kFree; i = (i + 1) & mask) {
            if (m_slots[i].key == key) {
                return &m_slots[i].value;
            }
        }
        return nullptr;
    }

    /// The value of the key, made by default when there is none yet.
    Value& at(ZRNameEnum key) {
        if ((m_used + 1) * 2 > m_slots.size()) {
            grow();
        }
        Slot& slot = slotOf(key);
        if (slot.key == kFree) {
            slot.key = key;
            ++m_used;
        }
        return slot.value;
    }

    std::size_t size() const { return m_used; }

    /// Forgets all entries and the memory of many.
    void clear() {
        std::vector<Slot>(kFirstSize).swap(m_slots);
        m_used = 0;
    }

private:
    static constexpr std::size_t kFirstSize = 32;
    static constexpr auto kFree = static_cast<ZRNameEnum>(-1);  // no name has this number

    struct Slot {
        ZRNameEnum key = kFree;
        Value value{};
    };

    Slot& slotOf(ZRNameEnum key) {
        const std::size_t mask = m_slots.size() - 1;
        std::size_t i = m_hash(key) & mask;
        while (m_slots[i].key != kFree && m_slots[i].key != key) {
            i = (i + 1) & mask;
        }
        return m_slots[i];
    }

    void grow() {
        std::vector<Slot> old(m_slots.size() * 2);
        old.swap(m_slots);
        for (Slot& slot : old) {
            if (slot.key != kFree) {
                slotOf(slot.key) = std::move(slot);
            }
        }
    }

    std::vector<Slot> m_slots;  // the size is a power of two, at most half of it in use
    std::size_t m_used = 0;
    NameNumberHash m_hash;
};

}  // namespace ZroCommon::internal

#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string_view>
#include <vector>

#include "zro/vocabulary/ZRName.h"

namespace ZroCommon::internal {

/// The texts behind the names of one table, numbered from 1583 in the order of first use.
///
/// `intern` and `restart` are called under the lock of all tables. `text` may run beside them: the
/// texts never move, and they live as long as the store, also over a restart of the numbering, so a
/// reference that a caller holds stays good.
class NameStore {
public:
    NameStore() = default;
    NameStore(const NameStore&) = delete;
    NameStore& operator=(const NameStore&) = delete;
    ~NameStore();

    /// The number of the text, new or known. \param hash  `keyedNameHash(text)`
    ZRNameEnum intern(std::u16string_view text, std::uint64_t hash);

    /// The number of the text, or `ZRN_EMPTY`.
    ZRNameEnum find(std::u16string_view text, std::uint64_t hash) const;

    /// The text of a number, null when it is not in use.
    const UnicodeString* text(ZRNameEnum number) const;

    ZRNameEnum last() const {
        return static_cast<ZRNameEnum>(m_last.load(std::memory_order_acquire));
    }

    /// Numbering begins anew; the texts stay.
    void restart();

private:
    struct Entry {
        UnicodeString text;
        std::uint64_t hash = 0;
        std::uint32_t round = 0;  // the restart count for which the number holds
        ZRNameEnum number = ZRN_EMPTY;
    };
    using Slot = std::atomic<const UnicodeString*>;

    // Chunk k holds the slots of 1024 << k numbers, so 21 chunks are more than there are numbers.
    static constexpr std::size_t kFirstChunk = 1024;
    static constexpr std::size_t kChunks = 21;

    static bool isText(const Entry& entry, std::u16string_view text);
    Entry* findEntry(std::u16string_view text, std::uint64_t hash) const;
    Entry* addEntry(std::u16string_view text, std::uint64_t hash);
    void growIndex();
    void publish(const Entry& entry);

    std::deque<Entry> m_entries;
    std::vector<Entry*> m_index;  // open addressing; the size is a power of two or 0
    std::array<std::atomic<Slot*>, kChunks> m_chunks{};
    std::atomic<std::int32_t> m_last{ZRN_LAST_BUILTIN};
    std::uint32_t m_round = 0;
};

}  // namespace ZroCommon::internal

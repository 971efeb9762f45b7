#include "zro/vocabulary/internal/NameStore.h"

#include <bit>
#include <new>

#include "zro/foundation/internal/TextView.h"
#include "zro/vocabulary/internal/NameHash.h"

namespace ZroCommon::internal {
namespace {

// Where a number's slot lies: chunk k begins at index 1024 * (2^k - 1).
struct Place {
    std::size_t chunk;
    std::size_t offset;
};

Place placeOf(std::size_t index, std::size_t firstChunk) {
    const std::size_t shifted = index + firstChunk;
    const auto chunk =
        static_cast<std::size_t>(std::bit_width(shifted) - std::bit_width(firstChunk));
    return {chunk, shifted - (firstChunk << chunk)};
}

}  // namespace

bool NameStore::isText(const Entry& entry, std::u16string_view text) {
    const std::u16string_view own = viewOf(entry.text);
    return own.size() == text.size() && equalUnits(own.data(), text.data(), text.size());
}

NameStore::~NameStore() {
    for (auto& chunk : m_chunks) {
        delete[] chunk.load(std::memory_order_relaxed);
    }
}

NameStore::Entry* NameStore::findEntry(std::u16string_view text, std::uint64_t hash) const {
    if (m_index.empty()) {
        return nullptr;
    }
    const std::size_t mask = m_index.size() - 1;
    for (std::size_t at = hash & mask; m_index[at] != nullptr; at = (at + 1) & mask) {
        Entry* entry = m_index[at];
        if (entry->hash == hash && isText(*entry, text)) {
            return entry;
        }
    }
    return nullptr;
}

void NameStore::growIndex() {
    const std::size_t size = m_index.empty() ? 64 : m_index.size() * 2;
    std::vector<Entry*> index(size);
    for (Entry& entry : m_entries) {
        std::size_t at = entry.hash & (size - 1);
        while (index[at] != nullptr) {
            at = (at + 1) & (size - 1);
        }
        index[at] = &entry;
    }
    m_index.swap(index);
}

NameStore::Entry* NameStore::addEntry(std::u16string_view text, std::uint64_t hash) {
    if (m_entries.size() * 2 >= m_index.size()) {
        growIndex();
    }
    Entry& entry = m_entries.emplace_back();
    entry.text.setTo(text.data(), static_cast<int32_t>(text.size()));
    if (entry.text.isBogus()) {  // or the number would stand for nothing
        m_entries.pop_back();
        throw std::bad_alloc();
    }
    entry.hash = hash;
    entry.round = m_round - 1;  // bears no number yet
    const std::size_t mask = m_index.size() - 1;
    std::size_t at = hash & mask;
    while (m_index[at] != nullptr) {
        at = (at + 1) & mask;
    }
    m_index[at] = &entry;
    return &entry;
}

void NameStore::publish(const Entry& entry) {
    const auto index = static_cast<std::size_t>(entry.number - ZRN_LAST_BUILTIN - 1);
    const auto [chunk, offset] = placeOf(index, kFirstChunk);
    Slot* slots = m_chunks[chunk].load(std::memory_order_relaxed);
    if (slots == nullptr) {
        slots = new Slot[kFirstChunk << chunk]();
        m_chunks[chunk].store(slots, std::memory_order_release);
    }
    slots[offset].store(&entry.text, std::memory_order_release);
    m_last.store(entry.number, std::memory_order_release);
}

ZRNameEnum NameStore::intern(std::u16string_view text, std::uint64_t hash) {
    Entry* entry = findEntry(text, hash);
    if (entry == nullptr) {
        entry = addEntry(text, hash);
    }
    if (entry->round != m_round) {
        entry->number = static_cast<ZRNameEnum>(m_last.load(std::memory_order_relaxed) + 1);
        publish(*entry);
        entry->round = m_round;
    }
    return entry->number;
}

ZRNameEnum NameStore::find(std::u16string_view text, std::uint64_t hash) const {
    const Entry* entry = findEntry(text, hash);
    return entry != nullptr && entry->round == m_round ? entry->number : ZRN_EMPTY;
}

const UnicodeString* NameStore::text(ZRNameEnum number) const {
    if (number <= ZRN_LAST_BUILTIN || number > last()) {
        return nullptr;
    }
    const auto index = static_cast<std::size_t>(number - ZRN_LAST_BUILTIN - 1);
    const auto [chunk, offset] = placeOf(index, kFirstChunk);
    const Slot* slots = m_chunks[chunk].load(std::memory_order_acquire);
    return slots == nullptr ? nullptr : slots[offset].load(std::memory_order_acquire);
}

void NameStore::restart() {
    ++m_round;
    m_last.store(ZRN_LAST_BUILTIN, std::memory_order_release);
}

}  // namespace ZroCommon::internal

#include "zro/xml/internal/NameCache.h"

#include <algorithm>
#include <utility>

#include "zro/vocabulary/internal/NameHash.h"
#include "zro/vocabulary/internal/SharedNames.h"

namespace ZroCommon::internal {
KnownName* NameCache::find(std::uint32_t hash, std::u16string_view text) const {
    for (std::size_t at = hash % kIndexSize; m_index[at] != 0; at = (at + 1) % kIndexSize) {
        KnownName& known = m_entries[m_index[at] - 1U];
        if (known.hash == hash && known.length == text.size() && known.isText(text.data())) {
            return current(known);
        }
    }
    return nullptr;
}

// In the order in which a new name would be. What is builtin stays so.
void NameCache::internAnew(KnownName& known) const {
    const std::u16string_view text(known.text, known.length);
    const std::size_t colon = known.prefix == ZRN_EMPTY ? 0 : text.find(u':');
    const std::u16string_view local = colon == 0 ? text : text.substr(colon + 1);
    if (!ZRName(known.prefix).isBuiltin()) {
        const std::u16string_view prefix = text.substr(0, colon);
        known.prefix = internSharedNonBuiltinName(prefix, keyedNameHash(prefix));
    }
    if (!ZRName(known.local).isBuiltin()) {
        if (known.localHash == 0) {
            known.localHash = keyedNameHash(local);
        }
        known.local = internSharedNonBuiltinName(local, known.localHash);
    }
    known.round = m_round;
}

KnownName* NameCache::add(std::uint32_t hash, std::u16string_view text, QName name) {
    if (text.size() > KnownName::kMostUnits) {
        return nullptr;
    }
    if (m_entries == nullptr) {
        m_entries = std::make_unique_for_overwrite<KnownName[]>(kMostEntries);
    }
    if (m_count == kMostEntries) {
        m_count = 0;
        m_index.fill(0);
    }
    KnownName& entry = m_entries[m_count];
    entry.hash = hash;
    entry.round = name.prefix.isBuiltin() && name.local.isBuiltin() ? 0 : m_round;
    entry.prefix = name.prefix;
    entry.local = name.local;
    entry.length = static_cast<std::uint16_t>(text.size());
    std::copy(text.begin(), text.end(), entry.text);
    entry.localHash = 0;
    entry.follower = nullptr;
    std::size_t at = hash % kIndexSize;
    while (m_index[at] != 0) {
        at = (at + 1) % kIndexSize;
    }
    m_index[at] = static_cast<std::uint16_t>(++m_count);
    return &entry;
}

void NameCache::startRound() {
    if (++m_round == 0) {  // so many parsers that numbers of rounds come again
        *this = NameCache();
        m_round = 1;
    }
}

}  // namespace ZroCommon::internal

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

#include "zro/vocabulary/ZRName.h"
#include "zro/xml/internal/Scan.h"

namespace ZroCommon::internal {

/// A name with its prefix; both empty where there is none.
struct QName {
    ZRName prefix;
    ZRName local;
};

/// A qualified name with its text.
struct KnownName {
    static constexpr std::size_t kMostUnits = 39;

    std::uint32_t hash;
    std::uint32_t round;  ///< the parser for which the numbers hold; 0 for all, as builtin names do
    ZRNameEnum prefix;
    ZRNameEnum local;
    std::uint16_t length;
    std::uint64_t localHash;    ///< keyed, of the local part; 0 as long as nobody asked
    char16_t text[kMostUnits];  // NOLINT(modernize-avoid-c-arrays): nothing is filled in
    KnownName* follower;        ///< the attribute name that came behind this name, or null

    QName name() const { return {prefix, local}; }
    /// Whether these `length` units are the text.
    bool isText(const char16_t* units) const { return isSameText(text, units, length); }
};

/// The qualified names that one parser after the other has met, found by their text with one
/// look-up and no lock for prefix and local part together.
///
/// The cache is bounded, so that names made to collide in it cost no more than names that are new.
/// Its entries stay where they are, but may become another name.
class NameCache {
public:
    /// Begins with another parser, for which other numbers may hold.
    void startRound();

    /// The entry of this text, or null. What other parsers have met is interned now.
    KnownName* find(std::uint32_t hash, std::u16string_view text) const;
    /// \return the new entry, null for a name that is too long
    KnownName* add(std::uint32_t hash, std::u16string_view text, QName name);

    /// The attribute name that came behind the other one the last time, if it stands at `at` again
    /// with "=" and one more unit behind it, else null.
    KnownName* findFollower(const KnownName& before, const char16_t* at, const char16_t* end) {
        KnownName* const known = before.follower;
        if (known == nullptr || end - at < known->length + 2 || at[known->length] != u'='
            || !known->isText(at)) {
            return nullptr;
        }
        return current(*known);
    }

private:
    static constexpr std::size_t kIndexSize = 1024;
    static constexpr std::size_t kMostEntries = 512;

    KnownName* current(KnownName& known) const {
        if (known.round != 0 && known.round != m_round) {
            internAnew(known);
        }
        return &known;
    }
    void internAnew(KnownName& known) const;

    std::unique_ptr<KnownName[]> m_entries;  // those behind the first `m_count` hold anything
    std::size_t m_count = 0;
    std::uint32_t m_round = 1;
    std::array<std::uint16_t, kIndexSize> m_index{};  // entry number plus 1, open addressing
};

}  // namespace ZroCommon::internal

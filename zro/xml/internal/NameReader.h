#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "zro/vocabulary/ZRName.h"
#include "zro/vocabulary/internal/NameHash.h"
#include "zro/xml/internal/CharReader.h"

namespace ZroCommon::internal {

/// True for a character that may begin a name. The colon is none.
bool isNameStart(char32_t c);
/// True for a character that may stand inside a name.
bool isNameCharacter(char32_t c);

/// A name with its prefix; both empty where there is none.
struct QName {
    ZRName prefix;
    ZRName local;
};

/// A qualified name with its text. 64 bytes; the texts of common names lie inside.
struct KnownName {
    static constexpr std::size_t kMostUnits = 25;

    std::uint32_t hash = 0;
    QName name;
    std::uint16_t length = 0;
    std::array<char16_t, kMostUnits> text{};

    /// Whether these `length` units are the text.
    bool isText(const char16_t* units) const;
};

/// Reads names and interns them.
///
/// Qualified names that were met before are found by their text in a small cache of the parser's
/// own, with one look-up and no lock for prefix and local part together. The cache is bounded, so
/// that names made to collide in it cost no more than names that are new.
class NameReader {
public:
    explicit NameReader(CharReader& reader) : m_reader(reader) {}

    /// A name without colon; the empty name when no name begins here, and nothing was read then.
    ZRName readName();

    /// A name with or without prefix. \return false when a part is missing
    bool readQName(QName& name);

    /// The qualified name of this text, if it was met before, else null. Holds until the next name
    /// is read.
    const QName* findKnown(std::u16string_view text) const {
        const KnownName* known = find(builtinNameHash(text), text);
        return known == nullptr ? nullptr : &known->name;
    }

    /// The entry of the last qualified name that was found or added, null when there is none. It
    /// stays where it is, but may become another name.
    const KnownName* lastKnown() const { return m_lastKnown; }

    /// Skips white space. \return whether there was any
    bool skipSpace();

private:
    static constexpr std::size_t kIndexSize = 1024;
    static constexpr std::size_t kMostEntries = 512;

    const KnownName* find(std::uint32_t hash, std::u16string_view text) const;
    void remember(std::uint32_t hash, std::u16string_view text, QName name);
    ZRName intern(std::u16string_view text);
    bool readKnownQName(QName& name);
    bool readNewQName(QName& name);
    std::u16string_view scanName();
    std::u16string_view scanNameSlowly(char32_t first);

    CharReader& m_reader;
    std::u16string m_scratch;
    std::vector<KnownName> m_entries;  // reserved, so that they never move
    const KnownName* m_lastKnown = nullptr;
    std::array<std::uint16_t, kIndexSize> m_index{};  // entry number plus 1, open addressing
};

}  // namespace ZroCommon::internal

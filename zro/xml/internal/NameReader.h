#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "zro/vocabulary/ZRName.h"
#include "zro/vocabulary/internal/NameHash.h"
#include "zro/xml/internal/CharReader.h"
#include "zro/xml/internal/NameCache.h"

namespace ZroCommon::internal {

/// True for a character that may begin a name. The colon is none.
bool isNameStart(char32_t c);
/// True for a character that may stand inside a name.
bool isNameCharacter(char32_t c);

/// Reads names and interns them.
///
/// Qualified names that were met before, by this parser or one before it, come from a cache.
class NameReader {
public:
    explicit NameReader(CharReader& reader) : m_reader(reader) {}
    NameReader(const NameReader&) = delete;
    NameReader& operator=(const NameReader&) = delete;

    /// Begins with another parser, for which names may have other numbers.
    void startRound();

    /// A name without colon; the empty name when no name begins here, and nothing was read then.
    ZRName readName();

    /// A name with or without prefix. \return false when a part is missing
    bool readQName(QName& name);

    /// The same for one that was met before and lies whole in the run; otherwise nothing is read.
    bool readKnownQName(QName& name);

    /// The qualified name of this text, if it was met before, else null.
    KnownName* findKnown(std::u16string_view text) const {
        return m_cache.find(builtinNameHash(text), text);
    }

    /// See `NameCache::findFollower`; null too when there is no name before.
    KnownName* findFollower(const KnownName* before, const char16_t* at, const char16_t* end) {
        return before == nullptr ? nullptr : m_cache.findFollower(*before, at, end);
    }

    /// The entry of the last qualified name that was found or added, null when there is none.
    KnownName* lastKnown() const { return m_lastKnown; }

    /// Skips white space. \return whether there was any
    bool skipSpace();

private:
    ZRName intern(std::u16string_view text);
    bool readNewQName(QName& name);
    std::u16string_view scanName();
    std::u16string_view scanNameSlowly(char32_t first);

    CharReader& m_reader;
    std::u16string m_scratch;
    std::u16string m_newName;
    NameCache m_cache;
    KnownName* m_lastKnown = nullptr;
};

}  // namespace ZroCommon::internal

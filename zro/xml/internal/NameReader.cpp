#include "zro/xml/internal/NameReader.h"

#include <algorithm>
#include <array>

#include "zro/vocabulary/internal/NameHash.h"
#include "zro/vocabulary/internal/SharedNames.h"
#include "zro/xml/internal/Reuse.h"
#include "zro/xml/internal/Scan.h"
#include "zro/xml/internal/TextBuffer.h"

namespace ZroCommon::internal {
namespace {

struct Range {
    char32_t first;
    char32_t last;
};

// The ranges of XML 1.0, fifth edition, but for the colon, for U+00D7 and U+00F7, which lie inside
// the second range, and for the planes 15 and up.
constexpr auto kStartRanges = std::to_array(
    {Range{0xC0, 0x2FF}, Range{0x370, 0x37D}, Range{0x37F, 0x1FFF}, Range{0x200C, 0x200D},
     Range{0x2070, 0x218F}, Range{0x2C00, 0x2FEF}, Range{0x3001, 0xD7FF}, Range{0xF900, 0xEFFFF}});

constexpr auto kFurtherRanges =
    std::to_array({Range{0xB7, 0xB7}, Range{0x300, 0x36F}, Range{0x203F, 0x2040}});

template <std::size_t kCount>
bool isIn(const std::array<Range, kCount>& ranges, char32_t c) {
    return std::any_of(ranges.begin(), ranges.end(),
                       [c](const Range& range) { return c >= range.first && c <= range.last; });
}

constexpr bool isAsciiNameStart(char32_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_';
}

}  // namespace

bool isNameStart(char32_t c) {
    return c < 0x80 ? isAsciiNameStart(c) : isIn(kStartRanges, c);
}

bool isNameCharacter(char32_t c) {
    return c < 0x80 ? isAsciiNameUnit(static_cast<char16_t>(c))
                    : isIn(kStartRanges, c) || isIn(kFurtherRanges, c);
}

void NameReader::startRound() {
    m_cache.startRound();
    m_lastKnown = nullptr;
    clearForReuse(m_scratch);
    clearForReuse(m_newName);
}

// The text is a name, so that what the cache holds can be taken for one.
ZRName NameReader::intern(std::u16string_view text) {
    const std::uint32_t hash = builtinNameHash(text);
    m_lastKnown = m_cache.find(hash, text);
    if (m_lastKnown == nullptr) {
        const ZRName name = internSharedName(text);
        m_lastKnown = m_cache.add(hash, text, {ZRName(), name});
        return name;
    }
    return m_lastKnown->local;
}

bool NameReader::skipSpace() {
    bool skipped = false;
    for (;;) {
        const char32_t c = m_reader.get();
        if (!isXmlSpace(c)) {
            m_reader.pushBack(c);
            return skipped;
        }
        skipped = true;
    }
}

// The characters of a name, empty when none begins here. The view holds until the next read.
std::u16string_view NameReader::scanName() {
    const Run& run = m_reader.run();
    const char16_t* const start = run.at;
    if (start != run.end && isAsciiNameStart(*start)) {
        const char16_t* at = start;
        while (at != run.end && isAsciiNameUnit(*at)) {
            ++at;
        }
        if (at != run.end && *at < 0x80) {
            // The character behind it is read and put back, as far as the position goes.
            m_reader.moveTo(at + 1);
            m_reader.pushBack(*at);
            return {start, static_cast<std::size_t>(at - start)};
        }
    }
    const char32_t first = m_reader.get();
    if (first == CharReader::kEnd || !isNameStart(first)) {
        m_reader.pushBack(first);
        return {};
    }
    return scanNameSlowly(first);
}

std::u16string_view NameReader::scanNameSlowly(char32_t first) {
    m_scratch.clear();
    char32_t c = first;
    while (c != CharReader::kEnd && isNameCharacter(c)) {
        if (c >= 0x10000) {
            m_scratch += static_cast<char16_t>(0xD7C0 + (c >> 10U));
            c = 0xDC00 + (c & 0x3FFU);
        }
        m_scratch += static_cast<char16_t>(c);
        c = m_reader.get();
    }
    m_reader.pushBack(c);
    return m_scratch;
}

ZRName NameReader::readName() {
    const std::u16string_view text = scanName();
    return text.empty() ? ZRName() : intern(text);
}

// A qualified name that lies whole in the run, with what ends it, and is in the cache.
bool NameReader::readKnownQName(QName& name) {
    const Run& run = m_reader.run();
    const char16_t* const end = findQNameEnd(run.at, run.end);
    if (end == run.end || end == run.at || *end >= 0x80) {
        return false;
    }
    const std::u16string_view text(run.at, static_cast<std::size_t>(end - run.at));
    KnownName* const known = findKnown(text);
    if (known == nullptr) {
        return false;
    }
    m_lastKnown = known;
    name = known->name();
    m_reader.moveTo(end + 1);
    m_reader.pushBack(*end);
    return true;
}

bool NameReader::readQName(QName& name) {
    return readKnownQName(name) || readNewQName(name);
}

bool NameReader::readNewQName(QName& name) {
    name = {};
    m_lastKnown = nullptr;
    m_newName = scanName();
    if (m_newName.empty()) {
        return false;
    }
    const ZRName first = internSharedName(m_newName);
    const char32_t c = m_reader.get();
    if (c != u':') {
        m_reader.pushBack(c);
        name.local = first;
    } else {
        name.prefix = first;
        const std::u16string_view local = scanName();
        name.local = internSharedName(local);
        if (local.empty()) {
            return false;
        }
        m_newName.append(u":").append(local);
    }
    const std::uint32_t hash = builtinNameHash(m_newName);
    m_lastKnown = m_cache.find(hash, m_newName);
    if (m_lastKnown == nullptr) {
        m_lastKnown = m_cache.add(hash, m_newName, name);
    }
    return true;
}

}  // namespace ZroCommon::internal

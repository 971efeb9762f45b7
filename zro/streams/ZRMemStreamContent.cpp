// What ZRMemStreamBuf offers beyond a stream buffer: its content as a whole, and searching in it.
#include "zro/streams/ZRMemStream.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <vector>

#include "zro/streams/internal/ReadSource.h"

namespace ZroCommon {
namespace {

// Finds a pattern in bytes that come piece by piece. No byte is looked at again however the pattern
// repeats itself (Knuth, Morris and Pratt).
class PatternFinder {
public:
    explicit PatternFinder(std::string_view pattern)
        : m_pattern(pattern), m_border(pattern.size()) {
        std::size_t matched = 0;
        for (std::size_t i = 1; i < pattern.size(); ++i) {
            matched = advanced(matched, pattern[i]);
            m_border[i] = matched;
        }
    }

    // The number of bytes up to the end of the first match, or `npos`.
    std::size_t feed(std::string_view piece) {
        for (std::size_t i = 0; i < piece.size();) {
            if (m_matched == 0) {
                i = piece.find(m_pattern.front(), i);
                if (i == std::string_view::npos) {
                    return i;
                }
            }
            m_matched = advanced(m_matched, piece[i++]);
            if (m_matched == m_pattern.size()) {
                return i;
            }
        }
        return std::string_view::npos;
    }

private:
    std::size_t advanced(std::size_t matched, char byte) const {
        while (matched > 0 && m_pattern[matched] != byte) {
            matched = m_border[matched - 1];
        }
        return matched + (m_pattern[matched] == byte ? 1 : 0);
    }

    std::string_view m_pattern;
    std::vector<std::size_t> m_border;  // the longest prefix that each prefix ends in
    std::size_t m_matched = 0;
};

std::string_view patternOf(const char* pattern, std::size_t count) {
    if (pattern == nullptr) {
        return {};
    }
    return {pattern, count != 0 ? count : std::strlen(pattern)};
}

bool isLineEnd(char byte) {
    return byte == '\r' || byte == '\n';
}

std::uint32_t bigEndian(const char* bytes) {
    std::uint32_t word = 0;
    for (int i = 0; i < 4; ++i) {
        word = word << 8U | static_cast<unsigned char>(bytes[i]);
    }
    return word;
}

std::uint32_t sumOfWords(const char* bytes, std::size_t words) {
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < words; ++i) {
        sum += bigEndian(bytes + i * 4);
    }
    return sum;
}

}  // namespace

std::size_t ZRMemStreamBuf::length() {
    flushBuffer();
    drainSources();
    return heldLength();
}

void ZRMemStreamBuf::remove() {
    if (m_blocks.size() > 1) {
        m_blocks.resize(1);
    }
    while (!m_sources.empty()) {
        m_sources.pop_back();
    }
    m_lastLength = 0;
    if (!m_blocks.empty()) {
        clearPut();
        seekpos(0, std::ios_base::in | std::ios_base::out);
    }
}

void ZRMemStreamBuf::abandonBuffer() {
    const std::size_t index = getIndex(eback());
    if (index < m_blocks.size()) {
        dropFront(index);
    }
}

void ZRMemStreamBuf::trim(std::size_t newLength) {
    if (newLength >= length()) {
        return;
    }
    const std::size_t readAt = std::min(readPosition(), newLength);
    const std::size_t writeAt = std::min(writePosition(), newLength);
    clearGet();
    clearPut();
    m_blocks.resize(newLength / m_growBytes + (newLength % m_growBytes != 0 ? 1 : 0));
    m_lastLength = newLength == 0 ? 0 : (newLength - 1) % m_growBytes + 1;
    seekpos(static_cast<off_type>(readAt), std::ios_base::in);
    seekpos(static_cast<off_type>(writeAt), std::ios_base::out);
}

std::size_t ZRMemStreamBuf::getBuffer(const char*& bytes) {
    seekoff(0, std::ios_base::cur, std::ios_base::in);
    bytes = gptr();
    const std::size_t count = getRemains();
    seekoff(static_cast<off_type>(count), std::ios_base::cur, std::ios_base::in);
    return count;
}

void ZRMemStreamBuf::appendToString(std::string& text) {
    const std::size_t count = length();
    if (count == 0) {
        return;
    }
    text.reserve(text.size() + count);
    for (std::size_t i = 0; i < m_blocks.size(); ++i) {
        text.append(m_blocks[i].get(), blockLength(i));
    }
}

void ZRMemStreamBuf::copyContent(ZRMemStreamBuf& other) {
    m_growBytes = other.m_growBytes;
    m_keepMemory = other.m_keepMemory;
    if (other.length() == 0) {
        return;
    }
    const std::size_t readAt = other.readPosition();
    const std::size_t writeAt = other.writePosition();
    for (std::size_t i = 0; i < other.m_blocks.size(); ++i) {
        sputn(other.m_blocks[i].get(), static_cast<std::streamsize>(other.blockLength(i)));
    }
    seekpos(static_cast<off_type>(readAt), std::ios_base::in);
    seekpos(static_cast<off_type>(writeAt), std::ios_base::out);
}

// Steps to the next block for a search, and draws one when the chain ends. All that has been
// searched stays in memory. \return false when there is no more data
bool ZRMemStreamBuf::nextBlock(std::size_t& index) {
    ++index;
    if (index == m_blocks.size() && hasMore()) {
        appendBuffer(true);
    }
    return index < m_blocks.size() && blockLength(index) != 0;
}

bool ZRMemStreamBuf::searchSeek(const char* pattern, std::size_t count) {
    const std::string_view wanted = patternOf(pattern, count);
    if (wanted.empty()) {
        return false;
    }
    seekoff(0, std::ios_base::cur, std::ios_base::in);
    PatternFinder finder(wanted);
    std::size_t index = m_getIndex;
    auto offset = static_cast<std::size_t>(gptr() - eback());
    do {
        const std::string_view block(m_blocks[index].get(), blockLength(index));
        const std::size_t matchEnd = finder.feed(block.substr(offset));
        if (matchEnd != std::string_view::npos) {
            const std::size_t end = index * m_growBytes + offset + matchEnd;
            seekpos(static_cast<off_type>(end - wanted.size()), std::ios_base::in);
            return true;
        }
        offset = 0;
    } while (nextBlock(index));
    return false;
}

bool ZRMemStreamBuf::skipSeek(const char* pattern, std::size_t count) {
    std::string_view wanted = patternOf(pattern, count);
    if (wanted.empty()) {
        return false;
    }
    seekoff(0, std::ios_base::cur, std::ios_base::in);
    std::size_t index = m_getIndex;
    auto offset = static_cast<std::size_t>(gptr() - eback());
    for (;;) {
        const std::string_view block(m_blocks[index].get(), blockLength(index));
        const std::string_view piece = block.substr(offset, wanted.size());
        if (!wanted.starts_with(piece)) {
            return false;
        }
        wanted.remove_prefix(piece.size());
        if (wanted.empty()) {
            setGet(index, offset + piece.size());
            return true;
        }
        if (!nextBlock(index)) {
            return false;
        }
        offset = 0;
    }
}

void ZRMemStreamBuf::seekEOL() {
    seekoff(0, std::ios_base::cur, std::ios_base::in);
    std::size_t index = m_getIndex;
    auto offset = static_cast<std::size_t>(gptr() - eback());
    bool isBehindLine = false;
    for (;;) {
        const char* start = m_blocks[index].get();
        const char* end = start + blockLength(index);
        const char* at = start + offset;
        if (!isBehindLine) {
            at = std::find_if(at, end, isLineEnd);
            isBehindLine = at != end;
        }
        at = std::find_if_not(at, end, isLineEnd);
        setGet(index, static_cast<std::size_t>(at - start));
        if (at != end || !nextBlock(index)) {
            return;
        }
        offset = 0;
    }
}

std::size_t ZRMemStreamBuf::copyStream(std::istream& source, std::size_t count) {
    std::size_t total = 0;
    while (total < count && source.good()) {
        seekoff(0, std::ios_base::cur, std::ios_base::out);
        const auto offset = static_cast<std::size_t>(pptr() - pbase());
        const std::size_t got =
            internal::readSource(source, pptr(), std::min(m_growBytes - offset, count - total));
        total += got;
        if (m_putIndex + 1 == m_blocks.size()) {
            m_lastLength = std::max(m_lastLength, offset + got);
        }
        if (offset + got < m_growBytes) {
            setPut(m_putIndex, offset + got);
        } else {
            // The put area ends one byte early, so a full block has to be left at once.
            seekpos(static_cast<off_type>((m_putIndex + 1) * m_growBytes), std::ios_base::out);
        }
    }
    return total;
}

std::uint32_t ZRMemStreamBuf::calcOTFTableChecksum() {
    if (length() == 0) {
        return 0;
    }
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i + 1 < m_blocks.size(); ++i) {
        sum += sumOfWords(m_blocks[i].get(), m_growBytes / 4);
    }
    char* last = m_blocks.back().get();
    const std::size_t words = m_lastLength / 4;
    const std::size_t rest = m_lastLength % 4;
    if (rest != 0) {
        std::memset(last + m_lastLength, 0, 4 - rest);
    }
    return sum + sumOfWords(last, words + (rest != 0 ? 1 : 0));
}

}  // namespace ZroCommon

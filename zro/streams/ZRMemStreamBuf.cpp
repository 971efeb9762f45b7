// The buffer of ZRMemStream: its blocks, its sources, and the operations of a stream buffer.
#include "zro/streams/ZRMemStream.h"

#include <algorithm>
#include <cstring>
#include <ios>
#include <limits>
#include <new>

#include "zro/streams/internal/ReadSource.h"

namespace ZroCommon {
namespace {

constexpr std::size_t kNoBlock = ~std::size_t{0};
constexpr std::size_t kChecksumRoom = 3;  // zero bytes behind the data, see calcOTFTableChecksum

std::unique_ptr<char[]> newBlock(std::size_t growBytes) {
    if (growBytes > static_cast<std::size_t>(std::numeric_limits<std::streamsize>::max())) {
        throw std::bad_alloc();
    }
    return std::make_unique_for_overwrite<char[]>(growBytes + kChecksumRoom);
}

}  // namespace

ZRMemStreamBuf::ZRMemStreamBuf(std::istream* source, std::size_t growBytes, bool deleteSource)
    : m_growBytes(growBytes != 0 ? growBytes : kDefaultGrowBytes) {
    addSource(source, deleteSource);
}

ZRMemStreamBuf::~ZRMemStreamBuf() = default;

void ZRMemStreamBuf::addSource(std::istream* source, bool deleteSource) {
    if (source != nullptr) {
        m_sources.push_back(
            {source, std::unique_ptr<std::istream>(deleteSource ? source : nullptr)});
    }
}

void ZRMemStreamBuf::setSource(std::istream* source, bool deleteSource) {
    if (source == nullptr) {
        return;
    }
    flushBuffer();
    addSource(source, deleteSource);
    if (!m_blocks.empty() && m_lastLength < m_growBytes) {
        readFrontSource();
        // On purpose: here a short read alone does not finish a source.
        if (m_sources.front().stream->eof()) {
            m_sources.pop_front();
        }
    }
    seekoff(0, std::ios_base::cur, std::ios_base::in);
}

void ZRMemStreamBuf::setGrowBytes(std::size_t growBytes) {
    if (m_blocks.empty()) {
        m_growBytes = growBytes != 0 ? growBytes : kDefaultGrowBytes;
    }
}

std::size_t ZRMemStreamBuf::heldLength() const {
    return m_blocks.empty() ? 0 : (m_blocks.size() - 1) * m_growBytes + m_lastLength;
}

std::size_t ZRMemStreamBuf::blockLength(std::size_t index) const {
    return index + 1 == m_blocks.size() ? m_lastLength : m_growBytes;
}

std::size_t ZRMemStreamBuf::getIndex(const char* start) const {
    if (start == nullptr) {
        return kNoBlock;
    }
    for (const std::size_t index : {m_getIndex, m_putIndex}) {
        if (index < m_blocks.size() && m_blocks[index].get() == start) {
            return index;
        }
    }
    const auto found = std::find_if(m_blocks.begin(), m_blocks.end(),
                                    [start](const auto& block) { return block.get() == start; });
    return found == m_blocks.end() ? kNoBlock : static_cast<std::size_t>(found - m_blocks.begin());
}

// Adds an empty block. Nothing changes when there is no memory for it.
void ZRMemStreamBuf::addBlock(bool keep) {
    if (!m_blocks.empty() && m_lastLength < m_growBytes) {
        // Only a source that failed without reaching its end leaves such a gap.
        std::memset(m_blocks.back().get() + m_lastLength, 0, m_growBytes - m_lastLength);
    }
    if (keep || m_blocks.size() < 2) {
        m_blocks.push_back(newBlock(m_growBytes));
    } else {
        dropFront(m_blocks.size() - 2);
        m_blocks.push_back(nullptr);
        m_blocks.back().swap(m_blocks.front());
        dropFront(1);
    }
    m_lastLength = 0;
}

// Lets the first blocks go, and the areas that lie in them.
void ZRMemStreamBuf::dropFront(std::size_t count) {
    if (m_getIndex < count) {
        clearGet();
    }
    if (m_putIndex < count) {
        clearPut();
    }
    m_getIndex -= std::min(m_getIndex, count);
    m_putIndex -= std::min(m_putIndex, count);
    m_blocks.erase(m_blocks.begin(), m_blocks.begin() + static_cast<std::ptrdiff_t>(count));
}

void ZRMemStreamBuf::readFrontSource() {
    m_lastLength +=
        internal::readSource(*m_sources.front().stream, m_blocks.back().get() + m_lastLength,
                             m_growBytes - m_lastLength);
}

void ZRMemStreamBuf::appendBuffer(bool keep) {
    addBlock(keep);
    while (!m_sources.empty() && m_lastLength < m_growBytes) {
        readFrontSource();
        if (m_sources.front().stream->eof() || m_lastLength < m_growBytes) {
            m_sources.pop_front();
        }
    }
}

// Whether a source may still give bytes that may be held.
bool ZRMemStreamBuf::hasMore() {
    if (m_heldLimit != 0 && heldLength() >= m_heldLimit) {
        m_sources.clear();
    }
    return !m_sources.empty();
}

void ZRMemStreamBuf::drainSources() {
    while (hasMore()) {
        appendBuffer(true);
    }
}

void ZRMemStreamBuf::flushBuffer() {
    if (!m_blocks.empty() && pbase() == m_blocks.back().get()) {
        m_lastLength = std::max(m_lastLength, static_cast<std::size_t>(pptr() - pbase()));
    }
}

void ZRMemStreamBuf::setGet(std::size_t index, std::size_t offset) {
    char* start = m_blocks[index].get();
    const std::size_t length = blockLength(index);
    setg(start, start + std::min(offset, length), start + length);
    m_getIndex = index;
}

// The put area ends one byte before its block: `overflow` stores its character there.
void ZRMemStreamBuf::setPut(std::size_t index, std::size_t offset) {
    char* start = m_blocks[index].get();
    setp(start, start + m_growBytes - 1);
    constexpr std::size_t kFarthest = std::numeric_limits<int>::max();
    for (; offset > kFarthest; offset -= kFarthest) {
        pbump(static_cast<int>(kFarthest));
    }
    pbump(static_cast<int>(offset));
    m_putIndex = index;
}

std::size_t ZRMemStreamBuf::readPosition() const {
    const std::size_t index = getIndex(eback());
    return index == kNoBlock ? 0 : index * m_growBytes + static_cast<std::size_t>(gptr() - eback());
}

std::size_t ZRMemStreamBuf::writePosition() const {
    const std::size_t index = getIndex(pbase());
    return index == kNoBlock ? 0 : index * m_growBytes + static_cast<std::size_t>(pptr() - pbase());
}

ZRMemStreamBuf::int_type ZRMemStreamBuf::underflow() {
    flushBuffer();
    if (eback() == nullptr) {
        if (m_blocks.empty()) {
            appendBuffer(m_keepMemory);
        }
        setGet(0, 0);
    }
    const std::size_t index = getIndex(eback());
    if (gptr() == egptr() && index != kNoBlock) {
        const auto covered = static_cast<std::size_t>(egptr() - eback());
        if (covered < blockLength(index)) {
            setGet(index, covered);  // the last block has grown since
        } else if (index + 1 < m_blocks.size()) {
            setGet(index + 1, 0);
        } else if (hasMore()) {
            appendBuffer(m_keepMemory);
            setGet(m_blocks.size() - 1, 0);
        }
    }
    return gptr() == egptr() ? traits_type::eof() : traits_type::to_int_type(*gptr());
}

// On purpose: the character asked for is neither compared nor stored; the stream gives back what it
// holds.
ZRMemStreamBuf::int_type ZRMemStreamBuf::pbackfail(int_type /*character*/) {
    const std::size_t index = getIndex(eback());
    if (index == kNoBlock) {
        return traits_type::eof();
    }
    if (gptr() > eback()) {
        setg(eback(), gptr() - 1, egptr());
    } else if (index > 0) {
        setGet(index - 1, m_growBytes - 1);
    } else {
        return traits_type::eof();
    }
    return traits_type::to_int_type(*gptr());
}

ZRMemStreamBuf::int_type ZRMemStreamBuf::overflow(int_type character) {
    const bool isData = !traits_type::eq_int_type(character, traits_type::eof());
    if (pbase() == nullptr) {
        if (m_blocks.empty()) {
            appendBuffer(true);
        }
        // On purpose: the first write goes to position 0, also over content that is there.
        setPut(0, 0);
        return isData ? sputc(traits_type::to_char_type(character)) : character;
    }
    auto offset = static_cast<std::size_t>(pptr() - pbase());
    if (isData) {
        pbase()[offset++] = traits_type::to_char_type(character);
    }
    if (m_putIndex + 1 == m_blocks.size()) {
        m_lastLength = std::max(m_lastLength, offset);
        appendBuffer(true);
    }
    setPut(m_putIndex + 1, 0);
    return character;
}

ZRMemStreamBuf::pos_type ZRMemStreamBuf::seekoff(off_type offset, std::ios_base::seekdir way,
                                                 std::ios_base::openmode which) {
    flushBuffer();
    std::size_t start = 0;
    if (way == std::ios_base::cur) {
        start = which == std::ios_base::in ? readPosition() : writePosition();
    } else if (way == std::ios_base::end) {
        drainSources();
        start = heldLength();
    } else if (way != std::ios_base::beg) {
        return {off_type(-1)};
    }
    const auto from = static_cast<off_type>(start);
    constexpr off_type kFarthest = std::numeric_limits<off_type>::max();
    return seekpos(offset > kFarthest - from ? kFarthest : from + offset, which);
}

ZRMemStreamBuf::pos_type ZRMemStreamBuf::seekpos(pos_type position, std::ios_base::openmode which) {
    flushBuffer();
    if (m_blocks.empty()) {
        appendBuffer(true);
    }
    const off_type target = position;
    if (target < 0) {
        return {off_type(-1)};
    }
    const auto wanted = static_cast<std::size_t>(target);
    while (wanted >= heldLength() && hasMore()) {
        appendBuffer(true);
    }
    if (wanted > heldLength()) {
        return {off_type(-1)};
    }
    const std::size_t index = wanted / m_growBytes;
    if (index == m_blocks.size()) {
        appendBuffer(true);
    }
    if ((which & std::ios_base::in) != 0) {
        setGet(index, wanted % m_growBytes);
    }
    if ((which & std::ios_base::out) != 0) {
        setPut(index, wanted % m_growBytes);
    }
    return position;
}

}  // namespace ZroCommon

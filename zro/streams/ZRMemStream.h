#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <istream>
#include <memory>
#include <string>

#include "zro/foundation/Export.h"
#include "zro/foundation/StreamBuffer.h"

namespace ZroCommon {

/// The stream buffer of `ZRMemStream`: a chain of equal blocks in memory, and a queue of source
/// streams from which further bytes are drawn block by block, when a reader comes to need them.
///
/// Positions count from the first block that is still held, so they shrink when blocks are let go.
/// A source is at its end when a read from it comes up short, for whatever reason. One thread at a
/// time.
class ZRO_API ZRMemStreamBuf : public StreamBuffer {
public:
    static constexpr std::size_t kDefaultGrowBytes = 8192;

    /// \param source        queued, nothing is read yet; may be null
    /// \param growBytes     the size of a block; 0 stands for the default
    /// \param deleteSource  true hands `source` over, to be deleted once it is at its end
    explicit ZRMemStreamBuf(std::istream* source = nullptr,
                            std::size_t growBytes = kDefaultGrowBytes, bool deleteSource = false);
    ZRMemStreamBuf(const ZRMemStreamBuf&) = delete;
    ZRMemStreamBuf& operator=(const ZRMemStreamBuf&) = delete;
    ~ZRMemStreamBuf() override;

    /// Queues another source and reads as much of it as the last block holds. Null is ignored.
    void setSource(std::istream* source, bool deleteSource);

    /// False lets reading recycle what lies before the last two blocks. Writing, seeking and
    /// searching keep everything all the same.
    void setKeepMemory(bool keepMemory) { m_keepMemory = keepMemory; }

    /// Without effect once a block exists.
    void setGrowBytes(std::size_t growBytes);
    std::size_t getGrowBytes() const { return m_growBytes; }

    /// A guard against sources without an end: once that many bytes are held, the sources count as
    /// ended. Blocks are filled whole, so up to one block more may be held. 0, the default, is no
    /// limit. Writing is not limited.
    void setHeldLimit(std::size_t bytes) { m_heldLimit = bytes; }

    /// Bytes left in the present get area.
    std::size_t getRemains() const { return static_cast<std::size_t>(egptr() - gptr()); }

    /// The number of bytes held, after every source has been read to its end.
    std::size_t length();

    /// Forgets content and sources; one block stays for reuse.
    void remove();

    /// Frees the blocks before the read position. A write position in them is forgotten: the next
    /// write then begins at position 0.
    void abandonBuffer();

    /// Cuts the content to `newLength` bytes; positions behind that move there. A greater length
    /// has no effect.
    void trim(std::size_t newLength);

    /// Hands out the rest of the present block and steps behind it. \return 0 at the end
    std::size_t getBuffer(const char*& bytes);

    void appendToString(std::string& text);

    /// Moves the read position to the next occurrence of a pattern, the current byte included.
    /// \param count  length of the pattern in bytes; 0 when it ends in a NUL
    /// \return false, and no move, when there is none or the pattern is empty
    bool searchSeek(const char* pattern, std::size_t count);

    /// Steps over a pattern that stands at the read position. \return false, and no move, otherwise
    bool skipSeek(const char* pattern, std::size_t count);

    /// Steps behind the next run of CR and LF; without one, to the end.
    void seekEOL();

    /// Reads from `source` straight into the blocks, at the write position.
    /// \return the number of bytes read, at most `count`
    std::size_t copyStream(std::istream& source, std::size_t count);

    /// The checksum of an OpenType table: the sum of big-endian words. The block size has to be a
    /// multiple of 4. Up to three zero bytes get written behind the content.
    std::uint32_t calcOTFTableChecksum();

    /// Makes the empty buffer a copy of what `other` holds, positions included.
    void copyContent(ZRMemStreamBuf& other);

protected:
    int_type overflow(int_type character = traits_type::eof()) override;
    int_type pbackfail(int_type character = traits_type::eof()) override;
    int_type underflow() override;
    pos_type seekoff(off_type offset, std::ios_base::seekdir way,
                     std::ios_base::openmode which = std::ios_base::in
                                                     | std::ios_base::out) override;
    pos_type seekpos(pos_type position,
                     std::ios_base::openmode which = std::ios_base::in
                                                     | std::ios_base::out) override;

    /// Counts what the put area holds.
    void flushBuffer();

    /// The index of the block that starts at `start`; all ones when there is none.
    std::size_t getIndex(const char* start) const;

    /// Adds a block and fills it from the sources. \param keep  false recycles the oldest block
    void appendBuffer(bool keep);

private:
    struct Source {
        std::istream* stream = nullptr;
        std::unique_ptr<std::istream> owner;  // null when the caller keeps the stream
    };

    void addSource(std::istream* source, bool deleteSource);
    void readFrontSource();
    bool hasMore();
    void drainSources();
    void addBlock(bool keep);
    void dropFront(std::size_t count);
    bool nextBlock(std::size_t& index);
    std::size_t heldLength() const;
    std::size_t blockLength(std::size_t index) const;
    std::size_t readPosition() const;
    std::size_t writePosition() const;
    void setGet(std::size_t index, std::size_t offset);
    void setPut(std::size_t index, std::size_t offset);
    void clearGet() { setg(nullptr, nullptr, nullptr); }
    void clearPut() { setp(nullptr, nullptr); }

    std::deque<std::unique_ptr<char[]>> m_blocks;
    std::deque<Source> m_sources;
    std::size_t m_growBytes;
    std::size_t m_lastLength = 0;  // bytes of data in the last block; all others are full
    std::size_t m_getIndex = 0;    // where the areas lie, if there are any
    std::size_t m_putIndex = 0;
    std::size_t m_heldLimit = 0;  // 0 without one
    bool m_keepMemory = true;
};

/// A stream for reading and writing that holds its bytes in memory, and draws further ones from
/// source streams as they are needed: the universal buffer of the library. Nothing goes to disk.
///
/// No operation throws a `ZRError`; failures are those of an iostream, and a failed allocation
/// passes.
class ZRO_API ZRMemStream : public std::basic_iostream<char> {
public:
    /// See the constructor of `ZRMemStreamBuf`.
    ZRMemStream(std::istream* source = nullptr,
                std::size_t growBytes = ZRMemStreamBuf::kDefaultGrowBytes,
                bool deleteSource = false);

    /// A deep copy with both positions. The sources of `other` are read to their end first.
    ZRMemStream(const ZRMemStream& other);
    ZRMemStream& operator=(const ZRMemStream&) = delete;
    ~ZRMemStream() override;

    void setSource(std::istream* source, bool deleteSource) {
        m_buffer.setSource(source, deleteSource);
    }
    void setKeepMemory(bool keepMemory) { m_buffer.setKeepMemory(keepMemory); }
    void setGrowBytes(std::size_t growBytes) { m_buffer.setGrowBytes(growBytes); }
    /// See `ZRMemStreamBuf::setHeldLimit`.
    void setHeldLimit(std::size_t bytes) { m_buffer.setHeldLimit(bytes); }

    std::size_t length() { return m_buffer.length(); }
    std::size_t size() { return length(); }
    bool isEmpty() { return length() == 0; }
    bool empty() { return isEmpty(); }

    /// Forgets content and sources, and clears a failed state.
    void remove();
    ZRMemStream& erase() {
        remove();
        return *this;
    }

    /// Clears a failed state and reads from the start again.
    ZRMemStream& begin();

    ZRMemStream& append(const std::string& bytes);
    ZRMemStream& operator+=(const std::string& bytes) { return append(bytes); }
    /// \param text  ended by a NUL; null writes nothing
    ZRMemStream& writeStr(const char* text);

    void appendToString(std::string& text) { m_buffer.appendToString(text); }
    std::size_t getBuffer(const char*& bytes) { return m_buffer.getBuffer(bytes); }
    void abandonBuffer() { m_buffer.abandonBuffer(); }
    void trim(std::size_t newLength) { m_buffer.trim(newLength); }
    bool searchSeek(const char* pattern, std::size_t count) {
        return m_buffer.searchSeek(pattern, count);
    }
    bool skipSeek(const char* pattern, std::size_t count) {
        return m_buffer.skipSeek(pattern, count);
    }
    void seekEOL() { m_buffer.seekEOL(); }
    std::size_t copyStream(std::istream& source, std::size_t count) {
        return m_buffer.copyStream(source, count);
    }
    std::uint32_t calcOTFTableChecksum() { return m_buffer.calcOTFTableChecksum(); }

    /// Does nothing.
    void close() {}

private:
    void clearFailure();

    mutable ZRMemStreamBuf m_buffer;  // a copy draws from the sources of a const stream
};

}  // namespace ZroCommon

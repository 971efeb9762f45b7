#pragma once

#include <cstddef>
#include <istream>
#include <memory>

namespace ZroCommon::internal {

/// The bytes of a `std::istream`, read through its buffer in blocks.
///
/// What the stream's buffer holds is taken at once; otherwise one refill is waited for, never more,
/// so a slow source is read as early as it delivers. No flag of the stream is set before its end
/// was met, none of its exceptions come out, and a buffer that throws is a failed stream; only
/// `std::bad_alloc` passes.
class ByteSource {
public:
    ByteSource() = default;

    /// Starts with another stream, null for none. The memory is kept.
    void open(std::istream* stream);

    /// Gives the memory of a large stream back. \pre  no stream is open
    void shrink();

    std::istream* stream() const { return m_stream; }

    const unsigned char* begin() const { return m_bytes.get() + m_position; }
    const unsigned char* end() const { return m_bytes.get() + m_end; }
    std::size_t available() const { return m_end - m_position; }
    bool atEnd() const { return m_atEnd && available() == 0; }
    bool sawEnd() const { return m_atEnd; }

    void take(std::size_t count) { m_position += count; }
    /// Back by bytes that were taken since the last `fetch`.
    void giveBack(std::size_t count) { m_position -= count; }

    /// Adds bytes behind those available, which may move. \return false at the end of the stream.
    bool fetch();

    /// One byte, or -1 at the end.
    int get();

    /// How many bytes came from the stream so far.
    std::size_t total() const { return m_total; }

    /// Marks the stream as its own reading operations would at the end.
    void setEndState();

private:
    std::size_t readSome(unsigned char* to, std::size_t room);
    void makeRoom();

    std::istream* m_stream = nullptr;
    std::unique_ptr<unsigned char[]> m_bytes;
    std::size_t m_capacity = 0;
    std::size_t m_position = 0;
    std::size_t m_end = 0;
    std::size_t m_total = 0;
    bool m_atEnd = false;
};

/// Sets flags of a stream without the exception that its mask may ask for.
void setStreamState(std::istream& stream, std::ios_base::iostate flags);

/// The next byte of the stream's buffer, left there, or -1: at the end, or when the buffer throws;
/// then the stream's state says which.
int peekByte(std::istream& stream);

}  // namespace ZroCommon::internal

#include "zro/xml/internal/ByteSource.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace ZroCommon::internal {
namespace {

using Traits = std::istream::traits_type;

// Small at first, so that the first event of a large document costs no more than that of a small
// one.
constexpr std::size_t kFirstBlock = 4096;
constexpr std::size_t kLargestBlock = 32768;

}  // namespace

void setStreamState(std::istream& stream, std::ios_base::iostate flags) {
    try {
        stream.setstate(flags);
    } catch (const std::ios_base::failure&) {
        // The flags are set all the same.
        return;
    }
}

int peekByte(std::istream& stream) {
    try {
        if (!stream.good()) {
            return -1;
        }
        const auto byte = stream.rdbuf()->sgetc();
        if (!Traits::eq_int_type(byte, Traits::eof())) {
            return byte;
        }
        setStreamState(stream, std::ios_base::eofbit);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) {
        setStreamState(stream, std::ios_base::badbit);
    }
    return -1;
}

void ByteSource::open(std::istream* stream) {
    m_stream = stream;
    m_position = 0;
    m_end = 0;
    m_total = 0;
    m_atEnd = false;
}

void ByteSource::shrink() {
    if (m_capacity > kFirstBlock) {
        m_bytes.reset();
        m_capacity = 0;
        m_position = 0;
        m_end = 0;
    }
}

void ByteSource::setEndState() {
    if (m_stream != nullptr && m_stream->good()) {
        setStreamState(*m_stream, std::ios_base::eofbit | std::ios_base::failbit);
    }
}

std::size_t ByteSource::readSome(unsigned char* to, std::size_t room) {
    std::streambuf* buffer = m_stream->rdbuf();
    if (Traits::eq_int_type(buffer->sgetc(), Traits::eof())) {
        return 0;
    }
    const std::streamsize ready = buffer->in_avail();  // at least 1, unless it is unbuffered
    const auto count = std::clamp<std::streamsize>(ready, 1, static_cast<std::streamsize>(room));
    return static_cast<std::size_t>(buffer->sgetn(reinterpret_cast<char*>(to), count));
}

// The rest, a few bytes at most, moves to the front. A stream that fills the block gets a larger
// one.
void ByteSource::makeRoom() {
    const std::size_t left = available();
    const bool wasFilled = m_end == m_capacity && m_capacity < kLargestBlock;
    if (wasFilled) {
        const std::size_t capacity = m_capacity == 0 ? kFirstBlock : kLargestBlock;
        std::unique_ptr<unsigned char[]> bytes(new unsigned char[capacity]);
        if (left != 0) {
            std::memcpy(bytes.get(), begin(), left);
        }
        m_bytes = std::move(bytes);
        m_capacity = capacity;
    } else if (left != 0) {
        std::memmove(m_bytes.get(), begin(), left);
    }
    m_position = 0;
    m_end = left;
}

bool ByteSource::fetch() {
    if (m_atEnd || m_stream == nullptr) {
        return false;
    }
    makeRoom();
    std::size_t count = 0;
    try {
        if (m_stream->good()) {
            count = readSome(m_bytes.get() + m_end, m_capacity - m_end);
        }
    } catch (const std::bad_alloc&) {
        throw;
    } catch (...) {
        setStreamState(*m_stream, std::ios_base::badbit);
    }
    m_end += count;
    m_total += count;
    m_atEnd = count == 0;
    return count != 0;
}

int ByteSource::get() {
    if (available() == 0 && !fetch()) {
        return -1;
    }
    return m_bytes[m_position++];
}

}  // namespace ZroCommon::internal

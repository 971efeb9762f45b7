#pragma once

#include <cstddef>
#include <istream>
#include <memory>

#include "zro/foundation/Export.h"
#include "zro/foundation/StreamBuffer.h"

namespace ZroCommon {

namespace internal {
class BlockInflater;
}  // namespace internal

/// The stream buffer of `ZRInflaterStream`.
class ZRO_API ZRInflaterStreamBuf : public StreamBuffer {
public:
    /// See the constructor of `ZRInflaterStream`.
    ZRInflaterStreamBuf(const char* data, std::size_t size, bool copy);
    ZRInflaterStreamBuf(const ZRInflaterStreamBuf&) = delete;
    ZRInflaterStreamBuf& operator=(const ZRInflaterStreamBuf&) = delete;
    ~ZRInflaterStreamBuf() override;

    /// Starts over from the first byte.
    void reset();

protected:
    int_type underflow() override;

private:
    std::unique_ptr<internal::BlockInflater> m_inflater;
};

/// Expands a raw deflate block (RFC 1951) that lies in memory, as the entries of ZIP packages hold
/// it. Memory stays the same however much the block expands to.
///
/// What is wrong with the block shows only as an early end: first comes all that stands before the
/// fault. At least the last 10 bytes can be put back. One thread at a time.
class ZRO_API ZRInflaterStream : public std::basic_istream<char> {
public:
    /// \param data  the block; may be null when `size` is 0
    /// \param size  in bytes
    /// \param copy  true takes a copy; with false the block must outlive the stream
    ZRInflaterStream(const char* data, std::size_t size, bool copy);
    ZRInflaterStream(const ZRInflaterStream&) = delete;
    ZRInflaterStream& operator=(const ZRInflaterStream&) = delete;
    ~ZRInflaterStream() override;

    /// Clears a failed state and starts over from the first byte.
    void reset();

private:
    ZRInflaterStreamBuf m_buffer;
};

}  // namespace ZroCommon

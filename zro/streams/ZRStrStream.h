#pragma once

#include <cstddef>
#include <istream>
#include <memory>

#include "zro/foundation/Export.h"
#include "zro/foundation/StreamBuffer.h"

namespace ZroCommon {

class ZRStrStream;

namespace internal {
void rewindStream(ZRStrStream& stream);
}  // namespace internal

/// A read-only stream over a block of memory, its own copy or the caller's. It cannot seek.
class ZRO_API ZRStrStream : public std::basic_istream<char> {
public:
    /// \param data  may be null when `size` is 0
    /// \param size  in bytes
    /// \param copy  true takes a copy; with false the block must outlive the stream
    ZRStrStream(const char* data, std::size_t size, bool copy = true);
    ZRStrStream(const ZRStrStream&) = delete;
    ZRStrStream& operator=(const ZRStrStream&) = delete;
    ~ZRStrStream() override;

private:
    friend void internal::rewindStream(ZRStrStream& stream);

    class StrStreamBuf : public StreamBuffer {
    public:
        StrStreamBuf(const char* data, std::size_t size, bool copy);
        ~StrStreamBuf() override;

        void rewind() { setg(eback(), eback(), egptr()); }

    private:
        std::unique_ptr<char[]> m_copy;  // null when the block is the caller's
    };

    StrStreamBuf m_buffer;
};

}  // namespace ZroCommon

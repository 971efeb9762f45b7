#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <memory>

#include "zro/foundation/Export.h"
#include "zro/foundation/StreamBuffer.h"

namespace ZroCommon {

/// Where the bytes of a `ZRCustomStream` come from and go to: what a host implements to hand a
/// stream of its own to the library. Called on the thread that uses the stream.
class ZRO_API ZRCustomStreamController {
public:
    virtual ~ZRCustomStreamController() = 0;

    /// For the host's own use: the stream never calls it.
    virtual void close() = 0;

    /// Reads up to `size` bytes.
    /// \return the number of bytes read, negative at the end of the data. 0 does not end the
    ///         stream: its reader gets a byte without meaning, and the next read asks again.
    virtual int read(char* buffer, int size) = 0;

    /// Takes `size` bytes. \return `size`; anything else is a failure
    virtual int write(const char* buffer, int size) = 0;
};

/// The stream buffer of `ZRCustomStream`. One piece of memory serves both directions.
class ZRO_API ZRCustomStreamBuf : public StreamBuffer {
public:
    /// \param controller  not owned; without one the buffer is not open
    explicit ZRCustomStreamBuf(ZRCustomStreamController* controller);
    ZRCustomStreamBuf(const ZRCustomStreamBuf&) = delete;
    ZRCustomStreamBuf& operator=(const ZRCustomStreamBuf&) = delete;
    /// Hands over what was written last; a failure to do so is ignored.
    ~ZRCustomStreamBuf() override;

    bool is_open() const { return m_buffer != nullptr; }  // NOLINT(readability-identifier-naming)

protected:
    int_type overflow(int_type character = traits_type::eof()) override;
    int_type underflow() override;
    int_type uflow() override;
    /// Answers with the number of bytes written, whatever is asked for.
    pos_type seekoff(off_type offset, std::ios_base::seekdir way,
                     std::ios_base::openmode which = std::ios_base::in
                                                     | std::ios_base::out) override;

private:
    int flushBuffer();
    int pending() const;

    std::unique_ptr<char[]> m_buffer;
    ZRCustomStreamController* m_controller;
    std::int64_t m_written = 0;  // handed to the controller
    bool m_isFull = false;       // the last byte of the memory, behind the put area, is used too
};

/// A stream whose bytes come from and go to an object of the host.
///
/// Either read from it or write to it: both share one buffer. What is written goes on when the
/// buffer is full and when the stream is destroyed; `flush` does nothing. `tellp` counts the bytes
/// written; the stream cannot seek. At least the last 10 bytes read can be put back.
class ZRO_API ZRCustomStream : public std::basic_iostream<char> {
public:
    /// \param controller  not owned, and must outlive the stream
    ZRCustomStream(ZRCustomStreamController* controller);
    ZRCustomStream(const ZRCustomStream&) = delete;
    ZRCustomStream& operator=(const ZRCustomStream&) = delete;
    ~ZRCustomStream() override;

    bool is_open() const { return m_buffer.is_open(); }  // NOLINT(readability-identifier-naming)

private:
    ZRCustomStreamBuf m_buffer;
};

}  // namespace ZroCommon

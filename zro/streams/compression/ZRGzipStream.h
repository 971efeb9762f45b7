#pragma once

#include <istream>
#include <memory>
#include <ostream>

#include "zro/foundation/Export.h"
#include "zro/foundation/StreamBuffer.h"
#include "zro/foundation/Text.h"

namespace ZroCommon {

namespace internal {
class GzipReader;
class GzipWriter;
}  // namespace internal

/// The stream buffer of `ZRGzipStream`.
class ZRO_API ZRGzipStreamBuf : public StreamBuffer {
public:
    explicit ZRGzipStreamBuf(const UnicodeString& path);
    /// \param path  in the default code page (UTF-8); null is no file
    explicit ZRGzipStreamBuf(const char* path);
    /// \param path  in UTF-16, ended by U+0000; null is no file
    explicit ZRGzipStreamBuf(const char16_t* path);
    explicit ZRGzipStreamBuf(std::istream& stream);
    ZRGzipStreamBuf(const ZRGzipStreamBuf&) = delete;
    ZRGzipStreamBuf& operator=(const ZRGzipStreamBuf&) = delete;
    ~ZRGzipStreamBuf() override;

    bool is_open() const { return m_reader != nullptr; }  // NOLINT(readability-identifier-naming)

protected:
    int_type underflow() override;
    std::streamsize xsgetn(char* bytes, std::streamsize count) override;

private:
    std::streamsize readBlocks(char* bytes, std::streamsize size);

    std::unique_ptr<internal::GzipReader> m_reader;  // null when not open
};

/// Reads gzip data (RFC 1952). What is not gzip at all is read as it stands.
///
/// Faults of the data show only as an early end. Of a stream, the first member is read and given up
/// to a fault, its check value unseen. Of a file, all members are read; one with a fault or a wrong
/// check value is given in whole runs of 16384 bytes up to there, or, when it is shorter than one,
/// as it is, and then the stream ends. At least the last 10 bytes can be put back. One thread at a
/// time.
class ZRO_API ZRGzipStream : public std::basic_istream<char> {
public:
    /// Reads a file; see `is_open`.
    ZRGzipStream(const UnicodeString& path);
    /// \param path  in the default code page (UTF-8); null is no file
    ZRGzipStream(const char* path);
    /// \param stream  read from its start, so it must be able to seek; it stays the caller's
    ZRGzipStream(std::istream& stream);
    ZRGzipStream(const ZRGzipStream&) = delete;
    ZRGzipStream& operator=(const ZRGzipStream&) = delete;
    ~ZRGzipStream() override;

    /// False for a file that cannot be opened. Nothing else tells.
    bool is_open() const { return m_buffer.is_open(); }  // NOLINT(readability-identifier-naming)

private:
    ZRGzipStreamBuf m_buffer;
};

/// The stream buffer of `ZRGzipOStream`.
class ZRO_API ZRGzipOStreamBuf : public StreamBuffer {
public:
    explicit ZRGzipOStreamBuf(const UnicodeString& path);
    explicit ZRGzipOStreamBuf(std::ostream& stream);
    ZRGzipOStreamBuf(const ZRGzipOStreamBuf&) = delete;
    ZRGzipOStreamBuf& operator=(const ZRGzipOStreamBuf&) = delete;
    ~ZRGzipOStreamBuf() override;

protected:
    int_type overflow(int_type character = traits_type::eof()) override;
    int sync() override;

private:
    void resetPut();

    std::unique_ptr<internal::GzipWriter> m_writer;
};

/// Writes gzip data as small as zlib makes it.
///
/// A flush, and so `std::endl`, ends the data: what is written behind it is lost. Without one, the
/// data ends with the life of the stream. Whether the bytes arrived, only the stream below can
/// tell; a file that cannot be written looks like any other.
class ZRO_API ZRGzipOStream : public std::basic_ostream<char> {
public:
    /// Makes a new file, or empties one.
    ZRGzipOStream(const UnicodeString& path);
    /// \param stream  stays the caller's and must outlive this object
    ZRGzipOStream(std::ostream& stream);
    ZRGzipOStream(const ZRGzipOStream&) = delete;
    ZRGzipOStream& operator=(const ZRGzipOStream&) = delete;
    ~ZRGzipOStream() override;

private:
    ZRGzipOStreamBuf m_buffer;
};

}  // namespace ZroCommon

#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <istream>
#include <memory>
#include <span>
#include <streambuf>
#include <string>

#include "zro/foundation/Text.h"

namespace zro {

using ZroCommon::UnicodeString;

/// Bytes that are read block by block.
class BlockBuffer : public std::streambuf {
protected:
    /// Reads what is there, and waits only for the first byte.
    /// \return the number of bytes, 0 at the end
    virtual std::size_t readBlock(std::span<char> room) = 0;

    int_type underflow() final;

private:
    std::array<char, 65536> m_buffer{};
};

/// As much of a stream as is there, so that a slow one is passed on as it comes.
std::size_t readReady(std::streambuf& source, std::span<char> room);

/// Bytes of another stream, counted as they pass.
class CountingBuffer : public BlockBuffer {
public:
    /// \param count  gets the number of bytes read so far
    CountingBuffer(std::unique_ptr<std::istream> source, std::function<void(std::uint64_t)> count);

protected:
    std::size_t readBlock(std::span<char> room) override;
    std::streamsize showmanyc() override { return m_source->rdbuf()->in_avail(); }

private:
    std::unique_ptr<std::istream> m_source;
    std::function<void(std::uint64_t)> m_count;
    std::uint64_t m_total = 0;
};

/// A stream that owns its buffer.
template <class Buffer>
class OwningStream : public std::istream {
public:
    template <class... Arguments>
    explicit OwningStream(Arguments&&... arguments)
        : std::istream(nullptr), m_buffer(std::forward<Arguments>(arguments)...) {
        rdbuf(&m_buffer);
    }
    Buffer& buffer() { return m_buffer; }

private:
    Buffer m_buffer;
};

/// Standard input, handed on as it arrives. What has passed is kept, up to a limit, so that it can
/// be read again and lines in error be shown.
class StandardInput : public BlockBuffer {
public:
    static constexpr std::size_t kKept = std::size_t{16} * 1024 * 1024;

    explicit StandardInput(std::function<void(std::uint64_t)> count);

    /// Everything that has passed, as far as it was kept.
    const std::string& kept() const { return m_kept; }
    bool isAllKept() const { return m_total == m_kept.size(); }

    /// The system's error number when reading has failed, else 0.
    int error() const { return m_error; }

protected:
    std::size_t readBlock(std::span<char> room) override;

private:
    std::function<void(std::uint64_t)> m_count;
    std::string m_kept;
    std::uint64_t m_total = 0;
    int m_error = 0;
};

/// A document as named on the command line.
class Input {
public:
    /// \param argument  a path, a URI, or "-" for standard input
    explicit Input(std::string argument);

    bool isStandardInput() const { return m_argument == "-"; }

    /// What to call it in messages.
    const std::string& shownName() const { return m_shownName; }

    /// The absolute name to open; empty for standard input.
    const UnicodeString& uri() const { return m_uri; }

    /// What relative references in standard input resolve against: the working directory.
    const UnicodeString& baseUri() const { return m_baseUri; }

    /// The path when it is a local file, else empty.
    const std::string& path() const { return m_path; }

    /// Size of a regular local file, else 0.
    std::uint64_t size() const;

private:
    std::string m_argument;
    std::string m_shownName;
    UnicodeString m_uri;
    UnicodeString m_baseUri;
    std::string m_path;
};

/// The absolute form of a path on the command line, as a name that the library opens. A name with a
/// scheme stays as it is, unless a file of just that name exists.
UnicodeString absoluteName(const std::string& argument);

/// The path behind a `file:` URI or a relative reference; empty for any other URI.
std::string localPath(const UnicodeString& uri);

/// A file or URI as one would type it: relative to the working directory when it lies in there.
std::string shownPath(const UnicodeString& uri);

/// The URI of a package entry without "jar:" at its start, which may stand there any number of
/// times.
UnicodeString withoutJar(const UnicodeString& uri);

/// A file, or an entry of a package that is a file.
bool isLocal(const UnicodeString& uri);

/// Whether opening the resource again gives the same bytes: not for pipes and the network.
bool isReadableAgain(const UnicodeString& uri);

/// The working directory with a "/" at its end.
UnicodeString workingDirectory();

}  // namespace zro

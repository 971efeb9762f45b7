#pragma once

#include <cstddef>
#include <istream>
#include <memory>
#include <utility>

#include "zro/foundation/StreamBuffer.h"

namespace ZroCommon::internal {

/// Owner of one file descriptor.
class FileDescriptor {
public:
    explicit FileDescriptor(int number) : m_number(number) {}
    FileDescriptor(FileDescriptor&& other) noexcept
        : m_number(std::exchange(other.m_number, kNone)) {}
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    FileDescriptor& operator=(FileDescriptor&&) = delete;
    ~FileDescriptor();

    bool isOpen() const { return m_number >= 0; }
    int get() const { return m_number; }

private:
    static constexpr int kNone = -1;
    int m_number;
};

/// Reads a file through one large buffer. Unlike the standard file buffer it answers for its
/// position, and seeks within what it has read, without a system call: the readers of containers
/// do little else.
class InputFileBuf final : public StreamBuffer {
public:
    /// \param isRegular  true spares the test whether the file can seek at all
    InputFileBuf(FileDescriptor file, bool isRegular);

protected:
    std::streamsize showmanyc() override;
    int_type underflow() override;
    int_type pbackfail(int_type character) override;
    std::streamsize xsgetn(char* bytes, std::streamsize count) override;
    pos_type seekoff(off_type offset, std::ios_base::seekdir way,
                     std::ios_base::openmode which) override;
    pos_type seekpos(pos_type position, std::ios_base::openmode which) override;

private:
    std::size_t readAhead(char* bytes, std::size_t count);
    off_type position() const { return m_end - (egptr() - gptr()); }
    pos_type moveTo(off_type target);
    void dropBuffer() { setg(nullptr, nullptr, nullptr); }

    FileDescriptor m_file;
    bool m_canSeek;
    off_type m_end = 0;  // where the system stands in the file: the end of the get area
    std::unique_ptr<char[]> m_buffer;
};

/// The stream around it.
class InputFile final : public std::istream {
public:
    InputFile(FileDescriptor file, bool isRegular);

private:
    InputFileBuf m_buffer;
};

}  // namespace ZroCommon::internal

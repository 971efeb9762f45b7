#include "zro/platform/internal/InputFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ios>
#include <limits>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace ZroCommon::internal {
namespace {

constexpr std::size_t kBufferSize = 32768;

}  // namespace

FileDescriptor::~FileDescriptor() {
    if (isOpen()) {
        close(m_number);
    }
}

InputFileBuf::InputFileBuf(FileDescriptor file, bool isRegular)
    : m_file(std::move(file)), m_canSeek(isRegular || lseek(m_file.get(), 0, SEEK_CUR) >= 0) {}

// One read, so that a pipe gives what it has. 0 is the end of the file.
std::size_t InputFileBuf::readAhead(char* bytes, std::size_t count) {
    ssize_t got = -1;
    do {
        got = read(m_file.get(), bytes, count);
    } while (got < 0 && errno == EINTR);
    if (got < 0) {
        throw std::ios_base::failure("cannot read file",
                                     std::error_code(errno, std::generic_category()));
    }
    m_end += got;
    return static_cast<std::size_t>(got);
}

std::streamsize InputFileBuf::showmanyc() {
    struct stat status {};
    const bool isRegular = fstat(m_file.get(), &status) == 0 && S_ISREG(status.st_mode);
    return isRegular ? std::max<std::streamsize>(status.st_size - position(), 0) : 0;
}

InputFileBuf::int_type InputFileBuf::underflow() {
    if (gptr() < egptr()) {
        return traits_type::to_int_type(*gptr());
    }
    if (!m_buffer) {
        m_buffer = std::make_unique_for_overwrite<char[]>(kBufferSize);
    }
    dropBuffer();
    const std::size_t got = readAhead(m_buffer.get(), kBufferSize);
    setg(m_buffer.get(), m_buffer.get(), m_buffer.get() + got);
    return got == 0 ? traits_type::eof() : traits_type::to_int_type(*gptr());
}

// Before the start of the buffer: step back in the file and read from there.
InputFileBuf::int_type InputFileBuf::pbackfail(int_type character) {
    const off_type target = position() - 1;
    if (target < 0 || moveTo(target) == pos_type(off_type(-1))) {
        return traits_type::eof();
    }
    const int_type found = underflow();
    const bool wanted = traits_type::eq_int_type(character, traits_type::eof())
                        || traits_type::eq_int_type(character, found);
    if (!wanted) {
        moveTo(target + 1);
        return traits_type::eof();
    }
    return found;
}

std::streamsize InputFileBuf::xsgetn(char* bytes, std::streamsize count) {
    std::streamsize done = 0;
    while (done < count) {
        const std::streamsize wanted = count - done;
        if (gptr() == egptr() && wanted >= static_cast<std::streamsize>(kBufferSize)) {
            dropBuffer();
            const std::size_t got = readAhead(bytes + done, static_cast<std::size_t>(wanted));
            if (got == 0) {
                break;
            }
            done += static_cast<std::streamsize>(got);
            continue;
        }
        if (traits_type::eq_int_type(underflow(), traits_type::eof())) {
            break;
        }
        const std::streamsize piece = std::min<std::streamsize>(wanted, egptr() - gptr());
        std::memcpy(bytes + done, gptr(), static_cast<std::size_t>(piece));
        setg(eback(), gptr() + piece, egptr());
        done += piece;
    }
    return done;
}

InputFileBuf::pos_type InputFileBuf::moveTo(off_type target) {
    const pos_type failed(off_type(-1));
    if (target < 0 || !m_canSeek) {
        return failed;
    }
    if (target <= m_end && target >= m_end - (egptr() - eback())) {
        setg(eback(), egptr() - (m_end - target), egptr());
        return target;
    }
    if (lseek(m_file.get(), target, SEEK_SET) < 0) {
        return failed;
    }
    dropBuffer();
    m_end = target;
    return target;
}

InputFileBuf::pos_type InputFileBuf::seekoff(off_type offset, std::ios_base::seekdir way,
                                             std::ios_base::openmode /*which*/) {
    const pos_type failed(off_type(-1));
    off_type start = 0;
    if (way == std::ios_base::cur) {
        start = position();
    } else if (way == std::ios_base::end) {
        start = lseek(m_file.get(), 0, SEEK_END);
        if (start < 0 || lseek(m_file.get(), m_end, SEEK_SET) < 0) {
            return failed;
        }
    } else if (way != std::ios_base::beg) {
        return failed;
    }
    if (offset > std::numeric_limits<off_type>::max() - start) {
        return failed;
    }
    return moveTo(start + offset);
}

InputFileBuf::pos_type InputFileBuf::seekpos(pos_type position, std::ios_base::openmode /*which*/) {
    return moveTo(off_type(position));
}

InputFile::InputFile(FileDescriptor file, bool isRegular)
    : std::istream(nullptr), m_buffer(std::move(file), isRegular) {
    init(&m_buffer);
}

}  // namespace ZroCommon::internal

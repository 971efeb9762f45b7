#include "zro/platform/internal/RawFile.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include "zro/platform/internal/NativeFile.h"

namespace ZroCommon::internal {
namespace {

constexpr mode_t kOwnerOnly = 0600;

// Repeats a system call until it took all, had nothing more, or failed.
template <class Call>
std::int64_t transferAll(std::size_t count, Call call) {
    std::size_t done = 0;
    while (done < count) {
        const ssize_t piece = call(done, count - done);
        if (piece > 0) {
            done += static_cast<std::size_t>(piece);
        } else if (piece == 0 || errno != EINTR) {
            break;
        }
    }
    return static_cast<std::int64_t>(done);
}

int openDescriptor(const std::string& name, int flags) {
    for (;;) {
        const int number = ::open(name.c_str(), flags, kOwnerOnly);
        if (number >= 0 || errno != EINTR) {
            return number;
        }
    }
}

}  // namespace

RawFile RawFile::open(const UnicodeString& path, bool isWritable) {
    const auto name = nativeFileName(path);
    if (!name) {
        return {};
    }
    const int flags = (isWritable ? O_RDWR | O_CREAT : O_RDONLY) | O_CLOEXEC;
    RawFile file(openDescriptor(*name, flags));
    struct stat status {};
    if (file.isOpen() && (fstat(file.m_descriptor, &status) != 0 || S_ISDIR(status.st_mode))) {
        file.close();
    }
    return file;
}

void RawFile::close() {
    if (isOpen()) {
        ::close(m_descriptor);
        m_descriptor = kNone;
    }
}

std::int64_t RawFile::read(char* bytes, std::size_t count) const {
    return transferAll(count, [&](std::size_t done, std::size_t rest) {
        return ::read(m_descriptor, bytes + done, rest);
    });
}

std::int64_t RawFile::write(const char* bytes, std::size_t count) const {
    return transferAll(count, [&](std::size_t done, std::size_t rest) {
        return ::write(m_descriptor, bytes + done, rest);
    });
}

std::int64_t RawFile::seek(std::int64_t offset, int origin) const {
    static constexpr auto kOrigins = std::to_array({SEEK_SET, SEEK_CUR, SEEK_END});
    if (origin < 0 || origin > 2) {
        return -1;
    }
    return lseek(m_descriptor, offset, kOrigins[static_cast<std::size_t>(origin)]);
}

}  // namespace ZroCommon::internal

#include "zro/containers/ole/JZIOobj.h"

#include <algorithm>
#include <limits>

#include "zro/foundation/Text.h"
#include "zro/platform/internal/RawFile.h"

namespace ZroCommon {
namespace {

using internal::RawFile;

// Ahead of the data of a file from a Macintosh.
constexpr long kMacHeader = 128;

// Positions that no file has give one that fails.
long behindHeader(long offset) {
    return std::min(offset, std::numeric_limits<long>::max() - kMacHeader) + kMacHeader;
}

}  // namespace

JZIOobj::JZIOobj() = default;
JZIOobj::~JZIOobj() = default;
bool JZIOobj::Open() {
    return false;
}
bool JZIOobj::Close() {
    return false;
}
int JZIOobj::Read(char* /*buffer*/, int /*count*/) {
    return 0;
}
int JZIOobj::Write(const char* /*buffer*/, int /*count*/) {
    return 0;
}
bool JZIOobj::Seek(long /*offset*/, int /*origin*/) {
    return false;
}
long JZIOobj::Tell() {
    return 0;
}

int JZIOobj::Read(unsigned char* buffer, int count) {
    return Read(reinterpret_cast<char*>(buffer), count);
}

int JZIOobj::Write(const unsigned char* buffer, int count) {
    return Write(reinterpret_cast<const char*>(buffer), count);
}

JZFileIOobj::JZFileIOobj(const char* name, const char* mode)
    : m_fileName(name == nullptr ? "" : name) {
    takeMode(mode);
}

JZFileIOobj::JZFileIOobj(int fd, char* mode) : m_fd(std::max(fd, -1)) {
    takeMode(mode);
    SetOpened(m_fd >= 0);
}

JZFileIOobj::~JZFileIOobj() {
    JZFileIOobj::Close();
}

void JZFileIOobj::takeMode(const char* mode) {
    for (; mode != nullptr && *mode != '\0'; ++mode) {
        switch (*mode) {
        case 'r': SetWritable(false); break;
        case 'w': SetWritable(true); break;
        case 'b': SetBinary(true); break;
        case 't': SetBinary(false); break;
        default: break;
        }
    }
}

bool JZFileIOobj::Open() {
    if (IsOpened()) {
        return true;
    }
    const RawFile file = RawFile::open(UnicodeString(m_fileName.c_str()), IsWritable());
    if (!file.isOpen()) {
        return false;
    }
    m_fd = file.get();
    SetOpened(true);
    if (!IsWritable()) {
        m_size = file.seek(0, 2);
        Seek(0, 0);
    }
    return true;
}

bool JZFileIOobj::Close() {
    RawFile(m_fd).close();
    m_fd = -1;
    SetOpened(false);
    return true;
}

int JZFileIOobj::Read(char* buffer, int count) {
    return static_cast<int>(
        RawFile(m_fd).read(buffer, static_cast<std::size_t>(std::max(count, 0))));
}

int JZFileIOobj::Write(const char* buffer, int count) {
    return static_cast<int>(
        RawFile(m_fd).write(buffer, static_cast<std::size_t>(std::max(count, 0))));
}

bool JZFileIOobj::Seek(long offset, int origin) {
    const bool isMoved = IsMACBinary() && origin == 0;
    return RawFile(m_fd).seek(isMoved ? behindHeader(offset) : offset, origin) >= 0;
}

long JZFileIOobj::Tell() {
    return RawFile(m_fd).seek(0, 1);
}

JZStreamIOobj::JZStreamIOobj(std::istream* stream) : m_stream(stream) {
    SetBinary(true);
}

JZStreamIOobj::~JZStreamIOobj() = default;

bool JZStreamIOobj::Open() {
    if (IsOpened()) {
        return true;
    }
    if (m_stream == nullptr || !Seek(0, 2)) {
        return false;
    }
    m_size = Tell();
    SetOpened(Seek(0, 0));
    return IsOpened();
}

bool JZStreamIOobj::Close() {
    SetOpened(false);
    return true;
}

// A stream may be set to throw, or its buffer may: both are a failed operation here.
int JZStreamIOobj::Read(char* buffer, int count) {
    try {
        if (m_stream == nullptr || m_stream->fail()) {
            return 0;
        }
        m_stream->read(buffer, std::max(count, 0));
    } catch (...) {
        return 0;
    }
    return static_cast<int>(m_stream->gcount());
}

bool JZStreamIOobj::Seek(long offset, int origin) {
    try {
        if (m_stream == nullptr) {
            return false;
        }
        if (origin == 0) {
            m_stream->seekg(IsMACBinary() ? behindHeader(offset) : offset, std::ios_base::beg);
        } else {
            m_stream->seekg(offset, origin == 1 ? std::ios_base::cur : std::ios_base::end);
        }
        return !m_stream->fail() && !m_stream->eof();
    } catch (...) {
        return false;
    }
}

long JZStreamIOobj::Tell() {
    try {
        if (m_stream == nullptr || m_stream->fail() || m_stream->eof()) {
            return -1;
        }
        return static_cast<long>(m_stream->tellg());
    } catch (...) {
        return -1;
    }
}

}  // namespace ZroCommon

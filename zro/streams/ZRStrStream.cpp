#include "zro/streams/ZRStrStream.h"

#include <algorithm>

#include "zro/streams/internal/RewindStream.h"

namespace ZroCommon {

ZRStrStream::StrStreamBuf::StrStreamBuf(const char* data, std::size_t size, bool copy) {
    if (copy) {
        m_copy = std::make_unique_for_overwrite<char[]>(size);
        std::copy_n(data, size, m_copy.get());
        data = m_copy.get();
    }
    // A get area wants pointers to what may change; nothing here writes through them.
    auto* const start = const_cast<char*>(data);  // NOLINT(cppcoreguidelines-pro-type-const-cast)
    setg(start, start, start + size);
}

ZRStrStream::StrStreamBuf::~StrStreamBuf() = default;

ZRStrStream::ZRStrStream(const char* data, std::size_t size, bool copy)
    : std::basic_istream<char>(nullptr), m_buffer(data, size, copy) {
    init(&m_buffer);
}

ZRStrStream::~ZRStrStream() = default;

namespace internal {

void rewindStream(ZRStrStream& stream) {
    stream.clear();
    stream.m_buffer.rewind();
}

}  // namespace internal
}  // namespace ZroCommon

#include "zro/streams/ZRMemStream.h"

#include <cstring>

namespace ZroCommon {

ZRMemStream::ZRMemStream(std::istream* source, std::size_t growBytes, bool deleteSource)
    : std::basic_iostream<char>(nullptr), m_buffer(source, growBytes, deleteSource) {
    init(&m_buffer);
}

// The base is made from nothing: a stream's state is not copied, only what it holds.
ZRMemStream::ZRMemStream(const ZRMemStream& other)
    : std::basic_ios<char>(),  // NOLINT(readability-redundant-member-init) as GCC asks for it
      std::basic_iostream<char>(nullptr) {
    init(&m_buffer);
    m_buffer.copyContent(other.m_buffer);
}

ZRMemStream::~ZRMemStream() = default;

void ZRMemStream::clearFailure() {
    if ((rdstate() & (failbit | eofbit)) != 0) {
        clear();
    }
}

void ZRMemStream::remove() {
    m_buffer.remove();
    clearFailure();
}

ZRMemStream& ZRMemStream::begin() {
    clearFailure();
    seekg(0);
    return *this;
}

ZRMemStream& ZRMemStream::append(const std::string& bytes) {
    write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return *this;
}

ZRMemStream& ZRMemStream::writeStr(const char* text) {
    if (text != nullptr) {
        write(text, static_cast<std::streamsize>(std::strlen(text)));
    }
    return *this;
}

}  // namespace ZroCommon

#include "zro/streams/ZRCustomStream.h"

#include <algorithm>
#include <cstring>

namespace ZroCommon {
namespace {

constexpr std::ptrdiff_t kPutback = 10;
constexpr int kReadSize = 8192;
constexpr int kSize = static_cast<int>(kPutback) + kReadSize;

}  // namespace

ZRCustomStreamController::~ZRCustomStreamController() = default;

ZRCustomStreamBuf::ZRCustomStreamBuf(ZRCustomStreamController* controller)
    : m_controller(controller) {
    if (controller != nullptr) {
        m_buffer = std::make_unique<char[]>(kSize);
        setp(m_buffer.get(), m_buffer.get() + kSize - 1);
    }
}

ZRCustomStreamBuf::~ZRCustomStreamBuf() {
    try {
        flushBuffer();
    } catch (...) {  // NOLINT(bugprone-empty-catch): nobody is left who could be told
    }
}

int ZRCustomStreamBuf::pending() const {
    return static_cast<int>(pptr() - pbase()) + (m_isFull ? 1 : 0);
}

// On failure everything stays for another try. \return the number of bytes handed over, or -1
int ZRCustomStreamBuf::flushBuffer() {
    const int count = pending();
    if (count == 0) {
        return 0;
    }
    if (m_controller->write(m_buffer.get(), count) != count) {
        return -1;
    }
    setp(m_buffer.get(), m_buffer.get() + kSize - 1);
    m_isFull = false;
    m_written += count;
    return count;
}

ZRCustomStreamBuf::int_type ZRCustomStreamBuf::overflow(int_type character) {
    if (!is_open() || (m_isFull && flushBuffer() < 0)) {
        return traits_type::eof();
    }
    if (!traits_type::eq_int_type(character, traits_type::eof())) {
        *pptr() = traits_type::to_char_type(character);
        if (pptr() < epptr()) {
            pbump(1);
        } else {
            m_isFull = true;
        }
    }
    return flushBuffer() < 0 ? traits_type::eof() : character;
}

ZRCustomStreamBuf::int_type ZRCustomStreamBuf::underflow() {
    if (!is_open()) {
        return traits_type::eof();
    }
    if (gptr() < egptr()) {
        return traits_type::to_int_type(*gptr());
    }
    const std::ptrdiff_t kept = std::min(gptr() - eback(), kPutback);
    char* const start = m_buffer.get();
    char* const next = start + kept;
    if (kept > 0) {
        std::memmove(start, gptr() - kept, static_cast<std::size_t>(kept));
    }
    setg(start, next, next);
    const int got = m_controller->read(next, kReadSize);
    if (got < 0) {
        return traits_type::eof();
    }
    setg(start, next, next + std::min(got, kReadSize));
    // On purpose: a controller that has nothing ready does not end the stream; its reader gets what
    // lies in the buffer.
    return traits_type::to_int_type(*next);
}

// The standard one steps behind the area when `underflow` brought no byte.
ZRCustomStreamBuf::int_type ZRCustomStreamBuf::uflow() {
    const int_type character = underflow();
    if (gptr() < egptr()) {
        gbump(1);
    }
    return character;
}

// On purpose: every question is taken for one by `tellp`, so a seek by an offset seems to succeed.
ZRCustomStreamBuf::pos_type ZRCustomStreamBuf::seekoff(off_type /*offset*/,
                                                       std::ios_base::seekdir /*way*/,
                                                       std::ios_base::openmode /*which*/) {
    return {off_type{m_written} + pending()};
}

ZRCustomStream::ZRCustomStream(ZRCustomStreamController* controller)
    : std::basic_iostream<char>(nullptr), m_buffer(controller) {
    init(&m_buffer);
}

ZRCustomStream::~ZRCustomStream() = default;

}  // namespace ZroCommon

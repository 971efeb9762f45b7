#include "tools/zro/Output.h"

#include <cerrno>
#include <system_error>
#include <unistd.h>

namespace zro {

OutputFailure::OutputFailure(int error)
    : std::runtime_error("cannot write to standard output: "
                         + std::generic_category().message(error)),
      m_error(error) {}

bool OutputFailure::isBrokenPipe() const {
    return m_error == EPIPE;
}

OutputBuffer::OutputBuffer() {
    setp(m_buffer.data(), m_buffer.data() + m_buffer.size());
}

OutputBuffer::~OutputBuffer() {
    writeOut();
}

void OutputBuffer::finish() {
    writeOut();
    if (m_error != 0) {
        throw OutputFailure(m_error);
    }
}

OutputBuffer::int_type OutputBuffer::overflow(int_type character) {
    if (!writeOut()) {
        return traits_type::eof();
    }
    if (!traits_type::eq_int_type(character, traits_type::eof())) {
        *pptr() = traits_type::to_char_type(character);
        pbump(1);
    }
    return traits_type::not_eof(character);
}

int OutputBuffer::sync() {
    return writeOut() ? 0 : -1;
}

bool OutputBuffer::writeOut() {
    const char* next = pbase();
    while (m_error == 0 && next != pptr()) {
        const ssize_t count = ::write(STDOUT_FILENO, next, static_cast<std::size_t>(pptr() - next));
        if (count >= 0) {
            next += count;
        } else if (errno != EINTR) {
            m_error = errno;
        }
    }
    setp(m_buffer.data(), m_buffer.data() + m_buffer.size());
    return m_error == 0;
}

}  // namespace zro

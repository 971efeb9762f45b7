#include "zro/dom/internal/TextInput.h"

namespace ZroCommon::internal {

TextInput::Buffer::Buffer(const UnicodeString& text) : m_text(text) {
    // The buffer is only read; streams have no way to say so.
    auto* units = const_cast<char16_t*>(m_text.getBuffer());
    if (units != nullptr) {
        auto* bytes = reinterpret_cast<char*>(units);
        setg(bytes, bytes, reinterpret_cast<char*>(units + m_text.length()));
    }
}

void TextInput::Buffer::drop() {
    m_text.remove();
    setg(nullptr, nullptr, nullptr);
}

TextInput::Buffer::pos_type TextInput::Buffer::seekoff(off_type offset, std::ios_base::seekdir from,
                                                       std::ios_base::openmode /*which*/) {
    off_type target = offset;
    if (from == std::ios_base::cur) {
        target += gptr() - eback();
    } else if (from == std::ios_base::end) {
        target += egptr() - eback();
    }
    if (target < 0 || target > egptr() - eback()) {
        return pos_type(off_type(-1));
    }
    setg(eback(), eback() + target, egptr());
    return pos_type(target);
}

TextInput::Buffer::pos_type TextInput::Buffer::seekpos(pos_type position,
                                                       std::ios_base::openmode which) {
    return seekoff(off_type(position), std::ios_base::beg, which);
}

TextInput::TextInput(const UnicodeString& text) : std::istream(nullptr), m_buffer(text) {
    rdbuf(&m_buffer);  // sets the stream good
}

TextInput::~TextInput() = default;

void TextInput::drop() {
    m_buffer.drop();
}

}  // namespace ZroCommon::internal

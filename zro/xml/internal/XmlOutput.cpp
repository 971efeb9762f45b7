#include "zro/xml/internal/XmlOutput.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace ZroCommon::internal {
namespace {

bool isHighSurrogate(char16_t unit) {
    return (unit & 0xFC00U) == 0xD800;
}

bool isLowSurrogate(char16_t unit) {
    return (unit & 0xFC00U) == 0xDC00;
}

struct Character {
    char32_t value;
    std::size_t units;
};

// A lone surrogate is a character of its own.
Character firstCharacter(std::u16string_view text) {
    if (text.size() > 1 && isHighSurrogate(text[0]) && isLowSurrogate(text[1])) {
        const char32_t high = (text[0] & 0x3FFU) << 10U;
        return {0x10000 + (high | (text[1] & 0x3FFU)), 2};
    }
    return {text[0], 1};
}

char* appendUtf8(char* to, char32_t character) {
    const auto trail = [character](unsigned shift) {
        return static_cast<char>(0x80U | ((character >> shift) & 0x3FU));
    };
    if (character < 0x800) {
        *to++ = static_cast<char>(0xC0U | (character >> 6U));
    } else if (character < 0x10000) {
        *to++ = static_cast<char>(0xE0U | (character >> 12U));
        *to++ = trail(6);
    } else {
        *to++ = static_cast<char>(0xF0U | (character >> 18U));
        *to++ = trail(12);
        *to++ = trail(6);
    }
    *to++ = trail(0);
    return to;
}

}  // namespace

XmlOutput::XmlOutput() : m_block(new char[kBlockSize]) {}

void XmlOutput::setShiftJis(bool isShiftJis) {
    m_isShiftJis = isShiftJis;
    if (isShiftJis && m_encoder == nullptr) {
        m_encoder = CharEncoder::open("cp932");
    }
}

void XmlOutput::put(std::string_view text) {
    assert(text.size() <= kBlockSize);
    if (kBlockSize - m_used < text.size()) {
        drain();
    }
    std::memcpy(&m_block[m_used], text.data(), text.size());
    m_used += text.size();
}

void XmlOutput::put(std::u16string_view text, Escape escape) {
    switch (escape) {
    case Escape::None: return putEscaped<Escape::None>(text);
    case Escape::Text: return putEscaped<Escape::Text>(text);
    case Escape::Attribute: return putEscaped<Escape::Attribute>(text);
    }
}

template <Escape kEscape>
void XmlOutput::putEscaped(std::u16string_view text) {
    while (!text.empty()) {
        if (kBlockSize - m_used < kReserve) {
            drain();
        }
        const std::size_t fitting = std::min(text.size(), kBlockSize - m_used);
        const std::size_t plain = copyPlainRun<kEscape>(text.data(), fitting, &m_block[m_used]);
        m_used += plain;
        text.remove_prefix(plain);
        if (plain == fitting) {
            continue;
        }
        if (text[0] < 0x80) {
            putAsciiEntity(text[0]);
            text.remove_prefix(1);
        } else {
            text.remove_prefix(m_isShiftJis ? putEncoded(text) : putUtf8Run(text));
        }
    }
}

void XmlOutput::putAsciiEntity(char16_t unit) {
    switch (unit) {
    case u'&': return put("&amp;");
    case u'<': return put("&lt;");
    case u'>': return put("&gt;");
    default: return put("&quot;");
    }
}

// Writes characters up to the next ASCII one, as far as the block has room, at least one.
std::size_t XmlOutput::putUtf8Run(std::u16string_view text) {
    if (kBlockSize - m_used < kReserve) {
        drain();
    }
    char* to = &m_block[m_used];
    const char* const limit = &m_block[kBlockSize - kReserve];
    std::size_t done = 0;
    do {
        const Character character = firstCharacter(text.substr(done));
        to = appendUtf8(to, character.value);
        done += character.units;
    } while (done < text.size() && text[done] >= 0x80 && to <= limit);
    m_used = static_cast<std::size_t>(to - m_block.get());
    return done;
}

std::size_t XmlOutput::putEncoded(std::u16string_view text) {
    const Character character = firstCharacter(text);
    const std::string_view bytes =
        m_encoder == nullptr ? std::string_view() : m_encoder->encode(character.value);
    if (bytes.empty()) {
        putReference(character.value);
    } else {
        put(bytes);
    }
    return character.units;
}

void XmlOutput::putReference(char32_t character) {
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(),
                                   static_cast<std::uint32_t>(character))
                         .ptr;
    put("&#");
    put({digits.data(), static_cast<std::size_t>(end - digits.data())});
    put(';');
}

void XmlOutput::drain() {
    const auto size = static_cast<std::streamsize>(m_used);
    m_used = 0;
    if (m_hasFailed || size == 0) {
        return;
    }
    try {
        m_hasFailed = m_stream->rdbuf()->sputn(m_block.get(), size) != size;
    } catch (...) {
        m_hasFailed = true;  // as a standard stream takes it
    }
}

void XmlOutput::commit() {
    drain();
    if (m_hasFailed) {
        m_hasFailed = false;
        m_stream->setstate(std::ios_base::badbit);
    }
}

}  // namespace ZroCommon::internal

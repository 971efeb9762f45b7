#include "zro/xml/internal/XmlOutput.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>

namespace ZroCommon::internal {
namespace {

struct Character {
    char32_t value;
    std::size_t units;
};

// On purpose: a lone surrogate is a character of its own, and goes out as three bytes in UTF-8.
Character firstCharacter(std::u16string_view text) {
    const bool isPair =
        text.size() > 1 && (text[0] & 0xFC00U) == 0xD800 && (text[1] & 0xFC00U) == 0xDC00;
    if (!isPair) {
        return {text[0], 1};
    }
    const char32_t high = (text[0] & 0x3FFU) << 10U;
    return {0x10000 + (high | (text[1] & 0x3FFU)), 2};
}

char trailByte(char32_t bits) {
    return static_cast<char>(0x80U | (bits & 0x3FU));
}

char* appendTwoBytes(char* to, char32_t character) {
    to[0] = static_cast<char>(0xC0U | character >> 6U);
    to[1] = trailByte(character);
    return to + 2;
}

char* appendThreeBytes(char* to, char32_t character) {
    to[0] = static_cast<char>(0xE0U | character >> 12U);
    to[1] = trailByte(character >> 6U);
    to[2] = trailByte(character);
    return to + 3;
}

char* appendFourBytes(char* to, char32_t character) {
    to[0] = static_cast<char>(0xF0U | character >> 18U);
    to[1] = trailByte(character >> 12U);
    to[2] = trailByte(character >> 6U);
    to[3] = trailByte(character);
    return to + 4;
}

}  // namespace

XmlOutput::XmlOutput() : m_block(new char[kBlockSize]) {}

void XmlOutput::setShiftJis(bool isShiftJis) {
    m_isShiftJis = isShiftJis;
    if (isShiftJis && m_encoder == nullptr) {
        m_encoder = CharEncoder::open("cp932");
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

template void XmlOutput::putEscaped<Escape::None>(std::u16string_view text);
template void XmlOutput::putEscaped<Escape::Text>(std::u16string_view text);
template void XmlOutput::putEscaped<Escape::Attribute>(std::u16string_view text);

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
    const char16_t* from = text.data();
    const char16_t* const end = from + text.size();
    do {
        if (*from < 0x800) {
            to = appendTwoBytes(to, *from++);
        } else if ((*from & 0xF800U) != 0xD800) {
            to = appendThreeBytes(to, *from++);
            const std::size_t run =
                copyThreeByteRun(from, static_cast<std::size_t>(end - from), to,
                                 static_cast<std::size_t>(m_block.get() + kBlockSize - to));
            from += run;
            to += 3 * run;
        } else {
            const auto [value, units] = firstCharacter({from, end});
            to = units == 2 ? appendFourBytes(to, value) : appendThreeBytes(to, value);
            from += units;
        }
    } while (from != end && *from >= 0x80 && to <= limit);
    m_used = static_cast<std::size_t>(to - m_block.get());
    return static_cast<std::size_t>(from - text.data());
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

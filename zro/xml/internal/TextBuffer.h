#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>

#include "zro/foundation/Text.h"
#include "zro/foundation/internal/TextView.h"

namespace ZroCommon::internal {

/// Growing text of the parser. Unlike a `UnicodeString` it never turns bogus: what cannot grow
/// throws. Truncating keeps the memory for the next text.
class TextBuffer {
public:
    std::size_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }
    const char16_t* data() const { return m_units.get(); }
    char16_t* data() { return m_units.get(); }
    std::u16string_view view(std::size_t from = 0) const {
        return {m_units.get() + from, m_size - from};
    }

    void clear() { m_size = 0; }
    /// \param size  at most the present one
    void truncate(std::size_t size) { m_size = std::min(m_size, size); }

    /// \throws ZRError  0x0801 beyond 2^31 - 1 units or without memory; the text is as before.
    void append(const char16_t* units, std::size_t count) {
        if (count > m_capacity - m_size) {
            grow(count);
        }
        if (count != 0) {
            std::memcpy(m_units.get() + m_size, units, count * sizeof(char16_t));
        }
        m_size += count;
    }
    /// The same for a stretch that is mostly short: copied in one go where both sides have room.
    /// \param readable  the end of what may be read behind `units`
    void appendRun(const char16_t* units, std::size_t count, const char16_t* readable) {
        if (count <= kShort && readable - units >= static_cast<std::ptrdiff_t>(kShort)
            && m_capacity - m_size >= kShort) {
            std::memcpy(m_units.get() + m_size, units, kShort * sizeof(char16_t));
            m_size += count;
        } else {
            append(units, count);
        }
    }
    void append(std::u16string_view units) { append(units.data(), units.size()); }

    void append(char16_t unit) {
        if (m_size == m_capacity) {
            grow(1);
        }
        m_units[m_size++] = unit;
    }

    /// One or two units; a value that UTF-16 cannot carry adds nothing, a single surrogate itself.
    void appendCodePoint(char32_t c) {
        if (c < 0x10000) {
            append(static_cast<char16_t>(c));
        } else if (c <= 0x10FFFF) {
            append(static_cast<char16_t>(0xD7C0 + (c >> 10U)));
            append(static_cast<char16_t>(0xDC00 + (c & 0x3FFU)));
        }
    }

    bool endsWith(std::u16string_view ending) const { return view().ends_with(ending); }

    /// Gives a large buffer back; what is small stays for the next text.
    void shrink();

private:
    static constexpr std::size_t kShort = 16;

    void grow(std::size_t count);

    std::unique_ptr<char16_t[]> m_units;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
};

/// A `UnicodeString` of these units. \throws ZRError  0x0801 without memory.
UnicodeString makeText(std::u16string_view units);

/// \throws ZRError  always: 0x0801, "Out of memory."
[[noreturn]] void throwOutOfMemory();

}  // namespace ZroCommon::internal

#pragma once

#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

#include "zro/foundation/Text.h"

namespace ZroCommon::fuzzing {

inline void require(bool holds) {
    if (!holds) {
        std::abort();
    }
}

/// Bytes as text: each is a unit, but for 0xFF, which makes one of the two bytes behind it. So
/// corpora read as plain text, and every unit can be made, lone surrogates and U+0000 too.
inline UnicodeString utf16(std::span<const std::uint8_t> bytes) {
    UnicodeString text;
    while (!bytes.empty()) {
        unsigned unit = bytes[0];
        std::size_t used = 1;
        if (unit == 0xFF && bytes.size() >= 3) {
            unit = static_cast<unsigned>(bytes[1]) << 8U | bytes[2];
            used = 3;
        }
        text.append(static_cast<char16_t>(unit));
        bytes = bytes.subspan(used);
    }
    return text;
}

/// The same text in memory of just its size, where the sanitizer sees who reads beyond the end.
class ExactText {
public:
    explicit ExactText(const UnicodeString& text)
        : m_units(text.getBuffer(), text.getBuffer() + text.length()),
          m_text(false, m_units.data(), text.length()) {}

    const UnicodeString& text() const { return m_text; }

private:
    std::vector<char16_t> m_units;
    UnicodeString m_text;
};

}  // namespace ZroCommon::fuzzing

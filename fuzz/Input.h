#pragma once

#include <cstdint>
#include <cstdlib>
#include <span>

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

}  // namespace ZroCommon::fuzzing

#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace ZroCommon::internal {

/// An unsigned number in the byte order of a file.
template <class Number>
Number loadNumber(const unsigned char* bytes, bool littleEndian) {
    static_assert(std::is_unsigned_v<Number>);
    Number number = 0;
    for (std::size_t i = 0; i < sizeof(Number); ++i) {
        const std::size_t shift = 8 * (littleEndian ? i : sizeof(Number) - 1 - i);
        number = static_cast<Number>(number | (static_cast<Number>(bytes[i]) << shift));
    }
    return number;
}

inline std::int32_t loadSigned(const unsigned char* bytes, bool littleEndian) {
    return static_cast<std::int32_t>(loadNumber<std::uint32_t>(bytes, littleEndian));
}

}  // namespace ZroCommon::internal

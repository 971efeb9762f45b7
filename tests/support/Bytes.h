#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace ZroCommon::testing {

/// A number as so many bytes, 8 at the most, the lowest first or last.
inline std::string numberBytes(std::uint64_t number, std::size_t size, bool bigEndian = false) {
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i) {
        bytes += static_cast<char>(number >> 8 * (bigEndian ? size - 1 - i : i));
    }
    return bytes;
}

/// Bytes that do not pack well and have no period, the same in every run.
inline std::string noise(std::size_t size) {
    std::uint32_t state = 1;
    std::string bytes(size, '\0');
    for (char& byte : bytes) {
        state = state * 1664525U + 1013904223U;
        byte = static_cast<char>('a' + (state >> 24U) % 26U);
    }
    return bytes;
}

}  // namespace ZroCommon::testing

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "zro/vocabulary/ZRName.h"

namespace ZroCommon::internal {

/// Four units of text as one number. Compilers make one load of it.
constexpr std::uint64_t loadFourUnits(const char16_t* text) {
    return static_cast<std::uint64_t>(text[0]) | static_cast<std::uint64_t>(text[1]) << 16U
           | static_cast<std::uint64_t>(text[2]) << 32U
           | static_cast<std::uint64_t>(text[3]) << 48U;
}

/// Whether two texts of one length are the same, by four units a step.
constexpr bool equalUnits(const char16_t* left, const char16_t* right, std::size_t length) {
    std::size_t at = 0;
    if (length >= 4) {
        for (; at < length - 4; at += 4) {
            if (loadFourUnits(left + at) != loadFourUnits(right + at)) {
                return false;
            }
        }
        at = length - 4;  // the last step may see some units again
        return loadFourUnits(left + at) == loadFourUnits(right + at);
    }
    while (at < length && left[at] == right[at]) {
        ++at;
    }
    return at == length;
}

/// The hash of the builtin table: length and three windows of four units, whatever the length. It
/// is not keyed, so nothing that grows with input may hang on it.
constexpr std::uint32_t builtinNameHash(std::u16string_view name) {
    const std::size_t length = name.size();
    if (length == 0) {
        return 0;
    }
    const char16_t* text = name.data();
    std::uint64_t head = 0;
    std::uint64_t tail = 0;
    std::uint64_t middle = 0;
    if (length >= 4) {
        head = loadFourUnits(text);
        tail = loadFourUnits(text + length - 4);
        middle = loadFourUnits(text + (length - 4) / 2);
    } else {
        head = static_cast<std::uint64_t>(text[0])
               | static_cast<std::uint64_t>(text[length / 2]) << 16U
               | static_cast<std::uint64_t>(text[length - 1]) << 32U;
    }
    // Three products that wait for nothing but their loads.
    const std::uint64_t hash = (head ^ length) * 0x9E3779B97F4A7C15U ^ tail * 0xBF58476D1CE4E5B9U
                               ^ middle * 0x94D049BB133111EBU;
    return static_cast<std::uint32_t>(hash ^ (hash >> 32U));
}

struct HashKey {
    std::uint64_t first;
    std::uint64_t second;
};

/// SipHash-1-3 of a text, taken as little-endian bytes.
std::uint64_t sipHash(std::u16string_view text, HashKey key);

/// The same under a key that the process draws at random, for every table that input can fill:
/// colliding names cannot be made without the key.
std::uint64_t keyedNameHash(std::u16string_view name);

/// Hashes name numbers, for tables that input can fill: numbers are drawn in order, so a document
/// could choose those that collide. Multiplies and adds under a key that the process draws at
/// random; any bits of the result make two numbers collide by chance alone.
class NameNumberHash {
public:
    NameNumberHash();

    std::uint32_t operator()(ZRNameEnum number) const {
        return static_cast<std::uint32_t>(
            (m_key.first * static_cast<std::uint64_t>(number) + m_key.second) >> 32U);
    }

private:
    HashKey m_key;
};

}  // namespace ZroCommon::internal

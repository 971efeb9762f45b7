#pragma once

#include <bit>
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

/// Whether two texts of one length are the same, by eight units a step. For texts that most often
/// are: all of them is looked at.
constexpr bool equalUnits(const char16_t* left, const char16_t* right, std::size_t length) {
    constexpr std::size_t kStep = 8;
    std::uint64_t difference = 0;
    if (length < kStep) {
        for (std::size_t at = 0; at < length; ++at) {
            difference |= static_cast<std::uint64_t>(left[at] ^ right[at]);
        }
        return difference == 0;
    }
    const auto addStep = [&](std::size_t at) {
        difference |= loadFourUnits(left + at) ^ loadFourUnits(right + at);
        difference |= loadFourUnits(left + at + 4) ^ loadFourUnits(right + at + 4);
    };
    for (std::size_t at = 0; at < length - kStep; at += kStep) {
        addStep(at);
    }
    addStep(length - kStep);  // may see some units again
    return difference == 0;
}

/// Four windows of four units over a text. Up to `kWhole` units they are all of it; a text of less
/// than four lies in the first.
struct NameWindows {
    static constexpr std::size_t kWhole = 16;

    std::uint64_t first = 0;
    std::uint64_t second = 0;
    std::uint64_t third = 0;
    std::uint64_t last = 0;

    constexpr explicit NameWindows(std::u16string_view text) {
        const char16_t* const units = text.data();
        const std::size_t length = text.size();
        if (length >= 4) {
            const std::size_t rest = length - 4;
            first = loadFourUnits(units);
            second = loadFourUnits(units + rest * 86 / 256);  // about a third
            third = loadFourUnits(units + rest * 171 / 256);
            last = loadFourUnits(units + rest);
        } else if (length != 0) {
            first = static_cast<std::uint64_t>(units[0])
                    | static_cast<std::uint64_t>(units[length / 2]) << 16U
                    | static_cast<std::uint64_t>(units[length - 1]) << 32U;
        }
    }

    /// Whether two texts of one length have the same windows.
    constexpr bool equal(const NameWindows& other) const {
        return ((first ^ other.first) | (second ^ other.second) | (third ^ other.third)
                | (last ^ other.last))
               == 0;
    }
};

/// The hash of the builtin table, by length and windows alone, whatever the length. It is not
/// keyed, so nothing that grows with input may hang on it. The lower half is the better one.
constexpr std::uint32_t builtinNameHash(const NameWindows& windows, std::size_t length) {
    // Products that wait for nothing but their loads. Only their upper bits depend on all units.
    const std::uint64_t hash =
        (windows.first ^ length) * 0x9E3779B97F4A7C15U ^ windows.second * 0x94D049BB133111EBU
        ^ windows.third * 0xD6E8FEB86659FD93U ^ windows.last * 0xBF58476D1CE4E5B9U;
    return std::rotl(static_cast<std::uint32_t>(hash >> 32U), 16);
}

constexpr std::uint32_t builtinNameHash(std::u16string_view name) {
    return builtinNameHash(NameWindows(name), name.size());
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

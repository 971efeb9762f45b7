#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "zro/text/internal/SkipSpace.h"

// Digits as numbers: what `ZRUtil` and the lexer of values have in common. A text ends at `limit`,
// a pointer or `kTerminated`. Short numbers, which nearly all are, are read on the spot.

namespace ZroCommon::internal {

/// Of a number as many digits count, integer and fraction together.
inline constexpr std::size_t kMaxDigits = 98;

/// A decimal number begins here, a sign aside.
template <class Limit>
bool isDecimalStart(const char16_t* text, Limit limit) {
    if (text != limit && *text == u'.') {
        ++text;
    }
    return text != limit && ZRChar::isAsciiDigit(*text);
}

/// What `readDecimal` does behind the first digits: `end` stands there, and `mantissa` is made of
/// them, modulo 2^64.
template <class Limit>
double readRestOfDecimal(const char16_t* text, Limit limit, const char16_t*& end,
                         std::uint64_t mantissa);

/// Reads digits, or digits around a ".", that begin at `text`, and sets `end` behind them. A number
/// of more than `kMaxDigits` integer digits is none: the result is 0, and `end` is `text`.
template <class Limit>
double readDecimal(const char16_t* text, Limit limit, const char16_t*& end) {
    constexpr std::size_t kExact = 15;  // as many digits fit a double
    std::size_t most = kMaxDigits;
    if constexpr (std::is_pointer_v<Limit>) {
        most = std::min(most, static_cast<std::size_t>(limit - text));
    }
    std::uint64_t mantissa = 0;
    std::size_t count = 0;
    for (; count != most && ZRChar::isAsciiDigit(text[count]); ++count) {
        mantissa = mantissa * 10 + (static_cast<unsigned>(text[count]) - u'0');
    }
    end = text + count;
    if (count <= kExact && (end == limit || *end != u'.')) {
        return static_cast<double>(static_cast<std::int64_t>(mantissa));
    }
    return readRestOfDecimal(text, limit, end, mantissa);
}

/// What stands for "no hexadecimal digit".
inline constexpr unsigned kNoDigit = 16;

/// By code unit: the value of a hexadecimal digit.
inline constexpr auto kHexDigits = [] {
    std::array<std::uint8_t, 128> digits{};
    digits.fill(kNoDigit);
    for (std::uint8_t digit = 0; digit < 10; ++digit) {
        digits[u'0' + std::size_t{digit}] = digit;
    }
    for (std::uint8_t letter = 0; letter < 6; ++letter) {
        digits[u'A' + std::size_t{letter}] = digits[u'a' + std::size_t{letter}] = 10 + letter;
    }
    return digits;
}();

inline unsigned hexDigit(char16_t c) {
    return c < kHexDigits.size() ? kHexDigits[c] : kNoDigit;
}

/// `readHex` for any number of digits.
template <class Limit>
std::uint32_t readLongHex(const char16_t* text, Limit limit, const char16_t*& end);

/// Reads hexadecimal digits and sets `end` behind them; 0 without a digit. What has more than 32
/// bits is 0xFFFFFFFF, and digits beyond `kMaxDigits` do not count.
template <class Limit>
std::uint32_t readHex(const char16_t* text, Limit limit, const char16_t*& end) {
    constexpr std::ptrdiff_t kShort = 8;
    const char16_t* next = text;
    std::uint32_t number = 0;
    for (unsigned digit = 0; next != limit && (digit = hexDigit(*next)) != kNoDigit; ++next) {
        number = number << 4U | digit;
    }
    if (next - text > kShort) {
        return readLongHex(text, limit, end);
    }
    end = next;
    return number;
}

}  // namespace ZroCommon::internal

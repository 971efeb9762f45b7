// Numbers in texts: read from UTF-16, printed and rounded.

#include "zro/text/ZRUtil.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "zro/foundation/internal/AppendNumber.h"
#include "zro/foundation/internal/PrintReal.h"
#include "zro/foundation/internal/SaturatingInt.h"
#include "zro/text/internal/SkipSpace.h"

namespace ZroCommon {
namespace {

// Of a number as many digits count, integer and fraction together.
constexpr std::size_t kMaxDigits = 98;

bool isDigit(char16_t c) {
    return static_cast<unsigned>(c) - u'0' <= 9;
}

// A row of digits, from which a number is made while they are passed; modulo 2^64.
const char16_t* readDigits(const char16_t* text, std::uint64_t& number) {
    for (; isDigit(*text); ++text) {
        number = number * 10 + (static_cast<unsigned>(*text) - u'0');
    }
    return text;
}

using Digits = std::u16string_view;

// What needs more than 53 bits or a large power of ten.
double exactValue(Digits integer, Digits fraction) {
    std::array<char, kMaxDigits + 1> buffer{};
    const auto narrow = [](char16_t digit) {
        return static_cast<char>(digit);
    };
    char* end = std::transform(integer.begin(), integer.end(), buffer.data(), narrow);
    *end++ = '.';
    end = std::transform(fraction.begin(), fraction.end(), end, narrow);
    double value = 0;
    std::from_chars(buffer.data(), end, value, std::chars_format::fixed);
    return value;
}

// `mantissa` is made of all digits, modulo 2^64.
double valueOf(std::uint64_t mantissa, Digits integer, Digits fraction) {
    // What is below 2^53 and the powers of ten up to 10^22 are exact as a double, so one division
    // rounds correctly.
    constexpr std::uint64_t kMaxExact = std::uint64_t{1} << 53U;
    constexpr std::size_t kMaxUnwrapped = 19;
    constexpr std::array kPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,
                                    1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19};
    if (integer.size() + fraction.size() > kMaxUnwrapped || mantissa > kMaxExact) {
        return exactValue(integer, fraction);
    }
    const auto whole = static_cast<double>(static_cast<std::int64_t>(mantissa));
    return fraction.empty() ? whole : whole / kPowers[fraction.size()];
}

}  // namespace

double ZRUtil::parseNumber(const char16_t* text, const char16_t** end) {
    if (end != nullptr) {
        *end = text;
    }
    const char16_t* next = internal::skipSpace(text);
    const bool isNegative = *next == u'-';
    if (isNegative || *next == u'+') {
        ++next;
    }
    if (!isDigit(*next) && !(*next == u'.' && isDigit(next[1]))) {
        return 0;
    }
    std::uint64_t mantissa = 0;
    const char16_t* const digits = next;
    next = readDigits(next, mantissa);
    const Digits integer(digits, static_cast<std::size_t>(next - digits));
    if (integer.size() > kMaxDigits) {
        return 0;  // On purpose: no number at all, though a double could hold it.
    }
    Digits fraction;
    if (*next == u'.') {
        const char16_t* const first = next + 1;
        next = readDigits(first, mantissa);
        fraction = {first,
                    std::min(static_cast<std::size_t>(next - first), kMaxDigits - integer.size())};
    }
    if (end != nullptr) {
        *end = next;
    }
    const double value = valueOf(mantissa, integer, fraction);
    return isNegative ? -value : value;
}

unsigned int ZRUtil::parseHexNum(const char16_t* text, const char16_t** end, int maxDigits) {
    const char16_t* const digits = internal::skipSpace(text);
    const char16_t* next = digits;
    std::uint64_t number = 0;
    constexpr std::uint64_t kMax = std::numeric_limits<std::uint32_t>::max();
    for (; ZRChar::isHexDigit(*next) && (maxDigits <= 0 || next - digits < maxDigits); ++next) {
        if (next - digits < std::ptrdiff_t{kMaxDigits} && number <= kMax) {
            number = number << 4U | static_cast<unsigned>(ZRChar::hex2dig(*next));
        }
    }
    if (end != nullptr) {
        *end = next;
    }
    return static_cast<unsigned int>(number > kMax ? kMax : number);
}

UnicodeString ZRUtil::toString(int number) {
    UnicodeString text;
    return internal::appendNumber(text, number);
}

UnicodeString ZRUtil::toString(double number) {
    UnicodeString text;
    return internal::appendReal(text, number);
}

int ZRUtil::roundToInteger(double number) {
    return internal::saturatingInt(number < 0 ? number - 0.5 : number + 0.5);
}

int ZRUtil::roundToInteger(float number) {
    // On purpose: a sum in single precision, which rounds up just below a half.
    const float moved = number < 0 ? number - 0.5F : number + 0.5F;
    return internal::saturatingInt(moved);
}

}  // namespace ZroCommon

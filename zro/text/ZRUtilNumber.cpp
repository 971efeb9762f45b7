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
#include "zro/text/internal/Digits.h"
#include "zro/text/internal/SkipSpace.h"

namespace ZroCommon {
namespace internal {
namespace {

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
    static constexpr auto kPowers =
        std::to_array({1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,
                       1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19});
    if (integer.size() + fraction.size() > kMaxUnwrapped || mantissa > kMaxExact) {
        return exactValue(integer, fraction.substr(0, kMaxDigits - integer.size()));
    }
    const auto whole = static_cast<double>(static_cast<std::int64_t>(mantissa));
    return fraction.empty() ? whole : whole / kPowers[fraction.size()];
}

}  // namespace

template <class Limit>
double readRestOfDecimal(const char16_t* text, Limit limit, const char16_t*& end,
                         std::uint64_t mantissa) {
    const Digits integer(text, static_cast<std::size_t>(end - text));
    if (end == limit || *end != u'.') {
        if (end != limit && ZRChar::isAsciiDigit(*end)) {
            end = text;
            return 0;  // On purpose: no number at all, though a double could hold it.
        }
        return valueOf(mantissa, integer, {});
    }
    const char16_t* const first = end + 1;
    const char16_t* next = first;
    for (; next != limit && ZRChar::isAsciiDigit(*next); ++next) {
        mantissa = mantissa * 10 + (static_cast<unsigned>(*next) - u'0');
    }
    end = next;
    return valueOf(mantissa, integer, {first, static_cast<std::size_t>(next - first)});
}
template double readRestOfDecimal(const char16_t*, const char16_t*, const char16_t*&,
                                  std::uint64_t);

template <class Limit>
std::uint32_t readLongHex(const char16_t* text, Limit limit, const char16_t*& end) {
    constexpr std::uint64_t kMax = std::numeric_limits<std::uint32_t>::max();
    std::uint64_t number = 0;
    const char16_t* next = text;
    for (unsigned digit = 0; next != limit && (digit = hexDigit(*next)) != kNoDigit; ++next) {
        if (next - text < std::ptrdiff_t{kMaxDigits}) {
            number = std::min(number << 4U | digit, kMax + 1);
        }
    }
    end = next;
    return static_cast<std::uint32_t>(std::min(number, kMax));
}
template std::uint32_t readLongHex(const char16_t*, const char16_t*, const char16_t*&);

}  // namespace internal

double ZRUtil::parseNumber(const char16_t* text, const char16_t** end) {
    const char16_t* first = internal::skipSpace(text);
    const bool isNegative = *first == u'-';
    if (isNegative || *first == u'+') {
        ++first;
    }
    const char16_t* next = first;
    double number = 0;
    if (internal::isDecimalStart(first, internal::kTerminated)) {
        number = internal::readDecimal(first, internal::kTerminated, next);
    }
    if (end != nullptr) {
        *end = next == first ? text : next;
    }
    return isNegative && next != first ? -number : number;
}

unsigned int ZRUtil::parseHexNum(const char16_t* text, const char16_t** end, int maxDigits) {
    const char16_t* const first = internal::skipSpace(text);
    const char16_t* next = nullptr;
    const unsigned int number = maxDigits > 0
                                    ? internal::readHex(first, first + maxDigits, next)
                                    : internal::readHex(first, internal::kTerminated, next);
    if (end != nullptr) {
        *end = next;
    }
    return number;
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

#include "zro/text/xls/internal/GeneralNumber.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace ZroCommon::internal {
namespace {

// Characters of an exponent as "%02d" prints it: the sign counts, unlike in the text itself.
int exponentLength(int exponent) {
    if (exponent < 0) {
        return exponent <= -100 ? 4 : exponent <= -10 ? 3 : 2;
    }
    return exponent >= 100 ? 3 : 2;
}

void writePlain(double number, int decimals, DecimalString& text) {
    text.assignFixed(number, static_cast<std::size_t>(std::clamp(decimals, 0, 32)));
    text.stripZeros();
}

int lengthOf(const DecimalString& text) {
    return static_cast<int>(text.text().size());
}

// "1.23E+12", cut to the width. False when there is no room for it.
bool writeExponent(double number, int width, DecimalString& text) {
    constexpr int kMinWidth = 5;
    constexpr int kMaxDecimals = 15;
    if (width < kMinWidth) {
        return false;
    }
    auto [mantissa, exponent] = scaleToOneDigit(number);
    // On purpose: a plus sign is not counted, so a digit may be cut off behind, not rounded.
    const int needed = (number < 0 ? 2 : 1) + exponentLength(exponent) + 1;
    if (needed > width) {
        return false;
    }
    const int decimals = needed >= width - 1 ? 0 : std::min(width - needed - 1, kMaxDecimals);
    if (text.assignFixed(mantissa, static_cast<std::size_t>(decimals))) {
        text.movePoint(-1);
        // On purpose: the magnitude grows, which is the wrong way for a negative exponent.
        exponent += exponent < 0 ? -1 : 1;
    }
    text.stripZeros();
    if (decimals == 0) {
        return true;  // On purpose: without decimals there is no exponent either.
    }
    const int tail = 2 + (std::abs(exponent) >= 100 ? 3 : 2);
    while (lengthOf(text) + tail > width && text.hasPoint()) {
        text.dropDecimal();
    }
    text.appendExponent(exponent);
    return true;
}

// What begins with "#" is shown as 0 where there is no integer part.
void writeZero(int width, DecimalString& text) {
    if (width > 0) {
        text.assignFixed(0, 0);
    } else {
        text.clear();
    }
}

void writeFraction(double number, int width, DecimalString& text) {
    constexpr double kAlmostZero = 1e-9;
    constexpr double kSmall = 0.001;
    const int sign = number < 0 ? 1 : 0;
    const double magnitude = std::fabs(number);
    if (magnitude >= kAlmostZero) {
        const bool isWide = magnitude < kSmall || width - 2 > 9;
        writePlain(number, (isWide ? 9 : width - 2) - sign, text);
        if (lengthOf(text) <= width) {
            return;
        }
        if (magnitude >= kSmall) {
            writeZero(width, text);
            return;
        }
    }
    if (!writeExponent(number, width - sign, text)) {
        writeZero(width - sign, text);
    }
}

bool writeWithInteger(double number, int width, DecimalString& text) {
    const int sign = number < 0 ? 1 : 0;
    writePlain(number, 0, text);
    const int length = lengthOf(text);
    if (length == width) {
        return true;
    }
    if (length > width) {
        return length > 5 && writeExponent(number, width, text);
    }
    if (width <= 6) {
        writePlain(number, width + sign - length - 1, text);
    } else if (length <= 8) {
        writePlain(number, 8 - length, text);  // On purpose: whether or not the width has room.
    } else {
        writePlain(number, length - sign - 8, text);
    }
    return true;
}

}  // namespace

// By the digits that tell the double from its neighbours: 1e-11 has the mantissa 1, which products
// with powers of ten would miss by a bit, and then show as 9.99999E-12.
ScaledNumber scaleToOneDigit(double number) {
    std::array<char, 32> digits{};
    char* const last = digits.data() + digits.size();
    const char* const end =
        std::to_chars(digits.data(), last, number, std::chars_format::scientific).ptr;
    const char* const mark = std::find(std::as_const(digits).data(), end, 'e');
    ScaledNumber scaled;
    std::from_chars(digits.data(), mark, scaled.mantissa);
    std::from_chars(mark[1] == '+' ? mark + 2 : mark + 1, end, scaled.exponent);
    return scaled;
}

bool writeGeneral(double number, int width, DecimalString& text) {
    constexpr double kMaxPlain = 99999999999.0;
    constexpr int kMaxWidth = 11;
    if (!std::isfinite(number)) {
        return false;
    }
    if (number == 0) {
        text.assignFixed(0, 0);
        return true;
    }
    const double integer = std::trunc(number);
    if (integer > kMaxPlain) {  // On purpose: negative ones are written out, however large.
        return writeExponent(number, std::min(width, kMaxWidth), text);
    }
    if (integer == 0) {
        writeFraction(number, width, text);
        return true;
    }
    return writeWithInteger(number, width, text);
}

}  // namespace ZroCommon::internal

// The digits of a number, before they go into placeholders.

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>

#include "zro/text/xls/internal/GeneralNumber.h"
#include "zro/text/xls/internal/NumberWalker.h"

namespace ZroCommon::internal {
namespace {

// A number with a point and fifteen digits at most: they and the power of ten are exact as doubles,
// so that one division rounds correctly.
std::optional<double> shortValueOf(std::string_view text) {
    static constexpr auto kPowers = std::to_array(
        {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15});
    if (text.size() > kPowers.size()) {
        return std::nullopt;
    }
    std::int64_t digits = 0;
    std::size_t point = text.size() - 1;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const char c = text[index];
        if (c >= '0' && c <= '9') {
            digits = digits * 10 + (c - '0');
        } else if (c == '.') {
            point = index;
        } else {
            return std::nullopt;
        }
    }
    return static_cast<double>(digits) / kPowers[text.size() - 1 - point];
}

}  // namespace

bool NumberParts::prepare(const FMT& section, double magnitude) {
    m_mantissa.assign(magnitude);
    m_mantissa.movePoint(2 * section.percentCount);
    m_mantissa.movePoint(-3 * section.commaCount);
    if (section.hasExponent != 0) {
        prepareExponent(section, magnitude);
    }
    if (section.hasSlash != 0) {
        return prepareFraction(section);
    }
    if (m_mantissa.roundDecimals(section.fracPlaces) && section.hasExponent != 0) {
        m_mantissa.movePoint(-1);
        writeExponent(m_power + 1, true);
    }
    m_integer = m_mantissa.integer();
    m_decimals = m_mantissa.decimals();
    m_isZero = m_mantissa.isZero();
    return true;
}

// Moves the point to as many integer digits as there are places. No steps of three: "##0.0E+0"
// shows 12345 as 123.5E+2.
void NumberParts::prepareExponent(const FMT& section, double magnitude) {
    if (magnitude > 0 && magnitude < 1) {
        // On purpose: six decimals of the number itself, percent signs and commas forgotten.
        const ScaledNumber scaled = scaleToOneDigit(magnitude);
        m_power = scaled.exponent;
        m_mantissa.assignSixDecimals(scaled.mantissa);
    }
    const int surplus = static_cast<int>(m_mantissa.integer().size()) - section.intDigits;
    m_mantissa.movePoint(-surplus);
    writeExponent(m_power + surplus, surplus != 0);
}

void NumberParts::writeExponent(int exponent, bool isShifted) {
    m_power = exponent;
    char* const first = m_exponentText.data();
    const char* const end =
        std::to_chars(first, first + m_exponentText.size(), std::abs(exponent)).ptr;
    m_exponent = {first, static_cast<std::size_t>(end - first)};
    const bool isNone = exponent == 0 && !isShifted;
    m_exponentSign = isNone ? 0 : exponent < 0 ? 2 : 1;
}

// What is shown as a fraction: of a mixed number the decimals, else all of it.
double NumberParts::fractionalValue(bool isMixed) const {
    const std::string_view text =
        isMixed ? m_mantissa.text().substr(m_integer.size()) : m_mantissa.text();
    if (const std::optional<double> value = shortValueOf(text)) {
        return *value;
    }
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

bool NumberParts::prepareFraction(const FMT& section) {
    const bool isMixed = section.intDigits != 0;
    m_integer = m_mantissa.integer();
    const bool isBelowOne = !isMixed || m_integer == "0";
    const double magnitude = fractionalValue(isMixed);
    const Fraction fraction = section.fixedDenominator != 0
                                  ? fractionOver(section.fixedDenominator, magnitude)
                                  : fractionWithin(section.denominatorDigits, magnitude);
    const bool isWhole = fraction.denominator == 1 && fraction.numerator == std::trunc(magnitude);
    m_numerator = m_integer;  // of a whole number, whose digits a double would lose
    if (isBelowOne && (!isMixed || section.intZeros == 0)) {
        m_integer = {};
    }
    if (fraction.numerator == 0) {
        m_numerator = {};
        m_isZero = isBelowOne;
        return true;
    }
    return std::isfinite(fraction.numerator) && writeFraction(fraction, isWhole);
}

bool NumberParts::writeFraction(const Fraction& fraction, bool isWhole) {
    char* const first = m_fractionText.data();
    char* const last = first + m_fractionText.size();
    char* end = first;
    if (!isWhole) {
        constexpr double kMaxInteger = 9e15;
        const double numerator = fraction.numerator;
        end = numerator < kMaxInteger
                  ? std::to_chars(first, last, static_cast<std::int64_t>(numerator)).ptr
                  : std::to_chars(first, last, numerator, std::chars_format::fixed, 0).ptr;
        m_numerator = {first, static_cast<std::size_t>(end - first)};
    }
    char* const denominator = end;
    end = std::to_chars(denominator, last, int{fraction.denominator}).ptr;
    m_denominator = {denominator, static_cast<std::size_t>(end - denominator)};
    return true;
}

}  // namespace ZroCommon::internal

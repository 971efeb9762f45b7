#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ZroCommon::internal {

/// A decimal number as text: digits, perhaps a point with more of them, perhaps a minus ahead.
///
/// What a cell shows is worked out on these digits, not on the double, so that a number has the
/// same fifteen digits everywhere. The steps round by rules of their own, one after the other; what
/// looks like double rounding is meant.
// NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init): what is read was written
class DecimalString {
public:
    /// The number as a cell sees it: fifteen significant digits and at most 32 decimals, always
    /// with a point. `magnitude` is finite and not negative.
    void assign(double magnitude);
    /// The number with six decimals, as C's "%lf" prints it. Finite and not negative.
    void assignSixDecimals(double number);
    /// The number with so many decimals, a half rounded down; without a point for none. When it is
    /// rounded up, one decimal more, a zero, stands behind. The number is finite.
    /// \return whether rounding has put a new digit in front
    bool assignFixed(double number, std::size_t decimals);

    void clear() { m_size = 0; }
    /// Drops zeros at the end of the decimals, and then a bare point.
    void stripZeros();
    /// Drops the last digit of the decimals; a point that has none left goes too.
    void dropDecimal();
    /// Appends "E+05".
    void appendExponent(int exponent);
    /// Moves the point to the right, or to the left for a negative number of places, and brings
    /// the text to its normal form if it moves at all.
    void movePoint(int places);
    /// Rounds to so many decimals; the places behind become zeros.
    /// \return whether a new digit stands in front
    bool roundDecimals(std::size_t decimals);
    /// The normal form: one digit or more, point, one digit or more, without needless zeros.
    void normalise();

    std::string_view text() const { return {m_chars.data(), m_size}; }
    /// What stands ahead of the point, the minus too.
    std::string_view integer() const { return text().substr(0, pointIndex()); }
    /// What stands behind the point.
    std::string_view decimals() const;
    bool hasPoint() const { return pointIndex() < m_size; }
    bool isZero() const { return text().find_first_of("123456789") == std::string_view::npos; }

private:
    // 309 digits of the largest double, 32 decimals, and what 255 signs of percent or 255 commas
    // and 255 places ahead of an exponent add.
    static constexpr std::size_t kCapacity = 2048;

    std::size_t pointIndex() const;
    std::size_t signLength() const { return m_size > 0 && m_chars[0] == '-' ? 1 : 0; }
    void push(char c) {
        if (m_size < kCapacity) {
            m_chars[m_size++] = c;
        }
    }
    void insert(std::size_t index, std::size_t count, char c);
    bool assignInIntegers(double magnitude);
    void writeRounded(std::uint64_t whole, std::uint64_t decimals, std::size_t places);
    void appendInteger(double whole);
    void appendChunk(std::uint32_t chunk, std::size_t places);
    bool appendDecimals(double fraction, std::size_t decimals, std::size_t enough);
    bool write(double number, std::size_t decimals, std::size_t enough);
    bool increment(std::size_t end);
    bool incrementOrGrow(std::size_t end);
    bool cascade(std::size_t first);
    void roundToFifteenDigits();
    void movePointRight(std::size_t places);
    void movePointLeft(std::size_t places);

    std::array<char, kCapacity> m_chars;
    std::size_t m_size = 0;
};

}  // namespace ZroCommon::internal

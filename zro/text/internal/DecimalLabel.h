#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// What stands between groups of digits. The text is the caller's.
struct Grouping {
    const UnicodeString& separator;
    int size = 0;  ///< characters in a group, whatever its sign; 0 for one group alone
};

/// Ten digits and a minus.
class DigitSet {
public:
    /// The set of a decimal script, by its digit one; '1' for ASCII.
    ///
    /// On purpose: the minus lies as far ahead of the digits as in ASCII. For full-width digits it
    /// is the full-width minus, for others whatever stands there.
    explicit constexpr DigitSet(char16_t one = u'1') : m_zero(static_cast<char16_t>(one - 1)) {}
    /// Digits that do not follow each other; the minus is ASCII's.
    explicit constexpr DigitSet(std::u16string_view digits) : m_row(digits) {}

    /// The set that a token such as "01" or "〇一" asks for. Only its first and last character
    /// count.
    static std::optional<DigitSet> of(std::u16string_view token);

    char16_t digit(unsigned value) const {
        return m_row.empty() ? static_cast<char16_t>(m_zero + value) : m_row[value];
    }
    char16_t minus() const { return m_row.empty() ? static_cast<char16_t>(m_zero - 3) : u'-'; }

private:
    std::u16string_view m_row;
    char16_t m_zero = 0;
};

/// Appends a number in digits, filled up with zeros behind its sign to so many characters at
/// least, in groups.
void appendDecimal(UnicodeString& text, int number, std::size_t minLength, DigitSet digits,
                   const Grouping& grouping);

}  // namespace ZroCommon::internal

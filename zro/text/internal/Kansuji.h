#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// The characters of Japanese numerals: ten digits, ten, hundred and thousand, the units of twelve
/// groups of four digits, and what a decimal point and a comma become.
class KansujiTable {
public:
    /// \param digits  replace the digits as far as they reach
    /// \param units   replace the units from ten on, as far as they reach
    KansujiTable(std::u16string_view digits, std::u16string_view units);

    static constexpr std::size_t kGroups = 12;  ///< that have a unit

    char16_t digit(char16_t ascii) const { return m_units[ascii - std::size_t{u'0'}]; }
    /// Ten, hundred, thousand for 1 to 3.
    char16_t power(std::size_t exponent) const { return m_units[kPowers + exponent]; }
    /// The unit of a group that `index` groups follow; 1 to `kGroups`.
    char16_t group(std::size_t index) const { return m_units[kFirstGroup + index - 1]; }
    static constexpr char16_t point() { return u'・'; }
    static constexpr char16_t comma() { return u'、'; }

private:
    static constexpr std::size_t kPowers = 9;
    static constexpr std::size_t kFirstGroup = 13;
    std::array<char16_t, kFirstGroup + kGroups> m_units;
};

/// Rewrites the numbers of a text in Japanese numerals, and all other ASCII in full width.
class Kansuji {
public:
    enum class Method {
        Plain,     ///< digit by digit
        Grouping,  ///< with the units of groups
        Readable,  ///< with all units, as numbers are read
    };

    Kansuji(Method method, const KansujiTable& table) : m_method(method), m_table(table) {}

    UnicodeString convert(std::u16string_view text);

private:
    void writeRun(std::u16string_view run, bool endsText);
    void writePlain(std::u16string_view run);
    void writeGrouping(std::u16string_view digits);
    void writeReadable(std::u16string_view digits);
    void writePlace(char16_t digit, std::size_t place);
    std::size_t writeFraction(std::u16string_view text);
    void writeWide(char16_t unit);

    Method m_method;
    const KansujiTable& m_table;
    UnicodeString m_text;
};

}  // namespace ZroCommon::internal

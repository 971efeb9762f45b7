#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string_view>
#include <type_traits>

namespace ZroCommon::internal {

/// One member of all rows of a constant table: `columnOf<kRows, &Row::text>()`.
template <const auto& Rows, auto Member>
constexpr auto columnOf() {
    std::array<std::remove_cvref_t<decltype(Rows[0].*Member)>, std::size(Rows)> column{};
    for (std::size_t number = 0; number < column.size(); ++number) {
        column[number] = Rows[number].*Member;
    }
    return column;
}

/// The rows' units together.
template <const auto& Rows>
constexpr std::size_t unitCountOf() {
    std::size_t sum = 0;
    for (const std::u16string_view row : Rows) {
        sum += row.size();
    }
    return sum;
}

/// Constant texts by number, as one array of units and where each text begins in it. A table of
/// views holds addresses, which are relocated whenever the library is loaded; this one holds none.
///
/// `Rows` is a constant array of views, which nothing but the compiler reads.
template <const auto& Rows>
class PackedTexts {
public:
    static constexpr std::size_t kCount = std::size(Rows);

    constexpr PackedTexts() {
        std::size_t at = 0;
        for (std::size_t number = 0; number < kCount; ++number) {
            for (const char16_t unit : Rows[number]) {
                m_units[at++] = unit;
            }
            m_starts[number + 1] = static_cast<std::uint16_t>(at);
        }
    }

    /// `number` is less than kCount.
    constexpr std::u16string_view operator[](std::size_t number) const {
        return {m_units.data() + m_starts[number], length(number)};
    }

    constexpr const char16_t* units() const { return m_units.data(); }
    constexpr std::uint16_t start(std::size_t number) const { return m_starts[number]; }
    constexpr std::uint16_t length(std::size_t number) const {
        return static_cast<std::uint16_t>(m_starts[number + 1] - m_starts[number]);
    }

private:
    static_assert(unitCountOf<Rows>() <= UINT16_MAX, "a start has 16 bits");

    std::array<char16_t, unitCountOf<Rows>()> m_units{};
    std::array<std::uint16_t, kCount + 1> m_starts{};  // the last one is the end
};

}  // namespace ZroCommon::internal

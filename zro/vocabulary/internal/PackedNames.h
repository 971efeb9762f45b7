#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "zro/vocabulary/internal/NameHash.h"

namespace ZroCommon::internal {

/// The units of all rows together.
template <std::size_t Count>
constexpr std::size_t unitCount(const std::u16string_view (&rows)[Count]) {
    std::size_t sum = 0;
    for (const std::u16string_view& row : rows) {
        sum += row.size();
    }
    return sum;
}

/// Names that are numbered by their place, the empty one first, as one constant text with a hash
/// index over it. There is no address in it, so that loading the library does no work for it.
///
/// `Slots` is a power of two, at least twice `Count`.
template <std::size_t Count, std::size_t Units, std::size_t Slots>
class PackedNames {
public:
    constexpr explicit PackedNames(const std::u16string_view (&rows)[Count]) {
        std::size_t at = 0;
        for (std::size_t number = 0; number < Count; ++number) {
            for (const char16_t unit : rows[number]) {
                m_units[at++] = unit;
            }
            m_starts[number + 1] = static_cast<std::uint16_t>(at);
            if (number > 0) {
                m_slots[freeSlot(rows[number])] = static_cast<std::uint16_t>(number);
            }
        }
    }

    /// Empty for a number that is none.
    constexpr std::u16string_view textOf(std::int32_t number) const {
        if (number < 0 || static_cast<std::size_t>(number) >= Count) {
            return {};
        }
        const auto index = static_cast<std::size_t>(number);
        const std::size_t start = m_starts[index];
        return {m_units.data() + start, m_starts[index + 1] - start};
    }

    /// 0 for a text that is none of the names.
    constexpr std::int32_t find(std::u16string_view text) const {
        std::size_t slot = firstSlot(text);
        while (m_slots[slot] != 0 && textOf(m_slots[slot]) != text) {
            slot = (slot + 1) % Slots;
        }
        return m_slots[slot];
    }

private:
    static_assert(Units <= UINT16_MAX && Count * 2 <= Slots && (Slots & (Slots - 1)) == 0);

    static constexpr std::size_t firstSlot(std::u16string_view text) {
        return builtinNameHash(text) % Slots;
    }
    constexpr std::size_t freeSlot(std::u16string_view text) const {
        std::size_t slot = firstSlot(text);
        while (m_slots[slot] != 0) {
            slot = (slot + 1) % Slots;
        }
        return slot;
    }

    std::array<char16_t, Units> m_units{};
    std::array<std::uint16_t, Count + 1> m_starts{};  // the last entry is the end
    std::array<std::uint16_t, Slots> m_slots{};       // numbers; 0 is a free slot
};

}  // namespace ZroCommon::internal

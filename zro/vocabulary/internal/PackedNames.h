#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "zro/foundation/internal/PackedTexts.h"
#include "zro/vocabulary/internal/NameHash.h"

namespace ZroCommon::internal {

/// Names that are numbered by their place in `Rows`, the empty one first, with a hash index over
/// them. There is no address in it, so that loading the library does no work for it.
///
/// `Slots` is a power of two, at least twice the count of names.
template <const auto& Rows, std::size_t Slots>
class PackedNames {
public:
    constexpr PackedNames() {
        for (std::size_t number = 1; number < kCount; ++number) {
            m_slots[freeSlot(Rows[number])] = static_cast<std::uint16_t>(number);
        }
    }

    /// Empty for a number that is none.
    constexpr std::u16string_view textOf(std::int32_t number) const {
        const auto index = static_cast<std::size_t>(number);
        return number < 0 || index >= kCount ? std::u16string_view() : m_texts[index];
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
    static constexpr std::size_t kCount = PackedTexts<Rows>::kCount;
    static_assert(kCount * 2 <= Slots && (Slots & (Slots - 1)) == 0);

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

    PackedTexts<Rows> m_texts;
    std::array<std::uint16_t, Slots> m_slots{};  // numbers; 0 is a free slot
};

}  // namespace ZroCommon::internal

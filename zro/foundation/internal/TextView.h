#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <string_view>

#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// The units of a text, while it lives and stays unchanged.
inline std::u16string_view viewOf(const UnicodeString& text) {
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

template <std::size_t kUnits>
void copyEnds(std::u16string_view units, char16_t* target) {
    std::memcpy(target, units.data(), kUnits * sizeof(char16_t));
    const std::size_t rest = units.size() - kUnits;
    std::memcpy(target + rest, units.data() + rest, kUnits * sizeof(char16_t));
}

/// Copies units to where there is room for them. Short texts go without a call: their two ends,
/// which may overlap.
inline void copyUnits(std::u16string_view units, char16_t* target) {
    const std::size_t length = units.size();
    if (length > 32) {
        std::memcpy(target, units.data(), length * sizeof(char16_t));
    } else if (length > 16) {
        copyEnds<16>(units, target);
    } else if (length >= 8) {
        copyEnds<8>(units, target);
    } else if (length >= 4) {
        copyEnds<4>(units, target);
    } else {
        std::copy_n(units.data(), length, target);
    }
}

/// A text of its own with these units, without spare room. Faster than the constructors.
/// \throws std::bad_alloc  without memory, where ICU would give a bogus text
inline UnicodeString textOf(std::u16string_view units) {
    constexpr std::size_t kInside = 27;  // what needs no memory
    UnicodeString text;
    const auto length = static_cast<int32_t>(units.size());
    if (units.size() <= kInside) {
        text.append(units.data(), length);
        return text;
    }
    char16_t* const target = text.getBuffer(length);
    if (target == nullptr) {
        throw std::bad_alloc();
    }
    copyUnits(units, target);
    text.releaseBuffer(length);
    return text;
}

}  // namespace ZroCommon::internal

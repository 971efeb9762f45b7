#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// The units of a text, while it lives and stays unchanged.
inline std::u16string_view viewOf(const UnicodeString& text) {
    return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

/// A text of its own with these units.
inline UnicodeString textOf(std::u16string_view units) {
    return {units.data(), static_cast<int32_t>(units.size())};
}

}  // namespace ZroCommon::internal

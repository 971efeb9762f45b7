#pragma once

#include <array>
#include <charconv>
#include <cstdint>

#include "zro/foundation/Text.h"

namespace ZroCommon::internal {

/// Appends a number in decimal, whatever the locale.
inline UnicodeString& appendNumber(UnicodeString& text, std::int64_t number) {
    std::array<char, 24> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    for (const char* digit = digits.data(); digit != end; ++digit) {
        text.append(static_cast<char16_t>(*digit));
    }
    return text;
}

}  // namespace ZroCommon::internal

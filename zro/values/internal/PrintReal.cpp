#include "zro/values/internal/PrintReal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace ZroCommon::internal {

UnicodeString& appendReal(UnicodeString& text, double number) {
    if (std::isnan(number)) {
        return text.append(u"nan");
    }
    constexpr int kDigits = 6;
    std::array<char, 32> narrow{};
    const auto end = std::to_chars(narrow.data(), narrow.data() + narrow.size(), number,
                                   std::chars_format::general, kDigits)
                         .ptr;
    std::array<char16_t, narrow.size()> wide{};
    const auto length = std::copy(narrow.data(), end, wide.data()) - wide.data();
    return text.append(wide.data(), static_cast<int32_t>(length));
}

}  // namespace ZroCommon::internal

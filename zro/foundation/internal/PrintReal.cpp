#include "zro/foundation/internal/PrintReal.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

#include "zro/foundation/internal/AppendNumber.h"

namespace ZroCommon::internal {
namespace {

// Up to six digits and no sign of zero: what integers print alike, in a fraction of the time.
bool isShortInteger(double number) {
    return std::fabs(number) < 1e6 && number == std::trunc(number)
           && !(number == 0 && std::signbit(number));
}

}  // namespace

UnicodeString& appendReal(UnicodeString& text, double number) {
    if (std::isnan(number)) {
        return text.append(u"nan");
    }
    if (isShortInteger(number)) {
        return appendNumber(text, static_cast<std::int64_t>(number));
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

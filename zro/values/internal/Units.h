#pragma once

#include <limits>
#include <string_view>

#include "zro/foundation/internal/PackedTexts.h"
#include "zro/values/ZRValueUnitType.h"

namespace ZroCommon::internal {

/// For the compiler alone: kUnitTexts is made of it.
inline constexpr std::u16string_view kUnitRows[] = {
    u"", u"", u"%",   u"em",  u"ex",   u"px", u"cm", u"mm",   u"in",  u"pt", u"pc",
    u"", u"", u"deg", u"rad", u"grad", u"ms", u"s",  u"Hz",   u"kHz", u"",   u"",
    u"", u"", u"",    u"",    u"",     u"",   u"",   u"twip", u"",    u"",
};
/// The text behind a number, by unit. Reading compares in lower case, so "hz" is 18 as well.
inline constexpr PackedTexts<kUnitRows> kUnitTexts;

/// How many points one of the unit is; NaN when it is no absolute length.
constexpr float pointsPer(ZRValueUnitType unit) {
    switch (unit) {
    case ZRValueUnitCm: return 28.346457F;
    case ZRValueUnitMm: return 2.8346457F;
    case ZRValueUnitIn: return 72.0F;
    case ZRValueUnitPt: return 1.0F;
    case ZRValueUnitPc: return 12.0F;
    case ZRValueUnitTwip: return 0.05F;
    default: return std::numeric_limits<float>::quiet_NaN();
    }
}

}  // namespace ZroCommon::internal

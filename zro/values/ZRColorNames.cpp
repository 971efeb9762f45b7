// The colour keywords, and the way back from a value to its keyword.

#include "zro/values/ZRColor.h"

#include <algorithm>
#include <array>

#include <unicode/locid.h>

#include "zro/vocabulary/ZRNameTable.h"

namespace ZroCommon {
namespace {

struct Keyword {
    ZRNameEnum name;
    std::uint32_t rgb;
};

constexpr auto kKeywords = std::to_array({
#define ZR_COLOR(name, rgb) Keyword{ZRN_##name, rgb},
#define ZR_COLOR_ALIAS(name, rgb) Keyword{ZRN_##name, rgb},
#include "zro/values/internal/ColorKeywords.inc"
    Keyword{ZRN_transparent, 0xFFFFFFFF},
});
static_assert(kKeywords.size() == 148, "the keywords of CSS and transparent");

// By name number: the place in kKeywords and 1, or 0.
constexpr auto kPlaces = [] {
    std::array<std::uint8_t, ZRN_LAST_BUILTIN + 1> places{};
    for (std::size_t place = 0; place < kKeywords.size(); ++place) {
        places[static_cast<std::size_t>(kKeywords[place].name)] =
            static_cast<std::uint8_t>(place + 1);
    }
    return places;
}();

constexpr bool isDarker(const Keyword& left, const Keyword& right) {
    return left.rgb < right.rgb;
}

// One a value, in the order of the values.
constexpr auto kByValue = [] {
    std::array keywords = {
#define ZR_COLOR(name, rgb) Keyword{ZRN_##name, rgb},
#include "zro/values/internal/ColorKeywords.inc"
        Keyword{ZRN_currentColor, 0xFE000000},
        Keyword{ZRN_transparent, 0xFFFFFFFF},
    };
    std::sort(keywords.begin(), keywords.end(), isDarker);
    return keywords;
}();
static_assert(std::adjacent_find(kByValue.begin(), kByValue.end(),
                                 [](const Keyword& left, const Keyword& right) {
                                     return left.rgb == right.rgb;
                                 })
                  == kByValue.end(),
              "each value has one keyword, and aliases are marked");

const Keyword* keywordOf(ZRNameEnum name) {
    const auto number = static_cast<std::size_t>(name);
    const std::size_t place = number < kPlaces.size() ? kPlaces[number] : 0;
    return place == 0 ? nullptr : &kKeywords[place - 1];
}

std::uint32_t rgbOfText(UnicodeString text) {
    text.toLower(icu::Locale::getRoot());
    if (const Keyword* keyword = keywordOf(ZRNameTable::getBuiltinNameEnum(text))) {
        return keyword->rgb;
    }
    return text == UnicodeString(u"currentcolor") ? ZRColor::getCurrentColor().getRGB()
                                                  : ZRColor::getInvalidColor().getRGB();
}

}  // namespace

ZRColor::ZRColor(ZRName keyword) {
    const Keyword* known = keywordOf(keyword);
    m_rgb = known != nullptr ? known->rgb : rgbOfText(keyword.toString());
}

ZRName ZRColor::getColorName() const {
    const auto* found =
        std::lower_bound(kByValue.begin(), kByValue.end(), Keyword{ZRN_EMPTY, m_rgb}, isDarker);
    return found != kByValue.end() && found->rgb == m_rgb ? found->name : ZRN_EMPTY;
}

}  // namespace ZroCommon

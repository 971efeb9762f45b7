#include "zro/containers/ole/internal/NameKey.h"

#include <algorithm>
#include <string_view>

#include <unicode/locid.h>

#include "zro/foundation/internal/TextView.h"

namespace ZroCommon::internal {
namespace {

UnicodeString upperCased(const UnicodeString& text) {
    UnicodeString upper(text);
    upper.toUpper(icu::Locale::getRoot());
    return upper;
}

bool isAscii(std::u16string_view text) {
    return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x80; });
}

char16_t asciiUpper(char16_t unit) {
    return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - (u'a' - u'A')) : unit;
}

}  // namespace

NameKey::NameKey(const char* name) : m_upper(upperCased(UnicodeString(name))) {}

// Nearly all names are ASCII, where the lengths tell most apart.
bool NameKey::matches(const UnicodeString& name) const {
    const auto text = viewOf(name);
    if (!isAscii(text)) {
        return upperCased(name) == m_upper;
    }
    const auto upper = viewOf(m_upper);
    return std::equal(text.begin(), text.end(), upper.begin(), upper.end(),
                      [](char16_t unit, char16_t other) { return asciiUpper(unit) == other; });
}

}  // namespace ZroCommon::internal

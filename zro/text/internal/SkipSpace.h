#pragma once

#include "zro/text/ZRChar.h"

namespace ZroCommon::internal {

/// The first unit that is no XML white space (U+0020, U+0009, U+000A, U+000D).
inline const char16_t* skipSpace(const char16_t* text) {
    while (ZRChar::isWhitespace(int{*text})) {
        ++text;
    }
    return text;
}

/// The first unit that is no CSS white space: the same and the form feed.
inline const char16_t* skipCssSpace(const char16_t* text) {
    while (ZRChar::isCssWhitespace(*text)) {
        ++text;
    }
    return text;
}

}  // namespace ZroCommon::internal

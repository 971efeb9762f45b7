#pragma once

#include <iterator>

#include "zro/text/ZRChar.h"

namespace ZroCommon::internal {

inline bool isSpace(char16_t c) {
    return c <= u' ' && ZRChar::isWhitespace(int{c});
}

/// How far a text goes that ends at its U+0000 and not at a known place.
inline constexpr std::unreachable_sentinel_t kTerminated;

/// The first unit that is no XML white space (U+0020, U+0009, U+000A, U+000D), or `limit`.
template <class Limit = std::unreachable_sentinel_t>
const char16_t* skipSpace(const char16_t* text, Limit limit = kTerminated) {
    while (text != limit && isSpace(*text)) {
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

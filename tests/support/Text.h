#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "zro/foundation/Text.h"

namespace ZroCommon::testing {

/// Text as UTF-8, for expectations against plain literals.
inline std::string utf8(const UnicodeString& text) {
    std::string bytes;
    text.toUTF8String(bytes);
    return bytes;
}

inline std::string utf8(const char16_t* text) {
    return utf8(UnicodeString(text));
}

/// A UTF-8 literal as text.
inline UnicodeString text(std::string_view bytes) {
    return UnicodeString::fromUTF8(
        icu::StringPiece(bytes.data(), static_cast<int32_t>(bytes.size())));
}

}  // namespace ZroCommon::testing

U_NAMESPACE_BEGIN
/// Lets GoogleTest print texts.
// NOLINTNEXTLINE(readability-identifier-naming): the name GoogleTest looks for
inline void PrintTo(const UnicodeString& text, std::ostream* out) {
    *out << '"' << ZroCommon::testing::utf8(text) << '"' << (text.isBogus() ? " (bogus)" : "");
}
U_NAMESPACE_END

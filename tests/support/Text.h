#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

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

/// Hands over every beginning of a text, the whole included, in memory of just its size, where a
/// sanitizer sees who reads beyond the end.
template <class Read>
void forEveryBeginning(const UnicodeString& whole, Read&& read) {
    for (int32_t length = 0; length <= whole.length(); ++length) {
        const std::vector<char16_t> units(whole.getBuffer(), whole.getBuffer() + length);
        read(UnicodeString(false, units.data(), length));
    }
}

}  // namespace ZroCommon::testing

U_NAMESPACE_BEGIN
/// Lets GoogleTest print texts.
// NOLINTNEXTLINE(readability-identifier-naming): the name GoogleTest looks for
inline void PrintTo(const UnicodeString& text, std::ostream* out) {
    *out << '"' << ZroCommon::testing::utf8(text) << '"' << (text.isBogus() ? " (bogus)" : "");
}
U_NAMESPACE_END

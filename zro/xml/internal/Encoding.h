#pragma once

#include "zro/foundation/Text.h"
#include "zro/xml/internal/Decoder.h"

namespace ZroCommon::internal {

/// The encoding of one input: how it is read now, and by which name that goes.
struct Encoding {
    EncodingMode mode = EncodingMode::Unknown;
    UnicodeString name;
    bool bomSeen = false;
};

/// What a name says about the mode.
struct NamedMode {
    bool isBuiltin = false;
    EncodingMode mode = EncodingMode::Unknown;
};

/// Interns the trimmed and upper-cased name and looks it up. The generic UTF-16 and UTF-32 leave a
/// mode of known byte order as it is.
NamedMode modeOfName(const UnicodeString& trimmedName, EncodingMode current);

/// True for the modes of two and four bytes a unit, whatever the order.
constexpr bool isWideMode(EncodingMode mode) {
    return mode >= EncodingMode::Utf16Unknown && mode <= EncodingMode::Utf32BE;
}

/// True for the modes of two and four bytes a unit in a known order.
constexpr bool isOrderedWideMode(EncodingMode mode) {
    return isWideMode(mode) && mode != EncodingMode::Utf16Unknown
           && mode != EncodingMode::Utf32Unknown;
}

}  // namespace ZroCommon::internal

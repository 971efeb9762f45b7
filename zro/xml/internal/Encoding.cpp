#include "zro/xml/internal/Encoding.h"

#include <unicode/locid.h>

#include "zro/vocabulary/ZRName.h"

namespace ZroCommon::internal {

NamedMode modeOfName(const UnicodeString& trimmedName, EncodingMode current) {
    UnicodeString upper = trimmedName;
    upper.toUpper(icu::Locale::getRoot());
    switch (ZRName(upper)) {
    case ZRN_ANSI_X3_4:
    case ZRN_ANSI_X3_4_1968:
    case ZRN_ANSI_X3_4_1986:
    case ZRN_ASCII:
    case ZRN_ISO646_US:
    case ZRN_ISO_646_IRV:
    case ZRN_ISO_646_IRV_1991:
    case ZRN_US_ASCII: return {true, EncodingMode::Ascii};
    case ZRN_ISO_10646_UCS_2:
    case ZRN_UCS_2:
    case ZRN_UNICODE:
    case ZRN_UTF_16: {
        const bool known = current == EncodingMode::Utf16LE || current == EncodingMode::Utf16BE;
        return {true, known ? current : EncodingMode::Utf16Unknown};
    }
    case ZRN_ISO_10646_UCS_4:
    case ZRN_UCS_4:
    case ZRN_UTF_32: {
        const bool known = current == EncodingMode::Utf32LE || current == EncodingMode::Utf32BE;
        return {true, known ? current : EncodingMode::Utf32Unknown};
    }
    case ZRN_ISO_8859_1:
    case ZRN_ISO_8859_1_hyphen:
    case ZRN_ISO_8859_1_1987:
    case ZRN_LATIN1: return {true, EncodingMode::Latin1};
    case ZRN_UTF_16BE: return {true, EncodingMode::Utf16BE};
    case ZRN_UTF_16LE: return {true, EncodingMode::Utf16LE};
    case ZRN_UTF_32BE: return {true, EncodingMode::Utf32BE};
    case ZRN_UTF_32LE: return {true, EncodingMode::Utf32LE};
    case ZRN_UTF_8: return {true, EncodingMode::Utf8};
    default: return {};
    }
}

}  // namespace ZroCommon::internal

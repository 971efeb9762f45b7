#pragma once

#include "zro/uri/internal/UriText.h"

namespace ZroCommon::internal {

/// Resolves a reference against a base, by text alone. This is not the procedure of RFC 3986, and
/// is not meant to be: dot segments go only at the start of the reference and the end of the base,
/// "#x" and "?x" read as paths, an empty reference gives the empty text, and climbing stops at the
/// root without a word.
UnicodeString resolveUri(const UnicodeString& base, const UnicodeString& reference, UriKind kind);

}  // namespace ZroCommon::internal

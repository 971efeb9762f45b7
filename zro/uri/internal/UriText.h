#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "zro/foundation/internal/TextView.h"
#include "zro/uri/ZRUri.h"

namespace ZroCommon::internal {

/// How a text is to be read.
enum class UriKind : std::uint8_t { Uri, Path, PathOrUri };

struct ClassifiedUri {
    UnicodeString text;
    UriKind kind = UriKind::Uri;
};

/// Decides how to read `text`, and takes "url(...)" and quotes off it where `type` says so.
ClassifiedUri classifyUri(const UnicodeString& text, URISTRTYPE type);

/// Without "url(...)" and quotes around it.
std::u16string_view unwrapped(std::u16string_view text);

/// Without the whitespace at both ends, as ICU's `trim` has it.
std::u16string_view trimmed(std::u16string_view text);

/// The index of the colon behind the scheme; 0 when there is none. A single letter is no scheme,
/// which keeps "C:" out.
std::size_t schemeLength(std::u16string_view text);

/// True for a letter and a colon at `index`.
bool isDriveAt(std::u16string_view text, std::size_t index);

/// \param prefix  in lower-case ASCII
bool startsWithIgnoringCase(std::u16string_view text, std::u16string_view prefix);

/// Writes each character that a URI may not hold as "%XX".
UnicodeString escapeUri(const UnicodeString& text);

/// A text with a scheme passes unseen. Any other passes when it holds allowed characters only, and
/// each "%" begins an escape.
bool isWellFormedUri(const UnicodeString& text);

/// Takes escapes off: bytes of UTF-8. A "%" without two digits stays.
UnicodeString unescapeUri(const UnicodeString& text);

/// Replaces each `from`.
void replaceUnits(UnicodeString& text, char16_t from, char16_t to);

/// The text of a path with "/" for each backslash, and as a `file:` URI where it begins with a
/// drive or with two slashes. A path that does not is not escaped.
UnicodeString pathToUri(const UnicodeString& path);

/// The text of a URI that stands alone.
UnicodeString normalizeUri(const UnicodeString& text, UriKind kind);

/// See `ZRUri::getLocalPath`.
UnicodeString localPathOf(const UnicodeString& uri);

}  // namespace ZroCommon::internal

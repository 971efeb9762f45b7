#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ZroCommon::internal {

/// Guesses the encoding of a text from its bytes.
///
/// A guess is one that a person would call likely: a byte order mark, bytes that are well-formed in
/// a multibyte encoding, letters as often as a language has them. Some hundred bytes do.
/// \return a name under which the transcoding streams know the encoding, or none
std::optional<std::string> detectEncoding(std::string_view bytes);

}  // namespace ZroCommon::internal

#pragma once

#include <cstdint>
#include <optional>

#include "tools/zro/Session.h"

namespace zro {

/// Reads a document once more for bytes that are malformed in UTF-8, which a parser passes over,
/// and notes how many sequences of them there are and where the first one is.
/// \return their number, 0 also in other encodings; nothing when the input cannot be read twice
std::optional<std::uint64_t> noteBrokenBytes(Session& session, const Input& input);

}  // namespace zro

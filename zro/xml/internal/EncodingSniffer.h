#pragma once

#include <array>
#include <cstddef>

#include "zro/xml/internal/ByteSource.h"
#include "zro/xml/internal/Encoding.h"

namespace ZroCommon::internal {

/// What the first bytes of an input say.
struct Sniffed {
    bool isValid = true;  ///< false for the start of a byte order mark that is none
    /// Characters that were read with the bytes and come first; they do not count as read.
    std::array<char32_t, 2> characters{};
    std::size_t characterCount = 0;
};

/// Finds the encoding of an input by its first bytes, which are used up as far as they are not a
/// matter of the decoder. Where they say nothing, the encoding stays what it was.
Sniffed sniffEncoding(ByteSource& bytes, Encoding& encoding);

}  // namespace ZroCommon::internal

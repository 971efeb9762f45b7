#pragma once

#include <optional>

#include "zro/foundation/Text.h"

namespace zro {

using ZroCommon::UnicodeString;

/// What a parser's position description tells.
struct Position {
    UnicodeString name;  ///< the input's URI, or else the base URI; may be empty
    int line = 0;        ///< 0 when unknown
    int column = 0;
};

/// Reads "START_TAG, 'a.xml', Line 3, Col 7."; nothing when the text is no such description.
std::optional<Position> parsePosition(const UnicodeString& description);

/// Takes a position description off the end of a message, where thrown parser errors have it.
std::optional<Position> takePosition(UnicodeString& message);

}  // namespace zro

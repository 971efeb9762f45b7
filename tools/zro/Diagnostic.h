#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "tools/zro/SourceText.h"
#include "tools/zro/Terminal.h"

namespace zro {

/// Something to tell about an input, before it is put into words for people or programs.
struct Diagnostic {
    enum class Kind : std::uint8_t { Error, Note };

    Kind kind = Kind::Error;
    int code = 0;         ///< of the library, 0 when it is the program's own
    std::string message;  ///< without a position
    std::string source;   ///< the raising place in the library
    std::string file;     ///< as the user knows it; empty when there is none
    int line = 0;         ///< the parser's line, 0 when unknown
    int column = 0;       ///< the parser's column: characters read on the line
    std::optional<Excerpt> excerpt;
    std::string hint;
};

/// "file:line:column: error: message", the line with a caret, and the hint; ends with a line feed.
/// Line and column are those of the marked character.
std::string asText(const Diagnostic& diagnostic, const Style& style);

/// The same as one JSON object on one line, with the parser's own position beside it.
std::string asJson(const Diagnostic& diagnostic);

}  // namespace zro

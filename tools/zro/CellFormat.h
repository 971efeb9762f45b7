#pragma once

#include <string>
#include <vector>

#include "zro/text/xls/XlsFormat.h"

namespace zro {

/// A piece of a section: as it is written in a format, and what it shows.
struct FormatPiece {
    std::string text;
    std::string meaning;
};

/// The pieces of a compiled section; a placeholder repeated is one piece.
std::vector<FormatPiece> piecesOf(const ZroCommon::FMT& section);

/// "literal", "number", "date" or "text".
const char* kindName(const ZroCommon::FMT& section);

/// "Red", "Color10"; empty for none.
std::string colorName(unsigned char colorIndex);

/// Which cells a section of a format is for: "numbers above 0", "texts".
std::string purposeOf(const ZroCommon::FMT2& format, int index);

}  // namespace zro

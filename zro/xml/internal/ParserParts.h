#pragma once

#include <memory>

#include "zro/xml/internal/ContentScanner.h"
#include "zro/xml/internal/DoctypeScanner.h"
#include "zro/xml/internal/InputOpener.h"
#include "zro/xml/internal/LiteralReader.h"
#include "zro/xml/internal/ParserState.h"
#include "zro/xml/internal/TagScanner.h"

namespace ZroCommon::internal {

/// The inside of a parser: its state, and the scanners over it.
struct ParserParts {
    ParserState state;
    LiteralReader literals{state};
    InputOpener opener{state, literals};
    TagScanner tags{state, literals};
    ContentScanner content{state, literals};
    DoctypeScanner doctype{state, literals, opener};
};

/// What the calling thread's last parser left, or new parts; as new in any case, but for memory and
/// for the texts of names. Documents of a few kilobytes cost less than what a parser is made of.
std::unique_ptr<ParserParts> takeParserParts();
/// Leaves the parts to the calling thread's next parser. Each thread keeps one set, of ordinary
/// size.
void giveParserParts(std::unique_ptr<ParserParts> parts) noexcept;
/// Gives back what the calling thread keeps. Part of `cleanup`.
void forgetParserParts();

}  // namespace ZroCommon::internal

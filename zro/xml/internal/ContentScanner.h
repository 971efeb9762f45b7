#pragma once

#include <string_view>

#include "zro/xml/internal/LiteralReader.h"
#include "zro/xml/internal/ParserState.h"

namespace ZroCommon::internal {

/// Reads what stands between tags: text, references, comments, CDATA sections and processing
/// instructions.
class ContentScanner {
public:
    ContentScanner(ParserState& state, LiteralReader& literals)
        : m_state(state), m_literals(literals) {}

    void readText();
    /// Text that lies whole in the window, with the beginning of the tag behind it; empty when what
    /// comes next is not of that kind. Nothing is read.
    std::u16string_view findPlainText();
    /// Reads a reference behind its "&", without replacing it.
    void readReference();
    /// Reads a comment behind its "<!--".
    void readComment();
    /// Reads a section behind its "<![CDATA[".
    void readCData();
    /// Steps over a section that is no CDATA, to its "]>". The event stays what it was.
    void skipSection();
    /// Reads a processing instruction behind its target.
    void readInstruction(ZRName target);

private:
    template <char16_t... Stops>
    void appendRun();
    char32_t readTextInside();
    char32_t readTextOutside();
    void readBracket();

    ParserState& m_state;
    LiteralReader& m_literals;
};

}  // namespace ZroCommon::internal

#pragma once

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

#pragma once

#include <cstdint>

#include "zro/vocabulary/ZRName.h"
#include "zro/xml/internal/TextBuffer.h"

namespace ZroCommon::internal {

class ParserState;

/// What stood behind a "&".
struct Reference {
    bool isCharacter = false;
    char32_t character = 0;  ///< of a character reference
    ZRName name;             ///< of an entity reference
};

/// How much of a literal is markup.
enum class LiteralMode : std::uint8_t {
    Plain,      ///< nothing
    Attribute,  ///< references are replaced, "<" is an error
    Entity,     ///< character references are replaced, others stay as they are
};

/// Reads quoted literals and references.
class LiteralReader {
public:
    explicit LiteralReader(ParserState& state) : m_state(state) {}

    /// Reads a literal from its quotation mark on and appends its value. White space becomes
    /// blanks, unless it comes from a character reference.
    ///
    /// The literal is read to its end first and then looked into, with positions that count from
    /// its quotation mark, so an error in it is found after a missing end of it.
    void read(LiteralMode mode, TextBuffer& value);
    UnicodeString read(LiteralMode mode);

    /// Reads a reference behind its "&". The character of a wrong character reference is what its
    /// digits give.
    Reference readReference();

    /// Gives the memory of large literals back.
    void shrink() {
        m_value.shrink();
        m_raw.shrink();
        m_digits.shrink();
    }

private:
    bool readAtOnce(char32_t quote, TextBuffer& value);
    void readRaw(char32_t quote);
    void readAgain(LiteralMode mode, TextBuffer& value);
    bool readSpecial(LiteralMode mode, TextBuffer& value);
    void readEntityReference(LiteralMode mode, TextBuffer& value);
    char32_t readCharacterReference();

    ParserState& m_state;
    TextBuffer m_value;
    TextBuffer m_raw;
    TextBuffer m_digits;
};

}  // namespace ZroCommon::internal

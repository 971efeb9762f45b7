#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "zro/text/internal/SkipSpace.h"
#include "zro/values/ZRValue.h"

namespace ZroCommon::internal {

/// The kinds of tokens below 0; from 0 up, a kind is the code unit that is the token.
struct TokenKind {
    static constexpr int kEnd = -1;
    static constexpr int kNumber = -2;
    static constexpr int kName = -3;
    static constexpr int kNone = -4;  // nothing was read yet
    static constexpr int kString = -5;
    static constexpr int kColor = -6;
};

struct Token {
    int kind = TokenKind::kNone;
    double number = 0;         // of a number or a colour
    std::u16string_view text;  // of a name or a string; the unit of a number
};

/// The lexer of value texts, and the readers that turn tokens into values. It borrows its text,
/// which ends at the first U+0000, and makes no string but those that are values.
///
/// `ZRTokenizer` is its public face with a text of its own; whole values are read by it directly.
/// Nothing recurses, and no text is scanned more than a fixed number of times.
class ValueReader {
public:
    explicit ValueReader(const char16_t* text) : m_text(text), m_next(text) {}
    /// Goes on where another reader of the same text has stopped.
    ValueReader(const char16_t* text, std::size_t position, const Token& token, bool isPushedBack)
        : m_text(text), m_next(text + position), m_token(token), m_isPushedBack(isPushedBack) {}

    int nextToken();
    void pushBack() { m_isPushedBack = true; }

    ZRValue nextValue();
    ZRValue nextSigned();
    /// As `m_token` stands afterwards, its number is the value with the exponent.
    ZRValue nextExp();
    ZRValue nextFunc();

    /// The next item into `item`, which the token refers to from then on.
    void nextSeparated(char16_t separator, UnicodeString& item);
    bool skipSeparator(char16_t separator);
    bool scanSeparator(char16_t separator) const;

    /// Nothing but white space is left, and no token was pushed back.
    bool isAtEnd() const { return !m_isPushedBack && *skipSpace(m_next) == 0; }
    const Token& token() const { return m_token; }
    const char16_t* next() const { return m_next; }
    void setNext(const char16_t* next) { m_next = next; }
    std::size_t position() const { return static_cast<std::size_t>(m_next - m_text); }
    bool isPushedBack() const { return m_isPushedBack; }

private:
    int readName();
    int readNumber();
    bool readShortInteger();
    int readString();
    int readColor();
    std::uint32_t readHexNumber();
    int readCharacter();
    std::u16string_view readWhile(bool (*belongs)(int));

    ZRValue numberValue();
    ZRValue plainNumber() const;
    void stepBack(std::size_t units);
    void skipGroup();
    void appendPiece(char16_t separator, UnicodeString& item);

    const char16_t* m_text;
    const char16_t* m_next;
    Token m_token;
    bool m_isPushedBack = false;
};

}  // namespace ZroCommon::internal

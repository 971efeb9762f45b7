#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "zro/foundation/internal/TextView.h"
#include "zro/text/internal/Digits.h"
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

struct ValueToken {
    int kind = TokenKind::kNone;
    double number = 0;         // of a number or a colour
    std::u16string_view text;  // of a name or a string; the unit of a number
};

inline ZRValue integerValue(int number, ZRValueUnitType unit) {
    ZRValue value(number);
    value.setUnitType(unit);
    return value;
}

inline ZRValue colorValue(std::uint32_t rgb) {
    return integerValue(static_cast<int>(rgb), ZRValueUnitColor);
}

/// The RGB of a colour's hexadecimal digits, sets `end` behind them. Each of up to three digits is
/// doubled.
inline std::uint32_t readHexColor(const char16_t* digits, const char16_t* limit,
                                  const char16_t*& end) {
    constexpr std::ptrdiff_t kMostOfShort = 3;
    const std::uint32_t rgb = readHex(digits, limit, end);
    return end - digits > kMostOfShort
               ? rgb
               : ((rgb & 0xF00U) << 8U | (rgb & 0xF0U) << 4U | (rgb & 0xFU)) * 0x11U;
}

/// The RGB of a text that is a colour such as #F00 and nothing else: what style sheets are full of,
/// read without a reader.
inline std::optional<std::uint32_t> wholeHexColor(std::u16string_view text) {
    if (text.size() < 2 || text.front() != u'#') {
        return {};
    }
    const char16_t* const limit = text.data() + text.size();
    const char16_t* end = nullptr;
    const std::uint32_t rgb = readHexColor(text.data() + 1, limit, end);
    return end == limit ? std::optional(rgb) : std::nullopt;
}

/// The lexer of value texts, and the readers that turn tokens into values. It borrows its text,
/// which ends at its first U+0000 if it has one, and makes no string but those that are values.
///
/// `ZRTokenizer` is its public face with a text of its own; whole values are read by it directly.
/// Nothing recurses, and no text is scanned more than a fixed number of times.
class ValueReader {
public:
    explicit ValueReader(std::u16string_view text)
        : m_text(text.data()), m_next(m_text), m_limit(m_text + text.size()) {}
    explicit ValueReader(const UnicodeString& text) : ValueReader(viewOf(text)) {}
    /// Goes on where another reader of the same text has stopped.
    ValueReader(std::u16string_view text, std::size_t position, const ValueToken& token,
                bool isPushedBack)
        : m_text(text.data()),
          m_next(m_text + position),
          m_limit(m_text + text.size()),
          m_token(token),
          m_isPushedBack(isPushedBack) {}

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

    /// Reads units behind white space, up to the next white space or a unit of `stops`.
    std::u16string_view nextPlain(std::u16string_view stops);

    /// Nothing but white space is left, and no token was pushed back.
    bool isAtEnd() const { return !m_isPushedBack && unitAt(skipSpace(m_next, m_limit)) == 0; }
    const ValueToken& token() const { return m_token; }
    std::u16string_view rest() const {
        return {m_next, static_cast<std::size_t>(m_limit - m_next)};
    }
    std::size_t position() const { return static_cast<std::size_t>(m_next - m_text); }
    bool isPushedBack() const { return m_isPushedBack; }

private:
    /// 0 at the end, where there may be no unit.
    char16_t unitAt(const char16_t* place) const { return place == m_limit ? u'\0' : *place; }
    int readToken();
    int readName();
    int readNumber();
    int readString();
    int readColor();
    int readCharacter();
    std::u16string_view readWhile(bool (*belongs)(int));

    ZRValue tokenValue();
    ZRValue quantity();
    ZRValue plainNumber() const;
    void stepBack(std::size_t units);
    void skipGroup();
    void appendPiece(char16_t separator, UnicodeString& item);

    const char16_t* m_text;
    const char16_t* m_next;
    const char16_t* m_limit;
    ValueToken m_token;
    bool m_isPushedBack = false;
};

}  // namespace ZroCommon::internal

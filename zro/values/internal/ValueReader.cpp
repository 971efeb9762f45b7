#include "zro/values/internal/ValueReader.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include <unicode/locid.h>

#include "zro/foundation/internal/TextView.h"
#include "zro/text/internal/Digits.h"
#include "zro/values/internal/UnitWord.h"
#include "zro/vocabulary/internal/SharedNames.h"

namespace ZroCommon::internal {
namespace {

bool isSign(char16_t c) {
    return c == u'+' || c == u'-';
}

// A number with any unit; characters and colours are none, though they hold an integer.
bool isQuantity(const ZRValue& value) {
    return value.isNumericalValue() && value.getUnitType() != ZRValueUnitColor;
}

bool isCharacter(const ZRValue& value, char16_t c) {
    return value.isCharacter() && value.getIntegerValue() == c;
}

// Tokens can be set from outside, so the range is tested.
std::uint32_t rgbOf(double number) {
    constexpr double kMax = std::numeric_limits<std::uint32_t>::max();
    return number >= 0 && number <= kMax ? static_cast<std::uint32_t>(number) : 0U;
}

}  // namespace

int ValueReader::nextToken() {
    if (m_isPushedBack) {
        m_isPushedBack = false;
        return m_token.kind;
    }
    m_next = skipSpace(m_next, m_limit);
    return readToken();
}

int ValueReader::readToken() {
    m_token = {};
    const char16_t c = unitAt(m_next);
    if (ZRChar::isNCNameStartChar(c)) {
        return readName();
    }
    if (isDecimalStart(m_next, m_limit)) {
        return readNumber();
    }
    switch (c) {
    case 0: return m_token.kind = TokenKind::kEnd;
    case u'"':
    case u'\'': return readString();
    case u'#': return readColor();
    default: return readCharacter();
    }
}

int ValueReader::readCharacter() {
    return m_token.kind = *m_next++;
}

std::u16string_view ValueReader::readWhile(bool (*belongs)(int)) {
    const char16_t* const start = m_next;
    while (m_next != m_limit && belongs(*m_next)) {
        ++m_next;
    }
    return {start, static_cast<std::size_t>(m_next - start)};
}

int ValueReader::readName() {
    m_token.text = readWhile(ZRChar::isNCNameChar);
    return m_token.kind = TokenKind::kName;
}

int ValueReader::readNumber() {
    const char16_t* const digits = m_next;
    m_token.number = readDecimal(digits, m_limit, m_next);
    if (m_next == digits) {
        return readCharacter();  // too many of them: each is a character
    }
    const char16_t c = unitAt(m_next);
    if (c == u'%') {
        m_token.text = {m_next++, 1};
    } else if (ZRChar::isNCNameStartChar(c)) {
        m_token.text = readWhile(ZRChar::isNCNameChar);
    }
    return m_token.kind = TokenKind::kNumber;
}

// Without a second mark, the first one is a character.
int ValueReader::readString() {
    const char16_t* const start = m_next + 1;
    const char16_t* end = start;
    while (unitAt(end) != *m_next) {
        if (unitAt(end++) == 0) {
            return readCharacter();
        }
    }
    m_token.text = {start, static_cast<std::size_t>(end - start)};
    m_next = end + 1;
    return m_token.kind = TokenKind::kString;
}

int ValueReader::readColor() {
    const char16_t* end = nullptr;
    const std::uint32_t rgb = readHexColor(m_next + 1, m_limit, end);
    if (end == m_next + 1) {
        return readCharacter();
    }
    m_next = end;
    m_token.number = rgb;
    return m_token.kind = TokenKind::kColor;
}

ZRValue ValueReader::nextValue() {
    nextToken();
    return tokenValue();
}

ZRValue ValueReader::tokenValue() {
    switch (const int kind = m_token.kind) {
    case TokenKind::kEnd:
    case TokenKind::kNone: return {};
    case TokenKind::kNumber: return m_token.text.empty() ? plainNumber() : quantity();
    case TokenKind::kName: return internSharedName(m_token.text);
    case TokenKind::kString: return {textOf(m_token.text), ZRValueUnitLiteral};
    case TokenKind::kColor: return colorValue(rgbOf(m_token.number));
    default: return integerValue(kind, ZRValueUnitCharacter);
    }
}

ZRValue ValueReader::quantity() {
    if (const UnitWord* unit = findUnitWord(m_token.text)) {
        m_token.text = unit->text;
        return {static_cast<float>(m_token.number), unit->unit};
    }
    const auto length = m_token.text.size();
    UnicodeString word = textOf(m_token.text);
    internSharedName(viewOf(word.toLower(icu::Locale::getRoot())));
    m_token.text = {};
    stepBack(length);
    return plainNumber();
}

ZRValue ValueReader::plainNumber() const {
    constexpr double kMin = std::numeric_limits<int>::min();
    constexpr double kMax = std::numeric_limits<int>::max();
    const double number = m_token.number;
    if (number >= kMin && number <= kMax && static_cast<int>(number) == number) {
        return static_cast<int>(number);
    }
    return {static_cast<float>(number), ZRValueUnitNumber};
}

void ValueReader::stepBack(std::size_t units) {
    m_next -= std::min(units, position());
}

ZRValue ValueReader::nextSigned() {
    if (m_isPushedBack) {
        ZRValue value = nextValue();
        if (!value.isCharacter()) {
            return value;
        }
        stepBack(1);  // it may be the sign of a number
    }
    m_next = skipSpace(m_next, m_limit);
    if (!isSign(unitAt(m_next)) || !isDecimalStart(m_next + 1, m_limit)) {
        readToken();
        return tokenValue();
    }
    const char16_t* const sign = m_next++;
    ZRValue value = nextValue();
    if (!isQuantity(value)) {
        m_next = sign;
        return nextValue();
    }
    if (*sign == u'+') {
        return value;
    }
    m_token.number = -m_token.number;
    return -value;
}

ZRValue ValueReader::nextExp() {
    ZRValue value = nextSigned();
    if (!value.isNumber() || (unitAt(m_next) | 0x20) != u'e') {
        return value;
    }
    const ValueToken mantissa = m_token;
    const char16_t* const mark = m_next++;
    const ZRValue exponent = nextSigned();
    if (!isQuantity(exponent)) {
        m_next = mark;
        m_token = mantissa;
        return value;
    }
    m_token.number = mantissa.number * std::pow(10.0, m_token.number);
    return {static_cast<float>(m_token.number), exponent.getUnitType()};
}

ZRValue ValueReader::nextFunc() {
    ZRValue value = nextExp();
    const bool isCall = value.isName() && unitAt(m_next) == u'(';
    if (!isCall && !isCharacter(value, u'(')) {
        return value;
    }
    const ValueToken first = m_token;
    const char16_t* const start = isCall ? m_next++ : m_next - 1;
    skipGroup();
    m_token = first;
    UnicodeString text = value.getStringValue();
    return ZRValue(text.append(start, static_cast<int32_t>(m_next - start)));
}

// Behind "(", up to its ")" or the end. Groups within are counted, not read by recursion.
void ValueReader::skipGroup() {
    for (std::size_t depth = 1; depth > 0;) {
        const ZRValue value = nextExp();
        if (value.isNull()) {
            return;
        }
        if (value.isName() && unitAt(m_next) == u'(') {
            ++m_next;
            ++depth;
        } else if (isCharacter(value, u'(')) {
            ++depth;
        } else if (isCharacter(value, u')')) {
            --depth;
        }
    }
}

void ValueReader::nextSeparated(char16_t separator, UnicodeString& item) {
    if (m_isPushedBack) {
        m_isPushedBack = false;
        item = textOf(m_token.text);
        return;
    }
    item.remove();
    m_token = {};
    m_token.kind = TokenKind::kEnd;
    m_next = skipSpace(m_next, m_limit);
    if (unitAt(m_next) == 0) {
        return;
    }
    // On purpose: a blank joins any two pieces, also those that touch, such as 'a'b.
    for (appendPiece(separator, item); unitAt(m_next) != 0; appendPiece(separator, item)) {
        if (ZRChar::isWhitespace(int{separator}) || skipSeparator(separator)) {
            break;
        }
        item.append(u' ');
    }
    m_token.kind = TokenKind::kString;
    m_token.text = viewOf(item);
}

// A piece in quotes or up to the separator or white space, and the white space behind it.
void ValueReader::appendPiece(char16_t separator, UnicodeString& item) {
    const char16_t mark = unitAt(m_next);
    std::u16string_view piece;
    if (mark == u'"' || mark == u'\'') {
        const char16_t* const start = ++m_next;
        while (unitAt(m_next) != mark && unitAt(m_next) != 0) {
            ++m_next;
        }
        piece = {start, static_cast<std::size_t>(m_next - start)};
        m_next += unitAt(m_next) == mark ? 1 : 0;
    } else {
        piece = nextPlain({&separator, 1});
    }
    item.append(piece.data(), static_cast<int32_t>(piece.size()));
    m_next = skipSpace(m_next, m_limit);
}

std::u16string_view ValueReader::nextPlain(std::u16string_view stops) {
    m_next = skipSpace(m_next, m_limit);
    const char16_t* const start = m_next;
    for (char16_t c = unitAt(m_next);
         c != 0 && !ZRChar::isWhitespace(int{c}) && stops.find(c) == std::u16string_view::npos;) {
        c = unitAt(++m_next);
    }
    return {start, static_cast<std::size_t>(m_next - start)};
}

bool ValueReader::scanSeparator(char16_t separator) const {
    return !m_isPushedBack && separator != 0 && unitAt(skipSpace(m_next, m_limit)) == separator;
}

bool ValueReader::skipSeparator(char16_t separator) {
    if (m_isPushedBack) {
        return false;
    }
    m_next = skipSpace(m_next, m_limit);
    if (separator == 0 || unitAt(m_next) != separator) {
        return false;
    }
    m_next = skipSpace(m_next + 1, m_limit);
    return true;
}

}  // namespace ZroCommon::internal

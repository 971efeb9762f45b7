#include "zro/values/internal/ValueReader.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

#include <unicode/locid.h>

#include "zro/foundation/internal/TextView.h"
#include "zro/text/ZRUtil.h"
#include "zro/values/internal/UnitWord.h"
#include "zro/vocabulary/internal/SharedNames.h"

namespace ZroCommon::internal {
namespace {

// A number begins here, a sign aside.
bool isNumberStart(const char16_t* text) {
    return ZRChar::isAsciiDigit(*text) || (*text == u'.' && ZRChar::isAsciiDigit(text[1]));
}

// What `ZRUtil::parseNumber` refuses. It is asked for here, since nobody may look through the
// digits to their end for each of them.
bool hasTooManyDigits(const char16_t* text) {
    constexpr std::ptrdiff_t kMax = 98;
    const char16_t* next = text;
    while (ZRChar::isAsciiDigit(*next) && next - text <= kMax) {
        ++next;
    }
    return next - text > kMax;
}

// By code unit: the value of a hexadecimal digit, 16 for what is none.
constexpr auto kHexDigits = [] {
    std::array<std::uint8_t, 128> digits{};
    digits.fill(16);
    for (std::size_t digit = 0; digit < 10; ++digit) {
        digits[u'0' + digit] = static_cast<std::uint8_t>(digit);
    }
    for (std::size_t letter = 0; letter < 6; ++letter) {
        digits[u'A' + letter] = digits[u'a' + letter] = static_cast<std::uint8_t>(10 + letter);
    }
    return digits;
}();

unsigned hexDigit(char16_t c) {
    return c < kHexDigits.size() ? kHexDigits[c] : 16U;
}

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

ZRValue integerOf(int number, ZRValueUnitType unit) {
    ZRValue value(number);
    value.setUnitType(unit);
    return value;
}

// Tokens can be set from outside, so the range is tested.
ZRValue colorValue(double rgb) {
    constexpr double kMax = std::numeric_limits<std::uint32_t>::max();
    const auto word = rgb >= 0 && rgb <= kMax ? static_cast<std::uint32_t>(rgb) : 0U;
    return integerOf(static_cast<int>(word), ZRValueUnitColor);
}

}  // namespace

int ValueReader::nextToken() {
    if (m_isPushedBack) {
        m_isPushedBack = false;
        return m_token.kind;
    }
    m_next = skipSpace(m_next);
    m_token = {};
    const char16_t c = *m_next;
    if (ZRChar::isNCNameStartChar(c)) {
        return readName();
    }
    if (isNumberStart(m_next)) {
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
    while (belongs(*m_next)) {
        ++m_next;
    }
    return {start, static_cast<std::size_t>(m_next - start)};
}

int ValueReader::readName() {
    m_token.text = readWhile(ZRChar::isNCNameChar);
    return m_token.kind = TokenKind::kName;
}

// Integers as short as nearly all are, without the general reader; false for anything else.
bool ValueReader::readShortInteger() {
    constexpr std::ptrdiff_t kMost = 9;
    const char16_t* next = m_next;
    std::int32_t number = 0;
    for (; ZRChar::isAsciiDigit(*next); ++next) {
        if (next - m_next == kMost) {
            return false;
        }
        number = number * 10 + (*next - u'0');
    }
    if (*next == u'.') {
        return false;
    }
    m_token.number = number;
    m_next = next;
    return true;
}

int ValueReader::readNumber() {
    if (!readShortInteger()) {
        if (hasTooManyDigits(m_next)) {
            return readCharacter();
        }
        m_token.number = ZRUtil::parseNumber(m_next, &m_next);
    }
    if (*m_next == u'%') {
        m_token.text = {m_next++, 1};
    } else if (ZRChar::isNCNameStartChar(*m_next)) {
        m_token.text = readWhile(ZRChar::isNCNameChar);
    }
    return m_token.kind = TokenKind::kNumber;
}

// Without a second mark, the first one is a character.
int ValueReader::readString() {
    const char16_t* const start = m_next + 1;
    const char16_t* end = start;
    while (*end != *m_next && *end != 0) {
        ++end;
    }
    if (*end == 0) {
        return readCharacter();
    }
    m_token.text = {start, static_cast<std::size_t>(end - start)};
    m_next = end + 1;
    return m_token.kind = TokenKind::kString;
}

// What `ZRUtil::parseHexNum` gives, with less to do for as many digits as colours have.
std::uint32_t ValueReader::readHexNumber() {
    constexpr std::ptrdiff_t kMost = 8;
    const char16_t* const digits = m_next + 1;
    const char16_t* next = digits;
    std::uint32_t number = 0;
    for (unsigned digit = hexDigit(*next); digit < 16; digit = hexDigit(*++next)) {
        if (next - digits == kMost) {
            return ZRUtil::parseHexNum(digits, &m_next, 0);
        }
        number = number << 4U | digit;
    }
    m_next = next;
    return number;
}

int ValueReader::readColor() {
    if (hexDigit(m_next[1]) > 15) {
        return readCharacter();
    }
    constexpr std::ptrdiff_t kLongestShort = 4;  // units, "#" included
    const char16_t* const start = m_next;
    std::uint32_t rgb = readHexNumber();
    if (m_next - start <= kLongestShort) {
        rgb = ((rgb & 0xF00U) << 8U | (rgb & 0xF0U) << 4U | (rgb & 0xFU)) * 0x11U;
    }
    m_token.number = rgb;
    return m_token.kind = TokenKind::kColor;
}

ZRValue ValueReader::nextValue() {
    switch (const int kind = nextToken()) {
    case TokenKind::kEnd:
    case TokenKind::kNone: return {};
    case TokenKind::kNumber: return numberValue();
    case TokenKind::kName: return internSharedName(m_token.text);
    case TokenKind::kString: return {textOf(m_token.text), ZRValueUnitLiteral};
    case TokenKind::kColor: return colorValue(m_token.number);
    default: return integerOf(kind, ZRValueUnitCharacter);
    }
}

ZRValue ValueReader::numberValue() {
    if (m_token.text.empty()) {
        return plainNumber();
    }
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
    if (number >= kMin && number <= kMax && number == std::trunc(number)) {
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
    m_next = skipSpace(m_next);
    if (!isSign(*m_next) || !isNumberStart(m_next + 1)) {
        return nextValue();
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
    if (!value.isNumber() || (*m_next != u'e' && *m_next != u'E')) {
        return value;
    }
    const Token mantissa = m_token;
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
    const bool isCall = value.isName() && *m_next == u'(';
    if (!isCall && !isCharacter(value, u'(')) {
        return value;
    }
    const Token first = m_token;
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
        if (value.isName() && *m_next == u'(') {
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
    m_next = skipSpace(m_next);
    if (*m_next == 0) {
        return;
    }
    // On purpose: a blank joins any two pieces, also those that touch, such as 'a'b.
    for (appendPiece(separator, item); *m_next != 0; appendPiece(separator, item)) {
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
    const char16_t* start = m_next;
    const char16_t* end = start;
    if (*start == u'"' || *start == u'\'') {
        const char16_t mark = *start++;
        for (end = start; *end != mark && *end != 0; ++end) {
        }
        m_next = *end == 0 ? end : end + 1;
    } else {
        while (*end != 0 && *end != separator && !ZRChar::isWhitespace(int{*end})) {
            ++end;
        }
        m_next = end;
    }
    item.append(start, static_cast<int32_t>(end - start));
    m_next = skipSpace(m_next);
}

bool ValueReader::scanSeparator(char16_t separator) const {
    return !m_isPushedBack && separator != 0 && *skipSpace(m_next) == separator;
}

bool ValueReader::skipSeparator(char16_t separator) {
    if (m_isPushedBack) {
        return false;
    }
    m_next = skipSpace(m_next);
    if (separator == 0 || *m_next != separator) {
        return false;
    }
    m_next = skipSpace(m_next + 1);
    return true;
}

}  // namespace ZroCommon::internal

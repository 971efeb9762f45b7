#include "zro/xml/internal/LiteralReader.h"

#include "zro/xml/internal/ParserState.h"
#include "zro/xml/internal/Scan.h"

namespace ZroCommon::internal {
namespace {

constexpr char32_t kEnd = CharReader::kEnd;

// What XML 1.0 allows in a document, as a number.
constexpr bool isXmlCharacter(char32_t c) {
    return c == 9 || c == 10 || c == 13 || (c >= 32 && c < 0xD800) || (c >= 0xE000 && c <= 0xFFFD)
           || (c >= 0x10000 && c <= 0x10FFFF);
}

// The value of a digit, -1 for another character.
constexpr int digitValue(char32_t c, bool hexadecimal) {
    if (c >= u'0' && c <= u'9') {
        return static_cast<int>(c - u'0');
    }
    const char32_t lower = c | 0x20U;
    return hexadecimal && lower >= u'a' && lower <= u'f' ? static_cast<int>(lower - u'a') + 10 : -1;
}

}  // namespace

UnicodeString LiteralReader::read(LiteralMode mode) {
    m_value.clear();
    read(mode, m_value);
    return makeText(m_value.view());
}

void LiteralReader::read(LiteralMode mode, TextBuffer& value) {
    CharReader& reader = m_state.reader;
    const char32_t quote = reader.get();
    if (quote != u'"' && quote != u'\'') {
        // On purpose: the character is put back and serves as the quotation mark all the same, so
        // the literal ends where it begins.
        reader.pushBack(quote);
        m_state.report(XmlError::MissingQuote);
    }
    if (readAtOnce(quote, value)) {
        return;
    }
    const int line = reader.line();
    const int column = reader.column();
    readRaw(quote);
    m_raw.truncate(normalizeLiteral({m_raw.data(), m_raw.size()}));
    reader.pushLiteral(m_raw.view(), line, column);
    readAgain(mode, value);
    reader.popLiteral();
}

// The common case: the literal lies whole in the window, and nothing in it needs a second look.
bool LiteralReader::readAtOnce(char32_t quote, TextBuffer& value) {
    if (quote != u'"' && quote != u'\'') {
        return false;
    }
    const Run& run = m_state.reader.run();
    const char16_t* const start = run.at;
    const char16_t* const end =
        findAnyOr<u'&', u'<', u'\n', u'\t'>(start, run.end, static_cast<char16_t>(quote));
    if (end == run.end || *end != quote || !m_state.reader.inWindow()) {
        return false;
    }
    value.append(start, static_cast<std::size_t>(end - start));
    m_state.reader.moveTo(end + 1);
    return true;
}

// Everything to the quotation mark, without a look at it.
void LiteralReader::readRaw(char32_t quote) {
    m_raw.clear();
    for (;;) {
        if (quote < 0xD800) {
            const Run& run = m_state.reader.run();
            const char16_t* const start = run.at;
            const char16_t* const end =
                findAnyOr<0xFFFF>(start, run.end, static_cast<char16_t>(quote));
            m_raw.append(start, static_cast<std::size_t>(end - start));
            m_state.reader.moveTo(end);
        }
        const char32_t c = m_state.reader.get();
        if (c == kEnd) {
            return m_state.reportCharacter(XmlError::OpenLiteral, quote);
        }
        if (c == quote) {
            return;
        }
        m_raw.appendCodePoint(c);
    }
}

void LiteralReader::readAgain(LiteralMode mode, TextBuffer& value) {
    CharReader& reader = m_state.reader;
    do {
        const Run& run = reader.run();
        const char16_t* const start = run.at;
        const char16_t* const end =
            findAny<u'&', u'<', u'\n', u'\t', u'\r', 0xFFFF>(start, run.end);
        value.append(start, static_cast<std::size_t>(end - start));
        reader.moveTo(end);
    } while (readSpecial(mode, value));
}

// One character that needs a look. False at the end of the literal.
bool LiteralReader::readSpecial(LiteralMode mode, TextBuffer& value) {
    const char32_t c = m_state.reader.get();
    switch (c) {
    case kEnd: return false;
    case u'\n':
    case u'\t':
    case u'\r': value.append(u' '); return true;
    case u'<':
        if (mode == LiteralMode::Attribute) {
            m_state.report(XmlError::LessThanInValue);
        }
        value.append(u'<');
        return true;
    case u'&':
        if (mode != LiteralMode::Plain) {
            readEntityReference(mode, value);
            return true;
        }
        break;
    default: break;
    }
    value.appendCodePoint(c);
    return true;
}

void LiteralReader::readEntityReference(LiteralMode mode, TextBuffer& value) {
    const Reference reference = readReference();
    if (reference.isCharacter) {
        return value.appendCodePoint(reference.character);
    }
    const UnicodeString* text = m_state.generalEntity(reference.name);
    if (text == nullptr) {
        m_state.report(XmlError::UndefinedEntity, reference.name.toString());
    }
    if (mode == LiteralMode::Entity) {
        value.append(u'&');
        value.append(viewOf(reference.name.toString()));
        value.append(u';');
    } else if (text != nullptr) {
        m_state.reader.pushReplacement(*text);
    }
}

Reference LiteralReader::readReference() {
    CharReader& reader = m_state.reader;
    const char32_t first = reader.get();
    if (first == u'#') {
        return {true, readCharacterReference(), ZRName()};
    }
    reader.pushBack(first);
    const ZRName name = m_state.names.readName();
    if (name.isEmpty()) {
        m_state.report(XmlError::EmptyEntityName);
    }
    const char32_t c = reader.get();
    if (c != u';') {
        UnicodeString text(u'&');
        text.append(name.toString()).append(static_cast<UChar32>(c));
        m_state.report(XmlError::InvalidReference, text);
    }
    return {false, 0, name};
}

char32_t LiteralReader::readCharacterReference() {
    CharReader& reader = m_state.reader;
    m_digits.clear();
    char32_t c = reader.get();
    const bool hexadecimal = c == u'x';
    if (hexadecimal) {
        m_digits.append(u'x');
        c = reader.get();
    }
    const std::size_t prefix = m_digits.size();
    char32_t value = 0;  // wraps: an over-long number gives what remains of it
    for (int digit = digitValue(c, hexadecimal); digit >= 0; digit = digitValue(c, hexadecimal)) {
        value = value * (hexadecimal ? 16U : 10U) + static_cast<char32_t>(digit);
        m_digits.append(static_cast<char16_t>(c));
        c = reader.get();
    }
    const bool hasDigits = m_digits.size() > prefix;
    m_digits.appendCodePoint(c);
    if (c != u';' || !hasDigits) {
        m_state.report(isXmlSpace(c) ? XmlError::SpaceInCharacterReference
                                     : XmlError::InvalidCharacterReference,
                       makeText(m_digits.view()));
    }
    if (!isXmlCharacter(value)) {
        m_state.report(XmlError::InvalidCodePoint, makeText(m_digits.view()));
    }
    return value;
}

}  // namespace ZroCommon::internal

#include "zro/xml/internal/ContentScanner.h"

#include <algorithm>
#include <array>

#include "zro/xml/internal/Scan.h"

namespace ZroCommon::internal {
namespace {

using Parser = ZRXmlParser;

constexpr char32_t kEnd = CharReader::kEnd;

// "U+0041 (A)"
UnicodeString describe(char32_t c) {
    UnicodeString text(u"U+");
    int digits = 4;
    while (digits < 8 && (c >> 4 * digits) != 0) {
        ++digits;
    }
    while (digits-- > 0) {
        text.append(u"0123456789ABCDEF"[(c >> 4 * digits) & 0xFU]);
    }
    return text.append(u" (", 2).append(static_cast<UChar32>(c)).append(u')');
}

bool isBlank(std::u16string_view text) {
    return std::all_of(text.begin(), text.end(), isXmlSpace);
}

}  // namespace

// What the current run has up to a stopping character goes to the text.
template <char16_t... Stops>
void ContentScanner::appendRun() {
    const Run& run = m_state.reader.run();
    const char16_t* const start = run.at;
    const char16_t* const end = findAny<Stops..., 0xFFFF>(start, run.end);
    m_state.text.appendRun(start, static_cast<std::size_t>(end - start), run.end);
    m_state.reader.moveTo(end);
}

std::u16string_view ContentScanner::findPlainText() {
    const Run& run = m_state.reader.currentRun();
    if (run.at == run.end || *run.at == u'<') {
        return {};
    }
    const char16_t* const end = findAny<u'<', u'&', u']', 0xFFFF>(run.at, run.end);
    if (run.end - end < 2 || *end != u'<' || end[1] == u'!' || end[1] == u'?'
        || !m_state.reader.inWindow()) {
        return {};
    }
    return {run.at, static_cast<std::size_t>(end - run.at)};
}

void ContentScanner::readText() {
    m_state.lookahead = Lookahead::None;
    m_state.event = Parser::TEXT;
    if (m_state.depth() > 0) {
        readTextInside();
        return;
    }
    const char32_t last = readTextOutside();
    if (isBlank(m_state.eventText())) {
        m_state.event = Parser::IGNORABLE_WHITESPACE;
    } else {
        m_state.report(XmlError::TextOutsideRoot, describe(last));
    }
}

// Both give the character that ended the text.
char32_t ContentScanner::readTextInside() {
    for (;;) {
        appendRun<u'<', u'&', u']'>();
        const char32_t c = m_state.reader.get();
        switch (c) {
        case u'<':
        case u'&': m_state.reader.pushBack(c); return c;
        case kEnd: return c;
        case u']': readBracket(); break;
        default: m_state.text.appendCodePoint(c); break;
        }
    }
}

char32_t ContentScanner::readTextOutside() {
    for (;;) {
        const char32_t c = m_state.reader.get();
        if (c == u'<' || c == u'&') {
            m_state.reader.pushBack(c);
            return c;
        }
        if (c == kEnd) {
            return c;
        }
        if (c == u']') {
            readBracket();
        } else {
            m_state.text.appendCodePoint(c);
        }
        if (!isXmlSpace(c)) {
            m_state.report(XmlError::TextOutsideRoot, describe(c));
        }
    }
}

// Behind a "]": the two characters behind it are looked at and read again, so that the error of a
// "]]>" comes once however many brackets stand before it.
void ContentScanner::readBracket() {
    CharReader& reader = m_state.reader;
    const char32_t second = reader.get();
    if (second == u']') {
        const char32_t third = reader.get();
        if (third == u'>') {
            m_state.report(XmlError::SectionEndInText);
        }
        reader.pushBack(third);
    }
    reader.pushBack(second);
    m_state.text.append(u']');
}

void ContentScanner::readReference() {
    m_state.lookahead = Lookahead::None;
    m_state.event = Parser::ENTITY_REF;
    const Reference reference = m_literals.readReference();
    m_state.entityName = reference.name;
    if (reference.isCharacter) {
        m_state.text.appendCodePoint(reference.character);
    }
}

void ContentScanner::readComment() {
    m_state.lookahead = Lookahead::None;
    m_state.event = Parser::COMMENT;
    CharReader& reader = m_state.reader;
    for (;;) {
        appendRun<u'-'>();
        char32_t c = reader.get();
        if (c == kEnd) {
            return m_state.report(XmlError::OpenComment);
        }
        if (c != u'-') {
            m_state.text.appendCodePoint(c);
            continue;
        }
        c = reader.get();
        if (c != u'-') {
            m_state.text.append(u'-');
            reader.pushBack(c);
            continue;
        }
        c = reader.get();
        if (c == u'>') {
            return;
        }
        // If parsing continues, the first dash is text and the comment goes on behind it.
        m_state.report(XmlError::DashesInComment);
        m_state.text.append(u'-');
        reader.pushBack(c);
        reader.pushBack(u'-');
    }
}

void ContentScanner::readCData() {
    m_state.event = Parser::CDSECT;
    CharReader& reader = m_state.reader;
    std::size_t brackets = 0;  // that end the text so far
    for (;;) {
        if (brackets == 0) {
            appendRun<u']'>();
        }
        const char32_t c = reader.get();
        if (c == kEnd) {
            return m_state.report(XmlError::OpenCData);
        }
        if (c == u'>' && brackets >= 2) {
            m_state.text.truncate(m_state.text.size() - 2);
            return;
        }
        brackets = c == u']' ? brackets + 1 : 0;
        m_state.text.appendCodePoint(c);
    }
}

void ContentScanner::skipSection() {
    char32_t before = 0;
    for (;;) {
        const char32_t c = m_state.reader.get();
        if (c == kEnd) {
            return m_state.report(XmlError::OpenCData);
        }
        if (c == u'>' && before == u']') {
            return;
        }
        before = c;
    }
}

void ContentScanner::readInstruction(ZRName target) {
    m_state.event = Parser::PROCESSING_INSTRUCTION;
    const UnicodeString& name = target.toString();
    if (name.caseCompare(u"xml", 0) == 0) {
        m_state.report(XmlError::TargetNotLowerCase, name);
    }
    m_state.text.append(viewOf(name));
    CharReader& reader = m_state.reader;
    char32_t c = reader.get();
    if (isXmlSpace(c)) {
        m_state.text.appendCodePoint(c);
    } else {
        // On purpose: what stands there is used up, so "<?p?>" goes on to the next "?>".
        m_state.report(XmlError::MissingTargetSpace, name);
    }
    for (bool mark = false;;) {
        if (!mark) {
            appendRun<u'?'>();
        }
        c = reader.get();
        if (c == kEnd) {
            return m_state.report(XmlError::OpenInstruction);
        }
        if (c == u'>' && mark) {
            return m_state.text.truncate(m_state.text.size() - 1);
        }
        mark = c == u'?';
        m_state.text.appendCodePoint(c);
    }
}

}  // namespace ZroCommon::internal

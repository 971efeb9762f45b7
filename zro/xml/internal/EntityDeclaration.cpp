// Entity declarations, as far as `DoctypeScanner` reads them.

#include "zro/xml/internal/DoctypeScanner.h"

namespace ZroCommon::internal {
namespace {

constexpr char32_t kEnd = CharReader::kEnd;

}  // namespace

// Behind "<!ENTITY". A declaration that makes no sense is left to the scan for its ">".
void DoctypeScanner::readEntity() {
    requireSpace(u"<!ENTITY");
    EntityTable::Kind kind = EntityTable::Kind::General;
    if (peek() == u'%') {
        m_state.reader.get();
        kind = EntityTable::Kind::Parameter;
        requireSpace(u"<!ENTITY %");
    }
    const ZRName name = m_state.names.readName();
    if (name.isEmpty()) {
        m_state.report(XmlError::EntityNameExpected, u"!ENTITY ");
    }
    m_state.text.append(viewOf(name.toString()));
    requireSpace(UnicodeString(u"<!ENTITY ").append(name.toString()));
    if (nextIsQuote()) {
        readInternalEntity(kind, name, m_state.reader.get());
    } else {
        readExternalEntity(kind, name);
    }
}

// The value is read to its end, put back and read again as a literal: so all positions told for
// errors in it are those of its end.
void DoctypeScanner::readInternalEntity(EntityTable::Kind kind, ZRName name, char32_t quote) {
    TextBuffer raw;
    raw.appendCodePoint(quote);
    char32_t c = m_state.reader.get();
    for (; c != kEnd && c != quote; c = m_state.reader.get()) {
        raw.appendCodePoint(c);
    }
    if (c == kEnd) {
        m_state.report(XmlError::OpenDeclaration, u"ENTITY");
    } else {
        raw.appendCodePoint(c);
    }
    m_state.text.append(raw.view());
    m_state.reader.pushText(makeText(raw.view()));
    m_state.entities.declareValue(kind, name, m_literals.read(LiteralMode::Entity));
    skipSpace();
    readDeclarationEnd();
}

void DoctypeScanner::readExternalEntity(EntityTable::Kind kind, ZRName name) {
    const UnicodeString head = UnicodeString(u"<!ENTITY ").append(name.toString());
    const ZRName keyword = m_state.names.readName();
    if (keyword != ZRN_SYSTEM && keyword != ZRN_PUBLIC) {
        return m_state.report(XmlError::ExternalIdExpected, head);
    }
    requireSpace(UnicodeString(head).append(u' ').append(keyword.toString()));
    if (keyword == ZRN_PUBLIC && !readEntityPublicId(head)) {
        return;
    }
    if (!nextIsQuote()) {
        return m_state.report(XmlError::SystemLiteralExpected,
                              UnicodeString(head).append(u" SYSTEM|PUBLIC"));
    }
    const UnicodeString systemId = m_literals.read(LiteralMode::Plain);
    m_state.entities.declareExternal(kind, name, systemId);
    if (kind == EntityTable::Kind::General) {
        readNotation(UnicodeString(head).append(u" ... \"").append(systemId).append(u'"'));
    }
    skipSpace();
    readDeclarationEnd();
}

bool DoctypeScanner::readEntityPublicId(const UnicodeString& head) {
    if (!nextIsQuote()) {
        m_state.report(XmlError::PublicLiteralExpected, UnicodeString(head).append(u" PUBLIC"));
        return false;
    }
    const UnicodeString publicId = m_literals.read(LiteralMode::Entity);
    requireSpace(UnicodeString(head).append(u" PUBLIC \"").append(publicId).append(u'"'));
    return true;
}

// The notation of an unparsed entity, which is then stored like any other.
void DoctypeScanner::readNotation(const UnicodeString& head) {
    if (!skipSpace() || peek() == u'>') {
        return;
    }
    if (m_state.names.readName() != ZRN_NDATA) {
        m_state.report(XmlError::NotationExpected, head);
    }
    requireSpace(UnicodeString(head).append(u" NDATA"));
    m_state.names.readName();
}

void DoctypeScanner::readDeclarationEnd() {
    const char32_t c = m_state.reader.get();
    if (c != u'>') {
        m_state.reportCharacter(XmlError::UnexpectedCharacter, c);
    }
    if (c != kEnd) {
        m_state.text.appendCodePoint(c);
    }
}

}  // namespace ZroCommon::internal

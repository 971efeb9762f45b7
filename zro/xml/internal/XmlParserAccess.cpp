// The accessors of `XmlParserImpl`: what can be asked between two events.

#include <algorithm>

#include <unicode/locid.h>

#include "zro/foundation/ZREmptyString.h"
#include "zro/foundation/internal/Raise.h"
#include "zro/xml/internal/Scan.h"
#include "zro/xml/internal/XmlParserImpl.h"

namespace ZroCommon::internal {

void XmlParserImpl::setFeature(Feature feature, bool on) {
    m_state.setFeature(feature, on);
}

bool XmlParserImpl::getFeature(Feature feature) const {
    return m_state.feature(feature);
}

void XmlParserImpl::setStreamType(const UnicodeString& contentType,
                                  const UnicodeString& extension) {
    m_contentType = contentType;
    m_contentType.toLower(icu::Locale::getRoot());
    m_extension = extension;
    m_extension.toLower(icu::Locale::getRoot());
}

void XmlParserImpl::setCallbackError(void (*callback)(const ZRError&, void*), void* userData) {
    m_state.callback = callback;
    m_state.callbackData = userData;
}

void XmlParserImpl::setLimits(const ZRLimits& limits) {
    m_state.reader.limits = limits;
}

UnicodeString XmlParserImpl::getInputEncoding() const {
    return m_state.reader.input().encoding.name;
}

UnicodeString XmlParserImpl::getBaseUri() const {
    return m_state.reader.input().baseUri;
}

void XmlParserImpl::defineEntityReplacementText(ZRName name, const UnicodeString& value) {
    m_state.entities.define(name, value);
}

void XmlParserImpl::addMathMLEntityMap() {
    m_state.entities.addMathML();
}

ZRXmlParser::EventType XmlParserImpl::getEventType() const {
    return m_state.event;
}

int XmlParserImpl::getDepth() const {
    return m_state.depth();
}

UnicodeString XmlParserImpl::getPositionDescription() const {
    return m_state.positionDescription();
}

int XmlParserImpl::getLineNumber() const {
    return m_state.reader.line();
}

int XmlParserImpl::getColumnNumber() const {
    return m_state.reader.column();
}

// Namespaces.

int XmlParserImpl::getNamespaceCount(int depth) const {
    return m_state.namespaces->declarationCount(depth);
}

ZRName XmlParserImpl::getNamespacePrefix(int index) const {
    return m_state.namespaces->declarations().prefix(index);
}

ZRName XmlParserImpl::getNamespaceUri(int index) const {
    return m_state.namespaces->declarations().uri(index);
}

ZRName XmlParserImpl::getNamespace() const {
    return isTag() ? m_state.namespaces->elementNamespace() : ZRName();
}

ZRName XmlParserImpl::getNamespace(ZRName prefix) const {
    return m_state.namespaces->lookup(prefix);
}

// The event.

bool XmlParserImpl::isTag() const {
    return m_state.event == START_TAG || m_state.event == END_TAG;
}

ZRName XmlParserImpl::getPrefix() const {
    return isTag() ? m_state.namespaces->elementPrefix() : ZRName();
}

ZRName XmlParserImpl::getName() const {
    if (isTag()) {
        return m_state.namespaces->elementName();
    }
    if (m_state.event != ENTITY_REF) {
        return {};
    }
    if (!m_state.entityName.isEmpty()) {
        return m_state.entityName;
    }
    const UnicodeString text = makeText(m_state.eventText().substr(0, 2));
    const auto c = static_cast<std::uint32_t>(text.char32At(0));
    UnicodeString name(u"#x");
    int shift = 28;
    while (shift > 0 && c >> shift == 0) {
        shift -= 4;
    }
    for (; shift >= 0; shift -= 4) {
        name.append(u"0123456789ABCDEF"[(c >> shift) & 0xFU]);
    }
    return {name};
}

bool XmlParserImpl::isWhitespace() const {
    if (m_state.event == IGNORABLE_WHITESPACE) {
        return true;
    }
    if (m_state.event != TEXT && m_state.event != CDSECT) {
        throwLibraryError(LibraryError::WrongState, ErrorSite::ParserIsWhitespace);
    }
    const std::u16string_view text = m_state.eventText();
    return std::all_of(text.begin(), text.end(), isXmlSpace);
}

UnicodeString XmlParserImpl::getText() const {
    if (m_state.event != ENTITY_REF || m_state.entityName.isEmpty()) {
        return makeText(m_state.eventText());
    }
    if (!m_hasEntityText) {
        const UnicodeString* value = m_state.generalEntity(m_state.entityName);
        m_entityText = value != nullptr ? *value : ZRBogusString::BOGUS_VALUE;
        m_hasEntityText = true;
    }
    return m_entityText;
}

bool XmlParserImpl::isEmptyElementTag() const {
    if (m_state.event != START_TAG) {
        throwLibraryError(LibraryError::WrongState, ErrorSite::ParserIsEmptyElementTag);
    }
    return m_state.lookahead == Lookahead::EmptyElementEnd;
}

// Attributes.

int XmlParserImpl::getAttributeCount() const {
    return m_state.event == START_TAG ? static_cast<int>(m_state.attributes.size()) : -1;
}

const Attribute& XmlParserImpl::attributeAt(int index, ErrorSite site) const {
    const auto at = static_cast<std::size_t>(index);  // a negative index becomes a huge one
    if (m_state.event != START_TAG || at >= m_state.attributes.size()) {
        throwLibraryError(LibraryError::IndexOutOfRange, site);
    }
    return m_state.attributes[at];
}

ZRName XmlParserImpl::getAttributeNamespace(int index) const {
    return attributeAt(index, ErrorSite::ParserGetAttributeNamespace).namespaceUri;
}

ZRName XmlParserImpl::getAttributeName(int index) const {
    return attributeAt(index, ErrorSite::ParserGetAttributeName).name;
}

ZRName XmlParserImpl::getAttributePrefix(int index) const {
    return attributeAt(index, ErrorSite::ParserGetAttributePrefix).prefix;
}

UnicodeString XmlParserImpl::getAttributeValue(int index) const {
    return valueOf(attributeAt(index, ErrorSite::ParserGetAttributeValue));
}

// On purpose: the attribute's prefix is looked up anew, the empty one too, so that an attribute
// without prefix is found under the default namespace and not under none.
UnicodeString XmlParserImpl::getAttributeValue(ZRName namespaceUri, ZRName name) const {
    if (m_state.event != START_TAG) {
        throwLibraryError(LibraryError::IndexOutOfRange, ErrorSite::ParserGetAttributeValue);
    }
    for (const Attribute& attribute : m_state.attributes) {
        if (attribute.name == name && getNamespace(attribute.prefix) == namespaceUri) {
            return valueOf(attribute);
        }
    }
    return ZRBogusString::BOGUS_VALUE;
}

UnicodeString XmlParserImpl::valueOf(const Attribute& attribute) const {
    return makeText(m_state.attributes.value(attribute));
}

}  // namespace ZroCommon::internal

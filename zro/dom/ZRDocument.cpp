#include "zro/dom/ZRDocument.h"

#include "zro/dom/ZRDocumentFragment.h"
#include "zro/dom/ZRTextNode.h"
#include "zro/dom/internal/Attr.h"
#include "zro/dom/internal/Element.h"
#include "zro/dom/internal/TextInput.h"
#include "zro/xml/ZRXmlUtil.h"

namespace ZroCommon {

ZRDocument::ZRDocument() : ZRNode(nullptr) {}

ZRDocument::~ZRDocument() {
    m_parser = nullptr;
    m_serializer = nullptr;
    m_lastLoadingNode = nullptr;
    m_lastLoadingHold = nullptr;
    releaseTreeOfDocument();
}

unsigned int ZRDocument::getTypeID() const {
    return getStaticTypeID();
}

bool ZRDocument::isA(unsigned int typeID) const {
    return typeID == getStaticTypeID() || ZRNode::isA(typeID);
}

UnicodeString ZRDocument::getTypeName() const {
    return u"ZRDocument";
}

ZRElement* ZRDocument::getDocumentElement() {
    // References before the root make text at the top level, so the first child need not be it.
    return static_cast<ZRElement*>(getChildNodeByTypeID(ZRElement::getStaticTypeID()));
}

ZRPtr<ZRElement> ZRDocument::createElement(ZRName name) {
    return new internal::Element(this, ZRName(), name);
}

ZRPtr<ZRElement> ZRDocument::createElementNS(ZRName namespaceUri, ZRName prefix, ZRName name) {
    return new internal::ElementNS(this, namespaceUri, prefix, name);
}

ZRPtr<ZRElement> ZRDocument::createElementNS(ZRName namespaceUri, ZRName qualifiedName) {
    return createElementNS(namespaceUri, ZRXmlUtil::getPrefixFromQName(qualifiedName),
                           ZRXmlUtil::getLocalPartFromQName(qualifiedName));
}

ZRPtr<ZRTextNode> ZRDocument::createTextNode(const UnicodeString& data) {
    return new ZRTextNode(this, data);
}

ZRPtr<ZRPINode> ZRDocument::createProcessingInstruction(const UnicodeString& data) {
    return new ZRPINode(this, data);
}

ZRPtr<ZRDocumentFragment> ZRDocument::createDocumentFragment() {
    return new ZRDocumentFragment(this);
}

ZRPtr<ZRAttr> ZRDocument::createAttribute(ZRName name) {
    return new internal::Attr(this, name);
}

ZRPtr<ZRAttr> ZRDocument::createAttributeNS(ZRName namespaceUri, ZRName prefix, ZRName name) {
    return new internal::AttrNS(this, namespaceUri, prefix, name);
}

ZRPtr<ZRAttr> ZRDocument::createAttributeNS(ZRName namespaceUri, ZRName qualifiedName) {
    const ZRName prefix = ZRXmlUtil::getPrefixFromQName(qualifiedName);
    return createAttributeNS(internal::namespaceOfAttribute(namespaceUri, prefix), prefix,
                             ZRXmlUtil::getLocalPartFromQName(qualifiedName));
}

ZRPtr<ZRNode> ZRDocument::createTextNodeElement(const UnicodeString& text, ZRNode* /*parent*/) {
    return createTextNode(text);
}

const UnicodeString& ZRDocument::getBaseUri() const {
    return m_baseUri.isEmpty() ? m_documentUri : m_baseUri;
}

const UnicodeString& ZRDocument::getDocumentUri() const {
    return m_documentUri.isEmpty() ? m_baseUri : m_documentUri;
}

void ZRDocument::setParser(ZRXmlParser* parser) {
    m_parser = parser;
    m_documentUri.remove();
}

void ZRDocument::setSerializer(ZRXmlSerializer* serializer) {
    m_serializer = serializer;
}

ZRXmlParser* ZRDocument::getParser() {
    if (m_parser.get() == nullptr) {
        m_parser = ZRXmlUtil::createXmlParser();
    }
    return m_parser;
}

ZRXmlSerializer* ZRDocument::getSerializer() {
    if (m_serializer.get() == nullptr) {
        m_serializer = ZRXmlUtil::createXmlSerializer();
    }
    return m_serializer;
}

}  // namespace ZroCommon

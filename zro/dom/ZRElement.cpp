#include "zro/dom/ZRElement.h"

#include "zro/dom/ZRDocument.h"
#include "zro/dom/internal/Attr.h"
#include "zro/dom/internal/AttrNodeMap.h"
#include "zro/dom/internal/TreeCopy.h"
#include "zro/foundation/internal/Raise.h"
#include "zro/xml/ZRXmlUtil.h"

namespace ZroCommon {

using internal::AttrNodeMap;
using internal::ErrorSite;
using internal::LibraryError;
using internal::throwLibraryError;

ZRElement::ZRElement(ZRDocument* ownerDocument) : ZRNode(ownerDocument) {}

ZRElement::~ZRElement() {
    if (m_attributes.get() != nullptr) {
        m_attributes->close();
    }
}

unsigned int ZRElement::getTypeID() const {
    return getStaticTypeID();
}

bool ZRElement::isA(unsigned int typeID) const {
    return typeID == getStaticTypeID() || ZRNode::isA(typeID);
}

UnicodeString ZRElement::getTypeName() const {
    return u"ZRElement";
}

AttrNodeMap& ZRElement::ensureAttributes() {
    if (m_attributes.get() == nullptr) {
        m_attributes = new AttrNodeMap(this);
    }
    return *m_attributes;
}

ZRNamedNodeMap* ZRElement::getAttributes() {
    return &ensureAttributes();
}

bool ZRElement::hasAttributes() const {
    return m_attributes.get() != nullptr && !m_attributes->isEmpty();
}

ZRAttr* ZRElement::getAttributeNode(ZRName name) const {
    return hasAttributes() ? m_attributes->find(name) : nullptr;
}

ZRAttr* ZRElement::getAttributeNodeNS(ZRName namespaceUri, ZRName name) const {
    return hasAttributes() ? m_attributes->find(namespaceUri, name) : nullptr;
}

ZRValue ZRElement::getAttribute(ZRName name) const {
    const ZRAttr* attr = hasAttributes() ? m_attributes->find(name) : nullptr;
    return attr != nullptr ? attr->getValue() : ZRValue();
}

ZRValue ZRElement::getAttributeNS(ZRName namespaceUri, ZRName name) const {
    const ZRAttr* attr = hasAttributes() ? m_attributes->find(namespaceUri, name) : nullptr;
    return attr != nullptr ? attr->getValue() : ZRValue();
}

bool ZRElement::hasAttribute(ZRName name) const {
    return hasAttributes() && m_attributes->find(name) != nullptr;
}

bool ZRElement::hasAttributeNS(ZRName namespaceUri, ZRName name) const {
    return hasAttributes() && m_attributes->find(namespaceUri, name) != nullptr;
}

bool ZRElement::hasAttributeLocal(ZRName name) const {
    return hasAttributes() && m_attributes->find(name) != nullptr;
}

void ZRElement::setAttribute(ZRName name, const ZRValue& value) {
    AttrNodeMap& map = ensureAttributes();
    if (ZRAttr* known = map.find(name)) {
        known->setValue(value);
        return;
    }
    ZRDocument* document = getOwnerDocument();
    const ZRPtr<ZRAttr> attr =
        document != nullptr ? document->createAttribute(name) : new internal::Attr(nullptr, name);
    if (attr.get() != nullptr) {
        attr->setValue(value);
        map.setNamedItem(attr);
    }
}

void ZRElement::setAttributeNS(ZRName namespaceUri, ZRName prefix, ZRName name,
                               const ZRValue& value) {
    AttrNodeMap& map = ensureAttributes();
    if (ZRAttr* known = map.find(namespaceUri, name)) {
        known->setValue(value);
        known->setPrefix(prefix);
        return;
    }
    const ZRPtr<ZRAttr> attr = makeAttribute(namespaceUri, prefix, name);
    if (attr.get() != nullptr) {
        attr->setValue(value);
        map.setNamedItemNS(attr);
    }
}

void ZRElement::setAttributeNS(ZRName namespaceUri, ZRName qualifiedName, const ZRValue& value) {
    const ZRName prefix = ZRXmlUtil::getPrefixFromQName(qualifiedName);
    setAttributeNS(internal::namespaceOfAttribute(namespaceUri, prefix), prefix,
                   ZRXmlUtil::getLocalPartFromQName(qualifiedName), value);
}

void ZRElement::setAttributeEx(ZRName namespaceUri, ZRName prefix, ZRName name,
                               const UnicodeString& text) {
    setAttributeNS(namespaceUri, prefix, name, ZRValue(text));
}

ZRPtr<ZRAttr> ZRElement::makeAttribute(ZRName namespaceUri, ZRName prefix, ZRName name) {
    if (ZRDocument* document = getOwnerDocument()) {
        return document->createAttributeNS(namespaceUri, prefix, name);
    }
    return new internal::AttrNS(nullptr, namespaceUri, prefix, name);
}

void ZRElement::removeAttribute(ZRName name) {
    if (hasAttributes()) {
        m_attributes->removeNamedItem(name);
    }
}

void ZRElement::removeAttributeNS(ZRName namespaceUri, ZRName name) {
    if (hasAttributes()) {
        m_attributes->removeNamedItemNS(namespaceUri, name);
    }
}

namespace {

ZRPtr<ZRAttr> asAttr(const ZRPtr<ZRNode>& node) {
    return static_cast<ZRAttr*>(node.get());  // maps hold nothing else
}

}  // namespace

ZRPtr<ZRAttr> ZRElement::setAttributeNode(ZRAttr* attr) {
    return asAttr(ensureAttributes().setNamedItem(attr));
}

ZRPtr<ZRAttr> ZRElement::setAttributeNodeNS(ZRAttr* attr) {
    return asAttr(ensureAttributes().setNamedItemNS(attr));
}

ZRPtr<ZRAttr> ZRElement::removeAttributeNode(ZRAttr* attr) {
    if (attr == nullptr) {
        throwLibraryError(LibraryError::NullArgument, ErrorSite::ElementRemoveAttributeNode,
                          u"oldAttr");
    }
    if (m_attributes.get() == nullptr || !m_attributes->holds(*attr)) {
        throwLibraryError(LibraryError::NotAChild, ErrorSite::ElementRemoveAttributeNode,
                          u"oldAttr");
    }
    return m_attributes->remove(*attr);
}

void ZRElement::getAttributeNodeLocal(ZRName name, std::vector<ZRPtr<ZRAttr>>* nodes) const {
    if (nodes == nullptr || !hasAttributes()) {
        return;
    }
    for (ZRAttr* attr = m_attributes->first(); attr != nullptr; attr = AttrNodeMap::next(*attr)) {
        if (attr->getLocalName() == name) {
            nodes->emplace_back(attr);
        }
    }
}

void ZRElement::getAttributeLocal(ZRName name, std::vector<ZRValue>* values) const {
    if (values == nullptr || !hasAttributes()) {
        return;
    }
    for (ZRAttr* attr = m_attributes->first(); attr != nullptr; attr = AttrNodeMap::next(*attr)) {
        if (attr->getLocalName() == name) {
            values->push_back(attr->getValue());
        }
    }
}

ZRPtr<ZRNode> ZRElement::cloneNode(bool deep) {
    ZRDocument* document = getOwnerDocument();
    const ZRPtr<ZRElement> copy =
        document != nullptr
            ? document->createElementNS(getNamespaceUri(), getPrefix(), getLocalName())
            : nullptr;
    return copy.get() != nullptr ? finishClone(copy, deep) : nullptr;
}

ZRPtr<ZRNode> ZRElement::finishClone(const ZRPtr<ZRElement>& copy, bool deep) {
    copy->m_sourceLine = m_sourceLine;
    copy->m_sourceColumn = m_sourceColumn;
    ZRAttr* attr = hasAttributes() ? m_attributes->first() : nullptr;
    for (; attr != nullptr; attr = AttrNodeMap::next(*attr)) {
        const ZRPtr<ZRNode> attrCopy = attr->cloneNode(false);
        if (attrCopy.get() != nullptr && attrCopy->isA(ZRAttr::getStaticTypeID())) {
            copy->ensureAttributes().append(asAttr(attrCopy));
        }
    }
    if (deep) {
        internal::appendClones(*this, *copy);
    }
    return copy;
}

}  // namespace ZroCommon

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
    if (AttrNodeMap* map = attributes()) {
        map->close();
        map->release();
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
    AttrNodeMap* map = attributes();
    if (map == nullptr) {
        ZRPtr<AttrNodeMap> made = AttrNodeMap::make(this);
        if (m_attributes.compare_exchange_strong(map, made.get())) {
            map = made.detach();
        }
    }
    return *map;
}

AttrNodeMap& ZRElement::startAttributes() {
    AttrNodeMap* map = AttrNodeMap::make(this).detach();
    m_attributes.store(map, std::memory_order_relaxed);
    return *map;
}

ZRNamedNodeMap* ZRElement::getAttributes() {
    return &ensureAttributes();
}

bool ZRElement::hasAttributes() const {
    const AttrNodeMap* map = attributes();
    return map != nullptr && !map->isEmpty();
}

ZRAttr* ZRElement::getAttributeNode(ZRName name) const {
    return hasAttributes() ? attributes()->find(name) : nullptr;
}

ZRAttr* ZRElement::getAttributeNodeNS(ZRName namespaceUri, ZRName name) const {
    return hasAttributes() ? attributes()->find(namespaceUri, name) : nullptr;
}

ZRValue ZRElement::getAttribute(ZRName name) const {
    const ZRAttr* attr = hasAttributes() ? attributes()->find(name) : nullptr;
    return attr != nullptr ? attr->getValue() : ZRValue();
}

ZRValue ZRElement::getAttributeNS(ZRName namespaceUri, ZRName name) const {
    const ZRAttr* attr = hasAttributes() ? attributes()->find(namespaceUri, name) : nullptr;
    return attr != nullptr ? attr->getValue() : ZRValue();
}

bool ZRElement::hasAttribute(ZRName name) const {
    return hasAttributes() && attributes()->find(name) != nullptr;
}

bool ZRElement::hasAttributeNS(ZRName namespaceUri, ZRName name) const {
    return hasAttributes() && attributes()->find(namespaceUri, name) != nullptr;
}

bool ZRElement::hasAttributeLocal(ZRName name) const {
    return hasAttributes() && attributes()->find(name) != nullptr;
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
        attributes()->removeNamedItem(name);
    }
}

void ZRElement::removeAttributeNS(ZRName namespaceUri, ZRName name) {
    if (hasAttributes()) {
        attributes()->removeNamedItemNS(namespaceUri, name);
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
        throwLibraryError(LibraryError::NullArgument, ErrorSite::ElementRemoveAttributeNode);
    }
    AttrNodeMap* map = attributes();
    if (map == nullptr || !map->holds(*attr)) {
        throwLibraryError(LibraryError::NotAChild, ErrorSite::ElementRemoveAttributeNode);
    }
    return map->remove(*attr);
}

void ZRElement::getAttributeNodeLocal(ZRName name, std::vector<ZRPtr<ZRAttr>>* nodes) const {
    if (nodes == nullptr || !hasAttributes()) {
        return;
    }
    for (ZRAttr* attr = attributes()->first(); attr != nullptr; attr = AttrNodeMap::next(*attr)) {
        if (attr->getLocalName() == name) {
            nodes->emplace_back(attr);
        }
    }
}

void ZRElement::getAttributeLocal(ZRName name, std::vector<ZRValue>* values) const {
    if (values == nullptr || !hasAttributes()) {
        return;
    }
    for (ZRAttr* attr = attributes()->first(); attr != nullptr; attr = AttrNodeMap::next(*attr)) {
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
    ZRAttr* attr = hasAttributes() ? attributes()->first() : nullptr;
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

#include "zro/dom/ZRAttr.h"

#include "zro/dom/ZRDocument.h"
#include "zro/dom/ZRElement.h"

namespace ZroCommon {

unsigned int ZRAttr::getTypeID() const {
    return getStaticTypeID();
}

bool ZRAttr::isA(unsigned int typeID) const {
    return typeID == getStaticTypeID() || ZRNode::isA(typeID);
}

UnicodeString ZRAttr::getTypeName() const {
    return u"ZRAttr";
}

ZRValue ZRAttr::getNodeValue() const {
    return getValue();
}

void ZRAttr::setNodeValue(const ZRValue& value) {
    setValue(value);
}

ZRNode* ZRAttr::getPreviousSibling() const {
    return nullptr;
}

ZRNode* ZRAttr::getNextSibling() {
    // On purpose: none among the children of a node either, where it hides what follows it.
    return nullptr;
}

ZRNamedNodeMap* ZRAttr::getAttributes() {
    return nullptr;
}

UnicodeString ZRAttr::getText() const {
    return getValue().toString();
}

void ZRAttr::setText(const UnicodeString& text) {
    setValue(ZRValue(text));
}

ZRPtr<ZRNode> ZRAttr::cloneNode(bool /*deep*/) {
    ZRDocument* document = getOwnerDocument();
    const ZRPtr<ZRAttr> copy =
        document != nullptr
            ? document->createAttributeNS(getNamespaceUri(), getPrefix(), getLocalName())
            : nullptr;
    if (copy.get() != nullptr) {
        copy->setValue(getValue());
    }
    return copy;
}

ZRElement* ZRAttr::getOwnerElement() const {
    ZRNode* parent = getParentNodeFast();
    return parent != nullptr && parent->isA(ZRElement::getStaticTypeID())
               ? static_cast<ZRElement*>(parent)
               : nullptr;
}

}  // namespace ZroCommon

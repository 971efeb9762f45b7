#include "zro/dom/internal/Element.h"

#include <cstdint>
#include <utility>

#include "zro/dom/internal/Attr.h"
#include "zro/dom/internal/AttrNodeMap.h"
#include "zro/xml/internal/AttributeList.h"

namespace ZroCommon::internal {
namespace {

/// The same as setting a string value, without making one for an attribute of ours.
void setTextValue(ZRAttr& attr, Attr* plain, const UnicodeString& text) {
    if (plain != nullptr) {
        plain->Attr::setText(text);
    } else {
        attr.setValue(ZRValue(text));
    }
}

/// Whether nothing speaks against adding a new attribute: it is loose, and not of a name that a
/// derived document has chosen instead.
bool isAsAskedFor(const Attr& attr, ZRName namespaceUri, ZRName name) {
    return attr.getParentNodeFast() == nullptr && attr.getLocalName() == name
           && attr.getNamespaceUri() == namespaceUri;
}

}  // namespace

Element::Element(ZRDocument* ownerDocument, ZRName prefix, ZRName localName)
    : ZRElement(ownerDocument), m_localName(localName), m_prefix(prefix) {}

Element::~Element() = default;

unsigned int Element::getTypeID() const {
    return getStaticTypeID();
}

bool Element::isA(unsigned int typeID) const {
    return typeID == getStaticTypeID() || ZRElement::isA(typeID);
}

UnicodeString Element::getTypeName() const {
    return u"Element";
}

ZRName Element::getNamespaceUri() const {
    return const_cast<Element*>(this)->lookupNamespaceUri(m_prefix);  // an element never loads here
}

ZRPtr<ZRNode> Element::cloneNode(bool deep) {
    return finishClone(new Element(getOwnerDocument(), m_prefix, m_localName), deep);
}

void Element::setAttributeEx(ZRName namespaceUri, ZRName prefix, ZRName name,
                             const UnicodeString& text) {
    AttrNodeMap& map = ensureAttributes();
    if (ZRAttr* known = map.find(namespaceUri, name)) {
        setTextValue(*known, asPlainAttr(*known), text);
        known->setPrefix(prefix);
        return;
    }
    ZRPtr<ZRAttr> attr = makeAttribute(namespaceUri, prefix, name);
    if (attr.get() == nullptr) {
        return;
    }
    Attr* plain = asPlainAttr(*attr);
    setTextValue(*attr, plain, text);
    if (plain != nullptr && isAsAskedFor(*plain, namespaceUri, name)
        && plain->getOwnerDocument() == getOwnerDocument()) {
        map.appendNamed(std::move(attr));
    } else {
        map.setNamedItemNS(attr);
    }
}

void Element::takeAttributes(const AttributeList& attributes) {
    ZRDocument* document = getOwnerDocument();
    AttrNodeMap& map = startAttributes();
    std::uint64_t seen = 0;  // no two of these have one name, nearly always
    for (const Attribute& attribute : attributes) {
        const std::u16string_view value = attributes.value(attribute);
        const std::uint64_t bit = std::uint64_t{1} << (static_cast<unsigned>(attribute.name) % 64);
        if ((seen & bit) != 0 && map.find(attribute.namespaceUri, attribute.name) != nullptr) {
            Element::setAttributeEx(attribute.namespaceUri, attribute.prefix, attribute.name,
                                    makeText(value));
        } else {
            map.appendNamed(AttrNS::make(document, attribute, value));
        }
        seen |= bit;
    }
}

ZRPtr<ElementNS> ElementNS::make(ZRDocument& document, ZRName namespaceUri, ZRName prefix,
                                 ZRName localName) {
    auto* element = new ElementNS(&document, namespaceUri, prefix, localName);
    element->startRefCount(1);
    return ZRPtr<ElementNS>::adopt(element);
}

unsigned int ElementNS::getTypeID() const {
    return getStaticTypeID();
}

bool ElementNS::isA(unsigned int typeID) const {
    return typeID == getStaticTypeID() || Element::isA(typeID);
}

UnicodeString ElementNS::getTypeName() const {
    return u"ElementNS";
}

ElementNS::~ElementNS() = default;

ZRPtr<ZRNode> ElementNS::cloneNode(bool deep) {
    return finishClone(
        new ElementNS(getOwnerDocument(), m_namespaceUri, getPrefix(), getLocalName()), deep);
}

}  // namespace ZroCommon::internal

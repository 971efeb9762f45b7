#pragma once

#include "zro/dom/ZRElement.h"

namespace ZroCommon::internal {

class AttributeList;

/// An element without a namespace of its own: it has the one that its prefix stands for at its
/// place, by the `xmlns` attributes in scope.
class Element : public ZRElement {
public:
    Element(ZRDocument* ownerDocument, ZRName prefix, ZRName localName);

    static unsigned int getStaticTypeID() { return 0xD27D366CU; }
    unsigned int getTypeID() const override;
    bool isA(unsigned int typeID) const override;
    UnicodeString getTypeName() const override;
    ZRName getLocalName() const override { return m_localName; }
    ZRName getNamespaceUri() const override;
    ZRName getPrefix() const override { return m_prefix; }
    void setPrefix(ZRName prefix) override { m_prefix = prefix; }
    ZRPtr<ZRNode> cloneNode(bool deep) override;
    void setAttributeEx(ZRName namespaceUri, ZRName prefix, ZRName name,
                        const UnicodeString& text) override;

    /// What `setAttributeEx` does with the attributes of a start tag, for a new element.
    void takeAttributes(const AttributeList& attributes);

protected:
    ~Element() override;

private:
    ZRName m_localName;
    ZRName m_prefix;
};

/// An element with its namespace, as loading makes them.
class ElementNS final : public Element {
public:
    ElementNS(ZRDocument* ownerDocument, ZRName namespaceUri, ZRName prefix, ZRName localName)
        : Element(ownerDocument, prefix, localName), m_namespaceUri(namespaceUri) {}

    /// A new element with the one reference.
    static ZRPtr<ElementNS> make(ZRDocument& document, ZRName namespaceUri, ZRName prefix,
                                 ZRName localName);

    static unsigned int getStaticTypeID() { return 0xC08077FCU; }
    unsigned int getTypeID() const override;
    bool isA(unsigned int typeID) const override;
    UnicodeString getTypeName() const override;
    ZRName getNamespaceUri() const override { return m_namespaceUri; }
    ZRPtr<ZRNode> cloneNode(bool deep) override;

private:
    ~ElementNS() override;

    ZRName m_namespaceUri;
};

}  // namespace ZroCommon::internal

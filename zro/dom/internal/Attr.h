#pragma once

#include "zro/dom/ZRAttr.h"
#include "zro/dom/internal/AttrValue.h"

namespace ZroCommon::internal {

struct Attribute;

/// The namespace of an attribute with that prefix: the prefixes of XML itself bring their own.
ZRName namespaceOfAttribute(ZRName namespaceUri, ZRName prefix);

/// An attribute without a namespace.
class Attr : public ZRAttr {
public:
    Attr(ZRDocument* ownerDocument, ZRName localName) : Attr(ownerDocument, ZRName(), localName) {}

    ZRName getLocalName() const override { return storedLocalName(); }
    ZRPtr<ZRNode> cloneNode(bool deep) override;
    UnicodeString getText() const override { return m_value.text(); }
    void setText(const UnicodeString& text) override { m_value.set(text, ZRValueUnitNone); }
    ZRValue getValue() const override { return m_value.get(); }
    void setValue(const ZRValue& value) override { m_value.set(value); }

    /// Whether the value is a string, so that `getText` tells all.
    bool holdsText() const { return m_value.isText(); }

protected:
    Attr(ZRDocument* ownerDocument, ZRName namespaceUri, ZRName localName)
        : ZRAttr(ownerDocument, namespaceUri, localName) {}
    Attr(ZRDocument* ownerDocument, ZRName namespaceUri, ZRName localName, std::u16string_view text)
        : ZRAttr(ownerDocument, namespaceUri, localName), m_value(text) {}
    ~Attr() override = default;

    void copyValueOf(const Attr& other) { m_value.set(other.m_value.get()); }

private:
    [[no_unique_address]] AttrValue m_value;  // a prefix fits into its tail
};

/// An attribute with a namespace and a prefix, as loading makes them.
class AttrNS final : public Attr {
public:
    AttrNS(ZRDocument* ownerDocument, ZRName namespaceUri, ZRName prefix, ZRName localName)
        : Attr(ownerDocument, namespaceUri, localName), m_prefix(prefix) {}

    /// A new attribute with the one reference, for the element that takes it.
    static ZRPtr<ZRAttr> make(ZRDocument* ownerDocument, const Attribute& read,
                              std::u16string_view value);

    ZRName getNamespaceUri() const override { return storedNamespaceUri(); }
    ZRName getPrefix() const override { return m_prefix; }
    void setPrefix(ZRName prefix) override { m_prefix = prefix; }
    ZRPtr<ZRNode> cloneNode(bool deep) override;

private:
    AttrNS(ZRDocument* ownerDocument, const Attribute& read, std::u16string_view value);
    ~AttrNS() override = default;

    ZRName m_prefix;
};

/// The attribute as one of the two classes here; null for any other, those derived from `ZRAttr`
/// elsewhere.
Attr* asPlainAttr(ZRAttr& attr);
const Attr* asPlainAttr(const ZRAttr& attr);

}  // namespace ZroCommon::internal

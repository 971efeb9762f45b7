#pragma once

#include "zro/dom/ZRNode.h"

namespace ZroCommon {

class ZRElement;

namespace internal {
class AttrIndex;
}

/// An attribute: a node with a name and a value. It is no child of its element; its parent link is
/// the element all the same.
///
/// An element looks its attributes up by the names they had when they were added to it.
class ZRO_API ZRAttr : public ZRNode {
public:
    static unsigned int getStaticTypeID() { return 0xC5B6A2E2U; }
    unsigned int getTypeID() const override;
    bool isA(unsigned int typeID) const override;
    UnicodeString getTypeName() const override;
    ZRNodeType getNodeType() const override { return ZRNodeTypeAttribute; }
    ZRValue getNodeValue() const override;
    void setNodeValue(const ZRValue& value) override;
    ZRNode* getPreviousSibling() const override;
    ZRNode* getNextSibling() override;
    ZRNamedNodeMap* getAttributes() override;
    /// Makes the copy by `ZRDocument::createAttributeNS`; `deep` makes no difference.
    ZRPtr<ZRNode> cloneNode(bool deep) override;
    /// The value's text.
    UnicodeString getText() const override;
    /// Sets a string value.
    void setText(const UnicodeString& text) override;

    virtual ZRValue getValue() const = 0;
    virtual void setValue(const ZRValue& value) = 0;
    /// Null while no element has it.
    virtual ZRElement* getOwnerElement() const;

protected:
    explicit ZRAttr(ZRDocument* ownerDocument, ZRName namespaceUri = ZRName(),
                    ZRName localName = ZRName())
        : ZRNode(ownerDocument), m_namespaceUri(namespaceUri), m_localName(localName) {}
    ~ZRAttr() override = default;

    ZRName storedNamespaceUri() const { return m_namespaceUri; }
    ZRName storedLocalName() const { return m_localName; }

private:
    friend class internal::AttrNodeMap;
    friend class internal::AttrIndex;

    ZRAttr* m_nextAttribute = nullptr;  // the previous one is behind the link of siblings
    ZRName m_namespaceUri;              // what the map finds it by
    ZRName m_localName;
};

}  // namespace ZroCommon

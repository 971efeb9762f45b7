#pragma once

#include <atomic>
#include <vector>

#include "zro/dom/ZRAttr.h"
#include "zro/dom/ZRNode.h"
#include "zro/dom/ZRNodeList.h"

namespace ZroCommon {

/// A node with a name and attributes; the base of an engine's own elements.
///
/// Attributes have one order, that of their insertion, and are found by local name alone or by
/// namespace and local name. Their values are `ZRValue`s; loading sets texts through
/// `setAttributeEx`, where a derived class may parse them.
class ZRO_API ZRElement : public ZRNode {
public:
    static unsigned int getStaticTypeID() { return 0xD31942AAU; }
    unsigned int getTypeID() const override;
    bool isA(unsigned int typeID) const override;
    UnicodeString getTypeName() const override;
    ZRNodeType getNodeType() const override { return ZRNodeTypeElement; }
    bool isElementNode() const override { return true; }
    ZRNamedNodeMap* getAttributes() override;
    bool hasAttributes() const override;
    /// Makes the copy by `ZRDocument::createElementNS`.
    ZRPtr<ZRNode> cloneNode(bool deep) override;
    int getSourceLineNumber() const override;
    void setSourceLineNumber(int line) override { m_sourceLine = line; }
    int getSourceColumnNumber() const override;
    void setSourceColumnNumber(int column) override { m_sourceColumn = column; }

    /// The value of the first attribute of that local name, null when there is none.
    virtual ZRValue getAttribute(ZRName name) const;
    virtual ZRValue getAttributeNS(ZRName namespaceUri, ZRName name) const;
    /// Gives the value to the attribute of that name, or adds one.
    virtual void setAttribute(ZRName name, const ZRValue& value);
    /// The same by namespace and local name; an attribute that is there takes the prefix as well.
    virtual void setAttributeNS(ZRName namespaceUri, ZRName prefix, ZRName name,
                                const ZRValue& value);
    /// The same with "prefix:local"; the prefixes "xmlns" and "xml" bring their own namespace.
    virtual void setAttributeNS(ZRName namespaceUri, ZRName qualifiedName, const ZRValue& value);
    virtual void removeAttribute(ZRName name);
    virtual void removeAttributeNS(ZRName namespaceUri, ZRName name);
    /// Null when there is none.
    virtual ZRAttr* getAttributeNode(ZRName name) const;
    virtual ZRAttr* getAttributeNodeNS(ZRName namespaceUri, ZRName name) const;
    /// Appends all attributes of that local name, in their order. A null vector does nothing.
    virtual void getAttributeNodeLocal(ZRName name, std::vector<ZRPtr<ZRAttr>>* nodes) const;
    /// Adds an attribute node. \return the one it replaced, or null
    /// \throws ZRError  as `ZRNamedNodeMap::setNamedItem`
    virtual ZRPtr<ZRAttr> setAttributeNode(ZRAttr* attr);
    virtual ZRPtr<ZRAttr> setAttributeNodeNS(ZRAttr* attr);
    /// \throws ZRError  0x0803 for null, 0x0809 for what is no attribute of this element; the texts
    ///                  name no argument, as those of the map
    virtual ZRPtr<ZRAttr> removeAttributeNode(ZRAttr* attr);
    virtual bool hasAttribute(ZRName name) const;
    virtual bool hasAttributeNS(ZRName namespaceUri, ZRName name) const;
    virtual bool hasAttributeLocal(ZRName name) const;
    /// How loading sets an attribute: the text as a string value.
    virtual void setAttributeEx(ZRName namespaceUri, ZRName prefix, ZRName name,
                                const UnicodeString& text);

    /// Appends the values of all attributes of that local name, whatever their namespace.
    void getAttributeLocal(ZRName name, std::vector<ZRValue>* values) const;

protected:
    explicit ZRElement(ZRDocument* ownerDocument);
    ~ZRElement() override;

    /// The map, made when it is first needed.
    internal::AttrNodeMap& ensureAttributes();
    /// The map of a new element that has none, and that nobody else knows.
    internal::AttrNodeMap& startAttributes();
    /// The map, null when there is none yet.
    internal::AttrNodeMap* attributes() const {
        return m_attributes.load(std::memory_order_acquire);
    }
    ZRPtr<ZRAttr> makeAttribute(ZRName namespaceUri, ZRName prefix, ZRName name);
    /// Gives a copy of this element what `cloneNode` carries over beside the names.
    ZRPtr<ZRNode> finishClone(const ZRPtr<ZRElement>& copy, bool deep);

private:
    friend class ZRNode;

    std::atomic<internal::AttrNodeMap*> m_attributes{
        nullptr};  // one reference; readers may make it
    int m_sourceLine = -1;
    int m_sourceColumn = -1;
};

}  // namespace ZroCommon

#pragma once

#include <string_view>

#include "zro/dom/ZRNode.h"

namespace ZroCommon {

/// A run of text between tags. Its local name is "#text".
class ZRO_API ZRTextNode : public ZRNode {
public:
    ZRTextNode(ZRDocument* ownerDocument, const UnicodeString& data);

    static unsigned int getStaticTypeID() { return 0x92151179U; }
    unsigned int getTypeID() const override;
    bool isA(unsigned int typeID) const override;
    UnicodeString getTypeName() const override;
    ZRName getLocalName() const override { return ZRN_hash_text; }
    /// The text as a string value.
    ZRValue getNodeValue() const override;
    void setNodeValue(const ZRValue& value) override;
    ZRNodeType getNodeType() const override { return ZRNodeTypeText; }
    /// A text node of the same data, also of a processing instruction.
    ZRPtr<ZRNode> cloneNode(bool deep) override;
    bool isText() const override { return true; }
    UnicodeString getText() const override { return m_data; }
    void setText(const UnicodeString& text) override;

    /// In UTF-16 units.
    virtual int getLength() const;
    virtual const UnicodeString& getData() const;
    virtual void setData(const UnicodeString& data);

protected:
    ~ZRTextNode() override;

private:
    friend class internal::PlainBuilder;

    ZRTextNode(std::u16string_view data, ZRDocument& ownerDocument);

    UnicodeString m_data;
};

/// A processing instruction: the data is the target, one white space character and the rest. It is
/// a text node in all but its type, its name "#text" included.
class ZRO_API ZRPINode : public ZRTextNode {
public:
    ZRPINode(ZRDocument* ownerDocument, const UnicodeString& data)
        : ZRTextNode(ownerDocument, data) {}

    static unsigned int getStaticTypeID() { return 0x1A6FA3CFU; }
    unsigned int getTypeID() const override;
    bool isA(unsigned int typeID) const override;
    UnicodeString getTypeName() const override;
    ZRNodeType getNodeType() const override { return ZRNodeTypeProcessingInstruction; }

protected:
    ~ZRPINode() override;
};

}  // namespace ZroCommon

#pragma once

#include "zro/dom/ZRNode.h"

namespace ZroCommon {

/// A container without a name. Appending it somewhere appends the fragment itself, not its
/// children; saving writes its children alone.
class ZRO_API ZRDocumentFragment : public ZRNode {
public:
    explicit ZRDocumentFragment(ZRDocument* ownerDocument) : ZRNode(ownerDocument) {}

    static unsigned int getStaticTypeID() { return 0x319C59B1U; }
    unsigned int getTypeID() const override;
    bool isA(unsigned int typeID) const override;
    UnicodeString getTypeName() const override;
    ZRName getLocalName() const override { return ZRN_hash_document_fragment; }
    ZRNodeType getNodeType() const override { return ZRNodeTypeDocumentFragment; }
    ZRPtr<ZRNode> cloneNode(bool deep) override;

protected:
    ~ZRDocumentFragment() override;
};

}  // namespace ZroCommon

#pragma once

#include "zro/dom/ZRAttr.h"
#include "zro/dom/ZRNode.h"
#include "zro/xml/ZRXmlSerializer.h"

namespace ZroCommon::internal {

/// Writes trees through a serializer.
class TreeWriter {
public:
    explicit TreeWriter(ZRXmlSerializer& serializer) : m_serializer(serializer) {}

    /// Writes a node and all below it. A null node is nothing.
    /// \throws ZRError  0x0812 for a node that has no place in a document
    void write(ZRNode* node);
    /// Writes a start tag with its attributes.
    void openElement(ZRNode& element);

private:
    void writeFirstVisit(ZRNode& node);
    void writeAttribute(const ZRAttr& attr);
    void writeMembers(const ZRAttr& attr, const ZRValue& value);
    void writeAttributeText(const ZRAttr& attr, ZRName name, const UnicodeString& text);

    ZRXmlSerializer& m_serializer;
};

}  // namespace ZroCommon::internal

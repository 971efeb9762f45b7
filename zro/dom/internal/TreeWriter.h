#pragma once

#include "zro/dom/ZRAttr.h"
#include "zro/dom/ZRNode.h"
#include "zro/dom/internal/NamespaceTrail.h"
#include "zro/xml/ZRXmlSerializer.h"

namespace ZroCommon::internal {

/// Writes trees through a serializer.
class TreeWriter {
public:
    explicit TreeWriter(ZRXmlSerializer& serializer) : m_serializer(serializer) {}

    /// Writes a node and all below it. A null node is nothing.
    /// \throws ZRError  0x0812 for a node that has no place in a document
    void write(ZRNode* node);
    /// Writes the node without what is below it: an element as a start tag with its attributes, to
    /// be followed by its content.
    void writeStart(ZRNode& node);
    /// Whether an element is written as the text that it stands for, without tags.
    static bool isTextElement(const ZRNode& element);

private:
    void openElement(ZRNode& element);
    void writeAttribute(const ZRAttr& attr);
    void writeMembers(const ZRAttr& attr, const ZRValue& value);
    void writeAttributeText(const ZRAttr& attr, ZRName name, const UnicodeString& text);

    ZRXmlSerializer& m_serializer;
    NamespaceTrail m_namespaces;
};

}  // namespace ZroCommon::internal

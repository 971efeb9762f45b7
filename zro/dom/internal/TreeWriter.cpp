#include "zro/dom/internal/TreeWriter.h"

#include "zro/dom/ZRNodeList.h"
#include "zro/dom/ZRTextNode.h"
#include "zro/dom/ZRTreeIterator.h"
#include "zro/dom/internal/Attr.h"
#include "zro/foundation/internal/Raise.h"
#include "zro/values/ZRNamedValueMap.h"

namespace ZroCommon::internal {
namespace {

UnicodeString dataOf(const ZRNode& node) {
    return node.isA(ZRTextNode::getStaticTypeID()) ? static_cast<const ZRTextNode&>(node).getData()
                                                   : node.getText();
}

/// The name of a member's attribute: "name.member"; the default member has the name itself.
ZRName memberName(ZRName name, ZRName member) {
    if (member.isEmpty()) {
        return name;
    }
    UnicodeString text(name.toString());
    return text.append(u'.').append(member.toString());
}

}  // namespace

/// Derived documents may make elements of text.
bool TreeWriter::isTextElement(const ZRNode& element) {
    return element.isText() && element.getLocalName() == ZRN_hash_text;
}

void TreeWriter::write(ZRNode* node) {
    ZRTreeIterator visits(node, ZRTreeIterator::PRE_AND_POST_ORDER);
    while (ZRNode* at = visits.nextNode()) {
        if (visits.atPreVisit()) {
            writeStart(*at);
        } else if (at->getNodeType() == ZRNodeTypeElement && !isTextElement(*at)) {
            m_serializer.endTag(m_namespaces.leave(*at), at->getLocalName());
        }
    }
}

void TreeWriter::writeStart(ZRNode& node) {
    switch (node.getNodeType()) {
    case ZRNodeTypeElement:
        if (isTextElement(node)) {
            m_serializer.text(node.getText());
        } else {
            openElement(node);
        }
        break;
    case ZRNodeTypeText: m_serializer.text(dataOf(node)); break;
    case ZRNodeTypeProcessingInstruction: m_serializer.processingInstruction(dataOf(node)); break;
    case ZRNodeTypeDocument:
    case ZRNodeTypeDocumentFragment: break;
    default: throwLibraryError(LibraryError::UnsupportedNodeType, ErrorSite::DocumentDoSave);
    }
}

void TreeWriter::openElement(ZRNode& element) {
    m_serializer.startTag(m_namespaces.enter(element), element.getPrefix(), element.getLocalName());
    element.finishAttributes();
    ZRNamedNodeMap* attributes = element.hasAttributes() ? element.getAttributes() : nullptr;
    ZRNode* attr = attributes != nullptr ? attributes->getFirstNode() : nullptr;
    for (; attr != nullptr; attr = attributes->getNextNode(attr)) {
        if (attr->isA(ZRAttr::getStaticTypeID())) {
            writeAttribute(static_cast<const ZRAttr&>(*attr));
        }
    }
}

void TreeWriter::writeAttribute(const ZRAttr& attr) {
    if (const Attr* plain = asPlainAttr(attr); plain != nullptr && plain->holdsText()) {
        writeAttributeText(attr, attr.getLocalName(), plain->getText());
        return;
    }
    const ZRValue value = attr.getValue();
    if (value.isCompound() && !value.isColor()) {
        writeMembers(attr, value);
    } else {
        writeAttributeText(attr, attr.getLocalName(), value.toString());
    }
}

void TreeWriter::writeMembers(const ZRAttr& attr, const ZRValue& value) {
    ZRNamedValueMapIterator members(value.getNamedValueMap());
    while (members.hasNext()) {
        const ZRNamedValue& member = members.next();
        writeAttributeText(attr, memberName(attr.getLocalName(), member.getName()),
                           member.toString());
    }
}

void TreeWriter::writeAttributeText(const ZRAttr& attr, ZRName name, const UnicodeString& text) {
    if (!text.isEmpty()) {
        m_serializer.attribute(attr.getNamespaceUri(), attr.getPrefix(), name, text);
    }
}

}  // namespace ZroCommon::internal

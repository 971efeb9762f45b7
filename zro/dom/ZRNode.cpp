#include "zro/dom/ZRNode.h"

#include "zro/dom/ZRDocument.h"
#include "zro/dom/ZRNodeIterator.h"
#include "zro/dom/ZRNodeList.h"
#include "zro/dom/internal/ChildNodeList.h"
#include "zro/dom/internal/NodeSlab.h"
#include "zro/dom/internal/TreeNodeList.h"
#include "zro/foundation/internal/Raise.h"
#include "zro/xml/ZRXmlUtil.h"

namespace ZroCommon {

using internal::ErrorSite;
using internal::LibraryError;
using internal::throwLibraryError;

void* ZRNode::operator new(std::size_t size) {  // NOLINT(misc-new-delete-overloads): sized
    return internal::allocateNodeMemory(size);
}

void ZRNode::operator delete(void* memory, std::size_t size) {
    internal::freeNodeMemory(memory, size);
}

unsigned int ZRNode::getTypeID() const {
    return getStaticTypeID();
}

bool ZRNode::isA(unsigned int typeID) const {
    return typeID == getStaticTypeID() || ZRRCObject::isA(typeID);
}

UnicodeString ZRNode::getTypeName() const {
    return u"ZRNode";
}

ZRName ZRNode::getNodeName() const {
    return ZRXmlUtil::makeQName(getPrefix(), getLocalName());
}

ZRName ZRNode::getNamespaceUri() const {
    return {};
}

ZRName ZRNode::getPrefix() const {
    return {};
}

void ZRNode::setPrefix(ZRName /*prefix*/) {}

ZRValue ZRNode::getNodeValue() const {
    return {};
}

void ZRNode::setNodeValue(const ZRValue& /*value*/) {
    throwLibraryError(LibraryError::WrongState, ErrorSite::NodeSetNodeValue,
                      getNodeName().toString());
}

ZRNode* ZRNode::getParentNode() const {
    return m_parent;
}

ZRNode* ZRNode::getParentNodeUncomplemental() const {
    ZRNode* node = getParentNode();
    while (node != nullptr && node->getFlag(kComplemental)) {
        node = node->getParentNode();
    }
    return node;
}

ZRDocument* ZRNode::getOwnerDocument() const {
    return m_ownerDocument;
}

ZRDocument* ZRNode::getDocument() {
    if (m_ownerDocument == nullptr && getNodeType() == ZRNodeTypeDocument) {
        return static_cast<ZRDocument*>(this);
    }
    return m_ownerDocument;
}

ZRNode* ZRNode::loadOneNode() {
    ZRDocument* document = getDocument();
    return document != nullptr ? document->loadNextNode() : nullptr;
}

bool ZRNode::hasChildNodes() {
    if (m_lastChild != nullptr) {
        return true;
    }
    return getFlag(kLoading) && loadOneNode() != nullptr && m_lastChild != nullptr;
}

ZRNode* ZRNode::getFirstChild() {
    if (m_lastChild == nullptr && getFlag(kLoading)) {
        loadOneNode();
    }
    return getFirstChildFast();
}

ZRNode* ZRNode::getLastChild() {
    while (getFlag(kLoading) && loadOneNode() != nullptr) {
    }
    return m_lastChild;
}

ZRNode* ZRNode::getPreviousSibling() const {
    return m_previous;
}

ZRNode* ZRNode::getNextSibling() {
    while (m_parent != nullptr && m_parent->m_lastChild == this && m_parent->getFlag(kLoading)) {
        if (loadOneNode() == nullptr) {
            break;
        }
    }
    return getNextSiblingFast();
}

ZRNamedNodeMap* ZRNode::getAttributes() {
    return nullptr;
}

bool ZRNode::hasAttributes() const {
    return false;
}

ZRPtr<ZRNode> ZRNode::cloneNode(bool /*deep*/) {
    return nullptr;
}

void ZRNode::finishAttributes() {}

bool ZRNode::isElementNode() const {
    return false;
}

bool ZRNode::isText() const {
    return false;
}

bool ZRNode::isFO() const {
    return false;
}

bool ZRNode::isYAVO() const {
    return false;
}

bool ZRNode::isArea() const {
    return false;
}

bool ZRNode::isBlock() const {
    return false;
}

bool ZRNode::isInline() const {
    return false;
}

bool ZRNode::isInlineBlock() const {
    return false;
}

bool ZRNode::isNeutral() const {
    return false;
}

bool ZRNode::isOutOfLine() const {
    return false;
}

UnicodeString ZRNode::getText() const {
    return {};
}

void ZRNode::setText(const UnicodeString& /*text*/) {}

ZRPtr<ZRNodeList> ZRNode::getChildNodes() {
    return new internal::ChildNodeList(this);
}

ZRPtr<ZRNodeList> ZRNode::getElementsByTagName(ZRName name) {
    return new internal::TreeNodeList(this, name);
}

ZRPtr<ZRNodeList> ZRNode::getElementsByTagNameNS(ZRName namespaceUri, ZRName name) {
    return new internal::TreeNodeList(this, namespaceUri, name);
}

ZRPtr<ZRNodeList> ZRNode::getDescendantNodes() {
    return new internal::TreeNodeList(this);
}

ZRNodeIterator ZRNode::getIterator() {
    return ZRNodeIterator(this);
}

void ZRNode::setSourceLineNumber(int /*line*/) {}

void ZRNode::setSourceColumnNumber(int /*column*/) {}

}  // namespace ZroCommon

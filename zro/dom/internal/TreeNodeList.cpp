#include "zro/dom/internal/TreeNodeList.h"

#include "zro/dom/ZRNode.h"

namespace ZroCommon::internal {
namespace {

ZRNode* deepestLast(ZRNode* node) {
    while (ZRNode* child = node->getLastChild()) {
        node = child;
    }
    return node;
}

}  // namespace

TreeNodeList::TreeNodeList(ZRNode* root, ZRName localName)
    : m_root(root), m_filter(Filter::LocalName), m_localName(localName), m_any(u"*") {}

TreeNodeList::TreeNodeList(ZRNode* root, ZRName namespaceUri, ZRName localName)
    : m_root(root),
      m_filter(Filter::Name),
      m_namespaceUri(namespaceUri),
      m_localName(localName),
      m_any(u"*") {}

bool TreeNodeList::passes(const ZRNode& node) const {
    if (m_filter == Filter::None) {
        return true;
    }
    return node.getNodeType() == ZRNodeTypeElement && matches(m_localName, node.getLocalName())
           && (m_filter == Filter::LocalName || matches(m_namespaceUri, node.getNamespaceUri()));
}

ZRNode* TreeNodeList::stepForward(ZRNode* node) const {
    if (node->hasChildNodes()) {
        return node->getFirstChild();
    }
    for (; node != nullptr && node != m_root; node = node->getParentNode()) {
        if (ZRNode* next = node->getNextSibling()) {
            return next;
        }
    }
    return nullptr;
}

ZRNode* TreeNodeList::stepBack(ZRNode* node) const {
    if (node == m_root) {
        return nullptr;
    }
    if (ZRNode* previous = node->getPreviousSibling()) {
        return deepestLast(previous);
    }
    ZRNode* parent = node->getParentNode();
    return parent != m_root ? parent : nullptr;
}

ZRNode* TreeNodeList::getFirstNode() {
    return getNextNode(m_root);
}

ZRNode* TreeNodeList::getNextNode(ZRNode* node) {
    do {
        node = stepForward(node);
    } while (node != nullptr && !passes(*node));
    return node;
}

ZRNode* TreeNodeList::getLastNode() {
    ZRNode* last = deepestLast(m_root);
    if (last == m_root) {
        return nullptr;
    }
    return passes(*last) ? last : getPreviousNode(last);
}

ZRNode* TreeNodeList::getPreviousNode(ZRNode* node) {
    do {
        node = stepBack(node);
    } while (node != nullptr && !passes(*node));
    return node;
}

}  // namespace ZroCommon::internal

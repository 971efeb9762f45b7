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

bool TreeNodeList::passes(ZRNode& node, NamespaceTrail& trail) const {
    if (m_filter == Filter::None) {
        return true;
    }
    if (node.getNodeType() != ZRNodeTypeElement) {
        return false;
    }
    const bool isNamed = matches(m_localName, node.getLocalName());
    if (m_filter == Filter::LocalName || m_namespaceUri == m_any) {
        return isNamed;
    }
    if (trail.isEmpty() && !isPlainElement(node)) {
        return isNamed && node.getNamespaceUri() == m_namespaceUri;
    }
    return trail.enter(node) == m_namespaceUri && isNamed;
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

ZRNode* TreeNodeList::nextOf(ZRNode* node, NamespaceTrail& trail) const {
    do {
        node = stepForward(node);
    } while (node != nullptr && !passes(*node, trail));
    return node;
}

ZRNode* TreeNodeList::getNextNode(ZRNode* node) {
    NamespaceTrail trail;
    return node != nullptr ? nextOf(node, trail) : nullptr;
}

int TreeNodeList::getLength() {
    NamespaceTrail trail;
    int length = 0;
    for (ZRNode* node = nextOf(m_root, trail); node != nullptr; node = nextOf(node, trail)) {
        ++length;
    }
    return length;
}

ZRNode* TreeNodeList::item(int index) {
    NamespaceTrail trail;
    ZRNode* node = index >= 0 ? nextOf(m_root, trail) : nullptr;
    for (; node != nullptr && index > 0; --index) {
        node = nextOf(node, trail);
    }
    return node;
}

ZRNode* TreeNodeList::getLastNode() {
    ZRNode* last = deepestLast(m_root);
    if (last == m_root) {
        return nullptr;
    }
    NamespaceTrail trail;
    return passes(*last, trail) ? last : getPreviousNode(last);
}

ZRNode* TreeNodeList::getPreviousNode(ZRNode* node) {
    NamespaceTrail trail;
    while (node != nullptr) {
        node = stepBack(node);
        if (node == nullptr || passes(*node, trail)) {
            break;
        }
    }
    return node;
}

}  // namespace ZroCommon::internal

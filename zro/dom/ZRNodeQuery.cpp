// Where nodes stand to each other, and what can be found above and below a node.
#include "zro/dom/ZRNode.h"

#include <new>

#include "zro/dom/internal/TreeNodeList.h"
#include "zro/foundation/ZRError.h"

namespace ZroCommon {

/// Where the ways up from two nodes meet.
struct ZRNode::Fork {
    ZRNode* ancestor = nullptr;     // of both, or one of the two; null in different trees
    const ZRNode* mine = nullptr;   // its child towards the first node, null when it is that node
    const ZRNode* other = nullptr;  // its child towards the second
};

namespace {

int depthOf(const ZRNode* node) {
    int depth = 0;
    for (; node != nullptr; node = node->getParentNodeFast()) {
        ++depth;
    }
    return depth;
}

const ZRNode* climb(const ZRNode* node, int steps, const ZRNode*& below) {
    for (; steps > 0; --steps) {
        below = node;
        node = node->getParentNodeFast();
    }
    return node;
}

}  // namespace

ZRNode::Fork ZRNode::forkWith(const ZRNode* other) const {
    const int myDepth = depthOf(this);
    const int otherDepth = depthOf(other);
    Fork fork;
    const ZRNode* mine = climb(this, myDepth - otherDepth, fork.mine);
    other = climb(other, otherDepth - myDepth, fork.other);
    while (mine != other) {
        mine = climb(mine, 1, fork.mine);
        other = climb(other, 1, fork.other);
    }
    fork.ancestor = const_cast<ZRNode*>(mine);
    return fork;
}

bool ZRNode::isDescendantOf(const ZRNode* node) const {
    const ZRNode* ancestor = m_parent;
    while (ancestor != nullptr && ancestor != node) {
        ancestor = ancestor->m_parent;
    }
    return ancestor != nullptr;
}

bool ZRNode::isDescendantOrSelfOf(const ZRNode* node) const {
    return this == node || isDescendantOf(node);
}

bool ZRNode::isFollowingOf(const ZRNode* node) const {
    return node != nullptr && node->isPrecedingOf(this);
}

bool ZRNode::isPrecedingOf(const ZRNode* node) const {
    const Fork fork = forkWith(node);
    if (fork.ancestor == nullptr || fork.mine == nullptr || fork.other == nullptr) {
        return false;
    }
    const ZRNode* sibling = fork.mine;
    while (sibling != nullptr && sibling != fork.other) {
        sibling = sibling->getNextSiblingFast();
    }
    return sibling != nullptr;
}

ZRNode* ZRNode::getCommonAncestor(const ZRNode* node) const {
    const Fork fork = forkWith(node);
    const bool isOneOfThem = fork.mine == nullptr || fork.other == nullptr;
    return fork.ancestor != nullptr && isOneOfThem ? fork.ancestor->m_parent : fork.ancestor;
}

ZRNode* ZRNode::getCommonAncestorOrSelf(ZRNode* node) const {
    return forkWith(node).ancestor;
}

int ZRNode::getNodeDepth() const {
    int depth = 0;
    for (const ZRNode* node = m_parent; node != nullptr; node = node->m_parent) {
        if (node->getNodeType() == ZRNodeTypeDocument) {
            break;
        }
        ++depth;
    }
    return depth;
}

int ZRNode::countPrecedingSiblings() const {
    int count = 0;
    for (const ZRNode* node = getPreviousSibling(); node != nullptr;
         node = node->getPreviousSibling()) {
        ++count;
    }
    return count;
}

int ZRNode::countFollowingSiblings() {
    int count = 0;
    for (ZRNode* node = getNextSibling(); node != nullptr; node = node->getNextSibling()) {
        ++count;
    }
    return count;
}

int ZRNode::getChildNodeCount() {
    ZRNode* first = getFirstChild();
    return first != nullptr ? 1 + first->countFollowingSiblings() : 0;
}

ZRNode* ZRNode::getChildNodeByTypeID(unsigned int typeID) {
    ZRNode* child = getFirstChild();
    while (child != nullptr && !child->isA(typeID)) {
        child = child->getNextSibling();
    }
    return child;
}

ZRNode* ZRNode::getChildNodeByName(ZRName name) {
    ZRNode* child = getFirstChild();
    while (child != nullptr && child->getLocalName() != name) {
        child = child->getNextSibling();
    }
    return child;
}

ZRNode* ZRNode::getChildNodeByNameNS(ZRName namespaceUri, ZRName name) {
    ZRNode* child = getFirstChild();
    while (child != nullptr
           && (child->getLocalName() != name || child->getNamespaceUri() != namespaceUri)) {
        child = child->getNextSibling();
    }
    return child;
}

ZRNode* ZRNode::getAncestorByTypeID(unsigned int typeID) const {
    ZRNode* node = getParentNode();
    while (node != nullptr && !node->isA(typeID)) {
        node = node->getParentNode();
    }
    return node;
}

ZRNode* ZRNode::getAncestorByName(ZRName name) const {
    ZRNode* parent = getParentNode();
    return parent != nullptr ? parent->getAncestorOrSelfByName(name) : nullptr;
}

ZRNode* ZRNode::getAncestorOrSelfByName(ZRName name) {
    ZRNode* node = this;
    while (node != nullptr && node->getLocalName() != name) {
        node = node->getParentNode();
    }
    return node;
}

ZRNode* ZRNode::getAncestorByNameNS(ZRName namespaceUri, ZRName name) const {
    ZRNode* node = getParentNode();
    while (node != nullptr
           && (node->getLocalName() != name || node->getNamespaceUri() != namespaceUri)) {
        node = node->getParentNode();
    }
    return node;
}

namespace {

void appendOrThrow(UnicodeString& text, const UnicodeString& piece) {
    text.append(piece);
    if (text.isBogus()) {
        std::bad_alloc tooLong;
        throw ZRError(tooLong, u"ZroCommon::ZRNode::getInnerText");
    }
}

}  // namespace

UnicodeString ZRNode::getInnerText() {
    if (isText() || !isElementNode()) {
        return getText();
    }
    UnicodeString text;
    internal::TreeNodeList descendants(this);
    for (ZRNode* node = descendants.getFirstNode(); node != nullptr;
         node = descendants.getNextNode(node)) {
        if (node->getNodeType() == ZRNodeTypeText) {  // which processing instructions are not
            appendOrThrow(text, node->getText());
        }
    }
    return text;
}

}  // namespace ZroCommon

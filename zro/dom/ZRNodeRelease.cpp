// How nodes let go of what is below them: without recursion, whatever the depth, and without
// memory.
#include "zro/dom/ZRNode.h"

#include <utility>

#include "zro/dom/ZRDocument.h"
#include "zro/dom/ZRElement.h"
#include "zro/dom/internal/AttrNodeMap.h"

namespace ZroCommon {

/// Nodes that a thread has yet to release, linked by `m_next`. A node that dies meanwhile puts its
/// children here instead of releasing them from its destructor.
struct ZRNode::Chain {
    ZRNode* first = nullptr;
    const ZRDocument* dyingDocument = nullptr;

    static thread_local constinit Chain* t_current;
};

thread_local constinit ZRNode::Chain* ZRNode::Chain::t_current = nullptr;

/// Makes a chain of the children, without a parent. \param behind  what the chain goes on with
ZRNode* ZRNode::takeChildren(ZRNode* behind) {
    if (m_lastChild == nullptr) {
        return behind;
    }
    ZRNode* last = std::exchange(m_lastChild, nullptr);
    ZRNode* first = std::exchange(last->m_next, behind);
    for (ZRNode* child = first; child != behind; child = child->m_next) {
        __builtin_prefetch(child->m_lastChild);  // what the child's own turn begins with
        child->m_parent = nullptr;
        child->m_previous = nullptr;
    }
    return first;
}

void ZRNode::releaseChildren() {
    if (m_lastChild == nullptr) {
        return;
    }
    if (Chain* current = Chain::t_current) {
        current->first = takeChildren(current->first);
        return;
    }
    releaseAsChain(nullptr);
}

void ZRNode::releaseAsChain(const ZRDocument* dyingDocument) {
    Chain chain{takeChildren(nullptr), dyingDocument};
    Chain* outer = std::exchange(Chain::t_current, &chain);
    while (chain.first != nullptr) {
        ZRNode* node = std::exchange(chain.first, chain.first->m_next);
        node->m_next = nullptr;
        if (node->getRefCount() > 1) {
            node->forgetDyingDocument();
        }
        node->release();
    }
    Chain::t_current = outer;
}

void ZRNode::releaseTreeOfDocument() {
    releaseAsChain(getDocument());
}

void ZRNode::removeAllChildNodes() {
    releaseChildren();
}

/// What is held elsewhere and outlives its document must not lead to it any more.
void ZRNode::forgetDyingDocument() {
    const Chain* chain = Chain::t_current;
    if (chain != nullptr && chain->dyingDocument != nullptr
        && chain->dyingDocument == m_ownerDocument) {
        forgetDocument();
    }
}

void ZRNode::forgetDocument() {
    for (ZRNode* node = this; node != nullptr; node = nextInSubtree(*node, *this)) {
        node->m_ownerDocument = nullptr;
        ZRNamedNodeMap* attributes = node->hasAttributes() ? node->getAttributes() : nullptr;
        if (attributes == nullptr) {
            continue;
        }
        for (ZRNode* attr = attributes->getFirstNode(); attr != nullptr;
             attr = attributes->getNextNode(attr)) {
            attr->m_ownerDocument = nullptr;
        }
    }
}

/// Document order, by the links alone.
ZRNode* ZRNode::nextInSubtree(const ZRNode& node, const ZRNode& root) {
    if (node.m_lastChild != nullptr) {
        return node.m_lastChild->m_next;
    }
    for (const ZRNode* at = &node; at != &root; at = at->m_parent) {
        if (ZRNode* next = at->getNextSiblingFast()) {
            return next;
        }
    }
    return nullptr;
}

ZRNode* ZRNode::deepestLast() {
    ZRNode* node = this;
    while (node->m_lastChild != nullptr) {
        node = node->m_lastChild;
    }
    return node;
}

long ZRNode::deleteAllChildNodes() {
    long count = 0;
    ZRNode* node = deepestLast();
    while (node != this) {
        ZRNode* parent = node->m_parent;
        ZRNode* previous = node->m_previous;
        node->clearLinks();
        if (previous == nullptr) {
            parent->m_lastChild = nullptr;
        }
        if (node->decrementRefCount() < 1) {
            delete node;
        }
        ++count;
        node = previous != nullptr ? previous->deepestLast() : parent;
    }
    return count;
}

}  // namespace ZroCommon

#include "zro/dom/internal/TreeCopy.h"

#include "zro/dom/ZRAttr.h"
#include "zro/dom/ZRTextNode.h"

namespace ZroCommon::internal {
namespace {

/// A copy of the node as last child of the target, null when there is none.
ZRNode* appendClone(ZRNode& node, ZRNode& target) {
    const ZRPtr<ZRNode> clone = node.cloneNode(false);
    if (clone.get() == nullptr) {
        return nullptr;
    }
    target.appendChild(clone);
    return clone->getParentNodeFast() == &target ? clone.get() : nullptr;
}

/// Texts and attributes are copied alone also where they stand at the top of a copy.
bool isCopiedWithChildren(const ZRNode& node) {
    return !node.isA(ZRTextNode::getStaticTypeID()) && !node.isA(ZRAttr::getStaticTypeID());
}

}  // namespace

void appendClones(ZRNode& source, ZRNode& target) {
    ZRNode* parent = &target;
    ZRNode* at = &source;
    ZRNode* next = at->getFirstChild();
    while (next != nullptr || at != &source) {
        if (next == nullptr) {
            next = at->getNextSibling();
            at = at->getParentNode();
            parent = parent->getParentNode();
            continue;
        }
        ZRNode* clone = appendClone(*next, *parent);
        const bool copiesBelow = clone != nullptr && isCopiedWithChildren(*next);
        ZRNode* below = copiesBelow ? next->getFirstChild() : nullptr;
        if (below == nullptr) {
            next = next->getNextSibling();
            continue;
        }
        at = next;
        parent = clone;
        next = below;
    }
}

}  // namespace ZroCommon::internal

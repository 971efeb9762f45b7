#pragma once

#include <vector>

#include "zro/dom/ZRNode.h"

namespace ZroCommon::internal {

/// The namespaces of the elements on the way from the start of a walk down to where it is.
///
/// A plain element asks all elements above it for what its prefix means, so a walk that asked each
/// of them would take quadratic time in a deep tree. Here an element takes the answer from its
/// parent, unless it has a declaration or another prefix. The tree must not change meanwhile, but
/// for attributes of elements of other classes while the walk has not gone below them.
class NamespaceTrail {
public:
    /// The namespace of an element that the walk comes to, in document order.
    ZRName enter(ZRNode& element);
    /// The same namespace at the element's end.
    ZRName leave(ZRNode& element);

    /// Whether elements without a plain one among them need not be entered.
    bool isEmpty() const { return m_trail.empty(); }

private:
    struct Step {
        ZRNode* element = nullptr;
        ZRName prefix;
        ZRName meaning;        // of the prefix at this element
        bool isKnown = false;  // the meaning
    };

    void backTo(const ZRNode* element);
    ZRName meaningAtEnd();

    std::vector<Step> m_trail;
};

/// Whether the element has no namespace of its own, but asks for it by its prefix.
bool isPlainElement(const ZRNode& element);

}  // namespace ZroCommon::internal

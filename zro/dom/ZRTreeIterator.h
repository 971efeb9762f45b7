#pragma once

#include <cstdint>

#include "zro/foundation/Export.h"

namespace ZroCommon {

class ZRNode;

/// Walks over a subtree, root included, with a visit before a node's children, behind them, or
/// both.
///
/// With both, an element is seen twice and a text node once. Holds nothing: the tree must outlive
/// it, and the current node must stay in the tree. Walking loads what is not loaded.
class ZRO_API ZRTreeIterator {
public:
    enum TraversalOrder : std::uint8_t {
        PRE_ORDER = 1,
        POST_ORDER = 2,
        PRE_AND_POST_ORDER = 3,
    };

    /// Walks over nothing.
    ZRTreeIterator() = default;
    /// Stands before the first visit of `root`.
    explicit ZRTreeIterator(ZRNode* root, TraversalOrder order = PRE_AND_POST_ORDER)
        : m_root(root), m_order(order), m_atPost(false) {}

    bool operator==(const ZRTreeIterator& other) const = default;

    /// The node of the next visit, null at the end.
    ZRNode* nextNode();
    ZRNode* previousNode();
    bool hasNextNode() const;
    bool hasPreviousNode() const;

    ZRNode* getRoot() const { return m_root; }
    TraversalOrder getOrder() const { return m_order; }
    /// Null before the start and behind the end.
    ZRNode* getCurrentNode() const { return m_current; }
    void setCurrentNode(ZRNode* node, bool atPost);

    /// Whether the visit is the one before the children.
    bool atPreVisit() const { return !m_atPost; }
    bool atPostVisit() const { return m_atPost; }
    void setAtPreVisit(bool pre) { m_atPost = !pre; }

    /// At the root's first visit.
    void setToStart();
    /// At the root's last visit.
    void setToEnd();

private:
    bool stepForward();
    bool stepBack();

    ZRNode* m_root = nullptr;
    ZRNode* m_current = nullptr;
    TraversalOrder m_order = PRE_AND_POST_ORDER;
    bool m_atPost = true;
};

}  // namespace ZroCommon

#pragma once

#include "zro/dom/ZRNodeList.h"
#include "zro/foundation/Export.h"
#include "zro/foundation/ZRPtr.h"

namespace ZroCommon {

/// Walks over a list, a map or the descendants of a node. Holds the list, not the nodes.
///
/// It keeps the node that comes next, so the node just returned may be removed from the tree. Over
/// a null list or node it is at its end.
class ZRO_API ZRNodeIterator {
public:
    explicit ZRNodeIterator(ZRNodeIterable* iterable);
    /// All descendants of a node.
    /// \param start  where to begin, itself left out; null for the first descendant
    explicit ZRNodeIterator(ZRNode* node, ZRNode* start = nullptr);

    /// The next node, null at the end.
    ZRNode* nextNode();
    /// Steps back and returns the node it then stands before. Stepping back from the first node
    /// leads to the end.
    ZRNode* previousNode();
    bool hasNextNode() const { return m_next != nullptr; }
    bool hasPreviousNode() const;
    void setToStart();
    void setToEnd() { m_next = nullptr; }

private:
    ZRPtr<ZRNodeIterable> m_iterable;
    ZRNode* m_next;
};

}  // namespace ZroCommon

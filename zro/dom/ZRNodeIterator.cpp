#include "zro/dom/ZRNodeIterator.h"

#include <utility>

#include "zro/dom/ZRNode.h"

namespace ZroCommon {

ZRNodeIterator::ZRNodeIterator(ZRNodeIterable* iterable)
    : m_iterable(iterable), m_next(iterable != nullptr ? iterable->getFirstNode() : nullptr) {}

ZRNodeIterator::ZRNodeIterator(ZRNode* node, ZRNode* start)
    : m_iterable(node != nullptr ? node->getDescendantNodes() : nullptr), m_next(start) {
    if (start == nullptr || m_iterable == nullptr) {
        setToStart();
    } else {
        m_next = m_iterable->getNextNode(start);
    }
}

ZRNode* ZRNodeIterator::nextNode() {
    if (m_next == nullptr) {
        return nullptr;
    }
    return std::exchange(m_next, m_iterable->getNextNode(m_next));
}

ZRNode* ZRNodeIterator::previousNode() {
    if (m_iterable == nullptr) {
        return nullptr;
    }
    m_next = m_next != nullptr ? m_iterable->getPreviousNode(m_next) : m_iterable->getLastNode();
    return m_next;
}

bool ZRNodeIterator::hasPreviousNode() const {
    return m_iterable != nullptr && m_next != m_iterable->getFirstNode();
}

void ZRNodeIterator::setToStart() {
    m_next = m_iterable != nullptr ? m_iterable->getFirstNode() : nullptr;
}

}  // namespace ZroCommon

#include "zro/dom/ZRNodeIterator.h"

#include <utility>

#include "zro/dom/ZRNode.h"

namespace ZroCommon {

ZRNodeIterator::ZRNodeIterator(ZRNodeIterable* iterable)
    : m_iterable(iterable), m_next(iterable->getFirstNode()) {}

ZRNodeIterator::ZRNodeIterator(ZRNode* node, ZRNode* start)
    : m_iterable(node->getDescendantNodes()),
      m_next(start != nullptr ? m_iterable->getNextNode(start) : m_iterable->getFirstNode()) {}

ZRNode* ZRNodeIterator::nextNode() {
    if (m_next == nullptr) {
        return nullptr;
    }
    return std::exchange(m_next, m_iterable->getNextNode(m_next));
}

ZRNode* ZRNodeIterator::previousNode() {
    m_next = m_next != nullptr ? m_iterable->getPreviousNode(m_next) : m_iterable->getLastNode();
    return m_next;
}

bool ZRNodeIterator::hasPreviousNode() const {
    return m_next != m_iterable->getFirstNode();
}

void ZRNodeIterator::setToStart() {
    m_next = m_iterable->getFirstNode();
}

}  // namespace ZroCommon

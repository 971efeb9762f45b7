#include "zro/dom/ZRTreeIterator.h"

#include "zro/dom/ZRNode.h"

namespace ZroCommon {

void ZRTreeIterator::setCurrentNode(ZRNode* node, bool atPost) {
    m_current = node;
    m_atPost = atPost;
}

void ZRTreeIterator::setToStart() {
    setCurrentNode(m_root, false);
}

void ZRTreeIterator::setToEnd() {
    setCurrentNode(m_root, true);
}

ZRNode* ZRTreeIterator::nextNode() {
    if (m_current == nullptr) {
        if (m_root == nullptr || m_atPost) {
            return nullptr;
        }
        m_current = m_root;
        if (m_order != POST_ORDER) {
            return m_current;
        }
    }
    while (!stepForward()) {
    }
    return m_current;
}

/// Goes to the next position. \return whether it is a visit, or the end
bool ZRTreeIterator::stepForward() {
    if (!m_atPost) {
        if (ZRNode* child = m_current->getFirstChild()) {
            m_current = child;
            return m_order != POST_ORDER;
        }
        m_atPost = true;
        return m_order == POST_ORDER
               || (m_order == PRE_AND_POST_ORDER && m_current->isElementNode());
    }
    if (m_current == m_root) {
        m_current = nullptr;
        return true;
    }
    if (ZRNode* next = m_current->getNextSibling()) {
        setCurrentNode(next, false);
        return m_order != POST_ORDER;
    }
    m_current = m_current->getParentNode();
    return m_current == nullptr || m_order != PRE_ORDER;
}

ZRNode* ZRTreeIterator::previousNode() {
    if (m_current == nullptr) {
        if (m_root == nullptr || !m_atPost) {
            return nullptr;
        }
        m_current = m_root;
        if (m_order != PRE_ORDER) {
            return m_current;
        }
    }
    while (!stepBack()) {
    }
    return m_current;
}

/// The mirror image of `stepForward`.
bool ZRTreeIterator::stepBack() {
    if (m_atPost) {
        if (ZRNode* child = m_current->getLastChild()) {
            m_current = child;
            return m_order != PRE_ORDER;
        }
        m_atPost = false;
        return m_order == PRE_ORDER
               || (m_order == PRE_AND_POST_ORDER && m_current->isElementNode());
    }
    if (m_current == m_root) {
        m_current = nullptr;
        return true;
    }
    if (ZRNode* previous = m_current->getPreviousSibling()) {
        setCurrentNode(previous, true);
        return m_order != PRE_ORDER;
    }
    m_current = m_current->getParentNode();
    return m_current == nullptr || m_order != POST_ORDER;
}

bool ZRTreeIterator::hasNextNode() const {
    if (m_root == nullptr) {
        return false;
    }
    if (m_current == nullptr) {
        return !m_atPost;
    }
    if (m_current == m_root) {
        return !m_atPost && m_root->hasChildNodes();
    }
    if (m_order != PRE_ORDER || (!m_atPost && m_current->hasChildNodes())) {
        return true;
    }
    for (ZRNode* node = m_current; node != nullptr && node != m_root;
         node = node->getParentNode()) {
        if (node->getNextSibling() != nullptr) {
            return true;
        }
    }
    return false;
}

bool ZRTreeIterator::hasPreviousNode() const {
    if (m_root == nullptr) {
        return false;
    }
    if (m_current == nullptr) {
        return m_atPost;
    }
    if (m_current == m_root) {
        return m_atPost && m_root->hasChildNodes();
    }
    if (m_order != POST_ORDER || (m_atPost && m_current->hasChildNodes())) {
        return true;
    }
    for (ZRNode* node = m_current; node != nullptr && node != m_root;
         node = node->getParentNode()) {
        if (node->getPreviousSibling() != nullptr) {
            return true;
        }
    }
    return false;
}

}  // namespace ZroCommon

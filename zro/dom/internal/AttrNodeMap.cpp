#include "zro/dom/internal/AttrNodeMap.h"

#include <algorithm>
#include <utility>

#include "zro/dom/internal/NodeSlab.h"

namespace ZroCommon::internal {
namespace {

// Up to here a walk is faster than a search.
constexpr int kIndexAbove = 16;

}  // namespace

AttrNodeMap::~AttrNodeMap() {
    close();
}

void* AttrNodeMap::operator new(std::size_t size) {  // NOLINT(misc-new-delete-overloads): sized
    return allocateNodeMemory(size);
}

void AttrNodeMap::operator delete(void* memory, std::size_t size) {
    freeNodeMemory(memory, size);
}

void AttrNodeMap::close() {
    m_index.reset();
    m_count = 0;
    m_last = nullptr;
    m_owner = nullptr;
    ZRAttr* attr = std::exchange(m_first, nullptr);
    while (attr != nullptr) {
        ZRAttr* next = std::exchange(attr->m_nextAttribute, nullptr);
        attr->m_previous = nullptr;
        attr->m_parent = nullptr;
        if (attr->getRefCount() > 1) {
            attr->forgetDyingDocument();
        }
        attr->release();
        attr = next;
    }
}

/// Those of this map are attributes, which need not be asked.
bool AttrNodeMap::isAttribute(const ZRNode* node) const {
    return node != nullptr && (holds(*node) || node->isA(ZRAttr::getStaticTypeID()));
}

ZRNode* AttrNodeMap::getNextNode(ZRNode* node) {
    return isAttribute(node) ? static_cast<ZRAttr*>(node)->m_nextAttribute : nullptr;
}

ZRNode* AttrNodeMap::getPreviousNode(ZRNode* node) {
    return isAttribute(node) ? node->m_previous : nullptr;
}

ZRNode* AttrNodeMap::item(int index) {
    if (index < 0 || index >= m_count) {
        return nullptr;
    }
    const int fromEnd = m_count - 1 - index;
    if (m_index && std::min(index, fromEnd) > kIndexAbove) {
        if (ZRAttr* const* order = m_index->order(*m_first, static_cast<std::size_t>(m_count))) {
            return order[index];
        }
    }
    ZRNode* node = index < fromEnd ? m_first : m_last;
    for (int steps = std::min(index, fromEnd); steps > 0; --steps) {
        node = index < fromEnd ? static_cast<ZRAttr*>(node)->m_nextAttribute : node->m_previous;
    }
    return node;
}

ZRAttr* AttrNodeMap::find(ZRName localName) const {
    if (m_index) {
        return m_index->find(localName);
    }
    ZRAttr* attr = m_first;
    while (attr != nullptr && attr->m_localName != localName) {
        attr = attr->m_nextAttribute;
    }
    return attr;
}

ZRAttr* AttrNodeMap::find(ZRName namespaceUri, ZRName localName) const {
    if (m_index) {
        return m_index->find(namespaceUri, localName);
    }
    ZRAttr* attr = m_first;
    while (attr != nullptr
           && (attr->m_localName != localName || attr->m_namespaceUri != namespaceUri)) {
        attr = attr->m_nextAttribute;
    }
    return attr;
}

bool AttrNodeMap::holds(const ZRNode& node) const {
    // A child of the element is in a ring and so has a next sibling.
    return node.m_parent == m_owner && m_owner != nullptr && node.m_next == nullptr
           && (node.m_previous != nullptr || m_first == &node);
}

ZRAttr& AttrNodeMap::requireAddable(ZRNode* node, ErrorSite site) const {
    if (node == nullptr) {
        throwLibraryError(LibraryError::NullArgument, site);
    }
    if (m_owner == nullptr || node->m_ownerDocument != m_owner->m_ownerDocument) {
        throwLibraryError(LibraryError::WrongDocument, site);
    }
    if (!node->isA(ZRAttr::getStaticTypeID())) {
        throwLibraryError(LibraryError::NotAnAttribute, site);
    }
    if (node->m_parent != nullptr && node->m_parent != m_owner) {
        throwLibraryError(LibraryError::AttributeInUse, site);
    }
    return static_cast<ZRAttr&>(*node);
}

ZRPtr<ZRNode> AttrNodeMap::setNamedItem(ZRNode* node) {
    ZRAttr& attr = requireAddable(node, ErrorSite::AttrNodeMapSetNamedItem);
    return place(attr, find(attr.getLocalName()));
}

ZRPtr<ZRNode> AttrNodeMap::setNamedItemNS(ZRNode* node) {
    ZRAttr& attr = requireAddable(node, ErrorSite::AttrNodeMapSetNamedItemNS);
    return place(attr, find(attr.getNamespaceUri(), attr.getLocalName()));
}

ZRPtr<ZRNode> AttrNodeMap::place(ZRAttr& attr, ZRAttr* old) {
    if (old == &attr) {
        return nullptr;
    }
    const ZRPtr<ZRAttr> hold(&attr);
    if (holds(attr)) {
        remove(attr);
    } else if (attr.m_parent != nullptr) {
        ZRNode::leaveOldParent(attr);
    }
    if (old != nullptr) {
        return replace(attr, *old);
    }
    append(hold);
    return nullptr;
}

ZRPtr<ZRNode> AttrNodeMap::replace(ZRAttr& attr, ZRAttr& old) {
    noteNames(attr);
    try {
        if (m_index) {
            m_index->replace(old, attr);
        }
    } catch (...) {
        m_index.reset();  // walks find everything, too
        throw;
    }
    attr.addRef();
    attr.m_parent = m_owner;
    attr.m_nextAttribute = std::exchange(old.m_nextAttribute, nullptr);
    attr.m_previous = std::exchange(old.m_previous, nullptr);
    if (attr.m_nextAttribute != nullptr) {
        attr.m_nextAttribute->m_previous = &attr;
    } else {
        m_last = &attr;
    }
    auto* previous = static_cast<ZRAttr*>(attr.m_previous);
    (previous != nullptr ? previous->m_nextAttribute : m_first) = &attr;
    old.m_parent = nullptr;
    return ZRPtr<ZRNode>::adopt(&old);
}

void AttrNodeMap::append(ZRPtr<ZRAttr> attr) {
    noteNames(*attr);
    appendNamed(std::move(attr));
}

void AttrNodeMap::appendNamed(ZRPtr<ZRAttr> attr) {
    if (m_index || m_count >= kIndexAbove) {  // an index outlives the size that called for it
        addToIndex(*attr);
    }
    linkLast(*attr.detach());
}

void AttrNodeMap::noteNames(ZRAttr& attr) {
    attr.m_localName = attr.getLocalName();
    attr.m_namespaceUri = attr.getNamespaceUri();
}

void AttrNodeMap::addToIndex(ZRAttr& attr) {
    try {
        if (!m_index) {
            m_index = std::make_unique<AttrIndex>();
            for (ZRAttr* known = m_first; known != nullptr; known = known->m_nextAttribute) {
                m_index->append(*known);
            }
        }
        m_index->append(attr);
    } catch (...) {
        m_index.reset();  // walks find everything, too
        throw;
    }
}

void AttrNodeMap::linkLast(ZRAttr& attr) {
    attr.m_parent = m_owner;
    attr.m_previous = m_last;
    (m_last != nullptr ? m_last->m_nextAttribute : m_first) = &attr;
    m_last = &attr;
    ++m_count;
}

void AttrNodeMap::unlink(ZRAttr& attr) {
    ZRAttr* next = std::exchange(attr.m_nextAttribute, nullptr);
    ZRNode* previous = std::exchange(attr.m_previous, nullptr);
    if (next != nullptr) {
        next->m_previous = previous;
    } else {
        m_last = static_cast<ZRAttr*>(previous);
    }
    (previous != nullptr ? static_cast<ZRAttr*>(previous)->m_nextAttribute : m_first) = next;
    attr.m_parent = nullptr;
    --m_count;
}

ZRPtr<ZRAttr> AttrNodeMap::remove(ZRAttr& attr) {
    if (m_index) {
        m_index->remove(attr);
    }
    unlink(attr);
    return ZRPtr<ZRAttr>::adopt(&attr);
}

ZRPtr<ZRNode> AttrNodeMap::removeNamedItem(ZRName name) {
    ZRAttr* attr = find(name);
    return attr != nullptr ? remove(*attr) : nullptr;
}

ZRPtr<ZRNode> AttrNodeMap::removeNamedItemNS(ZRName namespaceUri, ZRName name) {
    ZRAttr* attr = find(namespaceUri, name);
    return attr != nullptr ? remove(*attr) : nullptr;
}

}  // namespace ZroCommon::internal

// How nodes are linked into a tree and out of it.
#include "zro/dom/ZRNode.h"

#include <cassert>

#include "zro/dom/ZRDocument.h"
#include "zro/dom/ZRElement.h"
#include "zro/dom/ZRTreeCheck.h"
#include "zro/dom/internal/AttrNodeMap.h"
#include "zro/foundation/internal/Raise.h"

namespace ZroCommon {

using internal::ErrorSite;
using internal::LibraryError;
using internal::throwLibraryError;

namespace {

void requireNode(const ZRNode* node, ErrorSite site, const char16_t* name) {
    if (node == nullptr) {
        throwLibraryError(LibraryError::NullArgument, site, name);
    }
}

void assertNotUnderItself([[maybe_unused]] const ZRNode& child) {
    assert(!ZRTreeCheck::areAssertionsOn() || ZRTreeCheck::findCycle(&child) == nullptr);
}

}  // namespace

ZRNode* ZRNode::insertBefore(ZRNode* newChild, ZRNode* refChild) {
    requireNode(newChild, ErrorSite::NodeInsertBefore, u"newChild");
    if (refChild == nullptr) {
        return appendChild(newChild);
    }
    if (!isChild(*refChild)) {
        throwLibraryError(LibraryError::NotAChild, ErrorSite::NodeInsertBefore, u"refChild");
    }
    if (newChild == refChild) {
        return newChild;
    }
    if (!isFromSameDocument(*newChild)) {
        throwLibraryError(LibraryError::WrongDocument, ErrorSite::NodeInsertBefore, u"newChild");
    }
    ZRPtr<ZRNode> hold(newChild);
    if (newChild->m_parent != nullptr) {
        const ZRPtr<ZRNode> holdRef(refChild);
        leaveOldParent(*newChild);
        if (!isChild(*refChild)) {
            throwLibraryError(LibraryError::NotAChild, ErrorSite::NodeInsertBefore, u"refChild");
        }
    }
    linkBefore(*newChild, refChild);
    return hold.detach();
}

ZRPtr<ZRNode> ZRNode::replaceChild(ZRNode* newChild, ZRNode* oldChild) {
    requireNode(newChild, ErrorSite::NodeReplaceChild, u"newChild");
    requireNode(oldChild, ErrorSite::NodeReplaceChild, u"oldChild");
    if (!isChild(*oldChild)) {
        throwLibraryError(LibraryError::NotAChild, ErrorSite::NodeReplaceChild, u"oldChild");
    }
    if (newChild == oldChild) {
        return oldChild;
    }
    if (!isFromSameDocument(*newChild)) {
        throwLibraryError(LibraryError::WrongDocument, ErrorSite::NodeReplaceChild, u"newChild");
    }
    ZRPtr<ZRNode> hold(newChild);
    if (newChild->m_parent != nullptr) {
        const ZRPtr<ZRNode> holdOld(oldChild);
        leaveOldParent(*newChild);
        if (!isChild(*oldChild)) {
            throwLibraryError(LibraryError::NotAChild, ErrorSite::NodeReplaceChild, u"oldChild");
        }
    }
    linkInPlaceOf(*hold.detach(), *oldChild);
    return ZRPtr<ZRNode>::adopt(oldChild);
}

ZRPtr<ZRNode> ZRNode::removeChild(ZRNode* oldChild) {
    requireNode(oldChild, ErrorSite::NodeRemoveChild, u"oldChild");
    if (oldChild->m_parent != this) {
        throwLibraryError(LibraryError::NotAChild, ErrorSite::NodeRemoveChild, u"oldChild");
    }
    if (!isChild(*oldChild)) {  // an attribute on its way to another place
        return static_cast<ZRElement*>(this)->removeAttributeNode(static_cast<ZRAttr*>(oldChild));
    }
    unlink(*oldChild);
    return ZRPtr<ZRNode>::adopt(oldChild);
}

ZRNode* ZRNode::appendChild(ZRNode* newChild) {
    requireNode(newChild, ErrorSite::NodeAppendChild, u"newChild");
    if (!isFromSameDocument(*newChild)) {
        throwLibraryError(LibraryError::WrongDocument, ErrorSite::NodeAppendChild, u"newChild");
    }
    ZRPtr<ZRNode> hold(newChild);
    leaveOldParent(*newChild);
    linkBefore(*newChild, nullptr);
    return hold.detach();
}

ZRNode* ZRNode::appendChildEx(ZRNode* newChild) {
    return appendChild(newChild);
}

ZRNode* ZRNode::appendChildText(const UnicodeString& text) {
    ZRDocument* document = getDocument();
    const ZRPtr<ZRNode> node =
        document != nullptr ? document->createTextNodeElement(text, this) : nullptr;
    return node.get() != nullptr ? appendChild(node) : nullptr;
}

/// Documents are never put into a tree, not even into another document, whose owner is the same
/// null.
bool ZRNode::isFromSameDocument(const ZRNode& node) const {
    if (node.m_ownerDocument == nullptr && node.getNodeType() == ZRNodeTypeDocument) {
        return false;
    }
    return node.m_ownerDocument == m_ownerDocument || node.m_ownerDocument == this;
}

/// An attribute has its element as parent without being in the ring of its children.
bool ZRNode::isChild(const ZRNode& node) const {
    return node.m_parent == this && node.m_next != nullptr;
}

/// A derived class may do something else in its `removeChild`, even to what is around the node.
/// What it has left linked is taken out all the same.
void ZRNode::leaveOldParent(ZRNode& node) {
    if (node.m_parent == nullptr) {
        return;
    }
    node.m_parent->removeChild(&node);
    if (ZRNode* parent = node.m_parent) {
        if (parent->isChild(node)) {
            parent->unlink(node);
            node.release();  // the caller has another reference
        } else {
            auto& element = static_cast<ZRElement&>(*parent);
            element.ZRElement::removeAttributeNode(static_cast<ZRAttr*>(&node));
        }
    }
}

void ZRNode::linkBefore(ZRNode& child, ZRNode* refChild) {
    child.m_parent = this;
    assertNotUnderItself(child);
    if (m_lastChild == nullptr) {
        child.m_next = &child;
        m_lastChild = &child;
        return;
    }
    ZRNode* next = refChild != nullptr ? refChild : m_lastChild->m_next;
    ZRNode* previous = refChild != nullptr ? refChild->m_previous : m_lastChild;
    child.m_next = next;
    child.m_previous = previous;
    (previous != nullptr ? previous : m_lastChild)->m_next = &child;
    if (refChild != nullptr) {
        refChild->m_previous = &child;
    } else {
        m_lastChild = &child;
    }
}

void ZRNode::linkInPlaceOf(ZRNode& child, ZRNode& oldChild) {
    ZRNode* next = oldChild.m_next;
    child.m_parent = this;
    assertNotUnderItself(child);
    child.m_previous = oldChild.m_previous;
    child.m_next = next == &oldChild ? &child : next;
    (oldChild.m_previous != nullptr ? oldChild.m_previous : m_lastChild)->m_next = &child;
    if (m_lastChild == &oldChild) {
        m_lastChild = &child;
    } else {
        next->m_previous = &child;
    }
    oldChild.clearLinks();
}

void ZRNode::unlink(ZRNode& child) {
    ZRNode* next = child.m_next;
    ZRNode* previous = child.m_previous;
    (previous != nullptr ? previous : m_lastChild)->m_next = next;
    if (m_lastChild != &child) {
        next->m_previous = previous;
    } else {
        m_lastChild = previous;
    }
    child.clearLinks();
}

void ZRNode::clearLinks() {
    m_parent = nullptr;
    m_next = nullptr;
    m_previous = nullptr;
}

}  // namespace ZroCommon

#pragma once

#include <cstddef>
#include <cstdint>

#include "zro/foundation/Export.h"
#include "zro/foundation/ZRPtr.h"
#include "zro/foundation/ZRRCObject.h"
#include "zro/values/ZRValue.h"
#include "zro/vocabulary/ZRName.h"

namespace ZroCommon {

class ZRDocument;
class ZRNamedNodeMap;
class ZRNode;
class ZRNodeIterator;
class ZRNodeList;

namespace internal {
class AttrNodeMap;
class PlainBuilder;
}  // namespace internal

/// What a node is; the numbers are those of the DOM.
enum ZRNodeType : std::uint8_t {
    ZRNodeTypeElement = 1,
    ZRNodeTypeAttribute = 2,
    ZRNodeTypeText = 3,
    ZRNodeTypeProcessingInstruction = 7,
    ZRNodeTypeDocument = 9,
    ZRNodeTypeDocumentFragment = 11,
};

/// A node of the document tree, the base that an engine derives its own nodes from.
///
/// A parent holds one reference on each child; everything else that leads from node to node is a
/// plain pointer, the one to the document too, so the document has to outlive the use of its nodes.
/// A tree may be read by several threads as long as none changes it and nothing is left to load;
/// a map of attributes that `getAttributes` makes then is made once.
///
/// A tree can be incomplete while it is read (`ZRDocument::setPullMode`). `hasChildNodes`,
/// `getFirstChild`, `getLastChild` and `getNextSibling`, and all that is built on them, then load
/// what they need, and so pass on the parser's errors. The `...Fast` forms see what is there and
/// never load: they are for code that runs during loading.
///
/// There is no check of node types and none for circles: any node may be put under any other, but a
/// node under its own descendant makes walks endless.
class ZRO_API ZRNode : public ZRRCObject {
public:
    /// Flags of `getFlag`; all other bits are free for derived classes.
    static constexpr int kLoading = 0x1;       ///< open in the parser, may get more children
    static constexpr int kLoaded = 0x2;        ///< finished by the parser
    static constexpr int kComplemental = 0x4;  ///< inserted by a derived layer, not in the source

    ZRNode(const ZRNode&) = delete;
    ZRNode& operator=(const ZRNode&) = delete;

    static unsigned int getStaticTypeID() { return 0x74DC3393U; }
    unsigned int getTypeID() const override;
    bool isA(unsigned int typeID) const override;
    UnicodeString getTypeName() const override;

    /// "prefix:local", or the local name alone, for people: code compares `getLocalName`.
    virtual ZRName getNodeName() const;
    virtual ZRName getLocalName() const = 0;  ///< without prefix; `getNamespaceUri` goes with it
    virtual ZRName getNamespaceUri() const;
    virtual ZRName getPrefix() const;
    /// Does nothing but on elements and attributes.
    virtual void setPrefix(ZRName prefix);
    /// Null but for text and attributes.
    virtual ZRValue getNodeValue() const;
    /// \throws ZRError  0x080B where the node has no value
    virtual void setNodeValue(const ZRValue& value);
    virtual ZRNodeType getNodeType() const = 0;
    /// Of an attribute the element that has it.
    virtual ZRNode* getParentNode() const;
    /// Loads at most one node to find out.
    virtual bool hasChildNodes();
    /// The children as a live list. It must not outlive the node.
    virtual ZRPtr<ZRNodeList> getChildNodes();
    /// Loads at most one node.
    virtual ZRNode* getFirstChild();
    /// Loads the node to its end.
    virtual ZRNode* getLastChild();
    virtual ZRNode* getPreviousSibling() const;
    /// Loads until there is a next sibling, or the parent ends.
    virtual ZRNode* getNextSibling();
    /// Null for the document itself.
    virtual ZRDocument* getOwnerDocument() const;

    /// Puts a node before a child, moving it from where it is.
    /// \param refChild  null to append
    /// \return `newChild`
    /// \throws ZRError  0x0803 for a null `newChild`, 0x0809 when `refChild` is no child of this
    ///                  node, 0x0806 for a node of another document, and for any document
    virtual ZRNode* insertBefore(ZRNode* newChild, ZRNode* refChild);
    /// Puts a node in the place of a child. \return `oldChild` \throws ZRError as `insertBefore`
    virtual ZRPtr<ZRNode> replaceChild(ZRNode* newChild, ZRNode* oldChild);
    /// \return `oldChild`, with the reference that this node had
    /// \throws ZRError  0x0803, 0x0809 as above
    virtual ZRPtr<ZRNode> removeChild(ZRNode* oldChild);
    /// \return `newChild` \throws ZRError 0x0803, 0x0806 as above
    virtual ZRNode* appendChild(ZRNode* newChild);

    /// The attributes of an element, as a live map that the element owns; else null.
    virtual ZRNamedNodeMap* getAttributes();
    virtual bool hasAttributes() const;
    /// A copy without a parent; null where the class has none.
    /// \param deep  with copies of all descendants
    virtual ZRPtr<ZRNode> cloneNode(bool deep);

    /// A prefix that stands for the namespace at this place, or the empty name.
    virtual ZRName lookupPrefix(ZRName namespaceUri);
    /// Whether the empty prefix stands for the namespace at this place.
    virtual bool isDefaultNamespace(ZRName namespaceUri);
    /// What the prefix stands for at this place, or the empty name.
    virtual ZRName lookupNamespaceUri(ZRName prefix);

    /// Called before a node's attributes are written, for classes that make some on demand.
    virtual void finishAttributes();

    virtual bool isElementNode() const;
    virtual bool isText() const;
    // For the classes of a layer above; false here.
    virtual bool isFO() const;
    virtual bool isYAVO() const;
    virtual bool isArea() const;
    virtual bool isBlock() const;
    virtual bool isInline() const;
    virtual bool isInlineBlock() const;
    virtual bool isNeutral() const;
    virtual bool isOutOfLine() const;

    /// Text of a text node, value of an attribute as text; else empty.
    virtual UnicodeString getText() const;
    /// Does nothing but on text and attributes.
    virtual void setText(const UnicodeString& text);

    /// Live lists in document order, this node excluded. They hold no cache: walk them with an
    /// iterator, not by index. They must not outlive the node.
    /// \param name  a local name; "*" for all elements
    virtual ZRPtr<ZRNodeList> getElementsByTagName(ZRName name);
    virtual ZRPtr<ZRNodeList> getElementsByTagNameNS(ZRName namespaceUri, ZRName name);
    virtual ZRPtr<ZRNodeList> getDescendantNodes();
    /// An iterator over all descendants.
    virtual ZRNodeIterator getIterator();

    /// How loading appends a child; calls `appendChild`. A derived class may reject the child
    /// (null), put it elsewhere, or answer with another element that takes its place: it gets the
    /// content, and the flag `kLoading` until its end. It must not load.
    virtual ZRNode* appendChildEx(ZRNode* newChild);
    /// Appends what `ZRDocument::createTextNodeElement` makes of the text; null when that is
    /// nothing.
    virtual ZRNode* appendChildText(const UnicodeString& text);

    /// Line of the start tag, from 1, or -1. What has no line of its own takes that of the nearest
    /// previous sibling that has one, then of its parent.
    virtual int getSourceLineNumber() const;
    virtual void setSourceLineNumber(int line);
    virtual int getSourceColumnNumber() const;
    virtual void setSourceColumnNumber(int column);

    /// Whether any bit of the mask is set.
    bool getFlag(int mask) const { return (m_flags & static_cast<std::uint32_t>(mask)) != 0; }
    void setFlag(int mask, bool on) {
        const auto bits = static_cast<std::uint32_t>(mask);
        m_flags = on ? m_flags | bits : m_flags & ~bits;
    }
    bool isLoading() const { return getFlag(kLoading); }
    /// True for what the parser made, finished or not; false for what was built by hand.
    bool isLoaded() const { return getFlag(kLoading | kLoaded); }

    ZRNode* getParentNodeFast() const { return m_parent; }
    /// The nearest ancestor without `kComplemental`.
    ZRNode* getParentNodeUncomplemental() const;
    bool hasChildNodesFast() const { return m_lastChild != nullptr; }
    ZRNode* getFirstChildFast() const {
        return m_lastChild != nullptr ? m_lastChild->m_next : nullptr;
    }
    ZRNode* getLastChildFast() const { return m_lastChild; }
    ZRNode* getNextSiblingFast() const {
        return m_parent != nullptr && m_parent->m_lastChild != this ? m_next : nullptr;
    }

    bool isDescendantOf(const ZRNode* node) const;
    bool isDescendantOrSelfOf(const ZRNode* node) const;
    /// Whether this node comes after the other in document order and is none of its descendants.
    bool isFollowingOf(const ZRNode* node) const;
    /// Whether this node comes before the other and is none of its ancestors.
    bool isPrecedingOf(const ZRNode* node) const;
    int countPrecedingSiblings() const;
    int countFollowingSiblings();
    ZRNode* getChildNodeByTypeID(unsigned int typeID);
    ZRNode* getAncestorByTypeID(unsigned int typeID) const;
    /// The lowest node that has both below it; null when there is none.
    ZRNode* getCommonAncestor(const ZRNode* node) const;
    /// The same where one of the two may be the answer.
    ZRNode* getCommonAncestorOrSelf(ZRNode* node) const;
    /// Number of ancestors below the document: 0 for the document's children.
    int getNodeDepth() const;
    int getChildNodeCount();
    /// By local name.
    ZRNode* getChildNodeByName(ZRName name);
    ZRNode* getChildNodeByNameNS(ZRName namespaceUri, ZRName name);
    ZRNode* getAncestorByName(ZRName name) const;
    ZRNode* getAncestorOrSelfByName(ZRName name);
    ZRNode* getAncestorByNameNS(ZRName namespaceUri, ZRName name) const;

    /// Of an element the text of all nodes of type `ZRNodeTypeText` below it; processing
    /// instructions and elements that stand for text are none. Of anything else its own text.
    /// \throws ZRError 0x0801 when it is too long for a text
    UnicodeString getInnerText();

    /// Lets go of all children.
    void removeAllChildNodes();
    /// Takes the whole subtree apart without atomic counting: for a tree that no other thread has
    /// anything of. Nodes that are held elsewhere survive, each alone.
    /// \return number of nodes below this one
    long deleteAllChildNodes();

    /// Nodes lie in slabs, by size; they may be freed one by one by any thread.
    static void* operator new(std::size_t size);  // NOLINT(misc-new-delete-overloads): sized, below
    static void operator delete(void* memory, std::size_t size);

protected:
    explicit ZRNode(ZRDocument* ownerDocument) : m_ownerDocument(ownerDocument) {}
    ~ZRNode() override {
        if (m_lastChild != nullptr) {
            releaseChildren();
        }
    }

    /// Lets go of the children of a document that dies; those held elsewhere forget the document.
    void releaseTreeOfDocument();

private:
    friend class internal::AttrNodeMap;
    friend class internal::PlainBuilder;

    bool isFromSameDocument(const ZRNode& node) const;
    ZRDocument* getDocument();
    ZRNode* loadOneNode();

    // Links; in ZRNodeEdit.cpp and ZRNodeRelease.cpp.
    bool isChild(const ZRNode& node) const;
    static void leaveOldParent(ZRNode& node);
    void linkBefore(ZRNode& child, ZRNode* refChild);
    void linkInPlaceOf(ZRNode& child, ZRNode& oldChild);
    void unlink(ZRNode& child);
    void clearLinks();
    void releaseChildren();
    ZRNode* takeChildren(ZRNode* behind);
    void releaseAsChain(const ZRDocument* dyingDocument);
    void forgetDyingDocument();
    void forgetDocument();
    static ZRNode* nextInSubtree(const ZRNode& node, const ZRNode& root);
    ZRNode* deepestLast();

    struct Chain;
    struct Fork;
    Fork forkWith(const ZRNode* other) const;

    std::uint32_t m_flags = 0;
    ZRNode* m_parent = nullptr;
    ZRNode* m_next = nullptr;      // a ring: of the last child the first one
    ZRNode* m_previous = nullptr;  // no ring: null at the first child
    ZRNode* m_lastChild = nullptr;
    ZRDocument* m_ownerDocument;
};

}  // namespace ZroCommon

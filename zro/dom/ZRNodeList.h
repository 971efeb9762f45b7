#pragma once

#include "zro/foundation/Export.h"
#include "zro/foundation/ZRPtr.h"
#include "zro/foundation/ZRRCObject.h"
#include "zro/vocabulary/ZRName.h"

namespace ZroCommon {

class ZRNode;
class ZRNodeIterator;

/// A row of nodes that can be walked in both directions. Live: a walk sees the tree as it is.
class ZRO_API ZRNodeIterable : public ZRRCObject {
public:
    static unsigned int getStaticTypeID() { return 0x548EE986U; }
    unsigned int getTypeID() const override;
    bool isA(unsigned int typeID) const override;
    UnicodeString getTypeName() const override;

    /// An iterator at the start, which holds this object.
    virtual ZRNodeIterator getIterator();

    /// Each null when there is no such node, or none is given.
    virtual ZRNode* getFirstNode() = 0;
    virtual ZRNode* getLastNode() = 0;
    virtual ZRNode* getNextNode(ZRNode* node) = 0;
    virtual ZRNode* getPreviousNode(ZRNode* node) = 0;

protected:
    ~ZRNodeIterable() override;
};

/// A live list of nodes without any cache: both operations walk from the start each time, and load
/// what is not loaded.
class ZRO_API ZRNodeList : public ZRNodeIterable {
public:
    static unsigned int getStaticTypeID() { return 0x316E063EU; }
    unsigned int getTypeID() const override;
    /// On purpose: false for the ID of `ZRNodeIterable`.
    bool isA(unsigned int typeID) const override;
    UnicodeString getTypeName() const override;

    virtual int getLength();
    /// Null outside of 0 to the length.
    virtual ZRNode* item(int index);

protected:
    ~ZRNodeList() override;
};

/// The attributes of an element, in the order of their insertion. Owned by the element; a map that
/// is held longer is empty.
class ZRO_API ZRNamedNodeMap : public ZRNodeIterable {
public:
    static unsigned int getStaticTypeID() { return 0x953D7483U; }
    unsigned int getTypeID() const override;
    /// On purpose: false for the ID of `ZRNodeIterable`.
    bool isA(unsigned int typeID) const override;
    UnicodeString getTypeName() const override;

    virtual int getLength() = 0;
    virtual ZRNode* item(int index) = 0;

    /// The first node of that local name, in whatever namespace; null when there is none.
    virtual ZRNode* getNamedItem(ZRName name) = 0;
    virtual ZRNode* getNamedItemNS(ZRName namespaceUri, ZRName name) = 0;

    /// Adds an attribute, or puts it in the place of the one that the search by its local name
    /// finds. \return what it replaced, or null
    /// \throws ZRError  0x0803 for null, 0x0806 for an attribute of another document, 0x0807 for
    ///                  what is no attribute, 0x0808 for one that another node has
    virtual ZRPtr<ZRNode> setNamedItem(ZRNode* node) = 0;
    /// The same with the search by namespace and local name.
    virtual ZRPtr<ZRNode> setNamedItemNS(ZRNode* node) = 0;

    /// \return what was removed, or null
    virtual ZRPtr<ZRNode> removeNamedItem(ZRName name) = 0;
    virtual ZRPtr<ZRNode> removeNamedItemNS(ZRName namespaceUri, ZRName name) = 0;

protected:
    ~ZRNamedNodeMap() override;
};

}  // namespace ZroCommon

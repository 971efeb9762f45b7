#pragma once

#include <memory>

#include "zro/dom/ZRAttr.h"
#include "zro/dom/ZRNodeList.h"
#include "zro/dom/internal/AttrIndex.h"
#include "zro/foundation/internal/Raise.h"

namespace ZroCommon::internal {

/// The attributes of one element: a list that runs through the attributes themselves, and above 16
/// of them an index by name.
class AttrNodeMap final : public ZRNamedNodeMap {
public:
    static ZRPtr<AttrNodeMap> make(ZRNode* owner) {
        return ZRPtr<AttrNodeMap>::adopt(new AttrNodeMap(owner));
    }

    ZRNode* getFirstNode() override { return m_first; }
    ZRNode* getLastNode() override { return m_last; }
    ZRNode* getNextNode(ZRNode* node) override;
    ZRNode* getPreviousNode(ZRNode* node) override;
    int getLength() override { return m_count; }
    ZRNode* item(int index) override;
    ZRNode* getNamedItem(ZRName name) override { return find(name); }
    ZRNode* getNamedItemNS(ZRName namespaceUri, ZRName name) override {
        return find(namespaceUri, name);
    }
    ZRPtr<ZRNode> setNamedItem(ZRNode* node) override;
    ZRPtr<ZRNode> setNamedItemNS(ZRNode* node) override;
    ZRPtr<ZRNode> removeNamedItem(ZRName name) override;
    ZRPtr<ZRNode> removeNamedItemNS(ZRName namespaceUri, ZRName name) override;

    bool isEmpty() const { return m_count == 0; }
    ZRAttr* first() const { return m_first; }
    static ZRAttr* next(const ZRAttr& attr) { return attr.m_nextAttribute; }
    /// First of that local name.
    ZRAttr* find(ZRName localName) const;
    ZRAttr* find(ZRName namespaceUri, ZRName localName) const;
    bool holds(const ZRNode& node) const;

    /// Adds an attribute that nothing else has.
    void append(ZRPtr<ZRAttr> attr);
    /// The same for one whose stored names are its names.
    void appendNamed(ZRPtr<ZRAttr> attr);
    /// Takes out an attribute that this map holds.
    ZRPtr<ZRAttr> remove(ZRAttr& attr);
    /// Lets go of all attributes and of the element, which dies.
    void close();

    static void* operator new(std::size_t size);  // NOLINT(misc-new-delete-overloads): sized, below
    static void operator delete(void* memory, std::size_t size);

private:
    explicit AttrNodeMap(ZRNode* owner) : m_owner(owner) { startRefCount(1); }
    ~AttrNodeMap() override;

    bool isAttribute(const ZRNode* node) const;
    ZRAttr& requireAddable(ZRNode* node, ErrorSite site) const;
    ZRPtr<ZRNode> place(ZRAttr& attr, ZRAttr* old);
    ZRPtr<ZRNode> replace(ZRAttr& attr, ZRAttr& old);
    void noteNames(ZRAttr& attr);
    void addToIndex(ZRAttr& attr);
    void linkLast(ZRAttr& attr);
    void unlink(ZRAttr& attr);

    int m_count = 0;
    ZRNode* m_owner;
    ZRAttr* m_first = nullptr;
    ZRAttr* m_last = nullptr;
    std::unique_ptr<AttrIndex> m_index;
};

}  // namespace ZroCommon::internal

// Edits in any order: every two bytes are an operation and the nodes it is about. The links, counts
// and copies of the tree are checked behind each, and its nodes held to plain lists of children.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include "zro/dom/ZRDocument.h"
#include "zro/dom/ZRDocumentFragment.h"
#include "zro/dom/ZRTextNode.h"
#include "zro/dom/ZRTreeIterator.h"
#include "zro/dom/internal/NamespaceTrail.h"
#include "zro/foundation/ZRError.h"

#include "fuzz/Input.h"

namespace ZroCommon::fuzzing {
namespace {

/// The children of each node as plain lists.
class Model {
public:
    const std::vector<ZRNode*>& childrenOf(const ZRNode& node) { return m_children[&node]; }

    void enter(ZRNode& parent, ZRNode& node, const ZRNode* before) {
        if (&node != before) {
            leave(node);
            auto& list = m_children[&parent];
            list.insert(std::find(list.begin(), list.end(), before), &node);
        }
    }

    void leave(const ZRNode& node) {
        for (auto& [parent, list] : m_children) {
            std::erase(list, &node);
        }
    }

    /// Empties a node, and those below when they are deleted. \return the number of those that go
    long empty(const ZRNode& node, bool deletes) {
        long count = 0;
        for (const ZRNode* child : std::exchange(m_children[&node], {})) {
            count += 1 + (deletes ? empty(*child, true) : 0);
        }
        return count;
    }

private:
    std::map<const ZRNode*, std::vector<ZRNode*>> m_children;
};

class Garden {
public:
    Garden() {
        for (std::size_t i = 0; i < m_nodes.size(); ++i) {
            m_nodes[i] = plant(i);
        }
    }

    void edit(std::uint8_t operation, std::uint8_t places) {
        const int kind = operation % 16;
        ZRNode& at = *m_nodes[places % kNodes];
        ZRNode& first = kind < 9 || at.isElementNode() ? at : *m_nodes[kElement];
        ZRNode& second = *m_nodes[places / kNodes % kNodes];
        ZRNode* third = m_nodes[operation / 16 % kNodes];
        m_name = static_cast<ZRNameEnum>(1 + operation / 16U * 2 + places / kNodes % 2);
        m_uri = static_cast<ZRNameEnum>(places / kNodes / 2 % 4);
        if (first.isDescendantOrSelfOf(&second) && (kind < 3 || kind == 13 || kind == 14)) {
            return;  // would close a circle
        }
        try {
            run(kind, first, second, third);
        } catch (const ZRError& error) {
            require(error.getErrorCategory() == ZRErrorCodeZROLIB);
        }
        for (const auto& node : m_nodes) {
            check(*node);
            checkNamespaces(*node);
        }
    }

private:
    static constexpr std::size_t kNodes = 12;
    static constexpr std::size_t kElement = 2;  // where one is

    ZRPtr<ZRNode> plant(std::size_t index) {
        const ZRName name(static_cast<ZRNameEnum>(1 + index / 2));
        switch (index % 6) {
        case 0: return m_document->createTextNode(u"text");
        case 1: return m_document->createAttributeNS(ZRName(), ZRName(), name);
        case 2: return m_document->createElement(name);
        case 3: return m_document->createDocumentFragment();
        default: return m_document->createElementNS(name, ZRName(), name);
        }
    }

    void run(int operation, ZRNode& first, ZRNode& second, ZRNode* third) {
        switch (operation) {
        case 0:
            require(first.appendChild(&second) == &second);
            return m_model.enter(first, second, nullptr);
        case 1:
            require(first.insertBefore(&second, third) == &second);
            return m_model.enter(first, second, third);
        case 2:
            require(first.replaceChild(&second, third).get() == third);
            m_model.enter(first, second, third);
            return third != &second ? m_model.leave(*third) : void();
        case 3: require(first.removeChild(&second).get() == &second); return m_model.leave(second);
        case 4:
            first.removeAllChildNodes();
            m_model.empty(first, false);
            return;
        case 5: return require(first.deleteAllChildNodes() == m_model.empty(first, true));
        case 6: return require(countNodes(first.cloneNode(true)) <= countNodes(&first));
        case 7: return require(first.isFollowingOf(&second) == second.isPrecedingOf(&first));
        case 8: first.getInnerText(); return;
        default: runOnElement(operation, first, second);
        }
    }

    void runOnElement(int operation, ZRNode& first, ZRNode& second) {
        auto& element = static_cast<ZRElement&>(first);
        ZRNamedNodeMap& map = *element.getAttributes();
        const ZRPtr<ZRNode> fresh = m_document->createAttributeNS(m_uri, ZRName(), m_name);
        const bool isFresh = second.getNodeType() != ZRNodeTypeAttribute && !m_uri.isEmpty();
        const ZRPtr<ZRNode> attr = isFresh ? fresh : ZRPtr<ZRNode>(&second);
        switch (operation) {
        case 9: declare(element); break;
        case 10: element.setAttribute(m_name, ZRValue(UnicodeString(u"value"))); break;
        case 11: setSeveral(element); break;
        case 12: element.removeAttribute(m_name); break;
        case 13: map.setNamedItem(attr); return m_model.leave(*attr);
        case 14: map.setNamedItemNS(attr); return m_model.leave(*attr);
        default: element.removeAttributeNS(m_uri, m_name); cut(map);
        }
    }

    void setSeveral(ZRElement& element) const {
        for (int next = 0; next < 8; ++next) {
            const auto name = static_cast<ZRNameEnum>(ZRNameEnum{m_name} + next);
            element.setAttributeEx(m_uri, ZRName(), name, u"a longer value");
        }
    }

    /// Of elements with a prefix and without, some declare what it stands for.
    void declare(ZRElement& element) const {
        const ZRName prefix = ZRNameEnum{m_name} % 2 != 0 ? ZRName(u"p") : ZRName();
        element.setPrefix(prefix);
        if (ZRNameEnum{m_name} % 3 != 0) {
            const UnicodeString name = prefix.isEmpty() ? u"xmlns" : u"xmlns:p";
            element.setAttributeNS(ZRName(), ZRName(name), ZRValue(m_uri));
        }
    }

    /// Now and then a map with an index becomes one without.
    void cut(ZRNamedNodeMap& map) const {
        while (m_uri.isEmpty() && map.getLength() > 8) {
            map.removeNamedItem(map.getLastNode()->getLocalName());
        }
    }

    static long countNodes(ZRNode* node) {
        return node != nullptr ? 1 + node->getDescendantNodes()->getLength() : 0;
    }

    void check(ZRNode& node) {
        const ZRNode* before = nullptr;
        ZRNode* at = node.getFirstChildFast();
        for (ZRNode* child : m_model.childrenOf(node)) {
            require(at == child && child->getParentNodeFast() == &node);
            require(child->getNodeType() == ZRNodeTypeAttribute
                    || child->getPreviousSibling() == before);
            before = child;
            at = child->getNextSiblingFast();
        }
        require(at == nullptr && node.getLastChildFast() == before);
        require(node.getRefCount() == (node.getParentNodeFast() != nullptr ? 2 : 1));
        if (node.hasAttributes()) {
            checkAttributes(node, *node.getAttributes());
        }
    }

    /// A walk finds the namespace of each element as the element itself does.
    static void checkNamespaces(ZRNode& root) {
        internal::NamespaceTrail trail;
        ZRTreeIterator walk(&root);
        while (ZRNode* node = walk.nextNode()) {
            if (node->isElementNode()) {
                require((walk.atPreVisit() ? trail.enter(*node) : trail.leave(*node))
                        == node->getNamespaceUri());
            }
        }
    }

    /// Order, counts and searches, which take the first that fits.
    void checkAttributes(const ZRNode& node, ZRNamedNodeMap& map) const {
        const ZRNode* named = nullptr;
        const ZRNode* qualified = nullptr;
        int place = 0;
        for (ZRNode* attr = map.getFirstNode(); attr != nullptr; attr = map.getNextNode(attr)) {
            require(map.item(place++) == attr);
            require(attr->getParentNodeFast() == &node);
            require(attr->getNextSiblingFast() == nullptr);
            const bool fits = attr->getLocalName() == m_name;
            named = fits && named == nullptr ? attr : named;
            qualified =
                fits && qualified == nullptr && attr->getNamespaceUri() == m_uri ? attr : qualified;
        }
        require(map.getLength() == place);
        require(map.getNamedItem(m_name) == named);
        require(map.getNamedItemNS(m_uri, m_name) == qualified);
    }

    ZRPtr<ZRDocument> m_document = new ZRDocument;
    std::array<ZRPtr<ZRNode>, kNodes> m_nodes;
    Model m_model;
    ZRName m_name;  // of the attribute that an edit is about
    ZRName m_uri;
};

}  // namespace
}  // namespace ZroCommon::fuzzing

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    ZroCommon::fuzzing::Garden garden;
    for (std::size_t i = 0; i + 1 < size && i < 4096; i += 2) {
        garden.edit(data[i], data[i + 1]);
    }
    return 0;
}

// Edits in any order: every two bytes are an operation and the nodes it is about. The links, counts
// and copies of the tree are checked behind each.
#include <array>
#include <cstddef>
#include <cstdint>

#include "zro/dom/ZRDocument.h"
#include "zro/dom/ZRDocumentFragment.h"
#include "zro/dom/ZRTextNode.h"
#include "zro/foundation/ZRError.h"

#include "fuzz/Input.h"

namespace ZroCommon::fuzzing {
namespace {

class Garden {
public:
    Garden() {
        for (std::size_t i = 0; i < m_nodes.size(); ++i) {
            m_nodes[i] = plant(i);
        }
    }

    void edit(std::uint8_t operation, std::uint8_t places) {
        ZRNode& first = *m_nodes[places % kNodes];
        ZRNode& second = *m_nodes[places / kNodes % kNodes];
        ZRNode* third = m_nodes[operation / 16 % kNodes];
        const int kind = operation % 16;
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
        }
    }

private:
    static constexpr std::size_t kNodes = 12;

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

    static void run(int operation, ZRNode& first, ZRNode& second, ZRNode* third) {
        switch (operation) {
        case 0: first.appendChild(&second); break;
        case 1: first.insertBefore(&second, third); break;
        case 2: first.replaceChild(&second, third); break;
        case 3: first.removeChild(&second); break;
        case 4: first.removeAllChildNodes(); break;
        case 5: first.deleteAllChildNodes(); break;
        case 6: require(countNodes(first.cloneNode(true)) <= countNodes(&first)); break;
        case 7: require(first.isFollowingOf(&second) == second.isPrecedingOf(&first)); break;
        case 8: first.getInnerText(); break;
        case 9: first.lookupNamespaceUri(second.getLocalName()); break;
        default: runOnElement(operation, first, second);
        }
    }

    static void runOnElement(int operation, ZRNode& first, ZRNode& second) {
        if (!first.isA(ZRElement::getStaticTypeID())) {
            return;
        }
        auto& element = static_cast<ZRElement&>(first);
        const ZRName name = second.getLocalName();
        switch (operation) {
        case 10: element.setAttribute(name, ZRValue(UnicodeString(u"value"))); break;
        case 11: element.setAttributeEx(name, ZRName(), name, u"a longer value"); break;
        case 12: element.removeAttribute(name); break;
        case 13: element.getAttributes()->setNamedItem(&second); break;
        case 14: element.getAttributes()->setNamedItemNS(&second); break;
        default: element.removeAttributeNS(name, name);
        }
    }

    static long countNodes(ZRNode* node) {
        return node != nullptr ? 1 + node->getDescendantNodes()->getLength() : 0;
    }

    static void check(ZRNode& node) {
        const ZRNode* before = nullptr;
        for (ZRNode* child = node.getFirstChildFast(); child != nullptr;
             child = child->getNextSiblingFast()) {
            require(child->getParentNodeFast() == &node);
            require(child->getNodeType() == ZRNodeTypeAttribute
                    || child->getPreviousSibling() == before);
            before = child;
        }
        require(node.getLastChildFast() == before);
        require(node.getRefCount() == (node.getParentNodeFast() != nullptr ? 2 : 1));
        if (!node.hasAttributes()) {
            return;
        }
        ZRNamedNodeMap& map = *node.getAttributes();
        for (ZRNode* attr = map.getFirstNode(); attr != nullptr; attr = map.getNextNode(attr)) {
            require(attr->getParentNodeFast() == &node);
            require(attr->getNextSiblingFast() == nullptr);
        }
    }

    ZRPtr<ZRDocument> m_document = new ZRDocument;
    std::array<ZRPtr<ZRNode>, kNodes> m_nodes;
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

// What prefixes mean at a node. Walks up in a loop: trees may be of any depth.
#include "zro/dom/ZRNode.h"

#include <optional>
#include <set>

#include "zro/dom/ZRDocument.h"
#include "zro/dom/ZRNodeList.h"
#include "zro/dom/internal/Element.h"
#include "zro/dom/internal/NamespaceTrail.h"

namespace ZroCommon {
namespace {

/// The first attribute of the element that fits, null when none does.
template <class Fits>
ZRNode* findAttribute(ZRNode& element, Fits fits) {
    ZRNamedNodeMap* attributes = element.hasAttributes() ? element.getAttributes() : nullptr;
    ZRNode* attr = attributes != nullptr ? attributes->getFirstNode() : nullptr;
    while (attr != nullptr && !fits(*attr)) {
        attr = attributes->getNextNode(attr);
    }
    return attr;
}

bool isDefaultDeclaration(const ZRNode& attr) {
    return attr.getLocalName() == ZRN_xmlns && attr.getPrefix().isEmpty();
}

bool isPrefixDeclaration(const ZRNode& attr) {
    return attr.getPrefix() == ZRN_xmlns;
}

bool isPrefixDeclarationOf(const ZRNode& attr, ZRName prefix) {
    return isPrefixDeclaration(attr) && attr.getLocalName() == prefix;
}

/// A plain element has none: it asks for it by the very look-up that runs here.
bool hasOwnNamespace(const ZRNode& element) {
    return !internal::isPlainElement(element) && !element.getNamespaceUri().isEmpty();
}

/// What the element itself says about the prefix.
std::optional<ZRName> bindingAt(ZRNode& element, ZRName prefix) {
    if (hasOwnNamespace(element) && element.getPrefix() == prefix) {
        return element.getNamespaceUri();
    }
    const ZRNode* attr = findAttribute(element, [prefix](const ZRNode& candidate) {
        return isPrefixDeclarationOf(candidate, prefix)
               || (prefix.isEmpty() && isDefaultDeclaration(candidate));
    });
    return attr != nullptr ? std::optional(ZRName(attr->getText())) : std::nullopt;
}

ZRNode* parentElement(const ZRNode& node) {
    ZRNode* parent = node.getParentNode();
    return parent != nullptr && parent->getNodeType() == ZRNodeTypeElement ? parent : nullptr;
}

/// The element whose scope a node lies in, null when it has none.
ZRNode* scopeOf(ZRNode& node) {
    switch (static_cast<int>(node.getNodeType())) {
    case ZRNodeTypeElement: return &node;
    case ZRNodeTypeDocument: return static_cast<ZRDocument&>(node).getDocumentElement();
    case ZRNodeTypeDocumentFragment:
    case 6:  // entities, document types and notations, should a derived class have them
    case 10:
    case 12: return nullptr;
    default: return parentElement(node);
    }
}

/// Searches a prefix upwards, past those that elements below have bound to something else.
class PrefixSearch {
public:
    explicit PrefixSearch(ZRName namespaceUri) : m_namespaceUri(namespaceUri) {}

    ZRName at(ZRNode& element) {
        if (hasOwnNamespace(element) && element.getNamespaceUri() == m_namespaceUri
            && !element.getPrefix().isEmpty()) {
            return element.getPrefix();
        }
        const ZRNode* attr = findAttribute(
            element, [&](const ZRNode& candidate) { return declares(element, candidate); });
        return attr != nullptr ? attr->getLocalName() : ZRName();
    }

    /// Notes the prefixes that the element binds.
    void leave(ZRNode& element) {
        if (hasOwnNamespace(element)) {
            m_bound.insert(element.getPrefix());
        }
        findAttribute(element, [this](const ZRNode& attr) {
            if (isPrefixDeclaration(attr)) {
                m_bound.insert(attr.getLocalName());
            }
            return false;
        });
    }

private:
    bool declares(ZRNode& element, const ZRNode& attr) const {
        return isPrefixDeclaration(attr) && m_bound.count(attr.getLocalName()) == 0
               && ZRName(attr.getText()) == m_namespaceUri
               && bindingAt(element, attr.getLocalName()) == m_namespaceUri;
    }

    ZRName m_namespaceUri;
    std::set<ZRNameEnum> m_bound;
};

}  // namespace

ZRName ZRNode::lookupNamespaceUri(ZRName prefix) {
    for (ZRNode* element = scopeOf(*this); element != nullptr; element = parentElement(*element)) {
        if (const auto namespaceUri = bindingAt(*element, prefix)) {
            return *namespaceUri;
        }
    }
    return {};
}

ZRName ZRNode::lookupPrefix(ZRName namespaceUri) {
    if (namespaceUri.isEmpty()) {
        return {};
    }
    PrefixSearch search(namespaceUri);
    for (ZRNode* element = scopeOf(*this); element != nullptr; element = parentElement(*element)) {
        const ZRName prefix = search.at(*element);
        if (!prefix.isEmpty()) {
            return prefix;
        }
        search.leave(*element);
    }
    return {};
}

bool ZRNode::isDefaultNamespace(ZRName namespaceUri) {
    for (ZRNode* element = scopeOf(*this); element != nullptr; element = parentElement(*element)) {
        if (element->getPrefix().isEmpty()) {
            return element->getNamespaceUri() == namespaceUri;
        }
        if (const ZRNode* attr = findAttribute(*element, isDefaultDeclaration)) {
            return ZRName(attr->getText()) == namespaceUri;
        }
    }
    return false;
}

namespace internal {

bool isPlainElement(const ZRNode& element) {
    return element.getTypeID() == Element::getStaticTypeID();
}

ZRName NamespaceTrail::enter(ZRNode& element) {
    backTo(element.getParentNode());
    m_trail.push_back({&element, element.getPrefix(), ZRName(), false});
    return isPlainElement(element) ? meaningAtEnd() : element.getNamespaceUri();
}

ZRName NamespaceTrail::leave(ZRNode& element) {
    backTo(&element);
    const bool isOnTrail = !m_trail.empty();
    const ZRName namespaceUri =
        isOnTrail && isPlainElement(element) ? m_trail.back().meaning : element.getNamespaceUri();
    if (isOnTrail) {
        m_trail.pop_back();
    }
    return namespaceUri;
}

void NamespaceTrail::backTo(const ZRNode* element) {
    while (!m_trail.empty() && m_trail.back().element != element) {
        m_trail.pop_back();
    }
}

/// Climbs to where the meaning is known, and notes it on all the way, so that no step is climbed
/// over twice.
ZRName NamespaceTrail::meaningAtEnd() {
    const ZRName prefix = m_trail.back().prefix;
    std::size_t first = m_trail.size() - 1;
    std::optional<ZRName> meaning;
    while (!meaning) {
        const Step& step = m_trail[first];
        meaning = step.isKnown ? step.meaning : bindingAt(*step.element, prefix);
        if (meaning) {
            break;
        }
        if (first == 0 || m_trail[first - 1].prefix != prefix) {
            meaning = step.element->ZRNode::lookupNamespaceUri(prefix);
        } else {
            --first;
        }
    }
    for (; first < m_trail.size(); ++first) {
        m_trail[first].meaning = *meaning;
        m_trail[first].isKnown = true;
    }
    return *meaning;
}

}  // namespace internal

}  // namespace ZroCommon

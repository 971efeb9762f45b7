#pragma once

#include <cstdint>

#include "zro/dom/ZRNodeList.h"
#include "zro/dom/internal/NamespaceTrail.h"

namespace ZroCommon::internal {

/// The descendants of a node in document order, or those elements among them that bear a name. What
/// one call has found out about namespaces is forgotten by the next, since the tree may change in
/// between; it helps walks forward.
class TreeNodeList final : public ZRNodeList {
public:
    explicit TreeNodeList(ZRNode* root) : m_root(root) {}
    TreeNodeList(ZRNode* root, ZRName localName);
    TreeNodeList(ZRNode* root, ZRName namespaceUri, ZRName localName);
    ~TreeNodeList() override = default;

    ZRNode* getFirstNode() override;
    ZRNode* getLastNode() override;
    ZRNode* getNextNode(ZRNode* node) override;
    ZRNode* getPreviousNode(ZRNode* node) override;
    int getLength() override;
    ZRNode* item(int index) override;

private:
    enum class Filter : std::uint8_t { None, LocalName, Name };

    bool passes(ZRNode& node, NamespaceTrail& trail) const;
    bool matches(ZRName pattern, ZRName name) const { return pattern == name || pattern == m_any; }
    ZRNode* stepForward(ZRNode* node) const;
    ZRNode* stepBack(ZRNode* node) const;
    ZRNode* nextOf(ZRNode* node, NamespaceTrail& trail) const;

    ZRNode* m_root;
    Filter m_filter = Filter::None;
    ZRName m_namespaceUri;
    ZRName m_localName;
    ZRName m_any;  // "*"
};

}  // namespace ZroCommon::internal

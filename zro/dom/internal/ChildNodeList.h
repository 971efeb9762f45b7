#pragma once

#include "zro/dom/ZRNode.h"
#include "zro/dom/ZRNodeList.h"

namespace ZroCommon::internal {

/// The children of a node.
class ChildNodeList final : public ZRNodeList {
public:
    explicit ChildNodeList(ZRNode* parent) : m_parent(parent) {}

    ZRNode* getFirstNode() override { return m_parent->getFirstChild(); }
    ZRNode* getLastNode() override { return m_parent->getLastChild(); }
    ZRNode* getNextNode(ZRNode* node) override {
        return node != nullptr ? node->getNextSibling() : nullptr;
    }
    ZRNode* getPreviousNode(ZRNode* node) override {
        return node != nullptr ? node->getPreviousSibling() : nullptr;
    }

private:
    ~ChildNodeList() override = default;

    ZRNode* m_parent;
};

}  // namespace ZroCommon::internal

// Random edits, held to a tree made of standard lists.
#include <algorithm>
#include <list>
#include <random>
#include <vector>

#include "tests/dom/Trees.h"

namespace ZroCommon::testing {
namespace {

struct ModelNode {
    std::string name;
    ModelNode* parent = nullptr;
    std::list<ModelNode*> children;
    ZRPtr<ZRNode> node;
};

std::string dumpModel(const ModelNode& node) {
    std::string text;
    for (const ModelNode* child : node.children) {
        text += (text.empty() ? "" : " ") + dumpModel(*child);
    }
    return text.empty() ? node.name : node.name + "(" + text + ")";
}

bool isAtOrAbove(const ModelNode* ancestor, const ModelNode* node) {
    while (node != nullptr && node != ancestor) {
        node = node->parent;
    }
    return node != nullptr;
}

void leave(ModelNode& node) {
    if (node.parent != nullptr) {
        node.parent->children.remove(&node);
        node.parent = nullptr;
    }
}

void enter(ModelNode& parent, ModelNode& child, const ModelNode* before) {
    if (before != &child) {
        leave(child);
        const auto at = std::find(parent.children.begin(), parent.children.end(), before);
        parent.children.insert(at, &child);
        child.parent = &parent;
    }
}

/// Empties a node, and those below when they are deleted. \return the number of those that go
long empty(ModelNode& node, bool deletes) {
    long count = 0;
    while (!node.children.empty()) {
        ModelNode& child = *node.children.back();
        count += 1 + (deletes ? empty(child, true) : 0);
        leave(child);
    }
    return count;
}

class Model {
public:
    explicit Model(unsigned seed) : m_random(seed), m_nodes(24) {
        for (ModelNode& node : m_nodes) {
            node.name = std::string(1, static_cast<char>('a' + (&node - m_nodes.data())));
            node.node = m_document->createElementNS(ZRName(), ZRName(), ZRName(text(node.name)));
        }
    }

    void step() {
        ModelNode& parent = m_nodes[m_random() % m_nodes.size()];
        ModelNode& child = m_nodes[m_random() % m_nodes.size()];
        if (isAtOrAbove(&child, &parent)) {
            return;
        }
        auto place = parent.children.begin();
        std::advance(place, static_cast<std::ptrdiff_t>(m_random() % (parent.children.size() + 1)));
        ModelNode* before = place != parent.children.end() ? *place : nullptr;
        const bool deletes = m_random() % 8 == 0;
        switch (m_random() % 4) {
        case 0:
            EXPECT_EQ(insert(*parent.node, child.node, before), child.node.get());
            enter(parent, child, before);
            break;
        case 1:
            if (before != nullptr) {
                EXPECT_EQ(parent.node->replaceChild(child.node, before->node).get(),
                          before->node.get());
                enter(parent, child, before);
                before != &child ? leave(*before) : void();
            }
            break;
        case 2:
            if (child.parent != nullptr) {
                EXPECT_EQ(child.parent->node->removeChild(child.node).get(), child.node.get());
                leave(child);
            }
            break;
        default:
            if (deletes) {
                EXPECT_EQ(parent.node->deleteAllChildNodes(), empty(parent, true));
            } else {
                parent.node->removeAllChildNodes();
                empty(parent, false);
            }
        }
    }

    void check() const {
        for (const ModelNode& node : m_nodes) {
            EXPECT_EQ(dump(node.node), dumpModel(node));
            EXPECT_EQ(node.node->getParentNode(),
                      node.parent != nullptr ? node.parent->node.get() : nullptr);
            EXPECT_EQ(node.node->getRefCount(), node.parent != nullptr ? 2 : 1);
            EXPECT_TRUE(node.parent != nullptr || node.node->getNextSiblingFast() == nullptr);
            std::string children;
            for (const ModelNode* child : node.children) {
                children.insert(0, child->name + (children.empty() ? "" : " "));
            }
            EXPECT_EQ(backwards(node.node), children);
        }
    }

private:
    /// At the end by the operation for that.
    static ZRNode* insert(ZRNode& parent, ZRNode* child, ModelNode* before) {
        return before != nullptr ? parent.insertBefore(child, before->node)
                                 : parent.appendChild(child);
    }

    std::mt19937 m_random;
    Document m_document = newDocument();
    std::vector<ModelNode> m_nodes;
};

TEST(ZRNode, RandomEditsGiveTheTreeOfTheModel) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE(seed);
        Model model(seed);
        for (int step = 0; step < 200; ++step) {
            model.step();
            model.check();
        }
    }
}

}  // namespace
}  // namespace ZroCommon::testing

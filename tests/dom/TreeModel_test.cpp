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

class Model {
public:
    static constexpr std::size_t kNodes = 24;

    explicit Model(unsigned seed) : m_random(seed), m_nodes(kNodes) {
        for (std::size_t i = 0; i < kNodes; ++i) {
            m_nodes[i].name = std::string(1, static_cast<char>('a' + i));
            const ZRName name = text(m_nodes[i].name);
            m_nodes[i].node = m_document->createElementNS(ZRName(), ZRName(), name);
        }
    }

    void step() {
        ModelNode& parent = any();
        ModelNode& child = any();
        if (isAtOrAbove(&child, &parent)) {
            return;
        }
        ModelNode* place = parent.children.empty() ? nullptr : anyOf(parent.children);
        switch (m_random() % 5) {
        case 0: append(parent, child); break;
        case 1: insert(parent, child, place); break;
        case 2: replace(parent, child, place); break;
        case 3: remove(child); break;
        default: empty(parent, m_random() % 8 == 0);
        }
    }

    void check() const {
        for (const ModelNode& node : m_nodes) {
            EXPECT_EQ(dump(node.node), dumpModel(node));
            EXPECT_EQ(node.node->getParentNode(),
                      node.parent != nullptr ? node.parent->node.get() : nullptr);
            EXPECT_EQ(node.node->getRefCount(), node.parent != nullptr ? 2 : 1);
            EXPECT_TRUE(node.parent != nullptr || node.node->getNextSiblingFast() == nullptr);
            std::string backwards;
            for (ZRNode* at = node.node->getLastChildFast(); at; at = at->getPreviousSibling()) {
                backwards.insert(0, label(at));
            }
            std::string children;
            for (const ModelNode* childNode : node.children) {
                children += childNode->name;
            }
            EXPECT_EQ(backwards, children);
        }
    }

private:
    ModelNode& any() { return m_nodes[m_random() % kNodes]; }
    ModelNode* anyOf(const std::list<ModelNode*>& list) {
        auto at = list.begin();
        std::advance(at, static_cast<std::ptrdiff_t>(m_random() % list.size()));
        return *at;
    }
    static void leave(ModelNode& node) {
        if (node.parent != nullptr) {
            node.parent->children.remove(&node);
            node.parent = nullptr;
        }
    }
    static void enter(ModelNode& parent, ModelNode& child, const ModelNode* before) {
        leave(child);
        const auto at = std::find(parent.children.begin(), parent.children.end(), before);
        parent.children.insert(at, &child);
        child.parent = &parent;
    }

    static void append(ModelNode& parent, ModelNode& child) {
        EXPECT_EQ(parent.node->appendChild(child.node), child.node.get());
        enter(parent, child, nullptr);
    }
    static void insert(ModelNode& parent, ModelNode& child, ModelNode* place) {
        ZRNode* before = place != nullptr ? place->node.get() : nullptr;
        EXPECT_EQ(parent.node->insertBefore(child.node, before), child.node.get());
        if (place != &child) {
            enter(parent, child, place);
        }
    }
    static void replace(ModelNode& parent, ModelNode& child, ModelNode* place) {
        if (place == nullptr) {
            return;
        }
        EXPECT_EQ(parent.node->replaceChild(child.node, place->node).get(), place->node.get());
        if (place != &child) {
            enter(parent, child, place);
            leave(*place);
        }
    }
    static void remove(ModelNode& child) {
        if (child.parent != nullptr) {
            EXPECT_EQ(child.parent->node->removeChild(child.node).get(), child.node.get());
            leave(child);
        }
    }
    /// The children survive, since the model holds them; so do theirs, unless all are taken apart.
    static void empty(ModelNode& parent, bool deletes) {
        long count = 0;
        while (!parent.children.empty()) {
            ModelNode& child = *parent.children.back();
            if (deletes) {
                count += 1 + countAndPart(child);
            }
            leave(child);
        }
        if (deletes) {
            EXPECT_EQ(parent.node->deleteAllChildNodes(), count);
        } else {
            parent.node->removeAllChildNodes();
        }
    }
    static long countAndPart(ModelNode& node) {
        long count = 0;
        while (!node.children.empty()) {
            ModelNode& child = *node.children.back();
            count += 1 + countAndPart(child);
            leave(child);
        }
        return count;
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

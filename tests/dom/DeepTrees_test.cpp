// Trees of great depth or width, on a small stack and in linear time.
#include <cstdint>
#include <sstream>

#include "tests/dom/Trees.h"
#include "tests/support/SmallStack.h"

namespace ZroCommon::testing {
namespace {

constexpr int kDepth = 1000000;

struct DeepTree : RootedTree {
    ZRNode* root = r;
    ZRNode* lowest = addChain(document, root, kDepth);
};

TEST(DeepTree, DiesWithoutRecursion) {
    onSmallStack([] {
        { const DeepTree dropped; }
        {
            const Document document = newDocument();
            addChain(document, element(document, u"loose"), kDepth);
        }
        const DeepTree emptied;
        emptied.root->removeAllChildNodes();
        EXPECT_FALSE(emptied.root->hasChildNodes());
        addChain(emptied.document, emptied.root, kDepth);
        EXPECT_EQ(emptied.root->deleteAllChildNodes(), kDepth);
        EXPECT_FALSE(emptied.root->hasChildNodes());
    });
}

TEST(DeepTree, IsCopiedAndSavedAndLoaded) {
    onSmallStack([] {
        const DeepTree tree;
        const Document other = newDocument();
        const UnicodeString saved = tree.document->saveXml(tree.root->cloneNode(true));
        EXPECT_EQ(saved.length(), 7 * kDepth + 4);  // the innermost element is "<e/>"
        std::istringstream input(utf8(saved));
        other->load(input);
        EXPECT_EQ(other->saveXml(other->getDocumentElement()), saved);
    });
}

TEST(DeepTree, IsWalkedAndAsked) {
    onSmallStack([] {
        const DeepTree tree;
        static_cast<ZRElement*>(tree.root)->setAttributeNS(ZRName(), u"xmlns:p"_name,
                                                           ZRValue(u"urn:p"_name));
        addText(tree.document, tree.lowest, u"t");
        EXPECT_EQ(utf8(tree.root->getInnerText()), "t");
        EXPECT_EQ(tree.root->getElementsByTagName(u"e"_name)->getLength(), kDepth);
        EXPECT_EQ(tree.root->getDescendantNodes()->getLastNode(), tree.lowest->getFirstChild());
        EXPECT_EQ(utf8(tree.lowest->lookupNamespaceUri(u"p"_name).toString()), "urn:p");
        EXPECT_EQ(utf8(tree.lowest->lookupPrefix(u"urn:p"_name).toString()), "p");
        EXPECT_EQ(tree.lowest->getNodeDepth(), kDepth);
        EXPECT_EQ(tree.lowest->getSourceLineNumber(), -1);
        EXPECT_EQ(tree.lowest->getCommonAncestorOrSelf(tree.root), tree.root);
        EXPECT_FALSE(tree.lowest->isFollowingOf(tree.root));
    });
}

TEST(DeepTree, NamespacesOfPlainElementsAreFoundInOnePass) {
    const Document document = newDocument();
    ZRNode* node = document;
    for (int i = 0; i < kDepth / 10; ++i) {
        node = node->appendChild(document->createElement(u"e"_name));
        if (i % 3 == 0) {
            node = addElement(document, node, u"e");
            static_cast<ZRElement*>(node)->setAttribute(u"x"_name, ZRValue(1));
        }
    }
    EXPECT_GT(document->saveXml().length(), kDepth / 2);
    EXPECT_EQ(document->getElementsByTagNameNS(u"none"_name, u"e"_name)->getLength(), 0);
    EXPECT_GT(document->getElementsByTagNameNS(ZRName(), u"e"_name)->getLength(), kDepth / 10);
}

TEST(WideTree, ChildrenAreAppendedWalkedAndDroppedInLinearTime) {
    const Document document = newDocument();
    ZRNode* root = addElement(document, document, u"root");
    for (int i = 0; i < kDepth; ++i) {
        root->appendChild(document->createTextNode(u"t"));
    }
    EXPECT_EQ(root->getChildNodeCount(), kDepth);
    EXPECT_EQ(root->getLastChild()->countPrecedingSiblings(), kDepth - 1);
    EXPECT_EQ(root->getLastChild()->getSourceLineNumber(), -1);
}

TEST(WideElement, AHundredThousandAttributesTakeLinearTime) {
    const Document document = newDocument();
    const ZRPtr<ZRElement> a = element(document, u"a");
    for (std::int32_t i = 1; i <= 100000; ++i) {
        const auto name = static_cast<ZRNameEnum>(ZRN_LAST_BUILTIN + i);  // whatever its text
        a->setAttributeEx(ZRName(), ZRName(), name, u"1");
    }
    EXPECT_EQ(a->getAttributes()->getLength(), 100000);
    for (int i = 0; i < 100000; ++i) {
        ASSERT_NE(a->getAttributes()->item(i), nullptr);
    }
    while (ZRNode* attr = a->getAttributes()->getFirstNode()) {
        a->removeAttributeNode(static_cast<ZRAttr*>(attr));
    }
    EXPECT_FALSE(a->hasAttributes());
}

TEST(WideTree, PositionsAreFoundInOnePassOverTheNodesBefore) {
    const Document document = newDocument();
    ZRNode* parent = document;
    for (int level = 0; level < 20; ++level) {
        for (int i = 0; i < 10; ++i) {
            addElement(document, parent, u"e");
        }
        parent = parent->getLastChild();
    }
    EXPECT_EQ(parent->getSourceLineNumber(), -1);
}

}  // namespace
}  // namespace ZroCommon::testing

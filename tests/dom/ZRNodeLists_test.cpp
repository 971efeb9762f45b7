#include "tests/dom/Trees.h"

namespace ZroCommon::testing {
namespace {

/// r(a(b 't') p:b(b)) with p:b in "urn:u".
struct Tree : SmallTree {
    ZRNode* qualified =
        r->appendChild(document->createElementNS(u"urn:u"_name, u"p"_name, u"b"_name));
    ZRNode* last = addElement(document, qualified, u"b");
};

TEST(ZRNodeList, ChildrenAreALiveList) {
    const Tree tree;
    const ZRPtr<ZRNodeList> list = tree.a->getChildNodes();
    EXPECT_EQ(labels(list), "b, 't'");
    addElement(tree.document, tree.a, u"x");
    EXPECT_EQ(list->getLength(), 3);
    EXPECT_EQ(label(list->item(2)), "x");
    EXPECT_EQ(list->item(3), nullptr);
    EXPECT_EQ(list->item(-1), nullptr);
}

TEST(ZRNodeList, DescendantsAreFoundByLocalName) {
    const Tree tree;
    for (const auto& [list, nodes] : Rows<ZRPtr<ZRNodeList>, const char*>{
             {tree.r->getDescendantNodes(), "a, b, 't', p:b, b"},
             {tree.r->getElementsByTagName(u"b"_name), "b, p:b, b"},
             {tree.r->getElementsByTagName(u"p:b"_name), ""},
             {tree.r->getElementsByTagName(u"*"_name), "a, b, p:b, b"},
             {tree.r->getElementsByTagName(u"a"_name), "a"},
             {tree.r->getElementsByTagName(u"r"_name), ""},
             {tree.t->getElementsByTagName(u"*"_name), ""},
             {tree.r->getElementsByTagNameNS(u"urn:u"_name, u"b"_name), "p:b"},
             {tree.r->getElementsByTagNameNS(u"*"_name, u"b"_name), "b, p:b, b"},
             {tree.r->getElementsByTagNameNS(u"urn:u"_name, u"*"_name), "p:b"},
             {tree.r->getElementsByTagNameNS(u""_name, u"b"_name), "b, b"},
             {tree.a->getElementsByTagName(u"b"_name), "b"},
         }) {
        EXPECT_EQ(labels(list), nodes);
    }
}

TEST(ZRNodeList, WalksBackwardsThroughTheSameNodes) {
    const Tree tree;
    for (const auto& [name, backwards] : Rows<ZRName, const char*>{{u"*"_name, "b p:b b a "},
                                                                   {u"b"_name, "b p:b b "},
                                                                   {u"a"_name, "a "},
                                                                   {u"x"_name, ""}}) {
        const ZRPtr<ZRNodeList> list = tree.r->getElementsByTagName(name);
        std::string found;
        for (ZRNode* node = list->getLastNode(); node; node = list->getPreviousNode(node)) {
            found += label(node) + " ";
        }
        EXPECT_EQ(found, backwards);
    }
}

// The iterator holds its list.
TEST(ZRNodeIterator, MayRemoveWhatItReturned) {
    const Tree tree;
    ZRNodeIterator nodes(tree.a->getChildNodes());
    while (ZRNode* node = nodes.nextNode()) {
        tree.a->removeChild(node);
    }
    EXPECT_EQ(dump(tree.r), "r(a p:b(b))");
}

TEST(ZRNodeIterator, StepsInBothDirections) {
    const Tree tree;
    ZRNodeIterator nodes = tree.r->getIterator();
    EXPECT_FALSE(nodes.hasPreviousNode());
    EXPECT_EQ(nodes.nextNode(), tree.a);
    EXPECT_TRUE(nodes.hasPreviousNode());
    EXPECT_EQ(nodes.previousNode(), tree.a);
    EXPECT_EQ(nodes.previousNode(), nullptr);
    EXPECT_FALSE(nodes.hasNextNode()) << "a step back from the first node leads to the end";
    nodes.setToEnd();
    EXPECT_FALSE(nodes.hasNextNode());
    EXPECT_EQ(nodes.nextNode(), nullptr);
    EXPECT_EQ(nodes.previousNode(), tree.last);
    EXPECT_EQ(nodes.previousNode(), tree.qualified);
    nodes.setToStart();
    EXPECT_EQ(nodes.nextNode(), tree.a);
    EXPECT_EQ(ZRNodeIterator(tree.r, tree.b).nextNode(), tree.t);
}

TEST(ZRNodeIterator, NothingIsWalkedFromNothing) {
    const Tree tree;
    for (ZRNodeIterator nodes : {ZRNodeIterator(static_cast<ZRNodeIterable*>(nullptr)),
                                 ZRNodeIterator(static_cast<ZRNode*>(nullptr)),
                                 ZRNodeIterator(static_cast<ZRNode*>(nullptr), tree.b)}) {
        nodes.setToStart();
        EXPECT_EQ(nodes.nextNode(), nullptr);
        EXPECT_EQ(nodes.previousNode(), nullptr);
        EXPECT_FALSE(nodes.hasPreviousNode());
    }
    for (const auto& list : {tree.r->getDescendantNodes(), tree.r->getChildNodes()}) {
        EXPECT_EQ(list->getNextNode(nullptr), nullptr);
        EXPECT_EQ(list->getPreviousNode(nullptr), nullptr);
    }
}

/// Holds the iterator to its word at each step, too.
std::string visits(ZRTreeIterator walk, bool backwards = false) {
    std::string text;
    for (;;) {
        const bool hasMore = backwards ? walk.hasPreviousNode() : walk.hasNextNode();
        ZRNode* node = backwards ? walk.previousNode() : walk.nextNode();
        EXPECT_EQ(hasMore, node != nullptr) << "behind " << text;
        if (node == nullptr) {
            return text;
        }
        text += (text.empty() ? "" : " ") + label(node);
    }
}

TEST(ZRTreeIterator, VisitsInTheOrderAskedFor) {
    const Tree tree;
    for (const auto& [order, forwards, backwards] :
         Rows<ZRTreeIterator::TraversalOrder, const char*, const char*>{
             {ZRTreeIterator::PRE_ORDER, "r a b 't' p:b b", "b p:b 't' b a r"},
             {ZRTreeIterator::POST_ORDER, "b 't' a b p:b r", "r p:b b a 't' b"},
             {ZRTreeIterator::PRE_AND_POST_ORDER, "r a b b 't' a p:b b b p:b r",
              "r p:b b b p:b a 't' b b a r"},
         }) {
        EXPECT_EQ(visits(ZRTreeIterator(tree.r, order)), forwards);
        ZRTreeIterator fromEnd(tree.r, order);
        fromEnd.setCurrentNode(nullptr, true);
        EXPECT_EQ(visits(fromEnd, true), backwards);
    }
    EXPECT_EQ(visits(ZRTreeIterator(tree.a)), "a b b 't' a");
}

TEST(ZRTreeIterator, CanBeSetAnywhere) {
    const Tree tree;
    ZRTreeIterator walk(tree.r, ZRTreeIterator::PRE_ORDER);
    walk.setToStart();
    EXPECT_EQ(walk.getCurrentNode(), tree.r);
    EXPECT_EQ(walk.nextNode(), tree.a);
    walk.setCurrentNode(tree.a, true);
    EXPECT_EQ(walk.nextNode(), tree.qualified);
    walk.setToEnd();
    EXPECT_TRUE(walk.hasPreviousNode() && !walk.hasNextNode());
    EXPECT_EQ(walk.nextNode(), nullptr);
}

// On purpose: the second visit of a root without children does not count as more.
TEST(ZRTreeIterator, ARootWithoutChildrenHasNoMoreAfterItsFirstVisit) {
    const Tree tree;
    ZRTreeIterator walk(tree.b);
    walk.nextNode();
    EXPECT_TRUE(walk.atPreVisit());
    EXPECT_FALSE(walk.hasNextNode());
    EXPECT_EQ(walk.nextNode(), tree.b);
    EXPECT_TRUE(walk.atPostVisit());
    EXPECT_EQ(walk.nextNode(), nullptr);
    EXPECT_EQ(walk.nextNode(), nullptr);
}

TEST(ZRTreeIterator, WalksOverNothing) {
    ZRTreeIterator nothing;
    EXPECT_EQ(nothing.nextNode(), nullptr);
    EXPECT_EQ(nothing.previousNode(), nullptr);
    EXPECT_FALSE(nothing.hasNextNode());
    EXPECT_FALSE(nothing.hasPreviousNode());
    EXPECT_EQ(nothing, ZRTreeIterator());
    EXPECT_EQ(ZRTreeIterator(nullptr).nextNode(), nullptr);
}

}  // namespace
}  // namespace ZroCommon::testing

#include <vector>

#include "tests/dom/Trees.h"

namespace ZroCommon::testing {
namespace {

/// r(a(b 't') c(d(e))), and a loose node f.
struct Tree : SmallTree {
    ZRNode* c = addElement(document, r, u"c");
    ZRNode* d = addElement(document, c, u"d");
    ZRNode* e = addElement(document, d, u"e");
    ZRPtr<ZRElement> f = element(document, u"f");

    std::vector<ZRNode*> all() const { return {document, r, a, b, t, c, d, e, f}; }
};

TEST(ZRNode, FollowsWhatComesBeforeItAndIsNoAncestor) {
    const Tree tree;
    const std::vector<ZRNode*> nodes = tree.all();
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        for (std::size_t j = 0; j < nodes.size(); ++j) {
            const bool follows = j < i && nodes[i] != tree.f && !nodes[i]->isDescendantOf(nodes[j]);
            EXPECT_EQ(nodes[i]->isFollowingOf(nodes[j]), follows) << i << " after " << j;
            EXPECT_EQ(nodes[j]->isPrecedingOf(nodes[i]), follows) << j << " before " << i;
        }
    }
    EXPECT_FALSE(tree.e->isFollowingOf(nullptr));
    EXPECT_FALSE(tree.e->isPrecedingOf(nullptr));
    EXPECT_FALSE(tree.c->isDescendantOf(nullptr));
}

TEST(ZRNode, CommonAncestorsAndDescendants) {
    const Tree tree;
    const Rows<ZRNode*, ZRNode*, ZRNode*, ZRNode*> cases = {
        {tree.b, tree.t, tree.a, tree.a},    {tree.b, tree.e, tree.r, tree.r},
        {tree.e, tree.c, tree.c, tree.r},    {tree.c, tree.e, tree.c, tree.r},
        {tree.b, tree.b, tree.b, tree.a},    {tree.b, tree.f, nullptr, nullptr},
        {tree.b, nullptr, nullptr, nullptr}, {tree.r, tree.document, tree.document, nullptr}};
    for (const auto& [self, node, orSelf, proper] : cases) {
        EXPECT_EQ(self->getCommonAncestorOrSelf(node), orSelf)
            << label(self) << ", " << label(node);
        EXPECT_EQ(self->getCommonAncestor(node), proper) << label(self) << ", " << label(node);
        EXPECT_EQ(self->isDescendantOrSelfOf(node), node != nullptr && orSelf == node);
        EXPECT_EQ(self->isDescendantOf(node), node != nullptr && orSelf == node && self != node);
    }
}

TEST(ZRNode, CountsLevelsSiblingsAndChildren) {
    const Tree tree;
    addChain(tree.document, tree.f, 2);
    EXPECT_EQ(tree.document->getNodeDepth(), 0);
    EXPECT_EQ(tree.e->getNodeDepth(), 3);
    EXPECT_EQ(tree.f->getFirstChild()->getFirstChild()->getNodeDepth(), 2);
    EXPECT_EQ(tree.a->getChildNodeCount(), 2);
    EXPECT_EQ(tree.t->countPrecedingSiblings(), 1);
    EXPECT_EQ(tree.t->countFollowingSiblings(), 0);
    EXPECT_EQ(tree.b->countFollowingSiblings(), 1);
}

TEST(ZRNode, FindsRelativesByNameAndClass) {
    const Tree tree;
    const ZRPtr<ZRElement> qualified =
        tree.document->createElementNS(u"urn:u"_name, u"p"_name, u"c"_name);
    tree.r->appendChild(qualified);
    EXPECT_EQ(tree.r->getChildNodeByName(u"c"_name), tree.c);
    EXPECT_EQ(tree.r->getChildNodeByNameNS(u"urn:u"_name, u"c"_name), qualified.get());
    EXPECT_EQ(tree.r->getChildNodeByName(u"e"_name), nullptr);
    EXPECT_EQ(tree.a->getChildNodeByTypeID(ZRTextNode::getStaticTypeID()), tree.t);
    EXPECT_EQ(tree.a->getChildNodeByTypeID(ZRPINode::getStaticTypeID()), nullptr);
    EXPECT_EQ(tree.e->getAncestorByTypeID(ZRDocument::getStaticTypeID()), tree.document.get());
    EXPECT_EQ(tree.e->getAncestorByName(u"e"_name), nullptr);
    EXPECT_EQ(tree.e->getAncestorOrSelfByName(u"e"_name), tree.e);
    EXPECT_EQ(tree.e->getAncestorByName(u"c"_name), tree.c);
    EXPECT_EQ(tree.e->getAncestorByNameNS(u"urn:u"_name, u"c"_name), nullptr);
}

TEST(ZRNode, SkipsComplementedAncestors) {
    const Tree tree;
    tree.d->setFlag(ZRNode::kComplemental, true);
    EXPECT_EQ(tree.e->getParentNode(), tree.d);
    EXPECT_EQ(tree.e->getParentNodeUncomplemental(), tree.c);
    tree.d->setFlag(ZRNode::kComplemental, false);
    EXPECT_EQ(tree.e->getParentNodeUncomplemental(), tree.d);
}

TEST(ZRNode, InnerTextLeavesProcessingInstructionsOut) {
    const Tree tree;
    addText(tree.document, tree.e, u"u");
    tree.e->appendChild(tree.document->createProcessingInstruction(u"p q"));
    EXPECT_EQ(utf8(tree.r->getInnerText()), "tu");
    EXPECT_EQ(utf8(tree.t->getInnerText()), "t");
    EXPECT_EQ(utf8(tree.document->getInnerText()), "");
}

/// A text that was made from another node, and has its position.
class MadeFrom : public ZRTextNode {
public:
    MadeFrom(ZRDocument* document, const ZRNode* origin)
        : ZRTextNode(document, u""), m_origin(origin) {}
    int getSourceLineNumber() const override { return m_origin->getSourceLineNumber(); }

private:
    const ZRNode* m_origin;
};

TEST(ZRNode, PositionMayComeFromANodeElsewhere) {
    const Tree tree;
    tree.b->setSourceLineNumber(3);
    tree.d->appendChild(new MadeFrom(tree.document, tree.t));
    EXPECT_EQ(addText(tree.document, tree.d, u"last")->getSourceLineNumber(), 3);
    ZRNode* turn = tree.e->appendChild(new MadeFrom(tree.document, tree.e));
    turn->appendChild(tree.f);
    const ZRPtr<ZRNode> before = tree.r->removeChild(tree.a);
    tree.r->insertBefore(new MadeFrom(tree.document, tree.f), tree.c);
    EXPECT_EQ(tree.f->getSourceLineNumber(), -1);  // asked in a circle
}

TEST(ZRNode, PositionComesFromSiblingsBeforeAndFromAbove) {
    const Tree tree;
    for (const auto& [only, nodes] : Rows<ZRNode*, const char*>{{tree.r, "r a b 't' c d e "},
                                                                {tree.a, "a b 't' c d e "},
                                                                {tree.b, "b 't' "},
                                                                {tree.c, "c d e "},
                                                                {tree.d, "d e "}}) {
        only->setSourceLineNumber(7);
        only->setSourceColumnNumber(9);
        std::string found;
        for (ZRNode* node : tree.all()) {
            const int line = node->getSourceLineNumber();
            EXPECT_TRUE(line == 7 || line == -1);
            EXPECT_EQ(node->getSourceColumnNumber(), line == 7 ? 9 : -1);
            found += line == 7 ? label(node) + " " : "";
        }
        EXPECT_EQ(found, nodes);
        only->setSourceLineNumber(-1);
        only->setSourceColumnNumber(-1);
    }
}

TEST(ZRNode, ClassesAnswerToTheirFlatListOfTypes) {
    const Tree tree;
    const ZRPtr<ZRPINode> pi = tree.document->createProcessingInstruction(u"p q");
    const ZRPtr<ZRAttr> attr = tree.document->createAttribute(u"x"_name);
    const ZRPtr<ZRNodeList> list = tree.r->getChildNodes();
    for (const auto& [object, id, name] : Rows<const ZRObjectBase*, unsigned int, const char*>{
             {tree.document, 0xF6B431AFU, "ZRDocument"},
             {tree.a, 0xC08077FCU, "ElementNS"},
             {tree.t, 0x92151179U, "ZRTextNode"},
             {pi, 0x1A6FA3CFU, "ZRPINode"},
             {attr, 0xC5B6A2E2U, "ZRAttr"},
             {list, 0x316E063EU, "ZRNodeList"},
             {tree.a->getAttributes(), 0x953D7483U, "ZRNamedNodeMap"},
         }) {
        EXPECT_EQ(object->getTypeID(), id) << name;
        EXPECT_EQ(utf8(object->getTypeName()), name);
        EXPECT_TRUE(object->isA(id)) << name;
        EXPECT_TRUE(object->isA(ZRRCObject::getStaticTypeID())) << name;
        EXPECT_TRUE(object->isA(ZRObjectBase::getStaticTypeID())) << name;
        EXPECT_FALSE(object->isA(ZRDocumentFragment::getStaticTypeID())) << name;
    }
    EXPECT_TRUE(pi->isA(ZRTextNode::getStaticTypeID()));
    EXPECT_EQ(tree.document->createElement(u"x"_name)->getTypeID(), 0xD27D366CU);
}

TEST(ZRNodeList, IsNoIterableByItsFlatListOfTypes) {
    const Tree tree;
    EXPECT_FALSE(tree.r->getChildNodes()->isA(ZRNodeIterable::getStaticTypeID()));
    EXPECT_FALSE(tree.r->getAttributes()->isA(ZRNodeIterable::getStaticTypeID()));
}

}  // namespace
}  // namespace ZroCommon::testing

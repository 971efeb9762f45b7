
#include "tests/dom/Trees.h"

namespace ZroCommon::testing {
namespace {

/// r(a b c), and a loose element x.
struct Family : RootedTree {
    ZRElement* a = addElement(document, r, u"a");
    ZRElement* b = addElement(document, r, u"b");
    ZRElement* c = addElement(document, r, u"c");
    ZRPtr<ZRElement> x = element(document, u"x");
};

std::string bothWays(ZRNode* parent) {
    return dump(parent) + " | " + backwards(parent);
}

TEST(ZRNode, ImpossibleEditsAreRefused) {
    Family f;
    const Document other = newDocument();
    const ZRPtr<ZRElement> foreign = element(other, u"foreign");
    const std::string isForeign = "06 newChildarg is created from a different document. ZRNode::";
    const std::string isNoChild = " is not a child of this node. ZRNode::";
    expectErrors(
        {
            {[&] { f.a->appendChild(nullptr); }, "03 newChild is null. ZRNode::appendChild"},
            {[&] { f.a->appendChild(foreign); }, isForeign + "appendChild"},
            {[&] { f.a->appendChild(other); }, isForeign + "appendChild"},
            {[&] { f.document->appendChild(f.document); }, isForeign + "appendChild"},
            {[&] { f.r->insertBefore(nullptr, f.a); }, "03 newChild is null. ZRNode::insertBefore"},
            {[&] { f.a->insertBefore(f.x, f.b); }, "09 refChild" + isNoChild + "insertBefore"},
            {[&] { f.a->insertBefore(f.b, f.b); }, "09 refChild" + isNoChild + "insertBefore"},
            {[&] { f.r->insertBefore(foreign, f.a); }, isForeign + "insertBefore"},
            {[&] { f.r->replaceChild(nullptr, f.a); }, "03 newChild is null. ZRNode::replaceChild"},
            {[&] { f.r->replaceChild(f.x, nullptr); }, "03 oldChild is null. ZRNode::replaceChild"},
            {[&] { f.a->replaceChild(f.x, f.b); }, "09 oldChild" + isNoChild + "replaceChild"},
            {[&] { f.r->replaceChild(foreign, f.a); }, isForeign + "replaceChild"},
            {[&] { f.r->removeChild(nullptr); }, "03 oldChild is null. ZRNode::removeChild"},
            {[&] { f.a->removeChild(f.b); }, "09 oldChild" + isNoChild + "removeChild"},
            {[&] { f.document->setNodeValue(ZRValue(1)); },
             "0B Cannot set a value on node type: #document ZRNode::setNodeValue"},
        },
        [&] { EXPECT_EQ(bothWays(f.r), "r(a b c) | c b a"); });
}

/// Does not let go of its children.
class Keeper : public ZRElement {
public:
    explicit Keeper(ZRDocument* document) : ZRElement(document) {}
    ZRName getLocalName() const override { return u"keeper"_name; }
    ZRPtr<ZRNode> removeChild(ZRNode* /*oldChild*/) override { return nullptr; }
};

TEST(ZRNode, AMovedNodeLeavesAParentThatWouldKeepIt) {
    Family family;
    ZRNode* keeper = family.r->appendChild(new Keeper(family.document));
    keeper->appendChild(family.x);
    addElement(family.document, keeper, u"y");
    family.a->appendChild(family.x);
    EXPECT_EQ(bothWays(family.r), "r(a(x) b c keeper(y)) | keeper c b a");
    EXPECT_EQ(family.x->getRefCount(), 2);
}

// On purpose: among the children, too, an attribute has no siblings.
TEST(ZRNode, AnAttributeAmongTheChildrenHidesWhatFollowsIt) {
    Family family;
    family.r->insertBefore(family.document->createAttribute(u"y"_name), family.b);
    EXPECT_EQ(family.r->getChildNodeCount(), 2);
    EXPECT_EQ(dump(family.r), "r(a y= b c)");
}

TEST(ZRNode, AFragmentIsAppendedAsItself) {
    Family family;
    const ZRPtr<ZRDocumentFragment> fragment = family.document->createDocumentFragment();
    fragment->appendChild(family.x);
    family.a->appendChild(fragment);
    EXPECT_EQ(dump(family.a), "a(#document-fragment(x))");
}

TEST(ZRNode, NodesThatOutliveTheirDocumentForgetIt) {
    Family family;
    addChain(family.document, family.b, 1);
    family.b->setAttribute(u"y"_name, ZRValue(1));
    const ZRPtr<ZRNode> held(family.b);
    const ZRPtr<ZRAttr> attr(family.b->getAttributeNode(u"y"_name));
    family.document = nullptr;
    EXPECT_EQ(held->getOwnerDocument(), nullptr);
    EXPECT_EQ(held->getParentNode(), nullptr);
    EXPECT_EQ(held->getRefCount(), 1);
    EXPECT_EQ(held->getFirstChild()->getOwnerDocument(), nullptr);
    EXPECT_EQ(attr->getOwnerDocument(), nullptr);
    static_cast<ZRElement*>(held.get())->setAttribute(u"z"_name, ZRValue(2));
    EXPECT_EQ(dump(held->cloneNode(true)), "b y=1 z=2(e)");
}

}  // namespace
}  // namespace ZroCommon::testing

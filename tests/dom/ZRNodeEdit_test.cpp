#include <functional>

#include <gtest/gtest.h>

#include "tests/dom/Trees.h"
#include "tests/support/Errors.h"

namespace ZroCommon::testing {
namespace {

/// A root "r" with the children a, b, c, and a loose element x.
struct Family {
    Document document = newDocument();
    ZRElement* root = addElement(document, document, u"r");
    ZRElement* a = addElement(document, root, u"a");
    ZRElement* b = addElement(document, root, u"b");
    ZRElement* c = addElement(document, root, u"c");
    ZRPtr<ZRElement> x = element(document, u"x");
};

/// The children from both ends, by the ring and by the previous links.
std::string bothWays(ZRNode* parent) {
    std::string text = dump(parent) + " |";
    for (ZRNode* node = parent->getLastChildFast(); node; node = node->getPreviousSibling()) {
        text += " " + label(node);
    }
    return text;
}

TEST(ZRNode, EditsKeepTheLinksOfAllPlaces) {
    const struct {
        const char* name;
        std::function<void(Family&)> edit;
        const char* tree;
    } cases[] = {
        {"append", [](Family& f) { f.root->appendChild(f.x); }, "r(a b c x) | x c b a"},
        {"append what is last", [](Family& f) { f.root->appendChild(f.c); }, "r(a b c) | c b a"},
        {"append what is first", [](Family& f) { f.root->appendChild(f.a); }, "r(b c a) | a c b"},
        {"insert first", [](Family& f) { f.root->insertBefore(f.x, f.a); }, "r(x a b c) | c b a x"},
        {"insert inside", [](Family& f) { f.root->insertBefore(f.x, f.c); },
         "r(a b x c) | c x b a"},
        {"insert before nothing", [](Family& f) { f.root->insertBefore(f.x, nullptr); },
         "r(a b c x) | x c b a"},
        {"insert before itself", [](Family& f) { f.root->insertBefore(f.b, f.b); },
         "r(a b c) | c b a"},
        {"move forward", [](Family& f) { f.root->insertBefore(f.c, f.a); }, "r(c a b) | b a c"},
        {"move below", [](Family& f) { f.a->appendChild(f.b); }, "r(a(b) c) | c a"},
        {"replace first", [](Family& f) { f.root->replaceChild(f.x, f.a); }, "r(x b c) | c b x"},
        {"replace last", [](Family& f) { f.root->replaceChild(f.x, f.c); }, "r(a b x) | x b a"},
        {"replace by a sibling", [](Family& f) { f.root->replaceChild(f.c, f.a); }, "r(c b) | b c"},
        {"replace by itself", [](Family& f) { f.root->replaceChild(f.b, f.b); },
         "r(a b c) | c b a"},
        {"remove first", [](Family& f) { f.root->removeChild(f.a); }, "r(b c) | c b"},
        {"remove inside", [](Family& f) { f.root->removeChild(f.b); }, "r(a c) | c a"},
        {"remove last", [](Family& f) { f.root->removeChild(f.c); }, "r(a b) | b a"},
        {"remove all", [](Family& f) { f.root->removeAllChildNodes(); }, "r |"},
    };
    for (const auto& [name, edit, tree] : cases) {
        Family family;
        edit(family);
        EXPECT_EQ(bothWays(family.root), tree) << name;
    }
}

TEST(ZRNode, OnlyChildLeavesNothingBehind) {
    Family family;
    const ZRNode* only = addElement(family.document, family.a, u"only");
    const ZRPtr<ZRNode> removed = family.a->removeChild(family.a->getFirstChild());
    EXPECT_EQ(removed.get(), only);
    EXPECT_EQ(family.a->getLastChildFast(), nullptr);
    EXPECT_EQ(family.a->getFirstChildFast(), nullptr);
    EXPECT_EQ(removed->getParentNode(), nullptr);
    EXPECT_EQ(removed->getNextSibling(), nullptr);
}

TEST(ZRNode, OnlyChildCanBeReplaced) {
    Family family;
    const ZRPtr<ZRNode> only(addElement(family.document, family.a, u"only"));
    EXPECT_EQ(family.a->replaceChild(family.x, only).get(), only.get());
    EXPECT_EQ(bothWays(family.a), "a(x) | x");
    EXPECT_EQ(only->getParentNode(), nullptr);
}

TEST(ZRNode, AParentHoldsOneReferenceOnEachChild) {
    Family family;
    EXPECT_EQ(family.a->getRefCount(), 1);
    EXPECT_EQ(family.x->getRefCount(), 1);
    family.root->appendChild(family.x);
    EXPECT_EQ(family.x->getRefCount(), 2);
    const ZRPtr<ZRNode> removed = family.root->removeChild(family.x);
    EXPECT_EQ(family.x->getRefCount(), 2);
    family.a->appendChild(family.b);
    EXPECT_EQ(family.b->getRefCount(), 1);
}

TEST(ZRNode, EditsReturnTheNodeTheyAreAbout) {
    Family family;
    EXPECT_EQ(family.root->appendChild(family.x), family.x.get());
    EXPECT_EQ(family.root->insertBefore(family.x, family.a), family.x.get());
    EXPECT_EQ(family.root->replaceChild(family.x, family.x).get(), family.x.get());
    EXPECT_EQ(family.root->removeChild(family.x).get(), family.x.get());
}

TEST(ZRNode, ImpossibleEditsAreRefused) {
    Family f;
    const Document otherDocument = newDocument();
    const ZRPtr<ZRElement> foreign = element(otherDocument, u"foreign");
    const struct {
        std::function<void()> edit;
        const char* error;
    } cases[] = {
        {[&] { f.root->appendChild(nullptr); },
         "0x0803 SYSTEM ERROR: newChild is null. [ZroCommon::ZRNode::appendChild]"},
        {[&] { f.root->appendChild(foreign); },
         "0x0806 SYSTEM ERROR: newChildarg is created from a different document. "
         "[ZroCommon::ZRNode::appendChild]"},
        {[&] { f.root->insertBefore(nullptr, f.a); },
         "0x0803 SYSTEM ERROR: newChild is null. [ZroCommon::ZRNode::insertBefore]"},
        {[&] { f.a->insertBefore(f.x, f.b); },
         "0x0809 SYSTEM ERROR: refChild is not a child of this node. "
         "[ZroCommon::ZRNode::insertBefore]"},
        {[&] { f.a->insertBefore(f.b, f.b); },
         "0x0809 SYSTEM ERROR: refChild is not a child of this node. "
         "[ZroCommon::ZRNode::insertBefore]"},
        {[&] { f.root->insertBefore(foreign, f.a); },
         "0x0806 SYSTEM ERROR: newChildarg is created from a different document. "
         "[ZroCommon::ZRNode::insertBefore]"},
        {[&] { f.root->replaceChild(nullptr, f.a); },
         "0x0803 SYSTEM ERROR: newChild is null. [ZroCommon::ZRNode::replaceChild]"},
        {[&] { f.root->replaceChild(f.x, nullptr); },
         "0x0803 SYSTEM ERROR: oldChild is null. [ZroCommon::ZRNode::replaceChild]"},
        {[&] { f.a->replaceChild(f.x, f.b); },
         "0x0809 SYSTEM ERROR: oldChild is not a child of this node. "
         "[ZroCommon::ZRNode::replaceChild]"},
        {[&] { f.root->replaceChild(foreign, f.a); },
         "0x0806 SYSTEM ERROR: newChildarg is created from a different document. "
         "[ZroCommon::ZRNode::replaceChild]"},
        {[&] { f.root->removeChild(nullptr); },
         "0x0803 SYSTEM ERROR: oldChild is null. [ZroCommon::ZRNode::removeChild]"},
        {[&] { f.a->removeChild(f.b); },
         "0x0809 SYSTEM ERROR: oldChild is not a child of this node. "
         "[ZroCommon::ZRNode::removeChild]"},
        {[&] { f.document->setNodeValue(ZRValue(1)); },
         "0x080B SYSTEM ERROR: Cannot set a value on node type: #document "
         "[ZroCommon::ZRNode::setNodeValue]"},
    };
    for (const auto& [edit, error] : cases) {
        EXPECT_EQ(errorOf(edit), error);
        EXPECT_EQ(bothWays(f.root), "r(a b c) | c b a") << "after: " << error;
    }
}

TEST(ZRNode, ADocumentIsNoOnesChild) {
    const Document document = newDocument();
    const Document other = newDocument();
    EXPECT_NE(errorOf([&] { document->appendChild(other); }), "nothing");
    EXPECT_NE(errorOf([&] { document->appendChild(document); }), "nothing");
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
    ZRNode* keeper = family.root->appendChild(new Keeper(family.document));
    keeper->appendChild(family.x);
    addElement(family.document, keeper, u"y");
    family.a->appendChild(family.x);
    EXPECT_EQ(bothWays(family.root), "r(a(x) b c keeper(y)) | keeper c b a");
    EXPECT_EQ(family.x->getRefCount(), 2);
}

// On purpose: among the children, too, an attribute has no siblings.
TEST(ZRNode, AnAttributeAmongTheChildrenHidesWhatFollowsIt) {
    Family family;
    family.root->insertBefore(family.document->createAttribute(u"y"_name), family.b);
    EXPECT_EQ(family.root->getChildNodeCount(), 2);
    EXPECT_EQ(dump(family.root), "r(a y= b c)");
}

TEST(ZRNode, AFragmentIsAppendedAsItself) {
    Family family;
    const ZRPtr<ZRDocumentFragment> fragment = family.document->createDocumentFragment();
    fragment->appendChild(family.x);
    family.a->appendChild(fragment);
    EXPECT_EQ(dump(family.a), "a(#document-fragment(x))");
}

TEST(ZRNode, AnAttributeCanBeMovedAmongTheChildrenAndBack) {
    Family family;
    family.a->setAttribute(u"y"_name, ZRValue(UnicodeString(u"1")));
    ZRAttr* attr = family.a->getAttributeNode(u"y"_name);
    EXPECT_EQ(errorOf([&] { family.a->insertBefore(family.x, attr); }),
              "0x0809 SYSTEM ERROR: refChild is not a child of this node. "
              "[ZroCommon::ZRNode::insertBefore]");
    EXPECT_EQ(attr->getNextSiblingFast(), nullptr);
    family.root->appendChild(attr);
    EXPECT_EQ(dump(family.root), "r(a b c y=1)");
    EXPECT_EQ(errorOf([&] { family.b->setAttributeNode(attr); }),
              "0x0808 SYSTEM ERROR: arg is an ZRAttr that is already an attribute of another "
              "ZRElement object. [ZroCommon::AttrNodeMap::setNamedItem]");
    family.root->setAttributeNode(attr);
    EXPECT_EQ(dump(family.root), "r y=1(a b c)");
    family.root->appendChild(attr);
    EXPECT_EQ(dump(family.root), "r(a b c y=1)");
}

TEST(ZRNode, DeleteAllChildNodesCountsTheNodesBelow) {
    Family family;
    addText(family.document, family.b, u"t");
    addChain(family.document, family.c, 3);
    const ZRPtr<ZRNode> held(family.b);
    EXPECT_EQ(family.root->deleteAllChildNodes(), 7);
    EXPECT_EQ(bothWays(family.root), "r |");
    EXPECT_EQ(dump(held), "b");
    EXPECT_EQ(held->getParentNode(), nullptr);
    EXPECT_EQ(family.root->deleteAllChildNodes(), 0);
}

TEST(ZRNode, NodesThatAreHeldSurviveTheirParentsWithWhatIsBelow) {
    Family family;
    addChain(family.document, family.b, 2);
    const ZRPtr<ZRNode> held(family.b);
    family.document->removeAllChildNodes();
    EXPECT_EQ(dump(held), "b(e(e))");
    EXPECT_EQ(held->getParentNode(), nullptr);
    EXPECT_EQ(held->getRefCount(), 1);
}

TEST(ZRNode, NodesThatOutliveTheirDocumentForgetIt) {
    Family family;
    addChain(family.document, family.b, 1);
    family.b->setAttribute(u"y"_name, ZRValue(1));
    const ZRPtr<ZRNode> held(family.b);
    const ZRPtr<ZRAttr> attr(family.b->getAttributeNode(u"y"_name));
    family.document = nullptr;
    EXPECT_EQ(held->getOwnerDocument(), nullptr);
    EXPECT_EQ(held->getFirstChild()->getOwnerDocument(), nullptr);
    EXPECT_EQ(attr->getOwnerDocument(), nullptr);
    static_cast<ZRElement*>(held.get())->setAttribute(u"z"_name, ZRValue(2));
    EXPECT_EQ(dump(held->cloneNode(true)), "b y=1 z=2(e)");
}

}  // namespace
}  // namespace ZroCommon::testing

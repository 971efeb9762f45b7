// Documents and elements of a layer above: what they can do to a tree that is being loaded.
#include <functional>
#include <sstream>
#include <stdexcept>

#include "tests/dom/Trees.h"
#include "tests/support/Values.h"

namespace ZroCommon::testing {
namespace {

class DerivedDocument;

/// An element whose appending is decided by its document.
class DerivedElement : public ZRElement {
public:
    DerivedElement(DerivedDocument* document, ZRName name);
    ZRName getLocalName() const override { return m_name; }
    ZRNode* appendChildEx(ZRNode* newChild) override;
    void setAttributeEx(ZRName namespaceUri, ZRName prefix, ZRName name,
                        const UnicodeString& text) override {
        setAttributeNS(namespaceUri, prefix, name,
                       ZRValue(UnicodeString(text).append(u'!'), ZRValueUnitLiteral));
    }

private:
    ZRName m_name;
};

class DerivedDocument : public ZRDocument {
public:
    using Place = std::function<ZRNode*(ZRNode& parent, ZRNode* child)>;

    using ZRDocument::createElementNS;
    ZRPtr<ZRElement> createElementNS(ZRName /*namespaceUri*/, ZRName /*prefix*/,
                                     ZRName name) override {
        onCall("create " + utf8(name.toString()));
        if (name == u"refused"_name) {
            return nullptr;
        }
        return new DerivedElement(this, name);
    }
    ZRPtr<ZRNode> createTextNodeElement(const UnicodeString& text, ZRNode* parent) override {
        onCall("text");
        return text == u"drop" ? nullptr : ZRDocument::createTextNodeElement(text, parent);
    }

    void onCall(const std::string& call) const {
        if (watch) {
            watch(call);
        }
    }

    Place place;
    std::function<void(const std::string&)> watch;
};

struct DerivedDocuments : ::testing::Test {
    ZRElement* loaded(const char16_t* xml) const {
        document->loadXml(xml);
        return static_cast<ZRElement*>(document->getDocumentElement());
    }
    /// From now on this happens in place of appending elements x.
    void placeX(const std::function<ZRNode*(ZRNode& parent)>& place) const {
        document->place = [place](ZRNode& parent, ZRNode* child) {
            return child->getLocalName() == u"x"_name ? place(parent) : parent.appendChild(child);
        };
    }
    /// From now on this happens ahead of appending.
    void aheadOfAll(const std::function<void(ZRNode& child)>& act) const {
        document->place = [act](ZRNode& parent, ZRNode* child) {
            act(*child);
            return parent.appendChild(child);
        };
    }

    const ZRPtr<DerivedDocument> document{new DerivedDocument};
};

DerivedElement::DerivedElement(DerivedDocument* document, ZRName name)
    : ZRElement(document), m_name(name) {}

ZRNode* DerivedElement::appendChildEx(ZRNode* newChild) {
    const auto* document = static_cast<DerivedDocument*>(getOwnerDocument());
    document->onCall("append");
    return document->place ? document->place(*this, newChild) : appendChild(newChild);
}

TEST_F(DerivedDocuments, MayParseValuesOnArrivalAndMakesTheCopies) {
    ZRElement* a = loaded(u"<a x='1'><b>t</b></a>");
    EXPECT_TRUE(a->getAttribute(u"x"_name).isLiteralString());
    EXPECT_EQ(dump(a->cloneNode(true)), "a x=1!(b('t'))");
}

TEST_F(DerivedDocuments, MayRefuseElementsWithAllTheyContain) {
    EXPECT_EQ(dump(loaded(u"<a><refused><b><refused/></b>t</refused><c/></a>")), "a(c)");
    placeX([](ZRNode&) { return nullptr; });
    EXPECT_EQ(dump(loaded(u"<a>1<x><b/><x/>t</x>2<c><x/></c></a>")), "a('1' '2' c)");
    EXPECT_EQ(dump(loaded(u"<a>drop<b/>drop</a>")), "a(b)");
    document->loadXml(u"<refused><a/></refused>");
    EXPECT_EQ(dump(document), "#document");
}

TEST_F(DerivedDocuments, MaySubstituteAnElement) {
    document->setPullMode(true);
    placeX([&](ZRNode& parent) {
        return parent.appendChild(new DerivedElement(document, u"y"_name));
    });
    std::istringstream stream("<a><x><b/>t</x><c/></a>");
    document->load(stream);
    ZRNode* a = document->getDocumentElement();
    EXPECT_TRUE(a->getFirstChild()->isLoading());
    EXPECT_EQ(labels(a->getDescendantNodes()), "y, b, 't', c");
    EXPECT_EQ(dump(a), "a(y(b 't') c)");
    EXPECT_TRUE(a->getFirstChild()->getFlag(ZRNode::kLoaded));
    placeX([&](ZRNode& parent) {  // a text cannot take its place
        return parent.appendChild(document->createTextNode(u"instead"));
    });
    EXPECT_EQ(dump(loaded(u"<a><x>dropped</x><b/></a>")), "a('instead' b)");
}

TEST_F(DerivedDocuments, ComplementedParentsAreSkippedAtTheEndOfAnElement) {
    document->place = [&](ZRNode& parent, ZRNode* child) {
        if (child->getLocalName() != u"row"_name) {
            return parent.appendChild(child);
        }
        ZRNode* body = parent.getLastChildFast();
        if (body == nullptr || !body->getFlag(ZRNode::kComplemental)) {
            body = parent.appendChild(new DerivedElement(document, u"body"_name));
            body->setFlag(ZRNode::kComplemental, true);
        }
        return body->appendChild(child);
    };
    EXPECT_EQ(dump(loaded(u"<table><row>1</row><row/><foot/></table>")),
              "table(body(row('1') row) foot)");
    EXPECT_TRUE(document->getDocumentElement()->getFlag(ZRNode::kLoaded));
}

TEST_F(DerivedDocuments, MayTakeTheParentOfANodeOutOfTheTree) {
    document->place = [](ZRNode& parent, ZRNode* child) -> ZRNode* {
        if (parent.getLocalName() != u"gone"_name) {
            return parent.appendChild(child);
        }
        if (ZRNode* root = parent.getParentNode()) {
            root->removeChild(&parent);
        }
        return nullptr;
    };
    EXPECT_EQ(dump(loaded(u"<a><gone>t<x/>u<y/></gone><z/></a>")), "a");
}

TEST_F(DerivedDocuments, CannotLoadFromWithinTheLoading) {
    std::string error;
    aheadOfAll([&](ZRNode& child) { error = errorOf([&] { child.getFirstChild(); }); });
    EXPECT_EQ(dump(loaded(u"<a><b><c/></b></a>")), "a(b(c))");
    EXPECT_EQ(error, "0x080B SYSTEM ERROR: Cannot set a value on node type. "
                     "[ZroCommon::ZRDocument::loadNextNode]");
    aheadOfAll([&](ZRNode&) { error = errorOf([&] { document->loadXml(u"<other/>"); }); });
    EXPECT_EQ(dump(loaded(u"<a><b/></a>")), "a(b)");
    EXPECT_EQ(error.substr(0, 6), "0x080B");
}

TEST_F(DerivedDocuments, MayAbortTheLoadItIsCalledFrom) {
    aheadOfAll([&](ZRNode&) { document->abort(); });
    EXPECT_EQ(dump(loaded(u"<a><b/><c/></a>")), "a(b)");
    EXPECT_EQ(document->loadNextNode(), nullptr);
    document->place = [&](ZRNode&, ZRNode*) -> ZRNode* {
        document->abort();
        return nullptr;
    };
    EXPECT_EQ(dump(loaded(u"<a><b/><c/></a>")), "a");
}

/// Loads node by node, and goes on when a call of the document throws.
/// \param failing  which call throws, from 1  \return number of calls
int loadThroughFailures(DerivedDocument& document, int failing) {
    int calls = 0;
    document.watch = [&](const std::string& call) {
        if (++calls == failing) {
            throw std::runtime_error(call);
        }
    };
    document.setPullMode(true);
    std::istringstream stream("<a><b>1<c/></b><d>2</d></a>");
    document.load(stream);
    for (bool more = true; more;) {
        try {
            more = document.loadNextNode() != nullptr;
        } catch (const std::runtime_error&) {
            continue;
        }
    }
    return calls;
}

TEST_F(DerivedDocuments, WhatThrowsIsDroppedWithItsSubtreeAndLoadingGoesOn) {
    const char* trees[] = {
        "null",  // create a
        "a(d('2'))",
        "a(d('2'))",       // create b, append b
        "a(b(c) d('2'))",  // text 1
        "a(b('1') d('2'))",
        "a(b('1') d('2'))",  // create c, append c
        "a(b('1' c))",
        "a(b('1' c))",    // create d, append d
        "a(b('1' c) d)",  // text 2
    };
    int failing = 0;
    for (const char* tree : trees) {
        loadThroughFailures(*document, ++failing);
        EXPECT_EQ(dump(document->getDocumentElement()), tree) << "call " << failing;
        EXPECT_FALSE(document->isLoading()) << "call " << failing;
    }
    EXPECT_EQ(loadThroughFailures(*document, 0), failing);
}

TEST_F(DerivedDocuments, MayGiveAttributesAnotherName) {
    class Renaming : public ZRDocument {
        using ZRDocument::createAttributeNS;
        ZRPtr<ZRAttr> createAttributeNS(ZRName namespaceUri, ZRName prefix,
                                        ZRName /*name*/) override {
            return ZRDocument::createAttributeNS(namespaceUri, prefix, u"same"_name);
        }
    };
    const ZRPtr<ZRDocument> renaming(new Renaming);
    renaming->loadXml(u"<a x='1' y='2'/>");
    EXPECT_EQ(dump(renaming), "#document(a same=2)");
}

/// Looks around while it dies.
class Mourner : public DerivedElement {
public:
    Mourner(DerivedDocument* document, std::string& seen)
        : DerivedElement(document, u"m"_name), m_seen(seen) {}
    ~Mourner() override { m_seen += dump(this) + ";"; }

private:
    std::string& m_seen;
};

TEST_F(DerivedDocuments, ADyingNodeStillHasItsChildren) {
    std::string seen;
    ZRNode* outer = document->appendChild(new Mourner(document, seen));
    ZRNode* inner = outer->appendChild(new Mourner(document, seen));
    inner->appendChild(new DerivedElement(document, u"leaf"_name));
    outer->appendChild(new Mourner(document, seen));
    document->removeAllChildNodes();
    EXPECT_EQ(seen, "m(m(leaf) m);m(leaf);m;");
}

}  // namespace
}  // namespace ZroCommon::testing

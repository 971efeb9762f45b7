#include "zro/dom/ZRDocument.h"

#include <functional>
#include <future>
#include <sstream>
#include <streambuf>
#include <thread>
#include <vector>

#include "tests/dom/Trees.h"
#include "tests/support/TempFolder.h"
#include "zro/foundation/ZRError.h"

namespace ZroCommon::testing {
namespace {

/// A document in pull mode over a stream of its own.
struct Pulled {
    explicit Pulled(const std::string& xml) : input(xml) {
        document->setPullMode(true);
        document->load(input);
    }
    std::istringstream input;
    Document document = newDocument();
};

TEST(ZRDocument, LoadsElementsAttributesAndText) {
    const auto load = [](const std::string& xml) {
        return dump(loaded(xml));
    };
    expectLines(load, R"(
<a>x<!-- c -->y<?p q?>z</a> -> #document(a('xyz'))
<a><![CDATA[<]]>&amp;</a> -> #document(a('<&'))
<a x='1' p:y='2' xmlns:p='urn:u'/> -> #document(a x=1 p:y=2 xmlns:p=urn:u)
<a> <b/>t<c><d/></c></a> -> #document(a(' ' b 't' c(d)))
<!-- c --> <?p q?> <a/>  -> #document(a)
<a><![CDATA[]]></a> -> #document(a(''))
<!DOCTYPE a [<!ENTITY e '<b>t</b>'>]><a>&e;&e;</a> -> #document(a(b('t') b('t'))))");
}

// On purpose: references and CDATA sections before the root are text of the document.
TEST(ZRDocument, TextBeforeTheRootIsNotTheDocumentElement) {
    const Document document = loaded("&#32;<a/>");
    EXPECT_EQ(dump(document), "#document(' ' a)");
    EXPECT_EQ(label(document->getDocumentElement()), "a");
}

TEST(ZRDocument, LoadedNodesAreFinishedAndKnowTheirPlace) {
    const Document document = loaded("<a>\n <b/>\n</a>");
    const ZRNode* b = document->getDocumentElement()->getChildNodeByName(u"b"_name);
    EXPECT_TRUE(b->getFlag(ZRNode::kLoaded));
    EXPECT_FALSE(b->isLoading());
    EXPECT_FALSE(document->isLoading());
    EXPECT_EQ(b->getSourceLineNumber(), 2);
    EXPECT_GT(b->getSourceColumnNumber(), 1);
    EXPECT_EQ(document->getLastLoadingNode(), nullptr);
    EXPECT_EQ(b->getRefCount(), 1);
    EXPECT_FALSE(document->createElement(u"x"_name)->isLoaded());
}

TEST(ZRDocument, LoadingAgainReplacesTheTreeOrTheContentOfANode) {
    const Document document = loaded("<z/>");
    document->loadXml(u"<a><b><old/></b><c/></a>");
    document->setBaseUri(u"base");
    ZRNode* b = document->getDocumentElement()->getFirstChild();
    document->loadXml(u"<n>t</n>", b);
    EXPECT_EQ(dump(document), "#document(a(b(n('t')) c))");
    EXPECT_TRUE(b->getFlag(ZRNode::kLoaded));
    EXPECT_FALSE(b->isLoading());
}

TEST(ZRDocument, KnowsWhereItComesFrom) {
    const TempFolder folder;
    const UnicodeString path = folder.write("a.xml", "<a/>");
    const Document document = newDocument();
    document->load(path);
    EXPECT_EQ(document->getDocumentUri(), path);
    EXPECT_EQ(document->getBaseUri(), path);
    EXPECT_FALSE(document->isBaseUriSpecified());
    document->setBaseUri(u"base/");
    EXPECT_EQ(utf8(document->getBaseUri()), "base/");
    std::istringstream stream("<b/>");
    document->load(stream, document->getDocumentElement());
    EXPECT_EQ(document->getDocumentUri(), path);
    document->loadXml(u"<a/>");
    EXPECT_EQ(utf8(document->getDocumentUri()), "base/");
    document->load(path);
    document->setParser(nullptr);
    EXPECT_EQ(utf8(document->getDocumentUri()), "base/");
    EXPECT_EQ(errorOf([&] { document->load(folder.file("none.xml")); }).substr(0, 6), "0x1003");
}

TEST(ZRDocument, PullModeLoadsOneNodePerDemand) {
    const Pulled pulled("<a>t<b><c/></b><d/></a>");
    ZRDocument& document = *pulled.document;
    const auto expectLoaded = [&document](const char* tree) {
        EXPECT_EQ(dump(&document), tree);
    };
    expectLoaded("#document");
    EXPECT_TRUE(document.isLoading());
    ZRNode* a = document.getDocumentElement();
    EXPECT_TRUE(a->isLoading() && !a->hasChildNodesFast());
    expectLoaded("#document(a)");
    ZRNode* t = a->getFirstChild();
    EXPECT_EQ(document.getLastLoadingNode(), t);
    expectLoaded("#document(a('t'))");
    ZRNode* b = t->getNextSibling();
    expectLoaded("#document(a('t' b))");
    EXPECT_TRUE(b->hasChildNodes());
    expectLoaded("#document(a('t' b(c)))");
    EXPECT_EQ(label(b->getLastChild()), "c");
    EXPECT_FALSE(b->isLoading());
    expectLoaded("#document(a('t' b(c) d))");
    EXPECT_EQ(label(a->getLastChild()), "d");
    EXPECT_TRUE(!document.isLoading() && document.isLoaded());
    EXPECT_EQ(document.loadNextNode(), nullptr);
}

TEST(ZRDocument, AskingForANodeMayLoadAnotherElsewhere) {
    const Pulled pulled("<a><b/><c><d/></c><e/><f/></a>");
    ZRNode* b = pulled.document->getDocumentElement()->getFirstChild();
    EXPECT_FALSE(b->hasChildNodes());
    EXPECT_EQ(dump(pulled.document), "#document(a(b c))");
    ZRNode* d = b->getNextSibling()->getLastChild();
    EXPECT_EQ(d->getNextSibling(), nullptr);
    EXPECT_EQ(dump(pulled.document), "#document(a(b c(d) e))");
    EXPECT_EQ(label(pulled.document->getDescendantNodes()->getLastNode()), "f");
}

TEST(ZRDocument, AbortLeavesThePartialTree) {
    const Pulled pulled("<a><b><c/></b></a>");
    ZRNode* a = pulled.document->getDocumentElement();
    ZRNode* b = a->getFirstChild();
    pulled.document->abort();
    EXPECT_TRUE(b->isLoading());
    EXPECT_EQ(b->getFirstChild(), nullptr);
    EXPECT_EQ(b->getNextSibling(), nullptr);
    EXPECT_EQ(pulled.document->loadNextNode(), nullptr);
    EXPECT_EQ(dump(pulled.document), "#document(a(b))");
}

TEST(ZRDocument, LoadXmlLoadsAllEvenInPullMode) {
    const Document document = newDocument();
    document->setPullMode(true);
    document->loadXml(u"<a><b>t</b></a>");
    EXPECT_EQ(dump(document), "#document(a(b('t')))");
    EXPECT_NE(errorOf([&] { document->getParser()->rewind(); }), "nothing");
}

TEST(ZRDocument, AParserMayOutliveTheDocumentWhoseTextItReads) {
    Document document = newDocument();
    const ZRPtr<ZRXmlParser> parser(document->getParser());
    EXPECT_NE(errorOf([&] { document->loadXml(u"<a>t</b>"); }), "nothing");
    document = nullptr;
    parser->rewind();
    EXPECT_EQ(parser->next(), ZRXmlParser::START_TAG);
}

TEST(ZRDocument, ErrorsShowAtTheAccessThatCausesThem) {
    const Pulled pulled("<a><b/>t<c>&u;</c></a>");
    ZRNode* a = pulled.document->getDocumentElement();
    ZRNode* c = a->getFirstChild()->getNextSibling()->getNextSibling();
    EXPECT_EQ(dump(pulled.document), "#document(a(b 't' c))");
    EXPECT_EQ(errorOf([&] { c->getFirstChild(); }).substr(0, 6), "0x181E");
    EXPECT_EQ(dump(pulled.document), "#document(a(b 't' c))");
    EXPECT_EQ(pulled.document->getLastLoadingNode(), c);
    EXPECT_EQ(errorOf([&] { a->getLastChild(); }).substr(0, 6), "0x1801");
    EXPECT_EQ(errorOf([&] { loaded("<a><b></a>"); }).substr(0, 6), "0x1806");
}

TEST(ZRDocument, NodesMayGoOnceTheWalkHasMovedOn) {
    const Pulled pulled("<a><b><c/>x</b>y<d/></a>");
    ZRNode* a = pulled.document->getDocumentElement();
    std::string seen;
    ZRNodeIterator children(a->getChildNodes());
    while (ZRNode* child = children.nextNode()) {
        seen += dump(child) + " ";
        a->removeChild(child);
    }
    EXPECT_EQ(seen, "b(c 'x') 'y' d ");
}

/// Nothing but another class, so that virtual members make its nodes.
class OtherDocument : public ZRDocument {};

TEST(ZRDocument, ALayerAboveGetsTheSameTreeOfFaultyDocuments) {
    const auto treeOf = [](const Document& document, const std::string& xml) {
        document->getParser()->setCallbackError([](const ZRError&, void*) {}, nullptr);
        std::istringstream input(xml);
        document->load(input);
        return dump(document);
    };
    std::string many = "<a";
    for (std::size_t i = 0; i < 40; ++i) {
        many += " x" + std::to_string(i) + "='" + std::string(i, 'v') + "'";
    }
    for (const std::string& xml : {many + " x7='again' x39='again' x7='and again'/>",
                                   std::string("<a x='1' x='2'><b></c></b>t</a>"),
                                   std::string("&#32;<a><p:b q:x='1' x='&none;'/>")}) {
        EXPECT_EQ(treeOf(newDocument(), xml), treeOf(new OtherDocument, xml)) << xml;
    }
}

/// A document in pieces, which does something before it goes on.
class MeddlingBuf : public std::streambuf {
public:
    std::vector<std::string> pieces;
    std::function<void(std::size_t piece)> meddle;

protected:
    int_type underflow() override {
        if (m_next == pieces.size()) {
            return traits_type::eof();
        }
        meddle(m_next);
        std::string& piece = pieces[m_next++];
        setg(piece.data(), piece.data(), piece.data() + piece.size());
        return traits_type::to_int_type(piece[0]);
    }

private:
    std::size_t m_next = 0;
};

/// Takes the last loaded node or its parent out of the tree while the document is read.
std::string dumpWithout(ZRDocument& document, std::size_t piece, bool parent) {
    MeddlingBuf buffer;
    buffer.pieces = {"<a><b>", "<c/>", "text", "<d>", "</d>", "<e/></b>", "<f/></a>"};
    buffer.meddle = [&](std::size_t at) {
        ZRNode* last = document.getLastLoadingNode();
        ZRNode* node = last != nullptr && parent ? last->getParentNode() : last;
        if (at == piece && node != nullptr && node->getParentNode() != nullptr) {
            node->getParentNode()->removeChild(node);
        }
    };
    std::istream stream(&buffer);
    document.load(stream);
    return dump(&document);
}

TEST(ZRDocument, ANodeMayGoWhileItsContentIsRead) {
    for (std::size_t piece = 0; piece < 7; ++piece) {
        for (const bool parent : {false, true}) {
            const Document plain = newDocument();
            const Document other(new OtherDocument);
            const std::string tree = dumpWithout(*plain, piece, parent);
            EXPECT_EQ(tree, dumpWithout(*other, piece, parent)) << piece << parent;
            EXPECT_EQ(tree == "#document(a(b(c 'text' d e) f))", piece == 0) << piece << parent;
        }
    }
}

TEST(ZRDocument, ALoadCanBeAbortedByAnotherThread) {
    const Document document = newDocument();
    MeddlingBuf buffer;
    buffer.pieces.assign(100000, "<b/>");
    buffer.pieces[0] = "<a>";
    std::promise<void> isUnderWay;
    std::promise<void> goesOn;
    std::size_t last = 0;
    buffer.meddle = [&](std::size_t piece) {
        last = piece;
        if (piece == 1) {
            isUnderWay.set_value();
            goesOn.get_future().wait();
        }
    };
    std::istream stream(&buffer);
    std::thread loading([&] { document->load(stream); });
    isUnderWay.get_future().wait();
    document->abort();
    goesOn.set_value();
    loading.join();
    EXPECT_LT(last, 99999U);
    EXPECT_EQ(document->getLastLoadingNode(), nullptr);
    EXPECT_TRUE(document->isLoading());
}

TEST(ZRDocument, CreatesNodesWithoutAParent) {
    const Document document = newDocument();
    const ZRName uri = u"urn:u"_name;
    for (const auto& [node, shown] : Rows<ZRPtr<ZRNode>, const char*>{
             {document->createElement(u"e"_name), "e "},
             {document->createElementNS(uri, u"p:e"_name), "p:e urn:u"},
             {document->createTextNode(u"t"), "'t' "},
             {document->createTextNodeElement(u"t", document), "'t' "},
             {document->createProcessingInstruction(u"p q"), "<?p q?> "},
             {document->createDocumentFragment(), "#document-fragment "},
             {document->createAttribute(u"x"_name), "x= "},
             {document->createAttributeNS(uri, u"p:x"_name), "p:x= urn:u"},
             // Attributes of XML itself bring their namespace.
             {document->createAttributeNS(uri, u"xmlns:p"_name),
              "xmlns:p= http://www.w3.org/2000/xmlns/"},
             {document->createAttributeNS(uri, u"xml:lang"_name),
              "xml:lang= http://www.w3.org/XML/1998/namespace"},
         }) {
        EXPECT_EQ(label(node) + " " + utf8(node->getNamespaceUri()), shown);
        EXPECT_EQ(node->getOwnerDocument(), document.get());
        EXPECT_EQ(node->getParentNode(), nullptr);
    }
    EXPECT_EQ(document->getOwnerDocument(), nullptr);
    EXPECT_EQ(document->getDocumentElement(), nullptr);
}

}  // namespace
}  // namespace ZroCommon::testing

#include "tests/dom/Trees.h"

namespace ZroCommon::testing {
namespace {

/// The first element of that name.
ZRNode* find(const Document& document, const char16_t* name) {
    return document->getElementsByTagName(ZRName(UnicodeString(name)))->getFirstNode();
}

std::string uri(ZRName name) {
    return utf8(name.toString());
}

constexpr const char* kScopes =
    "<a xmlns='urn:d' xmlns:p='urn:p' xmlns:q='urn:q'>"
    "<p:b xmlns='urn:e' q:x='1'><c xmlns='' xmlns:p='urn:other'/></p:b></a>";

TEST(ZRNode, PrefixesStandForWhatIsInScope) {
    const Document document = loaded(kScopes);
    const Rows<const char16_t*, ZRName, const char*> cases = {
        {u"a", ZRName(), "urn:d"},  {u"a", u"p"_name, "urn:p"}, {u"b", ZRName(), "urn:e"},
        {u"b", u"p"_name, "urn:p"}, {u"c", ZRName(), ""},       {u"c", u"p"_name, "urn:other"},
        {u"c", u"q"_name, "urn:q"}, {u"c", u"none"_name, ""}};
    for (const auto& [name, prefix, namespaceUri] : cases) {
        ZRNode* node = find(document, name);
        EXPECT_EQ(uri(node->lookupNamespaceUri(prefix)), namespaceUri) << utf8(name);
        for (const char16_t* other : {u"urn:d", u"urn:e", u"urn:p", u""}) {
            EXPECT_TRUE(!prefix.isEmpty()
                        || node->isDefaultNamespace(ZRName(other)) == (utf8(other) == namespaceUri))
                << utf8(name) << ", " << utf8(other);
        }
    }
    ZRNode* attr = find(document, u"b")->getAttributes()->getNamedItem(u"x"_name);
    EXPECT_EQ(uri(attr->lookupNamespaceUri(ZRName())), "urn:e");
    EXPECT_EQ(uri(document->lookupNamespaceUri(ZRName())), "urn:d");
    EXPECT_TRUE(document->isDefaultNamespace(u"urn:d"_name));
}

TEST(ZRNode, NamespacesAreFoundUnderAPrefixThatStillStandsForThem) {
    const Document document = loaded(kScopes);
    const Rows<const char16_t*, ZRName, const char*> cases = {
        {u"a", u"urn:p"_name, "p"},     {u"b", u"urn:p"_name, "p"}, {u"c", u"urn:q"_name, "q"},
        {u"c", u"urn:other"_name, "p"}, {u"c", u"urn:d"_name, ""},  {u"c", ZRName(), ""},
        {u"b", u"urn:none"_name, ""}};
    for (const auto& [name, namespaceUri, prefix] : cases) {
        EXPECT_EQ(uri(find(document, name)->lookupPrefix(namespaceUri)), prefix)
            << utf8(name) << ", " << uri(namespaceUri);
    }
    EXPECT_EQ(uri(document->lookupPrefix(u"urn:q"_name)), "q");
    const Document shadowed = loaded("<a xmlns:p='urn:u' xmlns:q='urn:u'><b xmlns:p='urn:v'/></a>");
    EXPECT_EQ(uri(find(shadowed, u"b")->lookupPrefix(u"urn:u"_name)), "q");
    const Document hidden = loaded("<a xmlns:p='urn:u'><b xmlns:p='urn:v'/></a>");
    EXPECT_EQ(uri(find(hidden, u"b")->lookupPrefix(u"urn:u"_name)), "");
}

TEST(ZRNode, LooseNodesHaveNoScope) {
    const Document document = newDocument();
    for (const ZRPtr<ZRNode>& loose : {ZRPtr<ZRNode>(document->createTextNode(u"t")),
                                       ZRPtr<ZRNode>(document->createDocumentFragment())}) {
        EXPECT_EQ(uri(loose->lookupNamespaceUri(u"p"_name)), "");
        EXPECT_EQ(uri(loose->lookupPrefix(u"urn:p"_name)), "");
        EXPECT_FALSE(loose->isDefaultNamespace(ZRName()));
    }
    EXPECT_EQ(uri(document->lookupPrefix(u"urn:p"_name)), "");
}

TEST(ZRElement, APlainElementsNamespaceFollowsTheDeclarationsInScope) {
    const Document document = newDocument();
    const ZRPtr<ZRElement> outer = document->createElement(u"outer"_name);
    const ZRPtr<ZRElement> inner = document->createElement(u"inner"_name);
    outer->appendChild(inner);
    EXPECT_EQ(uri(inner->getNamespaceUri()), "");
    outer->setAttribute(ZRN_xmlns, ZRValue(UnicodeString(u"urn:d")));
    EXPECT_EQ(uri(inner->getNamespaceUri()), "urn:d");
    inner->setPrefix(u"p"_name);
    EXPECT_EQ(uri(inner->getNamespaceUri()), "");
    outer->setAttributeNS(ZRName(), u"xmlns:p"_name, ZRValue(u"urn:p"_name));
    EXPECT_EQ(uri(inner->getNamespaceUri()), "urn:p");
    EXPECT_EQ(uri(inner->lookupPrefix(u"urn:p"_name)), "p");
    EXPECT_TRUE(outer->isDefaultNamespace(u"urn:d"_name));
}

TEST(ZRElement, AnElementWithANamespaceKeepsItWhereverItStands) {
    const Document document = newDocument();
    const ZRPtr<ZRElement> e = document->createElementNS(u"urn:u"_name, u"p:e"_name);
    EXPECT_EQ(uri(e->getPrefix()) + uri(e->getLocalName()), "pe");
    EXPECT_EQ(uri(e->lookupNamespaceUri(u"p"_name)), "urn:u");
    EXPECT_EQ(uri(e->lookupPrefix(u"urn:u"_name)), "p");
    e->setPrefix(u"q"_name);
    EXPECT_EQ(uri(e->getNodeName()), "q:e");
    EXPECT_EQ(uri(e->getNamespaceUri()), "urn:u");
}

}  // namespace
}  // namespace ZroCommon::testing

#include "zro/dom/ZRElement.h"

#include <vector>

#include "tests/dom/Trees.h"
#include "tests/support/Values.h"

namespace ZroCommon::testing {
namespace {

ZRValue string(const char16_t* text) {
    return UnicodeString(text);
}

struct Fixture {
    explicit Fixture(const char* xml = "<e/>") : document(loaded(xml)) {}

    Document document;
    ZRPtr<ZRElement> e{static_cast<ZRElement*>(document->getDocumentElement())};
};

TEST(ZRElement, SettingByNamespaceTakesThePrefixToo) {
    const Fixture f;
    const ZRName x = u"x"_name;
    f.e->removeAttributeNS(u"urn:u"_name, x);
    EXPECT_EQ(dump(f.e->getAttribute(x)) + dump(f.e->getAttributeNS(u"urn:u"_name, x)), "nullnull");
    f.e->setAttributeNS(u"urn:u"_name, u"p:x"_name, string(u"1"));
    const ZRAttr* node = f.e->getAttributeNode(x);
    f.e->setAttributeNS(u"urn:u"_name, u"q"_name, x, string(u"2"));
    EXPECT_EQ(f.e->getAttributeNode(x), node);
    f.e->setAttributeNS(u"urn:v"_name, u"p"_name, x, string(u"3"));
    f.e->setAttributeEx(u"urn:v"_name, u"r"_name, x, u"4");
    f.e->setAttributeNS(ZRName(), u"xml:lang"_name, string(u"en"));
    f.e->setAttributeNS(ZRName(), u"xmlns:p"_name, string(u"urn:u"));
    EXPECT_EQ(dump(f.e), "e q:x=2 r:x=4 xml:lang=en xmlns:p=urn:u");
    EXPECT_EQ(dump(f.e->getAttributeNS(u"urn:v"_name, x)), "string 4");
    EXPECT_TRUE(f.e->hasAttributeNS(ZRN_ns_xml, u"lang"_name));
    EXPECT_TRUE(f.e->hasAttributeNS(ZRN_ns_xmlns, u"p"_name));
}

TEST(ZRElement, SearchByNameLooksAtTheLocalName) {
    const Fixture f;
    f.e->setAttributeNS(u"urn:u"_name, u"a"_name, u"x"_name, string(u"1"));
    f.e->setAttribute(u"y"_name, string(u"2"));
    f.e->setAttributeNS(u"urn:v"_name, u"b"_name, u"x"_name, ZRValue(3));
    EXPECT_EQ(dump(f.e->getAttribute(u"x"_name)), "string 1");
    EXPECT_FALSE(f.e->hasAttribute(u"a:x"_name));
    EXPECT_FALSE(f.e->hasAttributeNS(ZRName(), u"x"_name));
    EXPECT_TRUE(f.e->hasAttributeLocal(u"x"_name));
    std::vector<ZRValue> values = {string(u"0")};
    f.e->getAttributeLocal(u"x"_name, &values);
    std::vector<ZRPtr<ZRAttr>> nodes;
    f.e->getAttributeNodeLocal(u"x"_name, &nodes);
    ASSERT_TRUE(values.size() == 3 && nodes.size() == 2);
    EXPECT_EQ(dump(values[1]) + dump(values[2]), "string 1integer 3");
    EXPECT_EQ(label(nodes[0]) + label(nodes[1]), "a:x=1b:x=3");
    f.e->getAttributeLocal(u"x"_name, nullptr);
    f.e->getAttributeNodeLocal(u"x"_name, nullptr);
    f.e->setAttribute(u"x"_name, string(u"4"));
    EXPECT_EQ(dump(f.e), "e a:x=4 y=2 b:x=3");
}

TEST(ZRElement, AttributeNodesReplaceThoseOfTheirName) {
    const Fixture f("<e x='1' y='2'/>");
    const ZRPtr<ZRAttr> x = f.document->createAttribute(u"x"_name);
    const ZRPtr<ZRAttr> replaced = f.e->setAttributeNode(x);
    EXPECT_EQ(label(replaced), "x=1");
    EXPECT_EQ(replaced->getOwnerElement(), nullptr);
    EXPECT_EQ(x->getOwnerElement(), f.e.get());
    EXPECT_EQ(f.e->setAttributeNode(x).get(), nullptr);
    EXPECT_EQ(dump(f.e), "e x= y=2");
    const ZRPtr<ZRAttr> qualified =
        f.document->createAttributeNS(u"urn:u"_name, u"p"_name, u"x"_name);
    EXPECT_EQ(f.e->setAttributeNodeNS(qualified).get(), nullptr);
    EXPECT_EQ(f.e->setAttributeNode(f.document->createAttribute(u"y"_name))->getText(), u"2");
    EXPECT_EQ(dump(f.e), "e x= y= p:x=");
}

TEST(ZRElement, ImpossibleAttributesAreRefused) {
    const Fixture f;
    const Fixture other;
    const ZRPtr<ZRAttr> loose = f.document->createAttribute(u"x"_name);
    const ZRPtr<ZRAttr> foreign = other.document->createAttribute(u"x"_name);
    const ZRPtr<ZRElement> owner = element(f.document, u"owner");
    const ZRPtr<ZRAttr> owned = f.document->createAttribute(u"x"_name);
    owner->setAttributeNode(owned);
    ZRNamedNodeMap* map = f.e->getAttributes();
    const std::string isNoChild =
        "09 arg is not a child of this node. ZRElement::removeAttributeNode";
    expectErrors({
        {[&] { f.e->setAttributeNode(nullptr); }, "03 arg is null. AttrNodeMap::setNamedItem"},
        {[&] { f.e->setAttributeNodeNS(nullptr); }, "03 arg is null. AttrNodeMap::setNamedItemNS"},
        {[&] { f.e->setAttributeNode(foreign); },
         "06 argarg is created from a different document. AttrNodeMap::setNamedItem"},
        {[&] { map->setNamedItemNS(owner); },
         "07 arg is not an ZRAttr object. AttrNodeMap::setNamedItemNS"},
        {[&] { f.e->setAttributeNodeNS(owned); },
         "08 arg is an ZRAttr that is already an attribute of another ZRElement object. "
         "AttrNodeMap::setNamedItemNS"},
        {[&] { f.e->removeAttributeNode(nullptr); },
         "03 arg is null. ZRElement::removeAttributeNode"},
        {[&] { f.e->removeAttributeNode(loose); }, isNoChild},
        {[&] { f.e->removeAttributeNode(owned); }, isNoChild},
    });
    EXPECT_EQ(dump(owner), "owner x=");
}

TEST(ZRElement, MapsAreLiveAndInOrderOfInsertion) {
    const Fixture f("<e z='1' y='2'/>");
    ZRNamedNodeMap* map = f.e->getAttributes();
    f.e->setAttribute(u"x"_name, string(u"3"));
    EXPECT_EQ(labels(map), "z=1, y=2, x=3");
    EXPECT_TRUE(map->item(3) == nullptr && map->item(-1) == nullptr);
    EXPECT_EQ(map->getPreviousNode(map->item(1)), map->getFirstNode());
    EXPECT_EQ(map->removeNamedItemNS(u"urn:u"_name, u"x"_name).get(), nullptr);
    EXPECT_EQ(label(map->removeNamedItem(u"z"_name)), "z=1");
    const ZRPtr<ZRAttr> y = f.e->removeAttributeNode(f.e->getAttributeNode(u"y"_name));
    EXPECT_TRUE(y->getOwnerElement() == nullptr && y->getRefCount() == 1);
    f.e->setAttributeNode(y);
    f.e->removeAttribute(u"none"_name);
    EXPECT_EQ(dump(f.e), "e x=3 y=2");
}

TEST(ZRElement, AMapThatOutlivesItsElementIsEmpty) {
    Fixture f("<e x='1'/>");
    const ZRPtr<ZRNamedNodeMap> map(f.e->getAttributes());
    f.document->removeAllChildNodes();
    f.e = nullptr;
    EXPECT_EQ(map->getLength(), 0);
    const ZRPtr<ZRAttr> attr = f.document->createAttribute(u"x"_name);
    EXPECT_NE(errorOf([&] { map->setNamedItem(attr); }), "nothing");
}

TEST(ZRElement, CopiesCarryNamesAttributesAndPosition) {
    const Fixture f("\n<p:e p:x='1' xmlns:p='urn:u' y='2'>t</p:e>");
    addElement(f.document, f.e->getFirstChild(), u"left-out");
    const ZRPtr<ZRNode> deep = f.e->cloneNode(true);
    EXPECT_EQ(dump(f.e->cloneNode(false)), "p:e p:x=1 xmlns:p=urn:u y=2");
    EXPECT_EQ(dump(deep), "p:e p:x=1 xmlns:p=urn:u y=2('t')");
    EXPECT_EQ(deep->getNamespaceUri(), u"urn:u"_name);
    EXPECT_EQ(deep->getSourceLineNumber(), 2);
    EXPECT_EQ(deep->getSourceColumnNumber(), f.e->getSourceColumnNumber());
    EXPECT_EQ(f.document->createElement(u"e"_name)->cloneNode(false)->getTypeID(), 0xD27D366CU);
}

TEST(ZRAttr, HasNoSiblingsAndNoAttributes) {
    const Fixture f("<e x='1' y='2'>t</e>");
    ZRAttr* y = f.e->getAttributeNode(u"y"_name);
    EXPECT_EQ(f.e->getAttributeNode(u"x"_name)->getNextSibling(), nullptr);
    EXPECT_EQ(y->getPreviousSibling(), nullptr);
    EXPECT_EQ(y->getAttributes(), nullptr);
    EXPECT_EQ(y->getParentNode(), f.e.get());
}

TEST(ZRAttr, KeepsValuesOfEveryKindAndLength) {
    const Fixture f;
    const ZRPtr<ZRAttr> attr = f.document->createAttribute(u"x"_name);
    const UnicodeString longText(1000, u'x', 1000);
    const ZRValue values[] = {
        ZRValue(),
        string(u""),
        string(u"12345678"),
        string(u"123456789"),
        UnicodeString(longText),
        ZRValue(UnicodeString(u"a b"), ZRValueUnitLiteral),
        ZRValue(UnicodeString(u"http://example.org/"), ZRValueUnitUri),
        ZRValue(5),
        ZRValue(1.5F, ZRValueUnitEm),
        ZRValue(ZRName(ZRN_auto)),
        mapOf(ZRN_length, ZRValue(3)),
        ZRValue(static_cast<ZRRCObject*>(f.document.get())),
    };
    for (const ZRValue& value : values) {
        attr->setValue(value);
        attr->setValue(attr->getValue());
        EXPECT_EQ(dump(attr->getValue()), dump(value));
        EXPECT_EQ(attr->getValue().getUnitType(), value.getUnitType()) << dump(value);
        EXPECT_EQ(attr->getText(), value.toString()) << dump(value);
    }
    EXPECT_EQ(attr->getValue().getRCObject(), f.document.get());
    attr->setNodeValue(ZRValue(12.0F, ZRValueUnitPt));
    EXPECT_EQ(dump(attr->getNodeValue()), "real 12pt");
    attr->setText(UnicodeString(ZRValue(UnicodeString(u"x")).toString()).append(u"y"));
    EXPECT_EQ(utf8(attr->getText()), "xy");
}

TEST(ZRTextNode, CountsUnitsAndTakesData) {
    const Fixture f;
    const ZRPtr<ZRTextNode> node = f.document->createTextNode(u"a\U0001D11E");
    EXPECT_EQ(node->getLength(), 3);
    node->setData(u"b");
    EXPECT_EQ(utf8(node->getText()), "b");
    node->setText(u"c");
    EXPECT_EQ(utf8(node->getData()), "c");
    node->setNodeValue(ZRValue(12.0F, ZRValueUnitPt));
    EXPECT_EQ(dump(node->getNodeValue()), "string 12pt");
    EXPECT_EQ(utf8(node->getNodeName().toString()), "#text");
}

// On purpose: the copy of a processing instruction is a text node.
TEST(ZRPINode, IsCopiedAsText) {
    const Fixture f;
    const ZRPtr<ZRPINode> pi = f.document->createProcessingInstruction(u"p q");
    EXPECT_EQ(utf8(pi->getLocalName().toString()), "#text");
    EXPECT_TRUE(pi->isText());
    EXPECT_EQ(pi->cloneNode(true)->getNodeType(), ZRNodeTypeText);
    EXPECT_EQ(utf8(pi->cloneNode(false)->getText()), "p q");
}

TEST(ZRDocumentFragment, IsCopiedWithItsChildren) {
    const Fixture f;
    const ZRPtr<ZRDocumentFragment> fragment = f.document->createDocumentFragment();
    fragment->appendChild(f.e);
    EXPECT_EQ(dump(fragment->cloneNode(true)) + dump(fragment->cloneNode(false)),
              "#document-fragment(e)#document-fragment");
}

}  // namespace
}  // namespace ZroCommon::testing

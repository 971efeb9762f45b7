#include "zro/xml/ZRXmlUtil.h"

#include <sstream>

#include "tests/support/NamesStay.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Test.h"

namespace ZroCommon::testing {
namespace {

ZRName name(const char16_t* text) {
    return {UnicodeString(text)};
}

TEST(ZRXmlUtil, SplitsAtTheFirstColon) {
    for (const auto& [qName, prefix, localPart] : Rows<const char16_t*, const char*, const char*>{
             {u"fo:block", "fo", "block"},
             {u"block", "", "block"},
             {u"a:b:c", "a", "b:c"},
             {u":x", "", "x"},
             {u"x:", "x", ""},
             {u"", "", ""},
         }) {
        EXPECT_EQ(utf8(ZRXmlUtil::getPrefixFromQNameStr(qName)), prefix) << utf8(qName);
        EXPECT_EQ(utf8(ZRXmlUtil::getPrefixFromQName(name(qName))), prefix) << utf8(qName);
        EXPECT_EQ(utf8(ZRXmlUtil::getLocalPartFromQNameStr(qName)), localPart) << utf8(qName);
        EXPECT_EQ(utf8(ZRXmlUtil::getLocalPartFromQName(name(qName))), localPart) << utf8(qName);
    }
    EXPECT_EQ(ZRXmlUtil::getPrefixFromQName(name(u"fo:block")), ZRN_fo);
    EXPECT_EQ(ZRXmlUtil::getLocalPartFromQName(ZRN_block), ZRN_block);
}

TEST(ZRXmlUtil, JoinsPrefixAndLocalName) {
    EXPECT_EQ(ZRXmlUtil::makeQName(ZRN_EMPTY, ZRN_block), ZRN_block);
    EXPECT_EQ(ZRXmlUtil::makeQName(ZRN_xml, ZRN_lang), ZRN_xml_lang);
    EXPECT_EQ(utf8(ZRXmlUtil::makeQNameStr(u"", u"b")), "b");
    EXPECT_EQ(utf8(ZRXmlUtil::makeQNameStr(u"a", u"")), "a:");
    const UnicodeString& xmlns = ZRName(ZRN_ns_xmlns);
    EXPECT_EQ(utf8(ZRXmlUtil::makeNSQNameStr(u"", u"a")), "a");
    EXPECT_EQ(utf8(ZRXmlUtil::makeNSQNameStr(ZRName(ZRN_ns_xml), u"lang")), "xml:lang");
    EXPECT_EQ(utf8(ZRXmlUtil::makeNSQNameStr(xmlns, u"xmlns")), "xmlns");
    EXPECT_EQ(utf8(ZRXmlUtil::makeNSQNameStr(xmlns, u"a")), "xmlns:a");
}

// On purpose: the colon of a plain name is there too, behind the brace.
TEST(ZRXmlUtil, ExpandedNamesHaveAColonBehindTheBrace) {
    EXPECT_EQ(utf8(ZRXmlUtil::makeNSQNameStr(u"urn:1", u"a")), "{urn:1}:a");
}

constexpr const char* kFo = "<fo:root xmlns:fo='http://www.w3.org/1999/XSL/Format'/>";
constexpr const char* kSimplifiedStylesheet =
    "<!-- c --><fo:root xmlns:fo='http://www.w3.org/1999/XSL/Format' a='1' xsl:version='1.0'"
    " xmlns:xsl='http://www.w3.org/1999/XSL/Transform' b='2'/>";
constexpr const char* kFoVersion =
    "<fo:root xmlns:fo='http://www.w3.org/1999/XSL/Format' version='1.0' fo:version='1.0'/>";

std::string rootOf(const std::string& document) {
    std::istringstream stream(document);
    ZRName localName = ZRN_block;
    const ZRName uri = ZRXmlUtil::getRootName(localName, stream, u"", u"");
    return "{" + utf8(uri) + "}" + utf8(localName);
}

TEST(ZRXmlUtil, LooksAtTheRoot) {
    const NamesStay names;
    expectTexts(rootOf, {
                            "<p:a xmlns:p='urn:1'><b/> -> {urn:1}a",
                            "<!-- only --><?a prolog?> -> {}",
                            "<!DOCTYPE a SYSTEM '/no/such.dtd'><a b='&none;' none:c=''/> -> {}a",
                            "<?xml version='1.0' encoding='no-such-encoding'?><a/> -> {}a",
                        });
    EXPECT_EQ(errorOf([] { rootOf("x<a/>"); }).substr(0, 7), "0x180E ");
    EXPECT_EQ(errorOf([] { rootOf(""); }),
              "0x1004 Unexpected end of input stream. [ZroCommon::XmlParserImpl::checkStream]");
}

TEST(ZRXmlUtil, ARootParserStandsOnTheRootsTag) {
    std::istringstream stream("<!-- c --><a b='1'>x</a>");
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::getRootParser(stream, u"text/xml", u".xml");
    ASSERT_NE(parser, nullptr);
    EXPECT_EQ(parser->getEventType(), ZRXmlParser::START_TAG);
    EXPECT_EQ(utf8(parser->getAttributeValue(0)), "1");
    EXPECT_EQ(parser->next(), ZRXmlParser::TEXT);
}

std::string stylesheetNamespaceOf(const char* document) {
    std::istringstream stream(document);
    ZRName localName;
    const ZRName uri = ZRXmlUtil::getXSLStylesheetNamespace(localName, stream, u"", u"");
    return utf8(localName) + " " + utf8(uri);
}

TEST(ZRXmlUtil, TellsASimplifiedStylesheetFromADocument) {
    EXPECT_EQ(stylesheetNamespaceOf(kFo), "root http://www.w3.org/1999/XSL/Format");
    EXPECT_EQ(stylesheetNamespaceOf(kFoVersion), "root http://www.w3.org/1999/XSL/Format");
    EXPECT_EQ(stylesheetNamespaceOf(kSimplifiedStylesheet),
              "root http://www.w3.org/1999/XSL/Transform");
    EXPECT_EQ(stylesheetNamespaceOf("<root xsl:version='1.0' xmlns:xsl='urn:1'/>"), "root ");
}

TEST(ZRXmlUtil, LooksAtDocumentsByUri) {
    const TempFolder folder;
    const UnicodeString path = folder.write("sheet.fo", kSimplifiedStylesheet);
    ZRName localName;
    EXPECT_EQ(ZRXmlUtil::getRootName(localName, path), ZRN_ns_fo);
    EXPECT_EQ(ZRXmlUtil::getXSLStylesheetNamespace(localName, path), ZRN_ns_xslt);
    EXPECT_EQ(localName, ZRN_root);
    EXPECT_EQ(ZRXmlUtil::getRootName(localName, UnicodeString()), ZRN_EMPTY);
    EXPECT_EQ(localName, ZRN_EMPTY);
    EXPECT_EQ(ZRXmlUtil::getRootParser(UnicodeString()), nullptr);
    const std::string error =
        "0x1003 Cannot open file: file:/no/such.fo [ZroCommon::XmlParserImpl::setInput]";
    EXPECT_EQ(errorOf([&] { ZRXmlUtil::getRootName(localName, u"/no/such.fo"); }), error);
    EXPECT_EQ(errorOf([&] { ZRXmlUtil::getXSLStylesheetNamespace(localName, u"/no/such.fo"); }),
              error);
}

}  // namespace
}  // namespace ZroCommon::testing

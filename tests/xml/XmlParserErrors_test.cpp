#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/Errors.h"
#include "tests/support/XmlEvents.h"

namespace ZroCommon {
namespace {

using testing::xmlEvents;
using testing::XmlReading;

struct Row {
    const char* document;
    const char* error;
};

// The last entry: what was thrown.
std::string thrown(const char* document, const XmlReading& reading = {}) {
    const std::string events = xmlEvents(document, reading);
    const std::size_t at = events.rfind("throws ");
    return at == std::string::npos ? "nothing" : events.substr(at + 7);
}

void expectThrown(const std::vector<Row>& rows) {
    for (const auto& [document, error] : rows) {
        EXPECT_EQ(thrown(document), error) << "for: " << document;
    }
}

TEST(XmlParserErrors, Tags) {
    expectThrown({
        {"<a>", "6145 Missing end tag.\\nSTART_TAG, Line 1, Col 2."},
        {"<a/><b/>", "6146 Only one top level element is allowed.\\nSTART_TAG, Line 1, Col 5."},
        {"<1/>", "6148 Invalid start tag name.\\nSTART_TAG, Line 1, Col 1."},
        {"<a></1>", "6149 Invalid end tag name.\\nEND_TAG, Line 1, Col 5."},
        {"<a></p:b>", "6150 End tag 'p:b' does not match the start tag 'a'.\\nEND_TAG, Line 1, "
                      "Col 8."},
        {"<p:a/>", "6151 Undeclared namespace prefix: p\\nSTART_TAG, Line 1, Col 5."},
        {"<a p:b=''/>", "6151 Undeclared namespace prefix: p\\nSTART_TAG, Line 1, Col 10."},
        {"<a b='1' b='2'/>", "6152 Duplicate attribute: b\\nSTART_TAG, Line 1, Col 15."},
        {"<a x:b='1' y:b='2' xmlns:x='u' xmlns:y='u'/>",
         "6152 Duplicate attribute: y:b\\nSTART_TAG, Line 1, Col 43."},
        {"<a 1=''/>", "6153 Invalid attribute name.\\nSTART_TAG, Line 1, Col 3."},
        {"<a b/>", "6154 Missing '=' after attribute name.\\nSTART_TAG, Line 1, Col 4."},
        {"<a b=''c=''/>", "6155 Missing whitespace between attributes.\\nSTART_TAG, Line 1, "
                          "Col 7."},
        {"<a*/>", "6156 Unexpected character: *\\nSTART_TAG, Line 1, Col 2."},
        {"<a/x>", "6156 Unexpected character: x\\nSTART_TAG, Line 1, Col 3."},
        {"<a></a b>", "6156 Unexpected character: b\\nEND_TAG, Line 1, Col 7."},
        {"<a b='1'", "6156 Unexpected character: \xEF\xBF\xBF\\nSTART_TAG, Line 1, Col 7."},
        {"< a/>", "6157 Unexpected whitespace after '<'.\\nSTART_TAG, Line 1, Col 1."},
        {"<a></ a>", "6157 Unexpected whitespace after '</'.\\nEND_TAG, Line 1, Col 5."},
        {"<a/ >", "6157 Unexpected whitespace after '/'.\\nSTART_TAG, Line 1, Col 3."},
    });
}

TEST(XmlParserErrors, TextAndMarkup) {
    expectThrown({
        {"x<a/>", "6158 Unexpected text at top level of the document: U+0078 (x)\\nTEXT, Line 1, "
                  "Col 1."},
        {"<a/>x", "6158 Unexpected text at top level of the document: U+0078 (x)\\nTEXT, Line 1, "
                  "Col 4."},
        {"<a>]]></a>", "6160 Unexpected ']]>'.\\nTEXT, Line 1, Col 5."},
        {"<a><![CDATA[x]]</a>", "6161 Unexpected end of input while looking for CDATA section "
                                "terminator ']]>'.\\nCDSECT, Line 1, Col 18."},
        {"<a><![x</a>", "6161 Unexpected end of input while looking for CDATA section terminator "
                        "']]>'.\\nSTART_TAG, Line 1, Col 10."},
        {"<a><!-- x -</a>", "6162 Unexpected end of input while looking for comment terminator "
                            "'-->'.\\nCOMMENT, Line 1, Col 14."},
        {"<a><!-- -- --></a>",
         "6163 Unexpected character after -- in comment\\nCOMMENT, Line 1, Col 10."},
        {"<a><!-- --", "6163 Unexpected character after -- in comment\\nCOMMENT, Line 1, Col 9."},
        {"<a><![CDATA x]]></a>", "6184 Invalid syntax in CDATA section.\\nSTART_TAG, Line 1, Col "
                                 "11."},
        {"<a><!-x--></a>", "6185 Invalid syntax in comment.\\nSTART_TAG, Line 1, Col 6."},
        {"<a><!ELEMENT></a>", "6186 Unexpected '<!ELEMENT'.\\nSTART_TAG, Line 1, Col 12."},
        {"<?XML version='1.0'?><a/>",
         "6187 The name 'xml' must be lower case: <?XML\\nPROCESSING_INSTRUCTION, Line 1, Col 5."},
        {"<?p?><a/>", "6188 Missing whitespace after PI target: <?p\\nPROCESSING_INSTRUCTION, "
                      "Line 1, Col 3."},
        {"<?p q", "6189 Unexpected end of input while looking for PI terminator '?>'.\\n"
                  "PROCESSING_INSTRUCTION, Line 1, Col 4."},
        {"<a>\xEF\xBF\xBF</a>", "6196 Invalid character.\\nSTART_TAG, Line 1, Col 2."},
    });
}

TEST(XmlParserErrors, ReferencesAndLiterals) {
    expectThrown({
        {"<a>&;</a>", "6171 Empty entity name.\\nENTITY_REF, Line 1, Col 4."},
        {"<a>&b </a>", "6172 Invalid character in entity reference: &b ;\\nENTITY_REF, Line 1, Col "
                       "5."},
        {"<a>&b;</a>", "6174 Reference to undefined entity: &b;\\nENTITY_REF, Line 1, Col 5."},
        {"<a b='&c;'/>", "6174 Reference to undefined entity: &c;\\nSTART_TAG, Line 1, Col 8."},
        {"<a b=1/>", "6190 Missing quotation character (\" or ').\\nSTART_TAG, Line 1, Col 5."},
        {"<a b='1/>", "6191 Unexpected end of input while looking for literal terminator (').\\n"
                      "START_TAG, Line 1, Col 8."},
        {"<a b='<'/>", "6192 Unexpected '<' in attribute value.\\nSTART_TAG, Line 1, Col 6."},
        {"<a>&# 1;</a>", "6193 Unexpected whitespace in character reference: &# ;\\nENTITY_REF, "
                         "Line 1, Col 5."},
        {"<a>&#;</a>", "6194 Invalid character in character reference: &#;;\\nENTITY_REF, Line 1, "
                       "Col 5."},
        {"<a>&#xFg;</a>", "6194 Invalid character in character reference: &#xFg;\\nENTITY_REF, "
                          "Line 1, Col 7."},
        {"<a>&#X41;</a>", "6194 Invalid character in character reference: &#X;\\nENTITY_REF, Line "
                          "1, Col 5."},
        {"<a>&#0;</a>", "6195 Invalid unicode character: &#0;;\\nENTITY_REF, Line 1, Col 6."},
    });
    for (const char* bad : {"<a>&#xD800;</a>", "<a>&#xDFFF;</a>", "<a>&#xFFFE;</a>",
                            "<a>&#xFFFF;</a>", "<a>&#x110000;</a>", "<a>&#31;</a>"}) {
        EXPECT_EQ(thrown(bad).substr(0, 4), "6195") << bad;
    }
    // The digits wrap at 32 bits.
    EXPECT_EQ(xmlEvents("<a>&#x100000041;&#4294967362;</a>"), "<a>  'AB'  </a>  .");
}

// The whole literal is read before it is looked into, and positions count from its quote.
TEST(XmlParserErrors, AMissingEndOfALiteralComesBeforeErrorsInIt) {
    EXPECT_EQ(thrown("<a b='<&;").substr(0, 4), "6191");
    EXPECT_EQ(thrown("<a\nb='x\n<' c='"),
              "6192 Unexpected '<' in attribute value.\\nSTART_TAG, Line 3, Col 1.");
}

TEST(XmlParserErrors, Declaration) {
    expectThrown({
        {" <?xml version='1.0'?><a/>",
         "6177 Unexpected XML declaration.\\nIGNORABLE_WHITESPACE, Line 1, Col 7."},
        {"<?xml encoding='UTF-8'?>", "6178 Missing 'version=' after '<?xml ' in XML declaration."
                                     "\\nSTART_DOCUMENT, Line 1, Col 14."},
        {"<?xml version '1.0'?>", "6179 Missing '=' after '<?xml version' in XML declaration.\\n"
                                  "START_DOCUMENT, Line 1, Col 14."},
        {"<?xml version='1.0' encoding 'x'?>", "6179 Missing '=' after 'encoding' in XML "
                                               "declaration.\\nSTART_DOCUMENT, Line 1, Col 29."},
        {"<?xml version='1.0' standalone 'x'?>",
         "6179 Missing '=' after 'standalone' in XML declaration.\\nSTART_DOCUMENT, Line 1, Col "
         "31."},
        {"<?xml?>", "6180 Missing whitespace after '<?xml' in XML declaration.\\nSTART_DOCUMENT, "
                    "Line 1, Col 5."},
        {"<?xml version='1.0'encoding='UTF-8'?>", "6181 Missing whitespace before 'encoding=' in "
                                                  "XML declaration.\\nSTART_DOCUMENT, Line 1, Col "
                                                  "27."},
        {"<?xml version='1.0' encoding='UTF-8'standalone='yes'?>",
         "6181 Missing whitespace before 'standalone=' in XML declaration.\\nSTART_DOCUMENT, Line "
         "1, Col 46."},
        {"<?xml version='1.2'?>",
         "6182 Unsupported XML version: 1.2\\nSTART_DOCUMENT, Line 1, Col 18."},
        {"<?xml version='1.0' standalone='maybe'?>",
         "6183 Invalid standalone declaration in XML declaration.\\nSTART_DOCUMENT, Line 1, Col "
         "37."},
        {"<?xml version='1.0' x y?>",
         "6156 Unexpected character:  \\nSTART_DOCUMENT, Line 1, Col 21."},
    });
}

TEST(XmlParserErrors, DocumentType) {
    expectThrown({
        {"<!DOCTYPE 1>",
         "6147 Invalid root tag name after '<!DOCTYPE'.\\nDOCDECL, Line 1, Col 10."},
        {"<a><!DOCTYPE a></a>", "6164 Unexpected DOCTYPE declaration outside of prolog.\\nDOCDECL, "
                                "Line 1, Col 12."},
        {"<!DOCTYPE a><!DOCTYPE a>",
         "6165 Cannot have multiple DOCTYPE declarations.\\nDOCDECL, Line 1, Col 21."},
        {"<!DOCTYPE>", "6166 Missing whitespace after '<!DOCTYPE'.\\nDOCDECL, Line 1, Col 9."},
        {"<!DOCTYPE p:a'", "6166 Missing whitespace after '<!DOCTYPE p:a'.\\nDOCDECL, Line 1, Col "
                           "13."},
        {"<!DOCTYPE a PUBLIC'p'>",
         "6166 Missing whitespace after '<!DOCTYPE a PUBLIC'.\\nDOCDECL, Line 1, Col 18."},
        {"<!DOCTYPE a PUBLIC 'p''s'>",
         "6166 Missing whitespace after '<!DOCTYPE a PUBLIC \"p\"'.\\nDOCDECL, Line 1, Col 22."},
        {"<!DOCTYPE a b>", "6167 ExternalID is expected after '<!DOCTYPE a'.\\nDOCDECL, Line 1, "
                           "Col 13."},
        {"<!DOCTYPE a PUBLIC>", "6168 PubidLiteral is expected after '<!DOCTYPE a PUBLIC'.\\n"
                                "DOCDECL, Line 1, Col 18."},
        {"<!DOCTYPE a SYSTEM x>", "6169 SystemLiteral is expected after '<!DOCTYPE a "
                                  "SYSTEM|PUBLIC'.\\nDOCDECL, Line 1, Col 19."},
        {"<!DOCTYPE a [", "6170 Unexpected end of input in DOCTYPE declaration.\\nDOCDECL, Line "
                          "1, Col 12."},
        {"<!DOCTYPE a [%;]>", "6171 Empty entity name.\\nDOCDECL, Line 1, Col 14."},
        {"<!DOCTYPE a [%p ]>", "6172 Invalid character in entity reference: %p ;\\nDOCDECL, Line "
                               "1, Col 15."},
        {"<!DOCTYPE a [%p;]>",
         "6173 Reference to undefined entity: %p;\\nDOCDECL, Line 1, Col 15."},
    });
}

TEST(XmlParserErrors, EntityDeclarations) {
    const struct {
        const char* declaration;
        const char* error;
    } rows[] = {
        {"<!ENTITY>", "6166 Missing whitespace after '<!ENTITY'."},
        {"<!ENTITY %>", "6166 Missing whitespace after '<!ENTITY %'."},
        {"<!ENTITY e>", "6166 Missing whitespace after '<!ENTITY e'."},
        {"<!ENTITY e SYSTEM'x'>", "6166 Missing whitespace after '<!ENTITY e SYSTEM'."},
        {"<!ENTITY e PUBLIC 'p''s'>", "6166 Missing whitespace after '<!ENTITY e PUBLIC \"p\"'."},
        {"<!ENTITY e SYSTEM 's' NDATA>",
         "6166 Missing whitespace after '<!ENTITY e ... \"s\" NDATA'."},
        {"<!ENTITY e x>", "6167 ExternalID is expected after '<!ENTITY e'."},
        {"<!ENTITY e PUBLIC x>", "6168 PubidLiteral is expected after '<!ENTITY e PUBLIC'."},
        {"<!ENTITY e SYSTEM x>",
         "6169 SystemLiteral is expected after '<!ENTITY e SYSTEM|PUBLIC'."},
        {"<!ENTITY e 'x>", "6170 Unexpected end of input in ENTITY declaration."},
        {"<!ENTITY e '&f;'>", "6174 Reference to undefined entity: &f;"},
        {"<!ENTITY >", "6175 Entity name is expected after '!ENTITY '."},
        {"<!ENTITY e SYSTEM 's' x>", "6176 NDATA is expected after '<!ENTITY e ... \"s\"'."},
        {"<!ENTITY e 'x' y>", "6156 Unexpected character: y"},
        {"<!ENTITY % e SYSTEM 's' NDATA n>", "6156 Unexpected character: N"},
        {"<!ENTITY e SYSTEM 's'NDATA n>", "6156 Unexpected character: N"},
    };
    for (const auto& [declaration, error] : rows) {
        const std::string document = std::string("<!DOCTYPE a [") + declaration;
        const std::string text = thrown(document.c_str());
        EXPECT_EQ(text.substr(0, text.find("\\n")), error) << declaration;
    }
}

// The syntax of the whole tag first, then the element's prefix, then each attribute in turn.
TEST(XmlParserErrors, OrderInATag) {
    const XmlReading tolerant{.tolerant = true};
    EXPECT_EQ(xmlEvents("<p:a q:b='1' c='1' c='2' r:d='' <", tolerant)
                  .find("[6153 Invalid attribute name.]"),
              0U);
    EXPECT_EQ(xmlEvents("<p:a q:b='1' c='1' c='2' r:d=''/>", tolerant),
              "[6151 Undeclared namespace prefix: p]  [6151 Undeclared namespace prefix: q]  "
              "[6152 Duplicate attribute: c]  [6151 Undeclared namespace prefix: r]  "
              "<p:a q:b=1 c=1 c=2 r:d=/>  </p:a>  .");
}

TEST(XmlParserErrors, ManyAttributesGiveTheErrorsOfFew) {
    for (const int extra : {0, 40}) {
        std::string document = "<a b='' q:c='' b='' b=''";
        std::string attributes = " b= q:c= b= b=";
        for (int i = 0; i < extra; ++i) {
            document += " d" + std::to_string(i) + "=''";
            attributes += " d" + std::to_string(i) + "=";
        }
        EXPECT_EQ(xmlEvents(document + " c=''/>", {.tolerant = true}),
                  "[6151 Undeclared namespace prefix: q]  [6152 Duplicate attribute: b]  "
                  "[6152 Duplicate attribute: b]  [6152 Duplicate attribute: c]  <a"
                      + attributes + " c=/>  </a>  .")
            << extra;
    }
}

TEST(XmlParserErrors, ParsingGoesOnBehindAReportedError) {
    const XmlReading tolerant{.tolerant = true};
    const std::vector<Row> rows = {
        {"<a>x]]>y</a>", "<a>  [6160 Unexpected ']]>'.]  'x]]>y'  </a>  ."},
        {"<a>]]]]></a>", "<a>  [6160 Unexpected ']]>'.]  ']]]]>'  </a>  ."},
        {"<a b=1>x</a>", "[6190 Missing quotation character (\" or ').]  <a b=>  'x'  </a>  ."},
        {"<a b='<'/>", "[6192 Unexpected '<' in attribute value.]  <a b=</>  </a>  ."},
        {"<a>1&x;2</a>", "<a>  [7710 Reference to undefined entity: &x;]  '12'  </a>  ."},
        {"<a b='1&x;2'/>", "[7710 Reference to undefined entity: &x;]  <a b=12/>  </a>  ."},
        {"<a>&#x1F;</a>", "<a>  [6195 Invalid unicode character: &#x1F;;]  '\x1F'  </a>  ."},
        {"<a><b></a></b>", "<a>  <b>  [6150 End tag 'a' does not match the start tag 'b'.]  </b>  "
                           "[6150 End tag 'b' does not match the start tag 'a'.]  </a>  ."},
        {"</a>\n<b/>", "[6150 End tag 'a' does not match the start tag ''.]  </>  <b/>  </b>  ."},
        {"<a>", "<a>  [6145 Missing end tag.]  ."},
        {"<a/><b/>", "<a/>  </a>  [6146 Only one top level element is allowed.]  <b/>  </b>  ."},
        {"<a><!-- - -- - ---></a>", "<a>  [6163 Unexpected character after -- in comment]  "
                                    "[6163 Unexpected character after -- in comment]  </a>  ."},
        {"<!DOCTYPE a [%p;<!ENTITY e 'x'>]><a>&e;</a>",
         "[7709 Reference to undefined entity: %p;]  <a>  'x'  </a>  ."},
        {"<!DOCTYPE a PUBLIC><a/>",
         "[6168 PubidLiteral is expected after '<!DOCTYPE a PUBLIC'.]  <a/>  </a>  ."},
        {"x<a/>", "[6158 Unexpected text at top level of the document: U+0078 (x)]  "
                  "[6158 Unexpected text at top level of the document: U+003C (<)]  "
                  "'x'  <a/>  </a>  ."},
        {"</a>", "[6150 End tag 'a' does not match the start tag ''.]  </>  ."},
    };
    for (const auto& [document, events] : rows) {
        EXPECT_EQ(xmlEvents(document, tolerant), events) << "for: " << document;
    }
}

// The end is reported each time it is asked for, as long as elements are open.
TEST(XmlParserErrors, AMissingEndTagIsReportedAtEachCall) {
    int count = 0;
    std::istringstream stream("<a>");
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    parser->setCallbackError([](const ZRError&, void* data) { ++*static_cast<int*>(data); },
                             &count);
    parser->setInput(stream, u"", u"");
    parser->next();
    for (int i = 1; i < 4; ++i) {
        EXPECT_EQ(parser->next(), ZRXmlParser::END_DOCUMENT);
        EXPECT_EQ(count, i);
    }
}

TEST(XmlParserErrors, BehindAThrownErrorOnlyTheEndFollows) {
    const auto second = [](const char* document) {
        std::istringstream stream(document);
        const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
        parser->setInput(stream, u"", u"");
        EXPECT_THROW(
            {
                while (parser->next() != ZRXmlParser::END_DOCUMENT) {
                }
            },
            ZRError);
        return testing::errorOf([&parser] { parser->next(); });
    };
    EXPECT_EQ(second("<a>&b;<c/></a>"), "0x1801 Missing end tag.\nENTITY_REF, Line 1, Col 5. "
                                        "[ZroCommon::XmlParserImpl]");
    EXPECT_EQ(second("x<a/>"), "nothing");
    // On purpose: the end tag in error has ended its element all the same.
    EXPECT_EQ(second("<a></b>"), "nothing");
}

TEST(XmlParserErrors, TheCallbackSeesTheParserWhereItStands) {
    struct Seen {
        ZRXmlParser* parser;
        std::string text;
    };
    std::istringstream stream("<a>\n  <b c='1' c='2'/>");
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    Seen seen{parser.get(), {}};
    parser->setCallbackError(
        [](const ZRError& error, void* data) {
            auto& out = *static_cast<Seen*>(data);
            out.text = testing::utf8(out.parser->getPositionDescription()) + " "
                       + testing::utf8(out.parser->getName().toString()) + " "
                       + std::to_string(error.getLineNumber()) + testing::utf8(error.getUri());
            throw error;
        },
        &seen);
    parser->setInput(stream, u"", u"");
    parser->next();
    parser->next();
    EXPECT_EQ(testing::errorOf([&parser] { parser->next(); }),
              "0x1808 Duplicate attribute: c [ZroCommon::XmlParserImpl]");
    EXPECT_EQ(seen.text, "START_TAG, Line 2, Col 18. b -1");
}

}  // namespace
}  // namespace ZroCommon

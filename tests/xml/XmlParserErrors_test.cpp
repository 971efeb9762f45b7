#include <utility>

#include "tests/support/XmlEvents.h"

namespace ZroCommon::testing {
namespace {

// The last entry: what was thrown.
std::string thrown(const std::string& document) {
    const std::string events = xmlEvents(document);
    const std::size_t at = events.rfind("throws ");
    return at == std::string::npos ? "nothing" : events.substr(at + 7);
}

TEST(XmlParserErrors, EachHasItsTextAndPlace) {
    expectLines(thrown, R"(
<a> -> 6145 Missing end tag. @START_TAG 1:2
<a/><b/> -> 6146 Only one top level element is allowed. @START_TAG 1:5
<1/> -> 6148 Invalid start tag name. @START_TAG 1:1
<a></1> -> 6149 Invalid end tag name. @END_TAG 1:5
<a></p:b> -> 6150 End tag 'p:b' does not match the start tag 'a'. @END_TAG 1:8
<p:a/> -> 6151 Undeclared namespace prefix: p @START_TAG 1:5
<a p:b=''/> -> 6151 Undeclared namespace prefix: p @START_TAG 1:10
<a b='1' b='2'/> -> 6152 Duplicate attribute: b @START_TAG 1:15
<a x:b='1' y:b='2' xmlns:x='u' xmlns:y='u'/> -> 6152 Duplicate attribute: y:b @START_TAG 1:43
<a 1=''/> -> 6153 Invalid attribute name. @START_TAG 1:3
<a b/> -> 6154 Missing '=' after attribute name. @START_TAG 1:4
<a b=''c=''/> -> 6155 Missing whitespace between attributes. @START_TAG 1:7
<a*/> -> 6156 Unexpected character: * @START_TAG 1:2
<a/x> -> 6156 Unexpected character: x @START_TAG 1:3
<a></a b> -> 6156 Unexpected character: b @END_TAG 1:7
< a/> -> 6157 Unexpected whitespace after '<'. @START_TAG 1:1
<a></ a> -> 6157 Unexpected whitespace after '</'. @END_TAG 1:5
<a/ > -> 6157 Unexpected whitespace after '/'. @START_TAG 1:3
x<a/> -> 6158 Unexpected text at top level of the document: U+0078 (x) @TEXT 1:1
<a/>x -> 6158 Unexpected text at top level of the document: U+0078 (x) @TEXT 1:4
<a>]]></a> -> 6160 Unexpected ']]>'. @TEXT 1:5
<a><![CDATA[x]]</a> -> 6161 Unexpected end of input while looking for CDATA section terminator
 ']]>'. @CDSECT 1:18
<a><![x</a> -> 6161 Unexpected end of input while looking for CDATA section terminator ']]>'.
 @START_TAG 1:10
<a><!-- x -</a> -> 6162 Unexpected end of input while looking for comment terminator '-->'.
 @COMMENT 1:14
<a><!-- -- --></a> -> 6163 Unexpected character after -- in comment @COMMENT 1:10
<a><!-- -- -> 6163 Unexpected character after -- in comment @COMMENT 1:9
<a><![CDATA x]]></a> -> 6184 Invalid syntax in CDATA section. @START_TAG 1:11
<a><!-x--></a> -> 6185 Invalid syntax in comment. @START_TAG 1:6
<a><!ELEMENT></a> -> 6186 Unexpected '<!ELEMENT'. @START_TAG 1:12
<?XML version='1.0'?><a/> -> 6187 The name 'xml' must be lower case: <?XML
 @PROCESSING_INSTRUCTION 1:5
<?p?><a/> -> 6188 Missing whitespace after PI target: <?p @PROCESSING_INSTRUCTION 1:3
<?p q -> 6189 Unexpected end of input while looking for PI terminator '?>'.
 @PROCESSING_INSTRUCTION 1:4
<a>&;</a> -> 6171 Empty entity name. @ENTITY_REF 1:4
<a>&b </a> -> 6172 Invalid character in entity reference: &b ; @ENTITY_REF 1:5
<a>&b;</a> -> 6174 Reference to undefined entity: &b; @ENTITY_REF 1:5
<a b='&c;'/> -> 6174 Reference to undefined entity: &c; @START_TAG 1:8
<a b=1/> -> 6190 Missing quotation character (" or '). @START_TAG 1:5
<a b='1/> -> 6191 Unexpected end of input while looking for literal terminator ('). @START_TAG 1:8
<a b='<'/> -> 6192 Unexpected '<' in attribute value. @START_TAG 1:6
<a>&# 1;</a> -> 6193 Unexpected whitespace in character reference: &# ; @ENTITY_REF 1:5
<a>&#;</a> -> 6194 Invalid character in character reference: &#;; @ENTITY_REF 1:5
<a>&#xFg;</a> -> 6194 Invalid character in character reference: &#xFg; @ENTITY_REF 1:7
<a>&#X41;</a> -> 6194 Invalid character in character reference: &#X; @ENTITY_REF 1:5
<a>&#0;</a> -> 6195 Invalid unicode character: &#0;; @ENTITY_REF 1:6
<a b='<&; -> 6191 Unexpected end of input while looking for literal terminator ('). @START_TAG 1:8
<?xml encoding='UTF-8'?> -> 6178 Missing 'version=' after '<?xml ' in XML declaration.
 @START_DOCUMENT 1:14
<?xml version '1.0'?> -> 6179 Missing '=' after '<?xml version' in XML declaration.
 @START_DOCUMENT 1:14
<?xml version='1.0' encoding 'x'?> -> 6179 Missing '=' after 'encoding' in XML declaration.
 @START_DOCUMENT 1:29
<?xml version='1.0' standalone 'x'?> -> 6179 Missing '=' after 'standalone' in XML declaration.
 @START_DOCUMENT 1:31
<?xml?> -> 6180 Missing whitespace after '<?xml' in XML declaration. @START_DOCUMENT 1:5
<?xml version='1.0'encoding='UTF-8'?> -> 6181 Missing whitespace before 'encoding=' in XML
 declaration. @START_DOCUMENT 1:27
<?xml version='1.0' encoding='UTF-8'standalone='yes'?> -> 6181 Missing whitespace before
 'standalone=' in XML declaration. @START_DOCUMENT 1:46
<?xml version='1.2'?> -> 6182 Unsupported XML version: 1.2 @START_DOCUMENT 1:18
<?xml version='1.0' standalone='maybe'?> -> 6183 Invalid standalone declaration in XML
 declaration. @START_DOCUMENT 1:37
<?xml version='1.0' x y?> -> 6156 Unexpected character:   @START_DOCUMENT 1:21
<!DOCTYPE 1> -> 6147 Invalid root tag name after '<!DOCTYPE'. @DOCDECL 1:10
<a><!DOCTYPE a></a> -> 6164 Unexpected DOCTYPE declaration outside of prolog. @DOCDECL 1:12
<!DOCTYPE a><!DOCTYPE a> -> 6165 Cannot have multiple DOCTYPE declarations. @DOCDECL 1:21
<!DOCTYPE> -> 6166 Missing whitespace after '<!DOCTYPE'. @DOCDECL 1:9
<!DOCTYPE p:a' -> 6166 Missing whitespace after '<!DOCTYPE p:a'. @DOCDECL 1:13
<!DOCTYPE a PUBLIC'p'> -> 6166 Missing whitespace after '<!DOCTYPE a PUBLIC'. @DOCDECL 1:18
<!DOCTYPE a PUBLIC 'p''s'> -> 6166 Missing whitespace after '<!DOCTYPE a PUBLIC "p"'. @DOCDECL
 1:22
<!DOCTYPE a b> -> 6167 ExternalID is expected after '<!DOCTYPE a'. @DOCDECL 1:13
<!DOCTYPE a PUBLIC> -> 6168 PubidLiteral is expected after '<!DOCTYPE a PUBLIC'. @DOCDECL 1:18
<!DOCTYPE a SYSTEM x> -> 6169 SystemLiteral is expected after '<!DOCTYPE a SYSTEM|PUBLIC'.
 @DOCDECL 1:19
<!DOCTYPE a [ -> 6170 Unexpected end of input in DOCTYPE declaration. @DOCDECL 1:12
<!DOCTYPE a [%;]> -> 6171 Empty entity name. @DOCDECL 1:14
<!DOCTYPE a [%p ]> -> 6172 Invalid character in entity reference: %p ; @DOCDECL 1:15
<!DOCTYPE a [%p;]> -> 6173 Reference to undefined entity: %p; @DOCDECL 1:15)");
    // The whole literal is read before it is looked into, and positions count from its quote.
    expectTexts(
        thrown,
        {
            "<a b='1' -> 6156 Unexpected character: \xEF\xBF\xBF @START_TAG 1:7",
            "<a>\xEF\xBF\xBF</a> -> 6196 Invalid character. @START_TAG 1:2",
            "<a\nb='x\n<' c=' -> 6192 Unexpected '<' in attribute value. @START_TAG 3:1",
            " <?xml version='1.0'?><a/> -> 6177 Unexpected XML declaration. @IGNORABLE_WHITESPACE "
            "1:7",
        });

    for (const char* bad : {"<a>&#xD800;</a>", "<a>&#xDFFF;</a>", "<a>&#xFFFE;</a>",
                            "<a>&#xFFFF;</a>", "<a>&#x110000;</a>", "<a>&#31;</a>"}) {
        EXPECT_EQ(thrown(bad).substr(0, 4), "6195") << bad;
    }
    // The digits wrap at 32 bits.
    EXPECT_EQ(xmlEvents("<a>&#x100000041;&#4294967362;</a>"), "<a>  'AB'  </a>  .");
}

TEST(XmlParserErrors, EntityDeclarations) {
    const auto thrownIn = [](const std::string& declaration) {
        const std::string text = thrown("<!DOCTYPE a [" + declaration);
        return text.substr(0, text.find(" @"));
    };
    expectLines(thrownIn, R"(
<!ENTITY> -> 6166 Missing whitespace after '<!ENTITY'.
<!ENTITY %> -> 6166 Missing whitespace after '<!ENTITY %'.
<!ENTITY e> -> 6166 Missing whitespace after '<!ENTITY e'.
<!ENTITY e SYSTEM'x'> -> 6166 Missing whitespace after '<!ENTITY e SYSTEM'.
<!ENTITY e PUBLIC 'p''s'> -> 6166 Missing whitespace after '<!ENTITY e PUBLIC "p"'.
<!ENTITY e SYSTEM 's' NDATA> -> 6166 Missing whitespace after '<!ENTITY e ... "s" NDATA'.
<!ENTITY e x> -> 6167 ExternalID is expected after '<!ENTITY e'.
<!ENTITY e PUBLIC x> -> 6168 PubidLiteral is expected after '<!ENTITY e PUBLIC'.
<!ENTITY e SYSTEM x> -> 6169 SystemLiteral is expected after '<!ENTITY e SYSTEM|PUBLIC'.
<!ENTITY e 'x> -> 6170 Unexpected end of input in ENTITY declaration.
<!ENTITY e '&f;'> -> 6174 Reference to undefined entity: &f;
<!ENTITY > -> 6175 Entity name is expected after '!ENTITY '.
<!ENTITY e SYSTEM 's' x> -> 6176 NDATA is expected after '<!ENTITY e ... "s"'.
<!ENTITY e 'x' y> -> 6156 Unexpected character: y
<!ENTITY % e SYSTEM 's' NDATA n> -> 6156 Unexpected character: N
<!ENTITY e SYSTEM 's'NDATA n> -> 6156 Unexpected character: N)");
}

// The syntax of the whole tag first, then the element's prefix, then each attribute in turn,
// however many there are.
TEST(XmlParserErrors, OrderInATag) {
    EXPECT_EQ(thrown("<p:a q:b='1' c='1' c='2' r:d='' <").substr(0, 4), "6153");
    for (const int extra : {0, 40}) {
        std::string document = "<p:a q:b='1' c='1' c='2' r:d='' c='3'";
        std::string attributes = " q:b=1 c=1 c=2 r:d= c=3";
        for (int i = 0; i < extra; ++i) {
            document += " d" + std::to_string(i) + "=''";
            attributes += " d" + std::to_string(i) + "=";
        }
        EXPECT_EQ(xmlEvents(document + "/>", {.tolerant = true}),
                  "[6151 Undeclared namespace prefix: p]  [6151 Undeclared namespace prefix: q]  "
                  "[6152 Duplicate attribute: c]  [6151 Undeclared namespace prefix: r]  "
                  "[6152 Duplicate attribute: c]  <p:a"
                      + attributes + "/>  </p:a>  .")
            << extra;
    }
}

TEST(XmlParserErrors, ParsingGoesOnBehindAReportedError) {
    const auto tolerated = [](const std::string& document) {
        return xmlEvents(document, {.tolerant = true});
    };
    expectLines(tolerated, R"(
<a>x]]>y</a> -> <a>  [6160 Unexpected ']]>'.]  'x]]>y'  </a>  .
<a>]]]]></a> -> <a>  [6160 Unexpected ']]>'.]  ']]]]>'  </a>  .
<a b=1>x</a> -> [6190 Missing quotation character (" or ').]  <a b=>  'x'  </a>  .
<a b='<'/> -> [6192 Unexpected '<' in attribute value.]  <a b=</>  </a>  .
<a>1&x;2</a> -> <a>  [7710 Reference to undefined entity: &x;]  '12'  </a>  .
<a b='1&x;2'/> -> [7710 Reference to undefined entity: &x;]  <a b=12/>  </a>  .
<a><b></a></b> -> <a>  <b>  [6150 End tag 'a' does not match the start tag 'b'.]  </b>
  [6150 End tag 'b' does not match the start tag 'a'.]  </a>  .
<a> -> <a>  [6145 Missing end tag.]  .
<a/><b/> -> <a/>  </a>  [6146 Only one top level element is allowed.]  <b/>  </b>  .
<a><!-- - -- - ---></a> -> <a>  [6163 Unexpected character after -- in comment]
  [6163 Unexpected character after -- in comment]  </a>  .
<!DOCTYPE a [%p;<!ENTITY e 'x'>]><a>&e;</a> -> [7709 Reference to undefined entity: %p;]  <a>
  'x'  </a>  .
<?p?><a/><?q r?><b/> -> [6188 Missing whitespace after PI target: <?p]  <b/>  </b>  .
<!DOCTYPE a b'c'><a/> -> [6167 ExternalID is expected after '<!DOCTYPE a'.]
  [6166 Missing whitespace after '<!DOCTYPE a b'.]  <a/>  </a>  .
<!DOCTYPE a PUBLIC><a/> -> [6168 PubidLiteral is expected after '<!DOCTYPE a PUBLIC'.]  <a/>
  </a>  .
x<a/> -> [6158 Unexpected text at top level of the document: U+0078 (x)]
  [6158 Unexpected text at top level of the document: U+003C (<)]  'x'  <a/>  </a>  .
</a> -> [6150 End tag 'a' does not match the start tag ''.]  </>  .)");
    expectTexts(
        tolerated,
        {
            "<a>&#x1F;</a> -> <a>  [6195 Invalid unicode character: &#x1F;;]  '\x1F'  </a>  .",
            "</a>\n<b/> -> [6150 End tag 'a' does not match the start tag ''.]  </>  <b/>  </b>  .",
        });
}

TEST(XmlParserErrors, AMissingEndTagIsReportedAtEachCall) {
    int count = 0;
    const OwnParser parser("<a>");
    parser.countErrors(count);
    parser->next();
    for (int i = 1; i < 4; ++i) {
        EXPECT_EQ(parser->next(), ZRXmlParser::END_DOCUMENT);
        EXPECT_EQ(count, i);
    }
}

TEST(XmlParserErrors, BehindAThrownErrorOnlyTheEndFollows) {
    const auto second = [](const char* document) {
        const OwnParser parser(document);
        EXPECT_THROW(parser.readToEnd(), ZRError);
        return errorOf([&parser] { parser->next(); });
    };
    EXPECT_EQ(second("<a>&b;<c/></a>"), "0x1801 Missing end tag.\nENTITY_REF, Line 1, Col 5. "
                                        "[ZroCommon::XmlParserImpl]");
    EXPECT_EQ(second("x<a/>"), "nothing");
    // On purpose: the end tag in error has ended its element all the same.
    EXPECT_EQ(second("<a></b>"), "nothing");
}

TEST(XmlParserErrors, TheCallbackSeesTheParserWhereItStands) {
    const OwnParser parser("<a>\n  <b c='1' c='2'/>");
    std::pair<ZRXmlParser*, std::string> seen{&*parser, ""};
    parser->setCallbackError(
        [](const ZRError& error, void* data) {
            auto& [from, text] = *static_cast<decltype(seen)*>(data);
            text = utf8(from->getPositionDescription()) + " " + utf8(from->getName().toString())
                   + " " + std::to_string(error.getLineNumber()) + utf8(error.getUri());
            throw error;
        },
        &seen);
    EXPECT_EQ(errorOf([&parser] { parser.readToEnd(); }),
              "0x1808 Duplicate attribute: c [ZroCommon::XmlParserImpl]");
    EXPECT_EQ(seen.second, "START_TAG, Line 2, Col 18. b -1");
}

}  // namespace
}  // namespace ZroCommon::testing

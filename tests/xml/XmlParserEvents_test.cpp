#include <sstream>
#include <utility>

#include "tests/support/Streams.h"
#include "tests/support/XmlEvents.h"

namespace ZroCommon::testing {
namespace {

TEST(XmlParserEvents, NextGivesTagsAndMergedText) {
    expectEvents({
        {"<a></a>", "<a>  </a>  ."},
        {" \n<a> </a>\n", "<a>  ' '  </a>  ."},
        {"<a>x<!-- c -->y<?p q?>z</a>", "<a>  'xyz'  </a>  ."},
        {"<a><!-- c --><?p q?><b/></a>", "<a>  <b/>  </b>  </a>  ."},
        {"<a><!-- c -->x</a>", "<a>  'x'  </a>  ."},
        {"<a>1&lt;2&amp;3<![CDATA[<4>]]>&#53;&#x36;</a>", "<a>  '1<2&3<4>56'  </a>  ."},
        {"<?xml version='1.0'?><!-- c --><?p q?><!DOCTYPE a><a/>", "<a/>  </a>  ."},
        {"<a><![CDATA[]]></a>", "<a>  ''  </a>  ."},
        {"<a><![CDATA[]]><!-- c --></a>", "<a>  </a>  ."},
        {"<a>]]x] ]</a>", "<a>  ']]x] ]'  </a>  ."},
        {"<?xml version='1.0' x?><a/>", "<a/>  </a>  ."},  // any name may stand there
        {"&#32;<a/>", "' '  <a/>  </a>  ."},
        {"<![CDATA[x]]><a/>", "'x'  <a/>  </a>  ."},
        {"<a b='&lt;&#10;&quot;' c=\"x\ny\tz\"/>", "<a b=<\\n\" c=x y z/>  </a>  ."},
    });
}

TEST(XmlParserEvents, NextTokenGivesEverything) {
    expectEvents(
        {
            {"<a>x<!-- c -->y<?p q?>z</a>", "<a>  'x'  comment' c '  'y'  pi'p q'  'z'  </a>  ."},
            {" <a/>\n", "space' '  <a/>  </a>  space'\\n'  ."},
            {"<?p  q ?><a>&lt;&#65;&nope;</a>",
             "pi'p  q '  <a>  &lt'&#60;'  &#x41'A'  &nope'(bogus)'  </a>  ."},
            {"<!DOCTYPE a [<!ENTITY e 'f'>]><a>&e;<![CDATA[]]]]></a>",
             "doctype  <a>  &e'f'  cdata']]'  </a>  ."},
            {"<a><!----><!-- - -- ></a>",
             "<a>  comment''  throws 6163 Unexpected character after -- in comment @COMMENT 1:19"},
        },
        {.tokens = true});
}

TEST(XmlParserEvents, TextThatEndsInAReferenceHasNoName) {
    const OwnParser parser("<!DOCTYPE a [<!ENTITY e ''>]><a>x&e;</a>");
    parser->next();
    EXPECT_EQ(parser->next(), ZRXmlParser::TEXT);
    EXPECT_TRUE(parser->getName().isEmpty());
}

// On purpose: a section that is no CDATA section repeats the event before it.
TEST(XmlParserEvents, AStraySectionRepeatsTheEventBeforeIt) {
    expectEvents(
        {
            {"<a b='1'><![x[ y ]>z</a>", "<a b=1>  <a b=1>  'z'  </a>  ."},
            {"<a>x<![INCLUDE[y]]></a>", "<a>  'x'  ''  </a>  ."},
            {"<a><b></b><![x]></a>", "<a>  <b>  </b>  </a>  throws 6150 End tag 'a' does not match "
                                     "the start tag ''. @END_TAG 1:19"},
        },
        {.tokens = true});
}

// On purpose: as long as nothing but declarations was read, reading starts over.
TEST(XmlParserEvents, ASecondDeclarationIsAnotherStart) {
    EXPECT_EQ(xmlEvents("<?xml version='1.0'?><?xml version='1.1'?>\n<a/>", {.positions = true}),
              "start@1:41  <a/>@2:4  </a>@2:4  .@2:4");
    EXPECT_EQ(xmlEvents("<![x]><a/>", {.tokens = true}), "start  <a/>  </a>  .");
}

TEST(XmlParserEvents, Namespaces) {
    const auto tags = [](const std::string& document) {
        const OwnParser parser(document);
        std::string seen;
        while (parser->next() != ZRXmlParser::END_DOCUMENT) {
            if (parser->getEventType() == ZRXmlParser::START_TAG) {
                seen += "<{" + utf8(parser->getNamespace()) + "}" + utf8(parser->getName());
                for (int i = 0; i < parser->getAttributeCount(); ++i) {
                    seen += " {" + utf8(parser->getAttributeNamespace(i)) + "}"
                            + utf8(parser->getAttributeName(i));
                }
                seen += ">";
            }
        }
        return seen;
    };
    expectLines(tags, R"(
<a xmlns:p='u'><p:b p:c='' c=''/></a> -> <{}a {http://www.w3.org/2000/xmlns/}p><{u}b {u}c {}c>
<a xmlns='u'><b xmlns=''><c/></b><d/></a> -> <{u}a {http://www.w3.org/2000/xmlns/}xmlns><{}b
 {http://www.w3.org/2000/xmlns/}xmlns><{}c><{u}d>
<svg xlink:href=''/> -> <{http://www.w3.org/2000/svg}svg {http://www.w3.org/1999/xlink}href>
<g><svg/></g> -> <{}g><{}svg>
<x:svg xmlns:x='u'><b/></x:svg> -> <{u}svg
 {http://www.w3.org/2000/xmlns/}x><{http://www.w3.org/2000/svg}b>
<chart/> -> <{http://zro.example.org/names/PlotML}chart>
<a xml:lang='en'/> -> <{}a {http://www.w3.org/XML/1998/namespace}lang>)");
}

TEST(XmlParserEvents, NamesTakeTheirOwnSetOfCharacters) {
    expectEvents({
        {"<\xC3\x97/>", "<\xC3\x97/>  </\xC3\x97>  ."},  // U+00D7, inside a stated range
        {"<a\xF0\x90\x80\x80-.9/>", "<a\xF0\x90\x80\x80-.9/>  </a\xF0\x90\x80\x80-.9>  ."},
        {"<_/>", "<_/>  </_>  ."},
    });
    for (const char* bad :
         {"<1/>", "<:a/>", "<-/>", "<\xF3\xB0\x80\x80/>", "<\xCD\xBE/>", "<a:/>", "<a:1/>"}) {
        EXPECT_EQ(xmlEvents(bad).substr(0, 11), "throws 6148") << bad;
    }
    EXPECT_EQ(xmlEvents("<a:b:c/>").substr(0, 11), "throws 6156");
}

TEST(XmlParserEvents, PositionsHoldTheLookahead) {
    expectEvents({{"<a/>", "<a/>@1:3  </a>@1:3  .@1:3"},
                  {"\xEF\xBB\xBF<a/>", "<a/>@1:4  </a>@1:4  .@1:4"},
                  {"<a>xy</a>", "<a>@1:2  'xy'@1:6  </a>@1:8  .@1:8"},
                  {"<a>xy<b/></a>", "<a>@1:2  'xy'@1:6  <b/>@1:8  </b>@1:8  </a>@1:12  .@1:12"},
                  {"<a>1\r\n2\r3\n4\xC2\x85 \xE2\x80\xA8 \r\xC2\x85z</a>",
                   "<a>@1:2  '1\\n2\\n3\\n4\\n \\n \\nz'@7:3  </a>@7:5  .@7:5"}},
                 {.positions = true});
    expectEvents({{"<a/>", "<a/>@1:4  </a>@1:4  .@1:4"}},
                 {.positions = true, .encoding = u"latin1"});
    expectEvents({{"<a>xy</a>", "<a>@1:2  'xy'@1:5  </a>@1:8  .@1:8"},
                  {"<a>\r\nx\U0001F600&#65;]</a>",
                   "<a>@1:2  '\\nx\U0001F600'@2:3  &#x41'A'@2:7  ']'@2:9  </a>@2:12  .@2:12"}},
                 {.tokens = true, .positions = true});
}

// One document through every way of delivery and every builtin encoding.
TEST(XmlParserEvents, DeliveryAndEncodingDoNotShow) {
    const std::string ascii =
        "<a b='1 &#38;&lt; 2'  c = \"x\ny\">t &amp; ]] \r\n x<!-- c - d --><?p q ? r?>"
        "<![CDATA[ ]] > ]]]]><p:q xmlns:p='u:v' p:r='s'/>\r</a >\n";
    const XmlReading reading{.tokens = true, .positions = true};
    const std::string expected = xmlEvents(ascii, reading);
    for (std::size_t step = 1; step < 20; ++step) {
        ShortReadBuf buffer(ascii, step);
        std::istream stream(&buffer);
        EXPECT_EQ(xmlEvents(stream, reading), expected) << step << " bytes a time";
    }
    for (const auto& [before, behind] : {std::pair{0U, 1U}, {1U, 0U}, {0U, 3U}, {3U, 0U}}) {
        std::string bytes;
        for (const char c : ascii) {
            bytes.append(before, '\0').append(1, c).append(behind, '\0');
        }
        EXPECT_EQ(xmlEvents(bytes, reading), expected) << before << ' ' << behind;
    }
}

// A run of any length meets the end of a window somewhere.
TEST(XmlParserEvents, WindowBoundariesDoNotShow) {
    const std::string inner = "<b c='d&amp;e' f=\"ghi\">x &lt; y]]</b><!-- - --><p:q/>\r\n";
    const std::string one = xmlEvents("<a xmlns:p='u'>" + inner + "</a>", {.tokens = true});
    for (std::size_t pad = 900; pad < 1100; ++pad) {
        std::string document = "<a xmlns:p='u'><";
        document.append(pad, 'z').append("/>").append(inner).append("</a>");
        std::string events = xmlEvents(document, {.tokens = true});
        events.erase(events.find("<z"), 2 * pad + 10);
        ASSERT_EQ(events, one) << pad;
    }
}

}  // namespace
}  // namespace ZroCommon::testing

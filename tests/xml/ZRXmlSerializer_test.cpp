#include "zro/xml/ZRXmlSerializer.h"

#include <sstream>

#include "tests/support/NamesStay.h"
#include "tests/support/TempFolder.h"
#include "tests/xml/SerializerCalls.h"

namespace ZroCommon::testing {
namespace {

using Serializer = ZRXmlSerializer;

// What is written, and what should be.
void expectWritten(Rows<std::string, std::string> rows) {
    for (const auto& [written, expected] : rows) {
        EXPECT_EQ(written, expected);
    }
}

TEST(ZRXmlSerializer, DeclaresTheTwoEncodingsItHas) {
    for (const auto& [output, document, standalone, rest] :
         Rows<const char16_t*, const char16_t*, const char16_t*, std::string>{
             {u"UTF-8", u"", u"", " encoding=\"UTF-8\""},
             {u" utf-8 ", u"", u"yes", " encoding=\"UTF-8\" standalone=\"yes\""},
             {u"", u"shift_jis", u"", " encoding=\"Shift_JIS\""},
             {u"Shift_JIS", u"UTF-8", u"no", " encoding=\"UTF-8\" standalone=\"no\""},
             {u"", u"", u"", ""},
             {u"ISO-8859-1", u"", u"", ""},
             {u"UTF-8", u"EUC-JP", u"", ""},
             {u"SHIFT-JIS", u"", u"", ""},
         }) {
        const std::string written =
            Writing(output).call(&Serializer::startDocument, document, standalone);
        EXPECT_EQ(written, "<?xml version=\"1.0\"" + rest + "?>") << utf8(output) << utf8(document);
    }
}

TEST(ZRXmlSerializer, NamesItsGenerator) {
    std::ostringstream stream;
    const ZRPtr<ZRXmlSerializer> serializer(new internal::XmlSerializerImpl);
    serializer->setOutput(stream, u"");
    serializer->startDocument(u"", u"");
    EXPECT_EQ(stream.str(),
              "<?xml version=\"1.0\"?>"
              "<!-- Quorrel V4.3 MR2c (4,3,2008,0805) for Windows (x64) ZroCommon -->");
}

TEST(ZRXmlSerializer, WritesTagsAndContent) {
    const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
    expectWritten({
        {Writing().start(kNone, kNone, ZRN_block).end(ZRN_block), "<block/>"},
        {Writing().start(ZRN_flow).start(ZRN_block).end(ZRN_block).end(ZRN_flow),
         "<flow><block/></flow>"},
        {Writing().start(ZRN_block).text(u"").end(ZRN_block), "<block></block>"},
        {Writing().text(u"xabcx", 1, 3).call(&Serializer::cdsect, u"<&>"), "abc<![CDATA[<&>]]>"},
        {Writing().call(&Serializer::entityRef, u"nbsp"), "&nbsp;"},
        {Writing().call(&Serializer::processingInstruction, u"target data"), "<?target data?>"},
        {Writing().call(&Serializer::comment, u"--"), "<!------>"},  // and a wrong one it is
        {Writing().call(&Serializer::ignorableWhitespace, u"\n <"), "\n <"},
        {Writing()
             .document()
             .start(ZRN_flow)
             .start(ZRN_block)
             .text(u"x")
             .start(ZRN_inline)
             .call(&Serializer::endDocument),
         declaration + "<flow><block>x<inline/></block></flow>"},
        {Writing()
             .document()
             .call(&Serializer::docdecl, u"a <b")
             .call(&Serializer::docdecl, u"\na")
             .call(&Serializer::docdecl, u""),
         declaration + "<!DOCTYPE a <b><!DOCTYPE\na><!DOCTYPE >"},
    });
}

TEST(ZRXmlSerializer, EscapesTextAndValues) {
    expectWritten({
        {Writing().text(u"a&b<c>d\"e'f\r\n\t"), "a&amp;b&lt;c&gt;d\"e'f\r\n\t"},
        {Writing().text(u"&&<<>>"), "&amp;&amp;&lt;&lt;&gt;&gt;"},
        {Writing().start(ZRN_block).attribute(ZRN_id, u"a&b<c>d\"e'f\t"),
         "<block id=\"a&amp;b&lt;c&gt;d&quot;e'f\t\""},
        {Writing().start(name("a<b")).attribute(name("c d"), u""), "<a<b c d=\"\""},
        {Writing().text(u"\u007F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF"),
         "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
        {Writing().text(u"a\0b", 0, 3), std::string("a\0b", 3)},
    });
}

// On purpose: what cannot be UTF-8 is written as three bytes all the same.
TEST(ZRXmlSerializer, LoneSurrogatesBecomeThreeBytes) {
    const char16_t lone[] = {0xDC00, u'a', 0xD800, u'b', 0xD800, 0xD801, 0xDC01};
    EXPECT_EQ(std::string(Writing().text(lone, 0, 7)), "\xED\xB0\x80"
                                                       "a\xED\xA0\x80"
                                                       "b\xED\xA0\x80\xF0\x90\x90\x81");
    EXPECT_EQ(std::string(Writing().text(lone, 5, 1).text(lone, 6, 1)), "\xED\xA0\x81\xED\xB0\x81")
        << "a pair in two calls";
}

TEST(ZRXmlSerializer, ShiftJisRefersToWhatItLacks) {
    const auto shiftJis = [](const UnicodeString& text) -> std::string {
        return Writing(u"shift_jis").text(text);
    };
    expectWritten({
        {shiftJis(u"a\u3042<\uFF71"), "a\x82\xA0&lt;\xB1"},
        {shiftJis(u"\u00E9\U0001F600"), "&#233;&#128512;"},
        {shiftJis(u"\u301C\uFF5E"), "&#12316;\x81\x60"},  // would come back as another one
        {shiftJis(char16_t{0xD800}), "&#55296;"},
        {Writing(u"shift_jis").start(name("\xC3\xA9")).call(&Serializer::comment, u"\u00E9"),
         "<&#233;><!--&#233;-->"},  // even where no reference can be
    });
}

TEST(ZRXmlSerializer, LongTextsGoThroughInBlocks) {
    for (const int32_t length : {16380, 16384, 16390, 50000, 200001}) {
        UnicodeString long16;
        std::string expected;
        for (int32_t i = 0; i < length; ++i) {
            const bool isPlain = i % 7 != 0;
            long16.append(isPlain ? u'a' : (i % 2 == 0 ? u'&' : u'\u3042'));
            expected += isPlain ? "a" : (i % 2 == 0 ? "&amp;" : "\xE3\x81\x82");
        }
        EXPECT_EQ(std::string(Writing().text(long16)), expected) << length;
    }
}

TEST(ZRXmlSerializer, WritesDeclarationsBehindTheAttributes) {
    const NamesStay names;
    const ZRName u1 = name("urn:1");
    const ZRName u2 = name("urn:2");
    const ZRName p = name("prefix-a");
    const ZRName q = name("prefix-b");
    expectWritten({
        {Writing()
             .start(u1, p, ZRN_block)
             .attribute(ZRN_id, u"x")
             .start(u1, p, ZRN_block)
             .end(u1, ZRN_block),
         "<prefix-a:block id=\"x\" xmlns:prefix-a=\"urn:1\"><prefix-a:block/>"},
        {Writing().start(u2, q, ZRN_block).attribute(u1, p, ZRN_id, u"x").text(u""),
         "<prefix-b:block prefix-a:id=\"x\" xmlns:prefix-a=\"urn:1\" xmlns:prefix-b=\"urn:2\">"},
        {Writing().start(u1, kNone, ZRN_flow).start(kNone, kNone, ZRN_block).text(u""),
         "<flow xmlns=\"urn:1\"><block xmlns=\"\">"},
        {Writing()
             .call(&Serializer::setPrefix, p, u1)
             .call(&Serializer::setPrefix, q, u2)
             .start(u1, ZRN_block)
             .attribute(u2, ZRN_id, u"x")
             .end(u1, ZRN_block),
         "<prefix-a:block prefix-b:id=\"x\" xmlns:prefix-a=\"urn:1\" xmlns:prefix-b=\"urn:2\"/>"},
        {Writing()
             .start(ZRN_block)
             .attribute(ZRN_ns_xmlns, ZRN_xmlns, p, u"a\"b")
             .attribute(kNone, ZRN_xmlns, q, u"urn:2")
             .attribute(ZRN_ns_xmlns, q, u"urn:2")
             .attribute(kNone, q, ZRN_xmlns, u"urn:d")
             .text(u""),
         "<block xmlns=\"urn:d\" xmlns:prefix-a=\"a&quot;b\" xmlns:prefix-b=\"urn:2\">"},
        {Writing().start(ZRN_block).attribute(ZRN_ns_xml, ZRN_lang, u"en").end(ZRN_block),
         "<block xml:lang=\"en\"/>"},
    });
}

TEST(ZRXmlSerializer, FindsOrMakesPrefixes) {
    const NamesStay names;
    const ZRName uri = name("urn:of-prefixes");
    Writing s;
    s.start(ZRN_flow);
    EXPECT_EQ(s->getPrefix(kNone, true), kNone);
    EXPECT_EQ(s->getPrefix(uri, false), kNone);
    s.start(uri, ZRN_block);
    const ZRName made = s->getPrefix(uri, false);
    EXPECT_TRUE(made.toString().startsWith(u"N-")) << utf8(made);
    EXPECT_EQ(s->getPrefix(uri, true), made);
    const std::string tag = s.end(uri, ZRN_block);
    EXPECT_EQ(tag,
              "<flow><" + utf8(made) + ":block xmlns:" + utf8(made) + "=\"urn:of-prefixes\"/>");
    s->setPrefix(kNone, uri);
    EXPECT_EQ(s->getPrefix(uri, true), kNone) << "the default namespace is the innermost";
}

// On purpose: the namespace of the attribute is lost, since attributes have no default namespace.
TEST(ZRXmlSerializer, AnAttributeInTheDefaultNamespaceGetsNoPrefix) {
    const ZRName uri = name("urn:default");
    const std::string written =
        Writing().start(uri, kNone, ZRN_block).attribute(uri, ZRN_id, u"x").end(uri, ZRN_block);
    EXPECT_EQ(written, "<block id=\"x\" xmlns=\"urn:default\"/>");
}

// On purpose: the binding is made where the document stands, and no tag there can write it.
TEST(ZRXmlSerializer, APrefixMadeBehindAClosedTagIsNeverDeclared) {
    const ZRName uri = name("urn:too-late");
    Writing s;
    s.start(ZRN_flow).text(u"")->getPrefix(uri, true);
    const std::string written = s.start(uri, ZRN_block).end(uri, ZRN_block);
    EXPECT_EQ(written.find("xmlns"), std::string::npos) << written;
}

TEST(ZRXmlSerializer, TellsTheInnermostOpenElement) {
    const ZRName uri = name("urn:1");
    Writing s;
    EXPECT_EQ(s->getName(), kNone);
    s.start(uri, kNone, ZRN_block)->setPrefix(name("p"), name("urn:2"));
    EXPECT_EQ(s->getDepth(), 1) << "a prefix opens no element";
    EXPECT_EQ(s->getNamespace(), uri);
    EXPECT_EQ(s->getName(), ZRN_block);
    s.end(uri, ZRN_block);
    EXPECT_EQ(s->getDepth(), 0);
    EXPECT_EQ(s->getPrefix(name("urn:2"), false), kNone) << "gone with its element";
}

TEST(ZRXmlSerializer, StartsAfreshWithEachOutput) {
    const TempFolder folder;
    Writing s(u"");
    s->getPrefix(name("urn:2"), true);
    s.start(name("urn:1"), kNone, ZRN_flow);
    s->setOutput(folder.file("a b.xml"), u"UTF-8");  // a stream of its own
    EXPECT_EQ(s->getPrefix(name("urn:2"), false), kNone);
    s.document().start(kNone, kNone, ZRN_block)->endDocument();
    EXPECT_EQ(std::string(s), "<flow");
    EXPECT_EQ(folder.read("a b.xml"), "<?xml version=\"1.0\" encoding=\"UTF-8\"?><block/>");
}

TEST(ZRXmlSerializer, AnOutputGetsNothingOfACallThatThrewBefore) {
    std::ostringstream before;
    std::ostringstream after;
    internal::XmlOutput output;
    output.open(before);
    output.put("begun");
    output.open(after);
    output.commit();
    EXPECT_EQ(before.str() + after.str(), "");
}

}  // namespace
}  // namespace ZroCommon::testing

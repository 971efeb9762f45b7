#include "zro/xml/ZRXmlSerializer.h"

#include <sstream>

#include "tests/support/NamesStay.h"
#include "tests/support/TempFolder.h"
#include "tests/xml/SerializerCalls.h"

namespace ZroCommon::testing {
namespace {

// What calls have written, see `Writing::run`.
std::string written(const std::string& calls) {
    return Writing().run(calls);
}

TEST(ZRXmlSerializer, DeclaresTheTwoEncodingsItHas) {
    using Text = const char16_t*;
    const auto declared = [](Text output, Text document, Text standalone) {
        const Writing s(output);
        s->startDocument(document, standalone);
        return std::string(s);
    };
    const std::string start = "<?xml version=\"1.0\"";
    const std::string utf = start + " encoding=\"UTF-8\"";
    expectRows<Text, Text, Text, std::string>(
        declared, {
                      {u"UTF-8", u"", u"", utf + "?>"},
                      {u" utf-8 ", u"", u"yes", utf + " standalone=\"yes\"?>"},
                      {u"", u"shift_jis", u"", start + " encoding=\"Shift_JIS\"?>"},
                      {u"Shift_JIS", u"UTF-8", u"no", utf + " standalone=\"no\"?>"},
                      {u"", u"", u"", start + "?>"},
                      {u"ISO-8859-1", u"", u"", start + "?>"},
                      {u"UTF-8", u"EUC-JP", u"", start + "?>"},
                      {u"SHIFT-JIS", u"", u"", start + "?>"},
                  });
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
    expectLines(written, R"(
<:block  /block -> <block/>
<flow  <block  /block  /flow -> <flow><block/></flow>
<block  '  /block -> <block></block>
[<&> -> <![CDATA[<&>]]>
&nbsp -> &nbsp;
?target data -> <?target data?>
!-- -> <!------>
*  <flow  <block  'x  <inline  .
 -> <?xml version="1.0" encoding="UTF-8"?><flow><block>x<inline/></block></flow>
*  #a <b -> <?xml version="1.0" encoding="UTF-8"?><!DOCTYPE a <b>
*  # -> <?xml version="1.0" encoding="UTF-8"?><!DOCTYPE >)");
    EXPECT_EQ(written("*  #a  #\na").substr(38), "<!DOCTYPE a><!DOCTYPE\na>");
    EXPECT_EQ(written(" \n <"), "\n <");
    EXPECT_EQ(std::string(Writing().text(u"xabcx", 1, 3)), "abc");
}

TEST(ZRXmlSerializer, EscapesTextAndValues) {
    expectTexts(written,
                {"'a&b<c>d\"e'f\r\n\t -> a&amp;b&lt;c&gt;d\"e'f\r\n\t",
                 "'&&<<>> -> &amp;&amp;&lt;&lt;&gt;&gt;",
                 "<block  @id=a&b<c>d\"e'f\t -> <block id=\"a&amp;b&lt;c&gt;d&quot;e'f\t\"",
                 "<a<b  @c d= -> <a<b c d=\"\""});
    EXPECT_EQ(
        std::string(Writing().text(u"\u007F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF", 0, 9)),
        "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
    EXPECT_EQ(std::string(Writing().text(u"a\0b", 0, 3)), std::string("a\0b", 3));
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
    const auto shiftJis = [](const std::string& calls) -> std::string {
        return Writing(u"shift_jis").run(calls);
    };
    expectTexts(shiftJis,
                {"'a\u3042<\uFF71 -> a\x82\xA0&lt;\xB1", "'\u00E9\U0001F600 -> &#233;&#128512;",
                 "'\u301C\uFF5E -> &#12316;\x81\x60",  // would come back as another one
                 // Even where no reference can be.
                 "<\u00E9  !\u00E9 -> <&#233;><!--&#233;-->"});
    EXPECT_EQ(std::string(Writing(u"shift_jis").text(u"\xD800", 0, 1)), "&#55296;");
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
        EXPECT_EQ(std::string(Writing().text(long16.getBuffer(), 0, length)), expected) << length;
    }
}

TEST(ZRXmlSerializer, WritesDeclarationsBehindTheAttributes) {
    const NamesStay names;
    name("prefix-a");  // the lower number
    expectLines(written, R"(
<{urn:1}prefix-a:block  @id=x  <{urn:1}prefix-a:block  /{urn:1}block -> <prefix-a:block id="x"
 xmlns:prefix-a="urn:1"><prefix-a:block/>
<{urn:2}prefix-b:block  @{urn:1}prefix-a:id=x  ' -> <prefix-b:block prefix-a:id="x"
 xmlns:prefix-a="urn:1" xmlns:prefix-b="urn:2">
<{urn:1}:flow  <:block  ' -> <flow xmlns="urn:1"><block xmlns="">
^prefix-a=urn:1  ^prefix-b=urn:2  <{urn:1}block  @{urn:2}id=x  /{urn:1}block -> <prefix-a:block
 prefix-b:id="x" xmlns:prefix-a="urn:1" xmlns:prefix-b="urn:2"/>
<block  @{http://www.w3.org/2000/xmlns/}xmlns:prefix-a=a"b  @xmlns:prefix-b=urn:2  @{http://www.w3.org/2000/xmlns/}prefix-b=urn:2
  @prefix-b:xmlns=urn:d  ' -> <block xmlns="urn:d" xmlns:prefix-a="a&quot;b"
 xmlns:prefix-b="urn:2">
<block  @{http://www.w3.org/XML/1998/namespace}lang=en  /block -> <block xml:lang="en"/>)");
}

TEST(ZRXmlSerializer, FindsOrMakesPrefixes) {
    const NamesStay names;
    const ZRName uri = name("urn:of-prefixes");
    Writing s;
    s.run("<flow");
    EXPECT_EQ(s->getPrefix(kNone, true), kNone);
    EXPECT_EQ(s->getPrefix(uri, false), kNone);
    s.run("<{urn:of-prefixes}block");
    const ZRName made = s->getPrefix(uri, false);
    EXPECT_TRUE(made.toString().startsWith(u"N-")) << utf8(made);
    EXPECT_EQ(s->getPrefix(uri, true), made);
    EXPECT_EQ(std::string(s.run("/{urn:of-prefixes}block")),
              "<flow><" + utf8(made) + ":block xmlns:" + utf8(made) + "=\"urn:of-prefixes\"/>");
    s->setPrefix(kNone, uri);
    EXPECT_EQ(s->getPrefix(uri, true), kNone) << "the default namespace is the innermost";
}

// On purpose: the namespace of the attribute is lost, since attributes have no default namespace.
TEST(ZRXmlSerializer, AnAttributeInTheDefaultNamespaceGetsNoPrefix) {
    EXPECT_EQ(written("<{urn:d}:block  @{urn:d}id=x  /{urn:d}block"),
              "<block id=\"x\" xmlns=\"urn:d\"/>");
}

// On purpose: the binding is made where the document stands, and no tag there can write it.
TEST(ZRXmlSerializer, APrefixMadeBehindAClosedTagIsNeverDeclared) {
    Writing s;
    s.run("<flow  '")->getPrefix(name("urn:too-late"), true);
    const std::string tags = s.run("<{urn:too-late}block  /{urn:too-late}block");
    EXPECT_EQ(tags.find("xmlns"), std::string::npos) << tags;
}

TEST(ZRXmlSerializer, TellsTheInnermostOpenElement) {
    Writing s;
    EXPECT_EQ(s->getName(), kNone);
    s.run("<{urn:1}:block  ^p=urn:2");
    EXPECT_EQ(s->getDepth(), 1) << "a prefix opens no element";
    EXPECT_EQ(s->getNamespace(), name("urn:1"));
    EXPECT_EQ(s->getName(), ZRN_block);
    s.run("/{urn:1}block");
    EXPECT_EQ(s->getDepth(), 0);
    EXPECT_EQ(s->getPrefix(name("urn:2"), false), kNone) << "gone with its element";
}

TEST(ZRXmlSerializer, StartsAfreshWithEachOutput) {
    const TempFolder folder;
    Writing s(u"");
    s->getPrefix(name("urn:2"), true);
    s.run("<{urn:1}:flow")->setOutput(folder.file("a b.xml"), u"UTF-8");  // a stream of its own
    EXPECT_EQ(s->getPrefix(name("urn:2"), false), kNone);
    s.run("*  <:block  .");
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

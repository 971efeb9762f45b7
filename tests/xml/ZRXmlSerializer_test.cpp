#include "zro/xml/ZRXmlSerializer.h"

#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/NamesStay.h"
#include "tests/support/TempFolder.h"
#include "tests/support/Text.h"
#include "tests/xml/SerializerCalls.h"

namespace ZroCommon {
namespace {

using testing::Calls;
using testing::kNone;
using testing::name;
using testing::utf8;
using testing::written;

struct Case {
    const char* what;
    Calls calls;
    std::string expected;
};

template <std::size_t kCount>
void expectWritten(const Case (&cases)[kCount], const char16_t* encoding = u"UTF-8") {
    for (const Case& each : cases) {
        EXPECT_EQ(written(each.calls, encoding), each.expected) << "for: " << each.what;
    }
}

TEST(ZRXmlSerializer, DeclaresTheTwoEncodingsItHas) {
    const struct {
        const char16_t* output;
        const char16_t* document;
        const char16_t* standalone;
        const char* expected;
    } cases[] = {
        {u"UTF-8", u"", u"", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"},
        {u" utf-8 ", u"", u"yes", "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>"},
        {u"", u"shift_jis", u"", "<?xml version=\"1.0\" encoding=\"Shift_JIS\"?>"},
        {u"Shift_JIS", u"UTF-8", u"no",
         "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>"},
        {u"", u"", u"", "<?xml version=\"1.0\"?>"},
        {u"ISO-8859-1", u"", u"", "<?xml version=\"1.0\"?>"},
        {u"UTF-8", u"EUC-JP", u"", "<?xml version=\"1.0\"?>"},
        {u"SHIFT-JIS", u"", u"", "<?xml version=\"1.0\"?>"},
    };
    for (const auto& [output, document, standalone, expected] : cases) {
        const auto calls = [&, d = document, s = standalone](ZRXmlSerializer& serializer) {
            serializer.startDocument(d, s);
        };
        EXPECT_EQ(written(calls, output), expected) << "for: " << utf8(output) << utf8(document);
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
    const Case cases[] = {
        {"empty element",
         [](auto& s) {
             s.startTag(kNone, kNone, ZRN_block);
             s.endTag(kNone, ZRN_block);
         },
         "<block/>"},
        {"parent of an empty element",
         [](auto& s) {
             s.startTag(kNone, ZRN_flow);
             s.startTag(kNone, ZRN_block);
             s.endTag(kNone, ZRN_block);
             s.endTag(kNone, ZRN_flow);
         },
         "<flow><block/></flow>"},
        {"empty text closes the tag",
         [](auto& s) {
             s.startTag(kNone, ZRN_block);
             s.text(u"");
             s.endTag(kNone, ZRN_block);
         },
         "<block></block>"},
        {"content of all kinds",
         [](auto& s) {
             s.startTag(kNone, ZRN_block);
             s.text(u"xabcx", 1, 3);
             s.cdsect(u"<&>");
             s.entityRef(u"nbsp");
             s.processingInstruction(u"target data");
             s.comment(u" c ");
             s.ignorableWhitespace(u"\n <");
             s.endTag(kNone, ZRN_block);
         },
         "<block>abc<![CDATA[<&>]]>&nbsp;<?target data?><!-- c -->\n <</block>"},
        {"end of document",
         [](auto& s) {
             s.startDocument(u"", u"");
             s.startTag(kNone, ZRN_flow);
             s.startTag(kNone, ZRN_block);
             s.text(u"x");
             s.startTag(kNone, ZRN_inline);
             s.endDocument();
         },
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?><flow><block>x<inline/></block></flow>"},
        {"a call that writes a wrong comment", [](auto& s) { s.comment(u"--"); }, "<!------>"},
        {"document types",
         [](auto& s) {
             s.startDocument(u"", u"");
             s.docdecl(u"a <b");
             s.docdecl(u"\na");
             s.docdecl(u"");
         },
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?><!DOCTYPE a <b><!DOCTYPE\na><!DOCTYPE >"},
    };
    expectWritten(cases);
}

TEST(ZRXmlSerializer, EscapesTextAndValues) {
    const Case cases[] = {
        {"text", [](auto& s) { s.text(u"a&b<c>d\"e'f\r\n\t"); }, "a&amp;b&lt;c&gt;d\"e'f\r\n\t"},
        {"only escapes", [](auto& s) { s.text(u"&&<<>>"); }, "&amp;&amp;&lt;&lt;&gt;&gt;"},
        {"value",
         [](auto& s) {
             s.startTag(kNone, ZRN_block);
             s.attribute(kNone, ZRN_id, u"a&b<c>d\"e'f\t");
         },
         "<block id=\"a&amp;b&lt;c&gt;d&quot;e'f\t\""},
        {"names are left alone",
         [](auto& s) {
             s.startTag(kNone, name("a<b"));
             s.attribute(kNone, name("c d"), u"");
         },
         "<a<b c d=\"\""},
        {"the widths of UTF-8",
         [](auto& s) { s.text(u"\u007F\u0080\u07FF\u0800\uFFFF\U00010000\U0010FFFF"); },
         "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
        {"a NUL", [](auto& s) { s.text(u"a\0b", 0, 3); }, std::string("a\0b", 3)},
    };
    expectWritten(cases);
}

// On purpose: what cannot be UTF-8 is written as three bytes all the same.
TEST(ZRXmlSerializer, LoneSurrogatesBecomeThreeBytes) {
    const char16_t lone[] = {0xDC00, u'a', 0xD800, u'b', 0xD800, 0xD801, 0xDC01};
    const Case cases[] = {
        {"in one call", [&](auto& s) { s.text(lone, 0, 7); },
         "\xED\xB0\x80"
         "a\xED\xA0\x80"
         "b\xED\xA0\x80\xF0\x90\x90\x81"},
        {"a pair in two calls",
         [&](auto& s) {
             s.text(lone, 5, 1);
             s.text(lone, 6, 1);
         },
         "\xED\xA0\x81\xED\xB0\x81"},
    };
    expectWritten(cases);
}

TEST(ZRXmlSerializer, ShiftJisRefersToWhatItLacks) {
    const char16_t lone[] = {0xD800};
    const Case cases[] = {
        {"text", [](auto& s) { s.text(u"a\u3042<\uFF71"); }, "a\x82\xA0&lt;\xB1"},
        {"not in the set", [](auto& s) { s.text(u"\u00E9\U0001F600"); }, "&#233;&#128512;"},
        {"would come back as another one", [](auto& s) { s.text(u"\u301C\uFF5E"); },
         "&#12316;\x81\x60"},
        {"lone surrogate", [&](auto& s) { s.text(lone, 0, 1); }, "&#55296;"},
        {"even where no reference can be",
         [](auto& s) {
             s.startTag(kNone, name("\xC3\xA9"));
             s.comment(u"\u00E9");
         },
         "<&#233;><!--&#233;-->"},
    };
    expectWritten(cases, u"shift_jis");
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
        EXPECT_EQ(written([&](auto& s) { s.text(long16); }), expected) << length;
    }
}

TEST(ZRXmlSerializer, WritesDeclarationsBehindTheAttributes) {
    const testing::NamesStay names;
    const ZRName u1 = name("urn:1");
    const ZRName u2 = name("urn:2");
    const ZRName p = name("prefix-a");
    const ZRName q = name("prefix-b");
    const Case cases[] = {
        {"of the element",
         [&](auto& s) {
             s.startTag(u1, p, ZRN_block);
             s.attribute(kNone, ZRN_id, u"x");
             s.startTag(u1, p, ZRN_block);
             s.endTag(u1, ZRN_block);
         },
         "<prefix-a:block id=\"x\" xmlns:prefix-a=\"urn:1\"><prefix-a:block/>"},
        {"in order of the prefixes' numbers",
         [&](auto& s) {
             s.startTag(u2, q, ZRN_block);
             s.attribute(u1, p, ZRN_id, u"x");
             s.text(u"");
         },
         "<prefix-b:block prefix-a:id=\"x\" xmlns:prefix-a=\"urn:1\" xmlns:prefix-b=\"urn:2\">"},
        {"the end of a default namespace",
         [&](auto& s) {
             s.startTag(u1, kNone, ZRN_flow);
             s.startTag(kNone, kNone, ZRN_block);
             s.text(u"");
         },
         "<flow xmlns=\"urn:1\"><block xmlns=\"\">"},
        {"set before",
         [&](auto& s) {
             s.setPrefix(p, u1);
             s.setPrefix(q, u2);
             s.startTag(u1, ZRN_block);
             s.attribute(u2, ZRN_id, u"x");
             EXPECT_EQ(s.getDepth(), 1);
             s.endTag(u1, ZRN_block);
         },
         "<prefix-a:block prefix-b:id=\"x\" xmlns:prefix-a=\"urn:1\" xmlns:prefix-b=\"urn:2\"/>"},
        {"by attributes",
         [&](auto& s) {
             s.startTag(kNone, ZRN_block);
             s.attribute(ZRN_ns_xmlns, ZRN_xmlns, p, u"a\"b");
             s.attribute(kNone, ZRN_xmlns, q, u"urn:2");
             s.attribute(ZRN_ns_xmlns, q, u"urn:2");
             s.attribute(kNone, q, ZRN_xmlns, u"urn:d");
             s.text(u"");
         },
         "<block xmlns=\"urn:d\" xmlns:prefix-a=\"a&quot;b\" xmlns:prefix-b=\"urn:2\">"},
        {"none for the prefix xml",
         [&](auto& s) {
             s.startTag(kNone, ZRN_block);
             s.attribute(ZRN_ns_xml, ZRN_lang, u"en");
             s.endTag(kNone, ZRN_block);
         },
         "<block xml:lang=\"en\"/>"},
    };
    expectWritten(cases);
}

TEST(ZRXmlSerializer, FindsOrMakesPrefixes) {
    const ZRName uri = name("urn:of-prefixes");
    written([&](ZRXmlSerializer& s) {
        s.startTag(kNone, ZRN_flow);
        EXPECT_EQ(s.getPrefix(kNone, true), kNone);
        EXPECT_EQ(s.getPrefix(uri, false), kNone);
        const ZRName made = s.getPrefix(uri, true);
        EXPECT_TRUE(made.toString().startsWith(u"N-")) << utf8(made);
        EXPECT_EQ(s.getPrefix(uri, true), made);
        s.setPrefix(kNone, uri);
        EXPECT_EQ(s.getPrefix(uri, true), kNone) << "the default namespace is the innermost";
    });
}

TEST(ZRXmlSerializer, AMadePrefixIsDeclaredWithItsTag) {
    const testing::NamesStay names;
    const ZRName uri = name("urn:made");
    ZRName made;
    const std::string result = written([&](ZRXmlSerializer& s) {
        s.startTag(uri, ZRN_block);
        made = s.getPrefix(uri, false);
        s.endTag(uri, ZRN_block);
    });
    EXPECT_EQ(result, "<" + utf8(made) + ":block xmlns:" + utf8(made) + "=\"urn:made\"/>");
}

// On purpose: the namespace of the attribute is lost, since attributes have no default namespace.
TEST(ZRXmlSerializer, AnAttributeInTheDefaultNamespaceGetsNoPrefix) {
    const ZRName uri = name("urn:default");
    EXPECT_EQ(written([&](ZRXmlSerializer& s) {
                  s.startTag(uri, kNone, ZRN_block);
                  s.attribute(uri, ZRN_id, u"x");
                  s.endTag(uri, ZRN_block);
              }),
              "<block id=\"x\" xmlns=\"urn:default\"/>");
}

// On purpose: the binding is made where the document stands, and no tag there can write it.
TEST(ZRXmlSerializer, APrefixMadeBehindAClosedTagIsNeverDeclared) {
    const ZRName uri = name("urn:too-late");
    const std::string result = written([&](ZRXmlSerializer& s) {
        s.startTag(kNone, ZRN_flow);
        s.text(u"");
        s.getPrefix(uri, true);
        s.startTag(uri, ZRN_block);
        s.endTag(uri, ZRN_block);
    });
    EXPECT_EQ(result.find("xmlns"), std::string::npos) << result;
}

TEST(ZRXmlSerializer, TellsTheInnermostOpenElement) {
    const ZRName uri = name("urn:1");
    written([&](ZRXmlSerializer& s) {
        EXPECT_EQ(s.getName(), kNone);
        s.startTag(uri, kNone, ZRN_block);
        s.setPrefix(name("p"), name("urn:2"));
        EXPECT_EQ(s.getDepth(), 1) << "a prefix opens no element";
        EXPECT_EQ(s.getNamespace(), uri);
        EXPECT_EQ(s.getName(), ZRN_block);
        s.endTag(uri, ZRN_block);
        EXPECT_EQ(s.getDepth(), 0);
        EXPECT_EQ(s.getPrefix(name("urn:2"), false), kNone) << "gone with its element";
    });
}

TEST(ZRXmlSerializer, StartsAfreshWithEachOutput) {
    std::ostringstream first;
    std::ostringstream second;
    const ZRPtr<ZRXmlSerializer> serializer(new internal::XmlSerializerImpl);
    serializer->setOutput(first, u"");
    serializer->getPrefix(name("urn:2"), true);
    serializer->startTag(name("urn:1"), kNone, ZRN_flow);
    serializer->setOutput(second, u"");
    EXPECT_EQ(serializer->getPrefix(name("urn:2"), false), kNone);
    serializer->startTag(kNone, kNone, ZRN_block);
    serializer->endDocument();
    EXPECT_EQ(first.str(), "<flow");
    EXPECT_EQ(second.str(), "<block/>");
}

TEST(ZRXmlSerializer, WritesAFileThatItOwns) {
    const testing::TempFolder folder;
    const ZRPtr<ZRXmlSerializer> serializer(new internal::XmlSerializerImpl);
    serializer->setGenerator({});
    serializer->setOutput(folder.file("a b.xml"), u"UTF-8");
    serializer->startDocument({}, {});
    serializer->startTag(kNone, ZRN_block);
    serializer->endDocument();
    EXPECT_EQ(folder.read("a b.xml"), "<?xml version=\"1.0\" encoding=\"UTF-8\"?><block/>");
}

TEST(ZRXmlSerializer, TypesAreThoseOfTheInterface) {
    const ZRPtr<ZRXmlSerializer> serializer(new internal::XmlSerializerImpl);
    EXPECT_EQ(serializer->getTypeID(), 0xB2E73DE2U);
    EXPECT_TRUE(serializer->isA(ZRRCObject::getStaticTypeID()));
    EXPECT_EQ(utf8(serializer->getTypeName()), "XmlSerializerImpl");
}

}  // namespace
}  // namespace ZroCommon

#include <algorithm>
#include <array>
#include <sstream>
#include <vector>

#include "tests/support/TempFolder.h"
#include "tests/support/Threads.h"
#include "tests/support/XmlEvents.h"

namespace ZroCommon::testing {
namespace {

// What &e; gives as content in a document with these declarations.
std::string contentOf(const std::string& declarations) {
    const std::string events = xmlEvents("<!DOCTYPE a [" + declarations + "]><a>&e;</a>");
    return events.ends_with("</a>  .") ? events.substr(5, events.size() - 14) : events;
}

TEST(XmlParserEntities, InternalEntities) {
    expectLines(contentOf, R"(
<!ENTITY e '1'><!ENTITY e '2'> -> '1'
<!ENTITY % p 'x'><!ENTITY e '%p;'> -> '%p;'
<!ENTITY e '<b/>'> -> <b/>  </b>
<!ENTITY e 'x<b>'><!ENTITY f '</b>'> -> <a>  'x'  <b>
  throws 6150 End tag 'a' does not match the start tag 'b'. @END_TAG 1:60
<!ENTITY f '1'><!ENTITY e '&f;&f;'> -> '11'
<!ENTITY e 'a&#38;#38;b'> -> 'a&b'
<!ENTITY e '&lt;&gt;&amp;&apos;&quot;'> -> '<>&'"'
<!ENTITY e '"'> -> '"'
<!ENTITY e "it's"> -> 'it's'
<!ENTITY % d "<!ENTITY e 'x'>">%d; -> 'x'
<!ENTITY % e 'p'><!ENTITY e 'g'> -> 'g'
<!-- > ' --><?p > ' ?><!ELEMENT a ANY><!ATTLIST a b CDATA '>'><!ENTITY e 'x'> -> 'x'
<!ENTITY lt 'x'><!ENTITY e '1&lt;2'> -> '1<2')");
    EXPECT_EQ(contentOf("<!ENTITY e 'a\r\nb\tc'>"), "'a b c'");
}

TEST(XmlParserEntities, EntitiesInAttributes) {
    expectEvents({
        {"<!DOCTYPE a [<!ENTITY e '1\"2'><!ENTITY f '&e;3&#38;#10;'>]><a b=\"&f;\"/>",
         "<a b=1\"23\\n/>  </a>  ."},
        {"<!DOCTYPE a [<!ENTITY e SYSTEM 'nowhere'>]><a b='1&e;2'/>", "<a b=12/>  </a>  ."},
        {"<!DOCTYPE a [<!ENTITY e 'x&#60;'>]><a b='&e;'/>",
         "throws 6192 Unexpected '<' in attribute value. @START_TAG 1:43"},
        // A stored "&" is read again.
        {"<!DOCTYPE a [<!ENTITY e 'a&#38;b'>]><a b='&e;'/>",
         "throws 6172 Invalid character in entity reference: &b\xEF\xBF\xBF; @START_TAG 1:44"},
    });
}

TEST(XmlParserEntities, UnknownEntitiesCanBeEmpty) {
    EXPECT_EQ(xmlEvents("<!DOCTYPE a [%p;<!ENTITY e '1&f;2'>]><a b='x&g;y'>3&h;4&e;</a>",
                        {.features = {ZRXmlParser::FEATURE_EMPTY_UNDEFINED_ENTITY}}),
              "<a b=xy>  '3412'  </a>  .");
}

TEST(XmlParserEntities, DefinedEntitiesLastUntilTheNextInput) {
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    const auto read = [&parser](bool define, ZRNameEnum name) {
        std::istringstream stream("<a>&gt;&lang;</a>");
        parser->setInput(stream, u"", u"");
        if (define) {
            parser->defineEntityReplacementText(name, u"!");
        }
        parser->setFeature(ZRXmlParser::FEATURE_EMPTY_UNDEFINED_ENTITY, true);
        parser->next();
        parser->next();
        return utf8(parser->getText());
    };
    EXPECT_EQ(read(true, ZRN_lang), ">!");
    EXPECT_EQ(read(false, ZRN_lang), ">");
    // On purpose: a predefined entity keeps its new text, as long as no other entity came in.
    EXPECT_EQ(read(true, ZRN_gt), "!");
    EXPECT_EQ(read(false, ZRN_gt), "!");
    EXPECT_EQ(read(true, ZRN_lang), "!!");
    EXPECT_EQ(read(false, ZRN_gt), ">");
}

TEST(XmlParserEntities, MathML) {
    const std::string doctype =
        "<!DOCTYPE math SYSTEM 'http://www.w3.org/Math/DTD/mathml2/mathml2.dtd' "
        "[<!ENTITY beta 'own'>]>";
    const FakeWeb web(FakeWeb::Resources{});
    EXPECT_EQ(xmlEvents(doctype + "<a>&alpha;&beta;&Afr;&lt;&amp;</a>"),
              "<a>  '\xCE\xB1own%plane1D;504;<&'  </a>  .");
    EXPECT_TRUE(web.asked().empty());
    EXPECT_EQ(xmlEvents(doctype + "<a>&alpha;</a>",
                        {.features = {ZRXmlParser::FEATURE_SKIP_EXTERNAL_SUBSET,
                                      ZRXmlParser::FEATURE_EMPTY_UNDEFINED_ENTITY}}),
              "<a>  </a>  .");
}

// On purpose: the root's name is compared with a number that belongs to another name.
TEST(XmlParserEntities, ARealMathRootDoesNotAddTheMathMLEntities) {
    const std::string space = " xmlns='http://www.w3.org/1998/Math/MathML'>&alpha;</";
    for (const std::string name : {"math", "KS_C_5601-1987"}) {
        EXPECT_EQ(xmlEvents("<" + name + space + name + ">").find("throws 6174")
                      != std::string::npos,
                  name == "math");
    }
}

// On purpose: the bindings are made under all elements and outlive the document.
TEST(XmlParserEntities, AnSvgPublicIdentifierBindsNamespacesForGood) {
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    parser->setFeature(ZRXmlParser::FEATURE_SKIP_EXTERNAL_SUBSET, true);
    for (const char* document : {"<!DOCTYPE g PUBLIC '-//W3C//DTD SVG 1.0//EN' 'x'><g/>", "<g/>"}) {
        std::istringstream stream(document);
        parser->setInput(stream, u"", u"");
        parser->next();
        EXPECT_EQ(utf8(parser->getNamespace().toString()), "http://www.w3.org/2000/svg");
        EXPECT_EQ(utf8(parser->getNamespace(ZRN_xlink).toString()), "http://www.w3.org/1999/xlink");
        EXPECT_EQ(parser->getNamespaceCount(0), 4);
    }
}

// What is read of documents with an external entity e.
void expectWithEntity(Rows<const char*, const char*, const char*> rows) {
    for (const auto& [content, around, events] : rows) {
        const FakeWeb web({{"http://h/d/e.ent", content}, {"http://h/d/f.ent", "yyyyyyy"}});
        EXPECT_EQ(xmlEvents("<!DOCTYPE a [<!ENTITY e SYSTEM 'e.ent'><!ENTITY f SYSTEM 'f.ent'>]>"
                            "<a>"
                                + std::string(around) + "</a>",
                            {.baseUri = u"http://h/d/"}),
                  "<a>  " + std::string(events))
            << "for: " << content;
    }
}

TEST(XmlParserEntities, ExternalEntities) {
    expectWithEntity({
        {"x<b/>y", "[&e;]", "'[x'  <b/>  </b>  'y]'  </a>  ."},
        {"<?xml version='1.0' encoding='latin1'?>\xE9", "&e;", "'\xC3\xA9'  </a>  ."},
        {"<?xml encoding='UTF-8'?>\xC3\xA9", "&e;", "'\xC3\xA9'  </a>  ."},
        {"<b>\xC3\xA9</b>", "[&e;]", "'['  <b>  '\xC3\xA9'  </b>  ']'  </a>  ."},
        {"line\r\nend\r\n", "[&e;]", "'[lineend\\n]'  </a>  ."},
        {"<!---->", "&e;b", "'b'  </a>  ."},
        {"", "[&e;]", "throws 4100 Unexpected end of input stream."},
    });
}

// On purpose: the blank that ends the look for a declaration is lost.
TEST(XmlParserEntities, TheFirstBlankOfAnExternalEntityIsLost) {
    expectWithEntity({{"ab cd", "[&e;]", "'[abcd]'  </a>  ."},
                      {"ab", "&e; cd", "'abcd'  </a>  ."},
                      {"abcdef cd", "[&e;]", "'[abcdef cd]'  </a>  ."},
                      {"abcdefg h", "[&e;]", "'[abcdefg h]'  </a>  ."}});
}

TEST(XmlParserEntities, ACarriageReturnAtTheEndOfAnEntityTakesALineFeedBehindIt) {
    expectWithEntity({{"abcdefg\r", "&e;\nx", "'abcdefg\\nx'  </a>  ."},
                      {"abcdefg\r", "&e;x", "'abcdefg\\nx'  </a>  ."}});
}

// On purpose: the look for a declaration reads the CR, and with it the character behind it.
TEST(XmlParserEntities, BehindAReferenceAndAReturnAtAnEntitysStartWhatFollowsComesFirst) {
    expectWithEntity({
        {"&f;\rx", "&e;", "'xyyyyyyy'  </a>  ."},
        {"&f;\r\nx", "&e;", "'yyyyyyyx'  </a>  ."},
        {"&f;\r\rx", "&e;", "'yyyyyyyx'  </a>  ."},
        {"\xEF\xBB\xBF\xC3\xA9&f;\r\xE2\x82\xAC|", "&e;",
         "'\xC3\xA9\xE2\x82\xACyyyyyyy|'  </a>  ."},
    });
}

TEST(XmlParserEntities, PositionAndBaseAreThoseOfTheEntity) {
    const FakeWeb web(
        {{"http://h/d/sub/e.ent", "<bbbbb>\n</bbbbb>&f;"}, {"http://h/d/sub/f.ent", "<cccccc/>"}});
    const OwnParser parser(
        "<!DOCTYPE a [<!ENTITY e SYSTEM 'sub/e.ent'><!ENTITY f SYSTEM 'f.ent'>]><a>&e;</a>",
        u"http://h/d/");
    std::string positions;
    while (parser->next() != ZRXmlParser::END_DOCUMENT) {
        positions +=
            utf8(parser->getPositionDescription()) + " " + utf8(parser->getBaseUri()) + "\n";
    }
    EXPECT_EQ(positions, "START_TAG, 'http://h/d/', Line 1, Col 73. http://h/d/\n"
                         "START_TAG, 'http://h/d/sub/e.ent', Line 1, Col 6. http://h/d/sub/\n"
                         "TEXT, 'http://h/d/sub/e.ent', Line 2, Col 2. http://h/d/sub/\n"
                         "END_TAG, 'http://h/d/sub/e.ent', Line 2, Col 8. http://h/d/sub/\n"
                         "START_TAG, 'http://h/d/sub/f.ent', Line 1, Col 8. http://h/d/sub/\n"
                         "END_TAG, 'http://h/d/sub/f.ent', Line 1, Col 8. http://h/d/sub/\n"
                         "END_TAG, 'http://h/d/', Line 1, Col 82. http://h/d/\n");
}

// On purpose: only a file has to be there.
TEST(XmlParserEntities, WhatIsNoFileAndCannotBeOpenedIsEmpty) {
    for (const char* id : {"http://127.0.0.1:1/e", "jar:none.zip!/e", "foo:e", "data:,e"}) {
        const std::string entity = std::string("<!ENTITY e SYSTEM '") + id + "'>";
        EXPECT_EQ(xmlEvents("<!DOCTYPE a [" + entity + "]><a>&e;<b/></a>"),
                  "<a>  <b/>  </b>  </a>  .")
            << id;
    }
}

// The error is no error of the text, so parsing may go on behind it.
TEST(XmlParserEntities, AFailedOpeningCanBePassedOver) {
    const std::string document = "<!DOCTYPE a [<!ENTITY e SYSTEM 'no.ent'>]><a>&e;<b/></a>";
    const OwnParser parser(document, u"file:/nowhere/");
    parser->next();
    EXPECT_EQ(
        errorOf([&parser] { parser->next(); }),
        "0x1003 Cannot open file: file:/nowhere/no.ent [ZroCommon::XmlParserImpl::pushStream]");
    EXPECT_EQ(parser->next(), ZRXmlParser::START_TAG);
}

std::string withSubset(const std::string& uri, FakeWeb::Resources resources,
                       const char* content = "&e;",
                       const std::vector<ZRXmlParser::Feature>& features = {}) {
    const FakeWeb web(std::move(resources));
    return xmlEvents("<!DOCTYPE a SYSTEM '" + uri + "' [<!ENTITY own 'o'>]><a>" + content + "</a>",
                     {.features = features, .baseUri = u"http://h/"});
}

TEST(XmlParserEntities, ExternalSubsets) {
    int number = 0;
    const auto content = [&number](const std::string& subset) {
        const std::string uri = "subset" + std::to_string(++number) + ".dtd";
        const std::string events = withSubset(uri, {{"http://h/" + uri, subset}});
        return events.substr(0, events.starts_with("throws") ? 11 : events.size());
    };
    expectLines(content, R"(
<!ENTITY e 'x'> -> <a>  'x'  </a>  .
<?xml version='1.0' encoding='latin1'?><!ENTITY e 'x'> -> <a>  'x'  </a>  .
<!ENTITY own 'dropped'><!ENTITY e '&own;'> -> <a>  'o'  </a>  .
<!ENTITY % p "<!ENTITY e 'x'>"> %p; -> <a>  'x'  </a>  .
<!ENTITY % p "x'>"><!ENTITY e '%p;'> -> <a>  '%p;'  </a>  .
%unknown; % %x <!ELEMENT a (%y;)><!ENTITY e 'x'> -> <a>  'x'  </a>  .
<![IGNORE[<!ENTITY e 'no'>]]><!ENTITY e 'x'> -> <a>  'x'  </a>  .
<![INCLUDE[<!ENTITY e 'x'>]]> -> <a>  'x'  </a>  .
<!-- ' --><?p '?><!ENTITY e 'x'> -> <a>  'x'  </a>  .
<!----><!ENTITY e 'x'> -> <a>  'x'  </a>  .
<!ENTITY e 'x'></end><!ENTITY e2 'y'> -> <a>  'x'  </a>  .
<!ENTITY e 'x'><!ENTITY  -> throws 6175
<!ENTITY e 'x'><!--  -> throws 6170
<?xml encoding='UTF-8'?><!ENTITY e 'x'> -> throws 6178)");
}

TEST(XmlParserEntities, AMissingExternalSubset) {
    EXPECT_EQ(withSubset("missing.dtd", {}, "&own;"),
              "throws 4099 Cannot open file: http://h/missing.dtd");
    for (const auto feature : {ZRXmlParser::FEATURE_IGNORE_EXTERNAL_SUBSET_ERRORS,
                               ZRXmlParser::FEATURE_SKIP_EXTERNAL_SUBSET}) {
        for (const char* uri : {"missing.dtd", "broken.dtd"}) {
            EXPECT_EQ(withSubset(uri, {{"http://h/broken.dtd", "<!ENTITY e>"}}, "&own;", {feature}),
                      "<a>  'o'  </a>  .");
        }
    }
}

// The error is thrown though there is a callback, and parsing may go on.
TEST(XmlParserEntities, ErrorsOfAnExternalSubsetDoNotGoToTheCallback) {
    const FakeWeb web(FakeWeb::Resources{{"http://h/faulty.dtd", "<!ENTITY e>"}});
    const OwnParser parser("<!DOCTYPE a SYSTEM 'http://h/faulty.dtd'><a/>");
    int reported = 0;
    parser.countErrors(reported);
    EXPECT_THROW(parser->next(), ZRError);
    EXPECT_EQ(reported, 0);
    EXPECT_EQ(parser->next(), ZRXmlParser::START_TAG);
}

TEST(XmlParserEntities, AnExternalSubsetIsFetchedOnceForTheProcess) {
    const FakeWeb web({{"http://h/once.dtd", "<!ENTITY e SYSTEM 'x.ent'><!ENTITY f 'y'>"},
                       {"http://h/one/x.ent", "<one/>"},
                       {"http://h/two/x.ent", "<two/>"}});
    const char* document = "<!DOCTYPE a SYSTEM 'http://h/once.dtd'><a>&e;</a>";
    // Identifiers in it resolve where they are used.
    EXPECT_EQ(xmlEvents(document, {.baseUri = u"http://h/one/"}), "<a>  <one/>  </one>  </a>  .");
    EXPECT_EQ(xmlEvents(document, {.baseUri = u"http://h/two/"}), "<a>  <two/>  </two>  </a>  .");
    EXPECT_EQ(std::count(web.asked().begin(), web.asked().end(), "http://h/once.dtd"), 1);
}

// The names that the last parser leaves would get other numbers with the next one.
TEST(XmlParserEntities, ExternalSubsetsKeepTheirNamesWhenNoParserIsThere) {
    const FakeWeb web(
        FakeWeb::Resources{{"http://h/kept.dtd", "<!ENTITY first 'x'><!ENTITY second 'y'>"}});
    EXPECT_EQ(xmlEvents("<!DOCTYPE a SYSTEM 'http://h/kept.dtd'><a>&second;</a>"),
              "<a>  'y'  </a>  .");
    EXPECT_EQ(xmlEvents("<!DOCTYPE other SYSTEM 'http://h/kept.dtd'><other>&second;</other>"),
              "<other>  'y'  </other>  .");
}

TEST(XmlParserEntities, ThreadsShareExternalSubsets) {
    const TempFolder folder;
    for (int i = 0; i < 10; ++i) {
        const std::string number = std::to_string(i);
        folder.write("s" + number + ".dtd", "<!ENTITY e '" + number + "'>");
    }
    std::array<int, 4> faults{};
    inThreads(4, [&](int thread) {
        for (int round = 0; round < 100; ++round) {
            const std::string number = std::to_string((round + thread) % 10);
            const std::string events = xmlEvents("<!DOCTYPE a SYSTEM '" + folder.path() + "/s"
                                                 + number + ".dtd'><a>&e;</a>");
            faults[static_cast<std::size_t>(thread)] +=
                events == "<a>  '" + number + "'  </a>  ." ? 0 : 1;
        }
    });
    EXPECT_EQ(faults, (std::array<int, 4>{}));
}

}  // namespace
}  // namespace ZroCommon::testing

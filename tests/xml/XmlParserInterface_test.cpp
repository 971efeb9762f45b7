#include <cstring>
#include <memory>
#include <sstream>
#include <utility>
#include <vector>

#include "tests/support/Streams.h"
#include "tests/support/TempFolder.h"
#include "tests/support/XmlEvents.h"

namespace ZroCommon::testing {
namespace {

// A parser at the first event of a document.
class ParserAt : public OwnParser {
public:
    explicit ParserAt(const std::string& document) : OwnParser(document) { (*this)->nextToken(); }
};

constexpr const char* kWrongState =
    "0x080B SYSTEM ERROR: Cannot set a value on node type. [ZroCommon::XmlParserImpl::";

TEST(XmlParserInterface, BeforeAnyInput) {
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    EXPECT_EQ(parser->getTypeID(), 0x5C58F35AU);
    EXPECT_TRUE(parser->isA(0x07416767U));
    EXPECT_EQ(parser->getLineNumber(), -1);
    EXPECT_EQ(parser->getColumnNumber(), -1);
    EXPECT_EQ(parser->getAttributeCount(), -1);
    EXPECT_EQ(utf8(parser->getPositionDescription()), "START_DOCUMENT.");
    const std::string wrongState = std::string(kWrongState) + "checkStream]";
    EXPECT_EQ(errorOf([&parser] { parser->next(); }), wrongState);
    EXPECT_EQ(errorOf([&parser] { parser->rewind(); }), wrongState);
    parser->closeStream();
    parser->setFeature(static_cast<ZRXmlParser::Feature>(6), true);
    EXPECT_FALSE(parser->getFeature(static_cast<ZRXmlParser::Feature>(6)));
}

// A parser that ends in the middle of a document, with all that can be set.
void leaveParserBehind() {
    std::istringstream stream("<!DOCTYPE a PUBLIC '-//W3C//DTD SVG 1.1//EN' 'no.dtd' "
                              "[<!ENTITY e 'E'>]>\n<p:a xmlns:p='urn:p' b='1'><p:c>&lt;");
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    for (int feature = 0; feature < 5; ++feature) {
        parser->setFeature(static_cast<ZRXmlParser::Feature>(feature), true);
    }
    parser->setLimits({.elementDepth = 2});
    parser->setCallbackError([](const ZRError&, void*) {}, nullptr);
    parser->setInput(stream, u"UTF-8", u"urn:base");
    parser->defineEntityReplacementText(ZRN_lt, u"less");
    while (parser->next() != ZRXmlParser::TEXT) {
    }
    EXPECT_TRUE(parser->getFeature(ZRXmlParser::FEATURE_SKIP_EXTERNAL_SUBSET));
}

// What a parser is made of serves the next one of the thread.
TEST(XmlParserInterface, NothingIsLeftOfTheParserBefore) {
    leaveParserBehind();
    {
        const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
        for (int feature = 0; feature < 6; ++feature) {
            EXPECT_FALSE(parser->getFeature(static_cast<ZRXmlParser::Feature>(feature)));
        }
        EXPECT_EQ(utf8(parser->getPositionDescription()), "START_DOCUMENT.");
        EXPECT_EQ(utf8(parser->getInputEncoding() + parser->getBaseUri()), "");
        EXPECT_EQ(parser->getNamespaceCount(0), 2);
    }
    leaveParserBehind();
    EXPECT_EQ(xmlEvents("<a><b><c>&lt;</c></b></a>"), "<a>  <b>  <c>  '<'  </c>  </b>  </a>  .");
    leaveParserBehind();
    EXPECT_EQ(xmlEvents("<a>&e;</a>"),
              "<a>  throws 6174 Reference to undefined entity: &e; @ENTITY_REF 1:5");
}

TEST(XmlParserInterface, ReadsFilesAndTellsTheirNames) {
    const TempFolder folder;
    const UnicodeString path = folder.write("a.xml", "<a>\n</a>");
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    parser->setInput(path, u"", u"");
    parser->next();
    EXPECT_EQ(utf8(parser->getPositionDescription()),
              "START_TAG, '" + folder.path() + "/a.xml', Line 1, Col 2.");
    EXPECT_EQ(utf8(parser->getBaseUri()), folder.path() + "/");
    // The stream was the parser's own and is gone.
    EXPECT_EQ(errorOf([&parser] { parser->rewind(); }), std::string(kWrongState) + "checkStream]");
}

// A stream that was not taken is not used again.
TEST(XmlParserInterface, InputsThatCannotBeRead) {
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    EXPECT_EQ(errorOf([&parser] { parser->setInput(u"/no/such.xml", u"", u""); }),
              "0x1003 Cannot open file: file:/no/such.xml [ZroCommon::XmlParserImpl::setInput]");
    std::stringbuf empty;
    ThrowAtBuf throwing("", 0);
    for (const auto& [buffer, error] :
         Rows<std::streambuf*, std::string>{{&empty, "0x1004 Unexpected end of input stream."},
                                            {nullptr, "0x1006 Input stream error."},
                                            {&throwing, "0x1006 Input stream error."}}) {
        auto stream = std::make_unique<std::istream>(buffer);
        EXPECT_EQ(errorOf([&] { parser->setInput(*stream, u"", u""); }),
                  error + " [ZroCommon::XmlParserImpl::checkStream]");
        stream = nullptr;
        EXPECT_EQ(errorOf([&] { parser->next(); }).substr(0, 6), "0x080B");
        EXPECT_EQ(errorOf([&] { parser->rewind(); }).substr(0, 6), "0x080B");
    }
}

TEST(XmlParserInterface, AStreamThatFailsInTheMiddleEndsTheDocument) {
    const std::string document = "<a>xy<b/></a>";
    for (std::size_t at = 1; at < document.size(); ++at) {
        ThrowAtBuf throwing(document, at);
        std::istream failing(&throwing);
        failing.exceptions(std::ios_base::badbit);
        std::istringstream cut(document.substr(0, at));
        EXPECT_EQ(xmlEvents(failing), xmlEvents(cut)) << at;
        EXPECT_TRUE(failing.bad());
    }
}

TEST(XmlParserInterface, TheEndSetsTheStateThatReadingWould) {
    std::istringstream stream("<a/>");
    stream.exceptions(std::ios_base::failbit | std::ios_base::eofbit);
    EXPECT_EQ(xmlEvents(stream), "<a/>  </a>  .");
    EXPECT_TRUE(stream.eof());
    EXPECT_TRUE(stream.fail());
}

TEST(XmlParserInterface, RewindsAtAnyTime) {
    const OwnParser parser("<a>x</a>", u"http://h/");
    for (int events = 1; events < 6; ++events) {
        for (int i = 0; i < events; ++i) {
            parser->next();
        }
        parser->rewind();
        EXPECT_EQ(parser->getEventType(), ZRXmlParser::START_DOCUMENT);
        EXPECT_EQ(parser->getDepth(), 0);
        EXPECT_EQ(utf8(parser->getBaseUri()), "http://h/");
    }
    EXPECT_EQ(XmlEventLog(*parser, {}).read(), "<a>  'x'  </a>  .");
}

TEST(XmlParserInterface, AttributesByIndexAndByName) {
    const ParserAt parser("<p:a xmlns:p='u' b='1' p:b='2'/>");
    const auto value = [&parser](const char16_t* uri) {
        return parser->getAttributeValue(ZRName(uri), ZRName(u"b"));
    };
    EXPECT_EQ(parser->getAttributeCount(), 3);
    EXPECT_EQ(utf8(value(u"u")), "2");
    EXPECT_EQ(utf8(value(u"")), "1");
    EXPECT_TRUE(value(u"v").isBogus());
    const std::string outOfRange =
        "0x0804 SYSTEM ERROR: ZRErrorCodeZROLIB [ZroCommon::XmlParserImpl::getAttribute";
    for (const int index : {-1, 3}) {
        EXPECT_EQ(errorOf([&] { parser->getAttributeName(index); }), outOfRange + "Name]");
        EXPECT_EQ(errorOf([&] { parser->getAttributePrefix(index); }), outOfRange + "Prefix]");
        EXPECT_EQ(errorOf([&] { parser->getAttributeNamespace(index); }),
                  outOfRange + "Namespace]");
        EXPECT_EQ(errorOf([&] { parser->getAttributeValue(index); }), outOfRange + "Value]");
    }
    parser->nextToken();
    EXPECT_EQ(parser->getAttributeCount(), -1);
    EXPECT_EQ(errorOf([&] { parser->getAttributeName(0); }), outOfRange + "Name]");
    EXPECT_EQ(errorOf([&] { value(u""); }), outOfRange + "Value]");
}

TEST(XmlParserInterface, AttributesOutliveTheStream) {
    const FakeWeb web(FakeWeb::Resources{{"http://h/e", "<!----><b c='plain' d='&#50;'/>"}});
    for (const char* document :
         {"<b c='plain' d='&#50;'/>", "<!DOCTYPE a [<!ENTITY e SYSTEM 'http://h/e'>]><a>&e;</a>"}) {
        const OwnParser parser(document);
        do {
            parser->next();
        } while (parser->getAttributeCount() != 2);
        parser->closeStream();
        EXPECT_EQ(utf8(parser->getAttributeValue(0)), "plain");
        EXPECT_EQ(utf8(parser->getAttributeValue(1)), "2");
    }
}

// On purpose: an attribute without prefix is looked for in the default namespace.
TEST(XmlParserInterface, AttributesByNameFollowTheDefaultNamespace) {
    const ParserAt parser("<a xmlns='u' b='1'/>");
    EXPECT_EQ(utf8(parser->getAttributeValue(ZRName(u"u"), ZRName(u"b"))), "1");
    EXPECT_TRUE(parser->getAttributeValue(ZRName(), ZRName(u"b")).isBogus());
    EXPECT_EQ(parser->getAttributeNamespace(1), ZRN_EMPTY);
}

TEST(XmlParserInterface, NamespaceDeclarationsByScope) {
    const ParserAt parser("<a xmlns:zz='u' xmlns:xsl='v'><b xmlns:zz='u' xmlns:c='w'/></a>");
    for (const auto& [depth, count] : Rows<int, int>{{0, 2}, {1, 2}, {2, 0}, {-1, 0}}) {
        EXPECT_EQ(parser->getNamespaceCount(depth), count) << depth;
    }
    // In the order of numbers: builtin names come first.
    EXPECT_EQ(utf8(parser->getNamespacePrefix(0).toString()), "xsl");
    EXPECT_EQ(utf8(parser->getNamespaceUri(1).toString()), "u");
    EXPECT_TRUE(parser->getNamespacePrefix(2).isEmpty());
    parser->nextToken();
    // What was in force already is an attribute, but no declaration.
    EXPECT_EQ(parser->getAttributeCount(), 2);
    EXPECT_EQ(parser->getNamespaceCount(2), 1);
    EXPECT_EQ(utf8(parser->getNamespace(ZRName(u"zz")).toString()), "u");
}

TEST(XmlParserInterface, QuestionsThatFitOtherEvents) {
    const ParserAt parser("<a> <![CDATA[x]]></a>\n");
    const auto answer = [](auto question) {
        bool isSo = false;
        const std::string error = errorOf([&] { isSo = question(); });
        return error == "nothing"               ? std::string(isSo ? "yes" : "no")
               : error.starts_with(kWrongState) ? error.substr(std::strlen(kWrongState))
                                                : error;
    };
    for (const char* answers :
         {"isWhitespace], no, 1, a", "yes, isEmptyElementTag], 1, ", "no, isEmptyElementTag], 1, ",
          "isWhitespace], isEmptyElementTag], 1, a", "yes, isEmptyElementTag], 0, "}) {
        EXPECT_EQ(answer([&] { return parser->isWhitespace(); }) + ", "
                      + answer([&] { return parser->isEmptyElementTag(); }) + ", "
                      + std::to_string(parser->getDepth()) + ", " + utf8(parser->getName()),
                  answers);
        parser->nextToken();
    }
}

// The text of a reference is looked up once.
TEST(XmlParserInterface, TheTextOfAReferenceIsKept) {
    const ParserAt parser("<a>&lt;</a>");
    parser->nextToken();
    for (const char16_t* later : {u"other", u"another"}) {
        EXPECT_EQ(utf8(parser->getText()), "&#60;");
        parser->defineEntityReplacementText(ZRN_lt, later);
    }
}

TEST(XmlParserInterface, ACallbackCannotMoveTheParser) {
    const OwnParser parser("<a>]]></a>");
    std::pair<ZRXmlParser*, std::vector<std::string>> seen{&*parser, {}};
    const auto intrude = [](const ZRError&, void* data) {
        auto& [from, errors] = *static_cast<decltype(seen)*>(data);
        ZRXmlParser& moved = *from;
        std::istringstream other("<other/>");
        errors = {errorOf([&] { moved.next(); }),
                  errorOf([&] { moved.nextToken(); }),
                  errorOf([&] { moved.rewind(); }),
                  errorOf([&] { moved.closeStream(); }),
                  errorOf([&] { moved.setInput(other, u"", u""); }),
                  errorOf([&] { moved.setInput(u"x", u"", u""); })};
    };
    parser->setCallbackError(intrude, &seen);
    parser.readToEnd();
    EXPECT_EQ(seen.second, std::vector<std::string>(6, std::string(kWrongState) + "checkStream]"));
}

// Those of the last tag up to the next one, and then as far as they are read and resolved.
TEST(XmlParserInterface, TheFirstReportSeesTheAttributes) {
    const FakeWeb web(FakeWeb::Resources{{"http://h/e", "<!----><b c='1'>"}});
    const std::string other(40000, 'x');  // takes the place of the tag in memory
    for (const auto& [document, seen] : Rows<std::string, const char*>{
             {"<a b=''>" + other + "<a b='1'>" + other + "< ", "{}1"},
             {"<!DOCTYPE a [<!ENTITY e SYSTEM 'http://h/e'>]><a c=''>&e;", "{}1"},
             {"<a q:b='1' p:c='2' r:d='3' xmlns:p='u'/>",
              "{}1{}2{}3{http://www.w3.org/2000/xmlns/}u"},
         }) {
        const OwnParser parser(document);
        std::pair<const ZRXmlParser*, std::string> witness{&*parser, ""};
        const auto look = [](const ZRError&, void* data) {
            auto& [from, all] = *static_cast<decltype(witness)*>(data);
            for (int i = 0; from != nullptr && i < from->getAttributeCount(); ++i) {
                all += "{" + utf8(from->getAttributeNamespace(i)) + "}"
                       + utf8(from->getAttributeValue(i));
            }
            from = nullptr;
        };
        parser->setCallbackError(look, &witness);
        parser.readToEnd();
        EXPECT_EQ(witness.second, seen) << document.substr(0, 40);
    }
}

// A callback that throws at its n-th call, for every n; then the parser reads another document.
TEST(XmlParserInterface, ACallbackMayThrowAtAnyReport) {
    const auto bomb = [](const ZRError&, void* left) {
        if (--*static_cast<int*>(left) == 0) {
            throw 1;
        }
    };
    const std::string document =
        "<!DOCTYPE a [<!ENTITY e 'x<'>%q;]><p:a b='&c;<' b='&e;' d=1>]]>&#0;&f;<!-- -- ---></c>"
        "<![x]><?p?>";
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    int exploded = 0;
    for (int n = 1; n < 40; ++n) {
        int left = n;
        parser->setCallbackError(bomb, &left);
        std::istringstream stream(document);
        try {
            parser->setInput(stream, u"", u"");
            while (parser->next() != ZRXmlParser::END_DOCUMENT) {
            }
        } catch (int) {
            ++exploded;
        }
        parser->setCallbackError(nullptr, nullptr);
        std::istringstream good("<a b='&lt;'>x</a>");
        parser->setInput(good, u"", u"");
        EXPECT_EQ(XmlEventLog(*parser, {}).read(), "<a b=<>  'x'  </a>  .") << n;
    }
    EXPECT_GT(exploded, 12);
}

}  // namespace
}  // namespace ZroCommon::testing

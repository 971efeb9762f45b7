// The parser when its stream or its memory gives out, at every place where that can happen.

#include <new>
#include <sstream>

#include "tests/support/Memory.h"
#include "tests/support/NamesStay.h"
#include "tests/support/Streams.h"
#include "tests/support/XmlEvents.h"

namespace ZroCommon::testing {
namespace {

const FakeWeb::Resources kResources = {
    {"http://h/x", "<?xml encoding='UTF-8'?><b/>t"},
    {"http://h/y", "<!ENTITY e 'se'><!ENTITY f '<b/>'>"},
    {"http://h/s", "<!ENTITY x SYSTEM 'x'><!-- c -->"},
};

const char* const kDocuments[] = {
    "<a>x<!-- c -->y<?p q?>z]]<![CDATA[x]]y]]>&#65;&lt;\xF0\x9F\x98\x80\r\nx\r</a> ",
    "<!DOCTYPE a [<!ENTITY e 'v'><!ENTITY f '<b/>'><!ENTITY x SYSTEM 'x'>]><a b='&e;\n'>&f;&x;</a>",
    "<?xml version='1.0' encoding='ISO-8859-1'?>\n<p:a xmlns:p='u'><p:b p:c='1' c='2'/></p:a>",
    "<!DOCTYPE a SYSTEM 's' [<!ENTITY % p SYSTEM 'y'>%p;]><a>&e;&f;&x;</a>",
    "<a></b>",
};

std::string read(ZRXmlParser& parser, std::istream& stream) {
    const XmlReading reading{.positions = true};
    XmlEventLog log(parser, reading);
    try {
        parser.setInput(stream, u"", u"http://h/");
    } catch (const ZRError& error) {
        return "throws " + XmlEventLog::describe(error);
    }
    return log.read();
}

// "" when a document reads as ever.
std::string afterwards(ZRXmlParser& parser) {
    std::istringstream stream("<!DOCTYPE a [<!ENTITY e '<b/>'>]><a c='1'>t&e;u</a>");
    const std::string events = read(parser, stream);
    return events == "<a c=1>@1:41  't'@1:45  <b/>@1:45  </b>@1:45  'u'@1:48  </a>@1:50  .@1:50"
               ? ""
               : events;
}

// Throws at its end, the first time.
template <class Thrown>
class ThrowOnceBuf : public PiecewiseBuf {
public:
    ThrowOnceBuf(const std::string& bytes, std::size_t at) : PiecewiseBuf(bytes.substr(0, at), 1) {}

protected:
    int_type atEnd() override {
        if (!m_hasThrown) {
            m_hasThrown = true;
            throw Thrown{};
        }
        return traits_type::eof();
    }

private:
    bool m_hasThrown = false;
};

struct OtherError {};

template <class Thrown>
void throwAtEveryByte() {
    const NamesStay names;
    const FakeWeb web(kResources);
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    for (const std::string document : kDocuments) {
        for (std::size_t at = 0; at <= document.size(); ++at) {
            ThrowOnceBuf<Thrown> buffer(document, at);
            std::istream stream(&buffer);
            try {
                read(*parser, stream);
                parser->next();
            } catch (...) {  // what the buffer threw, or an error that follows from it
                parser->getPositionDescription();
            }
            ASSERT_EQ(afterwards(*parser), "") << document << " at " << at;
        }
    }
}

TEST(XmlParserFaults, AStreamThatThrowsDoesNotHarmTheParser) {
    throwAtEveryByte<std::bad_alloc>();
    throwAtEveryByte<OtherError>();
}

// The whole document or an exception; never a part as if it were all.
std::string readWithNews(ZRXmlParser& parser, const char* document, long news, bool forGood) {
    std::istringstream stream(document);
    try {
        letNewsSucceed(news, forGood);
        std::string events = read(parser, stream);
        letNewsSucceed(-1);
        return events.find("throws 2049 Out of memory.") == std::string::npos ? events
                                                                              : "bad_alloc";
    } catch (const std::bad_alloc&) {
        letNewsSucceed(-1);
        return "bad_alloc";
    }
}

void failEveryNew(const char* document, bool forGood) {
    const std::string expected = readWithNews(*ZRXmlUtil::createXmlParser(), document, -1, true);
    std::string events;
    for (long news = 0; events != expected; ++news) {
        const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
        events = readWithNews(*parser, document, news, forGood);
        ASSERT_TRUE(events == "bad_alloc" || events == expected)
            << events << "\nfor " << document << " with " << news << " allocations";
        ASSERT_EQ(afterwards(*parser), "") << document << " with " << news << " allocations";
    }
}

TEST(XmlParserFaults, AllocationsThatFailEndInAnExceptionAndDoNotHarmTheParser) {
    const NamesStay names;
    const FakeWeb web(kResources);
    for (const char* document : kDocuments) {
        failEveryNew(document, false);
        failEveryNew(document, true);
    }
}

// Texts have memory of their own, and one that finds none is told by an error, not by bad_alloc.
TEST(XmlParserFaults, ALackOfMemoryIsNoFaultOfTheExternalSubset) {
    lendTextsMemory(100'000);
    const FakeWeb web(
        FakeWeb::Resources{{"http://h/large", "<!ENTITY e '" + std::string(100'000, 'x') + "'>"}});
    EXPECT_EQ(xmlEvents("<!DOCTYPE a SYSTEM 'http://h/large'><a/>",
                        {.features = {ZRXmlParser::FEATURE_IGNORE_EXTERNAL_SUBSET_ERRORS}})
                  .substr(0, 26),
              "throws 2049 Out of memory.");
}

}  // namespace
}  // namespace ZroCommon::testing

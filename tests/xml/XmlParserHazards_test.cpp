// Documents that are made to exhaust their reader: each on a small stack, with linear work.

#include <algorithm>
#include <atomic>
#include <ctime>
#include <sstream>
#include <string_view>

#include "tests/support/SmallStack.h"
#include "tests/support/Streams.h"
#include "tests/support/XmlEvents.h"

namespace ZroCommon::testing {
namespace {

struct Totals {
    std::size_t events = 0;
    std::size_t units = 0;  // of text and attribute values
    std::string error;
};

Totals readAll(std::istream& stream, const ZRLimits& limits = {}) {
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    parser->setLimits(limits);
    Totals totals;
    try {
        parser->setInput(stream, u"", u"");
        while (parser->next() != ZRXmlParser::END_DOCUMENT) {
            ++totals.events;
            totals.units += static_cast<std::size_t>(parser->getText().length());
            for (int i = 0; i < parser->getAttributeCount(); ++i) {
                totals.units += static_cast<std::size_t>(parser->getAttributeValue(i).length());
            }
        }
    } catch (const ZRError& error) {
        totals.error = utf8(error.getRawMessage());
    }
    return totals;
}

Totals readAll(const std::string& document, const ZRLimits& limits = {}) {
    Totals totals;
    onSmallStack([&] {
        std::istringstream stream(document);
        totals = readAll(stream, limits);
    });
    return totals;
}

double secondsOf(const std::string& document) {
    const std::clock_t start = std::clock();
    readAll(document);
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

std::string repeated(std::size_t count, std::string_view text) {
    std::string result;
    result.reserve(count * text.size());
    while (count-- != 0) {
        result += text;
    }
    return result;
}

std::string numbered(std::size_t count, const std::string& head, const std::string& tail) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) {
        result.append(head).append(std::to_string(i)).append(tail);
    }
    return result;
}

std::string deep(std::size_t depth) {
    return repeated(depth, "<a>") + repeated(depth, "</a>");
}

std::string wideTag(std::size_t count) {
    return "<a" + numbered(count, " b", "=''") + "/>";
}

std::string manyReferences(std::size_t count) {
    return "<!DOCTYPE a [<!ENTITY e 'x'><!ENTITY f '" + repeated(count, "&e;") + "'>]><a b='&f;'>"
           + repeated(count, "&e;") + "&f;</a>";
}

// Each entity names the one before it.
std::string chain(std::size_t length) {
    std::string declarations = "<!ENTITY e0 'x'>";
    for (std::size_t i = 1; i < length; ++i) {
        declarations += "<!ENTITY e" + std::to_string(i) + " '&e" + std::to_string(i - 1) + ";'>";
    }
    const std::string last = "&e" + std::to_string(length - 1) + ";";
    return "<!DOCTYPE a [" + declarations + "]><a b='" + last + "'>" + last + "</a>";
}

TEST(XmlParserHazards, SizeHasNoBounds) {
    EXPECT_EQ(readAll(deep(1'000'000)).events, 2'000'000U);
    EXPECT_EQ(readAll(wideTag(100'000)).events, 2U);
    EXPECT_EQ(readAll("<a c=''" + numbered(100'000, " b", "=''") + " c=''/>").error,
              "Duplicate attribute: c\nSTART_TAG, Line 1, Col 988903.");
    EXPECT_EQ(readAll(manyReferences(300'000)).units, 900'000U);
    EXPECT_EQ(readAll(chain(50'000)).units, 2U);
    EXPECT_EQ(readAll("<a>&#" + std::string(5'000'000, '0') + "65;</a>").units, 1U);
    const std::string large(5'000'000, 'x');
    EXPECT_EQ(readAll("<a><!--" + large + "--></a>").events, 2U);
    EXPECT_EQ(readAll("<" + large.substr(0, 1'000'000) + "/>").events, 2U);
    for (const std::string& document :
         {"<a b='" + large + "'/>", "<a b='&lt;" + large.substr(1) + "'/>", "<a>" + large + "</a>",
          "<!DOCTYPE a [<!ENTITY e '" + large + "'>]><a>&e;</a>"}) {
        EXPECT_EQ(readAll(document).units, large.size()) << document.substr(0, 20);
    }
}

// Four times the input in at most about four times the time.
TEST(XmlParserHazards, WorkGrowsNoFasterThanTheInput) {
    for (const auto& [what, make, count] :
         Rows<const char*, std::string (*)(std::size_t), std::size_t>{
             {"depth", deep, 60'000},
             {"attributes", wideTag, 20'000},
             {"references", manyReferences, 40'000},
             {"chain", chain, 10'000},
             {"brackets", [](std::size_t n) { return "<a>" + std::string(n, ']') + "</a>"; },
              200'000},
             {"dashes", [](std::size_t n) { return "<a><!--" + repeated(n, "- ") + "--></a>"; },
              200'000},
             {"declarations",
              [](std::size_t n) { return repeated(n, "<?xml version='1.0'?>") + "<a/>"; }, 5'000},
             {"namespaces",
              [](std::size_t n) {
                  return "<a" + numbered(n, " xmlns:n", "='u'") + numbered(n, " n", ":b='x'")
                         + "/>";
              },
              10'000},
         }) {
        const std::string small = make(count);
        const std::string large = make(4 * count);
        double best = 1000;
        for (int round = 0; round < 3 && best > 8; ++round) {
            best = std::min(best, secondsOf(large) / std::max(secondsOf(small), 1e-3));
        }
        EXPECT_LT(best, 8) << what;
    }
}

// The limit that a document breaks, or else its error.
std::string breach(const std::string& document, const ZRLimits& limits = ZRLimits::strict()) {
    const std::string_view start = "Limit exceeded: ";
    const std::string error = readAll(document, limits).error;
    return error.starts_with(start) ? error.substr(start.size(), error.find('.') - start.size())
                                    : error;
}

TEST(XmlParserHazards, LimitsAreOptional) {
    EXPECT_EQ(breach(deep(3), {.elementDepth = 3}), "");
    EXPECT_EQ(readAll(deep(4), {.elementDepth = 3}).error,
              "Limit exceeded: element depth.\nSTART_TAG, Line 1, Col 11.");
    EXPECT_EQ(breach(deep(2048)), "");
    EXPECT_EQ(breach(deep(2049)), "element depth");
}

// Nine levels of ten references each, and one entity of a million characters.
TEST(XmlParserHazards, ExpansionCanBeLimited) {
    std::string levels = "<!ENTITY e0 'lol'>";
    for (int i = 1; i < 10; ++i) {
        levels += "<!ENTITY e" + std::to_string(i) + " '"
                  + repeated(10, "&e" + std::to_string(i - 1) + ";") + "'>";
    }
    const std::string quadratic = "<!ENTITY e9 '" + std::string(1'000'000, 'x') + "'>";
    const std::string self = "<!ENTITY e9 '&#38;e9;'>";
    const std::string references = repeated(200, "&e9;");
    for (const std::string& declarations : {levels, quadratic, self}) {
        const std::string start = "<!DOCTYPE a [" + declarations + "]><a>";
        EXPECT_EQ(breach(start + references + "</a>"), "entity expansion");
        EXPECT_EQ(breach(start + "<b c='" + references + "'/></a>"), "entity expansion");
    }
}

// Short entities have ended before the reference in them is read.
TEST(XmlParserHazards, NestingIsCountedByWhatRefersToWhat) {
    for (const auto& [first, second, content, limit] :
         Rows<std::string, std::string, std::string, const char*>{
             {"<b/>......&a;", "", "&a;", "input nesting"},
             {"&a;", "", "&a;", "input nesting"},
             {"&a;x", "", "&a;", "input nesting"},
             {"&b;", "&a;", "&a;", "input nesting"},
             {"&i;", "", "&a;", "input nesting"},
             {"x", "<b/>", repeated(60, "&a;"), ""},
             {"x", "&a;", repeated(60, "&b;&a;"), ""},
         }) {
        const FakeWeb web(FakeWeb::Resources{{"http://h/a", first}, {"http://h/b", second}});
        EXPECT_EQ(breach("<!DOCTYPE a [<!ENTITY a SYSTEM 'http://h/a'><!ENTITY b SYSTEM "
                         "'http://h/b'><!ENTITY i '&#38;a;'>]><a>"
                         + content + "</a>"),
                  limit)
            << first << ' ' << second << ' ' << content;
    }
    const FakeWeb web(FakeWeb::Resources{{"http://h/p", "%p;"}});
    EXPECT_EQ(breach("<!DOCTYPE a [<!ENTITY % p SYSTEM 'http://h/p'>%p;]><a/>"), "input nesting");
    EXPECT_EQ(web.asked().size(), 41U);
}

TEST(XmlParserHazards, ExternalCharactersCountAsExpansion) {
    const FakeWeb web(FakeWeb::Resources{{"http://h/a", repeated(10, "&b;")},
                                         {"http://h/b", repeated(10, "&c;")},
                                         {"http://h/c", std::string(99, 'x')}});
    ZRLimits limits = ZRLimits::strict();
    limits.entityExpansionThreshold = 10'000;
    const std::string start = "<!DOCTYPE a [<!ENTITY a SYSTEM 'http://h/a'><!ENTITY b SYSTEM "
                              "'http://h/b'><!ENTITY c SYSTEM 'http://h/c'>]><a>";
    EXPECT_EQ(breach(start + "&b;&b;</a>", limits), "");
    EXPECT_EQ(breach(start + repeated(9, "&a;") + "</a>", limits), "entity expansion");
}

TEST(XmlParserHazards, NothingElseIsOpenedWhenThatIsDenied) {
    const FakeWeb web(FakeWeb::Resources{{"http://h/e.ent", "<b/>"}});
    const ZRLimits limits{.denyExternal = true};
    const std::string subset = "<!DOCTYPE a SYSTEM 'http://h/s.dtd' [";
    EXPECT_EQ(readAll(subset + "]><a/>", limits).events, 2U);
    for (const char* use : {"<!ENTITY e SYSTEM 'http://h/e.ent'>]><a>&e;</a>",
                            "<!ENTITY % e SYSTEM 'http://h/e.ent'>%e;]><a/>"}) {
        EXPECT_EQ(breach(subset + use, limits), "external entity");
        EXPECT_EQ(readAll(subset + use, {.skipExternal = true}).events, 2U);
    }
    EXPECT_TRUE(web.asked().empty());
}

// A breach is no error that a callback could pass over.
TEST(XmlParserHazards, LimitsDoNotAskTheCallback) {
    const OwnParser parser(deep(4));
    int reported = 0;
    parser.countErrors(reported);
    parser->setLimits({.elementDepth = 3});
    const std::string error = errorOf([&parser] { parser.readToEnd(); });
    EXPECT_EQ(error.substr(0, 37), "0x183A Limit exceeded: element depth.");
    EXPECT_EQ(reported, 0);
    EXPECT_EQ(parser->next(), ZRXmlParser::END_DOCUMENT);
    EXPECT_EQ(reported, 1);  // the missing end tags
}

// Endless blanks behind a beginning. After some of them it sets a flag, as another thread would.
class CancellingBuf : public PiecewiseBuf {
public:
    CancellingBuf(std::string head, std::atomic<bool>& flag)
        : PiecewiseBuf(std::move(head)), m_flag(flag) {}

protected:
    int_type atEnd() override {
        m_flag = ++m_rounds == 10;
        setg(m_blanks.data(), m_blanks.data(), m_blanks.data() + m_blanks.size());
        return traits_type::to_int_type(' ');
    }

private:
    std::atomic<bool>& m_flag;
    std::string m_blanks = std::string(4096, ' ');
    int m_rounds = 0;
};

TEST(XmlParserHazards, AParseCanBeCancelled) {
    for (const char* head : {"<a>", "<!-- ", "<a b='", "<a "}) {
        std::atomic<bool> flag = false;
        CancellingBuf buffer(head, flag);
        std::istream stream(&buffer);
        EXPECT_EQ(readAll(stream, {.cancelFlag = &flag}).error.substr(0, 26),
                  "Limit exceeded: cancelled.")
            << head;
    }
    const std::atomic<bool> flag = true;
    for (const char* endless : {"&e;", "<b c='&e;'/>"}) {
        EXPECT_EQ(breach(std::string("<!DOCTYPE a [<!ENTITY e '&#38;e;'>]><a>") + endless,
                         {.cancelFlag = &flag}),
                  "cancelled");
    }
}

TEST(XmlParserHazards, TheFirstElementComesWithItsBytes) {
    PiecewiseBuf buffer("<a b=''>" + std::string(1'000'000, ' '), 8);
    std::istream stream(&buffer);
    const ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    parser->setInput(stream, u"", u"");
    parser->next();
    EXPECT_EQ(buffer.refills(), 1U);
}

}  // namespace
}  // namespace ZroCommon::testing

#include <sstream>
#include <thread>

#include "tests/support/Streams.h"
#include "tests/support/XmlEvents.h"
#include "zro/vocabulary/ZRNameTable.h"

namespace ZroCommon::testing {
namespace {

// What a thread's last parser has met is at hand for the next one, whose numbers are others.
TEST(NameCache, NamesKeepTheirTextsWhileNumbersBeginAnew) {
    const std::string forward = "<x:aaa aa1='1' aa2='2'><aa3/></x:aaa>";
    const std::string backward = "<aa3 aa2='1' aa1='2'><x:aaa/></aa3>";
    const std::string first = xmlEvents(forward);
    const std::string second = xmlEvents(backward);
    for (int round = 0; round < 3; ++round) {
        const ZRNameEnum before = ZRName(u"another name");
        EXPECT_EQ(xmlEvents(backward), second);
        EXPECT_EQ(xmlEvents(forward), first);
        EXPECT_NE(before, ZRN_EMPTY);
    }
}

TEST(NameCache, NewNamesAreNumberedInTheOrderOfTheDocument) {
    const std::string document = "<n:c1 n:c2='' c3=''><n:c4/></n:c1>";
    std::string orders[2];
    for (std::string& order : orders) {  // the second time with a cache that knows them
        ZRNameTable::addRefSharedNameTable();
        xmlEvents(document);
        for (const char16_t* text : {u"n", u"c1", u"c2", u"c3", u"c4"}) {
            order += std::to_string(ZRName(text)) + ' ';
        }
        ZRNameTable::releaseSharedNameTable();
    }
    EXPECT_EQ(orders[0], orders[1]);
}

TEST(NameCache, TheSameNameMayBeFollowedByOthers) {
    const std::string document = "<a b='1' c='2'><a b='1' d='2'/><a b='1' cc='2'/><a b='1'/>"
                                 "<a b='1' c = '2'/><a b='1' c></a>";
    EXPECT_EQ(xmlEvents(document), xmlEvents(document));
    EXPECT_NE(xmlEvents(document).find("cc"), std::string::npos);
}

TEST(NameCache, MoreNamesThanItHolds) {
    std::string document = "<root>";
    for (int i = 0; i < 2000; ++i) {
        document += "<e" + std::to_string(i % 700) + " f" + std::to_string(i % 611) + "='v'/>";
    }
    document += "</root>";
    const std::string first = xmlEvents(document);
    EXPECT_EQ(xmlEvents(document), first);
    EXPECT_NE(first.find("e699"), std::string::npos);
}

TEST(NameCache, AParserMayEndInAnotherThread) {
    std::istringstream stream("<p:other xmlns:p='urn:p'/>");
    ZRPtr<ZRXmlParser> parser = ZRXmlUtil::createXmlParser();
    parser->setInput(stream, u"", u"");
    std::thread([&parser] {
        parser->next();
        parser = nullptr;
        EXPECT_EQ(xmlEvents("<p:other/>"), xmlEvents("<p:other/>"));
    }).join();
}

}  // namespace
}  // namespace ZroCommon::testing

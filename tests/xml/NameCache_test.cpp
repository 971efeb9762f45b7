#include <sstream>
#include <thread>

#include "tests/support/Streams.h"
#include "tests/support/XmlEvents.h"
#include "zro/vocabulary/ZRNameTable.h"

namespace ZroCommon::testing {
namespace {

// What a thread's last parser has met is at hand for the next one, whose numbers are others.
TEST(NameCache, NamesKeepTheirTextsWhileNumbersBeginAnew) {
    std::string many = "<root>";  // more than it holds
    for (int i = 0; i < 2000; ++i) {
        many += "<e" + std::to_string(i % 700) + " f" + std::to_string(i % 611) + "='v'/>";
    }
    const std::string documents[] = {
        "<x:aaa aa1='1' aa2='2'><aa3/></x:aaa>", "<aa3 aa2='1' aa1='2'><x:aaa/></aa3>",
        // The same name followed by others.
        "<a b='1' c='2'><a b='1' d='2'/><a b='1' cc='2'/><a b='1'/><a b='1' c = '2'/><a b='1' c>",
        many + "</root>"};
    std::string logs[2];
    for (int round = 0; round < 4; ++round) {
        std::string& log = logs[round == 0 ? 0 : 1] = "";
        for (const std::string& document : documents) {
            log += xmlEvents(document);
        }
        EXPECT_EQ(log, logs[0]);
    }
    EXPECT_NE(logs[0].find("cc=2"), std::string::npos);
    EXPECT_NE(logs[0].find("e699"), std::string::npos);
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

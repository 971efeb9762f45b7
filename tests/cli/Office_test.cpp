// What office documents are, and what they say of themselves.
#include <gtest/gtest.h>

#include "tests/cli/Workplace.h"
#include "tests/support/OleBuilder.h"
#include "tests/support/PropertySetBuilder.h"
#include "tests/support/ZipBuilder.h"

namespace ZroCommon::testing {
namespace {

using namespace std::string_literals;

class Office : public ::testing::Test {
protected:
    Office() {
        m_place.write("a.doc", oldDocument(m_set.stream({{{1, m_set.integer(1252, 2)},
                                                          {2, m_set.text("Caf\xE9\n")},
                                                          {4, m_set.text("Ann")},
                                                          {14, m_set.integer(7)}}})));
        m_place.write("cut.doc", oldDocument(m_set.stream({{{2, m_set.text("T")}}}).substr(0, 60)));
        m_place.write("bare.doc", OleBuilder().stream(u"x", "x").build().bytes);
        m_place.write("a.docx", package("<d:title>T&amp;T</d:title><d:creator>Bo</d:creator>"));
        m_place.write("broken.docx", package("<d:title>T</d:creator>"));
        m_place.write("a.zip", ZipBuilder().stored("a", "").package());
        m_place.write("text", "text");
    }

    std::string oldDocument(const std::string& summary) const {
        const std::string links =
            m_set.stream({{{0, m_set.dictionary({{2, "_PID_HLINKS\0"s}})},
                           {2, m_set.blob(2, m_set.wide(u"http://h/") + m_set.wide(u"#\u65E5"))}}});
        return OleBuilder()
            .stream(u"WordDocument", "w")
            .stream(u"\5SummaryInformation", summary)
            .stream(u"\5DocumentSummaryInformation", links)
            .build()
            .bytes;
    }

    static std::string package(const std::string& properties) {
        const std::string standard = "\"http://schemas.openxmlformats.org/";
        const std::string relationship = "<Relationship Id=\"r\" Type=" + standard;
        return ZipBuilder()
            .stored("[Content_Types].xml",
                    "<Types xmlns=" + standard
                        + "package/2006/content-types\"><Override PartName=\"/d.xml\" ContentType="
                          "\"application/vnd.openxmlformats-officedocument.wordprocessingml."
                          "document.main+xml\"/></Types>")
            .stored("_rels/.rels",
                    "<Relationships xmlns=" + standard + "package/2006/relationships\">"
                        + relationship
                        + "officeDocument/2006/relationships/officeDocument\" Target=\"d.xml\"/>"
                        + relationship
                        + "package/2006/relationships/metadata/core-properties\" Target=\"c.xml\"/>"
                          "</Relationships>")
            .stored("d.xml", "<d/>")
            .stored("c.xml", "<!DOCTYPE c SYSTEM 'http://h/x.dtd'><c "
                             "xmlns:d=\"http://purl.org/dc/elements/1.1/\">"
                                 + properties + "</c>")
            .package();
    }

    PropertySetBuilder m_set;
    Workplace m_place;
};

TEST_F(Office, ShowsBothKindsOfDocuments) {
    const CommandOutput rows[] = {
        {"office a.doc a.docx", "a.doc\n"
                                "  type         Word document of the time before OOXML\n"
                                "  title        Café\\n\n"
                                "  author       Ann\n"
                                "  streams      3\n"
                                "a.docx\n"
                                "  type         Word document\n"
                                "  title        T&T\n"
                                "  author       Bo\n"
                                "  parts        4\n"},
        {"--json office - < a.docx",
         "{\"file\":\"<stdin>\",\"container\":\"ooxml\",\"type\":\"docx\",\"title\":\"T&T\","
         "\"author\":\"Bo\",\"parts\":[\"[Content_Types].xml\",\"_rels/.rels\",\"d.xml\","
         "\"c.xml\"]}\n"},
        {"ole props a.doc", "code page    1252\n"
                            "title        Café\\n\n"
                            "author       Ann\n"
                            "pages        7\n"},
        {"--json ole props a.doc",
         "{\"code page\":1252,\"title\":\"Café\\n\",\"author\":\"Ann\",\"pages\":7}\n"},
        {"ole links a.doc", "http://h/\n#日\n"},
        {"--json ole links a.doc", "\"http://h/\"\n\"#日\"\n"},
    };
    expectOutputs(m_place, rows);
}

TEST_F(Office, NamesWhatIsWrong) {
    const struct {
        const char* command;
        const char* error;
    } rows[] = {
        {"office none", "none: error: no such file\n"},
        {"office text", "text: error: is neither a ZIP package nor a compound file\n"},
        {"office a.zip 2>&1 | head -1",
         "a.zip: error: is a ZIP package in which no main part of an office document is found\n"},
        {"office cut.doc", "cut.doc: error: its summary information is damaged\n"},
        {"office broken.docx", "broken.docx: error: in \"c.xml\": "},
        {"ole props bare.doc", "bare.doc: error: has no summary information\n"},
        {"ole links bare.doc", "bare.doc: error: has no document summary information\n"},
    };
    for (const auto& [command, error] : rows) {
        const Outcome outcome = m_place.run(std::string("zro ") + command);
        EXPECT_TRUE((outcome.err + outcome.out).find(error) != std::string::npos) << outcome;
        EXPECT_TRUE(outcome.status == 1 || outcome.err.empty()) << outcome;
    }
}

}  // namespace
}  // namespace ZroCommon::testing

// The commands on office documents that are packages.
#include <gtest/gtest.h>

#include "tests/cli/Workplace.h"
#include "tests/support/OpcBuilder.h"
#include "tests/support/Rows.h"

namespace ZroCommon::testing {
namespace {

ZipBuilder letter() {
    const std::string links = relationship("rId1", "http://t/hyperlink", "http://h/x", "External")
                              + relationship("rId2", "http://t/image", "media/x.png")
                              + relationship("rId3", "http://t/place", "#there");
    return officePackage("word/document.xml", "t/main")
        .deflated("word/_rels/document.xml.rels", relationships(links))
        .stored("other", "");
}

TEST(Ooxml, TellsTypesRelationshipsAndParts) {
    const Workplace place;
    place.write("a.docx", letter().package());
    const std::string missing =
        "a.docx: error: word/media/x.png is missing: word/_rels/document.xml.rels leads there\n";
    for (
        const auto& [command, out, err] : Rows<const char*, std::string, std::string>{
            {"types",
             "[Content_Types].xml           -\n"
             "_rels/.rels                   -\n"
             "word/document.xml             t/main\n"
             "word/_rels/document.xml.rels  -\n"
             "other                         -\n",
             ""},
            {"rels",
             "package\n"
             "  rId1  officeDocument  Internal  word/document.xml\n"
             "word/document.xml\n"
             "  rId1  hyperlink  External  http://h/x\n"
             "  rId2  image      missing   word/media/x.png\n"
             "  rId3  place      Internal  word/#there\n",
             ""},
            {"parts",
             "word/document.xml  officeDocument  t/main\n"
             "other              -               -\n",
             missing},
            {"--json parts",
             R"({"part":"word/document.xml","from":null,"relationship":"http://schemas.openxmlformats)"
             R"(.org/officeDocument/2006/relationships/officeDocument","type":"t/main","size":11})"
             "\n"
             R"({"part":"other","from":null,"relationship":null,"type":null,"size":0})"
             "\n",
             ""}}) {
        const Outcome outcome = place.run("zro ooxml " + std::string(command) + " a.docx");
        EXPECT_EQ(outcome.out, out) << command;
        EXPECT_EQ(outcome.status, std::string(command).ends_with("parts") ? 1 : 0) << command;
        EXPECT_TRUE(err.empty() || outcome.err == err) << outcome.err;
    }
}

TEST(Ooxml, SaysInOneLineWhatIsWrong) {
    const Workplace place;
    const std::string x = defaultType("xml", "x");
    for (const auto& [markup, reason] : Rows<std::string, std::string>{
             {"", "Unexpected end of input stream."},
             {"<Types/>", "line 1: \"Types\" is of another namespace"},
             {contentTypes(x + "\n<Other/>"), "line 2: \"Other\" is neither Default nor Override"},
             {contentTypes("<Default Extension='x'/>"), "line 1: \"Default\" has no ContentType"},
             {contentTypes(overrideType("", "x")), "line 1: \"Override\" has no PartName"},
             {contentTypes("<Default Extension='x' ContentType='x'><Default/></Default>"),
              "line 1: \"Default\" stands inside another type"}}) {
        place.write("a.docx", ZipBuilder().deflated("[Content_Types].xml", markup).package());
        EXPECT_EQ(place.run("zro ooxml types a.docx").err,
                  "a.docx: error: [Content_Types].xml cannot be read: " + reason + "\n");
    }
    EXPECT_EQ(place.run("zro ooxml rels a.docx").err,
              "a.docx: error: has no relationships that the walk reaches (see zro zip why)\n");
    place.write("a.docx",
                ZipBuilder().deflated("_rels/.rels", relationships("\n<a></b>")).package());
    const Outcome outcome = place.run("zro ooxml parts a.docx");
    EXPECT_EQ(outcome.err.substr(0, 50), "a.docx: error: _rels/.rels cannot be read: line 2:");
    EXPECT_EQ(outcome.status, 1);
}

}  // namespace
}  // namespace ZroCommon::testing

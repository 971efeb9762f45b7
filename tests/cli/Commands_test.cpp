// What each command prints for people.
#include <string>

#include <gtest/gtest.h>

#include "tests/cli/Workplace.h"

namespace ZroCommon::testing {
namespace {

constexpr const char* kLetter =
    "<?xml version=\"1.0\"?>\n"
    "<!-- a letter -->\n"
    "<fo:root xmlns:fo=\"http://www.w3.org/1999/XSL/Format\">\n"
    "  <fo:block font-size=\"12pt\" color=\"#FF0000\" my-own=\"1\">Dear <?mark "
    "here?>you</fo:block>\n"
    "  <fo:block font-size=\"10pt\" xml:lang=\"en\"><![CDATA[&]]> so &amp; on</fo:block>\n"
    "</fo:root>\n";

// One line of a report: the value of a label.
std::string valueOf(const std::string& report, const std::string& label) {
    const std::size_t line = report.find("\n  " + label + " ");
    if (line == std::string::npos) {
        return "no " + label;
    }
    const std::size_t value = report.find_first_not_of(' ', line + 3 + label.size());
    return report.substr(value, report.find('\n', value) - value);
}

TEST(Load, ReportsWhatTheDocumentIsMadeOf) {
    const Workplace place;
    place.write("letter.fo", kLetter);
    const struct {
        const char* label;
        const char* value;
    } rows[] = {
        {"root", "{http://www.w3.org/1999/XSL/Format}fo:root"},
        {"namespaces", "http://www.w3.org/1999/XSL/Format  3 elements"},
        {"elements", "3  depth 2"},
        {"attributes", "6  1 of them namespace declarations"},
        {"text nodes", "5  24 UTF-16 units"},
        {"instructions", "1  by a pass over the tokens, as the tree hides them;"},
        {"comments", "1  these too"},
        {"CDATA sections", "1"},
        {"references", "1  in content"},
        {"names", "6  1 new to the vocabulary"},
        {"properties", "2  font-size"},
        {"read", "275 bytes, UTF-8"},
    };
    for (const char* mode : {"", "--pull", "--save copy.fo", "--pull --save copy.fo"}) {
        const Outcome outcome = place.run(std::string("zro load letter.fo ") + mode);
        EXPECT_EQ(outcome.status, 0) << outcome;
        for (const auto& [label, value] : rows) {
            EXPECT_EQ(valueOf(outcome.out, label), value) << "for: " << label << " " << mode;
        }
    }
}

TEST(Load, SavesToStandardOutputAndReportsElsewhere) {
    const Workplace place;
    place.write("a.xml", "<a b='1'>x</a>");
    const Outcome outcome = place.run("zro load a.xml --save - | tail -c 14");
    EXPECT_EQ(outcome.out, "<a b=\"1\">x</a>") << outcome;
    EXPECT_NE(outcome.err.find("elements"), std::string::npos);
}

TEST(Load, NamesTheOpenElementsOfADocumentThatEndsTooSoon) {
    const Workplace place;
    place.write("a.xml", "<a>\n<b>\n<c/>\n<d>\n");
    for (const char* mode : {"", " --pull"}) {
        const Outcome outcome = place.run(std::string("zro load a.xml") + mode);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.err, "a.xml:4:4: error: Missing end tag. [0x1801]\n"
                               " 4 | <d>\n"
                               "   |    ^\n"
                               "  hint: still open: <a> <b> <d> (the last one from line 4)\n")
            << mode;
    }
}

TEST(Events, OfThePullParserOneALine) {
    const Workplace place;
    place.write("a.xml", "<a x='1'>t&lt;\n<!-- c --><b xmlns='u' xml:lang='en'/></a>");
    EXPECT_EQ(place.run("zro events a.xml").out,
              "1:8      START_TAG  a x=\"1\"\n"
              "2:12     TEXT       \"t<\\n\"\n"
              "2:38     START_TAG  {u}b {http://www.w3.org/2000/xmlns/}xmlns=\"u\" "
              "{http://www.w3.org/XML/1998/namespace}xml:lang=\"en\" /\n"
              "2:38     END_TAG    {u}b\n"
              "2:42     END_TAG    a\n"
              "2:42     END_DOCUMENT\n");
}

TEST(Events, TokensHaveCommentsAndReferences) {
    const Workplace place;
    place.write("a.xml",
                "<!DOCTYPE a [<!ENTITY e 'E'>]> <a>t&e;&#65;<!--c--><?p q?><![CDATA[d]]></a>");
    const std::string out = place.run("zro events --tokens a.xml | cut -c 10-").out;
    EXPECT_EQ(out.substr(out.find("IGNORABLE")), "IGNORABLE_WHITESPACE \" \"\n"
                                                 "START_TAG  a\n"
                                                 "TEXT       \"t\"\n"
                                                 "ENTITY_REF &e; \"E\"\n"
                                                 "ENTITY_REF &#x41; \"A\"\n"
                                                 "COMMENT    \"c\"\n"
                                                 "PROCESSING_INSTRUCTION \"p q\"\n"
                                                 "CDSECT     \"d\"\n"
                                                 "END_TAG    a\n"
                                                 "END_DOCUMENT\n");
}

TEST(Tree, IsIndentedAndTellsNamespacesWhereTheyChange) {
    const Workplace place;
    place.write("a.xml", "<a xmlns='u'><b c='1'>t\n</b><d xmlns=''/></a>");
    EXPECT_EQ(place.run("zro tree a.xml").out, "#document\n"
                                               "  a {u} xmlns=\"u\"\n"
                                               "    b c=\"1\"\n"
                                               "      \"t\\n\"\n"
                                               "    d {} xmlns=\"\"\n");
}

TEST(Tree, OfABrokenDocumentGoesUpToTheError) {
    const Workplace place;
    place.write("a.xml", "<a><b/><c></a>");
    const Outcome outcome = place.run("zro tree a.xml");
    EXPECT_EQ(outcome.out, "#document\n  a\n    b\n    c\n");
    EXPECT_EQ(outcome.status, 1);
}

TEST(Format, WritesWhatItLoads) {
    const Workplace place;
    place.write("a.xml", "<!DOCTYPE a [<!ENTITY e 'E'>]><!-- c --><a b = '&e;\"'\n>&e;</a>");
    const Outcome outcome =
        place.run("zro format --no-generator --doctype 'a SYSTEM \"x\"' a.xml -");
    EXPECT_EQ(outcome.out, "<?xml version=\"1.0\" encoding=\"UTF-8\"?><!DOCTYPE a SYSTEM \"x\">"
                           "<a b=\"E&quot;\">E</a>");
    EXPECT_EQ(outcome.status, 0);
}

TEST(Format, WritesOverItsInput) {
    const Workplace place;
    place.write("a.xml", "<a   b='1'  />");
    EXPECT_EQ(place.run("zro format --no-generator a.xml a.xml").status, 0);
    EXPECT_EQ(place.read("a.xml"), "<?xml version=\"1.0\" encoding=\"UTF-8\"?><a b=\"1\"/>");
}

TEST(Check, FindsAllErrorsOfAllFiles) {
    const Workplace place;
    place.write("good.xml", "<a><b/></a>");
    place.write("bad.xml", "<a>\n&x;\n&y;\n<b c='1' c='2'/></a>");
    const Outcome outcome = place.run("zro check good.xml bad.xml none.xml");
    EXPECT_EQ(outcome.out, "good.xml: well-formed, 2 elements, 11 bytes, UTF-8\n"
                           "bad.xml: 3 errors\n"
                           "none.xml: 1 error\n"
                           "3 files, 2 with errors\n");
    for (const char* position : {"bad.xml:2:1:", "bad.xml:3:1:", "bad.xml:4:10:"}) {
        EXPECT_NE(outcome.err.find(position), std::string::npos) << position;
    }
    EXPECT_EQ(outcome.status, 1);
}

TEST(Check, StopsAtTheNumberOfErrorsAskedFor) {
    const Workplace place;
    place.write("bad.xml", "<a>&x;&y;&z;</a>");
    EXPECT_EQ(place.run("zro check --max-errors 2 bad.xml").out,
              "bad.xml: 2 errors, stopped there\n");
    EXPECT_EQ(place.run("zro check --max-errors 0 bad.xml").out, "bad.xml: 3 errors\n");
}

TEST(Check, CountsARunOfTextAtTheTopAsOneError) {
    const Workplace place;
    place.write("bad.xml", "<a/>\nsome text\nmore");
    const Outcome outcome = place.run("zro check bad.xml");
    EXPECT_EQ(outcome.out, "bad.xml: 2 errors\n");
    EXPECT_EQ(outcome.err.substr(0, 12), "bad.xml:2:1:") << outcome;
    EXPECT_NE(outcome.err.find("\nbad.xml:3:1:"), std::string::npos) << outcome;
}

TEST(Check, StopsWhereTheEncodingIsUnknown) {
    const Workplace place;
    place.write("bad.xml", "<?xml version='1.0' encoding='X-NONE'?><a></b>");
    const Outcome outcome = place.run("zro check bad.xml");
    EXPECT_EQ(outcome.out, "bad.xml: 1 error, stopped there\n") << outcome;
}

TEST(Uri, OperationsOnTexts) {
    const Workplace place;
    const struct {
        const char* command;
        const char* out;
    } rows[] = {
        {"normalise 'C:\\a b\\c.xml'", "file:///C:/a%20b/c.xml\n"},
        {"normalize a%20b", "a%2520b\n"},
        {"normalise --type guess a%20b", "a%20b\n"},
        {"normalise \"url('x.png')\"", "x.png\n"},
        {"normalise --type path-or-uri \"url('x.png')\"", "url('x.png')\n"},
        {"resolve http://h/a/b.html ../c.png", "http://h/c.png\n"},
        {"resolve jar:file:///C:/p.zip!/d/y.xml /x.xml", "jar:file:///C:/p.zip!/x.xml\n"},
        {"relative file:///C:/a/b/c.png file:///C:/a/d/e.xml", "../b/c.png\n"},
        {"local file:///C:/a%20b", "C:\\a b\n"},
        {"base /tmp/d/x.xml", "/tmp/d/\n"},
        {"name http://h/a/b.html", "b.html\n"},
        {"extension a/b.tar.gz", ".gz\n"},
        {"unescape a%20b%E6%BC%A2", "a b\u6F22\n"},
    };
    for (const auto& [command, out] : rows) {
        const Outcome outcome = place.run(std::string("zro uri ") + command);
        EXPECT_EQ(outcome.out, out) << "for: " << command;
        EXPECT_EQ(outcome.status, 0) << "for: " << command;
    }
}

TEST(Uri, ExplainTellsAllOfIt) {
    const Workplace place;
    EXPECT_EQ(place.run("zro uri explain jar:file:///p.zip!/d/x.xml").out,
              "normalised     jar:file:///p.zip!/d/x.xml\n"
              "scheme         jar\n"
              "absolute       yes\n"
              "file           no\n"
              "package entry  yes\n"
              "data           no\n"
              "local path     jar:file:///p.zip!/d/x.xml\n"
              "exists         no\n"
              "base           jar:file:///p.zip!/d/\n"
              "file name      x.xml\n"
              "extension      .xml\n"
              "step 1         resolver: asked for jar:file:///p.zip!/d/x.xml\n"
              "step 2         resolver: asked for file:///p.zip\n"
              "step 3         file: \\\\p.zip\n"
              "step 4         jar: entry d/x.xml\n");
}

TEST(Uri, ExplainTellsTheStepsOfOpening) {
    const Workplace place;
    const struct {
        const char* uri;
        const char* steps;
    } rows[] = {
        {"a.xml", "resolver: asked for a.xml|file: a.xml|"},
        {"HTTP://h/a", "resolver: asked for HTTP://h/a|http: GET HTTP://h/a|"},
        {"mailto:x",
         "resolver: asked for mailto:x|http: refused, as it is neither http nor https|"},
        {"'data:a/b;base64,YQ=='",
         "resolver: asked for data:a/b;base64,YQ==|data: 4 characters of base64, a/b|"},
        {"'jar:jar:http://h/p!/q!/x'",
         "resolver: asked for jar:jar:http://h/p!/q!/x|resolver: asked for jar:http://h/p|"
         "resolver: asked for http://h/p|http: GET http://h/p|jar: entry q|jar: entry x|"},
        {"jar:data:,x!/y", "resolver: asked for jar:data:,x!/y|resolver: asked for data:,x|"
                           "http: refused, as it is neither http nor https|jar: entry y|"},
    };
    for (const auto& [uri, steps] : rows) {
        const std::string command = " | sed -n 's/^step [0-9]* *//p' | tr '\\n' '|'";
        EXPECT_EQ(place.run("zro uri explain " + std::string(uri) + command).out, steps) << uri;
    }
}

}  // namespace
}  // namespace ZroCommon::testing

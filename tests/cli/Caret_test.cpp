// Where errors are shown: file, line and column, the source line, and the caret under what is
// wrong.
#include <string>

#include <gtest/gtest.h>

#include "tests/cli/Workplace.h"

namespace ZroCommon::testing {
namespace {

using namespace std::string_literals;

struct Case {
    const char* what;
    std::string bytes;
    std::string shown;  // the first three lines on standard error
};

std::string firstLines(const std::string& text, int count) {
    std::size_t end = 0;
    for (int line = 0; line < count && end != std::string::npos; ++line) {
        end = text.find('\n', end);
        end += end == std::string::npos ? 0 : 1;
    }
    return text.substr(0, end);
}

void expectShown(const Case& test) {
    const Workplace place;
    place.write("a.xml", test.bytes);
    const Outcome outcome = place.run("zro check --max-errors 1 a.xml");
    EXPECT_EQ(firstLines(outcome.err, 3), test.shown) << "for: " << test.what;
    EXPECT_EQ(outcome.status, 1) << "for: " << test.what;
}

std::string utf16(const std::u16string& text, bool bigEndian) {
    std::string bytes;
    for (const char16_t unit : text) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit & 0xFF);
        bytes += bigEndian ? std::string{high, low} : std::string{low, high};
    }
    return bytes;
}

TEST(Caret, StandsUnderTheTokenThatTheMessageNames) {
    const Case cases[] = {
        {"end tag", "<a>\n  <b>\n  </c>\n</a>",
         "a.xml:3:3: error: End tag 'c' does not match the start tag 'b'. [0x1806]\n"
         " 3 |   </c>\n"
         "   |   ^~~\n"},
        {"undefined entity", "<a>\none &nbsp; two</a>",
         "a.xml:2:5: error: Reference to undefined entity: &nbsp; [0x181E]\n"
         " 2 | one &nbsp; two</a>\n"
         "   |     ^~~~~~\n"},
        {"undefined entity in an attribute", "<a b='1'\n   c='x &nbsp; y'/>",
         "a.xml:2:9: error: Reference to undefined entity: &nbsp; [0x181E]\n"
         " 2 |    c='x &nbsp; y'/>\n"
         "   |         ^~~~~~\n"},
        {"prefix, where the tag first uses it", "<a>\n<q:b\n q:c='q:d'/></a>",
         "a.xml:2:2: error: Undeclared namespace prefix: q [0x1807]\n"
         " 2 | <q:b\n"
         "   |  ^\n"},
        {"the second of two attributes", "<a>\n<b name='1' id='name=2' name='3'/></a>",
         "a.xml:2:25: error: Duplicate attribute: name [0x1808]\n"
         " 2 | <b name='1' id='name=2' name='3'/></a>\n"
         "   |                         ^~~~\n"},
        {"character reference", "<a>\n&#x1F;</a>",
         "a.xml:2:1: error: Invalid unicode character: &#x1F;; [0x1833]\n"
         " 2 | &#x1F;</a>\n"
         "   | ^~~~~~\n"},
        {"end of CDATA in text", "<a>\nx ]]> y</a>",
         "a.xml:2:3: error: Unexpected ']]>'. [0x1810]\n"
         " 2 | x ]]> y</a>\n"
         "   |   ^~~\n"},
    };
    for (const Case& test : cases) {
        expectShown(test);
    }
}

TEST(Caret, StandsUnderTheCharacterReadLastElsewhere) {
    const Case cases[] = {
        {"a character in a tag", "<a>\n<b ?></b></a>",
         "a.xml:2:4: error: Invalid attribute name. [0x1809]\n"
         " 2 | <b ?></b></a>\n"
         "   |    ^\n"},
        {"a line end that was read last", "<a>\n<b c\n></b></a>",
         "a.xml:3:1: error: Missing '=' after attribute name. [0x180A]\n"
         " 3 | ></b></a>\n"
         "   | ^\n"},
        {"end of the input, behind blank lines", "<a>\n<b>text\n\n\n",
         "a.xml:2:8: error: Missing end tag. [0x1801]\n"
         " 2 | <b>text\n"
         "   |        ^\n"},
    };
    for (const Case& test : cases) {
        expectShown(test);
    }
}

// The parser takes the first characters of an input before it counts columns: one of a plain file,
// none behind a byte order mark of UTF-8.
TEST(Caret, KnowsTheCharactersThatTheParserDoesNotCount) {
    const std::string shown = "a.xml:1:5: error: Invalid attribute name. [0x1809]\n"
                              " 1 | <aa ?/>\n"
                              "   |     ^\n";
    const Case cases[] = {
        {"no mark", "<aa ?/>", shown},
        {"UTF-8 mark", "\xEF\xBB\xBF<aa ?/>", shown},
        {"UTF-16LE mark", utf16(u"\uFEFF<aa ?/>", false), shown},
        {"UTF-16BE mark", utf16(u"\uFEFF<aa ?/>", true), shown},
        {"UTF-16LE, no mark", utf16(u"<aa ?/>", false), shown},
        {"UTF-16BE, no mark", utf16(u"<aa ?/>", true), shown},
    };
    for (const Case& test : cases) {
        expectShown(test);
    }
}

TEST(Caret, StaysUnderItsCharacterBehindTabsAndWideText) {
    const Case cases[] = {
        {"tabs stay tabs", "<a>\n\t<b\t?/></a>",
         "a.xml:2:5: error: Invalid attribute name. [0x1809]\n"
         " 2 | \t<b\t?/></a>\n"
         "   | \t  \t^\n"},
        {"wide characters take two columns", "<a>\n\u6F22\u5B57 &x;</a>",
         "a.xml:2:4: error: Reference to undefined entity: &x; [0x181E]\n"
         " 2 | \u6F22\u5B57 &x;</a>\n"
         "   |      ^~~\n"},
        {"combining marks take none", "<a>\ne\u0301 &x;</a>",
         "a.xml:2:4: error: Reference to undefined entity: &x; [0x181E]\n"
         " 2 | e\u0301 &x;</a>\n"
         "   |   ^~~\n"},
        {"characters beyond the first plane count once", "<a>\n\U0001F600&x;</a>",
         "a.xml:2:2: error: Reference to undefined entity: &x; [0x181E]\n"
         " 2 | \U0001F600&x;</a>\n"
         "   |   ^~~\n"},
        {"declared encoding", "<?xml version='1.0' encoding='ISO-8859-1'?>\n<a>\xE9 &x;</a>",
         "a.xml:2:6: error: Reference to undefined entity: &x; [0x181E]\n"
         " 2 | <a>\u00E9 &x;</a>\n"
         "   |      ^~~\n"},
        {"an encoding that stands for a larger one",
         "<?xml version='1.0' encoding='GB2312'?>\n<a>\x81\x40 &x;</a>",
         "a.xml:2:6: error: Reference to undefined entity: &x; [0x181E]\n"
         " 2 | <a>\u4E02 &x;</a>\n"
         "   |       ^~~\n"},
        {"line ends of all kinds", "<a>\r\n\r\u0085\u2028\xC2\x85&x;</a>",
         "a.xml:5:1: error: Reference to undefined entity: &x; [0x181E]\n"
         " 5 | &x;</a>\n"
         "   | ^~~\n"},
    };
    for (const Case& test : cases) {
        expectShown(test);
    }
}

TEST(Caret, OfALongLineShowsThePartThatMatters) {
    const std::string blanks(300, '.');
    const Workplace place;
    place.write("a.xml", "<a>" + blanks + "&x;" + blanks + "</a>");
    const std::string err = place.run("zro check a.xml").err;
    EXPECT_EQ(firstLines(err, 3),
              "a.xml:1:304: error: Reference to undefined entity: &x; [0x181E]\n"
              " 1 | \u2026"
                  + std::string(60, '.') + "&x;" + std::string(47, '.')
                  + "\u2026\n"
                    "   | "
                  + std::string(61, ' ') + "^~~\n");
}

TEST(Caret, LineCannotSendCommandsToTheTerminal) {
    const Workplace place;
    constexpr const char* kOverride = "\xE2\x80\xAE";  // NOLINT(misc-misleading-bidirectional)
    place.write("a.xml", std::string("<a>\x1B[31m ") + kOverride + " &x;</a>");
    const std::string err = place.run("zro check a.xml").err;
    EXPECT_EQ(err.find('\x1B'), std::string::npos) << err;
    EXPECT_EQ(err.find(kOverride), std::string::npos) << err;
}

TEST(Caret, ErrorInAnEntityIsShownInItsFile) {
    const Workplace place;
    place.write("a.xml", "<!DOCTYPE a [<!ENTITY part SYSTEM 'part.ent'>]>\n<a>\n&part;\n</a>");
    place.write("part.ent", "<b>\n  <c></d>\n</b>");
    const Outcome outcome = place.run("zro check --max-errors 1 a.xml");
    EXPECT_EQ(firstLines(outcome.err, 4),
              "part.ent:2:6: error: End tag 'd' does not match the start tag 'c'. [0x1806]\n"
              " 2 |   <c></d>\n"
              "   |      ^~~\n"
              "  hint: the open element is <c>, from line 2\n");
}

TEST(Caret, MissingEntityIsShownWhereItIsAskedFor) {
    const Workplace place;
    place.write("a.xml", "<!DOCTYPE a [<!ENTITY part SYSTEM 'none.ent'>]>\n<a>\n&part;\n</a>");
    const Outcome outcome = place.run("zro check a.xml");
    EXPECT_EQ(outcome.err, "a.xml:3:6: error: Cannot open file: file:" + place.path()
                               + "/none.ent: no such file [0x1003]\n"
                                 " 3 | &part;\n"
                                 "   |      ^\n");
}

// The parser's position is that of the reference; the same token may stand elsewhere by chance.
TEST(Caret, ErrorInAnInternalEntityIsShownAtItsReference) {
    const Case cases[] = {
        {"end tag", "<!DOCTYPE a [<!ENTITY e '</b>'>]>\n<a>\n&e; and on </a>",
         "a.xml:3:3: error: End tag 'b' does not match the start tag 'a'. [0x1806]\n"
         " 3 | &e; and on </a>\n"
         "   |   ^\n"},
    };
    for (const Case& test : cases) {
        expectShown(test);
    }
}

TEST(Caret, ErrorInADtdIsShownInItsFile) {
    const Workplace place;
    place.write("a.xml", "<!DOCTYPE a SYSTEM 'a.dtd'>\n<a/>");
    place.write("a.dtd", "<!ELEMENT a ANY>\n<!ENTITY e>\n");
    const Outcome outcome = place.run("zro check a.xml");
    EXPECT_EQ(outcome.err.substr(0, 11), "a.dtd:2:11:") << outcome;
    EXPECT_EQ(outcome.status, 1);
}

TEST(Caret, ErrorOfStandardInputShowsItsLine) {
    const Workplace place;
    const Outcome outcome = place.run("printf '<a>\\n  <b>\\n</a>' | zro check --max-errors 1 -");
    EXPECT_EQ(outcome.err,
              "<stdin>:3:1: error: End tag 'a' does not match the start tag 'b'. [0x1806]\n"
              " 3 | </a>\n"
              "   | ^~~\n"
              "  hint: the open element is <b>, from line 2\n");
}

}  // namespace
}  // namespace ZroCommon::testing

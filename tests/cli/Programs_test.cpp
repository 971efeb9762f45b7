// The program among programs: a reader of JSON, and a terminal.
#include <sstream>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/cli/Workplace.h"
#include "tests/support/Skips.h"

namespace ZroCommon::testing {
namespace {

TEST(Programs, CanParseTheJsonOfEveryCommand) {
    const Workplace place;
    // Quotation marks, line feeds, control characters, lone surrogates and what is no Unicode.
    place.write("a.xml", "<a b='\"\\&#10;&#9;'>\x01\x1F\xED\xA0\x80\xFF\"\n\u6F22</a>");
    for (const char* command :
         {"load a.xml", "load --pull a.xml", "events a.xml", "events --tokens a.xml", "tree a.xml",
          "check a.xml", "uri explain a.xml", "uri normalise 'a\"b'", "value '\"' \xFF 1pt",
          "color red", "length 1in", "link 'a#page=2'", "load --values a.xml"}) {
        const Outcome outcome = place.run("zro --json " + std::string(command));
        EXPECT_EQ(outcome.status, 0) << command;
        EXPECT_NE(outcome.out, "") << command;
        std::istringstream lines(outcome.out + outcome.err);
        for (std::string line; std::getline(lines, line);) {
            EXPECT_TRUE(nlohmann::json::parse(line, nullptr, false).is_object()) << line;
        }
    }
}

TEST(Programs, SeeSizeAndSpeedOnATerminalAlone) {
    const Workplace place;
    if (place.run("script --version").status != 0) {
        GTEST_SKIP() << missing("the program script", "the Debian package bsdutils has it");
    }
    const std::string slow = "(head -c 5000000 /dev/zero; sleep 0.6; printf x)";
    const std::string shown = place
                                  .run("cat > c <<'E'\n" + slow
                                       + " | '" ZRO_PROGRAM "' cat - > f\nE\n"
                                         "TERM=xterm script -qec 'bash c' /dev/null")
                                  .out;
    EXPECT_NE(shown.find("<stdin>  5.0 MB  "), std::string::npos) << shown;
    EXPECT_NE(shown.find(" MB/s"), std::string::npos) << shown;
    EXPECT_EQ(place.run(slow + " | zro cat - > f").err, "");
}

}  // namespace
}  // namespace ZroCommon::testing

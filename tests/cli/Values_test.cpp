// The commands on values: what they print, and what they refuse.
#include <gtest/gtest.h>

#include "tests/cli/Workplace.h"

namespace ZroCommon::testing {
namespace {

TEST(Values, AreReadAndPrinted) {
    const Workplace place;
    const CommandOutput rows[] = {
        {"length 1.5in --to pt", "108pt\n"},
        {"length 90deg --to rad", "1.5708rad\n"},
        {"length 2s", "ms           2000ms\n"
                      "s            2s\n"},
        {"value 12pt", "input        12pt\n"
                       "type         real\n"
                       "unit         pt\n"
                       "payload      12.0\n"
                       "text         12pt\n"},
        {"value --json --color 'rgb(1,2,3)' '#f00' x",
         "{\"input\":\"rgb(1,2,3)\",\"type\":\"integer\",\"unit\":\"color\",\"payload\":66051,"
         "\"text\":\"#010203\"}\n"
         "{\"input\":\"#f00\",\"type\":\"integer\",\"unit\":\"color\",\"payload\":16711680,"
         "\"text\":\"#FF0000\"}\n"
         "{\"input\":\"x\",\"type\":\"name\",\"unit\":\"name\",\"payload\":\"x\",\"text\":\"x\"}"
         "\n"},
        {"value --json --non-numeric 12pt",
         "{\"input\":\"12pt\",\"type\":\"string\",\"unit\":\"unknown\",\"payload\":\"12pt\","
         "\"text\":\"12pt\"}\n"},
        {"link 'a.pdf#page=3'", "page         3\n"
                                "uri          a.pdf\n"
                                "view         xyz\n"},
        {"link --xlink '#x'", "nameddest    x\n"},
        {"link --excel a.xls", "null\n"},
        {"link --internal 12", "page         12\n"},
        {"link --fragment 'a#K=v'", ".            a\n"
                                    "k            v\n"},
        {"link --destination 'xyz 150%'", ".            xyz\n"
                                          "zoom         150\n"},
    };
    expectOutputs(place, rows);
}

TEST(Values, ThatDoNotFitAreErrors) {
    const Workplace place;
    EXPECT_EQ(place.run("zro length 1em --to pt").err,
              "zro: error: \"1em\" has no conversion to pt\n");
    EXPECT_EQ(place.run("zro color nonsense").status, 1);
    EXPECT_EQ(place.run("zro length 1pt --to furlong").status, 2);
    EXPECT_EQ(place.run("zro link --excel --internal a").status, 2);
}

TEST(Values, AColourHasASampleWhereColoursAreShown) {
    const Workplace place;
    const std::string plain = place.run("zro color Red").out;
    EXPECT_EQ(plain.substr(0, 47), "color        #FF0000\n"
                                   "keyword      red\n"
                                   "rgb      ");
    EXPECT_EQ(place.run("zro color --color always Red").out.substr(0, 17), "\x1b[48;2;255;0;0m  ");
}

TEST(Values, OfADocumentAreSurveyed) {
    const Workplace place;
    place.write("a.fo",
                "<fo:root xmlns:fo='http://www.w3.org/1999/XSL/Format'\n"
                "         color='rgb(1,2,3)' space-before='1pt'>\n"
                "<fo:block space-before='1em' font-size='a b' color='red' x='?'/></fo:root>");
    const std::string out = place.run("zro load --values a.fo").out;
    EXPECT_NE(out.find("\n"
                       "color         color 1, name 1\n"
                       "font-size     unknown 1\n"
                       "space-before  em 1, pt 1\n"
                       "\n"
                       "1 unknown string\n"
                       "a.fo:3: fo:block font-size=\"a b\"\n"),
              std::string::npos)
        << out;
    EXPECT_EQ(place.run("zro load --values --pull a.fo").status, 2);
}

}  // namespace
}  // namespace ZroCommon::testing

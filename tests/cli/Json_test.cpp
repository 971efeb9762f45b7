// Output for programs: each line is one JSON object, whatever is in the document.
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/cli/Workplace.h"

namespace ZroCommon::testing {
namespace {

using Json = nlohmann::json;

std::vector<Json> objects(const std::string& text) {
    std::vector<Json> result;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        result.push_back(Json::parse(line, nullptr, false));
        EXPECT_TRUE(result.back().is_object()) << line;
    }
    return result;
}

// Quotation marks, line feeds, control characters, lone surrogates and what is no Unicode at all.
constexpr const char* kNasty = "<a b='\"\\&#10;&#9;'>\x01\x1F\xED\xA0\x80\xFF\"\n\u6F22</a>";

TEST(Json, OfEveryCommandCanBeParsed) {
    const Workplace place;
    place.write("a.xml", kNasty);
    for (const char* command :
         {"load a.xml", "load --pull a.xml", "events a.xml", "events --tokens a.xml", "tree a.xml",
          "check a.xml", "uri explain a.xml", "uri normalise 'a\"b'", "value '\"' \xFF 1pt",
          "color red", "length 1in", "link 'a#page=2'", "load --values a.xml"}) {
        const Outcome outcome = place.run("zro --json " + std::string(command));
        EXPECT_FALSE(objects(outcome.out).empty()) << command;
        EXPECT_EQ(outcome.err, "") << command;
        EXPECT_EQ(outcome.status, 0) << command;
    }
}

TEST(Json, OfAnErrorHasBothPositionsAndTheLine) {
    const Workplace place;
    place.write("a.xml", "<a>&x;</a>");
    const Outcome outcome = place.run("zro check --json a.xml");
    const auto errors = objects(outcome.err);
    ASSERT_EQ(errors.size(), 1U) << outcome;
    const Json expected = {{"kind", "error"},
                           {"file", "a.xml"},
                           {"line", 1},
                           {"column", 4},
                           {"length", 3},
                           {"text", "<a>&x;</a>"},
                           {"parserLine", 1},
                           {"parserColumn", 5},
                           {"code", 0x181E},
                           {"message", "Reference to undefined entity: &x;"},
                           {"source", "ZroCommon::XmlParserImpl"},
                           {"hint", errors[0]["hint"]}};
    EXPECT_EQ(errors[0], expected);
    EXPECT_EQ(objects(outcome.out)[0]["errors"], 1);
}

TEST(Json, OfALoadHasTheCounts) {
    const Workplace place;
    place.write("a.xml", "<a xmlns='u' b='1'>t<c/><?p q?></a>");
    const Json report = objects(place.run("zro load --json a.xml").out).at(0);
    EXPECT_EQ(report["root"], Json({{"namespace", "u"}, {"prefix", ""}, {"name", "a"}}));
    EXPECT_EQ(report["elements"], 2);
    EXPECT_EQ(report["attributes"], 2);
    EXPECT_EQ(report["textNodes"], 1);
    EXPECT_EQ(report["processingInstructions"], 1);
    EXPECT_EQ(report["bytes"], 35);
    EXPECT_GT(report["totalSeconds"], 0.0);
    EXPECT_GT(report["peakMemory"], 1000000);
}

TEST(Json, OfEventsHasNamesAndAttributes) {
    const Workplace place;
    place.write("a.xml", "<p:a xmlns:p='u' p:b='1'>t</p:a>");
    const auto events = objects(place.run("zro events --json a.xml").out);
    ASSERT_EQ(events.size(), 4U);
    EXPECT_EQ(events[0]["name"], "a");
    EXPECT_EQ(events[0]["namespace"], "u");
    EXPECT_EQ(events[0]["attributes"][1]["prefix"], "p");
    EXPECT_EQ(events[1]["text"], "t");
    EXPECT_EQ(events[3]["event"], "END_DOCUMENT");
}

}  // namespace
}  // namespace ZroCommon::testing

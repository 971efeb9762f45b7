// How the program behaves among others: exit status, streams, files that are not there, what a
// document may fetch.
#include <string>

#include <gtest/gtest.h>

#include "tests/cli/Workplace.h"

namespace ZroCommon::testing {
namespace {

TEST(Process, WrongUsageIsStatusTwoAndSaysWhatHelps) {
    const Workplace place;
    for (const char* command :
         {"", "frobnicate", "load", "load a b c", "check --max-errors -1 a", "--color pink load a",
          "load --nonsense a", "--limits depth load a", "--limits deep=3 load a", "uri",
          "uri resolve a", "--no-external --allow-remote load a", "format --encoding X a b"}) {
        const Outcome outcome = place.run("zro " + std::string(command));
        EXPECT_EQ(outcome.status, 2) << "for: " << command << "\n" << outcome.err;
        EXPECT_EQ(outcome.out, "") << "for: " << command;
        EXPECT_EQ(outcome.err.substr(0, 11), "zro: error:") << "for: " << command;
        EXPECT_NE(outcome.err.find("hint:"), std::string::npos) << "for: " << command;
    }
}

TEST(Process, HelpAndVersionAreResults) {
    const Workplace place;
    for (const char* command :
         {"--help", "load --help", "events --help", "tree --help", "format --help", "check --help",
          "uri --help", "uri resolve --help", "cat --help", "--version"}) {
        const Outcome outcome = place.run("zro " + std::string(command));
        EXPECT_EQ(outcome.status, 0) << "for: " << command;
        EXPECT_NE(outcome.out, "") << "for: " << command;
        EXPECT_EQ(outcome.err, "") << "for: " << command;
    }
}

TEST(Process, WhatCannotBeReadIsAnErrorWithAReason) {
    const Workplace place;
    place.write("empty.xml", "");
    const struct {
        const char* name;
        const char* reason;
    } rows[] = {
        {"none.xml", ": no such file [0x1003]\n"},
        {".", ": is a directory [0x1003]\n"},
        {"jar:$PWD/empty.xml!/a", ": empty.xml: is no ZIP package [0x1003]\n"},
        {"http://127.0.0.1:1/", ": Cannot open URL: 2EFD [0x1003]\n"},
        {"empty.xml", "  hint: the input is empty\n"},
    };
    for (const auto& [name, reason] : rows) {
        for (const char* command : {"load", "events", "tree", "format", "check"}) {
            const Outcome outcome = place.run("zro " + std::string(command) + " " + name);
            EXPECT_EQ(outcome.status, 1) << command << " " << name;
            EXPECT_NE(outcome.err.find(reason), std::string::npos) << command << "\n" << outcome;
        }
    }
}

TEST(Process, FileNamesMayHoldAnything) {
    const Workplace place;
    for (const char* name : {"a b.xml", "50%.xml", "a#b.xml", "x:y.xml", "a\\b.xml", " c.xml ",
                             "url(d.xml)", "\xC3\xA9.xml", "'q'.xml", "a%20b.xml", "data:x"}) {
        place.write(name, "<a/>");
        const Outcome outcome = place.run("zro check \"" + std::string(name) + "\"");
        EXPECT_EQ(outcome.status, 0) << "for: " << name << "\n" << outcome;
    }
}

TEST(Process, UnwritableOutputIsAnErrorWithAReason) {
    const Workplace place;
    place.write("a.xml", "<a/>");
    const Outcome missing = place.run("zro format a.xml no/such/b.xml");
    EXPECT_EQ(missing.status, 1);
    EXPECT_NE(missing.err.find(": no such directory: "), std::string::npos) << missing;
    const Outcome full = place.run("zro format a.xml - >/dev/full");
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(full.err, "zro: error: cannot write to standard output: No space left on device\n");
    EXPECT_EQ(place.run("zro format a.xml /dev/full").status, 1);
}

TEST(Process, ReaderThatGoesAwayIsNoFailure) {
    const Workplace place;
    std::string document = "<a>";
    for (int count = 0; count < 20000; ++count) {
        document += "<b>text</b>";
    }
    place.write("a.xml", document + "</a>");
    for (const char* command : {"events a.xml", "events --tokens a.xml", "tree a.xml",
                                "--json tree a.xml", "format a.xml -", "load a.xml --save -"}) {
        const Outcome outcome = place.run("set -o pipefail; zro " + std::string(command)
                                          + " 2>err.txt | head -c 10 >/dev/null");
        EXPECT_EQ(outcome.status, 0) << "for: " << command << "\n" << place.read("err.txt");
    }
}

TEST(Process, ColoursOnlyWhenAskedForOrOnATerminal) {
    const Workplace place;
    place.write("a.xml", "<a>&x;</a>");
    EXPECT_EQ(place.run("zro check a.xml").err.find('\x1B'), std::string::npos);
    EXPECT_EQ(place.run("zro check --color never a.xml").err.find('\x1B'), std::string::npos);
    const Outcome always = place.run("zro check --color always a.xml");
    EXPECT_NE(always.err.find("\x1B[1;31merror:\x1B[0m"), std::string::npos) << always.err;
    EXPECT_NE(always.out.find("\x1B["), std::string::npos) << always.out;
}

TEST(Process, StandardInputFindsEntitiesInTheWorkingDirectory) {
    const Workplace place;
    place.write("part.ent", "<b/>");
    const Outcome outcome =
        place.run("printf '<!DOCTYPE a [<!ENTITY p SYSTEM \"part.ent\">]><a>&p;</a>' | zro tree -");
    EXPECT_EQ(outcome.out, "#document\n  a\n    b\n") << outcome;
}

TEST(Process, LocalEntitiesAreReadUnlessForbidden) {
    const Workplace place;
    place.write("a.xml", "<!DOCTYPE a [<!ENTITY p SYSTEM 'part.ent'>]><a>&p;</a>");
    place.write("part.ent", "<b/>");
    EXPECT_EQ(place.run("zro tree a.xml").out, "#document\n  a\n    b\n");
    const Outcome denied = place.run("zro tree --no-external a.xml");
    EXPECT_EQ(denied.out, "#document\n  a\n");
    EXPECT_NE(denied.err.find("a.xml: note: not fetched, reads as empty: "), std::string::npos)
        << denied.err;
    EXPECT_EQ(denied.status, 0);
}

TEST(Process, RemoteResourcesAreNotFetched) {
    const Workplace place;
    place.write("a.xml", "<!DOCTYPE a SYSTEM 'http://127.0.0.1:9/a.dtd' "
                         "[<!ENTITY p SYSTEM 'http://127.0.0.1:9/p.ent'>]><a>x&p;y</a>");
    for (const char* command : {"tree", "tree --no-external"}) {
        const Outcome outcome = place.run("zro " + std::string(command) + " a.xml");
        EXPECT_EQ(outcome.out, "#document\n  a\n    \"xy\"\n");
        EXPECT_NE(outcome.err.find("not fetched, reads as empty: http://127.0.0.1:9/a.dtd"),
                  std::string::npos)
            << outcome.err;
        EXPECT_EQ(outcome.status, 0);
    }
    // Without the guard the library does what it does by itself: a DTD that is not there ends it.
    EXPECT_EQ(place.run("zro tree --allow-remote a.xml").status, 1);
}

TEST(Process, LimitsEndADocumentThatExpandsWithoutEnd) {
    const Workplace place;
    std::string document = "<!DOCTYPE a [<!ENTITY e0 'ha ha ha ha ha ha ha ha '>";
    for (int level = 1; level < 10; ++level) {
        const std::string inner = "&#38;e" + std::to_string(level - 1) + ";";
        document += "<!ENTITY e" + std::to_string(level) + " '";
        for (int count = 0; count < 10; ++count) {
            document += inner;
        }
        document += "'>";
    }
    place.write("laughs.xml", document + "]><a>&e9;</a>");
    place.write("deep.xml", "<a><b><c/></b></a>");
    const Outcome strict = place.run("zro check --limits strict laughs.xml");
    EXPECT_EQ(strict.status, 1);
    EXPECT_NE(strict.err.find("Limit exceeded: entity expansion. [0x183A]"), std::string::npos)
        << strict;
    const Outcome deep = place.run("zro load --limits depth=2 deep.xml");
    EXPECT_NE(deep.err.find("Limit exceeded: element depth. [0x183A]"), std::string::npos) << deep;
    EXPECT_EQ(place.run("zro load --limits strict,depth=3 deep.xml").status, 0);
}

}  // namespace
}  // namespace ZroCommon::testing

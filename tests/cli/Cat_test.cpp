// The bytes that a name leads to.
#include <string>

#include <gtest/gtest.h>

#include "tests/cli/Workplace.h"
#include "tests/support/HttpServer.h"
#include "tests/support/Skips.h"
#include "tests/support/ZipBuilder.h"

namespace ZroCommon::testing {
namespace {

class Cat : public ::testing::Test {
protected:
    Cat() {
        m_place.write("a", "abc");
        const std::string inner = ZipBuilder().deflated("a", "abc").package();
        m_place.write("o.zip", ZipBuilder().stored("i.zip", inner).stored("d/a", "abc").package());
        m_place.run("gzip -k a && cat a.gz a.gz > two.gz");
    }

    Workplace m_place;
};

TEST_F(Cat, WritesWhatTheNameLeadsTo) {
    const CommandOutput rows[] = {
        {"cat a", "abc"},
        {"cat file:$PWD/a", "abc"},
        {"cat - < a", "abc"},
        {"cat \"jar:$PWD/o.zip!/d/a\"", "abc"},
        {"cat \"jar:file://$PWD/o.zip!/i.zip!/a\"", "abc"},
        {"cat 'data:,a%20b'", "a b"},
        {"cat 'data:;base64,AP8=' | od -An -tx1", " 00 ff\n"},
        {"cat a -o b && cat b", "abc"},
        {"cat --gunzip a.gz", "abc"},
        {"cat --gunzip two.gz", "abcabc"},
        {"cat --gunzip - < a.gz", "abc"},
        {"cat a --from-encoding UTF-8 --to-encoding UTF-16BE | tr -d '\\0'", "abc"},
        {"cat --gunzip a.gz --from-encoding UTF-8 --to-encoding UTF-16BE | wc -c", "6\n"},
        {"cat /dev/zero | head -c 100000000 | wc -c", "100000000\n"},
    };
    expectOutputs(m_place, rows);
}

TEST_F(Cat, NamesTheReasonOfAFailure) {
    const struct {
        const char* command;
        const char* error;
    } rows[] = {
        {"cat none", "none: error: no such file\n"},
        {"cat .", ".: error: is a directory\n"},
        {"cat jar:o.zip!/no", "jar:o.zip!/no: error: no such entry: no\n"},
        {"cat jar:o.zip!/no!/a", "jar:o.zip!/no!/a: error: no such entry: no\n"},
        {"cat jar:o.zip!/i.zip!/no", "jar:o.zip!/i.zip!/no: error: no such entry: no\n"},
        {"cat jar:o.zip!/d/a!/no", "jar:o.zip!/d/a!/no: error: d/a: is no ZIP package\n"},
        {"cat jar:jar:none!/a", "jar:jar:none!/a: error: none: no such file\n"},
        {"cat jar:a!/b", "jar:a!/b: error: a: is no ZIP package\n"},
        {"cat jar:data:,x!/b", "jar:data:,x!/b: error: data:,x: Cannot open URL: 2EE6\n"},
        {"cat data:x", "data:x: error: a data: URI needs a comma\n"},
        {"cat mailto:x", "mailto:x: error: Cannot open URL: 2EE6\n"},
        {"cat --gunzip a", "a: error: is no gzip data\n"},
        {"cat a -o a", "a: error: cannot be written: is the file that is read\n"},
        {"cat a -o .", ".: error: cannot be written: is a directory\n"},
        {"cat a --from-encoding x --to-encoding UTF-8",
         "zro: error: no converter for the encoding x\n"},
        {"cat a --from-encoding UTF-8 --to-encoding x",
         "zro: error: no converter for the encoding x\n"},
    };
    for (const auto& [command, error] : rows) {
        const Outcome outcome = m_place.run("zro " + std::string(command));
        EXPECT_EQ(outcome.err, error) << "for: " << command;
        EXPECT_EQ(outcome.status, 1) << "for: " << command;
    }
    EXPECT_EQ(m_place.run("for i in $(seq 20000); do printf jar:; done > n; zro cat $(cat n)x!/a")
                  .err.find("error: x: no such file\n"),
              80000U + 1 + 5);
}

TEST_F(Cat, AsksAnAddressAndTellsItsStatus) {
    const HttpServer server([](HttpConnection& connection, const std::string& path) {
        connection.send("HTTP/1.1 " + path.substr(1) + " x\r\nConnection: close\r\n\r\nbody");
    });
    EXPECT_EQ(m_place.run("zro cat " + server.url("/200")).out, "body");
    EXPECT_EQ(m_place.run("zro cat " + server.url("/404")).err,
              server.url("/404") + ": error: HTTP status is 404\n");
    EXPECT_EQ(m_place.run("zro cat jar:" + server.url("/200") + "!/a").err,
              "jar:" + server.url("/200") + "!/a: error: " + server.url("/200")
                  + ": is no ZIP package\n");
    EXPECT_EQ(m_place.run("zro load " + server.url("/404") + " | cat").err,
              server.url("/404") + ": error: Cannot open file: " + server.url("/404")
                  + ": HTTP status is 404 [0x1003]\n");
}

TEST_F(Cat, PassesOnWhatHasComeBeforeItWaits) {
    EXPECT_EQ(m_place
                  .run("mkfifo p q; (zro cat p > q &); exec 4<>q 3<>p; printf one >&3;"
                       "head -c 3 <&4; printf two >&3; head -c 3 <&4")
                  .out,
              "onetwo");
}

TEST_F(Cat, ShowsSizeAndSpeedOnATerminalAlone) {
    if (m_place.run("script --version").status != 0) {
        GTEST_SKIP() << missing("the program script", "the Debian package bsdutils has it");
    }
    const std::string slow = "(head -c 5000000 /dev/zero; sleep 0.6; printf x)";
    const Outcome shown = m_place.run("cat > c <<'E'\n" + slow
                                      + " | '" ZRO_PROGRAM "' cat - > f\nE\n"
                                        "TERM=xterm script -qec 'bash c' /dev/null");
    EXPECT_NE(shown.out.find("<stdin>  5.0 MB  "), std::string::npos) << shown;
    EXPECT_NE(shown.out.find(" MB/s"), std::string::npos) << shown;
    EXPECT_EQ(m_place.run(slow + " | zro cat - > f").err, "");
}

}  // namespace
}  // namespace ZroCommon::testing

// The commands on ZIP packages.
#include <gtest/gtest.h>

#include "tests/cli/Workplace.h"
#include "tests/support/ZipBuilder.h"

namespace ZroCommon::testing {
namespace {

class Zip : public ::testing::Test {
protected:
    Zip() {
        m_place.write("a.zip", sample().package());
        m_place.write("outer.zip", ZipBuilder().deflated("in/a.zip", sample().package()).package());
    }

    static ZipBuilder sample() {
        return ZipBuilder().deflated("a", std::string(2000, 'a')).stored("d/b\n", "two");
    }

    Workplace m_place;
};

TEST_F(Zip, ListsEntries) {
    const std::string lines = "      2000         17  deflate  2024-09-01 12:01  a\n"
                              "         3          3  stored   2024-09-01 12:01  d/b\\n\n";
    for (const char* command : {"zro zip list a.zip", "zro zip list - < a.zip",
                                "zro zip list \"jar:$PWD/outer.zip!/in/a.zip\""}) {
        const Outcome outcome = m_place.run(command);
        EXPECT_EQ(outcome.out, lines) << "for: " << command << "\n" << outcome.err;
        EXPECT_EQ(outcome.status, 0) << "for: " << command;
    }
    EXPECT_NE(m_place.run("zro --json zip list a.zip")
                  .out.find("{\"name\":\"d/b\\n\",\"size\":3,\"packed\":3,\"method\":\"stored\","
                            "\"date\":\"2024-09-01 12:01\",\"crc32\":\""),
              std::string::npos);
}

TEST_F(Zip, WritesTheDataOfEntries) {
    EXPECT_EQ(m_place.run("zro zip cat a.zip $'d/b\\n' $'d/b\\n'").out, "twotwo");
    EXPECT_EQ(m_place.run("zro zip cat a.zip a").out, std::string(2000, 'a'));
    EXPECT_EQ(m_place.run("zro zip cat --stored a.zip a").out, deflated(std::string(2000, 'a')));
    const Outcome missing = m_place.run("zro zip cat a.zip A a | wc -c");
    EXPECT_EQ(missing.out, "2000\n");
    EXPECT_EQ(missing.err, "a.zip: error: no such entry: A\n");
}

TEST_F(Zip, TellsWhyTheWalkEnds) {
    const ZipMember streamed{.name = "s", .data = "xyz", .flags = 8, .compressedSize = 0};
    m_place.write("streamed", ZipBuilder().add(streamed).descriptor(3, 3).package());
    m_place.write("cut", sample().records().substr(0, 83));
    m_place.write("zip64", ZipBuilder().add({.name = "z", .compressedSize = ~0U}).package());
    m_place.write("open", ZipBuilder().stored("a", "").descriptor(0, 0).records());
    m_place.write("foreign", ZipBuilder().stored("a", "").raw("abcdef").package());
    const struct {
        const char* file;
        const char* out;
        int status;
    } cases[] = {
        {"a.zip",
         "         0  entry       a, deflate, 17 bytes\n"
         "        48  entry       d/b\\n, stored, 3 bytes\n"
         "        85  end         the central directory\n",
         0},
        {"streamed",
         "         0  entry       s, stored, 0 bytes\n"
         "        31  end         data: the size of \"s\" stands only in a descriptor behind it\n",
         1},
        {"cut",
         "         0  entry       a, deflate, 17 bytes\n"
         "        48  entry       d/b\\n, stored, 3 bytes\n"
         "        85  end         the file ends 2 bytes before \"d/b\\n\" does\n",
         1},
        {"zip64",
         "         0  entry       z, stored, 4,294,967,295 bytes\n"
         "4294967326  end         nothing: the size of \"z\" is too large for its header\n",
         1},
        {"open",
         "         0  entry       a, stored, 0 bytes\n"
         "        31  descriptor  stepped over, its sizes correct nothing\n"
         "        47  end         the end of the file, without a directory\n",
         1},
        {"foreign",
         "         0  entry       a, stored, 0 bytes\n"
         "        31  end         no signature: 64636261\n",
         1},
    };
    for (const auto& [file, out, status] : cases) {
        const Outcome outcome = m_place.run(std::string("zro zip why ") + file);
        EXPECT_EQ(outcome.out, out) << "for: " << file;
        EXPECT_EQ(outcome.status, status) << "for: " << file << "\n" << outcome.err;
    }
}

TEST_F(Zip, NamesTheReasonOfAFailure) {
    m_place.write("text", "abc");
    const struct {
        const char* input;
        const char* error;
    } cases[] = {
        {"missing", "missing: error: no such file\n"},
        {"/tmp", "/tmp: error: is a directory\n"},
        {"text", "text: error: is no ZIP package\n"},
        {"jar:$PWD/outer.zip!/no", "no such entry: no\n"},
    };
    for (const auto& [input, error] : cases) {
        const Outcome outcome = m_place.run("zro zip why " + std::string(input));
        EXPECT_TRUE(outcome.err.ends_with(error)) << outcome.err;
        EXPECT_EQ(outcome.status, 1);
    }
}

}  // namespace
}  // namespace ZroCommon::testing

// The commands on compound files.
#include <gtest/gtest.h>

#include "tests/cli/Workplace.h"
#include "tests/support/OleBuilder.h"

namespace ZroCommon::testing {
namespace {

class Ole : public ::testing::Test {
protected:
    // Minutes since 1601, in the unit of the file: 2004-02-29 12:30.
    static constexpr std::int64_t kTime = std::int64_t{212042190} * 600'000'000;

    Ole() { m_place.write("a.doc", sample().bytes); }

    static OleImage sample() {
        OleImage image = OleBuilder()
                             .stream(u"WordDocument", std::string(5000, 'w'))
                             .storage(u"Pool")
                             .stream(u"\1CompObj", "one", 2)
                             .build();
        return image.entry(2, 108, kTime, 8);
    }

    Workplace m_place;
};

TEST_F(Ole, ListsATree) {
    const std::string lines = "      5000                    WordDocument\n"
                              "         -  2004-02-29 12:30  Pool/\n"
                              "         3                      \\u{0001}CompObj\n";
    for (const char* command : {"zro ole list a.doc", "zro ole list - < a.doc"}) {
        const Outcome outcome = m_place.run(command);
        EXPECT_EQ(outcome.out, lines) << "for: " << command << "\n" << outcome.err;
        EXPECT_EQ(outcome.status, 0) << "for: " << command;
    }
    const std::string json = m_place.run("zro --json ole list a.doc").out;
    EXPECT_NE(json.find(R"({"path":"Pool","type":"storage","created":"1601-01-01 00:00",)"
                        R"("modified":"2004-02-29 12:30","entry":2,"block":-1})"),
              std::string::npos)
        << json;
    EXPECT_NE(json.find(R"({"path":"Pool/\\u{0001}CompObj","type":"stream","size":3,"entry":3,)"),
              std::string::npos)
        << json;
}

TEST_F(Ole, WritesStreams) {
    EXPECT_EQ(m_place.run("zro ole cat a.doc 'pool/\\u{1}CompObj' $'Pool/\\1CompObj'").out,
              "oneone");
    EXPECT_EQ(m_place.run("zro ole cat a.doc WORDDOCUMENT").out, std::string(5000, 'w'));
    const Outcome missing = m_place.run("zro ole cat a.doc Pool | wc -c");
    EXPECT_EQ(missing.out, "0\n");
    EXPECT_EQ(missing.err, "a.doc: error: no such stream: Pool\n");
}

TEST_F(Ole, TellsWhatIsWrong) {
    const OleImage image = sample();
    const auto directory = static_cast<long>(image.directoryStart);
    const struct {
        const char* what;
        std::string bytes;
        const char* message;  // the end of what is said
    } cases[] = {
        {"sound", image.bytes, "streams    2 whole, 0 not\n"},
        {"short", "abc", "f: error: is too short for a compound file\n"},
        {"text", std::string(512, 'x'), "f: error: is no compound file\n"},
        {"shift", OleImage(image).header(30, 40, 2).bytes,
         "f: error: the header gives 2^40 bytes for a block\n"},
        {"FAT", OleImage(image).header(76, 99).bytes,
         "f: error: the FAT has block 99, which is not wholly in the file\n"},
        {"loop", OleImage(image).fat(image.directoryStart, directory).bytes,
         "f: error: the directory leads to block 12 for the second time\n"},
        {"circle", OleImage(image).fat(2, 0).bytes,
         "stream     WordDocument: the chain comes to block 0 for the second time\n"
         "streams    1 whole, 1 not\nf: error: not whole: 1 stream\n"},
        {"end", OleImage(image).fat(2, -2).bytes,
         "stream     WordDocument: the chain ends with -2 behind block 2, 3 of 10 blocks in\n"
         "streams    1 whole, 1 not\nf: error: not whole: 1 stream\n"},
        {"outside",
         OleImage(image).entry(1, OleBuilder::kStart, 99).entry(1, OleBuilder::kSize, 4096).bytes,
         "stream     WordDocument: the chain ends with -1 behind block 99, 1 of 8 blocks in\n"
         "streams    1 whole, 1 not\nf: error: not whole: 1 stream\n"},
    };
    for (const auto& [what, bytes, message] : cases) {
        m_place.write("f", bytes);
        const Outcome outcome = m_place.run("zro ole why f 2>&1");
        EXPECT_TRUE(outcome.out.ends_with(message)) << what << "\n" << outcome.out;
        EXPECT_EQ(outcome.status, std::string_view(what) == "sound" ? 0 : 1) << what;
    }
}

TEST_F(Ole, AStreamThatIsCutOffIsWrittenAsFarAsItGoes) {
    m_place.write("f", sample().fat(2, -1).bytes);
    const Outcome outcome = m_place.run("zro ole cat f WordDocument | wc -c");
    EXPECT_EQ(outcome.out, "1536\n");
    EXPECT_EQ(outcome.err,
              "f: error: WordDocument is damaged behind byte 1536: zro ole why tells\n");
}

}  // namespace
}  // namespace ZroCommon::testing

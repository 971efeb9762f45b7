// The encodings of texts: detected and converted.
#include <gtest/gtest.h>

#include "tests/cli/Workplace.h"

namespace ZroCommon::testing {
namespace {

// "Japanese text" in EUC-JP, some dozens of times.
std::string japanese() {
    std::string text;
    for (int count = 0; count < 40; ++count) {
        text += "\xC6\xFC\xCB\xDC\xB8\xEC\xA4\xCE\xCA\xB8\xBD\xF1 ";
    }
    return text;
}

TEST(Encoding, IsDetected) {
    const Workplace place;
    place.write("j.txt", japanese());
    place.write("short.txt", "\x82\xA0");
    EXPECT_EQ(place.run("zro encoding detect j.txt").out, "j.txt: EUC-JP\n");
    EXPECT_EQ(place.run("cat j.txt | zro encoding detect --json -").out,
              "{\"file\":\"<stdin>\",\"encoding\":\"EUC-JP\"}\n");
    const Outcome outcome = place.run("zro encoding detect short.txt none.txt j.txt");
    EXPECT_EQ(outcome.out, "j.txt: EUC-JP\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "short.txt: error: the encoding is not recognised\n"
                           "  hint: in short or binary files it cannot be\n"
                           "none.txt: error: no such file\n");
}

TEST(Encoding, ConvertsTexts) {
    const Workplace place;
    place.write("j.txt", japanese());
    place.write("marked.txt", "\xEF\xBB\xBF\xE3\x81\x82z");
    place.write("bad.txt", "a\x82");
    const struct {
        const char* command;
        const char* out;
        const char* err;
    } rows[] = {
        {"convert j.txt | head -c 3", "日", ""},
        {"convert j.txt j.out && zro encoding detect j.out", "j.out: UTF-8\n", ""},
        {"convert marked.txt --from utf-8 --to Shift_JIS", "\x82\xA0z", ""},
        {"convert marked.txt --from utf-8 --to KOI8-R", "?z", ""},
        {"convert bad.txt --from Shift_JIS", "a\uFFFD",
         "bad.txt: note: 1 character U+FFFD, as malformed bytes give\n"},
        {"convert j.txt --limit 7", "日本", "j.txt: note: cut at 7 bytes\n"},
        {"convert - --from EUC-JP < j.txt | zro encoding convert - --to EUC-JP | cmp - j.txt", "",
         ""},
        {"convert j.txt --from klingon", "", "zro: error: no converter for the encoding klingon\n"},
        {"convert j.txt --to klingon", "", "zro: error: no converter for the encoding klingon\n"},
        {"convert j.txt j.txt", "", "j.txt: error: cannot be written: is the file that is read\n"},
        {"convert j.txt .", "", ".: error: cannot be written: is a directory\n"},
    };
    for (const auto& [command, out, err] : rows) {
        const Outcome outcome = place.run(std::string("zro encoding ") + command);
        EXPECT_EQ(outcome.out, out) << "for: " << command;
        EXPECT_EQ(outcome.err, err) << "for: " << command;
    }
}

}  // namespace
}  // namespace ZroCommon::testing

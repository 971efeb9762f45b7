// The commands on numbers as text: labels, Japanese numerals and cells.
#include <gtest/gtest.h>

#include "tests/cli/Workplace.h"

namespace ZroCommon::testing {
namespace {

TEST(Cells, NumbersAreShown) {
    const CommandOutput rows[] = {
        {"number 14 --format '(i)'", "(xiv)\n"},
        {"number -3 1200 --group-separator .", "  -3  -3\n1200  1.200\n"},
        {"number 1200 --group-separator ' ' --group-size 2", "12 00\n"},
        {"number --range 28:26 --format a --lang sv", "28  ä\n27  å\n26  z\n"},
        {"number --range=-1:0 --format I", "-1  0\n 0  0\n"},
        {"number --range 2147483647:2147483647 --json",
         "{\"number\":2147483647,\"label\":\"2147483647\"}\n"},
        {"kansuji 1,050.5円 --method readable", "千五十・五円\n"},
        {"kansuji 12 --digits latin", "１２\n"},
        {"kansuji 12 --method readable --digits 〇壱弐 --units 拾 --json",
         "{\"input\":\"12\",\"result\":\"拾弐\"}\n"},
        {"cell '#,##0.00' 1234.5 -2 abc 1e400", "1,234.50\n-2.00\nabc\n1e400\n"},
        {"cell '@\"!\"' --text 5", "5!\n"},
        {"cell '*.0' 5 --width 4 --fill", "...5\n"},
        {"cell yyyy 0 --date1904", "1904\n"},
        {"cell '[Red]0.00' 12345 --width 4 --json",
         "{\"value\":\"12345\",\"type\":\"number\",\"text\":\"####\",\"fits\":false,"
         "\"color\":\"Red\"}\n"},
    };
    expectOutputs(Workplace(), rows);
}

TEST(Cells, FormatsAreExplained) {
    const CommandOutput rows[] = {
        {"cell --explain '[Color10][>=1.5]#,##0;[DBNum1]#\\ ?/16*x\\\";@' 2",
         "section 1\n"
         "  for          numbers >= 1.5\n"
         "  kind         number\n"
         "  color        Color10\n"
         "  groups       digits by thousands\n"
         "    ###        a digit, nothing where there is none\n"
         "    0          a digit, 0 where there is none\n"
         "section 2\n"
         "  for          other numbers\n"
         "  kind         number\n"
         "  numerals     DBNum1\n"
         "    #          a digit, nothing where there is none\n"
         "    \" \"        the text\n"
         "    ?          a digit, a blank where there is none\n"
         "    /          the bar of a fraction or date\n"
         "    16         the denominator\n"
         "    *x         the character, up to the width\n"
         "    \\\"         the character\n"
         "section 3\n"
         "  for          texts\n"
         "  kind         text\n"
         "    @          the text of the cell\n"
         "2\n"},
        {"cell --json --explain '[Blue]ss.00;;\"a\";0'",
         "{\"format\":\"[Blue]ss.00;;\\\"a\\\";0\",\"sections\":["
         "{\"for\":\"numbers > 0\",\"kind\":\"date\",\"color\":\"Blue\",\"compiled\":\"s2.00\","
         "\"tokens\":[{\"token\":\"ss\",\"shows\":\"seconds: 05\"},"
         "{\"token\":\".\",\"shows\":\"the decimal point\"},"
         "{\"token\":\"00\",\"shows\":\"a fraction of the second\"}]},"
         "{\"for\":\"numbers < 0\",\"kind\":\"literal\",\"compiled\":\"\",\"tokens\":[]},"
         "{\"for\":\"other numbers\",\"kind\":\"literal\",\"compiled\":\"\\\"a\\\"\","
         "\"tokens\":[{\"token\":\"\\\"a\\\"\",\"shows\":\"the text\"}]},"
         "{\"for\":\"nothing\",\"kind\":\"number\",\"compiled\":\"0\","
         "\"tokens\":[{\"token\":\"0\",\"shows\":\"a digit, 0 where there is none\"}]}]}\n"},
    };
    expectOutputs(Workplace(), rows);
}

TEST(Cells, AnInvalidFormatIsShownWithItsFault) {
    const Outcome outcome = Workplace().run("zro cell '\"日本\"0 0' 5");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err,
              "format:1:6: error: the character has no meaning here: quote it or put a backslash "
              "ahead\n"
              " 1 | \"日本\"0 0\n"
              "   |        ^\n");
}

TEST(Cells, WrongUsageIsRefused) {
    const Workplace place;
    for (const char* command :
         {"number", "number 1 --range 1:2", "number --range 1:x", "number x", "number 99999999999",
          "kansuji", "kansuji 1 --method x", "cell 0"}) {
        EXPECT_EQ(place.run(std::string("zro ") + command).status, 2) << command;
    }
}

}  // namespace
}  // namespace ZroCommon::testing

// What a package calls its entries is never taken for a place.
#include <algorithm>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "tests/cli/Workplace.h"
#include "tests/support/ZipBuilder.h"

namespace ZroCommon::testing {
namespace {

// Names are keys: nothing is ever written to a place that an entry names, nor sent to a terminal.
TEST(ZipNames, LeadNowhere) {
    using namespace std::string_literals;
    const Workplace place;
    const std::string names[] = {"../up",     "a/../../up", place.path() + "/absolute",
                                 "//h/x",     "..\\up",     "C:\\x",
                                 "~/x",       "-x",         "$(mkdir x)",
                                 "`mkdir x`", "x;mkdir x",  "x|y",
                                 "file:///x", "%2e%2e/up",  ".",
                                 "..",        "dir/",       "x\n../up",
                                 "\x1b[2J",   "\u202Ex",    "nul\0../up"s};
    ZipBuilder builder;
    std::string wanted;
    for (const std::string& name : names) {
        builder.stored(name, "!");
        wanted += name.find('\0') == std::string::npos ? name + '\0' : "";
    }
    place.write("evil.zip", builder.package());
    place.write("wanted", wanted);
    const Outcome outcome = place.run("mkdir -p in/deep && cd in/deep && before=$(find ../..)\n"
                                      "xargs -0 '" ZRO_PROGRAM "' zip cat ../../evil.zip -- "
                                      "<../../wanted\n"
                                      "[ \"$before\" = \"$(find ../..)\" ] && echo untouched\n"
                                      "zro zip list ../../evil.zip");
    EXPECT_TRUE(outcome.out.starts_with("!!!!!!!!!!!!!!!!!!!!untouched\n")) << outcome.out;
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 1 + std::ssize(names));
    EXPECT_EQ(outcome.out.find_first_of("\x1b\0"s), std::string::npos) << outcome.out;
    EXPECT_EQ(outcome.out.find("\u202E"), std::string::npos) << outcome.out;
}

}  // namespace
}  // namespace ZroCommon::testing

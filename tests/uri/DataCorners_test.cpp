// Base64 and `data:` URIs that browsers agree on.
#include <algorithm>
#include <cstdint>
#include <fstream>
#include <sstream>
#include <vector>

#include <nlohmann/json.hpp>

#include "tests/support/Skips.h"
#include "tests/support/Test.h"
#include "zro/text/ZRUtil.h"
#include "zro/uri/ZRDataUri.h"

namespace ZroCommon::testing {
namespace {

using nlohmann::json;

std::string decoded(const UnicodeString& base64) {
    std::ostringstream bytes;
    ZRUtil::decodeBase64(base64.getBuffer(), base64.length(), bytes);
    return bytes.str();
}

std::string bytesOf(const json& numbers) {
    const auto bytes = numbers.get<std::vector<std::uint8_t>>();
    return {bytes.begin(), bytes.end()};
}

// Calls `compare` with each row of a file, which says whether there was something to compare.
void checkRows(const std::string& name, bool (*compare)(const json& row), int expected) {
    const std::string path = ZRO_TEST_DATA_DIR "/corner/" + name;
    std::ifstream rows(path);
    if (!rows) {
        GTEST_SKIP() << noData(path);
    }
    const json all = json::parse(rows);
    EXPECT_EQ(std::count_if(all.begin(), all.end(), compare), expected) << "rows compared";
}

// What browsers refuse is read here up to where it makes sense.
TEST(DataCorners, Base64ThatBrowsersTakeReadsAsThere) {
    const auto compare = [](const json& row) {
        const auto base64 = row[0].get<std::string>();
        const std::string bytes = decoded(text(base64));
        EXPECT_TRUE(row[1].is_null() || bytes == bytesOf(row[1])) << base64;
        return !row[1].is_null();
    };
    checkRows("base64-wpt.json", compare, 22);
}

// On purpose elsewhere: any parameter means base64, fragments stay, and bytes are those of a text.
bool meansTheSameHere(const std::string& uri) {
    const std::string head = uri.substr(0, uri.find(','));
    const bool isPlain = head.find_first_of(";\"") == head.npos && head.find("%3B") == head.npos;
    return (isPlain || head.ends_with(";base64")) && uri.find('#') == uri.npos
           && uri.find("%FF") == uri.npos;
}

TEST(DataCorners, UrisOfBrowsersHoldTheSameData) {
    const auto compare = [](const json& row) {
        const auto name = row[0].get<std::string>();
        const ZRDataUri uri(text(name), URISTR_PATH_OR_URI);
        if (row[1].is_null() || !meansTheSameHere(name)) {
            return false;
        }
        EXPECT_GE(uri.getDataPos(), 0) << name;
        const UnicodeString data(uri.toString(), uri.getDataPos());
        EXPECT_EQ(uri.isBase64() ? decoded(data) : utf8(data), bytesOf(row[2])) << name;
        return true;
    };
    checkRows("data-urls-wpt.json", compare, 21);
}

}  // namespace
}  // namespace ZroCommon::testing

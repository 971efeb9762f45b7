// Base64 and `data:` URIs that others have collected.
#include <cstdint>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/support/Skips.h"
#include "tests/support/Text.h"
#include "zro/text/ZRUtil.h"
#include "zro/uri/ZRDataUri.h"

namespace ZroCommon::testing {
namespace {

using nlohmann::json;

constexpr const char* kFolder = ZRO_TEST_DATA_DIR "/corner/";

std::string decoded(const UnicodeString& base64) {
    std::ostringstream bytes;
    ZRUtil::decodeBase64(base64.getBuffer(), base64.length(), bytes);
    return bytes.str();
}

std::string bytesOf(const json& numbers) {
    const auto bytes = numbers.get<std::vector<std::uint8_t>>();
    return {bytes.begin(), bytes.end()};
}

std::string fromHex(const std::string& hex) {
    std::string bytes;
    for (std::size_t at = 0; at < hex.size(); at += 2) {
        bytes += static_cast<char>(std::stoi(hex.substr(at, 2), nullptr, 16));
    }
    return bytes;
}

TEST(DataCorners, BytesGoToBase64AndBack) {
    std::ifstream rows(std::string(kFolder) + "base64.tsv");
    if (!rows) {
        GTEST_SKIP() << noData(kFolder);
    }
    int compared = 0;
    for (std::string row; std::getline(rows, row);) {
        if (row.starts_with('#')) {
            continue;
        }
        const std::size_t tab = row.find('\t');
        const std::string bytes = fromHex(row.substr(0, tab));
        const std::string base64 = row.substr(tab + 1);
        std::istringstream source(bytes);
        EXPECT_EQ(utf8(ZRUtil::encodeBase64(source, static_cast<int>(bytes.size()))), base64);
        EXPECT_EQ(decoded(text(base64)), bytes) << base64;
        ++compared;
    }
    EXPECT_EQ(compared, 37);
}

// What browsers refuse is read here up to where it makes sense.
TEST(DataCorners, Base64ThatBrowsersTakeReadsAsThere) {
    std::ifstream rows(std::string(kFolder) + "base64-wpt.json");
    if (!rows) {
        GTEST_SKIP() << noData(kFolder);
    }
    int compared = 0;
    for (const json& row : json::parse(rows)) {
        const auto base64 = row[0].get<std::string>();
        const std::string bytes = decoded(text(base64));
        if (!row[1].is_null()) {
            EXPECT_EQ(bytes, bytesOf(row[1])) << base64;
            ++compared;
        }
    }
    EXPECT_EQ(compared, 22);
}

// On purpose elsewhere: any parameter means base64, fragments stay, and bytes are those of a text.
bool meansTheSameHere(const std::string& uri) {
    const std::string head = uri.substr(0, uri.find(','));
    const bool isPlain = head.find_first_of(";\"") == head.npos && head.find("%3B") == head.npos;
    return (isPlain || head.ends_with(";base64")) && uri.find('#') == uri.npos
           && uri.find("%FF") == uri.npos;
}

TEST(DataCorners, UrisOfBrowsersHoldTheSameData) {
    std::ifstream rows(std::string(kFolder) + "data-urls-wpt.json");
    if (!rows) {
        GTEST_SKIP() << noData(kFolder);
    }
    int compared = 0;
    for (const json& row : json::parse(rows)) {
        const auto name = row[0].get<std::string>();
        const ZRDataUri uri(text(name), URISTR_PATH_OR_URI);
        const UnicodeString data(uri.toString(), uri.getDataPos());
        if (!row[1].is_null() && meansTheSameHere(name)) {
            ASSERT_GE(uri.getDataPos(), 0) << name;
            EXPECT_EQ(uri.isBase64() ? decoded(data) : utf8(data), bytesOf(row[2])) << name;
            ++compared;
        }
    }
    EXPECT_EQ(compared, 21);
}

}  // namespace
}  // namespace ZroCommon::testing

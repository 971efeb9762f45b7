// Crafted gzip files: what comes of each, as a stream and as a file.
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/Skips.h"
#include "tests/support/Streams.h"
#include "zro/streams/compression/ZRGzipStream.h"

namespace ZroCommon::testing {
namespace {

namespace fs = std::filesystem;

const struct {
    const char* name;
    std::size_t fromStream, fromFile;  // bytes
} kCorners[] = {
    {"bad-crc.gz", 1198, 1198},
    {"bad-isize.gz", 1198, 1198},
    {"corrupt-middle.gz", 29537, 16384},
    {"empty-member.gz", 0, 0},
    {"empty-then-data.gz", 0, 1198},
    {"fextra-fname-fcomment-fhcrc.gz", 1198, 1198},
    {"fname.gz", 38866, 38866},
    {"header-only.gz", 0, 0},
    {"huffman-only.gz", 1198, 1198},
    {"not-gzip.txt", 1198, 1198},
    {"one-byte.gz", 1, 1},
    {"plain.gz", 1198, 1198},
    {"raw-deflate.bin", 678, 678},
    {"stored.gz", 9000, 9000},
    {"tool-bgzip.gz", 38866, 38866},
    {"tool-gzip-N.gz", 38866, 38866},
    {"tool-pigz.gz", 38866, 38866},
    {"trailing-garbage.gz", 1198, 1198},
    {"trailing-zeros.gz", 1198, 1198},
    {"truncated-data.gz", 32993, 32993},
    {"truncated-trailer.gz", 1198, 1198},
    {"two-members.gz", 1198, 40064},
    {"zeros-70000.gz", 70000, 70000},
    {"zlib-wrapped.z", 684, 684},
};

TEST(GzipCorners, ReadAsTheyShould) {
    const fs::path folder = fs::path(ZRO_TEST_DATA_DIR) / "corner" / "gzip";
    if (!fs::exists(folder)) {
        GTEST_SKIP() << noData(folder.string());
    }
    std::ifstream textFile(folder / "not-gzip.txt", std::ios::binary);
    const std::string text = restOf(textFile);
    for (const auto& [name, fromStream, fromFile] : kCorners) {
        std::ifstream source(folder / name, std::ios::binary);
        ZRGzipStream stream(source);
        const std::string streamed = restOf(stream);
        ZRGzipStream file((folder / name).c_str());
        const std::string whole = restOf(file);
        EXPECT_EQ(streamed.size(), fromStream) << name;
        EXPECT_EQ(whole.size(), fromFile) << name;
        EXPECT_TRUE(whole.starts_with(streamed) || streamed.starts_with(whole)) << name;
        EXPECT_TRUE(whole.size() != text.size() || whole == text) << name;
    }
}

}  // namespace
}  // namespace ZroCommon::testing

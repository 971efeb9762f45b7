// Crafted gzip files: what comes of each, as a stream and as a file.
#include <filesystem>
#include <fstream>

#include "tests/support/Skips.h"
#include "tests/support/Streams.h"
#include "tests/support/Test.h"
#include "zro/streams/compression/ZRGzipStream.h"

namespace ZroCommon::testing {
namespace {

namespace fs = std::filesystem;

const fs::path kFolder = fs::path(ZRO_TEST_DATA_DIR) / "corner" / "gzip";

std::string bytesOf(const std::string& name) {
    std::ifstream file(kFolder / name, std::ios::binary);
    return restOf(file);
}

// How many bytes come from a stream and from a file; one number if it is the same.
std::string sizes(const std::string& name) {
    static const std::string text = bytesOf("not-gzip.txt");
    std::istringstream source(bytesOf(name));
    ZRGzipStream stream(source);
    ZRGzipStream file((kFolder / name).c_str());
    const std::string streamed = restOf(stream);
    const std::string whole = restOf(file);
    EXPECT_TRUE(whole.starts_with(streamed) || streamed.starts_with(whole)) << name;
    EXPECT_TRUE(whole.size() != text.size() || whole == text) << name;
    const std::string size = std::to_string(whole.size());
    return whole == streamed ? size : std::to_string(streamed.size()) + " and " + size;
}

TEST(GzipCorners, ReadAsTheyShould) {
    if (!fs::exists(kFolder)) {
        GTEST_SKIP() << noData(kFolder.string());
    }
    expectTexts(
        sizes,
        {// Sound ones, and what is none.
         "empty-member.gz -> 0", "empty-then-data.gz -> 0 and 1198",
         "fextra-fname-fcomment-fhcrc.gz -> 1198", "fname.gz -> 38866", "huffman-only.gz -> 1198",
         "not-gzip.txt -> 1198", "one-byte.gz -> 1", "plain.gz -> 1198", "raw-deflate.bin -> 678",
         "stored.gz -> 9000", "tool-bgzip.gz -> 38866", "tool-gzip-N.gz -> 38866",
         "tool-pigz.gz -> 38866", "two-members.gz -> 1198 and 40064", "zeros-70000.gz -> 70000",
         "zlib-wrapped.z -> 684",
         // Broken ones.
         "bad-crc.gz -> 1198", "bad-isize.gz -> 1198", "corrupt-middle.gz -> 29537 and 16384",
         "header-only.gz -> 0", "trailing-garbage.gz -> 1198", "trailing-zeros.gz -> 1198",
         "truncated-data.gz -> 32993", "truncated-trailer.gz -> 1198"});
}

}  // namespace
}  // namespace ZroCommon::testing

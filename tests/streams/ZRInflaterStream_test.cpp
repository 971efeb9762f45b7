#include "zro/streams/compression/ZRInflaterStream.h"

#include "tests/support/Deflate.h"
#include "tests/support/Streams.h"
#include "tests/support/Test.h"

namespace ZroCommon::testing {
namespace {

std::string inflated(const std::string& block) {
    ZRInflaterStream stream(block.data(), block.size(), false);
    return restOf(stream);
}

TEST(ZRInflaterStream, ExpandsABlockOfAnySize) {
    for (const std::size_t size : {0U, 1U, 9U, 4095U, 4096U, 4097U, 65536U, 65537U, 200000U}) {
        const std::string bytes = noise(size);
        for (const int level : {0, 1, 9}) {
            EXPECT_EQ(inflated(deflated(bytes, kRaw, level)), bytes) << size << " at " << level;
        }
    }
    EXPECT_EQ(inflated(""), "") << "a block without a byte ends at once";
    EXPECT_EQ(ZRInflaterStream(nullptr, 0, true).get(), EOF);
    std::string block = deflated("abc");
    ZRInflaterStream copy(block.data(), block.size(), true);
    block.assign(block.size(), '\xFF');
    EXPECT_EQ(restOf(copy), "abc");
}

TEST(ZRInflaterStream, PutsBackTenBytesAnywhere) {
    const std::string bytes = noise(70000);
    const std::string block = deflated(bytes);
    ZRInflaterStream stream(block.data(), block.size(), false);
    EXPECT_EQ(readsTwice(stream, bytes), bytes.size());
    EXPECT_EQ(stream.get(), EOF);
    stream.clear();
    EXPECT_TRUE(stream.unget()) << "also at the end";
    EXPECT_EQ(stream.get(), bytes.back());
}

TEST(ZRInflaterStream, ResetGivesTheDataAgain) {
    const std::string bytes = noise(50000);
    const std::string block = deflated(bytes);
    ZRInflaterStream stream(block.data(), block.size(), false);
    for (const std::streamsize wanted : {0, 1, 40000, 60000}) {
        stream.ignore(wanted);
        stream.reset();
        EXPECT_TRUE(stream.good());
        EXPECT_FALSE(stream.unget()) << "nothing lies before the first byte";
        stream.clear();
        EXPECT_EQ(restOf(stream), bytes) << "behind " << wanted;
        stream.reset();
    }
}

// Whatever is cut off or changed, what came before it is given, and then the stream ends.
TEST(ZRInflaterStream, DamagedDataGivesWhatCameBefore) {
    const std::string bytes = noise(800);
    const std::string block = deflated(bytes);
    std::size_t last = 0;
    for (std::size_t cut = 0; cut < block.size(); ++cut) {
        const std::string got = inflated(block.substr(0, cut));
        ASSERT_TRUE(bytes.starts_with(got) && got.size() >= last) << "cut at " << cut;
        last = got.size();
    }
    EXPECT_GT(last, bytes.size() - 4) << "nearly all of it comes before the last byte";
    const std::string stored = deflated(bytes, kRaw, 0);
    EXPECT_EQ(inflated(stored.substr(0, 105)), bytes.substr(0, 100));
    EXPECT_EQ(inflated(deflated("abc", kRaw, 0) + "\x07"), "abc") << "what follows is not read";
    std::string broken = deflated(bytes, kRaw, 0);
    broken[0] = 0;  // not the last block, so another has to follow
    EXPECT_EQ(inflated(broken + "\x07"), bytes) << "a block of a kind that there is not";
}

TEST(ZRInflaterStream, BombsExpandPieceByPiece) {
    const std::string block = deflated(std::string(1U << 22U, '\0'), kRaw, 9);
    ZRInflaterStream stream(block.data(), block.size(), false);
    EXPECT_EQ(stream.get(), '\0');
    EXPECT_LE(stream.rdbuf()->in_avail(), 65536);
    EXPECT_EQ(restOf(stream).size(), (1U << 22U) - 1);
}

}  // namespace
}  // namespace ZroCommon::testing
